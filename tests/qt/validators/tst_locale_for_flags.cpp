#include "validators/locale_for_flags_p.h"

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <cstdlib>

using vrn::qt::localeForFlags;
using vrn::qt::stdLocaleForFlags;
using vrn::qt::ValidationFlagUserLocale;
using vrn::test::columns;
using vrn::test::row;

namespace {

std::bitset<32> withBits(std::initializer_list<std::size_t> bits)
{
    std::bitset<32> flags;
    for (const std::size_t bit : bits)
        flags.set(bit);
    return flags;
}

const std::bitset<32> noFlags;
const std::bitset<32> userLocale = withBits({ValidationFlagUserLocale});

std::bitset<32> allButTheFirst()
{
    std::bitset<32> flags;
    flags.set();
    flags.reset(0);
    return flags;
}

} // namespace

class TestLocaleForFlags : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        // The first use, by which the user's locale is settled.
        QCOMPARE(localeForFlags(userLocale).language(), QLocale::German);
        QVERIFY(stdLocaleForFlags(userLocale) == std::locale(""));
    }

    void theFirstBitChoosesTheLocale_data()
    {
        columns<quint32, bool>("flags", "user");
        row("no bit is the C locale", quint32(0), false);
        row("the first bit is the user's locale", quint32(1), true);
        for (int bit = 1; bit < 32; ++bit) {
            QTest::addRow("bit %d has no meaning", bit) << (quint32(1) << bit) << false;
            QTest::addRow("bit %d beside the first has no meaning", bit)
                << ((quint32(1) << bit) | 1U) << true;
        }
        row("all bits are the user's locale", 0xFFFF'FFFFU, true);
        row("all but the first are the C locale", 0xFFFF'FFFEU, false);
    }

    void theFirstBitChoosesTheLocale()
    {
        QFETCH(quint32, flags);
        QFETCH(bool, user);
        const std::bitset<32> bits(flags);
        QCOMPARE(localeForFlags(bits).language(), user ? QLocale::German : QLocale::C);
        QCOMPARE(&localeForFlags(bits), &localeForFlags(user ? userLocale : noFlags));
        QCOMPARE(&stdLocaleForFlags(bits), &stdLocaleForFlags(user ? userLocale : noFlags));
    }

    void theCLocaleHasADecimalPoint()
    {
        QCOMPARE(localeForFlags(noFlags), QLocale(QLocale::C, QLocale::AnyCountry));
        QCOMPARE(localeForFlags(noFlags).toString(1234.5, 'f', 2), QString("1234.50"));
        QVERIFY(stdLocaleForFlags(noFlags) == std::locale::classic());
        QCOMPARE(stdLocaleForFlags(noFlags).name(), std::string("C"));
    }

    void theUsersLocaleHasTheUsersSigns()
    {
        QCOMPARE(localeForFlags(userLocale).toString(1234.5, 'f', 2), QString("1.234,50"));
        QCOMPARE(stdLocaleForFlags(userLocale).name(), std::string("C.UTF-8"));
    }

    void theLocalesAreMadeOnce()
    {
        QCOMPARE(&localeForFlags(userLocale), &localeForFlags(userLocale));
        QCOMPARE(&localeForFlags(noFlags), &localeForFlags(allButTheFirst()));
        QVERIFY(&localeForFlags(userLocale) != &localeForFlags(noFlags));
        QCOMPARE(&stdLocaleForFlags(userLocale), &stdLocaleForFlags(userLocale));
        QVERIFY(&stdLocaleForFlags(userLocale) != &stdLocaleForFlags(noFlags));
    }

    void laterChangesAreNotSeen()
    {
        QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
        qputenv("LC_ALL", "C");
        std::locale::global(std::locale::classic());
        QCOMPARE(localeForFlags(userLocale).language(), QLocale::German);
        QCOMPARE(localeForFlags(noFlags).language(), QLocale::C);
        QCOMPARE(stdLocaleForFlags(userLocale).name(), std::string("C.UTF-8"));
    }
};

VRN_TEST(TestLocaleForFlags)
#include "tst_locale_for_flags.moc"
