#include <vrn/units/entry_reason.h>

#include <string>

namespace vrn::units {
inline namespace v1 {
namespace {

std::wstring wide(const char* text)
{
    return {text, text + std::char_traits<char>::length(text)};
}

std::wstring joined(const std::vector<std::wstring>& texts, const wchar_t* before_last = L", ")
{
    std::wstring all;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i > 0)
            all += i + 1 == texts.size() ? before_last : L", ";
        all += texts[i];
    }
    return all;
}

std::wstring unknown_unit(const EntryReason& reason)
{
    std::wstring text = L"no unit " + reason.word + L" for " + wide(reason.wanted);
    if (!reason.suggestions.empty())
        return text + L": " + joined(reason.suggestions, L" or ") + L'?';
    return reason.units.empty() ? text : text + L": " + joined(reason.units);
}

} // namespace

std::wstring sentence(const EntryReason& reason)
{
    const std::wstring& word = reason.word;
    switch (reason.problem) {
    case EntryProblem::None:
        return {};
    case EntryProblem::NothingThere:
        return L"a number is missing";
    case EntryProblem::TooLong:
        return L"the text is too long";
    case EntryProblem::TooDeep:
        return L"there are too many brackets inside one another";
    case EntryProblem::StrangeCharacter:
        return L"\"" + word + L"\" does not belong here";
    case EntryProblem::NumberMissing:
        return L"a number is missing here";
    case EntryProblem::NumberUnfinished:
        return word + L"\u2026 is not finished";
    case EntryProblem::NumberMalformed:
        return word + L" is not a number";
    case EntryProblem::NumberTooLarge:
        return L"the number is too large";
    case EntryProblem::BlankBetweenDigits:
        return word + L": a blank stands between digits";
    case EntryProblem::CommaNotDecimal:
        return word + L": the comma is not the decimal sign: " + joined(reason.suggestions) + L'?';
    case EntryProblem::TwoReadings:
        return word + L": " + joined(reason.suggestions, L" or ") + L'?';
    case EntryProblem::SignMissing:
        return L"a sign such as + is missing here";
    case EntryProblem::UnitMissing:
        return word + L" has no unit: " + joined(reason.units, L" or ") + L'?';
    case EntryProblem::UnitUnfinished:
        return L"\u2026 " + joined(reason.suggestions);
    case EntryProblem::UnitUnknown:
        return unknown_unit(reason);
    case EntryProblem::UnitOfAnotherKind:
        return word + L" is " + wide(reason.kind_of_word) + L"; " + wide(reason.wanted)
            + L" is wanted" + (reason.units.empty() ? L"" : L": " + joined(reason.units));
    case EntryProblem::UnitsOfTwoKinds:
        return word + L" is " + wide(reason.kind_of_word) + L", and " + wide(reason.wanted)
            + L" comes before it";
    case EntryProblem::UnitsMultiplied:
        return wide(reason.wanted) + L" times " + wide(reason.kind_of_word)
            + L": only one may have a unit";
    case EntryProblem::UnitsDivided:
        return wide(reason.wanted) + L" divided by " + wide(reason.kind_of_word)
            + L": what divides has no unit";
    case EntryProblem::DivisionByZero:
        return L"this divides by zero";
    case EntryProblem::BracketNotClosed:
        return L"the bracket is not closed";
    case EntryProblem::BracketNotOpened:
        return L"no bracket is open here";
    }
    return {};
}

} // namespace v1
} // namespace vrn::units
