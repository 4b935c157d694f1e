#include "support/warning_catcher.h"

#include <QTest>

#include <utility>

namespace vrn::test {
namespace {

// What a test can do nothing about. The offscreen platform says the first of every window. The
// X server says the second if a dialog closes while a request of it is on its way.
bool isOfPlatform(const QString& text)
{
    return text.startsWith(QStringLiteral("This plugin does not support "))
        || text.startsWith(QStringLiteral("QXcbConnection: XCB error: 3 (BadWindow)"));
}

} // namespace

WarningCatcher* WarningCatcher::s_current = nullptr;

WarningCatcher::WarningCatcher()
    : m_previous(qInstallMessageHandler(&WarningCatcher::take))
{
    s_current = this;
}

WarningCatcher::~WarningCatcher()
{
    s_current = nullptr;
    qInstallMessageHandler(m_previous);
    verify();
}

void WarningCatcher::expect(const QString& text)
{
    m_expected.append(text);
}

void WarningCatcher::verify()
{
    for (const QString& text : std::exchange(m_expected, {})) {
        const QString what = QStringLiteral("announced warning did not come: ") + text;
        QTest::qFail(qPrintable(what), __FILE__, __LINE__);
    }
}

void WarningCatcher::take(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (!s_current)
        return;
    if (isOfPlatform(text))
        return;
    if (type != QtDebugMsg && type != QtInfoMsg && !s_current->m_expected.removeOne(text)) {
        const QString what = QStringLiteral("unannounced warning: ") + text;
        QTest::qFail(qPrintable(what), __FILE__, __LINE__);
    }
    if (s_current->m_previous)
        s_current->m_previous(type, context, text);
}

} // namespace vrn::test
