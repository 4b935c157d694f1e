#include "controls/parts/append_tool_button_p.h"

#include <vrn/assert/smart_assert.h>

#include <QLayout>
#include <QToolButton>

namespace vrn::qt::detail {

QToolButton* appendToolButton(QWidget* control, const QString& name)
{
    auto* button = new QToolButton(control);
    button->setObjectName(name);
    QLayout* lay = control->layout();
    VRN_ASSERT(lay);
    if (lay) {
        lay->setContentsMargins(0, 0, 0, 0);
        lay->setSpacing(0);
        lay->addWidget(button);
    }
    return button;
}

} // namespace vrn::qt::detail
