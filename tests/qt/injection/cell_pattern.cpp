#include "injection/cell_pattern.h"

#include "injection/actions.h"
#include "injection/cell.h"
#include "injection/controls.h"
#include "injection/deeds.h"
#include "injection/places.h"

#include <QByteArrayList>

#include <fnmatch.h>

namespace vrn::test::injection {
namespace {

// For each row whether its name is of the pattern.
template <typename Rows, typename Name>
std::vector<bool> matching(const QByteArray& pattern, const Rows& rows, Name nameOfRow)
{
    std::vector<bool> matches;
    for (const auto& row : rows) {
        const QByteArray name = nameOfRow(row);
        matches.push_back(fnmatch(pattern.constData(), name.constData(), FNM_EXTMATCH) == 0);
    }
    return matches;
}

} // namespace

CellPattern::CellPattern(const QByteArray& pattern)
{
    const QByteArrayList parts = pattern.split('/');
    const auto part = [&](int i) {
        return i < parts.size() ? parts[i].trimmed() : QByteArray("*");
    };
    const auto name = [](const auto& row) { return QByteArray(row.name); };
    m_controls = matching(part(0), controls(), name);
    m_actions = matching(part(1), actions(), name);
    m_places = matching(part(2), placeNames(), [](const char* place) { return QByteArray(place); });
    m_deeds = matching(part(3), deeds(), name);
}

bool CellPattern::matches(const Cell& cell) const
{
    return m_controls[std::size_t(cell.control)] && m_actions[std::size_t(cell.action)]
        && m_places[std::size_t(cell.place)] && m_deeds[std::size_t(cell.deed)];
}

} // namespace vrn::test::injection
