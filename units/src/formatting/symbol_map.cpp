#include "formatting/symbol_map_p.h"

#include "formatting/expression_p.h"

#include <boost/locale/encoding_utf.hpp>

#include <algorithm>
#include <utility>

namespace vrn::units::detail {
namespace {

/// What the first two units of both grammars have in common, without blanks.
const Expression& word()
{
    static const Expression expression(
        LR"([^\d\s\.,/\-eE][^\s\.,/]*(?:(?:/[^\d\s\.,/][^\s\.,/]*){1,2})?)",
        Expression::Extent::whole_text);
    return expression;
}

} // namespace

SymbolMap::SymbolMap(const IUnitProvider& provider)
{
    for (const UnitId::UnitId id : provider.get_all_ids())
        add_unit(provider, id);
}

std::optional<UnitId::UnitId> SymbolMap::find(std::wstring_view spelling) const
{
    const Entry* const entry = entry_of(spelling);
    return entry != nullptr ? std::optional(entry->id) : std::nullopt;
}

std::optional<UnitId::UnitId> SymbolMap::find_word(std::wstring_view spelling) const
{
    const Entry* const entry = entry_of(spelling);
    return entry != nullptr && entry->is_word ? std::optional(entry->id) : std::nullopt;
}

const SymbolMap::Entry* SymbolMap::entry_of(std::wstring_view spelling) const
{
    // A long text need not be hashed.
    if (spelling.size() > m_longest)
        return nullptr;
    const auto entry = m_entries.find(spelling);
    return entry != m_entries.end() ? &entry->second : nullptr;
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
    // "o/oo" belongs to PER_THOUSAND already, whose factor is the same. "0/0" and "0/00"
    // are never read after a number: a unit does not begin with a digit.
    if (id == UnitId::PER_MILLE) {
        for (const wchar_t* const spelling : {L"o/oo", L"O/OO", L"0/00"})
            add(spelling, id);
    }
}

void SymbolMap::add(std::wstring spelling, UnitId::UnitId id)
{
    if (m_entries.count(spelling) != 0)
        return;
    Subject subject(spelling);
    Groups groups;
    const bool is_word = word().match(subject, groups);
    m_longest = std::max(m_longest, spelling.size());
    m_spellings.push_back(std::move(spelling));
    m_entries.emplace(m_spellings.back(), Entry{id, is_word});
}

} // namespace vrn::units::detail
