#pragma once

#include <vrn/qt/multi_edit_control_base.h>
#include <vrn/qt/selection_state.h>

#include <QGroupBox>

namespace vrn::qt {

/// A checkable group box for one property of a selection, a `bool`. If the objects
/// differ, it is disabled, with everything in it.
///
///     auto* fire = MultiEditGroupBox::create(tr("&Fire protection"), form);
///     new QFormLayout(fire);
///     fire->reset();
///     for (const Beam& beam : selection)
///         fire->readValue(beam.isProtected);
///
/// Only reset() enables a group box again: one that varied stays disabled after
/// setValue(), although it no longer varies.
///
/// setValue() emits valueChanged() as well. Suspend the signal in a slot that calls it.
/// Otherwise the slot would call itself without end.
///
/// `delete` and `deleteLater` of the control, its parent or its window are safe in any
/// slot of its signals and in any function that it calls, also from a dialog there.
class VRN_QT2_EXPORT MultiEditGroupBox
    : public QGroupBox
    , public MultiEditControlBase
{
    Q_OBJECT

public:
    /// The control belongs to `parent`. A missing parent is reported.
    static MultiEditGroupBox* create(const QString& label, QWidget* parent);
    ~MultiEditGroupBox() override;

    /// The same as isChecked(): the last state, even while the control varies.
    bool getValue() const { return isChecked(); }

    /// Unchecks and enables the box. Emits nothing.
    void reset() override;
    /// Emits nothing. A value that is not a `bool` is ignored.
    void readValue(const boost::any& value) override;
    bool dataVaries() const override { return m_state.varies(); }
    boost::any getCurrentValue() const override;
    /// Emits valueChanged() once, and leaves a disabled box disabled. A value that is
    /// not a `bool` is reported, and changes nothing.
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
    void onClicked(bool checked);

private:
    MultiEditGroupBox(const QString& label, QWidget* parent);

    SelectionState m_state;
    bool m_emitValueChanged = true;
};

} // namespace vrn::qt
