#pragma once

#include <vrn/qt/value_traits.h>
#include <vrn/qt/vrn_qt2_export.h>

#include <boost/any.hpp>

#include <QVariant>

#include <cstddef>
#include <functional>
#include <memory>
#include <numeric>
#include <optional>
#include <type_traits>
#include <typeinfo>
#include <vector>

namespace vrn::qt {

namespace detail {

enum class Presence : unsigned char
{
    NoObject, ///< The id has found no object.
    NoValue, ///< The object has no value.
    Value
};

/// The values of one property, in a vector of their type.
class VRN_QT2_EXPORT ValueColumn
{
public:
    virtual ~ValueColumn();

    ValueColumn(const ValueColumn&) = delete;
    ValueColumn& operator=(const ValueColumn&) = delete;

    virtual const std::type_info& type() const = 0;
    virtual boost::any at(std::size_t place) const = 0;
    virtual QVariant variantAt(std::size_t place) const = 0;
    /// Both columns have the same type.
    virtual bool isSameAt(
        std::size_t place, const ValueColumn& other, std::size_t otherPlace) const = 0;
    /// Sets nothing and returns false if `value` has another type. An empty one clears the place.
    virtual bool set(std::size_t place, const boost::any& value) = 0;
    virtual bool set(std::size_t place, const QVariant& value) = 0;
    virtual std::shared_ptr<ValueColumn> emptyLike() const = 0;
    virtual std::shared_ptr<ValueColumn> select(const std::vector<std::size_t>& places) const = 0;
    /// The places of objects whose value is not the one of `uniform`, a column of one value.
    /// None if these are all places.
    virtual std::optional<std::vector<std::size_t>> placesOtherThan(
        const ValueColumn& uniform) const = 0;
    virtual void append(const ValueColumn& other, std::size_t otherPlace) = 0;
    /// The same for values that are the same. None if the type has no std::hash.
    virtual std::optional<std::size_t> hashAt(std::size_t place) const = 0;
    /// Whether a number stands before another one; see isBelow(). Both places have a value.
    virtual bool isBelowAt(std::size_t place, std::size_t otherPlace) const = 0;

    std::size_t size() const { return presence.size(); }

    std::vector<Presence> presence;

protected:
    ValueColumn() = default;
};

template <typename T>
class TypedColumn final : public ValueColumn
{
public:
    /// Not a bare T, because a vector of `bool` has no elements.
    struct Cell
    {
        T value{};
    };

    explicit TypedColumn(std::size_t size = 0)
        : cells(size)
    {
        presence.resize(size, Presence::NoObject);
    }

    const std::type_info& type() const override { return typeid(T); }

    boost::any at(std::size_t place) const override
    {
        return presence[place] == Presence::Value ? boost::any(cells[place].value) : boost::any();
    }

    QVariant variantAt(std::size_t place) const override
    {
        return presence[place] == Presence::Value ? ValueTraits<T>::toVariant(cells[place].value)
                                                  : QVariant();
    }

    bool isSameAt(
        std::size_t place, const ValueColumn& other, std::size_t otherPlace) const override
    {
        if (presence[place] != other.presence[otherPlace])
            return false;
        return presence[place] != Presence::Value
            || isSame(cells[place].value, typed(other).cells[otherPlace].value);
    }

    void set(std::size_t place, const T& value)
    {
        cells[place].value = value;
        presence[place] = Presence::Value;
    }

    bool set(std::size_t place, const boost::any& value) override
    {
        if (value.empty()) {
            presence[place] = Presence::NoValue;
            return true;
        }
        const T* typedValue = boost::any_cast<T>(&value);
        if (typedValue)
            set(place, *typedValue);
        return typedValue != nullptr;
    }

    bool set(std::size_t place, const QVariant& value) override
    {
        if (value.isNull()) {
            presence[place] = Presence::NoValue;
            return true;
        }
        const std::optional<T> typedValue = ValueTraits<T>::fromVariant(value);
        if (typedValue)
            set(place, *typedValue);
        return typedValue.has_value();
    }

    std::shared_ptr<ValueColumn> emptyLike() const override
    {
        return std::make_shared<TypedColumn>();
    }

    std::shared_ptr<ValueColumn> select(const std::vector<std::size_t>& places) const override
    {
        auto selected = std::make_shared<TypedColumn>();
        selected->cells.reserve(places.size());
        selected->presence.reserve(places.size());
        for (const std::size_t place : places) {
            selected->cells.push_back(cells[place]);
            selected->presence.push_back(presence[place]);
        }
        return selected;
    }

    std::optional<std::vector<std::size_t>> placesOtherThan(
        const ValueColumn& uniform) const override
    {
        const Presence wanted = uniform.presence.front();
        const T& value = typed(uniform).cells.front().value;
        const auto isOther = [&](std::size_t place) {
            return presence[place] != Presence::NoObject
                && (presence[place] != wanted
                    || (wanted == Presence::Value && !isSame(cells[place].value, value)));
        };
        std::size_t place = 0;
        // The usual case, without a look at what is wanted each time.
        while (wanted == Presence::Value && place < cells.size()
            && presence[place] == Presence::Value && !isSame(cells[place].value, value)) {
            ++place;
        }
        while (place < cells.size() && isOther(place))
            ++place;
        if (place == cells.size())
            return std::nullopt;
        std::vector<std::size_t> places(place);
        std::iota(places.begin(), places.end(), std::size_t(0));
        for (; place < cells.size(); ++place) {
            if (isOther(place))
                places.push_back(place);
        }
        return places;
    }

    void append(const ValueColumn& other, std::size_t otherPlace) override
    {
        cells.push_back(typed(other).cells[otherPlace]);
        presence.push_back(other.presence[otherPlace]);
    }

    std::optional<std::size_t> hashAt(std::size_t place) const override
    {
        if constexpr (std::is_default_constructible_v<std::hash<T>>)
            return std::hash<T>()(cells[place].value);
        else
            return std::nullopt;
    }

    bool isBelowAt(std::size_t place, std::size_t otherPlace) const override
    {
        return isBelow(cells[place].value, cells[otherPlace].value);
    }

    std::vector<Cell> cells;

private:
    static const TypedColumn& typed(const ValueColumn& other)
    {
        return static_cast<const TypedColumn&>(other);
    }
};

} // namespace detail

/// The values of one property, one for each of some objects or one for all of them. They lie
/// unboxed in a vector of their type, which copies share.
///
///     const PropertyValues each(std::vector<double>{3.0, 4.5});
///     // each.isUniform() is false, and each.get<double>(1) is 4.5
///     const PropertyValues all = PropertyValues::uniform(true);
///     // all.get<bool>(7) is true
///
/// The value of an object that has none, or that was not read, is empty.
class VRN_QT2_EXPORT PropertyValues
{
public:
    PropertyValues();
    ~PropertyValues();
    PropertyValues(const PropertyValues&);
    PropertyValues(PropertyValues&&) noexcept;
    PropertyValues& operator=(const PropertyValues&);
    PropertyValues& operator=(PropertyValues&&) noexcept;

    template <typename T>
    explicit PropertyValues(const std::vector<T>& each)
    {
        auto column = std::make_shared<detail::TypedColumn<T>>(each.size());
        for (std::size_t place = 0; place < each.size(); ++place)
            column->set(place, static_cast<const T&>(T(each[place])));
        m_column = std::move(column);
    }
    PropertyValues(std::shared_ptr<const detail::ValueColumn> column, bool isUniform);

    /// The same value for all objects.
    template <typename T>
    static PropertyValues uniform(const T& value)
    {
        auto column = std::make_shared<detail::TypedColumn<T>>(1);
        column->set(0, value);
        return PropertyValues(std::move(column), true);
    }

    bool isUniform() const { return m_isUniform; }
    /// 0 if the values are uniform.
    std::size_t size() const;
    bool isEmpty(std::size_t object) const;
    /// Whether an object was found. True if the values are uniform.
    bool hasObject(std::size_t object) const;
    boost::any operator[](std::size_t object) const;
    /// Null if the object has no value or the values are not of type T.
    template <typename T>
    const T* find(std::size_t object) const
    {
        if (!m_column || m_column->type() != typeid(T) || isEmpty(object))
            return nullptr;
        return &static_cast<const detail::TypedColumn<T>&>(*m_column).cells[place(object)].value;
    }
    /// Throws boost::bad_any_cast if find() gives null.
    template <typename T>
    const T& get(std::size_t object) const
    {
        const T* value = find<T>(object);
        if (!value)
            throw boost::bad_any_cast();
        return *value;
    }
    /// For SQL and views. Null if there is no value, or if it is neither a number nor a text.
    QVariant variant(std::size_t object) const;

    const detail::ValueColumn* column() const { return m_column.get(); }
    std::size_t place(std::size_t object) const { return m_isUniform ? 0 : object; }

private:
    std::shared_ptr<const detail::ValueColumn> m_column;
    bool m_isUniform = false;
};

} // namespace vrn::qt
