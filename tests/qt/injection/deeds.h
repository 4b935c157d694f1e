#pragma once

#include <QByteArray>

#include <functional>
#include <vector>

namespace vrn::test::injection {

struct Scene;

/// What foreign code does to the control and around it.
struct Deed
{
    QByteArray name;
    /// False if there is nothing to do it to.
    std::function<bool(Scene& scene)> act;
    /// Done at each visit, also from within itself.
    bool repeats = false;
    /// The action of the program that it is; -1 for none.
    int action = -1;
};

/// Those of this file, and what the program does with a control (see actions.h).
const std::vector<Deed>& deeds();

} // namespace vrn::test::injection
