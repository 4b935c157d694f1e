#include "document_table.h"

#include <QFile>
#include <QTest>

namespace vrn::test {
namespace {

QStringList cellsOf(const QString& line)
{
    if (!line.startsWith('|') || !line.endsWith('|'))
        return {};
    QStringList cells;
    for (const QString& cell : line.mid(1, line.size() - 2).split('|'))
        cells.append(cell.trimmed());
    return cells;
}

} // namespace

QList<QStringList> tableRows(const QString& document, const QStringList& header)
{
    QFile page(QStringLiteral(VRN_DOCS "/") + document);
    if (!page.open(QIODevice::ReadOnly))
        QTest::qFail(qPrintable(page.fileName() + ": " + page.errorString()), __FILE__, __LINE__);
    QList<QStringList> rows;
    int linesOfTable = 0;
    for (const QString& line : QString::fromUtf8(page.readAll()).split('\n')) {
        const QStringList cells = cellsOf(line);
        if (cells == header || (linesOfTable > 0 && !cells.isEmpty()))
            ++linesOfTable;
        else
            linesOfTable = 0;
        // Below the header there is a line of dashes.
        if (linesOfTable > 2)
            rows.append(cells);
    }
    if (rows.isEmpty())
        QTest::qFail(qPrintable("no table of " + header.join(", ")), __FILE__, __LINE__);
    return rows;
}

QString codeOf(const QString& cell)
{
    return cell.section('`', 1, 1);
}

} // namespace vrn::test
