#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

namespace vrn::test::injection {

/// One case of the matrix: a control, what is done to it, where foreign code runs
/// meanwhile, and what that code does. All are indices of their tables.
struct Cell
{
    int control = 0;
    int action = 0;
    /// None in a rehearsal, which only counts how often each place is visited.
    int place = -1;
    /// The visit of the place at which the deed is done, from 1.
    int occurrence = 1;
    int deed = -1;

    bool isRehearsal() const { return place < 0; }
};

struct Control;
struct Action;
struct Deed;

const Control& controlOf(const Cell& cell);
const Action& actionOf(const Cell& cell);
QByteArray placeOf(const Cell& cell);
const Deed& deedOf(const Cell& cell);

/// "control / action / place / deed". From the second visit on the place has its number,
/// as in "validate (2)".
QByteArray nameOf(const Cell& cell);
std::optional<Cell> cellOf(const QByteArray& name);

} // namespace vrn::test::injection
