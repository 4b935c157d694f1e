#include <vrn/qt/multi_edit_check_box.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/connect.h>
#include <vrn/companion_qt/signal_blocker.h>

#include <QCheckBox>

#include "controls/parts/alive_p.h"
#include "controls/selection/varies_tool_tip_p.h"

namespace vrn::qt {

MultiEditCheckBox* MultiEditCheckBox::create(const QString& label, QWidget* parent)
{
    VRN_ASSERT(parent);
    return new MultiEditCheckBox(label, parent);
}

MultiEditCheckBox::MultiEditCheckBox(const QString& label, QWidget* parent)
    : SimpleCheckBox(label, parent)
{
    vrn_connect(m_check, &QCheckBox::stateChanged, this, &MultiEditCheckBox::onClicked);
    new detail::VariesToolTip(this);
}

MultiEditCheckBox::~MultiEditCheckBox() = default;

// A change of state from code emits twice. The signal of the inner box comes back here
// through onClicked() and emits, and then the outer call emits.
void MultiEditCheckBox::setChecked(bool checked)
{
    const detail::Alive alive(this, m_check);
    m_state.setCommon();
    m_check->setTristate(false);
    m_check->setChecked(checked);
    if (alive && m_emitValueChanged)
        Q_EMIT valueChanged();
}

void MultiEditCheckBox::onClicked(int state)
{
    const detail::Alive alive(this, m_check);
    m_state.setCommon();
    setChecked(state == Qt::Checked);
}

void MultiEditCheckBox::forceVaries()
{
    m_state.setVaries();
    m_check->setTristate(true);
    const VRN_QT_SignalBlocker blocker(m_check);
    m_check->setCheckState(Qt::PartiallyChecked);
}

void MultiEditCheckBox::reset()
{
    const detail::Alive alive(this, m_check);
    m_check->setTristate(false);
    // This may emit, and the slots then find a control that is not fresh yet.
    m_check->setChecked(false);
    if (alive)
        m_state.reset();
}

void MultiEditCheckBox::readValue(const boost::any& value)
{
    const VRN_QT_SignalBlocker blocker(isLoading() ? this : nullptr);
    const bool* checked = boost::any_cast<bool>(&value);
    if (!checked)
        return;
    if (m_state.isFresh()) {
        // Not setChecked() of this class: a change emits once, as a click does, and a
        // value that changes nothing emits nothing.
        const detail::Alive alive(this, m_check);
        m_check->setChecked(*checked);
        if (alive)
            m_state.setRead();
    } else if (!m_state.varies() && *checked != m_check->isChecked()) {
        forceVaries();
    }
}

void MultiEditCheckBox::setValue(const boost::any& value)
{
    const bool* v = boost::any_cast<bool>(&value);
    VRN_ASSERT(v);
    if (!v)
        return;
    const VRN_QT_SignalBlocker blocker(isLoading() ? this : nullptr);
    m_state.setCommon();
    setChecked(*v);
}

boost::any MultiEditCheckBox::getCurrentValue() const
{
    return dataVaries() ? boost::any() : boost::any(isChecked());
}

} // namespace vrn::qt
