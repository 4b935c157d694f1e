#include <vrn/assert/smart_assert.h>

#include <utility>

namespace {
vrn::smartassert::AssertHandler handlerInForce;
}

acme::Failure::Failure(const char* expression)
{
    if (handlerInForce)
        handlerInForce({expression});
}

vrn::smartassert::AssertHandler vrn::smartassert::set_assert_handler(AssertHandler handler)
{
    return std::exchange(handlerInForce, std::move(handler));
}
