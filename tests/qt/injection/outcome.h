#pragma once

namespace vrn::test::injection {

constexpr int placeLimit = 128;
constexpr int stackLimit = 20;

/// What a cell has to tell. It lies in memory that the process of the cell shares with
/// the driver, so that it is there also after a crash.
struct Outcome
{
    /// The deed was due.
    bool reached;
    /// There was something to do it to.
    bool done;
    /// All has ended, well or not.
    bool ended;
    /// By place: whether foreign code is there, and how often it ran.
    bool offered[placeLimit];
    int visits[placeLimit];
    /// Where a sanitizer has found something: the innermost frames.
    void* stack[stackLimit];
    /// What is wrong, in a sentence for each thing; empty if all is well.
    char failure[1024];
};

} // namespace vrn::test::injection
