#include <vrn/qt/multi_edit_radio_button_group.h>

#include "radio_group_states.h"
#include "support/test_main.h"

#include <QButtonGroup>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include <memory>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Group = MultiEditRadioButtonGroup;

const std::string noButton = "no button checked - returning default value";
const std::string notFound = RadioGroupStates::reportMessage;

} // namespace

class TestMultiEditRadioButtonGroup : public StateTableTest<RadioGroupStates>
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_form = std::make_unique<QWidget>();
        m_group = RadioGroupStates::createIn(m_form.get());
        m_form->show();
    }

    void cleanup()
    {
        m_form.reset();
        deleteDeferred();
        TestObject::cleanup();
    }

    void aNewGroupHasTheFirstButtonChecked()
    {
        QCOMPARE(checkedIn(*m_group), QStringList{"S355"});
        QCOMPARE(m_group->getValue(), boost::any(355));
        QCOMPARE(stateOf(*m_group), QString("f355"));
    }

    void signalsAndStates_data()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("action");
        QTest::addColumn<bool>("useGroupBox");
        QTest::addColumn<bool>("useButtonGroup");
        addCells("", true, true);
        addCells("without a button group, ", true, false);
        addCells("without a group box, ", false, true);
        addCells("without either, ", false, false);
    }

    void signalsAndStates()
    {
        QFETCH(QString, action);
        QFETCH(bool, useGroupBox);
        QFETCH(bool, useButtonGroup);
        QWidget form;
        Group* group = RadioGroupStates::createIn(&form, useGroupBox, useButtonGroup);
        group->resize(200, 200);
        form.show();
        // An arrow key needs the focus.
        if (action == "Down" || action == "Up") {
            form.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&form));
        }
        verifyCell(*group);
    }

    void aSelectionFromCodeLeavesTheGroupVarying()
    {
        m_group->forceVaries();
        QSignalSpy valueChanged(m_group, &Group::valueChanged);
        m_group->setSelected(235);
        QCOMPARE(checkedIn(*m_group), QStringList{"S235"});
        QVERIFY(m_group->dataVaries());
        QVERIFY(m_group->getCurrentValue().empty());
        QCOMPARE(valueChanged.count(), 0);
    }

    void forcedToVaryTheButtonsKeepTheirExclusivity()
    {
        QButtonGroup* buttonGroup = buttonOf(*m_group, "S235")->group();
        QVERIFY(buttonGroup);
        buttonGroup->setExclusive(false);
        buttonOf(*m_group, "S235")->setAutoExclusive(false);
        QSignalSpy toggled(buttonOf(*m_group, "S355"), &QRadioButton::toggled);
        m_group->forceVaries();
        QVERIFY(!buttonGroup->exclusive());
        QVERIFY(!buttonOf(*m_group, "S235")->autoExclusive());
        QVERIFY(buttonOf(*m_group, "S355")->autoExclusive());
        QCOMPARE(toggled.count(), 0);
        QVERIFY(!buttonOf(*m_group, "S355")->signalsBlocked());

        m_group->setValue(355);
        QVERIFY(buttonOf(*m_group, "S235")->autoExclusive());
        buttonOf(*m_group, "S235")->setAutoExclusive(false);
        m_group->reset();
        QVERIFY(buttonOf(*m_group, "S235")->autoExclusive());
    }

    void aGroupThatVariesHasNoCurrentValue()
    {
        m_group->forceVaries();
        QCOMPARE(m_group->getCurrentValue(), boost::any());
        expectAssert("false", {}, noButton);
        QCOMPARE(m_group->getValue(), boost::any(355));
    }

    void eachReadThatChangesSomethingIsTold()
    {
        QSignalSpy valueChanged(m_group, &Group::valueChanged);
        m_group->readValue(235);
        QCOMPARE(valueChanged.count(), 1);
        bool variedInSlot = false;
        connect(m_group, &Group::valueChanged, this,
            [&] { variedInSlot = m_group->dataVaries() && checkedIn(*m_group).isEmpty(); });
        m_group->readValue(275);
        QCOMPARE(valueChanged.count(), 2);
        QVERIFY(variedInSlot);
        m_group->readValue(355);
        QCOMPARE(valueChanged.count(), 2);
    }

    void aResetEnablesTheGroupButNotItsButtons()
    {
        m_group->setEnabled(false);
        m_group->setValuesEnabled(false);
        m_group->reset();
        QVERIFY(m_group->isEnabled());
        for (const auto* button : m_group->findChildren<QRadioButton*>())
            QVERIFY(!button->isEnabled());
    }

    // Its buttons are unchecked with blocked signals.
    void tabEntersAVaryingGroupAtItsFirstButton()
    {
        m_form->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
        QPushButton before(m_form.get());
        QWidget::setTabOrder(&before, buttonOf(*m_group, "S355"));
        before.show();
        m_group->setValue(275);
        m_group->forceVaries();
        before.setFocus();
        QTest::keyClick(&before, Qt::Key_Tab);
        QVERIFY(buttonOf(*m_group, "S355")->hasFocus());
    }

    void badArgumentsAreReportedInOrder()
    {
        expectAssert("!values.empty()");
        expectAssert("lessFn");
        expectAssert("equalFn");
        expectAssert("parent");
        expectAssert("!m_values.empty()");
        expectAssert("it != m_value2button.end()", {}, notFound);
        const QScopedPointer<Group> group(
            Group::create("Grade", {}, nullptr, {}, nullptr, nullptr, true, true));
        QVERIFY(group->isWindow());
    }

    void anEmptyGroupHasTheEmptyValue()
    {
        expectAssert("!values.empty()");
        expectAssert("!m_values.empty()");
        expectAssert("it != m_value2button.end()", {}, notFound);
        auto* group = Group::create("Grade", {}, &vrn::any_equal<int>, &vrn::any_less<int>,
            m_form.get(), nullptr, true, true);
        expectAssert("false", {}, noButton);
        QVERIFY(group->getValue().empty());
        expectAssert("it != m_value2button.end()", {}, notFound);
        group->reset();
        expectAssert("it != m_value2button.end()", {}, notFound);
        group->readValue(1);
        expectAssert("false", {}, noButton);
        group->readValue(2);
        QVERIFY(group->dataVaries());
        QVERIFY(group->getCurrentValue().empty());
        group->setValuesEnabled(false);
    }

    void withoutAComparisonAnyTwoValuesDiffer()
    {
        expectAssert("equalFn");
        auto* group = Group::create("Grade", threeGrades(), nullptr, &vrn::any_less<int>,
            m_form.get(), nullptr, true, true);
        group->readValue(235);
        QCOMPARE(checkedIn(*group), QStringList{"S235"});
        group->readValue(235);
        QVERIFY(group->dataVaries());
    }

    void withoutAnOrderNoValueIsFound()
    {
        expectAssert("lessFn");
        expectAssert("it != m_value2button.end()", {}, notFound);
        auto* group = Group::create(
            "Grade", threeGrades(), &vrn::any_equal<int>, {}, m_form.get(), nullptr, true, true);
        QCOMPARE(group->findChildren<QRadioButton*>().size(), 3);
        m_form->show();
        group->show();
        expectAssert("it != m_value2button.end()", {}, notFound);
        group->readValue(235);
        QCOMPARE(checkedIn(*group), QStringList());
        clickOn(buttonOf(*group, "S275"));
        QCOMPARE(group->getCurrentValue(), boost::any(275));
    }

    // The first value stands in for a missing selection, as after an unknown value.
    void withoutACheckedButtonReadsAreComparedWithTheFirstValue()
    {
        m_group->forceVaries();
        QSignalSpy valueChanged(m_group, &Group::valueChanged);
        expectAssert("it != m_value2button.end()", {}, notFound);
        m_group->setValue(1);
        QVERIFY(!m_group->dataVaries());
        QCOMPARE(checkedIn(*m_group), QStringList());
        QCOMPARE(valueChanged.count(), 1);
        valueChanged.clear();
        expectAssert("false", {}, noButton);
        m_group->readValue(355);
        QVERIFY(!m_group->dataVaries());
        QCOMPARE(valueChanged.count(), 0);
        expectAssert("false", {}, noButton);
        m_group->readValue(235);
        QVERIFY(m_group->dataVaries());
        QCOMPARE(valueChanged.count(), 1);
    }

    // Its first argument is the value read, its second the selected one.
    void theComparisonIsAskedFromTheSecondReadUntilOneDiffers()
    {
        static QStringList asked;
        asked.clear();
        auto* group = Group::create(
            "Grade", threeGrades(),
            [](const boost::any& a, const boost::any& b) {
                asked << QString("%1 %2").arg(boost::any_cast<int>(a)).arg(boost::any_cast<int>(b));
                return vrn::any_equal<int>(a, b);
            },
            &vrn::any_less<int>, m_form.get(), nullptr, true, true);
        group->readValue(235);
        QCOMPARE(asked, QStringList());
        group->readValue(235);
        group->readValue(275);
        group->readValue(355);
        QCOMPARE(asked, QStringList({"235 235", "275 235"}));
        group->setValue(355);
        group->readValue(235);
        QCOMPARE(asked.last(), QString("235 355"));
    }

    void aComparisonMayDestroyTheControl()
    {
        static QPointer<Group> group;
        group = Group::create(
            "Grade", threeGrades(),
            [](const boost::any& /*a*/, const boost::any& /*b*/) {
                delete group.data();
                return false;
            },
            &vrn::any_less<int>, m_form.get(), nullptr, true, true);
        group->readValue(235);
        QVERIFY(group);
        group->readValue(275);
        QVERIFY(!group);
    }

private:
    std::unique_ptr<QWidget> m_form;
    Group* m_group = nullptr;
};

VRN_TEST(TestMultiEditRadioButtonGroup)
#include "tst_multi_edit_radio_button_group.moc"
