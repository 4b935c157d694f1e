#include <vrn/companion_qt/label.h>

VRN_QT_Label::~VRN_QT_Label() = default;
