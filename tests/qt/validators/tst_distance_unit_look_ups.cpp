#include <vrn/q/unit_index.h>
#include <vrn/qt/distance_edit_validator.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <algorithm>
#include <cstring>

using vrn::qt::DistanceEditValidator;
using vrn::test::columns;
using vrn::test::row;

namespace {

constexpr int unitIndex = 4711;
const std::bitset<32> noFlags;

// The answers of the unit look-ups below. Unlike those of the metric units,
// the two factors differ here: internal lengths are in millimetres.
struct Answers
{
    double metres = 0.5;
    double toInternal = 500.0;
    int precision = 2;
    const char* label = "half m";
    int labelResult = 1;
};

Answers answers;
QStringList misuses;

void check(bool right, const char* what)
{
    if (!right)
        misuses.append(what);
}

} // namespace

// This program's own look-ups stand before those of the companion library.

double vrn_get_unitd(int unit, int which)
{
    check(unit == unitIndex, "unit of a factor");
    check(which == 0 || which == 1, "which factor");
    return which == 0 ? answers.metres : answers.toInternal;
}

int vrn_get_unit_precision(int unit, int which)
{
    check(unit == unitIndex, "unit of the precision");
    check(which == 1, "which precision");
    return answers.precision;
}

int vrn_get_unit_label(int unit, int which, char* buffer, int limit)
{
    check(unit == unitIndex, "unit of the label");
    check(which == 1, "which label");
    check(limit == 31, "limit of the label");
    check(std::all_of(buffer, buffer + 32, [](char c) { return c == 0; }), "buffer of the label");
    if (answers.label)
        std::memcpy(buffer, answers.label, std::strlen(answers.label));
    return answers.labelResult;
}

class TestDistanceUnitLookUps : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        answers = {};
        misuses.clear();
    }

    void cleanup()
    {
        QCOMPARE(misuses, QStringList());
        TestObject::cleanup();
    }

    void aBareNumberIsTakenToTheInternalUnit() { QCOMPARE(parsed("3"), 1500.0); }

    void aNumberWithAUnitGoesThroughTheDisplayUnit_data()
    {
        columns<QString, double>("text", "internal");
        row("metres", "3 m", 3000.0);
        row("decimetres", "3 dm", 300.0);
        row("centimetres", "3 cm", 30.0);
        row("millimetres", "3 mm", 3.0);
    }

    void aNumberWithAUnitGoesThroughTheDisplayUnit()
    {
        QFETCH(QString, text);
        QFETCH(double, internal);
        QCOMPARE(parsed(text), internal);
    }

    void theLimitsAreInTheInternalUnit()
    {
        DistanceEditValidator validator(unitIndex, 1000.0, 2000.0, true);
        boost::any value;
        QVERIFY(validator.validateWhenFinished("1", value, noFlags));
        QCOMPARE(value, boost::any(1000.0));
        QVERIFY(validator.validateWhenFinished("3 m", value, noFlags));
        QCOMPARE(value, boost::any(2000.0));
        QCOMPARE(validator.reformat(500.0, noFlags), QString("2.00"));
        QCOMPARE(validator.reformat(3000.0, noFlags), QString("4.00"));
    }

    void aValueIsTakenBackToTheDisplayUnit()
    {
        QCOMPARE(formatted(1500.0, false), QString("3.00"));
    }

    void theDecimalsAreThoseAtTheBuilding()
    {
        DistanceEditValidator validator(unitIndex, -1e9, 1e9, true);
        answers.precision = 5;
        QCOMPARE(validator.reformat(1500.0, noFlags), QString("3.00"));
    }

    void negativeDecimalsAreReportedAndKept()
    {
        answers.precision = -2;
        expectAssert("m_decimals >= 0", {"m_decimals"});
        DistanceEditValidator validator(unitIndex, -1e9, 1e9, true);
        const QLocale c(QLocale::C, QLocale::AnyCountry);
        QCOMPARE(validator.reformat(1500.0, noFlags), c.toString(3.0, 'f', -2));
    }

    void theLabel_data()
    {
        columns<QByteArray, int, QString>("label", "result", "text");
        row("stands behind one blank", QByteArray("half m"), 1, "3.00 half m");
        row("is UTF-8", QByteArray("Ω"), 1, QString::fromUtf8("3.00 Ω"));
        row("may be told by any result but zero", QByteArray("m"), -1, "3.00 m");
        row("fills the buffer", QByteArray(31, 'x'), 31, "3.00 " + QString(31, 'x'));
        row("is not there", QByteArray(), 0, "3.00");
        row("is not taken after a failure", QByteArray("half"), 0, "3.00");
    }

    void theLabel()
    {
        QFETCH(QByteArray, label);
        QFETCH(int, result);
        QFETCH(QString, text);
        answers.label = label.isEmpty() ? nullptr : label.constData();
        answers.labelResult = result;
        QCOMPARE(formatted(1500.0, true), text);
    }

private:
    static double parsed(const QString& text)
    {
        DistanceEditValidator validator(unitIndex, -1e9, 1e9, true);
        boost::any value;
        if (!validator.validate(text, value, noFlags))
            QTest::qFail("a refused text", __FILE__, __LINE__);
        return boost::any_cast<double>(value);
    }

    static QString formatted(double value, bool showUnit)
    {
        DistanceEditValidator validator(unitIndex, -1e9, 1e9, true);
        validator.showUnitPostfix(showUnit);
        return validator.reformat(value, noFlags);
    }
};

VRN_TEST(TestDistanceUnitLookUps)
#include "tst_distance_unit_look_ups.moc"
