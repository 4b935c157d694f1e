#pragma once

#include <vrn/units/vrn_units_export.h>

#include <locale>

namespace vrn::units {
inline namespace v1 {

/// How a language writes numbers.
struct NumberSigns
{
    /// The decimal sign. The point is one in any case.
    wchar_t decimal = L'.';
    /// Stands between groups of three digits. Blanks and apostrophes do so in any case.
    wchar_t group = L',';
};

/// The signs of a locale.
VRN_UNITS_EXPORT NumberSigns number_signs(const std::locale& locale);

} // namespace v1
} // namespace vrn::units
