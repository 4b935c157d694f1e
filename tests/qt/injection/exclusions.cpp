#include "injection/exclusions.h"

#include "injection/actions.h"
#include "injection/cell.h"
#include "injection/controls.h"
#include "injection/deeds.h"

#include <fnmatch.h>

#include <algorithm>

namespace vrn::test::injection {

namespace {

// Deeds after which the control, its parent or its window is no longer there.
const char* const destruction = "@(delete |a dialog with )*";
// All but the throwing ones.
const char* const anythingElse = "!(throw*)";

} // namespace

const std::vector<Exclusion>& exclusions()
{
    static const std::vector<Exclusion> rows = {
        // clang-format off
        {"*", "*", "@(validate|validateWhenFinished|reformat|the edit hint|the conversion *)", destruction,
            "i_validator.h", "A validator must not destroy the control that asks it."},
        {"*EnumBox", "*", "the equality function", anythingElse,
            "simple_enum_box.h", "The function must not change the box."},
        {"*RadioButtonGroup*", "*", "the @(equality|order) function", anythingElse,
            "simple_radio_button_group.h", "The functions only compare."},
        {"*", "*", "the end of *", "throw*",
            "(C++)", "A destructor must not throw."},
        // clang-format on
    };
    return rows;
}

const Exclusion* exclusionOf(const Cell& cell)
{
    const auto matches = [](const char* pattern, const QByteArray& name) {
        return fnmatch(pattern, name.constData(), FNM_EXTMATCH) == 0;
    };
    const auto& rows = exclusions();
    const auto it = std::find_if(rows.begin(), rows.end(), [&](const Exclusion& row) {
        return matches(row.control, controlOf(cell).name)
            && matches(row.action, actionOf(cell).name) && matches(row.place, placeOf(cell))
            && matches(row.deed, deedOf(cell).name);
    });
    return it == rows.end() ? nullptr : &*it;
}

} // namespace vrn::test::injection
