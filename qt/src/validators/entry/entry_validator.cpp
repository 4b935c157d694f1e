#include <vrn/qt/entry_validator.h>

#include <vrn/qt/chained_validator.h>

#include "validators/entry/entry_link_p.h"
#include "validators/entry/entry_sentence_p.h"
#include "validators/lasting_function_p.h"

#include <algorithm>
#include <exception>
#include <string_view>
#include <utility>

namespace vrn::qt {
namespace {

using detail::EntryLink;
using detail::WideText;
using vrn::units::Entry;
using vrn::units::EntryState;

const QChar ellipsis(0x2026);

// Characters of a text in UTF-16 that stand before the wide character `place`.
int placeInText(const QString& text, std::size_t place)
{
    int index = 0;
    for (std::size_t i = 0; i < place && index < text.size(); ++i)
        index += text.at(index).isHighSurrogate() ? 2 : 1;
    return index;
}

EntryReading complete(const QString& text)
{
    EntryReading reading;
    reading.state = EntryState::Complete;
    reading.text = text;
    return reading;
}

EntryReading refused(const QString& reason)
{
    EntryReading reading;
    reading.reason = reason;
    return reading;
}

/// What is read for a validator for numbers, which has not been asked yet.
struct NumberReading
{
    EntryReading reading;
    bool isCalculated = false;
};

NumberReading readNumber(EntryLink& link, EntryRange range, const WideText& text, bool isPlain)
{
    const Entry entry = link.read(text);
    if (entry.state != EntryState::Complete) {
        EntryReading reading = refused(detail::entrySentence(entry.reason));
        reading.state = entry.state;
        reading.place = placeInText(text.text(), entry.reason.place);
        return {reading};
    }
    const EntryLink::Number number = link.numberOf(entry);
    if (number.text.isEmpty())
        return {refused(detail::sentenceForFraction(QString::fromStdWString(entry.text)))};
    const bool isBelow = link.isBelow(number.value);
    const bool isAbove = link.isAbove(number.value);
    if (range == EntryRange::Refuse && (isBelow || isAbove))
        return {refused(detail::sentenceForRange(link.minimumText(), link.maximumText()))};
    EntryReading reading = complete(isPlain ? text.text() : number.text);
    if (isBelow)
        reading.outcome = detail::sentenceForBelow(link.minimumText());
    if (isAbove)
        reading.outcome = detail::sentenceForAbove(link.maximumText());
    return {std::move(reading), entry.is_calculated};
}

} // namespace

EntryValidator::EntryValidator(IValidator::pointer target, EntryRange range)
    : ForwardValidator(std::move(target))
    , m_range(range)
{
    ForwardValidator::setEditHintFunction([this](const QString& text) { return hintFor(text); });
}

EntryValidator::~EntryValidator() = default;

// Asks the target by `ask` about what it gets for `text`.
template <typename Ask>
bool EntryValidator::answer(const QString& text, const std::bitset<32>& flags, Ask ask) const
{
    try {
        EntryLink* const link = text.isEmpty() ? nullptr : findLink();
        if (!link)
            return ask(text, flags);
        const WideText wide(text);
        const bool isPlain = link->isPlain(wide);
        if (isPlain && m_range == EntryRange::Clamp)
            return ask(text, {});
        const EntryReading reading = readNumber(*link, m_range, wide, isPlain).reading;
        return reading.state == EntryState::Complete && ask(reading.text, {});
    } catch (const std::exception&) {
        return false;
    }
}

bool EntryValidator::validate(const QString& text, boost::any& value, const std::bitset<32>& flags)
{
    return answer(text, flags, [&](const QString& read, const std::bitset<32>& given) {
        return ForwardValidator::validate(read, value, given);
    });
}

bool EntryValidator::validateWhenFinished(
    const QString& text, boost::any& value, const std::bitset<32>& flags)
{
    return answer(text, flags, [&](const QString& read, const std::bitset<32>& given) {
        if (!ForwardValidator::validateWhenFinished(read, value, given))
            return false;
        // A control is about to write the value.
        ForwardValidator::reformat(value, given);
        return true;
    });
}

EntryReading EntryValidator::read(const QString& text) const
{
    const IValidator::pointer target = m_target;
    try {
        EntryLink* const link = text.isEmpty() ? nullptr : findLink();
        if (!link)
            return readThrough(target.get(), text);
        const WideText wide(text);
        auto [reading, isCalculated] = readNumber(*link, m_range, wide, link->isPlain(wide));
        if (reading.state != EntryState::Complete)
            return reading;
        boost::any value;
        if (!target->validate(reading.text, value, {}))
            return refused(QString());
        const QString written = target->reformat(value, {});
        if (isCalculated) {
            // What is written is in the range.
            const QString result = reading.outcome.isEmpty() ? written
                                                             : reading.text + QLatin1Char('\n');
            reading.outcome.prepend(QStringLiteral("= ") + result);
        }
        return reading;
    } catch (const std::exception& error) {
        return refused(QString::fromUtf8(error.what()));
    }
}

QStringList EntryValidator::completions(const QString& text) const
{
    try {
        EntryLink* const link = findLink();
        return link ? link->completions(text) : QStringList();
    } catch (const std::exception&) {
        return {};
    }
}

void EntryValidator::setEditHintFunction(std::function<QString(const QString&)> hint)
{
    m_addedHint = detail::lasting(std::move(hint));
}

QString EntryValidator::hintFor(const QString& text) const
{
    // A hint function may exchange it.
    const IValidator::pointer target = m_target;
    const EntryReading reading = read(text);
    if (reading.state == EntryState::Refused && !reading.reason.isEmpty())
        return reading.reason;
    if (reading.state == EntryState::Unfinished) {
        const bool saysSo = reading.reason.contains(ellipsis);
        return saysSo ? reading.reason : ellipsis + QLatin1Char(' ') + reading.reason;
    }
    QStringList lines = {reading.outcome};
    if (m_addedHint)
        lines.append(m_addedHint(text));
    if (target)
        lines.append(target->getEditHint(reading.text));
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

// The link of the validator that gets the text in the end; null if that is not for numbers.
EntryLink* EntryValidator::findLink() const
{
    if (m_link && m_link->isOf(m_target))
        return m_link.get();
    IValidator::pointer last = m_target;
    while (const auto* const forwarder = dynamic_cast<const ForwardValidator*>(last.get()))
        last = forwarder->m_target;
    if (!m_link || !m_link->isOf(last))
        m_link = EntryLink::create(last);
    if (auto* const chain = dynamic_cast<ChainedValidator*>(last.get()))
        wrapMembers(*chain);
    return m_link.get();
}

// This is done again for each text: a member may be a forwarder with a new target.
void EntryValidator::wrapMembers(ChainedValidator& chain) const
{
    for (auto& member : chain.m_members) {
        IValidator* last = member.get();
        while (const auto* const forwarder = dynamic_cast<const ForwardValidator*>(last)) {
            if (dynamic_cast<const EntryValidator*>(last))
                break;
            last = forwarder->getValidator();
        }
        if (auto* const inner = dynamic_cast<ChainedValidator*>(last))
            wrapMembers(*inner);
        else if (EntryLink::isForNumbers(last))
            member = std::make_unique<EntryValidator>(
                IValidator::pointer(std::move(member)), m_range);
    }
}

// What a validator makes of a text if the members for numbers of each chain are wrapped.
EntryReading EntryValidator::readThrough(IValidator* validator, const QString& text)
{
    IValidator* last = validator;
    while (auto* const forwarder = dynamic_cast<ForwardValidator*>(last)) {
        if (const auto* const entry = dynamic_cast<const EntryValidator*>(forwarder))
            return entry->read(text);
        last = forwarder->getValidator();
    }
    if (const auto* const chain = dynamic_cast<const ChainedValidator*>(last)) {
        EntryReading best;
        for (const auto& member : chain->m_members) {
            const EntryReading reading = readThrough(member.get(), text);
            if (reading.state == EntryState::Complete)
                return reading;
            const bool isFirstReason = best.reason.isEmpty();
            if (isFirstReason || (reading.state < best.state && !reading.reason.isEmpty()))
                best = reading;
        }
        return best;
    }
    boost::any value;
    return last && validator->validate(text, value, {}) ? complete(text) : refused(QString());
}

} // namespace vrn::qt
