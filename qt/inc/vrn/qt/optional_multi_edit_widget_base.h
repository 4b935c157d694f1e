#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QWidget>

namespace vrn::qt {

/// A base for an application's composite widgets that edit an optional value: one
/// type with one signal to connect to.
class VRN_QT2_EXPORT OptionalMultiEditWidgetBase : public QWidget
{
    Q_OBJECT

public:
    explicit OptionalMultiEditWidgetBase(QWidget* parent);
    ~OptionalMultiEditWidgetBase() override;

Q_SIGNALS:
    void valueChanged();
};

} // namespace vrn::qt
