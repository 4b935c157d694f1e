#pragma once

#include <iosfwd>

/// The tables of the unit library: in columns with tabs between them, or as JSON
/// with one row per line.
namespace vrn::quantity_tool {

enum class ListStyle
{
    Columns,
    Json
};

/// In table order. JSON: `id`, `symbol`, `alternative_symbols`, `factor` with 17
/// significant digits, `dimension` (the code), `precision` (the code), `is_base`.
void list_units(std::ostream& output, ListStyle style);

/// By rising id. JSON: `id`, `name`, `symbol`, `defaults` (for each system a pair of
/// unit id and precision code), `compatible` (unit ids).
void list_kinds(std::ostream& output, ListStyle style);

/// Columns show the display units of a few kinds that tell the systems apart. JSON:
/// `id` and `units`, the id of the display unit of every kind, by its name.
void list_systems(std::ostream& output, ListStyle style);

} // namespace vrn::quantity_tool
