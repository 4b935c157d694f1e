#pragma once

#include <boost/any.hpp>

#include <QString>

namespace gallery {

/// The value in `value` as an application programmer would write it; empty for
/// an empty one.
QString valueText(const boost::any& value);

/// The name of its type; "(no value)" for an empty one.
QString typeText(const boost::any& value);

} // namespace gallery
