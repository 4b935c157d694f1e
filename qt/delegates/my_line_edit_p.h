#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QLineEdit>

namespace vrn::qt::detail {

/// A line edit whose signal editingFinished() any signal of another object can set off, through
/// the slot.
class VRN_QT2_EXPORT MyLineEdit : public QLineEdit
{
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;
    ~MyLineEdit() override;

Q_SIGNALS:
    void editingFinished();

private Q_SLOTS:
    void emitEditingFinished();
};

} // namespace vrn::qt::detail
