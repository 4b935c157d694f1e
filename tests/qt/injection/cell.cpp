#include "injection/cell.h"

#include "injection/actions.h"
#include "injection/controls.h"
#include "injection/deeds.h"
#include "injection/places.h"

#include <QByteArrayList>

#include <algorithm>

namespace vrn::test::injection {

const Control& controlOf(const Cell& cell)
{
    return controls()[std::size_t(cell.control)];
}

const Action& actionOf(const Cell& cell)
{
    return actions()[std::size_t(cell.action)];
}

QByteArray placeOf(const Cell& cell)
{
    return placeNames()[std::size_t(cell.place)];
}

const Deed& deedOf(const Cell& cell)
{
    return deeds()[std::size_t(cell.deed)];
}

QByteArray nameOf(const Cell& cell)
{
    const QByteArray begin = QByteArray(controlOf(cell).name) + " / " + actionOf(cell).name + " / ";
    if (cell.isRehearsal())
        return begin + "nowhere / nothing";
    const QByteArray which = cell.occurrence > 1 ? " (" + QByteArray::number(cell.occurrence) + ')'
                                                 : QByteArray();
    return begin + placeOf(cell) + which + " / " + deedOf(cell).name;
}

std::optional<Cell> cellOf(const QByteArray& name)
{
    const QByteArrayList parts = [&] {
        QByteArrayList all = name.split('/');
        for (QByteArray& part : all)
            part = part.trimmed();
        return all;
    }();
    const auto find = [](const auto& rows, const auto& isIt) {
        const auto it = std::find_if(rows.begin(), rows.end(), isIt);
        return it == rows.end() ? -1 : int(it - rows.begin());
    };
    const auto isCalled = [](const QByteArray& part) {
        return [&part](const auto& row) { return row.name == part; };
    };
    if (parts.size() != 4)
        return {};
    Cell cell;
    cell.control = find(controls(), isCalled(parts[0]));
    cell.action = find(actions(), isCalled(parts[1]));
    cell.deed = find(deeds(), isCalled(parts[3]));
    if (cell.control < 0 || cell.action < 0)
        return {};
    QByteArray place = parts[2];
    if (const int number = int(place.lastIndexOf(" (")); number >= 0) {
        cell.occurrence = place.mid(number + 2).chopped(1).toInt();
        place.truncate(number);
    }
    cell.place = find(
        placeNames(), [&](const QByteArray& candidate) { return candidate == place; });
    if (nameOf(cell) != parts.join(" / ") || (!cell.isRehearsal() && cell.deed < 0))
        return {};
    return cell;
}

} // namespace vrn::test::injection
