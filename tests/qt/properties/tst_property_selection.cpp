#include <vrn/qt/property_selection.h>

#include <vrn/qt/cell_data.h>
#include <vrn/qt/property_error.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "beam_model.h"
#include "refusal.h"

#include <QPointer>
#include <QSignalSpy>
#include <QUndoStack>

#include <cmath>
#include <limits>
#include <memory>

using namespace vrn::qt;
using namespace vrn::test;
namespace UnitId = vrn::units::UnitId;

Q_DECLARE_METATYPE(vrn::qt::PropertyKeys)
Q_DECLARE_METATYPE(vrn::qt::ObjectIds)

namespace {

/// Beams and walls in one model.
struct House : public BeamModel
{
    House()
        : BeamModel(3)
    {
        PropertySet<Beam> set(
            "wall", [](int n) { return QString("%1 wall%2").arg(n).arg(n == 1 ? "" : "s"); });
        set.add("width", "Thickness", &Beam::width,
               field::quantity(UnitId::SECT_LENGTH).between(0.05, 3.0)) // in metres
            .add("name", "Name", &Beam::name, field::text().maxLength(20).readOnly())
            .add("load", "Load", &Beam::factor, field::quantity(UnitId::LOAD_LINE))
            .add("length", "Length of the wall", &Beam::length,
                field::quantity(UnitId::GEO_LENGTH).between(0.1, 40.0).accept([](double length) {
                    return length > 30.0 ? QString("No wall is that long.") : QString();
                }));
        walls[7] = Beam();
        addKind(set, &walls);
    }

    Beams walls;
};

} // namespace

class TestPropertySelection : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void sortsItsObjects();
    void hasTheRowsOfItsKind();
    void hasTheLikeRowsOfSeveralKinds();
    void countsItsObjects();
    void withoutAModelDoesNothing();

    void writesAllObjectsAtOnce();
    void writesOnlyWhatDiffersByItsBits();
    void writesNothingIfNothingDiffers();
    void writesWithoutAStack();
    void announcesWhatItWrote();
    void reportsAnUnknownProperty();
    void reportsAValueOfAnotherType();

    void refuses_data();
    void refuses();
    void refusesForEachKind();
    void showsWhatTheModelThrows();
    void writesNothingAfterAnExceptionWhileReading();
    void leavesAModelsValueThatIsOutOfRange();

    void clearsAnOptionalProperty();
    void doesNotClearAnother();
    void passesOverAnObjectThatIsGone();

    void changesEachFromItsOwnValue();
    void leavesAndCounts_data();
    void leavesAndCounts();
    void refusesAllByThePolicy();
    void keepsIntegersWhole();
    void previewsWithoutWriting_data();
    void previewsWithoutWriting();
    void addsUpItsNumbers();

    void takesNoOtherEditWhileItWrites();
    void survivesWhatWriteDestroys_data();
    void survivesWhatWriteDestroys();
};

void TestPropertySelection::initTestCase()
{
    qRegisterMetaType<PropertyKeys>("vrn::qt::PropertyKeys");
    qRegisterMetaType<ObjectIds>("vrn::qt::ObjectIds");
}

void TestPropertySelection::sortsItsObjects()
{
    House house;
    const PropertySelection selection(&house, {{7, 1}, 2, 0, 2});
    QCOMPARE(selection.ids(), (ObjectIds{0, 2, {7, 1}}));
}

void TestPropertySelection::hasTheRowsOfItsKind()
{
    BeamModel model(2);
    const PropertySelection selection(&model, {1});
    QCOMPARE(int(selection.rows().size()), 13);
    const PropertySelection::Row* length = selection.row("length");
    QVERIFY(length);
    QCOMPARE(length->caption, QString("&Length"));
    QCOMPARE(length->title, QString("Length"));
    QCOMPARE(length->section.key, std::string("geometry"));
    QVERIFY(selection.row("area")->isReadOnly() && selection.row("load")->isOptional());
    QVERIFY(!selection.row("height"));
    QVERIFY(PropertySelection(&model, {}).rows().empty());
}

void TestPropertySelection::hasTheLikeRowsOfSeveralKinds()
{
    House house;
    const PropertySelection selection(&house, {0, {7, 1}});
    QStringList keys;
    for (const PropertySelection::Row& each : selection.rows())
        keys << QString::fromStdString(each.key);
    // The width is stored in another unit.
    QCOMPARE(keys, (QStringList{"name", "length", "load"}));
    QCOMPARE(selection.row("length")->title, QString("Length"));
    QVERIFY(selection.row("name")->isReadOnly());
    QVERIFY(!selection.row("load")->isOptional());
}

void TestPropertySelection::countsItsObjects()
{
    House house;
    QCOMPARE(PropertySelection(&house, {0}).countedName(), QString("1 beam"));
    QCOMPARE(
        PropertySelection(&house, {0, 1, {7, 1}}).countedName(), QString("2 beams and 1 wall"));
    QCOMPARE(PropertySelection(&house, {}).countedName(), QString());
}

void TestPropertySelection::withoutAModelDoesNothing()
{
    auto model = std::make_unique<BeamModel>(2);
    QUndoStack stack;
    PropertySelection selection(model.get(), model->ids(), &stack);
    const QJsonObject saved = selection.save();
    model.reset();
    QVERIFY(!selection.model());
    QCOMPARE(int(selection.read({"length"})[0].kind), int(PropertyState::NoObject));
    QCOMPARE(int(selection.edit("length", 5.0).selected), 0);
    QCOMPARE(int(selection.preview("length", 5.0).selected), 0);
    QCOMPARE(int(selection.load(saved).selected), 0);
    QCOMPARE(selection.countedName(), QString());
    QCOMPARE(stack.count(), 0);
    PropertySelection none;
    QVERIFY(none.rows().empty() && none.ids().empty());
}

void TestPropertySelection::writesAllObjectsAtOnce()
{
    BeamModel model(3);
    QUndoStack stack;
    PropertySelection selection(&model, model.ids(), &stack);
    const PropertyReceipt receipt = selection.edit("length", 7.62);
    QCOMPARE(model.writes, QStringList{"length of 0 1 2"});
    QVERIFY(haveSameBits(model.beams[2].length, 7.62));
    QCOMPARE(receipt.text, QString("Length: 3 of 3 changed"));
    QCOMPARE(receipt.key, std::string("length"));
    QCOMPARE(stack.count(), 1);
    QCOMPARE(stack.undoText(), QString("Length of 3 beams"));
}

void TestPropertySelection::writesOnlyWhatDiffersByItsBits()
{
    BeamModel model(4);
    model.beams[0].factor = 0.0;
    model.beams[1].factor = -0.0;
    model.beams[2].factor = std::nextafter(0.0, 1.0);
    QUndoStack stack;
    PropertySelection selection(&model, model.ids(), &stack);
    const PropertyReceipt receipt = selection.edit("factor", 0.0);
    QCOMPARE(model.writes, QStringList{"factor of 1 2 3"});
    QCOMPARE(int(receipt.changed), 3);
    QCOMPARE(int(receipt.same), 1);
    QCOMPARE(stack.undoText(), QString("Factor of 3 beams"));
}

void TestPropertySelection::writesNothingIfNothingDiffers()
{
    BeamModel model(2);
    QUndoStack stack;
    QSignalSpy changed(&model, &PropertyModel::changed);
    PropertySelection selection(&model, model.ids(), &stack);
    const PropertyReceipt receipt = selection.edit("length", 3.0);
    QVERIFY(model.writes.isEmpty());
    QCOMPARE(stack.count(), 0);
    QCOMPARE(receipt.text, QString("Length: none of 2 changed"));
    model.flush();
    QCOMPARE(changed.count(), 0);
}

void TestPropertySelection::writesWithoutAStack()
{
    BeamModel model(2);
    PropertySelection selection(&model, {1});
    selection.edit("name", QString("ridge"));
    QCOMPARE(model.beams[1].name, QString("ridge"));
}

void TestPropertySelection::announcesWhatItWrote()
{
    BeamModel model(3);
    QSignalSpy changed(&model, &PropertyModel::changed);
    PropertySelection(&model, {0, 2}).edit("length", 5.0);
    model.flush();
    QCOMPARE(changed.count(), 1);
    const auto keys = changed[0].at(0).value<PropertyKeys>();
    QCOMPARE(keys, (PropertyKeys{"area", "camber", "length"}));
    QCOMPARE(changed[0].at(1).value<ObjectIds>(), (ObjectIds{0, 2}));
}

void TestPropertySelection::reportsAnUnknownProperty()
{
    BeamModel model(1);
    PropertySelection selection(&model, {0});
    expectAssert("found", {"key"}, "the selection has no such property");
    QCOMPARE(int(selection.edit("height", 5.0).selected), 0);
    expectAssert("found", {"key"}, "the selection has no such property");
    QCOMPARE(int(selection.preview("height", 5.0).selected), 0);
    QVERIFY(model.writes.isEmpty());
}

void TestPropertySelection::reportsAValueOfAnotherType()
{
    BeamModel model(1);
    PropertySelection selection(&model, {0});
    expectAssert("value.type() == m_data->type->type()", {}, "a value has the type of its field");
    QCOMPARE(
        refusal([&] { selection.edit("length", 5); }), QString("It is a value of another type."));
    QVERIFY(model.writes.isEmpty());
}

void TestPropertySelection::refuses_data()
{
    columns<QString, boost::any, QString>("key", "value", "reason");
    row("out of range", "length", boost::any(50.0), "It must be between 0.100 m and 40.000 m.");
    row("out of range as stored", "width", boost::any(3001.0),
        "It must be between 0.050 m and 3.000 m.");
    row("not a number", "factor", boost::any(std::numeric_limits<double>::quiet_NaN()),
        "It is not a number.");
    row("by a check of the application's", "bolts", boost::any(4), "Bolts come in odd numbers.");
    row("a text that is too long", "name", boost::any(QString(21, 'x')),
        "It has 21 characters, and may have 20.");
    row("none of the entries", "support", boost::any(Support::Free), "It is none of the entries.");
    row("what cannot be written", "area", boost::any(1.0), "It cannot be changed.");
    row("by a setter", "camber", boost::any(-1.0), "a beam does not sag on purpose");
    row("no value", "length", boost::any(), "A value is needed.");
    row("a change of a text", "name", boost::any(RelativeEdit{RelativeEdit::Add, 1.0}),
        "A change of each object's own value is not possible here.");
}

void TestPropertySelection::refuses()
{
    QFETCH(QString, key);
    QFETCH(boost::any, value);
    BeamModel model(3);
    QUndoStack stack;
    QSignalSpy changed(&model, &PropertyModel::changed);
    PropertySelection selection(&model, model.ids(), &stack);
    QTEST(refusal([&] { selection.edit(key.toStdString(), value); }), "reason");
    model.flush();
    QCOMPARE(changed.count(), 0);
    QCOMPARE(stack.count(), 0);
    for (const auto& beam : model.beams) {
        QCOMPARE(beam.second.length, 3.0);
        QCOMPARE(beam.second.camber(), 0.0);
        QCOMPARE(beam.second.bolts, 1);
    }
    QVERIFY(model.writes.isEmpty() || key == "camber");
}

void TestPropertySelection::refusesForEachKind()
{
    House house;
    PropertySelection selection(&house, {0, {7, 1}});
    QCOMPARE(refusal([&] { selection.edit("length", 35.0); }), QString("No wall is that long."));
    QCOMPARE(
        refusal([&] { selection.edit("name", QString("x")); }), QString("It cannot be changed."));
    QCOMPARE(refusal([&] { selection.edit("load", boost::any()); }), QString("A value is needed."));
    PropertySelection(&house, {0}).edit("length", 35.0);
    selection.edit("length", 25.0);
    QCOMPARE(house.walls[7].length, 25.0);
}

void TestPropertySelection::showsWhatTheModelThrows()
{
    BeamModel model(2);
    QUndoStack stack;
    PropertySelection selection(&model, model.ids(), &stack);
    model.beforeWrite = [] { throw std::runtime_error("the disk is full"); };
    QCOMPARE(refusal([&] { selection.edit("length", 5.0); }), QString("the disk is full"));
    model.beforeWrite = [] { throw 7; };
    QCOMPARE(refusal([&] { selection.edit("length", 5.0); }),
        QString("The application has refused this."));
    QCOMPARE(stack.count(), 0);
    QVERIFY(!model.isWriting());
    model.beforeWrite = {};
    selection.edit("length", 5.0);
    QCOMPARE(stack.count(), 1);
}

void TestPropertySelection::writesNothingAfterAnExceptionWhileReading()
{
    BeamModel model(2);
    PropertySelection selection(&model, model.ids());
    model.inRead = [](const PropertyKeys&) { throw std::runtime_error("no connection"); };
    QCOMPARE(refusal([&] { selection.edit("length", 5.0); }), QString("no connection"));
    QCOMPARE(refusal([&] { selection.edit("length", RelativeEdit()); }), QString("no connection"));
    QCOMPARE(refusal([&] { selection.save(); }), QString("no connection"));
    QCOMPARE(selection.read({"length"})[0].reason, QString("no connection"));
    QVERIFY(model.writes.isEmpty());
}

void TestPropertySelection::leavesAModelsValueThatIsOutOfRange()
{
    BeamModel model(2);
    model.beams[0].length = 1000.0;
    PropertySelection selection(&model, {0});
    QCOMPARE(boost::any_cast<double>(selection.read({"length"})[0].value), 1000.0);
    QCOMPARE(model.text(0, "length"), QString("1000.000 m"));
    selection.edit("name", QString("long"));
    QCOMPARE(model.beams[0].length, 1000.0);
}

void TestPropertySelection::clearsAnOptionalProperty()
{
    BeamModel model(3);
    model.beams[0].load = 1.0;
    model.beams[1].load = 2.0;
    QUndoStack stack;
    PropertySelection selection(&model, model.ids(), &stack);
    const PropertyReceipt receipt = selection.edit("load", boost::any());
    QCOMPARE(model.writes, QStringList{"load of 0 1"});
    QCOMPARE(int(receipt.same), 1);
    QVERIFY(!model.beams[0].load && !model.beams[1].load);
    stack.undo();
    QCOMPARE(model.beams[0].load.value(), 1.0);
    QCOMPARE(model.beams[1].load.value(), 2.0);
    QVERIFY(!model.beams[2].load);
    selection.edit("load", 4.0);
    stack.undo();
    QVERIFY(!model.beams[2].load);
}

void TestPropertySelection::doesNotClearAnother()
{
    BeamModel model(1);
    PropertySelection selection(&model, {0});
    for (const char* key : {"name", "length", "bolts", "active", "support", "camber"}) {
        QCOMPARE(
            refusal([&] { selection.edit(key, boost::any()); }), QString("A value is needed."));
    }
    QVERIFY(model.writes.isEmpty());
}

void TestPropertySelection::passesOverAnObjectThatIsGone()
{
    BeamModel model(3);
    PropertySelection selection(&model, model.ids());
    const auto gone = model.beams.extract(1);
    const PropertyReceipt receipt = selection.edit("length", 5.0);
    QCOMPARE(model.writes, QStringList{"length of 0 2"});
    QCOMPARE(int(receipt.selected), 2);
    QCOMPARE(int(selection.ids().size()), 3);
    QCOMPARE(int(selection.read({"length"})[0].kind), int(PropertyState::Common));
    Q_UNUSED(gone)
}

void TestPropertySelection::changesEachFromItsOwnValue()
{
    BeamModel model(3);
    model.beams[1].width = 300.0;
    QUndoStack stack;
    PropertySelection selection(&model, model.ids(), &stack);
    const RelativeEntry entry = readRelativeEdit(
        "+= 5 mm", selection.row("width")->field, model.units());
    selection.edit("width", entry.edit);
    QCOMPARE(model.writes, QStringList{"width of 0 1 2"});
    QCOMPARE(model.beams[0].width, 205.0);
    QCOMPARE(model.beams[1].width, 305.0);
    QCOMPARE(stack.count(), 1);
    stack.undo();
    QVERIFY(haveSameBits(model.beams[1].width, 300.0));
    stack.redo();
    QVERIFY(haveSameBits(model.beams[1].width, 305.0));
}

// Numbers with groups, one object and many, and reasons that are sentences of their own.
void TestPropertySelection::leavesAndCounts_data()
{
    columns<int, QString, QString, QString, QString>("count", "key", "text", "preview", "receipt");
    const QString none;
    row("nothing is left", 3, "length", "+= 1", "3 beams: 4.000 m to 21.000 m",
        "Length: 3 of 3 changed");
    row("one is too long", 3, "length", "*= 3", "3 beams: 9.000 m, 1 would exceed 40.000 m",
        "Length: 2 of 3 changed, 1 would exceed 40.000 m and was left");
    row("many are too long", 10000, "length", "*= 3",
        "10000 beams: 9.000 m, 188 would exceed 40.000 m",
        "Length: 9,812 of 10,000 changed, 188 would exceed 40.000 m and were left");
    row("many are too short", 3, "length", "-= 5", "3 beams: 15.000 m, 2 would fall below 0.100 m",
        "Length: 1 of 3 changed, 2 would fall below 0.100 m and were left");
    row("one is too short and one too long", 2, "width", "*= 100",
        "1 would fall below 0.050 m, 1 would exceed 3.000 m",
        "Width: none of 2 changed, 1 would fall below 0.050 m and was left, 1 would exceed 3.000 m "
        "and was left");
    row("all are too long", 3, "length", "+= 100 m", "3 would exceed 40.000 m",
        "Length: none of 3 changed, 3 would exceed 40.000 m and were left");
    row("the only one is too long", 1, "length", "+= 100 m", "1 would exceed 40.000 m",
        "Length: not changed, it would exceed 40.000 m");
    row("the only one is too short", 1, "length", "-= 100 m", "1 would fall below 0.100 m",
        "Length: not changed, it would fall below 0.100 m");
    row("one has no value", 2, "load", "*= 2", "2 beams: 4.00 kN/m, 1 has no value",
        "Load: 1 of 2 changed, 1 has no value");
    row("many have no value", 3, "load", "*= 2", "3 beams: 4.00 kN/m, 2 have no value",
        "Load: 1 of 3 changed, 2 have no value");
    row("the only one has no value", 1, "load", "*= 2", "1 has no value",
        "Load: not changed, it has no value");
    row("one is refused", 2, "bolts", "+= 4",
        "2 beams: 5, 1 would be refused: Bolts come in odd "
        "numbers.",
        "Bolts: 1 of 2 changed, 1 was left: Bolts come in odd numbers.");
    row("many are refused", 5, "bolts", "*= 2", none,
        "Bolts: none of 5 changed, 5 were left: Bolts come in odd numbers.");
    row("the only one is refused", 1, "bolts", "+= 1",
        "1 would be refused: Bolts come in odd numbers.",
        "Bolts: not changed. Bolts come in odd numbers.");
    row("one is not whole", 3, "group", "/= 2", none,
        "Group: 1 of 3 changed, 1 would not be whole and was left, 1 has no value");
    row("many are too large for their type", 3, "group", "*= 1e10", none,
        "Group: none of 3 changed, 2 would be too large and were left, 1 has no value");
    row("the only one is not whole", 1, "group", "/= 2", "1 would not be whole",
        "Group: not changed, it would not be whole");
    row("one is infinite", 3, "factor", "*= 1e308", none,
        "Factor: 2 of 3 changed, 1 would be too large and was left");
    row("the only one is infinite", 1, "factor", "*= 1e308", "1 would be too large",
        "Factor: not changed, it would be too large");
    row("all have the value already", 3, "factor", "*= 1", "3 beams: 1.00 to 100.00",
        "Factor: none of 3 changed");
    row("the only one has the value already", 1, "factor", "*= 1", "1 beam: 100.00",
        "Factor: not changed");
}

void TestPropertySelection::leavesAndCounts()
{
    QFETCH(int, count);
    QFETCH(QString, key);
    QFETCH(QString, text);
    QFETCH(QString, preview);
    BeamModel model(count);
    for (auto& [id, beam] : model.beams) {
        // The last one of a few, and 188 of many.
        beam.length = id >= 2 && (count < 10 || id < 190) ? 20.0 : 3.0;
        beam.factor = id == 0 ? 100.0 : 1.0;
        if (id < 2)
            beam.group = int(id) + 3;
        if (id != 1)
            continue;
        beam.load = 2.0;
        beam.width = -50.0;
        beam.bolts = 2;
    }
    PropertySelection selection(&model, model.ids());
    const RelativeEntry entry = readRelativeEdit(
        text, selection.row(key.toStdString())->field, model.units());
    QVERIFY2(entry.reason.isEmpty(), qPrintable(entry.reason));
    if (!preview.isNull())
        QCOMPARE(selection.preview(key.toStdString(), entry.edit).text, preview);
    QTEST(selection.edit(key.toStdString(), entry.edit).text, "receipt");
}

void TestPropertySelection::refusesAllByThePolicy()
{
    ObjectModel model;
    Beams beams{{0, Beam()}, {1, Beam()}};
    beams[1].length = 30.0;
    PropertySet<Beam> set("beam", &countedBeams);
    set.add("length", "Length", &Beam::length,
        field::quantity(UnitId::GEO_LENGTH).between(0.1, 40.0).outOfRange(OutOfRange::RefuseAll));
    model.addKind(set, &beams);
    PropertySelection selection(&model, {0, 1});
    const RelativeEdit twice{RelativeEdit::Multiply, 2.0};
    QCOMPARE(refusal([&] { selection.edit("length", twice); }), QString("1 would exceed 40.000 m"));
    QCOMPARE(
        refusal([&] { selection.preview("length", twice); }), QString("1 would exceed 40.000 m"));
    QCOMPARE(beams[0].length, 3.0);
    beams[1].length = 20.0;
    selection.edit("length", twice);
    QCOMPARE(beams[0].length, 6.0);
}

void TestPropertySelection::keepsIntegersWhole()
{
    BeamModel model(1);
    PropertySelection selection(&model, {0});
    // 1.1 is not exact, and nor is its product.
    for (int group = 10; group < 100000; group += 10) {
        model.beams[0].group = group;
        QCOMPARE(
            int(selection.edit("group", RelativeEdit{RelativeEdit::Multiply, 1.1}).changed), 1);
        QCOMPARE(model.beams[0].group.value(), group / 10 * 11);
    }
    model.beams[0].group = 2147483640;
    QCOMPARE(int(selection.edit("group", RelativeEdit{RelativeEdit::Multiply, 1.00001}).left), 1);
    QCOMPARE(int(selection.edit("group", RelativeEdit{RelativeEdit::Add, 8.0}).left), 1);
    QCOMPARE(int(selection.edit("group", RelativeEdit{RelativeEdit::Add, 7.0}).changed), 1);
    QCOMPARE(int(selection.edit("group", RelativeEdit{RelativeEdit::Subtract, 0.5}).left), 1);
}

void TestPropertySelection::previewsWithoutWriting_data()
{
    columns<QString, boost::any, QString>("key", "value", "text");
    const auto add = [](double number) {
        return boost::any(RelativeEdit{RelativeEdit::Add, number});
    };
    row("a range", "length", add(0.005), "3 beams: 3.005 m to 20.005 m");
    row("one value for all", "length", boost::any(4.0), "3 beams: 4.000 m");
    row("some out of range", "length", add(25.0), "3 beams: 28.000 m, 1 would exceed 40.000 m");
    row("all out of range", "length", add(100.0), "3 would exceed 40.000 m");
    row("integers", "bolts", add(2.0), "3 beams: 3");
}

void TestPropertySelection::previewsWithoutWriting()
{
    QFETCH(QString, key);
    QFETCH(boost::any, value);
    BeamModel model(3);
    model.beams[2].length = 20.0;
    QUndoStack stack;
    const PropertySelection selection(&model, model.ids(), &stack);
    QTEST(selection.preview(key.toStdString(), value).text, "text");
    QVERIFY(model.writes.isEmpty());
    QCOMPARE(stack.count(), 0);
}

void TestPropertySelection::addsUpItsNumbers()
{
    BeamModel model(20);
    for (auto& beam : model.beams) {
        const int n = int(beam.first);
        beam.second.length = n * 3.0;
        if (n % 3)
            beam.second.group = n;
    }
    PropertySelection selection(&model, model.ids());
    for (const char* key : {"length", "group"}) {
        for (int i = 0; i < 40; ++i) {
            const auto operation = RelativeEdit::Operation(i % 6);
            const PropertyReceipt receipt = selection.edit(
                key, RelativeEdit{operation, 1.0 + i / 4.0});
            QCOMPARE(receipt.changed + receipt.same + receipt.left, receipt.selected);
            QCOMPARE(int(receipt.selected), 20);
        }
    }
}

void TestPropertySelection::takesNoOtherEditWhileItWrites()
{
    BeamModel model(2);
    QUndoStack stack;
    PropertySelection selection(&model, model.ids(), &stack);
    QString inside;
    model.beforeWrite = [&] {
        QVERIFY(model.isWriting());
        inside = refusal([&] { selection.edit("width", 100.0); });
    };
    selection.edit("length", 5.0);
    QCOMPARE(inside, QString("Another edit is being written."));
    QCOMPARE(model.writes, QStringList{"length of 0 1"});
    QCOMPARE(stack.count(), 1);
    QVERIFY(!model.isWriting());
}

void TestPropertySelection::survivesWhatWriteDestroys_data()
{
    columns<QString>("destroyed");
    row("the model", "model");
    row("the stack", "stack");
    row("the selection", "selection");
    row("all of them", "model stack selection");
    row("the objects", "objects");
}

void TestPropertySelection::survivesWhatWriteDestroys()
{
    QFETCH(QString, destroyed);
    QPointer<BeamModel> model = new BeamModel(2);
    QPointer<QUndoStack> stack = new QUndoStack;
    auto selection = std::make_unique<PropertySelection>(model, model->ids(), stack);
    model->afterWrite = [&] {
        if (destroyed.contains("objects"))
            model->beams.clear();
        if (destroyed.contains("selection"))
            selection.reset();
        if (destroyed.contains("stack"))
            delete stack;
        if (destroyed.contains("model"))
            delete model;
    };
    const PropertyReceipt receipt = selection->edit("length", 5.0);
    QCOMPARE(receipt.text, QString("Length: 2 of 2 changed"));
    if (stack)
        QCOMPARE(stack->count(), model ? 1 : 0);
    if (stack && model) {
        stack->undo();
        stack->redo();
    }
    delete model;
    delete stack;
}

VRN_TEST(TestPropertySelection)
#include "tst_property_selection.moc"
