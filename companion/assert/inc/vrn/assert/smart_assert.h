#pragma once

#include <vrn/assert/vrn_assert_export.h>

#include <functional>
#include <iomanip>
#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

/// Reports a broken contract and goes on.
///
///     VRN_ASSERT(minimum < maximum)("minimum", minimum)("maximum", maximum);
///
/// The value pairs after the condition are evaluated only when it is false.
/// Execution goes on: the code after an assertion handles the bad case itself.
#define VRN_ASSERT(expression) VRN_ASSERT_MESSAGE(expression, "")

/// As VRN_ASSERT, with a sentence for the reader of the report.
#define VRN_ASSERT_MESSAGE(expression, message)                                                    \
    static_cast<bool>(expression) ? static_cast<void>(0)                                           \
                                  : ::vrn::smartassert::detail::Discard{}                          \
            & ::vrn::smartassert::SmartAssert(#expression)                                         \
                  .setFileContext(__FILE__, __LINE__)                                              \
                  .debug(message)

namespace vrn::smartassert {

/// What a handler is told about one failed assertion.
struct AssertReport
{
    std::string expression; ///< The condition as it stands in the source.
    std::string message; ///< A sentence for the reader; often empty.
    std::string file; ///< Source file, relative to the project.
    int line = 0;
    std::vector<std::pair<std::string, std::string>> values; ///< Name and printed value.
};

/// Called for every failed assertion, on the thread on which it failed. It must not throw,
/// since a destructor makes the report. The exception is std::bad_alloc: the report is
/// then lost.
using AssertHandler = std::function<void(const AssertReport&)>;

/// Replaces the handler of the process and returns the one before it. An empty
/// function brings back the default, which writes one line to stderr.
VRN_ASSERT_EXPORT AssertHandler set_assert_handler(AssertHandler handler);

/// Collects the value pairs of one failed assertion and hands the report over
/// when the full expression ends.
class VRN_ASSERT_EXPORT SmartAssertContext
{
public:
    explicit SmartAssertContext(AssertReport report);
    ~SmartAssertContext();

    SmartAssertContext(const SmartAssertContext&) = delete;
    SmartAssertContext& operator=(const SmartAssertContext&) = delete;

    template <typename Value>
    SmartAssertContext& operator()(const char* name, const Value& value)
    {
        std::ostringstream text;
        text.imbue(std::locale::classic());
        text << std::boolalpha << std::setprecision(std::numeric_limits<double>::max_digits10)
             << value;
        addValue(name, text.str());
        return *this;
    }

private:
    void addValue(const char* name, std::string value);

    AssertReport m_report;
};

/// One failed assertion on its way to the handler; see VRN_ASSERT.
class VRN_ASSERT_EXPORT SmartAssert
{
public:
    explicit SmartAssert(const char* expression);

    SmartAssert& setFileContext(const char* file, int line);

    /// Ends the description of the failure; value pairs may follow.
    SmartAssertContext debug(const char* message = "");

private:
    AssertReport m_report;
};

namespace detail {

/// Gives both arms of VRN_ASSERT's conditional the type void; `&` binds more
/// loosely than the calls that add value pairs.
struct Discard
{
    void operator&(const SmartAssertContext&) const {}
};

} // namespace detail

} // namespace vrn::smartassert
