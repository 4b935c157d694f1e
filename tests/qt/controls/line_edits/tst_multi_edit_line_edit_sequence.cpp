#include "multi_edit_line_edit_model.h"
#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::qt;
using namespace vrn::test;

class TestMultiEditLineEditSequence : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRandomSequenceFollowsTheTables()
    {
        using Beside = MultiEditLineEditSubject<MultiEditLineEdit, MultiEditLineEditModel>;
        runRandomSequences(Beside::actions(), [] {
            return std::make_unique<Beside>(
                MultiEditLineEdit::create(nullptr, {}, percentage(), 0, ExpandHorizontal));
        });
    }
};

VRN_TEST(TestMultiEditLineEditSequence)
#include "tst_multi_edit_line_edit_sequence.moc"
