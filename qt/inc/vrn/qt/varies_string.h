#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QString>

namespace vrn::qt {

/// The translated "*VARIES*", which a control shows for a selection of objects whose
/// values differ. This is the only source of the text: compare with it, never with the
/// literal.
VRN_QT2_EXPORT QString getVariesString();

} // namespace vrn::qt
