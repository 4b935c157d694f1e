#pragma once

#include <QAbstractItemDelegate>
#include <QEvent>
#include <QKeyEvent>
#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QScopeGuard>
#include <QWidget>

#include <exception>

namespace vrn::qt::detail {

/// What an editor and its delegate know of the view that opened it. It belongs to the editor.
///
/// A view lets go of an editor before the editor loses the focus, and reports a signal that
/// comes for it afterwards. An editor that no view has shown is never let go of.
class EditorTenure : public QObject
{
    Q_OBJECT

public:
    EditorTenure(QWidget& editor, const QModelIndex& index, QAbstractItemDelegate& delegate);

    /// That of an editor; null if it has none.
    static EditorTenure* of(const QObject* editor);
    /// Whether a view has let go of an editor. False without a tenure.
    static bool isOver(const QObject* editor);

    bool isOver() const { return m_hasBegun && !isHeld(); }
    /// Whether a view has shown the editor.
    bool hasBegun() const { return m_hasBegun; }
    /// Whether the editor lies in a view, which may still be about to show it.
    bool isInView() const;

    /// Does what a delegate of Qt does for an event of its editor, and returns what that returns.
    /// But if the commit has made the view let go of the editor, nothing is closed any more, and
    /// a focus that is lost while the content is being written ends nothing.
    bool takeEvent(QEvent* event);

    /// Whether the content is on its way to the model. A dialog that opens meanwhile takes the
    /// focus, but the view goes on with the editor after it.
    bool isBeingWritten() const { return m_isBeingWritten; }
    void setBeingWritten(bool isBeingWritten) { m_isBeingWritten = isBeingWritten; }

    /// Whether the editor could not show the value of its cell, so that its content is none.
    bool isUnread() const { return m_isUnread; }
    void setRead() { m_isUnread = false; }
    /// Also closes the editor, from the event loop.
    void setUnread();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* editor() const { return static_cast<QWidget*>(parent()); }
    bool isHeld() const;

    QPersistentModelIndex m_index;
    QPointer<QAbstractItemDelegate> m_delegate;
    bool m_hasBegun = false;
    bool m_isUnread = false;
    bool m_isBeingWritten = false;
};

inline bool isEnter(const QEvent& event)
{
    if (event.type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<const QKeyEvent&>(event).key();
    return key == Qt::Key_Enter || key == Qt::Key_Return;
}

/// Throws `error` from the event loop.
void throwLater(std::exception_ptr error);

/// Shows in `editor` what is in the model. What `read` throws while a view opens the editor is
/// thrown after the view has finished: otherwise the editor would stay, and no view would know
/// of it. Such an editor is closed then, and writes nothing before.
template <typename Read>
void readInto(const QWidget* editor, Read&& read)
{
    const QPointer<EditorTenure> tenure(EditorTenure::of(editor));
    const bool isInView = tenure && tenure->isInView();
    try {
        read();
        if (tenure)
            tenure->setRead();
    } catch (...) {
        if (!isInView)
            throw;
        if (tenure)
            tenure->setUnread();
        throwLater(std::current_exception());
    }
}

/// Writes to the model what is in `editor`. A view from which an exception escapes never
/// commits anything again, so that of `write` is thrown after the view has finished.
template <typename Write>
void writeFrom(const QWidget* editor, Write&& write)
{
    const QPointer<EditorTenure> tenure(EditorTenure::of(editor));
    if (tenure && tenure->isUnread())
        return;
    const bool isInView = tenure && tenure->hasBegun();
    if (tenure)
        tenure->setBeingWritten(true);
    const auto written = qScopeGuard([&tenure] {
        if (tenure)
            tenure->setBeingWritten(false);
    });
    try {
        write();
    } catch (...) {
        if (!isInView)
            throw;
        throwLater(std::current_exception());
    }
}

} // namespace vrn::qt::detail
