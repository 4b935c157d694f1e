#pragma once

#include <vrn/units/context.h>

#include <cstdint>
#include <locale>
#include <string>
#include <vector>

namespace vrn::quantity_tool {

/// What the user chose for all of a run.
struct Settings
{
    std::int32_t system = 0; ///< 0 to 9.
    std::string locale = "C";
    /// Each as "KIND:unit=UNIT,precision=N,format=N,label=TEXT"; any field may be
    /// missing and then stays as it is in the system.
    std::vector<std::string> overrides;
};

/// Throws UsageError for an override that cannot be read.
units::Context make_context(const Settings& settings);

/// The locale of that name, with or without its ".UTF-8". Throws UsageError if the
/// machine has none.
std::locale make_locale(const std::string& name);

} // namespace vrn::quantity_tool
