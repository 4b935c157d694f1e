#include "injection/exclusions.h"

#include <algorithm>

namespace vrn::test::injection {
namespace {

// Deeds after which the control, its parent or its window is no longer there.
const QByteArray destroy = "@(delete |a dialog with )*";
const QByteArray destroyWindow = "@(delete |a dialog with @(delete|deleteLater) of )the window*";
// Those after which a part is no longer there, or all.
const QByteArray destroyPart =
    "@(delete |a dialog with |call a box goes|call a button goes|call clear"
    "|call setEditable|call setModel)*";

// Where Qt calls code of the application that the control has not called.
const QByteArray around = "@(an event filter*|the application's focusChanged*)";

std::vector<Exclusion> allRows()
{
    return {
        {"* / * / " + around + " / " + destroyPart, "controls.h",
            "Qt goes on with the widget that an event or the focus is about."},
        {"* / *, before the event loop runs / " + around + " / deleteLater *", "controls.h",
            "The same, in main()."},
        {"* / @(a box goes|a button goes|clear|setEditable*)* / " + around
                + " / @(call|throw|another language)*",
            "controls.h", "A part is half destroyed then."},
        {"*Toolbar / the user clicks the third button* / " + around + " / throw*", "controls.h",
            "Qt lets no exception pass through the dialog that is open."},
        {"* / * / the end of * / throw*", "controls.h", "A destructor must not throw."},
        {"*@(Check|Radio|Enum|Toolbar)* / the user * / inner * / " + destroy, "controls.h",
            "Qt goes on with the part after it has told of the user's action."},
        {"*Toolbar / * / inner * / " + destroy, "controls.h",
            "The edit in it is the application's."},
        {"*CheckBoxGroup / the user * / inner * / call a box goes", "controls.h",
            "Qt goes on with the box."},
        {"*Toolbar / * / inner * / call a button goes", "controls.h",
            "The edit in it is the application's."},
        {"*without a box / * / inner toggled* / @(delete|a dialog with)*",
            "simple_radio_button_group.h", "The buttons are the application's."},
        {"*without a box / the user presses Down* / valueChanged* / " + destroy,
            "simple_radio_button_group.h", "The same: Qt goes on with the button."},

        {"* / @(hide|setEnabled?false?)* / * / " + destroy, "simple_line_edit.h",
            "Qt goes on with the control after it has taken the focus away."},
        {"* / the user @(presses Tab|clicks|leaves|goes|closes)* / * / " + destroyWindow,
            "simple_line_edit.h", "Qt goes on with the widget that gets the focus."},

        {"*EnumBox / the user picks from the list by keys* / * / " + destroyWindow,
            "simple_enum_box.h", "Qt goes on with the window that has got the key."},
        {"*EnumBox / the user @(picks|presses Space|presses Down)* / * / another style*",
            "simple_enum_box.h", "Qt goes on with the list that it is about to show or hide."},
        {"*EnumBox / the user picks * / inner * / call setEditable(false)", "simple_enum_box.h",
            "Qt destroys the edit at once."},
        {"*EnumBox / * / the equality function / !(throw*)", "simple_enum_box.h",
            "The function must not change the box."},
        {"*EnumBox / *, before the event loop runs / the equality function / deleteLater *",
            "simple_enum_box.h", "The same, in main()."},
        {"*RadioButtonGroup* / * / the @(equality|order) function / !(throw*)",
            "simple_radio_button_group.h", "The functions only compare."},
        {"*MultiEditValue / * / the equality function / " + destroy, "multi_edit_value.h",
            "The function only compares."},
        {"*MultiEditValue / *, before the event loop runs / the equality function / deleteLater *",
            "multi_edit_value.h", "The same, in main()."},
        {"* / * / the layouter's * / " + destroy, "i_layouter.h",
            "The control is being made then."},
        {"*Toolbar / a button goes / the end of * / " + destroy, "toolbar.h",
            "The button is half destroyed then."},
        {"*PropertyPage / * / inner selectionChanged* / " + destroyPart, "property_page.h",
            "Qt goes on with the editor that the page has given another text."},
    };
}

} // namespace

const std::vector<Exclusion>& exclusions()
{
    static const std::vector<Exclusion> rows = allRows();
    return rows;
}

bool isExcluded(const Cell& cell)
{
    const auto& rows = exclusions();
    return std::any_of(
        rows.begin(), rows.end(), [&](const Exclusion& row) { return row.cells.matches(cell); });
}

} // namespace vrn::test::injection
