#pragma once

#include <QString>
#include <QStringList>

namespace vrn::test {

/// Takes Qt's messages while it lives. A warning or worse that the test has not
/// announced fails the test that runs, and so does an announced one that never
/// comes. Everything goes on to the handler before.
class WarningCatcher
{
public:
    WarningCatcher();
    ~WarningCatcher();

    WarningCatcher(const WarningCatcher&) = delete;
    WarningCatcher& operator=(const WarningCatcher&) = delete;

    /// Announces a warning by its whole text.
    void expect(const QString& text);
    void verify();

private:
    static void take(QtMsgType type, const QMessageLogContext& context, const QString& text);

    static WarningCatcher* s_current;

    QStringList m_expected;
    QtMessageHandler m_previous;
};

} // namespace vrn::test
