#pragma once

#include "group_fixture.h"
#include "support/any_to_string.h"
#include "support/random_sequence.h"
#include "support/test_object.h"

#include <QHash>
#include <QSignalSpy>

#include <initializer_list>
#include <memory>

namespace vrn::test {

/// What one action leads to.
struct Transition
{
    bool isReported = false; ///< An assertion fails.
    int signalCount = 0; ///< How often valueChanged() comes.
    QString end; ///< Empty if the table leaves this cell to a test of its own.
};

/// What stands in the parentheses of an action.
inline QString argumentOf(const QString& action)
{
    return action.section('(', 1).remove(')');
}

/// What each action does to a control for a selection in each of its states. The first
/// line names the states, each other line an action and, for each state, a cell such as
/// "1 c+": one signal, and the control is common and checked afterwards. "!" is a report.
///
/// In the name of a state, f is fresh, c common and v varies; + is checked, - unchecked and
/// d disabled; a number is the value of a radio button. A new control has the first state.
class StateTable
{
public:
    StateTable(std::initializer_list<const char*> lines)
    {
        for (const char* line : lines) {
            QStringList cells = QString(line).split('|');
            for (QString& cell : cells)
                cell = cell.trimmed();
            const QString action = cells.takeFirst();
            if (m_states.isEmpty()) {
                m_states = cells;
                continue;
            }
            m_actions << action;
            for (int i = 0; i < cells.size(); ++i)
                m_transitions[{m_states[i], action}] = read(cells[i]);
        }
    }

    const QStringList& states() const { return m_states; }
    const QStringList& actions() const { return m_actions; }

    Transition at(const QString& state, const QString& action) const
    {
        return m_transitions.value({state, action});
    }

    /// The fewest actions that bring a new control into `state`.
    QStringList wayTo(const QString& state) const
    {
        QHash<QString, QStringList> ways = {{m_states.first(), {}}};
        QStringList known = {m_states.first()};
        for (int i = 0; i < known.size() && !ways.contains(state); ++i) {
            for (const QString& action : m_actions) {
                const Transition next = at(known[i], action);
                if (next.isReported || ways.contains(next.end))
                    continue;
                ways[next.end] = ways[known[i]] + QStringList{action};
                known << next.end;
            }
        }
        return ways.value(state);
    }

    static QString inWords(const QString& state)
    {
        QString words = state;
        words.replace('f', "fresh ").replace('c', "common ").replace('v', "varies ");
        words.replace('d', ", disabled").replace('+', "checked").replace('-', "unchecked");
        return words.trimmed();
    }

private:
    static Transition read(QString cell)
    {
        Transition transition;
        transition.isReported = cell.startsWith('!');
        cell.remove('!');
        transition.signalCount = cell.section(' ', 0, 0).toInt();
        transition.end = cell.section(' ', 1);
        return transition;
    }

    QStringList m_states;
    QStringList m_actions;
    QHash<QPair<QString, QString>, Transition> m_transitions;
};

/// The base of a test with one row for each cell of a table. `Kind` has the table and knows
/// the control; see CheckBoxStates.
template <typename Kind>
class StateTableTest : public TestObject
{
protected:
    using Control = typename Kind::Control;

    template <typename... Columns>
    static void addCells(const char* prefix, const Columns&... columns)
    {
        for (const QString& state : Kind::table().states()) {
            for (const QString& action : Kind::table().actions()) {
                if (Kind::table().at(state, action).end.isEmpty())
                    continue;
                QTestData& row = QTest::addRow(
                    "%s%s: %s", prefix, qPrintable(StateTable::inWords(state)), qPrintable(action));
                static_cast<void>(((row << state << action) << ... << columns));
            }
        }
    }

    static void addColumnsAndCells()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("action");
        addCells("");
    }

    static void bringIntoStart(Control& control)
    {
        QFETCH(QString, start);
        for (const QString& action : Kind::table().wayTo(start))
            Kind::perform(control, action);
    }

    static Transition due()
    {
        QFETCH(QString, start);
        QFETCH(QString, action);
        return Kind::table().at(start, action);
    }

    void perform(Control& control)
    {
        QFETCH(QString, action);
        if (due().isReported)
            expectAssert(Kind::report, {}, Kind::reportMessage);
        Kind::perform(control, action);
    }

    static void verifyEnd(Control& control) { QCOMPARE(stateOf(control), due().end); }

    /// Only a read shows whether the control is fresh, so it is of no use afterwards.
    static QString stateOf(Control& control)
    {
        const QString shown = Kind::shown(control);
        if (control.dataVaries())
            return shown;
        control.readValue(Kind::valueOtherThan(shown));
        return (control.dataVaries() ? 'c' : 'f') + shown;
    }

    void verifyCell(Control& control)
    {
        bringIntoStart(control);
        QSignalSpy valueChanged(&control, &Control::valueChanged);
        perform(control);
        QCOMPARE(valueChanged.count(), due().signalCount);
        verifyEnd(control);
    }

    void verifySuspendedCell(Control& control)
    {
        bringIntoStart(control);
        QSignalSpy valueChanged(&control, &Control::valueChanged);
        control.suspendValueChangedSignal();
        perform(control);
        // No signal is sent afterwards instead.
        control.resumeValueChangedSignal();
        QCOMPARE(valueChanged.count(), 0);
        verifyEnd(control);
    }
};

/// A random walk through the table.
template <typename Kind>
class StateTableWalk : public Subject
{
public:
    using Control = typename Kind::Control;

    explicit StateTableWalk(Control* control)
        : m_control(control)
    {
        QObject::connect(control, &Control::valueChanged,
            [this] { m_found << describe(m_control->getCurrentValue()); });
        control->resize(control->parentWidget()->size());
        control->show();
    }

    static QStringList actions()
    {
        return Kind::table().actions() + (Kind::isSuspendable ? suspension() : QStringList());
    }

    QString perform(int index, unsigned /*argument*/) override
    {
        static const QStringList all = actions();
        const QString& action = all[index];
        m_found.clear();
        QStringList foundDue;
        if (suspension().contains(action)) {
            suspend(action == suspension().first());
        } else {
            const Transition transition = Kind::table().at(m_state, action);
            // The walk breaks no contract.
            if (transition.isReported || transition.end.isEmpty())
                return {};
            Kind::perform(*m_control, action);
            m_state = transition.end;
            for (int i = 0; i < transition.signalCount && !m_suspended; ++i)
                foundDue << describe(valueDue());
        }
        if (m_found != foundDue)
            return foundInstead(m_found, foundDue);
        if (!(m_control->getCurrentValue() == valueDue()))
            return "the current value is not the one due";
        const QString shown = Kind::shown(*m_control);
        return m_state.endsWith(shown) ? QString() : shown + " instead of " + m_state;
    }

private:
    static const QStringList& suspension()
    {
        static const QStringList names = {"suspend", "resume"};
        return names;
    }

    void suspend([[maybe_unused]] bool suspended)
    {
        m_suspended = suspended;
        if constexpr (Kind::isSuspendable) {
            if (suspended)
                m_control->suspendValueChangedSignal();
            else
                m_control->resumeValueChangedSignal();
        }
    }

    boost::any valueDue() const
    {
        return m_state.startsWith('v') ? boost::any() : Kind::valueIn(m_state.mid(1));
    }

    std::unique_ptr<Control> m_control;
    QString m_state = Kind::table().states().first();
    bool m_suspended = false;
    QStringList m_found;
};

} // namespace vrn::test
