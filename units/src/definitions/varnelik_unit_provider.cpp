#include <vrn/units/varnelik_unit_provider.h>

#include "definitions/unit_records_p.h"
#include "unitset/unit_formats_p.h"

#include <stdexcept>

namespace vrn::units {
inline namespace v1 {
namespace {

[[noreturn]] void throw_unknown_id()
{
    throw std::invalid_argument("unit_id");
}

std::vector<UnitId::UnitId> gather_all_ids()
{
    std::vector<UnitId::UnitId> ids;
    ids.reserve(get_unit_records().size() + get_set_units().size());
    for (const auto& [id, record] : get_unit_records())
        ids.push_back(id);
    for (const auto& [id, units] : get_set_units())
        ids.push_back(id);
    return ids;
}

} // namespace

IUnitProvider::~IUnitProvider() = default;

bool VarnelikUnitProvider::is_known(UnitId::UnitId unit_id) const
{
    return get_unit_records().find(unit_id) || get_set_units().find(unit_id);
}

std::vector<UnitId::UnitId> VarnelikUnitProvider::get_all_ids() const
{
    static const std::vector<UnitId::UnitId> ids = gather_all_ids();
    return ids;
}

std::uint32_t VarnelikUnitProvider::get_dimension(UnitId::UnitId unit_id) const
{
    if (const auto* record = get_unit_records().find(unit_id))
        return record->dimension;
    if (const auto* units = get_set_units().find(unit_id))
        return get_dimension(units->front());
    throw_unknown_id();
}

double VarnelikUnitProvider::get_factor(UnitId::UnitId unit_id) const
{
    if (const auto* record = get_unit_records().find(unit_id))
        return record->factor;
    if (get_set_units().find(unit_id))
        return 1.0;
    throw_unknown_id();
}

const std::string& VarnelikUnitProvider::get_symbol(UnitId::UnitId unit_id) const
{
    if (const auto* record = get_unit_records().find(unit_id))
        return record->symbol;
    static const std::string no_symbol;
    if (get_set_units().find(unit_id))
        return no_symbol;
    throw_unknown_id();
}

const std::vector<std::string>& VarnelikUnitProvider::get_alternative_symbols(
    UnitId::UnitId unit_id) const
{
    if (const auto* record = get_unit_records().find(unit_id))
        return record->alternative_symbols;
    throw_unknown_id();
}

const std::vector<UnitId::UnitId>& VarnelikUnitProvider::get_compatible_units(
    UnitId::UnitId unit_id) const
{
    static const std::vector<UnitId::UnitId> no_units;
    if (get_unit_records().find(unit_id))
        return no_units;
    if (const auto* units = get_set_units().find(unit_id))
        return *units;
    throw_unknown_id();
}

} // namespace v1
} // namespace vrn::units
