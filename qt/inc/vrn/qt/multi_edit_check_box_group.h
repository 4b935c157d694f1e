#pragma once

#include <vrn/qt/i_layouter.h>
#include <vrn/qt/multi_edit_check_box.h>

#include <QObject>
#include <QPointer>
#include <QString>

#include <cstddef>
#include <deque>
#include <string>

namespace vrn::qt {

/// Check boxes for several properties of a selection, and one more, "All", that
/// checks and unchecks them together and shows what they have in common.
///
/// The group is not a widget. Its boxes are children of a parent widget, and the
/// application names a box by its index.
///
///     auto* box = new QGroupBox(tr("Fixed"), form);
///     HBoxLayouter row;
///     row.onCreate(box);
///     MultiEditCheckBoxGroup fixed(box, row, {tr("x"), tr("y"), tr("z")}, {});
///     row.onFinish();
///     fixed.reset();
///     for (const Beam& beam : selection)
///         for (std::size_t i = 0; i < fixed.size(); ++i)
///             fixed.readValue(i, beam.isFixed(i));
///     fixed.onEndRead();
///
/// valueChanged() comes from setValue(), readValue() and reset() as well. Block it with
/// a QSignalBlocker in a slot that reads the selection again. Otherwise the slot would
/// call itself without end.
///
/// The group has no parent object and belongs to the code that made it. It may outlive
/// the boxes, and they may outlive it. A box that has been destroyed is reported when
/// it is asked for, and counts as unchecked.
///
/// `delete` and `deleteLater` of the control, its parent or its window are safe in any
/// slot of its signals and in any function that it calls, also from a dialog there.
class VRN_QT2_EXPORT MultiEditCheckBoxGroup : public QObject
{
    Q_OBJECT

public:
    /// Makes a box in `parent` for each label that is not empty. An empty label has
    /// no index, but leaves an empty cell. A box gets the tool tip at the position of
    /// its label, if there is one.
    ///
    /// `layouter` must have its layout already, and the caller finishes it. It is no
    /// longer needed after the constructor.
    MultiEditCheckBoxGroup(QWidget* parent, ILayouter& layouter, const std::deque<QString>& labels,
        const std::deque<QString>& tooltips);
    ~MultiEditCheckBoxGroup() override;

    /// The number of boxes, without "All".
    std::size_t size() const { return m_checks.size(); }

    // An index past the end is reported, and then std::out_of_range is thrown.

    bool getValue(std::size_t idx) const;
    /// Emits valueChanged() twice for a change, as a MultiEditCheckBox does.
    void setValue(std::size_t idx, bool value);
    void readValue(std::size_t idx, bool value);
    bool dataVaries(std::size_t idx) const;

    /// Resets the boxes. "All" follows in onEndRead().
    void reset();
    /// Brings "All" up to date. Call it after the last readValue().
    void onEndRead();

    /// "All" leaves a disabled box out: it neither counts it nor changes it. "All"
    /// shows this from the next change or onEndRead() on.
    void setEnabled(std::size_t idx, bool enabled);
    void setEnabled(bool enabled);

    /// Lets each box be saved, under `key`, a slash and its index.
    ///
    /// The boxes may be loaded in any order, and none emits anything before all are
    /// loaded. Then all but the one loaded last emit valueChanged(); that one is still
    /// blocked. The group emits valueChanged() once for each of the others.
    void setCanBeSaved(const std::string& key);

Q_SIGNALS:
    /// A box has changed, or a click on "All" has changed any number of them.
    void valueChanged();

protected:
    /// The index of the last box. An empty group has none; this is reported.
    std::size_t lastIndex() const;

private Q_SLOTS:
    void onClickedAny();
    void onClickedToggleAll();

private:
    // The boxes belong to their parent and may be destroyed before the group.
    using Box = QPointer<MultiEditCheckBox>;
    struct Check
    {
        Box box;
        // Since all boxes were loaded last.
        std::size_t timesLoaded = 0;
    };

    MultiEditCheckBox* check(std::size_t idx) const;
    std::deque<Box> boxes() const;
    bool areAllLoaded() const;
    void load(std::size_t idx, const vrn::KeyValueStorage& storage);
    void _updateCheckAllBox();

    std::deque<Check> m_checks;
    Box m_toggleAll;
};

} // namespace vrn::qt
