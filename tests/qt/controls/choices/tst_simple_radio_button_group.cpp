#include <vrn/base/any_predicates.h>
#include <vrn/qt/layouters.h>
#include <vrn/qt/simple_radio_button_group.h>

#include "radio_group_states.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QAccessible>
#include <QButtonGroup>
#include <QGroupBox>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <functional>
#include <memory>
#include <stdexcept>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Group = SimpleRadioButtonGroup;

const std::string noButton = "no button checked - returning default value";
const std::string notFound = RadioGroupStates::reportMessage;

Group* create(QWidget* parent, const NamedValueList& values, ILayouter* layouter = nullptr,
    bool useGroupBox = true, bool useButtonGroup = true)
{
    return Group::create("&Steel grade", values, &vrn::any_equal<int>, &vrn::any_less<int>, parent,
        layouter, useGroupBox, useButtonGroup);
}

QStringList namesIn(const QLayout* layout)
{
    QStringList names;
    for (int i = 0; i < layout->count(); ++i) {
        const auto* button = qobject_cast<QRadioButton*>(layout->itemAt(i)->widget());
        names << (button ? button->text() : QString("no button"));
    }
    return names;
}

QStringList enabledIn(const QWidget& widget)
{
    QStringList names;
    for (const auto* button : widget.findChildren<QRadioButton*>()) {
        if (button->isEnabled())
            names << button->text();
    }
    return names;
}

QString focusedIn(const QWidget& widget)
{
    for (const auto* button : widget.findChildren<QRadioButton*>()) {
        if (button->hasFocus())
            return button->text();
    }
    return "none";
}

using Create = std::function<void(QWidget*)>;

// An order as applications write it. It throws if a value has another type.
bool castAndCompare(const boost::any& a, const boost::any& b)
{
    return boost::any_cast<int>(a) < boost::any_cast<int>(b);
}

// Throws at the second button.
struct ThrowingLayouter : public VBoxLayouter
{
    void onAdd(QWidget* widget) override
    {
        if (++count == 2)
            throw std::runtime_error("no room");
        VBoxLayouter::onAdd(widget);
    }

    int count = 0;
};

// Writes down what a group asks of it.
struct RecordingLayouter : public ILayouter
{
    void onCreate(QWidget* parent) override
    {
        container = parent;
        calls << "create";
    }
    void onAdd(QWidget* widget) override
    {
        calls << "add " + qobject_cast<QRadioButton*>(widget)->text();
    }
    void onFinish() override { calls << "finish"; }

    QWidget* container = nullptr;
    QStringList calls;
};

} // namespace

Q_DECLARE_METATYPE(Create)

class TestSimpleRadioButtonGroup : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLayouterIsAskedInOrder_data()
    {
        QTest::addColumn<bool>("useGroupBox");
        QTest::addColumn<QStringList>("calls");
        const QStringList added = {"add S355", "add S235", "add S275"};
        row("with a group box", true, QStringList{"create"} + added + QStringList{"finish"});
        row("without one the caller creates and finishes", false, added);
    }

    void theLayouterIsAskedInOrder()
    {
        QFETCH(bool, useGroupBox);
        QWidget form;
        RecordingLayouter layouter;
        Group* group = create(&form, threeGrades(), &layouter, useGroupBox);
        QTEST(layouter.calls, "calls");
        auto* box = group->findChild<QGroupBox*>();
        QCOMPARE(layouter.container, static_cast<QWidget*>(box));
        QCOMPARE(box != nullptr, useGroupBox);
        for (const auto* button : group->findChildren<QRadioButton*>())
            QCOMPARE(button->parentWidget(), useGroupBox ? static_cast<QWidget*>(box) : group);
    }

    void theGroupBoxHasTheTitleAndFillsTheGroup()
    {
        QWidget form;
        Group* group = create(&form, threeGrades());
        const auto* box = group->findChild<QGroupBox*>();
        QVERIFY(box);
        QCOMPARE(box->title(), QString("&Steel grade"));
        QVERIFY(qobject_cast<QVBoxLayout*>(group->layout()));
        QCOMPARE(group->layout()->contentsMargins(), QMargins());
        QCOMPARE(group->layout()->count(), 1);
        QCOMPARE(group->layout()->itemAt(0)->widget(), box);
    }

    void withoutALayouterTheButtonsStandInAColumn()
    {
        QWidget form;
        const Group* group = create(&form, threeGrades());
        const QLayout* layout = group->findChild<QGroupBox*>()->layout();
        QVERIFY(qobject_cast<const QVBoxLayout*>(layout));
        QCOMPARE(namesIn(layout), QStringList({"S355", "S235", "S275", "no button"}));
    }

    void withoutALayouterAndAGroupBoxTheButtonsAreNotLaidOut()
    {
        QWidget form;
        for (int i = 0; i < 3; ++i)
            expectAssert("layout");
        Group* group = create(&form, threeGrades(), nullptr, false);
        QVERIFY(!group->layout());
        QCOMPARE(group->findChildren<QRadioButton*>().size(), 3);
        group->setSelected(275);
        QCOMPARE(group->getSelectedValue(), boost::any(275));
    }

    void theButtonGroupIsMadeIfAskedFor()
    {
        for (const bool useButtonGroup : {true, false}) {
            QWidget form;
            const Group* group = create(&form, threeGrades(), nullptr, true, useButtonGroup);
            const auto* buttonGroup = group->findChild<QButtonGroup*>();
            QCOMPARE(buttonGroup != nullptr, useButtonGroup);
            for (const auto* button : group->findChildren<QRadioButton*>())
                QCOMPARE(button->group(), buttonGroup);
        }
    }

    void aValueIsSelected()
    {
        QWidget form;
        Group* group = create(&form, threeGrades());
        for (const auto& entry : threeGrades()) {
            group->setSelected(entry.second);
            QCOMPARE(group->getSelectedValue(), entry.second);
            QVERIFY(buttonOf(*group, entry.first)->isChecked());
        }
        form.show();
        clickOn(buttonOf(*group, "S235"));
        QCOMPARE(group->getSelectedValue(), boost::any(235));
    }

    void withoutACheckedButtonTheFirstValueStands()
    {
        QWidget form;
        const Group* group = create(&form, threeGrades());
        expectAssert("false", {}, noButton);
        QCOMPARE(group->getSelectedValue(), boost::any(355));
    }

    void anUnknownValueIsReported_data()
    {
        QTest::addColumn<boost::any>("value");
        row("not in the list", boost::any(1));
        row("larger than all", boost::any(1000));
        row("of another type", boost::any(std::string("S235")));
        row("empty", boost::any());
    }

    void anUnknownValueIsReported()
    {
        QFETCH(boost::any, value);
        QWidget form;
        Group* group = create(&form, threeGrades());
        group->setSelected(275);
        expectAssert("it != m_value2button.end()", {}, notFound);
        group->setSelected(value);
        QCOMPARE(group->getSelectedValue(), boost::any(275));
        expectAssert("it != m_value2button.end()", {}, notFound);
        group->setValueEnabled(value, false);
        QCOMPARE(enabledIn(*group).size(), 3);
    }

    void valuesAreEnabled()
    {
        QWidget form;
        Group* group = create(&form, threeGrades());
        group->setValueEnabled(235, false);
        QCOMPARE(enabledIn(*group), QStringList({"S355", "S275"}));
        group->setValueEnabled(235, true);
        QCOMPARE(enabledIn(*group).size(), 3);
        group->setValuesEnabled(false);
        QCOMPARE(enabledIn(*group), QStringList());
        group->setValuesEnabled(true);
        QCOMPARE(enabledIn(*group).size(), 3);
    }

    void ofEquivalentValuesTheLastIsFound()
    {
        QWidget form;
        Group* group = create(&form, {{"first", 1}, {"second", 1}, {"other", 2}});
        QCOMPARE(group->findChildren<QRadioButton*>().size(), 3);
        group->setSelected(1);
        QVERIFY(buttonOf(*group, "second")->isChecked());
        group->setValueEnabled(1, false);
        QCOMPARE(enabledIn(*group), QStringList({"first", "other"}));
        // It goes by value, so the first one stays enabled here, too.
        group->setValuesEnabled(false);
        QCOMPARE(enabledIn(*group), QStringList{"first"});
        buttonOf(*group, "first")->setChecked(true);
        QCOMPARE(group->getSelectedValue(), boost::any(1));
    }

    void anEmptyValueIsAnEntryLikeOthers()
    {
        QWidget form;
        Group* group = create(&form, {{"one", 1}, {"none", boost::any()}});
        group->setSelected(1);
        group->setSelected(boost::any());
        QVERIFY(buttonOf(*group, "none")->isChecked());
        QVERIFY(group->getSelectedValue().empty());
    }

    void badArgumentsAreReportedInOrder()
    {
        expectAssert("parent");
        expectAssert("!values.empty()");
        expectAssert("equalFn");
        expectAssert("lessFn");
        expectAssert("!m_values.empty()");
        const QScopedPointer<Group> group(
            Group::create("Grade", {}, nullptr, {}, nullptr, nullptr, true, true));
        QVERIFY(group->isWindow());
        expectAssert("false", {}, noButton);
        QVERIFY(group->getSelectedValue().empty());
        expectAssert("it != m_value2button.end()", {}, notFound);
        group->setSelected(1);
        group->setValuesEnabled(true);
    }

    // The buttons are children of the container that the caller's layouter fills.
    void theContainerOfTheButtonsMayGoFirst()
    {
        QWidget form;
        auto container = std::make_unique<QWidget>();
        VBoxLayouter layouter;
        layouter.onCreate(container.get());
        Group* group = create(&form, threeGrades(), &layouter, false);
        layouter.onFinish();
        QCOMPARE(container->findChildren<QRadioButton*>().size(), 3);
        group->setSelected(235);
        delete buttonOf(*container, "S235");
        expectAssert("it != m_value2button.end()", {}, notFound);
        group->setSelected(235);
        group->setSelected(275);
        QCOMPARE(group->getSelectedValue(), boost::any(275));
        container.reset();
        expectAssert("false", {}, noButton);
        QCOMPARE(group->getSelectedValue(), boost::any(355));
        expectAssert("it != m_value2button.end()", {}, notFound);
        group->setSelected(275);
        group->setValuesEnabled(true);
    }

    void theGroupMayGoBeforeTheContainerOfItsButtons()
    {
        QWidget container;
        VBoxLayouter layouter;
        layouter.onCreate(&container);
        auto form = std::make_unique<QWidget>();
        create(form.get(), threeGrades(), &layouter, false);
        form.reset();
        container.show();
        clickOn(buttonOf(container, "S235"));
        QVERIFY(buttonOf(container, "S235")->isChecked());
    }

    void whatThrowsLeavesNothingOfTheGroup_data()
    {
        QTest::addColumn<Create>("createIn");
        const NamedValueList mixed = {{"one", 1}, {"two", 2}, {"text", std::string("3")}};
        for (const bool useGroupBox : {true, false}) {
            const char* where = useGroupBox ? "in a group box" : "in a foreign container";
            QTest::addRow("an order, the buttons %s", where) << Create([=](QWidget* form) {
                VBoxLayouter layouter;
                if (!useGroupBox)
                    layouter.onCreate(form);
                Group::create("Grade", mixed, &vrn::any_equal<int>, &castAndCompare, form,
                    &layouter, useGroupBox, true);
            });
            QTest::addRow("a layouter, the buttons %s", where) << Create([=](QWidget* form) {
                ThrowingLayouter layouter;
                if (!useGroupBox)
                    layouter.onCreate(form);
                create(form, threeGrades(), &layouter, useGroupBox);
            });
        }
    }

    // The buttons made before are destroyed with the group or, if they stand elsewhere,
    // with their container.
    void whatThrowsLeavesNothingOfTheGroup()
    {
        QFETCH(Create, createIn);
        auto form = std::make_unique<QWidget>();
        QVERIFY_EXCEPTION_THROWN(createIn(form.get()), std::exception);
        QVERIFY(form->findChildren<Group*>().isEmpty());
        form.reset();
    }

    void tabEntersAtTheCheckedButton_data()
    {
        columns<bool, QString, QString, QString>(
            "useButtonGroup", "checked", "disabled", "entered");
        for (const bool useButtonGroup : {true, false}) {
            const char* how = useButtonGroup ? "in a button group" : "without one";
            const auto add = [&](const char* name, const char* checked, const char* disabled,
                                 const char* entered) {
                QTest::addRow("%s, %s", name, how)
                    << useButtonGroup << QString(checked) << QString(disabled) << QString(entered);
            };
            add("the first", "S355", "", "S355");
            add("one in the middle", "S235", "", "S235");
            add("the last", "S275", "", "S275");
            add("a disabled one is passed by", "S275", "S275", "S355");
            add("none is checked", "", "", "S355");
            add("none is checked and the first is disabled", "", "S355", "S235");
        }
    }

    void tabEntersAtTheCheckedButton()
    {
        QFETCH(bool, useButtonGroup);
        QFETCH(QString, checked);
        QFETCH(QString, disabled);
        QWidget form;
        auto* before = new QPushButton(&form);
        Group* group = create(&form, threeGrades(), nullptr, true, useButtonGroup);
        auto* after = new QPushButton(&form);
        if (!checked.isEmpty())
            buttonOf(*group, checked)->setChecked(true);
        if (!disabled.isEmpty())
            buttonOf(*group, disabled)->setEnabled(false);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        before->setFocus();
        QTest::keyClick(before, Qt::Key_Tab);
        QTEST(focusedIn(*group), "entered");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY(after->hasFocus());
    }

    void tabFindsTheButtonThatIsCheckedNow()
    {
        QWidget form;
        auto* before = new QPushButton(&form);
        Group* group = create(&form, threeGrades());
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        for (const char* name : {"S235", "S275", "S355"}) {
            before->setFocus();
            buttonOf(*group, name)->setChecked(true);
            QTest::keyClick(before, Qt::Key_Tab);
            QCOMPARE(focusedIn(*group), QString(name));
            // A button with the focus stays the one that Tab leaves.
            group->setSelected(355);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
            QVERIFY(before->hasFocus());
            QTest::keyClick(before, Qt::Key_Tab);
            QCOMPARE(focusedIn(*group), QString("S355"));
        }
    }

    void aButtonThatTabMustNotReachIsLeftAlone_data()
    {
        QTest::addColumn<bool>("isBefore");
        QTest::addColumn<int>("policy");
        row("from the start", true, int(Qt::ClickFocus));
        row("without any focus from the start", true, int(Qt::NoFocus));
        row("later", false, int(Qt::ClickFocus));
        row("without any focus later", false, int(Qt::NoFocus));
    }

    void aButtonThatTabMustNotReachIsLeftAlone()
    {
        QFETCH(bool, isBefore);
        QFETCH(int, policy);
        const auto restricted = static_cast<Qt::FocusPolicy>(policy);
        struct Restricting : public VBoxLayouter
        {
            void onAdd(QWidget* widget) override
            {
                if (qobject_cast<QRadioButton*>(widget)->text() == "S275")
                    widget->setFocusPolicy(policy);
                VBoxLayouter::onAdd(widget);
            }
            Qt::FocusPolicy policy = Qt::StrongFocus;
        } layouter;
        if (isBefore)
            layouter.policy = restricted;
        QWidget form;
        Group* group = create(&form, threeGrades(), &layouter);
        if (!isBefore)
            buttonOf(*group, "S275")->setFocusPolicy(restricted);
        for (const char* name : {"S235", "S275", "S355"}) {
            buttonOf(*group, name)->setChecked(true);
            QCOMPARE(buttonOf(*group, "S275")->focusPolicy(), restricted);
        }
        QVERIFY(buttonOf(*group, "S355")->focusPolicy() & Qt::TabFocus);
        QVERIFY(!(buttonOf(*group, "S235")->focusPolicy() & Qt::TabFocus));
        // It is checked, so Tab cannot enter there.
        buttonOf(*group, "S275")->setChecked(true);
        QVERIFY(buttonOf(*group, "S355")->focusPolicy() & Qt::TabFocus);
        QVERIFY(buttonOf(*group, "S235")->focusPolicy() & Qt::TabFocus);
    }

    void aButtonForTabAloneGetsItBack()
    {
        struct TabOnly : public VBoxLayouter
        {
            void onAdd(QWidget* widget) override
            {
                widget->setFocusPolicy(Qt::TabFocus);
                VBoxLayouter::onAdd(widget);
            }
        } layouter;
        QWidget form;
        Group* group = create(&form, threeGrades(), &layouter);
        buttonOf(*group, "S235")->setChecked(true);
        QCOMPARE(buttonOf(*group, "S275")->focusPolicy(), Qt::NoFocus);
        buttonOf(*group, "S275")->setChecked(true);
        QCOMPARE(buttonOf(*group, "S275")->focusPolicy(), Qt::TabFocus);
        QCOMPARE(buttonOf(*group, "S235")->focusPolicy(), Qt::NoFocus);
    }

    void aButtonMayGoWithTheFocus()
    {
        QWidget form;
        Group* group = create(&form, threeGrades());
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        buttonOf(*group, "S235")->setFocus();
        delete buttonOf(*group, "S235");
        buttonOf(*group, "S275")->setChecked(true);
        QVERIFY(!(buttonOf(*group, "S355")->focusPolicy() & Qt::TabFocus));
        QVERIFY(buttonOf(*group, "S275")->focusPolicy() & Qt::TabFocus);
    }

    void theTitleIsTheAccessibleName_data()
    {
        QTest::addColumn<bool>("useGroupBox");
        row("with a group box", true);
        row("also without a group box", false);
    }

    void theTitleIsTheAccessibleName()
    {
        QFETCH(bool, useGroupBox);
        QWidget form;
        VBoxLayouter layouter;
        if (!useGroupBox)
            layouter.onCreate(&form);
        Group* group = create(&form, threeGrades(), &layouter, useGroupBox);
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(group);
        QVERIFY(interface);
        QCOMPARE(interface->role(), QAccessible::Grouping);
        QCOMPARE(interface->text(QAccessible::Name), QString("Steel grade"));
        QCOMPARE(interface->text(QAccessible::Value), QString());
        interface = QAccessible::queryAccessibleInterface(buttonOf(form, "S235"));
        QCOMPARE(interface->text(QAccessible::Name), QString("S235"));
    }
};

VRN_TEST(TestSimpleRadioButtonGroup)
#include "tst_simple_radio_button_group.moc"
