#pragma once

#include "injection/cell.h"
#include "injection/farm.h"

#include <QByteArrayList>

#include <map>
#include <utility>
#include <vector>

namespace vrn::test::injection {

/// The cells of some patterns of the shell, as rehearsals show them.
class Matrix
{
public:
    /// Of the controls called "Qt's ..." only those that a pattern names.
    explicit Matrix(const QByteArrayList& patterns);

    /// Each control of the patterns with each action, and no deed.
    std::vector<Cell> rehearsals() const;
    void take(const Result& rehearsal);

    /// Sorts the cells out by what the rehearsals have found.
    void fill();

    /// Those that are to be run.
    const std::vector<Cell>& cells() const { return m_cells; }
    /// How many there are of foreign code that the action never reaches.
    int notReached() const { return m_notReached; }
    /// How many a header excludes.
    int excluded() const { return m_excluded; }

private:
    void add(Cell cell, int visits);
    bool isOfPatterns(const QByteArray& name) const;

    QByteArrayList m_patterns;
    // By control and action.
    std::map<std::pair<int, int>, Outcome> m_rehearsals;
    std::vector<Cell> m_cells;
    int m_notReached = 0;
    int m_excluded = 0;
};

} // namespace vrn::test::injection
