#include <vrn/qt/property_selection.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/qt/property_error.h>

#include "property_command_p.h"
#include "property_file_p.h"

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>
#include <QUndoStack>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <utility>

namespace vrn::qt {

namespace {

struct SelectionTexts
{
    Q_DECLARE_TR_FUNCTIONS(vrn::qt::PropertySelection)
};

QString number(std::size_t count)
{
    return QLocale().toString(qulonglong(count));
}

QString changedText(const QString& title, std::size_t changed, std::size_t selected)
{
    if (changed > 0)
        return SelectionTexts::tr("%1: %2 of %3 changed")
            .arg(title, number(changed), number(selected));
    return selected > 1 ? SelectionTexts::tr("%1: none of %2 changed").arg(title, number(selected))
                        : SelectionTexts::tr("%1: not changed").arg(title);
}

/// Why an object keeps its value.
enum Left
{
    NoValue,
    Below,
    Above,
    NotWhole,
    NotANumber,
    Refused
};
constexpr std::size_t reasonsToLeave = 6;

boost::any toAny(double value, Field::Shape shape)
{
    return shape == Field::Shape::Integer ? boost::any(int(value)) : boost::any(value);
}

SharedIds idsOf(const std::vector<PropertyEdit>& edits)
{
    if (edits.size() == 1)
        return edits.front().ids;
    ObjectIds ids;
    for (const PropertyEdit& edit : edits)
        ids.insert(ids.end(), edit.ids.begin(), edit.ids.end());
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    return ids;
}

/// The nearest whole number, if the difference is no more than the rounding of a factor and of
/// its product: 70 * 1.1 is 77.
std::optional<double> wholeNumber(double value)
{
    const double nearest = std::nearbyint(value);
    constexpr double rounding = 4.0 * std::numeric_limits<double>::epsilon();
    if (std::abs(value - nearest) <= std::abs(value) * rounding)
        return nearest;
    return std::nullopt;
}

} // namespace

/// An edit of one property, ready to be written.
struct PropertySelection::Plan
{
    const Row* row = nullptr;
    std::size_t selected = 0;
    SharedIds ids; ///< That change.
    PropertyValues before;
    PropertyValues after;
    std::array<std::size_t, reasonsToLeave> left{};
    QString reason; ///< The first one of those that were refused.
    boost::any lowest; ///< What the objects that are not left would have.
    boost::any highest;

    std::size_t leftCount() const
    {
        std::size_t count = 0;
        for (const std::size_t each : left)
            count += each;
        return count;
    }

    /// How many objects are left and why. The reason of a check is a sentence of its own, so
    /// it comes last.
    /// @{
    /// The rest of a receipt, with the comma before it. There are some.
    QString leftText(const vrn::units::Context& units) const;
    /// Of a preview. Empty if there are none.
    QString wouldBeLeftText(const vrn::units::Context& units) const;
    /// @}

    /// As "1 would exceed 40.000 m", with `count` in place of the number.
    QString outcomeText(Left why, const QString& count, const vrn::units::Context& units) const;

    /// Without places, all objects change.
    void setBefore(const SharedIds& all, const PropertyValues& values,
        const std::optional<std::vector<std::size_t>>& places)
    {
        ids = all;
        before = values;
        if (!places)
            return;
        ObjectIds some;
        some.reserve(places->size());
        for (const std::size_t place : *places)
            some.push_back(all[place]);
        ids = std::move(some);
        before = PropertyValues(values.column()->select(*places), false);
    }
};

PropertySelection::PropertySelection() = default;
PropertySelection::~PropertySelection() = default;
PropertySelection::PropertySelection(const PropertySelection&) = default;
PropertySelection::PropertySelection(PropertySelection&&) noexcept = default;
PropertySelection& PropertySelection::operator=(const PropertySelection&) = default;
PropertySelection& PropertySelection::operator=(PropertySelection&&) noexcept = default;

PropertySelection::PropertySelection(PropertyModel* model, ObjectIds ids, QUndoStack* stack)
    : m_model(model)
    , m_stack(stack)
{
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    m_ids = std::move(ids);
    if (!m_model || m_ids.empty())
        return;

    std::vector<std::uint32_t> kinds;
    for (const ObjectId& id : m_ids) {
        if (kinds.empty() || kinds.back() != id.kind)
            kinds.push_back(id.kind);
    }
    const PropertyList& first = m_model->kind(kinds.front());
    for (const PropertyDescription& property : first.properties()) {
        Row row{property.key, property.caption, first.sections()[property.section], property.field,
            property.title(), {}};
        for (const std::uint32_t kind : kinds) {
            const PropertyDescription* other = m_model->kind(kind).find(property.key);
            if (other && other->field.isLike(property.field))
                row.fields.emplace_back(kind, other->field);
        }
        if (row.fields.size() == kinds.size())
            m_rows.push_back(std::move(row));
    }
}

bool PropertySelection::Row::isReadOnly() const
{
    return std::any_of(
        fields.begin(), fields.end(), [](const auto& each) { return each.second.isReadOnly(); });
}

bool PropertySelection::Row::isOptional() const
{
    return std::all_of(
        fields.begin(), fields.end(), [](const auto& each) { return each.second.isOptional(); });
}

const PropertySelection::Row* PropertySelection::row(const std::string& key) const
{
    const auto found = std::find_if(
        m_rows.begin(), m_rows.end(), [&](const Row& row) { return row.key == key; });
    return found == m_rows.end() ? nullptr : &*found;
}

QString PropertySelection::countedName(const ObjectIds& ids) const
{
    if (!m_model)
        return QString();
    QStringList names;
    for (auto first = ids.begin(); first != ids.end();) {
        const ObjectId last(std::numeric_limits<std::uint64_t>::max(), first->kind);
        const auto end = std::upper_bound(first, ids.end(), last);
        names << m_model->kind(first->kind).countedName(std::size_t(end - first));
        first = end;
    }
    if (names.size() < 2)
        return names.join(QString());
    const QString last = names.takeLast();
    return SelectionTexts::tr("%1 and %2").arg(names.join(QStringLiteral(", ")), last);
}

std::vector<PropertyState> PropertySelection::read(const PropertyKeys& keys) const
{
    return m_model ? m_model->readStates(keys, m_ids) : std::vector<PropertyState>(keys.size());
}

PropertySelection::Plan PropertySelection::plan(
    const std::string& key, const boost::any& value) const
{
    const Row* found = row(key);
    VRN_ASSERT_MESSAGE(found, "the selection has no such property")("key", key);
    if (!found)
        return {};
    if (found->isReadOnly())
        throw PropertyError(SelectionTexts::tr("It cannot be changed."));
    if (m_model->isWriting())
        throw PropertyError(SelectionTexts::tr("Another edit is being written."));
    try {
        const auto* relative = boost::any_cast<RelativeEdit>(&value);
        return relative ? planRelative(*found, *relative) : planValue(*found, value);
    } catch (...) {
        throw PropertyError::from(std::current_exception());
    }
}

PropertySelection::Plan PropertySelection::planValue(const Row& row, const boost::any& value) const
{
    Plan plan;
    plan.row = &row;
    for (const auto& field : row.fields) {
        const QString reason = field.second.reasonAgainst(value, m_model->units());
        if (!reason.isEmpty())
            throw PropertyError(reason);
    }
    const PropertyValues old = m_model->readValues({row.key}, m_ids).front();
    const auto uniform = row.field.valueType().makeColumn(1);
    uniform->set(0, value);
    const auto places = old.column()->placesOtherThan(*uniform);
    const auto& presence = old.column()->presence;
    plan.selected = presence.size();
    if (places) {
        plan.selected -= std::size_t(
            std::count(presence.begin(), presence.end(), detail::Presence::NoObject));
    }
    plan.setBefore(m_ids, old, places);
    plan.after = PropertyValues(uniform, true);
    plan.lowest = plan.highest = value;
    return plan;
}

PropertySelection::Plan PropertySelection::planRelative(
    const Row& row, const RelativeEdit& edit) const
{
    Plan plan;
    plan.row = &row;
    if (!row.field.takesRelativeEdits())
        throw PropertyError(
            SelectionTexts::tr("A change of each object's own value is not possible here."));

    const vrn::units::Context& units = m_model->units();
    const Field::Shape shape = row.field.shape();
    const bool isInteger = shape == Field::Shape::Integer;
    const PropertyValues old = m_model->readValues({row.key}, m_ids).front();
    const auto after = row.field.valueType().makeColumn(m_ids.size());
    std::vector<std::size_t> places;
    std::optional<double> lowest;
    std::optional<double> highest;
    auto field = row.fields.begin();
    for (std::size_t place = 0; place < m_ids.size(); ++place) {
        if (!old.hasObject(place))
            continue;
        while (field->first != m_ids[place].kind)
            ++field;
        ++plan.selected;
        if (old.isEmpty(place)) {
            ++plan.left[NoValue];
            continue;
        }
        const double before = isInteger ? *old.find<int>(place) : *old.find<double>(place);
        double result = applied(edit, before, field->second, units);
        if (!std::isfinite(result)) {
            ++plan.left[NotANumber];
            continue;
        }
        if (isInteger) {
            const std::optional<double> rounded = wholeNumber(result);
            if (!rounded) {
                ++plan.left[NotWhole];
                continue;
            }
            result = *rounded;
        }
        const int side = field->second.sideOfRange(result, units);
        const bool isTooLarge = isInteger
            && (result < std::numeric_limits<int>::lowest()
                || result > std::numeric_limits<int>::max());
        if (side != 0 || isTooLarge) {
            ++plan.left[side < 0 ? Below : side > 0 ? Above : NotANumber];
            continue;
        }
        const boost::any value = toAny(result, shape);
        const QString reason = field->second.reasonAgainst(value, units);
        if (!reason.isEmpty()) {
            ++plan.left[Refused];
            plan.reason = plan.reason.isEmpty() ? reason : plan.reason;
            continue;
        }
        lowest = std::min(lowest.value_or(result), result);
        highest = std::max(highest.value_or(result), result);
        after->set(place, value);
        if (!after->isSameAt(place, *old.column(), place))
            places.push_back(place);
    }
    const bool refusesAll = std::any_of(row.fields.begin(), row.fields.end(),
        [](const auto& each) { return each.second.outOfRangePolicy() == OutOfRange::RefuseAll; });
    if (refusesAll && plan.left[Below] + plan.left[Above] + plan.left[Refused] > 0)
        throw PropertyError(plan.wouldBeLeftText(units));
    const bool changesAll = places.size() == m_ids.size();
    plan.after = PropertyValues(changesAll ? after : after->select(places), false);
    plan.setBefore(m_ids, old, changesAll ? std::nullopt : std::make_optional(std::move(places)));
    if (lowest) {
        plan.lowest = toAny(*lowest, shape);
        plan.highest = toAny(*highest, shape);
    }
    return plan;
}

QString PropertySelection::Plan::outcomeText(
    Left why, const QString& count, const vrn::units::Context& units) const
{
    switch (why) {
    case Below:
        return SelectionTexts::tr("%1 would fall below %2")
            .arg(count, row->field.limitTexts(units).first);
    case Above:
        return SelectionTexts::tr("%1 would exceed %2")
            .arg(count, row->field.limitTexts(units).second);
    case NotWhole:
        return SelectionTexts::tr("%1 would not be whole").arg(count);
    case NotANumber:
        return SelectionTexts::tr("%1 would be too large").arg(count);
    case NoValue:
        return (left[why] == 1 ? SelectionTexts::tr("%1 has no value")
                               : SelectionTexts::tr("%1 have no value"))
            .arg(count);
    case Refused:
        break;
    }
    return SelectionTexts::tr("%1 would be refused: %2").arg(count, reason);
}

QString PropertySelection::Plan::wouldBeLeftText(const vrn::units::Context& units) const
{
    QStringList parts;
    for (const Left why : {Below, Above, NotWhole, NotANumber, NoValue, Refused}) {
        if (left[why] > 0)
            parts << outcomeText(why, number(left[why]), units);
    }
    return parts.join(QStringLiteral(", "));
}

QString PropertySelection::Plan::leftText(const vrn::units::Context& units) const
{
    // "Length: not changed, it would exceed 40.000 m"
    if (selected == 1) {
        if (left[Refused] > 0)
            return QStringLiteral(". ") + reason;
        const auto why = std::find(left.begin(), left.end(), 1U) - left.begin();
        return QStringLiteral(", ") + outcomeText(Left(why), SelectionTexts::tr("it"), units);
    }
    QStringList parts;
    for (const Left why : {Below, Above, NotWhole, NotANumber}) {
        const std::size_t count = left[why];
        if (count == 0)
            continue;
        const QString outcome = outcomeText(why, number(count), units);
        parts << (count == 1 ? SelectionTexts::tr("%1 and was left")
                             : SelectionTexts::tr("%1 and were left"))
                     .arg(outcome);
    }
    if (left[NoValue] > 0)
        parts << outcomeText(NoValue, number(left[NoValue]), units);
    if (left[Refused] > 0) {
        parts << (left[Refused] == 1 ? SelectionTexts::tr("%1 was left: %2")
                                     : SelectionTexts::tr("%1 were left: %2"))
                     .arg(number(left[Refused]), reason);
    }
    return QStringLiteral(", ") + parts.join(QStringLiteral(", "));
}

PropertyReceipt PropertySelection::receipt(const Plan& plan) const
{
    PropertyReceipt receipt;
    receipt.key = plan.row->key;
    receipt.selected = plan.selected;
    receipt.changed = plan.ids.size();
    receipt.left = plan.leftCount();
    receipt.same = receipt.selected - receipt.changed - receipt.left;
    receipt.text = changedText(plan.row->title, receipt.changed, receipt.selected);
    if (receipt.left > 0)
        receipt.text += plan.leftText(m_model->units());
    return receipt;
}

void PropertySelection::carryOut(
    std::vector<Plan> plans, const QString& name, std::uint64_t gesture)
{
    std::vector<PropertyEdit> edits;
    std::vector<PropertyValues> before;
    for (Plan& plan : plans) {
        if (plan.ids.empty())
            continue;
        edits.push_back({plan.row->key, std::move(plan.ids), plan.after});
        before.push_back(plan.before);
    }
    if (edits.empty())
        return;
    QString objects;
    try {
        objects = countedName(idsOf(edits));
    } catch (...) {
        throw PropertyError::from(std::current_exception());
    }
    auto command = std::make_unique<PropertyCommand>(m_model, std::move(edits), std::move(before),
        SelectionTexts::tr("%1 of %2").arg(name, objects), gesture);

    // write() may destroy the model, the stack and this selection.
    PropertyModel& model = *m_model;
    const QPointer<PropertyModel> modelLeft(&model);
    const QPointer<QUndoStack> stackLeft = m_stack;
    model.apply(command->edits());
    if (modelLeft && stackLeft)
        stackLeft->push(command.release());
}

PropertyReceipt PropertySelection::edit(
    const std::string& key, const boost::any& value, std::uint64_t gesture)
{
    if (!m_model)
        return {};
    Plan made = plan(key, value);
    if (!made.row)
        return {};
    PropertyReceipt done = receipt(made);
    const QString name = made.row->title;
    std::vector<Plan> plans;
    plans.push_back(std::move(made));
    carryOut(std::move(plans), name, gesture);
    return done;
}

PropertyReceipt PropertySelection::preview(const std::string& key, const boost::any& value) const
{
    if (!m_model)
        return {};
    const Plan made = plan(key, value);
    if (!made.row)
        return {};
    PropertyReceipt expected = receipt(made);
    const Field& field = made.row->field;
    const QString lowest = field.text(made.lowest, m_model->units());
    const QString highest = field.text(made.highest, m_model->units());
    QStringList parts;
    if (expected.changed + expected.same > 0) {
        parts << SelectionTexts::tr("%1: %2").arg(countedName(),
            lowest == highest ? lowest : SelectionTexts::tr("%1 to %2").arg(lowest, highest));
    }
    const QString left = made.wouldBeLeftText(m_model->units());
    if (!left.isEmpty())
        parts << left;
    expected.text = parts.join(QStringLiteral(", "));
    return expected;
}

QJsonObject PropertySelection::save() const
{
    PropertyFile file;
    if (!m_model)
        return file.toJson();
    file.kinds = kindKeys();
    PropertyKeys keys;
    for (const Row& row : m_rows) {
        if (!row.isReadOnly() && row.field.valueType().isKept())
            keys.push_back(row.key);
    }
    const std::vector<PropertyState> states = read(keys);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (states[i].kind == PropertyState::Unreadable)
            throw PropertyError(states[i].reason);
        if (states[i].kind == PropertyState::Common)
            file.values[keys[i]] = row(keys[i])->field.valueType().toText(states[i].value);
        else if (states[i].kind == PropertyState::NoValue)
            file.values[keys[i]] = std::nullopt;
    }
    return file.toJson();
}

PropertyReceipt PropertySelection::load(const QJsonObject& saved)
{
    const PropertyFile file = PropertyFile::fromJson(saved);
    if (!m_model)
        return {};
    if (file.kinds != kindKeys())
        throw PropertyError(SelectionTexts::tr("The file is of other objects."));

    std::vector<Plan> plans;
    ObjectIds changed;
    PropertyReceipt done;
    for (const auto& entry : file.values) {
        const Row* found = row(entry.first);
        if (!found || !found->field.valueType().isKept()) {
            throw PropertyError(SelectionTexts::tr("The file has another property: %1.")
                                    .arg(QString::fromStdString(entry.first)));
        }
        boost::any value;
        if (entry.second)
            value = found->field.valueType().fromText(*entry.second);
        if (entry.second && value.empty()) {
            throw PropertyError(
                SelectionTexts::tr("%1: \"%2\" is not a value.").arg(found->title, *entry.second));
        }
        try {
            plans.push_back(plan(entry.first, value));
        } catch (const PropertyError& error) {
            throw PropertyError(SelectionTexts::tr("%1: %2").arg(found->title, error.reason()));
        }
        const Plan& made = plans.back();
        done.selected = std::max(done.selected, made.selected);
        changed.insert(changed.end(), made.ids.begin(), made.ids.end());
    }
    std::sort(changed.begin(), changed.end());
    changed.erase(std::unique(changed.begin(), changed.end()), changed.end());
    done.changed = changed.size();
    done.same = done.selected - done.changed;
    const QString name = plans.size() == 1
        ? plans.front().row->title
        : SelectionTexts::tr("%n properties", nullptr, int(plans.size()));
    done.text = changedText(name, done.changed, done.selected);
    carryOut(std::move(plans), name, 0);
    return done;
}

std::vector<std::string> PropertySelection::kindKeys() const
{
    std::vector<std::string> keys;
    for (const ObjectId& id : m_ids) {
        const std::string& key = m_model->kind(id.kind).key();
        if (keys.empty() || keys.back() != key)
            keys.push_back(key);
    }
    return keys;
}

} // namespace vrn::qt
