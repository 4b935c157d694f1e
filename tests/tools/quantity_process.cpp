#include "quantity_process.h"

#include <QFileInfo>
#include <QProcess>

namespace vrn::test {
namespace {

Outcome run(const QString& program, const QStringList& arguments, const QByteArray& input,
    const QProcessEnvironment& environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    Outcome outcome;
    if (process.waitForFinished() && process.exitStatus() == QProcess::NormalExit)
        outcome.status = process.exitCode();
    outcome.output = QString::fromUtf8(process.readAllStandardOutput());
    outcome.errors = QString::fromUtf8(process.readAllStandardError());
    return outcome;
}

} // namespace

Outcome runQuantity(const QStringList& arguments, const QByteArray& input)
{
    return run(QStringLiteral(VRN_QUANTITY), arguments, input, quantityEnvironment());
}

Outcome runInShell(const QString& command, const QByteArray& input)
{
    auto environment = quantityEnvironment();
    environment.insert(QStringLiteral("PATH"),
        QFileInfo(QStringLiteral(VRN_QUANTITY)).path() + QLatin1Char(':')
            + environment.value(QStringLiteral("PATH")));
    return run(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), command}, input, environment);
}

QProcessEnvironment quantityEnvironment()
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LOCPATH"), QStringLiteral(VRN_TEST_LOCALES));
    return environment;
}

} // namespace vrn::test
