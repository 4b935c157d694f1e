#include <vrn/qt/field.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/qt/property_error.h>

#include <QCoreApplication>
#include <QLocale>
#include <QSharedData>

#include <algorithm>
#include <limits>
#include <locale>

namespace vrn::qt {

struct Field::Data : public QSharedData
{
    Data(Shape theShape, std::shared_ptr<const detail::ValueType> theType)
        : shape(theShape)
        , type(std::move(theType))
    {}

    Shape shape;
    std::shared_ptr<const detail::ValueType> type;
    UnitId kind = vrn::units::UnitId::DIMENSIONLESS;
    UnitId storageUnit = vrn::units::UnitId::BLANK;
    int decimals = 3;
    double lowest = -std::numeric_limits<double>::infinity();
    double highest = std::numeric_limits<double>::infinity();
    OutOfRange outOfRange = OutOfRange::Leave;
    int maxLength = std::numeric_limits<int>::max();
    Check check;
    bool isOptional = false;
    bool isReadOnly = false;
    bool takesRelativeEdits = true;
    bool offersFullDigits = true;
    bool hasHistory = false;
    std::string historyKey;
    QString toolTip;
    PropertyKeys sources;
    std::string conditionKey;
    boost::any conditionValue;
    std::shared_ptr<const detail::ValueType> conditionType;
    NamedValueList entries;
    std::string editor;
};

namespace {

struct FieldTexts
{
    Q_DECLARE_TR_FUNCTIONS(vrn::qt::Field)
};

using SharedType = std::shared_ptr<const detail::ValueType>;

bool haveSameType(const SharedType& a, const SharedType& b)
{
    return a && b ? a->type() == b->type() : !a && !b;
}

} // namespace

Field::Field(Shape shape, std::shared_ptr<const detail::ValueType> type)
    : m_data(new Data(shape, std::move(type)))
{}

Field::Field(const Field&) = default;
Field::Field(Field&&) noexcept = default;
Field& Field::operator=(const Field&) = default;
Field& Field::operator=(Field&&) noexcept = default;
Field::~Field() = default;

Field::Shape Field::shape() const
{
    return m_data->shape;
}

Field::UnitId Field::kind() const
{
    return m_data->kind;
}

Field::UnitId Field::storageUnit() const
{
    return m_data->storageUnit;
}

const NamedValueList& Field::entries() const
{
    return m_data->entries;
}

bool Field::isOptional() const
{
    return m_data->isOptional;
}

bool Field::isReadOnly() const
{
    return m_data->isReadOnly;
}

bool Field::takesRelativeEdits() const
{
    return m_data->takesRelativeEdits && !m_data->isReadOnly
        && (m_data->shape == Shape::Quantity || m_data->shape == Shape::Number
            || m_data->shape == Shape::Integer);
}

OutOfRange Field::outOfRangePolicy() const
{
    return m_data->outOfRange;
}

bool Field::offersFullDigits() const
{
    return m_data->offersFullDigits
        && (m_data->shape == Shape::Quantity || m_data->shape == Shape::Number);
}

std::string Field::historyKey() const
{
    if (m_data->hasHistory && m_data->historyKey.empty() && m_data->shape == Shape::Quantity)
        return "quantity." + std::to_string(int(m_data->kind));
    return m_data->historyKey;
}

const QString& Field::toolTip() const
{
    return m_data->toolTip;
}

const PropertyKeys& Field::sources() const
{
    return m_data->sources;
}

const std::string& Field::conditionKey() const
{
    return m_data->conditionKey;
}

bool Field::isEnabledBy(const boost::any& value) const
{
    return !m_data->conditionType
        || (!value.empty() && m_data->conditionType->isSame(value, m_data->conditionValue));
}

std::string Field::editor() const
{
    if (!m_data->editor.empty())
        return m_data->editor;
    switch (m_data->shape) {
    case Shape::Quantity:
        return "property.quantity";
    case Shape::Number:
        return "property.number";
    case Shape::Integer:
        return "property.integer";
    case Shape::Text:
        return "property.text";
    case Shape::Flag:
        return "property.flag";
    case Shape::Choice:
        return "property.choice";
    case Shape::Custom:
        break;
    }
    return "property.custom";
}

const detail::ValueType& Field::valueType() const
{
    return *m_data->type;
}

void Field::setKind(UnitId kind)
{
    m_data->kind = kind;
}

void Field::setDecimals(int decimals)
{
    m_data->decimals = decimals;
}

void Field::setRange(double lowest, double highest)
{
    VRN_ASSERT(lowest <= highest)("lowest", lowest)("highest", highest);
    m_data->lowest = lowest;
    m_data->highest = highest;
}

void Field::setOutOfRange(OutOfRange policy)
{
    m_data->outOfRange = policy;
}

void Field::setMaxLength(int characters)
{
    m_data->maxLength = characters;
}

void Field::setCheck(Check check)
{
    m_data->check = std::move(check);
}

void Field::setOptional()
{
    m_data->isOptional = true;
}

void Field::setReadOnly()
{
    m_data->isReadOnly = true;
}

void Field::setStorageUnit(UnitId unit)
{
    m_data->storageUnit = unit;
}

void Field::setRelativeEdits(bool offered)
{
    m_data->takesRelativeEdits = offered;
}

void Field::setFullDigits(bool offered)
{
    m_data->offersFullDigits = offered;
}

void Field::setHistory(const std::string& key)
{
    m_data->hasHistory = true;
    m_data->historyKey = key;
}

void Field::setHistoryOf(const std::string& propertyKey)
{
    if (m_data->hasHistory && historyKey().empty())
        m_data->historyKey = "property." + propertyKey;
}

void Field::setToolTip(const QString& text)
{
    m_data->toolTip = text;
}

void Field::setSources(const PropertyKeys& keys)
{
    m_data->sources = keys;
}

void Field::setCondition(
    const std::string& key, const boost::any& value, std::shared_ptr<const detail::ValueType> type)
{
    m_data->conditionKey = key;
    m_data->conditionValue = value;
    m_data->conditionType = std::move(type);
}

void Field::checkCondition(const Field* source)
{
    if (!m_data->conditionType)
        return;
    VRN_ASSERT_MESSAGE(source, "a condition names a property of its kind of object")
    ("key", m_data->conditionKey);
    const bool isOfType = source && source->valueType().type() == m_data->conditionType->type();
    VRN_ASSERT_MESSAGE(!source || isOfType, "a condition has the type of the property it names")
    ("key", m_data->conditionKey);
    if (!isOfType)
        setCondition({}, {}, nullptr);
}

void Field::setEntries(const NamedValueList& entries)
{
    m_data->entries = entries;
}

void Field::setEditor(const std::string& name)
{
    m_data->editor = name;
}

bool Field::isLike(const Field& other) const
{
    const Data& a = *m_data;
    const Data& b = *other.m_data;
    return a.shape == b.shape && a.type->type() == b.type->type() && a.kind == b.kind
        && a.storageUnit == b.storageUnit && a.decimals == b.decimals
        && detail::isSame(a.lowest, b.lowest) && detail::isSame(a.highest, b.highest)
        && a.maxLength == b.maxLength && a.editor == b.editor && a.conditionKey == b.conditionKey
        && haveSameType(a.conditionType, b.conditionType)
        && (!a.conditionType || a.conditionType->isSame(a.conditionValue, b.conditionValue))
        && std::equal(a.entries.begin(), a.entries.end(), b.entries.begin(), b.entries.end(),
            [&](const auto& entry, const auto& otherEntry) {
                return entry.first == otherEntry.first
                    && a.type->isSame(entry.second, otherEntry.second);
            });
}

double Field::toBase(double stored, const vrn::units::Context& units) const
{
    if (m_data->storageUnit == vrn::units::UnitId::BLANK)
        return stored;
    return units.converter().to_base({m_data->storageUnit, stored});
}

double Field::fromBase(double value, const vrn::units::Context& units) const
{
    if (m_data->storageUnit == vrn::units::UnitId::BLANK)
        return value;
    return units.converter().from_base(value, m_data->storageUnit).value;
}

int Field::sideOfRange(double stored, const vrn::units::Context& units) const
{
    // In the scale of the model, so that a limit that is typed is in range after it has been
    // converted.
    if (!(stored >= fromBase(m_data->lowest, units)))
        return -1;
    return stored <= fromBase(m_data->highest, units) ? 0 : 1;
}

QString Field::text(const boost::any& value, const vrn::units::Context& units) const
{
    if (value.empty())
        return QString();
    VRN_ASSERT_MESSAGE(value.type() == m_data->type->type(), "a value has the type of its field");
    if (value.type() != m_data->type->type())
        return QString();
    const auto* number = boost::any_cast<double>(&value);
    switch (m_data->shape) {
    case Shape::Quantity:
        try {
            return QString::fromStdWString(
                units.format({m_data->kind, toBase(*number, units)}, std::locale::classic()));
        } catch (const std::exception&) {
            // A kind that these units cannot show. Its number can be.
            return detail::exactText(*number);
        }
    case Shape::Number:
        return QString::number(*number, 'f', m_data->decimals);
    case Shape::Flag:
        return boost::any_cast<bool>(value) ? FieldTexts::tr("Yes") : FieldTexts::tr("No");
    case Shape::Choice:
        for (const auto& entry : m_data->entries) {
            if (m_data->type->isSame(entry.second, value))
                return entry.first;
        }
        break;
    case Shape::Integer:
    case Shape::Text:
    case Shape::Custom:
        break;
    }
    return m_data->type->toText(value);
}

std::pair<QString, QString> Field::limitTexts(const vrn::units::Context& units) const
{
    const auto limit = [&](double value) {
        return text(m_data->shape == Shape::Integer ? boost::any(int(value))
                                                    : boost::any(fromBase(value, units)),
            units);
    };
    return {limit(m_data->lowest), limit(m_data->highest)};
}

QString Field::range(const vrn::units::Context& units) const
{
    const auto limits = limitTexts(units);
    if (m_data->lowest == -std::numeric_limits<double>::infinity())
        return FieldTexts::tr("It must be at most %1.").arg(limits.second);
    if (m_data->highest == std::numeric_limits<double>::infinity())
        return FieldTexts::tr("It must be at least %1.").arg(limits.first);
    return FieldTexts::tr("It must be between %1 and %2.").arg(limits.first, limits.second);
}

QString Field::reasonAgainst(const boost::any& value, const vrn::units::Context& units) const
{
    if (value.empty())
        return m_data->isOptional ? QString() : FieldTexts::tr("A value is needed.");
    VRN_ASSERT_MESSAGE(value.type() == m_data->type->type(), "a value has the type of its field");
    if (value.type() != m_data->type->type())
        return FieldTexts::tr("It is a value of another type.");

    const auto* number = boost::any_cast<double>(&value);
    const auto* integer = boost::any_cast<int>(&value);
    if (m_data->shape == Shape::Integer
            ? sideOfRange(*integer, units) != 0
            : (m_data->shape == Shape::Quantity || m_data->shape == Shape::Number)
                && sideOfRange(*number, units) != 0) {
        return m_data->lowest == -std::numeric_limits<double>::infinity()
                && m_data->highest == std::numeric_limits<double>::infinity()
            ? FieldTexts::tr("It is not a number.")
            : range(units);
    }
    if (m_data->shape == Shape::Text) {
        const int length = int(boost::any_cast<const QString&>(value).size());
        if (length > m_data->maxLength) {
            return FieldTexts::tr("It has %1 characters, and may have %2.")
                .arg(length)
                .arg(m_data->maxLength);
        }
    }
    if (m_data->shape == Shape::Choice && !m_data->entries.empty()
        && std::none_of(m_data->entries.begin(), m_data->entries.end(),
            [&](const auto& entry) { return m_data->type->isSame(entry.second, value); })) {
        return FieldTexts::tr("It is none of the entries.");
    }
    if (!m_data->check)
        return QString();
    try {
        return m_data->check(value);
    } catch (...) {
        return PropertyError::from(std::current_exception()).reason();
    }
}

namespace field {

namespace {

/// Reaches what a finished field does not offer.
template <typename V>
struct Maker : public FieldOf<V>
{
    using FieldOf<V>::FieldOf;
    using FieldOf<V>::setDecimals;
    using FieldOf<V>::setKind;
};

} // namespace

FieldOf<double> quantity(vrn::units::UnitId::UnitId kind)
{
    Maker<double> made(Field::Shape::Quantity);
    made.setKind(kind);
    return made;
}

FieldOf<double> number(int decimals)
{
    Maker<double> made(Field::Shape::Number);
    made.setDecimals(decimals);
    return made;
}

FieldOf<int> integer()
{
    return FieldOf<int>(Field::Shape::Integer);
}

FieldOf<QString> text()
{
    return FieldOf<QString>(Field::Shape::Text);
}

FieldOf<bool> flag()
{
    return FieldOf<bool>(Field::Shape::Flag);
}

} // namespace field

} // namespace vrn::qt
