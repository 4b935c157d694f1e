#pragma once

#include "formatting/symbol_map_p.h"

#include <vrn/units/i_converter.h>

#include <boost/optional.hpp>

#include <locale>
#include <string_view>

namespace vrn::units::detail {

/// The quantity that `text` is by the grammars of QuantityGrammar, in their order.
/// Empty if it is not a quantity. A number without a unit is a quantity of
/// UnitId::DIMENSIONLESS.
boost::optional<IConverter::quantity> read_quantity(
    std::wstring_view text, const std::locale& locale, const SymbolMap& symbols);

constexpr double metres_per_foot = 0.3048;
constexpr double metres_per_inch = 0.0254;

/// The length, in UnitId::FOOT, of a text in feet and inches such as "1' 3 1/2''" or
/// "1ft 3in". Empty for any other text. Both marks must be there. A number that is
/// missing or cannot be read is 0. The sign of the feet does not apply to the inches,
/// which must not be negative: "-1' 6''" is half a foot below zero.
boost::optional<IConverter::quantity> read_feet_and_inches(
    std::wstring_view text, const std::locale& locale);

} // namespace vrn::units::detail
