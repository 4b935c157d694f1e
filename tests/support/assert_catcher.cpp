#include "support/assert_catcher.h"

#include <QTest>

#include <utility>

namespace vrn::test {
namespace {

using vrn::smartassert::AssertReport;

std::string describe(const std::string& expression, const std::vector<std::string>& names,
    const std::string& message)
{
    std::string text = '"' + expression + '"';
    for (const std::string& name : names)
        text += " with \"" + name + '"';
    if (!message.empty())
        text += " (" + message + ')';
    return text;
}

std::vector<std::string> namesOf(const AssertReport& report)
{
    std::vector<std::string> names;
    for (const auto& value : report.values)
        names.push_back(value.first);
    return names;
}

void fail(const std::string& what, const AssertReport& where = {})
{
    QTest::qFail(what.c_str(), where.file.empty() ? __FILE__ : where.file.c_str(), where.line);
}

} // namespace

AssertCatcher::AssertCatcher()
    : m_previous(
        vrn::smartassert::set_assert_handler([this](const AssertReport& report) { take(report); }))
{}

AssertCatcher::~AssertCatcher()
{
    vrn::smartassert::set_assert_handler(m_previous);
    verify();
}

void AssertCatcher::expect(
    const std::string& expression, std::vector<std::string> valueNames, const std::string& message)
{
    m_expected.push_back({expression, std::move(valueNames), message});
}

void AssertCatcher::verify()
{
    for (const Expectation& expectation : std::exchange(m_expected, {})) {
        fail("announced assertion did not come: "
            + describe(expectation.expression, expectation.valueNames, expectation.message));
    }
}

void AssertCatcher::take(const AssertReport& report)
{
    m_last = report;
    const std::vector<std::string> names = namesOf(report);
    const std::string got = describe(report.expression, names, report.message);
    if (m_expected.empty()) {
        fail("unannounced assertion: " + got, report);
        return;
    }
    const Expectation expectation = m_expected.front();
    m_expected.erase(m_expected.begin());
    const std::string expected = describe(
        expectation.expression, expectation.valueNames, expectation.message);
    if (got != expected)
        fail("assertion " + got + " came where this one was announced: " + expected, report);
}

} // namespace vrn::test
