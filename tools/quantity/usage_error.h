#pragma once

#include <stdexcept>

namespace vrn::quantity_tool {

/// What the user wrote cannot be asked; what() tells why in one line.
class UsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace vrn::quantity_tool
