#include "support/x11_input.h"

#include <QProcess>
#include <QTest>

namespace vrn::test::x11 {
namespace {

QByteArray run(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), arguments);
    const bool finished = process.waitForFinished() && process.exitCode() == 0;
    if (!finished) {
        const QString what = QStringLiteral("xdotool ") + arguments.join(QLatin1Char(' '))
            + QStringLiteral(": ") + QString::fromLocal8Bit(process.readAllStandardError());
        QTest::qFail(qPrintable(what), __FILE__, __LINE__);
    }
    return process.readAllStandardOutput();
}

} // namespace

void type(const QString& text)
{
    run({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("5"), text});
}

void press(const QStringList& keys)
{
    run(QStringList{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("5")} + keys);
}

void click(const QPoint& position)
{
    run({QStringLiteral("mousemove"), QString::number(position.x()), QString::number(position.y()),
        QStringLiteral("click"), QStringLiteral("1")});
}

quintptr activeWindow()
{
    return run({QStringLiteral("getactivewindow")}).trimmed().toULongLong();
}

} // namespace vrn::test::x11
