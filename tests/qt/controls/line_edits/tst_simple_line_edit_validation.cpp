#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/simple_line_edit.h>
#include <vrn/qt/string_edit_validator.h>
#include <vrn/qt/varies_string.h>

#include "controls/popups/edit_hint_popup_p.h"
#include "line_edit_fixture.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QLabel>
#include <QSignalSpy>

using namespace vrn::qt;
using vrn::test::blackText;
using vrn::test::DigitsValidator;
using vrn::test::Form;
using vrn::test::HookedLineEdit;
using vrn::test::Log;
using vrn::test::redText;
using vrn::test::StyleChanges;

namespace {

// What a user or the application does to the field.
using Action = std::function<void(SimpleLineEdit&, Form&)>;

Action typing(const QString& text)
{
    return [text](SimpleLineEdit& field, Form&) { QTest::keyClicks(field.edit(), text); };
}

Action pressing(Qt::Key key)
{
    return [key](SimpleLineEdit& field, Form&) { QTest::keyClick(field.edit(), key); };
}

Action setting(const boost::any& value)
{
    return [value](SimpleLineEdit& field, Form&) { field.setValue(value); };
}

Action settingText(const QString& text)
{
    return [text](SimpleLineEdit& field, Form&) { field.edit()->setText(text); };
}

Action leaving()
{
    return [](SimpleLineEdit&, Form& form) { form.leave(); };
}

Action inOrder(const std::vector<Action>& actions)
{
    return [actions](SimpleLineEdit& field, Form& form) {
        for (const Action& action : actions)
            action(field, form);
    };
}

SimpleLineEdit* createPercentage()
{
    return SimpleLineEdit::create(
        nullptr, {}, new DoubleEditValidator(2, 0.0, 100.0, true), 0, ExpandHorizontal);
}

} // namespace

Q_DECLARE_METATYPE(Action)

class TestSimpleLineEditValidation : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatAnActionDoes_data()
    {
        QTest::addColumn<Action>("action");
        QTest::addColumn<int>("valueChanged");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("styleSheet");

        const Action enter = pressing(Qt::Key_Return);
        QTest::newRow("nothing: not valid yet") << inOrder({}) << 0 << false << ""
                                                << "";
        QTest::newRow("a good number is black") << typing("12") << 0 << true << "12" << blackText();
        QTest::newRow("a refused text is red") << typing("1x") << 0 << false << "1x" << redText();
        QTest::newRow("a refused text that is mended is black again")
            << inOrder({typing("1x"), pressing(Qt::Key_Backspace)}) << 0 << true << "1"
            << blackText();
        QTest::newRow("a good text that is spoilt is red")
            << inOrder({typing("1"), typing("x")}) << 0 << false << "1x" << redText();
        QTest::newRow("a number out of range stays black while typing")
            << typing("1e9") << 0 << true << "1e9" << blackText();
        QTest::newRow("Enter clamps and formats a number out of range")
            << inOrder({typing("1e9"), enter}) << 1 << true << "100.00" << blackText();
        QTest::newRow("Enter formats a number")
            << inOrder({typing("1.5"), enter}) << 1 << true << "1.50" << blackText();
        QTest::newRow("the Enter of the number pad ends editing too")
            << inOrder({typing("1.5"), pressing(Qt::Key_Enter)}) << 1 << true << "1.50"
            << blackText();
        QTest::newRow("leaving the field formats a number")
            << inOrder({typing("1.5"), leaving()}) << 1 << true << "1.50" << blackText();
        QTest::newRow("Enter on a refused text keeps it and reports the end of editing")
            << inOrder({typing("1x"), enter}) << 1 << false << "1x" << redText();
        QTest::newRow("leaving a refused text keeps it and reports the end of editing")
            << inOrder({typing("1x"), leaving()}) << 1 << false << "1x" << redText();
        QTest::newRow("each Enter reports")
            << inOrder({typing("1"), enter, enter, enter}) << 3 << true << "1.00" << blackText();
        QTest::newRow("Enter on an empty field shows the zero that it stands for")
            << enter << 1 << true << "0.00" << blackText();
        QTest::newRow("the text of a varying selection is a text like any other")
            << typing("*VARIES*") << 0 << false << "*VARIES*" << redText();
        QTest::newRow("a decimal comma is refused")
            << typing("1,5") << 0 << false << "1,5" << redText();
        QTest::newRow("setValue reports nothing and sets no colour")
            << setting(1.5) << 0 << true << "1.50"
            << "";
        QTest::newRow("setValue clamps by way of formatting")
            << setting(1e9) << 0 << true << "100.00"
            << "";
        QTest::newRow("setValue leaves the red of the text before it")
            << inOrder({typing("1x"), setting(1.5)}) << 0 << true << "1.50" << redText();
        QTest::newRow("setValue and Enter report once")
            << inOrder({setting(1.5), enter}) << 1 << true << "1.50" << blackText();
        QTest::newRow("a text set by the application is not validated")
            << settingText("1x") << 0 << false << "1x"
            << "";
        QTest::newRow("a text set by the application is validated at Enter")
            << inOrder({settingText("1x"), enter}) << 1 << false << "1x" << redText();
        QTest::newRow("a text set behind a good one does not change its validity")
            << inOrder({typing("1"), settingText("1x")}) << 0 << true << "1x" << blackText();
    }

    void whatAnActionDoes()
    {
        QFETCH(Action, action);
        Form form;
        SimpleLineEdit* field = createPercentage();
        form.open(field);
        QSignalSpy valueChanged(field, &SimpleLineEdit::valueChanged);

        action(*field, form);
        QTEST(int(valueChanged.count()), "valueChanged");
        QTEST(field->isValueValid(), "valid");
        QTEST(field->edit()->text(), "text");
        QTEST(field->edit()->styleSheet(), "styleSheet");
    }

    void theColourIsOnTheScreen_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QColor>("colour");
        QTest::newRow("accepted") << "12" << QColor(0, 0, 0);
        QTest::newRow("refused") << "1x" << QColor(230, 20, 20);
    }

    void theColourIsOnTheScreen()
    {
        QFETCH(QString, text);
        Form form;
        SimpleLineEdit* field = createPercentage();
        form.open(field);
        QTest::keyClicks(field->edit(), text);
        QTEST(field->edit()->palette().color(QPalette::Text), "colour");
    }

    void aKeystrokeAsksInOrder()
    {
        Log log;
        Form form;
        HookedLineEdit* field = createHooked(&log);
        form.open(field);
        QTest::keyClicks(field->edit(), "7");
        QCOMPARE(log, Log({"veto 7", "validate 7", "validated 7 7", "hint 7"}));
        log.clear();
        QTest::keyClicks(field->edit(), "x");
        QCOMPARE(log, Log({"veto 7x", "validate 7x", "hint 7x"}));
    }

    void theEndOfEditingAsksInOrder()
    {
        Log log;
        HookedLineEdit* field = createHooked(&log);
        const QScopedPointer<QWidget> guard(field);
        connect(field, &SimpleLineEdit::valueChanged, field, [&] { log.append("valueChanged"); });

        field->edit()->setText("700");
        field->onEditingFinished();
        QCOMPARE(log,
            Log({"veto 700", "validate 700", "validated 700 700", "hint 700", "veto 700",
                "finish 700", "validated 700 500", "reformat 500", "valueChanged"}));
        log.clear();
        field->edit()->setText("x");
        field->onEditingFinished();
        QCOMPARE(
            log, Log({"veto x", "validate x", "hint x", "veto x", "finish x", "valueChanged"}));
    }

    void theResultIsInPlaceWhenTheSignalComes()
    {
        const QScopedPointer<SimpleLineEdit> field(createPercentage());
        QString text;
        bool valid = false;
        boost::any value;
        connect(field.data(), &SimpleLineEdit::valueChanged, field.data(), [&] {
            text = field->edit()->text();
            valid = field->isValueValid();
            value = field->getValue();
        });
        field->edit()->setText("1e9");
        field->onEditingFinished();
        QCOMPARE(text, QString("100.00"));
        QVERIFY(valid);
        QCOMPARE(value, boost::any(100.0));
    }

    // The colour is that of the last keystroke's validation.
    void aRefusalAtTheEndAloneKeepsTheColour()
    {
        struct Strict : public DigitsValidator
        {
            bool validateWhenFinished(const QString& /*text*/, boost::any& /*value*/,
                const std::bitset<32>& /*f*/) override
            {
                return false;
            }
        };
        const QScopedPointer<SimpleLineEdit> field(
            SimpleLineEdit::create(nullptr, {}, new Strict, 0, ExpandHorizontal));
        QSignalSpy valueChanged(field.data(), &SimpleLineEdit::valueChanged);
        field->edit()->setText("12");
        field->onTextEdited("12");
        QVERIFY(field->isValueValid());
        field->onEditingFinished();
        QVERIFY(!field->isValueValid());
        QCOMPARE(field->edit()->styleSheet(), blackText());
        QCOMPARE(field->edit()->text(), QString("12"));
        QCOMPARE(valueChanged.count(), 1);
    }

    void aVetoLeavesEverythingAsItWas()
    {
        Log log;
        Form form;
        HookedLineEdit* field = createHooked(&log);
        form.open(field);
        QTest::keyClicks(field->edit(), "7x");
        const auto* hint = field->findChild<detail::EditHintPopup*>();
        QVERIFY(hint);
        QCOMPARE(hint->findChild<QLabel*>()->text(), QString("hint of 7x"));
        QSignalSpy valueChanged(field, &SimpleLineEdit::valueChanged);

        field->veto = true;
        log.clear();
        QTest::keyClick(field->edit(), Qt::Key_Backspace);
        QTest::keyClick(field->edit(), Qt::Key_Return);
        QCOMPARE(log, Log({"veto 7", "veto 7", "veto 7"}));
        QVERIFY(!field->isValueValid());
        QCOMPARE(field->edit()->styleSheet(), redText());
        QCOMPARE(hint->findChild<QLabel*>()->text(), QString("hint of 7x"));
        QCOMPARE(valueChanged.count(), 0);
    }

    void flagsAreClearAndValuesFresh()
    {
        Log log;
        auto validator = boost::make_shared<DigitsValidator>(&log);
        const QScopedPointer<SimpleLineEdit> field(
            SimpleLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal));
        field->setValue(1);
        field->edit()->setText("2");
        field->onTextEdited("2");
        field->onEditingFinished();
        field->getValue();
        QCOMPARE(log,
            Log({"reformat 1", "validate 001", "validate 2", "validate 2", "finish 2", "reformat 2",
                "finish 002"}));
        QVERIFY(validator->flags.none());
        QVERIFY(validator->valuesCameEmpty);
    }

    void theHintFollowsTheText()
    {
        Log log;
        Form form;
        HookedLineEdit* field = createHooked(&log);
        form.open(field);
        QTest::keyClicks(field->edit(), "7");
        auto* hint = field->findChild<detail::EditHintPopup*>();
        QVERIFY(hint);
        QCOMPARE(hint->findChild<QLabel*>()->text(), QString("hint of 7"));
        QVERIFY(hint->isVisible());
        QCOMPARE(hint->size(), hint->sizeHint());

        QTest::keyClicks(field->edit(), "7777777777");
        QCOMPARE(hint->findChild<QLabel*>()->text(), QString("hint of 77777777777"));
        QCOMPARE(hint->size(), hint->sizeHint());

        QTest::keyClick(field->edit(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(field->edit(), Qt::Key_Delete);
        QCOMPARE(hint->findChild<QLabel*>()->text(), QString());
        QVERIFY(hint->isHidden());
    }

    void aHintIsNotShownOnAFieldWithoutFocus()
    {
        Log log;
        Form form;
        HookedLineEdit* field = createHooked(&log);
        form.open(field);
        form.leave();
        field->onTextEdited("7");
        if (auto* hint = field->findChild<detail::EditHintPopup*>())
            QVERIFY(hint->isHidden());
        form.enter();
        auto* hint = field->findChild<detail::EditHintPopup*>();
        QVERIFY(hint);
        QVERIFY(hint->isVisible());
        QCOMPARE(hint->findChild<QLabel*>()->text(), QString("hint of 7"));
    }

    void setValueShowsNoHint()
    {
        Log log;
        Form form;
        HookedLineEdit* field = createHooked(&log);
        form.open(field);
        log.clear();
        field->setValue(7);
        QCOMPARE(log, Log({"reformat 7", "validate 007"}));
    }

    void getValue_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<boost::any>("value");
        QTest::newRow("a number") << "12.345" << boost::any(12.345);
        QTest::newRow("a number out of range comes clamped") << "1e9" << boost::any(100.0);
        QTest::newRow("an empty text stands for zero") << "" << boost::any(0.0);
    }

    void getValue()
    {
        QFETCH(QString, text);
        const QScopedPointer<SimpleLineEdit> field(createPercentage());
        field->edit()->setText(text);
        QTEST(field->getValue(), "value");
        QCOMPARE(field->edit()->text(), text);
        QVERIFY2(!field->isValueValid(), "getValue() is no validation of the field");
    }

    void getValueOfARefusedTextAsserts()
    {
        const QScopedPointer<SimpleLineEdit> field(createPercentage());
        field->edit()->setText("1x");
        expectAssert("ok", {}, "getValue() failed to validate");
        QCOMPARE(field->getValue(), boost::any(0.0));
    }

    void getValueIsComputedFromTheTextOnEveryCall()
    {
        const QScopedPointer<SimpleLineEdit> field(createPercentage());
        field->setValue(1.239);
        QCOMPARE(field->getValue(), boost::any(1.24));
        field->edit()->setText("2");
        QCOMPARE(field->getValue(), boost::any(2.0));
    }

    void setValueOfAForeignTypeAssertsAndShowsNothing()
    {
        const QScopedPointer<SimpleLineEdit> field(createPercentage());
        field->setValue(1.5);
        expectAssert("value.type() == typeid(double)", {"value.type().name()"});
        field->setValue(std::string("1.5"));
        QCOMPARE(field->edit()->text(), QString());
        QVERIFY2(field->isValueValid(), "the empty text that is shown stands for zero");
    }

    void setValueTellsWhetherItsTextIsAccepted()
    {
        auto validator = boost::make_shared<StringEditValidator>(10);
        validator->setAllowedRegex(L"[0-9]+");
        const QScopedPointer<SimpleLineEdit> field(
            SimpleLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal));
        field->setValue(std::wstring(L"12"));
        QVERIFY(field->isValueValid());
        field->setValue(std::wstring(L"1x"));
        QVERIFY(!field->isValueValid());
        QCOMPARE(field->edit()->text(), QString("1x"));
        QCOMPARE(field->edit()->styleSheet(), QString());
    }

    void aKeystrokeDoesNotRepolish()
    {
        Form form;
        SimpleLineEdit* field = createPercentage();
        form.open(field);
        QTest::keyClicks(field->edit(), "1");
        StyleChanges changes(field->edit());
        QTest::keyClicks(field->edit(), "234567890.123456789");
        QTest::keyClick(field->edit(), Qt::Key_Return);
        field->setValue(3.0);
        QCOMPARE(changes.count, 0);

        QTest::keyClicks(field->edit(), "x");
        QVERIFY2(changes.count > 0, "a change of colour is a change of style");
        const int once = changes.count;
        QTest::keyClicks(field->edit(), "yz");
        QTest::keyClick(field->edit(), Qt::Key_Return);
        QCOMPARE(changes.count, once);
        QTest::keyClick(field->edit(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(field->edit(), "12");
        QCOMPARE(changes.count, 2 * once);
    }

    void theHistoryTakesTheText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("taken");
        QTest::newRow("a number as it is written") << "1.50" << true;
        QTest::newRow("a refused text") << "1x" << true;
        QTest::newRow("an empty text") << "" << false;
        QTest::newRow("the text of a varying selection") << getVariesString() << false;
        QTest::newRow("letters outside the basic plane")
            << QString::fromUtf8("\xF0\x9F\x98\x80") << true;
    }

    void theHistoryTakesTheText()
    {
        QFETCH(QString, text);
        QFETCH(bool, taken);
        const auto history = boost::make_shared<vrn::ValueHistory>(
            L"key", boost::make_shared<vrn::ValueHistoryMemoryStorage>());
        const QScopedPointer<SimpleLineEdit> field(createPercentage());
        field->edit()->setText(text);
        field->addCurrentValueToValueHistory();
        QVERIFY2(!field->valueHistory(), "without a history the call does nothing");

        field->setValueHistory(history);
        QCOMPARE(field->valueHistory(), history);
        field->addCurrentValueToValueHistory();
        std::deque<std::wstring> values;
        QCOMPARE(history->get(values), std::size_t(taken ? 1 : 0));
        if (taken)
            QCOMPARE(values.front(), text.toStdWString());
    }

    void editingAloneAddsNothingToTheHistory()
    {
        const auto history = boost::make_shared<vrn::ValueHistory>(
            L"key", boost::make_shared<vrn::ValueHistoryMemoryStorage>());
        const QScopedPointer<SimpleLineEdit> field(createPercentage());
        field->setValueHistory(history);
        field->edit()->setText("1");
        field->onEditingFinished();
        std::deque<std::wstring> values;
        QCOMPARE(history->get(values), std::size_t(0));
    }

    void aRawValidatorIsTakenOver()
    {
        struct Watched : public DigitsValidator
        {
            explicit Watched(bool* gone)
                : m_gone(gone)
            {}
            ~Watched() override { *m_gone = true; }
            bool* m_gone;
        };
        bool gone = false;
        QScopedPointer<SimpleLineEdit> field(
            SimpleLineEdit::create(nullptr, {}, new Watched(&gone), 0, ExpandHorizontal));
        QVERIFY(!gone);
        field.reset();
        QVERIFY(gone);
    }

    void aSharedValidatorIsShared()
    {
        Log log;
        const auto validator = boost::make_shared<DigitsValidator>(&log);
        QScopedPointer<HookedLineEdit> field(new HookedLineEdit(nullptr, validator, &log));
        QCOMPARE(validator.use_count(), 2L);
        QCOMPARE(&field->validator(), static_cast<IValidator*>(validator.get()));
        field.reset();
        QCOMPARE(validator.use_count(), 1L);
    }

private:
    static HookedLineEdit* createHooked(Log* log)
    {
        auto validator = boost::make_shared<DigitsValidator>(log);
        validator->setEditHintFunction([log](const QString& text) {
            log->append("hint " + text);
            return text.isEmpty() ? QString() : "hint of " + text;
        });
        return new HookedLineEdit(nullptr, validator, log);
    }
};

VRN_TEST(TestSimpleLineEditValidation)
#include "tst_simple_line_edit_validation.moc"
