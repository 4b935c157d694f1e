#include <vrn/assert/smart_assert.h>
#include <vrn/qt/distance_edit_validator.h>
#include <vrn/qt/simple_line_edit.h>
#include <vrn/units/unknown_unit.h>

#include "controls/popups/edit_hint_popup_p.h"
#include "controls/popups/history_popup_p.h"
#include "line_edit_fixture.h"
#include "support/catching_application.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QListWidget>
#include <QPointer>
#include <QSignalSpy>

#include <stdexcept>

using namespace vrn::qt;
using vrn::test::blackText;
using vrn::test::CatchingApplication;
using vrn::test::DigitsValidator;
using vrn::test::Form;
using vrn::test::historyOf;
using vrn::test::redText;
using vrn::test::row;
using vrn::test::ThroughQt;
using vrn::test::ThrowingValidator;

namespace {

using Step = std::function<void(SimpleLineEdit&)>;

void type(SimpleLineEdit& field, const QString& text)
{
    QTest::keyClicks(field.edit(), text);
}

void pressEnter(SimpleLineEdit& field)
{
    QTest::keyClick(field.edit(), Qt::Key_Return);
}

void clickFirstOfHistory(SimpleLineEdit& field)
{
    auto* list = field.findChild<detail::HistoryPopup*>()->findChild<QListWidget*>();
    QTest::mouseClick(
        list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
}

} // namespace

Q_DECLARE_METATYPE(Step)

class TestSimpleLineEditLifetime : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        CatchingApplication::instance().caught.clear();
    }

    // QLineEdit reports the end of editing if it is destroyed while it has the focus.
    void aDestroyedControlHasNoEndOfEditing()
    {
        vrn::test::Log log;
        Form form;
        SimpleLineEdit* field = form.open(createWithPopups(&log));
        type(*field, "1");
        QVERIFY(field->findChild<detail::EditHintPopup*>()->isVisible());
        QSignalSpy valueChanged(field, &SimpleLineEdit::valueChanged);
        log.clear();
        delete field;
        QCOMPARE(valueChanged.count(), 0);
        QCOMPARE(log, vrn::test::Log());
    }

    // A window that is destroyed takes the focus from its fields while they still live.
    void aDestroyedWindowIsLeft()
    {
        vrn::test::Log log;
        auto* form = new Form;
        SimpleLineEdit* field = createWithPopups(&log);
        form->open(field);
        type(*field, "1");
        QSignalSpy editingFinished(field->edit(), &QLineEdit::editingFinished);
        QSignalSpy valueChanged(field, &SimpleLineEdit::valueChanged);
        delete form;
        QCOMPARE(editingFinished.count(), 1);
        QCOMPARE(valueChanged.count(), 1);
        QCoreApplication::processEvents();
    }

    void aThrowingValidatorLeavesTheControlConsistent_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::addColumn<Step>("act");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<QString>("styleSheet");
        QTest::addColumn<int>("valueChanged");

        const Step key = [](SimpleLineEdit& f) { type(f, "3"); };
        const Step enter = [](SimpleLineEdit& f) { pressEnter(f); };
        const Step leave = [](SimpleLineEdit& f) {
            f.window()->findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly)->setFocus();
        };
        const Step set = [](SimpleLineEdit& f) {
            QVERIFY_EXCEPTION_THROWN(f.setValue(7), std::runtime_error);
            // Qt passes the other exceptions to the application, which catches them.
            CatchingApplication::instance().caught.emplace_back("from the validator");
        };
        const Step pick = [](SimpleLineEdit& f) { clickFirstOfHistory(f); };
        row("validate, a key", "validate", key, "123", false, redText(), 0);
        row("the hint, a key", "hint", key, "123", true, blackText(), 0);
        for (const char* operation : {"validate", "finish", "reformat"}) {
            QTest::addRow("%s, Enter", operation)
                << operation << enter << "12" << false << redText() << 0;
            QTest::addRow("%s, leaving", operation)
                << operation << leave << "12" << false << redText() << 0;
        }
        // Editing ends whether the hint throws or not.
        row("the hint, Enter", "hint", enter, "012", true, blackText(), 1);
        row("the hint, leaving", "hint", leave, "012", true, blackText(), 1);
        row("the hint, a pick", "hint", pick, "500", true, blackText(), 1);
        row("validate, a pick", "validate", pick, "700", false, redText(), 0);
        row("reformat, a pick", "reformat", pick, "700", false, redText(), 0);
        // setValue sets no colour; what cannot be written leaves no text.
        row("validate, setValue", "validate", set, "007", false, blackText(), 0);
        row("reformat, setValue", "reformat", set, "", false, blackText(), 0);
    }

    void aThrowingValidatorLeavesTheControlConsistent()
    {
        QFETCH(QString, operation);
        QFETCH(Step, act);
        const ThroughQt throughQt;
        Form form;
        const auto validator = boost::make_shared<ThrowingValidator>(operation);
        SimpleLineEdit* field = SimpleLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal);
        field->setValueHistory(historyOf({L"700"}));
        form.open(field);
        type(*field, "12");
        QSignalSpy valueChanged(field, &SimpleLineEdit::valueChanged);

        validator->armed = true;
        act(*field);
        QCOMPARE(
            CatchingApplication::instance().caught, std::vector<std::string>{"from the validator"});
        QTEST(field->edit()->text(), "text");
        QTEST(field->isValueValid(), "valid");
        QTEST(field->edit()->styleSheet(), "styleSheet");
        QTEST(int(valueChanged.count()), "valueChanged");

        valueChanged.clear();
        validator->armed = false;
        form.enter();
        QTest::keyClick(field->edit(), Qt::Key_A, Qt::ControlModifier);
        type(*field, "9");
        QVERIFY(field->isValueValid());
        QCOMPARE(field->edit()->styleSheet(), blackText());
        pressEnter(*field);
        QCOMPARE(field->edit()->text(), QString("009"));
        QCOMPARE(valueChanged.count(), 1);
        QCOMPARE(field->getValue(), boost::any(9));
        QCOMPARE(CatchingApplication::instance().caught.size(), std::size_t(1));
    }

    void aSlotMayDestroyTheControlOfAThrowingHint()
    {
        const auto validator = boost::make_shared<ThrowingValidator>("hint");
        QPointer<SimpleLineEdit> field(
            SimpleLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal));
        field->setValue(7);
        connect(field, &SimpleLineEdit::valueChanged, this, [&] { delete field; });
        validator->armed = true;
        QVERIFY_EXCEPTION_THROWN(field->onEditingFinished(), std::runtime_error);
        QVERIFY(!field);
    }

    void getValuePassesAnExceptionOn()
    {
        const auto validator = boost::make_shared<ThrowingValidator>("finish");
        const QScopedPointer<SimpleLineEdit> field(
            SimpleLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal));
        field->setValue(7);
        validator->armed = true;
        QVERIFY_EXCEPTION_THROWN(field->getValue(), std::runtime_error);
        QVERIFY(field->isValueValid());
        QCOMPARE(field->edit()->text(), QString("007"));
        validator->armed = false;
        QCOMPARE(field->getValue(), boost::any(7));
    }

    void anUnknownUnitIsRedUntilItIsMended()
    {
        const ThroughQt throughQt;
        Form form;
        constexpr int metre = 13;
        SimpleLineEdit* field = form.open(SimpleLineEdit::create(
            nullptr, {}, new DistanceEditValidator(metre, 0.0, 100.0, true), 0, ExpandHorizontal));
        type(*field, "2");
        QCOMPARE(field->edit()->styleSheet(), blackText());
        type(*field, "yd");
        QCOMPARE(CatchingApplication::instance().caught.size(), std::size_t(2));
        QVERIFY(CatchingApplication::instance().caught[1].find("yd") != std::string::npos);
        QCOMPARE(field->edit()->text(), QString("2yd"));
        QCOMPARE(field->edit()->styleSheet(), redText());
        QVERIFY(!field->isValueValid());

        pressEnter(*field);
        QCOMPARE(CatchingApplication::instance().caught.size(), std::size_t(3));
        QCOMPARE(field->edit()->text(), QString("2yd"));
        QCOMPARE(field->edit()->styleSheet(), redText());
        QVERIFY(!field->isValueValid());
        QVERIFY_EXCEPTION_THROWN(field->getValue(), vrn::units::UnknownUnit);

        QTest::keyClick(field->edit(), Qt::Key_Backspace);
        QTest::keyClick(field->edit(), Qt::Key_Backspace);
        QCOMPARE(field->edit()->text(), QString("2"));
        QCOMPARE(field->edit()->styleSheet(), blackText());
        QVERIFY(field->isValueValid());
        QCOMPARE(field->getValue(), boost::any(2.0));
    }

    void aMissingValidatorIsReportedAndRefuses()
    {
        const QScopedPointer<SimpleLineEdit> field(SimpleLineEdit::create(
            nullptr, {}, static_cast<IValidator*>(nullptr), 0, ExpandHorizontal));
        QSignalSpy valueChanged(field.data(), &SimpleLineEdit::valueChanged);

        field->edit()->setText("12");
        field->onTextEdited("12");
        QVERIFY2(field->isValueValid(), "a keystroke does not ask for the validator");
        QCOMPARE(field->edit()->styleSheet(), QString());

        expectAssert("m_validator");
        field->onEditingFinished();
        QVERIFY(!field->isValueValid());
        QCOMPARE(field->edit()->text(), QString("12"));
        QCOMPARE(valueChanged.count(), 1);

        expectAssert("m_validator");
        expectAssert("ok", {}, "getValue() failed to validate");
        QCOMPARE(field->getValue(), boost::any());

        expectAssert("m_validator");
        field->setValue(7);
        QVERIFY(!field->isValueValid());
        QCOMPARE(field->edit()->text(), QString());

        expectAssert("m_validator");
        field->addCurrentValueToValueHistory();
    }

    void anEditThatSomeoneDestroyedIsReportedAndDoneWithout_data()
    {
        QTest::addColumn<Step>("step");
        const auto row = [](const char* name, Step step) {
            QTest::newRow(name) << std::move(step);
        };
        row("edit", [](SimpleLineEdit& f) { QVERIFY(f.edit()); });
        row("setValue", [](SimpleLineEdit& f) { f.setValue(7); });
        row("the end of editing", [](SimpleLineEdit& f) { f.onEditingFinished(); });
        row("a text of the user", [](SimpleLineEdit& f) { f.onTextEdited("12"); });
        row("addButton", [](SimpleLineEdit& f) {
            QVERIFY(f.addButton([](const QString& text) { return text; }, {}));
        });
        row("setValueHistory", [](SimpleLineEdit& f) { f.setValueHistory(historyOf({L"1"})); });
        row("addCurrentValueToValueHistory",
            [](SimpleLineEdit& f) { f.addCurrentValueToValueHistory(); });
        row("setEditMaximumWidth", [](SimpleLineEdit& f) { f.setEditMaximumWidth(50); });
        row("setMaxLength", [](SimpleLineEdit& f) { f.setMaxLength(5); });
        row("setReadOnly", [](SimpleLineEdit& f) { f.setReadOnly(true); });
        row("setAlignment", [](SimpleLineEdit& f) { f.setAlignment(Qt::AlignRight); });
        row("selectAll", [](SimpleLineEdit& f) { f.selectAll(); });
        row("sizeHint", [](SimpleLineEdit& f) { QVERIFY(f.sizeHint().isValid()); });
        row("minimumSizeHint", [](SimpleLineEdit& f) { QVERIFY(f.minimumSizeHint().isValid()); });
        row("shown, laid out and painted", [](SimpleLineEdit& f) { f.grab(); });
    }

    void anEditThatSomeoneDestroyedIsReportedAndDoneWithout()
    {
        QFETCH(Step, step);
        const QScopedPointer<SimpleLineEdit> field(
            SimpleLineEdit::create(nullptr, "Span", new DigitsValidator, 0, ExpandHorizontal));
        delete field->edit();
        QStringList reports;
        const auto previous = vrn::smartassert::set_assert_handler(
            [&](const auto& report) { reports << QString::fromStdString(report.expression); });
        step(*field);
        vrn::smartassert::set_assert_handler(previous);
        reports.removeDuplicates();
        QCOMPARE(reports, QStringList("m_lineEdit"));
    }

private:
    static SimpleLineEdit* createWithPopups(vrn::test::Log* log)
    {
        auto validator = boost::make_shared<DigitsValidator>(log);
        validator->setEditHintFunction([](const QString&) { return QString("hint"); });
        auto* field = SimpleLineEdit::create(nullptr, "Span", validator, 0, ExpandHorizontal);
        field->setValueHistory(historyOf({L"12"}));
        return field;
    }
};

VRN_TEST_IN(TestSimpleLineEditLifetime, CatchingApplication)
#include "tst_simple_line_edit_lifetime.moc"
