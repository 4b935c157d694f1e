#include "row_editor_p.h"

#include <vrn/companion_qt/connect.h>

#include <QKeyEvent>
#include <QShortcut>

#include <utility>

namespace vrn::qt::detail {

RowEditor::RowEditor(QObject* parent)
    : QObject(parent)
{}

RowEditor::~RowEditor() = default;

QKeySequence RowEditor::clearKeys()
{
    return QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Delete);
}

void RowEditor::onClearKeys(QWidget* widget, std::function<void()> clear)
{
    auto* keys = new QShortcut(clearKeys(), widget, nullptr, nullptr, Qt::WidgetShortcut);
    vrn_connect(keys, &QShortcut::activated, this, std::move(clear));
}

bool RowEditor::endsByKey(const QEvent& event)
{
    if (event.type() != QEvent::KeyPress)
        return false;
    switch (static_cast<const QKeyEvent&>(event).key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT ended(false);
        return true;
    case Qt::Key_Escape:
        Q_EMIT cancelled();
        return true;
    default:
        return false;
    }
}

} // namespace vrn::qt::detail
