#pragma once

#include "formatting/subject_p.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vrn::units::detail {

/// The texts of the groups of a match, in the order of their parentheses: a number
/// and a unit. A group that took no part is empty.
using Groups = std::array<std::wstring_view, 2>;

/// A regular expression that is matched in linear time, without recursion and
/// without a limit on the length of the text.
///
///     const Expression part(L"\\s*(\\d+)\\s*/\\s*(\\d+)", Expression::Extent::whole_text);
///     Subject subject(L"12 / 5");
///     Groups groups;
///     if (part.match(subject, groups))
///         use(groups[0], groups[1]);
///
/// It accepts the texts that std::wregex of the classic locale accepts for the
/// same expression, in its default grammar, with the same groups. Of that grammar
/// it knows what quantities need: characters, classes in brackets with "\d" and
/// "\s" in them, groups that capture or not, the quantifiers "*", "+" and "?"
/// after a character or class, "?" and "{1,2}" after a group, "^" as the first
/// and "$" as the last character. It does not know ".", alternatives or back
/// references. Characters outside symbols::named cannot be named. An expression
/// outside these bounds fails an assertion and matches nothing.
///
/// The text is walked twice. From its end to its beginning, a deterministic
/// automaton finds for each position the steps of the expression from which the
/// rest of the text can be matched. Then, from the beginning, each choice takes
/// its preferred side if that side is one of these steps and the other side if
/// not. A matcher that backtracks ends on the same path: it, too, takes the first
/// choice that leads to a match.
class Expression
{
public:
    enum class Extent
    {
        whole_text, ///< The expression matches the text from end to end.
        anywhere ///< The expression is searched for; the leftmost match counts.
    };

    Expression(std::wstring_view expression, Extent extent);

    /// Whether the expression matches. Only then does `groups` change.
    bool match(Subject& subject, Groups& groups) const;

private:
    enum class Action : std::uint8_t
    {
        take, ///< Takes one of `symbols` and goes on.
        repeat, ///< Takes one of `symbols` and stays, or else goes on.
        prefer, ///< Goes on, or else to step `target`.
        open, ///< Begins group `target` and goes on.
        close, ///< Ends group `target` and goes on.
        finish
    };

    struct Step
    {
        Action action;
        std::uint8_t target;
        Symbols symbols;
    };

    /// Steps as bits: bit n stands for step n.
    using StepSet = std::uint64_t;
    /// The index of a state's first transition; see m_transitions.
    using State = std::uint16_t;

    class Compiler;

    StepSet steps_before(Symbol symbol, StepSet after, bool may_finish) const;
    void build_automaton();
    bool contains(State state, std::size_t step) const;
    void collect(
        const Subject& subject, const State* trail, std::size_t start, Groups& groups) const;

    Extent m_extent;
    bool m_ends_with_text = false; ///< The expression has a "$".
    std::vector<Step> m_steps;
    /// A text matches only if it has a symbol of each of these sets.
    std::vector<Symbols> m_required;
    /// The automaton that walks backwards: it leads from a state, by the symbol before
    /// it, to the next. A row holds the transitions of one state.
    std::vector<State> m_transitions;
    std::vector<StepSet> m_states; ///< The steps that each state stands for.
    State m_last_state = 0; ///< The state after the last character.
};

} // namespace vrn::units::detail
