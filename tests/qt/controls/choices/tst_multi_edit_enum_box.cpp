#include "enum_box_fixture.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QSignalSpy>

#include <memory>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Equal = bool (*)(const boost::any&, const boost::any&);

constexpr Equal equalInts = &vrn::any_equal<int>;

int comparisons = 0;

bool countedEqual(const boost::any& a, const boost::any& b)
{
    ++comparisons;
    return vrn::any_equal<int>(a, b);
}

// Whether the next value read is taken as the first one; reads it.
bool takesNextValue(MultiEditEnumBox& box)
{
    box.readValue(355);
    return !box.dataVaries() && box.getSelectedValue().type() == typeid(int)
        && boost::any_cast<int>(box.getSelectedValue()) == 355;
}

} // namespace

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

    // --- signals; how many each action emits, another table says

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
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        expectAssert("found", {}, "Value not found");
        box->readValue(value);
        QCOMPARE(textOf(*box), QString("S235"));
        QVERIFY(!box->dataVaries());
        box->readValue(275);
        QVERIFY(box->dataVaries());
        expectAssert("found", {}, "Value not found");
        box->setValue(value);
        QVERIFY(box->dataVaries());
        expectAssert("found", {}, "Value not found");
        box->selectByValue(value);
        QVERIFY(box->dataVaries());
        QCOMPARE(textOf(*box), getVariesString());
        QCOMPARE(changed.count(), 0);
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

    void anEmptyListWithTheVariousTextTypedVariesToo()
    {
        auto* box = MultiEditEnumBox::create(m_form.get(), {}, equalInts);
        box->setEditable(true, strength());
        comboOf(*box).setEditText(getVariesString());
        QVERIFY(!box->dataVaries());
        box->forceVaries();
        QVERIFY(box->dataVaries());
        QCOMPARE(textOf(*box), getVariesString());
    }

    // --- a list that someone has destroyed

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

VRN_TEST(TestMultiEditEnumBox)
#include "tst_multi_edit_enum_box.moc"
