#include <vrn/q/unit_index.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/q/input_context.h>

#include <algorithm>
#include <optional>
#include <string>

namespace {

using namespace vrn::units;

/// The unit of length that an index stands for.
struct LengthUnit
{
    double metres = 1.0;
    int precision = 3;
    std::string label;
};

/// A unit set is shown as the application has chosen; a unit is shown as itself, with
/// its defaults.
const Context& context_of(UnitId::UnitId id)
{
    static const Context defaults;
    return id >= UnitId::GEO_DISTANCE ? get_active_input_context() : defaults;
}

/// Units with fractions of inches have a denominator as their precision and a pattern as
/// their symbol. Plain numbers are in feet and in inches instead.
UnitId::UnitId plain_number_unit(UnitId::UnitId unit)
{
    switch (unit) {
    case UnitId::FEET_AND_FRACTIONAL_INCHES:
        return UnitId::FOOT;
    case UnitId::FRACTIONAL_INCHES:
        return UnitId::INCH;
    default:
        return unit;
    }
}

bool is_length(const Context& context, UnitId::UnitId unit)
{
    const VarnelikUnitProvider& units = context.unit_provider();
    return units.is_known(unit) && units.get_dimension(unit) == units.get_dimension(UnitId::METRE);
}

std::optional<LengthUnit> find_length_unit(UnitId::UnitId id)
{
    const Context& context = context_of(id);
    if (!context.format_provider().is_known(id))
        return std::nullopt;
    const UnitId::UnitId shown = context.format_provider().get_unit(id);
    if (!is_length(context, shown))
        return std::nullopt;
    if (const UnitId::UnitId plain = plain_number_unit(shown); plain != shown)
        return find_length_unit(plain);
    return LengthUnit{context.unit_provider().get_factor(shown),
        context.format_provider().get_precision(id), context.get_display_label(id)};
}

LengthUnit length_unit(int index)
{
    const std::optional<LengthUnit> unit = find_length_unit(static_cast<UnitId::UnitId>(index));
    const bool isKnownUnitIndex = unit.has_value();
    VRN_ASSERT(isKnownUnitIndex)("unit", index);
    return unit.value_or(LengthUnit{});
}

} // namespace

double vrn_get_unitd(int unit, int which)
{
    using namespace vrn::q;
    VRN_ASSERT(which == UnitSizeInMetres || which == DisplayToInternal)("which", which);
    // The internal unit is the metre, so both factors are the same.
    return length_unit(unit).metres;
}

int vrn_get_unit_precision(int unit, int /*which*/)
{
    return length_unit(unit).precision;
}

int vrn_get_unit_label(int unit, int /*which*/, char* buffer, int limit)
{
    VRN_ASSERT(buffer);
    if (!buffer)
        return 0;
    const std::string label = length_unit(unit).label;
    if (label.empty() || static_cast<int>(label.size()) > limit)
        return 0;
    *std::copy(label.begin(), label.end(), buffer) = '\0';
    return 1;
}
