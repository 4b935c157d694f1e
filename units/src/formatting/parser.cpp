#include "formatting/parser_p.h"

#include "formatting/display_label_p.h"
#include "formatting/number_writer_p.h"
#include "formatting/quantity_reader_p.h"

#include <vrn/assert/smart_assert.h>
#include <vrn/units/varnelik_unit_provider.h>

namespace vrn::units {
inline namespace v1 {

boost::optional<IConverter::quantity> Parser::parse(
    std::wstring_view text, const std::locale& locale) const
{
    // The catalogue never changes, so its spellings are gathered once. There is no other
    // provider here: only Context makes parsers.
    static const detail::SymbolMap catalogue{VarnelikUnitProvider()};
    return detail::read_quantity(text, locale, catalogue);
}

std::wstring Parser::write(IConverter::quantity q, const std::locale& locale) const
{
    const UnitId::UnitId display_unit = m_format_provider->get_unit(q.unit_id);
    const double value = m_converter->convert(q, display_unit).value;
    const std::string label = display_label(*m_unit_provider, *m_format_provider, q.unit_id);
    std::int32_t precision = m_format_provider->get_precision(q.unit_id);
    if (precision < 0)
        precision = 3;
    switch (m_format_provider->get_format(q.unit_id)) {
    case 0:
        return write_fixed(value, precision, label, locale);
    case 1:
        return write_scientific(value, precision, label, locale);
    case 2:
        return write_fraction(value, precision, label, locale);
    default:
        return {};
    }
}

} // namespace v1
} // namespace vrn::units
