#include "support/test_main.h"
#include "support/test_object.h"
#include "unit_test_support.h"

#include <atomic>
#include <thread>
#include <vector>

using namespace vrn::test;
using namespace vrn::units;

// The tables are made at the first question. This program asks it from many threads
// at once, before anything else has touched the library; run it under the thread
// sanitizer to see more.
class TestFirstUse : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstQuestionMayComeFromAnyThread()
    {
        constexpr int threadCount = 16;
        std::atomic<int> waiting{threadCount};
        std::vector<QString> answers(threadCount);
        std::vector<std::thread> threads;
        for (int i = 0; i < threadCount; ++i) {
            threads.emplace_back([&, i] {
                --waiting;
                while (waiting > 0) {}
                const Context context(i % 2 == 0 ? 0 : 8);
                const auto& locale = std::locale::classic();
                // Threads start with different questions.
                const auto weight = i % 4 < 2
                    ? context.parse(L"2 kN/m3", UnitId::NOM_WEIGHT, locale)
                    : boost::none;
                const auto length = context.parse(L"1' 6''", UnitId::GEO_LENGTH, locale);
                answers[static_cast<std::size_t>(i)] = QString::fromStdWString(
                                                           context.format(*length, locale))
                    + (weight ? QString(" %1").arg(weight->value) : QString())
                    + QString(" %1").arg(context.unit_provider().get_all_ids().size());
            });
        }
        for (std::thread& each : threads)
            each.join();

        for (int i = 0; i < threadCount; ++i) {
            const QString length = i % 2 == 0 ? "0.457 m" : "1.50 ft";
            const QString weight = i % 4 < 2 ? " 2" : "";
            QCOMPARE(answers[static_cast<std::size_t>(i)], length + weight + " 534");
        }
    }
};

VRN_TEST(TestFirstUse)
#include "tst_first_use.moc"
