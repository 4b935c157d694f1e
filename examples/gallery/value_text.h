#pragma once

#include <boost/any.hpp>

#include <QString>

namespace gallery {

/// The value in `value` as a programmer would write it. Empty if `value` is empty.
QString valueText(const boost::any& value);

/// The name of the type in `value`, or "(no value)" if it is empty.
QString typeText(const boost::any& value);

} // namespace gallery
