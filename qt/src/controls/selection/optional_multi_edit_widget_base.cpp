#include <vrn/qt/optional_multi_edit_widget_base.h>

namespace vrn::qt {

OptionalMultiEditWidgetBase::OptionalMultiEditWidgetBase(QWidget* parent)
    : QWidget(parent)
{}

OptionalMultiEditWidgetBase::~OptionalMultiEditWidgetBase() = default;

} // namespace vrn::qt
