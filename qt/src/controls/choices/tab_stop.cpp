#include "controls/choices/tab_stop_p.h"

#include <vrn/companion_qt/connect.h>

#include <QEvent>

#include <algorithm>

namespace vrn::qt::detail {
namespace {

Qt::FocusPolicy withoutTab(Qt::FocusPolicy policy)
{
    return static_cast<Qt::FocusPolicy>(policy & ~Qt::TabFocus);
}

} // namespace

void TabStop::add(QRadioButton* button)
{
    m_buttons.push_back({button, button->focusPolicy()});
    button->installEventFilter(this);
    vrn_connect(button, &QRadioButton::toggled, this, &TabStop::update);
    vrn_connect(button, &QObject::destroyed, this, &TabStop::remove);
}

void TabStop::remove(const QObject* button)
{
    const auto isMeant = [button](const Button& each) { return each.widget == button; };
    m_buttons.erase(std::remove_if(m_buttons.begin(), m_buttons.end(), isMeant), m_buttons.end());
}

void TabStop::update()
{
    const QRadioButton* stop = buttonForTab();
    for (const Button& button : m_buttons) {
        if (!takesTab(button))
            continue;
        const bool stops = !stop || button.widget == stop;
        button.widget->setFocusPolicy(stops ? button.policy : withoutTab(button.policy));
    }
}

// A policy that is not from here is the application's.
bool TabStop::takesTab(const Button& button)
{
    const Qt::FocusPolicy policy = button.widget->focusPolicy();
    return (button.policy & Qt::TabFocus) != 0
        && (policy == button.policy || policy == withoutTab(button.policy));
}

// Null if Tab may go to any of them.
const QRadioButton* TabStop::buttonForTab() const
{
    const auto first = [this](auto isMeant) -> const QRadioButton* {
        const auto it = std::find_if(m_buttons.begin(), m_buttons.end(),
            [&](const Button& button) { return takesTab(button) && isMeant(*button.widget); });
        return it == m_buttons.end() ? nullptr : it->widget;
    };
    if (const auto* focused = first([](const QRadioButton& button) { return button.hasFocus(); }))
        return focused;
    return first([](const QRadioButton& button) {
        return button.isChecked() && button.isEnabled() && !button.isHidden();
    });
}

bool TabStop::eventFilter(QObject* watched, QEvent* event)
{
    // A button that is being destroyed is only a QWidget here. It still loses the focus.
    if (!qobject_cast<QRadioButton*>(watched)) {
        remove(watched);
        return false;
    }
    switch (event->type()) {
    case QEvent::FocusOut:
    case QEvent::EnabledChange:
    case QEvent::HideToParent:
    case QEvent::ShowToParent:
        update();
        break;
    default:
        break;
    }
    return false;
}

} // namespace vrn::qt::detail
