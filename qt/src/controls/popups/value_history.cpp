#include <vrn/qt/value_history.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <utility>

namespace vrn {

ValueHistory::ValueHistory(const std::wstring& key, boost::shared_ptr<IValueHistoryStorage> storage)
    : m_key(key)
    , m_storage(std::move(storage))
{}

boost::shared_ptr<ValueHistory> ValueHistory::create(
    const std::wstring& storageName, const std::wstring& key)
{
    return boost::make_shared<ValueHistory>(key, IValueHistoryStorage::getOrCreate(storageName));
}

void ValueHistory::add(const std::wstring& value)
{
    // The storage may replace this history in its control.
    if (const auto storage = m_storage)
        storage->add(*this, value);
}

std::size_t ValueHistory::get(std::deque<std::wstring>& values) const
{
    const auto storage = m_storage;
    return storage ? storage->get(*this, values) : 0;
}

boost::shared_ptr<IValueHistoryStorage> IValueHistoryStorage::getOrCreate(
    const std::wstring& /*name*/)
{
    static const auto storage = boost::make_shared<ValueHistoryMemoryStorage>();
    return storage;
}

std::size_t ValueHistoryMemoryStorage::get(
    const ValueHistory& history, std::deque<std::wstring>& values)
{
    if (history.key().empty())
        return 0;
    values.clear();
    const auto entry = m_valuesByKey.find(history.key());
    if (entry == m_valuesByKey.end())
        return 0;
    values = entry->second;
    return values.size();
}

void ValueHistoryMemoryStorage::add(const ValueHistory& history, const std::wstring& value)
{
    if (history.key().empty() || value.empty())
        return;
    std::deque<std::wstring>& values = m_valuesByKey[history.key()];
    if (std::find(values.begin(), values.end(), value) != values.end())
        return;
    values.push_front(value);
    while (values.size() > m_limit)
        values.pop_back();
}

} // namespace vrn
