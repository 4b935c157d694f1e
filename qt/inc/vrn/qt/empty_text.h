#pragma once

namespace vrn::qt {

/// What a numeric validator makes of an empty text.
enum class EmptyText
{
    Refused,
    Zero,
    NoValue
};

} // namespace vrn::qt
