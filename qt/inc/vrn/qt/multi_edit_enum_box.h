#pragma once

#include <vrn/qt/multi_edit_control_base.h>
#include <vrn/qt/selection_state.h>
#include <vrn/qt/simple_enum_box.h>

namespace vrn::qt {

/// An enum box for one property of a selection: it shows the common value, or
/// an entry of its own with getVariesString() where the objects differ.
///
///     auto* grade = MultiEditEnumBox::create(form, tr("Steel"), &vrn::any_equal<int>);
///     grade->setValues(grades);
///     grade->reset();
///     for (const Beam& beam : selection)
///         grade->readValue(beam.grade);
///
/// A pick of the user, a text typed over that of a varying selection, and a
/// selection by name or by value make the value that of all objects. next() and
/// previous() do not: a list that varies emits valueChanged() and goes on to
/// vary. Only in an editable box the text that they bring in counts as typed.
/// The entry of the varying selection stays behind those of the values until
/// reset(); mostly there is no row behind it for next() to go to.
///
/// One pick emits activated(int) and then valueChanged() twice; setValue() and
/// the first readValue() after a reset() emit valueChanged() once. Block it with a
/// QSignalBlocker in a slot that reads the selection again: it would call itself
/// without end.
class VRN_QT2_EXPORT MultiEditEnumBox
    : public SimpleEnumBox
    , public MultiEditControlBase
{
    Q_OBJECT

public:
    /// As SimpleEnumBox::create, but `parent` may be null, and `eqFn` may not:
    /// that is reported and null returned.
    static MultiEditEnumBox* create(QWidget* parent, const QString& name,
        bool (*const& eqFn)(const boost::any&, const boost::any&));

    ~MultiEditEnumBox() override;

    /// If the entry of a varying selection is shown, what was shown before it is
    /// shown again.
    void reset() override;
    void readValue(const boost::any& value) override;
    bool dataVaries() const override { return m_state.varies(); }
    boost::any getCurrentValue() const override;
    void setValue(const boost::any& value) override;
    /// Emits nothing.
    void forceVaries() override;

protected:
    void onSelected() override;

private Q_SLOTS:
    void onItemActivated(const QString& text) override;
    void onActivated(int index);
    void onLineEditTextChanged();

private:
    MultiEditEnumBox(
        QWidget* parent, const QString& name, bool (*eqFn)(const boost::any&, const boost::any&));

    void setCommon();

    SelectionState m_state;
};

} // namespace vrn::qt
