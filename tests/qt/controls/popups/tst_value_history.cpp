#include <vrn/qt/value_history.h>

#include <boost/make_shared.hpp>

#include <QStringList>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <type_traits>

using namespace vrn::test;
using vrn::IValueHistoryStorage;
using vrn::ValueHistory;
using vrn::ValueHistoryMemoryStorage;

static_assert(!std::has_virtual_destructor_v<IValueHistoryStorage>);
static_assert(!std::is_copy_constructible_v<ValueHistoryMemoryStorage>);

namespace {

QStringList toStrings(const std::deque<std::wstring>& values)
{
    QStringList strings;
    for (const std::wstring& value : values)
        strings << QString::fromStdWString(value);
    return strings;
}

// The values under the history's key, as a fresh call of get() gives them.
QStringList valuesOf(const ValueHistory& history)
{
    std::deque<std::wstring> values;
    history.get(values);
    return toStrings(values);
}

// Records what a history hands to its storage.
struct RecordingStorage final : public IValueHistoryStorage
{
    std::size_t get(const ValueHistory& history, std::deque<std::wstring>& values) override
    {
        asked = &history;
        values.emplace_back(L"from the storage");
        return 17;
    }
    void add(const ValueHistory& history, const std::wstring& value) override
    {
        asked = &history;
        added << QString::fromStdWString(value);
    }

    const ValueHistory* asked = nullptr;
    QStringList added;
};

} // namespace

class TestValueHistory : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void addPutsTheNewestFirst_data()
    {
        columns<QStringList, QStringList>("added", "kept");
        const QStringList five = {"1", "2", "3", "4", "5"};
        // clang-format off
        row("nothing added", QStringList(), QStringList());
        row("one value", QStringList{"1"}, QStringList{"1"});
        row("five values, newest first", five, QStringList{"5", "4", "3", "2", "1"});
        row("of six values the last five, newest first", five + QStringList{"6"}, QStringList{"6", "5", "4", "3", "2"});
        row("a repeated value keeps its place, even the oldest", five + QStringList{"1"}, QStringList{"5", "4", "3", "2", "1"});
        row("a repeated value keeps its place, in the middle", five + QStringList{"3"}, QStringList{"5", "4", "3", "2", "1"});
        row("the newest repeated", QStringList{"1", "2", "2"}, QStringList{"2", "1"});
        row("a value that was pushed out is new again", five + QStringList{"6", "1"}, QStringList{"1", "6", "5", "4", "3"});
        row("an empty value is ignored", QStringList{"1", "", "2"}, QStringList{"2", "1"});
        row("an empty value pushes none out", five + QStringList{""}, QStringList{"5", "4", "3", "2", "1"});
        row("a blank is a value", QStringList{"1", " "}, QStringList{" ", "1"});
        row("case tells values apart", QStringList{"a", "A"}, QStringList{"A", "a"});
        // clang-format on
    }
    void addPutsTheNewestFirst()
    {
        QFETCH(QStringList, added);
        QFETCH(QStringList, kept);
        ValueHistory history(L"key", boost::make_shared<ValueHistoryMemoryStorage>());
        for (const QString& value : added)
            history.add(value.toStdWString());
        std::deque<std::wstring> values = {L"what was there before"};
        QCOMPARE(history.get(values), static_cast<std::size_t>(kept.size()));
        QCOMPARE(toStrings(values), kept);
    }

    void eachKeyHasItsOwnValuesAndItsOwnLimit()
    {
        const auto storage = boost::make_shared<ValueHistoryMemoryStorage>();
        ValueHistory span(L"span", storage);
        ValueHistory width(L"width", storage);
        for (const wchar_t* value : {L"1", L"2", L"3", L"4", L"5"}) {
            span.add(value);
            width.add(value);
        }
        width.add(L"6");
        QCOMPARE(valuesOf(span), QStringList({"5", "4", "3", "2", "1"}));
        QCOMPARE(valuesOf(width), QStringList({"6", "5", "4", "3", "2"}));
    }

    void historiesOfOneKeyAndStorageShareTheirValues()
    {
        const auto storage = boost::make_shared<ValueHistoryMemoryStorage>();
        ValueHistory(L"key", storage).add(L"1");
        ValueHistory other(L"key", storage);
        other.add(L"2");
        QCOMPARE(valuesOf(other), QStringList({"2", "1"}));
        QCOMPARE(valuesOf(ValueHistory(L"key", storage)), QStringList({"2", "1"}));
        const ValueHistory elsewhere(L"key", boost::make_shared<ValueHistoryMemoryStorage>());
        QCOMPARE(valuesOf(elsewhere), QStringList());
    }

    void getGivesACopy()
    {
        ValueHistory history(L"key", boost::make_shared<ValueHistoryMemoryStorage>());
        history.add(L"1");
        std::deque<std::wstring> values;
        QCOMPARE(history.get(values), std::size_t(1));
        values[0] = L"changed";
        values.emplace_back(L"another");
        QCOMPARE(valuesOf(history), QStringList({"1"}));
    }

    void anUnknownKeyClears()
    {
        ValueHistory history(L"unknown", boost::make_shared<ValueHistoryMemoryStorage>());
        std::deque<std::wstring> values = {L"before"};
        QCOMPARE(history.get(values), std::size_t(0));
        QCOMPARE(toStrings(values), QStringList());
    }

    void withoutAKeyOrAStorageNothingIsKeptAndTheDequeIsLeftAlone()
    {
        ValueHistory withoutKey(L"", boost::make_shared<ValueHistoryMemoryStorage>());
        ValueHistory withoutStorage(L"key", nullptr);
        QVERIFY(withoutStorage.key() == L"key");
        for (ValueHistory* history : {&withoutKey, &withoutStorage}) {
            history->add(L"1");
            std::deque<std::wstring> values = {L"before"};
            QCOMPARE(history->get(values), std::size_t(0));
            QCOMPARE(toStrings(values), QStringList({"before"}));
        }
    }

    void withAStorageEverythingIsForwarded()
    {
        const auto storage = boost::make_shared<RecordingStorage>();
        ValueHistory history(L"", storage);
        history.add(L"1");
        QCOMPARE(storage->asked, &history);
        history.add(L"");
        QCOMPARE(storage->added, QStringList({"1", ""}));

        storage->asked = nullptr;
        std::deque<std::wstring> values = {L"before"};
        QCOMPARE(history.get(values), std::size_t(17));
        QCOMPARE(storage->asked, &history);
        QCOMPARE(toStrings(values), QStringList({"before", "from the storage"}));
    }

    void theStorageOfTheProcessIsTheSameForAllNames()
    {
        const auto storage = IValueHistoryStorage::getOrCreate(L"one");
        QVERIFY(dynamic_cast<ValueHistoryMemoryStorage*>(storage.get()));
        QCOMPARE(IValueHistoryStorage::getOrCreate(L"one"), storage);
        QCOMPARE(IValueHistoryStorage::getOrCreate(L"other"), storage);
        QCOMPARE(IValueHistoryStorage::getOrCreate(L""), storage);
    }

    void createMakesANewHistoryOnTheStorageOfTheProcess()
    {
        const auto one = ValueHistory::create(L"one", L"shared key");
        const auto other = ValueHistory::create(L"other", L"shared key");
        QVERIFY(one && other && one != other);
        QVERIFY(one->key() == L"shared key");
        one->add(L"1");
        QCOMPARE(valuesOf(*other), QStringList({"1"}));
        ValueHistory third(L"shared key", IValueHistoryStorage::getOrCreate(L"third"));
        QCOMPARE(valuesOf(third), QStringList({"1"}));
    }
};

VRN_TEST(TestValueHistory)
#include "tst_value_history.moc"
