// What only the library itself needs is not exported.
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
