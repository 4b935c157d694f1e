#pragma once

#include "entry/entry_number_p.h"
#include "entry/unit_spellings_p.h"

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <string>

namespace vrn::units::detail {

/// What an entry comes to, before it is written.
struct EntryValue
{
    double value = 0.0;
    const FieldUnit* unit = nullptr; ///< Null for a number alone.
};

/// Where a unit may be put in.
struct EntryCompletion
{
    bool is_possible = false;
    std::size_t place = 0; ///< After the number. The beginning of a unit may stand there.
};

/// Reads one text by the grammar in <vrn/units/entry.h>. Brackets are kept on a stack of
/// limited depth, so the time is linear and nothing recurses.
class EntryParser
{
public:
    EntryParser(const EntryField& field, NumberSigns signs, const EntryText& text);

    /// False with the reason in failure().
    bool parse();

    const EntryValue& value() const { return m_value; }
    bool is_calculated() const { return m_is_calculated; }
    const EntryFailure& failure() const { return m_failure; }
    const EntryCompletion& completion() const { return m_completion; }

private:
    struct Operand
    {
        double value = 0.0;
        const FieldUnit* unit = nullptr;
        std::size_t begin = 0;
        std::size_t end = 0;
        std::size_t end_of_number = 0; ///< If the unit stands right after it.
        bool has_own_unit = false; ///< The unit stands right after it: not in "(2 m)".
        bool is_joined = false; ///< Feet and inches.
        bool is_whole = false; ///< See EntryNumber.
        bool is_power_product = false;
    };

    /// The part of a sum that is read, of the whole text or within brackets.
    struct Level
    {
        std::size_t bracket = 0;
        Operand sum;
        Operand product;
        bool has_sum = false;
        bool has_product = false;
        wchar_t sum_sign = L'\0'; ///< Before the product.
        wchar_t product_sign = L'\0'; ///< Before the operand that is next.
        wchar_t own_sign = L'\0'; ///< Of the operand that is next.
    };

    Level& level() { return m_levels.back(); }

    bool read_operand();
    bool read_operator();
    bool read_quantity(Operand& operand);
    bool read_unit(Operand& operand);
    bool read_mark(Operand& operand);
    bool read_word(Operand& operand);
    bool open_bracket();
    bool close_bracket();
    bool finish();

    enum class Inches
    {
        None,
        Joined,
        Failed
    };
    Inches read_inches(Operand& feet, bool has_mark);
    Inches read_bare_inches(
        Operand& feet, const EntryNumber& inches, std::size_t next, bool has_hyphen, bool has_mark);
    Inches join_inches(Operand& feet, const EntryNumber& inches, std::size_t end);
    std::size_t end_of_inch(std::size_t place) const;
    std::size_t count_apostrophes(std::size_t place) const;

    bool take_operand(Operand operand);
    bool close_product();
    bool multiply(Operand& left, const Operand& right);
    bool divide(Operand& left, const Operand& right);
    bool add(Operand& left, const Operand& right, wchar_t sign);
    bool is_dash_at_end() const;
    bool fail_mixed_number_with_hyphen(std::size_t whole, std::size_t end);

    bool fail(EntryProblem problem, std::size_t place, std::size_t end = 0);
    bool fail_unfinished(EntryProblem problem, std::size_t place, std::size_t end = 0);
    bool fail_wanting(EntryProblem problem, std::size_t place, std::size_t end);
    bool fail_strange(std::size_t place);
    bool fail_unit(const Operand& operand, const UnitKeys& keys, std::size_t place);
    bool fail_quotient(const Operand& operand, std::size_t end);
    bool fail_two_quotients(std::size_t begin, std::size_t end, std::size_t number,
        std::size_t end_of_number, std::size_t end_of_unit);
    bool fail_other_kind(std::size_t place, std::size_t end, const char* kind);
    bool fail_apostrophe(const Operand& operand, std::size_t mark);

    const EntryField& m_field;
    NumberSigns m_signs;
    const EntryText& m_text;
    std::size_t m_place = 0;
    bool m_expects_operand = true;
    bool m_is_finished = false;
    bool m_is_calculated = false;
    boost::container::small_vector<Level, 2> m_levels;
    EntryValue m_value;
    EntryFailure m_failure;
    EntryCompletion m_completion;
};

} // namespace vrn::units::detail
