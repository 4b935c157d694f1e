#pragma once

#include <vrn/qt/cell_data.h>

#include <boost/any.hpp>

#include <QTest>

namespace vrn::test {

/// The type and the value in `value`, as in "double 1.5"; "empty" for none. A
/// type that is not in use here is named without its value.
QString describe(const boost::any& value);

/// Whether both are empty, or hold the same type and equal values. Two
/// not-a-numbers are equal here.
bool sameValue(const boost::any& actual, const boost::any& expected);

} // namespace vrn::test

namespace boost {

// Found by QCOMPARE through the namespace of boost::any.
bool operator==(const any& left, const any& right);
char* toString(const any& value);

} // namespace boost
