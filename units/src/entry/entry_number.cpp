#include "entry/entry_number_p.h"

#include "entry/entry_characters_p.h"
#include "entry/unit_spellings_p.h"
#include "formatting/number_reader_p.h"

#include <boost/container/small_vector.hpp>

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

namespace vrn::units::detail {
namespace {

constexpr std::size_t group_size = 3;

/// Digits without a gap, and the sign before them.
struct Run
{
    wchar_t sign; ///< L'\0' before the first.
    std::size_t begin;
    std::size_t size;
};

using Digits = boost::container::small_vector<char, 64>;

bool is_metric_length(UnitId::UnitId id)
{
    return id == UnitId::KILOMETRE || id == UnitId::METRE || id == UnitId::DECIMETRE
        || id == UnitId::CENTIMETRE || id == UnitId::MILLIMETRE;
}

/// The value of a few digits with a point. std::from_chars takes several times as long.
std::optional<double> exact_value_of(const Digits& digits)
{
    if (digits.size() > most_exact_digits)
        return std::nullopt;
    std::uint64_t value = 0;
    std::size_t decimals = 0;
    bool has_point = false;
    for (const char digit : digits) {
        if (digit >= '0' && digit <= '9') {
            value = value * 10 + static_cast<std::uint64_t>(digit - '0');
            decimals += has_point ? 1 : 0;
        } else if (digit == '.') {
            has_point = true;
        } else {
            return std::nullopt;
        }
    }
    return exact_decimal(value, decimals);
}

/// The value of digits with a point and an exponent. One that is too large is infinite.
double value_of(const Digits& digits)
{
    if (const auto exact = exact_value_of(digits))
        return *exact;
    double value = 0.0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ec == std::errc())
        return value;
    // It is too large or too small. The stream knows which.
    const std::wstring wide(digits.begin(), digits.end());
    value = NumberReader(std::locale::classic()).read_decimal(wide);
    return value < std::numeric_limits<double>::max() ? value
                                                      : std::numeric_limits<double>::infinity();
}

class Reader
{
public:
    Reader(const EntryText& text, std::size_t place, bool is_divisor, NumberSigns signs,
        const EntryField& field, EntryNumber& number, EntryFailure& failure)
        : m_text(text)
        , m_place(place)
        , m_is_divisor(is_divisor)
        , m_signs(signs)
        , m_field(field)
        , m_number(number)
        , m_failure(failure)
    {
        m_number = {};
        m_number.begin = place;
    }

    bool read()
    {
        if (const CharacterFraction* const fraction = find_fraction(m_text.at(m_place))) {
            ++m_place;
            m_number.value = static_cast<double>(fraction->numerator) / fraction->denominator;
            return finish();
        }
        if (!read_digits() || !read_exponent())
            return false;
        m_number.value = value_of(m_digits);
        if (m_number.value > std::numeric_limits<double>::max())
            return fail(EntryProblem::NumberTooLarge, m_number.begin);
        if (m_is_integer && !read_fraction())
            return false;
        return check_blanks() && finish();
    }

private:
    bool finish()
    {
        m_number.end = m_place;
        return true;
    }

    bool fail(EntryProblem problem, std::size_t place, std::size_t end = 0)
    {
        m_failure.reason.problem = problem;
        m_failure.reason.place = place;
        m_failure.reason.word = m_text.written(m_number.begin, end > 0 ? end : m_place);
        return false;
    }

    bool fail_unfinished(std::size_t end)
    {
        m_failure.is_unfinished = m_text.is_end(end);
        return fail(m_failure.is_unfinished ? EntryProblem::NumberUnfinished
                                            : EntryProblem::NumberMalformed,
            m_number.begin, end);
    }

    // --- digits with decimal signs and groups

    bool read_digits()
    {
        const std::size_t begin = m_place;
        scan_runs(true);
        const bool has_apostrophe = std::any_of(
            m_runs.begin(), m_runs.end(), [](const Run& run) { return run.sign == L'\''; });
        if (has_apostrophe && m_field.has_lengths() && !is_metric_length_next()) {
            m_place = begin;
            m_runs.clear();
            scan_runs(false);
        }
        return take_runs();
    }

    void scan_runs(bool has_apostrophes)
    {
        wchar_t sign = L'\0';
        bool has_point = false;
        for (;;) {
            const std::size_t begin = m_place;
            m_place = m_text.after_digits(m_place);
            m_runs.push_back({sign, begin, m_place - begin});
            sign = m_text.at(m_place);
            if (sign == L'.' || sign == L',') {
                has_point = true;
                if (!m_text.is_digit_at(m_place + 1))
                    return;
            } else if (has_point || (sign == L'\'' && !has_apostrophes) || !is_group_sign(sign)
                || !is_group_next()) {
                return;
            }
            ++m_place;
        }
    }

    bool is_group_sign(wchar_t sign) const
    {
        return sign == L' ' || sign == L'\'' || (sign != L'\0' && sign == m_signs.group);
    }

    /// Whether the last run may come before a group, and a group of three digits follows.
    bool is_group_next() const
    {
        const Run& last = m_runs.back();
        const bool is_head = m_runs.size() == 1;
        if (last.size == 0 || last.size > group_size || (!is_head && last.size != group_size)
            || (is_head && m_text.at(last.begin) == L'0'))
            return false;
        return m_text.after_digits(m_place + 1) == m_place + 1 + group_size;
    }

    bool is_metric_length_next() const
    {
        std::size_t place = m_text.after_blanks(m_place);
        // A fraction may stand between.
        if (find_fraction(m_text.at(place)) != nullptr)
            place = m_text.after_blanks(place + 1);
        const std::size_t slash = m_text.after_digits(place);
        const std::size_t denominator = slash > place ? denominator_after(slash) : 0;
        if (denominator > 0)
            place = m_text.after_blanks(m_text.after_digits(denominator));
        const UnitKeys keys(m_text.plain(), place);
        if (keys.ends().empty())
            return false;
        const FieldUnit* const unit = m_field.find(keys.key(keys.ends().back()));
        return unit && is_metric_length(unit->id);
    }

    std::size_t count_of(wchar_t sign) const
    {
        return static_cast<std::size_t>(std::count_if(
            m_runs.begin(), m_runs.end(), [sign](const Run& run) { return run.sign == sign; }));
    }

    /// Whether the runs after the first, up to the one at `end`, are groups.
    bool are_groups(std::size_t end) const
    {
        const Run& head = m_runs.front();
        if (head.size == 0 || head.size > group_size || m_text.at(head.begin) == L'0')
            return false;
        return std::all_of(m_runs.begin() + 1, m_runs.begin() + static_cast<std::ptrdiff_t>(end),
            [](const Run& run) { return run.size == group_size; });
    }

    bool take_runs()
    {
        const bool has_decimal_comma = m_signs.decimal == L',';
        const std::size_t points = count_of(L'.');
        const std::size_t commas = count_of(L',');
        const std::size_t last = m_runs.size() - 1;
        // Where the decimals begin; after the last run if there are none.
        std::size_t decimals = m_runs.size();
        if (points + commas == 1) {
            decimals = last;
        } else if (points > 0 && commas > 0) {
            const wchar_t decimal = m_runs[last].sign;
            if (count_of(decimal) != 1 || points + commas != last || !are_groups(last))
                return fail(EntryProblem::NumberMalformed, m_number.begin);
            decimals = last;
            if (decimal == L',' && !has_decimal_comma)
                return fail_comma(decimals);
            if (decimal == L'.' && has_decimal_comma)
                return fail(EntryProblem::NumberMalformed, m_number.begin);
        } else if (points + commas > 1) {
            const bool is_group_sign = has_decimal_comma ? points > 0 : commas > 0;
            if (!is_group_sign || points + commas != last || !are_groups(m_runs.size()))
                return fail(EntryProblem::NumberMalformed, m_number.begin);
        }
        if (decimals == last && m_runs[last].sign == L',' && !has_decimal_comma)
            return fail_comma(decimals);
        append_digits(decimals);
        m_is_integer = decimals == m_runs.size();
        m_number.is_whole = m_runs.size() == 1;
        return take_trailing_sign();
    }

    /// "5." is 5, and so is "5," where the comma is the decimal sign.
    bool take_trailing_sign()
    {
        const wchar_t sign = m_text.at(m_place);
        if (sign != L'.' && sign != L',')
            return true;
        ++m_place;
        if (!m_is_integer || m_runs.front().size == 0)
            return fail_unfinished(m_place);
        if (sign == L',' && m_signs.decimal != L',')
            return fail_unfinished(m_place);
        m_is_integer = false;
        m_number.is_whole = false;
        return true;
    }

    void append_digits(std::size_t decimals)
    {
        for (std::size_t i = 0; i < m_runs.size(); ++i) {
            if (i == decimals)
                m_digits.push_back('.');
            for (std::size_t k = 0; k < m_runs[i].size; ++k)
                m_digits.push_back(static_cast<char>(m_text.at(m_runs[i].begin + k)));
        }
    }

    /// The comma is not the decimal sign here. "1,234" may have been meant in two ways, and
    /// "12,5" in only one.
    bool fail_comma(std::size_t decimals)
    {
        append_digits(decimals);
        std::vector<std::wstring>& suggestions = m_failure.reason.suggestions;
        std::wstring number(m_digits.begin(), m_digits.end());
        if (number.front() == L'.')
            number.insert(0, 1, L'0');
        suggestions.push_back(number);
        if (m_runs.size() == 2 && are_groups(2)) {
            number.erase(std::remove(number.begin(), number.end(), L'.'), number.end());
            suggestions.push_back(number);
            return fail(EntryProblem::TwoReadings, m_number.begin);
        }
        return fail(EntryProblem::CommaNotDecimal, m_number.begin);
    }

    // --- exponents

    bool read_exponent()
    {
        const wchar_t next = m_text.at(m_place);
        if ((next == L'x' || next == L'X') && m_digits.size() == 1 && m_digits[0] == '0')
            return fail(EntryProblem::NumberMalformed, m_number.begin, m_place + 1);
        if (next == L'e' || next == L'E')
            return read_letter_exponent();
        if (begins_power(m_place)) {
            const bool is_ten = m_number.is_whole && m_digits.size() == 2 && m_digits[0] == '1'
                && m_digits[1] == '0';
            if (!is_ten)
                return fail(EntryProblem::NumberMalformed, m_number.begin, m_place + 1);
            m_digits.pop_back();
            m_is_integer = false;
            return read_power();
        }
        const std::size_t power = place_of_power(m_place);
        if (power == 0)
            return true;
        m_place = power;
        m_is_integer = false;
        m_number.is_power_product = true;
        return read_power();
    }

    /// Where the exponent begins if "*10" with an exponent comes there; otherwise 0.
    std::size_t place_of_power(std::size_t place) const
    {
        const std::size_t times = m_text.after_blanks(place);
        if (m_text.at(times) != L'*')
            return 0;
        const std::size_t ten = m_text.after_blanks(times + 1);
        const bool is_ten = m_text.at(ten) == L'1' && m_text.at(ten + 1) == L'0';
        return is_ten && begins_power(ten + 2) ? ten + 2 : 0;
    }

    bool begins_power(std::size_t place) const
    {
        const wchar_t character = m_text.at(place);
        return character == L'^' || character == superscript_minus
            || superscript_digit(character) >= 0;
    }

    bool read_letter_exponent()
    {
        std::size_t place = m_place + 1;
        const wchar_t sign = m_text.at(place);
        if (sign == L'+' || sign == L'-')
            ++place;
        if (!m_text.is_digit_at(place)) {
            // Without digits, it may be the first letter of a word.
            if (!m_text.is_end(place))
                return true;
            return fail_unfinished(place);
        }
        m_digits.push_back('e');
        if (sign == L'-')
            m_digits.push_back('-');
        m_place = m_text.after_digits(place);
        for (; place < m_place; ++place)
            m_digits.push_back(static_cast<char>(m_text.at(place)));
        m_is_integer = false;
        m_number.is_whole = false;
        return true;
    }

    /// "^3", "^-3", "³" and "⁻³" after the 10.
    bool read_power()
    {
        m_number.is_whole = false;
        m_digits.push_back('e');
        if (m_text.at(m_place) == L'^') {
            ++m_place;
            if (m_text.at(m_place) == L'-')
                m_digits.push_back('-');
            if (m_text.at(m_place) == L'-' || m_text.at(m_place) == L'+')
                ++m_place;
            const std::size_t begin = m_place;
            for (; m_text.is_digit_at(m_place); ++m_place)
                m_digits.push_back(static_cast<char>(m_text.at(m_place)));
            return m_place > begin || fail_unfinished(m_place);
        }
        if (m_text.at(m_place) == superscript_minus) {
            m_digits.push_back('-');
            ++m_place;
        }
        const std::size_t begin = m_place;
        for (; superscript_digit(m_text.at(m_place)) >= 0; ++m_place)
            m_digits.push_back(static_cast<char>('0' + superscript_digit(m_text.at(m_place))));
        return m_place > begin || fail_unfinished(m_place);
    }

    // --- fractions

    /// A fraction after a whole number, or the number as a numerator.
    bool read_fraction()
    {
        const std::size_t next = m_text.after_blanks(m_place);
        if (const CharacterFraction* const fraction = find_fraction(m_text.at(next))) {
            m_place = next + 1;
            m_number.is_whole = false;
            m_number.value += static_cast<double>(fraction->numerator) / fraction->denominator;
            return true;
        }
        if (const std::size_t denominator = denominator_after(m_place))
            return take_numerator(denominator);
        if (next == m_place || !m_text.is_digit_at(next))
            return true;
        const std::size_t slash = m_text.after_digits(next);
        const std::size_t denominator = denominator_after(slash);
        if (denominator == 0)
            return true;
        const double whole = m_number.value;
        m_digits.clear();
        for (std::size_t i = next; i < slash; ++i)
            m_digits.push_back(static_cast<char>(m_text.at(i)));
        const double numerator = value_of(m_digits);
        m_place = slash;
        if (!take_denominator(denominator, numerator))
            return false;
        if (!is_end_of_fraction(m_place))
            return fail(EntryProblem::NumberMalformed, m_number.begin);
        m_number.value += whole;
        m_number.is_whole = false;
        return true;
    }

    /// Where digits begin after a slash at `place` or after blanks; 0 if there are none.
    std::size_t denominator_after(std::size_t place) const
    {
        const std::size_t slash = m_text.after_blanks(place);
        if (m_text.at(slash) != L'/')
            return 0;
        const std::size_t denominator = m_text.after_blanks(slash + 1);
        return m_text.is_digit_at(denominator) ? denominator : 0;
    }

    /// The number is digits before a slash with digits after it.
    bool take_numerator(std::size_t denominator)
    {
        // "1 200/3" is 1 and 200/3, or 1200/3.
        if (m_runs.back().sign == L' ')
            return fail_group_or_whole(denominator);
        const std::size_t end = m_text.after_digits(denominator);
        // Otherwise the slash is left to be a sign of division.
        if (m_is_divisor || !m_number.is_whole || !is_end_of_fraction(end)
            || begins_another_number(end) || place_of_power(end) > 0)
            return true;
        const double numerator = m_number.value;
        if (!take_denominator(denominator, numerator))
            return false;
        m_number.is_whole = false;
        m_number.is_fraction = true;
        m_number.is_proper = m_number.value < 1.0;
        return true;
    }

    bool take_denominator(std::size_t denominator, double numerator)
    {
        m_place = m_text.after_digits(denominator);
        m_digits.clear();
        for (std::size_t i = denominator; i < m_place; ++i)
            m_digits.push_back(static_cast<char>(m_text.at(i)));
        const double divisor = value_of(m_digits);
        if (divisor == 0)
            return fail(EntryProblem::DivisionByZero, denominator);
        m_number.value = numerator / divisor;
        return true;
    }

    /// Whether the digits that end there are all of a denominator.
    bool is_end_of_fraction(std::size_t place) const
    {
        const wchar_t next = m_text.at(place);
        const wchar_t after = m_text.at(place + 1);
        if (next == L'.' || next == L',')
            return !is_digit(after);
        if (next == L'e' || next == L'E')
            return !is_digit(after) && after != L'-' && after != L'+';
        return !begins_power(place) && find_fraction(next) == nullptr;
    }

    /// Whether digits come after blanks there, as in the denominator "1 1/2".
    bool begins_another_number(std::size_t place) const
    {
        const std::size_t next = m_text.after_blanks(place);
        return m_text.is_digit_at(next) || find_fraction(m_text.at(next)) != nullptr;
    }

    bool fail_group_or_whole(std::size_t denominator)
    {
        const Run& numerator = m_runs.back();
        const std::size_t end = m_text.after_digits(denominator);
        const std::wstring divided = L"/" + m_text.written(denominator, end);
        const std::wstring all(m_digits.begin(), m_digits.end());
        const std::size_t whole = all.size() - numerator.size;
        m_failure.reason.suggestions = {
            all.substr(0, whole) + L" + " + all.substr(whole) + divided, all + divided};
        return fail(EntryProblem::TwoReadings, m_number.begin, end);
    }

    // --- what comes after the number

    /// Digits after a blank belong to the number, but no rule says how. Only "1/m" is a unit.
    bool check_blanks()
    {
        const std::size_t next = m_text.after_blanks(m_place);
        if (next == m_place || !m_text.is_digit_at(next))
            return true;
        const std::size_t end = m_text.after_digits(next);
        const std::size_t slash = m_text.after_blanks(end);
        const bool is_one = end == next + 1 && m_text.at(next) == L'1';
        if (is_one && m_text.at(slash) == L'/'
            && is_letter_or_bracket(m_text.after_blanks(slash + 1)))
            return true;
        const bool may_go_on = m_is_integer && !m_number.is_fraction
            && (m_text.is_end(end) || (m_text.at(slash) == L'/' && m_text.is_end(slash + 1)));
        if (may_go_on) {
            m_failure.is_unfinished = true;
            return fail(EntryProblem::NumberUnfinished, m_number.begin, end);
        }
        return fail(EntryProblem::BlankBetweenDigits, m_place, end);
    }

    bool is_letter_or_bracket(std::size_t place) const
    {
        return is_letter(m_text.at(place)) || m_text.at(place) == L'(';
    }

    const EntryText& m_text;
    std::size_t m_place;
    bool m_is_divisor;
    NumberSigns m_signs;
    const EntryField& m_field;
    EntryNumber& m_number;
    EntryFailure& m_failure;
    boost::container::small_vector<Run, 8> m_runs;
    Digits m_digits;
    bool m_is_integer = true; ///< Without decimals and without an exponent.
};

} // namespace

bool begins_number(const EntryText& text, std::size_t place)
{
    const wchar_t character = text.at(place);
    return text.is_digit_at(place) || find_fraction(character) != nullptr
        || ((character == L'.' || character == L',') && text.is_digit_at(place + 1));
}

bool read_number(const EntryText& text, std::size_t place, bool is_divisor, NumberSigns signs,
    const EntryField& field, EntryNumber& number, EntryFailure& failure)
{
    return Reader(text, place, is_divisor, signs, field, number, failure).read();
}

} // namespace vrn::units::detail
