#pragma once

#include <QLocale>

namespace vrn::qt {

/// What `locale.toDouble(text, ok)` gives, fast enough for a keystroke even if
/// somebody has pasted a megabyte.
double toDouble(const QLocale& locale, const QString& text, bool* ok);

/// What `locale.toString(number, 'f', decimals)` gives, with at most 1074
/// decimals: a double has no more, and Qt spends a minute on a billion zeros.
QString toFixed(const QLocale& locale, double number, int decimals);

} // namespace vrn::qt
