#include <vrn/qt/multi_edit_group_box.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/connect.h>

#include <QPointer>

#include "controls/selection/varies_accessible_p.h"

namespace vrn::qt {

MultiEditGroupBox* MultiEditGroupBox::create(const QString& label, QWidget* parent)
{
    VRN_ASSERT(parent);
    return new MultiEditGroupBox(label, parent);
}

// The title is set here rather than by the base: a screen reader is told of it,
// and would take this for any group box as long as the base is being made.
MultiEditGroupBox::MultiEditGroupBox(const QString& label, QWidget* parent)
    : QGroupBox(parent)
{
    detail::installVariesAccessible();
    setTitle(label);
    setCheckable(true);
    setChecked(false);
    vrn_connect(this, &QGroupBox::clicked, this, &MultiEditGroupBox::onClicked);
}

MultiEditGroupBox::~MultiEditGroupBox() = default;

void MultiEditGroupBox::onClicked(bool /*checked*/)
{
    m_varies = false;
    if (m_emitValueChanged)
        Q_EMIT valueChanged();
}

void MultiEditGroupBox::forceVaries()
{
    m_varies = true;
    m_fresh = false;
    setEnabled(false);
}

void MultiEditGroupBox::reset()
{
    const QPointer<MultiEditGroupBox> alive(this);
    setChecked(false);
    if (!alive)
        return;
    setEnabled(true);
    m_varies = false;
    m_fresh = true;
}

void MultiEditGroupBox::readValue(const boost::any& value)
{
    const bool* checked = boost::any_cast<bool>(&value);
    if (!checked)
        return;
    if (m_fresh) {
        const QPointer<MultiEditGroupBox> alive(this);
        setChecked(*checked);
        if (alive)
            m_fresh = false;
    } else if (!m_varies && *checked != isChecked()) {
        forceVaries();
    }
}

void MultiEditGroupBox::setValue(const boost::any& value)
{
    const bool* checked = boost::any_cast<bool>(&value);
    VRN_ASSERT(checked);
    if (!checked)
        return;
    const QPointer<MultiEditGroupBox> alive(this);
    setChecked(*checked);
    if (!alive)
        return;
    // Disabled it stays: only reset() enables the box.
    m_varies = false;
    if (m_emitValueChanged)
        Q_EMIT valueChanged();
}

boost::any MultiEditGroupBox::getCurrentValue() const
{
    return m_varies ? boost::any() : boost::any(isChecked());
}

} // namespace vrn::qt
