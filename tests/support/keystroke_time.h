#pragma once

#include <QTest>

#include "support/time_limit.h"

#include <ctime>

namespace vrn::test {

/// Fails the running test if `operation` takes longer than a keystroke may.
///
/// Processor time is measured: what the operation takes by itself, on a machine
/// that is busy with something else too. It is run again, up to three times,
/// before it counts as slow.
template <typename Operation>
void verifyTakesAKeystroke(const char* name, Operation&& operation)
{
    double milliseconds = 0.0;
    for (int run = 0; run < 3; ++run) {
        const std::clock_t start = std::clock();
        operation();
        milliseconds = 1e3 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        if (milliseconds <= timeLimitMs())
            return;
    }
    const QByteArray report = QByteArray(name) + " took " + QByteArray::number(milliseconds)
        + " ms, more than " + QByteArray::number(timeLimitMs());
    QTest::qFail(report.constData(), __FILE__, __LINE__);
}

} // namespace vrn::test
