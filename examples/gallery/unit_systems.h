#pragma once

#include <vrn/qt/named_value_list.h>

namespace gallery {

constexpr int unitSystemCount = 10;

/// The systems with their numbers, to choose from in a box.
vrn::qt::NamedValueList unitSystems();

} // namespace gallery
