#include <vrn/qt/string_edit_validator.h>

#include "enum_box_fixture.h"
#include "group_fixture.h"
#include "qt/controls/line_edits/line_edit_fixture.h"
#include "support/other_language.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QSignalSpy>

#include <memory>
#include <stdexcept>

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

    // --- signals; tst_enum_box_signals counts those of each action

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
        row("unlisted", boost::any(460));
        row("another type", boost::any(QString("S355")));
        row("empty", boost::any());
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

    void theVariesTextTypedOverAValueIsNoValue()
    {
        MultiEditEnumBox* box = createFilled();
        box->setEditable(true, boost::make_shared<StringEditValidator>(40));
        showActive(*m_form);
        comboOf(*box).setFocus();
        box->readValue(275);
        type(*box, getVariesString());
        QVERIFY(box->dataVaries());
        QVERIFY(box->getCurrentValue().empty());
        box->reset();
        QCOMPARE(textOf(*box), QString("S275"));
        QCOMPARE(rowsOf(*box), QStringList({"S235", "S275", "S355"}));
        QCOMPARE(box->getCurrentValue(), boost::any(275));
    }

    void theFirstKeyAfterAClickReplacesTheVariesText()
    {
        MultiEditEnumBox* box = createFilled();
        box->setEditable(true, boost::make_shared<StringEditValidator>(40));
        showActive(*m_form);
        box->forceVaries();
        QLineEdit* edit = comboOf(*box).lineEdit();
        QTest::mouseClick(edit, Qt::LeftButton, {}, QPoint(8, edit->height() / 2));
        QTest::keyClicks(&comboOf(*box), "5");
        QCOMPARE(textOf(*box), QString("5"));
    }

    // --- a change of the language

    void aVaryingBoxFollowsTheLanguage_data()
    {
        QTest::addColumn<bool>("editable");
        QTest::addColumn<bool>("typed");
        row("a list", false, false);
        row("an editable box", true, false);
        row("an editable box that varies by its user", true, true);
    }

    void aVaryingBoxFollowsTheLanguage()
    {
        QFETCH(bool, editable);
        QFETCH(bool, typed);
        MultiEditEnumBox* box = createFilled();
        if (editable) // This one would take the text for a value.
            box->setEditable(true, boost::make_shared<StringEditValidator>(40));
        auto* other = new QLineEdit;
        m_form->layout()->addWidget(other);
        showActive(*m_form);
        comboOf(*box).setFocus();
        if (typed)
            type(*box, getVariesString());
        else
            box->forceVaries();
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        OtherLanguage german;
        for (const char* text : {"*VERSCHIEDEN*", "*VARIES*"}) {
            german.change();
            deliverLanguage();
            QCOMPARE(textOf(*box), QString(text));
            if (editable)
                pressEnter(*box);
            other->setFocus();
            comboOf(*box).setFocus();
            QCOMPARE(textOf(*box), QString(text));
            QVERIFY(box->dataVaries());
            QVERIFY(box->getCurrentValue().empty());
            QCOMPARE(changed.count(), 0);
        }
    }

    // --- a validator that throws

    void aValueThatCannotBeWrittenIsNoValue_data()
    {
        QTest::addColumn<bool>("varying");
        QTest::addColumn<bool>("read");
        row("the first read of a common box", false, true);
        row("setValue of a common box", false, false);
        row("setValue of a varying box", true, false);
    }

    void aValueThatCannotBeWrittenIsNoValue()
    {
        QFETCH(bool, varying);
        QFETCH(bool, read);
        // It takes an empty text.
        auto digits = boost::make_shared<DigitsValidator>();
        MultiEditEnumBox* box = createFilled();
        box->setEditable(true, digits);
        box->readValue(275);
        if (varying)
            box->forceVaries();
        if (read)
            box->reset();
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        digits->before = [](const QString& operation) {
            if (operation == "reformat")
                throw std::runtime_error("from the validator");
        };
        const boost::any unlisted = 460;
        QVERIFY_EXCEPTION_THROWN(
            read ? box->readValue(unlisted) : box->setValue(unlisted), std::runtime_error);
        digits->before = nullptr;
        QCOMPARE(changed.count(), 0);
        QVERIFY(!box->dataVaries());
        QVERIFY(box->getCurrentValue().empty());
        QCOMPARE(textOf(*box), QString());
        box->readValue(275);
        QVERIFY(box->dataVaries());
        box->setValue(275);
        QCOMPARE(box->getCurrentValue(), boost::any(275));
    }

    void aTextTypedAfterAValueThatCouldNotBeWrittenCounts()
    {
        auto digits = boost::make_shared<DigitsValidator>();
        MultiEditEnumBox* box = createFilled();
        box->setEditable(true, digits);
        digits->before = [](const QString&) { throw std::runtime_error("from the validator"); };
        QVERIFY_EXCEPTION_THROWN(box->setValue(460), std::runtime_error);
        digits->before = nullptr;
        type(*box, "7");
        QCOMPARE(box->getCurrentValue(), boost::any(7));
    }

    void aHintThatThrowsWaitsForTheEndOfEditing()
    {
        MultiEditEnumBox* box = createFilled();
        const auto validator = strength();
        box->setEditable(true, validator);
        comboOf(*box).lineEdit()->setText("5000");
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        validator->setEditHintFunction(
            [](const QString&) -> QString { throw std::runtime_error("from the hint"); });
        QVERIFY_EXCEPTION_THROWN(
            Q_EMIT comboOf(*box).lineEdit()->editingFinished(), std::runtime_error);
        QCOMPARE(textOf(*box), QString("999"));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(box->getCurrentValue(), boost::any(999));
    }

    void aVaryingBoxSaysSoInItsAccessibleValue_data()
    {
        QTest::addColumn<bool>("editable");
        row("in a list", false);
        row("in an editable box", true);
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
        MultiEditEnumBox* box = createFilled();
        box->forceVaries();
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        Loading::set(*box, true);
        box->setValue(275);
        QCOMPARE(changed.count(), 0);
        QVERIFY(!box->dataVaries());
        QVERIFY(!box->signalsBlocked());
        Loading::set(*box, false);
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
