#pragma once

#include <vrn/qt/multi_edit_control_base.h>
#include <vrn/qt/selection_state.h>
#include <vrn/qt/simple_radio_button_group.h>

namespace vrn::qt {

namespace detail {
class VariesToolTip;
}

/// Radio buttons for one property of a selection. None is checked if the objects
/// differ.
///
///     auto* grade = MultiEditRadioButtonGroup::create(tr("Steel grade"),
///         {{"S235", 235}, {"S355", 355}}, &vrn::any_equal<int>, &vrn::any_less<int>,
///         form, nullptr, true, true);
///     grade->reset();
///     for (const Beam& beam : selection)
///         grade->readValue(beam.grade);
///
/// Changes from code emit valueChanged() as well: reset(), setValue(), the first
/// readValue() and, in this control alone, the one that finds a difference. Block it
/// with a QSignalBlocker in a slot that reads the selection again. Otherwise the slot
/// would call itself without end.
///
/// `delete` and `deleteLater` of the control, its parent or its window are safe in any
/// slot of its signals and in any function that it calls, also from a dialog there.
/// Excluded is what SimpleRadioButtonGroup::create says of buttons without a group box.
class VRN_QT2_EXPORT MultiEditRadioButtonGroup
    : public SimpleRadioButtonGroup
    , public MultiEditControlBase
{
    Q_OBJECT

public:
    /// As SimpleRadioButtonGroup::create. The first button is checked.
    static MultiEditRadioButtonGroup* create(const QString& title, const NamedValueList& values,
        bool (*const& equalFn)(const boost::any&, const boost::any&),
        const boost::function<bool(const boost::any&, const boost::any&)>& lessFn, QWidget* parent,
        ILayouter* layouter, bool useGroupBox, bool useButtonGroup);
    ~MultiEditRadioButtonGroup() override;

    /// The same as getSelectedValue(), which reports a group that varies;
    /// getCurrentValue() does not.
    boost::any getValue() const { return getSelectedValue(); }

    /// Checks the first button and enables the group, but not a button that was
    /// disabled on its own. Emits valueChanged().
    void reset() override;
    void readValue(const boost::any& value) override;
    bool dataVaries() const override { return m_state.varies(); }
    boost::any getCurrentValue() const override;
    /// Emits valueChanged(), even for an unknown value. Such a value is reported, and
    /// no button is checked.
    void setValue(const boost::any& value) override;
    /// Emits nothing.
    void forceVaries() override;

Q_SIGNALS:
    void valueChanged();

private Q_SLOTS:
    void onClicked(bool checked);

private:
    MultiEditRadioButtonGroup(const QString& title, const NamedValueList& values,
        EqualFunction equalFn, const LessFunction& lessFn, QWidget* parent, ILayouter* layouter,
        bool useGroupBox, bool useButtonGroup);

    void onButtonCreated(QRadioButton* button);
    void setAutoExclusive();

    SelectionState m_state;
    detail::VariesToolTip* m_toolTip;
};

} // namespace vrn::qt
