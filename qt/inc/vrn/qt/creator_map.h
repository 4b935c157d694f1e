#pragma once

#include <boost/functional/hash.hpp>

#include <functional>
#include <stdexcept>
#include <unordered_map>
#include <utility>

namespace vrn::qt::detail {

template <typename Key, typename Function>
class CreatorMap;

/// Functions that make something from a description, by key. Shared by the factories.
template <typename Key, typename Product, typename Description>
class CreatorMap<Key, Product(const Description&)>
{
public:
    using Creator = std::function<Product(const Description&)>;

    void add(const Key& key, Creator creator)
    {
        if (m_creators.size() == m_creators.max_size())
            throw std::length_error("list<T> too long");
        if (!m_creators.emplace(key, std::move(creator)).second)
            throw std::logic_error("duplicate key");
    }

    Product create(const Key& key, const Description& description) const
    {
        const auto found = m_creators.find(key);
        if (found == m_creators.end())
            throw std::out_of_range("invalid unordered_map<K, T> key");
        // A creator may assign to its factory, or destroy it.
        const Creator creator = found->second;
        return creator(description);
    }

    bool exists(const Key& key) const { return m_creators.count(key) != 0; }

private:
    std::unordered_map<Key, Creator, boost::hash<Key>> m_creators;
};

} // namespace vrn::qt::detail
