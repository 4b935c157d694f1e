#include "translator.h"

#include "usage_error.h"

#include <vrn/units/catalogue.h>

#include <algorithm>
#include <boost/locale/encoding_utf.hpp>
#include <string_view>
#include <utility>

namespace vrn::quantity_tool {
namespace {

std::wstring to_wide(const std::string& text)
{
    namespace conv = boost::locale::conv;
    try {
        return conv::utf_to_utf<wchar_t>(text, conv::stop);
    } catch (const conv::conversion_error&) {
        throw UsageError("the text is not UTF-8");
    }
}

std::string to_utf8(const std::wstring& text)
{
    return boost::locale::conv::utf_to_utf<char>(text);
}

/// Leaves out the kinds of the "X-" group, whose energies have no common scale.
std::vector<Translator::UnitId> kinds_that_take(Translator::UnitId unit)
{
    constexpr std::string_view left_out = "X-";

    std::vector<Translator::UnitId> kinds;
    for (const auto& set : units::list_unit_sets()) {
        const auto end = std::find(set.compatible_units.begin(), set.compatible_units.end(), 0);
        if (std::find(set.compatible_units.begin(), end, unit) != end
            && std::string_view(set.name).substr(0, left_out.size()) != left_out)
            kinds.push_back(static_cast<Translator::UnitId>(set.id));
    }
    return kinds;
}

} // namespace

Translator::Translator(units::Context context, const std::locale& locale)
    : m_context(std::move(context))
    , m_locale(locale)
{}

std::optional<Translator::Quantity> Translator::parse(const std::string& text, UnitId kind) const
{
    const auto quantity = m_context.parse(to_wide(text), kind, m_locale);
    if (!quantity)
        return std::nullopt;
    return *quantity;
}

units::Entry Translator::entry(const std::string& text, UnitId kind) const
{
    return units::read_entry(to_wide(text), m_context, kind, units::number_signs(m_locale));
}

std::string Translator::sentence(const units::EntryReason& reason)
{
    return to_utf8(units::sentence(reason));
}

std::string Translator::format(Quantity quantity) const
{
    return to_utf8(m_context.format(quantity, m_locale));
}

std::optional<std::string> Translator::show(const std::string& text, UnitId kind) const
{
    const auto quantity = parse(text, kind);
    if (!quantity)
        return std::nullopt;
    return format(*quantity);
}

std::optional<std::string> Translator::convert(
    const std::string& text, const std::vector<UnitId>& units) const
{
    std::optional<Quantity> by_dimension;
    for (const UnitId unit : units) {
        const auto quantity = parse(text, unit);
        if (!quantity)
            continue;
        for (const UnitId kind : kinds_that_take(unit)) {
            if (const auto by_kind = parse_by_kind(text, kind, unit))
                return format(*by_kind);
        }
        if (!by_dimension)
            by_dimension = quantity;
    }
    if (!by_dimension)
        return std::nullopt;
    return format(*by_dimension);
}

std::optional<Translator::Quantity> Translator::parse_by_kind(
    const std::string& text, UnitId kind, UnitId unit) const
{
    units::Context context = m_context;
    context.format_provider().set_unit(kind, unit); // the unit of a bare number
    const auto quantity = context.parse(to_wide(text), kind, m_locale);
    if (!quantity)
        return std::nullopt;
    return context.converter().convert(*quantity, unit);
}

} // namespace vrn::quantity_tool
