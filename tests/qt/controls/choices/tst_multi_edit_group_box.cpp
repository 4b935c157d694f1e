#include <vrn/qt/multi_edit_group_box.h>

#include "group_box_states.h"
#include "support/table.h"
#include "support/test_main.h"

#include <QPointer>
#include <QVBoxLayout>

#include <memory>

using namespace vrn::qt;
using namespace vrn::test;

class TestMultiEditGroupBox : public StateTableTest<GroupBoxStates>
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_form = std::make_unique<QWidget>();
        m_control = MultiEditGroupBox::create("&Fire protection", m_form.get());
        new QVBoxLayout(m_control);
        (new QVBoxLayout(m_form.get()))->addWidget(m_control);
        m_form->show();
    }

    void cleanup()
    {
        m_form.reset();
        deleteDeferred();
        TestObject::cleanup();
    }

    void aNewControlIsFreshUncheckedAndEnabled()
    {
        QCOMPARE(m_control->parentWidget(), m_form.get());
        QCOMPARE(m_control->title(), QString("&Fire protection"));
        QVERIFY(m_control->isCheckable());
        QCOMPARE(stateOf(*m_control), QString("f-"));
    }

    void aMissingParentIsReported()
    {
        expectAssert("parent");
        const QScopedPointer<MultiEditGroupBox> control(MultiEditGroupBox::create("x", nullptr));
        QVERIFY(control->isWindow());
    }

    void signalsAndStates_data() { addColumnsAndCells(); }
    void signalsAndStates() { verifyCell(*m_control); }

    void aSuspendedControlIsSilent_data() { addColumnsAndCells(); }
    void aSuspendedControlIsSilent() { verifySuspendedCell(*m_control); }

    void loadingMakesNoDifference_data() { addColumnsAndCells(); }
    void loadingMakesNoDifference()
    {
        Loading::set(*m_control, true);
        verifyCell(*m_control);
    }

    // Qt sets the focus after the shortcut, so the control may only be deleted later. The
    // injection of foreign code does not press a shortcut.
    void aSlotMayDestroyTheControlAtItsShortcut_data()
    {
        QTest::addColumn<bool>("withParent");
        QTest::addColumn<bool>("byValueChanged");
        row("the control, by valueChanged", false, true);
        row("the control, by toggled", false, false);
        row("the parent, by valueChanged", true, true);
        row("the parent, by toggled", true, false);
    }

    void aSlotMayDestroyTheControlAtItsShortcut()
    {
        QFETCH(bool, withParent);
        QFETCH(bool, byValueChanged);
        const QPointer<QWidget> control(m_control);
        QWidget* victim = withParent ? m_form.release() : m_control;
        if (byValueChanged)
            connect(m_control, &MultiEditGroupBox::valueChanged, victim, &QObject::deleteLater);
        else
            connect(m_control, &QGroupBox::toggled, victim, &QObject::deleteLater);
        QWidget* window = control->window();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QTest::keyClick(window, Qt::Key_F, Qt::AltModifier);
        deleteDeferred();
        QVERIFY(!control);
    }

private:
    std::unique_ptr<QWidget> m_form;
    MultiEditGroupBox* m_control = nullptr;
};

VRN_TEST(TestMultiEditGroupBox)
#include "tst_multi_edit_group_box.moc"
