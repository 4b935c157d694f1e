#pragma once

#include <vrn/companion_qt/vrn_companion_qt_export.h>

#include <QLabel>

/// A QLabel under the companion's name.
class VRN_COMPANION_QT_EXPORT VRN_QT_Label : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;
    /// `name` becomes the object name, if there is one.
    VRN_QT_Label(Qt::TextFormat format, const QString& text, QWidget* parent,
        const char* name = nullptr, Qt::WindowFlags flags = {});
    ~VRN_QT_Label() override;
};
