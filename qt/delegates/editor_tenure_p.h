#pragma once

#include <QEvent>
#include <QKeyEvent>
#include <QObject>
#include <QPersistentModelIndex>
#include <QWidget>

#include <exception>

namespace vrn::qt::detail {

/// Tells whether a view still has the editor that it opened in a cell. It belongs to the editor.
///
/// A view lets go of an editor before the editor loses the focus, and reports a signal that
/// comes for it afterwards. An editor that no view has shown is never let go of.
class EditorTenure : public QObject
{
    Q_OBJECT

public:
    EditorTenure(QWidget& editor, const QModelIndex& index);

    /// That of an editor; null if it has none.
    static const EditorTenure* of(const QObject* editor);
    /// Whether a view has let go of an editor. False without a tenure.
    static bool isOver(const QObject* editor);

    /// Whether a view has shown the editor.
    bool hasBegun() const { return m_hasBegun; }
    bool isOver() const { return m_hasBegun && !isHeld(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isHeld() const;

    QPersistentModelIndex m_index;
    bool m_hasBegun = false;
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

/// Writes to the model what is in `editor`. A view from which an exception escapes never
/// commits anything again, so that of `write` is thrown after the view has finished.
template <typename Write>
void writeFrom(const QWidget* editor, Write&& write)
{
    try {
        write();
    } catch (...) {
        const EditorTenure* tenure = EditorTenure::of(editor);
        if (!tenure || !tenure->hasBegun())
            throw;
        throwLater(std::current_exception());
    }
}

} // namespace vrn::qt::detail
