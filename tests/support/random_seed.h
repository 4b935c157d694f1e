#pragma once

#include <QString>

#include <random>

namespace vrn::test {

/// The seed of every random test: VRN_TEST_SEED of the environment, or a new one for
/// each run. It is printed with each call, so that the log of a failed test tells how to
/// repeat it; within a run it stays the same.
inline unsigned randomSeed()
{
    static const unsigned seed = [] {
        bool isGiven = false;
        const unsigned given = qEnvironmentVariable("VRN_TEST_SEED").toUInt(&isGiven);
        return isGiven ? given : std::random_device()();
    }();
    qInfo("VRN_TEST_SEED=%u", seed);
    return seed;
}

} // namespace vrn::test
