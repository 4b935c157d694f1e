#include <vrn/qt/multi_edit_group_box.h>

#include "group_fixture.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QPointer>
#include <QSignalSpy>
#include <QVBoxLayout>

#include <functional>
#include <map>
#include <memory>

using namespace vrn::qt;
using vrn::test::clickOn;
using vrn::test::deleteDeferred;
using vrn::test::Loading;

namespace {

using Action = std::function<void(MultiEditGroupBox*)>;

// As a user does: a disabled box does not get the focus, and no key without it.
void pressSpace(MultiEditGroupBox* control)
{
    control->setFocus();
    if (control->window()->focusWidget() == control)
        QTest::keyClick(control, Qt::Key_Space);
}

// Each by its name in the table. An int and no value at all are no `bool`.
const std::map<QString, Action>& actions()
{
    static const std::map<QString, Action> all = {
        {"click", [](MultiEditGroupBox* c) { clickOn(c); }},
        {"space", &pressSpace},
        {"setChecked(true)", [](MultiEditGroupBox* c) { c->setChecked(true); }},
        {"setChecked(false)", [](MultiEditGroupBox* c) { c->setChecked(false); }},
        {"setValue(true)", [](MultiEditGroupBox* c) { c->setValue(true); }},
        {"setValue(false)", [](MultiEditGroupBox* c) { c->setValue(false); }},
        {"setValue(1)", [](MultiEditGroupBox* c) { c->setValue(1); }},
        {"setValue()", [](MultiEditGroupBox* c) { c->setValue(boost::any()); }},
        {"readValue(true)", [](MultiEditGroupBox* c) { c->readValue(true); }},
        {"readValue(false)", [](MultiEditGroupBox* c) { c->readValue(false); }},
        {"readValue(1)", [](MultiEditGroupBox* c) { c->readValue(1); }},
        {"readValue()", [](MultiEditGroupBox* c) { c->readValue(boost::any()); }},
        {"reset", [](MultiEditGroupBox* c) { c->reset(); }},
        {"forceVaries", [](MultiEditGroupBox* c) { c->forceVaries(); }},
    };
    return all;
}

// Alt and the letter of the title. It takes an active window, so it is not among
// the actions.
const QString shortcut = "shortcut";

// Brings a new control into a state, without a signal.
void bringInto(MultiEditGroupBox* control, const QString& state)
{
    control->suspendValueChangedSignal();
    const bool checked = state.contains(" checked");
    if (state.startsWith("fresh"))
        control->setChecked(checked);
    else
        control->readValue(checked);
    if (state.startsWith("varies") || state.endsWith("disabled"))
        control->forceVaries();
    if (state.startsWith("common") && state.endsWith("disabled"))
        control->setValue(checked);
    control->resumeValueChangedSignal();
}

// The state as a row names it. Whether the control is fresh shows by a read
// only, so the control is not of use any more.
QString endState(MultiEditGroupBox* control)
{
    const bool checked = control->isChecked();
    const QString shown = QString(checked ? " checked" : " unchecked")
        + (control->isEnabled() ? "" : " disabled");
    if (control->getValue() != checked)
        return "has another value than it shows";
    if (control->dataVaries())
        return control->getCurrentValue().empty() ? "varies" + shown : "has a value";
    if (!(control->getCurrentValue() == boost::any(checked)))
        return "has another current value than it shows";
    control->readValue(!checked);
    return (control->dataVaries() ? "common" : "fresh") + shown;
}

} // namespace

Q_DECLARE_METATYPE(Action)

class TestMultiEditGroupBox : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_form = std::make_unique<QWidget>();
        m_control = createIn(m_form.get());
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
        QCOMPARE(endState(m_control), QString("fresh unchecked"));
    }

    void aMissingParentIsReported()
    {
        expectAssert("parent");
        const QScopedPointer<MultiEditGroupBox> control(MultiEditGroupBox::create("x", nullptr));
        QVERIFY(control->isWindow());
    }

    void signalsAndStates_data()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("signalCount");
        QTest::addColumn<QString>("end");
        const auto row = [](const char* start, const char* action, int count, const char* end) {
            QTest::addRow("%s: %s", start, action) << start << action << count << end;
        };
        row("fresh unchecked", "click", 1, "fresh checked");
        row("fresh unchecked", "space", 1, "fresh checked");
        row("fresh unchecked", "setChecked(true)", 0, "fresh checked");
        row("fresh unchecked", "setChecked(false)", 0, "fresh unchecked");
        row("fresh unchecked", "setValue(true)", 1, "fresh checked");
        row("fresh unchecked", "setValue(false)", 1, "fresh unchecked");
        row("fresh unchecked", "setValue(1)", 0, "fresh unchecked");
        row("fresh unchecked", "setValue()", 0, "fresh unchecked");
        row("fresh unchecked", "readValue(true)", 0, "common checked");
        row("fresh unchecked", "readValue(false)", 0, "common unchecked");
        row("fresh unchecked", "readValue(1)", 0, "fresh unchecked");
        row("fresh unchecked", "readValue()", 0, "fresh unchecked");
        row("fresh unchecked", "reset", 0, "fresh unchecked");
        row("fresh unchecked", "forceVaries", 0, "varies unchecked disabled");

        row("fresh checked", "click", 1, "fresh unchecked");
        row("fresh checked", "space", 1, "fresh unchecked");
        row("fresh checked", "setChecked(true)", 0, "fresh checked");
        row("fresh checked", "setChecked(false)", 0, "fresh unchecked");
        row("fresh checked", "setValue(true)", 1, "fresh checked");
        row("fresh checked", "setValue(false)", 1, "fresh unchecked");
        row("fresh checked", "setValue(1)", 0, "fresh checked");
        row("fresh checked", "setValue()", 0, "fresh checked");
        row("fresh checked", "readValue(true)", 0, "common checked");
        row("fresh checked", "readValue(false)", 0, "common unchecked");
        row("fresh checked", "readValue(1)", 0, "fresh checked");
        row("fresh checked", "readValue()", 0, "fresh checked");
        row("fresh checked", "reset", 0, "fresh unchecked");
        row("fresh checked", "forceVaries", 0, "varies checked disabled");

        row("common unchecked", "click", 1, "common checked");
        row("common unchecked", "space", 1, "common checked");
        row("common unchecked", "setChecked(true)", 0, "common checked");
        row("common unchecked", "setChecked(false)", 0, "common unchecked");
        row("common unchecked", "setValue(true)", 1, "common checked");
        row("common unchecked", "setValue(false)", 1, "common unchecked");
        row("common unchecked", "setValue(1)", 0, "common unchecked");
        row("common unchecked", "setValue()", 0, "common unchecked");
        row("common unchecked", "readValue(true)", 0, "varies unchecked disabled");
        row("common unchecked", "readValue(false)", 0, "common unchecked");
        row("common unchecked", "readValue(1)", 0, "common unchecked");
        row("common unchecked", "readValue()", 0, "common unchecked");
        row("common unchecked", "reset", 0, "fresh unchecked");
        row("common unchecked", "forceVaries", 0, "varies unchecked disabled");

        row("common checked", "click", 1, "common unchecked");
        row("common checked", "space", 1, "common unchecked");
        row("common checked", "setChecked(true)", 0, "common checked");
        row("common checked", "setChecked(false)", 0, "common unchecked");
        row("common checked", "setValue(true)", 1, "common checked");
        row("common checked", "setValue(false)", 1, "common unchecked");
        row("common checked", "setValue(1)", 0, "common checked");
        row("common checked", "setValue()", 0, "common checked");
        row("common checked", "readValue(true)", 0, "common checked");
        row("common checked", "readValue(false)", 0, "varies checked disabled");
        row("common checked", "readValue(1)", 0, "common checked");
        row("common checked", "readValue()", 0, "common checked");
        row("common checked", "reset", 0, "fresh unchecked");
        row("common checked", "forceVaries", 0, "varies checked disabled");

        row("varies unchecked disabled", "click", 0, "varies unchecked disabled");
        row("varies unchecked disabled", "space", 0, "varies unchecked disabled");
        row("varies unchecked disabled", "setChecked(true)", 0, "varies checked disabled");
        row("varies unchecked disabled", "setChecked(false)", 0, "varies unchecked disabled");
        row("varies unchecked disabled", "setValue(true)", 1, "common checked disabled");
        row("varies unchecked disabled", "setValue(false)", 1, "common unchecked disabled");
        row("varies unchecked disabled", "setValue(1)", 0, "varies unchecked disabled");
        row("varies unchecked disabled", "setValue()", 0, "varies unchecked disabled");
        row("varies unchecked disabled", "readValue(true)", 0, "varies unchecked disabled");
        row("varies unchecked disabled", "readValue(false)", 0, "varies unchecked disabled");
        row("varies unchecked disabled", "readValue(1)", 0, "varies unchecked disabled");
        row("varies unchecked disabled", "readValue()", 0, "varies unchecked disabled");
        row("varies unchecked disabled", "reset", 0, "fresh unchecked");
        row("varies unchecked disabled", "forceVaries", 0, "varies unchecked disabled");

        row("varies checked disabled", "click", 0, "varies checked disabled");
        row("varies checked disabled", "space", 0, "varies checked disabled");
        row("varies checked disabled", "setChecked(true)", 0, "varies checked disabled");
        row("varies checked disabled", "setChecked(false)", 0, "varies unchecked disabled");
        row("varies checked disabled", "setValue(true)", 1, "common checked disabled");
        row("varies checked disabled", "setValue(false)", 1, "common unchecked disabled");
        row("varies checked disabled", "setValue(1)", 0, "varies checked disabled");
        row("varies checked disabled", "setValue()", 0, "varies checked disabled");
        row("varies checked disabled", "readValue(true)", 0, "varies checked disabled");
        row("varies checked disabled", "readValue(false)", 0, "varies checked disabled");
        row("varies checked disabled", "readValue(1)", 0, "varies checked disabled");
        row("varies checked disabled", "readValue()", 0, "varies checked disabled");
        row("varies checked disabled", "reset", 0, "fresh unchecked");
        row("varies checked disabled", "forceVaries", 0, "varies checked disabled");

        row("common unchecked disabled", "click", 0, "common unchecked disabled");
        row("common unchecked disabled", "space", 0, "common unchecked disabled");
        row("common unchecked disabled", "setChecked(true)", 0, "common checked disabled");
        row("common unchecked disabled", "setChecked(false)", 0, "common unchecked disabled");
        row("common unchecked disabled", "setValue(true)", 1, "common checked disabled");
        row("common unchecked disabled", "setValue(false)", 1, "common unchecked disabled");
        row("common unchecked disabled", "setValue(1)", 0, "common unchecked disabled");
        row("common unchecked disabled", "setValue()", 0, "common unchecked disabled");
        row("common unchecked disabled", "readValue(true)", 0, "varies unchecked disabled");
        row("common unchecked disabled", "readValue(false)", 0, "common unchecked disabled");
        row("common unchecked disabled", "readValue(1)", 0, "common unchecked disabled");
        row("common unchecked disabled", "readValue()", 0, "common unchecked disabled");
        row("common unchecked disabled", "reset", 0, "fresh unchecked");
        row("common unchecked disabled", "forceVaries", 0, "varies unchecked disabled");

        row("common checked disabled", "click", 0, "common checked disabled");
        row("common checked disabled", "space", 0, "common checked disabled");
        row("common checked disabled", "setChecked(true)", 0, "common checked disabled");
        row("common checked disabled", "setChecked(false)", 0, "common unchecked disabled");
        row("common checked disabled", "setValue(true)", 1, "common checked disabled");
        row("common checked disabled", "setValue(false)", 1, "common unchecked disabled");
        row("common checked disabled", "setValue(1)", 0, "common checked disabled");
        row("common checked disabled", "setValue()", 0, "common checked disabled");
        row("common checked disabled", "readValue(true)", 0, "common checked disabled");
        row("common checked disabled", "readValue(false)", 0, "varies checked disabled");
        row("common checked disabled", "readValue(1)", 0, "common checked disabled");
        row("common checked disabled", "readValue()", 0, "common checked disabled");
        row("common checked disabled", "reset", 0, "fresh unchecked");
        row("common checked disabled", "forceVaries", 0, "varies checked disabled");
    }

    void signalsAndStates()
    {
        QFETCH(int, signalCount);
        perform(signalCount);
    }

    void aSuspendedControlIsSilent_data() { signalsAndStates_data(); }
    void aSuspendedControlIsSilent()
    {
        m_beforeAction = [](MultiEditGroupBox* c) { c->suspendValueChangedSignal(); };
        // Nothing is made up for.
        m_afterAction = [](MultiEditGroupBox* c) { c->resumeValueChangedSignal(); };
        perform(0);
    }

    void loadingMakesNoDifference_data() { signalsAndStates_data(); }
    void loadingMakesNoDifference()
    {
        QFETCH(int, signalCount);
        m_beforeAction = [](MultiEditGroupBox* c) { Loading::set(*c, true); };
        m_afterAction = [](MultiEditGroupBox* c) { Loading::set(*c, false); };
        perform(signalCount);
    }

    void aSelectionIsRead_data()
    {
        QTest::addColumn<QList<bool>>("values");
        QTest::addColumn<QString>("end");
        QTest::newRow("one checked object") << QList<bool>{true} << "common checked";
        QTest::newRow("two checked objects") << QList<bool>{true, true} << "common checked";
        QTest::newRow("two unchecked objects") << QList<bool>{false, false} << "common unchecked";
        QTest::newRow("they differ") << QList<bool>{true, false} << "varies checked disabled";
        QTest::newRow("the other way round")
            << QList<bool>{false, true} << "varies unchecked disabled";
        QTest::newRow("once they differ, a third changes nothing")
            << QList<bool>{true, false, true} << "varies checked disabled";
    }

    void aSelectionIsRead()
    {
        QFETCH(QList<bool>, values);
        m_control->reset();
        for (const bool value : values)
            m_control->readValue(value);
        QTEST(endState(m_control), "end");
    }

    void theParentMayGoAtAnyStep()
    {
        const QStringList steps = {"readValue(true)", "click", "readValue(true)", "space",
            "setValue(true)", "reset", "setChecked(true)", "readValue(false)", "space",
            "forceVaries", "setValue()", "setValue(false)", "readValue(1)", "reset"};
        for (int done = 0; done <= steps.size(); ++done) {
            auto* parent = new QWidget(m_form.get());
            const QPointer<MultiEditGroupBox> control(createIn(parent));
            parent->show();
            for (int i = 0; i < done; ++i) {
                if (steps[i] == "setValue()")
                    expectAssert("checked");
                actions().at(steps[i])(control);
            }
            delete parent;
            QVERIFY(!control);
        }
    }

    void aSlotMayDestroyTheControl_data()
    {
        QTest::addColumn<Action>("destroy");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("action");
        QTest::addColumn<bool>("byValueChanged");
        const std::map<const char*, Action> ways = {
            {"later", [](MultiEditGroupBox* c) { c->deleteLater(); }},
            {"at once", [](MultiEditGroupBox* c) { delete c; }},
            {"its parent, later", [](MultiEditGroupBox* c) { c->parentWidget()->deleteLater(); }},
            {"its parent, at once", [](MultiEditGroupBox* c) { delete c->parentWidget(); }},
        };
        for (const auto& way : ways) {
            for (const char* start :
                {"fresh unchecked", "common checked", "varies checked disabled"}) {
                for (const auto& action : actions())
                    QTest::addRow(
                        "%s, valueChanged, %s: %s", way.first, start, qPrintable(action.first))
                        << way.second << start << action.first << true;
            }
        }
        // Qt itself goes on after toggled(), so it has to be later there.
        for (const auto& action : actions())
            QTest::addRow("later, toggled, common checked: %s", qPrintable(action.first))
                << ways.at("later") << "common checked" << action.first << false;
        // So does it with the focus after the shortcut of the title.
        for (const char* way : {"later", "its parent, later"}) {
            for (const char* start : {"fresh unchecked", "common checked"}) {
                for (const bool byValueChanged : {true, false})
                    QTest::addRow("%s, %s, %s: shortcut", way,
                        byValueChanged ? "valueChanged" : "toggled", start)
                        << ways.at(way) << start << shortcut << byValueChanged;
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
        QPointer<MultiEditGroupBox> control = createIn(parent);
        parent->show();
        bringInto(control, start);
        bool isDestroyed = false;
        const auto onSignal = [&, control] {
            if (!isDestroyed)
                destroy(control);
            isDestroyed = true;
        };
        if (byValueChanged)
            connect(control, &MultiEditGroupBox::valueChanged, this, onSignal);
        else
            connect(control, &QGroupBox::toggled, this, onSignal);
        if (action == "setValue()" || action == "setValue(1)")
            expectAssert("checked");
        if (action == shortcut) {
            // That of the other control would make it ambiguous.
            m_control->setTitle(QString());
            m_form->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
            QTest::keyClick(m_form.get(), Qt::Key_F, Qt::AltModifier);
            QVERIFY(isDestroyed);
        } else {
            actions().at(action)(control);
        }
        deleteDeferred();
        QCOMPARE(control.isNull(), isDestroyed);
    }

private:
    static MultiEditGroupBox* createIn(QWidget* parent)
    {
        auto* rows = new QVBoxLayout(parent);
        auto* control = MultiEditGroupBox::create("&Fire protection", parent);
        new QVBoxLayout(control);
        rows->addWidget(control);
        return control;
    }

    // Performs the action of the row and compares with what the row says.
    void perform(int signalCount)
    {
        QFETCH(QString, start);
        QFETCH(QString, action);
        bringInto(m_control, start);
        QSignalSpy valueChanged(m_control, &MultiEditGroupBox::valueChanged);
        if (action == "setValue()" || action == "setValue(1)")
            expectAssert("checked");
        if (m_beforeAction)
            m_beforeAction(m_control);
        actions().at(action)(m_control);
        if (m_afterAction)
            m_afterAction(m_control);
        m_beforeAction = {};
        m_afterAction = {};
        QCOMPARE(valueChanged.count(), signalCount);
        QTEST(endState(m_control), "end");
    }

    std::unique_ptr<QWidget> m_form;
    MultiEditGroupBox* m_control = nullptr;
    Action m_beforeAction;
    Action m_afterAction;
};

VRN_TEST(TestMultiEditGroupBox)
#include "tst_multi_edit_group_box.moc"
