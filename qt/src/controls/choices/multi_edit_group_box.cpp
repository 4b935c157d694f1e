#include <vrn/qt/multi_edit_group_box.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/connect.h>

#include "controls/parts/alive_p.h"
#include "controls/selection/varies_accessible_p.h"
#include "controls/selection/varies_tool_tip_p.h"

namespace vrn::qt {

MultiEditGroupBox* MultiEditGroupBox::create(const QString& label, QWidget* parent)
{
    VRN_ASSERT(parent);
    return new MultiEditGroupBox(label, parent);
}

// The title is not set by the base class. A screen reader is told of a title, and while
// the base is being constructed it would see an ordinary group box.
MultiEditGroupBox::MultiEditGroupBox(const QString& label, QWidget* parent)
    : QGroupBox(parent)
{
    detail::installVariesAccessible();
    setTitle(label);
    setCheckable(true);
    setChecked(false);
    vrn_connect(this, &QGroupBox::clicked, this, &MultiEditGroupBox::onClicked);
    new detail::VariesToolTip(this);
}

MultiEditGroupBox::~MultiEditGroupBox() = default;

void MultiEditGroupBox::onClicked(bool /*checked*/)
{
    m_state.setCommon();
    if (m_emitValueChanged)
        Q_EMIT valueChanged();
}

void MultiEditGroupBox::forceVaries()
{
    m_state.setVaries();
    setEnabled(false);
}

void MultiEditGroupBox::reset()
{
    const detail::Alive alive(this);
    setChecked(false);
    if (!alive)
        return;
    setEnabled(true);
    if (alive)
        m_state.reset();
}

void MultiEditGroupBox::readValue(const boost::any& value)
{
    const bool* checked = boost::any_cast<bool>(&value);
    if (!checked)
        return;
    if (m_state.isFresh()) {
        const detail::Alive alive(this);
        setChecked(*checked);
        if (alive)
            m_state.setRead();
    } else if (!m_state.varies() && *checked != isChecked()) {
        forceVaries();
    }
}

void MultiEditGroupBox::setValue(const boost::any& value)
{
    const bool* checked = boost::any_cast<bool>(&value);
    VRN_ASSERT(checked);
    if (!checked)
        return;
    const detail::Alive alive(this);
    setChecked(*checked);
    if (!alive)
        return;
    // A disabled box stays disabled; only reset() enables it.
    m_state.setCommon();
    if (m_emitValueChanged)
        Q_EMIT valueChanged();
}

boost::any MultiEditGroupBox::getCurrentValue() const
{
    return dataVaries() ? boost::any() : boost::any(isChecked());
}

} // namespace vrn::qt
