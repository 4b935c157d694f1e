#include <vrn/q/unit_index.h>

#include <vrn/assert/smart_assert.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

struct UnitIndexRow
{
    int index;
    double metres;
    int precision;
    std::string_view label;
};

// The international foot is 0.3048 m and the inch 0.0254 m, both exactly.
// clang-format off
constexpr std::array<UnitIndexRow, 7> unitIndexRows {{
    {   13, 1.0,    3, "m"  },
    {   14, 0.1,    3, "dm" },
    {   15, 0.01,   1, "cm" },
    {   16, 0.001,  0, "mm" },
    {  213, 0.3048, 3, "ft" },
    {  214, 0.0254, 3, "in" },
    { 1001, 1.0,    3, "m"  },
}};
// clang-format on

constexpr UnitIndexRow unknownUnit{0, 1.0, 3, {}};

const UnitIndexRow& rowOf(int unit)
{
    const auto row = std::find_if(unitIndexRows.begin(), unitIndexRows.end(),
        [unit](const UnitIndexRow& candidate) { return candidate.index == unit; });
    const bool isKnownUnitIndex = row != unitIndexRows.end();
    VRN_ASSERT(isKnownUnitIndex)("unit", unit);
    return isKnownUnitIndex ? *row : unknownUnit;
}

} // namespace

double vrn_get_unitd(int unit, int which)
{
    using namespace vrn::q;
    VRN_ASSERT(which == UnitSizeInMetres || which == DisplayToInternal)("which", which);
    // The internal unit is the metre, so both factors are one number.
    return rowOf(unit).metres;
}

int vrn_get_unit_precision(int unit, int /*which*/)
{
    return rowOf(unit).precision;
}

int vrn_get_unit_label(int unit, int /*which*/, char* buffer, int limit)
{
    const std::string_view label = rowOf(unit).label;
    if (label.empty() || static_cast<int>(label.size()) > limit)
        return 0;
    *std::copy(label.begin(), label.end(), buffer) = '\0';
    return 1;
}
