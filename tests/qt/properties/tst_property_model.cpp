#include <vrn/qt/property_model.h>

#include <vrn/qt/property_error.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "beam_model.h"

#include <QPointer>
#include <QSignalSpy>

#include <memory>

using namespace vrn::qt;
using namespace vrn::test;

Q_DECLARE_METATYPE(vrn::qt::PropertyKeys)
Q_DECLARE_METATYPE(vrn::qt::ObjectIds)

namespace {

/// Rows of a database: what it puts is up to the test.
struct Rows : public PropertyModel
{
    using Put = std::function<void(const PropertyKeys&, const ObjectIds&, PropertySink&)>;

    explicit Rows(Put putAll)
        : put(std::move(putAll))
    {
        PropertyList list("row", {});
        list.add("number", "Number", field::number());
        list.add("count", "Count", field::integer());
        list.add("text", "Text", field::text());
        addKind(list);
    }
    void read(const PropertyKeys& keys, const ObjectIds& ids, PropertySink& sink) const override
    {
        put(keys, ids, sink);
    }
    void write(const std::vector<PropertyEdit>&) override {}

    Put put;
};

QString shown(const PropertyKeys& keys, const ObjectIds& ids)
{
    QStringList texts;
    for (const std::string& key : keys)
        texts << QString::fromStdString(key);
    texts << "of";
    for (const ObjectId& id : ids)
        texts << QString::number(id.key);
    return texts.join(' ');
}

} // namespace

class TestPropertyModel : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void announcesOnceATurn_data();
    void announcesOnceATurn();
    void announcesInTheNextTurnWhatASlotAnnounces();
    void announcesManyIdsInLittleMemory();
    void flushesAtOnce();
    void survivesItsDestructionInASlot_data();
    void survivesItsDestructionInASlot();
    void changesOnlyWhatIsShownWithTheUnits();
    void readsStates_data();
    void readsStates();
    void comparesBits();
    void tellsWhichPropertiesCannotBeRead();
    void doesNotCatchWhatReadingValuesThrows();
    void takesValuesInAnyOrder();
    void takesVariants();
    void refusesAVariantThatIsNoValue();
    void reportsAValueOfAnotherType();
    void tellsWhatItStillWants();
    void showsTexts();
    void reportsAnUnknownKind();
};

void TestPropertyModel::initTestCase()
{
    qRegisterMetaType<PropertyKeys>("vrn::qt::PropertyKeys");
    qRegisterMetaType<ObjectIds>("vrn::qt::ObjectIds");
}

void TestPropertyModel::announcesOnceATurn_data()
{
    // The area is computed from both, and the camber is what a function makes of anything.
    columns<QString, QString>("calls", "changed");
    row("one", "length:1", "area camber length of 1");
    row("the same twice", "length:1 length:1", "area camber length of 1");
    row("two properties", "length:1 width:1", "area camber length width of 1");
    row("two objects", "length:2 length:1", "area camber length of 1 2");
    row("all properties", "length:1 :2", "of 1 2");
    row("all objects", "length:1 width:", "area camber length width of");
    row("all and then one", ": length:1", "of");
}

void TestPropertyModel::announcesOnceATurn()
{
    QFETCH(QString, calls);
    BeamModel model(3);
    QSignalSpy changed(&model, &PropertyModel::changed);
    for (const QString& call : calls.split(' ')) {
        PropertyKeys keys;
        ObjectIds ids;
        if (!call.section(':', 0, 0).isEmpty())
            keys.push_back(call.section(':', 0, 0).toStdString());
        if (!call.section(':', 1, 1).isEmpty())
            ids.push_back(call.section(':', 1, 1).toULongLong());
        model.announce(keys, ids);
    }
    QCOMPARE(changed.count(), 0);
    QTRY_COMPARE(changed.count(), 1);
    QTEST(shown(changed.first().at(0).value<PropertyKeys>(),
              changed.first().at(1).value<ObjectIds>()),
        "changed");
    QTest::qWait(1);
    QCOMPARE(changed.count(), 1);
}

void TestPropertyModel::announcesInTheNextTurnWhatASlotAnnounces()
{
    BeamModel model(1);
    int inOneTurn = 0;
    int mostInOneTurn = 0;
    int emitted = 0;
    connect(&model, &PropertyModel::changed, &model, [&] {
        ++emitted;
        mostInOneTurn = std::max(mostInOneTurn, ++inOneTurn);
        model.announce();
    });
    model.announce();
    for (int turn = 0; turn < 50; ++turn) {
        inOneTurn = 0;
        QCoreApplication::processEvents();
    }
    QVERIFY(emitted > 1);
    QCOMPARE(mostInOneTurn, 1);
}

void TestPropertyModel::announcesManyIdsInLittleMemory()
{
    BeamModel model(1);
    QSignalSpy changed(&model, &PropertyModel::changed);
    ObjectIds ids;
    for (std::uint64_t key = 0; key < 1000; ++key)
        ids.emplace_back(key);
    for (int i = 0; i < 300; ++i)
        model.announce({"length"}, ids);
    model.flush();
    QCOMPARE(changed.first().at(1).value<ObjectIds>(), ids);
}

void TestPropertyModel::flushesAtOnce()
{
    BeamModel model(1);
    QSignalSpy changed(&model, &PropertyModel::changed);
    model.flush();
    QCOMPARE(changed.count(), 0);
    model.announce();
    model.flush();
    QCOMPARE(changed.count(), 1);
    QTest::qWait(1);
    QCOMPARE(changed.count(), 1);
}

void TestPropertyModel::survivesItsDestructionInASlot_data()
{
    columns<QString>("signal");
    row("changed", "changed");
    row("changed, from the event loop", "turn");
    row("unitsChanged", "units");
}

void TestPropertyModel::survivesItsDestructionInASlot()
{
    QFETCH(QString, signal);
    auto* model = new BeamModel(1);
    const QPointer<PropertyModel> guarded(model);
    connect(model, &PropertyModel::changed, this, [=] { delete model; });
    connect(model, &PropertyModel::unitsChanged, this, [=] { delete model; });
    if (signal == "units") {
        model->setUnits(vrn::units::Context(8));
    } else {
        model->announce();
        if (signal == "changed")
            model->flush();
    }
    QTRY_VERIFY(!guarded);
}

void TestPropertyModel::changesOnlyWhatIsShownWithTheUnits()
{
    BeamModel model(1);
    QSignalSpy changed(&model, &PropertyModel::changed);
    QSignalSpy unitsChanged(&model, &PropertyModel::unitsChanged);
    QCOMPARE(model.text(0, "length"), QString("3.000 m"));
    model.setUnits(vrn::units::Context(8));
    QCOMPARE(model.text(0, "length"), QString("9.84 ft"));
    QTest::qWait(1);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(unitsChanged.count(), 1);
    QVERIFY(model.writes.isEmpty());
    QVERIFY(haveSameBits(model.beams[0].length, 3.0));
}

void TestPropertyModel::readsStates_data()
{
    using State = PropertyState;
    columns<QString, QString, int>("key", "ids", "state");
    row("all the same", "length", "0 1", int(State::Common));
    row("one object", "factor", "2", int(State::Common));
    row("they differ", "length", "0 1 2", int(State::Varies));
    row("none has a value", "load", "0 1", int(State::NoValue));
    row("one has a value", "load", "0 1 2", int(State::Varies));
    row("one of boost has none", "group", "1 2", int(State::Varies));
    row("not there", "length", "7 8", int(State::NoObject));
    row("one is there", "length", "0 7", int(State::Common));
    row("nothing selected", "length", "", int(State::NoObject));
    row("an unknown property", "height", "0", int(State::NoObject));
    row("texts in bytes", "grade", "0 1", int(State::Common));
    row("wide texts", "comment", "0 1 2", int(State::Varies));
    row("flags", "active", "0 1 2", int(State::Varies));
    row("entries", "support", "0 1", int(State::Common));
    row("computed", "area", "0 1 2", int(State::Varies));
}

void TestPropertyModel::readsStates()
{
    QFETCH(QString, key);
    QFETCH(QString, ids);
    BeamModel model(3);
    Beam& last = model.beams[2];
    last.length = 4.0;
    last.load = 1.0;
    last.comment = L"last";
    last.isActive = false;
    model.beams[1].group = 1;
    ObjectIds read;
    for (const QString& id : ids.split(' ')) {
        if (!id.isEmpty())
            read.push_back(id.toULongLong());
    }
    const PropertyState state = model.readStates({key.toStdString()}, read).front();
    QTEST(int(state.kind), "state");
    QCOMPARE(state.value.empty(), state.kind != PropertyState::Common);
    const auto verifyDifferent = [&](const PropertyState& found) {
        const auto& [one, other] = found.different;
        const bool haveAllValues = key != "load" && key != "group";
        QCOMPARE(!one.empty(), found.kind == PropertyState::Varies && haveAllValues);
        QCOMPARE(other.empty(), one.empty());
        QVERIFY(one.empty()
            || !model.kind(0).find(key.toStdString())->field.valueType().isSame(one, other));
    };
    verifyDifferent(state);

    // The same when the values are put one by one.
    if (key == "area" || key == "support" || !model.kind(0).find(key.toStdString()))
        return;
    const PropertyValues values = model.readValues({key.toStdString()}, read).front();
    struct OneByOne : public PropertyModel
    {
        OneByOne(const PropertyValues& readValues, const ObjectIds& thatAreThere)
            : values(readValues)
            , there(thatAreThere)
        {
            addKind(beamProperties());
        }
        void read(const PropertyKeys&, const ObjectIds&, PropertySink& sink) const override
        {
            for (std::size_t i = there.size(); i-- > 0;) {
                if (values.hasObject(i))
                    sink.put(0, there[i], values[i]);
            }
        }
        void write(const std::vector<PropertyEdit>&) override {}
        PropertyValues values;
        ObjectIds there;
    };
    const PropertyState again =
        OneByOne(values, read).readStates({key.toStdString()}, read).front();
    QTEST(int(again.kind), "state");
    verifyDifferent(again);
}

void TestPropertyModel::comparesBits()
{
    BeamModel model(2);
    model.beams[0].factor = 0.0;
    model.beams[1].factor = -0.0;
    QCOMPARE(int(model.readStates({"factor"}, model.ids())[0].kind), int(PropertyState::Varies));
    model.beams[0].factor = model.beams[1].factor = std::numeric_limits<double>::quiet_NaN();
    QCOMPARE(int(model.readStates({"factor"}, model.ids())[0].kind), int(PropertyState::Common));
}

void TestPropertyModel::tellsWhichPropertiesCannotBeRead()
{
    BeamModel model(2);
    model.inRead = [](const PropertyKeys& keys) {
        for (const std::string& key : keys) {
            if (key == "width")
                throw std::runtime_error("no such column");
            if (key == "name")
                throw 7;
        }
    };
    const auto states = model.readStates({"length", "width", "name"}, model.ids());
    QCOMPARE(int(states[0].kind), int(PropertyState::Common));
    QCOMPARE(int(states[1].kind), int(PropertyState::Unreadable));
    QCOMPARE(states[1].reason, QString("no such column"));
    QCOMPARE(states[2].reason, QString("The application has refused this."));
}

void TestPropertyModel::doesNotCatchWhatReadingValuesThrows()
{
    BeamModel model(1);
    model.inRead = [](const PropertyKeys&) { throw std::runtime_error("no such column"); };
    QVERIFY_EXCEPTION_THROWN(model.readValues({"length"}, {0}), std::runtime_error);
}

void TestPropertyModel::takesValuesInAnyOrder()
{
    const Rows rows([](const PropertyKeys&, const ObjectIds&, PropertySink& sink) {
        for (const unsigned key : {9U, 5U, 7U, 1U, 3U, 2U})
            sink.put(0, key, double(key));
        sink.put(3, 1, 4.0); // more properties than were asked for
    });
    const PropertyValues read = rows.readValues({"number"}, {1, 3, 5, 8}).front();
    QCOMPARE(read.get<double>(0), 1.0);
    QCOMPARE(read.get<double>(1), 3.0);
    QCOMPARE(read.get<double>(2), 5.0);
    QVERIFY(!read.hasObject(3));
}

void TestPropertyModel::takesVariants()
{
    const Rows rows([](const PropertyKeys&, const ObjectIds&, PropertySink& sink) {
        sink.put(0, 1, QVariant(2));
        sink.put(1, 1, QVariant("12"));
        sink.put(2, 1, QVariant(4.5));
        for (std::size_t key = 0; key < 3; ++key)
            sink.put(key, 2, QVariant());
    });
    const auto read = rows.readValues({"number", "count", "text"}, {1, 2});
    QCOMPARE(read[0].get<double>(0), 2.0);
    QCOMPARE(read[1].get<int>(0), 12);
    QCOMPARE(read[2].get<QString>(0), QString("4.5"));
    QVERIFY(read[0].hasObject(1) && read[0].isEmpty(1));
    QCOMPARE(read[0].variant(0), QVariant(2.0));
    QVERIFY(read[0].variant(1).isNull());
    QCOMPARE(int(rows.readStates({"number"}, {2})[0].kind), int(PropertyState::NoValue));
    QCOMPARE(int(rows.readStates({"number"}, {1, 2})[0].kind), int(PropertyState::Varies));
}

void TestPropertyModel::refusesAVariantThatIsNoValue()
{
    const Rows rows([](const PropertyKeys&, const ObjectIds&, PropertySink& sink) {
        sink.put(0, 1, QVariant("much"));
    });
    QVERIFY_EXCEPTION_THROWN(rows.readValues({"number"}, {1}), PropertyError);
    const PropertyState state = rows.readStates({"number"}, {1}).front();
    QCOMPARE(int(state.kind), int(PropertyState::Unreadable));
    QCOMPARE(state.reason, QString("\"much\" is not a value of this property."));
}

void TestPropertyModel::reportsAValueOfAnotherType()
{
    const Rows rows(
        [](const PropertyKeys&, const ObjectIds&, PropertySink& sink) { sink.put(0, 1, 2); });
    expectAssert("false", {"type"}, "a value has the type of its field");
    QVERIFY(rows.readValues({"number"}, {1}).front()[0].empty());
    expectAssert("false", {"type"}, "a value has the type of its field");
    QCOMPARE(int(rows.readStates({"number"}, {1})[0].kind), int(PropertyState::NoValue));
}

void TestPropertyModel::tellsWhatItStillWants()
{
    QString wanted;
    const Rows rows([&](const PropertyKeys& keys, const ObjectIds&, PropertySink& sink) {
        for (const double value : {1.0, 1.0, 2.0, 1.0}) {
            for (std::size_t key = 0; key <= keys.size(); ++key)
                wanted += sink.wants(key) ? 'y' : 'n';
            wanted += ' ';
            sink.put(0, std::uint64_t(wanted.size()), value);
        }
    });
    // An unknown property and one past the end are not wanted.
    rows.readStates({"number", "unknown"}, {4, 8, 12, 16});
    QCOMPARE(wanted, QString("ynn ynn ynn nnn "));
}

void TestPropertyModel::showsTexts()
{
    BeamModel model(1);
    model.beams[0].load = 12.5;
    QCOMPARE(model.text(0, "load"), QString("12.50 kN/m"));
    QCOMPARE(model.text(0, "support"), QString("fixed"));
    QCOMPARE(model.text(0, "group"), QString());
    QCOMPARE(model.text(0, "height"), QString());
    QCOMPARE(model.text(7, "length"), QString());
    QCOMPARE(model.text({0, 7}, "length"), QString());
}

void TestPropertyModel::reportsAnUnknownKind()
{
    BeamModel model(1);
    expectAssert("kind < kindCount()", {"kind"});
    QVERIFY(model.kind(1).properties().empty());
}

VRN_TEST(TestPropertyModel)
#include "tst_property_model.moc"
