#include "names.h"

#include "number_text.h"
#include "usage_error.h"

#include <vrn/units/catalogue.h>

#include <algorithm>
#include <optional>
#include <unordered_map>

namespace vrn::quantity_tool {
namespace {

using units::UnitId::UnitId;

std::optional<UnitId> read_id(const std::string& text)
{
    const auto number = read_int32(text);
    if (!number)
        return std::nullopt;
    return static_cast<UnitId>(*number);
}

std::unordered_map<std::string, UnitId> index_kinds()
{
    std::unordered_map<std::string, UnitId> kinds;
    for (const auto& set : units::list_unit_sets())
        kinds.emplace(set.name, static_cast<UnitId>(set.id));
    return kinds;
}

bool is_written(const units::UnitRecord& unit, const std::string& symbol)
{
    const auto& others = unit.alternative_symbols;
    return unit.symbol == symbol || std::find(others.begin(), others.end(), symbol) != others.end();
}

} // namespace

UnitId find_kind(const std::string& text)
{
    if (const auto id = read_id(text))
        return *id;
    static const auto kinds = index_kinds();
    const auto found = kinds.find(text);
    if (found == kinds.end())
        throw UsageError("no kind has the name \"" + text + '"');
    return found->second;
}

std::vector<UnitId> find_units(const std::string& text)
{
    if (const auto id = read_id(text))
        return {*id};
    std::vector<UnitId> found;
    for (const auto& unit : units::list_units()) {
        if (is_written(unit, text))
            found.push_back(unit.id);
    }
    if (found.empty())
        throw UsageError("no unit has the symbol \"" + text + '"');
    return found;
}

} // namespace vrn::quantity_tool
