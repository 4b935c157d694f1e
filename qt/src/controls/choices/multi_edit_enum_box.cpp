#include <vrn/qt/multi_edit_enum_box.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/combo_box.h>
#include <vrn/companion_qt/connect.h>
#include <vrn/companion_qt/signal_blocker.h>
#include <vrn/qt/varies_string.h>

#include "controls/parts/alive_p.h"
#include "controls/parts/run_both_p.h"
#include "controls/selection/varies_tool_tip_p.h"

namespace vrn::qt {

MultiEditEnumBox* MultiEditEnumBox::create(
    QWidget* parent, const QString& name, bool (*const& eqFn)(const boost::any&, const boost::any&))
{
    VRN_ASSERT(eqFn);
    return eqFn ? new MultiEditEnumBox(parent, name, eqFn) : nullptr;
}

MultiEditEnumBox::MultiEditEnumBox(
    QWidget* parent, const QString& name, bool (*eqFn)(const boost::any&, const boost::any&))
    : SimpleEnumBox(parent, name, eqFn)
{
    VRN_ASSERT(anyEqAvailable());
    // The second connection to this signal: one pick emits valueChanged() twice, and
    // applications rely on it.
    vrn_connect(&combo(), &QComboBox::textActivated, this, &MultiEditEnumBox::onItemActivated);
    vrn_connect(
        &combo(), &QComboBox::editTextChanged, this, &MultiEditEnumBox::onLineEditTextChanged);
    vrn_connect(
        &combo(), QOverload<int>::of(&QComboBox::activated), this, &MultiEditEnumBox::onActivated);
    new detail::VariesToolTip(this);
}

MultiEditEnumBox::~MultiEditEnumBox() = default;

void MultiEditEnumBox::reset()
{
    const detail::Alive alive(this, &combo());
    combo().removeVarious();
    if (alive)
        m_state.reset();
}

void MultiEditEnumBox::readValue(const boost::any& value)
{
    if (m_state.isFresh()) {
        const detail::Alive alive(this, &combo());
        detail::runBoth([&] { selectByValue(value); },
            [&] {
                if (alive)
                    m_state.setRead();
            });
        return;
    }
    if (!m_state.varies() && !isSelected(value))
        forceVaries();
}

boost::any MultiEditEnumBox::getCurrentValue() const
{
    return dataVaries() ? boost::any() : getSelectedValue();
}

void MultiEditEnumBox::setValue(const boost::any& value)
{
    const VRN_QT_SignalBlocker blocker(isLoading() ? this : nullptr);
    selectByValue(value);
}

void MultiEditEnumBox::forceVaries()
{
    const detail::Alive alive(this, &combo());
    m_state.setVaries();
    combo().addVarious(true);
    if (!alive)
        return;
    // Again, because an empty editable list shows other texts on the way there.
    m_state.setVaries();
}

void MultiEditEnumBox::onSelected()
{
    setCommon();
}

void MultiEditEnumBox::onTextEdited(const QString& text)
{
    if (text != getVariesString())
        return;
    // While this entry is current, neither Enter nor a lost focus picks the text.
    const detail::Alive alive(this, &combo());
    combo().addVarious(true);
    if (alive)
        m_state.setVaries();
}

void MultiEditEnumBox::onItemActivated(const QString& /*text*/)
{
    setCommon();
}

void MultiEditEnumBox::onActivated(int index)
{
    const detail::Alive alive(this, &combo());
    Q_EMIT activated(index);
}

void MultiEditEnumBox::setCommon()
{
    const detail::Alive alive(this, &combo());
    m_state.setCommon();
    Q_EMIT valueChanged();
}

void MultiEditEnumBox::onLineEditTextChanged()
{
    if (combo().getCurrentId() == VRN_QT4_ComboBox::getVariousId())
        m_state.setVaries();
    else
        m_state.setCommon();
}

} // namespace vrn::qt
