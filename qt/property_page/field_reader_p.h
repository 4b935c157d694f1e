#pragma once

#include <vrn/qt/property_selection.h>
#include <vrn/units/context.h>
#include <vrn/units/entry.h>

#include <boost/any.hpp>
#include <boost/shared_ptr.hpp>

#include <QString>
#include <QStringList>

namespace vrn::qt {
struct EntryValidator;
}

namespace vrn::qt::detail {

/// What a text that the user has typed is for a property.
struct FieldReading
{
    vrn::units::EntryState state = vrn::units::EntryState::Refused;
    /// If the text is complete: a value of the field's type, a RelativeEdit, or an empty one
    /// for an emptied optional property.
    boost::any value;
    QString reason; ///< If it is not.
    QString outcome; ///< If it is: what a sum comes to. Empty if that is what is written.
};

/// Reads and writes the texts of one property: quantities, numbers, integers and texts.
/// What is read is the value of the text as it is typed, in the numbers of the model. A value
/// that the field refuses is refused here; one that is shown is never changed.
class FieldReader
{
public:
    explicit FieldReader(const PropertySelection::Row& row);
    ~FieldReader();

    const PropertySelection::Row& row() const { return m_row; }
    const vrn::units::Context& units() const { return m_units; }
    void setUnits(const vrn::units::Context& units);

    FieldReading read(const QString& text) const;
    /// The text with each unit that may stand at its end. None if it is complete with the unit
    /// that it has: "5 m" may be meant, and not the beginning of "5 mm".
    QStringList completions(const QString& text) const;

    /// As it is shown at rest.
    QString text(const boost::any& value) const;
    /// Reads back as the value, bit for bit, if a text does; see Field::exactText().
    QString fullText(const boost::any& value) const;
    /// What was entered, maybe in other units: as it is shown at rest if that reads back as the
    /// same value, bit for bit, and otherwise as it is.
    QString textOfEntry(const QString& entry) const;

private:
    bool isNumeric() const;
    EntryValidator& entries() const;
    FieldReading readNumber(const QString& text) const;
    boost::any valueOf(const boost::any& read, QString& reason) const;
    boost::any wholeNumber(double number, QString& reason) const;
    QString reasonAgainst(const boost::any& value) const;

    const PropertySelection::Row m_row; ///< The one of the page goes with another selection.
    vrn::units::Context m_units;
    mutable boost::shared_ptr<EntryValidator> m_entries; ///< Made for the first text.
};

} // namespace vrn::qt::detail
