#include <vrn/qt/multi_edit_enum_box.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/combo_box.h>
#include <vrn/companion_qt/connect.h>
#include <vrn/companion_qt/signal_blocker.h>
#include <vrn/qt/varies_string.h>

#include "controls/run_both_p.h"

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
    MultiEditEnumBox::onComboReplaced();
}

MultiEditEnumBox::~MultiEditEnumBox() = default;

void MultiEditEnumBox::onComboReplaced()
{
    // The second connection of this signal: one pick makes valueChanged() come
    // twice, and applications count on it.
    vrn_connect(&combo(), &QComboBox::textActivated, this, &MultiEditEnumBox::onItemActivated);
    vrn_connect(
        &combo(), &QComboBox::editTextChanged, this, &MultiEditEnumBox::onLineEditTextChanged);
    vrn_connect(
        &combo(), QOverload<int>::of(&QComboBox::activated), this, &SimpleEnumBox::activated);
}

void MultiEditEnumBox::reset()
{
    m_varies = false;
    m_fresh = true;
    combo().removeVarious();
}

void MultiEditEnumBox::readValue(const boost::any& value)
{
    if (m_fresh) {
        const QPointer<MultiEditEnumBox> alive(this);
        detail::runBoth([&] { selectByValue(value); },
            [&] {
                if (alive)
                    m_fresh = false;
            });
        return;
    }
    if (!m_varies && !isSelected(value))
        forceVaries();
}

boost::any MultiEditEnumBox::getCurrentValue() const
{
    return m_varies ? boost::any() : getSelectedValue();
}

void MultiEditEnumBox::setValue(const boost::any& value)
{
    const VRN_QT_SignalBlocker blocker(isLoading() ? this : nullptr);
    selectByValue(value);
}

void MultiEditEnumBox::forceVaries()
{
    m_fresh = false;
    combo().addVarious(true);
    // Last: on its way there an empty list that is editable shows other texts.
    m_varies = true;
}

void MultiEditEnumBox::onSelected()
{
    setCommon();
}

void MultiEditEnumBox::onTextEdited(const QString& text)
{
    if (text != getVariesString())
        return;
    // With this entry current, neither Enter nor leaving is a pick of the text.
    combo().addVarious(true);
    m_varies = true;
}

void MultiEditEnumBox::onItemActivated(const QString& /*text*/)
{
    setCommon();
}

void MultiEditEnumBox::setCommon()
{
    m_varies = false;
    Q_EMIT valueChanged();
}

void MultiEditEnumBox::onLineEditTextChanged()
{
    m_varies = combo().getCurrentId() == VRN_QT4_ComboBox::getVariousId();
}

} // namespace vrn::qt
