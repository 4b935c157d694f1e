#pragma once

#include "formatting/context_parser_p.h"

namespace vrn::units {
inline namespace v1 {

/// Inches and a fraction: "3 1/2 ''". The precision of an id is the denominator of
/// the fraction.
class FractionalInchesParser : public ContextParser
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
