#include "definitions/unit_records_p.h"

#include "definitions/unit_table_p.h"

#include <unordered_map>

namespace vrn::units {
inline namespace v1 {
namespace {

UnitRecord make_record(const UnitRow& row)
{
    UnitRecord record;
    record.id = static_cast<UnitId::UnitId>(row.id);
    record.is_base = (row.packed & baseFlag) != 0;
    record.dimension = row.packed & ~baseFlag;
    record.precision = row.precision;
    record.factor = row.factor;
    record.symbol = row.symbol;
    if (record.id == UnitId::INCH || record.id == UnitId::FRACTIONAL_INCHES)
        record.alternative_symbols.emplace_back("''");
    if (record.id == UnitId::FOOT)
        record.alternative_symbols.emplace_back("'");
    return record;
}

IdMap<UnitRecord> make_records()
{
    IdMap<UnitRecord> records;
    for (const UnitRow& row : unitTable)
        records.emplace(static_cast<UnitId::UnitId>(row.id), make_record(row));
    return records;
}

IdMap<std::vector<UnitId::UnitId>> make_same_symbol_groups()
{
    std::unordered_map<std::string, std::vector<UnitId::UnitId>> ids_by_symbol;
    for (const auto& [id, record] : get_unit_records())
        ids_by_symbol[record.symbol].push_back(id);

    IdMap<std::vector<UnitId::UnitId>> groups;
    for (const auto& [id, record] : get_unit_records()) {
        const auto& group = ids_by_symbol.at(record.symbol);
        if (group.size() > 1)
            groups.emplace(id, group);
    }
    return groups;
}

} // namespace

const IdMap<UnitRecord>& get_unit_records()
{
    static const IdMap<UnitRecord> records = make_records();
    return records;
}

const IdMap<std::vector<UnitId::UnitId>>& get_same_symbol_groups()
{
    static const IdMap<std::vector<UnitId::UnitId>> groups = make_same_symbol_groups();
    return groups;
}

std::vector<UnitRecord> list_units()
{
    std::vector<UnitRecord> units;
    units.reserve(get_unit_records().size());
    for (const auto& [id, record] : get_unit_records())
        units.push_back(record);
    return units;
}

} // namespace v1
} // namespace vrn::units
