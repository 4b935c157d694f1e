#pragma once

class QString;
class QToolButton;
class QWidget;

namespace vrn::qt::detail {

/// A new tool button of `control` called `name`, at the end of its layout, which
/// loses its margins and spacing.
QToolButton* appendToolButton(QWidget* control, const QString& name);

} // namespace vrn::qt::detail
