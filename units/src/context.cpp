#include <vrn/units/context.h>

#include "definitions/unit_facts_p.h"
#include "definitions/unit_records_p.h"
#include "formatting/display_label_p.h"
#include "formatting/feet_and_fractional_inches_parser_p.h"
#include "formatting/fractional_inches_parser_p.h"
#include "formatting/parser_p.h"

#include <stdexcept>
#include <utility>

namespace vrn::units {
inline namespace v1 {
namespace {

/// A parser with the parts of the context.
template <typename Kind>
Kind parser_of(const Context& context)
{
    return Kind(&context.unit_provider(), &context.format_provider(), &context.converter());
}

} // namespace

Context::Context(std::int32_t system_index, std::map<std::int32_t, UnitFormat> overrides)
    : m_format_provider(system_index, std::move(overrides))
{
    m_converter.set_unit_provider(&m_unit_provider);
}

Context::~Context() = default;

Context::Context(const Context& other)
    : m_format_provider(other.m_format_provider)
{
    m_converter.set_unit_provider(&m_unit_provider);
}

Context::Context(Context&& other) noexcept
    : m_format_provider(std::move(other.m_format_provider))
{
    m_converter.set_unit_provider(&m_unit_provider);
}

// An assignment copies or moves only the formats: each converter keeps the provider of
// its own object.
Context& Context::operator=(const Context& other)
{
    m_format_provider = other.m_format_provider;
    return *this;
}

Context& Context::operator=(Context&& other) noexcept
{
    if (this != &other)
        m_format_provider = std::move(other.m_format_provider);
    return *this;
}

boost::optional<IConverter::quantity> Context::parse(
    std::wstring_view text, UnitId::UnitId unit_id, const std::locale& locale) const
{
    auto parsed = read(text, unit_id, locale);
    if (!parsed)
        return boost::none;
    if (parsed->unit_id == UnitId::DIMENSIONLESS)
        parsed->unit_id = m_format_provider.get_unit(unit_id);
    return finish(*parsed, unit_id);
}

boost::optional<IConverter::quantity> Context::read(
    std::wstring_view text, UnitId::UnitId unit_id, const std::locale& locale) const
{
    const auto dimension = get_display_dimension(unit_id);
    if (dimension == get_display_dimension(UnitId::FEET_AND_FRACTIONAL_INCHES)) {
        if (const auto parsed = parser_of<FeetAndFractionalInchesParser>(*this).parse(text, locale))
            return parsed;
    }
    if (dimension == get_display_dimension(UnitId::FRACTIONAL_INCHES)) {
        if (const auto parsed = parser_of<FractionalInchesParser>(*this).parse(text, locale))
            return parsed;
    }
    return parser_of<Parser>(*this).parse(text, locale);
}

// One symbol may serve several kinds. A text is read as the first unit that has the
// symbol; here another unit with the same symbol may take its place.
boost::optional<IConverter::quantity> Context::finish(
    IConverter::quantity parsed, UnitId::UnitId unit_id) const
{
    if (const auto converted = m_converter.try_convert(parsed, unit_id))
        return converted;
    const auto* group = get_same_symbol_groups().find(parsed.unit_id);
    if (!group)
        return boost::none;
    for (const UnitId::UnitId member : *group) {
        if (const auto converted = m_converter.try_convert({member, parsed.value}, unit_id))
            return converted;
    }
    return boost::none;
}

std::wstring Context::format(IConverter::quantity q, const std::locale& locale) const
{
    switch (m_format_provider.get_unit(q.unit_id)) {
    case UnitId::FEET_AND_FRACTIONAL_INCHES:
        return parser_of<FeetAndFractionalInchesParser>(*this).format(q, locale);
    case UnitId::FRACTIONAL_INCHES:
        return parser_of<FractionalInchesParser>(*this).format(q, locale);
    default:
        return parser_of<Parser>(*this).format(q, locale);
    }
}

std::uint32_t Context::get_display_dimension(UnitId::UnitId unit_id) const
{
    // Throws the same if the id is not known.
    const UnitId::UnitId display_unit = m_format_provider.get_unit(unit_id);
    if (const UnitFacts* facts = table_of(m_unit_provider)->find(display_unit))
        return facts->dimension;
    throw std::invalid_argument("Invalid unit id.");
}

std::string Context::get_display_label(UnitId::UnitId unit_id) const
{
    return display_label(m_unit_provider, m_format_provider, unit_id);
}

} // namespace v1
} // namespace vrn::units
