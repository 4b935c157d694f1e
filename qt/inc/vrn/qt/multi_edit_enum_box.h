#pragma once

#include <vrn/qt/multi_edit_control_base.h>
#include <vrn/qt/selection_state.h>
#include <vrn/qt/simple_enum_box.h>

namespace vrn::qt {

/// An enum box for one property of a selection: it shows the common value, or an extra
/// entry with getVariesString() if the objects differ.
///
///     auto* grade = MultiEditEnumBox::create(form, tr("Steel"), &vrn::any_equal<int>);
///     grade->setValues({{"S235", 235}, {"S355", 355}});
///     grade->reset();
///     for (const Beam& beam : selection)
///         grade->readValue(beam.grade);
///
/// A value becomes that of all objects when the user picks it, when the user types over
/// the text of a varying selection, and when the program selects it by name or by
/// value. next() and previous() do not have this effect: a list that varies emits
/// valueChanged() and still varies. Only in an editable box does the text that they
/// show count as typed. The extra entry stays after those of the values until reset(),
/// so next() usually has no row to go to from there.
///
/// If the user types, pastes or undoes to getVariesString() in an editable box, the box
/// varies: it shows the entry of the varying selection and emits nothing. When the
/// language changes, the entry is translated again.
///
/// One pick emits activated(int) and then valueChanged() twice; setValue() and the
/// first readValue() after a reset() emit valueChanged() once. Block it with a
/// QSignalBlocker in a slot that reads the selection again. Otherwise the slot would
/// call itself without end.
///
/// `delete` and `deleteLater` of the control, its parent or its window are safe in any
/// slot of its signals and in any function that it calls, also from a dialog there.
/// Excluded is what SimpleEnumBox excludes.
class VRN_QT2_EXPORT MultiEditEnumBox
    : public SimpleEnumBox
    , public MultiEditControlBase
{
    Q_OBJECT

public:
    /// As SimpleEnumBox::create, but `parent` may be null. A null `eqFn` is
    /// reported, and null is returned.
    static MultiEditEnumBox* create(QWidget* parent, const QString& name,
        bool (*const& eqFn)(const boost::any&, const boost::any&));

    ~MultiEditEnumBox() override;

    /// If the entry of a varying selection is shown, what was shown before is shown
    /// again.
    void reset() override;
    /// If the validator of an editable box throws, the exception passes through, and
    /// the box has no value until another one is set. A later read makes it vary.
    void readValue(const boost::any& value) override;
    bool dataVaries() const override { return m_state.varies(); }
    boost::any getCurrentValue() const override;
    void setValue(const boost::any& value) override;
    /// Emits nothing.
    void forceVaries() override;

protected:
    void onSelected() override;
    void onTextEdited(const QString& text) override;

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
