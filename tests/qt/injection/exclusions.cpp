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
