#include "formatting/symbol_map_p.h"

#include <boost/locale/encoding_utf.hpp>

#include <algorithm>
#include <utility>

namespace vrn::units::detail {

SymbolMap::SymbolMap(const IUnitProvider& provider)
{
    for (const UnitId::UnitId id : provider.get_all_ids())
        add_unit(provider, id);
}

std::optional<UnitId::UnitId> SymbolMap::find(std::wstring_view spelling) const
{
    // Spares a long text its hash.
    if (spelling.size() > m_longest)
        return std::nullopt;
    const auto entry = m_ids.find(spelling);
    if (entry == m_ids.end())
        return std::nullopt;
    return entry->second;
}

void SymbolMap::add_unit(const IUnitProvider& provider, UnitId::UnitId id)
{
    const std::string& symbol = provider.get_symbol(id);
    // A unit set: it has no spellings, and asking for more of them throws.
    if (symbol.empty())
        return;
    add(boost::locale::conv::utf_to_utf<wchar_t>(symbol), id);
    for (const std::string& spelling : provider.get_alternative_symbols(id))
        add(boost::locale::conv::utf_to_utf<wchar_t>(spelling), id);

    if (id == UnitId::PERCENT) {
        for (const wchar_t* const spelling : {L"%", L"o/o", L"O/O", L"0/0"})
            add(spelling, id);
    }
    // "o/oo" has gone to PER_THOUSAND, whose factor is the same. No number takes
    // "0/0" or "0/00" behind it: a unit does not begin with a digit.
    if (id == UnitId::PER_MILLE) {
        for (const wchar_t* const spelling : {L"o/oo", L"O/OO", L"0/00"})
            add(spelling, id);
    }
}

void SymbolMap::add(std::wstring spelling, UnitId::UnitId id)
{
    if (m_ids.count(spelling) != 0)
        return;
    m_longest = std::max(m_longest, spelling.size());
    m_spellings.push_back(std::move(spelling));
    m_ids.emplace(m_spellings.back(), id);
}

} // namespace vrn::units::detail
