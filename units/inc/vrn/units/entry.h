#pragma once

#include <vrn/units/context.h>
#include <vrn/units/entry_reason.h>
#include <vrn/units/number_signs.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Reads quantities as engineers write them: all of a text counts, and a text that would
/// have to be guessed is refused with the reason. Context::parse() reads the longest
/// beginning that makes sense. What is read and what is refused is listed in
/// docs/entry.md.
//
// The grammar, in which blanks may stand between any two symbols:
//
//     sum      = product { ("+" | "-") product }
//     product  = factor { ("*" | "/") factor }
//     factor   = [ "+" | "-" ] ( quantity | "(" sum ")" [ unit ] )
//     quantity = number [ unit ] | number foot [ "-" ] number [ inch ]
//     number   = whole [ fraction ] | decimal [ exponent ] | fraction
//     fraction = digits "/" digits, or one character such as "½"
//     exponent = ("e" | "E") digits | "*" power; a power such as "10^3" is a number, too
//
// A number and its unit bind first, then feet and inches, then the sign. A unit is one of
// the kind, in any spelling of units/src/entry/unit_spellings.cpp.
namespace vrn::units {
inline namespace v1 {

enum class EntryState
{
    Complete, ///< It is a quantity.
    Unfinished, ///< It is not one yet, but more at its end may make it one.
    Refused
};

/// What a text was read as.
struct Entry
{
    EntryState state = EntryState::Refused;
    /// If the text is complete: the value of the kind.
    IConverter::quantity quantity;
    /// If the text is complete: the same quantity as a number with a point and a unit.
    /// Context::parse() reads it in the classic locale as exactly `quantity`.
    std::wstring text;
    /// Whether the text is more than one number with one unit, so that a user may want to
    /// see what it comes to.
    bool is_calculated = false;
    /// If the text is not complete.
    EntryReason reason;
};

/// Reads the entries of one field.
///
///     const EntryReader reader(Context(), UnitId::GEO_LENGTH);
///     const Entry entry = reader.read(L"3 m + 20 cm");
///     // entry.quantity.value is 3.2, and entry.text is L"3.2 m"
///     const Entry other = reader.read(L"12 kN");
///     // other.reason.problem is EntryProblem::UnitOfAnotherKind
///
/// To make one takes longer than to read a text. It keeps what it needs of the context, so
/// it does not see later changes of that. Copies share it. Any thread may read.
///
/// When memory runs out, std::bad_alloc is thrown; reading throws nothing else.
class VRN_UNITS_EXPORT EntryReader
{
public:
    /// A field without units, for plain numbers.
    EntryReader();
    /// A field of `kind`, a unit set or a unit. Throws what Context::parse() throws for an
    /// id that is not known.
    EntryReader(const Context& context, UnitId::UnitId kind);
    ~EntryReader();

    // These serve moves as well, so that no reader is ever without its field.
    EntryReader(const EntryReader& other);
    EntryReader& operator=(const EntryReader& other);

    Entry read(std::wstring_view text, NumberSigns signs = {}) const;

    /// Whether the text is a plain number with or without a symbol of the kind, and
    /// Context::parse() reads it as read() does. Most texts are, and this takes less time.
    bool is_plain(std::wstring_view text) const noexcept;

    /// The text with each unit that may stand at its end in place of what stands there: none
    /// unless it ends in a number or in the beginning of a unit.
    std::vector<std::wstring> completions(std::wstring_view text, NumberSigns signs = {}) const;

private:
    class Field;

    std::shared_ptr<const Field> m_field;
};

/// Reads one entry; see EntryReader, which is faster for several.
VRN_UNITS_EXPORT Entry read_entry(
    std::wstring_view text, const Context& context, UnitId::UnitId kind, NumberSigns signs = {});

} // namespace v1
} // namespace vrn::units
