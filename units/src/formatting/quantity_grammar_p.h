#pragma once

#include "formatting/expression_p.h"

#include <string_view>
#include <vector>

namespace vrn::units::detail {

/// The expressions of one grammar as they are written, each list in the order in
/// which its entries are tried. Every expression has one group.
struct QuantityExpressions
{
    std::vector<std::wstring_view> numbers;
    std::vector<std::wstring_view> units;
};

/// The grammar that is tried first. It reads numbers with an exponent.
const QuantityExpressions& exponent_expressions();

/// The grammar that is tried second. It reads decimals and fractions.
const QuantityExpressions& decimal_expressions();

/// A grammar ready for use: the entries of its lists, and each unit after each
/// number. A quantity is read in this order:
///
/// 1. If a unit closes the text, the pairs.
/// 2. The numbers, as a quantity without a unit.
class QuantityGrammar
{
public:
    explicit QuantityGrammar(const QuantityExpressions& expressions);

    static const QuantityGrammar& exponent();
    static const QuantityGrammar& decimal();

    /// The numbers. They match a whole text.
    const std::vector<Expression>& numbers() const { return m_numbers; }

    /// Each number with each unit glued to it: first all numbers with the first unit.
    /// They match a whole text; their groups are the number and the unit.
    const std::vector<Expression>& pairs() const { return m_pairs; }

    /// Whether a search for a unit finds it at the very end of the text. A unit that is
    /// found elsewhere first, or that a blank follows, does not count.
    bool unit_closes(Subject& text) const;

private:
    std::vector<Expression> m_numbers;
    std::vector<Expression> m_units;
    std::vector<Expression> m_pairs;
};

} // namespace vrn::units::detail
