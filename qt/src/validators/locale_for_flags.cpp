#include "validators/locale_for_flags_p.h"

#include <stdexcept>

namespace vrn::qt {
namespace {

std::locale userLocaleOrClassic()
{
    try {
        return std::locale("");
    } catch (const std::runtime_error&) {
        return std::locale::classic();
    }
}

} // namespace

const QLocale& localeForFlags(const std::bitset<32>& flags)
{
    if (flags.test(ValidationFlagUserLocale)) {
        static const QLocale user;
        return user;
    }
    static const QLocale c(QLocale::C, QLocale::AnyCountry);
    return c;
}

const std::locale& stdLocaleForFlags(const std::bitset<32>& flags)
{
    if (flags.test(ValidationFlagUserLocale)) {
        static const std::locale user = userLocaleOrClassic();
        return user;
    }
    static const std::locale c("C");
    return c;
}

} // namespace vrn::qt
