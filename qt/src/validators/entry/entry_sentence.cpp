#include "validators/entry/entry_sentence_p.h"

#include <QCoreApplication>
#include <QStringList>

#include <string>
#include <vector>

namespace vrn::qt::detail {
namespace {

using vrn::units::EntryProblem;
using vrn::units::EntryReason;

struct Sentences
{
    Q_DECLARE_TR_FUNCTIONS(vrn::qt::EntryValidator)
};

QString shown(const std::wstring& text)
{
    return QString::fromStdWString(text);
}

QStringList listOf(const std::vector<std::wstring>& texts)
{
    QStringList list;
    for (const std::wstring& text : texts)
        list.append(shown(text));
    return list;
}

QString allOf(const std::vector<std::wstring>& texts)
{
    return listOf(texts).join(QStringLiteral(", "));
}

QString oneOf(const std::vector<std::wstring>& texts)
{
    QStringList list = listOf(texts);
    if (list.size() < 2)
        return list.join(QString());
    const QString last = list.takeLast();
    return Sentences::tr("%1 or %2").arg(list.join(QStringLiteral(", ")), last);
}

// The texts of the user may look like the place of an argument, so all arguments of a
// sentence are put in at once.
QString unknownUnit(const EntryReason& reason)
{
    const QString word = shown(reason.word);
    const QString wanted = Sentences::tr(reason.wanted);
    if (!reason.suggestions.empty())
        return Sentences::tr("no unit %1 for %2: %3?").arg(word, wanted, oneOf(reason.suggestions));
    if (!reason.units.empty())
        return Sentences::tr("no unit %1 for %2: %3").arg(word, wanted, allOf(reason.units));
    return Sentences::tr("no unit %1 for %2").arg(word, wanted);
}

QString unitOfAnotherKind(const EntryReason& reason)
{
    const QString word = shown(reason.word);
    const QString kind = Sentences::tr(reason.kind_of_word);
    const QString wanted = Sentences::tr(reason.wanted);
    if (reason.units.empty())
        return Sentences::tr("%1 is %2; %3 is wanted").arg(word, kind, wanted);
    return Sentences::tr("%1 is %2; %3 is wanted: %4").arg(word, kind, wanted, allOf(reason.units));
}

} // namespace

QString entrySentence(const EntryReason& reason)
{
    const QString word = shown(reason.word);
    switch (reason.problem) {
    case EntryProblem::None:
        return QString();
    case EntryProblem::NothingThere:
        return Sentences::tr("a number is missing");
    case EntryProblem::TooLong:
        return Sentences::tr("the text is too long");
    case EntryProblem::TooDeep:
        return Sentences::tr("there are too many brackets inside one another");
    case EntryProblem::StrangeCharacter:
        return Sentences::tr("\"%1\" does not belong here").arg(word);
    case EntryProblem::NumberMissing:
        return Sentences::tr("a number is missing here");
    case EntryProblem::NumberUnfinished:
        return Sentences::tr("%1\342\200\246 is not finished").arg(word);
    case EntryProblem::NumberMalformed:
        return Sentences::tr("%1 is not a number").arg(word);
    case EntryProblem::NumberTooLarge:
        return Sentences::tr("the number is too large");
    case EntryProblem::BlankBetweenDigits:
        return Sentences::tr("%1: a blank stands between digits").arg(word);
    case EntryProblem::CommaNotDecimal:
        return Sentences::tr("%1: the comma is not the decimal sign: %2?")
            .arg(word, allOf(reason.suggestions));
    case EntryProblem::TwoReadings:
        return Sentences::tr("%1: %2?").arg(word, oneOf(reason.suggestions));
    case EntryProblem::SignMissing:
        return Sentences::tr("a sign such as + is missing here");
    case EntryProblem::UnitMissing:
        return Sentences::tr("%1 has no unit: %2?").arg(word, oneOf(reason.units));
    case EntryProblem::UnitUnfinished:
        return QString::fromUtf8("\342\200\246 ") + allOf(reason.suggestions);
    case EntryProblem::UnitUnknown:
        return unknownUnit(reason);
    case EntryProblem::UnitOfAnotherKind:
        return unitOfAnotherKind(reason);
    case EntryProblem::UnitsOfTwoKinds:
        return Sentences::tr("%1 is %2, and %3 comes before it")
            .arg(word, Sentences::tr(reason.kind_of_word), Sentences::tr(reason.wanted));
    case EntryProblem::UnitsMultiplied:
        return Sentences::tr("%1 times %2: only one may have a unit")
            .arg(Sentences::tr(reason.wanted), Sentences::tr(reason.kind_of_word));
    case EntryProblem::UnitsDivided:
        return Sentences::tr("%1 divided by %2: what divides has no unit")
            .arg(Sentences::tr(reason.wanted), Sentences::tr(reason.kind_of_word));
    case EntryProblem::DivisionByZero:
        return Sentences::tr("this divides by zero");
    case EntryProblem::BracketNotClosed:
        return Sentences::tr("the bracket is not closed");
    case EntryProblem::BracketNotOpened:
        return Sentences::tr("no bracket is open here");
    }
    return QString();
}

QString sentenceForFraction(const QString& text)
{
    return Sentences::tr("%1 is not a whole number").arg(text);
}

QString sentenceForBelow(const QString& bound)
{
    return Sentences::tr("below %1: becomes %1").arg(bound);
}

QString sentenceForAbove(const QString& bound)
{
    return Sentences::tr("above %1: becomes %1").arg(bound);
}

QString sentenceForRange(const QString& minimum, const QString& maximum)
{
    if (minimum.isEmpty())
        return Sentences::tr("at most %1").arg(maximum);
    if (maximum.isEmpty())
        return Sentences::tr("at least %1").arg(minimum);
    // A unit that both have is written once. In feet and inches there is a mark after each.
    const QLatin1Char blank(' ');
    const QString number = minimum.section(blank, 0, 0);
    const QString label = minimum.mid(number.size());
    const bool isShared = maximum == maximum.section(blank, 0, 0) + label
        && !label.contains(QLatin1Char('\''));
    return Sentences::tr("%1 to %2").arg(isShared ? number : minimum, maximum);
}

} // namespace vrn::qt::detail
