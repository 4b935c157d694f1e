#include "check_box_states.h"
#include "support/test_main.h"

using namespace vrn::test;

class TestMultiEditCheckBoxSequence : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRandomWalkFollowsTheTable()
    {
        QWidget form;
        form.resize(200, 200);
        form.show();
        using Walk = StateTableWalk<CheckBoxStates>;
        runRandomSequences(Walk::actions(), [&] {
            return std::make_unique<Walk>(vrn::qt::MultiEditCheckBox::create("Visible", &form));
        });
    }
};

VRN_TEST(TestMultiEditCheckBoxSequence)
#include "tst_multi_edit_check_box_sequence.moc"
