#pragma once

namespace vrn::qt::detail {

/// Makes getVariesString() the accessible value of each control that varies: of a
/// SimpleCheckBox and its inner box, a MultiEditGroupBox and a SimpleRadioButtonGroup.
/// May be called any number of times.
///
/// A control calls it in its constructor, before Qt creates the accessible interface. Qt
/// keeps the first interface that it finds for a widget, and it may look for one while the
/// widget is not yet a multi-edit control. So the interface checks whether the control
/// varies each time the value is asked for.
void installVariesAccessible();

} // namespace vrn::qt::detail
