#include <vrn/qt/settings_history.h>

#include "support/hostile_texts.h"
#include "support/random_seed.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <boost/make_shared.hpp>

#include <QCoreApplication>
#include <QFile>
#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>

#include <algorithm>
#include <map>
#include <random>

using namespace vrn::qt;
using namespace vrn::test;
using vrn::ValueHistory;

namespace {

using Storage = boost::shared_ptr<SettingsHistory>;
using Values = std::deque<std::wstring>;

/// A file of settings. Each storage is another program, or the same one after a restart.
struct Program
{
    QString file() const { return directory.filePath("settings.ini"); }
    Storage start() const
    {
        return boost::make_shared<SettingsHistory>(
            std::make_unique<QSettings>(file(), QSettings::IniFormat), "history");
    }

    QTemporaryDir directory;
};

Values valuesOf(const Storage& storage, const std::wstring& key)
{
    Values values;
    ValueHistory(key, storage).get(values);
    return values;
}

void add(const Storage& storage, const std::wstring& key, const std::wstring& value)
{
    ValueHistory(key, storage).add(value);
}

} // namespace

Q_DECLARE_METATYPE(std::wstring)

class TestSettingsHistory : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesTheNewestFirstAfterARestart();
    void bringsAValueThatIsThereToTheFront();
    void keepsTheLastFew();
    void keepsKeysApart();
    void ignoresEmptyTexts();
    void keepsAnyText_data();
    void keepsAnyText();
    void keepsHostileTexts();
    void leavesOutALongText();
    void readsWhatSomebodyElseWrote_data();
    void readsWhatSomebodyElseWrote();
    void keepsWhatAnotherProgramAdds();
    void worksWithoutAFile();
    void usesTheSettingsOfTheApplication();
    void agreesWithAModel();
};

void TestSettingsHistory::givesTheNewestFirstAfterARestart()
{
    const Program program;
    add(program.start(), L"length", L"7.62 m");
    add(program.start(), L"length", L"3 m");
    QCOMPARE(valuesOf(program.start(), L"length"), (Values{L"3 m", L"7.62 m"}));
}

void TestSettingsHistory::bringsAValueThatIsThereToTheFront()
{
    const Program program;
    const Storage storage = program.start();
    for (const wchar_t* value : {L"1 m", L"2 m", L"3 m", L"1 m", L"1 m"})
        add(storage, L"length", value);
    QCOMPARE(valuesOf(program.start(), L"length"), (Values{L"1 m", L"3 m", L"2 m"}));
}

void TestSettingsHistory::keepsTheLastFew()
{
    const Program program;
    const Storage storage = program.start();
    QCOMPARE(int(storage->limit()), 10);
    for (int i = 0; i < 20; ++i)
        add(storage, L"length", std::to_wstring(i));
    QCOMPARE(int(valuesOf(program.start(), L"length").size()), 10);
    QCOMPARE(valuesOf(storage, L"length").back(), std::wstring(L"10"));
    storage->setLimit(2);
    QCOMPARE(valuesOf(storage, L"length"), (Values{L"19", L"18"}));
    add(storage, L"length", L"20");
    QCOMPARE(valuesOf(program.start(), L"length"), (Values{L"20", L"19"}));
}

void TestSettingsHistory::keepsKeysApart()
{
    const Program program;
    const std::vector<std::wstring> keys = {
        L"a", L"A.b", L"a/b", L"/a", L"a%2f;b", L"a\\b", L"", L"\u20ac", L"General", L"%"};
    for (const std::wstring& key : keys)
        add(program.start(), key, L"value of " + key);
    for (const std::wstring& key : keys) {
        const Values expected = key.empty() ? Values() : Values{L"value of " + key};
        QCOMPARE(valuesOf(program.start(), key), expected);
    }
    QCOMPARE(valuesOf(program.start(), L"another"), Values());
}

void TestSettingsHistory::ignoresEmptyTexts()
{
    const Program program;
    const Storage storage = program.start();
    add(storage, L"", L"7.62 m");
    add(storage, L"length", L"");
    QCOMPARE(valuesOf(storage, L"length"), Values());
    Values values = {L"as it was"};
    QCOMPARE(int(ValueHistory(L"", storage).get(values)), 0);
    QCOMPARE(values, Values{L"as it was"});
}

void TestSettingsHistory::keepsAnyText_data()
{
    columns<std::wstring>("text");
    row("feet and inches", std::wstring(L"1'-3 1/2\""));
    row("a comma and a semicolon", std::wstring(L"1,5; 2"));
    row("what looks escaped", std::wstring(L"%41; 100 % ;"));
    row("what settings write as a type", std::wstring(L"@Invalid()"));
    row("blanks at the ends", std::wstring(L"  12 m "));
    row("a unit beyond ASCII", std::wstring(L"12 \u00b0C, 5 m\u00b2"));
    row("a character beyond the first plane", std::wstring(L"\U0001F600"));
    row("a zero inside", std::wstring(L"a\0b", 3));
    row("half a surrogate pair", std::wstring(1, wchar_t(0xd800)) + L"x");
    row("line breaks", std::wstring(L"a\r\nb\u2028[group]\nc=d"));
    row("as long as it may be", std::wstring(1000, L'\u00e9'));
}

void TestSettingsHistory::keepsAnyText()
{
    QFETCH(std::wstring, text);
    const Program program;
    add(program.start(), L"key", L"before");
    add(program.start(), L"key", text);
    add(program.start(), text, L"value");
    QCOMPARE(valuesOf(program.start(), L"key"), (Values{text, L"before"}));
    QCOMPARE(valuesOf(program.start(), text), Values{L"value"});
}

void TestSettingsHistory::keepsHostileTexts()
{
    const Program program;
    for (const auto& hostile : hostileTexts()) {
        const std::wstring text = hostile.second.toStdWString();
        add(program.start(), L"key", L"before");
        add(program.start(), L"key", text);
        const Values values = valuesOf(program.start(), L"key");
        const std::wstring first = text.empty() || text.size() > 1000 ? L"before" : text;
        QVERIFY2(!values.empty() && values.front() == first, hostile.first);
    }
}

void TestSettingsHistory::leavesOutALongText()
{
    const Program program;
    const Storage storage = program.start();
    add(storage, L"key", L"before");
    add(storage, L"key", std::wstring(1001, L'x'));
    add(storage, L"key", std::wstring(1 << 20, L'x'));
    QCOMPARE(valuesOf(program.start(), L"key"), Values{L"before"});
}

void TestSettingsHistory::readsWhatSomebodyElseWrote_data()
{
    columns<QVariant, int>("stored", "count");
    row("one text", QVariant("3 m"), 1);
    row("a number", QVariant(12.5), -1);
    row("nothing", QVariant(), 0);
    row("an escape without an end", QVariant(QStringList{"%41", "3 m"}), 1);
    row("an escape without a number", QVariant(QStringList{"%xy;", "%;", "%-5;", "3 m"}), 1);
    row("an escape of a large number", QVariant(QStringList{"%ffffffffff;", "3 m"}), 1);
    row("too many", QVariant(QString("1,").repeated(5000).split(',')), 10);
    row("a long text", QVariant(QStringList{QString(1 << 20, 'x'), "3 m"}), 1);
    row("bytes", QVariant(QByteArray("\xff\xfe\x00", 3)), -1);
    row("a map", QVariant(QVariantMap{{"a", 1}}), 0);
}

void TestSettingsHistory::readsWhatSomebodyElseWrote()
{
    QFETCH(QVariant, stored);
    QFETCH(int, count);
    const Program program;
    QSettings(program.file(), QSettings::IniFormat).setValue("history/key", stored);
    const Storage storage = program.start();
    const int read = int(valuesOf(storage, L"key").size());
    if (count >= 0)
        QCOMPARE(read, count);
    add(storage, L"key", L"new");
    QCOMPARE(valuesOf(program.start(), L"key").front(), std::wstring(L"new"));
}

void TestSettingsHistory::keepsWhatAnotherProgramAdds()
{
    const Program program;
    const Storage one = program.start();
    const Storage other = program.start();
    add(one, L"length", L"1 m");
    add(other, L"length", L"2 m");
    add(one, L"length", L"3 m");
    add(other, L"load", L"5 kN");
    QCOMPARE(valuesOf(one, L"length"), (Values{L"3 m", L"2 m", L"1 m"}));
    QCOMPARE(valuesOf(other, L"length"), (Values{L"3 m", L"2 m", L"1 m"}));
    QCOMPARE(valuesOf(one, L"load"), Values{L"5 kN"});
}

void TestSettingsHistory::worksWithoutAFile()
{
    const QTemporaryDir directory;
    QVERIFY(QFile(directory.filePath("blocked")).open(QIODevice::WriteOnly));
    const auto storage = boost::make_shared<SettingsHistory>(
        std::make_unique<QSettings>(
            directory.filePath("blocked/settings.ini"), QSettings::IniFormat),
        "history");
    add(storage, L"length", L"1 m");
    add(storage, L"length", L"2 m");
    QCOMPARE(valuesOf(storage, L"length"), (Values{L"2 m", L"1 m"}));
}

void TestSettingsHistory::usesTheSettingsOfTheApplication()
{
    const QTemporaryDir directory;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, directory.path());
    QSettings::setDefaultFormat(QSettings::IniFormat);
    const auto storage = boost::make_shared<SettingsHistory>();
    // After the storage was made, as a member of a window may be.
    QCoreApplication::setOrganizationName("example");
    QCoreApplication::setApplicationName("beams");
    add(storage, L"length", L"3 m");
    QCOMPARE(QSettings().value("history/length").toStringList(), QStringList{"3 m"});
    QCOMPARE(valuesOf(boost::make_shared<SettingsHistory>(), L"length"), Values{L"3 m"});
}

void TestSettingsHistory::agreesWithAModel()
{
    std::mt19937_64 random(randomSeed());
    const Program program;
    Storage storages[] = {program.start(), program.start()};
    std::map<std::wstring, Values> model;
    for (int step = 0; step < 150; ++step) {
        Storage& storage = storages[random() % 2];
        const std::wstring key(1 + random() % 2, wchar_t(L'.' + random() % 3));
        if (random() % 10 == 0) {
            storage = program.start();
            continue;
        }
        const std::wstring value(1 + random() % 3, wchar_t(L'$' + random() % 5));
        add(storage, key, value);
        Values& values = model[key];
        values.erase(std::remove(values.begin(), values.end(), value), values.end());
        values.push_front(value);
        values.resize(std::min<std::size_t>(values.size(), 10));
        QCOMPARE(valuesOf(storages[random() % 2], key), values);
    }
}

VRN_TEST(TestSettingsHistory)
#include "tst_settings_history.moc"
