#include <vrn/qt/multi_edit_radio_button_group.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/connect.h>

#include <QButtonGroup>
#include <QRadioButton>

#include "controls/parts/alive_p.h"
#include "controls/selection/varies_tool_tip_p.h"

namespace vrn::qt {

MultiEditRadioButtonGroup* MultiEditRadioButtonGroup::create(const QString& title,
    const NamedValueList& values, bool (*const& equalFn)(const boost::any&, const boost::any&),
    const boost::function<bool(const boost::any&, const boost::any&)>& lessFn, QWidget* parent,
    ILayouter* layouter, bool useGroupBox, bool useButtonGroup)
{
    VRN_ASSERT(!values.empty());
    VRN_ASSERT(lessFn);
    VRN_ASSERT(equalFn);
    VRN_ASSERT(parent);
    auto* group = new MultiEditRadioButtonGroup(
        title, values, equalFn, lessFn, parent, layouter, useGroupBox, useButtonGroup);
    for (const auto& entry : group->m_button2value)
        group->onButtonCreated(entry.first);
    return group;
}

MultiEditRadioButtonGroup::MultiEditRadioButtonGroup(const QString& title,
    const NamedValueList& values, EqualFunction equalFn, const LessFunction& lessFn,
    QWidget* parent, ILayouter* layouter, bool useGroupBox, bool useButtonGroup)
    : SimpleRadioButtonGroup(
        title, values, equalFn, lessFn, parent, layouter, useGroupBox, useButtonGroup)
    , m_toolTip(new detail::VariesToolTip(this))
{
    MultiEditRadioButtonGroup::reset();
}

MultiEditRadioButtonGroup::~MultiEditRadioButtonGroup() = default;

void MultiEditRadioButtonGroup::onButtonCreated(QRadioButton* button)
{
    vrn_connect(button, &QRadioButton::clicked, this, &MultiEditRadioButtonGroup::onClicked);
    m_toolTip->answerFor(button);
}

void MultiEditRadioButtonGroup::onClicked(bool /*checked*/)
{
    const detail::Alive alive(this, buttonBox());
    m_state.setCommon();
    Q_EMIT valueChanged();
}

void MultiEditRadioButtonGroup::setValue(const boost::any& value)
{
    const detail::Alive alive(this, buttonBox());
    m_state.setCommon();
    setAutoExclusive();
    setSelected(value);
    if (alive)
        Q_EMIT valueChanged();
}

// A checked radio button cannot be unchecked while it is exclusive.
void MultiEditRadioButtonGroup::forceVaries()
{
    m_state.setVaries();
    for (const auto& entry : m_button2value) {
        QRadioButton* button = entry.first;
        button->blockSignals(true);
        const bool wasAutoExclusive = button->autoExclusive();
        button->setAutoExclusive(false);
        QButtonGroup* group = button->group();
        const bool wasExclusive = group && group->exclusive();
        if (group)
            group->setExclusive(false);
        button->setChecked(false);
        button->setAutoExclusive(wasAutoExclusive);
        if (group)
            group->setExclusive(wasExclusive);
        button->blockSignals(false);
    }
    updateTabStop();
}

void MultiEditRadioButtonGroup::reset()
{
    const detail::Alive alive(this, buttonBox());
    m_state.reset();
    setValue(firstValue());
    if (!alive)
        return;
    setEnabled(true);
    setAutoExclusive();
}

void MultiEditRadioButtonGroup::readValue(const boost::any& value)
{
    if (m_state.varies())
        return;
    if (m_state.isFresh()) {
        const detail::Alive alive(this, buttonBox());
        setValue(value);
        if (alive)
            m_state.setRead();
        return;
    }
    const detail::Alive alive(this);
    if (m_equalFn && m_equalFn(value, selectedValue()))
        return;
    if (!alive)
        return;
    forceVaries();
    if (alive)
        Q_EMIT valueChanged();
}

boost::any MultiEditRadioButtonGroup::getCurrentValue() const
{
    return dataVaries() ? boost::any() : getValue();
}

void MultiEditRadioButtonGroup::setAutoExclusive()
{
    for (const auto& entry : m_button2value)
        entry.first->setAutoExclusive(true);
}

} // namespace vrn::qt
