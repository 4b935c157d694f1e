#include <vrn/qt/multi_edit_check_box_group.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/connect.h>
#include <vrn/companion_qt/signal_blocker.h>

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
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (labels[i].isEmpty()) {
            layouter.onAdd(new QWidget(parent));
            continue;
        }
        auto* check = MultiEditCheckBox::create(labels[i], parent);
        layouter.onAdd(check);
        vrn_connect(
            check, &MultiEditCheckBox::valueChanged, this, &MultiEditCheckBoxGroup::onClickedAny);
        m_checks.emplace_back(check);
        if (i < tooltips.size())
            check->setToolTip(tooltips[i]);
    }
    m_toggleAll = MultiEditCheckBox::create(tr("All"), parent);
    layouter.onAdd(m_toggleAll);
    vrn_connect(m_toggleAll.data(), &MultiEditCheckBox::valueChanged, this,
        &MultiEditCheckBoxGroup::onClickedToggleAll);
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
    // A copy, here and below: a slot may destroy this group or its boxes.
    const auto checks = m_checks;
    for (const Check& box : checks) {
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
    if (MultiEditCheckBox* box = at(m_checks, idx))
        box->setEnabled(enabled);
}

void MultiEditCheckBoxGroup::setEnabled(bool enabled)
{
    // A box gives its focus away by this, which somebody may hear of.
    const auto checks = m_checks;
    for (const Check& box : checks) {
        if (box)
            box->setEnabled(enabled);
    }
}

void MultiEditCheckBoxGroup::setCanBeSaved(const std::string& key)
{
    const QPointer<MultiEditCheckBoxGroup> group(this);
    for (std::size_t i = 0; i < m_checks.size(); ++i) {
        MultiEditCheckBox* box = m_checks[i];
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
    const Check loaded = m_checks[idx];
    // To the end of this function: when all boxes emit, the last one does not.
    const VRN_QT_SignalBlocker blocker(loaded);
    const auto entry = storage.find(loaded->getStorageId());
    if (entry != storage.end() && boost::any_cast<bool>(&entry->second))
        loaded->setValue(entry->second);

    if (++m_loadedCount != size())
        return;
    m_loadedCount = 0;
    const auto checks = m_checks;
    for (const Check& box : checks) {
        if (box)
            Q_EMIT box->valueChanged();
    }
}

std::size_t MultiEditCheckBoxGroup::lastIndex() const
{
    VRN_ASSERT(!m_checks.empty());
    return size() - 1;
}

void MultiEditCheckBoxGroup::onClickedAny()
{
    _updateCheckAllBox();
    Q_EMIT valueChanged();
}

void MultiEditCheckBoxGroup::onClickedToggleAll()
{
    const QPointer<MultiEditCheckBoxGroup> alive(this);
    const bool checked = m_toggleAll->isChecked();
    const auto checks = m_checks;
    for (const Check& box : checks) {
        if (!box || !box->isEnabled())
            continue;
        box->suspendValueChangedSignal();
        box->setChecked(checked);
        if (box)
            box->resumeValueChangedSignal();
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
    m_toggleAll->suspendValueChangedSignal();
    m_toggleAll->reset();
    for (const Check& box : m_checks) {
        if (!box || !box->isEnabled())
            continue;
        // What "All" does not show makes it vary, unless nothing was read before:
        // when the very first box varies, "All" shows checked.
        if (box->dataVaries()) {
            m_toggleAll->readValue(!m_toggleAll->isChecked());
            break;
        }
        m_toggleAll->readValue(box->isChecked());
        if (m_toggleAll->dataVaries())
            break;
    }
    m_toggleAll->resumeValueChangedSignal();
}

MultiEditCheckBox* MultiEditCheckBoxGroup::check(std::size_t idx) const
{
    VRN_ASSERT_MESSAGE(idx < m_checks.size(), "index out of bounds")
    ("idx", idx)("m_checks.size()", m_checks.size());
    MultiEditCheckBox* box = at(m_checks, idx);
    VRN_ASSERT(box);
    return box;
}

} // namespace vrn::qt
