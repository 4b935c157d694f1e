#include "formatting/quantity_grammar_p.h"

#include <algorithm>
#include <string>

namespace vrn::units::detail {

// clang-format off

// A unit after an exponent must not begin with "e", since that belongs to the exponent.
// The second number keeps its exponent outside the group: ".5e3" is read as 0.5.
const QuantityExpressions& exponent_expressions()
{
    static const QuantityExpressions expressions = {
        {
            LR"(^\s*(-?\d+(?:[\.,]\d+)?[eE][\+-]?\d+)\s*)",
            LR"(^\s*(-?[\.,]\d+)[eE][\+-]?\d+\s*)",
        },
        {
            LR"(\s*([^\d\s\.,/\-e][^\s\.,/]*)\s*)",
            LR"(\s*([^\d\s\.,/\-][^\s\.,/]*\s*(?:/[^\d\s\.,/][^\s\.,/]*){1,2})\s*)",
            LR"(\s*(1\s*(?:/[^\d\s\.,/-][^\s\.,/]*){1,2})\s*)",
            LR"(\s*(-)\s*$)",
        },
    };
    return expressions;
}

const QuantityExpressions& decimal_expressions()
{
    static const QuantityExpressions expressions = {
        {
            LR"(\s*(-?[\.,\d]+)\s*)",
            LR"(\s*(-?\d*/\d+)\s*)",
            LR"(\s*(-?\d+\s*\d*/\d+)\s*)",
        },
        {
            LR"(\s*([^\d\s\.,/\-][^\s\.,/]*)\s*)",
            LR"(\s*([^\d\s\.,/\-][^\s\.,/]*\s*(?:/[^\d\s\.,/][^\s\.,/]*){1,2})\s*)",
            LR"(\s*(1\s*(?:/[^\d\s\.,/-][^\s\.,/]*){1,2})\s*)",
            LR"(\s*(-)\s*$)",
        },
    };
    return expressions;
}

// clang-format on

QuantityGrammar::QuantityGrammar(const QuantityExpressions& expressions)
{
    for (const std::wstring_view number : expressions.numbers)
        m_numbers.emplace_back(number, Expression::Extent::whole_text);
    for (const std::wstring_view unit : expressions.units) {
        m_units.emplace_back(unit, Expression::Extent::anywhere);
        for (const std::wstring_view number : expressions.numbers)
            m_pairs.emplace_back(std::wstring(number).append(unit), Expression::Extent::whole_text);
    }
}

const QuantityGrammar& QuantityGrammar::exponent()
{
    static const QuantityGrammar grammar(exponent_expressions());
    return grammar;
}

const QuantityGrammar& QuantityGrammar::decimal()
{
    static const QuantityGrammar grammar(decimal_expressions());
    return grammar;
}

bool QuantityGrammar::unit_closes(Subject& text) const
{
    return std::any_of(m_units.begin(), m_units.end(), [&](const Expression& unit) {
        Groups groups;
        return unit.match(text, groups) && text.is_end(groups[0]);
    });
}

} // namespace vrn::units::detail
