#include <vrn/q/input_context.h>

#include <utility>

namespace vrn::units {
inline namespace v1 {
namespace {

// Never destroyed: an application may destroy its last fields after the statics.
Context& active_input_context()
{
    static auto* const context = new Context;
    return *context;
}

} // namespace

const Context& get_active_input_context()
{
    return active_input_context();
}

void set_active_input_context(Context context)
{
    active_input_context() = std::move(context);
}

} // namespace v1
} // namespace vrn::units
