#pragma once

#include <vrn/units/i_converter.h>

#include <boost/optional.hpp>

#include <locale>
#include <string>
#include <string_view>

namespace vrn::units {
inline namespace v1 {

/// Turns text into quantities and back, in one style of writing.
class IParser
{
public:
    virtual ~IParser();

    /// The quantity that `text` is, or nothing. A number without a unit is a
    /// quantity of UnitId::DIMENSIONLESS.
    virtual boost::optional<IConverter::quantity> parse(
        std::wstring_view text, const std::locale& locale) const = 0;

    /// `q` in the display unit of its id.
    virtual std::wstring format(IConverter::quantity q, const std::locale& locale) const = 0;
};

} // namespace v1
} // namespace vrn::units
