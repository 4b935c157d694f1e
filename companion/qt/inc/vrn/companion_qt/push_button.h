#pragma once

#include <vrn/companion_qt/vrn_companion_qt_export.h>

#include <QPushButton>

/// A QPushButton by the companion's name.
class VRN_COMPANION_QT_EXPORT VRN_QT_PushButton : public QPushButton
{
    Q_OBJECT

public:
    using QPushButton::QPushButton;
    ~VRN_QT_PushButton() override;
};
