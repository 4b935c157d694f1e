#pragma once

#include <vrn/companion_qt/vrn_companion_qt_export.h>

/// Announces the translations of a library under `key`.
///
/// As soon as there is an application object, `<key>_<language>.qm` for the default
/// QLocale is looked for in the resource folder ":/translations" and then in
/// "translations" beside the executable, and installed. A missing file is not an
/// error: the texts stay as they are in the sources.
/// Returns true, so that a library can call it from a static initialiser.
VRN_COMPANION_QT_EXPORT bool VRN_QT_InitTranslator(const char* key);
