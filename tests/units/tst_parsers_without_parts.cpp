#include "formatting/feet_and_fractional_inches_parser_p.h"
#include "formatting/fractional_inches_parser_p.h"
#include "formatting/parser_p.h"

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "unit_test_support.h"

#include <vector>

using namespace vrn::units;
using vrn::test::columns;
using vrn::test::row;

/// Context gives each parser all its parts. One that lacks a part must not crash.
class TestParsersWithoutParts : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void writeNothing_data()
    {
        columns<bool, bool, bool>("unitProvider", "formatProvider", "converter");
        row("no unit provider", false, true, true);
        row("no format provider", true, false, true);
        row("no converter", true, true, false);
        row("nothing at all", false, false, false);
    }
    void writeNothing()
    {
        QFETCH(bool, unitProvider);
        QFETCH(bool, formatProvider);
        QFETCH(bool, converter);
        const Context context;
        const auto* const units = unitProvider ? &context.unit_provider() : nullptr;
        const auto* const formats = formatProvider ? &context.format_provider() : nullptr;
        const auto* const conversion = converter ? &context.converter() : nullptr;
        const Parser general(units, formats, conversion);
        const FeetAndFractionalInchesParser feet(units, formats, conversion);
        const FractionalInchesParser inches(units, formats, conversion);
        for (const IParser* const parser : std::vector<const IParser*>{&general, &feet, &inches}) {
            expectAssert("is_complete");
            QVERIFY(parser->format({UnitId::FOOT, 2.5}, std::locale::classic()).empty());
        }
    }

    void readNevertheless()
    {
        const auto general = Parser(nullptr, nullptr, nullptr).parse(L"5 kN", m_locale);
        QVERIFY(general);
        QCOMPARE(general->unit_id, UnitId::KILONEWTON);
        QCOMPARE(general->value, 5.0);
        const auto feet =
            FeetAndFractionalInchesParser(nullptr, nullptr, nullptr).parse(L"1' 6''", m_locale);
        QVERIFY(feet);
        QCOMPARE(feet->value, 1.5);
        QVERIFY(!FractionalInchesParser(nullptr, nullptr, nullptr).parse(L"6''", m_locale));
    }

private:
    const std::locale m_locale = std::locale::classic();
};

VRN_TEST(TestParsersWithoutParts)
#include "tst_parsers_without_parts.moc"
