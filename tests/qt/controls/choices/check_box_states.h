#pragma once

#include "state_table.h"

#include <vrn/qt/multi_edit_check_box.h>

#include <QCheckBox>

namespace vrn::test {

/// What the tests of a MultiEditCheckBox and of a MultiEditGroupBox have in common: a
/// value is checked or not.
struct CheckStates
{
    static constexpr bool isSuspendable = true;
    static constexpr const char* reportMessage = "";

    static boost::any valueIn(const QString& shown) { return shown.startsWith('+'); }
    static boost::any valueOtherThan(const QString& shown) { return !shown.startsWith('+'); }

    /// Returns false for an action of the user. Some values are not a `bool`: an int, and
    /// no value at all.
    template <typename Control>
    static bool performAsProgram(Control& control, const QString& action)
    {
        const QString name = action.section('(', 0, 0);
        const QString argument = argumentOf(action);
        const bool checked = argument == "true";
        const boost::any value = argument.isEmpty() ? boost::any()
            : argument == "1"                       ? boost::any(1)
                                                    : boost::any(checked);
        if (action == "reset")
            control.reset();
        else if (action == "forceVaries")
            control.forceVaries();
        else if (name == "setChecked")
            control.setChecked(checked);
        else if (name == "setValue")
            control.setValue(value);
        else if (name == "readValue")
            control.readValue(value);
        else
            return false;
        return true;
    }
};

struct CheckBoxStates : public CheckStates
{
    using Control = vrn::qt::MultiEditCheckBox;
    static constexpr const char* report = "v";

    static const StateTable& table()
    {
        // clang-format off
        static const StateTable all = {
            "                  | f-    | f+    | c-    | c+    | v    ",
            "click             | 1 f+  | 1 f-  | 1 c+  | 1 c-  | 1 c+ ",
            "Space             | 1 f+  | 1 f-  | 1 c+  | 1 c-  | 1 c+ ",
            "setChecked(true)  | 2 f+  | 1 f+  | 2 c+  | 1 c+  | 2 c+ ",
            "setChecked(false) | 1 f-  | 2 f-  | 1 c-  | 2 c-  | 2 c- ",
            "setValue(true)    | 2 f+  | 1 f+  | 2 c+  | 1 c+  | 2 c+ ",
            "setValue(false)   | 1 f-  | 2 f-  | 1 c-  | 2 c-  | 2 c- ",
            "setValue(1)       | !0 f- | !0 f+ | !0 c- | !0 c+ | !0 v ",
            "setValue()        | !0 f- | !0 f+ | !0 c- | !0 c+ | !0 v ",
            "readValue(true)   | 1 c+  | 0 c+  | 0 v   | 0 c+  | 0 v  ",
            "readValue(false)  | 0 c-  | 1 c-  | 0 c-  | 0 v   | 0 v  ",
            "readValue(1)      | 0 f-  | 0 f+  | 0 c-  | 0 c+  | 0 v  ",
            "readValue()       | 0 f-  | 0 f+  | 0 c-  | 0 c+  | 0 v  ",
            "reset             | 0 f-  | 1 f-  | 0 f-  | 1 f-  | 1 f- ",
            "forceVaries       | 0 v   | 0 v   | 0 v   | 0 v   | 0 v  ",
        };
        // clang-format on
        return all;
    }

    static QCheckBox* innerBox(const Control& control) { return control.findChild<QCheckBox*>(); }

    static void perform(Control& control, const QString& action)
    {
        if (performAsProgram(control, action))
            return;
        if (action == "click")
            clickOn(innerBox(control));
        else
            QTest::keyClick(innerBox(control), Qt::Key_Space);
    }

    static QString shown(const Control& control)
    {
        const QCheckBox* box = innerBox(control);
        const bool isPartial = box->checkState() == Qt::PartiallyChecked;
        if (isPartial != control.dataVaries() || box->isTristate() != isPartial)
            return "a box that does not show whether the control varies";
        if (isPartial)
            return control.getCurrentValue().empty() ? "v" : "varies, but has a value";
        const bool checked = box->isChecked();
        if (!(control.getCurrentValue() == boost::any(checked)) || control.isChecked() != checked
            || control.getValue() != checked)
            return "another value than the box shows";
        return checked ? "+" : "-";
    }
};

} // namespace vrn::test
