#include <vrn/qt/multi_edit_check_box.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/connect.h>
#include <vrn/companion_qt/signal_blocker.h>

#include <QCheckBox>
#include <QPointer>
#include <QScopeGuard>

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
}

MultiEditCheckBox::~MultiEditCheckBox()
{
    // After its signal a QCheckBox goes on with itself. One that is destroyed
    // with this control by a slot has to stay until then.
    if (m_checkIsBusy) {
        m_check->setParent(nullptr);
        m_check->deleteLater();
    }
}

// From code, a change of state emits twice: the box inside tells of it, which
// comes back here through onClicked() and emits, and then the outer call does.
void MultiEditCheckBox::setChecked(bool checked)
{
    const QPointer<MultiEditCheckBox> alive(this);
    m_varies = false;
    m_check->setTristate(false);
    m_check->setChecked(checked);
    if (alive && m_emitValueChanged)
        Q_EMIT valueChanged();
}

void MultiEditCheckBox::onClicked(int state)
{
    const QPointer<MultiEditCheckBox> alive(this);
    // Also when a slot throws.
    const auto endOfSignal = qScopeGuard([&, wasBusy = m_checkIsBusy] {
        if (alive)
            m_checkIsBusy = wasBusy;
    });
    m_checkIsBusy = true;
    m_varies = false;
    setChecked(state == Qt::Checked);
}

void MultiEditCheckBox::forceVaries()
{
    m_varies = true;
    m_fresh = false;
    m_check->setTristate(true);
    const VRN_QT_SignalBlocker blocker(m_check);
    m_check->setCheckState(Qt::PartiallyChecked);
}

void MultiEditCheckBox::reset()
{
    const QPointer<MultiEditCheckBox> alive(this);
    m_check->setTristate(false);
    // The slots of the signal that this may emit do not find a fresh control yet.
    m_check->setChecked(false);
    if (!alive)
        return;
    m_varies = false;
    m_fresh = true;
}

void MultiEditCheckBox::readValue(const boost::any& value)
{
    const VRN_QT_SignalBlocker blocker(isLoading() ? this : nullptr);
    const bool* checked = boost::any_cast<bool>(&value);
    if (!checked)
        return;
    if (m_fresh) {
        // Not the own setChecked(): a change is told once, as that of a click is, and
        // no change is not told at all.
        const QPointer<MultiEditCheckBox> alive(this);
        m_check->setChecked(*checked);
        if (alive)
            m_fresh = false;
    } else if (!m_varies && *checked != m_check->isChecked()) {
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
    m_varies = false;
    setChecked(*v);
}

boost::any MultiEditCheckBox::getCurrentValue() const
{
    return m_varies ? boost::any() : boost::any(isChecked());
}

} // namespace vrn::qt
