#pragma once

namespace vrn::qt {

/// How far an editor of a PropertyPage is from being written.
enum class EditState
{
    Untouched, ///< Nothing was entered, or what stood there before.
    Complete, ///< It would be written.
    Unfinished, ///< It can still become right.
    Refused
};

} // namespace vrn::qt
