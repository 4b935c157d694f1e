#pragma once

#include "injection/cell.h"
#include "injection/outcome.h"

#include <functional>

namespace vrn::test::injection {

struct Result
{
    Cell cell;
    Outcome outcome;
    /// What ended the cell too early, or what is wrong at its end; empty if all is well.
    QByteArray failure;
    /// All that the process of the cell has written.
    QByteArray log;
};

/// Runs each cell in a process of its own, several at a time. Those with a stage in common
/// are forked from this process when it has set it. Results come in the order in which
/// the cells end.
void runForked(std::vector<Cell> cells, int jobs, const std::function<void(const Result&)>& take);

/// Runs a cell as a forked process does, in this one, which ends with `atEnd`.
[[noreturn]] void runHere(const Cell& cell, Outcome& outcome, const std::function<void()>& atEnd);

} // namespace vrn::test::injection
