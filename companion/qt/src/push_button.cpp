#include <vrn/companion_qt/push_button.h>

VRN_QT_PushButton::~VRN_QT_PushButton() = default;
