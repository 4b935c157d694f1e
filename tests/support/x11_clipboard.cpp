#include "support/x11_clipboard.h"

#include <QProcess>
#include <QTest>

namespace vrn::test::x11 {
namespace {

void start(QProcess& xclip, const QString& direction)
{
    xclip.start(QStringLiteral("xclip"),
        {direction, QStringLiteral("-selection"), QStringLiteral("clipboard"),
            QStringLiteral("-target"), QStringLiteral("UTF8_STRING")});
}

void check(const QProcess& xclip)
{
    if (xclip.exitStatus() != QProcess::NormalExit || xclip.exitCode() != 0)
        QTest::qFail("xclip has failed", __FILE__, __LINE__);
}

} // namespace

QString readClipboard()
{
    QProcess xclip;
    start(xclip, QStringLiteral("-out"));
    // The event loop runs, in which the owner answers.
    if (!QTest::qWaitFor([&] { return xclip.state() == QProcess::NotRunning; }, 30000))
        QTest::qFail("xclip does not end", __FILE__, __LINE__);
    check(xclip);
    return QString::fromUtf8(xclip.readAllStandardOutput());
}

void writeClipboard(const QString& text)
{
    QProcess xclip;
    // What stays in the background as the owner must not keep the pipes.
    xclip.setStandardOutputFile(QProcess::nullDevice());
    xclip.setStandardErrorFile(QProcess::nullDevice());
    start(xclip, QStringLiteral("-in"));
    xclip.write(text.toUtf8());
    xclip.closeWriteChannel();
    if (!xclip.waitForFinished())
        QTest::qFail("xclip does not end", __FILE__, __LINE__);
    check(xclip);
}

} // namespace vrn::test::x11
