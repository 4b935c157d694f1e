// The library does not export what only it needs.
#include <vrn/qt/i_validator.h>

#include <QLocale>

namespace vrn::qt {
double toDouble(const QLocale& locale, const QString& text, bool* ok);
}

int main()
{
#if MUST_NOT_COMPILE
    vrn::qt::toDouble(QLocale::c(), QString(), nullptr);
#endif
}
