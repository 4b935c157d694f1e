#include "listing.h"

#include "number_text.h"

#include <vrn/units/catalogue.h>

#include <algorithm>
#include <array>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vrn::quantity_tool {
namespace {

using units::UnitRecord;
using units::UnitSetDefault;
using units::UnitSetRow;

constexpr std::size_t system_count = std::tuple_size_v<decltype(UnitSetRow::defaults)>;

/// The texts of all elements with `separator` between them.
template <typename Range, typename ToText>
std::string join(const Range& range, std::string_view separator, const ToText& to_text)
{
    std::string joined;
    for (const auto& element : range) {
        if (&element != &*std::begin(range))
            joined += separator;
        joined += to_text(element);
    }
    return joined;
}

std::string hexadecimal(std::uint32_t number, int width)
{
    std::ostringstream text;
    text << std::uppercase << std::hex << std::setfill('0') << std::setw(width) << number;
    return text.str();
}

std::vector<std::int32_t> compatible_units(const UnitSetRow& set)
{
    const auto& ids = set.compatible_units;
    return {ids.begin(), std::find(ids.begin(), ids.end(), 0)};
}

std::string json(std::string_view text)
{
    std::string literal = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\')
            literal += '\\';
        if (static_cast<unsigned char>(character) < 0x20)
            literal += "\\u" + hexadecimal(static_cast<unsigned char>(character), 4);
        else
            literal += character;
    }
    return literal + '"';
}

std::string json(const UnitRecord& unit)
{
    return "{\"id\": " + std::to_string(unit.id) + ", \"symbol\": " + json(unit.symbol)
        + ", \"alternative_symbols\": ["
        + join(unit.alternative_symbols, ", ", [](const std::string& each) { return json(each); })
        + "], \"factor\": " + exact_text(unit.factor) + ", \"dimension\": "
        + std::to_string(unit.dimension) + ", \"precision\": " + std::to_string(unit.precision)
        + ", \"is_base\": " + (unit.is_base ? "true" : "false") + '}';
}

std::string json(const UnitSetRow& set)
{
    const auto pair = [](const UnitSetDefault& each) {
        return '[' + std::to_string(each.unit) + ", " + std::to_string(each.precision) + ']';
    };
    const auto id = [](std::int32_t each) { return std::to_string(each); };
    return "{\"id\": " + std::to_string(set.id) + ", \"name\": " + json(set.name)
        + ", \"symbol\": " + json(set.symbol) + ", \"defaults\": [" + join(set.defaults, ", ", pair)
        + "], \"compatible\": [" + join(compatible_units(set), ", ", id) + "]}";
}

std::string json(std::size_t system, const std::vector<UnitSetRow>& sets)
{
    const auto member = [system](const UnitSetRow& set) {
        return json(set.name) + ": " + std::to_string(set.defaults.at(system).unit);
    };
    return "{\"id\": " + std::to_string(system) + ", \"units\": {" + join(sets, ", ", member)
        + "}}";
}

std::string columns(const UnitRecord& unit)
{
    const auto same = [](const std::string& each) { return each; };
    return std::to_string(unit.id) + '\t' + unit.symbol + '\t'
        + join(unit.alternative_symbols, " ", same) + '\t' + shortest_text(unit.factor) + '\t'
        + hexadecimal(unit.dimension, 6) + '\t' + std::to_string(unit.precision) + '\t'
        + (unit.is_base ? "base" : "-");
}

std::string columns(const UnitSetRow& set)
{
    const auto pair = [](const UnitSetDefault& each) {
        return std::to_string(each.unit) + ':' + std::to_string(each.precision);
    };
    const auto id = [](std::int32_t each) { return std::to_string(each); };
    return std::to_string(set.id) + '\t' + set.name + '\t' + set.symbol + '\t'
        + join(set.defaults, " ", pair) + '\t' + join(compatible_units(set), " ", id);
}

/// Writes `rows`, texts of one line each, as the elements of one array.
void write_json(std::ostream& output, const std::vector<std::string>& rows)
{
    const auto same = [](const std::string& row) { return row; };
    output << "[\n" << join(rows, ",\n", same) << "\n]\n";
}

template <typename Row>
void write_table(
    std::ostream& output, ListStyle style, const char* heading, const std::vector<Row>& rows)
{
    std::vector<std::string> lines;
    lines.reserve(rows.size());
    for (const Row& row : rows)
        lines.push_back(style == ListStyle::Json ? json(row) : columns(row));
    if (style == ListStyle::Json)
        return write_json(output, lines);
    output << heading << '\n';
    for (const std::string& line : lines)
        output << line << '\n';
}

void write_system_columns(std::ostream& output)
{
    constexpr std::array<std::string_view, 7> telling_kinds{"GEO_LENGTH", "GEO_THICKNESS",
        "SECT_AREA", "REINF_TOTAL", "BEAM_NFORCE", "LOAD_AREA", "MAT_STRESS"};

    std::unordered_map<std::int32_t, std::string> symbols;
    for (const auto& unit : units::list_units())
        symbols.emplace(unit.id, unit.symbol);
    std::unordered_map<std::string_view, std::array<UnitSetDefault, system_count>> defaults;
    for (const auto& set : units::list_unit_sets())
        defaults.emplace(set.name, set.defaults);

    output << "# system";
    for (const auto kind : telling_kinds)
        output << '\t' << kind;
    output << '\n';
    for (std::size_t system = 0; system < system_count; ++system) {
        output << system;
        for (const auto kind : telling_kinds)
            output << '\t' << symbols.at(defaults.at(kind).at(system).unit);
        output << '\n';
    }
}

} // namespace

void list_units(std::ostream& output, ListStyle style)
{
    write_table(output, style,
        "# id\tsymbol\talternative symbols\tfactor\tdimension\tprecision\tbase",
        units::list_units());
}

void list_kinds(std::ostream& output, ListStyle style)
{
    write_table(output, style,
        "# id\tname\tsymbol\tunit and precision code for each of ten systems\tcompatible units",
        units::list_unit_sets());
}

void list_systems(std::ostream& output, ListStyle style)
{
    if (style == ListStyle::Columns)
        return write_system_columns(output);
    const auto sets = units::list_unit_sets();
    std::vector<std::string> rows;
    for (std::size_t system = 0; system < system_count; ++system)
        rows.push_back(json(system, sets));
    write_json(output, rows);
}

} // namespace vrn::quantity_tool
