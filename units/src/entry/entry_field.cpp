#include "entry/entry_field_p.h"

#include "entry/entry_characters_p.h"
#include "entry/unit_kinds_p.h"
#include "entry/unit_spellings_p.h"

#include <boost/locale/encoding_utf.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <tuple>

namespace vrn::units::detail {
namespace {

constexpr std::size_t most_similar_units = 3;
/// A longer word is not similar to any unit.
constexpr std::size_t longest_similar = 20;

std::wstring lower(std::wstring_view text)
{
    std::wstring result(text);
    for (wchar_t& character : result) {
        if (character >= L'A' && character <= L'Z')
            character = static_cast<wchar_t>(character - L'A' + L'a');
    }
    return result;
}

bool is_upper(wchar_t character)
{
    return character >= L'A' && character <= L'Z';
}

/// The word of a key that begins at `begin`.
std::wstring_view word_at(std::wstring_view key, std::size_t begin)
{
    const std::size_t end = std::min(key.find_first_of(L"*/()", begin), key.size());
    return key.substr(begin, end - begin);
}

/// Whether "m" before the rest makes a unit a thousand times smaller.
bool is_prefixed_by_milli(std::wstring_view word)
{
    for (const std::wstring_view unit : {L"mm", L"mrad", L"mbar", L"msec", L"ms"}) {
        if (word.substr(0, unit.size()) == unit)
            return true;
    }
    return false;
}

/// Whether `typed`, which is `key` in another case, can mean nothing else. "m" and "M" are a
/// thousandth and a million; only in a word of capitals, "M" says nothing.
bool is_clear_in_other_case(std::wstring_view typed, std::wstring_view key)
{
    for (std::size_t i = 0; i < key.size(); ++i) {
        const bool begins = i == 0 || std::wstring_view(L"*/(").find(key[i - 1]) < 3;
        if (!begins || typed[i] == key[i])
            continue;
        if (key[i] == L'M')
            return false;
        const std::wstring_view word = word_at(typed, i);
        if (key[i] == L'm' && is_prefixed_by_milli(word_at(key, i))
            && !std::all_of(word.begin(), word.end(),
                [](wchar_t each) { return is_upper(each) || is_digit(each); }))
            return false;
    }
    return true;
}

/// How many letters must be left out, put in, replaced or swapped.
std::size_t edit_distance(std::wstring_view left, std::wstring_view right)
{
    using Row = std::array<std::size_t, longest_similar + 1>;
    Row before_last{};
    Row last{};
    Row row{};
    for (std::size_t j = 0; j <= right.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= left.size(); ++i) {
        before_last = last;
        last = row;
        row[0] = i;
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (left[i - 1] != right[j - 1] ? 1 : 0);
            row[j] = std::min({replaced, last[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1])
                row[j] = std::min(row[j], before_last[j - 2] + 1);
        }
    }
    return row[right.size()];
}

/// Writes a number with up to four decimals, for which std::to_chars takes several times as
/// long. Returns the end; null for any other number.
char* write_few_decimals(char* begin, char* end, double value)
{
    constexpr std::uint64_t scale = 10000;

    const double scaled = std::round(std::abs(value) * scale);
    // Of the numbers with up to 15 digits, only one is read as `value`. So it is the shortest.
    if (!(scaled < 1e15) || scaled / scale != std::abs(value))
        return nullptr;
    const auto digits = static_cast<std::uint64_t>(scaled);
    if (std::signbit(value))
        *begin++ = '-';
    char* out = std::to_chars(begin, end, digits / scale).ptr;
    std::uint64_t decimals = digits % scale;
    if (decimals == 0)
        return out;
    *out++ = '.';
    for (std::uint64_t unit = scale / 10; unit > 0; unit /= 10) {
        *out++ = static_cast<char>('0' + decimals / unit);
        decimals %= unit;
    }
    while (out[-1] == '0')
        --out;
    return out;
}

/// Writes a number in the fewest digits that are read as the same, with a point.
char* write_number(char* begin, char* end, double value)
{
    constexpr double least_fixed = 1e-5;
    constexpr double most_fixed = 1e15;

    if (char* const out = write_few_decimals(begin, end, value))
        return out;
    const double size = std::abs(value);
    const bool is_fixed = size >= least_fixed && size < most_fixed;
    char* const out = std::to_chars(
        begin, end, value, is_fixed ? std::chars_format::fixed : std::chars_format::scientific)
                          .ptr;
    // Context::parse() takes a plus for the beginning of a unit.
    return std::remove(begin, out, '+');
}

/// The number, and the symbol after a blank if there is one.
std::wstring quantity_text(double value, std::wstring_view symbol)
{
    constexpr std::size_t most_digits = 64;

    std::array<char, most_digits> number;
    const char* const end = write_number(number.data(), number.data() + number.size(), value);
    const auto size = static_cast<std::size_t>(end - number.data());
    std::wstring text(size + (symbol.empty() ? 0 : 1) + symbol.size(), L' ');
    std::copy_n(number.data(), size, text.begin());
    std::copy(symbol.rbegin(), symbol.rend(), text.rbegin());
    return text;
}

/// "m^-2" for "1/m2"; empty for a symbol that is not one over a word.
std::wstring negative_power(std::wstring_view symbol)
{
    if (symbol.substr(0, 2) != L"1/" || symbol.find(L'/', 2) != std::wstring_view::npos)
        return {};
    const std::size_t power = std::min(symbol.find_first_of(L"23456", 2), symbol.size());
    const std::wstring_view exponent = power < symbol.size() ? symbol.substr(power) : L"1";
    return std::wstring(symbol.substr(2, power - 2)).append(L"^-").append(exponent);
}

/// Units that are seldom used where others fit. They are read, but not named to a user.
bool is_unusual(UnitId::UnitId id)
{
    return id == UnitId::KILOMETRE || id == UnitId::MILE || id == UnitId::YARD;
}

bool measures_length(UnitId::UnitId id)
{
    for (const UnitId::UnitId unit : {UnitId::KILOMETRE, UnitId::METRE, UnitId::DECIMETRE,
             UnitId::CENTIMETRE, UnitId::MILLIMETRE, UnitId::FOOT, UnitId::INCH}) {
        if (unit == id)
            return true;
    }
    return false;
}

FieldUnit make_unit(const IUnitProvider& provider, UnitId::UnitId id)
{
    FieldUnit unit;
    unit.id = id;
    unit.dimension = provider.get_dimension(id);
    unit.factor = provider.get_factor(id);
    unit.symbol = boost::locale::conv::utf_to_utf<wchar_t>(provider.get_symbol(id));
    if (unit_key(unit.symbol).empty())
        unit.symbol.clear();
    unit.kind = kind_of_unit(provider, id);
    return unit;
}

/// All units by their keys.
class Catalogue
{
public:
    static const Catalogue& instance()
    {
        static const Catalogue catalogue;
        return catalogue;
    }

    Catalogue()
    {
        const VarnelikUnitProvider provider;
        const std::vector<UnitId::UnitId> ids = provider.get_all_ids();
        for (const UnitId::UnitId id : ids) {
            if (!provider.get_symbol(id).empty())
                m_units.push_back(make_unit(provider, id));
        }
        for (std::size_t i = 0; i < m_units.size(); ++i)
            add(unit_key(m_units[i].symbol), i);
        for (std::size_t i = 0; i < m_units.size(); ++i) {
            for (const std::wstring& key : other_keys(provider.get_symbol(m_units[i].id)))
                add(key, i);
        }
    }

    const FieldUnit* find(std::wstring_view key) const { return find_in(m_keys, key); }
    const FieldUnit* find_in_any_case(std::wstring_view key) const
    {
        return find_in(m_lower_keys, lower(key));
    }

private:
    using Keys = std::map<std::wstring, std::size_t, std::less<>>;

    void add(const std::wstring& key, std::size_t unit)
    {
        if (key.empty())
            return;
        m_keys.emplace(key, unit);
        m_lower_keys.emplace(lower(key), unit);
    }

    const FieldUnit* find_in(const Keys& keys, std::wstring_view key) const
    {
        const auto found = keys.find(key);
        return found != keys.end() ? &m_units[found->second] : nullptr;
    }

    std::vector<FieldUnit> m_units;
    Keys m_keys;
    Keys m_lower_keys;
};

} // namespace

EntryField::EntryField()
{
    m_units.emplace_back();
    m_units.front().kind = m_wanted;
    m_shown = &m_units.front();
}

EntryField::EntryField(const Context& context, UnitId::UnitId kind)
    : m_kind(kind)
{
    // Throws if the kind or its display unit is not known.
    context.get_display_dimension(kind);
    m_factor_of_kind = context.unit_provider().get_factor(kind);
    add_units(context);
    add_shown_unit(context);
    for (FieldUnit& unit : m_units)
        unit.is_written = !unit.symbol.empty() && reads(context, L"1 " + unit.symbol, unit);
    m_reads_bare_numbers = m_shown && reads(context, L"1", *m_shown);
    m_foot = unit_of(UnitId::FOOT);
    m_inch = unit_of(UnitId::INCH);
    m_has_lengths = std::any_of(m_units.begin(), m_units.end(),
        [](const FieldUnit& unit) { return measures_length(unit.id); });
    const FieldUnit* const wanted = m_shown ? m_shown : &m_units.front();
    m_wanted = wanted->kind;
    add_spellings();
    for (FieldUnit& unit : m_units)
        unit.is_plain = unit.is_written && find(unit_key(unit.symbol)) == &unit;
    add_usual_units();
}

/// Those that a unit set lists, or those of the same dimension as a unit, itself first.
void EntryField::add_units(const Context& context)
{
    const VarnelikUnitProvider& provider = context.unit_provider();
    std::vector<UnitId::UnitId> ids = provider.get_compatible_units(m_kind);
    if (ids.empty()) {
        ids.push_back(m_kind);
        for (const UnitId::UnitId id : provider.get_all_ids()) {
            const bool is_unit = !provider.get_symbol(id).empty();
            if (is_unit && id != m_kind
                && provider.get_dimension(id) == provider.get_dimension(m_kind))
                ids.push_back(id);
        }
    }
    // One more, so that the shown unit does not move the others.
    m_units.reserve(ids.size() + 1);
    for (const UnitId::UnitId id : ids)
        m_units.push_back(make_unit(provider, id));
}

/// A few kinds are shown in a unit that they do not list.
void EntryField::add_shown_unit(const Context& context)
{
    const UnitId::UnitId shown = context.format_provider().get_unit(m_kind);
    m_shown = unit_of(shown);
    if (m_shown || context.unit_provider().get_dimension(shown) != m_units.front().dimension)
        return;
    m_units.push_back(make_unit(context.unit_provider(), shown));
    m_shown = &m_units.back();
}

/// Of units with the same spelling, the kind itself comes first, then the first in the
/// order of the catalogue. A symbol comes before any other spelling.
void EntryField::add_spellings()
{
    const VarnelikUnitProvider provider;
    std::vector<const FieldUnit*> units;
    for (const FieldUnit& unit : m_units)
        units.push_back(&unit);
    std::sort(units.begin(), units.end(), [this](const FieldUnit* left, const FieldUnit* right) {
        return std::tuple(left->id != m_kind, left->id)
            < std::tuple(right->id != m_kind, right->id);
    });
    for (const FieldUnit* unit : units)
        add_key(unit_key(unit->symbol), *unit);
    for (const FieldUnit* unit : units) {
        for (const std::wstring& key : other_keys(provider.get_symbol(unit->id)))
            add_key(key, *unit);
        add_key(negative_power(unit->symbol), *unit);
    }
    const auto by_key = [](const Spelling& left, const Spelling& right) {
        return comes_before(left.key, right.key);
    };
    for (const Spelling& spelling : m_spellings) {
        std::wstring key = lower(spelling.key);
        const auto same = std::find_if(m_lower_spellings.begin(), m_lower_spellings.end(),
            [&key](const Spelling& each) { return each.key == key; });
        if (same == m_lower_spellings.end())
            m_lower_spellings.push_back({std::move(key), spelling.unit});
        else if (same->unit != spelling.unit)
            same->unit = nullptr;
    }
    std::sort(m_spellings.begin(), m_spellings.end(), by_key);
    std::sort(m_lower_spellings.begin(), m_lower_spellings.end(), by_key);
}

void EntryField::add_key(std::wstring key, const FieldUnit& unit)
{
    const bool is_new = std::none_of(m_spellings.begin(), m_spellings.end(),
        [&key](const Spelling& each) { return each.key == key; });
    if (!key.empty() && is_new)
        m_spellings.push_back({std::move(key), &unit});
}

void EntryField::add_usual_units()
{
    const auto add = [this](const FieldUnit& unit) {
        const bool is_new = std::find(m_usual_units.begin(), m_usual_units.end(), unit.symbol)
            == m_usual_units.end();
        if (!unit.symbol.empty() && is_new && unit.kind == std::string_view(m_wanted))
            m_usual_units.push_back(unit.symbol);
    };
    if (m_shown)
        add(*m_shown);
    for (const FieldUnit& unit : m_units) {
        if (!is_unusual(unit.id))
            add(unit);
    }
}

const FieldUnit* EntryField::unit_of(UnitId::UnitId id) const
{
    const auto found = std::find_if(
        m_units.begin(), m_units.end(), [id](const FieldUnit& unit) { return unit.id == id; });
    return found != m_units.end() ? &*found : nullptr;
}

// Keys of other sizes need not be compared character by character.
bool EntryField::comes_before(std::wstring_view left, std::wstring_view right)
{
    return left.size() != right.size() ? left.size() < right.size() : left < right;
}

const EntryField::Spelling* EntryField::find_in(const Spellings& spellings, std::wstring_view key)
{
    const auto found = std::lower_bound(spellings.begin(), spellings.end(), key,
        [](const Spelling& spelling, std::wstring_view wanted) {
            return comes_before(spelling.key, wanted);
        });
    return found != spellings.end() && found->key == key ? &*found : nullptr;
}

const FieldUnit* EntryField::find(std::wstring_view key) const
{
    if (const Spelling* const exact = find_in(m_spellings, key))
        return exact->unit;
    const std::wstring lower_key = lower(key);
    const Spelling* const other = find_in(m_lower_spellings, lower_key);
    if (!other || !other->unit)
        return nullptr;
    const bool is_clear = std::any_of(
        m_spellings.begin(), m_spellings.end(), [&](const Spelling& each) {
            return each.key.size() == key.size() && lower(each.key) == lower_key
                && is_clear_in_other_case(key, each.key);
        });
    return is_clear ? other->unit : nullptr;
}

const FieldUnit* EntryField::find_symbol(std::wstring_view symbol) const noexcept
{
    if (symbol.empty())
        return m_reads_bare_numbers ? m_shown : nullptr;
    for (const FieldUnit& unit : m_units) {
        if (unit.is_plain && unit.symbol == symbol)
            return &unit;
    }
    return nullptr;
}

std::vector<const FieldUnit*> EntryField::find_beginning(std::wstring_view key) const
{
    return find_beginning(key, key.size());
}

std::vector<const FieldUnit*> EntryField::find_longer(std::wstring_view key) const
{
    return find_beginning(key, key.size() + 1);
}

// A negative power such as "m^-1" does not show that its unit begins with another one.
std::vector<const FieldUnit*> EntryField::find_beginning(
    std::wstring_view key, std::size_t least_size) const
{
    const std::wstring begin = lower(key);
    std::vector<const FieldUnit*> found;
    const auto add = [&](const FieldUnit& unit) {
        const bool begins = std::any_of(
            m_spellings.begin(), m_spellings.end(), [&](const Spelling& each) {
                return each.unit == &unit && each.key.size() >= least_size
                    && each.key.find(L'^') == std::wstring::npos
                    && lower(each.key).substr(0, begin.size()) == begin;
            });
        if (begins && std::find(found.begin(), found.end(), &unit) == found.end())
            found.push_back(&unit);
    };
    if (m_shown)
        add(*m_shown);
    for (const FieldUnit& unit : m_units)
        add(unit);
    return found;
}

std::vector<std::wstring> EntryField::similar_units(std::wstring_view key) const
{
    using Rank = std::tuple<std::size_t, bool, std::size_t, std::size_t>;

    if (key.empty() || key.size() > longest_similar)
        return {};
    const std::wstring word = lower(key);
    std::vector<std::wstring> symbols;
    for (const std::wstring_view meaning : meanings_of(word)) {
        if (const FieldUnit* const unit = find(unit_key(meaning)))
            symbols.push_back(unit->symbol);
    }
    // A word of a language is no slip of the finger.
    if (!symbols.empty())
        return symbols;
    // With more slips than one in three characters, it would be another word.
    const std::size_t most = std::max<std::size_t>(word.size() / 3, 1);
    std::vector<std::pair<Rank, const FieldUnit*>> ranks;
    for (const Spelling& spelling : m_spellings) {
        if (spelling.key.size() > longest_similar || spelling.unit->symbol.empty())
            continue;
        const std::wstring other = lower(spelling.key);
        const std::size_t distance = edit_distance(word, other);
        if (distance > most || distance >= word.size() || distance >= other.size())
            continue;
        const std::size_t longer = std::max(word.size(), other.size());
        const auto place = static_cast<std::size_t>(spelling.unit - m_units.data());
        ranks.push_back({Rank{distance, word[0] != other[0],
                             longer - std::min(word.size(), other.size()), place},
            spelling.unit});
    }
    std::sort(ranks.begin(), ranks.end());
    for (const auto& [rank, unit] : ranks) {
        if (symbols.size() < most_similar_units
            && std::find(symbols.begin(), symbols.end(), unit->symbol) == symbols.end())
            symbols.push_back(unit->symbol);
    }
    return symbols;
}

double EntryField::value_of(const FieldUnit& unit, double value) const
{
    return unit.factor * value * (1.0 / m_factor_of_kind);
}

EntryField::Written EntryField::write(const FieldUnit& unit, double value) const
{
    const FieldUnit* written = &unit;
    const auto can_be_written = [this](const FieldUnit& each) {
        return each.is_written || (&each == m_shown && m_reads_bare_numbers);
    };
    if (!can_be_written(unit)) {
        const auto other = std::find_if(m_units.begin(), m_units.end(), [&](const FieldUnit& each) {
            return each.dimension == unit.dimension && can_be_written(each);
        });
        // The catalogue has no kind without such a unit; tests try them all.
        if (other != m_units.end()) {
            value = unit.factor * value / other->factor;
            written = &*other;
        }
    }
    const bool is_bare = written == m_shown && m_reads_bare_numbers && !written->is_written;
    return {{m_kind, value_of(*written, value)},
        quantity_text(value, is_bare ? std::wstring_view() : written->symbol)};
}

bool EntryField::reads(
    const Context& context, const std::wstring& text, const FieldUnit& unit) const
{
    const auto quantity = context.parse(text, m_kind, std::locale::classic());
    return quantity && quantity->value == value_of(unit, 1.0);
}

const FieldUnit* find_in_catalogue(std::wstring_view key)
{
    return Catalogue::instance().find(key);
}

const FieldUnit* find_in_catalogue_in_any_case(std::wstring_view key)
{
    return Catalogue::instance().find_in_any_case(key);
}

} // namespace vrn::units::detail
