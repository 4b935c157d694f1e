#include "line_row_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::qt;
using namespace vrn::test;
namespace UnitId = vrn::units::UnitId;
using vrn::units::Context;

namespace {

/// Beams whose length has a range and a history.
PropertySet<Beam> remembered()
{
    PropertySet<Beam> beams("beam", &countedBeams);
    beams.add("length", "&Length", &Beam::length,
        field::quantity(UnitId::GEO_LENGTH).between(0.1, 40.0).history());
    return beams;
}

/// Gives the lengths a history with `entries`, the oldest one first.
void remember(LineRow& row, const std::vector<std::wstring>& entries)
{
    row.questions.history = boost::make_shared<vrn::ValueHistoryMemoryStorage>();
    const std::string key = row.selection.row("length")->field.historyKey();
    vrn::ValueHistory history(QString::fromStdString(key).toStdWString(), row.questions.history);
    for (const std::wstring& entry : entries)
        history.add(entry);
}

} // namespace

class TestLineRowHistory : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void remembersWhatWasEntered();
    void offersTheHistoryInTheShownUnits_data();
    void offersTheHistoryInTheShownUnits();
    void offersATextOnce();
    void keepsTheHistoryApart_data();
    void keepsTheHistoryApart();
    void forgetsWhatWasRefused();
    void remembersWhatReplacesARefusedEntry();
};

void TestLineRowHistory::remembersWhatWasEntered()
{
    PropertySet<Beam> beams("beam", &countedBeams);
    beams
        .add("length", "&Length", &Beam::length,
            field::quantity(UnitId::GEO_LENGTH).between(0.1, 40.0).history())
        .add("camber", "&Camber", &Beam::camber, &Beam::setCamber,
            field::quantity(UnitId::GEO_LENGTH).history());
    const auto storage = boost::make_shared<vrn::ValueHistoryMemoryStorage>();
    {
        LineRow row("length", std::vector<Beam>(2), beams);
        row.questions.history = storage;
        row.open();
        for (const char* text : {"10 m / 3", "50 m", "12 ft", "+= 1 m"}) {
            row.type(text);
            row.press(Qt::Key_Return);
        }
        QCOMPARE(row.written, 3);
    }
    LineRow row("camber", std::vector<Beam>(1), beams);
    row.questions.history = storage;
    row.model.setUnits(Context(9));
    row.open();
    tabInto(row);
    const QStringList entries = row.list();
    QCOMPARE(entries.size(), 2);
    QCOMPARE(entries[1], QString("3.3333333333333335 m"));
    row.press(Qt::Key_Down);
    row.press(Qt::Key_Down);
    row.press(Qt::Key_Return);
    QCOMPARE(row.ended, 1);
    QVERIFY(haveSameBits(row.beams[0].camber(), 10.0 / 3.0));
    tabInto(row);
    QCOMPARE(row.list(), entries);
    row.press(Qt::Key_Down);
    row.press(Qt::Key_Return);
    QVERIFY(haveSameBits(row.beams[0].camber(), 12 * 0.3048));
}

void TestLineRowHistory::offersTheHistoryInTheShownUnits_data()
{
    columns<QString, int, int, QString>("typed", "typedIn", "shownIn", "offered");
    const int metres = UnitId::METRE;
    const int feet = UnitId::FOOT;
    const int feetAndInches = UnitId::FEET_AND_FRACTIONAL_INCHES;
    row("feet and inches stay so", "6' 2 1/2\"", feetAndInches, feetAndInches, "6' 2 1/2 ''");
    row("feet and inches come back from metres", "6' 2 1/2\"", metres, feetAndInches,
        "6' 2 1/2 ''");
    row("whole feet come back from metres", "12'", metres, feetAndInches, "12' 0 ''");
    row("a sixteenth comes back from metres", "1' 1/16\"", metres, feetAndInches, "1' 1/16 ''");
    row("what is no fraction of an inch stays as it was kept", "2 m", metres, feetAndInches,
        "2.000 m");
    row("decimal feet come back from metres", "12 ft", metres, feet, "12.000 ft");
    row("what has more digits than are shown stays as it was kept", "10 m / 3", metres, feet,
        "3.3333333333333335 m");
    row("what has more digits in metres than are shown stays", "6' 2 1/2\"", feetAndInches, metres,
        "6' 2 1/2 ''");
}

void TestLineRowHistory::offersTheHistoryInTheShownUnits()
{
    QFETCH(QString, typed);
    QFETCH(int, typedIn);
    QFETCH(int, shownIn);
    const auto unitsIn = [](int unit) {
        Context units;
        units.format_provider().set_unit(UnitId::GEO_LENGTH, UnitId::UnitId(unit));
        if (unit == UnitId::FEET_AND_FRACTIONAL_INCHES)
            units.format_provider().set_precision(UnitId::GEO_LENGTH, 16);
        return units;
    };
    LineRow row("length", std::vector<Beam>(1), remembered());
    remember(row, {});
    row.model.setUnits(unitsIn(typedIn));
    row.open();
    row.type(typed);
    row.press(Qt::Key_Return);
    const double entered = row.beams[0].length;
    row.beams[0].length = 1.0;
    row.model.setUnits(unitsIn(shownIn));
    row.show();
    tabInto(row);
    QTEST(row.list().value(0), "offered");
    row.press(Qt::Key_Down);
    row.press(Qt::Key_Return);
    QCOMPARE(row.ended, 2);
    QVERIFY(haveSameBits(row.beams[0].length, entered));
}

// Of two entries that have become the same text.
void TestLineRowHistory::offersATextOnce()
{
    LineRow row("length", std::vector<Beam>(1), remembered());
    remember(row, {L"250 cm", L"2 m", L"2.500 m"});
    row.open();
    tabInto(row);
    QCOMPARE(row.list(), QStringList({"2.500 m", "2.000 m"}));
}

// From the values of the selection, by a heading that cannot be taken.
void TestLineRowHistory::keepsTheHistoryApart_data()
{
    columns<Steps, double>("steps", "taken");
    const Steps down = pressing(Qt::Key_Down);
    const Steps enter = pressing(Qt::Key_Return);
    row("Down stops before it", inOrder({down, down, enter}), 3.0);
    row("Down passes over it", inOrder({down, down, down, enter}), 7.5);
    row("Down stops at the end", inOrder({down, down, down, down, enter}), 7.5);
    row("Up passes over it", inOrder({down, down, down, pressing(Qt::Key_Up), enter}), 3.0);
    row("a click on it takes nothing", Steps([](LineRow& row) {
        row.press(Qt::Key_Down);
        auto* list = row.edit()->findChild<QListWidget*>();
        const QRect place = list->visualItemRect(list->item(2));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place.center());
    }),
        0.0);
}

void TestLineRowHistory::keepsTheHistoryApart()
{
    QFETCH(Steps, steps);
    QFETCH(double, taken);
    LineRow row("length", beamsOfLengths({2.0, 3.0}), remembered());
    remember(row, {L"7.500 m"});
    row.open();
    tabInto(row);
    QCOMPARE(row.list(),
        QStringList({"1 \303\227 2.000 m", "1 \303\227 3.000 m", "Entered before", "7.500 m"}));
    QVERIFY(row.edit()->findChild<QListWidget*>()->item(2)->font().bold());
    steps(row);
    QCOMPARE(row.written, taken == 0.0 ? 0 : 1);
    QCOMPARE(row.beams[0].length, taken == 0.0 ? 2.0 : taken);
}

void TestLineRowHistory::forgetsWhatWasRefused()
{
    PropertySet<Beam> beams("beam", &countedBeams);
    beams.add("camber", "&Camber", &Beam::camber, &Beam::setCamber, field::number().history());
    LineRow row("camber", std::vector<Beam>(1), beams);
    row.questions.history = boost::make_shared<vrn::ValueHistoryMemoryStorage>();
    row.open();
    row.type("-1");
    row.press(Qt::Key_Return);
    row.press(Qt::Key_Escape);
    row.press(Qt::Key_F2);
    QCOMPARE(row.list(), QStringList());
}

// What is typed after a refused entry of the history is new.
void TestLineRowHistory::remembersWhatReplacesARefusedEntry()
{
    LineRow row("length", std::vector<Beam>(1), remembered());
    remember(row, {L"50.000 m"});
    row.open();
    tabInto(row);
    row.press(Qt::Key_Down);
    row.press(Qt::Key_Return);
    QCOMPARE(row.written, 0);
    row.type("5 m");
    row.press(Qt::Key_Return);
    QCOMPARE(row.written, 1);
    tabInto(row);
    QCOMPARE(row.list(), QStringList({"5.000 m", "50.000 m"}));
}

VRN_TEST(TestLineRowHistory)
#include "tst_line_row_history.moc"
