#include "enum_box_fixture.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QSignalSpy>

#include <functional>
#include <memory>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Action = std::function<void(MultiEditEnumBox&)>;
using Equal = bool (*)(const boost::any&, const boost::any&);

constexpr Equal equalInts = &vrn::any_equal<int>;

int comparisons = 0;

bool countedEqual(const boost::any& a, const boost::any& b)
{
    ++comparisons;
    return vrn::any_equal<int>(a, b);
}

void toFresh(MultiEditEnumBox& box)
{
    box.reset();
}

void toCommon(MultiEditEnumBox& box)
{
    box.reset();
    box.readValue(275);
}

void toVaries(MultiEditEnumBox& box)
{
    toCommon(box);
    box.readValue(355);
}

// Whether the next value read is taken as the first one; reads it.
bool takesNextValue(MultiEditEnumBox& box)
{
    box.readValue(355);
    return !box.dataVaries() && box.getSelectedValue().type() == typeid(int)
        && boost::any_cast<int>(box.getSelectedValue()) == 355;
}

} // namespace

Q_DECLARE_METATYPE(Action)

class TestMultiEditEnumBox : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_form = std::make_unique<QWidget>();
        new QHBoxLayout(m_form.get());
    }

    void cleanup()
    {
        m_form.reset();
        TestObject::cleanup();
    }

    // --- construction

    void withoutAFunctionThereIsNoBox()
    {
        expectAssert("eqFn");
        QVERIFY(!MultiEditEnumBox::create(m_form.get(), "Steel", nullptr));
    }

    void aParentIsNotNeeded()
    {
        const std::unique_ptr<MultiEditEnumBox> box(
            MultiEditEnumBox::create(nullptr, "Steel", equalInts));
        box->setValues(steels());
        box->setEditable(true, strength());
        QVERIFY(!box->parentWidget());
        QVERIFY(!box->dataVaries());
        QCOMPARE(box->getCurrentValue(), boost::any(235));
    }

    void aNewBoxIsFresh()
    {
        MultiEditEnumBox* box = createFilled();
        QVERIFY(!box->dataVaries());
        QVERIFY(takesNextValue(*box));
    }

    // --- signals: action, state before and after

    void signalsOf_data()
    {
        QTest::addColumn<bool>("editable");
        QTest::addColumn<Action>("arrange");
        QTest::addColumn<Action>("act");
        QTest::addColumn<int>("changedDue");
        QTest::addColumn<int>("activatedDue");
        QTest::addColumn<bool>("variesAfter");
        QTest::addColumn<QString>("shownAfter");

        const QString various = getVariesString();
        const auto row = [](const char* name, bool editable, Action arrange, Action act,
                             int changed, int activated, bool varies, const QString& shown) {
            QTest::newRow(name) << editable << std::move(arrange) << std::move(act) << changed
                                << activated << varies << shown;
        };
        const Action reset = [](MultiEditEnumBox& b) { b.reset(); };
        const Action readSame = [](MultiEditEnumBox& b) { b.readValue(275); };
        const Action readOther = [](MultiEditEnumBox& b) { b.readValue(355); };
        const Action set = [](MultiEditEnumBox& b) { b.setValue(355); };
        const Action force = [](MultiEditEnumBox& b) { b.forceVaries(); };
        const Action byName = [](MultiEditEnumBox& b) { b.selectByName("S355"); };
        const Action byUnknownName = [](MultiEditEnumBox& b) { b.selectByName("S460"); };
        const Action byValue = [](MultiEditEnumBox& b) { b.selectByValue(355); };
        const Action next = [](MultiEditEnumBox& b) { b.next(); };
        const Action previous = [](MultiEditEnumBox& b) { b.previous(); };
        const Action pickThird = [](MultiEditEnumBox& b) { pick(b, 2); };
        const Action keyUp = [](MultiEditEnumBox& b) { QTest::keyClick(&comboOf(b), Qt::Key_Up); };
        const Action fill = [](MultiEditEnumBox& b) { b.setValues(steels()); };
        const Action enter = [](MultiEditEnumBox& b) { pressEnter(b); };
        const Action typeOnly = [](MultiEditEnumBox& b) { type(b, "460"); };
        const Action typeAndEnter = [](MultiEditEnumBox& b) {
            type(b, "460");
            pressEnter(b);
        };
        const Action typeNameAndEnter = [](MultiEditEnumBox& b) {
            type(b, "S355");
            pressEnter(b);
        };
        const Action setUnlisted = [](MultiEditEnumBox& b) { b.setValue(460); };

        row("fresh: reset", false, toFresh, reset, 0, 0, false, "S235");
        row("fresh: the first read", false, toFresh, readSame, 1, 0, false, "S275");
        row("fresh: setValue", false, toFresh, set, 1, 0, false, "S355");
        row("fresh: forceVaries", false, toFresh, force, 0, 0, true, various);
        row("fresh: a pick", false, toFresh, pickThird, 2, 1, false, "S355");
        row("fresh: next", false, toFresh, next, 1, 0, false, "S275");
        row("fresh: previous at the first row", false, toFresh, previous, 0, 0, false, "S235");

        row("common: reset keeps the row", false, toCommon, reset, 0, 0, false, "S275");
        row("common: an equal read", false, toCommon, readSame, 0, 0, false, "S275");
        row("common: a different read", false, toCommon, readOther, 0, 0, true, various);
        row("common: setValue", false, toCommon, set, 1, 0, false, "S355");
        row("common: forceVaries", false, toCommon, force, 0, 0, true, various);
        row("common: selectByName", false, toCommon, byName, 1, 0, false, "S355");
        row("common: an unknown name", false, toCommon, byUnknownName, 0, 0, false, "S275");
        row("common: selectByValue", false, toCommon, byValue, 1, 0, false, "S355");
        row("common: a pick", false, toCommon, pickThird, 2, 1, false, "S355");
        row(
            "common: a pick of the same row", false, toCommon,
            [](MultiEditEnumBox& b) { pick(b, 1); }, 2, 1, false, "S275");
        row("common: an arrow key", false, toCommon, keyUp, 2, 1, false, "S235");
        row("common: next", false, toCommon, next, 1, 0, false, "S355");
        row("common: previous", false, toCommon, previous, 1, 0, false, "S235");
        row("common: setValues", false, toCommon, fill, 0, 0, false, "S235");

        row("varies: reset shows the row before", false, toVaries, reset, 0, 0, false, "S275");
        row("varies: an equal read", false, toVaries, readSame, 0, 0, true, various);
        row("varies: a different read", false, toVaries, readOther, 0, 0, true, various);
        row("varies: setValue", false, toVaries, set, 1, 0, false, "S355");
        row("varies: forceVaries", false, toVaries, force, 0, 0, true, various);
        row("varies: selectByName", false, toVaries, byName, 1, 0, false, "S355");
        row("varies: an unknown name", false, toVaries, byUnknownName, 0, 0, true, various);
        row("varies: selectByValue", false, toVaries, byValue, 1, 0, false, "S355");
        row("varies: a pick", false, toVaries, pickThird, 2, 1, false, "S355");
        row("varies: an arrow key", false, toVaries, keyUp, 2, 1, false, "S355");
        row("varies: previous leaves it varying", false, toVaries, previous, 1, 0, true, "S355");
        row("varies: next at the last row", false, toVaries, next, 0, 0, true, various);
        row(
            "varies: next elsewhere leaves it varying", false,
            [](MultiEditEnumBox& b) {
                toVaries(b);
                b.previous();
                b.previous();
            },
            next, 1, 0, true, "S355");
        row(
            "varies: a pick of the various entry counts as any", false, toVaries,
            [](MultiEditEnumBox& b) { pick(b, 3); }, 2, 1, false, various);

        row("editable, fresh: the first read", true, toFresh, readSame, 1, 0, false, "S275");
        row(
            "editable, fresh: the first read of an unlisted value", true, toFresh,
            [](MultiEditEnumBox& b) { b.readValue(460); }, 1, 0, false, "460");
        row("editable, common: a different read", true, toCommon, readOther, 0, 0, true, various);
        row("editable, common: setValue", true, toCommon, set, 1, 0, false, "S355");
        row("editable, common: setValue unlisted", true, toCommon, setUnlisted, 1, 0, false, "460");
        row("editable, common: a pick", true, toCommon, pickThird, 2, 1, false, "S355");
        row("editable, common: a text typed", true, toCommon, typeOnly, 0, 0, false, "460");
        // Two for the row that Enter adds and picks, one for the value.
        row("editable, common: a text and Enter", true, toCommon, typeAndEnter, 3, 1, false, "460");
        row("editable, common: a name and Enter", true, toCommon, typeNameAndEnter, 2, 1, false,
            "S355");
        row("editable, varies: reset", true, toVaries, reset, 0, 0, false, "S275");
        row("editable, varies: setValue unlisted", true, toVaries, setUnlisted, 1, 0, false, "460");
        row("editable, varies: selectByName", true, toVaries, byName, 1, 0, false, "S355");
        row("editable, varies: a pick", true, toVaries, pickThird, 2, 1, false, "S355");
        row("editable, varies: a text typed", true, toVaries, typeOnly, 0, 0, false, "460");
        row("editable, varies: a text and Enter", true, toVaries, typeAndEnter, 3, 1, false, "460");
        row("editable, varies: a name and Enter", true, toVaries, typeNameAndEnter, 2, 1, false,
            "S355");
        row("editable, varies: Enter over the various text", true, toVaries, enter, 0, 0, true,
            various);
        // The text moves off the various entry, as by typing.
        row("editable, varies: previous", true, toVaries, previous, 1, 0, false, "S355");
        row("editable, varies: setValues", true, toVaries, fill, 0, 0, false, "S235");
    }

    void signalsOf()
    {
        QFETCH(bool, editable);
        QFETCH(Action, arrange);
        QFETCH(Action, act);
        QFETCH(int, changedDue);
        QFETCH(int, activatedDue);
        QFETCH(bool, variesAfter);
        QFETCH(QString, shownAfter);
        MultiEditEnumBox* box = createFilled();
        if (editable)
            box->setEditable(true, strength());
        comboOf(*box).setFocus();
        showActive(*m_form);
        arrange(*box);
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        QSignalSpy activated(box, &SimpleEnumBox::activated);
        act(*box);
        QCOMPARE(changed.count(), changedDue);
        QCOMPARE(activated.count(), activatedDue);
        QCOMPARE(box->dataVaries(), variesAfter);
        QCOMPARE(textOf(*box), shownAfter);
        QCOMPARE(box->getCurrentValue().empty(), variesAfter || shownAfter == getVariesString());
    }

    void afterThatTheNextReadIsTheFirst_data()
    {
        QTest::addColumn<Action>("act");
        QTest::addColumn<bool>("fresh");
        QTest::newRow("reset") << Action([](MultiEditEnumBox& b) { b.reset(); }) << true;
        QTest::newRow("a read") << Action([](MultiEditEnumBox& b) { b.readValue(275); }) << false;
        QTest::newRow("setValue leaves it so")
            << Action([](MultiEditEnumBox& b) { b.setValue(275); }) << true;
        QTest::newRow("selectByName leaves it so")
            << Action([](MultiEditEnumBox& b) { b.selectByName("S275"); }) << true;
        QTest::newRow("a pick leaves it so")
            << Action([](MultiEditEnumBox& b) { pick(b, 1); }) << true;
        QTest::newRow("next leaves it so") << Action([](MultiEditEnumBox& b) { b.next(); }) << true;
        QTest::newRow("forceVaries")
            << Action([](MultiEditEnumBox& b) { b.forceVaries(); }) << false;
        QTest::newRow("forceVaries, then reset") << Action([](MultiEditEnumBox& b) {
            b.forceVaries();
            b.reset();
        }) << true;
    }

    void afterThatTheNextReadIsTheFirst()
    {
        QFETCH(Action, act);
        QFETCH(bool, fresh);
        MultiEditEnumBox* box = createFilled();
        showActive(*m_form);
        act(*box);
        QCOMPARE(takesNextValue(*box), fresh);
    }

    void onePickIsToldInOrderAndEachTimeAsCommon()
    {
        MultiEditEnumBox* box = createFilled();
        showActive(*m_form);
        box->forceVaries();
        QStringList heard;
        connect(box, &SimpleEnumBox::activated, this,
            [&](int row) { heard << QString("activated %1").arg(row); });
        connect(box, &SimpleEnumBox::valueChanged, this, [&] {
            heard << QString("changed %1").arg(box->dataVaries());
            if (heard.size() == 2)
                box->forceVaries();
        });
        pick(*box, 2);
        QCOMPARE(heard, QStringList({"activated 2", "changed 0", "changed 0"}));
    }

    // --- reading

    void theFirstReadComparesWithRowsAndTheNextWithTheValueOnly()
    {
        auto* box = MultiEditEnumBox::create(m_form.get(), {}, &countedEqual);
        box->setValues(steels());
        comparisons = 0;
        box->readValue(355);
        QCOMPARE(comparisons, 3);
        comparisons = 0;
        box->readValue(355);
        QCOMPARE(comparisons, 1);
        box->readValue(235);
        QVERIFY(box->dataVaries());
        comparisons = 0;
        box->readValue(355);
        box->readValue(boost::any());
        QCOMPARE(comparisons, 0);
    }

    void aBadFirstValueIsReportedAndRead_data()
    {
        QTest::addColumn<boost::any>("value");
        QTest::newRow("unlisted") << boost::any(460);
        QTest::newRow("another type") << boost::any(QString("S355"));
        QTest::newRow("empty") << boost::any();
    }

    void aBadFirstValueIsReportedAndRead()
    {
        QFETCH(boost::any, value);
        MultiEditEnumBox* box = createFilled();
        expectAssert("found", {}, "Value not found");
        box->readValue(value);
        QCOMPARE(textOf(*box), QString("S235"));
        QVERIFY(!box->dataVaries());
        box->readValue(275);
        QVERIFY(box->dataVaries());
        expectAssert("found", {}, "Value not found");
        box->setValue(value);
        QVERIFY(box->dataVaries());
    }

    void aBadLaterValueVaries_data() { aBadFirstValueIsReportedAndRead_data(); }

    void aBadLaterValueVaries()
    {
        QFETCH(boost::any, value);
        MultiEditEnumBox* box = createFilled();
        box->readValue(275);
        box->readValue(value);
        QVERIFY(box->dataVaries());
    }

    void aSlotThatForcesVariesAtTheFirstReadIsHeard()
    {
        MultiEditEnumBox* box = createFilled();
        connect(box, &SimpleEnumBox::valueChanged, box, [box] { box->forceVaries(); });
        box->readValue(275);
        QVERIFY(box->dataVaries());
        box->readValue(275);
        QCOMPARE(textOf(*box), getVariesString());
    }

    void unlistedValuesOfAnEditableBoxAreCompared()
    {
        MultiEditEnumBox* box = createFilled();
        box->setEditable(true, strength());
        box->readValue(460);
        box->readValue(460);
        QVERIFY(!box->dataVaries());
        QCOMPARE(box->getCurrentValue(), boost::any(460));
        box->readValue(461);
        QVERIFY(box->dataVaries());
    }

    // --- the various entry

    void theVariousEntryStaysUntilReset()
    {
        MultiEditEnumBox* box = createFilled();
        box->forceVaries();
        box->forceVaries();
        const QStringList with = {"S235", "S275", "S355", getVariesString()};
        QCOMPARE(rowsOf(*box), with);
        box->setValue(275);
        QCOMPARE(rowsOf(*box), with);
        box->reset();
        QCOMPARE(rowsOf(*box), QStringList({"S235", "S275", "S355"}));
        QCOMPARE(textOf(*box), QString("S275"));
    }

    void typedOverTheBoxVariesAgainWhenTheVariousTextIsBack()
    {
        MultiEditEnumBox* box = createFilled();
        box->setEditable(true, strength());
        box->forceVaries();
        comboOf(*box).setEditText("*VARIES");
        QVERIFY(!box->dataVaries());
        comboOf(*box).setEditText(getVariesString());
        QVERIFY(box->dataVaries());
    }

    void aVaryingBoxSaysSoInItsAccessibleValue_data()
    {
        QTest::addColumn<bool>("editable");
        QTest::newRow("in a list") << false;
        QTest::newRow("in an editable box") << true;
    }

    void aVaryingBoxSaysSoInItsAccessibleValue()
    {
        QFETCH(bool, editable);
        MultiEditEnumBox* box = createFilled();
        if (editable)
            box->setEditable(true, strength());
        box->forceVaries();
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&comboOf(*box));
        QCOMPARE(interface->text(QAccessible::Value), getVariesString());
    }

    // --- loading

    void whileItIsLoadedSetValueEmitsNothing()
    {
        struct LoadAccess : public MultiEditControlBase
        {
            static void set(MultiEditControlBase& control, bool loading)
            {
                (control.*(&LoadAccess::setLoading))(loading);
            }
        };
        MultiEditEnumBox* box = createFilled();
        box->forceVaries();
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        LoadAccess::set(*box, true);
        box->setValue(275);
        QCOMPARE(changed.count(), 0);
        QVERIFY(!box->dataVaries());
        QVERIFY(!box->signalsBlocked());
        LoadAccess::set(*box, false);
        box->setValue(355);
        QCOMPARE(changed.count(), 1);
    }

private:
    MultiEditEnumBox* createFilled()
    {
        auto* box = MultiEditEnumBox::create(m_form.get(), {}, equalInts);
        m_form->layout()->addWidget(box);
        box->setValues(steels());
        return box;
    }

    std::unique_ptr<QWidget> m_form;
};

VRN_TEST_MAIN(TestMultiEditEnumBox)
#include "tst_multi_edit_enum_box.moc"
