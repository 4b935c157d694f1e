#include <vrn/qt/property_selection.h>

#include "support/random_seed.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "support/time_limit.h"

#include "beam_model.h"
#include "refusal.h"

#include <QElapsedTimer>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>

using namespace vrn::qt;
using namespace vrn::test;
namespace UnitId = vrn::units::UnitId;

namespace {

const double notANumber = std::numeric_limits<double>::quiet_NaN();

/// A type with `==` and nothing else.
struct Mark
{
    int number = 0;

    friend bool operator==(const Mark& a, const Mark& b) { return a.number == b.number; }
};

struct Bolt
{
    Mark mark;
    double length = 0.0;
    Support choice = Support::Fixed;
    int number = 0;
};

/// As many bolts as a test wants.
struct BoltModel : public ObjectModel
{
    explicit BoltModel(int count)
        : bolts(std::size_t(count))
    {
        PropertySet<Bolt> set("bolt", [](int n) { return QString("%1 bolts").arg(n); });
        set.add("mark", "Mark", &Bolt::mark, field::custom<Mark>("mark"))
            .add("length", "Length", &Bolt::length, field::quantity(UnitId::GEO_LENGTH))
            .add("number", "Number", &Bolt::number, field::integer());
        addKind(
            set, [this](ObjectId id) { return id.key < bolts.size() ? &bolts[id.key] : nullptr; });
    }

    PropertySelection all()
    {
        ObjectIds ids;
        for (std::size_t i = 0; i < bolts.size(); ++i)
            ids.emplace_back(i);
        return PropertySelection(this, std::move(ids));
    }

    std::vector<Bolt> bolts;
};

QString sharesOf(const PropertySpread& spread)
{
    QStringList shares;
    for (const PropertySpread::Share& share : spread.frequent)
        shares << QString("%1 x %2").arg(share.objects).arg(share.text);
    return shares.join(", ");
}

using Change = std::function<void(Beams&)>;

} // namespace

Q_DECLARE_METATYPE(Change)

class TestPropertySpread : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatVaries_data();
    void tellsWhatVaries();
    void showsTheUnitsOfTheModel();
    void writesNumbersAsTheUserDoes();
    void givesLowestAndHighestAsValues();
    void countsByBits();
    void countsOnlyWhatIsThere();
    void isEmptyWithoutObjects();
    void putsSeveralKindsTogether();
    void countsTheFirstOfWhatHasNoHash();
    void reportsAnUnknownProperty();
    void passesOnWhatTheModelThrows();
    void isQuickForManyObjects();
    void agreesWithAMap();
};

void TestPropertySpread::tellsWhatVaries_data()
{
    columns<QString, Change, QString, QString>("key", "change", "text", "shares");
    row("numbers from the lowest to the highest", "length", Change([](Beams& beams) {
        beams[0].length = 7.62;
        beams[1].length = 2.0;
    }),
        "4 beams: 2.000 m to 7.620 m", "2 x 3.000 m, 1 x 2.000 m, 1 x 7.620 m");
    row("equally frequent numbers, the lower first", "bolts", Change([](Beams& beams) {
        beams[0].bolts = 10;
        beams[1].bolts = 9;
        beams[2].bolts = -3;
        beams[3].bolts = 9;
    }),
        "4 beams: -3 to 10", "2 x 9, 1 x -3, 1 x 10");
    row("a common number", "length", Change([](Beams&) {}), "4 beams: 3.000 m", "4 x 3.000 m");
    row("numbers that differ below the shown digits", "length",
        Change([](Beams& beams) { beams[1].length = std::nextafter(3.0, 4.0); }),
        "4 beams: 3.000 m", "3 x 3.000 m, 1 x 3.000 m");
    row("numbers stored in another unit", "width",
        Change([](Beams& beams) { beams[2].width = 100.0; }), "4 beams: 0.100 m to 0.200 m",
        "3 x 0.200 m, 1 x 0.100 m");
    row("what is no number above all others", "factor", Change([](Beams& beams) {
        beams[0].factor = notANumber;
        beams[1].factor = std::numeric_limits<double>::infinity();
    }),
        "4 beams: 1.00 to nan", "2 x 1.00, 1 x inf, 1 x nan");
    row("objects without a value", "load", Change([](Beams& beams) {
        beams[1].load = 2.5;
        beams[3].load = 5.0;
    }),
        "4 beams: 2.50 kN/m to 5.00 kN/m, 2 have no value", "1 x 2.50 kN/m, 1 x 5.00 kN/m");
    row("only objects without a value", "load", Change([](Beams&) {}), "4 beams: 4 have no value",
        "");
    row("texts, the first of equally frequent ones first", "grade", Change([](Beams& beams) {
        beams[0].grade = "S355";
        beams[3].grade = "C24";
    }),
        "4 beams: 3 different values", "2 x S235, 1 x S355, 1 x C24");
    row("a common text", "grade", Change([](Beams&) {}), "4 beams: S235", "4 x S235");
    row("choices, the first of equally frequent ones first", "support",
        Change([](Beams& beams) { beams[0].support = beams[1].support = Support::Pinned; }),
        "4 beams: 2 different values", "2 x pinned, 2 x fixed");
    row("flags", "active", Change([](Beams& beams) { beams[0].isActive = false; }),
        "4 beams: 2 different values", "3 x Yes, 1 x No");
    row("no more than five values", "bolts", Change([](Beams& beams) {
        for (int i = 4; i < 12; ++i)
            beams[std::uint64_t(i)].bolts = 11 + i / 5;
        for (int i = 12; i < 20; ++i)
            beams[std::uint64_t(i)].bolts = i;
    }),
        "20 beams: 1 to 19", "6 x 12, 4 x 1, 3 x 13, 1 x 11, 1 x 14");
}

void TestPropertySpread::tellsWhatVaries()
{
    QFETCH(QString, key);
    QFETCH(Change, change);
    QFETCH(QString, text);
    QFETCH(QString, shares);
    BeamModel model(4);
    change(model.beams);
    const PropertySpread spread = PropertySelection(&model, model.ids()).spread(key.toStdString());
    QCOMPARE(spread.text, text);
    QCOMPARE(sharesOf(spread), shares);
    QCOMPARE(spread.objects, model.beams.size());
}

void TestPropertySpread::showsTheUnitsOfTheModel()
{
    BeamModel model(2);
    model.beams[1].length = 6.0;
    model.setUnits(vrn::units::Context(9));
    const PropertySelection selection(&model, model.ids());
    const Field& field = selection.row("length")->field;
    const PropertySpread spread = selection.spread("length");
    QCOMPARE(spread.text,
        QString("2 beams: %1 to %2")
            .arg(field.text(3.0, model.units()), field.text(6.0, model.units())));
}

void TestPropertySpread::writesNumbersAsTheUserDoes()
{
    BeamModel model(1500);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    const PropertySelection selection(&model, model.ids());
    const QString without = selection.spread("load").text;
    for (auto& beam : model.beams)
        beam.second.name = QString::number(beam.first);
    const QString different = selection.spread("name").text;
    QLocale::setDefault(QLocale::c());
    QCOMPARE(without, QString("1500 beams: 1,500 have no value"));
    QCOMPARE(different, QString("1500 beams: 1,500 different values"));
}

void TestPropertySpread::givesLowestAndHighestAsValues()
{
    BeamModel model(3);
    model.beams[0].factor = 0.0;
    model.beams[1].factor = -0.0;
    const PropertySelection selection(&model, {0, 1});
    const PropertySpread factor = selection.spread("factor");
    QVERIFY(haveSameBits(boost::any_cast<double>(factor.lowest), -0.0));
    QVERIFY(haveSameBits(boost::any_cast<double>(factor.highest), 0.0));
    QCOMPARE(boost::any_cast<int>(selection.spread("bolts").lowest), 1);
    QVERIFY(selection.spread("name").lowest.empty());
    QVERIFY(selection.spread("support").highest.empty());
    QVERIFY(selection.spread("load").lowest.empty());
}

void TestPropertySpread::countsByBits()
{
    BeamModel model(4);
    model.beams[0].factor = notANumber;
    model.beams[1].factor = notANumber;
    model.beams[2].factor = -0.0;
    model.beams[3].factor = 0.0;
    const PropertySpread spread = PropertySelection(&model, model.ids()).spread("factor");
    QVERIFY(haveSameBits(boost::any_cast<double>(spread.frequent[1].value), -0.0));
    QCOMPARE(sharesOf(spread), QString("2 x nan, 1 x 0.00, 1 x 0.00"));
}

void TestPropertySpread::countsOnlyWhatIsThere()
{
    BeamModel model(3);
    model.beams[2].length = 4.0;
    const PropertySelection selection(&model, {0, 1, 2, 50});
    model.beams.erase(1);
    const PropertySpread spread = selection.spread("length");
    QCOMPARE(spread.text, QString("2 beams: 3.000 m to 4.000 m"));
    QCOMPARE(int(spread.objects), 2);
    QCOMPARE(int(spread.withoutValue), 0);
}

void TestPropertySpread::isEmptyWithoutObjects()
{
    auto model = std::make_unique<BeamModel>(1);
    const PropertySelection selection(model.get(), {7});
    QCOMPARE(int(selection.spread("length").objects), 0);
    QCOMPARE(selection.spread("length").text, QString());
    QVERIFY(selection.spread("length").lowest.empty());
    model.reset();
    QCOMPARE(selection.spread("length").text, QString());
}

void TestPropertySpread::putsSeveralKindsTogether()
{
    BeamModel model(2);
    Beams walls;
    walls[0].length = 8.0;
    PropertySet<Beam> set("wall", [](int n) { return QString("%1 wall").arg(n); });
    set.add(
        "length", "Length", &Beam::length, field::quantity(UnitId::GEO_LENGTH).between(0.1, 40.0));
    model.addKind(set, &walls);
    const PropertySpread spread = PropertySelection(&model, {0, 1, {0, 1}}).spread("length");
    QCOMPARE(spread.text, QString("2 beams and 1 wall: 3.000 m to 8.000 m"));
    QCOMPARE(sharesOf(spread), QString("2 x 3.000 m, 1 x 8.000 m"));
}

void TestPropertySpread::countsTheFirstOfWhatHasNoHash()
{
    BoltModel model(3000);
    QCOMPARE(model.all().spread("mark").text, QString("3000 bolts"));
    for (std::size_t i = 0; i < model.bolts.size(); ++i)
        model.bolts[i].mark.number = int(i % 64);
    QCOMPARE(model.all().spread("mark").text, QString("3000 bolts: 64 different values"));
    for (std::size_t i = 0; i < model.bolts.size(); ++i)
        model.bolts[i].mark.number = int(i % 400);
    const PropertySpread spread = model.all().spread("mark");
    QCOMPARE(spread.text, QString("3000 bolts: more than 64 different values"));
    QCOMPARE(int(spread.frequent[0].objects), 8);
}

void TestPropertySpread::reportsAnUnknownProperty()
{
    BeamModel model(1);
    expectAssert("found", {"key"}, "the selection has no such property");
    QCOMPARE(PropertySelection(&model, {0}).spread("height").text, QString());
}

void TestPropertySpread::passesOnWhatTheModelThrows()
{
    BeamModel model(1);
    const PropertySelection selection(&model, {0});
    model.inRead = [](const PropertyKeys&) { throw std::runtime_error("the line is dead"); };
    QCOMPARE(refusal([&] { selection.spread("length"); }), QString("the line is dead"));
}

void TestPropertySpread::isQuickForManyObjects()
{
    constexpr int count = 100000;
    BoltModel model(count);
    std::mt19937_64 random(randomSeed());
    for (Bolt& bolt : model.bolts) {
        bolt.length = std::generate_canonical<double, 53>(random);
        bolt.number = int(random() % 1000) * 65536;
        bolt.mark.number = int(random() % count);
    }
    const PropertySelection selection = model.all();
    for (const char* key : {"length", "number", "mark"}) {
        QElapsedTimer timer;
        timer.start();
        const PropertySpread spread = selection.spread(key);
        const qint64 elapsed = timer.elapsed();
        QCOMPARE(int(spread.objects), count);
        qInfo("%s: %lld ms", key, elapsed);
        QVERIFY2(elapsed < timeLimitMs(), key);
    }
}

void TestPropertySpread::agreesWithAMap()
{
    std::mt19937_64 random(randomSeed());
    const double values[] = {0.0, -0.0, notANumber, -notANumber, 1.0, std::nextafter(1.0, 2.0),
        -5.5, 1e300, 5e-324, std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity()};
    for (int repetition = 0; repetition < 300; ++repetition) {
        BeamModel model(1 + int(random() % 60));
        // By the order of isBelow(), and by the bits for what is not a number.
        const auto isBefore = [](double a, double b) {
            if (std::isnan(a) || std::isnan(b))
                return !std::isnan(a) && std::isnan(b);
            return a < b || (a == b && std::signbit(a) && !std::signbit(b));
        };
        std::vector<std::pair<double, std::size_t>> counts;
        std::size_t without = 0;
        const std::size_t variety = 1 + random() % std::size(values);
        for (auto& beam : model.beams) {
            if (random() % 8 == 0) {
                ++without;
                continue;
            }
            const double value = values[random() % variety];
            beam.second.load = value;
            const auto known = std::find_if(counts.begin(), counts.end(),
                [&](const auto& count) { return haveSameBits(count.first, value); });
            if (known == counts.end())
                counts.emplace_back(value, 1);
            else
                ++known->second;
        }
        const PropertySpread spread = PropertySelection(&model, model.ids()).spread("load");
        QCOMPARE(spread.objects, model.beams.size());
        QCOMPARE(spread.withoutValue, without);
        QCOMPARE(spread.lowest.empty(), counts.empty());
        if (counts.empty())
            continue;
        std::stable_sort(counts.begin(), counts.end(),
            [&](const auto& a, const auto& b) { return isBefore(a.first, b.first); });
        QVERIFY(haveSameBits(boost::any_cast<double>(spread.lowest), counts.front().first));
        const double highest = boost::any_cast<double>(spread.highest);
        QVERIFY(!isBefore(highest, counts.back().first) && !isBefore(counts.back().first, highest));
        std::stable_sort(counts.begin(), counts.end(),
            [](const auto& a, const auto& b) { return a.second > b.second; });
        QCOMPARE(spread.frequent.size(), std::min<std::size_t>(5, counts.size()));
        for (std::size_t i = 0; i < spread.frequent.size(); ++i) {
            QVERIFY(
                haveSameBits(boost::any_cast<double>(spread.frequent[i].value), counts[i].first));
            QCOMPARE(spread.frequent[i].objects, counts[i].second);
        }
    }
}

VRN_TEST(TestPropertySpread)
#include "tst_property_spread.moc"
