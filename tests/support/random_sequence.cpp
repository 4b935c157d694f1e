#include "support/random_sequence.h"

#include "support/random_seed.h"

#include <QCoreApplication>
#include <QTest>

#include <algorithm>
#include <random>
#include <vector>

namespace vrn::test {
namespace {

struct Step
{
    int action;
    unsigned argument;
};
using Steps = std::vector<Step>;
using MakeSubject = std::function<std::unique_ptr<Subject>()>;

constexpr int stepsOfSequence = 200;

// What differs first, and after how many steps.
struct Difference
{
    QString text;
    std::size_t length = 0;
};

Difference firstDifference(const Steps& steps, const MakeSubject& makeSubject)
{
    // Each posted event would be compared with all that the last subject has left.
    QCoreApplication::sendPostedEvents();
    const auto subject = makeSubject();
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const QString text = subject->perform(steps[i].action, steps[i].argument);
        if (!text.isEmpty())
            return {text, i + 1};
    }
    return {};
}

Steps without(const Steps& steps, std::size_t first, std::size_t count)
{
    Steps rest = steps;
    const auto begin = rest.begin() + std::ptrdiff_t(first);
    rest.erase(begin, begin + std::ptrdiff_t(std::min(count, steps.size() - first)));
    return rest;
}

// Leaves out ever smaller runs of steps for as long as a difference is left.
Steps shortest(Steps steps, const MakeSubject& makeSubject)
{
    for (std::size_t run = steps.size(); run > 0; run /= 2) {
        for (std::size_t first = 0; first < steps.size();) {
            Steps candidate = without(steps, first, run);
            const Difference difference = firstDifference(candidate, makeSubject);
            if (difference.text.isEmpty()) {
                first += run;
            } else {
                candidate.resize(difference.length);
                steps = std::move(candidate);
            }
        }
    }
    return steps;
}

} // namespace

QString findDifference(
    const QStringList& actions, const MakeSubject& makeSubject, unsigned seed, int steps)
{
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> anyAction(0, int(actions.size()) - 1);
    for (int done = 0; done < steps; done += stepsOfSequence) {
        Steps sequence;
        for (int i = 0; i < stepsOfSequence; ++i) {
            const int action = anyAction(random);
            sequence.push_back({action, unsigned(random())});
        }
        const Difference difference = firstDifference(sequence, makeSubject);
        if (difference.text.isEmpty())
            continue;
        sequence.resize(difference.length);
        const Steps shown = shortest(sequence, makeSubject);
        QString report = firstDifference(shown, makeSubject).text + QLatin1String("\nafter");
        for (const Step& step : shown)
            report += QStringLiteral("\n  %1 (%2)").arg(actions.at(step.action)).arg(step.argument);
        return report;
    }
    return {};
}

void runRandomSequences(const QStringList& actions, const MakeSubject& makeSubject, int steps)
{
    bool isGiven = false;
    const int given = qEnvironmentVariableIntValue("VRN_RANDOM_STEPS", &isGiven);
    const QString difference = findDifference(
        actions, makeSubject, randomSeed(), isGiven ? given : steps);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

} // namespace vrn::test
