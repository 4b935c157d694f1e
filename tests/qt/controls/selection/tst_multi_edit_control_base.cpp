#include <vrn/base/any_predicates.h>
#include <vrn/qt/multi_edit_control_base.h>
#include <vrn/qt/multi_edit_value.h>
#include <vrn/qt/validators.h>

#include <QSignalBlocker>
#include <QSignalSpy>

#include "qt/controls/line_edits/multi_edit_line_edit_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <memory>
#include <type_traits>

using namespace vrn::qt;
using namespace vrn::test;
using vrn::KeyValueStorage;

namespace {

using Saver = boost::function<bool(KeyValueStorage&)>;
using Loader = boost::function<void(const KeyValueStorage&)>;

// A control for a bool, with a saver and a loader of the usual shape.
struct Switch : public MultiEditValue
{
    explicit Switch(const std::string& id)
        : MultiEditValue(&vrn::any_differ<bool>)
    {
        setCanBeSaved(
            id,
            [this](KeyValueStorage& storage) {
                if (!dataVaries())
                    storage[getStorageId()] = boost::any_cast<bool>(getCurrentValue());
                return true;
            },
            [this](const KeyValueStorage& storage) {
                const auto entry = storage.find(getStorageId());
                if (entry != storage.end() && boost::any_cast<bool>(&entry->second))
                    setValue(entry->second);
            });
    }

    using MultiEditControlBase::setLoading;
};

using Quantity = vrn::units::IConverter::quantity;
using Doubles = std::vector<double>;

// A field for the depth of the selected beams, which writes as the example in the header.
struct DepthField
{
    DepthField()
        : control(MultiEditLineEdit::create(
            nullptr, "Depth", new DoubleEditValidator, 0, ExpandHorizontal))
    {
        QObject::connect(control, &MultiEditLineEdit::valueChanged, control, [this] { write(); });
    }

    void read(const Doubles& depths)
    {
        const QSignalBlocker blocker(control);
        control->reset();
        for (const double depth : depths)
            control->readValue(depth);
        shown = control->getCurrentValue();
    }

    void write()
    {
        const boost::any depth = control->getCurrentValue();
        if (depth.empty() || vrn::any_equal<double>(depth, shown))
            return;
        shown = depth;
        written.push_back(boost::any_cast<double>(depth));
    }

    MultiEditLineEdit* control;
    boost::any shown;
    Doubles written;
};

} // namespace

Q_DECLARE_METATYPE(Doubles)
Q_DECLARE_METATYPE(boost::shared_ptr<IValidator>)

class TestMultiEditControlBase : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewControlCannotBeSaved()
    {
        MultiEditValue control(&vrn::any_differ<bool>);
        QVERIFY(!control.canBeSaved());
        QCOMPARE(control.getStorageId(), std::string());
        KeyValueStorage storage;
        QVERIFY(!control.save(storage));
        QVERIFY(storage.empty());
        control.load(storage);
        QVERIFY(control.getCurrentValue().empty());
    }

    void setCanBeSavedStoresIdAndFunctions()
    {
        MultiEditValue control(&vrn::any_differ<bool>);
        for (const bool result : {true, false}) {
            QList<const KeyValueStorage*> saved;
            QList<const KeyValueStorage*> loaded;
            control.setCanBeSaved(
                "depth",
                [&, result](KeyValueStorage& storage) {
                    saved << &storage;
                    return result;
                },
                [&](const KeyValueStorage& storage) { loaded << &storage; });
            QVERIFY(control.canBeSaved());
            QCOMPARE(control.getStorageId(), std::string("depth"));
            QVERIFY(saved.isEmpty() && loaded.isEmpty());

            KeyValueStorage storage;
            QCOMPARE(control.save(storage), result);
            QCOMPARE(saved, QList<const KeyValueStorage*>{&storage});
            control.load(storage);
            QCOMPARE(loaded, QList<const KeyValueStorage*>{&storage});
        }
    }

    void theFunctionsAreTakenOver()
    {
        const auto token = std::make_shared<int>();
        MultiEditValue control(&vrn::any_differ<bool>);
        Saver saver = [token](KeyValueStorage&) { return true; };
        Loader loader = [token](const KeyValueStorage&) {};
        control.setCanBeSaved("id", std::move(saver), std::move(loader));
        QVERIFY(saver.empty()); // NOLINT(bugprone-use-after-move)
        QVERIFY(loader.empty()); // NOLINT(bugprone-use-after-move)
        QCOMPARE(token.use_count(), 3L);
        control.setCanBeSaved("other", {}, {});
        QCOMPARE(token.use_count(), 1L);
    }

    // The flag is for the application to ask.
    void emptyFunctionsMayBeGiven()
    {
        Switch control("lit");
        control.setCanBeSaved("other", {}, {});
        QVERIFY(control.canBeSaved());
        QCOMPARE(control.getStorageId(), std::string("other"));
        KeyValueStorage storage;
        storage["other"] = true;
        QVERIFY(!control.save(storage));
        control.load(storage);
        QVERIFY(control.getCurrentValue().empty());
    }

    void theLoadOrderIsOnlyStored()
    {
        static_assert(std::is_same_v<std::underlying_type_t<LoadOrder>, std::uint32_t>);
        MultiEditValue control(&vrn::any_differ<bool>);
        QCOMPARE(std::uint32_t(control.getLoadOrder()), 0U);
        QCOMPARE(LoadOrder::Default, LoadOrder(0));
        control.setLoadOrder(LoadOrder(4000000000U));
        QCOMPARE(std::uint32_t(control.getLoadOrder()), 4000000000U);
    }

    void loadDoesNotRaiseTheLoadingFlag()
    {
        Switch control("lit");
        QVERIFY(!control.isLoading());
        bool during = true;
        control.setCanBeSaved(
            "lit", {}, [&](const KeyValueStorage&) { during = control.isLoading(); });
        control.load(KeyValueStorage());
        QVERIFY(!during);
        QVERIFY(!control.isLoading());
        control.setLoading(true);
        QVERIFY(control.isLoading());
    }

    // --- the persisted form, by a saver and a loader of the usual shape

    void aValueGoesThroughTheStorage()
    {
        for (const bool value : {true, false}) {
            Switch saved("lit");
            saved.setValue(value);
            KeyValueStorage storage;
            storage["lit"] = std::string("replaced");
            QVERIFY(saved.save(storage));
            QCOMPARE(storage.size(), std::size_t(1));
            QCOMPARE(storage.find("lit")->second, boost::any(value));

            Switch loaded("lit");
            loaded.load(storage);
            QCOMPARE(loaded.getCurrentValue(), boost::any(value));
        }
    }

    void saveOfAVaryingControlLeavesTheStorageAsItWas()
    {
        Switch control("lit");
        KeyValueStorage storage;
        control.setValue(true);
        QVERIFY(control.save(storage));
        control.setValue(false);
        control.forceVaries();
        QVERIFY(control.save(storage));
        QCOMPARE(storage.find("lit")->second, boost::any(true));

        KeyValueStorage empty;
        QVERIFY(control.save(empty));
        QVERIFY(empty.empty());
    }

    void loadLeavesTheControlAsItWas_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<boost::any>("entry");
        row("from a storage without the id", "unlit", boost::any(false));
        row("from a number", "lit", boost::any(0));
        row("from a text", "lit", boost::any(std::string("false")));
        row("from an empty value", "lit", boost::any());
    }
    void loadLeavesTheControlAsItWas()
    {
        QFETCH(QString, key);
        QFETCH(boost::any, entry);
        KeyValueStorage storage;
        storage[key.toStdString()] = entry;
        Switch control("lit");
        control.setValue(true);
        control.load(storage);
        QCOMPARE(control.getCurrentValue(), boost::any(true));
        control.forceVaries();
        control.load(storage);
        QVERIFY(control.dataVaries());
        QCOMPARE(storage.size(), std::size_t(1));
    }

    void aSaverWithoutABoolThrows()
    {
        for (const boost::any& value : {boost::any(), boost::any(1)}) {
            Switch control("lit");
            control.setValue(value);
            KeyValueStorage storage;
            QVERIFY_EXCEPTION_THROWN(control.save(storage), boost::bad_any_cast);
        }
    }

    // A field rounds a value only once, when it is read. So an application can tell an
    // edit from a walk through the fields.
    void anUntouchedFieldGivesWhatItGave_data()
    {
        namespace units = vrn::units;
        QTest::addColumn<boost::shared_ptr<IValidator>>("validator");
        QTest::addColumn<boost::any>("read");
        const auto field = [](const char* name, IValidator* validator, const boost::any& read) {
            QTest::newRow(name) << boost::shared_ptr<IValidator>(validator) << read;
        };
        const auto length = [](double value) { return Quantity{units::UnitId::GEO_LENGTH, value}; };
        field("a number that is rounded", new DoubleEditValidator, 10.0 / 3.0);
        field(
            "a number without decimals", new DoubleEditValidator(0, 0.0, 100.0, true), 10.0 / 3.0);
        field("a number out of range", new DoubleEditValidator(0.0, 1.0), 10.0 / 3.0);
        field("a whole number out of range", new IntegerValidator<int>(0, 5, true), 7);
        field("a distance in metres", new DistanceEditValidator(13, 0.0, 100.0, true), 10.0 / 3.0);
        field("a distance in feet", new DistanceEditValidator(213, 0.0, 100.0, true), 10.0 / 3.0);
        field("a length in metres", new UnitValidator(units::Context(0), units::UnitId::GEO_LENGTH),
            length(10.0 / 3.0));
        field("a length in feet", new UnitValidator(units::Context(8), units::UnitId::GEO_LENGTH),
            length(10.0 / 3.0));
        field("a text that is cut", new StringEditValidator(3), std::wstring(L"depth"));
        auto* optional = new DoubleEditValidator;
        optional->setEmptyValueAllowed(true);
        field("no value", optional, boost::any());
    }
    void anUntouchedFieldGivesWhatItGave()
    {
        QFETCH(boost::shared_ptr<IValidator>, validator);
        QFETCH(boost::any, read);
        Form form;
        auto* field = MultiEditLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal);
        field->readValue(read);
        const boost::any before = field->getCurrentValue();
        form.open(field);
        QSignalSpy changed(field, &MultiEditLineEdit::valueChanged);
        action::enter()(*field, form);
        QVERIFY(changed.count() > 0);
        action::leave()(*field, form);
        const boost::any after = field->getCurrentValue();
        QVERIFY(before.type() == after.type());
        QVERIFY(vrn::any_equal<double>(before, after) || vrn::any_equal<int>(before, after)
            || vrn::any_equal<std::wstring>(before, after)
            || vrn::any_equal<Quantity>(before, after));
    }

    void onlyWhatIsEnteredIsWritten_data()
    {
        using namespace vrn::test::action;
        QTest::addColumn<Doubles>("depths");
        QTest::addColumn<MultiEditAction>("act");
        QTest::addColumn<Doubles>("written");
        const Doubles thirds = {10.0 / 3.0, 10.0 / 3.0};
        const Doubles different = {1.0, 2.0};
        const MultiEditAction typeFour = type("4");
        // clang-format off
        row("Enter alone", thirds, enter(), Doubles{});
        row("Tab alone", thirds, leave(), Doubles{});
        row("Enter and Tab", thirds, inOrder({enter(), enter(), leave()}), Doubles{});
        row("Tab in a field that varies", different, leave(), Doubles{});
        row("the text that is there, typed again", thirds, inOrder({type("3.333"), enter()}), Doubles{});
        row("no number", thirds, inOrder({type("x"), enter()}), Doubles{});
        row("a number and Enter", thirds, inOrder({typeFour, enter()}), Doubles{4.0});
        row("a number and Tab", thirds, inOrder({typeFour, leave()}), Doubles{4.0});
        row("a number is written once", thirds, inOrder({typeFour, enter(), leave()}), Doubles{4.0});
        row("a number, and back again", thirds, inOrder({typeFour, enter(), type("3.333"), enter()}), Doubles{4.0, 3.333});
        row("a number for objects that differ", different, inOrder({typeFour, leave()}), Doubles{4.0});
        // clang-format on
    }
    void onlyWhatIsEnteredIsWritten()
    {
        QFETCH(Doubles, depths);
        QFETCH(MultiEditAction, act);
        QFETCH(Doubles, written);
        DepthField field;
        Form form;
        field.read({7.0}); // An earlier selection.
        field.read(depths);
        form.open(field.control);
        act(*field.control, form);
        QCOMPARE(field.written, written);
    }
};

VRN_TEST(TestMultiEditControlBase)
#include "tst_multi_edit_control_base.moc"
