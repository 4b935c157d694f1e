#include "reference_quantity_reader.h"

#include <boost/locale/encoding_utf.hpp>

#include <cmath>
#include <map>
#include <regex>
#include <sstream>

namespace vrn::test {
namespace {

using units::IConverter;
namespace UnitId = units::UnitId;

/// No expression has a class of equivalence such as "[=a=]". The traits of the standard library
/// ask the locale about these for almost each character, which takes half of the time.
struct WithoutEquivalence : public std::regex_traits<wchar_t>
{
    template <typename Iterator>
    std::wstring transform_primary(Iterator /*begin*/, Iterator /*end*/) const
    {
        return {};
    }
};

using Regex = std::basic_regex<wchar_t, WithoutEquivalence>;

// Compiled expressions are kept: the same few are used over and over.
const Regex& compiled(const std::wstring& expression)
{
    static std::map<std::wstring, Regex> known;
    const auto entry = known.find(expression);
    if (entry != known.end())
        return entry->second;
    Regex regex;
    regex.imbue(std::locale::classic());
    regex.assign(expression);
    return known.emplace(expression, std::move(regex)).first->second;
}

std::vector<ReferenceGroup> groups_of(const std::wsmatch& match, const std::wstring& text)
{
    std::vector<ReferenceGroup> groups;
    for (std::size_t i = 1; i < match.size(); ++i) {
        const auto begin = match[i].matched ? match[i].first - text.begin() : 0;
        groups.push_back({match[i].str(), static_cast<std::size_t>(begin)});
    }
    return groups;
}

std::wstring trimmed(const std::wstring& text)
{
    const auto& ctype = std::use_facet<std::ctype<wchar_t>>(std::locale::classic());
    const wchar_t* begin = text.data();
    const wchar_t* end = begin + text.size();
    begin = ctype.scan_not(std::ctype_base::space, begin, end);
    while (end != begin && ctype.is(std::ctype_base::space, end[-1]))
        --end;
    return std::wstring(begin, end);
}

} // namespace

std::optional<std::vector<ReferenceGroup>> reference_match(
    const std::wstring& expression, const std::wstring& text)
{
    std::wsmatch match;
    if (!std::regex_match(text, match, compiled(expression)))
        return std::nullopt;
    return groups_of(match, text);
}

std::optional<std::vector<ReferenceGroup>> reference_search(
    const std::wstring& expression, const std::wstring& text)
{
    std::wsmatch match;
    if (!std::regex_search(text, match, compiled(expression)))
        return std::nullopt;
    return groups_of(match, text);
}

double reference_stream_number(const std::wstring& text, const std::locale& locale)
{
    std::wistringstream stream(text);
    stream.imbue(locale);
    double value = 0;
    stream >> value;
    return value;
}

double reference_number(const std::wstring& text, const std::locale& locale)
{
    const auto fraction = reference_match(LR"((-?)(\d+\s+)?(-?)(\d+)/(\d+))", text);
    if (!fraction)
        return reference_stream_number(text, locale);
    const auto& group = *fraction;
    const int sign = !group[0].text.empty() || !group[2].text.empty() ? -1 : 1;
    const double whole = group[1].text.empty() ? 0 : reference_stream_number(group[1].text, locale);
    const double numerator = reference_stream_number(group[3].text, locale);
    const double denominator = reference_stream_number(group[4].text, locale);
    return (numerator / denominator + whole) * sign;
}

// clang-format off

const ReferenceGrammar& reference_exponent_grammar()
{
    static const ReferenceGrammar grammar = {
        {
            L"^\\s*(-?\\d+(?:[\\.,]\\d+)?[eE][\\+-]?\\d+)\\s*",
            L"^\\s*(-?[\\.,]\\d+)[eE][\\+-]?\\d+\\s*",
        },
        {
            L"\\s*([^\\d\\s\\.,/\\-e][^\\s\\.,/]*)\\s*",
            L"\\s*([^\\d\\s\\.,/\\-][^\\s\\.,/]*\\s*(?:/[^\\d\\s\\.,/][^\\s\\.,/]*){1,2})\\s*",
            L"\\s*(1\\s*(?:/[^\\d\\s\\.,/-][^\\s\\.,/]*){1,2})\\s*",
            L"\\s*(-)\\s*$",
        },
    };
    return grammar;
}

const ReferenceGrammar& reference_decimal_grammar()
{
    static const ReferenceGrammar grammar = {
        {
            L"\\s*(-?[\\.,\\d]+)\\s*",
            L"\\s*(-?\\d*/\\d+)\\s*",
            L"\\s*(-?\\d+\\s*\\d*/\\d+)\\s*",
        },
        {
            L"\\s*([^\\d\\s\\.,/\\-][^\\s\\.,/]*)\\s*",
            L"\\s*([^\\d\\s\\.,/\\-][^\\s\\.,/]*\\s*(?:/[^\\d\\s\\.,/][^\\s\\.,/]*){1,2})\\s*",
            L"\\s*(1\\s*(?:/[^\\d\\s\\.,/-][^\\s\\.,/]*){1,2})\\s*",
            L"\\s*(-)\\s*$",
        },
    };
    return grammar;
}

// clang-format on

ReferenceQuantityReader::ReferenceQuantityReader(const units::IUnitProvider& provider)
{
    const auto decoded = [](const std::string& text) {
        return boost::locale::conv::utf_to_utf<wchar_t>(text);
    };
    for (const UnitId::UnitId id : provider.get_all_ids()) {
        const std::string& symbol = provider.get_symbol(id);
        if (symbol.empty())
            continue;
        m_spellings.emplace(decoded(symbol), id);
        for (const std::string& alternative : provider.get_alternative_symbols(id))
            m_spellings.emplace(decoded(alternative), id);
        if (static_cast<int>(id) == 8) {
            for (const auto* const spelling : {L"%", L"o/o", L"O/O", L"0/0"})
                m_spellings.emplace(spelling, id);
        }
        if (static_cast<int>(id) == 9) {
            for (const auto* const spelling : {L"o/oo", L"O/OO", L"0/00"})
                m_spellings.emplace(spelling, id);
        }
    }
}

ReferenceQuantityReader::Quantity ReferenceQuantityReader::read(
    const std::wstring& text, const std::locale& locale) const
{
    const Quantity quantity = read(reference_exponent_grammar(), text, locale);
    return quantity ? quantity : read(reference_decimal_grammar(), text, locale);
}

ReferenceQuantityReader::Quantity ReferenceQuantityReader::read(
    const ReferenceGrammar& grammar, const std::wstring& text, const std::locale& locale) const
{
    for (const std::wstring& found : grammar.units) {
        const auto search = reference_search(found, text);
        if (!search)
            continue;
        const ReferenceGroup& unit = search->front();
        if (unit.begin + unit.text.size() - 1 < text.size() - 1)
            continue;
        for (const std::wstring& glued : grammar.units) {
            for (const std::wstring& number : grammar.numbers) {
                const auto match = reference_match(number + glued, text);
                if (!match || match->size() != 2)
                    continue;
                const double value = reference_number(trimmed(match->at(0).text), locale);
                const auto spelling = m_spellings.find(trimmed(match->at(1).text));
                if (spelling != m_spellings.end())
                    return IConverter::quantity{spelling->second, value};
            }
        }
    }
    for (const std::wstring& number : grammar.numbers) {
        const auto match = reference_match(number, text);
        if (match && match->size() == 1)
            return IConverter::quantity{
                static_cast<UnitId::UnitId>(1), reference_number(match->at(0).text, locale)};
    }
    return boost::none;
}

ReferenceQuantityReader::Quantity ReferenceQuantityReader::read_feet_and_inches(
    const std::wstring& text, const std::locale& locale)
{
    auto match = reference_match(LR"(\s*(.*)'(.*)''\s*)", text);
    if (!match)
        match = reference_match(LR"(\s*(.*)ft(.*)in\s*)", text);
    if (!match)
        return boost::none;
    const double feet = reference_number(trimmed(match->at(0).text), locale);
    const double inches = reference_number(trimmed(match->at(1).text), locale);
    if (inches < 0 || std::isnan(inches))
        return boost::none;
    return IConverter::quantity{static_cast<UnitId::UnitId>(213), inches * 0.0254 / 0.3048 + feet};
}

} // namespace vrn::test
