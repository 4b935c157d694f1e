#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <string>

class QWidget;

namespace vrn::qt {

/// Makes the contents of the file `path`, both in UTF-8, the style sheet of
/// `widget`. With an empty path, or a file that cannot be read, the widget keeps
/// the style it has, and nothing is reported.
VRN_QT2_EXPORT void assign_style(QWidget* widget, const std::string& path);

} // namespace vrn::qt
