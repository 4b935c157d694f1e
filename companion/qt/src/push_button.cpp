#include <vrn/companion_qt/push_button.h>

VRN_QT_PushButton::VRN_QT_PushButton(QWidget* parent, const char* name)
    : QPushButton(parent)
{
    setObjectName(QString::fromUtf8(name));
}

VRN_QT_PushButton::VRN_QT_PushButton(
    const QIcon& icon, const QString& text, QWidget* parent, const char* name)
    : QPushButton(icon, text, parent)
{
    setObjectName(QString::fromUtf8(name));
}

VRN_QT_PushButton::~VRN_QT_PushButton() = default;
