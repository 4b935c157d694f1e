#pragma once

#include <vrn/units/context.h>

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vrn::units::detail {

/// A unit that counts in a field.
struct FieldUnit
{
    UnitId::UnitId id = UnitId::DIMENSIONLESS;
    std::uint32_t dimension = 0;
    double factor = 1.0;
    std::wstring symbol; ///< Empty if nobody can type it.
    bool is_written = false; ///< Context::parse() reads the symbol as this unit.
    bool is_plain = false; ///< So does the field: no other unit takes the symbol.
    const char* kind = ""; ///< What it measures: "a length".
};

/// What the entries of one field may be: its units and their spellings.
class EntryField
{
public:
    /// Without units.
    EntryField();
    /// Throws std::invalid_argument if the kind or its display unit is not known.
    EntryField(const Context& context, UnitId::UnitId kind);

    EntryField(const EntryField&) = delete;
    EntryField& operator=(const EntryField&) = delete;

    /// The id of the quantities; UnitId::DIMENSIONLESS without units.
    UnitId::UnitId kind() const { return m_kind; }
    /// What is wanted: "a length".
    const char* wanted() const { return m_wanted; }
    /// The unit of a number alone; null if the field is shown in a unit that does not fit.
    const FieldUnit* shown() const { return m_shown; }
    /// Null if the field does not have it.
    const FieldUnit* foot() const { return m_foot; }
    const FieldUnit* inch() const { return m_inch; }
    /// Whether marks such as "'" may be feet.
    bool has_lengths() const { return m_has_lengths; }

    /// The unit with that key; null if there is none. Another case will do if it can mean
    /// one unit only. "mN" does not mean "MN", for it is a unit of its own.
    const FieldUnit* find(std::wstring_view key) const;
    /// The unit with exactly that symbol, which Context::parse() reads as well.
    const FieldUnit* find_symbol(std::wstring_view symbol) const noexcept;
    /// The units of which a key begins so, in any case, the shown one first.
    std::vector<const FieldUnit*> find_beginning(std::wstring_view key) const;
    /// The same for keys with more after that.
    std::vector<const FieldUnit*> find_longer(std::wstring_view key) const;
    /// The symbols of the units that may have been meant, best first, at most three.
    std::vector<std::wstring> similar_units(std::wstring_view key) const;
    /// The symbols of the units that are usual, the shown one first.
    const std::vector<std::wstring>& usual_units() const { return m_usual_units; }

    struct Written
    {
        IConverter::quantity quantity;
        std::wstring text;
    };
    /// The value in that unit as a quantity of the field, and a text that Context::parse()
    /// reads as exactly this quantity.
    Written write(const FieldUnit& unit, double value) const;
    /// What Context::parse() makes of the value in that unit.
    double value_of(const FieldUnit& unit, double value) const;

private:
    struct Spelling
    {
        std::wstring key;
        const FieldUnit* unit; ///< Null if several units have the key in this case.
    };
    using Spellings = std::vector<Spelling>;

    void add_units(const Context& context);
    void add_shown_unit(const Context& context);
    void add_spellings();
    void add_usual_units();
    std::vector<const FieldUnit*> find_beginning(
        std::wstring_view key, std::size_t least_size) const;
    void add_key(std::wstring key, const FieldUnit& unit);
    const FieldUnit* unit_of(UnitId::UnitId id) const;
    static bool comes_before(std::wstring_view left, std::wstring_view right);
    static const Spelling* find_in(const Spellings& spellings, std::wstring_view key);
    bool reads(const Context& context, const std::wstring& text, const FieldUnit& unit) const;

    UnitId::UnitId m_kind = UnitId::DIMENSIONLESS;
    double m_factor_of_kind = 1.0;
    std::vector<FieldUnit> m_units;
    Spellings m_spellings; ///< By the size of the key, then by the key. The first unit that has a
                           ///< key keeps it.
    Spellings m_lower_spellings; ///< The same with keys in lower case.
    std::vector<std::wstring> m_usual_units;
    const char* m_wanted = "a number";
    const FieldUnit* m_shown = nullptr;
    const FieldUnit* m_foot = nullptr;
    const FieldUnit* m_inch = nullptr;
    bool m_reads_bare_numbers = true;
    bool m_has_lengths = false;
};

/// The first unit of the catalogue with that key; null if there is none. It never ends.
const FieldUnit* find_in_catalogue(std::wstring_view key);
/// The same in any case.
const FieldUnit* find_in_catalogue_in_any_case(std::wstring_view key);

} // namespace vrn::units::detail
