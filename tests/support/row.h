#pragma once

#include <QTest>

namespace vrn::test {

/// QTest::newRow() with the cells of the row: short enough for a row a line.
template <typename... Cells>
void row(const char* name, const Cells&... cells)
{
    static_cast<void>((QTest::newRow(name) << ... << cells));
}

} // namespace vrn::test
