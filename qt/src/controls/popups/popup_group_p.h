#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <vector>

class QLineEdit;

namespace vrn::qt::detail {

/// Stacks popups below a line edit, in the order in which they were added, with
/// a gap of 5 pixels between them. A popup of height 0 keeps its gap. They follow
/// the edit wherever it goes, with its window and inside it. Popups for which the
/// screen has no room below the edit stack above it: a window manager would move
/// them over the edit. One that is too wide for the room to the right begins further left.
class VRN_QT2_EXPORT PopupGroup : public QObject
{
    Q_OBJECT

public:
    /// The edit owns the group.
    explicit PopupGroup(QLineEdit* edit);
    ~PopupGroup() override;

    void add(QWidget* popup);

    bool eventFilter(QObject* watched, QEvent* event) override;

    void reposition();

Q_SIGNALS:
    /// The edit may have come into sight or gone out of it: a widget that it stands in
    /// was moved or resized. The signal comes after everything that moves with that
    /// widget has moved.
    void editMoved();

private:
    void watchAncestors();
    void unwatchAncestors();
    bool isAncestor(const QObject* object) const;
    bool holds(const QObject* object) const;

    QLineEdit* m_edit;
    std::vector<QPointer<QWidget>> m_popups;
    QTimer m_settled; ///< Runs out after the pending events.
};

} // namespace vrn::qt::detail
