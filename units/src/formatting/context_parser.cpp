#include "formatting/context_parser_p.h"

#include <vrn/assert/smart_assert.h>

namespace vrn::units {
inline namespace v1 {

IParser::~IParser() = default;

ContextParser::ContextParser(const IUnitProvider* unit_provider,
    const IFormatProvider* format_provider, const IConverter* converter)
    : m_unit_provider(unit_provider)
    , m_format_provider(format_provider)
    , m_converter(converter)
{}

std::wstring ContextParser::format(IConverter::quantity q, const std::locale& locale) const
{
    const bool is_complete = m_unit_provider && m_format_provider && m_converter;
    VRN_ASSERT(is_complete);
    return is_complete ? write(q, locale) : std::wstring();
}

} // namespace v1
} // namespace vrn::units
