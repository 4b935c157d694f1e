#include <vrn/qt/string_edit_validator.h>

#include "enum_box_fixture.h"
#include "group_fixture.h"
#include "qt/controls/line_edits/line_edit_fixture.h"
#include "support/life.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QHBoxLayout>
#include <QSignalSpy>
#include <QSplitter>

#include <functional>
#include <memory>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Ask = std::function<QString(SimpleEnumBox&)>;

} // namespace

Q_DECLARE_METATYPE(Ask)

// What holds for an enum box into which the user may type.
class TestEnumBoxEditable : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_form = std::make_unique<QWidget>();
        m_rows = new QHBoxLayout(m_form.get());
    }

    void cleanup()
    {
        m_form.reset();
        TestObject::cleanup();
    }

    // --- values; tst_enum_box_signals has those of a box with a validator

    void withoutAValidatorOnlyEntriesHaveValues()
    {
        SimpleEnumBox* box = createEditable(nullptr);
        setText(*box, "460");
        QCOMPARE(box->getSelectedValue(), boost::any());
        setText(*box, "S355");
        QCOMPARE(box->getSelectedValue(), boost::any(355));
    }

    void withoutEntriesThereIsNoValueWhateverTheText()
    {
        SimpleEnumBox* box = createEditable(strength());
        box->setValues({});
        setText(*box, "460");
        QCOMPARE(box->getSelectedValue(), boost::any());
    }

    void anEntryWithoutAValueLeavesItToTheValidator()
    {
        SimpleEnumBox* box = createEditable(strength());
        box->setValues({{"7", boost::any()}});
        setText(*box, "7");
        QCOMPARE(box->getSelectedValue(), boost::any(7));
    }

    void theValidatorWorksWithClearFlagsOnAnEmptyValue()
    {
        const auto digits = boost::make_shared<DigitsValidator>();
        SimpleEnumBox* box = createEditable(digits);
        setText(*box, "460");
        QCOMPARE(box->getSelectedValue(), boost::any(460));
        box->selectByValue(7);
        QCOMPARE(box->getNameForValue(8), QString("008"));
        QVERIFY(digits->flags.none());
        QVERIFY(digits->valuesCameEmpty);
    }

    void aValueOfTheListShowsItsName()
    {
        SimpleEnumBox* box = createEditable(strength());
        setText(*box, "460");
        box->selectByValue(235);
        QCOMPARE(textOf(*box), QString("S235"));
        QCOMPARE(comboOf(*box).currentIndex(), 0);
    }

    void anyOtherValueWithoutAValidatorIsReported()
    {
        SimpleEnumBox* box = createEditable(nullptr);
        expectAssert("m_validator");
        box->selectByValue(460);
        QCOMPARE(textOf(*box), QString("S235"));
        box->setValues({});
        expectAssert("m_validator");
        box->selectByValue(460);
    }

    void aNameBringsItsTextBack()
    {
        SimpleEnumBox* box = createEditable(strength());
        setText(*box, "460");
        box->selectByName("S235");
        QCOMPARE(textOf(*box), QString("S235"));
    }

    void theNameOfAnyOtherValueIsItsText()
    {
        SimpleEnumBox* box = createEditable(strength());
        QCOMPARE(box->getNameForValue(355), QString("S355"));
        QCOMPARE(box->getNameForValue(460), QString("460"));
        box->setEditable(true);
        QCOMPARE(box->getNameForValue(460), QString());
        box->setEditable(false, strength());
        QCOMPARE(box->getNameForValue(460), QString());
    }

    void theValidatorIsTheOneOfTheLastCall()
    {
        SimpleEnumBox* box = createEditable(nullptr);
        setText(*box, "460");
        box->setEditable(true, strength());
        QCOMPARE(textOf(*box), QString("460"));
        QCOMPARE(box->getSelectedValue(), boost::any(460));
        box->setEditable(true);
        QCOMPARE(box->getSelectedValue(), boost::any());
    }

    // --- becoming editable and back

    void editableAgainItWorksAgain()
    {
        SimpleEnumBox* box = createEditable(strength());
        showActive(*m_form);
        for (int round = 0; round < 3; ++round) {
            type(*box, "46x");
            QVERIFY(!box->isValueValid());
            type(*box, "460");
            QVERIFY(box->isValueValid());
            QCOMPARE(box->getSelectedValue(), boost::any(460));
            box->setEditable(false);
            QVERIFY(!comboOf(*box).lineEdit());
            if (round > 0)
                deleteDeferred();
            box->setEditable(true, strength());
            deleteDeferred();
            QCOMPARE(shells().size(), 1);
            QVERIFY(comboOf(*box).lineEdit()->isVisible());
            comboOf(*box).setFocus();
        }
    }

    void validityIsThatOfTheLastText()
    {
        SimpleEnumBox* box = createEditable(strength());
        showActive(*m_form);
        QVERIFY(!box->isValueValid());
        type(*box, "12");
        QVERIFY(box->isValueValid());
        QCOMPARE(comboOf(*box).lineEdit()->styleSheet(), blackText());
        type(*box, "12m");
        QVERIFY(!box->isValueValid());
        QCOMPARE(comboOf(*box).lineEdit()->styleSheet(), redText());
    }

    void withoutAnEditValidityIsReported()
    {
        SimpleEnumBox* box = createFilled();
        expectAssert("m_lineEdit");
        QVERIFY(!box->isValueValid());
        box->setEditable(true, strength());
        box->setEditable(false);
        expectAssert("m_lineEdit");
        QVERIFY(!box->isValueValid());
    }

    // --- signals

    void eachCallWithTrueMakesAnEnteredTextEmitOnceMore_data()
    {
        QTest::addColumn<QVector<bool>>("calls");
        QTest::addColumn<int>("signalsOfOneText");
        using Calls = QVector<bool>;
        row("once", Calls{true}, 1);
        row("twice", Calls{true, true}, 2);
        row("three times", Calls{true, true, true}, 3);
        row("false takes nothing back", Calls{true, false, true}, 2);
        row("false adds nothing", Calls{false, false, true}, 1);
    }

    void eachCallWithTrueMakesAnEnteredTextEmitOnceMore()
    {
        QFETCH(QVector<bool>, calls);
        QFETCH(int, signalsOfOneText);
        SimpleEnumBox* box = createFilled();
        for (const bool editable : calls)
            box->setEditable(editable, strength());
        showActive(*m_form);
        comboOf(*box).setFocus();
        type(*box, "460");
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        // Not Enter, which also picks the row that it adds.
        leave(*box);
        QCOMPARE(changed.count(), signalsOfOneText);
    }

    // With a validator, tst_enum_box_signals counts the signals. Here the text has no value.
    void withoutAValidatorOnlyAPickEmits()
    {
        SimpleEnumBox* box = createEditable(nullptr);
        showActive(*m_form);
        type(*box, "460");
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        leave(*box);
        QCOMPARE(changed.count(), 0);
        comboOf(*box).setFocus();
        type(*box, "461");
        pressEnter(*box);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(textOf(*box), QString("461"));
    }

    void anEnteredTextIsFormatted()
    {
        SimpleEnumBox* box = createEditable(strength());
        showActive(*m_form);
        type(*box, "5000");
        leave(*box);
        QCOMPARE(textOf(*box), QString("999"));
        QCOMPARE(box->getSelectedValue(), boost::any(999));
    }

    void theVariousTextIsNotEntered()
    {
        // It would take the text for a value.
        SimpleEnumBox* box = createEditable(boost::make_shared<StringEditValidator>(40));
        showActive(*m_form);
        comboOf(*box).addVarious(true);
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        pressEnter(*box);
        leave(*box);
        QCOMPARE(changed.count(), 0);
        QCOMPARE(textOf(*box), getVariesString());
    }

    // --- the control around the edit

    void aValidatorMayBeExchangedWhileItIsAsked_data()
    {
        QTest::addColumn<Ask>("ask");
        const auto row = [](const char* name, Ask ask) { QTest::newRow(name) << std::move(ask); };
        row("for the selected value", [](SimpleEnumBox& box) {
            const boost::any value = box.getSelectedValue();
            return value.empty() ? QString() : boost::any_cast<QString>(value);
        });
        row("for the name of a value", [](SimpleEnumBox& box) { return box.getNameForValue(460); });
        row("for the text of a value", [](SimpleEnumBox& box) {
            box.selectByValue(460);
            return textOf(box);
        });
    }

    void aValidatorMayBeExchangedWhileItIsAsked()
    {
        QFETCH(Ask, ask);
        struct Leaving : public IValidator
        {
            Leaving(SimpleEnumBox* box, bool& alive)
                : m_box(box)
                , m_life(lifeIn(alive))
            {}

            bool validate(const QString&, boost::any& value, const std::bitset<32>&) override
            {
                value = leave();
                return true;
            }

            QString reformat(const boost::any&, const std::bitset<32>&) override { return leave(); }

        private:
            QString leave()
            {
                const bool* const isAlive = m_life.get();
                m_box->setEditable(true, strength());
                return *isAlive ? "alive" : "destroyed";
            }

            SimpleEnumBox* m_box;
            std::shared_ptr<bool> m_life;
        };
        SimpleEnumBox* box = createFilled();
        // The edit keeps the first validator; a later one is kept by the box only.
        box->setEditable(true, strength());
        bool alive = false;
        box->setEditable(true, boost::make_shared<Leaving>(box, alive));
        comboOf(*box).lineEdit()->setText("460");
        QCOMPARE(ask(*box), QString("alive"));
        QVERIFY(!alive);
    }

    // A program that goes over all fields of a page meets it, too.
    void withoutAValidatorItsControlReportsAForeignValue_data()
    {
        QTest::addColumn<boost::any>("value");
        row("a number", boost::any(1.0));
        row("an empty one", boost::any());
    }

    void withoutAValidatorItsControlReportsAForeignValue()
    {
        QFETCH(boost::any, value);
        SimpleEnumBox* box = createFilled();
        box->setEditable(true);
        auto* control = m_form->findChild<MultiEditLineEdit*>();
        QVERIFY(control);
        expectAssert("text");
        control->setValue(value);
        QCOMPARE(textOf(*box), QString());
    }

    void theControlAroundTheEditIsAChildOfTheParent()
    {
        SimpleEnumBox* box = createEditable(strength());
        QCOMPARE(shells().size(), 1);
        QCOMPARE(shells().front()->parentWidget(), m_form.get());
        QCOMPARE(comboOf(*box).lineEdit()->parentWidget(), &comboOf(*box));
    }

    void theControlAroundTheEditNeverShows_data()
    {
        QTest::addColumn<bool>("shownBefore");
        row("in a window that is shown later", false);
        row("in a window that is on the screen", true);
    }

    void theControlAroundTheEditNeverShows()
    {
        QFETCH(bool, shownBefore);
        SimpleEnumBox* box = createFilled();
        if (shownBefore)
            showActive(*m_form);
        box->setEditable(true, strength());
        if (!shownBefore)
            showActive(*m_form);
        m_form->hide();
        showActive(*m_form);
        m_rows->activate();
        QCOMPARE(shells().size(), 1);
        QVERIFY(!shells().front()->isVisible());
        QVERIFY(comboOf(*box).lineEdit()->isVisible());
        // The mouse reaches the window where the control would be.
        QVERIFY(m_form->childAt(1, 1) != shells().front());
    }

    void inASplitterItTakesNoRoom()
    {
        QSplitter splitter;
        auto* box = SimpleEnumBox::create(&splitter, {}, &vrn::any_equal<int>);
        box->setValues(steels());
        showActive(splitter);
        box->setEditable(true, strength());
        QCoreApplication::processEvents();
        const auto shell = splitter.findChild<MultiEditLineEdit*>();
        QVERIFY(!shell->isVisible());
        QCOMPARE(box->width(), splitter.width());
    }

    void theControlFollowsTheBoxToAnotherParent()
    {
        auto other = std::make_unique<QWidget>();
        SimpleEnumBox* box = createEditable(strength());
        showActive(*m_form);
        showActive(*other);
        box->setParent(other.get());
        box->show();
        QCOMPARE(shells().size(), 0);
        auto* shell = other->findChild<MultiEditLineEdit*>();
        QVERIFY(shell);
        QVERIFY(!shell->isVisible());

        m_form = std::make_unique<QWidget>();
        type(*box, "46x");
        QVERIFY(!box->isValueValid());
    }

    // --- windows of the edit

    void theHintShowsWhileTheUserTypes()
    {
        const auto validator = strength();
        validator->setEditHintFunction([](const QString& text) { return "0 to 999, not " + text; });
        SimpleEnumBox* box = createEditable(validator);
        auto* other = new QLineEdit;
        m_rows->addWidget(other);
        comboOf(*box).setFocus();
        showActive(*m_form);
        QCOMPARE(hintsShown(), 0);
        type(*box, "4");
        QCOMPARE(hintsShown(), 1);
        other->setFocus();
        QCOMPARE(hintsShown(), 0);
        comboOf(*box).setFocus();
        QCOMPARE(hintsShown(), 1);
        comboOf(*box).showPopup();
        QVERIFY(comboOf(*box).view()->isVisible());
        QCOMPARE(hintsShown(), 0);
        QTest::keyClick(comboOf(*box).view(), Qt::Key_Down);
        QTest::keyClick(comboOf(*box).view(), Qt::Key_Return);
        QVERIFY(!comboOf(*box).view()->isVisible());
        QCOMPARE(box->getSelectedValue(), boost::any(275));
    }

private:
    SimpleEnumBox* createFilled()
    {
        auto* box = SimpleEnumBox::create(m_form.get(), {}, &vrn::any_equal<int>);
        m_rows->addWidget(box);
        box->setValues(steels());
        return box;
    }

    SimpleEnumBox* createEditable(const IValidator::pointer& validator)
    {
        SimpleEnumBox* box = createFilled();
        box->setEditable(true, validator);
        return box;
    }

    QList<MultiEditLineEdit*> shells() const
    {
        return m_form->findChildren<MultiEditLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
    }

    static void setText(SimpleEnumBox& box, const QString& text)
    {
        comboOf(box).lineEdit()->setText(text);
    }

    // Gives the focus to another edit of the window.
    void leave(SimpleEnumBox& box)
    {
        auto* other = new QLineEdit;
        m_rows->addWidget(other);
        other->show();
        QVERIFY(comboOf(box).hasFocus());
        other->setFocus();
        QVERIFY(!comboOf(box).hasFocus());
    }

    static int hintsShown()
    {
        int shown = 0;
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (window->inherits("vrn::qt::detail::EditHintPopup") && window->isVisible()
                && !window->testAttribute(Qt::WA_DontShowOnScreen))
                ++shown;
        }
        return shown;
    }

    std::unique_ptr<QWidget> m_form;
    QHBoxLayout* m_rows = nullptr;
};

VRN_TEST(TestEnumBoxEditable)
#include "tst_enum_box_editable.moc"
