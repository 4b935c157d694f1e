#pragma once

namespace vrn::qt::detail {

/// From here on getVariesString() is the accessible value of a SimpleCheckBox
/// and the box in it, a MultiEditGroupBox and a SimpleRadioButtonGroup for as
/// long as they vary. May be called any number of times.
///
/// To be called when such a control is made, while its class is not yet that of
/// a multi-edit control: Qt keeps what it finds for a widget the first time. So
/// each time the value is asked for, it is looked up whether the control varies.
void installVariesAccessible();

} // namespace vrn::qt::detail
