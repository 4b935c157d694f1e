#pragma once

#include <vrn/qt/vrn_qt2_export.h>

class QString;
class QToolButton;
class QWidget;

namespace vrn::qt::detail {

/// Appends a tool button called `name` to the layout of `control`, which loses its
/// margins and spacing.
VRN_QT2_EXPORT QToolButton* appendToolButton(QWidget* control, const QString& name);

} // namespace vrn::qt::detail
