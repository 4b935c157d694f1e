#include <vrn/companion_qt/label.h>

VRN_QT_Label::VRN_QT_Label(Qt::TextFormat format, const QString& text, QWidget* parent,
    const char* name, Qt::WindowFlags flags)
    : QLabel(parent, flags)
{
    setObjectName(QString::fromUtf8(name));
    setTextFormat(format);
    setText(text);
}

VRN_QT_Label::~VRN_QT_Label() = default;
