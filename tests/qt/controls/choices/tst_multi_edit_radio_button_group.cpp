#include <vrn/base/any_predicates.h>
#include <vrn/qt/layouters.h>
#include <vrn/qt/multi_edit_radio_button_group.h>

#include "group_fixture.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QButtonGroup>
#include <QPointer>
#include <QRadioButton>
#include <QSignalSpy>
#include <QVBoxLayout>

#include <functional>
#include <map>
#include <memory>

using namespace vrn::qt;
using vrn::test::clickOn;
using vrn::test::deleteDeferred;

namespace {

using Group = MultiEditRadioButtonGroup;
using Action = std::function<void(Group*)>;

const std::string noButton = "no button checked - returning default value";
const std::string notFound = "value key not found";

// Values whose order is not that of the buttons.
NamedValueList threeGrades()
{
    return {{"S355", 355}, {"S235", 235}, {"S275", 275}};
}

QRadioButton* buttonOf(const QWidget* group, const QString& name)
{
    for (auto* button : group->findChildren<QRadioButton*>()) {
        if (button->text() == name)
            return button;
    }
    return nullptr;
}

QStringList checkedIn(const QWidget* widget)
{
    QStringList names;
    for (const auto* button : widget->findChildren<QRadioButton*>()) {
        if (button->isChecked())
            names << button->text();
    }
    return names;
}

void pressSpaceOn(QRadioButton* button)
{
    QTest::keyClick(button, Qt::Key_Space);
}

const std::map<QString, Action>& actions()
{
    static const std::map<QString, Action> all = {
        {"click S355", [](Group* g) { clickOn(buttonOf(g, "S355")); }},
        {"click S235", [](Group* g) { clickOn(buttonOf(g, "S235")); }},
        {"space S355", [](Group* g) { pressSpaceOn(buttonOf(g, "S355")); }},
        {"space S235", [](Group* g) { pressSpaceOn(buttonOf(g, "S235")); }},
        {"setSelected(235)", [](Group* g) { g->setSelected(235); }},
        {"setSelected(unknown)", [](Group* g) { g->setSelected(1); }},
        {"setValue(355)", [](Group* g) { g->setValue(355); }},
        {"setValue(235)", [](Group* g) { g->setValue(235); }},
        {"setValue(unknown)", [](Group* g) { g->setValue(1); }},
        {"setValue()", [](Group* g) { g->setValue(boost::any()); }},
        {"setValue(text)", [](Group* g) { g->setValue(std::string("S235")); }},
        {"readValue(355)", [](Group* g) { g->readValue(355); }},
        {"readValue(235)", [](Group* g) { g->readValue(235); }},
        {"readValue(unknown)", [](Group* g) { g->readValue(1); }},
        {"readValue()", [](Group* g) { g->readValue(boost::any()); }},
        {"readValue(text)", [](Group* g) { g->readValue(std::string("S235")); }},
        {"reset", [](Group* g) { g->reset(); }},
        {"forceVaries", [](Group* g) { g->forceVaries(); }},
    };
    return all;
}

// From the checked button to the next. It takes the focus to do this, so it is
// not among the actions.
const QString arrowKey = "arrow key";

// Whether the action looks for the button of a value that none has. A read does
// so only if it is the first.
bool looksForUnknown(const QString& start, const QString& action)
{
    const bool isUnknown = action.endsWith("(unknown)") || action.endsWith("()")
        || action.endsWith("(text)");
    return isUnknown && (!action.startsWith("readValue") || start.startsWith("fresh"));
}

// Brings a new group into a state, as in "common S235".
void bringInto(Group* group, const QString& state)
{
    if (state == "varies") {
        group->forceVaries();
    } else if (state.startsWith("common")) {
        group->readValue(state.endsWith("355") ? 355 : 235);
    } else {
        group->setSelected(state.endsWith("355") ? 355 : 235);
    }
}

} // namespace

Q_DECLARE_METATYPE(Action)

class TestMultiEditRadioButtonGroup : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_form = std::make_unique<QWidget>();
        m_group = createIn(m_form.get(), true, true);
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
        QCOMPARE(checkedIn(m_group), QStringList{"S355"});
        QCOMPARE(m_group->getValue(), boost::any(355));
        QCOMPARE(endState(m_group), QString("fresh S355"));
    }

    void signalsAndStates_data()
    {
        QTest::addColumn<bool>("useGroupBox");
        QTest::addColumn<bool>("useButtonGroup");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("signalCount");
        QTest::addColumn<QString>("end");
        const auto row = [](const char* start, const char* action, int count, const char* end) {
            QTest::addRow("%s: %s", start, action)
                << true << true << start << action << count << end;
            QTest::addRow("without a button group, %s: %s", start, action)
                << true << false << start << action << count << end;
            QTest::addRow("without a group box, %s: %s", start, action)
                << false << true << start << action << count << end;
            QTest::addRow("without either, %s: %s", start, action)
                << false << false << start << action << count << end;
        };
        row("fresh S355", "click S355", 1, "fresh S355");
        row("fresh S355", "click S235", 1, "fresh S235");
        row("fresh S355", "space S355", 1, "fresh S355");
        row("fresh S355", "space S235", 1, "fresh S235");
        row("fresh S355", "setSelected(235)", 0, "fresh S235");
        row("fresh S355", "setSelected(unknown)", 0, "fresh S355");
        row("fresh S355", "setValue(355)", 1, "fresh S355");
        row("fresh S355", "setValue(235)", 1, "fresh S235");
        row("fresh S355", "setValue(unknown)", 1, "fresh S355");
        row("fresh S355", "setValue()", 1, "fresh S355");
        row("fresh S355", "setValue(text)", 1, "fresh S355");
        row("fresh S355", "readValue(355)", 1, "common S355");
        row("fresh S355", "readValue(235)", 1, "common S235");
        row("fresh S355", "readValue(unknown)", 1, "common S355");
        row("fresh S355", "readValue()", 1, "common S355");
        row("fresh S355", "readValue(text)", 1, "common S355");
        row("fresh S355", "reset", 1, "fresh S355");
        row("fresh S355", "forceVaries", 0, "varies");

        row("fresh S235", "click S355", 1, "fresh S355");
        row("fresh S235", "click S235", 1, "fresh S235");
        row("fresh S235", "space S355", 1, "fresh S355");
        row("fresh S235", "space S235", 1, "fresh S235");
        row("fresh S235", "setSelected(235)", 0, "fresh S235");
        row("fresh S235", "setSelected(unknown)", 0, "fresh S235");
        row("fresh S235", "setValue(355)", 1, "fresh S355");
        row("fresh S235", "setValue(235)", 1, "fresh S235");
        row("fresh S235", "setValue(unknown)", 1, "fresh S235");
        row("fresh S235", "setValue()", 1, "fresh S235");
        row("fresh S235", "setValue(text)", 1, "fresh S235");
        row("fresh S235", "readValue(355)", 1, "common S355");
        row("fresh S235", "readValue(235)", 1, "common S235");
        row("fresh S235", "readValue(unknown)", 1, "common S235");
        row("fresh S235", "readValue()", 1, "common S235");
        row("fresh S235", "readValue(text)", 1, "common S235");
        row("fresh S235", "reset", 1, "fresh S355");
        row("fresh S235", "forceVaries", 0, "varies");

        row("common S355", "click S355", 1, "common S355");
        row("common S355", "click S235", 1, "common S235");
        row("common S355", "space S355", 1, "common S355");
        row("common S355", "space S235", 1, "common S235");
        row("common S355", "setSelected(235)", 0, "common S235");
        row("common S355", "setSelected(unknown)", 0, "common S355");
        row("common S355", "setValue(355)", 1, "common S355");
        row("common S355", "setValue(235)", 1, "common S235");
        row("common S355", "setValue(unknown)", 1, "common S355");
        row("common S355", "setValue()", 1, "common S355");
        row("common S355", "setValue(text)", 1, "common S355");
        row("common S355", "readValue(355)", 0, "common S355");
        row("common S355", "readValue(235)", 1, "varies");
        row("common S355", "readValue(unknown)", 1, "varies");
        row("common S355", "readValue()", 1, "varies");
        row("common S355", "readValue(text)", 1, "varies");
        row("common S355", "reset", 1, "fresh S355");
        row("common S355", "forceVaries", 0, "varies");

        row("common S235", "click S355", 1, "common S355");
        row("common S235", "click S235", 1, "common S235");
        row("common S235", "space S355", 1, "common S355");
        row("common S235", "space S235", 1, "common S235");
        row("common S235", "setSelected(235)", 0, "common S235");
        row("common S235", "setSelected(unknown)", 0, "common S235");
        row("common S235", "setValue(355)", 1, "common S355");
        row("common S235", "setValue(235)", 1, "common S235");
        row("common S235", "setValue(unknown)", 1, "common S235");
        row("common S235", "setValue()", 1, "common S235");
        row("common S235", "setValue(text)", 1, "common S235");
        row("common S235", "readValue(355)", 1, "varies");
        row("common S235", "readValue(235)", 0, "common S235");
        row("common S235", "readValue(unknown)", 1, "varies");
        row("common S235", "readValue()", 1, "varies");
        row("common S235", "readValue(text)", 1, "varies");
        row("common S235", "reset", 1, "fresh S355");
        row("common S235", "forceVaries", 0, "varies");

        row("varies", "click S355", 1, "common S355");
        row("varies", "click S235", 1, "common S235");
        row("varies", "space S355", 1, "common S355");
        row("varies", "space S235", 1, "common S235");
        row("varies", "setSelected(235)", 0, "varies, but S235 is checked");
        row("varies", "setSelected(unknown)", 0, "varies");
        row("varies", "setValue(355)", 1, "common S355");
        row("varies", "setValue(235)", 1, "common S235");
        row("varies", "setValue(unknown)", 1, "common none");
        row("varies", "setValue()", 1, "common none");
        row("varies", "setValue(text)", 1, "common none");
        row("varies", "readValue(355)", 0, "varies");
        row("varies", "readValue(235)", 0, "varies");
        row("varies", "readValue(unknown)", 0, "varies");
        row("varies", "readValue()", 0, "varies");
        row("varies", "readValue(text)", 0, "varies");
        row("varies", "reset", 1, "fresh S355");
        row("varies", "forceVaries", 0, "varies");
    }

    void signalsAndStates()
    {
        QFETCH(bool, useGroupBox);
        QFETCH(bool, useButtonGroup);
        QFETCH(QString, start);
        QFETCH(QString, action);
        QFETCH(int, signalCount);
        QWidget form;
        Group* group = createIn(&form, useGroupBox, useButtonGroup);
        // The buttons stand in the form, as the page of an application has them.
        QWidget* container = useGroupBox ? static_cast<QWidget*>(group) : &form;
        form.show();
        bringInto(group, start);
        QSignalSpy valueChanged(group, &Group::valueChanged);
        if (looksForUnknown(start, action))
            expectAssert("it != m_value2button.end()", {}, notFound);
        if (action.startsWith("click"))
            clickOn(buttonOf(container, action.mid(6)));
        else if (action.startsWith("space"))
            pressSpaceOn(buttonOf(container, action.mid(6)));
        else
            actions().at(action)(group);
        QCOMPARE(valueChanged.count(), signalCount);
        QTEST(endState(group, container), "end");
    }

    // What stays behind is exclusive again, whatever was checked meanwhile.
    void aClickOnAGroupThatVariesLeavesOneButtonChecked_data()
    {
        QTest::addColumn<bool>("useButtonGroup");
        QTest::addColumn<QString>("button");
        for (const char* name : {"S355", "S235", "S275"}) {
            QTest::addRow("%s in a button group", name) << true << name;
            QTest::addRow("%s without one", name) << false << name;
        }
    }

    void aClickOnAGroupThatVariesLeavesOneButtonChecked()
    {
        QFETCH(bool, useButtonGroup);
        QFETCH(QString, button);
        QWidget form;
        Group* group = createIn(&form, true, useButtonGroup);
        form.show();
        group->readValue(235);
        group->readValue(275);
        QCOMPARE(checkedIn(group), QStringList());
        clickOn(buttonOf(group, button));
        QCOMPARE(checkedIn(group), QStringList{button});
        clickOn(buttonOf(group, "S275"));
        QCOMPARE(checkedIn(group), QStringList{"S275"});
    }

    void forcedToVaryTheButtonsKeepTheirExclusivity()
    {
        QButtonGroup* buttonGroup = buttonOf(m_group, "S235")->group();
        QVERIFY(buttonGroup);
        buttonGroup->setExclusive(false);
        buttonOf(m_group, "S235")->setAutoExclusive(false);
        QSignalSpy toggled(buttonOf(m_group, "S355"), &QRadioButton::toggled);
        m_group->forceVaries();
        QVERIFY(!buttonGroup->exclusive());
        QVERIFY(!buttonOf(m_group, "S235")->autoExclusive());
        QVERIFY(buttonOf(m_group, "S355")->autoExclusive());
        QCOMPARE(toggled.count(), 0);
        QVERIFY(!buttonOf(m_group, "S355")->signalsBlocked());

        m_group->setValue(355);
        QVERIFY(buttonOf(m_group, "S235")->autoExclusive());
        buttonOf(m_group, "S235")->setAutoExclusive(false);
        m_group->reset();
        QVERIFY(buttonOf(m_group, "S235")->autoExclusive());
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
            [&] { variedInSlot = m_group->dataVaries() && checkedIn(m_group).isEmpty(); });
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

    void anArrowKeyChecksTheNextButton()
    {
        m_form->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
        buttonOf(m_group, "S355")->setFocus();
        QSignalSpy valueChanged(m_group, &Group::valueChanged);
        QTest::keyClick(m_form->focusWidget(), Qt::Key_Down);
        QCOMPARE(checkedIn(m_group), QStringList{"S235"});
        QCOMPARE(valueChanged.count(), 1);
        QTest::keyClick(m_form->focusWidget(), Qt::Key_Down);
        QCOMPARE(m_group->getCurrentValue(), boost::any(275));
        QTest::keyClick(m_form->focusWidget(), Qt::Key_Up);
        QCOMPARE(m_group->getCurrentValue(), boost::any(235));
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
        QCOMPARE(checkedIn(group), QStringList{"S235"});
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
        QCOMPARE(checkedIn(group), QStringList());
        clickOn(buttonOf(group, "S275"));
        QCOMPARE(group->getCurrentValue(), boost::any(275));
    }

    // Without one, as after an unknown value, the first value stands for it.
    void withoutACheckedButtonReadsAreComparedWithTheFirstValue()
    {
        m_group->forceVaries();
        expectAssert("it != m_value2button.end()", {}, notFound);
        m_group->setValue(1);
        QSignalSpy valueChanged(m_group, &Group::valueChanged);
        expectAssert("false", {}, noButton);
        m_group->readValue(355);
        QVERIFY(!m_group->dataVaries());
        QCOMPARE(valueChanged.count(), 0);
        expectAssert("false", {}, noButton);
        m_group->readValue(235);
        QVERIFY(m_group->dataVaries());
        QCOMPARE(valueChanged.count(), 1);
    }

    void theParentMayGoAtAnyStep()
    {
        const QStringList steps = {"readValue(235)", "click S355", "readValue(355)", "space S235",
            "forceVaries", "click S355", "reset", "setSelected(235)", "readValue(235)",
            "readValue(355)", "setValue(unknown)", "reset", "setValue(235)", "forceVaries"};
        for (int done = 0; done <= steps.size(); ++done) {
            auto* parent = new QWidget(m_form.get());
            const QPointer<Group> group(createIn(parent, true, true));
            parent->show();
            for (int i = 0; i < done; ++i) {
                if (steps[i] == "setValue(unknown)")
                    expectAssert("it != m_value2button.end()", {}, notFound);
                actions().at(steps[i])(group);
            }
            delete parent;
            QVERIFY(!group);
        }
    }

    void aSlotMayDestroyTheControl_data()
    {
        QTest::addColumn<Action>("destroy");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("action");
        QTest::addColumn<bool>("byValueChanged");
        const std::map<const char*, Action> ways = {
            {"later", [](Group* g) { g->deleteLater(); }},
            {"at once", [](Group* g) { delete g; }},
            {"its parent, later", [](Group* g) { g->parentWidget()->deleteLater(); }},
            {"its parent, at once", [](Group* g) { delete g->parentWidget(); }},
        };
        for (const auto& way : ways) {
            for (const char* start : {"fresh S355", "common S355", "varies"}) {
                for (const auto& action : actions())
                    QTest::addRow(
                        "%s, valueChanged, %s: %s", way.first, start, qPrintable(action.first))
                        << way.second << start << action.first << true;
            }
        }
        // Of the button Qt's own code is inside, so it has to be later there.
        for (const auto& action : actions())
            QTest::addRow("later, toggled, common S355: %s", qPrintable(action.first))
                << ways.at("later") << "common S355" << action.first << false;
        // So is it after an arrow key, which goes on with the buttons after the click.
        for (const char* way : {"later", "its parent, later"}) {
            for (const char* start : {"fresh S355", "common S235"}) {
                for (const bool byValueChanged : {true, false})
                    QTest::addRow("%s, %s, %s: arrow key", way,
                        byValueChanged ? "valueChanged" : "toggled", start)
                        << ways.at(way) << start << arrowKey << byValueChanged;
            }
        }
    }

    void aSlotMayDestroyTheControl()
    {
        QFETCH(Action, destroy);
        QFETCH(QString, start);
        QFETCH(QString, action);
        QFETCH(bool, byValueChanged);
        auto* parent = new QWidget(m_form.get());
        QPointer<Group> group = createIn(parent, true, true);
        parent->show();
        bringInto(group, start);
        bool isDestroyed = false;
        const auto onSignal = [&, group] {
            if (!isDestroyed)
                destroy(group);
            isDestroyed = true;
        };
        if (byValueChanged)
            connect(group, &Group::valueChanged, this, onSignal);
        else
            connect(buttonOf(group, "S235"), &QRadioButton::toggled, this, onSignal);
        if (looksForUnknown(start, action))
            expectAssert("it != m_value2button.end()", {}, notFound);
        if (action == arrowKey) {
            m_form->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
            // The next is looked for by its place.
            parent->adjustSize();
            auto* checked = buttonOf(group, checkedIn(group).first());
            checked->setFocus();
            QTest::keyClick(checked, Qt::Key_Down);
            QVERIFY(isDestroyed);
        } else {
            actions().at(action)(group);
        }
        deleteDeferred();
        QCOMPARE(group.isNull(), isDestroyed);
    }

    // With the value read first and the selected one second.
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
    static Group* createIn(QWidget* form, bool useGroupBox, bool useButtonGroup)
    {
        VBoxLayouter layouter;
        if (!useGroupBox)
            layouter.onCreate(form);
        auto* group = Group::create("Steel grade", threeGrades(), &vrn::any_equal<int>,
            &vrn::any_less<int>, form, &layouter, useGroupBox, useButtonGroup);
        if (useGroupBox)
            (new QVBoxLayout(form))->addWidget(group);
        else
            layouter.onFinish();
        return group;
    }

    // The state as a row names it. Whether the group is fresh shows by a read
    // only, so the group is not of use any more.
    QString endState(Group* group, const QWidget* container = nullptr)
    {
        const QStringList checked = checkedIn(container ? container : group);
        if (checked.size() > 1)
            return "has several buttons checked";
        const QString name = checked.isEmpty() ? "none" : checked.first();
        if (group->dataVaries()) {
            if (!group->getCurrentValue().empty())
                return "varies, but has a value";
            return checked.isEmpty() ? "varies" : "varies, but " + name + " is checked";
        }
        boost::any value = 355;
        for (const auto& entry : threeGrades()) {
            if (entry.first == name)
                value = entry.second;
        }
        if (checked.isEmpty())
            expectAssert("false", {}, noButton);
        if (!(group->getCurrentValue() == value))
            return "has another value than it shows";
        if (checked.isEmpty())
            expectAssert("false", {}, noButton);
        group->readValue(value.empty() || name == "S275" ? 235 : 275);
        return (group->dataVaries() ? "common " : "fresh ") + name;
    }

    std::unique_ptr<QWidget> m_form;
    Group* m_group = nullptr;
};

VRN_TEST(TestMultiEditRadioButtonGroup)
#include "tst_multi_edit_radio_button_group.moc"
