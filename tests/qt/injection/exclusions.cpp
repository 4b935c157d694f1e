#include "injection/exclusions.h"

#include <algorithm>

namespace vrn::test::injection {

const std::vector<Exclusion>& exclusions()
{
    // Deeds after which the control, its parent or its window is no longer there.
    static const QByteArray destroy = "@(delete |a dialog with )*";
    static const QByteArray inValidator =
        "@(validate|validateWhenFinished|reformat|the edit hint|the conversion *)";

    static const std::vector<Exclusion> rows = {
        {"* / * / " + inValidator + " / " + destroy, "i_validator.h",
            "A validator must not destroy the control that asks it."},
        {"* / *, before the event loop runs / " + inValidator + " / deleteLater *", "i_validator.h",
            "A validator must not destroy the control that asks it."},
        {"*EnumBox / * / the equality function / !(throw*)", "simple_enum_box.h",
            "The function must not change the box."},
        {"*RadioButtonGroup* / * / the @(equality|order) function / !(throw*)",
            "simple_radio_button_group.h", "The functions only compare."},
        {"* / * / the end of * / throw*", "(C++)", "A destructor must not throw."},
        // The promise is about the slots of a control's own signals and the functions that
        // it calls. What hangs on its inner widgets is Qt's.
        {"* / * / @(inner *|an event filter*|the application's focusChanged*) / " + destroy,
            "docs/architecture.md", "Only the control's own signals and functions are safe."},
        {"* / * / @(vetoValidation|onValidated)* / " + destroy, "simple_line_edit.h",
            "Overrides run in the middle of a validation."},
        {"* / @(hide|clearFocus|setEnabled*)* / * / " + destroy, "simple_line_edit.h",
            "Qt goes on with the control after it has taken the focus away."},
        {"* / * / the layouter's * / " + destroy, "i_layouter.h",
            "The control is being made then."},
        {"*Toolbar* / * / the end of * / " + destroy, "toolbar.h",
            "The toolbar is at work on the button then."},
        {"a MultiEditValue* / * / the @(comparison|predicate)* / " + destroy, "multi_edit_value.h",
            "The function only compares."},
    };
    return rows;
}

bool isExcluded(const Cell& cell)
{
    const auto& rows = exclusions();
    return std::any_of(
        rows.begin(), rows.end(), [&](const Exclusion& row) { return row.cells.matches(cell); });
}

} // namespace vrn::test::injection
