#pragma once

#include <vrn/qt/multi_edit_control_base.h>
#include <vrn/qt/selection_state.h>
#include <vrn/qt/simple_check_box.h>

namespace vrn::qt {

/// A check box for one property of a selection, a `bool`: it is checked or not,
/// and partially checked where the objects differ. A click on the partially
/// checked box checks it.
///
///     auto* visible = MultiEditCheckBox::create(tr("&Visible"), form);
///     visible->reset();
///     for (const Beam& beam : selection)
///         visible->readValue(beam.isVisible);
///     connect(visible, &MultiEditCheckBox::valueChanged, this, [=] {
///         model.setVisible(selection, visible->getValue());
///     });
///
/// Changes from code are told as well, and some of them twice; see below.
/// Suspend the signal where this is not wanted, above all in a slot that reads the
/// selection again: it would call itself without end.
///
/// A slot of any of its signals may destroy the control, or its parent.
class VRN_QT2_EXPORT MultiEditCheckBox
    : public SimpleCheckBox
    , public MultiEditControlBase
{
    Q_OBJECT

public:
    /// As SimpleCheckBox::create.
    static MultiEditCheckBox* create(const QString& label, QWidget* parent);
    ~MultiEditCheckBox() override;

    /// The same as isChecked(): true also for a partially checked box.
    bool getValue() const { return isChecked(); }

    /// Emits valueChanged() once, and once more if the state of the box changes.
    void setChecked(bool checked) override;

    /// Unchecks the box. This emits valueChanged() unless the box was unchecked,
    /// while the control still counts as read.
    void reset() override;
    /// The first value is shown, and valueChanged() emitted if this changes the
    /// box. What is no `bool` is ignored.
    void readValue(const boost::any& value) override;
    bool dataVaries() const override { return m_state.varies(); }
    boost::any getCurrentValue() const override;
    /// Emits as setChecked() does. What is no `bool` is reported, and changes
    /// nothing.
    void setValue(const boost::any& value) override;
    /// Emits nothing.
    void forceVaries() override;

    /// No valueChanged() from here to resumeValueChangedSignal(), which does not
    /// make up for what was left out. The two do not nest.
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
