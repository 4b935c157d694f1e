#include "reference_entry_reader.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <regex>

namespace vrn::test {
namespace {

constexpr double metres_per_foot = 0.3048;
constexpr double metres_per_inch = 0.0254;

bool is_digit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

bool is_letter(wchar_t character)
{
    return (character >= L'a' && character <= L'z') || (character >= L'A' && character <= L'Z');
}

double read_plain(const std::wstring& digits)
{
    return std::wcstod(digits.c_str(), nullptr);
}

/// The number in plain digits with a point.
double read_digits(std::wstring digits)
{
    digits.erase(std::remove_if(digits.begin(), digits.end(),
                     [](wchar_t each) { return each == L' ' || each == L'\'' || each == L','; }),
        digits.end());
    return read_plain(digits);
}

std::vector<double> decimals(const std::wstring& text)
{
    static const std::wregex plain(LR"((\d+\.?\d*|\.\d+)([eE][+-]?\d+)?)");
    static const std::wregex comma(LR"((\d*,\d+)([eE][+-]?\d+)?)");
    static const std::wregex groups(
        LR"([1-9]\d{0,2}(( \d{3})+|('\d{3})+|(,\d{3})+)(\.\d*)?([eE][+-]?\d+)?)");
    static const std::wregex mixed_groups(LR"([1-9]\d{0,2}([ ']\d{3})+(\.\d*)?([eE][+-]?\d+)?)");
    static const std::wregex power(LR"(10\^([+-]?\d+))");

    std::vector<double> values;
    std::wsmatch match;
    if (std::regex_match(text, plain))
        values.push_back(read_plain(text));
    if (std::regex_match(text, groups) || std::regex_match(text, mixed_groups))
        values.push_back(read_digits(text));
    if (std::regex_match(text, comma)) {
        std::wstring with_point = text;
        std::replace(with_point.begin(), with_point.end(), L',', L'.');
        values.push_back(read_plain(with_point));
    }
    if (std::regex_match(text, match, power))
        values.push_back(read_plain(L"1e" + match[1].str()));
    return values;
}

template <typename Combine>
void combine(const std::vector<EntryMeaning>& left, const std::vector<EntryMeaning>& right,
    std::vector<EntryMeaning>& result, Combine combine_two)
{
    for (const EntryMeaning& one : left) {
        for (const EntryMeaning& other : right)
            combine_two(one, other, result);
    }
}

/// Keeps one of each.
void tidy(std::vector<EntryMeaning>& meanings)
{
    const auto is_less = [](const EntryMeaning& a, const EntryMeaning& b) {
        return std::tie(a.value, a.has_unit, a.dimension)
            < std::tie(b.value, b.has_unit, b.dimension);
    };
    meanings.erase(std::remove_if(meanings.begin(), meanings.end(),
                       [](const EntryMeaning& each) { return !std::isfinite(each.value); }),
        meanings.end());
    std::sort(meanings.begin(), meanings.end(), is_less);
    meanings.erase(std::unique(meanings.begin(), meanings.end(),
                       [&](const EntryMeaning& a, const EntryMeaning& b) {
                           return !is_less(a, b) && !is_less(b, a);
                       }),
        meanings.end());
}

} // namespace

ReferenceEntryReader::ReferenceEntryReader(std::map<std::wstring, Unit> units, Unit shown)
    : m_units(std::move(units))
    , m_shown(shown)
{}

std::vector<double> ReferenceEntryReader::read(const std::wstring& text)
{
    m_text = text;
    m_sums.clear();
    m_products.clear();
    const Span whole = trimmed({0, text.size()});
    Meanings meanings = sum(whole);
    // A dash at the end means that there is no unit.
    if (whole.second > whole.first && m_text[whole.second - 1] == L'-') {
        Span before = trimmed({whole.first, whole.second - 1});
        const bool is_signed = before.second > before.first
            && (m_text[before.first] == L'-' || m_text[before.first] == L'+');
        const double sign = is_signed && m_text[before.first] == L'-' ? -1 : 1;
        if (is_signed)
            before = trimmed({before.first + 1, before.second});
        for (const double value : number(before))
            meanings.push_back({sign * value, false, 0});
    }
    std::vector<double> values;
    for (const EntryMeaning& meaning : meanings)
        values.push_back(meaning.has_unit ? meaning.value : meaning.value * m_shown.factor);
    return values;
}

ReferenceEntryReader::Span ReferenceEntryReader::trimmed(Span span) const
{
    while (span.first < span.second && m_text[span.first] == L' ')
        ++span.first;
    while (span.first < span.second && m_text[span.second - 1] == L' ')
        --span.second;
    return span;
}

ReferenceEntryReader::Meanings ReferenceEntryReader::sum(Span span)
{
    span = trimmed(span);
    const auto known = m_sums.find(span);
    if (known != m_sums.end())
        return known->second;
    Meanings meanings = product(span);
    for (std::size_t i = span.first + 1; i + 1 < span.second; ++i) {
        const wchar_t sign = m_text[i];
        if ((sign != L'+' && sign != L'-') || (sign == L'-' && is_joining_hyphen(i, span.second)))
            continue;
        combine(sum({span.first, i}), product({i + 1, span.second}), meanings,
            [sign](const EntryMeaning& left, const EntryMeaning& right, Meanings& result) {
                if (left.has_unit != right.has_unit || left.dimension != right.dimension)
                    return;
                const double value = sign == L'+' ? left.value + right.value
                                                  : left.value - right.value;
                result.push_back({value, left.has_unit, left.dimension});
            });
    }
    tidy(meanings);
    return m_sums[span] = meanings;
}

/// After the mark of feet, and with inches after it.
bool ReferenceEntryReader::is_joining_hyphen(std::size_t place, std::size_t end) const
{
    const Span before = trimmed({0, place});
    if (before.second == 0 || m_text[before.second - 1] != L'\''
        || (before.second > 1 && m_text[before.second - 2] == L'\''))
        return false;
    for (std::size_t k = place + 2; k < end; ++k) {
        for (std::size_t last = k + 1; last <= end; ++last) {
            const Unit* const inch = unit(trimmed({k, last}));
            const Span digits = trimmed({place + 1, k});
            if (inch && inch->is_inch && text(digits).find(L'\'') == std::wstring::npos
                && !number(digits).empty())
                return true;
        }
    }
    return false;
}

ReferenceEntryReader::Meanings ReferenceEntryReader::product(Span span)
{
    span = trimmed(span);
    const auto known = m_products.find(span);
    if (known != m_products.end())
        return known->second;
    Meanings meanings = factor(span, false);
    for (std::size_t i = span.first + 1; i + 1 < span.second; ++i) {
        const bool is_division = m_text[i] == L'/';
        if (!is_division && m_text[i] != L'*')
            continue;
        combine(product({span.first, i}), factor({i + 1, span.second}, is_division), meanings,
            [is_division](const EntryMeaning& left, const EntryMeaning& right, Meanings& result) {
                if (right.has_unit && (is_division || left.has_unit))
                    return;
                if (is_division && right.value == 0)
                    return;
                result.push_back({is_division ? left.value / right.value : left.value * right.value,
                    left.has_unit || right.has_unit, left.dimension + right.dimension});
            });
    }
    // The unit belongs to all of the product.
    for (std::size_t i = span.first + 1; i < span.second; ++i) {
        const Unit* const found = unit(trimmed({i, span.second}));
        if (!found || is_inside_number(i))
            continue;
        for (const EntryMeaning& meaning : product({span.first, i})) {
            if (!meaning.has_unit)
                meanings.push_back({meaning.value * found->factor, true, found->dimension});
        }
    }
    tidy(meanings);
    return m_products[span] = meanings;
}

bool ReferenceEntryReader::is_before_metric_unit(std::size_t place) const
{
    for (std::size_t end = place + 1; end <= m_text.size(); ++end) {
        const Unit* const found = unit(trimmed({place, end}));
        if (found && found->is_metric)
            return true;
    }
    return false;
}

/// Digits that touch are one number.
bool ReferenceEntryReader::is_inside_number(std::size_t place) const
{
    const wchar_t before = m_text[place - 1];
    return is_digit(m_text[place]) && (is_digit(before) || before == L'.' || before == L',');
}

ReferenceEntryReader::Meanings ReferenceEntryReader::factor(Span span, bool is_divisor)
{
    span = trimmed(span);
    if (span.first >= span.second)
        return {};
    const wchar_t first = m_text[span.first];
    if (first == L'+' || first == L'-') {
        const Span rest = trimmed({span.first + 1, span.second});
        if (rest.first < rest.second && (m_text[rest.first] == L'+' || m_text[rest.first] == L'-'))
            return {};
        Meanings meanings = factor(rest, is_divisor);
        for (EntryMeaning& meaning : meanings)
            meaning.value = first == L'-' ? -meaning.value : meaning.value;
        return meanings;
    }
    if (first == L'(' && m_text[span.second - 1] == L')')
        return sum({span.first + 1, span.second - 1});
    Meanings meanings = quantity(span, is_divisor);
    if (first == L'(') {
        for (std::size_t i = span.first + 2; i < span.second; ++i) {
            const Unit* const found = unit(trimmed({i, span.second}));
            if (!found || m_text[trimmed({span.first, i}).second - 1] != L')')
                continue;
            for (const EntryMeaning& meaning : factor({span.first, i}, false)) {
                if (!meaning.has_unit)
                    meanings.push_back({meaning.value * found->factor, true, found->dimension});
            }
        }
    }
    return meanings;
}

ReferenceEntryReader::Meanings ReferenceEntryReader::quantity(Span span, bool is_divisor)
{
    Meanings meanings = feet_and_inches(span);
    const bool has_lengths = m_shown.is_metric;
    for (const double value : number(span, is_divisor)) {
        if (!has_lengths || text(span).find(L'\'') == std::wstring::npos
            || is_before_metric_unit(span.second))
            meanings.push_back({value, false, 0});
    }
    for (std::size_t i = span.first + 1; i < span.second; ++i) {
        const Unit* const found = unit(trimmed({i, span.second}));
        if (!found || is_inside_number(i))
            continue;
        const Span before = trimmed({span.first, i});
        if (has_lengths && !found->is_metric && text(before).find(L'\'') != std::wstring::npos)
            continue;
        for (const double value : number(before, is_divisor))
            meanings.push_back({value * found->factor, true, found->dimension});
    }
    return meanings;
}

ReferenceEntryReader::Meanings ReferenceEntryReader::feet_and_inches(Span span) const
{
    Meanings meanings;
    for (std::size_t i = span.first + 1; i < span.second; ++i) {
        for (std::size_t k = i + 1; k < span.second; ++k) {
            const Unit* const foot = unit(trimmed({i, k}));
            if (!foot || !foot->is_foot)
                continue;
            Span rest = trimmed({k, span.second});
            if (rest.first < rest.second && m_text[rest.first] == L'-')
                rest = trimmed({rest.first + 1, rest.second});
            // An apostrophe between digits needs a metric unit.
            if (text({span.first, i}).find(L'\'') != std::wstring::npos)
                continue;
            const std::vector<double> feet = number(trimmed({span.first, i}));
            // Inches without a unit end the product.
            const wchar_t next = m_text[trimmed({span.second, m_text.size()}).first];
            std::vector<double> inches;
            if (next != L'*' && next != L'/' && text(rest).find(L'\'') == std::wstring::npos)
                inches = number(rest);
            for (std::size_t last = rest.first + 1; last < rest.second; ++last) {
                const Unit* const inch = unit(trimmed({last, rest.second}));
                if (!inch || !inch->is_inch)
                    continue;
                if (text({rest.first, last}).find(L'\'') != std::wstring::npos)
                    continue;
                for (const double value : number(trimmed({rest.first, last})))
                    inches.push_back(value);
            }
            for (const double foot_value : feet) {
                for (const double inch_value : inches) {
                    meanings.push_back({foot_value * metres_per_foot + inch_value * metres_per_inch,
                        true, foot->dimension});
                }
            }
        }
    }
    return meanings;
}

std::vector<double> ReferenceEntryReader::number(Span span, bool is_divisor) const
{
    static const std::wregex fraction(LR"((\d+) *[/] *(\d+))");
    static const std::wregex mixed(LR"((.*[^ ]) +(\d+) *[/] *(\d+))");
    static const std::wregex hyphenated(LR"((\d+) *- *(\d+) *[/] *(\d+))");
    static const std::wregex character(LR"((.*?) *([½¼¾]))");
    static const std::wregex product(LR"(([^eE^]*[^ eE^]) *\* *10\^([+-]?\d+))");
    static const std::wregex whole(LR"(\d+|[1-9]\d{0,2}([ ']\d{3})+)");

    const std::wstring digits = text(span);
    std::vector<double> values = decimals(digits);
    const auto divide = [](const std::wstring& numerator, const std::wstring& denominator) {
        return read_plain(numerator) / read_plain(denominator);
    };
    std::wsmatch match;
    if (!is_divisor && std::regex_match(digits, match, fraction))
        values.push_back(divide(match[1], match[2]));
    if (std::regex_match(digits, match, mixed) && std::regex_match(match[1].str(), whole))
        values.push_back(read_digits(match[1]) + divide(match[2], match[3]));
    if (!is_divisor && std::regex_match(digits, match, hyphenated)
        && divide(match[2], match[3]) < 1)
        values.push_back(read_plain(match[1]) + divide(match[2], match[3]));
    if (std::regex_match(digits, match, character)) {
        const std::wstring before = match[1];
        const double part = match[2] == L"½" ? 0.5 : match[2] == L"¼" ? 0.25 : 0.75;
        if (before.empty())
            values.push_back(part);
        else if (std::regex_match(before, whole))
            values.push_back(read_digits(before) + part);
    }
    if (std::regex_match(digits, match, product)) {
        const std::wstring exponent = L"e" + match[2].str();
        for (const double value : decimals(match[1]))
            values.push_back(value == 0 ? 0 : value * read_plain(L"1" + exponent));
    }
    values.erase(std::remove_if(values.begin(), values.end(),
                     [](double value) { return !std::isfinite(value); }),
        values.end());
    return values;
}

/// A unit in letters ends at the end of a word.
const ReferenceEntryReader::Unit* ReferenceEntryReader::unit(Span span) const
{
    std::wstring word = text(span);
    // Blanks may stand around a slash.
    if (word.find(L'/') != std::wstring::npos)
        word.erase(std::remove(word.begin(), word.end(), L' '), word.end());
    // A point may end an abbreviation.
    const bool is_before_digit = span.second < m_text.size() && is_digit(m_text[span.second]);
    if (word.size() > 1 && word.back() == L'.' && is_letter(word[word.size() - 2])
        && !is_before_digit)
        word.pop_back();
    const auto found = m_units.find(word);
    if (found == m_units.end())
        return nullptr;
    const auto continues = [&](std::size_t inside, std::size_t outside) {
        return outside < m_text.size()
            && ((is_letter(m_text[inside]) && is_letter(m_text[outside]))
                || (m_text[inside] == L'\'' && m_text[outside] == L'\''));
    };
    if (continues(span.second - 1, span.second)
        || (span.first > 0 && continues(span.first, span.first - 1)))
        return nullptr;
    return &found->second;
}

} // namespace vrn::test
