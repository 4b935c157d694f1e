#include <vrn/qt/object_model.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "beam_model.h"

#include <limits>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

/// Gives access to write().
struct OpenModel : public ObjectModel
{
    using ObjectModel::write;
};

struct Strict
{
    int lower = 0;
    int upper = 10;
    int value = 0;
    static int failAt;
    static int calls;

    int get() const { return value; }
    void set(int newValue)
    {
        if (calls++ == failAt)
            throw std::runtime_error("stop");
        value = newValue;
    }
};
int Strict::failAt = -1;
int Strict::calls = 0;

struct StrictModel : public OpenModel
{
    StrictModel()
    {
        Strict::failAt = -1;
        Strict::calls = 0;
        for (std::uint64_t key = 0; key < 5; ++key)
            objectsByKey[key].value = int(key);
        PropertySet<Strict> set("strict", {});
        set.add("lower", "Lower", &Strict::lower, field::integer());
        set.add("upper", "Upper", &Strict::upper, field::integer());
        set.add("value", "Value", &Strict::get, &Strict::set, field::integer());
        set.require({"lower", "upper"}, [](const Strict& strict) {
            return strict.lower <= strict.upper ? QString() : QString("The lower is above.");
        });
        addKind(set, &objectsByKey);
    }

    QString values() const
    {
        QString text;
        for (const auto& object : objectsByKey) {
            text += QString("%1:%2:%3 ")
                        .arg(object.second.lower)
                        .arg(object.second.upper)
                        .arg(object.second.value);
        }
        return text;
    }

    std::map<std::uint64_t, Strict> objectsByKey;
};

} // namespace

class TestObjectModel : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsAndWritesMembersOfEveryType();
    void writesTheSameBits();
    void keepsBytesThatAreNotUtf8();
    void passesOverWhatIsNotThere();
    void passesOverUnknownKeysAndKinds();
    void clearsOptionalMembers();
    void takesEverythingBackIfASetterThrows_data();
    void takesEverythingBackIfASetterThrows();
    void takesEverythingBackIfARequirementIsBroken();
    void checksRequirementsAfterAllEdits();
    void readsSeveralKinds();
    void findsWhatAFunctionFinds();
};

void TestObjectModel::readsAndWritesMembersOfEveryType()
{
    OpenModel model;
    Beams beams{{1, Beam()}, {2, Beam()}};
    model.addKind(beamProperties(), &beams);
    const ObjectIds ids{1, 2};
    model.write({
        {"name", ids, PropertyValues(std::vector<QString>{"a", "b"})},
        {"grade", ids, PropertyValues::uniform<QString>(QString::fromUtf8("\xc3\xbc"))},
        {"comment", ids, PropertyValues::uniform<QString>("c")},
        {"active", ids, PropertyValues(std::vector<bool>{true, false})},
        {"length", ids, PropertyValues(std::vector<double>{1.5, 2.5})},
        {"bolts", ids, PropertyValues::uniform(7)},
        {"support", ids, PropertyValues(std::vector<Support>{Support::Pinned, Support::Free})},
        {"load", ids, PropertyValues::uniform(12.5)},
        {"group", ids, PropertyValues(std::vector<int>{3, 4})},
        {"camber", ids, PropertyValues::uniform(0.25)},
    });
    QCOMPARE(beams[2].name, QString("b"));
    QCOMPARE(beams[2].grade, std::string("\xc3\xbc"));
    QCOMPARE(beams[2].comment, std::wstring(L"c"));
    QVERIFY(beams[1].isActive && !beams[2].isActive);
    QCOMPARE(beams[2].length, 2.5);
    QCOMPARE(beams[1].bolts, 7);
    QVERIFY(beams[2].support == Support::Free);
    QCOMPARE(beams[1].load.value(), 12.5);
    QCOMPARE(beams[2].group.value(), 4);
    QCOMPARE(beams[2].camber(), 0.25);

    const auto read = model.readValues(
        {"name", "grade", "comment", "active", "support", "load", "group", "camber", "area"}, ids);
    QCOMPARE(read[0].get<QString>(0), QString("a"));
    QCOMPARE(read[1].get<QString>(1), QString::fromUtf8("\xc3\xbc"));
    QCOMPARE(read[2].get<QString>(1), QString("c"));
    QVERIFY(!read[3].get<bool>(1));
    QVERIFY(read[4].get<Support>(1) == Support::Free);
    QCOMPARE(read[5].get<double>(0), 12.5);
    QCOMPARE(read[6].get<int>(0), 3);
    QCOMPARE(read[7].get<double>(0), 0.25);
    QCOMPARE(read[8].get<double>(0), 300.0);
}

void TestObjectModel::writesTheSameBits()
{
    OpenModel model;
    Beams beams{{1, Beam()}};
    model.addKind(beamProperties(), &beams);
    for (const double value : {-0.0, std::numeric_limits<double>::quiet_NaN(), 10.0 / 3.0,
             std::numeric_limits<double>::denorm_min(), -std::numeric_limits<double>::infinity()}) {
        model.write({{"factor", {1}, PropertyValues::uniform(value)}});
        QVERIFY(haveSameBits(beams[1].factor, value));
        QVERIFY(haveSameBits(model.readValues({"factor"}, {1})[0].get<double>(0), value));
    }
}

void TestObjectModel::keepsBytesThatAreNotUtf8()
{
    OpenModel model;
    const std::string strange = "T\xfcr \xed\xb3\xbc";
    Beams beams{{1, Beam()}};
    beams[1].grade = strange;
    model.addKind(beamProperties(), &beams);
    const PropertyValues old = model.readValues({"grade"}, {1})[0];
    beams[1].grade.clear();
    model.write({{"grade", {1}, old}});
    QCOMPARE(beams[1].grade, strange);
}

void TestObjectModel::passesOverWhatIsNotThere()
{
    OpenModel model;
    Beams beams{{1, Beam()}, {3, Beam()}};
    model.addKind(beamProperties(), &beams);
    const ObjectIds ids{0, 1, 2, 3, 4};
    model.write({{"length", ids, PropertyValues(std::vector<double>{10, 11, 12, 13, 14})}});
    QCOMPARE(int(beams.size()), 2);
    QCOMPARE(beams[1].length, 11.0);
    QCOMPARE(beams[3].length, 13.0);
    const PropertyValues read = model.readValues({"length"}, ids)[0];
    QVERIFY(!read.hasObject(0) && read.hasObject(1) && !read.hasObject(2) && !read.hasObject(4));
    QCOMPARE(read.get<double>(3), 13.0);
    QVERIFY(read[4].empty());
    QVERIFY_EXCEPTION_THROWN(read.get<double>(0), boost::bad_any_cast);
    QVERIFY_EXCEPTION_THROWN(read.get<int>(1), boost::bad_any_cast);
}

void TestObjectModel::passesOverUnknownKeysAndKinds()
{
    OpenModel model;
    Beams beams{{1, Beam()}};
    model.addKind(beamProperties(), &beams);
    const ObjectIds ids{{1, 0}, {1, 7}};
    model.write({{"height", ids, PropertyValues::uniform(1.0)},
        {"length", ids, PropertyValues::uniform(5.0)}});
    QCOMPARE(beams[1].length, 5.0);
    const auto read = model.readValues({"height", "length"}, ids);
    QVERIFY(read[0][0].empty());
    QCOMPARE(read[1].get<double>(0), 5.0);
    QVERIFY(!read[1].hasObject(1));
    QVERIFY(model.objects(7).empty());
}

void TestObjectModel::clearsOptionalMembers()
{
    OpenModel model;
    Beams beams{{1, Beam()}, {2, Beam()}};
    beams[1].load = 3.0;
    beams[1].group = 4;
    model.addKind(beamProperties(), &beams);
    const auto before = model.readValues({"load", "group"}, {1, 2});
    QVERIFY(before[0].hasObject(1) && before[0].isEmpty(1));
    const PropertyValues swapped(
        before[0].column()->select({std::size_t(1), std::size_t(0)}), false);
    model.write({{"load", {1, 2}, swapped}});
    QVERIFY(!beams[1].load);
    QCOMPARE(beams[2].load.value(), 3.0);
    model.write({{"load", {1, 2}, before[0]}, {"group", {1, 2}, before[1]}});
    QCOMPARE(beams[1].load.value(), 3.0);
    QVERIFY(!beams[2].load);
}

void TestObjectModel::takesEverythingBackIfASetterThrows_data()
{
    columns<int>("call");
    for (int call = 0; call < 10; ++call)
        QTest::addRow("at call %d", call) << call;
}

void TestObjectModel::takesEverythingBackIfASetterThrows()
{
    QFETCH(int, call);
    StrictModel model;
    const QString before = model.values();
    const ObjectIds ids{0, 1, 2, 3, 4};
    Strict::failAt = call;
    QVERIFY_EXCEPTION_THROWN(
        model.write({{"upper", ids, PropertyValues::uniform(20)},
            {"value", ids, PropertyValues::uniform(7)}, {"lower", ids, PropertyValues::uniform(1)},
            {"value", ids, PropertyValues::uniform(8)}}),
        std::runtime_error);
    QCOMPARE(model.values(), before);
}

void TestObjectModel::takesEverythingBackIfARequirementIsBroken()
{
    StrictModel model;
    model.objectsByKey[3].upper = 5;
    const QString before = model.values();
    const ObjectIds ids{0, 1, 2, 3, 4};
    try {
        model.write({{"value", ids, PropertyValues::uniform(7)},
            {"lower", ids, PropertyValues::uniform(6)}});
        QFAIL("it was not refused");
    } catch (const PropertyError& error) {
        QCOMPARE(error.reason(), QString("The lower is above."));
    }
    QCOMPARE(model.values(), before);
}

void TestObjectModel::checksRequirementsAfterAllEdits()
{
    StrictModel model;
    model.write(
        {{"lower", {0}, PropertyValues::uniform(30)}, {"upper", {0}, PropertyValues::uniform(40)}});
    QCOMPARE(model.objectsByKey[0].lower, 30);
    // What concerns another property is not checked.
    model.objectsByKey[1].lower = 50;
    model.write({{"value", {1}, PropertyValues::uniform(9)}});
    QCOMPARE(model.objectsByKey[1].value, 9);
}

void TestObjectModel::readsSeveralKinds()
{
    OpenModel model;
    Beams beams{{1, Beam()}};
    Beams columnsOfHouse{{1, Beam()}};
    columnsOfHouse[1].length = 4.0;
    QCOMPARE(model.addKind(beamProperties("beam"), &beams), 0U);
    QCOMPARE(model.addKind(beamProperties("column"), &columnsOfHouse), 1U);
    QCOMPARE(model.objects(1).front(), ObjectId(1, 1));
    const ObjectIds ids{{1, 0}, {1, 1}};
    model.write({{"factor", ids, PropertyValues(std::vector<double>{2.0, 3.0})}});
    QCOMPARE(columnsOfHouse[1].factor, 3.0);
    const auto read = model.readValues({"length", "factor"}, ids);
    QCOMPARE(read[0].get<double>(1), 4.0);
    QCOMPARE(read[1].get<double>(0), 2.0);
    const auto states = model.readStates({"length", "name"}, ids);
    QCOMPARE(int(states[0].kind), int(PropertyState::Varies));
    QCOMPARE(int(states[1].kind), int(PropertyState::Common));
}

void TestObjectModel::findsWhatAFunctionFinds()
{
    std::vector<Beam> beams(3);
    OpenModel model;
    model.addKind(beamProperties(),
        [&](ObjectId id) -> Beam* { return id.key < beams.size() ? &beams[id.key] : nullptr; });
    model.write({{"length", {0, 2, 9}, PropertyValues::uniform(8.0)}});
    QCOMPARE(beams[2].length, 8.0);
    QCOMPARE(beams[1].length, 3.0);
    QVERIFY(model.objects(0).empty());
}

VRN_TEST(TestObjectModel)
#include "tst_object_model.moc"
