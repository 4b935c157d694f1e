#include "formatting/subject_p.h"

#include <array>
#include <string>

namespace vrn::units::detail {
namespace {

constexpr std::size_t ascii_count = 128;

constexpr std::size_t code_of(wchar_t character)
{
    return std::char_traits<wchar_t>::to_int_type(character);
}

constexpr std::array<Symbol, ascii_count> make_ascii_symbols()
{
    std::array<Symbol, ascii_count> table{};
    for (Symbol& symbol : table)
        symbol = symbols::other;
    for (wchar_t character = L'0'; character <= L'9'; ++character)
        table[code_of(character)] = symbols::digit;
    for (const wchar_t character : std::wstring_view(L" \t\v\f"))
        table[code_of(character)] = symbols::blank;
    for (const wchar_t character : std::wstring_view(L"\n\r"))
        table[code_of(character)] = symbols::line_break;
    for (std::size_t i = 0; i < symbols::named.size(); ++i)
        table[code_of(symbols::named[i])] = static_cast<Symbol>(i);
    return table;
}

constexpr std::array<Symbol, ascii_count> ascii_symbols = make_ascii_symbols();

} // namespace

Symbol symbol_of(wchar_t character)
{
    const std::size_t code = code_of(character);
    if (code < ascii_count)
        return ascii_symbols[code];
    return code == 0x2028 || code == 0x2029 ? symbols::separator : symbols::other;
}

Subject::Subject(std::wstring_view text)
    : m_text(text)
    , m_symbols(text.size() + 1, boost::container::default_init)
    , m_trail(text.size() + 1, boost::container::default_init)
{
    Symbol* symbol = m_symbols.data();
    for (const wchar_t character : text) {
        *symbol = symbol_of(character);
        m_present |= Symbols{1} << *symbol;
        ++symbol;
    }
    *symbol = symbols::end;
}

} // namespace vrn::units::detail
