#include <vrn/units/units.h>

#include "document_table.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "units/unit_test_support.h"

#include <algorithm>
#include <cmath>

using namespace vrn::units;
using vrn::test::codeOf;
using vrn::test::columns;
using vrn::test::tableRows;
using vrn::test::unitId;

namespace {

const QString page = "entry.md";
constexpr NumberSigns german{L',', L'.'};

/// A cell such as "`GEO_LENGTH` in system 9" or "`351` in German".
class Field
{
public:
    explicit Field(const QString& cell)
        : m_context(cell.section(" in system ", 1).toInt())
        , m_signs(cell.endsWith(" in German") ? german : NumberSigns())
    {
        const QString name = codeOf(cell);
        for (const UnitSetRow& kind : list_unit_sets()) {
            if (name == kind.name)
                m_kind = unitId(kind.id);
        }
        if (m_kind == UnitId::BLANK)
            m_kind = unitId(name.toInt());
    }

    Entry read(const QString& text) const
    {
        return read_entry(text.toStdWString(), m_context, m_kind, m_signs);
    }

    /// What Context::parse() reads, in the locale of the same signs.
    boost::optional<IConverter::quantity> parse(const QString& text) const
    {
        const bool isGerman = m_signs.decimal == L',';
        return m_context.parse(text.toStdWString(), m_kind,
            isGerman ? std::locale("de_DE.UTF-8") : std::locale::classic());
    }

    /// The value of a text in plain form; fails the test if it has none.
    double valueOf(const QString& text) const
    {
        const auto quantity = m_context.parse(text.toStdWString(), m_kind, std::locale::classic());
        if (quantity)
            return quantity->value;
        QTest::qFail(qPrintable("no quantity: " + text), __FILE__, __LINE__);
        return 0.0;
    }

    UnitId::UnitId kind() const { return m_kind; }
    const Context& context() const { return m_context; }

private:
    Context m_context;
    NumberSigns m_signs;
    UnitId::UnitId m_kind = UnitId::BLANK;
};

bool isClose(double a, double b)
{
    return std::abs(a - b) <= 1e-12 * std::max(std::abs(a), std::abs(b));
}

QByteArray rowName(const QStringList& row)
{
    return (row.at(1) + ": " + row.at(0)).toUtf8();
}

QString reasonOf(const Entry& entry)
{
    return QString::fromStdWString(sentence(entry.reason));
}

} // namespace

/// Runs the tables of docs/entry.md.
class TestEntryDocument : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsRead_data() { addRows({"Written", "In a field of", "Is", ""}); }
    void whatIsRead()
    {
        QFETCH(QStringList, row);
        const Field field(row.at(1));
        const Entry entry = field.read(codeOf(row.at(0)));
        QCOMPARE(reasonOf(entry), QString());
        QCOMPARE(entry.state, EntryState::Complete);
        QCOMPARE(entry.quantity.unit_id, field.kind());
        QVERIFY2(isClose(entry.quantity.value, field.valueOf(codeOf(row.at(2)))),
            QByteArray::number(entry.quantity.value, 'g', 17));
    }

    void whatIsRefused_data() { addRows({"Written", "In a field of", "Place", "Reason"}); }
    void whatIsRefused() { checkReason(EntryState::Refused); }

    void whatIsUnfinished_data()
    {
        addRows({"Written so far", "In a field of", "Place", "Reason"});
    }
    void whatIsUnfinished() { checkReason(EntryState::Unfinished); }

    void whatIsReadOtherwise_data()
    {
        addRows({"Written", "In a field of", "`UnitValidator`", "Here", ""});
    }
    void whatIsReadOtherwise()
    {
        QFETCH(QStringList, row);
        const Field field(row.at(1));
        const auto parsed = field.parse(codeOf(row.at(0)));
        QVERIFY(parsed);
        if (row.at(2) == "infinite")
            QVERIFY(std::isinf(parsed->value));
        else if (row.at(2) == "too large")
            QVERIFY(parsed->value > 1e300);
        else
            QVERIFY2(isClose(parsed->value, field.valueOf(codeOf(row.at(2)))),
                QByteArray::number(parsed->value, 'g', 17));
        const Entry entry = field.read(codeOf(row.at(0)));
        QCOMPARE(entry.state == EntryState::Complete, row.at(3) != "refused");
        if (entry.state == EntryState::Complete)
            QVERIFY(isClose(entry.quantity.value, field.valueOf(codeOf(row.at(3)))));
    }

private:
    static void addRows(const QStringList& header)
    {
        columns<QStringList>("row");
        for (const QStringList& row : tableRows(page, header))
            QTest::newRow(rowName(row)) << row;
    }

    static void checkReason(EntryState state)
    {
        QFETCH(QStringList, row);
        const Entry entry = Field(row.at(1)).read(codeOf(row.at(0)));
        QCOMPARE(reasonOf(entry), row.at(3));
        QCOMPARE(entry.state, state);
        QCOMPARE(int(entry.reason.place), row.at(2).toInt());
    }
};

VRN_TEST(TestEntryDocument)
#include "tst_entry_document.moc"
