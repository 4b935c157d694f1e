#include <vrn/qt/key_value_storage.h>

#include "support/test_main.h"
#include "support/test_object.h"

#include <boost/weak_ptr.hpp>

#include <utility>

using vrn::KeyValueStorage;

class TestKeyValueStorage : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewStorageIsEmptyAndFindingCreatesNothing()
    {
        const KeyValueStorage storage;
        QVERIFY(storage.find("span") == storage.end());
        QVERIFY(storage.empty());
        QCOMPARE(storage.size(), std::size_t(0));
        QVERIFY(storage.begin() == storage.end());
    }

    void namingAMissingEntryMakesAnEmptyOne()
    {
        KeyValueStorage storage;
        QVERIFY(storage["span"].empty());
        QCOMPARE(storage.size(), std::size_t(1));
        storage["depth"] = 1.5;
        QCOMPARE(storage.size(), std::size_t(2));
        QCOMPARE(storage.find("depth")->second, boost::any(1.5));
    }

    void assigningReleasesTheOldValue()
    {
        KeyValueStorage storage;
        auto old = boost::make_shared<int>(1);
        const boost::weak_ptr<int> watched = old;
        storage["span"] = std::move(old);
        QVERIFY(!watched.expired());
        storage["span"] = true;
        QVERIFY(watched.expired());
        QCOMPARE(storage.find("span")->second, boost::any(true));
        QCOMPARE(storage.size(), std::size_t(1));
    }

    void keysAreInTheOrderOfStrings()
    {
        KeyValueStorage storage;
        for (const char* key : {"b", "", "a2", "B", "a10", "\xC3\xA4", "a"})
            storage[key] = true;
        std::vector<std::string> keys;
        for (const auto& entry : storage)
            keys.push_back(entry.first);
        QCOMPARE(keys, (std::vector<std::string>{"", "B", "a", "a10", "a2", "b", "\xC3\xA4"}));
    }

    void keysMayHoldAnyCharacter()
    {
        KeyValueStorage storage;
        const std::string key("a\0b", 3);
        storage[key] = 1;
        QVERIFY(storage.find("a") == storage.end());
        QCOMPARE(storage.find(key)->second, boost::any(1));
    }

    void copiesShareOneMapThatLivesAsLongAsOneOfThem()
    {
        KeyValueStorage copy;
        KeyValueStorage assigned;
        assigned["lost"] = true;
        {
            KeyValueStorage storage;
            copy = KeyValueStorage(storage);
            assigned = storage;
            storage["span"] = 1;
        }
        QCOMPARE(copy.find("span")->second, boost::any(1));
        QCOMPARE(assigned.find("span")->second, boost::any(1));
        QVERIFY(assigned.find("lost") == assigned.end());
    }

    // A move copies, on purpose.
    void aStorageThatWasMovedFromIsStillOne()
    {
        KeyValueStorage storage;
        storage["span"] = 1;
        KeyValueStorage taken = std::move(storage);
        QCOMPARE(storage.find("span")->second, boost::any(1)); // NOLINT(bugprone-use-after-move)
        KeyValueStorage assigned;
        assigned = std::move(taken);
        QCOMPARE(taken.size(), std::size_t(1)); // NOLINT(bugprone-use-after-move)
    }

    void entriesAreErased()
    {
        KeyValueStorage storage;
        storage["span"] = 1;
        storage["depth"] = 2;
        storage.erase("width");
        QCOMPARE(storage.size(), std::size_t(2));
        storage.erase("span");
        QVERIFY(storage.find("span") == storage.end());
        storage.clear();
        QVERIFY(storage.empty());
    }
};

VRN_TEST(TestKeyValueStorage)
#include "tst_key_value_storage.moc"
