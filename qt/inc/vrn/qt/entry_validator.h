#pragma once

#include <vrn/qt/forward_validator.h>
#include <vrn/units/entry.h>

#include <QStringList>

#include <functional>
#include <memory>

namespace vrn::qt {

struct ChainedValidator;

namespace detail {
class EntryLink;
} // namespace detail

/// What an EntryValidator does with a number out of the range of its target.
enum class EntryRange
{
    Clamp, ///< The target brings it into the range when editing ends.
    Refuse
};

/// What an EntryValidator makes of a text.
struct EntryReading
{
    vrn::units::EntryState state = vrn::units::EntryState::Refused;
    /// If the text is complete: what the target gets, in the C locale.
    QString text;
    /// If it is not: why, in the user's language. Empty if only the target knows.
    QString reason;
    int place = 0; ///< Where in the text the reason is.
    /// If it is complete: what a sum comes to and what happens to a number out of range, line
    /// by line. Empty if the value is what is written.
    QString outcome;
};

/// Reads what engineers write, such as `1'-3 1/2"` or "3 m + 20 cm", for a validator for
/// numbers: a DoubleEditValidator, an IntegerValidator, a DistanceEditValidator or a
/// UnitValidator. All of a text counts. What would have to be guessed is refused with
/// the reason; docs/entry.md says what is read.
///
///     auto span = boost::make_shared<UnitValidator>(
///         vrn::units::get_active_input_context(), vrn::units::UnitId::GEO_LENGTH);
///     span->set_maximum(40.0);
///     const auto entry = boost::make_shared<EntryValidator>(span);
///     auto* field = SimpleLineEdit::create(
///         form, QStringLiteral("&Span"), entry, 0, ExpandHorizontal);
///     field->setCompletions([entry](const QString& text) { return entry->completions(text); });
///
/// The target gets the number that was read, with a unit if it knows units, as a text of
/// the C locale and with clear flags, whatever the flags of the call. The value is what
/// the target makes of it. Empty text goes to the target as it is. So does every text if
/// the target is not for numbers. A whole number that the type of an IntegerValidator
/// cannot hold becomes the nearest one that it can.
///
/// The target may stand behind forwarders. Of a chain, the members for numbers are wrapped,
/// each in an EntryValidator, and the others stay as they are.
///
/// The point is a decimal sign, and so is the comma if QLocale() has it. So a text that was
/// formatted with ValidationFlagUserLocale is read otherwise if it has a point between
/// groups, as "1.234" in German.
///
/// The hint says why a text is refused, what a sum comes to and what happens to a number
/// out of range. It begins with "…" if more at the end may make the text a quantity. For a
/// complete text, the hint functions of this validator and of the target are asked, too.
/// Only the hint of the outermost validator is shown, so put this one outermost.
///
/// A target that throws a std::exception refuses the text, and the hint is its message. A
/// text whose value the target can read and not write is refused when editing ends. After
/// a refusal, the value may be anything.
struct VRN_QT2_EXPORT EntryValidator : public ForwardValidator
{
    explicit EntryValidator(IValidator::pointer target, EntryRange range = EntryRange::Clamp);
    ~EntryValidator() override;

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override;
    bool validateWhenFinished(
        const QString& text, boost::any& value, const std::bitset<32>& flags) override;

    EntryReading read(const QString& text) const;

    /// The text with each unit that may stand at its end; see
    /// vrn::units::EntryReader::completions().
    QStringList completions(const QString& text) const;

    /// Adds what `hint` says of a complete text to this validator's own hints. The function of
    /// the same name of IValidator replaces these.
    void setEditHintFunction(std::function<QString(const QString&)> hint);

private:
    template <typename Ask>
    bool answer(const QString& text, const std::bitset<32>& flags, Ask ask) const;
    detail::EntryLink* findLink() const;
    void wrapMembers(ChainedValidator& chain) const;
    static EntryReading readThrough(IValidator* validator, const QString& text);

    QString hintFor(const QString& text) const;

    EntryRange m_range;
    std::function<QString(const QString&)> m_addedHint;
    mutable std::unique_ptr<detail::EntryLink> m_link; ///< Of the target that was asked last.
};

} // namespace vrn::qt
