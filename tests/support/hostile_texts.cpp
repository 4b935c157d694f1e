#include "support/hostile_texts.h"

namespace vrn::test {
namespace {

constexpr int mebi = 1024 * 1024;

QString fromCodePoints(std::initializer_list<char32_t> codePoints)
{
    const std::u32string text(codePoints);
    return QString::fromStdU32String(text);
}

} // namespace

const std::vector<std::pair<QByteArray, QString>>& hostileTexts()
{
    static const std::vector<std::pair<QByteArray, QString>> texts = {
        {"a mebi of the digit 7", QString(mebi, QLatin1Char('7'))},
        {"a mebi of zeros", QString(mebi, QLatin1Char('0'))},
        {"a mebi of blanks", QString(mebi, QLatin1Char(' '))},
        {"a mebi of the letter a", QString(mebi, QLatin1Char('a'))},
        {"a mebi of the letter e", QString(mebi, QLatin1Char('e'))},
        {"a mebi of apostrophes", QString(mebi, QLatin1Char('\''))},
        {"a mebi of minus signs", QString(mebi, QLatin1Char('-'))},
        {"a mebi of points", QString(mebi, QLatin1Char('.'))},
        {"a mebi of commas", QString(mebi, QLatin1Char(','))},
        {"a mebi of combining accents", QString(mebi, QChar(0x0301))},
        {"a number with a mebi of decimals",
            QStringLiteral("0.") + QString(mebi, QLatin1Char('3'))},
        {"a zero character inside", QStringLiteral("1") + QChar(0) + QStringLiteral("2")},
        {"a zero character alone", QString(QChar(0))},
        {"a line break inside", QStringLiteral("1\n2")},
        {"a carriage return and a tab", QStringLiteral("1\r\t2")},
        {"letters from right to left", fromCodePoints({0x05D0, 0x05D1, 0x05D2})},
        {"an override of direction", fromCodePoints({0x202E, U'1', U'2', 0x202C})},
        {"digits of the Arabic script", fromCodePoints({0x0661, 0x0662, 0x0663})},
        {"digits outside the basic plane", fromCodePoints({0x1D7D8, 0x1D7D9})},
        {"a letter with combining marks", fromCodePoints({U'e', 0x0301, 0x0323})},
        {"characters outside the basic plane", fromCodePoints({0x1F600, 0x1F9EE})},
        {"a high surrogate alone", QString(QChar(0xD83D))},
        {"a low surrogate alone", QString(QChar(0xDE00))},
        {"the highest code point", fromCodePoints({0x10FFFF})},
        {"nan", QStringLiteral("nan")},
        {"inf", QStringLiteral("inf")},
        {"minus inf", QStringLiteral("-inf")},
        {"1e999", QStringLiteral("1e999")},
        {"-1e999", QStringLiteral("-1e999")},
        {"1e-999", QStringLiteral("1e-999")},
        {"0x10", QStringLiteral("0x10")},
        {"a number beyond 64 bits", QStringLiteral("99999999999999999999")},
    };
    return texts;
}

} // namespace vrn::test
