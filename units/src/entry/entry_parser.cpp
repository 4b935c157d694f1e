#include "entry/entry_parser_p.h"

#include "entry/entry_characters_p.h"
#include "formatting/quantity_reader_p.h"

#include <cmath>

namespace vrn::units::detail {
namespace {

constexpr std::size_t most_brackets = 32;
/// More inches than this need their mark: "5'6", but "5' 14''".
constexpr double inches_per_foot = 12;

} // namespace

EntryParser::EntryParser(const EntryField& field, NumberSigns signs, const EntryText& text)
    : m_field(field)
    , m_signs(signs)
    , m_text(text)
{
    m_levels.emplace_back();
}

bool EntryParser::parse()
{
    while (!m_is_finished) {
        m_place = m_text.after_blanks(m_place);
        if (!(m_expects_operand ? read_operand() : read_operator()))
            return false;
    }
    return true;
}

bool EntryParser::read_operand()
{
    const wchar_t next = m_text.at(m_place);
    if (m_place >= m_text.size()) {
        const bool is_empty = !m_is_calculated && m_levels.size() == 1 && !level().own_sign;
        return fail_unfinished(
            is_empty ? EntryProblem::NothingThere : EntryProblem::NumberMissing, m_place);
    }
    if (next == L'+' || next == L'-') {
        if (level().own_sign)
            return fail(EntryProblem::NumberMissing, m_place);
        level().own_sign = next;
        ++m_place;
        return true;
    }
    if (next == L'(')
        return open_bracket();
    if (!begins_number(m_text, m_place))
        return fail_strange(m_place);
    Operand operand;
    return read_quantity(operand) && take_operand(operand);
}

bool EntryParser::read_operator()
{
    const wchar_t next = m_text.at(m_place);
    if (m_place >= m_text.size() || is_dash_at_end())
        return finish();
    if (next == L')')
        return close_bracket();
    const bool is_product = next == L'*' || next == L'/';
    if (!is_product && next != L'+' && next != L'-') {
        if (begins_number(m_text, m_place) || next == L'(' || is_letter(next))
            return fail(EntryProblem::SignMissing, m_place);
        return fail_strange(m_place);
    }
    m_is_calculated = true;
    m_expects_operand = true;
    m_completion.is_possible = false;
    if (is_product) {
        level().product_sign = next;
    } else {
        if (!close_product())
            return false;
        level().sum_sign = next;
    }
    ++m_place;
    return true;
}

bool EntryParser::read_quantity(Operand& operand)
{
    EntryNumber number;
    const bool is_divisor = level().product_sign == L'/';
    if (!read_number(m_text, m_place, is_divisor, m_signs, m_field, number, m_failure))
        return false;
    operand.value = number.value;
    operand.begin = number.begin;
    operand.is_whole = number.is_whole;
    operand.is_power_product = number.is_power_product;
    m_place = number.end;
    if (!read_unit(operand))
        return false;
    return operand.unit || !number.is_whole
        || !fail_mixed_number_with_hyphen(number.begin, number.end);
}

/// The unit after a number or after brackets, if there is one.
bool EntryParser::read_unit(Operand& operand)
{
    operand.end = m_place;
    operand.end_of_number = m_place;
    const std::size_t begin = m_text.after_blanks(m_place);
    m_completion = {begin >= m_text.size(), m_place};
    const wchar_t next = m_text.at(begin);
    if (next != L'\'' && next != L'"' && next != L'1' && next != L'/' && !is_letter(next))
        return true;
    m_place = begin;
    const bool is_read = next == L'\'' || next == L'"' ? read_mark(operand) : read_word(operand);
    if (!is_read)
        return false;
    operand.has_own_unit = operand.unit && !operand.is_joined;
    if (!operand.unit)
        m_place = operand.end;
    operand.end = m_place;
    return true;
}

bool EntryParser::read_mark(Operand& operand)
{
    const std::size_t begin = m_place;
    const std::size_t count = count_apostrophes(begin);
    if (count > 2)
        return fail(EntryProblem::NumberMissing, begin + 1);
    const bool is_foot = count == 1;
    operand.unit = is_foot ? m_field.foot() : m_field.inch();
    if (!operand.unit) {
        return is_foot ? fail_apostrophe(operand, begin)
                       : fail_other_kind(begin, begin + (count == 0 ? 1 : count), "a length");
    }
    m_place = begin + (count == 0 ? 1 : count);
    return !is_foot || read_inches(operand, true) != Inches::Failed;
}

/// A unit in letters. A slash or a 1 may also be something else; then nothing is read.
bool EntryParser::read_word(Operand& operand)
{
    const std::size_t begin = m_place;
    const UnitKeys keys(m_text.plain(), begin);
    if (keys.ends().empty())
        return true;
    const UnitKeys::End& longest = keys.ends().back();
    if (m_text.is_end(longest.in_text))
        m_completion = {true, operand.end};
    operand.unit = m_field.find(keys.key(longest));
    if (operand.unit) {
        m_place = longest.in_text;
    } else {
        // "1ft2in" has no blank before the inches.
        for (const UnitKeys::End& end : keys.ends()) {
            if (m_field.foot() && m_field.find(keys.key(end)) == m_field.foot()
                && m_text.is_digit_at(end.in_text)) {
                operand.unit = m_field.foot();
                m_place = end.in_text;
                const Inches inches = read_inches(operand, false);
                if (inches == Inches::None)
                    break;
                return inches == Inches::Joined;
            }
        }
        m_place = begin;
        return fail_unit(operand, keys, begin);
    }
    return operand.unit != m_field.foot() || read_inches(operand, false) != Inches::Failed;
}

bool EntryParser::open_bracket()
{
    if (m_levels.size() > most_brackets)
        return fail(EntryProblem::TooDeep, m_place);
    m_is_calculated = true;
    m_levels.emplace_back();
    level().bracket = m_place;
    ++m_place;
    return true;
}

bool EntryParser::close_bracket()
{
    if (m_levels.size() == 1)
        return fail(EntryProblem::BracketNotOpened, m_place);
    if (!close_product())
        return false;
    Operand operand = level().sum;
    operand.begin = level().bracket;
    operand.has_own_unit = false;
    operand.is_whole = false;
    operand.is_power_product = false;
    operand.is_joined = false;
    m_levels.pop_back();
    ++m_place;
    operand.end = m_place;
    m_completion.is_possible = false;
    if (!operand.unit) {
        if (!read_unit(operand))
            return false;
        // Feet in brackets are not joined with inches.
        if (operand.is_joined)
            return fail(EntryProblem::SignMissing, operand.end_of_number);
    }
    return take_operand(operand);
}

bool EntryParser::finish()
{
    if (m_levels.size() > 1)
        return fail_unfinished(EntryProblem::BracketNotClosed, level().bracket);
    if (!close_product())
        return false;
    const Operand& sum = level().sum;
    m_value = {sum.value, sum.unit};
    if (!sum.unit && !m_field.shown())
        return fail_wanting(EntryProblem::UnitMissing, sum.begin, sum.end);
    m_is_finished = true;
    return true;
}

// --- feet and inches

/// Joins the inches after feet. A hyphen after the mark of feet joins, too.
EntryParser::Inches EntryParser::read_inches(Operand& feet, bool has_mark)
{
    const std::size_t begin = m_text.after_blanks(m_place);
    const bool has_hyphen = m_text.at(begin) == L'-';
    const std::size_t number = has_hyphen ? m_text.after_blanks(begin + 1) : begin;
    if (!begins_number(m_text, number))
        return Inches::None;
    EntryNumber inches;
    if (!read_number(m_text, number, false, m_signs, m_field, inches, m_failure))
        return Inches::Failed;
    const std::size_t next = m_text.after_blanks(inches.end);
    const std::size_t end = end_of_inch(next);
    const bool is_group = has_mark && inches.begin == m_place && inches.is_whole
        && inches.end - inches.begin == 3;
    if (end == next && is_group) {
        const std::wstring left = m_text.written(feet.begin, feet.end_of_number);
        const std::wstring right = m_text.written(inches.begin, inches.end);
        m_failure.reason.suggestions = {left + right, left + L"' " + right + L"''"};
        fail(EntryProblem::TwoReadings, feet.begin, inches.end);
        return Inches::Failed;
    }
    if (end == next)
        return read_bare_inches(feet, inches, next, has_hyphen, has_mark);
    if (has_hyphen && !has_mark) {
        const std::wstring left = m_text.written(feet.begin, m_place);
        const std::wstring right = m_text.written(number, end);
        m_failure.reason.suggestions = {left + L" " + right, left + L" - (" + right + L")"};
        fail(EntryProblem::TwoReadings, feet.begin, end);
        return Inches::Failed;
    }
    return join_inches(feet, inches, end);
}

/// "5'6" needs no mark of inches.
EntryParser::Inches EntryParser::read_bare_inches(
    Operand& feet, const EntryNumber& inches, std::size_t next, bool has_hyphen, bool has_mark)
{
    const wchar_t character = m_text.at(next);
    const bool ends = next >= m_text.size() || std::wstring_view(L"+-*/)").find(character) < 5;
    if (!ends || (has_hyphen && !has_mark))
        return Inches::None;
    if (inches.is_whole && fail_mixed_number_with_hyphen(inches.begin, inches.end))
        return Inches::Failed;
    const bool is_clear = inches.value < inches_per_foot && inches.is_proper
        && !inches.is_power_product && character != L'*' && character != L'/';
    if (!is_clear) {
        fail_wanting(EntryProblem::UnitMissing, inches.begin, inches.end);
        return Inches::Failed;
    }
    return join_inches(feet, inches, inches.end);
}

/// The inches end at `end`. "2*10^3' 6''" may be a product of feet and inches.
EntryParser::Inches EntryParser::join_inches(
    Operand& feet, const EntryNumber& inches, std::size_t end)
{
    if (feet.is_power_product) {
        const std::size_t power = m_text.plain().find(L'*', feet.begin);
        m_failure.reason.suggestions = {L"(" + m_text.written(feet.begin, feet.end_of_number)
                + L") " + m_text.written(feet.end_of_number, end),
            m_text.written(feet.begin, power + 1) + L" ("
                + m_text.written(m_text.after_blanks(power + 1), end) + L")"};
        fail(EntryProblem::TwoReadings, feet.begin, end);
        return Inches::Failed;
    }
    feet.value += inches.value * metres_per_inch / metres_per_foot;
    feet.is_joined = true;
    m_place = end;
    m_completion.is_possible = false;
    return Inches::Joined;
}

/// The place after the unit of inches that begins there; `place` if none does.
std::size_t EntryParser::end_of_inch(std::size_t place) const
{
    if (m_text.at(place) == L'"')
        return place + 1;
    const std::size_t apostrophes = count_apostrophes(place);
    if (apostrophes > 0)
        return apostrophes == 2 ? place + 2 : place;
    if (!is_letter(m_text.at(place)) || !m_field.inch())
        return place;
    const UnitKeys keys(m_text.plain(), place);
    const UnitKeys::End& end = keys.ends().back();
    return m_field.find(keys.key(end)) == m_field.inch() ? end.in_text : place;
}

std::size_t EntryParser::count_apostrophes(std::size_t place) const
{
    std::size_t end = place;
    while (m_text.at(end) == L'\'')
        ++end;
    return end - place;
}

// --- arithmetic

bool EntryParser::take_operand(Operand operand)
{
    Level& current = level();
    if (current.own_sign == L'-')
        operand.value = -operand.value;
    current.own_sign = L'\0';
    m_expects_operand = false;
    if (!current.has_product) {
        current.product = operand;
        current.has_product = true;
        return true;
    }
    const bool is_division = current.product_sign == L'/';
    current.product_sign = L'\0';
    return is_division ? divide(current.product, operand) : multiply(current.product, operand);
}

/// Adds the product to the sum of its level.
bool EntryParser::close_product()
{
    Level& current = level();
    current.has_product = false;
    if (!current.has_sum) {
        current.sum = current.product;
        current.has_sum = true;
        return true;
    }
    return add(current.sum, current.product, current.sum_sign);
}

bool EntryParser::multiply(Operand& left, const Operand& right)
{
    if (left.unit && right.unit) {
        m_failure.reason.wanted = left.unit->kind;
        m_failure.reason.kind_of_word = right.unit->kind;
        return fail(EntryProblem::UnitsMultiplied, right.begin, right.end);
    }
    left.value *= right.value;
    left.unit = left.unit ? left.unit : right.unit;
    left.end = right.end;
    left.is_whole = false;
    if (!std::isfinite(left.value))
        return fail(EntryProblem::NumberTooLarge, right.begin, right.end);
    return true;
}

/// A number divided by a number with a unit is a fraction of that unit, as in "1/2 m".
bool EntryParser::divide(Operand& left, const Operand& right)
{
    if (right.value == 0)
        return fail(EntryProblem::DivisionByZero, right.begin);
    if (left.unit && right.has_own_unit) {
        return fail_two_quotients(
            left.begin, left.end, right.begin, right.end_of_number, right.end);
    }
    if (right.unit && !right.has_own_unit) {
        m_failure.reason.wanted = left.unit ? left.unit->kind : "a number";
        m_failure.reason.kind_of_word = right.unit->kind;
        return fail(EntryProblem::UnitsDivided, right.begin, right.end);
    }
    if (right.is_power_product) {
        const std::wstring dividend = m_text.written(left.begin, left.end);
        const std::size_t power = m_text.plain().find(L'*', right.begin);
        m_failure.reason.suggestions = {
            dividend + L" / (" + m_text.written(right.begin, right.end) + L")",
            L"(" + dividend + L" / " + m_text.written(right.begin, power) + L") "
                + m_text.written(power, right.end)};
        return fail(EntryProblem::TwoReadings, left.begin, right.end);
    }
    left.value /= right.value;
    left.unit = left.unit ? left.unit : right.unit;
    left.end = right.end;
    left.is_whole = false;
    if (!std::isfinite(left.value))
        return fail(EntryProblem::NumberTooLarge, right.begin, right.end);
    return true;
}

bool EntryParser::add(Operand& left, const Operand& right, wchar_t sign)
{
    if (!left.unit != !right.unit) {
        const Operand& bare = left.unit ? right : left;
        return fail_wanting(EntryProblem::UnitMissing, bare.begin, bare.end);
    }
    double value = right.value;
    if (left.unit != right.unit) {
        if (left.unit->dimension != right.unit->dimension) {
            m_failure.reason.wanted = left.unit->kind;
            m_failure.reason.kind_of_word = right.unit->kind;
            return fail(EntryProblem::UnitsOfTwoKinds, right.begin, right.end);
        }
        value = right.unit->factor * value / left.unit->factor;
    }
    left.value += sign == L'-' ? -value : value;
    left.end = right.end;
    if (!std::isfinite(left.value))
        return fail(EntryProblem::NumberTooLarge, right.begin, right.end);
    return true;
}

/// A dash after a number and nothing else means that there is no unit.
bool EntryParser::is_dash_at_end() const
{
    const Level& first = m_levels.front();
    return m_text.at(m_place) == L'-' && m_text.is_end(m_place + 1) && !m_is_calculated
        && !first.product.unit;
}

/// "3-1/2" is three and a half in the United States, and two and a half elsewhere. Returns
/// false if no hyphen and fraction come after the whole number.
bool EntryParser::fail_mixed_number_with_hyphen(std::size_t whole, std::size_t end)
{
    const std::size_t hyphen = m_text.after_blanks(end);
    const std::size_t begin = m_text.after_blanks(hyphen + 1);
    if (m_text.at(hyphen) != L'-' || !m_text.is_digit_at(begin))
        return false;
    EntryNumber fraction;
    EntryFailure ignored;
    if (!read_number(m_text, begin, false, m_signs, m_field, fraction, ignored)
        || !fraction.is_fraction || !fraction.is_proper)
        return false;
    const std::wstring left = m_text.written(whole, end);
    const std::wstring right = m_text.written(fraction.begin, fraction.end);
    m_failure.reason.suggestions = {left + L" " + right, left + L" - (" + right + L")"};
    fail(EntryProblem::TwoReadings, whole, fraction.end);
    return true;
}

// --- reasons

bool EntryParser::fail(EntryProblem problem, std::size_t place, std::size_t end)
{
    m_failure.reason.problem = problem;
    m_failure.reason.place = place;
    if (end > place)
        m_failure.reason.word = m_text.written(place, end);
    return false;
}

bool EntryParser::fail_unfinished(EntryProblem problem, std::size_t place, std::size_t end)
{
    m_failure.is_unfinished = true;
    return fail(problem, place, end);
}

bool EntryParser::fail_wanting(EntryProblem problem, std::size_t place, std::size_t end)
{
    m_failure.reason.wanted = m_field.wanted();
    m_failure.reason.units = m_field.usual_units();
    return fail(problem, place, end);
}

/// Something that cannot begin a number.
bool EntryParser::fail_strange(std::size_t place)
{
    const wchar_t next = m_text.at(place);
    if (is_letter(next)) {
        std::size_t end = place;
        while (is_letter(m_text.at(end)))
            ++end;
        const std::wstring word = m_text.written(place, end);
        if (word == L"nan" || word == L"NaN" || word == L"inf" || word == L"infinity")
            return fail(EntryProblem::NumberMalformed, place, end);
        return fail(EntryProblem::NumberMissing, place);
    }
    if (next == L')' && m_levels.size() == 1)
        return fail(EntryProblem::BracketNotOpened, place);
    if (next != L'\0' && std::wstring_view(L")*/'\"").find(next) < 5)
        return fail(EntryProblem::NumberMissing, place);
    if ((next == L'.' || next == L',') && m_text.is_end(place + 1) && m_expects_operand)
        return fail_unfinished(EntryProblem::NumberUnfinished, place, place + 1);
    return fail(EntryProblem::StrangeCharacter, place, place + 1);
}

bool EntryParser::fail_unit(const Operand& operand, const UnitKeys& keys, std::size_t place)
{
    const UnitKeys::End& longest = keys.ends().back();
    const std::size_t end = longest.in_text;
    const std::wstring_view key = keys.key(longest);
    if (fail_quotient(operand, end))
        return false;
    EntryReason& reason = m_failure.reason;
    // "kN/" is the beginning of "kN/m", too.
    const std::size_t slash = m_text.after_blanks(end);
    const bool has_slash = m_text.at(slash) == L'/';
    if (m_text.is_end(has_slash ? slash + 1 : end)) {
        const std::wstring beginning = std::wstring(key) + (has_slash ? L"/" : L"");
        for (const FieldUnit* const unit : m_field.find_longer(beginning))
            reason.suggestions.push_back(unit->symbol);
        if (!reason.suggestions.empty())
            return fail_unfinished(EntryProblem::UnitUnfinished, place, end);
    }
    const FieldUnit* other = find_in_catalogue(key);
    // Of a unit that exists, none is a slip of the finger.
    if (!other)
        reason.suggestions = m_field.similar_units(key);
    if (!other && reason.suggestions.empty())
        other = find_in_catalogue_in_any_case(key);
    if (other && std::string_view(other->kind) != m_field.wanted())
        return fail_other_kind(place, end, other->kind);
    return fail_wanting(EntryProblem::UnitUnknown, place, end);
}

/// "6 kN/2 m" has two readings, of which one may fit another field. The unit that ends at
/// `end` is on one side of the slash. Returns false if the text is not of that form.
bool EntryParser::fail_quotient(const Operand& operand, std::size_t end)
{
    const Level& current = level();
    if (current.has_product && current.product_sign == L'/' && current.product.unit) {
        fail_two_quotients(
            current.product.begin, current.product.end, operand.begin, operand.end_of_number, end);
        return true;
    }
    const std::size_t slash = m_text.after_blanks(end);
    const std::size_t begin = m_text.after_blanks(slash + 1);
    EntryNumber number;
    EntryFailure ignored;
    if (m_text.at(slash) != L'/' || !begins_number(m_text, begin)
        || !read_number(m_text, begin, true, m_signs, m_field, number, ignored))
        return false;
    const UnitKeys divisor(m_text.plain(), m_text.after_blanks(number.end));
    if (divisor.ends().empty())
        return false;
    fail_two_quotients(operand.begin, end, begin, number.end, divisor.ends().back().in_text);
    return true;
}

/// The dividend goes from `begin` to `end`; the divisor is a number and a unit.
bool EntryParser::fail_two_quotients(std::size_t begin, std::size_t end, std::size_t number,
    std::size_t end_of_number, std::size_t end_of_unit)
{
    const std::wstring dividend = m_text.written(begin, end);
    const std::wstring divisor = m_text.written(number, end_of_number);
    const std::wstring unit = m_text.written(m_text.after_blanks(end_of_number), end_of_unit);
    m_failure.reason.suggestions = {dividend + L" / (" + divisor + L" " + unit + L")",
        L"(" + dividend + L" / " + divisor + L") " + unit};
    return fail(EntryProblem::TwoReadings, begin, end_of_unit);
}

bool EntryParser::fail_other_kind(std::size_t place, std::size_t end, const char* kind)
{
    m_failure.reason.kind_of_word = kind;
    return fail_wanting(EntryProblem::UnitOfAnotherKind, place, end);
}

/// Where there are no feet, an apostrophe begins a group of digits.
bool EntryParser::fail_apostrophe(const Operand& operand, std::size_t mark)
{
    const std::size_t end = m_text.after_digits(mark + 1);
    const bool may_be_group = operand.is_whole && end - mark <= 3 && m_text.is_end(end);
    return may_be_group ? fail_unfinished(EntryProblem::NumberUnfinished, operand.begin, end)
                        : fail(EntryProblem::NumberMalformed, operand.begin, end);
}

} // namespace vrn::units::detail
