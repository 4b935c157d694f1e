#include "formatting/feet_and_fractional_inches_parser_p.h"

#include "formatting/quantity_reader_p.h"

namespace vrn::units {
inline namespace v1 {

boost::optional<IConverter::quantity> FeetAndFractionalInchesParser::parse(
    const std::wstring& text, const std::locale& locale) const
{
    return detail::read_feet_and_inches(text, locale);
}

} // namespace v1
} // namespace vrn::units
