#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QWidget>

namespace vrn::qt::detail {

/// Says in a tool tip that the selected objects differ, while a control varies and neither
/// it nor anything around it has a tool tip of the application's.
///
/// Each multi-edit control makes one, which belongs to it. It only answers when Qt asks for a
/// tool tip, and sets none. Qt asks the part under the mouse first and then what is around
/// it. So a part with a tool tip keeps it, and a group box speaks for all that it disables.
class VariesToolTip : public QObject
{
public:
    explicit VariesToolTip(QWidget* control);

    /// Takes the one away that `control` has made for itself.
    static void removeFrom(const QWidget* control);

    /// Also answers for `part`, which stands outside of the control.
    void answerFor(QWidget* part);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    bool dataVaries() const;

    QBasicTimer m_whileShown;
};

} // namespace vrn::qt::detail
