#include <vrn/assert/smart_assert.h>

#include <cstdio>
#include <mutex>
#include <new>

namespace vrn::smartassert {
namespace {

void writeToStderr(const AssertReport& report)
{
    std::string line = report.file + ':' + std::to_string(report.line)
        + ": assertion failed: " + report.expression;
    if (!report.message.empty())
        line += " (" + report.message + ')';
    for (const auto& [name, value] : report.values)
        line += ", " + name + " = " + value;
    line += '\n';
    std::fputs(line.c_str(), stderr);
}

std::mutex handlerMutex;

// Never destroyed: objects with static lifetime may assert until the process ends.
AssertHandler& currentHandler()
{
    static auto& handler = *new AssertHandler(writeToStderr);
    return handler;
}

// The handler is called outside the lock, so that it may assert or be replaced.
void report(const AssertReport& report)
{
    AssertHandler handler;
    {
        const std::lock_guard lock(handlerMutex);
        handler = currentHandler();
    }
    handler(report);
}

} // namespace

AssertHandler set_assert_handler(AssertHandler handler)
{
    if (!handler)
        handler = writeToStderr;
    const std::lock_guard lock(handlerMutex);
    return std::exchange(currentHandler(), std::move(handler));
}

SmartAssertContext::SmartAssertContext(AssertReport report)
    : m_report(std::move(report))
{}

SmartAssertContext::~SmartAssertContext()
{
    try {
        report(m_report);
    } catch (const std::bad_alloc&) {
        // The report is lost, and execution goes on.
    }
}

void SmartAssertContext::addValue(const char* name, std::string value)
{
    m_report.values.emplace_back(name, std::move(value));
}

SmartAssert::SmartAssert(const char* expression)
{
    m_report.expression = expression;
}

SmartAssert& SmartAssert::setFileContext(const char* file, int line)
{
    m_report.file = file;
    m_report.line = line;
    return *this;
}

SmartAssertContext SmartAssert::debug(const char* message)
{
    m_report.message = message;
    return SmartAssertContext(std::move(m_report));
}

} // namespace vrn::smartassert
