#include <vrn/qt/simple_radio_button_group.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/connect.h>
#include <vrn/qt/layouters.h>

#include <QButtonGroup>
#include <QGroupBox>
#include <QPointer>
#include <QRadioButton>
#include <QScopeGuard>
#include <QVBoxLayout>

#include "controls/choices/tab_stop_p.h"
#include "controls/parts/alive_p.h"
#include "controls/parts/mnemonic_p.h"
#include "controls/selection/varies_accessible_p.h"

#include <algorithm>
#include <vector>

namespace vrn::qt {

SimpleRadioButtonGroup* SimpleRadioButtonGroup::create(const QString& title,
    const NamedValueList& values, bool (*const& equalFn)(const boost::any&, const boost::any&),
    const boost::function<bool(const boost::any&, const boost::any&)>& lessFn, QWidget* parent,
    ILayouter* layouter, bool useGroupBox, bool useButtonGroup)
{
    VRN_ASSERT(parent);
    VRN_ASSERT(!values.empty());
    VRN_ASSERT(equalFn);
    VRN_ASSERT(lessFn);
    return new SimpleRadioButtonGroup(
        title, values, equalFn, lessFn, parent, layouter, useGroupBox, useButtonGroup);
}

SimpleRadioButtonGroup::SimpleRadioButtonGroup(const QString& title, const NamedValueList& values,
    EqualFunction equalFn, const LessFunction& lessFn, QWidget* parent, ILayouter* layouter,
    bool useGroupBox, bool useButtonGroup)
    : QWidget(parent)
    , m_equalFn(equalFn)
    , m_lessFn(lessFn)
    , m_values(values)
    , m_value2button(lessFn)
    , m_tabStop(std::make_unique<detail::TabStop>())
    , m_listener(std::make_unique<QObject>())
{
    VRN_ASSERT(!m_values.empty());
    // Before the buttons are made: a screen reader may ask for the widget around them.
    detail::installVariesAccessible();
    setAccessibleName(detail::withoutMnemonic(title));

    if (!layouter) {
        m_ownedLayouter = std::make_unique<VBoxLayouter>();
        layouter = m_ownedLayouter.get();
    }
    QVBoxLayout* layout = nullptr;
    if (useGroupBox) {
        layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        m_groupBox = new QGroupBox(title, this);
        layouter->onCreate(m_groupBox);
    }
    QButtonGroup* buttonGroup = useButtonGroup ? new QButtonGroup(this) : nullptr;

    // If a layouter or an order throws, no button is left in a widget of the application.
    std::vector<QPointer<QRadioButton>> buttons;
    auto unlessFinished = qScopeGuard([&buttons] {
        for (const QPointer<QRadioButton>& button : buttons)
            delete button;
    });
    for (const auto& [name, value] : m_values) {
        auto* button = new QRadioButton(
            name, m_groupBox ? static_cast<QWidget*>(m_groupBox) : this);
        buttons.emplace_back(button);
        layouter->onAdd(button);
        if (buttonGroup)
            buttonGroup->addButton(button, -1);
        m_tabStop->add(button);
        // Without an order the map cannot even be searched.
        if (m_lessFn)
            m_value2button[value] = button;
        m_button2value[button] = value;
        // The layouter may have put the button into a widget that is destroyed before this.
        vrn_connect(
            button, &QObject::destroyed, m_listener.get(), [this, button] { forget(button); });
    }

    if (useGroupBox) {
        layouter->onFinish();
        layout->addWidget(m_groupBox);
    }
    unlessFinished.dismiss();
}

SimpleRadioButtonGroup::~SimpleRadioButtonGroup()
{
    m_listener.reset();
    m_tabStop.reset();
    detail::disposeOf(m_groupBox);
}

QWidget* SimpleRadioButtonGroup::buttonBox() const
{
    return m_groupBox;
}

void SimpleRadioButtonGroup::updateTabStop()
{
    m_tabStop->update();
}

boost::any SimpleRadioButtonGroup::getSelectedValue() const
{
    return selectedValue();
}

const boost::any& SimpleRadioButtonGroup::selectedValue() const
{
    for (auto it = m_button2value.begin(); it != m_button2value.end(); ++it) {
        VRN_ASSERT(it->first);
        if (it->first && it->first->isChecked())
            return it->second;
    }
    VRN_ASSERT_MESSAGE(false, "no button checked - returning default value");
    return firstValue();
}

void SimpleRadioButtonGroup::setSelected(const boost::any& value)
{
    const detail::Alive alive(this, m_groupBox);
    if (QRadioButton* button = buttonOf(value))
        button->setChecked(true);
}

void SimpleRadioButtonGroup::setValueEnabled(const boost::any& value, bool enabled)
{
    const detail::Alive alive(this, m_groupBox);
    if (QRadioButton* button = buttonOf(value))
        button->setEnabled(enabled);
}

void SimpleRadioButtonGroup::setValuesEnabled(bool enabled)
{
    // A button that is disabled loses the focus, and a slot that is told so may destroy
    // this group.
    const detail::Alive alive(this, m_groupBox);
    std::vector<QPointer<QRadioButton>> buttons;
    for (auto it = m_value2button.begin(); it != m_value2button.end(); ++it) {
        VRN_ASSERT(it->second);
        buttons.emplace_back(it->second);
    }
    for (const auto& button : buttons) {
        if (button)
            button->setEnabled(enabled);
    }
}

const boost::any& SimpleRadioButtonGroup::firstValue() const
{
    static const boost::any none;
    return m_values.empty() ? none : m_values.front().second;
}

// Reports a value without a button and returns null.
QRadioButton* SimpleRadioButtonGroup::buttonOf(const boost::any& value) const
{
    const auto it = m_value2button.find(value);
    VRN_ASSERT_MESSAGE(it != m_value2button.end(), "value key not found");
    if (it == m_value2button.end())
        return nullptr;
    VRN_ASSERT(it->second);
    return it->second;
}

void SimpleRadioButtonGroup::forget(QRadioButton* button)
{
    m_button2value.erase(button);
    const auto isOfButton = [button](const auto& entry) { return entry.second == button; };
    const auto it = std::find_if(m_value2button.begin(), m_value2button.end(), isOfButton);
    if (it != m_value2button.end())
        m_value2button.erase(it);
}

} // namespace vrn::qt
