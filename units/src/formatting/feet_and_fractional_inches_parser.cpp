#include "formatting/feet_and_fractional_inches_parser_p.h"

#include "formatting/number_writer_p.h"
#include "formatting/quantity_reader_p.h"

#include <vrn/assert/smart_assert.h>

namespace vrn::units {
inline namespace v1 {

boost::optional<IConverter::quantity> FeetAndFractionalInchesParser::parse(
    std::wstring_view text, const std::locale& locale) const
{
    return detail::read_feet_and_inches(text, locale);
}

// Inches that round up to a foot stay inches, as in "1' 12 ''", and a negative length
// has a sign on both parts. This is intended, although a negative length is not read
// back.
std::wstring FeetAndFractionalInchesParser::write(
    IConverter::quantity q, const std::locale& locale) const
{
    if (!m_converter->can_convert(q.unit_id, UnitId::FOOT)) {
        VRN_ASSERT(m_converter->can_convert(q.unit_id, UnitId::FOOT))("q.unit_id", q.unit_id);
        return {};
    }
    const double value = m_converter->convert(q, UnitId::FOOT).value;
    std::int32_t precision = m_format_provider->get_precision(q.unit_id);
    VRN_ASSERT(precision >= 0)("precision", precision);
    if (precision < 0)
        precision = 4;

    const double lifted = value + whole_number_lift;
    if (!fits_when_truncated<std::int32_t>(lifted)) {
        const std::string& symbol = m_unit_provider->get_symbol(UnitId::FOOT);
        return write_fixed(value, precision, symbol, locale);
    }
    const auto feet = static_cast<std::int32_t>(lifted);
    const double inches = (value - feet) * detail::metres_per_foot / detail::metres_per_inch;
    // Only the fraction is in the locale of the call; the feet are in the global one.
    std::wstring text;
    append_integer(text, feet, std::locale());
    return text + L"' " + write_fraction(inches, precision, "''", locale);
}

} // namespace v1
} // namespace vrn::units
