#include "formatting/fractional_inches_parser_p.h"

#include "formatting/number_writer_p.h"

#include <vrn/assert/smart_assert.h>

namespace vrn::units {
inline namespace v1 {

// It accepts no text, and that is its contract. Its two expressions, "\s*(.*)''\s*"
// and "\s*(.*)in\s*", have one group each, and reading needs two. Parser reads inches
// instead: it knows "''" as a spelling of the inch and takes fractions. If inches were
// read here, any word before "in" would be the number 0.
boost::optional<IConverter::quantity> FractionalInchesParser::parse(
    std::wstring_view /*text*/, const std::locale& /*locale*/) const
{
    return boost::none;
}

std::wstring FractionalInchesParser::write(IConverter::quantity q, const std::locale& locale) const
{
    if (!m_converter->can_convert(q.unit_id, UnitId::INCH)) {
        VRN_ASSERT(m_converter->can_convert(q.unit_id, UnitId::INCH))("q.unit_id", q.unit_id);
        return {};
    }
    const double inches = m_converter->convert(q, UnitId::INCH).value;
    std::int32_t precision = m_format_provider->get_precision(q.unit_id);
    VRN_ASSERT(precision >= 0)("precision", precision);
    if (precision < 0)
        precision = 4;
    return write_fraction(inches, precision, "''", locale);
}

} // namespace v1
} // namespace vrn::units
