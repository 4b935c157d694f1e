#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "unit_test_support.h"

#include <cmath>

using namespace vrn::test;
using namespace vrn::units;

// What holds in the world, whatever digits the table has: an amount of one unit equals
// an amount of another.
class TestWorldRelations : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void relation_data()
    {
        QTest::addColumn<double>("amount");
        QTest::addColumn<int>("unit");
        QTest::addColumn<double>("otherAmount");
        QTest::addColumn<int>("otherUnit");
        QTest::addColumn<double>(
            "tolerance"); // relative; as wide as the digits in the table require

        const double exact = 1e-15;
        const double tenDigits = 1e-9;
        const double eightDigits = 1e-7;
        using namespace UnitId;

        // clang-format off
        row("1 mi = 1760 yd", 1.0, int(MILE), 1760.0, int(YARD), exact);
        row("1 mi = 5280 ft", 1.0, int(MILE), 5280.0, int(FOOT), exact);
        row("1 yd = 3 ft", 1.0, int(YARD), 3.0, int(FOOT), exact);
        row("1 ft = 12 in", 1.0, int(FOOT), 12.0, int(INCH), exact);
        row("1 in = 25.4 mm", 1.0, int(INCH), 25.4, int(MILLIMETRE), exact);
        row("1 km = 1000 m", 1.0, int(KILOMETRE), 1000.0, int(METRE), exact);
        row("1 m = 10 dm", 1.0, int(METRE), 10.0, int(DECIMETRE), exact);
        row("1 ft2 = 144 in2", 1.0, int(SQUARE_FOOT), 144.0, int(SQUARE_INCH), exact);
        row("1 yd2 = 9 ft2", 1.0, int(SQUARE_YARD), 9.0, int(SQUARE_FOOT), exact);
        row("1 km2 = 1e6 m2", 1.0, int(SQUARE_KILOMETRE), 1e6, int(SQUARE_METRE), exact);
        row("1 ft3 = 1728 in3", 1.0, int(CUBIC_FOOT), 1728.0, int(CUBIC_INCH), eightDigits);
        row("1 yd3 = 27 ft3", 1.0, int(CUBIC_YARD), 27.0, int(CUBIC_FOOT), eightDigits);
        row("1 gal = 231 in3", 1.0, int(GALLON), 231.0, int(CUBIC_INCH), exact);
        row("1 m3 = 1000 l", 1.0, int(CUBIC_METRE), 1000.0, int(LITRE), exact);
        row("1 l = 1e6 mm3", 1.0, int(LITRE), 1e6, int(CUBIC_MILLIMETRE), exact);
        row("1 ft4 = 12^4 in4", 1.0, int(FOOT_TO_THE_FOURTH), 20736.0, int(INCH_TO_THE_FOURTH), tenDigits);
        row("1 h = 60 min", 1.0, int(HOUR), 60.0, int(MINUTE), exact);
        row("1 d = 24 h", 1.0, int(DAY), 24.0, int(HOUR), exact);
        row("1 y = 365 d", 1.0, int(YEAR), 365.0, int(DAY), exact);
        row("1 sec = 1000 msec", 1.0, int(SECOND), 1000.0, int(MILLISECOND), exact);
        row("1 kip = 1000 lb", 1.0, int(KIP), 1000.0, int(POUND_FORCE), exact);
        row("1 kN = 1000 N", 1.0, int(KILONEWTON), 1000.0, int(NEWTON), exact);
        row("1 ft-k = 12 in-k", 1.0, int(FOOT_KIP), 12.0, int(INCH_KIP), tenDigits);
        row("1 kN/m2 = 1 kPa", 1.0, int(KILONEWTON_PER_SQUARE_METRE), 1.0, int(KILOPASCAL), exact);
        row("1 N/mm2 = 1 MPa", 1.0, int(NEWTON_PER_SQUARE_MILLIMETRE), 1.0, int(MEGAPASCAL), exact);
        row("1 bar = 100 kPa", 1.0, int(BAR), 100.0, int(KILOPASCAL), exact);
        row("1 bar = 1000 mbar", 1.0, int(X_BAR), 1000.0, int(MILLIBAR), exact);
        row("1 ksi = 1000 psi", 1.0, int(KSI), 1000.0, int(PSI), exact);
        row("1 ksf = 1000 psf", 1.0, int(KSF), 1000.0, int(PSF), exact);
        row("1 psi = 144 psf", 1.0, int(PSI), 144.0, int(PSF), tenDigits);
        row("1 t = 1000 kg", 1.0, int(TONNE), 1000.0, int(KILOGRAM), exact);
        row("1 kg = 1000 g", 1.0, int(KILOGRAM), 1000.0, int(GRAM), exact);
        row("1 ton = 2000 lbm", 1.0, int(SHORT_TON), 2000.0, int(POUND_MASS), exact);
        row("1 lbm = 16 Oz", 1.0, int(POUND_MASS), 16.0, int(OUNCE), tenDigits);
        row("1 m/sec = 3.6 km/h", 1.0, int(METRE_PER_SECOND), 3.6, int(KILOMETRE_PER_HOUR), tenDigits);
        row("1 mile/h = 22/15 ft/sec", 1.0, int(MILE_PER_HOUR), 22.0 / 15.0, int(FOOT_PER_SECOND), exact);
        row("180 degrees = pi rad", 180.0, int(DEGREE), std::acos(-1.0), int(RADIAN), exact);
        row("90 degrees = 100 gon", 90.0, int(DEGREE), 100.0, int(GON), exact);
        row("1 rad = 1000 mrad", 1.0, int(RADIAN), 1000.0, int(MILLIRADIAN), exact);
        row("100 percent = 1000 per mille", 100.0, int(PERCENT), 1000.0, int(PER_MILLE), exact);
        row("1 kWh = 3600 kWsec", 1.0, int(KILOWATT_HOUR), 3600.0, int(KILOWATT_SECOND), exact);
        row("1 MW = 1000 kW", 1.0, int(MEGAWATT_OF_HEAT), 1000.0, int(KILOWATT_OF_HEAT), exact);
        row("9 degrees Fahrenheit = 5 K", 9.0, int(X_DEGREE_FAHRENHEIT), 5.0, int(KELVIN), tenDigits);
        row("1.8 per K = 1 per degree Fahrenheit", 1.8, int(PER_KELVIN), 1.0, int(PER_DEGREE_FAHRENHEIT), exact);
        // clang-format on
    }
    void relation()
    {
        QFETCH(double, amount);
        QFETCH(int, unit);
        QFETCH(double, otherAmount);
        QFETCH(int, otherUnit);
        QFETCH(double, tolerance);
        const Context context;
        const auto converted = context.converter().convert(
            {unitId(unit), amount}, unitId(otherUnit));
        const double deviation = std::abs(converted.value - otherAmount) / otherAmount;
        QVERIFY2(deviation <= tolerance, qPrintable(QString::number(deviation)));
    }

    // A kilonewton gives a tonne one metre per square second, so a product of units
    // of the base scale has no factor of its own.
    void theBaseScaleIsCoherent()
    {
        const VarnelikUnitProvider units;
        using namespace UnitId;
        const double force = units.get_factor(TONNE) * units.get_factor(METRE_PER_SQUARE_SECOND);
        QCOMPARE(units.get_factor(KILONEWTON), force);
        QCOMPARE(units.get_factor(KILONEWTON_METRE), force * units.get_factor(METRE));
        QCOMPARE(
            units.get_factor(KILONEWTON_PER_SQUARE_METRE), force / units.get_factor(SQUARE_METRE));
    }
};

VRN_TEST(TestWorldRelations)
#include "tst_world_relations.moc"
