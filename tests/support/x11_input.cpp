#include "support/x11_input.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTest>

namespace vrn::test::x11 {
namespace {

QByteArray run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    const bool finished = process.waitForFinished() && process.exitCode() == 0;
    if (!finished) {
        const QString what = program + QLatin1Char(' ') + arguments.join(QLatin1Char(' '))
            + QStringLiteral(": ") + QString::fromLocal8Bit(process.readAllStandardError());
        QTest::qFail(qPrintable(what), __FILE__, __LINE__);
    }
    return process.readAllStandardOutput();
}

QByteArray xdotool(const QStringList& arguments)
{
    return run(QStringLiteral("xdotool"), arguments);
}

QString xwininfo(quintptr window)
{
    return QString::fromLocal8Bit(
        run(QStringLiteral("xwininfo"), {QStringLiteral("-id"), QString::number(window)}));
}

} // namespace

void type(const QString& text)
{
    xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("5"),
        QStringLiteral("--"), text});
}

void press(const QStringList& keys)
{
    xdotool(
        QStringList{QStringLiteral("key"), QStringLiteral("--delay"), QStringLiteral("5")} + keys);
}

void click(const QPoint& position)
{
    xdotool({QStringLiteral("mousemove"), QString::number(position.x()),
        QString::number(position.y()), QStringLiteral("click"), QStringLiteral("1")});
}

void moveMouse(const QPoint& position)
{
    xdotool({QStringLiteral("mousemove"), QString::number(position.x()),
        QString::number(position.y())});
}

void pressButton(int button)
{
    xdotool({QStringLiteral("mousedown"), QString::number(button)});
}

void releaseButton(int button)
{
    xdotool({QStringLiteral("mouseup"), QString::number(button)});
}

void turnWheel(const QPoint& position, bool isAway)
{
    xdotool(
        {QStringLiteral("mousemove"), QString::number(position.x()), QString::number(position.y()),
            QStringLiteral("click"), isAway ? QStringLiteral("4") : QStringLiteral("5")});
}

quintptr activeWindow()
{
    // While the focus goes from one window to another there is none, and the program fails.
    QProcess process;
    process.start(QStringLiteral("xdotool"), {QStringLiteral("getactivewindow")});
    process.waitForFinished();
    return process.readAllStandardOutput().trimmed().toULongLong();
}

void minimise(quintptr window)
{
    xdotool({QStringLiteral("windowminimize"), QString::number(window)});
}

void activate(quintptr window)
{
    xdotool({QStringLiteral("windowactivate"), QString::number(window)});
}

QString property(quintptr window, const QString& name)
{
    const QString answer = QString::fromLocal8Bit(
        run(QStringLiteral("xprop"), {QStringLiteral("-id"), QString::number(window), name}));
    return answer.startsWith(name + QLatin1Char('(')) ? answer.trimmed() : QString();
}

QPoint place(quintptr window)
{
    const QString answer = xwininfo(window);
    const QRegularExpression corner(
        QStringLiteral("Absolute upper-left X: +(-?\\d+)\\s+Absolute upper-left Y: +(-?\\d+)"));
    const QRegularExpressionMatch match = corner.match(answer);
    return QPoint(match.captured(1).toInt(), match.captured(2).toInt());
}

bool isViewable(quintptr window)
{
    return xwininfo(window).contains(QLatin1String("Map State: IsViewable"));
}

} // namespace vrn::test::x11
