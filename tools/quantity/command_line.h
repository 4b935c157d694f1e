#pragma once

namespace vrn::quantity_tool {

enum ExitStatus
{
    ExitAnswered = 0,
    ExitRefused = 1, ///< The text is not a quantity, or is one of another kind.
    ExitFailed = 2, ///< Wrong usage, or a standard stream that fails.
};

/// Does what the arguments ask for, on the standard streams. Standard error gets one
/// line that says what went wrong, if anything.
int run(int argc, char** argv);

} // namespace vrn::quantity_tool
