#include <vrn/qt/multi_edit_control_base.h>

namespace vrn::qt {

MultiEditControlBase::MultiEditControlBase() = default;
MultiEditControlBase::~MultiEditControlBase() = default;

void MultiEditControlBase::setCanBeSaved(const std::string& id,
    boost::function<bool(vrn::KeyValueStorage&)> saver,
    boost::function<void(const vrn::KeyValueStorage&)> loader)
{
    m_canBeSaved = true;
    m_storageId = id;
    m_saver.swap(saver);
    m_loader.swap(loader);
}

bool MultiEditControlBase::save(vrn::KeyValueStorage& storage) const
{
    // A copy: the function may replace itself or destroy the control.
    const auto saver = m_saver;
    return saver && saver(storage);
}

void MultiEditControlBase::load(const vrn::KeyValueStorage& storage)
{
    const auto loader = m_loader;
    if (loader)
        loader(storage);
}

} // namespace vrn::qt
