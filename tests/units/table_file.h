#pragma once

#include <QStringList>

#include <vector>

namespace vrn::test {

/// The rows of a table under tests/units/data, split at the tabulators. Lines that
/// start with '#' are comments. Fails the running test if there is no such file.
std::vector<QStringList> readTable(const QString& fileName);

} // namespace vrn::test
