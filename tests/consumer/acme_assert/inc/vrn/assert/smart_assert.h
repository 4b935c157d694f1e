#pragma once

#include <functional>

#define ACME_EXPORT __attribute__((visibility("default")))

namespace acme {

class ACME_EXPORT Failure
{
public:
    explicit Failure(const char* expression);

    template <typename Value>
    const Failure& operator()(const char*, const Value&) const
    {
        return *this;
    }
};

struct Ignore
{
    void operator&(const Failure&) const {}
};

} // namespace acme

#define VRN_ASSERT(expression)                                                                     \
    static_cast<bool>(expression) ? static_cast<void>(0)                                           \
                                  : ::acme::Ignore() & ::acme::Failure(#expression)
#define VRN_ASSERT_MESSAGE(expression, message) VRN_ASSERT(expression)("message", message)

namespace vrn::smartassert {

struct AssertReport
{
    const char* expression;
};
using AssertHandler = std::function<void(const AssertReport&)>;
ACME_EXPORT AssertHandler set_assert_handler(AssertHandler handler);

} // namespace vrn::smartassert
