#include "radio_group_states.h"
#include "support/test_main.h"

using namespace vrn::test;

class TestMultiEditRadioButtonGroupSequence : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRandomWalkFollowsTheTable_data()
    {
        QTest::addColumn<bool>("useButtonGroup");
        QTest::newRow("in a button group") << true;
        QTest::newRow("without one") << false;
    }

    void aRandomWalkFollowsTheTable()
    {
        QFETCH(bool, useButtonGroup);
        // Arrow keys move the focus of the application, so it has an active window.
        QWidget form;
        form.resize(200, 200);
        // A button that is clicked by a key paints itself at once.
        form.setUpdatesEnabled(false);
        form.show();
        form.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        using Walk = StateTableWalk<RadioGroupStates>;
        runRandomSequences(Walk::actions(), [&] {
            return std::make_unique<Walk>(RadioGroupStates::createIn(&form, true, useButtonGroup));
        });
    }
};

VRN_TEST(TestMultiEditRadioButtonGroupSequence)
#include "tst_multi_edit_radio_button_group_sequence.moc"
