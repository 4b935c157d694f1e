#include "validators/locale_for_flags_p.h"

#include "support/test_main.h"
#include "support/test_object.h"

#include <stdexcept>

using vrn::qt::stdLocaleForFlags;

// Runs in an environment that names a locale which no machine has.
class TestLocaleNotInstalled : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QCOMPARE(qgetenv("LC_ALL"), QByteArray("xx_YY.UTF-8"));
        QVERIFY_EXCEPTION_THROWN(std::locale(""), std::runtime_error);
    }

    void theUsersLocaleIsTheClassicOne()
    {
        const std::bitset<32> userLocale(1);
        QVERIFY(stdLocaleForFlags(userLocale) == std::locale::classic());
    }

    void itStaysSoWhenTheEnvironmentIsMended()
    {
        const std::bitset<32> userLocale(1);
        const std::locale* first = &stdLocaleForFlags(userLocale);
        qputenv("LC_ALL", "C.UTF-8");
        QCOMPARE(&stdLocaleForFlags(userLocale), first);
        QVERIFY(stdLocaleForFlags(userLocale) == std::locale::classic());
    }

    void theCLocaleIsTheClassicOneAsEver()
    {
        QVERIFY(stdLocaleForFlags({}) == std::locale::classic());
    }
};

VRN_TEST(TestLocaleNotInstalled)
#include "tst_locale_not_installed.moc"
