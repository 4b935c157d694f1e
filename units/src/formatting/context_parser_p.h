#pragma once

#include "formatting/i_parser_p.h"

#include <vrn/units/i_format_provider.h>
#include <vrn/units/i_unit_provider.h>

namespace vrn::units {
inline namespace v1 {

/// A parser that uses the parts of a context. It does not own them.
class ContextParser : public IParser
{
public:
    ContextParser(const IUnitProvider* unit_provider, const IFormatProvider* format_provider,
        const IConverter* converter);

    /// Empty, with a failed assertion, if a part is missing.
    std::wstring format(IConverter::quantity q, const std::locale& locale) const final;

protected:
    const IUnitProvider* m_unit_provider;
    const IFormatProvider* m_format_provider;
    const IConverter* m_converter;

private:
    /// What format() does when no part is missing.
    virtual std::wstring write(IConverter::quantity q, const std::locale& locale) const = 0;
};

} // namespace v1
} // namespace vrn::units
