#include <vrn/base/any_predicates.h>
#include <vrn/q/input_context.h>
#include <vrn/qt/simple_line_edit.h>
#include <vrn/qt/validators.h>

#include "quantity_in.h"
#include "recording_validator.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "validators/entry/entry_kinds_p.h"
#include "validators/entry/entry_sentence_p.h"

#include <boost/make_shared.hpp>

#include <QCoreApplication>
#include <QLineEdit>
#include <QLocale>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTranslator>

#include <algorithm>
#include <cmath>
#include <set>
#include <stdexcept>

using namespace vrn::qt;
using vrn::test::columns;
using vrn::test::numberIn;
using vrn::test::patternOfFlags;
using vrn::test::row;
using vrn::units::Context;
using vrn::units::EntryState;
using vrn::units::UnitFormat;
using Quantity = vrn::units::IConverter::quantity;

namespace UnitId = vrn::units::UnitId;

namespace {

constexpr int length = UnitId::GEO_LENGTH;
constexpr int metric = 0;
constexpr int customary = 8;

const std::bitset<32> noFlags;

UnitId::UnitId unitId(int id)
{
    return static_cast<UnitId::UnitId>(id);
}

/// A validator that remembers what it was given to read.
template <typename Base>
struct Listening : public Base
{
    using Base::Base;

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override
    {
        texts.append(text);
        allFlags |= flags;
        return Base::validate(text, value, flags);
    }

    QStringList texts;
    std::bitset<32> allFlags;
};

using Integer = IntegerValidator<int>;

/// A target by its name in a table, from 0 to 100 if it has a range.
IValidator::pointer makeTarget(const QString& name)
{
    if (name == "number")
        return boost::make_shared<Listening<DoubleEditValidator>>();
    if (name == "number to 100")
        return boost::make_shared<Listening<DoubleEditValidator>>(0.0, 100.0);
    if (name == "integer")
        return boost::make_shared<Listening<Integer>>(-1000000, 1000000, true);
    if (name == "integer to 100")
        return boost::make_shared<Listening<Integer>>(0, 100, true);
    if (name == "unsigned")
        return boost::make_shared<Listening<IntegerValidator<unsigned int>>>(0U, 4294967295U, true);
    if (name == "short")
        return boost::make_shared<Listening<IntegerValidator<unsigned short>>>(
            static_cast<unsigned short>(0), static_cast<unsigned short>(65535), true);
    if (name == "distance in metres")
        return boost::make_shared<Listening<DistanceEditValidator>>(13, -1e6, 1e6, true);
    if (name == "distance in inches")
        return boost::make_shared<Listening<DistanceEditValidator>>(216, -1e6, 1e6, true);
    if (name == "distance to 40 m")
        return boost::make_shared<Listening<DistanceEditValidator>>(13, 0.1, 40.0, true);
    if (name == "force")
        return boost::make_shared<Listening<UnitValidator>>(Context(), UnitId::LOAD_POINT);
    const auto span = boost::make_shared<Listening<UnitValidator>>(Context(), UnitId::GEO_LENGTH);
    if (name == "length to 40 m") {
        span->set_minimum(0.1);
        span->set_maximum(40.0);
    } else if (name == "length from 0.1 m") {
        span->set_minimum(0.1);
    } else if (name == "length up to 40 m") {
        span->set_maximum(40.0);
    }
    return span;
}

QStringList& textsOf(IValidator& target)
{
    if (auto* listening = dynamic_cast<Listening<DoubleEditValidator>*>(&target))
        return listening->texts;
    if (auto* listening = dynamic_cast<Listening<Integer>*>(&target))
        return listening->texts;
    if (auto* listening = dynamic_cast<Listening<IntegerValidator<unsigned int>>*>(&target))
        return listening->texts;
    if (auto* listening = dynamic_cast<Listening<IntegerValidator<unsigned short>>*>(&target))
        return listening->texts;
    if (auto* listening = dynamic_cast<Listening<DistanceEditValidator>*>(&target))
        return listening->texts;
    return dynamic_cast<Listening<UnitValidator>&>(target).texts;
}

/// The number in a value of any of the targets; not-a-number if there is none.
double numberOf(const boost::any& value)
{
    if (const auto* number = boost::any_cast<double>(&value))
        return *number;
    if (const auto* number = boost::any_cast<int>(&value))
        return *number;
    if (const auto* number = boost::any_cast<unsigned int>(&value))
        return *number;
    if (const auto* number = boost::any_cast<unsigned short>(&value))
        return *number;
    if (const auto* quantity = boost::any_cast<Quantity>(&value))
        return quantity->value;
    return std::numeric_limits<double>::quiet_NaN();
}

bool isClose(double a, double b)
{
    return std::abs(a - b) <= 1e-12 * std::max(std::abs(a), std::abs(b));
}

/// While it exists, QLocale() is that of `name`.
class User
{
public:
    explicit User(const QString& name) { QLocale::setDefault(QLocale(name)); }
    ~User() { QLocale::setDefault(QLocale::c()); }
};

/// A target that throws from the operations that are named in `throwing`.
struct Throwing : public UnitValidator
{
    Throwing()
        : UnitValidator(Context(), UnitId::GEO_LENGTH)
    {}

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override
    {
        if (throwsReading)
            throw std::runtime_error("the model is locked");
        return UnitValidator::validate(text, value, flags);
    }
    QString reformat(const boost::any& value, const std::bitset<32>& flags) override
    {
        if (throwsWriting)
            throw std::runtime_error("the model is locked");
        return UnitValidator::reformat(value, flags);
    }

    bool throwsReading = false;
    bool throwsWriting = false;
};

/// Says what it is asked to translate, in angle brackets.
class Brackets : public QTranslator
{
public:
    Brackets() { QCoreApplication::installTranslator(this); }
    ~Brackets() override { QCoreApplication::removeTranslator(this); }

    QString translate(const char* context, const char* source, const char*, int) const override
    {
        return qstrcmp(context, "vrn::qt::EntryValidator") == 0
            ? "<" + QString::fromUtf8(source) + ">"
            : QString();
    }
    bool isEmpty() const override { return false; }
};

Context feetAndInches()
{
    UnitFormat format;
    format.unit_id = UnitId::FEET_AND_FRACTIONAL_INCHES;
    format.precision = 16;
    return Context(customary, {{length, format}});
}

} // namespace

class TestEntryValidator : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTargetGetsWhatWasRead_data()
    {
        columns<QString, QString, QString, double>("target", "typed", "given", "number");
        row("a number", "number", "12.5", "12.5", 12.5);
        row("a number with a group", "number", "1 250.5", "1250.5", 1250.5);
        row("a fraction", "number", "1 1/2", "1.5", 1.5);
        row("a sum", "number", "2*(3+4)", "14", 14.0);
        row("an integer", "integer", "12", "12", 12.0);
        row("an integer with decimals of zero", "integer", "12.0", "12", 12.0);
        row("an integer in groups", "integer", "12'500", "12500", 12500.0);
        row("an integer as a power of ten", "integer", "1e3", "1000", 1000.0);
        row("a sum of integers", "integer", "2 + 3", "5", 5.0);
        row("what an unsigned int can hold", "unsigned", "4294967295", "4294967295", 4294967295.0);
        row("a length", "length", "12 m", "12 m", 12.0);
        row("a length without a unit", "length", "12", "12", 12.0);
        row("a length with a blank at its end", "length", "12 m ", "12 m", 12.0);
        row("feet and inches", "length", "1'-3 1/2\"", "1.2916666666666665 ft", 0.3937);
        row("feet", "length", "12 feet", "12 ft", 3.6576);
        row("a sum of lengths", "length", "3 m + 20 cm", "3.2 m", 3.2);
        row("a force", "force", "12 KN", "12 kN", 12.0);
        row("a distance", "distance in metres", "1.5", "1.5", 1.5);
        row("a distance in millimetres", "distance in metres", "12 mm", "12 mm", 0.012);
        row("a distance in decimetres", "distance in metres", "5 dm", "5 dm", 0.5);
        row("a negative distance with a unit", "distance in metres", "-5 dm", "-0.5", -0.5);
        row("a distance in feet", "distance in metres", "10 ft", "3.048", 3.048);
        row("a distance in feet and inches", "distance in inches", "1' 6''", "18", 0.4572);
        row("a distance in inches", "distance in inches", "12", "12", 0.3048);
        row("a distance in metres in a field of inches", "distance in inches", "0.0254 m",
            "0.0254 m", 0.0254);
    }
    void theTargetGetsWhatWasRead()
    {
        QFETCH(QString, target);
        QFETCH(QString, typed);
        QFETCH(QString, given);
        QFETCH(double, number);
        for (const EntryRange range : {EntryRange::Clamp, EntryRange::Refuse}) {
            const auto wrapped = makeTarget(target);
            EntryValidator entry(wrapped, range);
            boost::any value;
            QVERIFY(entry.validate(typed, value, patternOfFlags));
            QCOMPARE(textsOf(*wrapped), QStringList(given));
            QVERIFY2(
                isClose(numberOf(value), number), QByteArray::number(numberOf(value), 'g', 17));
            boost::any finished;
            QVERIFY(entry.validateWhenFinished(typed, finished, patternOfFlags));
            QCOMPARE(numberOf(finished), numberOf(value));
            QCOMPARE(entry.read(typed).text, given);
            QCOMPARE(entry.read(typed).state, EntryState::Complete);
        }
    }

    void theTargetGetsClearFlags()
    {
        const auto wrapped = boost::make_shared<Listening<UnitValidator>>(
            Context(), unitId(length));
        EntryValidator entry(wrapped);
        boost::any value;
        for (const char* const text : {"12 m", "12 feet", "3 m + 20 cm"}) {
            QVERIFY(entry.validate(text, value, ~std::bitset<32>()));
            QVERIFY(entry.validateWhenFinished(text, value, ~std::bitset<32>()));
        }
        QCOMPARE(wrapped->allFlags, noFlags);
    }

    void theTargetWritesUnderTheFlagsOfTheCall()
    {
        const auto target = boost::make_shared<vrn::test::RecordingValidator>();
        target->formatted = "edited";
        target->displayed = "shown";
        EntryValidator entry(target);
        QCOMPARE(entry.reformat(1.0, patternOfFlags), QString("edited"));
        QCOMPARE(target->lastFlags, patternOfFlags);
        QCOMPARE(entry.reformatForDisplay(1.0, patternOfFlags), QString("shown"));
        QCOMPARE(target->lastFlags, patternOfFlags);
    }

    void emptyTextGoesToTheTargetAsItIs_data()
    {
        columns<QString>("target");
        for (const char* const target :
            {"number to 100", "integer to 100", "length to 40 m", "distance to 40 m", "force"})
            row(target, QString(target));
    }
    void emptyTextGoesToTheTargetAsItIs()
    {
        QFETCH(QString, target);
        for (const EntryRange range : {EntryRange::Clamp, EntryRange::Refuse}) {
            const auto alone = makeTarget(target);
            const auto wrapped = makeTarget(target);
            EntryValidator entry(wrapped, range);
            boost::any expected;
            boost::any value;
            QCOMPARE(entry.validate("", value, noFlags), alone->validate("", expected, noFlags));
            QCOMPARE(textsOf(*wrapped), QStringList(""));
            QVERIFY(value.type() == expected.type());
            QCOMPARE(entry.validateWhenFinished("", value, noFlags),
                alone->validateWhenFinished("", expected, noFlags));
            QVERIFY(value.type() == expected.type());
            QCOMPARE(entry.getEditHint(""), QString());
        }
    }

    void aRefusedTextDoesNotReachTheTarget_data()
    {
        columns<QString, QString, QString, bool>("target", "typed", "hint", "isUnfinished");
        row("a comma that may group", "length", "1,234", "1,234: 1.234 or 1234?", false);
        row("a comma", "length", "12,5 m", "12,5: the comma is not the decimal sign: 12.5?", false);
        row("two points", "number", "12.5.3", "12.5.3 is not a number", false);
        row("nan", "number", "nan", "nan is not a number", false);
        row("inf", "number", "inf", "inf is not a number", false);
        row("a hexadecimal number", "integer", "0x1A", "0x is not a number", false);
        row("half of a whole number", "integer", "2.5", "2.5 is not a whole number", false);
        row("a quotient that is not whole", "integer", "5/2", "2.5 is not a whole number", false);
        row("another kind", "length", "12 kN",
            "kN is a force; a length is wanted: m, cm, mm, ft, in", false);
        row("a slip", "length", "12 mn", "no unit mn for a length: mm, mi or in?", false);
        row("an unknown unit of a distance", "distance in metres", "3 furlong",
            "no unit furlong for a length: m, dm, cm, mm, ft, in", false);
        row("two readings", "force", "6 kN/2 m", "6 kN/2 m: 6 kN / (2 m) or (6 kN / 2) m?", false);
        row("division by zero", "number", "1/0", "this divides by zero", false);
        row("a comma in a distance", "distance in metres", "1,5",
            "1,5: the comma is not the decimal sign: 1.5?", false);
        row("the beginning of a unit", "force", "12 k", "\u2026 kN, kip", true);
        row("no second number yet", "length", "3 +", "\u2026 a number is missing here", true);
        row("an open bracket", "length", "(1 + 2", "\u2026 the bracket is not closed", true);
        row("a minus", "integer", "-", "\u2026 a number is missing here", true);
        row("a number without its end", "number", "1e", "1e\u2026 is not finished", true);
        row("a blank", "length", " ", "\u2026 a number is missing", true);
    }
    void aRefusedTextDoesNotReachTheTarget()
    {
        QFETCH(QString, target);
        QFETCH(QString, typed);
        QFETCH(QString, hint);
        QFETCH(bool, isUnfinished);
        const auto wrapped = makeTarget(target);
        EntryValidator entry(wrapped);
        boost::any value;
        QVERIFY(!entry.validate(typed, value, noFlags));
        QVERIFY(!entry.validateWhenFinished(typed, value, noFlags));
        QCOMPARE(entry.getEditHint(typed), hint);
        QCOMPARE(
            entry.read(typed).state, isUnfinished ? EntryState::Unfinished : EntryState::Refused);
        QCOMPARE(textsOf(*wrapped), QStringList());
    }

    void thePlaceOfAReasonCountsAsTheTextDoes()
    {
        const EntryValidator entry(makeTarget("length"));
        QCOMPARE(entry.read("12 mn").place, 3);
        // A character of two QChars stands before the place.
        const QString wide = QString::fromUtf8("(1 m)*\U0001D7D9");
        QVERIFY(entry.read(wide).place <= wide.size());
    }

    void theCommaIsADecimalSignWhereTheUserHasIt_data()
    {
        columns<QString, QString, double>("locale", "typed", "number");
        row("a comma in German", "de_DE", "12,5 m", 12.5);
        row("a point in German", "de_DE", "12.5 m", 12.5);
        row("both in German", "de_DE", "1.234,5 m", 1234.5);
        row("three decimals in German", "de_DE", "1,234", 1.234);
        row("a group in English", "en_US", "1,234.5 m", 1234.5);
        row("a comma in French", "fr_FR", "1 234,5 m", 1234.5);
        row("an apostrophe in Switzerland", "de_CH", QString::fromUtf8("1’250.5 m"), 1250.5);
    }
    void theCommaIsADecimalSignWhereTheUserHasIt()
    {
        QFETCH(QString, locale);
        QFETCH(QString, typed);
        QFETCH(double, number);
        const User user(locale);
        EntryValidator entry(makeTarget("length"));
        boost::any value;
        QVERIFY2(entry.validate(typed, value, noFlags), qPrintable(entry.getEditHint(typed)));
        QCOMPARE(numberOf(value), number);
    }

    void aNumberOutOfTheRangeIsClamped_data()
    {
        columns<QString, QString, double, QString>("target", "typed", "number", "hint");
        row("a length above", "length to 40 m", "45 m", 40.0, "above 40.000 m: becomes 40.000 m");
        row("a length below", "length to 40 m", "5 cm", 0.1, "below 0.100 m: becomes 0.100 m");
        row("a length at the maximum", "length to 40 m", "40 m", 40.0, "");
        row("a length at the minimum", "length to 40 m", "10 cm", 0.1, "");
        row("a sum above", "length to 40 m", "30 m + 20 m", 40.0,
            "= 50 m\nabove 40.000 m: becomes 40.000 m");
        row("a length above the only bound", "length up to 40 m", "50 m", 40.0,
            "above 40.000 m: becomes 40.000 m");
        row("a length below no bound", "length up to 40 m", "-50 m", -50.0, "");
        row("a number", "number to 100", "-0.5", 0.0, "below 0.000: becomes 0.000");
        row("an integer", "integer to 100", "1e12", 100.0, "above 100: becomes 100");
        row("what no unsigned short can hold", "short", "70000", 65535.0,
            "above 65535: becomes 65535");
        row("what no unsigned int can hold", "unsigned", "-1", 0.0, "below 0: becomes 0");
        row("a distance", "distance to 40 m", "200 ft", 40.0, "above 40.000: becomes 40.000");
    }
    void aNumberOutOfTheRangeIsClamped()
    {
        QFETCH(QString, target);
        QFETCH(QString, typed);
        QFETCH(double, number);
        QFETCH(QString, hint);
        EntryValidator entry(makeTarget(target));
        boost::any value;
        QVERIFY(entry.validate(typed, value, noFlags));
        QVERIFY(entry.validateWhenFinished(typed, value, noFlags));
        QCOMPARE(numberOf(value), number);
        QCOMPARE(entry.getEditHint(typed), hint);
    }

    void aNumberOutOfTheRangeIsRefused_data()
    {
        columns<QString, QString, QString>("target", "typed", "hint");
        row("a length above", "length to 40 m", "45 m", "0.100 to 40.000 m");
        row("a length below", "length to 40 m", "5 cm", "0.100 to 40.000 m");
        row("a length in other words", "length to 40 m", "30 m + 20 m", "0.100 to 40.000 m");
        row("a length above the only bound", "length up to 40 m", "50 m", "at most 40.000 m");
        row("a length below the only bound", "length from 0.1 m", "5 cm", "at least 0.100 m");
        row("a number", "number to 100", "100.5", "0.000 to 100.000");
        row("an integer", "integer to 100", "101", "0 to 100");
        row("what no unsigned short can hold", "short", "70000", "0 to 65535");
        row("a distance", "distance to 40 m", "200 ft", "0.100 to 40.000");
    }
    void aNumberOutOfTheRangeIsRefused()
    {
        QFETCH(QString, target);
        QFETCH(QString, typed);
        QFETCH(QString, hint);
        EntryValidator entry(makeTarget(target), EntryRange::Refuse);
        boost::any value;
        QVERIFY(!entry.validate(typed, value, noFlags));
        QVERIFY(!entry.validateWhenFinished(typed, value, noFlags));
        QCOMPARE(entry.getEditHint(typed), hint);
        QCOMPARE(entry.read(typed).state, EntryState::Refused);
    }

    void aRangeInFeetAndInchesKeepsAllMarks()
    {
        const auto span = boost::make_shared<UnitValidator>(feetAndInches(), unitId(length));
        span->set_minimum(0.3048);
        span->set_maximum(0.9144);
        const EntryValidator entry(span, EntryRange::Refuse);
        const QString least = span->reformat(Quantity{unitId(length), 0.3048}, noFlags);
        const QString most = span->reformat(Quantity{unitId(length), 0.9144}, noFlags);
        QCOMPARE(entry.getEditHint("4'"), least + " to " + most);
    }

    void aSumIsShownAsTheTargetWritesIt_data()
    {
        columns<QString, QString, QString>("target", "typed", "hint");
        row("a sum", "length", "3 m + 20 cm", "= 3.200 m");
        row("a product of numbers", "number", "2*3.5", "= 7.000");
        row("a sum of integers", "integer", "2 + 3", "= 5");
        row("feet and inches", "length", "5' 6\"", "");
        row("a quantity", "length", "12 feet", "");
        row("a plain quantity", "length", "12 m", "");
    }
    void aSumIsShownAsTheTargetWritesIt()
    {
        QFETCH(QString, target);
        QFETCH(QString, typed);
        QFETCH(QString, hint);
        const EntryValidator entry(makeTarget(target));
        QCOMPARE(entry.getEditHint(typed), hint);
    }

    void theApplicationIsAskedForAHintWhenTheTextIsComplete()
    {
        const auto target = makeTarget("length");
        auto entry = boost::make_shared<EntryValidator>(target);
        const IValidator::pointer outermost = entry;
        entry->setEditHintFunction([](const QString& text) { return "typed " + text; });
        target->setEditHintFunction([](const QString& text) { return "read " + text; });
        QCOMPARE(outermost->getEditHint("12 feet"), QString("typed 12 feet\nread 12 ft"));
        QCOMPARE(outermost->getEditHint("3 m + 20 cm"),
            QString("= 3.200 m\ntyped 3 m + 20 cm\nread 3.2 m"));
        QCOMPARE(outermost->getEditHint("12 kN"),
            QString("kN is a force; a length is wanted: m, cm, mm, ft, in"));
        QCOMPARE(outermost->getEditHint("3 +"), QString("\u2026 a number is missing here"));
        entry->setEditHintFunction(nullptr);
        QCOMPARE(outermost->getEditHint("12 m"), QString("read 12 m"));
    }

    void allIsSaidInTheUsersLanguage_data()
    {
        columns<QString, QString>("typed", "hint");
        row("a kind", "12 kN", "<%1 is %2; %3 is wanted: %4>");
        row("a slip", "12 mn", "<no unit %1 for %2: %3?>");
        row("a word", "12.5.3", "<%1 is not a number>");
        row("a range", "45 m", "<above %1: becomes %1>");
    }
    void allIsSaidInTheUsersLanguage()
    {
        QFETCH(QString, typed);
        QFETCH(QString, hint);
        const Brackets language;
        const EntryValidator entry(makeTarget("length to 40 m"));
        const QString words = entry.getEditHint(typed);
        QVERIFY2(words.startsWith('<') && words.endsWith('>'), qPrintable(words));
        QVERIFY(!hint.contains("%2") || words.contains("<a length>"));
        QVERIFY(!words.contains('%'));
    }

    void whatTheUserTypedIsNotTakenForAPlaceInASentence()
    {
        const EntryValidator entry(makeTarget("length"));
        QCOMPARE(
            entry.getEditHint("5 x%2"), QString("no unit x%2 for a length: m, cm, mm, ft, in"));
    }

    // A translator finds a kind if lupdate does.
    void everyKindIsThereForTranslators()
    {
        const std::set<QString> known(std::begin(detail::entryKinds), std::end(detail::entryKinds));
        for (int id = 1; id < 2000; ++id) {
            if (!Context().unit_provider().is_known(unitId(id))
                && !Context().format_provider().is_known(unitId(id)))
                continue;
            try {
                const auto entry = vrn::units::read_entry(L"5 xyzzy", Context(), unitId(id));
                const QString wanted = entry.reason.wanted;
                QVERIFY2(wanted.isEmpty() || known.count(wanted) == 1, qPrintable(wanted));
            } catch (const std::invalid_argument&) {
                continue; // It is not a unit.
            }
        }
    }

    void inEnglishTheSentencesAreThoseOfTheReader_data()
    {
        columns<QString>("typed");
        for (const char* const text : {"", " ", "12.5.3", "1,234", "12,5", "1 2 m", "1e", "1e999",
                 "5 =", "((((((((((((((((((((((((((((((((((1", "1 m 2", "2 + 3 m", "12 k", "12 f",
                 "12 mn", "3 furlong", "12 kN", "3 m * 2 m", "1 m/(2 m)", "1/0", "(1", "1)",
                 "1'250"})
            row(qPrintable(QString("\"%1\"").arg(text)), QString(text));
        row("a long text", QString(2000, '1'));
    }
    void inEnglishTheSentencesAreThoseOfTheReader()
    {
        QFETCH(QString, typed);
        for (const UnitId::UnitId kind : {UnitId::GEO_LENGTH, UnitId::LOAD_POINT}) {
            const auto entry = vrn::units::read_entry(typed.toStdWString(), Context(), kind);
            QCOMPARE(detail::entrySentence(entry.reason),
                QString::fromStdWString(vrn::units::sentence(entry.reason)));
        }
    }

    void aTargetThatThrowsRefusesWithItsMessage()
    {
        const auto target = boost::make_shared<Throwing>();
        EntryValidator entry(target);
        target->throwsReading = true;
        boost::any value;
        for (const char* const text : {"", "12 m", "3 m + 20 cm"}) {
            QVERIFY(!entry.validate(text, value, noFlags));
            QVERIFY(!entry.validateWhenFinished(text, value, noFlags));
            QCOMPARE(entry.getEditHint(text), QString("the model is locked"));
        }
    }

    void whatTheTargetCannotWriteIsRefusedInTheEnd()
    {
        const auto target = boost::make_shared<Throwing>();
        EntryValidator entry(target);
        target->throwsWriting = true;
        boost::any value;
        QVERIFY(entry.validate("12 m", value, noFlags));
        QVERIFY(!entry.validateWhenFinished("12 m", value, noFlags));
        QCOMPARE(entry.getEditHint("12 m"), QString("the model is locked"));
    }

    void exceptionsOfOursAreCaught_data()
    {
        columns<int, int, QString>("system", "kind", "message");
        row("an id that is not known", 0, 1999, "Invalid unit id.");
        row("a display unit of another kind", 7, static_cast<int>(UnitId::MAT_ELSUP_M3),
            "Incompatible units.");
    }
    void exceptionsOfOursAreCaught()
    {
        QFETCH(int, system);
        QFETCH(int, kind);
        QFETCH(QString, message);
        EntryValidator entry(boost::make_shared<UnitValidator>(Context(system), unitId(kind)));
        if (message == "Incompatible units.") {
            for (int i = 0; i < 2; ++i)
                expectAssert("can_convert(q.unit_id, unit_id)", {"q.unit_id", "unit_id"});
        }
        boost::any value;
        QVERIFY(!entry.validateWhenFinished("12", value, noFlags));
        QCOMPARE(entry.getEditHint("12"), message);
    }

    void aKindThatIsNotKnownHasNoCompletions()
    {
        const EntryValidator entry(boost::make_shared<UnitValidator>(Context(), unitId(1999)));
        QCOMPARE(entry.completions("12 "), QStringList());
    }

    void inAFieldNoUnknownUnitThrowsOutOfTheKeystroke()
    {
        const std::unique_ptr<SimpleLineEdit> field(SimpleLineEdit::create(nullptr, QString(),
            boost::make_shared<EntryValidator>(makeTarget("distance in metres")), 0,
            ExpandHorizontal));
        QTest::keyClicks(field->edit(), "3 furlong");
        QTest::keyClick(field->edit(), Qt::Key_Return);
        QVERIFY(!field->isValueValid());
    }

    void ofAChainTheNumericLinksAreWrapped_data()
    {
        columns<QString, bool, double, QString>("typed", "accepted", "number", "hint");
        row("a name", "none", true, -1.0, "");
        row("what the first link for numbers reads", "12 feet", true, 3.6576, "");
        row("a sum", "3 m + 20 cm", true, 3.2, "= 3.200 m");
        row("what no link reads", "12,5 m", false, 0.0,
            "12,5: the comma is not the decimal sign: 12.5?");
        row("what the second link reads", "12 kN", true, 12.0, "");
        row("what only the second link may read", "12 l", false, 0.0, "\u2026 lb");
    }
    void ofAChainTheNumericLinksAreWrapped()
    {
        QFETCH(QString, typed);
        QFETCH(bool, accepted);
        QFETCH(double, number);
        QFETCH(QString, hint);
        std::deque<std::unique_ptr<IValidator>> links;
        auto names = std::make_unique<NamedValueListValidator>(NamedValueList{{"none", -1.0}});
        names->set_equal_to(&vrn::any_equal<double>);
        links.push_back(std::move(names));
        links.push_back(std::make_unique<UnitValidator>(Context(), UnitId::GEO_LENGTH));
        links.push_back(std::make_unique<UnitValidator>(Context(), UnitId::LOAD_POINT));
        const auto chain = boost::make_shared<ChainedValidator>(std::move(links));
        for (const bool isForwarded : {false, true}) {
            IValidator::pointer target = chain;
            if (isForwarded)
                target = boost::make_shared<ForwardValidator>(chain);
            EntryValidator entry(target);
            boost::any value;
            QCOMPARE(entry.validate(typed, value, noFlags), accepted);
            if (accepted)
                QVERIFY(isClose(numberOf(value), number));
            QCOMPARE(entry.validateWhenFinished(typed, value, noFlags), accepted);
            QCOMPARE(entry.getEditHint(typed), hint);
        }
    }

    void aChainInAChainIsWrappedToo()
    {
        std::deque<std::unique_ptr<IValidator>> inner;
        inner.push_back(std::make_unique<DoubleEditValidator>());
        std::deque<std::unique_ptr<IValidator>> outer;
        outer.push_back(std::make_unique<ChainedValidator>(std::move(inner)));
        EntryValidator entry(
            boost::make_shared<ChainedValidator>(std::move(outer)), EntryRange::Refuse);
        boost::any value;
        QVERIFY(entry.validate("1 1/2", value, noFlags));
        QCOMPARE(numberOf(value), 1.5);
        QVERIFY(!entry.validate("nan", value, noFlags));
        QCOMPARE(entry.getEditHint("nan"), QString("nan is not a number"));
    }

    void theRangeOfALinkIsRefusedInAChain()
    {
        std::deque<std::unique_ptr<IValidator>> links;
        links.push_back(std::make_unique<DoubleEditValidator>(1, 0.0, 10.0, false));
        EntryValidator entry(
            boost::make_shared<ChainedValidator>(std::move(links)), EntryRange::Refuse);
        boost::any value;
        QVERIFY(!entry.validate("11", value, noFlags));
        QCOMPARE(entry.getEditHint("11"), QString("0.0 to 10.0"));
    }

    void otherTargetsGetTheTextAndTheFlagsAsTheyAre()
    {
        const auto target = boost::make_shared<vrn::test::RecordingValidator>();
        target->parsed = 1;
        EntryValidator entry(target);
        entry.setEditHintFunction([](const QString&) { return QString("a hint"); });
        boost::any value;
        QVERIFY(entry.validate("12,5 m", value, patternOfFlags));
        QCOMPARE(target->lastText, QString("12,5 m"));
        QCOMPARE(target->lastFlags, patternOfFlags);
        QCOMPARE(entry.getEditHint("12,5 m"), QString("a hint"));
        target->accepts = false;
        QVERIFY(!entry.validate("12,5 m", value, patternOfFlags));
        QCOMPARE(entry.getEditHint("12,5 m"), QString("a hint"));
        QCOMPARE(entry.completions("12 "), QStringList());
    }

    void withoutATargetEveryTextIsRefused()
    {
        EntryValidator entry(nullptr);
        boost::any value;
        QVERIFY(!entry.validate("", value, noFlags));
        QVERIFY(!entry.validate("12", value, noFlags));
        QCOMPARE(entry.getEditHint("12"), QString());
        QCOMPARE(entry.completions("12"), QStringList());
    }

    void aTargetBehindForwardersIsRead()
    {
        const auto degrees = boost::make_shared<ConversionValidator>(
            boost::make_shared<ForwardValidator>(
                boost::make_shared<DoubleEditValidator>(0.0, 90.0)));
        degrees->setConversionFn(
            [](boost::any& value) { value = boost::any_cast<double>(value) * 100.0; },
            [](boost::any& value) { value = boost::any_cast<double>(value) / 100.0; });
        EntryValidator entry(degrees);
        boost::any value;
        QVERIFY(entry.validate("22 1/2", value, noFlags));
        QCOMPARE(numberOf(value), 0.225);
        QCOMPARE(entry.getEditHint("20 + 5"), QString("= 25.000"));
        QCOMPARE(entry.getEditHint("91"), QString("above 90.000: becomes 90.000"));
    }

    void anExchangedTargetIsRead()
    {
        EntryValidator entry(makeTarget("length"));
        boost::any value;
        QVERIFY(entry.validate("12 feet", value, noFlags));
        // The former one is gone, so the next may have its address.
        for (int i = 0; i < 10; ++i) {
            entry.setValidator(makeTarget("force"));
            QVERIFY(entry.validate("12 kips", value, noFlags));
            QVERIFY(!entry.validate("12 feet", value, noFlags));
            entry.setValidator(makeTarget("length"));
            QVERIFY(entry.validate("12 feet", value, noFlags));
            QVERIFY(!entry.validate("12 kips", value, noFlags));
        }
    }

    void anotherUnitIdIsRead()
    {
        const auto target = boost::make_shared<UnitValidator>(Context(), UnitId::GEO_LENGTH);
        EntryValidator entry(target);
        boost::any value;
        QVERIFY(entry.validate("1 feet", value, noFlags));
        target->set_unit_id(UnitId::LOAD_POINT);
        QVERIFY(!entry.validate("1 feet", value, noFlags));
        QVERIFY(entry.validate("1 kips", value, noFlags));
        QCOMPARE(boost::any_cast<Quantity>(value).unit_id, UnitId::LOAD_POINT);
    }

    void aDistanceFollowsTheActiveContext()
    {
        const auto restore = qScopeGuard([context = vrn::units::get_active_input_context()] {
            vrn::units::set_active_input_context(context);
        });
        EntryValidator entry(boost::make_shared<DistanceEditValidator>(length, -1e6, 1e6, true));
        boost::any value;
        for (const auto& [system, number] :
            {std::pair(metric, 3.0), std::pair(customary, 0.9144)}) {
            vrn::units::set_active_input_context(Context(system));
            QVERIFY(entry.validate("1 + 2", value, noFlags));
            QVERIFY2(isClose(numberOf(value), number), QByteArray::number(numberOf(value)));
        }
    }

    void completionsAreTheUnitsOfTheTarget()
    {
        const EntryValidator entry(makeTarget("force"));
        QCOMPARE(entry.completions("12 k"), QStringList({"12 kN", "12 kip"}));
        QCOMPARE(entry.completions("twelve"), QStringList());
    }

    void whatATargetWritesIsReadAsItStates_data()
    {
        columns<QString>("locale");
        for (const char* const locale : {"C", "en_US", "de_DE", "fr_FR", "de_CH"})
            row(locale, QString(locale));
    }

    // A text is read as the number that it states if that number is written as the same text.
    void whatATargetWritesIsReadAsItStates()
    {
        QFETCH(QString, locale);
        const User user(locale);
        const auto verifyStates = [](IValidator& entry, const boost::any& value) {
            const QString text = entry.reformat(value, noFlags);
            boost::any read;
            QVERIFY2(entry.validateWhenFinished(text, read, noFlags),
                qPrintable(text + ": " + entry.getEditHint(text)));
            // What is rounded to zero may have lost its sign, and no double holds more than
            // fifteen digits for certain.
            if (numberOf(read) == 0.0)
                QVERIFY(!text.section(" ", 0, 0).contains(QRegularExpression("[1-9]")));
            else if (text.count(QRegularExpression("[0-9]")) > 15)
                QVERIFY(isClose(numberOf(read), numberOf(value)));
            else
                QCOMPARE(entry.reformat(read, noFlags), text);
        };
        const double numbers[] = {0.0, 0.05, -0.1, -0.3, 1.0, 1.5, -2.0, 123.0, 1234.0, 1234.5678,
            -1234567.875, 2.5e-7, 3e5};
        std::vector<Context> contexts;
        for (int system = 0; system < 10; ++system)
            contexts.emplace_back(system);
        contexts.push_back(feetAndInches());
        for (const Context& context : contexts) {
            for (int kind = 1001; kind < 1300; ++kind) {
                const bool hasNoText = context.format_provider().system_index() == 7
                    && (kind == UnitId::MAT_ELSUP_M3 || kind == UnitId::INERTIA_POINT);
                if (!context.format_provider().is_known(unitId(kind)) || hasNoText)
                    continue;
                EntryValidator entry(boost::make_shared<UnitValidator>(context, unitId(kind)));
                for (const double number : numbers) {
                    verifyStates(entry, Quantity{unitId(kind), number});
                    if (QTest::currentTestFailed())
                        return;
                }
            }
        }
        for (const int unit : {13, 213, 216, length}) {
            const auto distance = boost::make_shared<DistanceEditValidator>(
                unit, -1e15, 1e15, true);
            for (const bool hasLabel : {false, true}) {
                distance->showUnitPostfix(hasLabel);
                EntryValidator entry(distance);
                for (const double number : numbers)
                    verifyStates(entry, number);
            }
        }
        for (int precision = 0; precision < 8; ++precision) {
            EntryValidator entry(
                boost::make_shared<DoubleEditValidator>(precision, -1e15, 1e15, true));
            for (const double number : numbers)
                verifyStates(entry, number);
        }
        EntryValidator entry(makeTarget("integer"));
        for (const int number : {0, 7, -12, 1234, -123456, 999999})
            verifyStates(entry, number);
    }
};

VRN_TEST(TestEntryValidator)
#include "tst_entry_validator.moc"
