#include "validators/number_text_p.h"

#include <algorithm>

namespace vrn::qt {
namespace {

// Longer than any number that a person types.
constexpr int longText = 1000;

// Whether the C locale gives the characters no other meaning than they have in
// a byte array. Only a group separator would get lost there.
bool isPlain(const QString& text)
{
    return std::all_of(text.begin(), text.end(),
        [](QChar c) { return c >= QLatin1Char(' ') && c < QChar(0x7F) && c != QLatin1Char(','); });
}

} // namespace

double toDouble(const QLocale& locale, const QString& text, bool* ok)
{
    // A QLocale of Qt 6 needs twenty times as long for a character as the
    // parser behind it, to which a byte array goes at once.
    if (text.size() > longText && locale.language() == QLocale::C) {
        const QString number = text.trimmed();
        if (isPlain(number))
            return number.toLatin1().toDouble(ok);
    }
    return locale.toDouble(text, ok);
}

QString toFixed(const QLocale& locale, double number, int decimals)
{
    constexpr int mostDecimals = 1074;
    return locale.toString(number, 'f', std::min(decimals, mostDecimals));
}

} // namespace vrn::qt
