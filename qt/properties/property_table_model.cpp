#include <vrn/qt/property_table_model.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/qt/cell_data.h>
#include <vrn/qt/property_error.h>

#include <QGuiApplication>
#include <QItemSelection>
#include <QPalette>

#include <algorithm>
#include <set>
#include <utility>

namespace vrn::qt {

namespace {

constexpr std::size_t rowsOfBlock = 64;
constexpr std::size_t mostBlocks = 64;

/// Where `all` has elements in a row that `kept` does not have: the first and the number
/// of them, or nothing if they are not in a row.
std::pair<std::size_t, std::size_t> gapOf(const ObjectIds& kept, const ObjectIds& all)
{
    if (kept.size() >= all.size())
        return {0, 0};
    std::size_t first = 0;
    while (first < kept.size() && kept[first] == all[first])
        ++first;
    const std::size_t count = all.size() - kept.size();
    const bool isGap = std::equal(kept.begin() + std::ptrdiff_t(first), kept.end(),
        all.begin() + std::ptrdiff_t(first + count));
    return {first, isGap ? count : 0};
}

/// A cell of a view that runs from right to left would show "3 m" as "m 3". A field goes by its
/// text, and so does this.
QString inItsOwnDirection(const QString& text)
{
    const QChar firstStrongIsolate(0x2068);
    const QChar popDirectionalIsolate(0x2069);
    return text.isEmpty() || QGuiApplication::layoutDirection() == Qt::LeftToRight
        ? text
        : firstStrongIsolate + text + popDirectionalIsolate;
}

ObjectIds sorted(ObjectIds ids)
{
    std::sort(ids.begin(), ids.end());
    return ids;
}

/// Those among `ids` that are in the sorted `others`, or are not.
ObjectIds filtered(const ObjectIds& ids, const ObjectIds& others, bool isIn)
{
    ObjectIds result;
    for (const ObjectId& id : ids) {
        if (std::binary_search(others.begin(), others.end(), id) == isIn)
            result.push_back(id);
    }
    return result;
}

} // namespace

/// The values of some rows, all columns of them.
struct PropertyTableModel::Block
{
    std::vector<PropertyValues> columns;
    std::vector<std::size_t> places; ///< Of each row in the columns.
    std::vector<QString> reasons; ///< Why a column could not be read.
};

PropertyTableModel::PropertyTableModel(PropertyModel* model, std::uint32_t kind, QObject* parent)
    : QAbstractTableModel(parent)
    , m_model(model)
    , m_kind(kind)
{
    if (!m_model)
        return;
    m_columns = m_model->kind(kind).properties();
    for (const PropertyDescription& column : m_columns)
        m_conditions.push_back(columnOf(column.field.conditionKey()));
    connect(model, &PropertyModel::changed, this, &PropertyTableModel::onChanged);
    connect(model, &PropertyModel::unitsChanged, this, &PropertyTableModel::onUnitsChanged);
    connect(model, &QObject::destroyed, this, &PropertyTableModel::onModelDestroyed);
    setRows(allObjects());
}

PropertyTableModel::~PropertyTableModel() = default;

ObjectIds PropertyTableModel::allObjects() const
{
    try {
        return m_model->objects(m_kind);
    } catch (const std::exception&) {
        // The next announcement asks again.
        return m_ids;
    }
}

void PropertyTableModel::setIds(const ObjectIds& ids)
{
    m_hasAll = false;
    setRows(ids);
}

ObjectIds PropertyTableModel::ids(const QItemSelection& selection) const
{
    std::set<ObjectId> selected;
    for (const QItemSelectionRange& range : selection) {
        if (range.model() != this)
            continue;
        for (int row = range.top(); row <= range.bottom(); ++row)
            selected.insert(m_ids[std::size_t(row)]);
    }
    return ObjectIds(selected.begin(), selected.end());
}

ObjectId PropertyTableModel::id(int row) const
{
    const bool isRow = row >= 0 && row < rowCount();
    VRN_ASSERT(isRow)("row", row);
    return isRow ? m_ids[std::size_t(row)] : ObjectId();
}

int PropertyTableModel::rowOf(ObjectId id) const
{
    if (m_rows.empty()) {
        for (std::size_t row = 0; row < m_ids.size(); ++row)
            m_rows.emplace_back(m_ids[row], int(row));
        std::sort(m_rows.begin(), m_rows.end());
    }
    const auto found = std::lower_bound(m_rows.begin(), m_rows.end(), std::make_pair(id, 0));
    return found == m_rows.end() || found->first != id ? -1 : found->second;
}

/// Persistent indexes, and with them selections, keep to their objects, and there are only a
/// few signals, however many objects come and go. If a slot sets other rows or destroys the
/// table, that counts.
void PropertyTableModel::setRows(ObjectIds ids)
{
    if (ids == m_ids)
        return;
    std::set<ObjectId> known;
    ids.erase(
        std::remove_if(ids.begin(), ids.end(),
            [&](const ObjectId& id) { return id.kind != m_kind || !known.insert(id).second; }),
        ids.end());

    const QPointer<PropertyTableModel> guarded(this);
    const int change = ++m_change;
    const auto isCurrent = [&] { return guarded && m_change == change; };
    removeOthers(ids);
    if (isCurrent())
        insertNew(ids);
    if (isCurrent() && m_ids != ids)
        reorder(ids);
}

void PropertyTableModel::removeOthers(const ObjectIds& ids)
{
    const ObjectIds wanted = sorted(ids);
    const ObjectIds kept = filtered(m_ids, wanted, true);
    const std::size_t count = m_ids.size() - kept.size();
    if (count == 0)
        return;
    auto gap = gapOf(kept, m_ids);
    if (gap.second == 0) {
        // Last, they are in a row.
        ObjectIds goneLast = kept;
        const ObjectIds gone = filtered(m_ids, wanted, false);
        goneLast.insert(goneLast.end(), gone.begin(), gone.end());
        const QPointer<PropertyTableModel> guarded(this);
        const int change = m_change;
        reorder(goneLast);
        if (!guarded || m_change != change)
            return;
        gap = {kept.size(), count};
    }
    beginRemoveRows({}, int(gap.first), int(gap.first + gap.second) - 1);
    take(kept);
    endRemoveRows();
}

void PropertyTableModel::insertNew(const ObjectIds& ids)
{
    if (ids.size() == m_ids.size())
        return;
    auto gap = gapOf(m_ids, ids);
    ObjectIds all = ids;
    if (gap.second == 0) {
        const ObjectIds added = filtered(ids, sorted(m_ids), false);
        gap = {m_ids.size(), added.size()};
        all = m_ids;
        all.insert(all.end(), added.begin(), added.end());
    }
    beginInsertRows({}, int(gap.first), int(gap.first + gap.second) - 1);
    take(all);
    endInsertRows();
}

void PropertyTableModel::reorder(const ObjectIds& ids)
{
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    const ObjectIds old = m_ids;
    take(ids);
    QModelIndexList after;
    for (const QModelIndex& each : before)
        after << index(rowOf(old[std::size_t(each.row())]), each.column());
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
}

void PropertyTableModel::take(const ObjectIds& ids)
{
    m_ids = ids;
    m_blocks.clear();
    m_rows.clear();
}

void PropertyTableModel::onChanged(const PropertyKeys& keys, const ObjectIds& ids)
{
    m_blocks.clear();
    if (m_hasAll) {
        const QPointer<PropertyTableModel> guarded(this);
        setRows(allObjects());
        if (!guarded)
            return;
    }
    if (m_ids.empty() || m_columns.empty())
        return;

    int top = ids.empty() ? 0 : rowCount();
    int bottom = ids.empty() ? rowCount() - 1 : -1;
    for (const ObjectId& id : ids) {
        const int row = rowOf(id);
        if (row >= 0) {
            top = std::min(top, row);
            bottom = std::max(bottom, row);
        }
    }
    int left = keys.empty() ? 0 : columnCount();
    int right = keys.empty() ? columnCount() - 1 : -1;
    const auto hasChanged = [&](const std::string& key) {
        return std::find(keys.begin(), keys.end(), key) != keys.end();
    };
    for (int column = 0; column < columnCount(); ++column) {
        const PropertyDescription& property = m_columns[std::size_t(column)];
        if (hasChanged(property.key) || hasChanged(property.field.conditionKey())) {
            left = std::min(left, column);
            right = column;
        }
    }
    if (top <= bottom && left <= right)
        Q_EMIT dataChanged(index(top, left), index(bottom, right));
}

void PropertyTableModel::onUnitsChanged()
{
    if (!m_ids.empty() && !m_columns.empty()) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1),
            {Qt::DisplayRole, Qt::ToolTipRole});
    }
}

void PropertyTableModel::onModelDestroyed()
{
    m_model = nullptr;
    setRows({});
}

int PropertyTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_ids.size());
}

int PropertyTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_columns.size());
}

/// -1 for an unknown key.
int PropertyTableModel::columnOf(const std::string& key) const
{
    const auto found = std::find_if(m_columns.begin(), m_columns.end(),
        [&](const PropertyDescription& column) { return column.key == key; });
    return found == m_columns.end() ? -1 : int(found - m_columns.begin());
}

const PropertyTableModel::Block& PropertyTableModel::block(std::size_t number) const
{
    const auto known = m_blocks.find(number);
    if (known != m_blocks.end())
        return *known->second;

    auto made = std::make_unique<Block>();
    const auto first = m_ids.begin() + std::ptrdiff_t(number * rowsOfBlock);
    const auto rest = std::size_t(m_ids.end() - first);
    const ObjectIds rows(first, first + std::ptrdiff_t(std::min(rest, rowsOfBlock)));
    const ObjectIds sortedRows = sorted(rows);
    for (const ObjectId& id : rows) {
        made->places.push_back(std::size_t(
            std::lower_bound(sortedRows.begin(), sortedRows.end(), id) - sortedRows.begin()));
    }
    PropertyKeys keys;
    for (const PropertyDescription& column : m_columns)
        keys.push_back(column.key);
    made->reasons.resize(keys.size());
    try {
        made->columns = m_model->readValues(keys, sortedRows);
    } catch (...) {
        // Each by itself tells which columns are concerned.
        for (std::size_t column = 0; column < keys.size(); ++column) {
            made->columns.emplace_back();
            try {
                made->columns[column] = m_model->readValues({keys[column]}, sortedRows).front();
            } catch (...) {
                made->reasons[column] = PropertyError::from(std::current_exception()).reason();
            }
        }
    }
    // Enough for what several views show.
    if (m_blocks.size() >= mostBlocks)
        m_blocks.clear();
    return *(m_blocks[number] = std::move(made));
}

QVariant PropertyTableModel::data(const QModelIndex& index, int role) const
{
    if (!m_model || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return QVariant();
    const auto row = std::size_t(index.row());
    const auto column = std::size_t(index.column());
    const Field& field = m_columns[column].field;
    if (role == Qt::TextAlignmentRole) {
        const bool isNumber = field.shape() == Field::Shape::Quantity
            || field.shape() == Field::Shape::Number || field.shape() == Field::Shape::Integer;
        return int(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft));
    }
    if (role != EditRole && role != Qt::DisplayRole && role != Qt::ToolTipRole
        && role != Qt::ForegroundRole) {
        return QVariant();
    }

    const Block& rows = block(row / rowsOfBlock);
    const PropertyValues& values = rows.columns[column];
    const std::size_t place = rows.places[row % rowsOfBlock];
    // A disabled cell could not be copied.
    if (role == Qt::ForegroundRole) {
        return isEnabled(rows, place, column)
            ? QVariant()
            : QVariant(QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text));
    }
    if (role == EditRole) {
        return values.hasObject(place) ? QVariant::fromValue<boost::any>(values[place])
                                       : QVariant();
    }
    if (role == Qt::ToolTipRole && !rows.reasons[column].isEmpty())
        return rows.reasons[column];
    return inItsOwnDirection(field.text(values[place], m_model->units()));
}

bool PropertyTableModel::isEnabled(const Block& rows, std::size_t place, std::size_t column) const
{
    if (m_conditions[column] < 0)
        return true;
    const auto condition = std::size_t(m_conditions[column]);
    const PropertyValues& conditions = rows.columns[condition];
    return m_columns[column].field.isEnabledBy(conditions[place])
        || (!conditions.hasObject(place) && rows.reasons[condition].isEmpty());
}

QVariant PropertyTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return QAbstractTableModel::headerData(section, orientation, role);
    const PropertyDescription& column = m_columns[std::size_t(section)];
    if (role == Qt::DisplayRole)
        return column.title();
    if (role == Qt::ToolTipRole && !column.field.toolTip().isEmpty())
        return column.field.toolTip();
    return QVariant();
}

} // namespace vrn::qt
