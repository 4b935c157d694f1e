#include <vrn/units/entry.h>

#include "entry/entry_characters_p.h"
#include "entry/entry_field_p.h"
#include "entry/entry_parser_p.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

namespace vrn::units {
inline namespace v1 {
namespace {

/// A longer text is not an entry.
constexpr std::size_t most_characters = 1000;

/// What most people type: a number with a point and up to 15 digits, and a symbol after a
/// blank.
struct PlainEntry
{
    double value;
    const detail::FieldUnit* unit;
};

std::optional<PlainEntry> read_plain(
    const detail::EntryField& field, std::wstring_view text) noexcept
{
    constexpr std::size_t most_digits = detail::most_exact_digits;

    std::size_t place = !text.empty() && text[0] == L'-' ? 1 : 0;
    const bool is_negative = place == 1;
    std::uint64_t digits = 0;
    const auto take_digits = [&] {
        const std::size_t begin = place;
        for (; place < text.size() && detail::is_digit(text[place]) && place <= most_digits;
             ++place)
            digits = digits * 10 + static_cast<std::uint64_t>(text[place] - L'0');
        return place - begin;
    };
    if (take_digits() == 0)
        return std::nullopt;
    std::size_t decimals = 0;
    if (place < text.size() && text[place] == L'.') {
        ++place;
        decimals = take_digits();
        if (decimals == 0)
            return std::nullopt;
    }
    std::wstring_view symbol = text.substr(place);
    if (!symbol.empty()) {
        if (symbol.size() == 1 || symbol[0] != L' ' || !detail::is_letter(symbol[1]))
            return std::nullopt;
        symbol.remove_prefix(1);
    }
    const detail::FieldUnit* const unit = field.find_symbol(symbol);
    if (!unit)
        return std::nullopt;
    const double value = detail::exact_decimal(digits, decimals);
    return PlainEntry{is_negative ? -value : value, unit};
}

Entry complete(detail::EntryField::Written written, bool is_calculated)
{
    Entry entry;
    entry.state = EntryState::Complete;
    entry.quantity = written.quantity;
    entry.text = std::move(written.text);
    entry.is_calculated = is_calculated;
    return entry;
}

Entry refused(EntryProblem problem, std::size_t place)
{
    Entry entry;
    entry.reason.problem = problem;
    entry.reason.place = place;
    return entry;
}

Entry failed(const detail::EntryFailure& failure)
{
    Entry entry;
    entry.state = failure.is_unfinished ? EntryState::Unfinished : EntryState::Refused;
    entry.reason = failure.reason;
    return entry;
}

} // namespace

class EntryReader::Field : public detail::EntryField
{
public:
    using detail::EntryField::EntryField;
};

EntryReader::EntryReader()
    : m_field(std::make_shared<const Field>())
{}

EntryReader::EntryReader(const Context& context, UnitId::UnitId kind)
    : m_field(std::make_shared<const Field>(context, kind))
{}

EntryReader::~EntryReader() = default;
EntryReader::EntryReader(const EntryReader& other) = default;
EntryReader& EntryReader::operator=(const EntryReader& other) = default;

Entry EntryReader::read(std::wstring_view text, NumberSigns signs) const
{
    if (const auto plain = read_plain(*m_field, text)) {
        const double value = m_field->value_of(*plain->unit, plain->value);
        return complete({{m_field->kind(), value}, std::wstring(text)}, false);
    }
    if (text.size() > most_characters)
        return refused(EntryProblem::TooLong, most_characters);
    const detail::EntryCharacters plain = detail::plain_characters(text);
    const detail::EntryText characters(text, {plain.data(), plain.size()});
    detail::EntryParser parser(*m_field, signs, characters);
    if (!parser.parse())
        return failed(parser.failure());
    const detail::EntryValue& value = parser.value();
    auto written = m_field->write(value.unit ? *value.unit : *m_field->shown(), value.value);
    if (!std::isfinite(written.quantity.value))
        return refused(EntryProblem::NumberTooLarge, 0);
    return complete(std::move(written), parser.is_calculated());
}

bool EntryReader::is_plain(std::wstring_view text) const noexcept
{
    return read_plain(*m_field, text).has_value();
}

std::vector<std::wstring> EntryReader::completions(std::wstring_view text, NumberSigns signs) const
{
    std::vector<std::wstring> texts;
    if (text.size() > most_characters)
        return texts;
    const detail::EntryCharacters plain = detail::plain_characters(text);
    const detail::EntryText characters(text, {plain.data(), plain.size()});
    detail::EntryParser parser(*m_field, signs, characters);
    parser.parse();
    const detail::EntryCompletion& completion = parser.completion();
    if (!completion.is_possible)
        return texts;
    const detail::UnitKeys keys(characters.plain(), characters.after_blanks(completion.place));
    const std::wstring_view beginning = keys.ends().empty() ? std::wstring_view()
                                                            : keys.key(keys.ends().back());
    for (const detail::FieldUnit* const unit : m_field->find_beginning(beginning)) {
        if (!unit->symbol.empty())
            texts.push_back(std::wstring(text.substr(0, completion.place)) + L' ' + unit->symbol);
    }
    return texts;
}

Entry read_entry(
    std::wstring_view text, const Context& context, UnitId::UnitId kind, NumberSigns signs)
{
    return EntryReader(context, kind).read(text, signs);
}

} // namespace v1
} // namespace vrn::units
