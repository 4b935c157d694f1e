#pragma once

#include <vrn/companion_qt/vrn_companion_qt_export.h>

#include <QPushButton>

/// A QPushButton under the companion's name.
class VRN_COMPANION_QT_EXPORT VRN_QT_PushButton : public QPushButton
{
    Q_OBJECT

public:
    using QPushButton::QPushButton;
    /// `name` is the object name in UTF-8, or null.
    VRN_QT_PushButton(QWidget* parent, const char* name);
    VRN_QT_PushButton(const QIcon& icon, const QString& text, QWidget* parent, const char* name);
    ~VRN_QT_PushButton() override;
};
