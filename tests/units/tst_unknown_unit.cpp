#include <vrn/units/unknown_unit.h>

#include "support/test_main.h"
#include "support/test_object.h"

#include <type_traits>

using vrn::units::UnknownUnit;

class TestUnknownUnit : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void carriesTheUnitText()
    {
        const UnknownUnit error("Ωyd");
        QCOMPARE(error.unit(), std::string("Ωyd"));
    }

    void itsMessageNamesTheUnit()
    {
        const UnknownUnit error("yd");
        QVERIFY(std::string(error.what()).find("yd") != std::string::npos);
    }

    void isARuntimeError()
    {
        static_assert(std::is_base_of_v<std::runtime_error, UnknownUnit>);
        static_assert(std::is_same_v<vrn::units::v1::UnknownUnit, UnknownUnit>);
        QVERIFY_EXCEPTION_THROWN(throw UnknownUnit("yd"), std::runtime_error);
    }
};

VRN_TEST(TestUnknownUnit)
#include "tst_unknown_unit.moc"
