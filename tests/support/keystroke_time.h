#pragma once

#include <QElapsedTimer>
#include <QTest>

namespace vrn::test {

/// The longest that any answer to a keystroke may take, whatever was pasted.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr double keystrokeMilliseconds = 10 * 50.0;
#else
inline constexpr double keystrokeMilliseconds = 50.0;
#endif

/// Fails the running test if `operation` takes longer than a keystroke may. It
/// is run again, up to three times, before it counts as slow: a machine busy
/// with something else delays one run, a slow operation delays each.
template <typename Operation>
void verifyTakesAKeystroke(const char* name, Operation&& operation)
{
    double milliseconds = 0.0;
    for (int run = 0; run < 3; ++run) {
        QElapsedTimer timer;
        timer.start();
        operation();
        milliseconds = static_cast<double>(timer.nsecsElapsed()) / 1e6;
        if (milliseconds <= keystrokeMilliseconds)
            return;
    }
    const QByteArray report = QByteArray(name) + " took " + QByteArray::number(milliseconds)
        + " ms, more than " + QByteArray::number(keystrokeMilliseconds);
    QTest::qFail(report.constData(), __FILE__, __LINE__);
}

} // namespace vrn::test
