#pragma once

#include <vrn/companion_qt/vrn_companion_qt_export.h>

#include <QBoxLayout>

/// A QHBoxLayout under the companion's name. `name` is the object name in UTF-8, or null.
class VRN_COMPANION_QT_EXPORT VRN_QT_HBoxLayout : public QHBoxLayout
{
    Q_OBJECT

public:
    VRN_QT_HBoxLayout(QWidget* parent, const char* name);
    ~VRN_QT_HBoxLayout() override;
};

/// A QVBoxLayout under the companion's name. `name` is the object name in UTF-8, or null.
class VRN_COMPANION_QT_EXPORT VRN_QT_VBoxLayout : public QVBoxLayout
{
    Q_OBJECT

public:
    VRN_QT_VBoxLayout(QWidget* parent, const char* name);
    ~VRN_QT_VBoxLayout() override;
};
