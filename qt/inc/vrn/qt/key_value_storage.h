#pragma once

#include <boost/any.hpp>
#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <map>
#include <string>

namespace vrn {

/// Values by key, in the order of the keys. Controls are saved to it and loaded
/// from it. Copies share one map. The map lives in memory only; writing it to a
/// file is up to the application.
struct KeyValueStorage
{
    using Map = std::map<std::string, boost::any>;
    using const_iterator = Map::const_iterator;

    KeyValueStorage()
        : m_map(boost::make_shared<Map>())
    {}
    // No moving: a storage that was moved from would have no map.
    KeyValueStorage(const KeyValueStorage&) = default;
    KeyValueStorage& operator=(const KeyValueStorage&) = default;

    const_iterator begin() const { return m_map->begin(); }
    const_iterator end() const { return m_map->end(); }
    bool empty() const { return m_map->empty(); }
    std::size_t size() const { return m_map->size(); }

    /// The entry of `key`, or end(). Creates no entry.
    const_iterator find(const std::string& key) const { return m_map->find(key); }

    /// The value of `key`; a missing entry is created, with an empty value.
    boost::any& operator[](const std::string& key) { return (*m_map)[key]; }

    /// Removes the entry of `key`, if there is one.
    void erase(const std::string& key) { m_map->erase(key); }
    void clear() { m_map->clear(); }

private:
    boost::shared_ptr<Map> m_map;
};

} // namespace vrn
