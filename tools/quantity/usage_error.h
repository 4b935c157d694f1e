#pragma once

#include <stdexcept>

namespace vrn::quantity_tool {

/// Thrown for a request that cannot be answered; what() says why in one line.
class UsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace vrn::quantity_tool
