#pragma once

#include <QTest>

namespace vrn::test {

/// QTest::addColumn() for all columns of a table at once.
template <typename... Types, typename... Names>
void columns(const Names*... names)
{
    static_assert(sizeof...(Types) == sizeof...(Names), "a name for each type");
    (QTest::addColumn<Types>(names), ...);
}

/// QTest::newRow() with the cells of the row.
template <typename... Cells>
void row(const char* name, const Cells&... cells)
{
    static_cast<void>((QTest::newRow(name) << ... << cells));
}

} // namespace vrn::test
