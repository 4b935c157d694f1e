#include "validators/number_text_p.h"

#include <algorithm>

namespace vrn::qt {
namespace {

// Longer than any number that a person types.
constexpr int longText = 1000;

// Whether all characters mean the same in the C locale and in a byte array. A
// byte array has no group separators.
bool isPlain(const QString& text)
{
    return std::all_of(text.begin(), text.end(),
        [](QChar c) { return c >= QLatin1Char(' ') && c < QChar(0x7F) && c != QLatin1Char(','); });
}

} // namespace

double toDouble(const QLocale& locale, const QString& text, bool* ok)
{
    // A QLocale of Qt 6 takes twenty times as long for each character as the
    // parser that it calls. A byte array goes to that parser directly.
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
