#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/validator_factory.h>

#include "factory_fixture.h"
#include "support/life.h"
#include "support/table.h"
#include "support/test_main.h"

using namespace vrn::qt;
using namespace vrn::test;

namespace {

// With keys and descriptions of the application's own.
using Factory = ValidatorFactory<std::string, QString>;

/// The description says how many decimals the validator writes.
std::unique_ptr<IValidator> decimals(const QString& count)
{
    return std::make_unique<DoubleEditValidator>(count.toInt(), -9.0, 9.0, true);
}

Factory::Creator fixed(int count)
{
    return [count](const QString&) { return decimals(QString::number(count)); };
}

Factory factoryWith(const std::string& key, const Factory::Creator& creator)
{
    Factory factory;
    factory.add(key, creator);
    return factory;
}

/// How the validator of `key` writes 1.5.
QString written(const Factory& factory, const std::string& key, const QString& description = "1")
{
    return outcome([&] {
        const auto validator = factory.create(key, description);
        return validator ? validator->reformat(1.5, {}) : QStringLiteral("null");
    });
}

using Change = std::function<void(std::unique_ptr<Factory>&)>;
using Transfer = std::function<void(Factory& to, Factory& from)>;

} // namespace

Q_DECLARE_METATYPE(Factory::Creator)
Q_DECLARE_METATYPE(Change)
Q_DECLARE_METATYPE(Transfer)

class TestValidatorFactory : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatACreatorGives_data()
    {
        columns<Factory::Creator, QString>("creator", "result");
        row("its validator", Factory::Creator(&decimals), "1.50");
        row("null, if it makes none", Factory::Creator([](const QString&) { return nullptr; }),
            "null");
        row("what it throws", Factory::Creator([](const QString&) -> std::unique_ptr<IValidator> {
            throw std::logic_error("from the creator");
        }),
            "std::logic_error: from the creator");
        row("an exception, if it is empty", Factory::Creator(), "std::bad_function_call");
    }
    void whatACreatorGives()
    {
        QFETCH(Factory::Creator, creator);
        const Factory factory = factoryWith("ratio", creator);
        QVERIFY(factory.exists("ratio"));
        QTEST(written(factory, "ratio", "2"), "result");
    }

    void anUnknownKeyThrows()
    {
        const Factory factory = factoryWith("ratio", &decimals);
        for (const std::string key : {"", "Ratio", "ratio "}) {
            QVERIFY(!factory.exists(key));
            QCOMPARE(written(factory, key), unknownKey);
        }
        QCOMPARE(written(Factory(), "ratio"), unknownKey);
    }

    void aKeyIsTakenOnce()
    {
        Factory factory = factoryWith("ratio", fixed(1));
        const auto addAgain = [&] {
            factory.add("ratio", fixed(2));
            return QString("added");
        };
        QCOMPARE(outcome(addAgain), duplicateKey);
        QCOMPARE(written(factory, "ratio"), QString("1.5"));
        // An empty creator has the key as well.
        factory.add("none", {});
        QCOMPARE(outcome([&] {
            factory.add("none", fixed(2));
            return QString("added");
        }),
            duplicateKey);
    }

    void bothPartsOfAKindCount()
    {
        ValidatorFactory<ValidatorKind, Hints> factory;
        const auto none = [](const Hints&) { return nullptr; };
        factory.add<int>("", none);
        factory.add<int>("even", none);
        factory.add<double>("even", none);
        QVERIFY(factory.exists(kindOf<int>()));
        QVERIFY(factory.exists(kindOf<int>("even")));
        QVERIFY(factory.exists(ValidatorKind(typeid(double), "even")));
        QVERIFY(!factory.exists(kindOf<double>()));
        QVERIFY(!factory.exists(kindOf<int>("odd")));
        QCOMPARE(outcome([&] {
            factory.add(kindOf<int>("even"), none);
            return QString("added");
        }),
            duplicateKey);
    }

    void aFactoryIsCopiedAndMoved_data()
    {
        columns<Transfer, bool>("transfer", "moved");
        row("copied", Transfer([](Factory& to, Factory& from) { to = from; }), false);
        row("moved", Transfer([](Factory& to, Factory& from) { to = std::move(from); }), true);
        row("copied by construction", Transfer([](Factory& to, Factory& from) {
            const Factory copy(from);
            to = copy;
        }),
            false);
        row("moved by construction", Transfer([](Factory& to, Factory& from) {
            Factory moved(std::move(from));
            to = std::move(moved);
        }),
            true);
    }
    void aFactoryIsCopiedAndMoved()
    {
        QFETCH(Transfer, transfer);
        QFETCH(bool, moved);
        auto from = std::make_unique<Factory>(factoryWith("ratio", fixed(1)));
        Factory to = factoryWith("replaced", fixed(2));
        transfer(to, *from);
        QVERIFY(!to.exists("replaced"));
        QCOMPARE(from->exists("ratio"), !moved);

        // What is added to one of them is not in the other.
        to.add("to", fixed(2));
        from->add("from", fixed(3));
        QVERIFY(!from->exists("to"));
        QVERIFY(!to.exists("from"));
        QCOMPARE(written(*from, "from"), QString("1.500"));
        from.reset();
        QCOMPARE(written(to, "ratio"), QString("1.5"));
        QCOMPARE(written(to, "to"), QString("1.50"));
    }

    void assigningAFactoryToItselfChangesNothing()
    {
        Factory factory = factoryWith("ratio", fixed(1));
        Factory& same = factory;
        factory = same;
        QCOMPARE(written(factory, "ratio"), QString("1.5"));
        factory = std::move(same);
        QCOMPARE(written(factory, "ratio"), QString("1.5"));
    }

    void aFactoryLetsGoOfItsCreators()
    {
        bool alive = false;
        {
            const auto life = lifeIn(alive);
            Factory first = factoryWith("ratio", [life](const QString&) { return nullptr; });
            Factory second = first;
            first = second;
            second = first;
            QVERIFY(alive);
        }
        QVERIFY(!alive);
    }

    // The sanitizers see whether the running creator outlives its entry.
    void aCreatorMayChangeItsFactory_data()
    {
        columns<Change, bool>("change", "lives");
        row("add to it", Change([](auto& factory) {
            for (int i = 0; i < 1000; ++i)
                factory->add(std::to_string(i), fixed(2));
        }),
            true);
        row("assign to it", Change([](auto& factory) { *factory = Factory(); }), true);
        row("move from it", Change([](auto& factory) { Factory(std::move(*factory)); }), true);
        row("destroy it", Change([](auto& factory) { factory.reset(); }), false);
        row("use it", Change([](auto& factory) { factory->create("other", "1"); }), true);
    }
    void aCreatorMayChangeItsFactory()
    {
        QFETCH(Change, change);
        auto factory = std::make_unique<Factory>();
        factory->add("other", &decimals);
        bool alive = false;
        factory->add("ratio", [life = lifeIn(alive), &change, &factory](const QString& count) {
            change(factory);
            return *life ? decimals(count) : nullptr;
        });
        QCOMPARE(written(*factory, "ratio", "3"), QString("1.500"));
        QTEST(factory != nullptr, "lives");
        factory.reset();
        QVERIFY(!alive);
    }
};

VRN_TEST(TestValidatorFactory)
#include "tst_validator_factory.moc"
