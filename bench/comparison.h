#pragma once

#include <functional>
#include <string>

namespace bench {

/// One thing that users do, done with this library and with what they would use
/// instead. Both run in one process, interleaved, and only their ratio counts.
struct Comparison
{
    std::string name; ///< As in "line edit/1000 keystrokes".
    std::string alternative; ///< What stands against it, for the reader of the table.
    double bound; ///< The ratio of times that must not be exceeded.
    std::function<void()> ours; ///< One round of the work.
    std::function<void()> theirs; ///< The same work done the other way.
};

void add(Comparison comparison);

/// Runs the comparisons whose names contain `filter` and prints a table of
/// them. Returns whether every median ratio is within its bound.
bool run(const std::string& filter);

} // namespace bench
