#pragma once

#include <vrn/qt/vrn_qt2_export.h>

class QString;
class QToolButton;
class QWidget;

namespace vrn::qt::detail {

/// A new tool button of `control` called `name`, at the end of its layout, which
/// loses its margins and spacing.
VRN_QT2_EXPORT QToolButton* appendToolButton(QWidget* control, const QString& name);

} // namespace vrn::qt::detail
