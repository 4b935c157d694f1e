#include "translator.h"

#include "usage_error.h"

#include <boost/locale/encoding_utf.hpp>

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

} // namespace

Translator::Translator(units::Context context, std::locale locale)
    : m_context(std::move(context))
    , m_locale(std::move(locale))
{}

std::optional<Translator::Quantity> Translator::parse(const std::string& text, UnitId kind) const
{
    const auto quantity = m_context.parse(to_wide(text), kind, m_locale);
    if (!quantity)
        return std::nullopt;
    return *quantity;
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
    for (const UnitId unit : units) {
        if (auto shown = show(text, unit))
            return shown;
    }
    return std::nullopt;
}

} // namespace vrn::quantity_tool
