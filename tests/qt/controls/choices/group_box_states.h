#pragma once

#include "check_box_states.h"

#include <vrn/qt/multi_edit_group_box.h>

namespace vrn::test {

struct GroupBoxStates : public CheckStates
{
    using Control = vrn::qt::MultiEditGroupBox;
    static constexpr const char* report = "checked";

    static const StateTable& table()
    {
        // clang-format off
        static const StateTable all = {
            "                  | f-    | f+    | c-    | c+    | v-d    | v+d    | c-d    | c+d    ",
            "click             | 1 f+  | 1 f-  | 1 c+  | 1 c-  | 0 v-d  | 0 v+d  | 0 c-d  | 0 c+d  ",
            "Space             | 1 f+  | 1 f-  | 1 c+  | 1 c-  | 0 v-d  | 0 v+d  | 0 c-d  | 0 c+d  ",
            "setChecked(true)  | 0 f+  | 0 f+  | 0 c+  | 0 c+  | 0 v+d  | 0 v+d  | 0 c+d  | 0 c+d  ",
            "setChecked(false) | 0 f-  | 0 f-  | 0 c-  | 0 c-  | 0 v-d  | 0 v-d  | 0 c-d  | 0 c-d  ",
            "setValue(true)    | 1 f+  | 1 f+  | 1 c+  | 1 c+  | 1 c+d  | 1 c+d  | 1 c+d  | 1 c+d  ",
            "setValue(false)   | 1 f-  | 1 f-  | 1 c-  | 1 c-  | 1 c-d  | 1 c-d  | 1 c-d  | 1 c-d  ",
            "setValue(1)       | !0 f- | !0 f+ | !0 c- | !0 c+ | !0 v-d | !0 v+d | !0 c-d | !0 c+d ",
            "setValue()        | !0 f- | !0 f+ | !0 c- | !0 c+ | !0 v-d | !0 v+d | !0 c-d | !0 c+d ",
            "readValue(true)   | 0 c+  | 0 c+  | 0 v-d | 0 c+  | 0 v-d  | 0 v+d  | 0 v-d  | 0 c+d  ",
            "readValue(false)  | 0 c-  | 0 c-  | 0 c-  | 0 v+d | 0 v-d  | 0 v+d  | 0 c-d  | 0 v+d  ",
            "readValue(1)      | 0 f-  | 0 f+  | 0 c-  | 0 c+  | 0 v-d  | 0 v+d  | 0 c-d  | 0 c+d  ",
            "readValue()       | 0 f-  | 0 f+  | 0 c-  | 0 c+  | 0 v-d  | 0 v+d  | 0 c-d  | 0 c+d  ",
            "reset             | 0 f-  | 0 f-  | 0 f-  | 0 f-  | 0 f-   | 0 f-   | 0 f-   | 0 f-   ",
            "forceVaries       | 0 v-d | 0 v+d | 0 v-d | 0 v+d | 0 v-d  | 0 v+d  | 0 v-d  | 0 v+d  ",
        };
        // clang-format on
        return all;
    }

    static void perform(Control& control, const QString& action)
    {
        if (performAsProgram(control, action))
            return;
        if (action == "click") {
            clickOn(&control);
            return;
        }
        // A disabled box does not get the focus, and so no key either.
        control.setFocus();
        if (control.window()->focusWidget() == &control)
            QTest::keyClick(&control, Qt::Key_Space);
    }

    static QString shown(const Control& control)
    {
        const bool checked = control.isChecked();
        const boost::any current = control.dataVaries() ? boost::any() : boost::any(checked);
        if (!(control.getCurrentValue() == current) || control.getValue() != checked)
            return "another value than the box shows";
        return QString(control.dataVaries() ? "v" : "") + (checked ? '+' : '-')
            + (control.isEnabled() ? "" : "d");
    }
};

} // namespace vrn::test
