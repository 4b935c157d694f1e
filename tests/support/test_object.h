#pragma once

#include "support/any_to_string.h"
#include "support/assert_catcher.h"
#include "support/warning_catcher.h"

#include <QObject>

#include <optional>

namespace vrn::test {

/// The base of a test class: each test function runs under a fresh catcher of
/// assertions and one of Qt warnings.
///
/// A class that needs init() or cleanup() of its own calls those of this one.
class TestObject : public QObject
{
    Q_OBJECT

protected:
    /// See AssertCatcher::expect.
    void expectAssert(const std::string& expression, std::vector<std::string> valueNames = {},
        const std::string& message = {});
    /// See WarningCatcher::expect.
    void expectWarning(const QString& text);
    /// For tests that look at the reports themselves.
    AssertCatcher& asserts() { return *m_asserts; }

protected Q_SLOTS:
    void init();
    void cleanup();

private:
    std::optional<AssertCatcher> m_asserts;
    std::optional<WarningCatcher> m_warnings;
};

} // namespace vrn::test
