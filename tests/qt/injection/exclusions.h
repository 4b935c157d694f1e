#pragma once

#include <vector>

namespace vrn::test::injection {

struct Cell;

/// Cells that are not tried, for what a header says. Each of the four is an extended
/// pattern of the shell.
struct Exclusion
{
    const char* control;
    const char* action;
    const char* place;
    const char* deed;
    const char* header;
    const char* reason;
};

const std::vector<Exclusion>& exclusions();

/// The row that excludes a cell; null if it is to be tried.
const Exclusion* exclusionOf(const Cell& cell);

} // namespace vrn::test::injection
