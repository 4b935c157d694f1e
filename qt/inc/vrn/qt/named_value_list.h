#pragma once

#include <boost/any.hpp>

#include <QString>

#include <deque>
#include <utility>

namespace vrn::qt {

/// The entries of a choice: display name and value, in display order.
using NamedValueList = std::deque<std::pair<QString, boost::any>>;

} // namespace vrn::qt
