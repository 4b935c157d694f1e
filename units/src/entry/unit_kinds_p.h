#pragma once

#include <vrn/units/i_unit_provider.h>

namespace vrn::units::detail {

/// What a unit measures, in English with an article: "a length". It never ends.
const char* kind_of_unit(const IUnitProvider& provider, UnitId::UnitId unit);

} // namespace vrn::units::detail
