#include "support/random_sequence.h"

#include "support/test_main.h"
#include "support/test_object.h"

namespace {

// A counter that forgets to count the third of three steps in a row.
class Counter : public vrn::test::Subject
{
public:
    explicit Counter(bool forgets)
        : m_forgets(forgets)
    {}

    QString perform(int action, unsigned /*argument*/) override
    {
        if (action == 0) {
            ++m_model;
            m_run = m_run + 1;
            if (!m_forgets || m_run < 3)
                ++m_counter;
        } else {
            m_run = 0;
        }
        return m_counter == m_model ? QString()
                                    : QString("%1 instead of %2").arg(m_counter).arg(m_model);
    }

private:
    bool m_forgets;
    int m_run = 0;
    int m_counter = 0;
    int m_model = 0;
};

const QStringList actions = {"count", "pause"};

} // namespace

class TestRandomSequence : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDifferenceIsShownByTheShortestSequence()
    {
        const QString difference = vrn::test::findDifference(
            actions, [] { return std::make_unique<Counter>(true); }, 7, 1000);
        const QStringList lines = difference.split('\n');
        QCOMPARE(lines.size(), 5);
        QCOMPARE(lines.at(0), QString("2 instead of 3"));
        QCOMPARE(lines.at(1), QString("after"));
        for (int line = 2; line < 5; ++line)
            QVERIFY(lines.at(line).startsWith("  count ("));
    }

    void withoutADifferenceThereIsNothingToShow()
    {
        QCOMPARE(vrn::test::findDifference(
                     actions, [] { return std::make_unique<Counter>(false); }, 7, 1000),
            QString());
    }
};

VRN_TEST(TestRandomSequence)
#include "tst_random_sequence.moc"
