#pragma once

#include <vrn/q/vrn_q_export.h>

#include <vrn/units/context.h>

namespace vrn::units {
inline namespace v1 {

/// The context in which the application's quantities are typed and shown: the
/// unit system that its user has chosen, and any overrides. At first it is system 0
/// without overrides. A new field takes a copy.
///
/// The reference stays valid until the process ends, and always refers to the
/// context that was set last.
VRN_Q_EXPORT const Context& get_active_input_context();

/// Replaces the context of the application. Call it on the GUI thread, where the
/// context is read.
VRN_Q_EXPORT void set_active_input_context(Context context);

} // namespace v1
} // namespace vrn::units
