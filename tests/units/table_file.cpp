#include "table_file.h"

#include <QFile>
#include <QTest>

namespace vrn::test {

std::vector<QStringList> readTable(const QString& fileName)
{
    std::vector<QStringList> rows;
    QFile file(QStringLiteral(VRN_UNITS_TEST_DATA "/") + fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        QTest::qFail(qPrintable(file.errorString()), __FILE__, __LINE__);
        return rows;
    }
    while (!file.atEnd()) {
        QString line = QString::fromUtf8(file.readLine());
        line.chop(line.endsWith(QLatin1Char('\n')) ? 1 : 0);
        if (!line.startsWith(QLatin1Char('#')))
            rows.push_back(line.split(QLatin1Char('\t')));
    }
    return rows;
}

} // namespace vrn::test
