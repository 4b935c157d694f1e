#pragma once

#include <vrn/qt/multi_edit_control_base.h>
#include <vrn/qt/selection_state.h>
#include <vrn/qt/simple_check_box.h>

namespace vrn::qt {

/// A check box for one property of a selection, a `bool`: it is checked or not, and
/// partially checked if the objects differ. A click on the partially checked box checks
/// it.
///
///     auto* visible = MultiEditCheckBox::create(tr("&Visible"), form);
///     visible->reset();
///     for (const Beam& beam : selection)
///         visible->readValue(beam.isVisible);
///     connect(visible, &MultiEditCheckBox::valueChanged, this, [=] {
///         model.setVisible(selection, visible->getValue());
///     });
///
/// Changes from code emit the signal as well, some of them twice; see below. Suspend it
/// if you do not want this, above all in a slot that reads the selection again.
/// Otherwise such a slot would call itself without end.
///
/// `delete` and `deleteLater` of the control, its parent or its window are safe in any
/// slot of its signals and in any function that it calls, also from a dialog there.
class VRN_QT2_EXPORT MultiEditCheckBox
    : public SimpleCheckBox
    , public MultiEditControlBase
{
    Q_OBJECT

public:
    /// As SimpleCheckBox::create.
    static MultiEditCheckBox* create(const QString& label, QWidget* parent);
    ~MultiEditCheckBox() override;

    /// The same as isChecked(): also true for a partially checked box.
    bool getValue() const { return isChecked(); }

    /// Emits valueChanged() once, and once more if the state of the box changes.
    void setChecked(bool checked) override;

    /// Unchecks the box. If this changes the box, valueChanged() is emitted before the
    /// control is fresh.
    void reset() override;
    /// Shows the first value, and emits valueChanged() if this changes the box. A
    /// value that is not a `bool` is ignored.
    void readValue(const boost::any& value) override;
    bool dataVaries() const override { return m_state.varies(); }
    boost::any getCurrentValue() const override;
    /// Emits as setChecked() does. A value that is not a `bool` is reported, and
    /// changes nothing.
    void setValue(const boost::any& value) override;
    /// Emits nothing.
    void forceVaries() override;

    /// Suppresses valueChanged() until resumeValueChangedSignal(). What is suppressed
    /// is lost. The two calls do not nest.
    void suspendValueChangedSignal() { m_emitValueChanged = false; }
    void resumeValueChangedSignal() { m_emitValueChanged = true; }

Q_SIGNALS:
    void valueChanged();

private Q_SLOTS:
    void onClicked(int state);

private:
    MultiEditCheckBox(const QString& label, QWidget* parent);

    SelectionState m_state;
    bool m_emitValueChanged = true;
};

} // namespace vrn::qt
