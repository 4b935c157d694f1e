#include "injection/matrix.h"

#include "injection/actions.h"
#include "injection/controls.h"
#include "injection/deeds.h"
#include "injection/exclusions.h"
#include "injection/places.h"

#include <algorithm>
#include <tuple>

#include <fnmatch.h>

namespace vrn::test::injection {
namespace {

// At how many visits of a place in one action the deed is tried, each time from the start.
constexpr int occurrenceLimit = 3;

bool matches(const QByteArray& pattern, const QByteArray& name)
{
    return fnmatch(pattern.constData(), name.constData(), 0) == 0;
}

// Whether the pattern is about the control.
bool speaksOf(const QByteArray& pattern, const QByteArray& control)
{
    const QByteArray first = pattern.split('/').first().trimmed();
    return matches(first, control) && control.startsWith("Qt's") == first.startsWith("Qt's");
}

int occurrencesOf(const Cell& cell, int visits)
{
    // A deed that repeats is done at the later visits as well, and filters see the parts of
    // a control one after the other.
    const bool isOne = deedOf(cell).repeats || placeOf(cell).startsWith("an event filter");
    return std::min(visits, isOne ? 1 : occurrenceLimit);
}

} // namespace

Matrix::Matrix(const QByteArrayList& patterns)
    : m_patterns(patterns)
{}

std::vector<Cell> Matrix::rehearsals() const
{
    std::vector<Cell> cells;
    for (Cell cell; cell.control < int(controls().size()); ++cell.control) {
        const bool isOfPattern = std::any_of(m_patterns.begin(), m_patterns.end(),
            [&](const QByteArray& pattern) { return speaksOf(pattern, controlOf(cell).name); });
        // All actions of a control: what the program does with it is a deed, too.
        for (cell.action = 0; isOfPattern && cell.action < int(actions().size()); ++cell.action)
            cells.push_back(cell);
    }
    return cells;
}

void Matrix::take(const Result& rehearsal)
{
    if (rehearsal.outcome.applies)
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
    if (visits == 0) {
        m_notReached += isOfPatterns(nameOf(cell));
        return;
    }
    const bool isExcluded = exclusionOf(cell);
    for (cell.occurrence = 1; cell.occurrence <= occurrencesOf(cell, visits); ++cell.occurrence) {
        if (!isOfPatterns(nameOf(cell)))
            continue;
        if (isExcluded)
            ++m_excluded;
        else
            m_cells.push_back(cell);
    }
}

bool Matrix::isOfPatterns(const QByteArray& name) const
{
    return std::any_of(m_patterns.begin(), m_patterns.end(),
        [&](const QByteArray& pattern) { return matches(pattern, name); });
}

} // namespace vrn::test::injection
