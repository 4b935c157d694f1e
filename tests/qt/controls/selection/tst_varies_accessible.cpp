#include <vrn/base/any_predicates.h>
#include <vrn/qt/multi_edit_check_box.h>
#include <vrn/qt/multi_edit_group_box.h>
#include <vrn/qt/multi_edit_radio_button_group.h>
#include <vrn/qt/varies_string.h>

#include "qt/controls/choices/group_fixture.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QAccessible>
#include <QCheckBox>
#include <QRadioButton>
#include <QSignalSpy>

using namespace vrn::qt;

namespace {

QString accessibleText(QWidget* widget, QAccessible::Text kind)
{
    const QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget);
    return interface ? interface->text(kind) : QString("no interface");
}

MultiEditRadioButtonGroup* createRadioGroup(QWidget* parent)
{
    return MultiEditRadioButtonGroup::create("Grade", {{"S235", 235}, {"S355", 355}},
        &vrn::any_equal<int>, &vrn::any_less<int>, parent, nullptr, true, true);
}

} // namespace

class TestVariesAccessible : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        QAccessible::setActive(true);
    }

    void aCheckBoxSaysThatItVaries()
    {
        QWidget form;
        auto* control = MultiEditCheckBox::create("&Visible", &form);
        auto* box = control->findChild<QCheckBox*>();
        verifyValues(control, {control, box});
        QCOMPARE(accessibleText(box, QAccessible::Name), QString("Visible"));

        const QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(box);
        QVERIFY(interface->state().checkStateMixed);
        QVERIFY(!interface->state().checked);
        control->setValue(true);
        QVERIFY(!interface->state().checkStateMixed);
        QVERIFY(interface->state().checked);
    }

    void aGroupBoxSaysThatItVaries()
    {
        QWidget form;
        auto* control = MultiEditGroupBox::create("&Fire protection", &form);
        verifyValues(control, {control});
        QCOMPARE(accessibleText(control, QAccessible::Name), QString("Fire protection"));
        QCOMPARE(accessibleText(control, QAccessible::Accelerator), QString("Alt+F"));

        const QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(control);
        QCOMPARE(interface->role(), QAccessible::CheckBox);
        QVERIFY(interface->state().checkStateMixed);
        control->setValue(true);
        QVERIFY(interface->state().checked);
        QVERIFY(!interface->state().checkStateMixed);
    }

    void aRadioGroupSaysThatItVaries()
    {
        QWidget form;
        auto* control = createRadioGroup(&form);
        verifyValues(control, {control});
        QCOMPARE(accessibleText(control, QAccessible::Name), QString("Grade"));
    }

    // What assistive technology does counts as an act of the user.
    void togglingAGroupBoxIsAClick()
    {
        QWidget form;
        auto* control = MultiEditGroupBox::create("Fire protection", &form);
        QSignalSpy valueChanged(control, &MultiEditGroupBox::valueChanged);
        QAccessibleActionInterface* actions =
            QAccessible::queryAccessibleInterface(control)->actionInterface();
        const QString toggle = QAccessibleActionInterface::toggleAction();
        QVERIFY(actions->actionNames().contains(toggle));
        actions->doAction(toggle);
        QVERIFY(control->isChecked());
        QCOMPARE(valueChanged.count(), 1);
        control->forceVaries();
        QVERIFY(!actions->actionNames().contains(toggle));
        actions->doAction(toggle);
        QVERIFY(control->dataVaries());
        QCOMPARE(valueChanged.count(), 1);
    }

    void otherBoxesAreLeftToQt()
    {
        QWidget form;
        auto* control = MultiEditCheckBox::create("Visible", &form);
        control->forceVaries();
        QCheckBox box("Plain");
        box.setTristate(true);
        box.setCheckState(Qt::PartiallyChecked);
        QCOMPARE(accessibleText(&box, QAccessible::Name), QString("Plain"));
        QCOMPARE(accessibleText(&box, QAccessible::Value), QString());
        QCheckBox inForm("Plain", &form);
        QCOMPARE(accessibleText(&inForm, QAccessible::Value), QString());
    }

    // A screen reader may ask for a control as soon as its base class is constructed.
    void aControlThatIsAskedForDuringItsConstructionSaysSoToo()
    {
        QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
            for (const QAccessibleInterface* i = event->accessibleInterface(); i; i = i->parent())
                i->text(QAccessible::Value);
        });
        QWidget form;
        auto* check = MultiEditCheckBox::create("Visible", &form);
        auto* group = MultiEditGroupBox::create("Fire protection", &form);
        auto* radio = createRadioGroup(&form);
        check->forceVaries();
        group->forceVaries();
        radio->forceVaries();
        for (QWidget* widget :
            {static_cast<QWidget*>(check), static_cast<QWidget*>(check->findChild<QCheckBox*>()),
                static_cast<QWidget*>(group), static_cast<QWidget*>(radio)})
            QCOMPARE(accessibleText(widget, QAccessible::Value), getVariesString());
        QAccessible::installUpdateHandler(nullptr);
    }

    // The box may still be asked when only the QWidget of the control around it is left.
    void aControlThatIsBeingDestroyedDoesNotVary()
    {
        QWidget form;
        auto* control = MultiEditCheckBox::create("Visible", &form);
        auto* box = control->findChild<QCheckBox*>();
        form.show();
        connect(control, &MultiEditCheckBox::valueChanged, this, [=] {
            control->forceVaries();
            box->installEventFilter(this);
            delete control;
        });
        vrn::test::clickOn(box);
        QVERIFY(!m_valuesAtEvents.isEmpty());
        QVERIFY(!m_valuesAtEvents.contains(getVariesString()));
    }

protected:
    bool eventFilter(QObject* watched, QEvent* /*event*/) override
    {
        m_valuesAtEvents << accessibleText(static_cast<QWidget*>(watched), QAccessible::Value);
        return false;
    }

private:
    // Empty, unless the control varies.
    static void verifyValues(MultiEditControlBase* control, const QList<QWidget*>& widgets)
    {
        for (QWidget* widget : widgets)
            QCOMPARE(accessibleText(widget, QAccessible::Value), QString());
        control->forceVaries();
        for (QWidget* widget : widgets)
            QCOMPARE(accessibleText(widget, QAccessible::Value), getVariesString());
        control->reset();
        for (QWidget* widget : widgets)
            QCOMPARE(accessibleText(widget, QAccessible::Value), QString());
        control->forceVaries();
    }

    QStringList m_valuesAtEvents;
};

VRN_TEST(TestVariesAccessible)
#include "tst_varies_accessible.moc"
