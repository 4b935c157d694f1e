#pragma once

#include <vrn/assert/smart_assert.h>

#include <QByteArray>
#include <QList>

#include <string>
#include <vector>

namespace vrn::test {

/// Takes the reports of the assertion facility while it lives. A report that
/// the test has not announced fails the test that runs, and so does an
/// announced one that never comes.
class AssertCatcher
{
public:
    AssertCatcher();
    ~AssertCatcher();

    AssertCatcher(const AssertCatcher&) = delete;
    AssertCatcher& operator=(const AssertCatcher&) = delete;

    /// Announces the next report: its expression text, the names of its value
    /// pairs in order, and its message. Reports come in the announced order.
    void expect(const std::string& expression, std::vector<std::string> valueNames = {},
        const std::string& message = {});

    /// Fails the running test for each announced report that has not come, and
    /// forgets them.
    void verify();

    /// The last report that came, announced or not.
    const vrn::smartassert::AssertReport& last() const { return m_last; }

private:
    struct Expectation
    {
        std::string expression;
        std::vector<std::string> valueNames;
        std::string message;
    };

    void take(const vrn::smartassert::AssertReport& report);

    std::vector<Expectation> m_expected;
    vrn::smartassert::AssertReport m_last;
    vrn::smartassert::AssertHandler m_previous;
};

} // namespace vrn::test
