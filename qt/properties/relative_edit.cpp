#include <vrn/qt/relative_edit.h>

#include <QCoreApplication>

namespace vrn::qt {

using vrn::units::Context;
using vrn::units::Entry;
using vrn::units::EntryReader;
using vrn::units::EntryState;

namespace {

constexpr double whole = 100.0;

struct EditTexts
{
    Q_DECLARE_TR_FUNCTIONS(vrn::qt::RelativeEdit)
};

/// With the minus sign of the keyboard.
QString plain(const QString& text)
{
    QString trimmed = text.trimmed();
    if (trimmed.startsWith(QChar(0x2212)))
        trimmed[0] = QLatin1Char('-');
    return trimmed;
}

Entry readWith(const EntryReader& reader, const QString& text)
{
    return reader.read(text.toStdWString());
}

EntryReader readerFor(const Field& field, const Context& units)
{
    return field.shape() == Field::Shape::Quantity ? EntryReader(units, field.kind())
                                                   : EntryReader();
}

RelativeEntry refused(const QString& reason, EntryState state = EntryState::Refused)
{
    RelativeEntry entry;
    entry.state = state;
    entry.reason = reason;
    return entry;
}

RelativeEntry from(const Entry& read, RelativeEdit::Operation operation)
{
    if (read.state != EntryState::Complete) {
        QString reason = QString::fromStdWString(vrn::units::sentence(read.reason));
        if (!reason.isEmpty())
            reason = reason.at(0).toUpper() + reason.mid(1) + QLatin1Char('.');
        return refused(reason, read.state);
    }
    RelativeEntry entry;
    entry.state = EntryState::Complete;
    entry.edit = {operation, read.quantity.value};
    return entry;
}

RelativeEntry readPercentage(
    const QString& number, bool isAdded, const Field& field, const Context& units)
{
    const RelativeEntry entry = from(readWith(EntryReader(), number),
        isAdded ? RelativeEdit::AddPercent : RelativeEdit::SubtractPercent);
    const bool isOfPercentages = field.shape() == Field::Shape::Quantity
        && readWith(readerFor(field, units), QStringLiteral("1 %")).state == EntryState::Complete;
    if (entry.state != EntryState::Complete || !isOfPercentages)
        return entry;
    const double percent = entry.edit.operand;
    return refused(
        EditTexts::tr("This could mean percent of the value, or points. For percent of the "
                      "value write \"*= %1\".")
            .arg(detail::exactText((isAdded ? whole + percent : whole - percent) / whole)));
}

} // namespace

bool isRelativeEdit(const QString& text)
{
    const QString trimmed = plain(text);
    return trimmed.startsWith(QLatin1String("+=")) || trimmed.startsWith(QLatin1String("-="))
        || trimmed.startsWith(QLatin1Char('*')) || trimmed.startsWith(QLatin1Char('/'));
}

RelativeEntry readRelativeEdit(const QString& text, const Field& field, const Context& units)
{
    if (!isRelativeEdit(text))
        return refused(EditTexts::tr("A change begins with +=, -=, *= or /=."));
    if (!field.takesRelativeEdits())
        return refused(EditTexts::tr("A change of each object's own value is not possible here."));

    const QString trimmed = plain(text);
    const QChar sign = trimmed.at(0);
    if (trimmed.size() == 1)
        return refused(EditTexts::tr("\"=\" is missing."), EntryState::Unfinished);
    if (trimmed.at(1) != QLatin1Char('='))
        return refused(EditTexts::tr("Write \"%1= %2\".").arg(sign).arg(trimmed.mid(1).trimmed()));

    const QString operand = trimmed.mid(2).trimmed();
    if (sign == QLatin1Char('+') || sign == QLatin1Char('-')) {
        const bool isAdded = sign == QLatin1Char('+');
        if (operand.endsWith(QLatin1Char('%'))) {
            return readPercentage(operand.left(operand.size() - 1), isAdded, field, units);
        }
        return from(readWith(readerFor(field, units), operand),
            isAdded ? RelativeEdit::Add : RelativeEdit::Subtract);
    }
    const bool isDivided = sign == QLatin1Char('/');
    const RelativeEntry entry = from(readWith(EntryReader(), operand),
        isDivided ? RelativeEdit::Divide : RelativeEdit::Multiply);
    if (isDivided && entry.state == EntryState::Complete && entry.edit.operand == 0.0)
        return refused(EditTexts::tr("Nothing can be divided by zero."));
    return entry;
}

double applied(const RelativeEdit& edit, double stored, const Field& field, const Context& units)
{
    // A unit has no offset, so what is added converts as a value does.
    const double operand = edit.operand;
    switch (edit.operation) {
    case RelativeEdit::Add:
        return stored + field.fromBase(operand, units);
    case RelativeEdit::Subtract:
        return stored - field.fromBase(operand, units);
    case RelativeEdit::AddPercent:
        return stored * (whole + operand) / whole;
    case RelativeEdit::SubtractPercent:
        return stored * (whole - operand) / whole;
    case RelativeEdit::Multiply:
        return stored * operand;
    case RelativeEdit::Divide:
        return stored / operand;
    }
    return stored;
}

} // namespace vrn::qt
