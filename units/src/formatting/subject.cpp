#include "formatting/subject_p.h"

#include <array>

namespace vrn::units::detail {
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
