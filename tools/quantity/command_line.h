#pragma once

namespace vrn::quantity_tool {

enum ExitStatus
{
    ExitAnswered = 0,
    ExitRefused = 1, ///< The text is no quantity, or one of another kind.
    ExitFailed = 2, ///< Wrong usage, or a standard stream that fails.
};

/// Does what the arguments ask, on the standard streams. Whatever goes wrong is told
/// on standard error in one line.
int run(int argc, char** argv);

} // namespace vrn::quantity_tool
