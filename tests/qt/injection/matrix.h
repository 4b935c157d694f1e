#pragma once

#include "injection/cell.h"
#include "injection/cell_pattern.h"
#include "injection/farm.h"

#include <map>
#include <utility>
#include <vector>

namespace vrn::test::injection {

/// The cells of some patterns, as rehearsals show them.
class Matrix
{
public:
    explicit Matrix(std::vector<CellPattern> patterns);

    /// Those with a control of a pattern.
    std::vector<Cell> ofPatterns(const std::vector<Cell>& rehearsals) const;
    void take(const Result& rehearsal);

    /// Sorts the cells out by what the rehearsals have found.
    void fill();

    /// Those that are to be run.
    const std::vector<Cell>& cells() const { return m_cells; }
    /// How many there are of foreign code that the action never reaches.
    int notReached() const { return m_notReached; }
    /// Those that a header excludes.
    const std::vector<Cell>& excluded() const { return m_excluded; }

private:
    void add(Cell cell, int visits);

    std::vector<CellPattern> m_patterns;
    // By control and action.
    std::map<std::pair<int, int>, Outcome> m_rehearsals;
    std::vector<Cell> m_cells;
    std::vector<Cell> m_excluded;
    int m_notReached = 0;
};

} // namespace vrn::test::injection
