#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/simple_line_edit.h>
#include <vrn/qt/string_edit_validator.h>
#include <vrn/qt/varies_string.h>

#include "controls/popups/edit_hint_popup_p.h"
#include "line_edit_fixture.h"
#include "support/table.h"
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
using vrn::test::row;

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

        // The random sequences hold the rest of the rules of a validator of digits.
        const Action enter = pressing(Qt::Key_Return);
        row("nothing: not valid yet", inOrder({}), 0, false, "", "");
        row("beyond the maximum, typed", typing("1e9"), 0, true, "1e9", blackText());
        row("beyond the maximum, Enter", inOrder({typing("1e9"), enter}), 1, true, "100.00",
            blackText());
        row("the Enter of the number pad", inOrder({typing("1.5"), pressing(Qt::Key_Enter)}), 1,
            true, "1.50", blackText());
        row("refused, left", inOrder({typing("1x"), leaving()}), 1, false, "1x", redText());
        row("Enter on an empty field: it stands for zero", enter, 1, true, "0.00", blackText());
        row("the text of a varying selection", typing("*VARIES*"), 0, false, "*VARIES*", redText());
        row("a decimal comma is refused", typing("1,5"), 0, false, "1,5", redText());
        row("setValue clamps", setting(1e9), 0, true, "100.00", "");
        row("setValue leaves the red", inOrder({typing("1x"), setting(1.5)}), 0, true, "1.50",
            redText());
        row("setText is not validated", settingText("1x"), 0, false, "1x", "");
        row("setText is validated at Enter", inOrder({settingText("1x"), enter}), 1, false, "1x",
            redText());
        row("setText after a good text", inOrder({typing("1"), settingText("1x")}), 0, true, "1x",
            blackText());
    }

    void whatAnActionDoes()
    {
        QFETCH(Action, action);
        Form form;
        SimpleLineEdit* field = form.open(createPercentage());
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
        row("accepted", "12", QColor(0, 0, 0));
        row("refused", "1x", QColor(230, 20, 20));
    }

    void theColourIsOnTheScreen()
    {
        QFETCH(QString, text);
        Form form;
        SimpleLineEdit* field = form.open(createPercentage());
        QTest::keyClicks(field->edit(), text);
        QTEST(field->edit()->palette().color(QPalette::Text), "colour");
    }

    void aKeystrokeAsksInOrder()
    {
        Log log;
        Form form;
        HookedLineEdit* field = form.open(createHooked(&log));
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

    // The colour comes from the validation of the last keystroke.
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
        HookedLineEdit* field = form.open(createHooked(&log));
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
        HookedLineEdit* field = form.open(createHooked(&log));
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

    void setValueShowsNoHint()
    {
        Log log;
        Form form;
        HookedLineEdit* field = form.open(createHooked(&log));
        log.clear();
        field->setValue(7);
        QCOMPARE(log, Log({"reformat 7", "validate 007"}));
    }

    void getValue_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<boost::any>("value");
        row("a number", "12.345", boost::any(12.345));
        row("a number out of range comes clamped", "1e9", boost::any(100.0));
        row("an empty text stands for zero", "", boost::any(0.0));
    }

    void getValue()
    {
        QFETCH(QString, text);
        const QScopedPointer<SimpleLineEdit> field(createPercentage());
        field->setValue(1.239);
        QCOMPARE(field->getValue(), boost::any(1.24));
        field->edit()->setText(text);
        QTEST(field->getValue(), "value");
        QCOMPARE(field->edit()->text(), text);
        QVERIFY2(field->isValueValid(), "getValue() does not validate the field");
    }

    void getValueOfARefusedTextAsserts()
    {
        const QScopedPointer<SimpleLineEdit> field(createPercentage());
        field->edit()->setText("1x");
        expectAssert("ok", {}, "getValue() failed to validate");
        QCOMPARE(field->getValue(), boost::any(0.0));
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
        SimpleLineEdit* field = form.open(createPercentage());
        QTest::keyClicks(field->edit(), "1");
        int changes = 0;
        // For each of them Qt polishes the edit and its children again.
        const vrn::test::EventWatch watch(field->edit(), [&](const QEvent& event) {
            if (event.type() == QEvent::StyleChange || event.type() == QEvent::Polish)
                ++changes;
        });
        QTest::keyClicks(field->edit(), "234567890.123456789");
        QTest::keyClick(field->edit(), Qt::Key_Return);
        field->setValue(3.0);
        QCOMPARE(changes, 0);

        QTest::keyClicks(field->edit(), "x");
        QVERIFY2(changes > 0, "a change of colour is a change of style");
        const int once = changes;
        QTest::keyClicks(field->edit(), "yz");
        QTest::keyClick(field->edit(), Qt::Key_Return);
        QCOMPARE(changes, once);
        QTest::keyClick(field->edit(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(field->edit(), "12");
        QCOMPARE(changes, 2 * once);
    }

    void theHistoryTakesTheText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("taken");
        row("a number as it is written", "1.50", true);
        row("a refused text", "1x", true);
        row("an empty text", "", false);
        row("the text of a varying selection", getVariesString(), false);
        row("letters outside the basic plane", QString::fromUtf8("\xF0\x9F\x98\x80"), true);
    }

    void theHistoryTakesTheText()
    {
        QFETCH(QString, text);
        QFETCH(bool, taken);
        const auto history = vrn::test::historyOf({});
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
        const auto history = vrn::test::historyOf({});
        const QScopedPointer<SimpleLineEdit> field(createPercentage());
        field->setValueHistory(history);
        field->edit()->setText("1");
        field->onEditingFinished();
        std::deque<std::wstring> values;
        QCOMPARE(history->get(values), std::size_t(0));
    }

    void aRawValidatorIsTakenOver()
    {
        bool gone = false;
        QScopedPointer<SimpleLineEdit> field(SimpleLineEdit::create(
            nullptr, {}, new vrn::test::MortalValidator(&gone), 0, ExpandHorizontal));
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
