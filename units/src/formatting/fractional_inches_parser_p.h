#pragma once

#include "formatting/i_parser_p.h"

#include <vrn/units/i_format_provider.h>
#include <vrn/units/i_unit_provider.h>

namespace vrn::units {
inline namespace v1 {

/// Inches and a fraction: "3 1/2 ''". The precision of an id is the denominator of
/// the fraction.
///
/// The providers and the converter are not owned.
class FractionalInchesParser : public IParser
{
public:
    FractionalInchesParser(const IUnitProvider* unit_provider,
        const IFormatProvider* format_provider, const IConverter* converter);

    boost::optional<IConverter::quantity> parse(
        std::wstring_view text, const std::locale& locale) const override;
    std::wstring format(IConverter::quantity q, const std::locale& locale) const override;

private:
    [[maybe_unused]] const IUnitProvider* m_unit_provider; ///< Inches need no catalogue.
    const IFormatProvider* m_format_provider;
    const IConverter* m_converter;
};

} // namespace v1
} // namespace vrn::units
