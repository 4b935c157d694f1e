#include "quantity_process.h"

#include "support/test_main.h"
#include "support/test_object.h"
#include "units/table_file.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

using vrn::test::readTable;
using vrn::test::runQuantity;

namespace {

QJsonArray listAsJson(const QString& table)
{
    const auto outcome = runQuantity({"list", table, "--json"});
    QJsonParseError error;
    const auto document = QJsonDocument::fromJson(outcome.output.toUtf8(), &error);
    if (outcome.status != 0 || error.error != QJsonParseError::NoError)
        qWarning("no JSON from list %s: %s", qPrintable(table), qPrintable(error.errorString()));
    return document.array();
}

QJsonArray toNumbers(const QString& blankSeparated)
{
    QJsonArray numbers;
    for (const QString& number : blankSeparated.split(' '))
        numbers.append(number.toInt());
    return numbers;
}

/// Of a column "unit:code unit:code ...".
QJsonArray toPairs(const QString& column)
{
    QJsonArray pairs;
    for (const QString& pair : column.split(' '))
        pairs.append(QJsonArray{pair.section(':', 0, 0).toInt(), pair.section(':', 1).toInt()});
    return pairs;
}

QString unquoted(const QString& text)
{
    return text.mid(1, text.size() - 2);
}

} // namespace

class TestQuantityListing : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void unitsAreTheTable()
    {
        const auto rows = readTable("units.tsv");
        const QJsonArray units = listAsJson("units");
        QCOMPARE(int(rows.size()), 399);
        QCOMPARE(int(units.size()), 399);
        for (int i = 0; i < units.size(); ++i) {
            const QStringList row = rows.at(static_cast<std::size_t>(i));
            const int id = row[0].toInt();
            QJsonArray alternatives;
            if (id == 213)
                alternatives.append("'");
            if (id == 214 || id == 216)
                alternatives.append("''");
            const QJsonObject expected{
                {"id", id},
                {"dimension", row[1].toInt(nullptr, 16)},
                {"is_base", row[2] == "base"},
                {"precision", row[3].toInt()},
                {"factor", row[4].toDouble()},
                {"symbol", unquoted(row[5])},
                {"alternative_symbols", alternatives},
            };
            QCOMPARE(units[i].toObject(), expected);
        }
    }

    void factorsHave17SignificantDigits()
    {
        const QString output = runQuantity({"list", "units", "--json"}).output;
        const QRegularExpression factor(QStringLiteral("\"factor\": ([^,]+),"));
        const auto rows = readTable("units.tsv");
        auto factors = factor.globalMatch(output);
        for (const QStringList& row : rows) {
            QVERIFY(factors.hasNext());
            QCOMPARE(factors.next().captured(1), QString::asprintf("%.17g", row[4].toDouble()));
        }
        QVERIFY(!factors.hasNext());
    }

    void kindsAreTheTable()
    {
        const auto rows = readTable("unit_sets.tsv");
        const QJsonArray kinds = listAsJson("kinds");
        QCOMPARE(int(rows.size()), 135);
        QCOMPARE(int(kinds.size()), 135);
        for (int i = 0; i < kinds.size(); ++i) {
            const QStringList row = rows.at(static_cast<std::size_t>(i));
            const QJsonObject expected{
                {"id", row[0].toInt()},
                {"name", row[1]},
                {"symbol", row[2]},
                {"defaults", toPairs(row[3])},
                {"compatible", toNumbers(row[4])},
            };
            QCOMPARE(kinds[i].toObject(), expected);
            QCOMPARE(int(kinds[i].toObject()["defaults"].toArray().size()), 10);
        }
    }

    void systemsNameTheUnitOfEachKind()
    {
        const auto rows = readTable("unit_sets.tsv");
        const QJsonArray systems = listAsJson("systems");
        QCOMPARE(int(systems.size()), 10);
        for (int system = 0; system < 10; ++system) {
            QJsonObject units;
            for (const QStringList& row : rows)
                units.insert(
                    row[1], row[3].section(' ', system, system).section(':', 0, 0).toInt());
            QCOMPARE(systems[system].toObject(), (QJsonObject{{"id", system}, {"units", units}}));
        }
    }

    void columnsHoldTheSameRows()
    {
        const auto units = readTable("units.tsv");
        const auto unitLines = linesOf("units");
        QCOMPARE(int(unitLines.size()), int(units.size()));
        for (int i = 0; i < unitLines.size(); ++i) {
            const auto columns = unitLines[i].split('\t');
            const QStringList& row = units.at(static_cast<std::size_t>(i));
            QCOMPARE(int(columns.size()), 7);
            QCOMPARE(columns[0], row[0]);
            QCOMPARE(columns[1], unquoted(row[5]));
            QCOMPARE(columns[3].toDouble(), row[4].toDouble());
            QCOMPARE(columns[4], row[1]);
            QCOMPARE(columns[5], row[3]);
            QCOMPARE(columns[6], row[2]);
        }
        QStringList kinds;
        for (const QStringList& row : readTable("unit_sets.tsv"))
            kinds.append(row.join('\t'));
        QCOMPARE(linesOf("kinds"), kinds);
    }

    void columnsOfSystemsTellThemApart()
    {
        QStringList lines = linesOf("systems");
        QCOMPARE(int(lines.size()), 10);
        QVERIFY(lines[0].startsWith("0\tm\t"));
        QVERIFY(lines[8].startsWith("8\tft\t"));
        for (QString& line : lines)
            line = line.section('\t', 1);
        QCOMPARE(int(lines.removeDuplicates()), 0);
    }

private:
    /// Without the heading.
    static QStringList linesOf(const QString& table)
    {
        QStringList lines = runQuantity({"list", table}).output.split('\n');
        lines.removeFirst();
        lines.removeLast();
        return lines;
    }
};

VRN_TEST(TestQuantityListing)
#include "tst_quantity_listing.moc"
