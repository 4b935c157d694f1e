#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/string_edit_validator.h>
#include <vrn/qt/unit_validator.h>

#include "multi_edit_line_edit_fixture.h"
#include "support/other_language.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QAccessible>
#include <QMouseEvent>
#include <QPushButton>
#include <QScopedPointer>

#include <limits>
#include <stdexcept>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Quantity = vrn::units::IConverter::quantity;

MultiEditLineEdit* create(IValidator* validator = percentage())
{
    return MultiEditLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal);
}

// What a derived class may do and see.
class Derived : public MultiEditLineEdit
{
public:
    explicit Derived(boost::shared_ptr<IValidator> validator)
        : MultiEditLineEdit(nullptr, {}, std::move(validator), {}, 0, ExpandHorizontal)
    {}

    void setValue(const boost::any& value) override
    {
        ++sets;
        MultiEditLineEdit::setValue(value);
    }

    void forceVaries() override
    {
        ++forces;
        MultiEditLineEdit::forceVaries();
    }

    using MultiEditControlBase::setLoading;
    using MultiEditLineEdit::vetoValidation;

    int sets = 0;
    int forces = 0;
};

MultiEditAction undo()
{
    return [](MultiEditLineEdit& field, Form&) {
        QTest::keyClick(field.edit(), Qt::Key_Z, Qt::ControlModifier);
    };
}

// Moves and buttons of the mouse, each at a place of the edit in per cent of its width:
// "press 10 drag 12 release 12".
void useMouse(QLineEdit* edit, const QString& script)
{
    const QStringList words = script.split(' ');
    for (int i = 0; i + 1 < words.size(); i += 2) {
        const QPoint place(words[i + 1].toInt() * (edit->width() - 1) / 100, edit->height() / 2);
        if (words[i] == "press")
            QTest::mousePress(edit, Qt::LeftButton, {}, place);
        else if (words[i] == "release")
            QTest::mouseRelease(edit, Qt::LeftButton, {}, place);
        else if (words[i] == "double")
            QTest::mouseDClick(edit, Qt::LeftButton, {}, place);
        else if (words[i] == "right")
            QTest::mouseClick(edit, Qt::RightButton, {}, place);
        else {
            QMouseEvent move(QEvent::MouseMove, place, edit->mapToGlobal(place), Qt::NoButton,
                Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(edit, &move);
        }
    }
}

} // namespace

class TestMultiEditLineEdit : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    // --- states and signals

    void whatActionsDo_data()
    {
        using namespace vrn::test::action;
        const QString varies = getVariesString();
        const boost::any none;
        const auto varying = inOrder({read(1.0), read(2.0)});
        addActionColumns();
        // QLineEdit reports that it was left if the text has changed since its last report.
        actionRow("a fresh field, left", {leave()}, 0, false, "", none);
        actionRow("a value, left", {read(1.0), leave()}, 1, false, "1.0", 1.0);
        // The text that the end of editing writes is such a change.
        actionRow("a value, Enter, left", {read(1.0), enter(), leave()}, 2, false, "1.0", 1.0);
        actionRow("a text, left", {read(1.0), type("4"), leave()}, 1, false, "4.0", 4.0);
        actionRow("a text, Enter, a text, left", {type("4"), enter(), type("5"), leave()}, 2, false,
            "5.0", 5.0);
        actionRow("a refused text, left", {read(1.0), type("x"), leave()}, 1, false, "x", none);
        actionRow("varying, Enter", {varying, enter()}, 0, true, varies, none);
        actionRow("varying, left", {varying, leave()}, 0, true, varies, none);
        actionRow("varying, a text, left", {varying, type("4"), leave()}, 1, false, "4.0", 4.0);
        actionRow(
            "varying, a refused text, left", {varying, type("x"), leave()}, 1, true, "x", none);
        actionRow("varying, a refused text, the varies text, left",
            {varying, type("x"), type(varies), leave()}, 0, true, varies, none);
        actionRow("the varies text over a value, Enter", {read(1.0), type(varies), enter()}, 0,
            true, varies, none);
        actionRow("two that are written alike", {read(1.0), read(1.04)}, 0, false, "1.0", 1.0);
        actionRow("a text typed since a value was read",
            {read(1.0), read(1.0), type("2.0"), read(1.0)}, 0, true, varies, none);
        actionRow("a value equal to the text typed since", {read(1.0), type("2.0"), read(2.0)}, 0,
            false, "2.0", 2.0);
        actionRow("the same value, but not as it is written", {read(1.0), type("1"), read(1.0)}, 0,
            true, varies, none);
    }

    void whatActionsDo() { verifyActions(create()); }

    // The validity is that of the value before; the text is not a number.
    void resetOfAVaryingFieldLeavesATextThatHasNoValue()
    {
        const QScopedPointer<MultiEditLineEdit> field(create());
        field->readValue(1.0);
        field->readValue(2.0);
        field->reset();
        QVERIFY(!field->dataVaries());
        QCOMPARE(field->edit()->text(), getVariesString());
        expectAssert("ok", {}, "getValue() failed to validate");
        field->getCurrentValue();
        QVERIFY(isFresh(*field, 1.0));
    }

    void resetOfAVaryingFieldOfTextsReturnsTheTextInIt()
    {
        const QScopedPointer<MultiEditLineEdit> field(create(new StringEditValidator(40)));
        field->forceVaries();
        QVERIFY(field->getCurrentValue().empty());
        field->setValue(std::wstring(L"a"));
        field->forceVaries();
        field->reset();
        QCOMPARE(field->getCurrentValue(), boost::any(getVariesString().toStdWString()));
    }

    // --- comparison

    // The text decides, whatever the field remembers of earlier values.
    void everyPairAfterARunOfEqualValuesIsComparedAsText()
    {
        const double values[] = {0.0, -0.0, 0.04, -0.04, 1.0, 1.04, -1.0, 1e9, -1e9,
            std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()};
        const auto validator = boost::make_shared<CountingValidator>();
        for (const double first : values) {
            for (const double second : values) {
                const QScopedPointer<MultiEditLineEdit> field(
                    MultiEditLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal));
                for (int i = 0; i < 3; ++i)
                    field->readValue(first);
                QVERIFY(!field->dataVaries());
                field->readValue(second);
                const bool alike = validator->reformat(first, 0) == validator->reformat(second, 0);
                QVERIFY2(field->dataVaries() != alike,
                    qPrintable(QString("%1 and %2").arg(first).arg(second)));
                QCOMPARE(field->edit()->text(),
                    alike ? validator->reformat(first, 0) : getVariesString());
            }
        }
    }

    void quantitiesAreComparedAsText_data()
    {
        QTest::addColumn<int>("unit");
        QTest::addColumn<double>("number");
        QTest::addColumn<bool>("varies");
        namespace Id = vrn::units::UnitId;
        row("the same", int(Id::METRE), 1.5, false);
        row("alike in the display unit", int(Id::METRE), 1.5000001, false);
        row("another number", int(Id::METRE), 1.6, true);
        row("the same length in another unit", int(Id::MILLIMETRE), 1500.0, true);
        row("the same number in another unit", int(Id::MILLIMETRE), 1.5, true);
    }

    void quantitiesAreComparedAsText()
    {
        QFETCH(int, unit);
        QFETCH(double, number);
        namespace Id = vrn::units::UnitId;
        const boost::any first = Quantity{Id::METRE, 1.5};
        const boost::any second = Quantity{Id::UnitId(unit), number};
        auto* validator = new UnitValidator(vrn::units::Context(), Id::METRE);
        const QScopedPointer<MultiEditLineEdit> field(create(validator));
        QTEST(validator->reformat(first, 0) != validator->reformat(second, 0), "varies");
        field->readValue(first);
        field->readValue(first);
        field->readValue(second);
        QTEST(field->dataVaries(), "varies");
    }

    void readingGoesThroughTheVirtualFunctions()
    {
        Derived field{boost::shared_ptr<IValidator>(percentage())};
        field.readValue(1.0);
        QCOMPARE(field.sets, 1);
        field.readValue(1.0);
        QCOMPARE(field.sets + field.forces, 1);
        field.readValue(2.0);
        QCOMPARE(field.forces, 1);
        field.readValue(3.0);
        QCOMPARE(field.sets + field.forces, 2);
    }

    void equalValuesAreWrittenOnlyOnceMore()
    {
        const auto validator = boost::make_shared<CountingValidator>();
        const QScopedPointer<MultiEditLineEdit> field(
            MultiEditLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal));
        for (int i = 0; i < 1000; ++i)
            field->readValue(1.5);
        QVERIFY2(validator->written <= 2, qPrintable(QString::number(validator->written)));
        field->readValue(2.5);
        QVERIFY(field->dataVaries());
        validator->written = 0;
        for (int i = 0; i < 1000; ++i)
            field->readValue(double(i));
        QCOMPARE(validator->written, 0);
    }

    void aResetForgetsHowValuesWereWritten()
    {
        struct Changing : public CountingValidator
        {
            QString reformat(const boost::any& value, const std::bitset<32>& flags) override
            {
                return prefix + CountingValidator::reformat(value, flags);
            }
            QString prefix;
        };
        const auto validator = boost::make_shared<Changing>();
        const QScopedPointer<MultiEditLineEdit> field(
            MultiEditLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal));
        field->readValue(1.5);
        field->readValue(1.5);
        validator->prefix = "+";
        field->reset();
        field->readValue(1.5);
        field->readValue(1.5);
        QCOMPARE(field->edit()->text(), QString("+1.5"));
        QVERIFY(!field->dataVaries());
        // Another value has been shown, and the first text is put back by hand.
        validator->prefix = "-";
        field->setValue(2.5);
        field->edit()->setText("+1.5");
        field->readValue(1.5);
        QVERIFY(field->dataVaries());
    }

    // --- setValue

    void setValueSetsNoColour()
    {
        Form form;
        MultiEditLineEdit* field = form.open(create());
        action::type("x")(*field, form);
        QCOMPARE(field->edit()->styleSheet(), redText());
        field->setValue(1.0);
        field->forceVaries();
        QCOMPARE(field->edit()->styleSheet(), redText());
        QCOMPARE(field->getCurrentValue(), boost::any());
    }

    void whileLoadingSignalsAreBlockedInSetValue()
    {
        const auto validator = boost::make_shared<ThrowingValidator>("reformat");
        Derived field(validator);
        const auto throwing = validator->before;
        bool blockedDuring = false;
        validator->before = [&](const QString& operation) {
            blockedDuring = field.signalsBlocked();
            throwing(operation);
        };
        for (const bool blockedBefore : {false, true}) {
            field.blockSignals(blockedBefore);
            field.setLoading(false);
            field.setValue(1);
            QCOMPARE(blockedDuring, blockedBefore);
            field.setLoading(true);
            field.setValue(2);
            QVERIFY(blockedDuring);
            QCOMPARE(field.signalsBlocked(), blockedBefore);
            QCOMPARE(field.edit()->text(), QString("002"));
            validator->armed = true;
            QVERIFY_EXCEPTION_THROWN(field.setValue(3), std::runtime_error);
            QCOMPARE(field.signalsBlocked(), blockedBefore);
            validator->armed = false;
        }
    }

    // --- the veto

    void theVetoIsForTheVariesTextAlone()
    {
        Derived field{boost::shared_ptr<IValidator>(percentage())};
        const QString varies = getVariesString();
        for (int round = 0; round < 2; ++round) {
            QVERIFY(field.vetoValidation(varies));
            for (const QString& text :
                {varies.toLower(), varies + " ", varies.chopped(1), QString()})
                QVERIFY2(!field.vetoValidation(text), qPrintable(text));
            field.forceVaries();
        }
    }

    void aTypedVariesTextIsNotValidated()
    {
        Form form;
        MultiEditLineEdit* field = form.open(create());
        field->readValue(1.0);
        action::type("2")(*field, form);
        QCOMPARE(field->edit()->styleSheet(), blackText());
        // Pasted, so that no text on the way is validated.
        field->edit()->selectAll();
        field->edit()->insert(getVariesString());
        Q_EMIT field->edit()->textEdited(getVariesString());
        QVERIFY(field->isValueValid());
        QVERIFY(field->dataVaries());
        QVERIFY(field->getCurrentValue().empty());
        QCOMPARE(field->edit()->styleSheet(), blackText());
    }

    // Undo then brings back only a part of the varies text.
    void aCutVariesTextThatIsUndoneToIsNoValue()
    {
        Form form;
        MultiEditLineEdit* field = form.open(create(new StringEditValidator(40)));
        field->setMaxLength(5);
        field->forceVaries();
        action::inOrder({action::type("5"), undo()})(*field, form);
        QCOMPARE(field->edit()->text(), getVariesString().left(5));
        QVERIFY(field->dataVaries());
        QVERIFY(field->getCurrentValue().empty());
        field->setValue(getVariesString().left(5).toStdWString());
        QVERIFY(!field->dataVaries());
        QSignalSpy valueChanged(field, &MultiEditLineEdit::valueChanged);
        action::enter()(*field, form);
        QCOMPARE(valueChanged.count(), 1);
    }

    void aCutVariesTextIsNoValue_data()
    {
        QTest::addColumn<bool>("isLimitedFirst");
        QTest::addColumn<MultiEditAction>("end");
        row("cut when it varies, Enter", true, action::enter());
        row("cut when it varies, left", true, action::leave());
        row("cut later, Enter", false, action::enter());
        row("cut later, left", false, action::leave());
    }

    void aCutVariesTextIsNoValue()
    {
        QFETCH(bool, isLimitedFirst);
        QFETCH(MultiEditAction, end);
        Form form;
        MultiEditLineEdit* field = form.open(create(new StringEditValidator(40)));
        if (isLimitedFirst)
            field->setMaxLength(5);
        field->forceVaries();
        field->setMaxLength(5);
        QCOMPARE(field->edit()->text(), getVariesString().left(5));
        QSignalSpy valueChanged(field, &MultiEditLineEdit::valueChanged);
        end(*field, form);
        QCOMPARE(valueChanged.count(), 0);
        QVERIFY(field->dataVaries());
        QVERIFY(field->getCurrentValue().empty());
        action::inOrder({action::type("IPE"), end})(*field, form);
        QVERIFY(!field->dataVaries());
        QCOMPARE(field->getCurrentValue(), boost::any(std::wstring(L"IPE")));
    }

    void textsAreComparedAsTheyAreCut()
    {
        const QScopedPointer<MultiEditLineEdit> field(create(new StringEditValidator(40)));
        field->setMaxLength(5);
        field->readValue(std::wstring(L"IPE 300"));
        field->readValue(std::wstring(L"IPE 300"));
        QVERIFY(!field->dataVaries());
        field->readValue(std::wstring(L"HEA 300"));
        QVERIFY(field->dataVaries());
    }

    // --- a change of the language

    // A field of texts would take it for one of its values.
    void theVariesTextOfAnotherLanguageIsNoValue_data()
    {
        QTest::addColumn<bool>("delivered");
        row("when the field has learnt of the language", true);
        row("before", false);
    }

    void theVariesTextOfAnotherLanguageIsNoValue()
    {
        QFETCH(bool, delivered);
        Form form;
        MultiEditLineEdit* field = form.open(create(new StringEditValidator(40)));
        field->forceVaries();
        OtherLanguage german;
        QSignalSpy valueChanged(field, &MultiEditLineEdit::valueChanged);
        const QString style = field->edit()->styleSheet();
        for (const char* text : {"*VERSCHIEDEN*", "*VARIES*"}) {
            german.change();
            if (delivered)
                deliverLanguage();
            action::inOrder({action::enter(), action::leave()})(*field, form);
            form.enter();
            QCOMPARE(valueChanged.count(), 0);
            QVERIFY(field->dataVaries());
            deliverLanguage();
            QCOMPARE(field->edit()->text(), QString(text));
            QCOMPARE(field->edit()->styleSheet(), style);
        }
    }

    void aSelectedVariesTextStaysSelectedInAnotherLanguage()
    {
        Form form;
        MultiEditLineEdit* field = form.open(create());
        field->forceVaries();
        field->selectAll();
        OtherLanguage german;
        german.change();
        deliverLanguage();
        QTest::keyClicks(field->edit(), "5");
        QCOMPARE(field->edit()->text(), QString("5"));
        field->forceVaries();
        german.change();
        deliverLanguage();
        QVERIFY(!field->edit()->hasSelectedText());
    }

    void withoutItsEditAFieldTakesAChangeOfTheLanguageCalmly()
    {
        const QScopedPointer<MultiEditLineEdit> field(create());
        field->forceVaries();
        delete field->edit();
        OtherLanguage german;
        german.change();
        deliverLanguage();
        QVERIFY(field->dataVaries());
    }

    // --- the mouse

    void theFirstKeyAfterAClickReplacesTheVariesText_data()
    {
        QTest::addColumn<QString>("mouse");
        row("a press", "press 10");
        row("a click", "press 10 release 10");
        row("a click with a shaking hand", "press 10 drag 11 release 11");
        row("two clicks", "press 10 release 10 press 5 release 5");
        row("a double click", "double 10");
        row("a press of a double click", "press 10 release 10 double 10 drag 12");
        row("a click with the right button", "right 10");
    }

    void theFirstKeyAfterAClickReplacesTheVariesText()
    {
        QFETCH(QString, mouse);
        Form form;
        MultiEditLineEdit* field = form.open(create());
        form.leave();
        field->readValue(1.0);
        field->readValue(2.0);
        useMouse(field->edit(), mouse);
        QVERIFY(field->edit()->hasFocus());
        QCOMPARE(field->edit()->selectedText(), getVariesString());
        QTest::keyClicks(field->edit(), "5");
        QCOMPARE(field->edit()->text(), QString("5"));
        QVERIFY(!field->dataVaries());
    }

    void aMouseThatPassesSelectsNothing()
    {
        Form form;
        MultiEditLineEdit* field = form.open(create());
        field->forceVaries();
        field->edit()->setMouseTracking(true);
        QTest::mouseMove(field->edit(), field->edit()->rect().center());
        QVERIFY(!field->edit()->hasSelectedText());
    }

    void theMouseWorksInAnyOtherTextAsEver_data()
    {
        QTest::addColumn<MultiEditAction>("before");
        using namespace vrn::test::action;
        row("a common value", read(100.0));
        row("a refused text over a variation", inOrder({read(1.0), read(2.0), type("12 34")}));
    }

    void theMouseWorksInAnyOtherTextAsEver()
    {
        QFETCH(MultiEditAction, before);
        Form form;
        MultiEditLineEdit* field = create();
        auto* plain = new QLineEdit;
        form.layout()->addWidget(plain);
        form.open(field);
        before(*field, form);
        plain->setText(field->edit()->text());
        plain->setFixedSize(field->edit()->size());
        QStringList results;
        for (QLineEdit* edit : {plain, field->edit()}) {
            useMouse(edit, "press 5 drag 25 release 25");
            QString result = QString("dragged: %1").arg(edit->selectedText());
            useMouse(edit, "double 2");
            result += QString(", double click: %1").arg(edit->selectedText());
            useMouse(edit, "release 2");
            QTest::qWait(QApplication::doubleClickInterval() + 50);
            useMouse(edit, "press 2 release 2");
            results << result + QString(", click: %1").arg(edit->selectedText());
        }
        QCOMPARE(results[1], results[0]);
        QVERIFY2(!results[1].contains("dragged: ,"), qPrintable(results[1]));
    }

    // --- copyStateFrom

    void copyStateFromTakesTextAndFlags_data()
    {
        QTest::addColumn<MultiEditAction>("before");
        QTest::addColumn<bool>("varies");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("fresh");
        using namespace vrn::test::action;
        row("fresh and empty", nothing(), false, "", true);
        row("fresh with a text", set(2.0), false, "2.0", true);
        row("common", read(2.0), false, "2.0", false);
        row("varying", inOrder({read(1.0), read(2.0)}), true, getVariesString(), false);
        row("varying and fresh", action::forceVaries(), true, getVariesString(), true);
        row("refused", type("x"), false, "x", true);
    }

    void copyStateFromTakesTextAndFlags()
    {
        QFETCH(MultiEditAction, before);
        Form form;
        MultiEditLineEdit* other = form.open(create());
        before(*other, form);
        const QString otherText = other->edit()->text();

        const MultiEditAction starts[] = {action::nothing(), action::read(5.0),
            action::inOrder({action::read(5.0), action::read(6.0)})};
        for (const MultiEditAction& start : starts) {
            const QScopedPointer<MultiEditLineEdit> field(create());
            start(*field, form);
            const bool wasValid = field->isValueValid();
            QSignalSpy valueChanged(field.data(), &MultiEditLineEdit::valueChanged);
            field->copyStateFrom(*other);
            QTEST(field->dataVaries(), "varies");
            QTEST(field->edit()->text(), "text");
            QCOMPARE(field->isValueValid(), wasValid);
            QCOMPARE(field->edit()->styleSheet(), QString());
            QCOMPARE(valueChanged.count(), 0);
            QTEST(isFresh(*field, 1.0), "fresh");
        }
        QCOMPARE(other->edit()->text(), otherText);
    }

    void copyStateFromItselfChangesNothing()
    {
        const QScopedPointer<MultiEditLineEdit> field(create());
        field->readValue(1.0);
        field->copyStateFrom(*field);
        QCOMPARE(field->edit()->text(), QString("1.0"));
        QCOMPARE(field->getCurrentValue(), boost::any(1.0));
        QVERIFY(!isFresh(*field, 1.0));
    }

    // --- creation

    void theThreeCreatorsPassOnWhatTheyGet()
    {
        QWidget parent;
        const auto shared = boost::make_shared<CountingValidator>();
        int clicks = 0;
        const MultiEditLineEdit* fields[] = {
            MultiEditLineEdit::create(&parent, "&Span", percentage(), 1, ExpandHorizontal),
            MultiEditLineEdit::create(&parent, "&Span", shared, 1, ExpandHorizontal),
            MultiEditLineEdit::create(
                &parent, "&Span", shared, [&] { ++clicks; }, 1, ExpandHorizontal)};
        QCOMPARE(shared.use_count(), 3L);
        for (const MultiEditLineEdit* field : fields) {
            QCOMPARE(field->parentWidget(), &parent);
            QCOMPARE(field->edit()->accessibleName(), QString("Span"));
            QVERIFY(qobject_cast<QHBoxLayout*>(field->layout()));
            QCOMPARE(field->styleSheet(), QString("* { background-color:white; }"));
            QVERIFY(!field->canBeSaved());
        }
        QVERIFY(!fields[1]->findChild<QPushButton*>());
        fields[2]->findChild<QPushButton*>()->click();
        QCOMPARE(clicks, 1);

        const auto* plain = MultiEditLineEdit::create(&parent, {}, shared, 2, ExpandDirection(0));
        QCOMPARE(plain->styleSheet(), QString());
        QVERIFY(qobject_cast<QVBoxLayout*>(plain->layout()));
    }

    void aVaryingFieldSaysSoToAssistiveTechnology()
    {
        const QScopedPointer<MultiEditLineEdit> field(
            MultiEditLineEdit::create(nullptr, "Span", percentage(), 0, ExpandHorizontal));
        field->readValue(1.0);
        field->readValue(2.0);
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(field->edit());
        QVERIFY(accessible);
        QCOMPARE(accessible->text(QAccessible::Name), QString("Span"));
        QCOMPARE(accessible->text(QAccessible::Value), getVariesString());
    }

    // --- what should not come

    void aValueOfAForeignTypeIsReported()
    {
        for (const boost::any& value :
            {boost::any(std::string("1.0")), boost::any(1), boost::any()}) {
            const QScopedPointer<MultiEditLineEdit> field(create());
            const auto read = [&] {
                expectAssert("value.type() == typeid(double)", {"value.type().name()"});
                field->readValue(value);
            };
            read();
            QCOMPARE(field->edit()->text(), QString());
            QVERIFY(field->getCurrentValue().empty());
            read();
            QVERIFY2(!field->dataVaries(), "nothing is shown for either");
            field->readValue(1.0);
            QVERIFY(field->dataVaries());
            field->readValue(value);

            field->reset();
            field->readValue(1.0);
            QCOMPARE(field->getCurrentValue(), boost::any(1.0));
            read();
            QVERIFY(field->dataVaries());
        }
    }

    void anEmptyValueIsAValueWhereTheValidatorAllowsIt()
    {
        auto* validator = new DoubleEditValidator(1, 0.0, 100.0, false);
        validator->setEmptyValueAllowed(true);
        const QScopedPointer<MultiEditLineEdit> field(create(validator));
        field->readValue(boost::any());
        field->readValue(boost::any());
        QVERIFY(!field->dataVaries());
        QVERIFY(field->isValueValid());
        field->readValue(0.0);
        QVERIFY(field->dataVaries());
    }

    void aMissingValidatorIsReported()
    {
        const QScopedPointer<MultiEditLineEdit> field(create(nullptr));
        expectAssert("m_validator");
        field->readValue(1.0);
        QVERIFY(!field->isValueValid());
        expectAssert("m_validator");
        field->readValue(2.0);
        QVERIFY(!field->dataVaries());
        QVERIFY(field->getCurrentValue().empty());
        field->forceVaries();
        QVERIFY(field->dataVaries());
    }

    void aValidatorThatRefusesWhatItWroteLeavesNoValue()
    {
        auto* validator = new StringEditValidator(10);
        validator->setAllowedRegex(L"[0-9]+");
        const QScopedPointer<MultiEditLineEdit> field(create(validator));
        field->readValue(std::wstring(L"1x"));
        QVERIFY(!field->dataVaries());
        QCOMPARE(field->edit()->text(), QString("1x"));
        QVERIFY(field->getCurrentValue().empty());
        field->readValue(std::wstring(L"1x"));
        QVERIFY(!field->dataVaries());
    }

    void aValueThatCannotBeWrittenIsNoValue_data()
    {
        QTest::addColumn<MultiEditAction>("before");
        QTest::addColumn<MultiEditAction>("action");
        QTest::addColumn<bool>("varies");
        QTest::addColumn<bool>("fresh");
        using namespace vrn::test::action;
        const auto nextSelection = inOrder({read(1), action::reset()});
        const auto varying = inOrder({read(1), read(3)});
        row("setValue", read(1), set(2), false, false);
        row("setValue of a fresh field", nextSelection, set(2), false, true);
        row("setValue of a varying field", varying, set(2), false, false);
        row("the first read", nextSelection, read(2), false, false);
        row("the first read of a field that was forced to vary",
            inOrder({nextSelection, action::forceVaries()}), read(2), false, false);
        row("a later read", read(1), read(2), true, false);
        row("a later read of a value equal to the first", read(1), read(1), true, false);
    }

    void aValueThatCannotBeWrittenIsNoValue()
    {
        QFETCH(MultiEditAction, before);
        QFETCH(MultiEditAction, action);
        QFETCH(bool, varies);
        const auto validator = boost::make_shared<ThrowingValidator>("reformat");
        Form form;
        auto* field = form.open(
            MultiEditLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal));
        before(*field, form);
        QSignalSpy valueChanged(field, &MultiEditLineEdit::valueChanged);
        validator->armed = true;
        QVERIFY_EXCEPTION_THROWN(action(*field, form), std::runtime_error);
        validator->armed = false;
        QTEST(field->dataVaries(), "varies");
        QCOMPARE(field->edit()->text(), varies ? getVariesString() : QString());
        QVERIFY(varies || !field->isValueValid());
        QVERIFY(field->getCurrentValue().empty());
        QCOMPARE(valueChanged.count(), 0);
        QTEST(isFresh(*field, 1), "fresh");
        field->reset();
        field->readValue(2);
        QCOMPARE(field->getCurrentValue(), boost::any(2));
    }

    void aReadAfterOneThatCouldNotBeWrittenVaries()
    {
        const auto validator = boost::make_shared<ThrowingValidator>("reformat");
        const QScopedPointer<MultiEditLineEdit> field(
            MultiEditLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal));
        validator->armed = true;
        QVERIFY_EXCEPTION_THROWN(field->readValue(1), std::runtime_error);
        validator->armed = false;
        field->readValue(1);
        QVERIFY(field->dataVaries());
        QVERIFY(field->getCurrentValue().empty());
    }

    void aQuantityOfAnUnknownUnitIsNoValue()
    {
        const QScopedPointer<MultiEditLineEdit> field(
            create(new UnitValidator(vrn::units::Context(), vrn::units::UnitId::METRE)));
        field->readValue(Quantity{vrn::units::UnitId::METRE, 2.0});
        QVERIFY(!field->getCurrentValue().empty());
        field->reset();
        const auto unknown = static_cast<vrn::units::UnitId::UnitId>(998);
        QVERIFY_EXCEPTION_THROWN(field->readValue(Quantity{unknown, 2.0}), std::invalid_argument);
        QVERIFY(!field->dataVaries());
        QVERIFY(!field->isValueValid());
        QVERIFY(field->getCurrentValue().empty());
    }
};

VRN_TEST(TestMultiEditLineEdit)
#include "tst_multi_edit_line_edit.moc"
