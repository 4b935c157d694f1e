#include <vrn/qt/unit_validator.h>

#include "quantity_in.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <locale>

using vrn::qt::UnitValidator;
using vrn::test::columns;
using vrn::test::numberIn;
using vrn::units::Context;
using Quantity = vrn::units::IConverter::quantity;
using vrn::test::row;

namespace UnitId = vrn::units::UnitId;

Q_DECLARE_METATYPE(std::bitset<32>)

namespace {

const std::bitset<32> noFlags;
const std::bitset<32> userLocale(1U << vrn::qt::ValidationFlagUserLocale);
const std::bitset<32> allFlags = ~std::bitset<32>();

} // namespace

// Runs on a machine of a German user: de_DE.UTF-8, with a decimal comma and points
// between the thousands.
class TestUnitValidatorUserLocale : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const std::locale user("");
        const auto& punctuation = std::use_facet<std::numpunct<wchar_t>>(user);
        QCOMPARE(punctuation.decimal_point(), L',');
        QCOMPARE(punctuation.thousands_sep(), L'.');
    }

    void aNumberIsReadInTheLocaleOfTheFlags_data()
    {
        columns<std::bitset<32>, QString, double>("flags", "text", "number");
        row("a comma without flags ends the number", noFlags, "1,5 kN/m2", 1.0);
        row("a comma for the user is decimal", userLocale, "1,5 kN/m2", 1.5);
        row("the other flags change nothing", allFlags, "1,5 kN/m2", 1.5);
        row("a bare number", userLocale, "1,5", 1.5);
        row("a negative number", userLocale, "-1,5 kN/m2", -1.5);
        row("an exponent", userLocale, "1,5e2 kN/m2", 150.0);
        row("an exponent without flags, where the comma ends the number", noFlags, "1,5e2 kN/m2",
            1.0);
        row("no digit before the comma", userLocale, ",5 kN/m2", 0.5);
        row("points between the thousands", userLocale, "1.234.567,5 kN/m2", 1234567.5);
        row("a point without flags is decimal", noFlags, "1.234 kN/m2", 1.234);
        row("a point for the user groups digits", userLocale, "1.234 kN/m2", 1234.0);
        row("also in the wrong place", userLocale, "1.5 kN/m2", 15.0);
        row("a fraction has neither", userLocale, "1 1/2 kN/m2", 1.5);
    }

    void aNumberIsReadInTheLocaleOfTheFlags()
    {
        QFETCH(std::bitset<32>, flags);
        QFETCH(QString, text);
        QFETCH(double, number);
        UnitValidator validator(Context(), UnitId::LOAD_AREA);
        boost::any value;
        QVERIFY(validator.validate(text, value, flags));
        QCOMPARE(numberIn(value, UnitId::LOAD_AREA), boost::any(number));
        QVERIFY(validator.validateWhenFinished(text, value, flags));
        QCOMPARE(numberIn(value, UnitId::LOAD_AREA), boost::any(number));
    }

    void aNumberIsWrittenInTheLocaleOfTheFlags_data()
    {
        columns<std::bitset<32>, double, QString>("flags", "number", "text");
        row("a point without flags", noFlags, 12.5, "12.50 kN/m2");
        row("a comma for the user", userLocale, 12.5, "12,50 kN/m2");
        row("no grouping without flags", noFlags, 1234567.5, "1234567.50 kN/m2");
        row("grouping for the user", userLocale, 1234567.5, "1.234.567,50 kN/m2");
        row("the other flags change nothing", allFlags, -12.5, "-12,50 kN/m2");
    }

    void aNumberIsWrittenInTheLocaleOfTheFlags()
    {
        QFETCH(std::bitset<32>, flags);
        QFETCH(double, number);
        QFETCH(QString, text);
        UnitValidator validator(Context(), UnitId::LOAD_AREA);
        QCOMPARE(validator.reformat(Quantity{UnitId::LOAD_AREA, number}, flags), text);
        boost::any value;
        QVERIFY(validator.validate(text, value, flags));
        QCOMPARE(numberIn(value, UnitId::LOAD_AREA), boost::any(number));
    }

    void feetAndInchesAreReadWithADecimalComma()
    {
        UnitValidator validator(Context(), UnitId::GEO_LENGTH);
        boost::any value;
        QVERIFY(validator.validate("1' 4,5''", value, userLocale));
        QCOMPARE(boost::any_cast<Quantity>(value).value, 16.5 * 0.0254);
        QVERIFY(validator.validate("1' 4,5''", value, noFlags));
        QCOMPARE(boost::any_cast<Quantity>(value).value, 16.0 * 0.0254);
    }
};

VRN_TEST(TestUnitValidatorUserLocale)
#include "tst_unit_validator_user_locale.moc"
