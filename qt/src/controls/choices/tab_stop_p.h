#pragma once

#include <QObject>
#include <QRadioButton>

#include <vector>

namespace vrn::qt::detail {

/// Lets Tab enter a group of radio buttons at the checked one.
///
/// Qt does this only after a button of the group has had the focus. Until then Tab goes to
/// the first button, whichever is checked. While no button is checked that can take the
/// focus, Tab enters at the first one and Shift+Tab at the last. While a button has the
/// focus, the next Tab leaves the group. A button from which the style or the application
/// keeps Tab is left alone.
class TabStop : public QObject
{
public:
    void add(QRadioButton* button);

    /// To be called after a change that the buttons do not tell of, as their signals are
    /// blocked.
    void update();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Button
    {
        QRadioButton* widget;
        Qt::FocusPolicy policy; ///< If Tab may go to it.
    };

    static bool takesTab(const Button& button);
    const QRadioButton* buttonForTab() const;
    void remove(const QObject* button);

    std::vector<Button> m_buttons;
};

} // namespace vrn::qt::detail
