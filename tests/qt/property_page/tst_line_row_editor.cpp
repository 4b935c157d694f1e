#include <vrn/qt/varies_string.h>

#include "line_row_fixture.h"
#include "support/hostile_texts.h"
#include "support/keystroke_time.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QAction>
#include <QClipboard>
#include <QDialog>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QToolButton>

#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>

using namespace vrn::qt;
using namespace vrn::test;
namespace UnitId = vrn::units::UnitId;
using vrn::units::Context;

namespace {

const double third = 1.0 / 3.0;
const QString tooLong = "It must be between 0.100 m and 40.000 m.";

Beam beamOfLength(double length)
{
    return beamsOfLengths({length}).front();
}

Steps typing(const QString& text)
{
    return [=](LineRow& row) { row.type(text); };
}

void click(LineRow& row)
{
    QTest::mouseClick(row.edit(), Qt::LeftButton, {}, QPoint(8, row.edit()->height() / 2));
}

/// Where a test destroys the editor.
enum Where
{
    InChanged,
    InEnded,
    InCancelled,
    InSpread,
    InShow,
    InPreview,
    InCheck
};

void drop(LineRow& row, const QString& text)
{
    QMimeData data;
    data.setText(text);
    const QPoint place(5, 5);
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(row.edit(), &enter);
    QDropEvent event(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(row.edit(), &event);
}

} // namespace

Q_DECLARE_METATYPE(vrn::qt::EditState)
Q_DECLARE_METATYPE(Beam)

class TestLineRowEditor : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsWhatIsTyped_data();
    void readsWhatIsTyped();
    void readsInTheUnitsOfTheModel_data();
    void readsInTheUnitsOfTheModel();
    void takesACommaWhereOneReadingIsLeft();

    void untouchedEndsNothing_data();
    void untouchedEndsNothing();
    void typedTextEndsOnce_data();
    void typedTextEndsOnce();
    void doesNotEndForAnotherWindow_data();
    void doesNotEndForAnotherWindow();
    void droppedTextEndsAsTypedText();
    void composedTextEndsAsTypedText();

    void offersAllDigits_data();
    void offersAllDigits();
    void selectsWhatItOffers_data();
    void selectsWhatItOffers();
    void selectsWhatVaries_data();
    void selectsWhatVaries();
    void offersNoDigits_data();
    void offersNoDigits();
    void offersNoDigitsIfTheFieldSaysSo();
    void keepsTheDigitsAfterEnter();
    void keepsTheOfferedTextWhenShownAgain();

    void keepsARefusedText();
    void tellsARefusedTextOnce();
    void forgetsARefusalWhenTheTextChanges();
    void hasTheColoursOfThePaletteAtRest();
    void dropsWhatIsPendingWhenShown();
    void showsWhatIsOutOfRange();

    void leavesKeysToTheDialog_data();
    void leavesKeysToTheDialog();
    void leavesUndoToTheApplication();

    void tellsWhatVaries();
    void readsTheListAsTheField();
    void asksForTheSpreadWhenEditingBegins_data();
    void asksForTheSpreadWhenEditingBegins();
    void takesTheExactValue_data();
    void takesTheExactValue();
    void marksWhatDiffersBelowTheDigits();
    void previewsRelativeEdits();
    void refusesWhatThePolicyRefuses();
    void completesUnits();
    void completesWhatIsNotComplete_data();
    void completesWhatIsNotComplete();

    void clears_data();
    void clears();
    void offersToClear_data();
    void offersToClear();

    void cannotBeEditedIfReadOnly();
    void hasAStatusForAScreenReader();
    void survivesAnyText_data();
    void survivesAnyText();
    void showsTheBeginningAtRest();
    void takesKeysAtTheEnd();
    void keepsALongText();
    void survivesItsEndInItsSignals_data();
    void survivesItsEndInItsSignals();
};

void TestLineRowEditor::readsWhatIsTyped_data()
{
    columns<QByteArray, QString, EditState, boost::any, QString>(
        "key", "typed", "state", "value", "reason");
    const auto complete = [](const char* name, const char* key, const QString& typed,
                              const boost::any& value) {
        row(name, QByteArray(key), typed, EditState::Complete, value, QString());
    };
    const auto other = [](const char* name, const char* key, const QString& typed, EditState state,
                           const QString& reason) {
        row(name, QByteArray(key), typed, state, boost::any(), reason);
    };
    const auto refused = [&](const char* name, const char* key, const QString& typed,
                             const QString& reason) {
        other(name, key, typed, EditState::Refused, reason);
    };
    complete("a length", "length", "2.5", 2.5);
    complete("a length with its unit", "length", "2.5 m", 2.5);
    complete("a length in another unit", "length", "5 ft", 5 * 0.3048);
    complete("a length with more digits than are shown", "length", "2.00000000001", 2.00000000001);
    complete("a sum of lengths", "length", "3 m + 20 cm", 3.2);
    complete("the value that is shown in another text", "length", "3", 3.0);
    complete("the limit", "length", "40 m", 40.0);
    complete("a width in the unit of the model", "width", "300 mm", 300.0);
    complete("a width in another one", "width", "0.5 m", 500.0);
    complete("a number", "factor", "1.23456789", 1.23456789);
    complete("the largest number", "factor", "1.7976931348623157e308", 1.7976931348623157e308);
    complete("the smallest number", "factor", "5e-324", 5e-324);
    complete("minus zero", "factor", "-0", -0.0);
    complete("an integer", "bolts", "7", 7);
    complete("an integer with decimals that are none", "bolts", "7.0", 7);
    complete("a sum of integers", "bolts", "3 + 4", 7);
    complete("the largest integer", "group", "2147483647", std::numeric_limits<int>::max());
    complete("the smallest integer", "group", "-2147483648", std::numeric_limits<int>::lowest());
    complete("a text", "name", "B 12", QString("B 12"));
    complete("a text of blanks", "name", "  ", QString("  "));
    complete("a text that looks as a number", "name", "+= 2", QString("+= 2"));
    complete("a text in UTF-8", "grade", "S 355 \316\261", QString("S 355 \316\261"));
    complete("no text", "grade", "", QString());
    complete("no load", "load", "", boost::any());
    complete("a load", "load", "5", 5.0);
    complete("a relative edit", "length", "+= 5 mm", RelativeEdit{RelativeEdit::Add, 0.005});
    complete(
        "a relative edit of an integer", "bolts", "*= 3", RelativeEdit{RelativeEdit::Multiply, 3});
    other("the text that was there", "length", "3.000 m", EditState::Untouched, "");
    other("the text of varying objects", "length", getVariesString(), EditState::Untouched, "");
    other("half a unit", "length", "3 f", EditState::Unfinished, QString("\342\200\246 ft"));
    other("half a sum", "length", "3 +", EditState::Unfinished, "a number is missing here");
    other("half a relative edit", "length", "+=", EditState::Unfinished, "A number is missing.");
    refused("a length that is too long", "length", "41 m", tooLong);
    refused("a length below zero", "length", "-5", tooLong);
    refused("a width out of range", "width", "4 m", "It must be between 0.050 m and 3.000 m.");
    refused("no length", "length", "", "A value is needed.");
    refused("no integer", "bolts", "", "A value is needed.");
    refused("a unit of another kind", "length", "5 kN",
        "kN is a force; a length is wanted: m, cm, mm, ft, in");
    refused("an integer out of range", "bolts", "101", "It must be between 1 and 99.");
    refused("an integer that the check refuses", "bolts", "8", "Bolts come in odd numbers.");
    refused("a fraction", "bolts", "12.5", "It must be a whole number.");
    refused("a number that no integer holds", "group", "2147483648",
        "It must be between -2147483648 and 2147483647.");
    refused(
        "such a number in a field with a range", "bolts", "1e10", "It must be between 1 and 99.");
    refused("a number that no double holds", "factor", "1e999", "the number is too large");
    refused("not a number", "factor", "nan", "nan is not a number");
    refused("a text that is too long", "name", "123456789012345678901",
        "It has 21 characters, and may have 20.");
    refused("an integer with decimals after a relative edit", "group", "/= 0",
        "Nothing can be divided by zero.");
}

void TestLineRowEditor::readsWhatIsTyped()
{
    QFETCH(QByteArray, key);
    QFETCH(QString, typed);
    QFETCH(boost::any, value);
    QFETCH(QString, reason);
    Beam beam;
    beam.name = "A";
    beam.load = 2.0;
    beam.group = 2;
    LineRow row(key.toStdString(), {beam, beam});
    row.open();
    row.type(typed);
    const auto made = row.entry();
    QTEST(made.state, "state");
    QCOMPARE(made.reason, reason);
    QCOMPARE(made.value.type().name(), value.type().name());
    if (const auto* relative = boost::any_cast<RelativeEdit>(&value))
        QCOMPARE(boost::any_cast<RelativeEdit>(made.value), *relative);
    else if (!value.empty())
        QVERIFY(row.selection.row(row.key)->field.valueType().isSame(made.value, value));
    QCOMPARE(row.isRed(), made.state == EditState::Refused || made.state == EditState::Unfinished);
    QCOMPARE(row.text(), typed);
    row.press(Qt::Key_Return);
    QCOMPARE(row.text() == typed && row.isRed(), !reason.isEmpty());
}

void TestLineRowEditor::readsInTheUnitsOfTheModel_data()
{
    columns<int, QString, QString>("system", "shown", "typed");
    row("the metric one", 0, QString("3.000 m"), QString("2"));
    row("feet", 8, QString("9.84 ft"), QString("2"));
    row("inches", 9, QString("118.11 in"), QString("5"));
}

void TestLineRowEditor::readsInTheUnitsOfTheModel()
{
    QFETCH(QString, typed);
    QFETCH(int, system);
    const double value = Context(system)
                             .parse(
                                 typed.toStdWString(), UnitId::GEO_LENGTH, std::locale::classic())
                             ->value;
    LineRow row("length");
    row.open();
    row.model.setUnits(Context(system));
    row.show();
    QTEST(row.text(), "shown");
    row.type(typed);
    row.press(Qt::Key_Return);
    QVERIFY(haveSameBits(row.beams[0].length, value));
    QVERIFY(haveSameBits(row.beams[1].length, value));
}

void TestLineRowEditor::takesACommaWhereOneReadingIsLeft()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    LineRow row("length", beamsOfLengths({2.5}));
    row.open();
    QCOMPARE(row.text(), QString("2.500 m"));
    row.type("3,25 m");
    QCOMPARE(row.entry().value, boost::any(3.25));
    QLocale::setDefault(QLocale(QLocale::C));
    row.type("3,5 m");
    QCOMPARE(row.entry().state, EditState::Refused);
    QLocale::setDefault(before);
}

void TestLineRowEditor::untouchedEndsNothing_data()
{
    columns<Steps>("steps");
    row("Tab", inOrder({tabInto, pressing(Qt::Key_Tab)}));
    row("Backtab", inOrder({tabInto, pressing(Qt::Key_Backtab)}));
    row("Enter", inOrder({tabInto, pressing(Qt::Key_Return), pressing(Qt::Key_Tab)}));
    row("Escape", inOrder({tabInto, pressing(Qt::Key_Escape), pressing(Qt::Key_Tab)}));
    row("F2", inOrder({tabInto, pressing(Qt::Key_F2), pressing(Qt::Key_Tab)}));
    row("a click", inOrder({click, pressing(Qt::Key_Tab)}));
    row("the cursor is moved", inOrder({click, pressing(Qt::Key_End), pressing(Qt::Key_Tab)}));
    row("the rounded text is typed", inOrder({typing("0.333 m"), pressing(Qt::Key_Tab)}));
    row("the offered text is typed",
        inOrder({typing("5"), typing("0.3333333333333333 m"), pressing(Qt::Key_Tab)}));
    row("a key and its undoing",
        inOrder({tabInto, pressing(Qt::Key_5), pressing(Qt::Key_Z, Qt::ControlModifier),
            pressing(Qt::Key_Tab)}));
    row("the text of varying objects", inOrder({typing(getVariesString()), pressing(Qt::Key_Tab)}));
    row("a refused text is taken back",
        inOrder({typing("50 m"), pressing(Qt::Key_Return), pressing(Qt::Key_Escape),
            pressing(Qt::Key_Tab)}));
    row("hidden", Steps([](LineRow& row) {
        tabInto(row);
        row.editor->widget()->hide();
    }));
    row("disabled", Steps([](LineRow& row) {
        tabInto(row);
        row.editor->widget()->setEnabled(false);
    }));
    row("other units", Steps([](LineRow& row) {
        tabInto(row);
        row.model.setUnits(Context(8));
        row.show();
        row.model.setUnits(Context());
        row.show();
        row.press(Qt::Key_Tab);
    }));
}

void TestLineRowEditor::untouchedEndsNothing()
{
    QFETCH(Steps, steps);
    LineRow row("length", beamsOfLengths({third, third}));
    row.open();
    const QString shown = row.text();
    steps(row);
    QCOMPARE(row.entry().state, EditState::Untouched);
    QCOMPARE(row.written, 0);
    QVERIFY(row.ended <= 1); // The refused text.
    QCOMPARE(row.text(), shown);
    QCOMPARE(row.edit()->styleSheet(), QString());
}

void TestLineRowEditor::typedTextEndsOnce_data()
{
    columns<Steps>("end");
    row("Enter", pressing(Qt::Key_Return));
    row("Enter of the keypad", pressing(Qt::Key_Enter, Qt::KeypadModifier));
    row("Tab", pressing(Qt::Key_Tab));
    row("Backtab", pressing(Qt::Key_Backtab));
    row("Enter, then Tab", inOrder({pressing(Qt::Key_Return), pressing(Qt::Key_Tab)}));
    row("a click on another field",
        Steps([](LineRow& row) { QTest::mouseClick(row.after, Qt::LeftButton); }));
    row("the focus is set", Steps([](LineRow& row) { row.after->setFocus(); }));
    row("a short cut", Steps([](LineRow& row) { row.after->setFocus(Qt::ShortcutFocusReason); }));
    row("Tab without another field", Steps([](LineRow& row) {
        row.before->setEnabled(false);
        row.after->setEnabled(false);
        row.press(Qt::Key_Tab);
    }));
}

void TestLineRowEditor::typedTextEndsOnce()
{
    QFETCH(Steps, end);
    LineRow row("length");
    row.open();
    row.type("10 m / 3");
    QVERIFY(row.changed > 0);
    QCOMPARE(row.ended, 0);
    end(row);
    QCOMPARE(row.ended, 1);
    QCOMPARE(row.written, 1);
    QVERIFY(haveSameBits(row.beams[0].length, 10.0 / 3.0));
    QCOMPARE(row.text(), QString("3.333 m"));
    QCOMPARE(row.entry().state, EditState::Untouched);
}

void TestLineRowEditor::doesNotEndForAnotherWindow_data()
{
    columns<Qt::FocusReason>("reason");
    row("another window", Qt::ActiveWindowFocusReason);
    row("a menu", Qt::PopupFocusReason);
    row("the menu bar", Qt::MenuBarFocusReason);
}

void TestLineRowEditor::doesNotEndForAnotherWindow()
{
    QFETCH(Qt::FocusReason, reason);
    LineRow row("length");
    row.open();
    row.type("2");
    row.after->setFocus(reason);
    QCOMPARE(row.ended, 0);
    QCOMPARE(row.text(), QString("2"));
    row.edit()->setFocus(reason);
    QCOMPARE(row.text(), QString("2"));
    QCOMPARE(row.entry().state, EditState::Complete);
    row.press(Qt::Key_Tab);
    QCOMPARE(row.ended, 1);
}

void TestLineRowEditor::droppedTextEndsAsTypedText()
{
    LineRow row("name", std::vector<Beam>(1));
    row.open();
    drop(row, "C 7");
    QCOMPARE(row.entry().value, boost::any(QString("C 7")));
    row.before->setFocus();
    QCOMPARE(row.beams[0].name, QString("C 7"));
}

void TestLineRowEditor::composedTextEndsAsTypedText()
{
    LineRow row("name", std::vector<Beam>(1));
    row.open();
    tabInto(row);
    QInputMethodEvent composing(QString(QChar(0x3042)), {});
    QApplication::sendEvent(row.edit(), &composing);
    QCOMPARE(row.entry().state, EditState::Untouched);
    QInputMethodEvent composed;
    composed.setCommitString(QString(QChar(0x4e9c)));
    QApplication::sendEvent(row.edit(), &composed);
    row.press(Qt::Key_Tab);
    QCOMPARE(row.beams[0].name, QString(QChar(0x4e9c)));
    QCOMPARE(row.ended, 1);
}

void TestLineRowEditor::offersAllDigits_data()
{
    columns<QByteArray, int, Beam, QString, QString>("key", "system", "beam", "shown", "offered");
    const auto length = [](const char* name, int system, double value, const QString& shown,
                            const QString& offered) {
        row(name, QByteArray("length"), system, beamOfLength(value), shown, offered);
    };
    const auto factor = [](const char* name, double value, const QString& shown,
                            const QString& offered) {
        Beam beam;
        beam.factor = value;
        row(name, QByteArray("factor"), 0, beam, shown, offered);
    };
    length("a third", 0, third, "0.333 m", "0.3333333333333333 m");
    length("a sum", 0, 0.1 + 0.2, "0.300 m", "0.30000000000000004 m");
    length("a number that is shown in full", 0, 3.25, "3.250 m", "3.250 m");
    length("out of range", 0, 1e5 + third, "100000.333 m", "100000.33333333333 m");
    length("in inches", 9, 1.0, "39.37 in", "39.37007874015748 in");
    factor("a number", 2.345, QString::number(2.345, 'f', 2), "2.345");
    factor("a huge one", 1e300, QString::number(1e300, 'f', 2), QString::number(1e300, 'f', 2));
    factor("the smallest one", 5e-324, "0.00", "5e-324");
    factor("minus zero", -0.0, "0.00", "-0");
}

void TestLineRowEditor::offersAllDigits()
{
    QFETCH(QByteArray, key);
    QFETCH(int, system);
    QFETCH(Beam, beam);
    LineRow row(key.toStdString(), {beam, beam});
    row.model.setUnits(Context(system));
    row.open();
    QTEST(row.text(), "shown");
    tabInto(row);
    QTEST(row.text(), "offered");
    QCOMPARE(row.edit()->selectedText(), row.text());
    QCOMPARE(row.entry().state, EditState::Untouched);
    QCOMPARE(row.changed, 0);
    row.press(Qt::Key_Tab);
    QTEST(row.text(), "shown");
    QCOMPARE(row.changed, 0);
}

void TestLineRowEditor::selectsWhatItOffers_data()
{
    columns<Steps, bool>("steps", "isSelected");
    row("Tab", Steps(tabInto), true);
    row("F2", inOrder({click, pressing(Qt::Key_F2)}), true);
    row("F2 after the rounded text was typed", inOrder({typing("0.333 m"), pressing(Qt::Key_F2)}),
        true);
    row("a click", Steps(click), false);
}

void TestLineRowEditor::selectsWhatItOffers()
{
    QFETCH(Steps, steps);
    QFETCH(bool, isSelected);
    LineRow row("length", beamsOfLengths({third}));
    row.open();
    steps(row);
    QCOMPARE(row.text(), QString("0.3333333333333333 m"));
    QCOMPARE(row.edit()->selectedText(), isSelected ? row.text() : QString());
}

void TestLineRowEditor::selectsWhatVaries_data()
{
    columns<Steps>("steps");
    const auto focus = [](Qt::FocusReason reason) {
        return [=](LineRow& line) { line.edit()->setFocus(reason); };
    };
    row("by Tab", Steps(tabInto));
    row("by the application", Steps(focus(Qt::OtherFocusReason)));
    row("by a shortcut", Steps(focus(Qt::ShortcutFocusReason)));
    row("by a click", Steps(click));
    row("after Escape",
        inOrder({focus(Qt::OtherFocusReason), typing("5"), pressing(Qt::Key_Escape)}));
    row("after another change of the model",
        inOrder({focus(Qt::OtherFocusReason), [](LineRow& line) {
                     line.beams[0].length = 4.0;
                     line.show();
                 }}));
}

void TestLineRowEditor::selectsWhatVaries()
{
    QFETCH(Steps, steps);
    LineRow row("length", beamsOfLengths({2.0, 3.0}));
    row.open();
    steps(row);
    row.press(Qt::Key_5);
    QCOMPARE(row.text(), QString("5"));
}

void TestLineRowEditor::offersNoDigits_data()
{
    columns<Steps, QString>("prepare", "text");
    row("a read-only field", Steps([](LineRow& row) { row.editor->setReadOnly(true); }),
        QString("0.333 m"));
    row("varying objects", Steps([](LineRow& row) {
        row.beams[1].length = 7.0 / 3.0;
        row.show();
    }),
        getVariesString());
    row("a refused text", Steps([](LineRow& row) {
        row.type("50 m");
        row.before->setFocus();
    }),
        QString("50 m"));
}

void TestLineRowEditor::offersNoDigits()
{
    QFETCH(Steps, prepare);
    LineRow row("length", beamsOfLengths({third, third}));
    row.open();
    prepare(row);
    tabInto(row);
    QTEST(row.text(), "text");
    row.press(Qt::Key_F2);
    QTEST(row.text(), "text");
}

void TestLineRowEditor::offersNoDigitsIfTheFieldSaysSo()
{
    PropertySet<Beam> beams("beam", &countedBeams);
    beams.add(
        "length", "&Length", &Beam::length, field::quantity(UnitId::GEO_LENGTH).fullDigits(false));
    LineRow row("length", beamsOfLengths({third}), beams);
    row.open();
    tabInto(row);
    QCOMPARE(row.text(), QString("0.333 m"));
    row.press(Qt::Key_Tab);
    QCOMPARE(row.ended, 0);
}

// Another key after Enter would otherwise edit the rounded text.
void TestLineRowEditor::keepsTheDigitsAfterEnter()
{
    LineRow row("length", beamsOfLengths({3.0}));
    row.open();
    row.type("10 m / 3");
    row.press(Qt::Key_Return);
    QCOMPARE(row.text(), QString("3.333 m"));
    QCOMPARE(row.edit()->selectedText(), row.text());
    row.press(Qt::Key_Home);
    QCOMPARE(row.text(), QString("3.3333333333333335 m"));
    row.press(Qt::Key_1);
    QCOMPARE(row.entry().value, boost::any(13.3333333333333335));
}

void TestLineRowEditor::keepsTheOfferedTextWhenShownAgain()
{
    LineRow row("length", beamsOfLengths({third, third}));
    row.open();
    click(row);
    row.press(Qt::Key_Home);
    row.show();
    QCOMPARE(row.text(), QString("0.3333333333333333 m"));
    QCOMPARE(row.edit()->cursorPosition(), 0);
    row.beams[0].length = row.beams[1].length = 2.0 / 3.0;
    row.show();
    QCOMPARE(row.text(), QString("0.667 m"));
    row.press(Qt::Key_Home);
    QCOMPARE(row.text(), QString("0.6666666666666666 m"));
}

void TestLineRowEditor::keepsARefusedText()
{
    LineRow row("camber", std::vector<Beam>(1));
    row.open();
    row.type("-1");
    QCOMPARE(row.entry().state, EditState::Complete);
    row.press(Qt::Key_Return);
    const QString reason = "a beam does not sag on purpose";
    QCOMPARE(row.text(), QString("-1"));
    QVERIFY(row.isRed());
    QCOMPARE(row.hint(), reason);
    QCOMPARE(row.edit()->toolTip(), reason);
    QCOMPARE(row.entry().state, EditState::Refused);
    QCOMPARE(row.entry().reason, reason);
    row.press(Qt::Key_Tab);
    QCOMPARE(row.text(), QString("-1"));
    QVERIFY(row.isRed());
    row.press(Qt::Key_Backtab);
    QCOMPARE(row.hint(), reason);
    row.press(Qt::Key_Escape);
    QCOMPARE(row.cancelled, 1);
    QCOMPARE(row.text(), QString("0.000"));
    QVERIFY(!row.isRed());
    QCOMPARE(row.edit()->toolTip(), QString());
}

void TestLineRowEditor::tellsARefusedTextOnce()
{
    LineRow row("length");
    row.open();
    row.type("50 m");
    row.press(Qt::Key_Tab);
    QCOMPARE(row.ended, 1);
    row.press(Qt::Key_Backtab);
    row.press(Qt::Key_Tab);
    QCOMPARE(row.ended, 1);
    row.press(Qt::Key_Backtab);
    row.press(Qt::Key_Return);
    QCOMPARE(row.ended, 2);
    row.press(Qt::Key_1);
    row.press(Qt::Key_Tab);
    QCOMPARE(row.ended, 3);
}

void TestLineRowEditor::forgetsARefusalWhenTheTextChanges()
{
    LineRow row("camber", std::vector<Beam>(1));
    row.open();
    row.type("-1");
    row.press(Qt::Key_Return);
    row.type("2");
    QVERIFY(!row.isRed());
    QCOMPARE(row.entry().value, boost::any(2.0));
    row.type("-1");
    QCOMPARE(row.entry().state, EditState::Complete);
}

void TestLineRowEditor::hasTheColoursOfThePaletteAtRest()
{
    LineRow row("length");
    QPalette dark;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    row.window.setPalette(dark);
    row.open();
    const QPalette atRest = row.edit()->palette();
    row.type("50 m");
    QVERIFY(row.isRed());
    row.press(Qt::Key_Escape);
    QCOMPARE(row.edit()->palette().color(QPalette::Text), atRest.color(QPalette::Text));
    QCOMPARE(row.edit()->palette().color(QPalette::Base), atRest.color(QPalette::Base));
    row.type("5 m");
    row.press(Qt::Key_Return);
    QCOMPARE(row.edit()->palette().color(QPalette::Text), atRest.color(QPalette::Text));
}

void TestLineRowEditor::dropsWhatIsPendingWhenShown()
{
    LineRow row("length");
    row.open();
    row.type("50 m");
    row.changed = 0;
    row.show();
    QCOMPARE(row.text(), QString("3.000 m"));
    QCOMPARE(row.hint(), QString());
    QCOMPARE(row.entry().state, EditState::Untouched);
    QVERIFY(!row.isRed());
    QCOMPARE(row.changed, 0);
    QCOMPARE(row.ended, 0);
}

void TestLineRowEditor::showsWhatIsOutOfRange()
{
    LineRow row("length", beamsOfLengths({-7.5}));
    row.open();
    QCOMPARE(row.text(), QString("-7.500 m"));
    row.press(Qt::Key_Tab);
    row.press(Qt::Key_Return);
    row.press(Qt::Key_Tab);
    QCOMPARE(row.ended, 0);
    QCOMPARE(row.text(), QString("-7.500 m"));
}

void TestLineRowEditor::leavesKeysToTheDialog_data()
{
    columns<bool, Qt::Key, bool>("isPending", "key", "closes");
    row("Enter while a text is pending", true, Qt::Key_Return, false);
    row("Escape while a text is pending", true, Qt::Key_Escape, false);
    row("Enter", false, Qt::Key_Return, true);
    row("Escape", false, Qt::Key_Escape, true);
}

void TestLineRowEditor::leavesKeysToTheDialog()
{
    QFETCH(bool, isPending);
    QFETCH(Qt::Key, key);
    LineRow row("length");
    row.open();
    QDialog dialog;
    auto* accept = new QPushButton("OK", &dialog);
    accept->setDefault(true);
    connect(accept, &QPushButton::clicked, &dialog, &QDialog::accept);
    row.window.setParent(&dialog);
    row.window.show();
    dialog.show();
    QApplication::setActiveWindow(&dialog);
    row.type(isPending ? "2.0 m" : "3.000 m");
    row.press(key);
    QTEST(!dialog.isVisible(), "closes");
    QCOMPARE(row.ended, isPending && key == Qt::Key_Return ? 1 : 0);
    row.window.setParent(nullptr);
}

void TestLineRowEditor::leavesUndoToTheApplication()
{
    LineRow row("length", beamsOfLengths({third}));
    row.open();
    QShortcut undo(QKeySequence::Undo, &row.window);
    QSignalSpy undone(&undo, &QShortcut::activated);
    tabInto(row);
    row.press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(undone.count(), 1);
    row.press(Qt::Key_5);
    row.press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(undone.count(), 1);
    QCOMPARE(row.text(), QString("0.3333333333333333 m"));
    row.press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(undone.count(), 2);
}

void TestLineRowEditor::tellsWhatVaries()
{
    LineRow row("length", beamsOfLengths({3.0, 2.0, 3.0, 7.62}));
    row.open();
    QCOMPARE(row.text(), getVariesString());
    QCOMPARE(row.list(), QStringList());
    tabInto(row);
    QCOMPARE(row.hint(), QString("4 beams: 2.000 m to 7.620 m"));
    const QStringList all = {"2 \303\227 3.000 m", "1 \303\227 2.000 m", "1 \303\227 7.620 m"};
    QCOMPARE(row.list(), all);
    row.beams[1].length = 2.5;
    row.show();
    QCOMPARE(row.hint(), QString("4 beams: 2.500 m to 7.620 m"));
    QCOMPARE(row.list()[1], QString("1 \303\227 2.500 m"));
    row.press(Qt::Key_5);
    QVERIFY(!row.list().contains(all[0]));
    QCOMPARE(row.hint(), QString());
    row.press(Qt::Key_Escape);
    QCOMPARE(row.text(), getVariesString());
    row.press(Qt::Key_Tab);
    QCOMPARE(row.written, 0);
    QCOMPARE(row.list(), QStringList());
}

// "2 x 3.000 m" does not become "m 3.000 x 2".
void TestLineRowEditor::readsTheListAsTheField()
{
    LineRow row("name", std::vector<Beam>(2));
    row.beams[0].name = "B1";
    row.beams[1].name = "B2";
    row.open();
    row.window.setLayoutDirection(Qt::RightToLeft);
    tabInto(row);
    const auto* list = row.edit()->findChild<QListWidget*>();
    QVERIFY(list && list->isVisible());
    QCOMPARE(list->layoutDirection(), Qt::LeftToRight);
    row.before->setFocus();
    row.beams[0].name = QString::fromUtf8("\327\220");
    row.beams[1].name = QString::fromUtf8("\327\221");
    row.show();
    tabInto(row);
    QCOMPARE(list->layoutDirection(), Qt::RightToLeft);
}

// It takes time in a large selection.
void TestLineRowEditor::asksForTheSpreadWhenEditingBegins_data()
{
    columns<QByteArray>("key");
    for (const char* key : {"name", "length", "bolts", "load"})
        row(key, QByteArray(key));
}

void TestLineRowEditor::asksForTheSpreadWhenEditingBegins()
{
    QFETCH(QByteArray, key);
    std::vector<Beam> beams(2);
    beams[1].name = "B";
    beams[1].length = 3.1;
    beams[1].bolts = 5;
    beams[1].load = 2.0;
    LineRow row(key.toStdString(), beams);
    row.open();
    row.show();
    QCOMPARE(row.spreads, 0);
    tabInto(row);
    QCOMPARE(row.spreads, 1);
    row.press(Qt::Key_Tab);
    QCOMPARE(row.spreads, 1);
}

void TestLineRowEditor::takesTheExactValue_data()
{
    columns<Steps, double>("take", "value");
    row("Down and Enter", inOrder({pressing(Qt::Key_Down), pressing(Qt::Key_Return)}), third);
    row("Down and Tab", inOrder({pressing(Qt::Key_Down), pressing(Qt::Key_Tab)}), third);
    row("the second one",
        inOrder({pressing(Qt::Key_Down), pressing(Qt::Key_Down), pressing(Qt::Key_Return)}), 7.5);
    row("a click", Steps([](LineRow& row) {
        auto* list = row.edit()->findChild<QListWidget*>();
        const QRect place = list->visualItemRect(list->item(0));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place.center());
    }),
        third);
}

void TestLineRowEditor::takesTheExactValue()
{
    QFETCH(Steps, take);
    QFETCH(double, value);
    LineRow row("length", beamsOfLengths({third, third, 7.5}));
    row.open();
    tabInto(row);
    take(row);
    QCOMPARE(row.ended, 1);
    for (const auto& beam : row.beams)
        QVERIFY(haveSameBits(beam.second.length, value));
    QCOMPARE(row.text(), QString("%1 m").arg(value, 0, 'f', 3));
    QCOMPARE(row.list(), QStringList());
}

void TestLineRowEditor::marksWhatDiffersBelowTheDigits()
{
    LineRow row("length", beamsOfLengths({2.0, 2.0000001, 2.0}));
    row.open();
    QCOMPARE(row.text(), QString("2.000 m"));
    QCOMPARE(row.spreads, 1);
    auto* mark = row.editor->widget()->findChild<QLabel*>("mark");
    QVERIFY(mark && mark->isVisible());
    const QString meaning = "The selected objects differ beyond the shown digits.";
    QCOMPARE(mark->toolTip(), meaning);
    QCOMPARE(row.editor->status(), meaning);
    tabInto(row);
    QCOMPARE(row.text(), QString("2.000 m"));
    QCOMPARE(row.hint(), meaning);
    QCOMPARE(row.list(), QStringList({"2 \303\227 2.000 m", "1 \303\227 2.0000001 m"}));
    row.press(Qt::Key_Tab);
    QCOMPARE(row.ended, 0);
    tabInto(row);
    // The text that is shown, but of one value.
    row.press(Qt::Key_Down);
    row.press(Qt::Key_Return);
    QCOMPARE(row.written, 1);
    QVERIFY(haveSameBits(row.beams[1].length, 2.0));
    QVERIFY(!mark->isVisible());
    QCOMPARE(row.editor->status(), QString());
}

void TestLineRowEditor::previewsRelativeEdits()
{
    LineRow row("length", beamsOfLengths({2.0, 7.62}));
    row.open();
    row.type("+= 5 mm");
    QCOMPARE(row.hint(), QString("2 beams: 2.005 m to 7.625 m"));
    QVERIFY(!row.isRed());
    row.press(Qt::Key_Return);
    QCOMPARE(row.beams[0].length, 2.005);
    QCOMPARE(row.beams[1].length, 7.625);
    QCOMPARE(row.text(), getVariesString());
}

void TestLineRowEditor::refusesWhatThePolicyRefuses()
{
    PropertySet<Beam> beams("beam", &countedBeams);
    beams.add("length", "&Length", &Beam::length,
        field::quantity(UnitId::GEO_LENGTH).between(0.1, 40.0).outOfRange(OutOfRange::RefuseAll));
    LineRow row("length", beamsOfLengths({2.0, 7.62}), beams);
    row.open();
    row.type("*= 10");
    QVERIFY(row.isRed());
    QCOMPARE(row.entry().state, EditState::Refused);
    QCOMPARE(row.entry().reason, QString("1 would exceed 40.000 m"));
    QCOMPARE(row.hint(), row.entry().reason);
    row.press(Qt::Key_Return);
    QCOMPARE(row.beams[0].length, 2.0);
}

void TestLineRowEditor::completesUnits()
{
    LineRow row("length");
    row.open();
    row.type("12 f");
    QCOMPARE(row.list(), QStringList({"12 ft"}));
    QCOMPARE(row.hint(), QString("\342\200\246 ft"));
    row.press(Qt::Key_Down);
    row.press(Qt::Key_Return);
    QCOMPARE(row.text(), QString("12 ft"));
    QCOMPARE(row.ended, 0);
    row.press(Qt::Key_Return);
    QCOMPARE(row.beams[0].length, 12 * 0.3048);
}

void TestLineRowEditor::completesWhatIsNotComplete_data()
{
    columns<QString, bool>("text", "completes");
    row("a number may get a unit", "5", true);
    row("a sum of numbers may get a unit", "5 + 3", true);
    row("a unit has begun", "5 f", true);
    row("a unit has begun in a sum", "3 m + 20 c", true);
    row("the number of a sum may get a unit", "3 m + 20 ", true);
    row("a unit that others begin with", "5 m", false);
    row("a unit without a blank", "5m", false);
    row("a unit of one letter more", "5 mm", false);
    row("feet and inches", "6' 2 1/2\"", false);
    row("a sum of lengths", "3 m + 20 cm", false);
}

void TestLineRowEditor::completesWhatIsNotComplete()
{
    QFETCH(QString, text);
    LineRow row("length");
    row.open();
    row.type(text);
    QTEST(!row.list().isEmpty(), "completes");
}

void TestLineRowEditor::clears_data()
{
    columns<Steps>("clear");
    row("the text is deleted", inOrder({typing(""), pressing(Qt::Key_Return)}));
    row("the keys",
        inOrder({tabInto, pressing(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier)}));
    row("the button", Steps([](LineRow& row) { row.edit()->findChild<QAction*>()->trigger(); }));
}

void TestLineRowEditor::clears()
{
    QFETCH(Steps, clear);
    std::vector<Beam> beams(2);
    beams[0].load = 3.0;
    LineRow row("load", beams);
    row.open();
    QCOMPARE(row.text(), getVariesString());
    clear(row);
    QCOMPARE(row.written, 1);
    QVERIFY(!row.beams[0].load);
    QCOMPARE(row.text(), QString());
    QCOMPARE(row.entry().state, EditState::Untouched);
    tabInto(row);
    row.press(Qt::Key_Tab);
    QCOMPARE(row.written, 1);
}

void TestLineRowEditor::offersToClear_data()
{
    columns<QByteArray, bool, bool, bool>("key", "hasValue", "isReadOnly", "offers");
    row("an optional property", QByteArray("load"), true, false, true);
    row("one without a value", QByteArray("load"), false, false, false);
    row("a read-only one", QByteArray("load"), true, true, false);
    row("one that needs a value", QByteArray("length"), true, false, false);
}

void TestLineRowEditor::offersToClear()
{
    QFETCH(QByteArray, key);
    QFETCH(bool, hasValue);
    QFETCH(bool, isReadOnly);
    Beam beam;
    if (hasValue)
        beam.load = 3.0;
    LineRow row(key.toStdString(), {beam});
    row.open();
    row.editor->setReadOnly(isReadOnly);
    const auto* action = row.edit()->findChild<QAction*>();
    QTEST(action && action->isVisible(), "offers");
}

void TestLineRowEditor::cannotBeEditedIfReadOnly()
{
    LineRow row("length", beamsOfLengths({2.0, 3.0}));
    row.open();
    row.editor->setReadOnly(true);
    row.type("5");
    QCOMPARE(row.text(), getVariesString());
    QCOMPARE(row.list(), QStringList());
    QCOMPARE(row.hint(), QString("2 beams: 2.000 m to 3.000 m"));
    row.press(Qt::Key_Down);
    row.press(Qt::Key_Return);
    QCOMPARE(row.ended, 0);
}

void TestLineRowEditor::hasAStatusForAScreenReader()
{
    LineRow row("length", beamsOfLengths({2.0, 3.0}));
    row.open();
    QCOMPARE(row.editor->status(), QString());
    row.type("50 m");
    QCOMPARE(row.editor->status(), tooLong);
    row.type("5 m");
    QCOMPARE(row.editor->status(), QString());
}

void TestLineRowEditor::survivesAnyText_data()
{
    columns<QByteArray, QString>("key", "text");
    for (const char* key : {"length", "bolts", "grade"}) {
        for (const auto& each : hostileTexts())
            row(key + QByteArray(": ") + each.first, QByteArray(key), each.second);
    }
}

void TestLineRowEditor::survivesAnyText()
{
    QFETCH(QByteArray, key);
    QFETCH(QString, text);
    LineRow row(key.toStdString(), std::vector<Beam>(1));
    row.open();
    tabInto(row);
    QApplication::clipboard()->setText(text);
    row.press(Qt::Key_V, Qt::ControlModifier);
    const QString pasted = row.text();
    const auto made = row.entry();
    row.press(Qt::Key_Return);
    // The grade is kept in UTF-8, which has no half characters.
    const bool canBeKept = QString::fromStdString(pasted.toStdString()) == pasted;
    if (made.state == EditState::Complete && key == "grade" && canBeKept) {
        QCOMPARE(row.beams[0].grade, pasted.toStdString());
        QVERIFY(pasted == text || text.isEmpty());
    }
    row.press(Qt::Key_Escape);
    row.press(Qt::Key_Tab);
    QApplication::clipboard()->clear();
}

// Of "3.333 m" in a narrow field, "333 m" would be seen.
void TestLineRowEditor::showsTheBeginningAtRest()
{
    LineRow row("length", beamsOfLengths({10.0 / 3.0}));
    row.open();
    QCOMPARE(row.edit()->cursorPosition(), 0);
    row.type("7.777777");
    row.press(Qt::Key_Tab);
    QCOMPARE(row.written, 1);
    QCOMPARE(row.edit()->cursorPosition(), 0);
    tabInto(row);
    row.press(Qt::Key_Tab);
    QCOMPARE(row.edit()->cursorPosition(), 0);
}

// If the application gives the focus, "5" must not make 52 m of 2 m.
void TestLineRowEditor::takesKeysAtTheEnd()
{
    LineRow row("length", beamsOfLengths({2.0}));
    row.open();
    row.edit()->setFocus(Qt::OtherFocusReason);
    row.press(Qt::Key_5);
    QCOMPARE(row.text(), QString("2.000 m5"));
}

void TestLineRowEditor::keepsALongText()
{
    Beam beam;
    beam.grade = std::string(300000, 'x') + '\0' + "y";
    LineRow row("grade", {beam});
    row.open();
    QCOMPARE(row.text().toStdString(), beam.grade);
    tabInto(row);
    row.press(Qt::Key_Tab);
    QCOMPARE(row.ended, 0);
    tabInto(row);
    row.press(Qt::Key_Home);
    row.press(Qt::Key_1);
    row.press(Qt::Key_Return);
    QVERIFY(row.beams[0].grade == '1' + beam.grade);
}

void TestLineRowEditor::survivesItsEndInItsSignals_data()
{
    columns<int, Steps>("where", "steps");
    row("changed", int(InChanged), typing("5"));
    row("ended by Enter", int(InEnded), inOrder({typing("5"), pressing(Qt::Key_Return)}));
    row("ended by Tab", int(InEnded), inOrder({typing("5"), pressing(Qt::Key_Tab)}));
    row("ended by leaving", int(InEnded),
        inOrder({typing("5"), Steps([](LineRow& row) { row.after->setFocus(); })}));
    row("ended by taking", int(InEnded),
        inOrder({tabInto, pressing(Qt::Key_Down), pressing(Qt::Key_Return)}));
    row("ended by clearing", int(InEnded),
        inOrder({tabInto, pressing(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier)}));
    row("cancelled", int(InCancelled), inOrder({typing("5"), pressing(Qt::Key_Escape)}));
    row("asked for the spread when editing begins", int(InSpread), Steps(tabInto));
    row("asked for the spread when it is shown", int(InShow),
        Steps([](LineRow& row) { row.show(); }));
    row("asked for a preview", int(InPreview), typing("*= 5"));
    row("a check", int(InCheck), typing("5"));
}

void TestLineRowEditor::survivesItsEndInItsSignals()
{
    QFETCH(int, where);
    QFETCH(Steps, steps);
    int ends = 0;
    std::function<void()> check;
    PropertySet<Beam> properties("beam", &countedBeams);
    properties.add("load", "&Load", &Beam::load, field::number().accept([&](double) {
        if (check && ends == 0)
            check();
        return QString();
    }));
    properties.add("comment", "Comment", &Beam::comment, field::text());
    std::vector<Beam> beams(2);
    beams[0].load = 2.0;
    if (where == InShow) // Which of these differ below the digits is asked then.
        beams[1].load = 2.0000001;
    beams[0].comment = L"first";
    LineRow row(where == InSpread ? "comment" : "load", beams, properties);
    const auto end = [&] {
        ++ends;
        delete (row.editor ? row.editor->widget() : nullptr);
    };
    const auto spread = row.questions.spread;
    const auto preview = row.questions.preview;
    bool isOpen = false;
    row.questions.spread = [&, spread] {
        if ((where == InSpread || where == InShow) && isOpen)
            end();
        return spread();
    };
    row.questions.preview = [&, preview](const boost::any& value) {
        if (where == InPreview)
            end();
        return preview(value);
    };
    row.open();
    isOpen = true;
    using vrn::qt::detail::RowEditor;
    if (where == InChanged)
        connect(row.editor, &RowEditor::changed, this, end);
    if (where == InEnded)
        connect(row.editor, &RowEditor::ended, this, end);
    if (where == InCancelled)
        connect(row.editor, &RowEditor::cancelled, this, end);
    if (where == InCheck)
        check = end;
    steps(row);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(ends, 1);
    QVERIFY(!row.editor);
}

VRN_TEST(TestLineRowEditor)
#include "tst_line_row_editor.moc"
