#include <vrn/qt/multi_edit_check_box.h>

#include "check_box_states.h"
#include "support/catching_application.h"
#include "support/table.h"
#include "support/test_main.h"

#include <QPointer>
#include <QVBoxLayout>

#include <memory>
#include <stdexcept>

using namespace vrn::qt;
using namespace vrn::test;

class TestMultiEditCheckBox : public StateTableTest<CheckBoxStates>
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_form = std::make_unique<QWidget>();
        auto* rows = new QVBoxLayout(m_form.get());
        m_control = MultiEditCheckBox::create("Visible", m_form.get());
        rows->addWidget(m_control);
        m_form->show();
    }

    void cleanup()
    {
        m_form.reset();
        deleteDeferred();
        TestObject::cleanup();
    }

    void aNewControlIsFreshAndUnchecked()
    {
        QCOMPARE(m_control->parentWidget(), m_form.get());
        QCOMPARE(CheckBoxStates::innerBox(*m_control)->text(), QString("Visible"));
        QCOMPARE(stateOf(*m_control), QString("f-"));
    }

    void aMissingParentIsReported()
    {
        expectAssert("parent");
        const QScopedPointer<MultiEditCheckBox> control(MultiEditCheckBox::create("x", nullptr));
        QVERIFY(control->isWindow());
    }

    void signalsAndStates_data() { addColumnsAndCells(); }
    void signalsAndStates() { verifyCell(*m_control); }

    void aSuspendedControlIsSilent_data() { addColumnsAndCells(); }
    void aSuspendedControlIsSilent() { verifySuspendedCell(*m_control); }

    void aLoadingControlReadsAndSetsInSilence_data() { addColumnsAndCells(); }
    void aLoadingControlReadsAndSetsInSilence()
    {
        QFETCH(QString, action);
        bringIntoStart(*m_control);
        QSignalSpy valueChanged(m_control, &Control::valueChanged);
        Loading::set(*m_control, true);
        perform(*m_control);
        QVERIFY(!m_control->signalsBlocked());
        Loading::set(*m_control, false);
        const bool isSilent = action.startsWith("setValue") || action.startsWith("readValue");
        QCOMPARE(valueChanged.count(), isSilent ? 0 : due().signalCount);
        verifyEnd(*m_control);
    }

    void aBlockedControlStaysBlockedWhenItHasLoaded()
    {
        QCheckBox* box = CheckBoxStates::innerBox(*m_control);
        Loading::set(*m_control, true);
        m_control->blockSignals(true);
        m_control->readValue(true);
        m_control->setValue(false);
        QVERIFY(m_control->signalsBlocked());
        box->blockSignals(true);
        m_control->forceVaries();
        QVERIFY(box->signalsBlocked());
    }

    void suspendingDoesNotNest()
    {
        QSignalSpy valueChanged(m_control, &MultiEditCheckBox::valueChanged);
        m_control->suspendValueChangedSignal();
        m_control->suspendValueChangedSignal();
        m_control->resumeValueChangedSignal();
        clickOn(CheckBoxStates::innerBox(*m_control));
        QCOMPARE(valueChanged.count(), 1);
    }

    // To a slot this looks as if a user had unchecked the box. An application that does
    // not want it suspends the signal.
    void aResetEmitsBeforeTheControlIsFresh()
    {
        m_control->readValue(true);
        int count = 0;
        connect(m_control, &MultiEditCheckBox::valueChanged, this, [&] {
            ++count;
            QVERIFY(!m_control->dataVaries());
            QVERIFY(!m_control->isChecked());
            // It is not fresh yet, so this makes it vary. The reset then goes on.
            m_control->readValue(true);
            QVERIFY(m_control->dataVaries());
        });
        m_control->reset();
        QCOMPARE(count, 1);
        QVERIFY(!m_control->dataVaries());
    }

    // A box that a slot destroys with its control outlives it for a while. This one is
    // no longer at work.
    void afterASlotHasThrownTheBoxGoesWithTheControl_data()
    {
        QTest::addColumn<QString>("action");
        for (const char* action : {"readValue(true)", "setValue(true)", "click"})
            row(action, action);
    }

    void afterASlotHasThrownTheBoxGoesWithTheControl()
    {
        QFETCH(QString, action);
        const ThroughQt throughQt;
        auto* parent = new QWidget(m_form.get());
        auto* control = MultiEditCheckBox::create("Visible", parent);
        parent->show();
        const QPointer<QCheckBox> box(CheckBoxStates::innerBox(*control));
        connect(control, &MultiEditCheckBox::valueChanged, this,
            [] { throw std::runtime_error("boom"); });
        QVERIFY_EXCEPTION_THROWN(CheckBoxStates::perform(*control, action), std::runtime_error);
        QVERIFY(box->isChecked());
        delete parent;
        QVERIFY(!box);
    }

private:
    std::unique_ptr<QWidget> m_form;
    MultiEditCheckBox* m_control = nullptr;
};

VRN_TEST(TestMultiEditCheckBox)
#include "tst_multi_edit_check_box.moc"
