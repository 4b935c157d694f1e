#pragma once

#include <QByteArray>

#include <vector>

namespace vrn::test::injection {

struct Cell;

/// An extended pattern of the shell for each of the four parts of a cell's name. What is
/// left out at the end is any.
class CellPattern
{
public:
    /// As in "*EnumBox / the user * / valueChanged".
    explicit CellPattern(const QByteArray& pattern);

    bool matches(const Cell& cell) const;
    /// Whether there are cells of this control.
    bool matchesControl(int control) const { return m_controls[std::size_t(control)]; }

private:
    // By row of each table.
    std::vector<bool> m_controls;
    std::vector<bool> m_actions;
    std::vector<bool> m_places;
    std::vector<bool> m_deeds;
};

} // namespace vrn::test::injection
