#pragma once

#include <QByteArray>

#include <functional>
#include <vector>

namespace vrn::test::injection {

struct Scene;

/// What a user or the program does with a control.
struct Action
{
    enum Who
    {
        Maker, ///< The control is made: nothing else happens.
        User,
        Program,
    };

    QByteArray name;
    Who who;
    std::function<void(Scene& scene)> act;
    /// Whether the control has something to do this with.
    std::function<bool(Scene& scene)> applies;
    /// The control is brought to vary before.
    bool whileVaries = false;
    /// It is done outside of any event loop, as in main(): deleteLater() is then done with
    /// in the first loop that runs, be it that of a dialog.
    bool beforeLoop = false;
};

const std::vector<Action>& actions();

} // namespace vrn::test::injection
