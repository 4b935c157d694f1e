#include "controls/choices/tab_stop_p.h"

#include <vrn/companion_qt/connect.h>

#include <QEvent>

#include <algorithm>

namespace vrn::qt::detail {

void TabStop::add(QRadioButton* button)
{
    // The application, or the style, may keep Tab from a button.
    if ((button->focusPolicy() & Qt::TabFocus) == 0)
        return;
    m_buttons.emplace_back(button);
    button->installEventFilter(this);
    vrn_connect(button, &QRadioButton::toggled, this, &TabStop::update);
    vrn_connect(button, &QObject::destroyed, this, &TabStop::remove);
}

void TabStop::remove(const QObject* button)
{
    const auto isMeant = [button](const QObject* each) { return each == button; };
    m_buttons.erase(std::remove_if(m_buttons.begin(), m_buttons.end(), isMeant), m_buttons.end());
}

void TabStop::update()
{
    const QRadioButton* stop = buttonForTab();
    for (QRadioButton* button : m_buttons) {
        const int policy = button->focusPolicy();
        if (policy == Qt::NoFocus)
            continue;
        const bool stops = !stop || button == stop;
        button->setFocusPolicy(
            static_cast<Qt::FocusPolicy>(stops ? policy | Qt::TabFocus : policy & ~Qt::TabFocus));
    }
}

// Null if Tab may go to any of them.
QRadioButton* TabStop::buttonForTab() const
{
    const auto first = [this](auto isMeant) {
        const auto it = std::find_if(m_buttons.begin(), m_buttons.end(), isMeant);
        return it == m_buttons.end() ? nullptr : *it;
    };
    if (auto* focused = first([](const QRadioButton* button) { return button->hasFocus(); }))
        return focused;
    return first([](const QRadioButton* button) {
        return button->isChecked() && button->isEnabled() && !button->isHidden();
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
