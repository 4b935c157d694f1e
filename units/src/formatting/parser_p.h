#pragma once

#include "formatting/i_parser_p.h"

#include <vrn/units/i_format_provider.h>
#include <vrn/units/i_unit_provider.h>

namespace vrn::units {
inline namespace v1 {

/// A number, decimal, with an exponent or a fraction, and a unit symbol: "12 kN/m2".
///
/// The providers and the converter are not owned.
class Parser : public IParser
{
public:
    Parser(const IUnitProvider* unit_provider, const IFormatProvider* format_provider,
        const IConverter* converter);

    boost::optional<IConverter::quantity> parse(
        const std::wstring& text, const std::locale& locale) const override;
    std::wstring format(IConverter::quantity q, const std::locale& locale) const override;

private:
    const IUnitProvider* m_unit_provider;
    const IFormatProvider* m_format_provider;
    const IConverter* m_converter;
};

} // namespace v1
} // namespace vrn::units
