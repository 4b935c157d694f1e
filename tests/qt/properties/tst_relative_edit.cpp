#include <vrn/qt/relative_edit.h>

#include "support/hostile_texts.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "beams.h"

#include <cmath>
#include <limits>

using namespace vrn::qt;
using namespace vrn::test;
namespace UnitId = vrn::units::UnitId;
using vrn::units::Context;
using vrn::units::EntryState;

using Made = Field (*)();
Q_DECLARE_METATYPE(Made)

namespace {

Field length()
{
    return field::quantity(UnitId::GEO_LENGTH);
}
Field plainNumber()
{
    return field::number();
}
Field ratio()
{
    return field::quantity(UnitId::PERCENT);
}
Field millimetres()
{
    return field::quantity(UnitId::GEO_LENGTH).storedIn(UnitId::MILLIMETRE);
}

} // namespace

class TestRelativeEdit : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void knowsARelativeEdit_data();
    void knowsARelativeEdit();
    void readsWhatIsComplete_data();
    void readsWhatIsComplete();
    void saysWhyATextIsNotComplete_data();
    void saysWhyATextIsNotComplete();
    void readsWhatIsAddedInTheShownUnit();
    void appliesAnEdit_data();
    void appliesAnEdit();
    void multipliesAsAPercentageDoes();
    void survivesHostileTexts();
};

void TestRelativeEdit::knowsARelativeEdit_data()
{
    columns<QString, bool>("text", "isRelative");
    row("added", "+= 5 mm", true);
    row("subtracted", "-=5", true);
    row("with the sign of typesetters", QString(QChar(0x2212)) + "= 5", true);
    row("multiplied", "*= 1.1", true);
    row("divided", " /= 2", true);
    row("a factor that has only begun", "*", true);
    row("a negative number", "-5", false);
    row("a negative number in a sum", "-5 + 3", false);
    row("a number with a plus", "+5", false);
    row("a sign that has only begun", "+", false);
    row("an equals sign", "= 5", false);
    row("nothing", "", false);
}

void TestRelativeEdit::knowsARelativeEdit()
{
    QFETCH(QString, text);
    QTEST(isRelativeEdit(text), "isRelative");
}

void TestRelativeEdit::readsWhatIsComplete_data()
{
    using Edit = RelativeEdit;
    columns<Made, QString, int, double>("field", "text", "operation", "operand");
    row<Made>("a length", &length, "+= 5 mm", int(Edit::Add), 0.005);
    row<Made>("a length in the shown unit", &length, "-=5", int(Edit::Subtract), 5.0);
    row<Made>("a sum", &length, "+= 1 m + 20 cm", int(Edit::Add), 1.2);
    row<Made>("a negative length", &length, "+= -5 mm", int(Edit::Add), -0.005);
    row<Made>("feet and inches", &length, "+= 1'-6\"", int(Edit::Add), 0.4572);
    row<Made>("with the sign of typesetters", &length, QString(QChar(0x2212)) + "= 5",
        int(Edit::Subtract), 5.0);
    row<Made>("percent", &length, "-= 10 %", int(Edit::SubtractPercent), 10.0);
    row<Made>("percent without a blank", &length, "+=2.5%", int(Edit::AddPercent), 2.5);
    row<Made>("a factor", &length, "*= 1.1", int(Edit::Multiply), 1.1);
    row<Made>("a divisor", &length, " /= 2 ", int(Edit::Divide), 2.0);
    row<Made>("a fraction", &length, "*= 2/3", int(Edit::Multiply), 2.0 / 3.0);
    row<Made>("zero", &length, "*= 0", int(Edit::Multiply), 0.0);
    row<Made>("a number", &plainNumber, "+= 5", int(Edit::Add), 5.0);
    row<Made>("points of a percentage", &ratio, "+= 5", int(Edit::Add), 5.0);
    row<Made>("a factor of a percentage", &ratio, "*= 0.9", int(Edit::Multiply), 0.9);
}

void TestRelativeEdit::readsWhatIsComplete()
{
    QFETCH(Made, field);
    QFETCH(QString, text);
    const RelativeEntry entry = readRelativeEdit(text, field(), Context());
    QVERIFY2(entry.state == EntryState::Complete, qPrintable(entry.reason));
    QTEST(int(entry.edit.operation), "operation");
    QTEST(entry.edit.operand, "operand");
    QVERIFY(entry.reason.isEmpty());
}

void TestRelativeEdit::saysWhyATextIsNotComplete_data()
{
    columns<Made, QString, bool, QString>("field", "text", "isUnfinished", "reason");
    row<Made>("nothing is added yet", &length, "+=", true, "A number is missing.");
    row<Made>("no number yet", &length, "*= ", true, "A number is missing.");
    row<Made>("no percentage yet", &length, "-= %", true, "A number is missing.");
    row<Made>("the sign is not finished", &length, "*", true, "\"=\" is missing.");
    row<Made>("the sign is wrong", &length, "*5", false, "Write \"*= 5\".");
    row<Made>("the divisor is zero", &length, "/= 0", false, "Nothing can be divided by zero.");
    row<Made>("less of a percentage", &ratio, "-= 10 %", false,
        "This could mean percent of the value, or points. For percent of the value write "
        "\"*= 0.9\".");
    row<Made>("more of a percentage", &ratio, "+= 10 %", false,
        "This could mean percent of the value, or points. For percent of the value write "
        "\"*= 1.1\".");
    row<Made>(
        "of a field without them", [] { return Field(field::number().relativeEdits(false)); },
        "+= 5", false, "A change of each object's own value is not possible here.");
    row<Made>(
        "of a text", [] { return Field(field::text()); }, "+= 5", false,
        "A change of each object's own value is not possible here.");
    row<Made>(
        "of what cannot be written", [] { return Field(field::number().readOnly()); }, "+= 5",
        false, "A change of each object's own value is not possible here.");
    row<Made>("not relative", &length, "5", false, "A change begins with +=, -=, *= or /=.");
}

void TestRelativeEdit::saysWhyATextIsNotComplete()
{
    QFETCH(Made, field);
    QFETCH(QString, text);
    QFETCH(bool, isUnfinished);
    const RelativeEntry entry = readRelativeEdit(text, field(), Context());
    QTEST(entry.reason, "reason");
    QVERIFY(entry.state == (isUnfinished ? EntryState::Unfinished : EntryState::Refused));
}

void TestRelativeEdit::readsWhatIsAddedInTheShownUnit()
{
    QCOMPARE(readRelativeEdit("+= 1", length(), Context(8)).edit.operand, 0.3048);
}

void TestRelativeEdit::appliesAnEdit_data()
{
    columns<Made, QString, double, double>("field", "text", "before", "after");
    row<Made>("added", &length, "+= 5 mm", 2.0, 2.005);
    row<Made>("subtracted", &length, "-= 5 mm", 2.0, 1.995);
    row<Made>("added to millimetres", &millimetres, "+= 5 mm", 2000.0, 2005.0);
    row<Made>("added in feet to millimetres", &millimetres, "+= 1 ft", 0.0, 304.8);
    row<Made>("ten percent less", &length, "-= 10 %", 3.0, 2.7);
    row<Made>("ten percent more", &length, "+= 10 %", 3.0, 3.3);
    row<Made>("multiplied", &millimetres, "*= 1.5", 200.0, 300.0);
    row<Made>("divided", &length, "/= 3", 10.0, 10.0 / 3.0);
}

void TestRelativeEdit::appliesAnEdit()
{
    QFETCH(Made, field);
    QFETCH(QString, text);
    QFETCH(double, before);
    QFETCH(double, after);
    const RelativeEntry entry = readRelativeEdit(text, field(), Context());
    QCOMPARE(applied(entry.edit, before, field(), Context()), after);
}

void TestRelativeEdit::multipliesAsAPercentageDoes()
{
    // A whole number of percent is rounded once.
    for (int i = 1; i < 1000; ++i) {
        const double less = applied(
            {RelativeEdit::SubtractPercent, 10.0}, double(i), length(), Context());
        QVERIFY(haveSameBits(less, double(9 * i) / 10.0));
    }
}

void TestRelativeEdit::survivesHostileTexts()
{
    for (const auto& each : hostileTexts()) {
        const QString& hostile = each.second;
        for (const char* sign : {"", "+=", "-= ", "*=", "/=", "+=%"}) {
            const RelativeEntry entry = readRelativeEdit(sign + hostile, length(), Context());
            QCOMPARE(entry.state == EntryState::Complete, entry.reason.isEmpty());
            const RelativeEntry percent = readRelativeEdit(
                sign + hostile + "%", length(), Context());
            QCOMPARE(percent.state == EntryState::Complete, percent.reason.isEmpty());
        }
    }
}

VRN_TEST(TestRelativeEdit)
#include "tst_relative_edit.moc"
