#include <vrn/companion_qt/box_layout.h>

VRN_QT_HBoxLayout::VRN_QT_HBoxLayout(QWidget* parent, const char* name)
    : QHBoxLayout(parent)
{
    setObjectName(QString::fromUtf8(name));
}

VRN_QT_HBoxLayout::~VRN_QT_HBoxLayout() = default;

VRN_QT_VBoxLayout::VRN_QT_VBoxLayout(QWidget* parent, const char* name)
    : QVBoxLayout(parent)
{
    setObjectName(QString::fromUtf8(name));
}

VRN_QT_VBoxLayout::~VRN_QT_VBoxLayout() = default;
