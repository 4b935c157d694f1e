#include <vrn/units/number_signs.h>

namespace vrn::units {
inline namespace v1 {

NumberSigns number_signs(const std::locale& locale)
{
    const auto& punctuation = std::use_facet<std::numpunct<wchar_t>>(locale);
    return {punctuation.decimal_point(), punctuation.thousands_sep()};
}

} // namespace v1
} // namespace vrn::units
