#include "formatting/fractional_inches_parser_p.h"

namespace vrn::units {
inline namespace v1 {

// It accepts no text, and that is its contract. Its two expressions, "\s*(.*)''\s*"
// and "\s*(.*)in\s*", have one group each, while a reading asks for two. Inches
// reach Parser, which knows "''" as a spelling of the inch and takes fractions.
// Were they read here, any word before "in" would pass for the number 0.
boost::optional<IConverter::quantity> FractionalInchesParser::parse(
    const std::wstring& /*text*/, const std::locale& /*locale*/) const
{
    return boost::none;
}

} // namespace v1
} // namespace vrn::units
