#pragma once

#include <vrn/qt/object_model.h>
#include <vrn/qt/property_selection.h>

#include <QUndoStack>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace bench {

using namespace vrn::qt;

constexpr std::size_t lengths = 20;
constexpr std::size_t counts = 8;
constexpr std::size_t flags = 6;
constexpr std::size_t texts = 6;
static_assert(lengths + counts + flags + texts == 40);

template <typename Value, std::size_t number>
struct Slot
{
    Value value;
};

template <typename Value, typename Numbers>
struct Slots;
template <typename Value, std::size_t... numbers>
struct Slots<Value, std::index_sequence<numbers...>> : public Slot<Value, numbers>...
{};

using Lengths = Slots<double, std::make_index_sequence<lengths>>;
using Counts = Slots<int, std::make_index_sequence<counts>>;
using Flags = Slots<bool, std::make_index_sequence<flags>>;
using Texts = Slots<QString, std::make_index_sequence<texts>>;

/// Forty data members.
struct Member
    : public Lengths
    , public Counts
    , public Flags
    , public Texts
{};

/// Calls `use` with a pointer to each of them.
template <typename Use, typename Value, std::size_t... numbers>
void forEachSlot(const Use& use, const Slots<Value, std::index_sequence<numbers...>>*)
{
    (use(static_cast<Value Member::*>(&Slot<Value, numbers>::value), numbers), ...);
}

template <typename Group, typename Use>
void forEach(const Use& use)
{
    forEachSlot(use, static_cast<const Group*>(nullptr));
}

/// The objects, and the properties of one that are described for the library.
class Project
{
public:
    explicit Project(std::size_t count)
        : members(count)
    {
        for (Member& member : members) {
            forEach<Lengths>([&](auto slot, std::size_t) { member.*slot = 12.5; });
            forEach<Counts>([&](auto slot, std::size_t) { member.*slot = 3; });
            forEach<Flags>([&](auto slot, std::size_t) { member.*slot = true; });
            forEach<Texts>(
                [&](auto slot, std::size_t) { member.*slot = QStringLiteral("north wing"); });
        }
        for (std::size_t i = 0; i < count; ++i)
            ids.emplace_back(i);

        PropertySet<Member> set("member", [](int n) { return QString::number(n); });
        add<Lengths>(set, "length", field::number());
        add<Counts>(set, "count", field::integer());
        add<Flags>(set, "flag", field::flag());
        add<Texts>(set, "text", field::text());
        model.addKind(set, [this](ObjectId id) { return find(id); });
        for (const PropertyDescription& property : set.properties())
            keys.push_back(property.key);
        stack.setUndoLimit(2);
        selection = PropertySelection(&model, ids, &stack);
    }

    /// As what shows the objects does.
    void readAfterChanges()
    {
        QObject::connect(&model, &PropertyModel::changed, &model,
            [this](const PropertyKeys& changedKeys) { require(changedKeys, ids); });
    }

    Member* find(ObjectId id) { return id.key < members.size() ? &members[id.key] : nullptr; }

    void read() { require(keys, ids); }

    void readInParts(std::size_t size)
    {
        for (auto part = ids.begin(); part != ids.end(); part += std::ptrdiff_t(size))
            require(keys, ObjectIds(part, part + std::ptrdiff_t(size)));
    }

    void readBare()
    {
        std::vector<const Member*> found;
        found.reserve(ids.size());
        for (const ObjectId& id : ids) {
            if (const Member* member = find(id))
                found.push_back(member);
        }
        requireBare<Lengths>(found);
        requireBare<Counts>(found);
        requireBare<Flags>(found);
        requireBare<Texts>(found);
    }

    void edit()
    {
        m_value = m_value == 12.5 ? 7.62 : 12.5;
        selection.edit("length0", m_value);
        model.flush();
    }

    void undoAndRedo()
    {
        if (stack.canUndo())
            stack.undo();
        else
            stack.redo();
        model.flush();
    }

    /// What an edit or an undo step has to do: keep the old values, set the new ones, and read
    /// them back.
    void editBare()
    {
        m_value = m_value == 12.5 ? 7.62 : 12.5;
        // An undo step keeps a vector of its own, and the stack has two steps.
        std::vector<double> old;
        old.reserve(ids.size());
        for (const ObjectId& id : ids) {
            if (const Member* member = find(id))
                old.push_back(member->*m_first);
        }
        for (const ObjectId& id : ids) {
            if (Member* member = find(id))
                member->*m_first = m_value;
        }
        m_kept = std::exchange(m_last, std::move(old));
        shown.clear();
        shown.reserve(ids.size());
        for (const ObjectId& id : ids) {
            if (const Member* member = find(id))
                shown.push_back(member->*m_first);
        }
    }

    std::vector<Member> members;
    ObjectIds ids;
    PropertyKeys keys;
    ObjectModel model;
    QUndoStack stack;
    PropertySelection selection;
    std::vector<double> shown;

private:
    template <typename Group, typename Value>
    static void add(PropertySet<Member>& set, const char* name, const FieldOf<Value>& field)
    {
        forEach<Group>([&](auto slot, std::size_t number) {
            set.add(name + std::to_string(number), QStringLiteral("Property"), slot, field);
        });
    }

    void require(const PropertyKeys& readKeys, const ObjectIds& readIds) const
    {
        for (const PropertyState& state : model.readStates(readKeys, readIds)) {
            if (state.kind != PropertyState::Common)
                qFatal("the selection was not read");
        }
    }

    template <typename Group>
    static void requireBare(const std::vector<const Member*>& found)
    {
        forEach<Group>([&](auto slot, std::size_t) {
            const auto first = found.front()->*slot;
            for (const Member* member : found) {
                if (!(member->*slot == first))
                    qFatal("the selection was not read");
            }
        });
    }

    double Member::*m_first = &Slot<double, 0>::value;
    double m_value = 12.5;
    std::vector<double> m_last;
    std::vector<double> m_kept;
};

} // namespace bench
