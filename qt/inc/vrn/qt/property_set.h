#pragma once

#include <vrn/qt/field.h>
#include <vrn/qt/property_sink.h>

#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace vrn::qt {

/// One property of a kind of object.
struct PropertyDescription
{
    std::string key;
    QString caption; ///< With "&" before the letter of its short cut.
    std::size_t section; ///< In PropertyList::sections().
    Field field;
    /// Whether its value may depend on any other property. Field::sources() names them if
    /// they are known.
    bool isComputed = false;

    /// The caption as it stands in a text.
    VRN_QT2_EXPORT QString title() const;
};

struct PropertySection
{
    std::string key;
    QString title;
    bool isOpen = true; ///< At first.
};

/// The properties of one kind of object, in sections, in the order of the page. This is for
/// models of objects that are not C++ objects; others use PropertySet.
class VRN_QT2_EXPORT PropertyList
{
public:
    using CountedName = std::function<QString(int)>;

    /// `key` names the kind in files. `name` gives "12 beams" for undo steps and receipts, in
    /// the language of the user.
    PropertyList(std::string key, CountedName name);
    ~PropertyList();
    PropertyList(const PropertyList&);
    PropertyList(PropertyList&&) noexcept;
    PropertyList& operator=(const PropertyList&);
    PropertyList& operator=(PropertyList&&) noexcept;

    /// All that is added from now on belongs to this section, up to the next one. Each section
    /// is begun once: a key that is there already throws std::logic_error with "duplicate key: "
    /// and the key.
    PropertyList& section(const std::string& key, const QString& title, bool open = true);
    /// Without a section before it, the property is in one without a title. A key that is
    /// there already throws std::logic_error with "duplicate key: " and the key.
    PropertyList& add(const std::string& key, const QString& caption, const Field& field);

    const std::string& key() const { return m_key; }
    QString countedName(std::size_t count) const;
    const std::vector<PropertySection>& sections() const { return m_sections; }
    const std::vector<PropertyDescription>& properties() const { return m_properties; }
    /// Null for an unknown key.
    const PropertyDescription* find(const std::string& key) const;
    /// `keys`, and what is computed from these.
    PropertyKeys affectedBy(const PropertyKeys& keys) const;

protected:
    void setComputed() { m_properties.back().isComputed = true; }

private:
    friend class PropertyModel;

    /// Reports and drops the conditions that no object can meet.
    void checkConditions();

    std::string m_key;
    CountedName m_name;
    std::vector<PropertySection> m_sections;
    std::vector<PropertyDescription> m_properties;
};

namespace detail {

/// Gives objects back what they had.
class VRN_QT2_EXPORT Rollback
{
public:
    virtual ~Rollback();
    virtual void run() = 0;

protected:
    Rollback() = default;
    Rollback(const Rollback&) = default;
    Rollback& operator=(const Rollback&) = default;
};

/// Reads and writes one property of objects of the class T.
template <typename T>
class Accessor
{
public:
    virtual ~Accessor() = default;

    virtual void read(
        T* const* objects, const Places& places, std::size_t key, PropertySink& sink) const = 0;
    /// The objects are those at `places` of `values`. `rollback` is set first, and knows at
    /// any time how many objects have been written.
    virtual void write(T* const* objects, const Places& places, const PropertyValues& values,
        std::unique_ptr<Rollback>& rollback) const = 0;
    /// Whether write() may throw.
    virtual bool canThrow() const = 0;
    /// The same if it cannot, and nothing will be taken back.
    virtual void writeForGood(
        T* const* objects, const Places& places, const PropertyValues& values) const = 0;

protected:
    Accessor() = default;
    Accessor(const Accessor&) = default;
    Accessor& operator=(const Accessor&) = default;
};

/// `Get` gives the M of a `const T&`, and `Set` takes a `T&` and an M.
template <typename T, typename M, typename V, typename Get, typename Set>
class AccessorOf final : public Accessor<T>
{
public:
    AccessorOf(Get get, Set set)
        : m_get(std::move(get))
        , m_set(std::move(set))
    {}

    void read(
        T* const* objects, const Places& places, std::size_t key, PropertySink& sink) const override
    {
        sink.putEach<V>(key, places, [&](std::size_t i) -> decltype(auto) {
            return m_get(static_cast<const T&>(*objects[i]));
        });
    }

    void write(T* const* objects, const Places& places, const PropertyValues& values,
        std::unique_ptr<Rollback>& rollback) const override
    {
        if constexpr (!std::is_same_v<Set, std::nullptr_t>) {
            auto old = std::make_unique<OldValues>(*this, objects, places.count);
            OldValues& done = *old;
            rollback = std::move(old);
            for (; done.count < places.count; ++done.count) {
                const V* value = values.template find<V>(places[done.count]);
                M raw = done.values[done.count].value;
                Stored<M>::assign(raw, value);
                m_set(*objects[done.count], std::move(raw));
            }
        }
    }

    bool canThrow() const override { return !isPlain; }

    void writeForGood(
        T* const* objects, const Places& places, const PropertyValues& values) const override
    {
        if constexpr (isPlain) {
            if (!values.column() || values.column()->type() != typeid(V))
                return;
            const auto& column = static_cast<const TypedColumn<V>&>(*values.column());
            if (values.isUniform()) {
                if (column.presence.front() != Presence::Value)
                    return;
                const M value = column.cells.front().value;
                for (std::size_t i = 0; i < places.count; ++i)
                    m_set(*objects[i], M(value));
                return;
            }
            for (std::size_t i = 0; i < places.count; ++i) {
                const std::size_t place = places[i];
                if (column.presence[place] == Presence::Value)
                    m_set(*objects[i], M(column.cells[place].value));
            }
        }
    }

private:
    // A data member without conversion and without memory of its own.
    static constexpr bool isPlain =
        std::is_same_v<M,
            V> && std::is_trivially_copyable_v<M> && std::is_nothrow_invocable_v<const Set&, T&, M>;

    // Not a bare M, because a vector of `bool` has no elements.
    struct Cell
    {
        M value;
    };

    struct OldValues final : public Rollback
    {
        OldValues(const AccessorOf& accessorOfAll, T* const* allObjects, std::size_t size)
            : accessor(accessorOfAll)
            , objects(allObjects, allObjects + size)
        {
            values.reserve(size);
            for (std::size_t i = 0; i < size; ++i)
                values.push_back({accessor.m_get(static_cast<const T&>(*objects[i]))});
        }
        void run() override
        {
            if constexpr (!std::is_same_v<Set, std::nullptr_t>) {
                while (count > 0) {
                    --count;
                    accessor.m_set(*objects[count], std::move(values[count].value));
                }
            }
        }

        const AccessorOf& accessor;
        std::vector<T*> objects;
        std::vector<Cell> values;
        std::size_t count = 0;
    };

    Get m_get;
    Set m_set;
};

/// Whether a field of V can edit a member of type M.
template <typename M, typename V>
constexpr bool fits = std::is_same_v<typename Stored<M>::Value, V>;

} // namespace detail

/// The properties of objects of the C++ class T.
///
///     PropertySet<Beam> beams("beam", [](int n) { return tr("%n beam(s)", nullptr, n); });
///     beams.section("general", tr("General"))
///         .add("visible", tr("&Visible"), &Beam::isVisible, field::flag());
///     beams.section("geometry", tr("Geometry"))
///         .add("depth", tr("&Depth"), &Beam::depth,
///             field::quantity(UnitId::SECT_LENGTH).between(0.05, 20.0))
///         .add("area", tr("Area"),
///             [](const Beam& beam) { return beam.depth * beam.depth; }, field::number());
///
/// What is handed in must not add or remove objects.
template <typename T>
class PropertySet : public PropertyList
{
public:
    using Object = T;
    using PropertyList::PropertyList;

    PropertySet& section(const std::string& key, const QString& title, bool open = true)
    {
        PropertyList::section(key, title, open);
        return *this;
    }

    /// A data member. Writing it changes no other member; what has functions is read again,
    /// unless computedFrom() says that it is not concerned.
    template <typename M, typename V, typename = std::enable_if_t<!std::is_function_v<M>>>
    PropertySet& add(
        const std::string& key, const QString& caption, M T::*member, const FieldOf<V>& field)
    {
        return addAccess<M>(
            key, caption, field, [member](const T& object) -> const M& { return object.*member; },
            [member](T& object, M&& value) noexcept(
                std::is_nothrow_move_assignable_v<M>) { object.*member = std::move(value); },
            false);
    }

    /// A getter alone: a function of `const T&`, also one of the class. It cannot be written.
    template <typename G, typename V,
        typename = std::enable_if_t<
            std::is_invocable_v<G, const T&> && !std::is_member_object_pointer_v<G>>>
    PropertySet& add(const std::string& key, const QString& caption, G get, FieldOf<V> field)
    {
        using M = std::decay_t<std::invoke_result_t<G, const T&>>;
        field.readOnly();
        return addAccess<M>(key, caption, field, invoking(std::move(get)), nullptr, true);
    }

    /// A getter and a setter: functions of `const T&`, and of `T&` and the value. A setter
    /// that throws has left its object as it was, and its reason is shown. It takes back what
    /// the getter gave without throwing. After it has run, all properties are read again.
    template <typename G, typename S, typename V,
        typename = std::enable_if_t<std::is_invocable_v<G, const T&>>>
    PropertySet& add(
        const std::string& key, const QString& caption, G get, S set, const FieldOf<V>& field)
    {
        using M = std::decay_t<std::invoke_result_t<G, const T&>>;
        static_assert(
            std::is_invocable_v<S, T&, M>, "this setter does not take what the getter gives");
        return addAccess<M>(
            key, caption, field, invoking(std::move(get)),
            [set = std::move(set)](
                T& object, M&& value) { std::invoke(set, object, std::move(value)); },
            true);
    }

    /// What must hold for each object after an edit of one of `keys`: the reason why it does
    /// not, or an empty text. An edit that breaks it for one object is taken back for all, a
    /// relative edit, too.
    PropertySet& require(PropertyKeys keys, std::function<QString(const T&)> reasonAgainst)
    {
        m_requirements.push_back({std::move(keys), std::move(reasonAgainst)});
        return *this;
    }

    struct Requirement
    {
        PropertyKeys keys;
        std::function<QString(const T&)> reasonAgainst;
    };
    const std::vector<Requirement>& requirements() const { return m_requirements; }
    /// In the order of properties().
    const std::vector<std::shared_ptr<const detail::Accessor<T>>>& accessors() const
    {
        return m_accessors;
    }

private:
    template <typename G>
    static auto invoking(G get)
    {
        return [get = std::move(get)](
                   const T& object) -> decltype(auto) { return std::invoke(get, object); };
    }

    template <typename M, typename V, typename Get, typename Set>
    PropertySet& addAccess(const std::string& key, const QString& caption, FieldOf<V> field,
        Get get, Set set, bool isComputed)
    {
        static_assert(detail::fits<M, V>, "the object does not have values of this field");
        if (detail::Stored<M>::isOptional)
            field.optional();
        PropertyList::add(key, caption, field);
        if (isComputed)
            setComputed();
        m_accessors.push_back(std::make_shared<detail::AccessorOf<T, M, V, Get, Set>>(
            std::move(get), std::move(set)));
        return *this;
    }

    std::vector<std::shared_ptr<const detail::Accessor<T>>> m_accessors;
    std::vector<Requirement> m_requirements;
};

} // namespace vrn::qt
