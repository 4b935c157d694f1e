#include "injection/matrix.h"

#include "injection/deeds.h"
#include "injection/exclusions.h"
#include "injection/places.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace vrn::test::injection {
namespace {

// At how many visits of a place in one action the deed is tried, each time from the start.
constexpr int occurrenceLimit = 3;

int occurrencesOf(const Cell& cell, int visits)
{
    // A deed that repeats is done at the later visits as well, and filters see the parts of
    // a control one after the other.
    const bool isOne = deedOf(cell).repeats || placeOf(cell).startsWith("an event filter");
    return std::min(visits, isOne ? 1 : occurrenceLimit);
}

} // namespace

Matrix::Matrix(std::vector<CellPattern> patterns)
    : m_patterns(std::move(patterns))
{}

std::vector<Cell> Matrix::ofPatterns(const std::vector<Cell>& rehearsals) const
{
    // With all actions of the control: what the program does with it is a deed, too.
    std::vector<Cell> cells;
    std::copy_if(
        rehearsals.begin(), rehearsals.end(), std::back_inserter(cells), [this](const Cell& cell) {
            return std::any_of(m_patterns.begin(), m_patterns.end(),
                [&](const CellPattern& pattern) { return pattern.matchesControl(cell.control); });
        });
    return cells;
}

void Matrix::take(const Result& rehearsal)
{
    m_rehearsals[{rehearsal.cell.control, rehearsal.cell.action}] = rehearsal.outcome;
}

void Matrix::fill()
{
    for (const auto& [which, outcome] : m_rehearsals) {
        Cell cell;
        std::tie(cell.control, cell.action) = which;
        for (cell.place = 0; cell.place < int(placeNames().size()); ++cell.place) {
            for (cell.deed = 0; cell.deed < int(deeds().size()); ++cell.deed) {
                if (outcome.offered[cell.place])
                    add(cell, outcome.visits[cell.place]);
            }
        }
    }
}

void Matrix::add(Cell cell, int visits)
{
    const int action = deedOf(cell).action;
    if (action >= 0 && m_rehearsals.count({cell.control, action}) == 0)
        return;
    if (std::none_of(m_patterns.begin(), m_patterns.end(),
            [&](const CellPattern& pattern) { return pattern.matches(cell); }))
        return;
    if (visits == 0) {
        ++m_notReached;
        return;
    }
    std::vector<Cell>& cells = isExcluded(cell) ? m_excluded : m_cells;
    const int occurrences = occurrencesOf(cell, visits);
    for (cell.occurrence = 1; cell.occurrence <= occurrences; ++cell.occurrence)
        cells.push_back(cell);
}

} // namespace vrn::test::injection
