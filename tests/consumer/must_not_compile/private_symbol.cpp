// What no public header declares is not exported either.
#include <vrn/qt/i_validator.h>

#include <QLocale>

namespace vrn::qt {
const QLocale& localeForFlags(const std::bitset<32>& flags);
}

int main()
{
#if MUST_NOT_COMPILE
    vrn::qt::localeForFlags({});
#endif
}
