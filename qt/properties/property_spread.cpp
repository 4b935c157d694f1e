#include <vrn/qt/property_selection.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/qt/property_error.h>

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <cstdint>
#include <optional>

namespace vrn::qt {

using detail::Presence;
using detail::ValueColumn;

namespace {

struct SpreadTexts
{
    Q_DECLARE_TR_FUNCTIONS(vrn::qt::PropertySelection)
};

constexpr std::size_t shownShares = 5;
/// Without a hash, each value is compared with all that are known.
constexpr std::size_t mostWithoutHash = 64;

/// Counts how often each value of a column occurs.
class Tally
{
public:
    struct Group
    {
        std::size_t place; ///< Of the first object with the value.
        std::size_t objects;
    };

    explicit Tally(const ValueColumn& column)
        : m_column(column)
    {
        std::size_t slots = 1;
        while (slots < 2 * column.size())
            slots *= 2;
        m_slots.resize(slots);
        for (std::size_t place = 0; place < column.size(); ++place) {
            if (column.presence[place] == Presence::Value)
                add(place);
        }
    }

    /// In the order in which they come.
    std::vector<Group> groups;
    /// Whether there are other values than those of the groups.
    bool isCutOff = false;

private:
    void add(std::size_t place)
    {
        const std::optional<std::size_t> hash = m_column.hashAt(place);
        Group* group = hash ? find(place, *hash) : search(place);
        if (group)
            ++group->objects;
    }

    Group* find(std::size_t place, std::size_t hash)
    {
        // std::hash of an integer may be the integer, so that its high bits have to be mixed in.
        constexpr std::uint64_t golden = 0x9E3779B97F4A7C15U;
        constexpr int half = 32;
        const std::size_t mask = m_slots.size() - 1;
        std::size_t slot = std::size_t((std::uint64_t(hash) * golden) >> half) & mask;
        for (; m_slots[slot] != 0; slot = (slot + 1) & mask) {
            Group& group = groups[m_slots[slot] - 1];
            if (m_column.isSameAt(place, m_column, group.place))
                return &group;
        }
        groups.push_back({place, 0});
        m_slots[slot] = groups.size();
        return &groups.back();
    }

    Group* search(std::size_t place)
    {
        const auto found = std::find_if(groups.begin(), groups.end(),
            [&](const Group& group) { return m_column.isSameAt(place, m_column, group.place); });
        if (found != groups.end())
            return &*found;
        if (groups.size() == mostWithoutHash) {
            isCutOff = true;
            return nullptr;
        }
        groups.push_back({place, 0});
        return &groups.back();
    }

    const ValueColumn& m_column;
    std::vector<std::size_t> m_slots; ///< The number of a group, counted from 1.
};

} // namespace

PropertySpread PropertySelection::spread(const std::string& key) const
{
    PropertySpread spread;
    if (!m_model)
        return spread;
    const Row* found = row(key);
    VRN_ASSERT_MESSAGE(found, "the selection has no such property")("key", key);
    if (!found)
        return spread;
    PropertyValues values;
    try {
        values = m_model->readValues({key}, m_ids).front();
    } catch (...) {
        throw PropertyError::from(std::current_exception());
    }
    const ValueColumn& column = *values.column();

    ObjectIds objects;
    objects.reserve(m_ids.size());
    for (std::size_t place = 0; place < m_ids.size(); ++place) {
        if (column.presence[place] != Presence::NoObject)
            objects.push_back(m_ids[place]);
    }
    spread.objects = objects.size();
    spread.withoutValue = std::size_t(
        std::count(column.presence.begin(), column.presence.end(), Presence::NoValue));
    if (objects.empty())
        return spread;

    Tally tally(column);
    const Field& field = found->field;
    const vrn::units::Context& units = m_model->units();
    const bool isOrdered = field.shape() == Field::Shape::Quantity
        || field.shape() == Field::Shape::Number || field.shape() == Field::Shape::Integer;
    const auto isBelow = [&](const Tally::Group& a, const Tally::Group& b) {
        return column.isBelowAt(a.place, b.place);
    };
    const std::size_t different = tally.groups.size();
    QStringList parts;
    if (different > 0 && isOrdered) {
        const auto ends = std::minmax_element(tally.groups.begin(), tally.groups.end(), isBelow);
        spread.lowest = column.at(ends.first->place);
        spread.highest = column.at(ends.second->place);
        const QString lowest = field.text(spread.lowest, units);
        const QString highest = field.text(spread.highest, units);
        parts << (lowest == highest ? lowest : SpreadTexts::tr("%1 to %2").arg(lowest, highest));
    } else if (tally.isCutOff) {
        parts << SpreadTexts::tr("more than %Ln different values", nullptr, int(different));
    } else if (different > 1) {
        parts << SpreadTexts::tr("%Ln different values", nullptr, int(different));
    } else if (different == 1) {
        parts << field.text(column.at(tally.groups.front().place), units);
    }
    if (spread.withoutValue > 0) {
        parts << (spread.withoutValue == 1 ? SpreadTexts::tr("%1 has no value")
                                           : SpreadTexts::tr("%1 have no value"))
                     .arg(QLocale().toString(qulonglong(spread.withoutValue)));
    }
    parts.removeAll(QString());
    spread.text = countedName(objects);
    if (!parts.isEmpty())
        spread.text = SpreadTexts::tr("%1: %2").arg(spread.text, parts.join(QStringLiteral(", ")));

    const std::size_t shown = std::min(shownShares, different);
    std::partial_sort(tally.groups.begin(), tally.groups.begin() + std::ptrdiff_t(shown),
        tally.groups.end(), [&](const Tally::Group& a, const Tally::Group& b) {
            if (a.objects != b.objects)
                return a.objects > b.objects;
            if (isOrdered && (isBelow(a, b) || isBelow(b, a)))
                return isBelow(a, b);
            return a.place < b.place;
        });
    for (std::size_t i = 0; i < shown; ++i) {
        const Tally::Group& group = tally.groups[i];
        const boost::any value = column.at(group.place);
        spread.frequent.push_back({value, field.text(value, units), group.objects});
    }
    return spread;
}

} // namespace vrn::qt
