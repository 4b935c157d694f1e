#pragma once

#include "injection/cell.h"

#include <vrn/assert/smart_assert.h>

#include <QWidget>

#include <vector>

namespace vrn::test::injection {

struct Outcome;

/// The control in its window, as it is before the action of a cell. Cells that have it in
/// common can each run in a process forked from the one that has set it: that is half of
/// their time.
class Stage
{
public:
    explicit Stage(const Cell& cell);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    static bool isCommon(const Cell& a, const Cell& b);

    /// Runs a cell in this process. What is wrong afterwards is in the outcome. Nothing
    /// can run on this stage afterwards.
    void run(const Cell& cell, Outcome& outcome) const;

private:
    QtMessageHandler m_messageHandler;
    vrn::smartassert::AssertHandler m_assertHandler;
    QWidgetList m_widgetsBefore;
};

/// Makes and uses each control once, so that what Qt makes at first use is there. Returns
/// the rehearsals: each control with each action that applies to it.
std::vector<Cell> warmUp();

} // namespace vrn::test::injection
