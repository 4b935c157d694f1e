#pragma once

#include <functional>
#include <string>

namespace bench {

/// A task done with this library and with what users would take instead. Both sides run in
/// one process and take turns. Only the ratio of their times matters.
struct Comparison
{
    std::string name; ///< As in "line edit/1000 keystrokes".
    std::string alternative; ///< What it is compared with, as shown in the table.
    double bound; ///< The ratio of the times must not exceed this.
    std::function<void()> ours; ///< One round of the work.
    std::function<void()> theirs; ///< The same work, done with the alternative.
};

/// Work that has no alternative but must be done in a given time.
struct TimeLimit
{
    std::string name;
    double milliseconds; ///< The time must not exceed this.
    std::function<void()> round;
};

void add(Comparison comparison);
void add(TimeLimit limit);

/// Prints a line below the tables, such as what could not be compared.
void note(std::string text);

/// Runs everything with `filter` in its name, then prints a table of the comparisons and
/// one of the time limits. Returns true if at least one ran and every median is within its
/// bound.
bool run(const std::string& filter);

} // namespace bench
