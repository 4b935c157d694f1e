#include <vrn/qt/simple_enum_box.h>

#include "enum_box_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QAccessible>
#include <QBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>

#include <functional>
#include <memory>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Operation = std::function<void(SimpleEnumBox&)>;
using Equal = bool (*)(const boost::any&, const boost::any&);

constexpr Equal equalInts = &vrn::any_equal<int>;

// Makes protected functions public and counts the calls of virtual ones.
class OpenBox : public SimpleEnumBox
{
public:
    explicit OpenBox(QWidget* parent, Equal eq = equalInts, const QString& name = QString())
        : SimpleEnumBox(parent, name, eq)
    {}

    using SimpleEnumBox::anyEq;
    using SimpleEnumBox::anyEqAvailable;
    using SimpleEnumBox::combo;

    int selections = 0;
    QStringList picks;

protected:
    void onSelected() override { ++selections; }
    void onItemActivated(const QString& text) override { picks << text; }
};

bool bothEmptyAreSame(const boost::any& a, const boost::any& b)
{
    return a.empty() && b.empty();
}

boost::shared_ptr<QPixmap> pixmap(int width, int height)
{
    auto image = boost::make_shared<QPixmap>(width, height);
    image->fill(Qt::red);
    return image;
}

QColor backgroundOf(const QWidget& box, int row)
{
    return comboOf(box).itemData(row, Qt::BackgroundRole).value<QColor>();
}

} // namespace

Q_DECLARE_METATYPE(Operation)

class TestSimpleEnumBox : public TestObject
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
        m_form.reset();
        TestObject::cleanup();
    }

    // --- construction

    void withoutAParentThereIsNoBox()
    {
        expectAssert("parent");
        QVERIFY(!SimpleEnumBox::create(nullptr, "Steel", equalInts));
    }

    void theCaptionStandsBeforeTheList()
    {
        const SimpleEnumBox* box = SimpleEnumBox::create(m_form.get(), "&Steel", equalInts);
        QCOMPARE(box->parentWidget(), m_form.get());
        const auto* label = qobject_cast<QLabel*>(box->layout()->itemAt(0)->widget());
        QVERIFY(label);
        QCOMPARE(label->text(), QString("&Steel"));
        QCOMPARE(label->textFormat(), Qt::PlainText);
        QCOMPARE(box->layout()->itemAt(1)->widget(), &comboOf(*box));
        QCOMPARE(box->layout()->contentsMargins(), QMargins(0, 0, 0, 0));
        QVERIFY(qobject_cast<QHBoxLayout*>(box->layout()));
    }

    void theCaptionIsTheAccessibleNameAndGivesAShortcut()
    {
        const SimpleEnumBox* box = SimpleEnumBox::create(m_form.get(), "&Steel", equalInts);
        QCOMPARE(comboOf(*box).accessibleName(), QString("Steel"));
        QCOMPARE(box->findChild<QLabel*>()->buddy(), &comboOf(*box));
    }

    void anEmptyNameMakesNoCaption()
    {
        const SimpleEnumBox* box = SimpleEnumBox::create(m_form.get(), {}, equalInts);
        QVERIFY(!box->findChild<QLabel*>());
        QCOMPARE(box->layout()->count(), 1);
    }

    void theListHasTheFocusOfTheBox()
    {
        const SimpleEnumBox* box = SimpleEnumBox::create(m_form.get(), {}, equalInts);
        QCOMPARE(box->focusProxy(), &comboOf(*box));
        QVERIFY(!comboOf(*box).isEditable());
        QVERIFY(!comboOf(*box).duplicatesEnabled());
        QCOMPARE(comboOf(*box).sizeAdjustPolicy(), QComboBox::AdjustToContents);
    }

    void aFunctionIsNotNeeded()
    {
        OpenBox without(m_form.get(), nullptr);
        QVERIFY(!without.anyEqAvailable());
        QVERIFY(OpenBox(m_form.get()).anyEqAvailable());
        without.setValues(steels());
        expectAssert("m_eq != 0");
        QCOMPARE(without.anyEq(235, 235), false);
        for (int row = 0; row < 3; ++row)
            expectAssert("m_eq != 0");
        expectAssert("found", {}, "Value not found");
        without.selectByValue(235);
        QCOMPARE(without.getSelectedValue(), boost::any(235));
    }

    // --- setValues

    void rowsAreTheNamesInTheirOrder()
    {
        SimpleEnumBox* box = createFilled();
        QCOMPARE(rowsOf(*box), QStringList({"S235", "S275", "S355"}));
        QCOMPARE(comboOf(*box).currentIndex(), 0);
        QCOMPARE(comboOf(*box).insertPolicy(), QComboBox::InsertAtBottom);
        for (int row = 0; row < 3; ++row)
            QVERIFY(!comboOf(*box).itemData(row).isValid());
    }

    void filledWithNothingTheBoxIsEmpty()
    {
        SimpleEnumBox* box = createFilled();
        box->setValues({});
        QCOMPARE(comboOf(*box).count(), 0);
        QCOMPARE(comboOf(*box).currentIndex(), -1);
        QCOMPARE(box->getSelectedValue(), boost::any());
    }

    void missingPixmapsAndColoursLeaveRowsWithout()
    {
        SimpleEnumBox* box = SimpleEnumBox::create(m_form.get(), {}, equalInts);
        box->setValues(steels(), {nullptr, pixmap(20, 10)}, {Qt::yellow});
        QVERIFY(comboOf(*box).itemIcon(0).isNull());
        QVERIFY(!comboOf(*box).itemIcon(1).isNull());
        QVERIFY(comboOf(*box).itemIcon(2).isNull());
        QCOMPARE(backgroundOf(*box, 0), QColor(Qt::yellow));
        QVERIFY(!comboOf(*box).itemData(1, Qt::BackgroundRole).isValid());
        QVERIFY(!comboOf(*box).itemData(2, Qt::BackgroundRole).isValid());
    }

    void morePixmapsAndColoursThanValuesAreLeftOut()
    {
        SimpleEnumBox* box = SimpleEnumBox::create(m_form.get(), {}, equalInts);
        box->setValues({{"S235", 235}}, {pixmap(8, 8), pixmap(64, 64)}, {Qt::red, Qt::blue});
        QCOMPARE(comboOf(*box).count(), 1);
        QCOMPARE(comboOf(*box).iconSize(), QSize(8, 8));
    }

    void iconsAreAsLargeAsTheLargestPixmapEachWay()
    {
        SimpleEnumBox* box = SimpleEnumBox::create(m_form.get(), {}, equalInts);
        box->setValues(steels(), {pixmap(40, 10), pixmap(12, 30)});
        QCOMPARE(comboOf(*box).iconSize(), QSize(40, 30));
        QCOMPARE(
            comboOf(*box).sizeAdjustPolicy(), QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setValues(steels());
        QCOMPARE(comboOf(*box).sizeAdjustPolicy(), QComboBox::AdjustToContents);
    }

    void pixmapsThatAreAllMissingLeaveTheIconSize()
    {
        SimpleEnumBox* box = SimpleEnumBox::create(m_form.get(), {}, equalInts);
        const QSize before = comboOf(*box).iconSize();
        box->setValues(steels(), {nullptr, nullptr});
        QCOMPARE(comboOf(*box).iconSize(), before);
    }

    void theListIsAtLeastAsWideAsItsContentsAsk()
    {
        SimpleEnumBox* box = createFilled();
        QCOMPARE(comboOf(*box).minimumWidth(), comboOf(*box).sizeHint().width());
        const int narrow = comboOf(*box).minimumWidth();
        box->setValues({{QString(50, 'w'), 1}});
        QCOMPARE(comboOf(*box).minimumWidth(), comboOf(*box).sizeHint().width());
        QVERIFY(comboOf(*box).minimumWidth() > narrow + 200);
        box->setValues(steels());
        QCOMPARE(comboOf(*box).minimumWidth(), narrow);
    }

    void theSizePolicyIsTheLists()
    {
        SimpleEnumBox* box = createFilled();
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        QCOMPARE(
            comboOf(*box).sizeAdjustPolicy(), QComboBox::AdjustToMinimumContentsLengthWithIcon);
    }

    // --- comparing

    void valuesAreComparedByTheFunction_data()
    {
        QTest::addColumn<boost::any>("a");
        QTest::addColumn<boost::any>("b");
        QTest::addColumn<bool>("same");
        row("equal", boost::any(1), boost::any(1), true);
        row("different", boost::any(1), boost::any(2), false);
        row("of another type", boost::any(1), boost::any(1.0), false);
        row("the first empty", boost::any(), boost::any(1), false);
        row("the second empty", boost::any(1), boost::any(), false);
        row("both empty", boost::any(), boost::any(), true);
    }

    void valuesAreComparedByTheFunction()
    {
        QFETCH(boost::any, a);
        QFETCH(boost::any, b);
        QFETCH(bool, same);
        QCOMPARE(OpenBox(m_form.get()).anyEq(a, b), same);
    }

    void oneEmptyValueDoesNotReachTheFunctionAndTwoDo()
    {
        const OpenBox always(
            m_form.get(), [](const boost::any&, const boost::any&) { return true; });
        QVERIFY(!always.anyEq(boost::any(), 1));
        QVERIFY(!always.anyEq(1, boost::any()));
        QVERIFY(always.anyEq(boost::any(), boost::any()));
        const OpenBox never(
            m_form.get(), [](const boost::any&, const boost::any&) { return false; });
        QVERIFY(!never.anyEq(boost::any(), boost::any()));
    }

    // --- selecting; for rows and signals see tst_enum_box_signals

    void anUnknownValueIsReportedAndChangesNothing_data()
    {
        QTest::addColumn<boost::any>("value");
        row("another number", boost::any(460));
        row("another type", boost::any(QString("S355")));
        row("no value", boost::any());
    }

    void anUnknownValueIsReportedAndChangesNothing()
    {
        QFETCH(boost::any, value);
        OpenBox box(m_form.get());
        box.setValues(steels());
        box.selectByName("S275");
        expectAssert("found", {}, "Value not found");
        box.selectByValue(value);
        QCOMPARE(comboOf(box).currentIndex(), 1);
        QCOMPARE(box.selections, 1);
    }

    void inAnEmptyListAValueIsReportedTwice()
    {
        OpenBox box(m_form.get());
        expectAssert("m_combo->isEditable() || !m_values.empty()");
        expectAssert("found", {}, "Value not found");
        box.selectByValue(235);
        QCOMPARE(box.selections, 0);
    }

    void ofEqualValuesAndNamesTheFirstCounts()
    {
        SimpleEnumBox* box = SimpleEnumBox::create(m_form.get(), {}, equalInts);
        box->setValues({{"a", 1}, {"b", 2}, {"c", 2}, {"b", 3}});
        QCOMPARE(comboOf(*box).count(), 4);
        box->selectByValue(2);
        QCOMPARE(comboOf(*box).currentIndex(), 1);
        QCOMPARE(box->getNameForValue(2), QString("b"));
        comboOf(*box).setCurrentIndex(3);
        QCOMPARE(box->getSelectedValue(), boost::any(3));
        box->selectByName("b");
        QCOMPARE(comboOf(*box).currentIndex(), 1);
        QCOMPARE(box->getValueForName("b"), boost::any(2));
    }

    void anEmptyValueOfTheListIsFoundIfTheFunctionFindsIt()
    {
        SimpleEnumBox* box = SimpleEnumBox::create(m_form.get(), {}, &bothEmptyAreSame);
        box->setValues({{"some", 1}, {"none", boost::any()}});
        box->selectByValue(boost::any());
        QCOMPARE(comboOf(*box).currentIndex(), 1);
        QCOMPARE(box->getSelectedValue(), boost::any());
    }

    // --- asking

    void withoutACurrentRowThereIsNoValue()
    {
        SimpleEnumBox* box = createFilled();
        comboOf(*box).setCurrentIndex(-1);
        expectAssert("i >= 0 && i < m_combo->count()", {"i", "count"});
        QCOMPARE(box->getSelectedValue(), boost::any());
    }

    void aRowAfterThoseOfTheValuesHasNoValue()
    {
        SimpleEnumBox* box = createFilled();
        comboOf(*box).addVarious(true);
        QCOMPARE(box->getSelectedValue(), boost::any());
    }

    void namesAndValuesAnswerForEachOther()
    {
        SimpleEnumBox* box = createFilled();
        QCOMPARE(box->getNameForValue(355), QString("S355"));
        QCOMPARE(box->getNameForValue(460), QString());
        QCOMPARE(box->getValueForName("S275"), boost::any(275));
        QCOMPARE(box->getValueForName("S460"), boost::any());
        QCOMPARE(comboOf(*box).currentIndex(), 0);
    }

    // --- stepping

    void inAnEmptyListThereIsNoStep()
    {
        SimpleEnumBox* box = SimpleEnumBox::create(m_form.get(), {}, equalInts);
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        box->next();
        box->previous();
        QCOMPARE(changed.count(), 0);
    }

    // --- the user

    void aPickIsToldByItsText()
    {
        OpenBox box(m_form.get());
        box.setValues(steels());
        showActive(*m_form);
        pick(box, 1);
        QCOMPARE(box.picks, QStringList("S275"));
        QCOMPARE(box.selections, 0);
    }

    // --- the rest

    void aWidgetGoesToTheRight()
    {
        SimpleEnumBox* box = SimpleEnumBox::create(m_form.get(), "Steel", equalInts);
        auto* mark = new QLabel("MPa");
        box->addWidget(mark);
        QCOMPARE(box->layout()->itemAt(2)->widget(), mark);
        QCOMPARE(mark->parentWidget(), box);
        expectAssert("w");
        box->addWidget(nullptr);
        QCOMPARE(box->layout()->count(), 3);
    }

    void theWidthIsTheLists()
    {
        SimpleEnumBox* box = createFilled();
        showActive(*m_form);
        box->resize(300, 30);
        QCOMPARE(box->size(), QSize(300, 30));
        QCoreApplication::processEvents();
        QCOMPARE(box->getComboWidth(), comboOf(*box).width());
        QCOMPARE(box->getComboWidth(), 300);
    }

    void resizeIsVirtual()
    {
        struct Fixed : public OpenBox
        {
            using OpenBox::OpenBox;
            void resize(int /*width*/, int height) override { SimpleEnumBox::resize(50, height); }
        };
        Fixed box(m_form.get());
        static_cast<SimpleEnumBox&>(box).resize(300, 30);
        QCOMPARE(box.size(), QSize(50, 30));
    }

    void aListThatSomeoneDestroyedIsReported()
    {
        OpenBox box(m_form.get());
        box.setValues(steels());
        delete &comboOf(box);
        expectAssert("m_combo");
        QCOMPARE(box.getSelectedValue(), boost::any());
        expectAssert("m_combo");
        QCOMPARE(box.getValueForName("S235"), boost::any(235));
        expectAssert("m_combo");
        QCOMPARE(box.getComboWidth(), 0);
        QCOMPARE(box.getNameForValue(235), QString("S235"));
        expectAssert("m_combo");
        QVERIFY(!box.combo().isVisible());
    }

    void aLayoutThatSomeoneDestroyedIsReported()
    {
        SimpleEnumBox* box = createFilled();
        delete box->layout();
        QLineEdit more;
        expectAssert("layout()");
        box->addWidget(&more);
        QVERIFY(!more.parent());
    }

    void eachOperationDoesWithoutTheList_data()
    {
        QTest::addColumn<Operation>("operation");
        const auto row = [](const char* name, const Operation& act) { QTest::newRow(name) << act; };
        // clang-format off
        row("setValues", [](SimpleEnumBox& b) { b.setValues(steels()); });
        row("selectByName", [](SimpleEnumBox& b) { b.selectByName("S235"); });
        row("selectByValue", [](SimpleEnumBox& b) { b.selectByValue(235); });
        row("next", [](SimpleEnumBox& b) { b.next(); });
        row("previous", [](SimpleEnumBox& b) { b.previous(); });
        row("setEditable", [](SimpleEnumBox& b) { b.setEditable(true, strength()); });
        row("setSizeAdjustPolicy", [](SimpleEnumBox& b) { b.setSizeAdjustPolicy(QComboBox::AdjustToContents); });
        // clang-format on
    }

    void eachOperationDoesWithoutTheList()
    {
        QFETCH(Operation, operation);
        SimpleEnumBox* box = createFilled();
        delete &comboOf(*box);
        expectAssert("m_combo");
        operation(*box);
        QVERIFY(!box->findChild<VRN_QT4_ComboBox*>());
    }

    void theAccessibleValueIsTheNameShown()
    {
        SimpleEnumBox* box = SimpleEnumBox::create(m_form.get(), "Steel", equalInts);
        box->setValues(steels());
        box->selectByValue(275);
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&comboOf(*box));
        QCOMPARE(interface->text(QAccessible::Value), QString("S275"));
    }

    void theWheelPicksOnlyWithTheFocus_data()
    {
        columns<bool, bool>("isEditable", "hasFocus");
        row("a list without the focus", false, false);
        row("a list with the focus", false, true);
        row("an editable box without the focus", true, false);
        row("an editable box with the focus", true, true);
    }

    void theWheelPicksOnlyWithTheFocus()
    {
        QFETCH(bool, isEditable);
        QFETCH(bool, hasFocus);
        QScrollArea form;
        form.setWidget(new QWidget);
        form.widget()->resize(100, 2000);
        SimpleEnumBox* box = SimpleEnumBox::create(form.widget(), {}, equalInts);
        box->setValues(steels());
        if (isEditable)
            box->setEditable(true, strength());
        box->move(0, 20);
        QLineEdit other(form.widget());
        showActive(form);
        (hasFocus ? static_cast<QWidget*>(box) : &other)->setFocus();
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);

        // As the window system sends it: to what is under the mouse, and from there to what
        // is around it.
        QWidget* under = isEditable ? static_cast<QWidget*>(comboOf(*box).lineEdit())
                                    : &comboOf(*box);
        const QPointF spot(5, 5);
        QWheelEvent turn(spot, under->mapToGlobal(spot.toPoint()), {}, {0, -120}, Qt::NoButton, {},
            Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&turn);
        qApp->notify(under, &turn);
        QCOMPARE(changed.count(), hasFocus ? 1 : 0);
        QCOMPARE(textOf(*box), QString(hasFocus ? "S275" : "S235"));
        QCOMPARE(form.verticalScrollBar()->value() > 0, !hasFocus);
        QCOMPARE(box->hasFocus(), hasFocus);
    }

private:
    SimpleEnumBox* createFilled()
    {
        SimpleEnumBox* box = SimpleEnumBox::create(m_form.get(), {}, equalInts);
        box->setValues(steels());
        return box;
    }

    std::unique_ptr<QWidget> m_form;
};

VRN_TEST(TestSimpleEnumBox)
#include "tst_simple_enum_box.moc"
