#include "formatting/quantity_reader_p.h"

#include "formatting/number_reader_p.h"
#include "formatting/quantity_grammar_p.h"

namespace vrn::units::detail {
namespace {

boost::optional<IConverter::quantity> read_by_grammar(const QuantityGrammar& grammar, Subject& text,
    const std::locale& locale, const SymbolMap& symbols)
{
    Groups groups;
    // Which unit closes the text does not matter to the pairs: each such unit
    // would try all of them, to the same end.
    if (grammar.unit_closes(text)) {
        for (const Expression& pair : grammar.pairs()) {
            if (!pair.match(text, groups))
                continue;
            if (const std::optional<UnitId::UnitId> unit = symbols.find(trim(groups[1])))
                return IConverter::quantity{*unit, read_number(trim(groups[0]), locale)};
        }
    }
    for (const Expression& number : grammar.numbers()) {
        if (number.match(text, groups))
            return IConverter::quantity{UnitId::DIMENSIONLESS, read_number(groups[0], locale)};
    }
    return boost::none;
}

const Expression& feet_and_inch_marks()
{
    static const Expression expression(LR"(\s*(.*)'(.*)''\s*)", Expression::Extent::whole_text);
    return expression;
}

const Expression& feet_and_inch_words()
{
    static const Expression expression(LR"(\s*(.*)ft(.*)in\s*)", Expression::Extent::whole_text);
    return expression;
}

} // namespace

boost::optional<IConverter::quantity> read_quantity(
    std::wstring_view text, const std::locale& locale, const SymbolMap& symbols)
{
    Subject subject(text);
    boost::optional<IConverter::quantity> quantity = read_by_grammar(
        QuantityGrammar::exponent(), subject, locale, symbols);
    if (!quantity)
        quantity = read_by_grammar(QuantityGrammar::decimal(), subject, locale, symbols);
    return quantity;
}

boost::optional<IConverter::quantity> read_feet_and_inches(
    std::wstring_view text, const std::locale& locale)
{
    constexpr double foot = 0.3048;
    constexpr double inch = 0.0254;

    Subject subject(text);
    Groups groups;
    if (!feet_and_inch_marks().match(subject, groups)
        && !feet_and_inch_words().match(subject, groups))
        return boost::none;
    const double feet = read_number(trim(groups[0]), locale);
    const double inches = read_number(trim(groups[1]), locale);
    // Not-a-number is refused as well.
    if (!(inches >= 0))
        return boost::none;
    return IConverter::quantity{UnitId::FOOT, inches * inch / foot + feet};
}

} // namespace vrn::units::detail
