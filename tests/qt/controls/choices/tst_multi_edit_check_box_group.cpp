#include <vrn/qt/layouters.h>
#include <vrn/qt/multi_edit_check_box_group.h>

#include "group_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QCheckBox>
#include <QPointer>
#include <QSignalSpy>

#include <functional>
#include <memory>
#include <stdexcept>

using namespace vrn::qt;
using vrn::KeyValueStorage;
using vrn::test::clickOn;
using vrn::test::deleteDeferred;
using vrn::test::row;

namespace {

using Labels = std::deque<QString>;

// Stands for an entry that is not in the storage.
const std::string missing = "(missing)";

// Makes public what derived classes can use.
class Group : public MultiEditCheckBoxGroup
{
public:
    using MultiEditCheckBoxGroup::lastIndex;
    using MultiEditCheckBoxGroup::MultiEditCheckBoxGroup;
};

// A row of boxes in a window, as an application has it.
struct Page
{
    explicit Page(const Labels& labels = {"x", "y", "z"}, const Labels& toolTips = {})
        : form(new QWidget)
    {
        layouter.onCreate(form);
        group = new Group(form, layouter, labels, toolTips);
        layouter.onFinish();
        form->show();
    }

    ~Page()
    {
        delete group;
        delete form;
        deleteDeferred();
    }

    // The boxes in the order of the layout; the last one is "All".
    QList<MultiEditCheckBox*> boxes() const { return form->findChildren<MultiEditCheckBox*>(); }
    MultiEditCheckBox* box(int index) const { return boxes().at(index); }
    MultiEditCheckBox* all() const { return boxes().last(); }

    // The state of a box in one letter: checked, unchecked or varies.
    static QChar letter(const MultiEditCheckBox* box)
    {
        return box->dataVaries() ? 'v' : box->isChecked() ? 'c' : 'u';
    }

    QString shown() const
    {
        QString letters;
        for (const MultiEditCheckBox* box : boxes())
            letters += letter(box);
        return letters;
    }

    // A letter for each box: "f" if it is fresh, "-" if not. Only a read shows
    // this, so the page is of no use afterwards.
    QString freshBoxes() const
    {
        QString letters;
        for (MultiEditCheckBox* box : boxes()) {
            box->suspendValueChangedSignal();
            bool isFresh = false;
            if (!box->dataVaries()) {
                box->readValue(!box->isChecked());
                isFresh = !box->dataVaries();
            }
            letters += isFresh ? 'f' : '-';
        }
        return letters;
    }

    // Reads one object or two, so that each box gets the state of its letter.
    void read(const QString& letters) const
    {
        group->reset();
        for (int i = 0; i < letters.size(); ++i) {
            group->readValue(std::size_t(i), letters[i] != 'u');
            if (letters[i] == 'v')
                group->readValue(std::size_t(i), false);
        }
        group->onEndRead();
    }

    QPointer<QWidget> form;
    HBoxLayouter layouter;
    QPointer<Group> group;
};

using Action = std::function<void(Page&)>;

QCheckBox* innerBox(const MultiEditCheckBox* box)
{
    return box->findChild<QCheckBox*>();
}

void clickOn(const MultiEditCheckBox* box)
{
    vrn::test::clickOn(innerBox(box));
}

void pressSpaceOn(const MultiEditCheckBox* box)
{
    QTest::keyClick(innerBox(box), Qt::Key_Space);
}

} // namespace

Q_DECLARE_METATYPE(Action)

class TestMultiEditCheckBoxGroup : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachLabelHasABoxAndAnEmptyOneACell()
    {
        const Page page({"x", "", "z"}, {"to the right", "nothing", "upwards", "more"});
        QCOMPARE(page.group->size(), std::size_t(2));
        QCOMPARE(page.group->parent(), nullptr);
        QLayout* layout = page.form->layout();
        // The three cells, "All" and the stretch.
        QCOMPARE(layout->count(), 5);
        QCOMPARE(layout->itemAt(0)->widget(), page.box(0));
        QVERIFY(!qobject_cast<MultiEditCheckBox*>(layout->itemAt(1)->widget()));
        QCOMPARE(layout->itemAt(2)->widget(), page.box(1));
        QCOMPARE(layout->itemAt(3)->widget(), page.all());
        QCOMPARE(innerBox(page.box(0))->text(), QString("x"));
        QCOMPARE(innerBox(page.box(1))->text(), QString("z"));
        QCOMPARE(innerBox(page.all())->text(), QString("All"));
        QCOMPARE(page.box(0)->toolTip(), QString("to the right"));
        QCOMPARE(page.box(1)->toolTip(), QString("upwards"));
        QCOMPARE(page.all()->toolTip(), QString());
    }

    void toolTipsMayRunOut()
    {
        const Page page({"x", "y"}, {"to the right"});
        QCOMPARE(page.box(0)->toolTip(), QString("to the right"));
        QCOMPARE(page.box(1)->toolTip(), QString());
    }

    void allShowsWhatTheBoxesHaveInCommon_data()
    {
        QTest::addColumn<QString>("read");
        QTest::addColumn<QList<int>>("disabled");
        QTest::addColumn<QChar>("all");
        const auto row = [](const char* name, const char* read, const QList<int>& disabled,
                             char all) { QTest::newRow(name) << read << disabled << QChar(all); };
        row("all checked", "ccc", {}, 'c');
        row("all unchecked", "uuu", {}, 'u');
        row("the first differs", "ucc", {}, 'v');
        row("the last differs", "ccu", {}, 'v');
        row("the second varies", "cvc", {}, 'v');
        row("the second varies, the first is unchecked", "uvu", {}, 'v');
        row("the last varies", "ccv", {}, 'v');
        row("the first varies and nothing else: a plain value", "vcc", {}, 'c');
        row("all vary: a plain value as well", "vvv", {}, 'c');
        row("a disabled box does not count", "cuc", {1}, 'c');
        row("a disabled box that varies does not count", "cvc", {1}, 'c');
        row("the first enabled box varies", "uvc", {0}, 'c');
        row("the second enabled box varies", "ucv", {0}, 'v');
        row("one enabled box", "cuu", {1, 2}, 'c');
        row("none enabled", "ccc", {0, 1, 2}, 'u');
        row("no box", "", {}, 'u');
    }

    void allShowsWhatTheBoxesHaveInCommon()
    {
        QFETCH(QString, read);
        QFETCH(QList<int>, disabled);
        const Page page(Labels(std::size_t(read.size()), "x"));
        for (const int index : disabled)
            page.group->setEnabled(std::size_t(index), false);
        QSignalSpy allChanged(page.all(), &MultiEditCheckBox::valueChanged);
        page.read(read);
        QCOMPARE(page.shown().chopped(1), read);
        QTEST(Page::letter(page.all()), "all");
        QCOMPARE(allChanged.count(), 0);
        QVERIFY(page.all()->isEnabled());
        // The signal of "All" is not left suspended.
        page.all()->setChecked(true);
        QVERIFY(allChanged.count() > 0);
    }

    void resettingDoesNotTouchAllByItself()
    {
        const Page page;
        page.read("uuv");
        // No box is checked, so only the varying one emits when it is reset.
        QCOMPARE(page.shown(), QString("uuvv"));
        page.read("uuu");
        page.all()->forceVaries();
        page.group->reset();
        QCOMPARE(page.shown(), QString("uuuv"));
        page.group->onEndRead();
        QCOMPARE(page.shown(), QString("uuuu"));
    }

    void aClickOnAllSetsTheEnabledBoxes_data()
    {
        QTest::addColumn<QString>("read");
        QTest::addColumn<QList<int>>("disabled");
        QTest::addColumn<QString>("shown");
        using Indices = QList<int>;
        row("all unchecked", "uuu", Indices{}, "cccc");
        row("all checked", "ccc", Indices{}, "uuuu");
        row("they differ", "cuc", Indices{}, "cccc");
        row("one varies", "cvc", Indices{}, "cccc");
        row("a disabled box keeps its state", "uuu", Indices{1}, "cucc");
        row("a disabled box goes on to vary", "uvu", Indices{1}, "cvcc");
        row("none enabled", "uuu", Indices{0, 1, 2}, "uuuc");
    }

    void aClickOnAllSetsTheEnabledBoxes()
    {
        QFETCH(QString, read);
        QFETCH(QList<int>, disabled);
        const Page page;
        for (const int index : disabled)
            page.group->setEnabled(std::size_t(index), false);
        page.read(read);
        QSignalSpy valueChanged(page.group.data(), &Group::valueChanged);
        QSignalSpy boxChanged(page.box(0), &MultiEditCheckBox::valueChanged);
        clickOn(page.all());
        QTEST(page.shown(), "shown");
        QCOMPARE(valueChanged.count(), 1);
        QCOMPARE(boxChanged.count(), 0);
        // The signals of the boxes are not left suspended.
        page.group->setValue(0, !page.group->getValue(0));
        QCOMPARE(boxChanged.count(), 2);
    }

    void signalsOfTheGroup_data()
    {
        QTest::addColumn<QString>("read");
        QTest::addColumn<Action>("action");
        QTest::addColumn<int>("signalCount");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("fresh");
        const auto row = [](const char* name, const char* read, int count, const char* shown,
                             const char* fresh, const Action& action) {
            QTest::newRow(name) << read << action << count << shown << fresh;
        };
        // clang-format off
        row("a click on a box", "uuu", 1, "ucuv", "----", [](Page& p) { clickOn(p.box(1)); });
        row("a click on the last box that differs", "ccu", 1, "cccc", "----", [](Page& p) { clickOn(p.box(2)); });
        row("a click on a box that varies", "uvu", 1, "ucuv", "----", [](Page& p) { clickOn(p.box(1)); });
        row("a click on a fresh box", "uuu", 1, "ucuv", "fff-", [](Page& p) { p.group->reset(); clickOn(p.box(1)); });
        row("the space bar on a box", "uuu", 1, "ucuv", "----", [](Page& p) { pressSpaceOn(p.box(1)); });
        row("setValue that changes", "uuu", 2, "ucuv", "----", [](Page& p) { p.group->setValue(1, true); });
        row("setValue that changes nothing", "ccc", 1, "cccc", "----", [](Page& p) { p.group->setValue(1, true); });
        row("setValue(true) of a box that varies", "cvc", 2, "cccc", "----", [](Page& p) { p.group->setValue(1, true); });
        row("setValue(false) of a box that varies", "cvc", 2, "cucv", "----", [](Page& p) { p.group->setValue(1, false); });
        row("setValue of a fresh box", "uuu", 2, "ucuv", "fff-", [](Page& p) { p.group->reset(); p.group->setValue(1, true); });
        row("setValue of a disabled box", "uuu", 2, "ucuu", "----", [](Page& p) { p.group->setEnabled(1, false); p.group->setValue(1, true); });
        row("readValue of the same", "ccc", 0, "cccc", "----", [](Page& p) { p.group->readValue(1, true); });
        row("readValue that finds a difference", "ccc", 0, "cvcc", "----", [](Page& p) { p.group->readValue(1, false); });
        row("readValue of a box that varies", "cvc", 0, "cvcv", "----", [](Page& p) { p.group->readValue(1, false); });
        row("readValue of a fresh box that changes it", "uuu", 1, "ucuv", "f-f-", [](Page& p) { p.group->reset(); p.group->readValue(1, true); });
        row("readValue of a fresh box that does not", "uuu", 0, "uuuu", "f-f-", [](Page& p) { p.group->reset(); p.group->readValue(1, false); });
        row("reset of unchecked boxes", "uuu", 0, "uuuu", "fff-", [](Page& p) { p.group->reset(); });
        row("reset of checked and varying boxes", "cuv", 2, "uuuu", "fff-", [](Page& p) { p.group->reset(); });
        row("reset of fresh boxes", "uuu", 0, "uuuu", "fff-", [](Page& p) { p.group->reset(); p.group->reset(); });
        row("onEndRead", "ccc", 0, "cccc", "----", [](Page& p) { p.group->onEndRead(); });
        row("onEndRead without an enabled box", "ccc", 0, "cccu", "---f", [](Page& p) { p.group->setEnabled(false); p.group->onEndRead(); });
        row("setEnabled of one box", "cuc", 0, "cucv", "----", [](Page& p) { p.group->setEnabled(1, false); });
        row("setEnabled of all", "ccc", 0, "cccc", "----", [](Page& p) { p.group->setEnabled(false); });
        row("a click on All, unchecked", "uuu", 1, "cccc", "----", [](Page& p) { clickOn(p.all()); });
        row("a click on All, checked", "ccc", 1, "uuuu", "----", [](Page& p) { clickOn(p.all()); });
        row("a click on All, varying", "cuv", 1, "cccc", "----", [](Page& p) { clickOn(p.all()); });
        row("a click on All without an enabled box", "cuv", 1, "cuvc", "----", [](Page& p) { p.group->setEnabled(false); clickOn(p.all()); });
        row("the space bar on All", "cuv", 1, "cccc", "----", [](Page& p) { pressSpaceOn(p.all()); });
        // clang-format on
    }

    void signalsOfTheGroup()
    {
        QFETCH(QString, read);
        QFETCH(Action, action);
        QFETCH(int, signalCount);
        Page page;
        page.read(read);
        QSignalSpy valueChanged(page.group.data(), &Group::valueChanged);
        action(page);
        QCOMPARE(valueChanged.count(), signalCount);
        QTEST(page.shown(), "shown");
        QTEST(page.freshBoxes(), "fresh");
    }

    void valuesGoByIndex()
    {
        const Page page;
        page.read("cvu");
        QVERIFY(page.group->getValue(0));
        // A box that varies is checked as far as Qt is concerned.
        QVERIFY(page.group->getValue(1));
        QVERIFY(!page.group->getValue(2));
        QVERIFY(!page.group->dataVaries(0));
        QVERIFY(page.group->dataVaries(1));
        QCOMPARE(page.group->lastIndex(), std::size_t(2));
    }

    void boxesAreEnabled()
    {
        const Page page;
        page.group->setEnabled(1, false);
        QVERIFY(page.box(0)->isEnabled());
        QVERIFY(!page.box(1)->isEnabled());
        page.group->setEnabled(false);
        QVERIFY(!page.box(0)->isEnabled());
        QVERIFY(!page.box(2)->isEnabled());
        QVERIFY(page.all()->isEnabled());
        page.group->setEnabled(true);
        QVERIFY(page.box(1)->isEnabled());
    }

    void anIndexPastTheEndIsReportedAndThrows_data()
    {
        QTest::addColumn<Action>("action");
        QTest::addColumn<bool>("isReported");
        const auto row = [](const char* name, bool isReported, const Action& action) {
            QTest::newRow(name) << action << isReported;
        };
        const std::size_t past = 3;
        row("getValue", true, [](Page& p) { p.group->getValue(past); });
        row("setValue", true, [](Page& p) { p.group->setValue(past, true); });
        row("readValue", true, [](Page& p) { p.group->readValue(past, true); });
        row("dataVaries", true, [](Page& p) { p.group->dataVaries(past); });
        row("the largest index", true, [](Page& p) { p.group->getValue(std::size_t(-1)); });
        row("setEnabled throws only", false, [](Page& p) { p.group->setEnabled(past, true); });
    }

    void anIndexPastTheEndIsReportedAndThrows()
    {
        QFETCH(Action, action);
        QFETCH(bool, isReported);
        Page page;
        if (isReported)
            expectAssert(
                "idx < m_checks.size()", {"idx", "m_checks.size()"}, "index out of bounds");
        QString what;
        try {
            action(page);
        } catch (const std::out_of_range& exception) {
            what = exception.what();
        }
        QCOMPARE(what, QString("invalid deque<T> subscript"));
    }

    void anEmptyGroupHasNoLastIndex()
    {
        const Page page(Labels{});
        QCOMPARE(page.group->size(), std::size_t(0));
        expectAssert("!m_checks.empty()");
        QCOMPARE(page.group->lastIndex(), std::size_t(-1));
        page.read("");
        QCOMPARE(page.shown(), QString("u"));
        QSignalSpy valueChanged(page.group.data(), &Group::valueChanged);
        clickOn(page.all());
        QCOMPARE(valueChanged.count(), 1);
        page.group->setCanBeSaved("k");
    }

    void aMissingParentIsReportedByTheBoxes()
    {
        QWidget form;
        HBoxLayouter layouter;
        layouter.onCreate(&form);
        expectAssert("parent");
        expectAssert("parent");
        const MultiEditCheckBoxGroup group(nullptr, layouter, {"x"}, {});
        // The layout gives them a parent.
        QCOMPARE(form.findChildren<MultiEditCheckBox*>().size(), 2);
    }

    void eachBoxIsSavedUnderItsIndex()
    {
        const Page page;
        QVERIFY(!page.box(0)->canBeSaved());
        page.group->setCanBeSaved("supports");
        QCOMPARE(page.box(0)->getStorageId(), std::string("supports/0"));
        QCOMPARE(page.box(2)->getStorageId(), std::string("supports/2"));
        QVERIFY(page.box(2)->canBeSaved());
        QVERIFY(!page.all()->canBeSaved());

        KeyValueStorage storage;
        storage["supports/1"] = std::string("as it was");
        page.read("cvu");
        for (int i = 0; i < 3; ++i)
            QVERIFY(page.box(i)->save(storage));
        QCOMPARE(storage.size(), std::size_t(3));
        QCOMPARE(storage["supports/0"], boost::any(true));
        // A box that varies leaves the entry alone.
        QCOMPARE(storage["supports/1"], boost::any(std::string("as it was")));
        QCOMPARE(storage["supports/2"], boost::any(false));
    }

    void aLoadedRoundIsToldAtItsEnd_data()
    {
        QTest::addColumn<QList<int>>("order");
        QTest::addColumn<QString>("boxSignals");
        using Indices = QList<int>;
        row("in order", Indices{0, 1, 2}, "110");
        row("backwards", Indices{2, 1, 0}, "011");
        row("the middle one last", Indices{0, 2, 1}, "101");
        row("not all of them", Indices{0, 1}, "000");
        // It is the number of loads that counts.
        row("one of them twice", Indices{0, 1, 0}, "011");
    }

    void aLoadedRoundIsToldAtItsEnd()
    {
        QFETCH(QList<int>, order);
        const Page page;
        page.group->setCanBeSaved("k");
        KeyValueStorage storage;
        for (const char* key : {"k/0", "k/1", "k/2"})
            storage[key] = true;
        std::vector<std::unique_ptr<QSignalSpy>> spies;
        for (int i = 0; i < 3; ++i)
            spies.push_back(
                std::make_unique<QSignalSpy>(page.box(i), &MultiEditCheckBox::valueChanged));
        QSignalSpy valueChanged(page.group.data(), &Group::valueChanged);
        for (const int index : order) {
            QCOMPARE(valueChanged.count(), 0);
            page.box(index)->load(storage);
            QVERIFY(page.box(index)->isChecked());
            QVERIFY(!page.box(index)->signalsBlocked());
        }
        QString boxSignals;
        for (const auto& spy : spies)
            boxSignals += QString::number(spy->count());
        QTEST(boxSignals, "boxSignals");
        QCOMPARE(valueChanged.count(), int(boxSignals.count('1')));
        const bool isWholeRound = order.size() == 3;
        const QChar all = !isWholeRound ? 'u' : page.shown().startsWith("ccc") ? 'c' : 'v';
        QCOMPARE(Page::letter(page.all()), all);
    }

    void aGroupOfOneIsLoadedInSilence()
    {
        const Page page({"x"});
        page.group->setCanBeSaved("k");
        KeyValueStorage storage;
        storage["k/0"] = true;
        QSignalSpy valueChanged(page.group.data(), &Group::valueChanged);
        page.box(0)->load(storage);
        QVERIFY(page.box(0)->isChecked());
        QCOMPARE(valueChanged.count(), 0);
        QCOMPARE(Page::letter(page.all()), QChar('u'));
    }

    void onlyABoolIsLoaded_data()
    {
        QTest::addColumn<boost::any>("value");
        row("an empty value", boost::any());
        row("a number", boost::any(1));
        row("a text", boost::any(std::string("true")));
        row("a missing entry", boost::any(missing));
    }

    void onlyABoolIsLoaded()
    {
        QFETCH(boost::any, value);
        const Page page;
        page.group->setCanBeSaved("k");
        page.read("uvc");
        KeyValueStorage storage;
        storage["k"] = true;
        if (!(value == boost::any(missing))) {
            for (const char* key : {"k/0", "k/1", "k/2"})
                storage[key] = value;
        }
        QSignalSpy valueChanged(page.group.data(), &Group::valueChanged);
        for (int i = 0; i < 3; ++i)
            page.box(i)->load(storage);
        QCOMPARE(page.shown(), QString("uvcv"));
        // Each load counts, whatever it found.
        QCOMPARE(valueChanged.count(), 2);
    }

    void aSavedGroupIsLoadedAgain_data()
    {
        QTest::addColumn<QString>("saved");
        QTest::addColumn<QString>("loaded");
        for (const char* saved : {"ccc", "uuu", "cuc", "ucu"})
            row(saved, saved, saved);
        row("a box that varies is not saved", "cvu", "cuu");
    }

    void aSavedGroupIsLoadedAgain()
    {
        QFETCH(QString, saved);
        KeyValueStorage storage;
        const Page source;
        source.group->setCanBeSaved("k");
        source.read(saved);
        for (int i = 0; i < 3; ++i)
            QVERIFY(source.box(i)->save(storage));
        const Page target;
        target.group->setCanBeSaved("k");
        for (int i = 0; i < 3; ++i)
            target.box(i)->load(storage);
        QTEST(target.shown().chopped(1), "loaded");
    }

    void theBoxesMayGoBeforeTheGroup()
    {
        Page page;
        page.group->setCanBeSaved("k");
        page.read("ccc");
        delete page.form;
        QCOMPARE(page.group->size(), std::size_t(3));
        expectAssert("box");
        QVERIFY(!page.group->getValue(0));
        expectAssert("box");
        QVERIFY(!page.group->dataVaries(1));
        expectAssert("box");
        page.group->setValue(2, true);
        expectAssert("box");
        page.group->readValue(0, true);
        page.group->reset();
        page.group->setEnabled(0, true);
        page.group->setEnabled(true);
        page.group->setCanBeSaved("other");
        expectAssert("m_toggleAll");
        page.group->onEndRead();
    }

    void oneBoxMayGoBeforeTheOthers()
    {
        const Page page;
        page.group->setCanBeSaved("k");
        page.read("cuc");
        delete page.box(1);
        page.group->onEndRead();
        QCOMPARE(page.shown(), QString("ccc"));
        clickOn(page.all());
        QCOMPARE(page.shown(), QString("uuu"));
        clickOn(page.box(1));
        QVERIFY(page.group->getValue(2));
    }

    void theGroupMayGoBeforeTheBoxes()
    {
        Page page;
        page.group->setCanBeSaved("k");
        KeyValueStorage storage;
        storage["k/0"] = true;
        delete page.group;
        page.box(0)->load(storage);
        QVERIFY(!page.box(0)->isChecked());
        clickOn(page.box(0));
        QVERIFY(page.box(0)->save(storage));
        clickOn(page.all());
        QCOMPARE(page.shown(), QString("cuuc"));
    }

    // While "All" is toggled, only the inner boxes send a signal.
    void aBoxMayBeDestroyedWhileAllIsToggled()
    {
        const Page page;
        page.read("uuu");
        connect(innerBox(page.box(0)), &QCheckBox::toggled, this, [&] { delete page.group; });
        clickOn(page.all());
        QCOMPARE(page.shown(), QString("cccc"));
        QVERIFY(!page.group);
    }
};

VRN_TEST(TestMultiEditCheckBoxGroup)
#include "tst_multi_edit_check_box_group.moc"
