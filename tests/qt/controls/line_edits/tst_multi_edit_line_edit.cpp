#include <vrn/qt/integer_validator.h>
#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/string_edit_validator.h>
#include <vrn/qt/unit_validator.h>

#include "multi_edit_line_edit_fixture.h"
#include "support/other_language.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QAccessible>
#include <QClipboard>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QScopedPointer>
#include <QSignalSpy>

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

// What a derived class may do, and see.
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

MultiEditAction erase()
{
    return [](MultiEditLineEdit& field, Form&) {
        field.edit()->selectAll();
        QTest::keyClick(field.edit(), Qt::Key_Delete);
    };
}

MultiEditAction paste(const QString& text)
{
    return [text](MultiEditLineEdit& field, Form&) {
        QGuiApplication::clipboard()->setText(text);
        field.edit()->selectAll();
        field.edit()->paste();
    };
}

// Throws instead of writing while it is armed; otherwise a CountingValidator.
struct ThrowingValidator : public CountingValidator
{
    bool armed = false;
    QString reformat(const boost::any& value, const std::bitset<32>& flags) override
    {
        if (armed)
            throw std::runtime_error("from the validator");
        return CountingValidator::reformat(value, flags);
    }
};

// The mouse at a place of the edit, from 0 at its left edge to 1 at its right one.
class Mouse
{
public:
    explicit Mouse(QLineEdit* edit)
        : m_edit(edit)
    {}

    void press(double at, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(m_edit, button, {}, placeOf(at));
    }
    void release(double at, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseRelease(m_edit, button, {}, placeOf(at));
    }
    void doubleClick(double at) { QTest::mouseDClick(m_edit, Qt::LeftButton, {}, placeOf(at)); }

    void drag(double to)
    {
        const QPoint place = placeOf(to);
        QMouseEvent move(QEvent::MouseMove, place, m_edit->mapToGlobal(place), Qt::NoButton,
            Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_edit, &move);
    }

private:
    QPoint placeOf(double at) const
    {
        return QPoint(int(at * (m_edit->width() - 1)), m_edit->height() / 2);
    }

    QLineEdit* m_edit;
};

using MouseAction = std::function<void(Mouse&)>;

} // namespace

Q_DECLARE_METATYPE(MouseAction)
Q_DECLARE_METATYPE(vrn::qt::IValidator::pointer)

class TestMultiEditLineEdit : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    // --- the table of states and signals

    void whatAnActionDoes_data()
    {
        QTest::addColumn<MultiEditAction>("before");
        QTest::addColumn<MultiEditAction>("action");
        QTest::addColumn<int>("valueChanged");
        QTest::addColumn<bool>("varies");
        QTest::addColumn<QString>("text");
        QTest::addColumn<boost::any>("current");
        QTest::addColumn<bool>("fresh");

        using namespace vrn::test::action;
        const QString varies = getVariesString();
        const boost::any none;
        const auto row = [](const char* state, const MultiEditAction& before) {
            return
                [=](const char* name, const MultiEditAction& action, int signalCount,
                    bool variesAfter, const QString& text, const boost::any& current, bool fresh) {
                    QTest::addRow("%s: %s", state, name) << before << action << signalCount
                                                         << variesAfter << text << current << fresh;
                };
        };
        const bool isFreshAfter = true;
        const bool isReadAfter = false;

        const auto fresh = row("fresh", nothing());
        fresh("nothing", nothing(), 0, false, "", none, isFreshAfter);
        fresh("reset", reset(), 0, false, "", none, isFreshAfter);
        fresh("a read", read(1.0), 0, false, "1.0", 1.0, isReadAfter);
        fresh("a read out of range", read(1e9), 0, false, "100.0", 100.0, isReadAfter);
        fresh("setValue", set(3.0), 0, false, "3.0", 3.0, isFreshAfter);
        fresh("forceVaries", forceVaries(), 0, true, varies, none, isFreshAfter);
        fresh("a good text", type("4"), 0, false, "4", 4.0, isFreshAfter);
        fresh("a refused text", type("x"), 0, false, "x", none, isFreshAfter);
        fresh("Enter", enter(), 1, false, "", none, isFreshAfter);
        // QLineEdit tells of leaving if the text has changed since it last told.
        fresh("leaving", leave(), 0, false, "", none, isFreshAfter);
        fresh("a good text and Enter", inOrder({type("4"), enter()}), 1, false, "4.0", 4.0,
            isFreshAfter);
        fresh("a good text, and leaving", inOrder({type("4"), leave()}), 1, false, "4.0", 4.0,
            isFreshAfter);
        fresh("a refused text, and leaving", inOrder({type("x"), leave()}), 1, false, "x", none,
            isFreshAfter);
        fresh("a refused text and Enter", inOrder({type("x"), enter()}), 1, false, "x", none,
            isFreshAfter);
        fresh("the varies text and Enter", inOrder({type(varies), enter()}), 0, true, varies, none,
            isFreshAfter);

        const auto common = row("common", read(1.0));
        common("nothing", nothing(), 0, false, "1.0", 1.0, isReadAfter);
        common("reset keeps text and value", reset(), 0, false, "1.0", 1.0, isFreshAfter);
        common("an equal read", read(1.0), 0, false, "1.0", 1.0, isReadAfter);
        common("a read that is written alike", read(1.04), 0, false, "1.0", 1.0, isReadAfter);
        common("a different read", read(2.0), 0, true, varies, none, isReadAfter);
        common("setValue", set(3.0), 0, false, "3.0", 3.0, isReadAfter);
        common("forceVaries", forceVaries(), 0, true, varies, none, isReadAfter);
        common("a good text", type("4"), 0, false, "4", 4.0, isReadAfter);
        common("a refused text", type("x"), 0, false, "x", none, isReadAfter);
        common("Enter", enter(), 1, false, "1.0", 1.0, isReadAfter);
        common("leaving", leave(), 1, false, "1.0", 1.0, isReadAfter);
        // The text that the end of editing writes is such a change, too.
        common(
            "Enter, and leaving", inOrder({enter(), leave()}), 2, false, "1.0", 1.0, isReadAfter);
        common("each Enter", inOrder({enter(), enter()}), 2, false, "1.0", 1.0, isReadAfter);
        common("a good text and Enter", inOrder({type("4"), enter()}), 1, false, "4.0", 4.0,
            isReadAfter);
        common("a good text, and leaving", inOrder({type("4"), leave()}), 1, false, "4.0", 4.0,
            isReadAfter);
        common("a good text, Enter, and leaving", inOrder({type("4"), enter(), type("5"), leave()}),
            2, false, "5.0", 5.0, isReadAfter);
        common("a refused text, and leaving", inOrder({type("x"), leave()}), 1, false, "x", none,
            isReadAfter);
        common("a refused text and Enter", inOrder({type("x"), enter()}), 1, false, "x", none,
            isReadAfter);
        common("the varies text and Enter", inOrder({type(varies), enter()}), 0, true, varies, none,
            isReadAfter);

        const auto varying = row("varies", inOrder({read(1.0), read(2.0)}));
        varying("a read", read(1.0), 0, true, varies, none, isReadAfter);
        varying("many reads", inOrder({read(2.0), read(2.0), read(1.0)}), 0, true, varies, none,
            isReadAfter);
        varying("setValue", set(3.0), 0, false, "3.0", 3.0, isReadAfter);
        varying("forceVaries", forceVaries(), 0, true, varies, none, isReadAfter);
        varying("a good text", type("4"), 0, false, "4", 4.0, isReadAfter);
        varying("a refused text", type("x"), 0, true, "x", none, isReadAfter);
        varying("Enter", enter(), 0, true, varies, none, isReadAfter);
        varying("leaving", leave(), 0, true, varies, none, isReadAfter);
        varying("a good text and Enter", inOrder({type("4"), enter()}), 1, false, "4.0", 4.0,
            isReadAfter);
        varying("a good text, and leaving", inOrder({type("4"), leave()}), 1, false, "4.0", 4.0,
            isReadAfter);
        varying("a refused text, and leaving", inOrder({type("x"), leave()}), 1, true, "x", none,
            isReadAfter);
        varying("nothing", nothing(), 0, true, varies, none, isReadAfter);
        varying("reset, and a good text", inOrder({reset(), type("4")}), 0, false, "4", 4.0,
            isFreshAfter);
        varying("a refused text and Enter", inOrder({type("x"), enter()}), 1, true, "x", none,
            isReadAfter);
        varying("the varies text typed again, and Enter", inOrder({type(varies), enter()}), 0, true,
            varies, none, isReadAfter);
        varying("a refused text, the varies text again, and leaving",
            inOrder({type("x"), type(varies), leave()}), 0, true, varies, none, isReadAfter);
        varying("a refused text, then a read", inOrder({type("x"), read(1.0)}), 0, true, "x", none,
            isReadAfter);
        varying(
            "reset, and a read", inOrder({reset(), read(2.0)}), 0, false, "2.0", 2.0, isReadAfter);
        varying("reset, forceVaries, and a read",
            inOrder({reset(), action::forceVaries(), read(2.0)}), 0, false, "2.0", 2.0,
            isReadAfter);
    }

    void whatAnActionDoes()
    {
        QFETCH(MultiEditAction, before);
        QFETCH(MultiEditAction, action);
        Form form;
        MultiEditLineEdit* field = create();
        form.open(field);
        before(*field, form);
        QSignalSpy valueChanged(field, &MultiEditLineEdit::valueChanged);
        action(*field, form);
        QTEST(int(valueChanged.count()), "valueChanged");
        QTEST(field->dataVaries(), "varies");
        QTEST(field->edit()->text(), "text");
        QTEST(field->getCurrentValue(), "current");
        QTEST(isFresh(*field, 1.0), "fresh");
        QTEST(int(valueChanged.count()), "valueChanged");
    }

    // The flag is that of the value before; the text is no number.
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
        field->readValue(std::wstring(L"a"));
        field->readValue(std::wstring(L"b"));
        QVERIFY(field->getCurrentValue().empty());
        field->reset();
        QCOMPARE(field->getCurrentValue(), boost::any(getVariesString().toStdWString()));
    }

    // --- comparison

    void valuesAreComparedAsText_data()
    {
        QTest::addColumn<double>("first");
        QTest::addColumn<double>("second");
        QTest::addColumn<bool>("varies");
        const double nan = std::numeric_limits<double>::quiet_NaN();
        QTest::newRow("one value twice") << 1.0 << 1.0 << false;
        QTest::newRow("two that are written alike") << 1.0 << 1.04 << false;
        QTest::newRow("two that are not") << 1.0 << 1.06 << true;
        QTest::newRow("two beyond the maximum") << 1e9 << 1e10 << false;
        QTest::newRow("the maximum and one beyond it") << 100.0 << 1e9 << false;
        QTest::newRow("a not-a-number twice") << nan << nan << false;
    }

    void valuesAreComparedAsText()
    {
        QFETCH(double, first);
        QFETCH(double, second);
        QFETCH(bool, varies);
        const QScopedPointer<MultiEditLineEdit> field(create());
        field->readValue(first);
        const QString text = field->edit()->text();
        field->readValue(second);
        QCOMPARE(field->dataVaries(), varies);
        QCOMPARE(field->edit()->text(), varies ? getVariesString() : text);
    }

    // Whatever is remembered of the values read, the text decides.
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
            }
        }
    }

    void quantitiesAreComparedAsText_data()
    {
        QTest::addColumn<boost::any>("second");
        QTest::addColumn<bool>("varies");
        namespace Id = vrn::units::UnitId;
        QTest::newRow("the same") << boost::any(Quantity{Id::METRE, 1.5}) << false;
        QTest::newRow("alike in the display unit")
            << boost::any(Quantity{Id::METRE, 1.5000001}) << false;
        QTest::newRow("another number") << boost::any(Quantity{Id::METRE, 1.6}) << true;
        QTest::newRow("the same length in another unit")
            << boost::any(Quantity{Id::MILLIMETRE, 1500.0}) << true;
        QTest::newRow("the same number in another unit")
            << boost::any(Quantity{Id::MILLIMETRE, 1.5}) << true;
    }

    void quantitiesAreComparedAsText()
    {
        QFETCH(boost::any, second);
        namespace Id = vrn::units::UnitId;
        UnitValidator reference(vrn::units::Context(), Id::METRE);
        const boost::any first = Quantity{Id::METRE, 1.5};
        const bool alike = reference.reformat(first, 0) == reference.reformat(second, 0);
        QTEST(!alike, "varies");
        const QScopedPointer<MultiEditLineEdit> field(
            create(new UnitValidator(vrn::units::Context(), Id::METRE)));
        field->readValue(first);
        field->readValue(first);
        field->readValue(second);
        QTEST(field->dataVaries(), "varies");
    }

    void theValueReadLastVariesFromATextTypedSince()
    {
        Form form;
        MultiEditLineEdit* field = create();
        form.open(field);
        for (int i = 0; i < 3; ++i)
            field->readValue(1.0);
        action::type("2.0")(*field, form);
        field->readValue(1.0);
        QVERIFY(field->dataVaries());
    }

    void aTextOfTheUserIsComparedToo()
    {
        Form form;
        MultiEditLineEdit* field = create();
        form.open(field);
        field->readValue(1.0);
        field->readValue(1.0);
        action::type("2.0")(*field, form);
        field->readValue(2.0);
        QVERIFY(!field->dataVaries());
        field->readValue(1.0);
        QVERIFY2(field->dataVaries(), "the value read before does not count any more");
    }

    void aTextOfTheUserIsComparedAsItIsWritten()
    {
        Form form;
        MultiEditLineEdit* field = create();
        form.open(field);
        field->readValue(1.0);
        action::type("1")(*field, form);
        field->readValue(1.0);
        QVERIFY2(field->dataVaries(), "1 is not 1.0");
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
        // Another value shown meanwhile, and the first text put back by hand.
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
        MultiEditLineEdit* field = create();
        form.open(field);
        action::type("x")(*field, form);
        QCOMPARE(field->edit()->styleSheet(), redText());
        field->setValue(1.0);
        field->forceVaries();
        QCOMPARE(field->edit()->styleSheet(), redText());
        QCOMPARE(field->getCurrentValue(), boost::any());
    }

    void whileLoadingSignalsAreBlockedInSetValue_data()
    {
        QTest::addColumn<bool>("blockedBefore");
        QTest::newRow("signals run before") << false;
        QTest::newRow("signals are blocked before") << true;
    }

    void whileLoadingSignalsAreBlockedInSetValue()
    {
        QFETCH(bool, blockedBefore);
        bool blockedDuring = false;
        struct Watching : public CountingValidator
        {
            std::function<void()> onReformat = [] {};
            QString reformat(const boost::any& value, const std::bitset<32>& flags) override
            {
                onReformat();
                return CountingValidator::reformat(value, flags);
            }
        };
        const auto validator = boost::make_shared<Watching>();
        Derived field(validator);
        validator->onReformat = [&] { blockedDuring = field.signalsBlocked(); };
        field.blockSignals(blockedBefore);
        field.setValue(1.0);
        QCOMPARE(blockedDuring, blockedBefore);

        field.setLoading(true);
        field.setValue(2.0);
        QVERIFY(blockedDuring);
        QCOMPARE(field.signalsBlocked(), blockedBefore);
        QCOMPARE(field.edit()->text(), QString("2.0"));

        validator->onReformat = [] { throw std::runtime_error("from the validator"); };
        QVERIFY_EXCEPTION_THROWN(field.setValue(3.0), std::runtime_error);
        QCOMPARE(field.signalsBlocked(), blockedBefore);
    }

    // --- the veto

    void theVetoIsForTheVariesTextAlone_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("veto");
        QTest::newRow("the text itself") << getVariesString() << true;
        QTest::newRow("in small letters") << getVariesString().toLower() << false;
        QTest::newRow("with a blank behind it") << getVariesString() + " " << false;
        QTest::newRow("its beginning") << getVariesString().chopped(1) << false;
        QTest::newRow("an empty text") << "" << false;
    }

    void theVetoIsForTheVariesTextAlone()
    {
        QFETCH(QString, text);
        Derived field{boost::shared_ptr<IValidator>(percentage())};
        QTEST(field.vetoValidation(text), "veto");
        field.forceVaries();
        QTEST(field.vetoValidation(text), "veto");
    }

    void aTypedVariesTextIsNotValidated()
    {
        Form form;
        MultiEditLineEdit* field = create();
        form.open(field);
        field->readValue(1.0);
        action::type("2")(*field, form);
        QCOMPARE(field->edit()->styleSheet(), blackText());
        // Pasted: no text on the way that would be validated.
        field->edit()->selectAll();
        field->edit()->insert(getVariesString());
        Q_EMIT field->edit()->textEdited(getVariesString());
        QVERIFY(field->isValueValid());
        QVERIFY(field->dataVaries());
        QVERIFY(field->getCurrentValue().empty());
        QCOMPARE(field->edit()->styleSheet(), blackText());
    }

    // --- a user's way to the varies text

    void aVariesTextOfTheUserIsNoValue_data()
    {
        QTest::addColumn<IValidator::pointer>("validator");
        QTest::addColumn<boost::any>("first");
        QTest::addColumn<boost::any>("second");
        QTest::addColumn<MultiEditAction>("action");

        using namespace vrn::test::action;
        const auto number = boost::make_shared<DoubleEditValidator>();
        const auto whole = boost::make_shared<IntegerValidator<int>>(10, 99, true);
        const auto text = boost::make_shared<StringEditValidator>(40);
        const auto rows = [&](const char* name, const MultiEditAction& act) {
            QTest::addRow("a number: %s", name)
                << IValidator::pointer(number) << boost::any(1.0) << boost::any(2.0) << act;
            QTest::addRow("a whole number in a range: %s", name)
                << IValidator::pointer(whole) << boost::any(12) << boost::any(13) << act;
            QTest::addRow("a text: %s", name)
                << IValidator::pointer(text) << boost::any(std::wstring(L"a"))
                << boost::any(std::wstring(L"b")) << act;
        };
        rows("typed over and undone", inOrder({type("5"), undo()}));
        rows("deleted and undone", inOrder({erase(), undo()}));
        rows("reset, typed over and undone", inOrder({action::reset(), type("5"), undo()}));
        rows("pasted over a value", inOrder({type("5"), enter(), paste(getVariesString())}));
        rows("typed over a value", inOrder({type("5"), enter(), type(getVariesString())}));
    }

    void aVariesTextOfTheUserIsNoValue()
    {
        QFETCH(IValidator::pointer, validator);
        QFETCH(boost::any, first);
        QFETCH(boost::any, second);
        QFETCH(MultiEditAction, action);
        Form form;
        auto* field = MultiEditLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal);
        form.open(field);
        field->readValue(first);
        field->readValue(second);
        action(*field, form);
        QCOMPARE(field->edit()->text(), getVariesString());
        QVERIFY(field->dataVaries());
        QVERIFY(field->getCurrentValue().empty());
        QSignalSpy valueChanged(field, &MultiEditLineEdit::valueChanged);
        const QString style = field->edit()->styleSheet();
        action::inOrder({action::enter(), action::leave()})(*field, form);
        QCOMPARE(valueChanged.count(), 0);
        QVERIFY(field->dataVaries());
        QCOMPARE(field->edit()->styleSheet(), style);
    }

    // Cut, it is not the whole varies text that undo brings back.
    void aCutVariesTextThatIsUndoneToIsNoValue()
    {
        Form form;
        MultiEditLineEdit* field = create(new StringEditValidator(40));
        form.open(field);
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

    // --- a text that is cut to a maximum length

    void aCutVariesTextIsNoValue_data()
    {
        QTest::addColumn<bool>("isLimitedFirst");
        QTest::addColumn<MultiEditAction>("end");
        QTest::newRow("cut when it varies, Enter") << true << action::enter();
        QTest::newRow("cut when it varies, left") << true << action::leave();
        QTest::newRow("cut later, Enter") << false << action::enter();
        QTest::newRow("cut later, left") << false << action::leave();
    }

    void aCutVariesTextIsNoValue()
    {
        QFETCH(bool, isLimitedFirst);
        QFETCH(MultiEditAction, end);
        Form form;
        MultiEditLineEdit* field = create(new StringEditValidator(40));
        form.open(field);
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

    void theVariesTextIsTheTranslatedOne()
    {
        OtherLanguage german;
        QVERIFY(QCoreApplication::installTranslator(&german));
        Form form;
        MultiEditLineEdit* field = create();
        form.open(field);
        QSignalSpy valueChanged(field, &MultiEditLineEdit::valueChanged);
        field->forceVaries();
        QCOMPARE(field->edit()->text(), QString("*VERSCHIEDEN*"));
        action::enter()(*field, form);
        QCOMPARE(valueChanged.count(), 0);
        action::inOrder({action::type("*VARIES*"), action::enter()})(*field, form);
        QCOMPARE(valueChanged.count(), 1);
        QVERIFY(!field->isValueValid());
    }

    // --- a change of the language

    void aChangeOfTheLanguageChangesTheVariesTextAlone_data()
    {
        QTest::addColumn<MultiEditAction>("before");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("varies");
        QTest::addColumn<int>("valueChanged");
        using namespace vrn::test::action;
        const auto varying = inOrder({read(1.0), read(2.0)});
        const QString other = QStringLiteral("*VERSCHIEDEN*");
        QTest::newRow("a varying field") << varying << other << true << 0;
        QTest::newRow("a field that varies by its user")
            << inOrder({read(1.0), type(getVariesString())}) << other << true << 0;
        QTest::newRow("a refused text over a variation")
            << inOrder({varying, type("x")}) << "x" << true << 1;
        QTest::newRow("a common value") << read(1.0) << "1.0" << false << 1;
        QTest::newRow("a field that was reset")
            << inOrder({varying, action::reset()}) << getVariesString() << false << 0;
    }

    void aChangeOfTheLanguageChangesTheVariesTextAlone()
    {
        QFETCH(MultiEditAction, before);
        QFETCH(QString, text);
        Form form;
        MultiEditLineEdit* field = create();
        form.open(field);
        before(*field, form);
        const QString style = field->edit()->styleSheet();
        QSignalSpy valueChanged(field, &MultiEditLineEdit::valueChanged);
        OtherLanguage german;
        german.change();
        deliverLanguage();
        QTEST(field->edit()->text(), "text");
        QTEST(field->dataVaries(), "varies");
        QCOMPARE(valueChanged.count(), 0);
        QCOMPARE(field->edit()->styleSheet(), style);
        form.leave();
        form.enter();
        QTEST(int(valueChanged.count()), "valueChanged");
        QTEST(field->dataVaries(), "varies");
        QTEST(field->edit()->text(), "text");
    }

    // A text would be taken for a value.
    void theVariesTextOfAnotherLanguageIsNoValue_data()
    {
        QTest::addColumn<bool>("delivered");
        QTest::newRow("when the field has learnt of the language") << true;
        QTest::newRow("before") << false;
    }

    void theVariesTextOfAnotherLanguageIsNoValue()
    {
        QFETCH(bool, delivered);
        Form form;
        MultiEditLineEdit* field = create(new StringEditValidator(40));
        form.open(field);
        field->forceVaries();
        OtherLanguage german;
        QSignalSpy valueChanged(field, &MultiEditLineEdit::valueChanged);
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
        }
    }

    void theVariesTextOfAnotherLanguageThatIsUndoneToIsNoValue()
    {
        Form form;
        MultiEditLineEdit* field = create(new StringEditValidator(40));
        form.open(field);
        field->forceVaries();
        action::type("5")(*field, form);
        OtherLanguage german;
        german.change();
        deliverLanguage();
        QCOMPARE(field->edit()->text(), QString("5"));
        undo()(*field, form);
        QCOMPARE(field->edit()->text(), QString("*VARIES*"));
        QVERIFY(field->dataVaries());
        QVERIFY(field->getCurrentValue().empty());
    }

    void aSelectedVariesTextStaysSelectedInAnotherLanguage()
    {
        Form form;
        MultiEditLineEdit* field = create();
        form.open(field);
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
        QTest::addColumn<MouseAction>("action");
        const auto row = [](const char* name, MouseAction action) {
            QTest::newRow(name) << std::move(action);
        };
        row("a press", [](Mouse& mouse) { mouse.press(0.1); });
        row("a click", [](Mouse& mouse) {
            mouse.press(0.1);
            mouse.release(0.1);
        });
        row("a click with a shaking hand", [](Mouse& mouse) {
            mouse.press(0.1);
            mouse.drag(0.11);
            mouse.release(0.11);
        });
        row("two clicks", [](Mouse& mouse) {
            for (const double at : {0.1, 0.05}) {
                mouse.press(at);
                mouse.release(at);
            }
        });
        row("a double click", [](Mouse& mouse) { mouse.doubleClick(0.1); });
        row("a press of a double click", [](Mouse& mouse) {
            mouse.press(0.1);
            mouse.release(0.1);
            mouse.doubleClick(0.1);
            mouse.drag(0.12);
        });
        row("a click with the right button", [](Mouse& mouse) {
            mouse.press(0.1, Qt::RightButton);
            mouse.release(0.1, Qt::RightButton);
        });
    }

    void theFirstKeyAfterAClickReplacesTheVariesText()
    {
        QFETCH(MouseAction, action);
        Form form;
        MultiEditLineEdit* field = create();
        form.open(field);
        form.leave();
        field->readValue(1.0);
        field->readValue(2.0);
        Mouse mouse(field->edit());
        action(mouse);
        QVERIFY(field->edit()->hasFocus());
        QCOMPARE(field->edit()->selectedText(), getVariesString());
        QTest::keyClicks(field->edit(), "5");
        QCOMPARE(field->edit()->text(), QString("5"));
        QVERIFY(!field->dataVaries());
    }

    void aMouseThatPassesSelectsNothing()
    {
        Form form;
        MultiEditLineEdit* field = create();
        form.open(field);
        field->forceVaries();
        field->edit()->setMouseTracking(true);
        QTest::mouseMove(field->edit(), field->edit()->rect().center());
        QVERIFY(!field->edit()->hasSelectedText());
    }

    void theMouseWorksInAnyOtherTextAsEver_data()
    {
        QTest::addColumn<MultiEditAction>("before");
        using namespace vrn::test::action;
        QTest::newRow("a common value") << read(100.0);
        QTest::newRow("a refused text over a variation")
            << inOrder({read(1.0), read(2.0), type("12 34")});
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
            Mouse mouse(edit);
            mouse.press(0.05);
            mouse.drag(0.25);
            mouse.release(0.25);
            QString result = QString("dragged: %1").arg(edit->selectedText());
            mouse.doubleClick(0.02);
            result += QString(", double click: %1").arg(edit->selectedText());
            mouse.release(0.02);
            QTest::qWait(QApplication::doubleClickInterval() + 50);
            mouse.press(0.02);
            mouse.release(0.02);
            results << result + QString(", click: %1").arg(edit->selectedText());
        }
        QCOMPARE(results[1], results[0]);
        QVERIFY2(!results[1].contains("dragged: ,"), qPrintable(results[1]));
    }

    // --- a history entry

    void aHistoryEntryEndsAVariation()
    {
        const QScopedPointer<MultiEditLineEdit> field(create());
        QSignalSpy valueChanged(field.data(), &MultiEditLineEdit::valueChanged);
        field->forceVaries();
        field->edit()->setText("7");
        field->onEditingFinished();
        QVERIFY(!field->dataVaries());
        QCOMPARE(field->getCurrentValue(), boost::any(7.0));
        QCOMPARE(valueChanged.count(), 1);
    }

    // --- copyStateFrom

    void copyStateFromTakesTextAndFlags_data()
    {
        QTest::addColumn<MultiEditAction>("before");
        QTest::addColumn<bool>("varies");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("fresh");
        using namespace vrn::test::action;
        QTest::newRow("fresh and empty") << nothing() << false << "" << true;
        QTest::newRow("fresh with a text") << set(2.0) << false << "2.0" << true;
        QTest::newRow("common") << read(2.0) << false << "2.0" << false;
        QTest::newRow("varying") << inOrder({read(1.0), read(2.0)}) << true << getVariesString()
                                 << false;
        QTest::newRow("varying and fresh")
            << action::forceVaries() << true << getVariesString() << true;
        QTest::newRow("refused") << type("x") << false << "x" << true;
    }

    void copyStateFromTakesTextAndFlags()
    {
        QFETCH(MultiEditAction, before);
        Form form;
        MultiEditLineEdit* other = create();
        form.open(other);
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

    void aValueOfAForeignTypeIsReported_data()
    {
        QTest::addColumn<boost::any>("value");
        QTest::newRow("a text") << boost::any(std::string("1.0"));
        QTest::newRow("an integer") << boost::any(1);
        QTest::newRow("an empty value") << boost::any();
    }

    void aValueOfAForeignTypeIsReported()
    {
        QFETCH(boost::any, value);
        const QScopedPointer<MultiEditLineEdit> field(create());
        const auto expectReport = [this] {
            expectAssert("value.type() == typeid(double)", {"value.type().name()"});
        };
        expectReport();
        field->setValue(value);
        QCOMPARE(field->edit()->text(), QString());
        QVERIFY(field->getCurrentValue().empty());

        expectReport();
        field->readValue(value);
        QVERIFY(!field->dataVaries());
        expectReport();
        field->readValue(value);
        QVERIFY2(!field->dataVaries(), "nothing is shown for either");
        field->readValue(1.0);
        QVERIFY(field->dataVaries());
        field->readValue(value);

        field->reset();
        field->readValue(1.0);
        QCOMPARE(field->getCurrentValue(), boost::any(1.0));
        expectReport();
        field->readValue(value);
        QVERIFY(field->dataVaries());
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
        const auto nextSelection = inOrder({read(1.0), action::reset()});
        const auto varying = inOrder({read(1.0), read(3.0)});
        QTest::newRow("setValue") << read(1.0) << set(2.0) << false << false;
        QTest::newRow("setValue of a fresh field") << nextSelection << set(2.0) << false << true;
        QTest::newRow("setValue of a varying field") << varying << set(2.0) << false << false;
        QTest::newRow("the first read") << nextSelection << read(2.0) << false << false;
        QTest::newRow("the first read of a field that was forced to vary")
            << inOrder({nextSelection, action::forceVaries()}) << read(2.0) << false << false;
        QTest::newRow("a later read") << read(1.0) << read(2.0) << true << false;
        QTest::newRow("a later read of a value equal to the first")
            << read(1.0) << read(1.0) << true << false;
    }

    void aValueThatCannotBeWrittenIsNoValue()
    {
        QFETCH(MultiEditAction, before);
        QFETCH(MultiEditAction, action);
        QFETCH(bool, varies);
        const auto validator = boost::make_shared<ThrowingValidator>();
        Form form;
        auto* field = MultiEditLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal);
        form.open(field);
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
        QTEST(isFresh(*field, 1.0), "fresh");
        field->reset();
        field->readValue(2.0);
        QCOMPARE(field->getCurrentValue(), boost::any(2.0));
    }

    void aReadAfterOneThatCouldNotBeWrittenVaries()
    {
        const auto validator = boost::make_shared<ThrowingValidator>();
        const QScopedPointer<MultiEditLineEdit> field(
            MultiEditLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal));
        validator->armed = true;
        QVERIFY_EXCEPTION_THROWN(field->readValue(1.0), std::runtime_error);
        validator->armed = false;
        field->readValue(1.0);
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

    void aSlotMayDeleteTheFieldLater()
    {
        Form form;
        QPointer<MultiEditLineEdit> field(create());
        form.open(field);
        connect(
            field.data(), &MultiEditLineEdit::valueChanged, field.data(), &QObject::deleteLater);
        action::inOrder({action::forceVaries(), action::type("4"), action::enter()})(*field, form);
        QVERIFY(field);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!field);
    }

    void theWindowMayGoAtAnyStep()
    {
        using namespace vrn::test::action;
        const std::vector<MultiEditAction> steps = {read(1.0), read(1.0), type("2"), type("x"),
            action::reset(), read(1.0), read(2.0), enter(), type("x"), type(getVariesString()),
            leave(), set(3.0), action::forceVaries(), type("4"), enter(), leave()};
        for (std::size_t done = 0; done <= steps.size(); ++done) {
            auto* form = new Form;
            QPointer<MultiEditLineEdit> field(create());
            form->open(field);
            inOrder({steps.begin(), steps.begin() + std::ptrdiff_t(done)})(*field, *form);
            delete form;
            QVERIFY(!field);
        }
    }

    void aSlotMayDestroyTheParentAtOnce()
    {
        auto* parent = new QWidget;
        QPointer<MultiEditLineEdit> field(
            MultiEditLineEdit::create(parent, {}, percentage(), 0, ExpandHorizontal));
        field->readValue(1.0);
        connect(
            field.data(), &MultiEditLineEdit::valueChanged, field.data(), [=] { delete parent; });
        field->onEditingFinished();
        QVERIFY(!field);
    }
};

VRN_TEST(TestMultiEditLineEdit)
#include "tst_multi_edit_line_edit.moc"
