#include <vrn/base/any_predicates.h>
#include <vrn/qt/controls.h>
#include <vrn/qt/validators.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QHelpEvent>
#include <QRadioButton>
#include <QToolButton>
#include <QToolTip>

#include <functional>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

const QString differ = "The selected objects differ.";

struct Made
{
    QWidget* widget;
    MultiEditControlBase* control;
};

using Make = std::function<Made(QWidget*)>;

template <typename Control>
Made made(Control* control)
{
    return {control, control};
}

MultiEditRadioButtonGroup* createRadioGroup(QWidget* parent, ILayouter* layouter)
{
    return MultiEditRadioButtonGroup::create("Grade", {{"S235", 235}, {"S355", 355}},
        &vrn::any_equal<int>, &vrn::any_less<int>, parent, layouter, layouter == nullptr, true);
}

Made makeEnumBox(QWidget* form, bool isEditable)
{
    auto* box = MultiEditEnumBox::create(form, {}, &vrn::any_equal<int>);
    box->setValues({{"S235", 235}, {"S355", 355}});
    if (isEditable)
        box->setEditable(true, boost::make_shared<IntegerValidator<int>>(0, 999, false));
    return made(box);
}

// QToolTip::hideText() waits a while. A tool tip goes at once when a window is left.
void hideToolTip()
{
    QObject window;
    QEvent left(QEvent::WindowDeactivate);
    QApplication::sendEvent(&window, &left);
}

// Asks as Qt does when the mouse rests on a widget. Returns what is shown then.
QString toolTipOver(QWidget* widget)
{
    hideToolTip();
    const QPoint position = widget->rect().center();
    QHelpEvent event(QEvent::ToolTip, position, widget->mapToGlobal(position));
    QApplication::sendEvent(widget, &event);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
}

// The control, or the part of it that is under the mouse.
QWidget* partIn(QWidget* control)
{
    QWidget* part = control->childAt(control->rect().center());
    return part ? part : control;
}

} // namespace

Q_DECLARE_METATYPE(Make)

class TestVariesToolTip : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_form = std::make_unique<QWidget>();
    }

    void cleanup()
    {
        hideToolTip();
        m_form.reset();
        TestObject::cleanup();
    }

    void aVaryingControlSaysThatTheObjectsDiffer_data() { addControls(); }
    void aVaryingControlSaysThatTheObjectsDiffer()
    {
        const Made made = makeShown();
        QWidget* part = partIn(made.widget);
        QCOMPARE(toolTipOver(part), QString());
        made.control->forceVaries();
        QCOMPARE(toolTipOver(part), differ);
        QVERIFY(made.widget->toolTip().isEmpty());
        made.control->reset();
        QCOMPARE(toolTipOver(part), QString());
    }

    void theTextGoesWhenTheControlVariesNoMore_data() { addControls(); }
    void theTextGoesWhenTheControlVariesNoMore()
    {
        const Made made = makeShown();
        made.control->forceVaries();
        QCOMPARE(toolTipOver(partIn(made.widget)), differ);
        QTest::qWait(150);
        QVERIFY(QToolTip::isVisible());
        made.control->reset();
        QTRY_VERIFY(!QToolTip::isVisible());
    }

    void aToolTipOfTheApplicationStays_data() { addControls(); }
    void aToolTipOfTheApplicationStays()
    {
        const Made made = makeShown();
        QWidget* part = partIn(made.widget);
        made.widget->setToolTip("Upper flange");
        made.control->forceVaries();
        QCOMPARE(toolTipOver(part), QString("Upper flange"));
        QCOMPARE(made.widget->toolTip(), QString("Upper flange"));
        made.control->reset();
        QCOMPARE(toolTipOver(part), QString("Upper flange"));
        made.widget->setToolTip({});

        // It is shown over a control without one, so it must not be covered either.
        m_form->setToolTip("Beam");
        made.control->forceVaries();
        QCOMPARE(toolTipOver(part), QString("Beam"));
    }

    void aPartKeepsItsToolTip()
    {
        auto* field = new MultiEditLineEditWithResetButton(
            new DoubleEditValidator, 0, [](int, boost::any&, boost::any&) {});
        field->setParent(m_form.get());
        m_form->show();
        field->forceVaries();
        QCOMPARE(toolTipOver(field->findChild<QToolButton*>()), QString("Reset to default."));
        field->edit()->setToolTip("Depth");
        QCOMPARE(toolTipOver(field->edit()), QString("Depth"));
        field->edit()->setToolTip({});
        QCOMPARE(toolTipOver(field->edit()), differ);
    }

    // The control of the application inside does not vary by itself.
    void aGroupBoxSpeaksForWhatItDisables()
    {
        auto* box = MultiEditGroupBox::create("Fire protection", m_form.get());
        auto* inner = new QLineEdit(box);
        auto* field = MultiEditLineEdit::create(
            box, {}, new DoubleEditValidator, 0, ExpandVertical);
        m_form->show();
        box->readValue(true);
        QCOMPARE(toolTipOver(inner), QString());
        box->readValue(false);
        QVERIFY(!inner->isEnabled());
        QCOMPARE(toolTipOver(inner), differ);
        QCOMPARE(toolTipOver(field->edit()), differ);
        // It stays disabled, but it does not vary any more.
        box->setValue(true);
        QVERIFY(!box->isEnabled());
        QCOMPARE(toolTipOver(inner), QString());
    }

    void buttonsInAForeignContainerSayItToo()
    {
        VBoxLayouter layouter;
        layouter.onCreate(m_form.get());
        auto* group = createRadioGroup(m_form.get(), &layouter);
        m_form->show();
        auto* button = m_form->findChild<QRadioButton*>();
        QCOMPARE(toolTipOver(button), QString());
        group->forceVaries();
        QCOMPARE(toolTipOver(button), differ);
        button->setToolTip("Usual steel");
        QCOMPARE(toolTipOver(button), QString("Usual steel"));
    }

    // The boxes differ from each other. The objects need not.
    void theBoxOfAllSaysNothingOfObjects()
    {
        VBoxLayouter layouter;
        layouter.onCreate(m_form.get());
        MultiEditCheckBoxGroup group(m_form.get(), layouter, {"top", "bottom"}, {});
        m_form->show();
        group.setValue(0, true);
        group.setValue(1, false);
        auto* all = m_form->findChildren<MultiEditCheckBox*>().constLast();
        QVERIFY(all->dataVaries());
        QCOMPARE(toolTipOver(all), QString());
    }

    void oneControlLeavesTheTextOfAnother()
    {
        auto* one = MultiEditCheckBox::create("one", m_form.get());
        auto* two = MultiEditCheckBox::create("two", m_form.get());
        showForm();
        one->forceVaries();
        two->forceVaries();
        QCOMPARE(toolTipOver(one), differ);
        QCOMPARE(toolTipOver(two), differ);
        one->setValue(true);
        QTest::qWait(500);
        QVERIFY(QToolTip::isVisible());
    }

    void aControlMayGoWhileItsTextIsShown()
    {
        auto* control = MultiEditCheckBox::create("one", m_form.get());
        m_form->show();
        control->forceVaries();
        QCOMPARE(toolTipOver(control), differ);
        delete control;
        QTest::qWait(150);
    }

private:
    void showForm()
    {
        m_form->show();
        // An activation hides tool tips.
        QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    }

    static void addControls()
    {
        columns<Make>("make");
        const auto add = [](const char* name, const Make& make) { row(name, make); };
        add("a line edit", [](QWidget* form) {
            return made(
                MultiEditLineEdit::create(form, {}, new DoubleEditValidator, 0, ExpandHorizontal));
        });
        add("an enum box", [](QWidget* form) { return makeEnumBox(form, false); });
        add("an editable enum box", [](QWidget* form) { return makeEnumBox(form, true); });
        add("a check box",
            [](QWidget* form) { return made(MultiEditCheckBox::create("a", form)); });
        add("a group box",
            [](QWidget* form) { return made(MultiEditGroupBox::create("a", form)); });
        add("a radio group", [](QWidget* form) { return made(createRadioGroup(form, nullptr)); });
        add("a file picker",
            [](QWidget* form) { return made(new MultiEditFilePicker(form, TypeofPathFile)); });
    }

    Made makeShown()
    {
        QFETCH(Make, make);
        const Made made = make(m_form.get());
        showForm();
        return made;
    }

    std::unique_ptr<QWidget> m_form;
};

VRN_TEST(TestVariesToolTip)
#include "tst_varies_tool_tip.moc"
