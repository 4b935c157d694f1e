#pragma once

#include <vrn/qt/i_validator.h>

#include <QLocale>

#include <locale>

namespace vrn::qt {

/// The locale by which numbers are read and written under `flags`, see
/// ValidationFlagUserLocale. The user's locale is the one in force at the first
/// call that asks for it; later changes are not seen.
VRN_QT2_EXPORT const QLocale& localeForFlags(const std::bitset<32>& flags);

/// The same as a standard locale. Where the environment names a locale that is
/// not installed, the user's locale is the classic one.
VRN_QT2_EXPORT const std::locale& stdLocaleForFlags(const std::bitset<32>& flags);

} // namespace vrn::qt
