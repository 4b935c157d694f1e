#pragma once

#include <QWidget>

namespace vrn::qt::detail {

/// The part of a control that gets the keys: the edit or the list in it, or itself.
inline QWidget* typedInto(QWidget* control)
{
    while (control->focusProxy())
        control = control->focusProxy();
    return control;
}

} // namespace vrn::qt::detail
