#pragma once

#include <vrn/units/context.h>

#include <cstdint>
#include <locale>
#include <string>
#include <vector>

namespace vrn::quantity_tool {

/// What the user chose for the whole run.
struct Settings
{
    std::int32_t system = 0; ///< 0 to 9.
    std::string locale = "C";
    /// Each is "KIND:unit=UNIT,precision=N,format=N,label=TEXT". A field that is left out
    /// stays as it is in the system.
    std::vector<std::string> overrides;
};

/// Throws UsageError for an override that cannot be read.
units::Context make_context(const Settings& settings);

/// The locale with that name, in which ".UTF-8" may be left out. Throws UsageError if the
/// machine does not have it.
std::locale make_locale(const std::string& name);

} // namespace vrn::quantity_tool
