#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <string>

class QWidget;

namespace vrn::qt {

/// Sets the contents of the file `path` as the style sheet of `widget`. Path and
/// contents are in UTF-8. If the path is empty or the file cannot be read, the
/// widget keeps its style, and nothing is reported.
VRN_QT2_EXPORT void assign_style(QWidget* widget, const std::string& path);

} // namespace vrn::qt
