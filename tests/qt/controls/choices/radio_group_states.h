#pragma once

#include "state_table.h"

#include <vrn/base/any_predicates.h>
#include <vrn/qt/layouters.h>
#include <vrn/qt/multi_edit_radio_button_group.h>

#include <QRadioButton>

namespace vrn::test {

/// Values whose order is not that of the buttons.
inline vrn::qt::NamedValueList threeGrades()
{
    return {{"S355", 355}, {"S235", 235}, {"S275", 275}};
}

inline QRadioButton* buttonOf(const QWidget& widget, const QString& name)
{
    for (auto* button : widget.findChildren<QRadioButton*>()) {
        if (button->text() == name)
            return button;
    }
    return nullptr;
}

inline QStringList checkedIn(const QWidget& widget)
{
    QStringList names;
    for (const auto* button : widget.findChildren<QRadioButton*>()) {
        if (button->isChecked())
            names << button->text();
    }
    return names;
}

/// For a group of threeGrades() that is alone in its window.
struct RadioGroupStates
{
    using Control = vrn::qt::MultiEditRadioButtonGroup;
    static constexpr bool isSuspendable = false;
    static constexpr const char* report = "it != m_value2button.end()";
    static constexpr const char* reportMessage = "value key not found";

    static const StateTable& table()
    {
        // clang-format off
        static const StateTable all = {
            "                     | f355    | f235    | f275    | c355    | c235    | c275    | v       ",
            "click S355           | 1 f355  | 1 f355  | 1 f355  | 1 c355  | 1 c355  | 1 c355  | 1 c355  ",
            "click S235           | 1 f235  | 1 f235  | 1 f235  | 1 c235  | 1 c235  | 1 c235  | 1 c235  ",
            "click S275           | 1 f275  | 1 f275  | 1 f275  | 1 c275  | 1 c275  | 1 c275  | 1 c275  ",
            "Space S355           | 1 f355  | 1 f355  | 1 f355  | 1 c355  | 1 c355  | 1 c355  | 1 c355  ",
            "Space S235           | 1 f235  | 1 f235  | 1 f235  | 1 c235  | 1 c235  | 1 c235  | 1 c235  ",
            "Down                 | 1 f235  | 1 f275  | 0 f275  | 1 c235  | 1 c275  | 0 c275  | 0 v     ",
            "Up                   | 0 f355  | 1 f355  | 1 f235  | 0 c355  | 1 c355  | 1 c235  | 0 v     ",
            "setSelected(355)     | 0 f355  | 0 f355  | 0 f355  | 0 c355  | 0 c355  | 0 c355  |         ",
            "setSelected(235)     | 0 f235  | 0 f235  | 0 f235  | 0 c235  | 0 c235  | 0 c235  |         ",
            "setSelected(unknown) | !0 f355 | !0 f235 | !0 f275 | !0 c355 | !0 c235 | !0 c275 | !0 v    ",
            "setValue(355)        | 1 f355  | 1 f355  | 1 f355  | 1 c355  | 1 c355  | 1 c355  | 1 c355  ",
            "setValue(235)        | 1 f235  | 1 f235  | 1 f235  | 1 c235  | 1 c235  | 1 c235  | 1 c235  ",
            "setValue(unknown)    | !1 f355 | !1 f235 | !1 f275 | !1 c355 | !1 c235 | !1 c275 |         ",
            "setValue()           | !1 f355 | !1 f235 | !1 f275 | !1 c355 | !1 c235 | !1 c275 |         ",
            "setValue(text)       | !1 f355 | !1 f235 | !1 f275 | !1 c355 | !1 c235 | !1 c275 |         ",
            "readValue(355)       | 1 c355  | 1 c355  | 1 c355  | 0 c355  | 1 v     | 1 v     | 0 v     ",
            "readValue(235)       | 1 c235  | 1 c235  | 1 c235  | 1 v     | 0 c235  | 1 v     | 0 v     ",
            "readValue(275)       | 1 c275  | 1 c275  | 1 c275  | 1 v     | 1 v     | 0 c275  | 0 v     ",
            "readValue(unknown)   | !1 c355 | !1 c235 | !1 c275 | 1 v     | 1 v     | 1 v     | 0 v     ",
            "readValue()          | !1 c355 | !1 c235 | !1 c275 | 1 v     | 1 v     | 1 v     | 0 v     ",
            "readValue(text)      | !1 c355 | !1 c235 | !1 c275 | 1 v     | 1 v     | 1 v     | 0 v     ",
            "reset                | 1 f355  | 1 f355  | 1 f355  | 1 f355  | 1 f355  | 1 f355  | 1 f355  ",
            "forceVaries          | 0 v     | 0 v     | 0 v     | 0 v     | 0 v     | 0 v     | 0 v     ",
        };
        // clang-format on
        return all;
    }

    static boost::any valueIn(const QString& shown) { return shown.toInt(); }
    static boost::any valueOtherThan(const QString& shown) { return shown == "275" ? 235 : 275; }

    static Control* createIn(QWidget* form, bool useGroupBox = true, bool useButtonGroup = true)
    {
        vrn::qt::VBoxLayouter layouter;
        if (!useGroupBox)
            layouter.onCreate(form);
        auto* group = Control::create("Steel grade", threeGrades(), &vrn::any_equal<int>,
            &vrn::any_less<int>, form, &layouter, useGroupBox, useButtonGroup);
        if (!useGroupBox)
            layouter.onFinish();
        return group;
    }

    static void perform(Control& group, const QString& action)
    {
        const QString name = action.section('(', 0, 0);
        const QString argument = argumentOf(action);
        const boost::any value = argument.isEmpty() ? boost::any()
            : argument == "text"                    ? boost::any(std::string("S235"))
                                                    : boost::any(argument.toInt());
        if (action == "reset")
            group.reset();
        else if (action == "forceVaries")
            group.forceVaries();
        else if (name == "setSelected")
            group.setSelected(value);
        else if (name == "setValue")
            group.setValue(value);
        else if (name == "readValue")
            group.readValue(value);
        else
            performAsUser(*group.window(), action);
    }

    static QString shown(const Control& group)
    {
        const QStringList checked = checkedIn(*group.window());
        if (checked.size() > 1)
            return "several buttons are checked";
        if (group.dataVaries())
            return group.getCurrentValue().empty() && checked.isEmpty() ? "v"
                                                                        : "varies with a value";
        const QString number = checked.value(0).mid(1);
        return group.getCurrentValue() == boost::any(number.toInt()) ? number : "another value";
    }

private:
    static void performAsUser(const QWidget& window, const QString& action)
    {
        QRadioButton* button = buttonOf(window, action.section(' ', 1));
        if (action.startsWith("click")) {
            clickOn(button);
            return;
        }
        if (action.startsWith("Space")) {
            QTest::keyClick(button, Qt::Key_Space);
            return;
        }
        // From the checked button to the next one.
        button = buttonOf(window, checkedIn(window).value(0, "S355"));
        button->setFocus();
        QTest::keyClick(button, action == "Down" ? Qt::Key_Down : Qt::Key_Up);
    }
};

} // namespace vrn::test
