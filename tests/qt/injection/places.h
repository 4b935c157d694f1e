#pragma once

#include <vector>

namespace vrn::test::injection {

struct Scene;

/// The places where foreign code runs: callbacks of the controls, signals and event filters.
const std::vector<const char*>& placeNames();

/// The index of a place; ends the program if there is none of that name.
int placeOf(const char* name);

/// Connects to all signals of the control and of what is inside, and installs the event
/// filters.
void listen(Scene& scene);

} // namespace vrn::test::injection
