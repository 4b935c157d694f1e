#include "formatting/expression_p.h"

#include <vrn/assert/smart_assert.h>

#include <algorithm>
#include <limits>
#include <map>
#include <string>

namespace vrn::units::detail {
namespace {

// The number of a state is a multiple of the row size, which is above the number of
// symbols. So the index of a transition is the state's number plus the symbol.
constexpr std::size_t row_size = 16;
constexpr std::size_t most_states = (std::numeric_limits<std::uint16_t>::max() + 1U) / row_size;
constexpr std::size_t most_steps = 64;
static_assert(symbols::count <= row_size);

/// The state from which nothing leads to a match. It is the automaton's first.
constexpr std::uint16_t dead = 0;

constexpr Symbols set_of(Symbol symbol)
{
    return Symbols{1} << symbol;
}

constexpr Symbols all = set_of(symbols::end) - 1;

} // namespace

/// Turns the text of an expression into steps. Each step leads forwards or stays.
class Expression::Compiler
{
public:
    Compiler(std::wstring_view text, Expression& expression)
        : m_text(text)
        , m_expression(expression)
    {}

    bool compile()
    {
        // A match of the whole text begins at the beginning in any case.
        skip(L'^');
        sequence();
        m_expression.m_ends_with_text = skip(L'$');
        add(Action::finish);
        return m_good && m_at == m_text.size() && m_expression.m_steps.size() <= most_steps;
    }

private:
    std::vector<Step>& steps() { return m_expression.m_steps; }

    bool at_end() const { return m_at == m_text.size(); }
    wchar_t peek() const { return at_end() ? L'\0' : m_text[m_at]; }
    wchar_t next() { return at_end() ? L'\0' : m_text[m_at++]; }

    bool skip(wchar_t character)
    {
        const bool found = !at_end() && peek() == character;
        m_at += found ? 1 : 0;
        return found;
    }

    bool skip(std::wstring_view text)
    {
        const bool found = m_text.substr(m_at, text.size()) == text;
        m_at += found ? text.size() : 0;
        return found;
    }

    void require(bool condition) { m_good = m_good && condition; }

    void add(Action action, Symbols symbols = 0, std::size_t target = 0)
    {
        if (action == Action::take)
            m_expression.m_required.push_back(symbols);
        steps().push_back({action, static_cast<std::uint8_t>(target), symbols});
    }

    void sequence()
    {
        while (m_good && !at_end() && peek() != L')' && peek() != L'$') {
            if (skip(L'('))
                group();
            else
                characters(symbol_set());
        }
    }

    /// A character or class with its quantifier.
    void characters(Symbols symbols)
    {
        const std::size_t begin = steps().size();
        if (skip(L'*')) {
            add(Action::repeat, symbols);
            return;
        }
        add(Action::take, symbols);
        if (skip(L'+'))
            add(Action::repeat, symbols);
        else if (skip(L'?'))
            make_optional(begin, m_expression.m_required.size() - 1);
    }

    /// The rest of a group, after its "(", with its quantifier.
    void group()
    {
        const std::size_t begin = steps().size();
        const std::size_t required = m_expression.m_required.size();
        const bool captures = !skip(L"?:");
        const std::size_t number = captures ? m_groups++ : 0;
        require(number < Groups().size());
        if (captures)
            add(Action::open, 0, number);
        sequence();
        if (captures)
            add(Action::close, 0, number);
        require(skip(L')'));

        if (skip(L'?')) {
            make_optional(begin, required);
        } else if (skip(L"{1,2}")) {
            const std::size_t second = steps().size();
            for (std::size_t i = begin; i < second; ++i) {
                steps().push_back(steps()[i]);
                if (steps()[i].action == Action::prefer)
                    move_target(steps().back(), second - begin);
            }
            make_optional(second, m_expression.m_required.size());
        }
    }

    /// Makes the steps from `begin` on optional, by a choice before them. What they
    /// require, which is m_required from `required` on, is then not required.
    void make_optional(std::size_t begin, std::size_t required)
    {
        for (std::size_t i = begin; i < steps().size(); ++i) {
            if (steps()[i].action == Action::prefer)
                move_target(steps()[i], 1);
        }
        const std::size_t end = steps().size() + 1;
        steps().insert(steps().begin() + static_cast<std::ptrdiff_t>(begin),
            {Action::prefer, static_cast<std::uint8_t>(end), 0});
        m_expression.m_required.resize(required);
    }

    static void move_target(Step& step, std::size_t by)
    {
        step.target = static_cast<std::uint8_t>(step.target + by);
    }

    /// One character, an escape or a class.
    Symbols symbol_set()
    {
        if (!skip(L'[')) {
            // Neither a quantifier with nothing before it nor the dot is known.
            require(peek() != L'+' && peek() != L'.');
            return symbol();
        }
        const bool negated = skip(L'^');
        Symbols set = 0;
        while (m_good && !skip(L']')) {
            // Anywhere else, a "-" would make a range.
            require(!at_end() && (peek() != L'-' || m_text.substr(m_at, 2) == L"-]"));
            set |= symbol();
        }
        return negated ? all & ~set : set;
    }

    /// One character or an escape.
    Symbols symbol()
    {
        const bool escaped = skip(L'\\');
        const wchar_t character = next();
        if (escaped && character == L'd')
            return set_of(symbols::digit) | set_of(symbol_of(L'1'));
        if (escaped && character == L's')
            return set_of(symbols::blank);
        const Symbol symbol = symbol_of(character);
        // Letters and digits have other meanings after a "\\".
        const bool is_punctuation = std::wstring_view(L".,/-+").find(character)
            != std::wstring_view::npos;
        require(symbol < symbols::named.size() && (!escaped || is_punctuation));
        return set_of(symbol);
    }

    std::wstring_view m_text;
    Expression& m_expression;
    std::size_t m_at = 0;
    std::size_t m_groups = 0;
    bool m_good = true;
};

Expression::Expression(std::wstring_view expression, Extent extent)
    : m_extent(extent)
{
    const bool compiled = Compiler(expression, *this).compile();
    VRN_ASSERT(compiled)("expression", std::string(expression.begin(), expression.end()));
    if (!compiled) {
        m_steps.clear();
        m_required.clear();
    }
    std::sort(m_required.begin(), m_required.end());
    m_required.erase(std::unique(m_required.begin(), m_required.end()), m_required.end());
    build_automaton();
}

/// The steps from which a text can be matched, where the text begins with `symbol` and
/// its rest can be matched from the steps in `after`.
Expression::StepSet Expression::steps_before(Symbol symbol, StepSet after, bool may_finish) const
{
    StepSet found = 0;
    const auto has = [](StepSet set, std::size_t step) { return ((set >> step) & 1U) != 0; };
    for (std::size_t i = m_steps.size(); i-- > 0;) {
        const Step& step = m_steps[i];
        const bool takes = (step.symbols & set_of(symbol)) != 0;
        bool leads_to_match = false;
        switch (step.action) {
        case Action::take:
            leads_to_match = takes && has(after, i + 1);
            break;
        case Action::repeat:
            leads_to_match = (takes && has(after, i)) || has(found, i + 1);
            break;
        case Action::prefer:
            leads_to_match = has(found, i + 1) || has(found, step.target);
            break;
        case Action::open:
        case Action::close:
            leads_to_match = has(found, i + 1);
            break;
        case Action::finish:
            leads_to_match = may_finish;
            break;
        }
        found |= StepSet{leads_to_match} << i;
    }
    return found;
}

void Expression::build_automaton()
{
    const bool may_finish_early = m_extent == Extent::anywhere && !m_ends_with_text;
    std::map<StepSet, State> known;
    const auto state_of = [&](StepSet steps) {
        const auto number = static_cast<State>(m_states.size() * row_size);
        const auto [entry, is_new] = known.emplace(steps, number);
        if (is_new)
            m_states.push_back(steps);
        return entry->second;
    };

    state_of(StepSet{0});
    m_last_state = state_of(steps_before(symbols::end, 0, true));
    for (std::size_t i = 0; i < m_states.size() && m_states.size() <= most_states; ++i) {
        m_transitions.resize((i + 1) * row_size, dead);
        for (Symbol symbol = 0; symbol < symbols::end; ++symbol)
            m_transitions[i * row_size + symbol] = state_of(
                steps_before(symbol, m_states[i], may_finish_early));
    }
    const bool fits = m_states.size() <= most_states;
    VRN_ASSERT(fits)("states", m_states.size());
    if (!fits) {
        m_states.assign(1, 0);
        m_transitions.assign(row_size, dead);
        m_last_state = dead;
    }
}

inline bool Expression::contains(State state, std::size_t step) const
{
    return ((m_states[state / row_size] >> step) & 1U) != 0;
}

bool Expression::match(Subject& subject, Groups& groups) const
{
    for (const Symbols required : m_required) {
        if ((required & subject.present()) == 0)
            return false;
    }

    const Symbol* const symbols = subject.symbols();
    State* const trail = subject.trail();
    const State* const transitions = m_transitions.data();
    std::size_t position = subject.size();
    State state = m_last_state;
    trail[position] = state;
    while (position > 0 && state != dead) {
        --position;
        state = transitions[state + symbols[position]];
        trail[position] = state;
    }

    // If the walk has ended early, no match begins here or before.
    std::size_t start = position;
    if (m_extent == Extent::whole_text) {
        if (start != 0 || !contains(state, 0))
            return false;
    } else {
        while (!contains(trail[start], 0)) {
            if (start == subject.size())
                return false;
            ++start;
        }
    }
    collect(subject, trail, start, groups);
    return true;
}

/// Walks the match that begins at `start`, by the states in `trail`.
void Expression::collect(
    const Subject& subject, const State* trail, std::size_t start, Groups& groups) const
{
    const Symbol* const symbols = subject.symbols();
    std::array<std::size_t, Groups().size()> begins{};
    groups = {};
    std::size_t position = start;
    std::size_t i = 0;
    while (m_steps[i].action != Action::finish) {
        const Step& step = m_steps[i];
        switch (step.action) {
        case Action::take:
            ++position;
            break;
        case Action::repeat:
            while (
                (step.symbols & set_of(symbols[position])) != 0 && contains(trail[position + 1], i))
                ++position;
            break;
        case Action::prefer:
            if (!contains(trail[position], i + 1)) {
                i = step.target;
                continue;
            }
            break;
        case Action::open:
            begins[step.target] = position;
            break;
        case Action::close:
            groups[step.target] = subject.text().substr(
                begins[step.target], position - begins[step.target]);
            break;
        case Action::finish:
            break;
        }
        ++i;
    }
}

} // namespace vrn::units::detail
