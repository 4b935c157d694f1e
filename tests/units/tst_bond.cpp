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
    void readingANothingThrows()
    {
        const bond::maybe<std::string> constant;
        bond::maybe<std::string> label;
        QVERIFY(label.is_nothing());
        const QString text = "Field value is 'nothing'";
        QCOMPARE(thrownText<bond::CoreException>([&] { constant.value(); }), text);
        QCOMPARE(thrownText<bond::CoreException>([&] { label.value() = "x"; }), text);
        QVERIFY_EXCEPTION_THROWN(constant.value(), bond::Exception);
        QVERIFY_EXCEPTION_THROWN(constant.value(), std::exception);
    }

    void aValueIsReadBackUntilItIsSetToNothing()
    {
        const bond::maybe<std::string> nothing;
        bond::maybe<std::string> label;
        label.set_value("ft");
        QVERIFY(!label.is_nothing());
        QCOMPARE(label.value(), std::string("ft"));
        label.set_nothing();
        QVERIFY(label.is_nothing());
        QVERIFY2(label == nothing, "whatever it has held before");
        QVERIFY_EXCEPTION_THROWN(label.value(), bond::CoreException);
        label.set_value() = std::string();
        QVERIFY2(!label.is_nothing(), "an empty text is a value");
        QVERIFY(label != nothing);
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
