#include "injection/report.h"

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

namespace vrn::test::injection {

void Report::take(const Result& result)
{
    const Outcome& outcome = result.outcome;
    if (!result.failure.isEmpty())
        fail(result);
    else if (result.cell.isRehearsal() || outcome.done)
        ++m_passed;
    else if (outcome.reached)
        ++m_nothingToDo;
    else
        ++m_notReached;
}

void Report::fail(const Result& result)
{
    ++m_failed;
    const QByteArray name = nameOf(result.cell);
    std::printf("FAIL  %s\n      %s\n", name.constData(), result.failure.constData());
    QByteArrayList& names = m_namesByFailure[result.failure];
    if (names.isEmpty() && m_withLogs)
        std::printf("%s\n", result.log.constData());
    names.append(name);
}

void Report::print() const
{
    std::vector<std::pair<QByteArray, QByteArrayList>> failures(
        m_namesByFailure.begin(), m_namesByFailure.end());
    std::stable_sort(failures.begin(), failures.end(),
        [](const auto& a, const auto& b) { return a.second.size() > b.second.size(); });
    for (const auto& [failure, names] : failures) {
        std::printf("\n%d x %s\n    %s\n", int(names.size()), failure.constData(),
            names.first().constData());
    }
    std::printf("\n%d passed, %d failed, %d not reached again, %d with nothing to do it to\n",
        m_passed, m_failed, m_notReached, m_nothingToDo);
}

} // namespace vrn::test::injection
