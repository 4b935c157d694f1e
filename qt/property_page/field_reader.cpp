#include "field_reader_p.h"

#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/entry_validator.h>
#include <vrn/qt/property_error.h>
#include <vrn/qt/relative_edit.h>
#include <vrn/qt/unit_validator.h>

#include <boost/make_shared.hpp>

#include <QCoreApplication>

#include <cmath>
#include <exception>
#include <limits>

namespace vrn::qt::detail {
namespace {

using vrn::units::EntryState;

struct ReaderTexts
{
    Q_DECLARE_TR_FUNCTIONS(vrn::qt::PropertyPage)
};

FieldReading refusedReading(const QString& reason, EntryState state = EntryState::Refused)
{
    FieldReading reading;
    reading.state = state;
    reading.reason = reason.isEmpty() ? ReaderTexts::tr("It cannot be read.") : reason;
    return reading;
}

FieldReading completeReading(const boost::any& value)
{
    FieldReading reading;
    reading.state = EntryState::Complete;
    reading.value = value;
    return reading;
}

} // namespace

FieldReader::FieldReader(const PropertySelection::Row& row)
    : m_row(row)
{}

FieldReader::~FieldReader() = default;

void FieldReader::setUnits(const vrn::units::Context& units)
{
    m_units = units;
    m_entries.reset();
}

bool FieldReader::isNumeric() const
{
    return m_row.field.shape() != Field::Shape::Text;
}

// The inner validator has no range: it would change what is out of it, and the field tells
// why it refuses that.
EntryValidator& FieldReader::entries() const
{
    if (!m_entries) {
        IValidator::pointer target;
        if (m_row.field.shape() == Field::Shape::Quantity)
            target = boost::make_shared<UnitValidator>(m_units, m_row.field.kind());
        else
            target = boost::make_shared<DoubleEditValidator>();
        m_entries = boost::make_shared<EntryValidator>(target);
    }
    return *m_entries;
}

FieldReading FieldReader::read(const QString& text) const
{
    const bool isCleared = text.isEmpty() && (isNumeric() || m_row.isOptional());
    if (!isCleared && isNumeric())
        return readNumber(text);
    const boost::any value = isCleared ? boost::any() : boost::any(text);
    const QString reason = reasonAgainst(value);
    return reason.isEmpty() ? completeReading(value) : refusedReading(reason);
}

FieldReading FieldReader::readNumber(const QString& text) const
{
    if (isRelativeEdit(text)) {
        const RelativeEntry entry = readRelativeEdit(text, m_row.field, m_units);
        return entry.state == EntryState::Complete ? completeReading(entry.edit)
                                                   : refusedReading(entry.reason, entry.state);
    }
    const EntryReading entry = entries().read(text);
    if (entry.state != EntryState::Complete)
        return refusedReading(entry.reason, entry.state);
    boost::any read;
    if (!entries().validate(text, read, {}))
        return refusedReading(QString());
    QString reason;
    const boost::any value = valueOf(read, reason);
    if (reason.isEmpty())
        reason = reasonAgainst(value);
    if (!reason.isEmpty())
        return refusedReading(reason);
    FieldReading reading = completeReading(value);
    if (!entry.outcome.isEmpty())
        reading.outcome = QStringLiteral("= ") + this->text(value);
    return reading;
}

// In the numbers of the model.
boost::any FieldReader::valueOf(const boost::any& read, QString& reason) const
{
    if (const auto* quantity = boost::any_cast<vrn::units::IConverter::quantity>(&read))
        return m_row.field.fromBase(quantity->value, m_units);
    const auto* number = boost::any_cast<double>(&read);
    if (number && m_row.field.shape() == Field::Shape::Integer)
        return wholeNumber(*number, reason);
    return read;
}

boost::any FieldReader::wholeNumber(double number, QString& reason) const
{
    constexpr int lowest = std::numeric_limits<int>::lowest();
    constexpr int highest = std::numeric_limits<int>::max();
    if (number != std::trunc(number)) {
        reason = ReaderTexts::tr("It must be a whole number.");
        return {};
    }
    if (number >= lowest && number <= highest)
        return int(number);
    // The range of the field tells more, if there is one.
    const int nearest = number < lowest ? lowest : highest;
    reason = reasonAgainst(nearest);
    if (reason.isEmpty())
        reason = ReaderTexts::tr("It must be between %1 and %2.").arg(lowest).arg(highest);
    return {};
}

// Each kind of object may have checks of its own.
QString FieldReader::reasonAgainst(const boost::any& value) const
{
    try {
        for (const auto& field : m_row.fields) {
            const QString reason = field.second.reasonAgainst(value, m_units);
            if (!reason.isEmpty())
                return reason;
        }
    } catch (...) {
        return PropertyError::from(std::current_exception()).reason();
    }
    return QString();
}

QStringList FieldReader::completions(const QString& text) const
{
    if (!isNumeric() || isRelativeEdit(text))
        return QStringList();
    const auto plain = vrn::units::EntryReader().read(text.toStdWString());
    const bool hasUnit = plain.state != EntryState::Complete
        && entries().read(text).state == EntryState::Complete;
    return hasUnit ? QStringList() : entries().completions(text);
}

QString FieldReader::textOfEntry(const QString& entry) const
{
    if (m_row.field.shape() != Field::Shape::Quantity)
        return entry;
    const auto valueOfText = [this](const QString& text) {
        boost::any read;
        QString reason;
        return entries().validate(text, read, {}) ? valueOf(read, reason) : boost::any();
    };
    const boost::any value = valueOfText(entry);
    const QString shown = text(value);
    const bool readsBack = !value.empty()
        && m_row.field.valueType().isSame(valueOfText(shown), value);
    return readsBack ? shown : entry;
}

QString FieldReader::text(const boost::any& value) const
{
    return m_row.field.text(value, m_units);
}

QString FieldReader::fullText(const boost::any& value) const
{
    return m_row.field.exactText(value, m_units);
}

} // namespace vrn::qt::detail
