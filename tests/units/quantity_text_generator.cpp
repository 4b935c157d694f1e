#include "quantity_text_generator.h"

#include <string_view>
#include <utility>

namespace vrn::test {
namespace {

using namespace std::literals;

// All characters that an expression names, and some of each other kind: white
// space, line ends, digits of another script, letters in and beyond ASCII.
constexpr std::wstring_view characters =
    L"0123456789..,,//--++eeEE''ftin  \t\n\r\v\f\u2028\u00a0\u0661\u00b0%okmNC\"#\0"sv;

constexpr std::wstring_view noise_words[] = {L"1", L"1/", L"/m", L"e3", L"E-2", L"0/0", L"o/oo",
    L"1.5", L".5", L",5", L"-", L"''", L"'", L"ft", L"in", L"kN", L"m2", L" ", L"  ", L"inf",
    L"nan", L"0x1", L"1e400", L"1e-400", L"\n", L"in/"};

} // namespace

QuantityTextGenerator::QuantityTextGenerator(
    std::uint32_t seed, std::vector<std::wstring> spellings)
    : m_random(seed)
    , m_spellings(std::move(spellings))
{}

std::wstring QuantityTextGenerator::next()
{
    std::wstring text;
    switch (below(8)) {
    case 0:
        text = noise();
        break;
    case 1:
        text = feet_and_inches();
        break;
    case 2:
        text = changed(feet_and_inches());
        break;
    case 3:
    case 4:
        text = quantity();
        break;
    default:
        text = changed(quantity());
        break;
    }
    return text.substr(0, longest);
}

// The distributions of the standard library differ between its vendors; the
// generator does not.
std::size_t QuantityTextGenerator::below(std::size_t limit)
{
    return m_random() % limit;
}

template <typename List>
auto QuantityTextGenerator::any_of(const List& list) -> decltype(list[0])
{
    return list[below(std::size(list))];
}

std::wstring QuantityTextGenerator::digits()
{
    std::wstring text;
    for (std::size_t count = 1 + below(below(4) == 0 ? 12 : 3); count > 0; --count)
        text += static_cast<wchar_t>(L'0' + static_cast<wchar_t>(below(10)));
    return text;
}

std::wstring QuantityTextGenerator::blanks()
{
    return any_of(std::vector<std::wstring>{L"", L"", L" ", L" ", L"  ", L"\t", L"\n", L" \r"});
}

std::wstring QuantityTextGenerator::number()
{
    const std::wstring sign = below(3) == 0 ? L"-" : L"";
    const std::wstring point = any_of(std::vector<std::wstring>{L".", L"."s, L","});
    const std::wstring exponent = any_of(std::vector<std::wstring>{L"e", L"E"})
        + any_of(std::vector<std::wstring>{L"", L"-", L"+"}) + digits();
    switch (below(10)) {
    case 0:
        return sign + digits();
    case 1:
        return sign + digits() + point + digits();
    case 2:
        return sign + digits() + point + digits() + exponent;
    case 3:
        return sign + digits() + exponent;
    case 4:
        return sign + point + digits() + exponent;
    case 5:
        return sign + point + digits();
    case 6:
        return sign + digits() + L"/" + digits();
    case 7:
        return sign + digits() + blanks() + digits() + L"/" + digits();
    case 8:
        return sign + digits() + L" " + sign + digits() + L"/" + digits();
    default:
        return sign + digits() + point + digits() + point + digits();
    }
}

std::wstring QuantityTextGenerator::unit()
{
    if (m_spellings.empty() || below(6) == 0)
        return any_of(noise_words).data() + blanks();
    const std::wstring spelling = any_of(m_spellings);
    if (below(8) == 0)
        return spelling + L"/" + std::wstring(any_of(m_spellings));
    if (below(8) == 0)
        return L"1" + blanks() + L"/" + spelling;
    return spelling;
}

std::wstring QuantityTextGenerator::quantity()
{
    std::wstring text = blanks() + number() + blanks();
    if (below(6) != 0)
        text += unit();
    if (below(4) == 0)
        text += blanks();
    return text;
}

std::wstring QuantityTextGenerator::feet_and_inches()
{
    const bool marks = below(2) == 0;
    const std::wstring feet = below(6) == 0 ? L"" : number();
    const std::wstring inches = below(6) == 0 ? L"" : number();
    return blanks() + feet + blanks() + (marks ? L"'" : L"ft") + blanks() + inches + blanks()
        + (marks ? L"''" : L"in") + blanks();
}

std::wstring QuantityTextGenerator::noise()
{
    std::wstring text;
    for (std::size_t count = below(9); count > 0; --count)
        text += below(2) == 0 ? std::wstring(1, any_of(characters))
                              : std::wstring(any_of(noise_words));
    return text;
}

std::wstring QuantityTextGenerator::changed(std::wstring text)
{
    for (std::size_t count = 1 + below(3); count > 0; --count) {
        const std::size_t at = below(text.size() + 1);
        const std::size_t length = at < text.size() ? 1 : 0;
        switch (below(4)) {
        case 0:
            text.erase(at, length);
            break;
        case 1:
            text.insert(at, 1, any_of(characters));
            break;
        case 2:
            text.replace(at, length, 1, any_of(characters));
            break;
        default:
            text.insert(at, any_of(noise_words));
            break;
        }
    }
    return text;
}

} // namespace vrn::test
