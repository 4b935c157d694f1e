#pragma once

#include <vrn/qt/property_values.h>

#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include <boost/optional.hpp>

namespace vrn::qt::detail {

/// What a member of the type M is to a field. Nothing is converted but the three types of
/// texts.
template <typename M>
struct Stored
{
    using Value = std::conditional_t<
        std::is_same_v<M, std::string> || std::is_same_v<M, std::wstring>, QString, M>;
    // A specialisation has a base, but this has none.
    // cppcheck-suppress duplInheritedMember
    static constexpr bool isOptional = false;

    static bool hasValue(const M&) { return true; }
    static bool isSame(const M& a, const M& b) { return detail::isSame(a, b); }
    static decltype(auto) value(const M& raw)
    {
        if constexpr (std::is_same_v<M, std::string> || std::is_same_v<M, std::wstring>)
            return textFrom(raw);
        else
            return static_cast<const M&>(raw);
    }
    /// A null pointer clears an optional member, and leaves any other as it is.
    static void assign(M& raw, const Value* value)
    {
        if (!value)
            return;
        if constexpr (std::is_same_v<M, std::string>)
            raw = utf8From(*value);
        else if constexpr (std::is_same_v<M, std::wstring>)
            raw = wideFrom(*value);
        else
            raw = *value;
    }
};

template <typename Optional, typename M>
struct StoredOptional
{
    using Value = typename Stored<M>::Value;
    static constexpr bool isOptional = true;

    static bool hasValue(const Optional& raw) { return bool(raw); }
    static bool isSame(const Optional& a, const Optional& b)
    {
        return bool(a) == bool(b) && (!a || Stored<M>::isSame(*a, *b));
    }
    static decltype(auto) value(const Optional& raw) { return Stored<M>::value(*raw); }
    static void assign(Optional& raw, const Value* value)
    {
        if (!value) {
            raw = Optional();
            return;
        }
        M inner{};
        Stored<M>::assign(inner, value);
        raw = std::move(inner);
    }
};

template <typename M>
struct Stored<std::optional<M>> : StoredOptional<std::optional<M>, M>
{};
template <typename M>
struct Stored<boost::optional<M>> : StoredOptional<boost::optional<M>, M>
{};

/// Places of objects among the ids that are read: all from `first` on, or those listed.
struct Places
{
    std::size_t first = 0;
    std::size_t count = 0;
    const std::size_t* each = nullptr;

    std::size_t operator[](std::size_t i) const { return each ? each[i] : first + i; }
};

/// What the values of some objects have in common.
class VRN_QT2_EXPORT ValueSummary
{
public:
    virtual ~ValueSummary();

    ValueSummary(const ValueSummary&) = delete;
    ValueSummary& operator=(const ValueSummary&) = delete;

    virtual const std::type_info& type() const = 0;
    /// Returns false if `value` has another type. An empty one means that an object has no value.
    virtual bool put(const boost::any& value) = 0;
    virtual bool put(const QVariant& value) = 0;
    virtual boost::any common() const = 0;
    /// Two of varying values. Empty if only some objects have one.
    virtual std::pair<boost::any, boost::any> different() const = 0;

    bool hasObject = false;
    bool hasValue = false;
    bool varies = false;

protected:
    ValueSummary() = default;

    /// Whether the value is the first one, which is then the common one.
    bool isFirst(bool valueIsThere)
    {
        if (hasObject) {
            varies = varies || hasValue != valueIsThere;
            return false;
        }
        hasObject = true;
        hasValue = valueIsThere;
        return valueIsThere;
    }
};

template <typename V>
class TypedSummary final : public ValueSummary
{
public:
    const std::type_info& type() const override { return typeid(V); }

    void put(const V* value)
    {
        if (isFirst(value != nullptr))
            m_common = *value;
        else if (value && !varies && !isSame(m_common, *value))
            setOther(*value);
    }
    bool put(const boost::any& value) override
    {
        const V* typed = boost::any_cast<V>(&value);
        if (!typed && !value.empty())
            return false;
        put(typed);
        return true;
    }
    bool put(const QVariant& value) override
    {
        const std::optional<V> typed = value.isNull() ? std::nullopt
                                                      : ValueTraits<V>::fromVariant(value);
        if (!typed && !value.isNull())
            return false;
        put(typed ? &*typed : nullptr);
        return true;
    }
    boost::any common() const override
    {
        return hasValue && !varies ? boost::any(m_common) : boost::any();
    }
    std::pair<boost::any, boost::any> different() const override
    {
        if (!m_other)
            return {};
        return {boost::any(m_common), boost::any(*m_other)};
    }

    /// `get` gives the member of each object. Members are compared as they are, and only the
    /// first one is converted.
    template <typename Get>
    void putEach(const Places& places, const Get& get)
    {
        using Raw = std::decay_t<decltype(get(0))>;
        if (places.count == 0 || varies)
            return;
        decltype(auto) first = get(0);
        if (Stored<Raw>::hasValue(first)) {
            const V value = Stored<Raw>::value(first);
            put(&value);
        } else {
            put(static_cast<const V*>(nullptr));
        }
        std::size_t i = 1;
        while (i < places.count && Stored<Raw>::isSame(first, get(i)))
            ++i;
        if (varies || i == places.count)
            return;
        varies = true;
        decltype(auto) other = get(i);
        if (Stored<Raw>::hasValue(first) && Stored<Raw>::hasValue(other))
            setOther(Stored<Raw>::value(other));
    }

private:
    void setOther(const V& value)
    {
        varies = true;
        m_other = value;
    }

    V m_common{};
    std::optional<V> m_other;
};

/// What the library has to know of the values of a field.
class VRN_QT2_EXPORT ValueType
{
public:
    virtual ~ValueType();

    ValueType(const ValueType&) = delete;
    ValueType& operator=(const ValueType&) = delete;

    virtual const std::type_info& type() const = 0;
    virtual std::shared_ptr<ValueColumn> makeColumn(std::size_t size) const = 0;
    virtual std::unique_ptr<ValueSummary> makeSummary() const = 0;
    virtual bool isSame(const boost::any& a, const boost::any& b) const = 0;
    /// Whether values can be kept in a file.
    virtual bool isKept() const = 0;
    virtual QString toText(const boost::any& value) const = 0;
    /// Empty for a text that toText() does not write.
    virtual boost::any fromText(const QString& text) const = 0;

protected:
    ValueType() = default;
};

template <typename V>
class TypedValueType final : public ValueType
{
public:
    const std::type_info& type() const override { return typeid(V); }
    std::shared_ptr<ValueColumn> makeColumn(std::size_t size) const override
    {
        return std::make_shared<TypedColumn<V>>(size);
    }
    std::unique_ptr<ValueSummary> makeSummary() const override
    {
        return std::make_unique<TypedSummary<V>>();
    }
    bool isSame(const boost::any& a, const boost::any& b) const override
    {
        const V* first = boost::any_cast<V>(&a);
        const V* second = boost::any_cast<V>(&b);
        return first && second ? detail::isSame(*first, *second) : a.empty() && b.empty();
    }
    bool isKept() const override { return ValueTraits<V>::isKept; }
    QString toText(const boost::any& value) const override
    {
        const V* typed = boost::any_cast<V>(&value);
        return typed ? ValueTraits<V>::toText(*typed) : QString();
    }
    boost::any fromText(const QString& text) const override
    {
        const std::optional<V> value = ValueTraits<V>::fromText(text);
        return value ? boost::any(*value) : boost::any();
    }
};

} // namespace vrn::qt::detail
