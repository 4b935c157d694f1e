#pragma once

#include <vrn/qt/creator_map.h>
#include <vrn/qt/hints.h>
#include <vrn/qt/i_validator.h>

#include <functional>
#include <memory>
#include <string>
#include <typeindex>
#include <utility>

namespace vrn::qt {

/// Names a kind of validator by the type of the value that it produces and a sub-name,
/// which is empty for the default kind of a type.
using ValidatorKind = std::pair<std::type_index, std::string>;

/// The kind of validators for values of type T.
template <typename T>
ValidatorKind kindOf(const std::string& subName = std::string())
{
    return {typeid(T), subName};
}

/// Makes validators from hints. A creator is registered under a key and gets the hints of
/// the validator alone: in a whole tree, those below "validator".
///
///     ValidatorFactory<ValidatorKind, Hints> factory;
///     factory.add<double>("ratio", [](const Hints& hints) {
///         return std::make_unique<DoubleEditValidator>(
///             readHint<int>(hints, "precision", 2), 0.0, 1.0, true);
///     });
///     const std::unique_ptr<IValidator> ratio = factory.create(kindOf<double>("ratio"), Hints());
///
/// A copy has the same creators, and what is added to one of them later is not in the other.
/// A factory that has been moved from is empty.
///
/// A creator may add to its factory, assign to it and destroy it.
template <typename Key, typename Hints>
class ValidatorFactory
{
public:
    using Creator = std::function<std::unique_ptr<IValidator>(const Hints&)>;

    ValidatorFactory() = default;
    ~ValidatorFactory() = default;

    ValidatorFactory(const ValidatorFactory& other)
        : m_creators(std::make_shared<Creators>(*other.m_creators))
        , m_first(other.first())
    {}

    // Not noexcept: `other` keeps its map, which becomes empty, and this one needs another.
    // NOLINTNEXTLINE(performance-noexcept-move-constructor)
    ValidatorFactory(ValidatorFactory&& other)
        : m_creators(std::make_shared<Creators>(std::exchange(*other.m_creators, Creators())))
        , m_first(other.first())
    {}

    ValidatorFactory& operator=(const ValidatorFactory& other)
    {
        if (this != &other) {
            *m_creators = Creators(*other.m_creators);
            m_first = other.first();
        }
        return *this;
    }

    // NOLINTNEXTLINE(performance-noexcept-move-constructor): the same
    ValidatorFactory& operator=(ValidatorFactory&& other)
    {
        *m_creators = std::exchange(*other.m_creators, Creators());
        m_first = other.first();
        return *this;
    }

    /// If the key is there already, throws std::logic_error with "duplicate key", and the
    /// first creator stays.
    void add(const Key& key, Creator creator) { m_creators->add(key, std::move(creator)); }

    /// For a key that is a ValidatorKind.
    template <typename T>
    void add(const std::string& subName, Creator creator)
    {
        add(Key(typeid(T), subName), std::move(creator));
    }

    /// What the creator returns, which may be null. An unknown key throws std::out_of_range
    /// with "invalid unordered_map<K, T> key", and an empty creator std::bad_function_call.
    std::unique_ptr<IValidator> create(const Key& key, const Hints& hints) const
    {
        return m_creators->create(key, hints);
    }

    bool exists(const Key& key) const { return m_creators->exists(key); }

protected:
    using Creators = detail::CreatorMap<Key, std::unique_ptr<IValidator>(const Hints&)>;

    /// Shared with no other factory. Creators of the factory may refer to it, weakly.
    std::shared_ptr<Creators> m_creators = std::make_shared<Creators>();

private:
    std::shared_ptr<Creators> first() const { return m_first ? m_first : m_creators; }

    /// Those of the original factory. Copied creators may refer to them.
    std::shared_ptr<Creators> m_first;
};

extern template class VRN_QT2_EXPORT ValidatorFactory<ValidatorKind, Hints>;

} // namespace vrn::qt
