#include "editor_tenure_p.h"

#include <QAbstractItemView>
#include <QCoreApplication>

#include <utility>

namespace vrn::qt::detail {

EditorTenure::EditorTenure(QWidget& editor, const QModelIndex& index)
    : QObject(&editor)
    , m_index(index)
{
    editor.installEventFilter(this);
}

const EditorTenure* EditorTenure::of(const QObject* editor)
{
    return editor ? editor->findChild<EditorTenure*>(QString(), Qt::FindDirectChildrenOnly)
                  : nullptr;
}

bool EditorTenure::isOver(const QObject* editor)
{
    const EditorTenure* tenure = of(editor);
    return tenure && tenure->isOver();
}

// Views show an editor only when they have taken it into their books.
bool EditorTenure::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && !m_hasBegun)
        m_hasBegun = isHeld();
    return QObject::eventFilter(watched, event);
}

bool EditorTenure::isHeld() const
{
    const auto* editor = static_cast<const QWidget*>(parent());
    const QWidget* viewport = editor->parentWidget();
    const auto* view = viewport ? qobject_cast<QAbstractItemView*>(viewport->parentWidget())
                                : nullptr;
    return view && view->indexWidget(m_index) == editor;
}

void throwLater(std::exception_ptr error)
{
    QMetaObject::invokeMethod(
        qApp, [error = std::move(error)] { std::rethrow_exception(error); }, Qt::QueuedConnection);
}

} // namespace vrn::qt::detail
