#pragma once

#include "injection/cell_pattern.h"

#include <vector>

namespace vrn::test::injection {

/// Cells that are not tried, for what a header says.
struct Exclusion
{
    QByteArray pattern;
    QByteArray header;
    QByteArray reason;
    CellPattern cells = CellPattern(pattern);
};

const std::vector<Exclusion>& exclusions();

bool isExcluded(const Cell& cell);

} // namespace vrn::test::injection
