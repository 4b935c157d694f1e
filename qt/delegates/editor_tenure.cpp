#include "editor_tenure_p.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QItemDelegate>

#include <utility>

namespace vrn::qt::detail {
namespace {

class Delegate : public QItemDelegate
{
public:
    using QItemDelegate::eventFilter;
    using QItemDelegate::QItemDelegate;
};

const QAbstractItemView* viewOf(const QWidget& editor)
{
    const QWidget* viewport = editor.parentWidget();
    return viewport ? qobject_cast<QAbstractItemView*>(viewport->parentWidget()) : nullptr;
}

} // namespace

EditorTenure::EditorTenure(
    QWidget& editor, const QModelIndex& index, QAbstractItemDelegate& delegate)
    : QObject(&editor)
    , m_index(index)
    , m_delegate(&delegate)
{
    editor.installEventFilter(this);
}

EditorTenure* EditorTenure::of(const QObject* editor)
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
    const auto* view = viewOf(*editor());
    return view && view->indexWidget(m_index) == editor();
}

bool EditorTenure::isInView() const
{
    return viewOf(*editor()) != nullptr;
}

bool EditorTenure::takeEvent(QEvent* event)
{
    if (!m_delegate || (m_isBeingWritten && event->type() == QEvent::FocusOut))
        return false;
    // One on the stack: slots may destroy the editor, and with it this.
    Delegate ofQt;
    connect(
        &ofQt, &QAbstractItemDelegate::commitData, m_delegate, &QAbstractItemDelegate::commitData);
    connect(&ofQt, &QAbstractItemDelegate::closeEditor, m_delegate,
        [delegate = m_delegate.data()](QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
            if (!isOver(editor))
                Q_EMIT delegate->closeEditor(editor, hint);
        });
    return ofQt.eventFilter(editor(), event);
}

void EditorTenure::setUnread()
{
    m_isUnread = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_isUnread && m_delegate && !isOver())
                Q_EMIT m_delegate->closeEditor(editor(), QAbstractItemDelegate::NoHint);
        },
        Qt::QueuedConnection);
}

void throwLater(std::exception_ptr error)
{
    QMetaObject::invokeMethod(
        qApp, [error = std::move(error)] { std::rethrow_exception(error); }, Qt::QueuedConnection);
}

} // namespace vrn::qt::detail
