#include <vrn/units/bond.h>
#include <vrn/units/unit_format.h>

#include "support/test_main.h"
#include "support/test_object.h"
#include "unit_test_support.h"

using namespace vrn::test;
using namespace vrn::units;

class TestBond : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFieldHoldsNothingAtFirst() { QVERIFY(bond::maybe<std::string>().is_nothing()); }

    void readingANothingThrows()
    {
        const bond::maybe<std::string> constant;
        bond::maybe<std::string> label;
        const QString text = "Field value is 'nothing'";
        QCOMPARE(thrownText<bond::CoreException>([&] { constant.value(); }), text);
        QCOMPARE(thrownText<bond::CoreException>([&] { label.value() = "x"; }), text);
        QVERIFY_EXCEPTION_THROWN(constant.value(), bond::Exception);
        QVERIFY_EXCEPTION_THROWN(constant.value(), std::exception);
    }

    void aValueIsReadBack()
    {
        bond::maybe<std::string> label;
        label.set_value("ft");
        QVERIFY(!label.is_nothing());
        QCOMPARE(label.value(), std::string("ft"));
        label.set_nothing();
        QVERIFY(label.is_nothing());
        QCOMPARE(
            thrownText<bond::CoreException>([&] { label.value(); }), "Field value is 'nothing'");
    }

    void anEmptyTextIsNotNothing()
    {
        bond::maybe<std::string> label;
        label.set_value() = std::string();
        QVERIFY(!label.is_nothing());
        QVERIFY(label != bond::maybe<std::string>());
    }

    void twoNothingsAreEqualWhateverTheyHeldBefore()
    {
        bond::maybe<std::string> label;
        label.set_value("ft");
        label.set_nothing();
        QVERIFY(label == bond::maybe<std::string>());
    }

    void aBlankFormat()
    {
        const UnitFormat blank;
        QCOMPARE(int(blank.unit_id), 0);
        QCOMPARE(blank.precision, 0);
        QCOMPARE(blank.format, 0);
        QVERIFY(blank.label.is_nothing());
    }

    void formatsAreEqualFieldByField()
    {
        const UnitFormat format = unitFormat(13, 3, 1);
        QVERIFY(format == unitFormat(13, 3, 1));
        QVERIFY(format != unitFormat(14, 3, 1));
        QVERIFY(format != unitFormat(13, 2, 1));
        QVERIFY(format != unitFormat(13, 3, 0));
        UnitFormat labelled = format;
        labelled.label.set_value("");
        QVERIFY(format != labelled);
    }
};

VRN_TEST(TestBond)
#include "tst_bond.moc"
