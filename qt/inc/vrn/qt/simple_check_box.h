#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QWidget>

class QCheckBox;
class QString;

namespace vrn::qt {

/// A check box in a widget of its own, the base of MultiEditCheckBox. Focus,
/// shortcut and accessible name are those of the box inside.
class VRN_QT2_EXPORT SimpleCheckBox : public QWidget
{
    Q_OBJECT

public:
    /// The control belongs to `parent`. A missing parent is reported.
    static SimpleCheckBox* create(const QString& label, QWidget* parent);
    ~SimpleCheckBox() override;

    bool isChecked() const;
    virtual void setChecked(bool checked);

protected:
    SimpleCheckBox(const QString& label, QWidget* parent);

    QCheckBox* m_check = nullptr;
};

} // namespace vrn::qt
