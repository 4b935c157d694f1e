#include "schema_enumerators.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

namespace vrn::test {

std::vector<SchemaEnumerator> readSchemaEnumerators()
{
    std::vector<SchemaEnumerator> enumerators;
    QFile file(QStringLiteral(VRN_UNITS_SCHEMA "/unit_id.bond"));
    if (!file.open(QIODevice::ReadOnly)) {
        QTest::qFail(qPrintable(file.errorString()), __FILE__, __LINE__);
        return enumerators;
    }
    const QRegularExpression enumerator(
        QStringLiteral(R"re(^\s*([A-Z][A-Z0-9_]*) = (\d+),(?: // "(.*)")?$)re"));
    bool isInside = false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).chopped(1);
        if (line == QLatin1String("{") || line.startsWith(QLatin1Char('}'))) {
            isInside = line == QLatin1String("{");
        } else if (isInside && !line.isEmpty()) {
            const QRegularExpressionMatch match = enumerator.match(line);
            if (!match.hasMatch())
                QTest::qFail(qPrintable(line), __FILE__, __LINE__);
            enumerators.push_back(
                {match.captured(1), match.captured(2).toInt(), match.captured(3)});
        }
    }
    return enumerators;
}

} // namespace vrn::test
