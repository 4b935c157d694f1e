#include "unitset/unit_formats_p.h"

#include "definitions/unit_table_p.h"
#include "unitset/unit_set_table_p.h"

#include <algorithm>

namespace vrn::units {
inline namespace v1 {
namespace {

UnitFormat make_format(UnitId::UnitId unit, std::int32_t precision_code)
{
    UnitFormat result;
    result.unit_id = unit;
    result.precision = precision_code % 100;
    result.format = precision_code / 100;
    return result;
}

IdMap<std::array<UnitFormat, 10>> make_default_formats()
{
    IdMap<std::array<UnitFormat, 10>> result;
    for (const UnitSetRow& row : unitSetTable) {
        std::array<UnitFormat, 10> formats;
        std::transform(row.defaults.begin(), row.defaults.end(), formats.begin(),
            [](const UnitSetDefault& each) {
                return make_format(static_cast<UnitId::UnitId>(each.unit), each.precision);
            });
        result.emplace(static_cast<UnitId::UnitId>(row.id), std::move(formats));
    }
    return result;
}

IdMap<UnitFormat> make_unit_formats()
{
    IdMap<UnitFormat> result;
    for (const UnitRow& row : unitTable) {
        const auto id = static_cast<UnitId::UnitId>(row.id);
        result.emplace(id, make_format(id, row.precision));
    }
    return result;
}

IdMap<std::vector<UnitId::UnitId>> make_set_units()
{
    IdMap<std::vector<UnitId::UnitId>> result;
    for (const UnitSetRow& row : unitSetTable) {
        std::vector<UnitId::UnitId> units;
        for (const std::int32_t unit : row.compatible_units) {
            if (unit == 0)
                break;
            units.push_back(static_cast<UnitId::UnitId>(unit));
        }
        result.emplace(static_cast<UnitId::UnitId>(row.id), std::move(units));
    }
    return result;
}

} // namespace

const IdMap<std::array<UnitFormat, 10>>& get_default_formats()
{
    static const IdMap<std::array<UnitFormat, 10>> formats = make_default_formats();
    return formats;
}

const IdMap<UnitFormat>& get_unit_formats()
{
    static const IdMap<UnitFormat> formats = make_unit_formats();
    return formats;
}

const IdMap<std::vector<UnitId::UnitId>>& get_set_units()
{
    static const IdMap<std::vector<UnitId::UnitId>> units = make_set_units();
    return units;
}

std::vector<UnitSetRow> list_unit_sets()
{
    return {unitSetTable.begin(), unitSetTable.end()};
}

} // namespace v1
} // namespace vrn::units
