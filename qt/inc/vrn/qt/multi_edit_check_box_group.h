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
/// The group is no widget: the boxes are children of a parent widget, and each is
/// driven by its index.
///
///     HBoxLayouter row;
///     row.onCreate(box);
///     auto* fixed = new MultiEditCheckBoxGroup(box, row, {tr("x"), tr("y"), tr("z")}, {});
///     row.onFinish();
///     fixed->reset();
///     for (const Node& node : selection)
///         for (std::size_t i = 0; i < fixed->size(); ++i)
///             fixed->readValue(i, node.isFixed(i));
///     fixed->onEndRead();
///
/// valueChanged() comes from setValue(), readValue() and reset() as well. Block it
/// with a QSignalBlocker in a slot that reads the selection again: it would call
/// itself without end.
///
/// The group has no parent object and belongs to whoever made it; it and the
/// boxes may outlive each other. A box that is gone is reported when it is asked
/// for, and counts as unchecked. A slot of valueChanged() may destroy the group
/// and the parent of its boxes.
class VRN_QT2_EXPORT MultiEditCheckBoxGroup : public QObject
{
    Q_OBJECT

public:
    /// A box in `parent` for each label that is not empty. An empty label has no
    /// index, but leaves an empty cell. Each box has the tool tip at the place of
    /// its label, if there are so many.
    ///
    /// `layouter` has its layout already, and is finished by the caller; it is
    /// not needed any longer when the group is made.
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
    /// To be called after the last readValue(): brings "All" up to date.
    void onEndRead();

    /// A disabled box does not count for "All", and is not changed by it. "All"
    /// shows this from the next change or onEndRead() on.
    void setEnabled(std::size_t idx, bool enabled);
    void setEnabled(bool enabled);

    /// Makes each box one that can be saved, under `key`, a slash and its index.
    ///
    /// While the boxes are loaded, in any order, none emits anything. When the
    /// last one is loaded all emit but this last one, which is still blocked; and
    /// so does the group, once for each of them.
    void setCanBeSaved(const std::string& key);

Q_SIGNALS:
    /// A box has changed, or a click on "All" has changed any number of them.
    void valueChanged();

protected:
    /// The index of the last box. There is none in an empty group, which is
    /// reported.
    std::size_t lastIndex() const;

private Q_SLOTS:
    void onClickedAny();
    void onClickedToggleAll();

private:
    // The boxes belong to their parent and may go before the group.
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
