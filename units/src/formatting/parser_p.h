#pragma once

#include "formatting/context_parser_p.h"

namespace vrn::units {
inline namespace v1 {

/// A number and a unit symbol: "12 kN/m2". The number may be a decimal, have an
/// exponent, or be a fraction.
class Parser : public ContextParser
{
public:
    using ContextParser::ContextParser;

    boost::optional<IConverter::quantity> parse(
        std::wstring_view text, const std::locale& locale) const override;

private:
    std::wstring write(IConverter::quantity q, const std::locale& locale) const override;
};

} // namespace v1
} // namespace vrn::units
