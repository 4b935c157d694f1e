#pragma once

#include <QString>

#include <utility>
#include <vector>

namespace vrn::test {

/// Texts that somebody may paste into any field, each with a name for a test
/// row: a mebi of one character, zeros and line breaks inside, letters from
/// right to left, combining marks, characters outside the basic plane, and
/// numbers that no double or integer holds.
const std::vector<std::pair<QByteArray, QString>>& hostileTexts();

} // namespace vrn::test
