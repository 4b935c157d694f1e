#include <vrn/qt/simple_check_box.h>

#include <vrn/assert/smart_assert.h>

#include <QCheckBox>
#include <QHBoxLayout>

#include "controls/parts/alive_p.h"
#include "controls/selection/varies_accessible_p.h"

namespace vrn::qt {

SimpleCheckBox* SimpleCheckBox::create(const QString& label, QWidget* parent)
{
    VRN_ASSERT(parent);
    return new SimpleCheckBox(label, parent);
}

SimpleCheckBox::SimpleCheckBox(const QString& label, QWidget* parent)
    : QWidget(parent)
{
    // Before the box is made: a screen reader may ask for it during its construction.
    detail::installVariesAccessible();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_check = new QCheckBox(label, this);
    layout->addWidget(m_check);
    setFocusProxy(m_check);
    setFocusPolicy(m_check->focusPolicy());
}

SimpleCheckBox::~SimpleCheckBox()
{
    detail::disposeOf(m_check);
}

bool SimpleCheckBox::isChecked() const
{
    return m_check->isChecked();
}

void SimpleCheckBox::setChecked(bool checked)
{
    const detail::Alive alive(this, m_check);
    m_check->setChecked(checked);
}

} // namespace vrn::qt
