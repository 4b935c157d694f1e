#include "row_editor_p.h"

#include <QKeyEvent>

namespace vrn::qt::detail {

RowEditor::RowEditor(QObject* parent)
    : QObject(parent)
{}

RowEditor::~RowEditor() = default;

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
