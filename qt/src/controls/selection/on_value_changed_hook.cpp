#include <vrn/qt/on_value_changed_hook.h>

#include <vrn/assert/smart_assert.h>

#include <utility>

namespace vrn::qt {

OnValueChangedHook::OnValueChangedHook(QObject* sender, boost::function<void()>&& fn)
    : m_fn(std::move(fn))
{
    // By name, so that the sender may be of any class that has the signal.
    const bool hasSignal = sender && sender->metaObject()->indexOfSignal("valueChanged()") != -1;
    VRN_ASSERT(hasSignal);
    if (hasSignal)
        connect(sender, SIGNAL(valueChanged()), this, SLOT(onValueChanged()));
}

OnValueChangedHook::~OnValueChangedHook() = default;

void OnValueChangedHook::onValueChanged()
{
    // A copy: the function may destroy this hook and so itself.
    const auto fn = m_fn;
    fn();
}

} // namespace vrn::qt
