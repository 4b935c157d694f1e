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

/// Work that must be done in a given time, where nothing does the same.
struct TimeLimit
{
    std::string name;
    double milliseconds; ///< The time that must not be exceeded.
    std::function<void()> round;
};

void add(Comparison comparison);
void add(TimeLimit limit);

/// A line for the reader below the tables, such as what could not be compared.
void note(std::string text);

/// Runs what has a name that contains `filter` and prints a table of the
/// comparisons and one of the time limits. Returns whether there was any, and
/// every median is within its bound.
bool run(const std::string& filter);

} // namespace bench
