#include "support/clipboard_rules.h"

#include <algorithm>
#include <cstddef>

namespace vrn::test {
namespace {

Place cornerOf(const std::vector<Place>& selected)
{
    Place corner = selected.front();
    for (const Place& place : selected) {
        corner.row = std::min(corner.row, place.row);
        corner.column = std::min(corner.column, place.column);
    }
    return corner;
}

} // namespace

void ClipboardRules::copy(const std::vector<Place>& selected)
{
    if (selected.empty())
        return;
    if (selected.size() == 1) {
        clipboard = written(selected.front()).value_or(clipboard);
        return;
    }
    const Place corner = cornerOf(selected);
    std::vector<QStringList> grid;
    for (const Place& place : selected) {
        const std::optional<QString> text = written(place);
        if (!text)
            continue;
        const auto row = static_cast<std::size_t>(place.row - corner.row);
        const int column = place.column - corner.column;
        grid.resize(std::max(grid.size(), row + 1));
        while (grid[row].size() <= column)
            grid[row] << QString();
        grid[row][column] = *text;
    }
    clipboard.clear();
    for (const QStringList& line : grid)
        clipboard += line.join(QLatin1Char('\t')) + QLatin1Char('\n');
}

bool ClipboardRules::paste(const std::vector<Place>& selected)
{
    if (selected.empty())
        return true;
    QString text = clipboard;
    if (text.contains(QLatin1Char('\n')))
        text.chop(1);
    if (!text.contains(QLatin1Char('\n')) && !text.contains(QLatin1Char('\t'))) {
        for (const Place& place : selected)
            read(place, clipboard);
        return true;
    }
    std::vector<QStringList> block;
    for (const QString& line : text.split(QLatin1Char('\n')))
        block.push_back(line.split(QLatin1Char('\t')));
    if (selected.size() > 1)
        return pasteOver(selected, block);
    pasteAt(selected.front(), block);
    return true;
}

void ClipboardRules::pasteAt(const Place& corner, const std::vector<QStringList>& block)
{
    int row = corner.row;
    for (const QStringList& line : block) {
        if (row >= rowCount()) {
            if (!append(corner.column, line))
                return;
        } else {
            for (int i = 0; i < line.size(); ++i)
                read({row, corner.column + i}, line[i]);
        }
        ++row;
    }
}

bool ClipboardRules::pasteOver(
    const std::vector<Place>& selected, const std::vector<QStringList>& block)
{
    const Place corner = cornerOf(selected);
    for (const Place& place : selected) {
        const auto row = static_cast<std::size_t>(place.row - corner.row);
        if (row >= block.size())
            return false;
        const int column = place.column - corner.column;
        if (column < block[row].size())
            read(place, block[row][column]);
    }
    return true;
}

} // namespace vrn::test
