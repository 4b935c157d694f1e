#pragma once

#include <QLocale>

namespace vrn::qt {

/// What `locale.toDouble(text, ok)` gives, in a time that a keystroke may take
/// also where somebody has pasted a megabyte.
double toDouble(const QLocale& locale, const QString& text, bool* ok);

} // namespace vrn::qt
