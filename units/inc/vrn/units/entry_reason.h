#pragma once

#include <vrn/units/vrn_units_export.h>

#include <cstddef>
#include <string>
#include <vector>

namespace vrn::units {
inline namespace v1 {

/// Why a text is not a quantity. The values of EntryReason that the sentence needs are
/// named with each.
enum class EntryProblem
{
    None,
    NothingThere,
    TooLong,
    TooDeep, ///< Too many brackets inside one another.
    StrangeCharacter, ///< `word`
    NumberMissing, ///< There should be a number at the place.
    NumberUnfinished, ///< `word`
    NumberMalformed, ///< `word`
    NumberTooLarge, ///< This may also be what a sum comes to.
    BlankBetweenDigits, ///< `word`
    CommaNotDecimal, ///< `word`; `suggestions` has the number with a point.
    TwoReadings, ///< `word`; `suggestions` has both.
    SignMissing, ///< Between two quantities, of which the second begins at the place.
    UnitMissing, ///< `word`, `units`
    UnitUnfinished, ///< `word`; `suggestions` has the units that begin so.
    UnitUnknown, ///< `word`, `wanted`, `units`; `suggestions` has similar units, best first.
    UnitOfAnotherKind, ///< `word`, `kind_of_word`, `wanted`, `units`
    UnitsOfTwoKinds, ///< `word`, `kind_of_word`, `wanted`: the kind before the word.
    UnitsMultiplied, ///< `word`, `wanted`: the kinds of both.
    UnitsDivided, ///< As with UnitsMultiplied.
    DivisionByZero,
    BracketNotClosed, ///< The place is that of the bracket.
    BracketNotOpened
};

/// A problem as data, for a sentence in any language. Texts are as the user wrote them, and
/// units as Context::parse() reads them.
struct EntryReason
{
    EntryProblem problem = EntryProblem::None;
    std::size_t place = 0; ///< In characters from 0; at most the length of the text.
    std::wstring word; ///< What stands there.
    const char* kind_of_word = ""; ///< What `word` measures, in English: "a force".
    const char* wanted = ""; ///< What is wanted, in English: "a length".
    std::vector<std::wstring> units; ///< Those of the kind that are usual; the shown one first.
    std::vector<std::wstring> suggestions; ///< At most three, but all of UnitUnfinished.
};

/// The reason as a sentence in English, without a capital letter and a full stop.
VRN_UNITS_EXPORT std::wstring sentence(const EntryReason& reason);

} // namespace v1
} // namespace vrn::units
