#pragma once

#include <QTest>

#include "support/time_limit.h"

#include <ctime>

namespace vrn::test {

/// Takes the steps of a user and knows the one that took longest.
///
/// Processor time is measured: what a step takes by itself, on a machine that is
/// busy with something else too.
class TimedSteps
{
public:
    explicit TimedSteps(int limitMs)
        : m_limitMs(limitMs)
    {}

    template <typename Step>
    void take(const char* name, Step&& step)
    {
        const std::clock_t start = std::clock();
        step();
        const double milliseconds = 1e3 * static_cast<double>(std::clock() - start)
            / CLOCKS_PER_SEC;
        if (milliseconds > m_milliseconds) {
            m_milliseconds = milliseconds;
            m_name = name;
        }
    }

    bool inTime() const { return m_milliseconds <= m_limitMs; }

    QByteArray report() const
    {
        return m_name + " took " + QByteArray::number(m_milliseconds) + " ms, more than "
            + QByteArray::number(m_limitMs);
    }

private:
    int m_limitMs;
    double m_milliseconds = 0.0;
    QByteArray m_name;
};

/// Fails the running test if one of the steps that `walk` takes by its argument, a
/// `TimedSteps&`, takes longer than `limitMs`.
///
/// The walk is made again, up to three times, before it counts as slow: other
/// programs cost processor time as well, through the memory that they share.
template <typename Walk>
void verifyStepsTakeAtMost(int limitMs, Walk&& walk)
{
    QByteArray report;
    for (int run = 0; run < 3; ++run) {
        TimedSteps steps(limitMs);
        walk(steps);
        if (steps.inTime() || QTest::currentTestFailed())
            return;
        report = steps.report();
    }
    QTest::qFail(report.constData(), __FILE__, __LINE__);
}

/// The same for a single step.
template <typename Operation>
void verifyTakesAtMost(int limitMs, const char* name, Operation&& operation)
{
    verifyStepsTakeAtMost(limitMs, [&](TimedSteps& steps) { steps.take(name, operation); });
}

/// The same for what a keystroke may take.
template <typename Walk>
void verifyStepsTakeAKeystroke(Walk&& walk)
{
    verifyStepsTakeAtMost(timeLimitMs(), walk);
}

template <typename Operation>
void verifyTakesAKeystroke(const char* name, Operation&& operation)
{
    verifyTakesAtMost(timeLimitMs(), name, operation);
}

} // namespace vrn::test
