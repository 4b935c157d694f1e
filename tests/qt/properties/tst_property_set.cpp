#include <vrn/qt/property_set.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "beams.h"

#include <stdexcept>

using namespace vrn::qt;
using namespace vrn::test;

class TestPropertySet : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTheOrder();
    void namesAProperty_data();
    void namesAProperty();
    void refusesAKeyThatIsThere();
    void makesASectionForWhatHasNone();
    void knowsWhatCannotBeWritten();
    void knowsWhatIsOptional();
    void tellsWhatIsAffected_data();
    void tellsWhatIsAffected();
    void followsSourcesOfSources();
    void countsObjects();
    void isAValue();
};

void TestPropertySet::keepsTheOrder()
{
    const PropertySet<Beam> beams = beamProperties();
    QCOMPARE(beams.key(), std::string("beam"));
    QCOMPARE(int(beams.sections().size()), 3);
    QCOMPARE(beams.sections()[1].key, std::string("geometry"));
    QCOMPARE(beams.sections()[1].title, QString("Geometry"));
    QVERIFY(beams.sections()[1].isOpen);
    QVERIFY(!beams.sections()[2].isOpen);
    QCOMPARE(beams.properties().front().key, std::string("name"));
    QCOMPARE(int(beams.properties().size()), 13);
    QCOMPARE(beams.properties().size(), beams.accessors().size());
    QCOMPARE(int(beams.find("length")->section), 1);
    QVERIFY(!beams.find("height"));
}

void TestPropertySet::namesAProperty_data()
{
    columns<QString, QString>("caption", "title");
    row("without a short cut", "Length", "Length");
    row("with one", "&Length", "Length");
    row("with an ampersand", "Top && bottom", "Top & bottom");
    row("with both", "&Top && bottom", "Top & bottom");
    row("with an ampersand at its end", "Top &", "Top &");
    row("empty", "", "");
}

void TestPropertySet::namesAProperty()
{
    QFETCH(QString, caption);
    QTEST((PropertyDescription{"key", caption, 0, field::flag(), false}.title()), "title");
}

void TestPropertySet::refusesAKeyThatIsThere()
{
    PropertySet<Beam> beams = beamProperties();
    const auto reason = [](const auto& act) {
        try {
            act();
        } catch (const std::logic_error& error) {
            return QString(error.what());
        }
        return QString();
    };
    QCOMPARE(reason([&] { beams.add("length", "Length", &Beam::length, field::number()); }),
        QString("duplicate key: length"));
    QCOMPARE(
        reason([&] { beams.section("statics", "Statics"); }), QString("duplicate key: statics"));
    QCOMPARE(beams.properties().size(), beams.accessors().size());
    QCOMPARE(int(beams.sections().size()), 3);
}

void TestPropertySet::makesASectionForWhatHasNone()
{
    PropertySet<Beam> beams("beam", {});
    beams.add("length", "Length", &Beam::length, field::number());
    QCOMPARE(int(beams.sections().size()), 1);
    QVERIFY(beams.sections().front().title.isEmpty());
}

void TestPropertySet::knowsWhatCannotBeWritten()
{
    const PropertySet<Beam> beams = beamProperties();
    QVERIFY(!beams.find("length")->field.isReadOnly());
    QVERIFY(beams.find("area")->field.isReadOnly());
    QVERIFY(!beams.find("camber")->field.isReadOnly());
}

void TestPropertySet::knowsWhatIsOptional()
{
    const PropertySet<Beam> beams = beamProperties();
    QVERIFY(!beams.find("length")->field.isOptional());
    QVERIFY(beams.find("load")->field.isOptional());
    QVERIFY(beams.find("group")->field.isOptional());
}

void TestPropertySet::tellsWhatIsAffected_data()
{
    columns<QString, QString>("written", "affected");
    row("a member", "name", "name camber");
    row("a source", "length", "length area camber");
    row("two sources", "length width", "length width area camber");
    row("what has a setter", "camber",
        "camber name grade comment active length width factor bolts area support load group");
}

void TestPropertySet::tellsWhatIsAffected()
{
    QFETCH(QString, written);
    PropertyKeys keys;
    for (const QString& key : written.split(' '))
        keys.push_back(key.toStdString());
    QStringList affected;
    for (const std::string& key : beamProperties().affectedBy(keys))
        affected << QString::fromStdString(key);
    QTEST(affected.join(' '), "affected");
}

void TestPropertySet::followsSourcesOfSources()
{
    PropertyList list("bar", {});
    list.add("price", "Price", field::number().computedFrom({"weight"}));
    list.add("weight", "Weight", field::number().computedFrom({"volume"}));
    list.add("volume", "Volume", field::number().computedFrom({"price", "length"}));
    list.add("length", "Length", field::number());
    QCOMPARE(int(list.affectedBy({"length"}).size()), 4);
    QCOMPARE(int(list.affectedBy({"colour"}).size()), 1);
}

void TestPropertySet::countsObjects()
{
    QCOMPARE(beamProperties().countedName(1), QString("1 beam"));
    QCOMPARE(beamProperties().countedName(12), QString("12 beams"));
    QCOMPARE(PropertyList("beam", {}).countedName(12), QString("12"));
}

void TestPropertySet::isAValue()
{
    PropertySet<Beam> beams = beamProperties();
    const PropertySet<Beam> before = beams;
    beams.add("other", "Other", &Beam::length, field::number());
    QVERIFY(!before.find("other"));
}

VRN_TEST(TestPropertySet)
#include "tst_property_set.moc"
