#pragma once

#include <vrn/q/vrn_q_export.h>

/// Look-ups by unit index, for values that are held in the internal length
/// unit, the metre.
///
/// A unit index is a vrn::units::UnitId: a unit of length, such as 13 for the metre
/// or 213 for the foot, or a kind of length, as 1001 for GEO_LENGTH. A kind is
/// answered from the active context (see <vrn/q/input_context.h>) at the time of the
/// call, and as it is shown there. Units of feet and inches with fractions are
/// answered as plain feet and inches. Any other index is reported through the
/// assertion facility and answered as the metre without a label.

namespace vrn::q {

/// Values of the parameter `which` of vrn_get_unitd.
enum UnitFactor
{
    UnitSizeInMetres = 0, ///< Metres in one display unit.
    DisplayToInternal = 1, ///< The factor from the display unit to the internal unit.
};

} // namespace vrn::q

/// The factor that `which` names, see vrn::q::UnitFactor. Never zero.
VRN_Q_EXPORT double vrn_get_unitd(int unit, int which);

/// The number of decimals to show in the unit. `which` is always 1.
VRN_Q_EXPORT int vrn_get_unit_precision(int unit, int which);

/// Writes the unit's label as zero-terminated UTF-8 into `buffer`, at most
/// `limit` bytes and the zero, and returns non-zero. Returns 0 and leaves the
/// buffer as it is if there is no label or it does not fit. `which` is always 1.
VRN_Q_EXPORT int vrn_get_unit_label(int unit, int which, char* buffer, int limit);
