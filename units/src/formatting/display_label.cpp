#include "formatting/display_label_p.h"

#include <algorithm>

namespace vrn::units {
inline namespace v1 {

std::string display_label(
    const IUnitProvider& unit_provider, const IFormatProvider& format_provider, UnitId::UnitId id)
{
    const UnitId::UnitId display_unit = format_provider.get_unit(id);
    if (const auto label = format_provider.get_label(id)) {
        if (label->empty())
            return {};
        const auto& spellings = unit_provider.get_alternative_symbols(display_unit);
        if (std::find(spellings.begin(), spellings.end(), *label) != spellings.end())
            return *label;
    }
    return unit_provider.get_symbol(display_unit);
}

} // namespace v1
} // namespace vrn::units
