#include <vrn/qt/cell_data.h>
#include <vrn/qt/field.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "beams.h"

#include <limits>
#include <stdexcept>

using namespace vrn::qt;
using namespace vrn::test;
namespace UnitId = vrn::units::UnitId;
using vrn::units::Context;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

struct Point
{
    int x;
    friend bool operator==(const Point& a, const Point& b) { return a.x == b.x; }
};

Field length()
{
    return field::quantity(UnitId::GEO_LENGTH).between(0.1, 40.0);
}

Field edge()
{
    return field::quantity(UnitId::SECT_LENGTH).storedIn(UnitId::MILLIMETRE).between(0.05, 3.0);
}

Field support()
{
    return field::choice<int>({{"fixed", 0}, {"pinned", 1}});
}

Field odd()
{
    return field::integer().between(1, 99).accept(
        [](int n) { return n % 2 ? QString() : QString("Odd, please."); });
}

} // namespace

using Made = Field (*)();
Q_DECLARE_METATYPE(Made)

class TestField : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsValues_data();
    void showsValues();
    void followsTheUnits();
    void showsANumberThatTheUnitsCannot();
    void reportsAValueOfAnotherType();
    void saysWhatIsAgainstAValue_data();
    void saysWhatIsAgainstAValue();
    void takesALimitAsItIsTypedInEveryUnit();
    void takesTheReasonOfAnException();
    void isAValue();
    void isLikeAField_data();
    void isLikeAField();
    void isLikeAFieldOfTheSameCondition_data();
    void isLikeAFieldOfTheSameCondition();
    void isEnabledByItsCondition_data();
    void isEnabledByItsCondition();
};

void TestField::showsValues_data()
{
    columns<Made, boost::any, QString>("field", "value", "text");
    row<Made>("a length", &length, boost::any(3.0), "3.000 m");
    row<Made>("rounded", &length, boost::any(10.0 / 3.0), "3.333 m");
    row<Made>("out of range", &length, boost::any(50.0), "50.000 m");
    row<Made>("stored in millimetres", &edge, boost::any(200.0), "0.200 m");
    row<Made>("no value", &length, boost::any(), "");
    row<Made>(
        "a number", [] { return Field(field::number(2)); }, boost::any(1.005), "1.00");
    row<Made>(
        "a number without decimals", [] { return Field(field::number(0)); }, boost::any(-2.0),
        "-2");
    row<Made>(
        "infinite", [] { return Field(field::number(2)); }, boost::any(infinity), "inf");
    row<Made>("an integer", &odd, boost::any(100), "100");
    row<Made>(
        "a flag", [] { return Field(field::flag()); }, boost::any(true), "Yes");
    row<Made>(
        "a text", [] { return Field(field::text()); }, boost::any(QString("B1")), "B1");
    row<Made>("an entry", &support, boost::any(1), "pinned");
    row<Made>("none of the entries", &support, boost::any(7), "7");
    row<Made>(
        "of a type of its own", [] { return Field(field::custom<Point>("point")); },
        boost::any(Point{1}), "");
}

void TestField::showsValues()
{
    QFETCH(Made, field);
    QFETCH(boost::any, value);
    QTEST(field().text(value, Context()), "text");
}

void TestField::followsTheUnits()
{
    QCOMPARE(length().text(3.048, Context(8)), QString("10.00 ft"));
    QCOMPARE(edge().text(25.4, Context(8)), QString("1.000 in"));
    QCOMPARE(length().reasonAgainst(50.0, Context(8)),
        QString("It must be between 0.33 ft and 131.23 ft."));
}

void TestField::showsANumberThatTheUnitsCannot()
{
    const Field inertia = field::quantity(UnitId::INERTIA_POINT);
    expectAssert("can_convert(q.unit_id, unit_id)", {"q.unit_id", "unit_id"});
    QCOMPARE(inertia.text(0.1, Context(7)), QString("0.1"));
}

void TestField::reportsAValueOfAnotherType()
{
    expectAssert("value.type() == m_data->type->type()", {}, "a value has the type of its field");
    QCOMPARE(length().text(3, Context()), QString());
    expectAssert("value.type() == m_data->type->type()", {}, "a value has the type of its field");
    QCOMPARE(length().reasonAgainst(3, Context()), QString("It is a value of another type."));
}

void TestField::saysWhatIsAgainstAValue_data()
{
    const QString range = "It must be between 0.100 m and 40.000 m.";
    const double nan = std::numeric_limits<double>::quiet_NaN();
    columns<Made, boost::any, QString>("field", "value", "reason");
    row<Made>("nothing, in the range", &length, boost::any(3.0), "");
    row<Made>("nothing, at its end", &length, boost::any(40.0), "");
    row<Made>("too long", &length, boost::any(40.5), range);
    row<Made>("too short", &length, boost::any(0.0), range);
    row<Made>("not a number", &length, boost::any(nan), range);
    row<Made>(
        "not a number without a range", [] { return Field(field::number()); }, boost::any(nan),
        "It is not a number.");
    row<Made>(
        "infinite without a range", [] { return Field(field::number()); }, boost::any(infinity),
        "");
    row<Made>(
        "a range without an end", [] { return Field(field::number(1).between(0.0, infinity)); },
        boost::any(-1.0), "It must be at least 0.0.");
    row<Made>(
        "a range without a beginning",
        [] { return Field(field::number(1).between(-infinity, 2.0)); }, boost::any(3.0),
        "It must be at most 2.0.");
    row<Made>("in the scale of the model", &edge, boost::any(3001.0),
        "It must be between 0.050 m and 3.000 m.");
    row<Made>("an integer out of range", &odd, boost::any(101), "It must be between 1 and 99.");
    row<Made>("a check of the application's", &odd, boost::any(4), "Odd, please.");
    row<Made>("no value", &length, boost::any(), "A value is needed.");
    row<Made>(
        "no value where none is needed", [] { return Field(field::number().optional()); },
        boost::any(), "");
    row<Made>(
        "a long text", [] { return Field(field::text().maxLength(3)); },
        boost::any(QString("beam")), "It has 4 characters, and may have 3.");
    row<Made>("none of the entries", &support, boost::any(7), "It is none of the entries.");
    row<Made>(
        "a choice without entries", [] { return Field(field::choice<int>()); }, boost::any(7), "");
}

void TestField::saysWhatIsAgainstAValue()
{
    QFETCH(Made, field);
    QFETCH(boost::any, value);
    QTEST(field().reasonAgainst(value, Context()), "reason");
}

void TestField::takesALimitAsItIsTypedInEveryUnit()
{
    for (const auto unit : {UnitId::MILLIMETRE, UnitId::CENTIMETRE, UnitId::FOOT, UnitId::INCH}) {
        for (int i = 1; i < 1000; ++i) {
            const double limit = i / 7.0;
            const Field field =
                field::quantity(UnitId::GEO_LENGTH).storedIn(unit).between(-limit, limit);
            QCOMPARE(field.sideOfRange(field.fromBase(limit, Context()), Context()), 0);
            QCOMPARE(field.sideOfRange(field.fromBase(-limit, Context()), Context()), 0);
        }
    }
}

void TestField::takesTheReasonOfAnException()
{
    const Field strict = field::number().accept(
        [](double) -> QString { throw std::runtime_error("no database"); });
    QCOMPARE(strict.reasonAgainst(1.0, Context()), QString("no database"));
}

void TestField::isAValue()
{
    FieldOf<double> field = field::number();
    const Field before = field;
    field.readOnly().optional().toolTip("thick");
    QVERIFY(!before.isReadOnly());
    QVERIFY(!before.isOptional());
    QVERIFY(before.toolTip().isEmpty());
    const Field after = field;
    QVERIFY(after.isReadOnly() && after.isOptional());
    QCOMPARE(after.toolTip(), QString("thick"));
}

void TestField::isLikeAField_data()
{
    columns<Made, bool>("field", "isLike");
    row<Made>(
        "the same", [] { return length(); }, true);
    row<Made>(
        "read-only, optional and with a tip",
        [] {
            return Field(field::quantity(UnitId::GEO_LENGTH)
                             .between(0.1, 40.0)
                             .readOnly()
                             .optional()
                             .toolTip("a tip"));
        },
        true);
    row<Made>(
        "other limits",
        [] { return Field(field::quantity(UnitId::GEO_LENGTH).between(0.1, 41.0)); }, false);
    row<Made>(
        "another kind",
        [] { return Field(field::quantity(UnitId::SECT_LENGTH).between(0.1, 40.0)); }, false);
    row<Made>(
        "in another unit",
        [] {
            return Field(field::quantity(UnitId::GEO_LENGTH)
                             .between(0.1, 40.0)
                             .storedIn(UnitId::MILLIMETRE));
        },
        false);
    row<Made>(
        "no quantity", [] { return Field(field::number().between(0.1, 40.0)); }, false);
    row<Made>("an integer", &odd, false);
}

void TestField::isLikeAField()
{
    QFETCH(Made, field);
    QFETCH(bool, isLike);
    QCOMPARE(length().isLike(field()), isLike);
    QCOMPARE(field().isLike(length()), isLike);
    QVERIFY(field().isLike(field()));
}

void TestField::isLikeAFieldOfTheSameCondition_data()
{
    columns<Made, bool>("field", "isLike");
    row<Made>(
        "the same", [] { return Field(field::flag().enabledIf("fire", 60)); }, true);
    row<Made>(
        "the last one counts",
        [] { return Field(field::flag().enabledIf("smoke").enabledIf("fire", 60)); }, true);
    row<Made>(
        "another value", [] { return Field(field::flag().enabledIf("fire", 90)); }, false);
    row<Made>(
        "a value of another type", [] { return Field(field::flag().enabledIf("fire", 60.0)); },
        false);
    row<Made>(
        "another property", [] { return Field(field::flag().enabledIf("smoke", 60)); }, false);
    row<Made>(
        "without one", [] { return Field(field::flag()); }, false);
}

void TestField::isLikeAFieldOfTheSameCondition()
{
    QFETCH(Made, field);
    QFETCH(bool, isLike);
    const Field protectedFor = field::flag().enabledIf("fire", 60);
    QCOMPARE(protectedFor.isLike(field()), isLike);
    QCOMPARE(field().isLike(protectedFor), isLike);
}

void TestField::isEnabledByItsCondition_data()
{
    columns<Made, boost::any, bool>("field", "value", "isEnabled");
    const Made flag = [] { return Field(field::text().enabledIf("fire")); };
    const Made text = [] { return Field(field::text().enabledIf("grade", QString("C"))); };
    row<Made>(
        "nothing, without a condition", [] { return Field(field::text()); }, boost::any(), true);
    row<Made>("true", flag, boost::any(true), true);
    row<Made>("false", flag, boost::any(false), false);
    row<Made>("no value", flag, boost::any(), false);
    row<Made>("a value of another type", flag, boost::any(1), false);
    row<Made>("the value that was named", text, boost::any(QString("C")), true);
    row<Made>("another value", text, boost::any(QString("S")), false);
}

void TestField::isEnabledByItsCondition()
{
    QFETCH(Made, field);
    QFETCH(boost::any, value);
    QTEST(field().isEnabledBy(value), "isEnabled");
}

VRN_TEST(TestField)
#include "tst_field.moc"
