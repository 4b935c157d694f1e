#include "group_box_states.h"
#include "support/test_main.h"

using namespace vrn::test;

class TestMultiEditGroupBoxSequence : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRandomWalkFollowsTheTable()
    {
        QWidget form;
        form.resize(200, 200);
        form.show();
        using Walk = StateTableWalk<GroupBoxStates>;
        runRandomSequences(Walk::actions(), [&] {
            return std::make_unique<Walk>(vrn::qt::MultiEditGroupBox::create("Fire", &form));
        });
    }
};

VRN_TEST(TestMultiEditGroupBoxSequence)
#include "tst_multi_edit_group_box_sequence.moc"
