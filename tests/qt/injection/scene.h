#pragma once

#include "injection/outcome.h"

#include <boost/any.hpp>

#include <QLineEdit>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace vrn::test::injection {

/// What a cell works on: a window with a page, and on the page the control. Each
/// of them may be gone after any step.
struct Scene
{
    QPointer<QWidget> window;
    /// The parent of the control.
    QPointer<QWidget> page;
    /// The control: mostly a widget, and on the page unless it was put elsewhere.
    QPointer<QObject> control;
    /// Another field of the window, outside of the page.
    QPointer<QLineEdit> other;
    /// A second window.
    QPointer<QWidget> elsewhere;

    /// Two values of the control that differ.
    boost::any values[2];
    /// Makes the control emit valueChanged(), whatever state it is in; false if there is
    /// nothing left that could. Empty for a control without this signal.
    std::function<bool()> speak;
    /// Gives the validator other functions than those that may just be running.
    std::function<void()> replaceFunctions;
    /// What belongs to nobody else and lives as long as the scene.
    std::vector<std::shared_ptr<void>> belongings;

    QWidget* widget() const { return qobject_cast<QWidget*>(control.data()); }

    /// Puts `widget` on the page.
    void lay(QWidget* widget) const;
    /// Gives the control, or the first part of it that takes it, the focus.
    void enter() const;

    // Foreign code says here where it is.

    /// There is foreign code at `place`.
    void offer(const char* place);
    /// Foreign code runs at `place`. Does the deed if it is due here.
    void visit(const char* place);

    /// From here on places are counted, and at the given visit of a place the deed is
    /// done: once, or if it repeats at each later visit, also from within itself, as
    /// long as this is not too deep.
    void arm(Outcome* outcome, int place, int occurrence, std::function<bool()> deed, bool repeats);
    void disarm() { m_outcome = nullptr; }

private:
    Outcome* m_outcome = nullptr;
    int m_place = -1;
    int m_occurrence = 0;
    std::function<bool()> m_deed;
    bool m_repeats = false;
    int m_depth = 0;
    int m_times = 0;
    bool m_offered[placeLimit] = {};
};

/// The one scene of the process: plain functions have to find it.
Scene& scene();

} // namespace vrn::test::injection
