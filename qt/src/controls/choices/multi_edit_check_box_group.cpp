#include <vrn/qt/multi_edit_check_box_group.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/connect.h>
#include <vrn/companion_qt/signal_blocker.h>

#include <QScopeGuard>

#include "controls/parts/alive_p.h"
#include "controls/selection/varies_tool_tip_p.h"

#include <stdexcept>

namespace vrn::qt {
namespace {

template <typename T>
const T& at(const std::deque<T>& items, std::size_t idx)
{
    if (idx >= items.size())
        throw std::out_of_range("invalid deque<T> subscript");
    return items[idx];
}

// Keeps `box` from emitting valueChanged() while this lives. The box may be destroyed in
// the meantime, and a slot on its inner box may throw.
class Muted
{
public:
    explicit Muted(MultiEditCheckBox* box)
        : m_box(box)
    {
        box->suspendValueChangedSignal();
    }
    ~Muted()
    {
        if (m_box)
            m_box->resumeValueChangedSignal();
    }
    Muted(const Muted&) = delete;
    Muted& operator=(const Muted&) = delete;

private:
    QPointer<MultiEditCheckBox> m_box;
};

bool saveCheck(const MultiEditCheckBox& check, vrn::KeyValueStorage& storage)
{
    if (check.dataVaries())
        return true;
    const boost::any value = check.getCurrentValue();
    const bool* checked = boost::any_cast<bool>(&value);
    if (!checked)
        return false;
    storage[check.getStorageId()] = *checked;
    return true;
}

} // namespace

MultiEditCheckBoxGroup::MultiEditCheckBoxGroup(QWidget* parent, ILayouter& layouter,
    const std::deque<QString>& labels, const std::deque<QString>& tooltips)
{
    // If the layouter throws, no cell of this group stays in the parent.
    std::deque<QPointer<QWidget>> cells;
    auto unlessFinished = qScopeGuard([&cells] {
        for (const QPointer<QWidget>& cell : cells)
            delete cell;
    });
    const auto addTo = [&](QWidget* cell) {
        cells.emplace_back(cell);
        layouter.onAdd(cell);
    };

    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (labels[i].isEmpty()) {
            addTo(new QWidget(parent));
            continue;
        }
        auto* check = MultiEditCheckBox::create(labels[i], parent);
        addTo(check);
        vrn_connect(
            check, &MultiEditCheckBox::valueChanged, this, &MultiEditCheckBoxGroup::onClickedAny);
        m_checks.push_back({check, 0});
        if (i < tooltips.size())
            check->setToolTip(tooltips[i]);
    }
    m_toggleAll = MultiEditCheckBox::create(tr("All"), parent);
    // It varies if the boxes differ, and not the selected objects.
    detail::VariesToolTip::removeFrom(m_toggleAll);
    addTo(m_toggleAll);
    vrn_connect(m_toggleAll.data(), &MultiEditCheckBox::valueChanged, this,
        &MultiEditCheckBoxGroup::onClickedToggleAll);
    unlessFinished.dismiss();
}

MultiEditCheckBoxGroup::~MultiEditCheckBoxGroup() = default;

bool MultiEditCheckBoxGroup::getValue(std::size_t idx) const
{
    const MultiEditCheckBox* box = check(idx);
    return box && box->isChecked();
}

void MultiEditCheckBoxGroup::setValue(std::size_t idx, bool value)
{
    if (MultiEditCheckBox* box = check(idx))
        box->setChecked(value);
}

void MultiEditCheckBoxGroup::readValue(std::size_t idx, bool value)
{
    if (MultiEditCheckBox* box = check(idx))
        box->readValue(value);
}

bool MultiEditCheckBoxGroup::dataVaries(std::size_t idx) const
{
    const MultiEditCheckBox* box = check(idx);
    return box && box->dataVaries();
}

void MultiEditCheckBoxGroup::reset()
{
    for (const Box& box : boxes()) {
        if (box)
            box->reset();
    }
}

void MultiEditCheckBoxGroup::onEndRead()
{
    _updateCheckAllBox();
}

void MultiEditCheckBoxGroup::setEnabled(std::size_t idx, bool enabled)
{
    if (MultiEditCheckBox* box = at(m_checks, idx).box)
        box->setEnabled(enabled);
}

void MultiEditCheckBoxGroup::setEnabled(bool enabled)
{
    for (const Box& box : boxes()) {
        if (box)
            box->setEnabled(enabled);
    }
}

void MultiEditCheckBoxGroup::setCanBeSaved(const std::string& key)
{
    const QPointer<MultiEditCheckBoxGroup> group(this);
    for (std::size_t i = 0; i < m_checks.size(); ++i) {
        MultiEditCheckBox* box = m_checks[i].box;
        if (!box)
            continue;
        box->setCanBeSaved(
            key + '/' + std::to_string(i),
            [box](vrn::KeyValueStorage& storage) { return saveCheck(*box, storage); },
            [group, i](const vrn::KeyValueStorage& storage) {
                if (group)
                    group->load(i, storage);
            });
    }
}

void MultiEditCheckBoxGroup::load(std::size_t idx, const vrn::KeyValueStorage& storage)
{
    const detail::Alive alive(this);
    const Box loaded = m_checks[idx].box;
    // To the end of this function: when all boxes emit, the one loaded last does not.
    const VRN_QT_SignalBlocker blocker(loaded);
    const auto entry = storage.find(loaded->getStorageId());
    if (entry != storage.end() && boost::any_cast<bool>(&entry->second))
        loaded->setValue(entry->second);
    if (!alive)
        return;

    ++m_checks[idx].timesLoaded;
    if (!areAllLoaded())
        return;
    for (Check& check : m_checks)
        check.timesLoaded = 0;
    for (const Box& box : boxes()) {
        if (box)
            Q_EMIT box->valueChanged();
    }
}

// A round is as many loads as there are boxes. Boxes that were destroyed do not count.
bool MultiEditCheckBoxGroup::areAllLoaded() const
{
    std::size_t loads = 0;
    std::size_t boxCount = 0;
    for (const Check& check : m_checks) {
        if (!check.box)
            continue;
        loads += check.timesLoaded;
        ++boxCount;
    }
    return loads >= boxCount;
}

std::size_t MultiEditCheckBoxGroup::lastIndex() const
{
    VRN_ASSERT(!m_checks.empty());
    return size() - 1;
}

void MultiEditCheckBoxGroup::onClickedAny()
{
    const detail::Alive alive(this);
    _updateCheckAllBox();
    if (alive)
        Q_EMIT valueChanged();
}

void MultiEditCheckBoxGroup::onClickedToggleAll()
{
    const detail::Alive alive(this);
    const bool checked = m_toggleAll->isChecked();
    for (const Box& box : boxes()) {
        if (!box || !box->isEnabled())
            continue;
        const Muted muted(box);
        box->setChecked(checked);
    }
    if (alive)
        Q_EMIT valueChanged();
}

// "All" is read as if the boxes were the objects of a selection.
void MultiEditCheckBoxGroup::_updateCheckAllBox()
{
    VRN_ASSERT(m_toggleAll);
    if (!m_toggleAll)
        return;
    const detail::Alive alive(this);
    const std::deque<Box> boxes = this->boxes();
    const Muted muted(m_toggleAll);
    // It is null only later: a slot of a box may destroy "All".
    // cppcheck-suppress nullPointerRedundantCheck
    m_toggleAll->reset();
    for (const Box& box : boxes) {
        if (!alive || !m_toggleAll || m_toggleAll->dataVaries())
            return;
        if (!box || !box->isEnabled())
            continue;
        // A value other than the one shown makes "All" vary, unless it is the first one
        // read: if the first box varies, "All" shows checked.
        if (box->dataVaries()) {
            m_toggleAll->readValue(!m_toggleAll->isChecked());
            break;
        }
        m_toggleAll->readValue(box->isChecked());
    }
}

MultiEditCheckBox* MultiEditCheckBoxGroup::check(std::size_t idx) const
{
    VRN_ASSERT_MESSAGE(idx < m_checks.size(), "index out of bounds")
    ("idx", idx)("m_checks.size()", m_checks.size());
    MultiEditCheckBox* box = at(m_checks, idx).box;
    VRN_ASSERT(box);
    return box;
}

// A copy: a slot may destroy this group or its boxes.
std::deque<MultiEditCheckBoxGroup::Box> MultiEditCheckBoxGroup::boxes() const
{
    std::deque<Box> boxes;
    for (const Check& check : m_checks)
        boxes.push_back(check.box);
    return boxes;
}

} // namespace vrn::qt
