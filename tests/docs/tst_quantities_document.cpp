#include <vrn/qt/unit_validator.h>

#include <QMap>

#include "document_table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "units/unit_test_support.h"

#include <cmath>
#include <locale>
#include <set>

using namespace vrn::units;
using vrn::qt::UnitValidator;
using vrn::test::codeOf;
using vrn::test::tableRows;
using vrn::test::unitId;

namespace {

constexpr std::bitset<32> noFlags;
constexpr double minimum = -1e12;
constexpr double maximum = 1e12;

const std::vector<UnitRecord>& units()
{
    static const std::vector<UnitRecord> all = list_units();
    return all;
}

const std::vector<UnitSetRow>& kinds()
{
    static const std::vector<UnitSetRow> all = list_unit_sets();
    return all;
}

QString symbolOf(int id)
{
    return QString::fromStdString(VarnelikUnitProvider().get_symbol(unitId(id)));
}

/// Fails the test if there is no such kind.
const UnitSetRow& kindOf(const QString& name)
{
    const auto found = std::find_if(kinds().begin(), kinds().end(),
        [&](const UnitSetRow& kind) { return QString(kind.name) == name; });
    if (found != kinds().end())
        return *found;
    QTest::qFail(qPrintable("no kind " + name), __FILE__, __LINE__);
    return kinds().front();
}

/// The unit of that symbol that the kind lists.
int unitOf(const QString& symbol, int kind)
{
    for (const UnitId::UnitId id : VarnelikUnitProvider().get_compatible_units(unitId(kind))) {
        if (symbolOf(id) == symbol)
            return id;
    }
    QTest::qFail(qPrintable("no unit " + symbol), __FILE__, __LINE__);
    return UnitId::DIMENSIONLESS;
}

/// What "12.5 kN/m2" is in the base scale of a kind.
double amountOf(const QString& text, int kind)
{
    const int unit = unitOf(text.section(' ', 1), kind);
    return text.section(' ', 0, 0).toDouble() * VarnelikUnitProvider().get_factor(unitId(unit));
}

bool isClose(double a, double b)
{
    return std::abs(a - b) <= 1e-12 * std::max(std::abs(a), std::abs(b));
}

/// What an override such as "unit=ft,precision=8,format=2" makes of a kind in system 0.
Context contextOf(const QString& settings, int kind)
{
    Context context;
    UnitsetFormatProvider& formats = context.format_provider();
    for (const QString& setting : settings.split(',')) {
        const QString name = setting.section('=', 0, 0);
        const QString value = setting.section('=', 1);
        if (name == "unit") {
            const int id = value.toInt();
            formats.set_unit(unitId(kind), unitId(id > 0 ? id : unitOf(value, kind)));
        } else if (name == "precision") {
            formats.set_precision(unitId(kind), value.toInt());
        } else if (name == "format") {
            formats.set_format(unitId(kind), value.toInt());
        } else if (name == "label") {
            formats.set_label(unitId(kind), value.toStdString());
        } else {
            QTest::qFail(qPrintable("no setting " + name), __FILE__, __LINE__);
        }
    }
    return context;
}

/// How a text that was written for `value` is read back, in the words of the page.
QString readBack(const Context& context, const std::wstring& text, double value, int kind,
    const std::locale& locale)
{
    const auto read = context.parse(text, unitId(kind), locale);
    if (!read)
        return "refused";
    if (isClose(read->value, value))
        return "yes";
    return "as " + QString::number(read->value);
}

const QStringList headerOfTexts = {"Typed", "In a field of", "Is", ""};
const QStringList headerOfWriting = {"Value", "Of", "Shown with", "Is written", "Is read back"};
const QStringList headerOfLocales = {"Locale", "1234.5 m is written", "Is read back"};
const QStringList headerOfUnits = {"Id", "Unit", "What it writes for 1 is read as"};
const QStringList headerOfKinds = {"Id", "Kind", "Meaning", "System 0", "System 8"};
const QString page = "quantities.md";

} // namespace

/// Runs the tables of docs/quantities.md.
class TestQuantitiesDocument : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTypedText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("is");
        for (const QStringList& row : tableRows(page, headerOfTexts)) {
            QTest::addRow("%s: %s", qPrintable(row.at(1)), qPrintable(row.at(0)))
                << codeOf(row.at(0)) << row.at(1) << row.at(2);
        }
    }
    void aTypedText()
    {
        QFETCH(QString, text);
        QFETCH(QString, field);
        QFETCH(QString, is);
        const int kind = kindOf(codeOf(field)).id;
        UnitValidator validator(Context(field.section(" in system ", 1).toInt()), unitId(kind));
        validator.set_minimum(minimum);
        validator.set_maximum(maximum);
        boost::any value;
        QCOMPARE(validator.validateWhenFinished(text, value, noFlags), is != "refused");
        if (is == "refused")
            return;
        const auto quantity = boost::any_cast<IConverter::quantity>(value);
        QCOMPARE(int(quantity.unit_id), kind);
        const double due = is == "the maximum" ? maximum
            : is == "the minimum"              ? minimum
                                               : amountOf(codeOf(is), kind);
        QVERIFY2(isClose(quantity.value, due), qPrintable(QString::number(quantity.value)));
    }

    void aWrittenValue_data()
    {
        QTest::addColumn<QStringList>("row");
        for (const QStringList& row : tableRows(page, headerOfWriting))
            QTest::newRow(qPrintable(row.join(' '))) << row;
    }
    void aWrittenValue()
    {
        QFETCH(QStringList, row);
        const double value = codeOf(row.at(0)).toDouble();
        const int kind = kindOf(codeOf(row.at(1))).id;
        const QString settings = codeOf(row.at(2));
        const Context context = settings.isEmpty()
            ? Context(row.at(2).section("system ", 1).toInt())
            : contextOf(settings, kind);
        const std::wstring text = context.format({unitId(kind), value}, std::locale::classic());
        QCOMPARE(QString::fromStdWString(text), codeOf(row.at(3)));
        QCOMPARE(readBack(context, text, value, kind, std::locale::classic()), row.at(4));
    }

    void inALocale_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("isReadBack");
        for (const QStringList& row : tableRows(page, headerOfLocales)) {
            QTest::newRow(qPrintable(codeOf(row.at(0))))
                << codeOf(row.at(0)) << codeOf(row.at(1)) << row.at(2);
        }
    }
    void inALocale()
    {
        QFETCH(QString, locale);
        QFETCH(QString, text);
        QFETCH(QString, isReadBack);
        const std::locale user((locale + ".UTF-8").toStdString());
        const Context context;
        const std::wstring written = context.format({UnitId::GEO_LENGTH, 1234.5}, user);
        QCOMPARE(QString::fromStdWString(written), text);
        QCOMPARE(readBack(context, written, 1234.5, UnitId::GEO_LENGTH, user), isReadBack);
    }

    // 1e9 of each, so that the decimals of the unit do not matter.
    void aPlainUnit()
    {
        const Context context;
        QStringList misread;
        QStringList nearly;
        QStringList refused;
        for (const UnitRecord& unit : units()) {
            constexpr double many = 1e9;
            const std::wstring text = context.format({unit.id, many}, std::locale::classic());
            const auto read = context.parse(text, unit.id, std::locale::classic());
            const QString id = QString::number(unit.id);
            if (!read)
                refused.append(id);
            else if (std::abs(read->value / many - 1.0) > 1e-3)
                misread.append(id + ' ' + QString::number(read->value / many, 'g', 10));
            else if (std::abs(read->value / many - 1.0) > 1e-12)
                nearly.append(id);
        }
        QStringList documented;
        for (const QStringList& row : tableRows(page, headerOfUnits)) {
            QCOMPARE(codeOf(row.at(1)), symbolOf(row.at(0).toInt()));
            const QStringList fraction = row.at(2).split('/');
            const double amount = fraction.at(0).toDouble() / fraction.value(1, "1").toDouble();
            documented.append(row.at(0) + ' ' + QString::number(amount, 'g', 10));
        }
        QCOMPARE(documented, misread);
        QCOMPARE(misread.size(), 29);
        QCOMPARE(nearly, (QStringList{"324", "325"}));
        QCOMPARE(refused, (QStringList{"291", "292", "293"}));
    }

    void theSystems()
    {
        QStringList header = {"System", "Name"};
        for (const char* kind : {"GEO_LENGTH", "GEO_THICKNESS", "SECT_LENGTH", "SECT_AREA",
                 "BEAM_NFORCE", "LOAD_LINE", "MAT_STRESS"})
            header.append(QString("`%1`").arg(kind));
        const auto rows = tableRows(page, header);
        QCOMPARE(rows.size(), 10);
        std::set<QString> names;
        std::set<QStringList> contents;
        for (int system = 0; system < rows.size(); ++system) {
            const QStringList& row = rows.at(system);
            QCOMPARE(row.at(0), QString::number(system));
            for (int i = 2; i < header.size(); ++i) {
                const auto& defaults = kindOf(codeOf(header.at(i))).defaults;
                QCOMPARE(
                    codeOf(row.at(i)), symbolOf(defaults[static_cast<std::size_t>(system)].unit));
            }
            names.insert(row.at(1));
            contents.insert(row.mid(2));
        }
        QCOMPARE(names.size(), std::size_t(10));
        QVERIFY2(contents.size() == 10, "two systems look alike");
    }

    void theKinds()
    {
        const auto rows = tableRows(page, headerOfKinds);
        QCOMPARE(rows.size(), int(kinds().size()));
        for (int i = 0; i < rows.size(); ++i) {
            const QStringList& row = rows.at(i);
            const UnitSetRow& kind = kinds()[static_cast<std::size_t>(i)];
            QCOMPARE(row.at(0), QString::number(kind.id));
            QCOMPARE(codeOf(row.at(1)), QString(kind.name));
            QVERIFY2(!row.at(2).isEmpty(), kind.name);
            QCOMPARE(codeOf(row.at(3)), symbolOf(kind.defaults[0].unit));
            QCOMPARE(codeOf(row.at(4)), symbolOf(kind.defaults[8].unit));
        }
    }
};

VRN_TEST(TestQuantitiesDocument)
#include "tst_quantities_document.moc"
