#include <vrn/qt/simple_check_box.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QAccessible>
#include <QCheckBox>
#include <QLayout>
#include <QVBoxLayout>

using namespace vrn::qt;

class TestSimpleCheckBox : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theBoxFillsTheControl()
    {
        QWidget parent;
        SimpleCheckBox* control = SimpleCheckBox::create("Visible", &parent);
        QCOMPARE(control->parentWidget(), &parent);
        const auto* box = control->findChild<QCheckBox*>();
        QVERIFY(box);
        QCOMPARE(box->text(), QString("Visible"));
        QCOMPARE(box->parentWidget(), control);
        QVERIFY(qobject_cast<QHBoxLayout*>(control->layout()));
        QCOMPARE(control->layout()->count(), 1);
        QCOMPARE(control->layout()->contentsMargins(), QMargins());
        QVERIFY(!control->isChecked());
        QVERIFY(!box->isTristate());
        // Signals belong to MultiEditCheckBox.
        QCOMPARE(SimpleCheckBox::staticMetaObject.methodCount(),
            QWidget::staticMetaObject.methodCount());
    }

    void itIsChecked()
    {
        QWidget parent;
        SimpleCheckBox* control = SimpleCheckBox::create("Visible", &parent);
        const auto* box = control->findChild<QCheckBox*>();
        control->setChecked(true);
        QVERIFY(control->isChecked());
        QVERIFY(box->isChecked());
        control->setChecked(false);
        QVERIFY(!control->isChecked());
        QVERIFY(!box->isChecked());
    }

    void aMissingParentIsReported()
    {
        expectAssert("parent");
        const QScopedPointer<SimpleCheckBox> control(SimpleCheckBox::create("Visible", nullptr));
        QVERIFY(control->isWindow());
    }

    void theFocusGoesToTheBox()
    {
        QWidget form;
        auto* rows = new QVBoxLayout(&form);
        SimpleCheckBox* first = SimpleCheckBox::create("First", &form);
        SimpleCheckBox* second = SimpleCheckBox::create("Second", &form);
        rows->addWidget(first);
        rows->addWidget(second);
        form.show();
        form.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        first->setFocus();
        QVERIFY(first->findChild<QCheckBox*>()->hasFocus());
        QTest::keyClick(form.focusWidget(), Qt::Key_Tab);
        QVERIFY(second->findChild<QCheckBox*>()->hasFocus());
        QTest::keyClick(form.focusWidget(), Qt::Key_Space);
        QVERIFY(second->isChecked());
        QVERIFY(!first->isChecked());
    }

    void theShortcutOfTheLabelChecksTheBox()
    {
        QWidget form;
        SimpleCheckBox* control = SimpleCheckBox::create("&Visible", &form);
        form.show();
        form.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QTest::keyClick(&form, Qt::Key_V, Qt::AltModifier);
        // At first Qt shows the box pressed for a moment.
        QTRY_VERIFY(control->isChecked());
    }

    void theLabelIsTheAccessibleName_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("accelerator");
        vrn::test::row("plain", "Visible", "Visible", "");
        vrn::test::row("with a shortcut", "&Visible", "Visible", "Alt+V");
        vrn::test::row("with an ampersand", "Nuts && bolts", "Nuts & bolts", "");
    }

    void theLabelIsTheAccessibleName()
    {
        QFETCH(QString, label);
        QWidget form;
        SimpleCheckBox* control = SimpleCheckBox::create(label, &form);
        QAccessibleInterface* box = QAccessible::queryAccessibleInterface(
            control->findChild<QCheckBox*>());
        QVERIFY(box);
        QTEST(box->text(QAccessible::Name), "name");
        QTEST(box->text(QAccessible::Accelerator), "accelerator");
        QCOMPARE(box->text(QAccessible::Value), QString());
    }

    // As Qt's own box does for a screen reader.
    void theBoxActsThroughItsAccessibleInterface()
    {
        QWidget form;
        SimpleCheckBox* control = SimpleCheckBox::create("Visible", &form);
        auto* check = control->findChild<QCheckBox*>();
        QCheckBox plain;
        QAccessibleInterface* box = QAccessible::queryAccessibleInterface(check);
        const QAccessibleInterface* other = QAccessible::queryAccessibleInterface(&plain);
        QCOMPARE(box->role(), other->role());
        QVERIFY(box->state().checkable);
        QVERIFY(!box->state().checked);
        QAccessibleActionInterface* actions = box->actionInterface();
        QVERIFY(actions);
        const QString toggle = QAccessibleActionInterface::toggleAction();
        QVERIFY(actions->actionNames().contains(toggle));
        actions->doAction(toggle);
        QVERIFY(control->isChecked());
        QVERIFY(box->state().checked);
        QVERIFY(!box->state().checkStateMixed);
        actions->doAction(QAccessibleActionInterface::setFocusAction());
        QVERIFY(control->isChecked());
        check->setEnabled(false);
        QVERIFY(!actions->actionNames().contains(toggle));
        actions->doAction(toggle);
        QVERIFY(control->isChecked());
    }
};

VRN_TEST(TestSimpleCheckBox)
#include "tst_simple_check_box.moc"
