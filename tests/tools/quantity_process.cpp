#include "quantity_process.h"

#include <QProcess>

namespace vrn::test {

Outcome runQuantity(const QStringList& arguments, const QByteArray& input)
{
    QProcess process;
    process.setProcessEnvironment(quantityEnvironment());
    process.start(QStringLiteral(VRN_QUANTITY), arguments);
    process.write(input);
    process.closeWriteChannel();
    Outcome outcome;
    if (process.waitForFinished() && process.exitStatus() == QProcess::NormalExit)
        outcome.status = process.exitCode();
    outcome.output = QString::fromUtf8(process.readAllStandardOutput());
    outcome.errors = QString::fromUtf8(process.readAllStandardError());
    return outcome;
}

QProcessEnvironment quantityEnvironment()
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LOCPATH"), QStringLiteral(VRN_TEST_LOCALES));
    return environment;
}

} // namespace vrn::test
