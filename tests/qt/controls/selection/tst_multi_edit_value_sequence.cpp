#include <vrn/base/any_predicates.h>
#include <vrn/qt/multi_edit_value.h>

#include "support/random_sequence.h"
#include "support/test_main.h"
#include "support/test_object.h"

using vrn::qt::MultiEditValue;

namespace {

int comparisons = 0;

bool countingDiffer(const boost::any& a, const boost::any& b)
{
    ++comparisons;
    return vrn::any_differ<int>(a, b);
}

// A control beside a model of it. The number 0 stands for an empty value.
class Beside : public vrn::test::Subject
{
public:
    QString perform(int action, unsigned argument) override
    {
        const int number = int(argument % 3);
        const boost::any any = number == 0 ? boost::any() : boost::any(number);
        comparisons = 0;
        int due = 0;
        switch (action) {
        case 0:
            m_control.reset();
            m_fresh = true;
            m_varies = false;
            m_stored = 0;
            break;
        case 1:
            m_control.readValue(any);
            if (m_fresh) {
                m_fresh = false;
                m_varies = false;
                m_stored = number;
            } else if (!m_varies) {
                m_varies = number != m_stored;
                due = 1;
            }
            break;
        case 2:
            m_control.setValue(any);
            m_varies = false;
            m_stored = number;
            break;
        case 3:
            m_control.forceVaries();
            m_varies = true;
            break;
        }
        const boost::any current = m_varies || m_stored == 0 ? boost::any() : boost::any(m_stored);
        if (m_control.dataVaries() != m_varies)
            return QStringLiteral("varies is %1").arg(!m_varies);
        if (!vrn::test::sameValue(m_control.getCurrentValue(), current))
            return vrn::test::describe(m_control.getCurrentValue()) + " instead of "
                + vrn::test::describe(current);
        if (comparisons != due)
            return QStringLiteral("%1 comparisons instead of %2").arg(comparisons).arg(due);
        return {};
    }

private:
    MultiEditValue m_control{&countingDiffer};
    bool m_fresh = true;
    bool m_varies = false;
    int m_stored = 0;
};

} // namespace

class TestMultiEditValueSequence : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRandomSequenceFollowsTheTable()
    {
        vrn::test::runRandomSequences({"reset", "readValue", "setValue", "forceVaries"},
            [] { return std::make_unique<Beside>(); });
    }
};

VRN_TEST(TestMultiEditValueSequence)
#include "tst_multi_edit_value_sequence.moc"
