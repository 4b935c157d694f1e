#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "page_fixture.h"

#include <vrn/qt/property_error.h>

#include <QComboBox>

using namespace vrn::qt;
using namespace vrn::test;
namespace UnitId = vrn::units::UnitId;

namespace {

/// Fields of every editor that are enabled while the beam is active, and one that is enabled
/// while it is pinned. The conditions are in a section that is folded.
PropertySet<Beam> conditionalProperties()
{
    PropertySet<Beam> beams("beam", &countedBeams);
    beams
        .add("length", "&Length", &Beam::length,
            field::quantity(UnitId::GEO_LENGTH).between(0.1, 40.0).enabledIf("active"))
        .add(
            "bolts", "&Bolts", &Beam::bolts, field::integer().enabledIf("support", Support::Pinned))
        .add("group", "Gr&oup", &Beam::group,
            field::choice<int>({{"one", 1}, {"two", 2}}).enabledIf("active"))
        .add("name", "&Name", &Beam::name, field::text());
    beams.section("conditions", "Conditions", false)
        .add("active", "&Active", &Beam::isActive, field::flag())
        .add("support", "&Support", &Beam::support,
            field::choice<Support>({{"fixed", Support::Fixed}, {"pinned", Support::Pinned}}));
    return beams;
}

class Model : public BeamModel
{
public:
    explicit Model(int count)
        : BeamModel(count)
    {
        kind = addKind(conditionalProperties(), &beams);
    }

    ObjectIds ids() const { return objects(kind); }
    ObjectId id(std::uint64_t key) const { return {key, kind}; }

    std::uint32_t kind = 0;
};

/// Three active beams in a page.
struct Page : PageFixture
{
    Page()
        : model(3)
    {
        page->setModel(&model);
        page->setSelection(model.ids());
    }

    void setActive(bool active, std::uint64_t key)
    {
        model.beams.at(key).isActive = active;
        model.announce({"active"}, {model.id(key)});
    }
    bool isEnabled(const std::string& key) const { return page->row(key).isEnabled; }

    Model model;
};

} // namespace

class TestEnabledIf : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void reportsWhatCannotBeMet_data();
    void reportsWhatCannotBeMet();
    void asksAllObjectsThatExist_data();
    void asksAllObjectsThatExist();
    void greysTheWholeRow();
    void looksUnlikeReadOnly();
    void staysReadOnlyWhenItIsEnabled();
    void followsTheConditionInAFoldedSection();
    void followsAnEditAndItsUndo();
    void followsTheSelection();
    void readsTheConditionWithTheRow();
    void endsWhatIsPending_data();
    void endsWhatIsPending();
    void endsWhatIsPendingWhenTheWriteFails();
    void writesNothingOfItsOwn();
    void roundsWhatHadAllDigits_data();
    void roundsWhatHadAllDigits();
    void takesNoPickFromAListThatIsOpen();
    void letsTheProgramEdit();
    void isPassedByTheKeyboard();
    void survivesWhatGetsTheFocus_data();
    void survivesWhatGetsTheFocus();
};

void TestEnabledIf::reportsWhatCannotBeMet_data()
{
    columns<QString, QString>("key", "message");
    row("an unknown key", "acitve", "a condition names a property of its kind of object");
    row("a value of another type", "bolts", "a condition has the type of the property it names");
}

void TestEnabledIf::reportsWhatCannotBeMet()
{
    QFETCH(const QString, key);
    QFETCH(const QString, message);
    PropertySet<Beam> beams("beam", &countedBeams);
    beams.add("length", "Length", &Beam::length, field::number().enabledIf(key.toStdString()))
        .add("bolts", "Bolts", &Beam::bolts, field::integer());
    Beams all{{0, Beam()}};
    ObjectModel model;
    expectAssert(key == "bolts" ? "!source || isOfType" : "source", {"key"}, message.toStdString());
    model.addKind(beams, &all);
    PropertyPage page;
    page.setModel(&model);
    page.setSelection({0});
    QVERIFY(page.row("length").isEnabled);
    QVERIFY(page.editor("length")->isEnabled());
}

void TestEnabledIf::asksAllObjectsThatExist_data()
{
    columns<QString, bool, bool>("change", "flag", "choice");
    row("all are active, and none is pinned", "", true, false);
    row("one is not active", "0 inactive", false, false);
    row("all are pinned", "0 pinned,1 pinned,2 pinned", true, true);
    row("one is not pinned", "0 pinned,1 pinned", true, false);
    row("the one that is not pinned is gone", "0 pinned,1 pinned,2 gone", true, true);
    row("none is there", "0 gone,1 gone,2 gone", true, true);
    row("the conditions cannot be read", "unreadable", false, false);
}

void TestEnabledIf::asksAllObjectsThatExist()
{
    QFETCH(const QString, change);
    QFETCH(const bool, flag);
    QFETCH(const bool, choice);
    Page f;
    for (const QString& each : change.split(',')) {
        const auto key = each.section(' ', 0, 0).toULongLong();
        if (each.endsWith("inactive"))
            f.model.beams[key].isActive = false;
        else if (each.endsWith("pinned"))
            f.model.beams[key].support = Support::Pinned;
        else if (each.endsWith("gone"))
            f.model.beams.erase(key);
        else if (each == "unreadable") {
            f.model.inRead = [](const PropertyKeys& keys) {
                for (const char* condition : {"active", "support"}) {
                    if (std::find(keys.begin(), keys.end(), condition) != keys.end())
                        throw PropertyError("The file is gone.");
                }
            };
        }
    }
    f.model.announce();
    f.page->flush();
    QCOMPARE(f.isEnabled("length"), flag);
    QCOMPARE(f.isEnabled("group"), flag);
    QCOMPARE(f.isEnabled("bolts"), choice);
    QVERIFY(f.isEnabled("name"));
}

void TestEnabledIf::greysTheWholeRow()
{
    Page f;
    f.setActive(false, 0);
    f.page->flush();
    QCOMPARE(f.text("length"), QString("3.000 m"));
    for (const char* part : {"length", "length.caption", "length.unit", "group", "group.caption"})
        QVERIFY2(!f.part<QWidget>(part)->isEnabled(), part);
    f.setActive(true, 0);
    f.page->flush();
    for (const char* part : {"length", "length.caption", "length.unit", "group", "group.caption"})
        QVERIFY2(f.part<QWidget>(part)->isEnabled(), part);
}

void TestEnabledIf::looksUnlikeReadOnly()
{
    Page f;
    f.page->setReadOnly(true);
    const QImage readOnly = f.line("length")->grab().toImage();
    QVERIFY(f.line("length")->isEnabled());
    f.page->setReadOnly(false);
    f.setActive(false, 0);
    f.page->flush();
    QVERIFY(!f.page->row("length").isReadOnly);
    QVERIFY(f.line("length")->grab().toImage() != readOnly);
}

void TestEnabledIf::staysReadOnlyWhenItIsEnabled()
{
    Page f;
    f.setActive(false, 0);
    f.page->flush();
    f.page->setReadOnly(true);
    QVERIFY(f.page->row("group").isReadOnly);
    f.setActive(true, 0);
    f.page->flush();
    QVERIFY(f.line("length")->isReadOnly());
    QVERIFY(!f.page->editor("group")->isEnabled());
    f.setActive(false, 0);
    f.page->flush();
    f.page->setReadOnly(false);
    QVERIFY(!f.page->editor("group")->isEnabled());
    f.setActive(true, 0);
    f.page->flush();
    QVERIFY(!f.line("length")->isReadOnly());
    QVERIFY(f.page->editor("group")->isEnabled());
}

void TestEnabledIf::followsTheConditionInAFoldedSection()
{
    Page f;
    QVERIFY(!f.part<QWidget>("active"));
    f.setActive(false, 1);
    QCoreApplication::processEvents();
    QVERIFY(!f.part<QWidget>("length")->isEnabled());
    f.setActive(true, 1);
    QCoreApplication::processEvents();
    QVERIFY(f.part<QWidget>("length")->isEnabled());
    QVERIFY(!f.part<QWidget>("active"));
}

void TestEnabledIf::followsAnEditAndItsUndo()
{
    Page f;
    QWidget* const bolts = f.part<QWidget>("bolts");
    QVERIFY(!bolts->isEnabled());
    f.page->editor("support")->setFocus();
    f.press(Qt::Key_Down);
    QVERIFY(bolts->isEnabled());
    f.stack->undo();
    f.page->flush();
    QVERIFY(!bolts->isEnabled());
    f.stack->redo();
    f.page->flush();
    QVERIFY(bolts->isEnabled());
}

void TestEnabledIf::followsTheSelection()
{
    Page f;
    f.model.beams[2].isActive = false;
    f.page->setSelection({f.model.id(0), f.model.id(1)});
    QVERIFY(f.part<QWidget>("length")->isEnabled());
    f.page->setSelection({f.model.id(1), f.model.id(2)});
    QVERIFY(!f.part<QWidget>("length")->isEnabled());
    f.page->setSelection({f.model.id(1)});
    QVERIFY(f.part<QWidget>("length")->isEnabled());
}

void TestEnabledIf::readsTheConditionWithTheRow()
{
    Page f;
    PropertyKeys read;
    f.model.inRead = [&](const PropertyKeys& keys) { read = keys; };
    f.model.reads = 0;
    f.model.announce({"active"});
    f.page->flush();
    QCOMPARE(read, PropertyKeys({"length", "group", "active"}));
    QCOMPARE(f.model.reads, 1);
}

void TestEnabledIf::endsWhatIsPending_data()
{
    columns<QByteArray, QString, QStringList>("key", "typed", "writes");
    row("a complete text is written", QByteArray("length"), QString("5 m"),
        QStringList("length of 0 1 2"));
    row("one out of range is dropped", QByteArray("length"), QString("50 m"), QStringList());
    row("an incomplete one is dropped", QByteArray("length"), QString("5 +"), QStringList());
    row("a text of a field that stays enabled is kept", QByteArray("name"), QString("Main"),
        QStringList());
}

void TestEnabledIf::endsWhatIsPending()
{
    QFETCH(const QByteArray, key);
    QFETCH(const QString, typed);
    QFETCH(const QStringList, writes);
    Page f;
    f.type(key.toStdString(), typed);
    f.setActive(false, 1);
    QCOMPARE(f.model.writes, QStringList());
    f.page->flush();
    QCOMPARE(f.model.writes, writes);
    QCOMPARE(f.stack->count(), writes.size());
    QCOMPARE(f.page->isPending(), key == "name");
    QVERIFY(!f.isEnabled("length"));
    QCOMPARE(f.text("length"), writes.isEmpty() ? QString("3.000 m") : QString("5.000 m"));
    QVERIFY(f.line("length")->styleSheet().isEmpty());
}

void TestEnabledIf::endsWhatIsPendingWhenTheWriteFails()
{
    Page f;
    QSignalSpy refused(f.page, &PropertyPage::refused);
    f.type("length", "5 m");
    f.model.beforeWrite = [] { throw PropertyError("The project is locked."); };
    f.setActive(false, 1);
    f.page->flush();
    QCOMPARE(refused.count(), 1);
    QVERIFY(!f.page->isPending());
    QVERIFY(!f.isEnabled("length"));
    QCOMPARE(f.text("length"), QString("3.000 m"));
}

void TestEnabledIf::writesNothingOfItsOwn()
{
    Page f;
    for (auto& beam : f.model.beams)
        beam.second.length = 10.0 / 3.0;
    f.model.announce();
    f.page->flush();
    for (const char* key : {"length", "group"}) {
        f.page->editor(key)->setFocus(Qt::TabFocusReason);
        f.setActive(false, 0);
        f.page->flush();
        f.setActive(true, 0);
        f.page->flush();
    }
    QCOMPARE(f.model.writes, QStringList());
    QCOMPARE(f.stack->count(), 0);
    QVERIFY(haveSameBits(f.model.beams[0].length, 10.0 / 3.0));
}

void TestEnabledIf::roundsWhatHadAllDigits_data()
{
    columns<bool>("isActive");
    row("in the window that has the keyboard", true);
    row("behind another window", false);
}

void TestEnabledIf::roundsWhatHadAllDigits()
{
    QFETCH(const bool, isActive);
    Page f;
    for (auto& beam : f.model.beams)
        beam.second.length = 10.0 / 3.0;
    f.model.announce();
    f.page->flush();
    f.line("length")->setFocus(Qt::TabFocusReason);
    if (!isActive)
        QApplication::setActiveWindow(nullptr);
    QVERIFY(f.text("length") != "3.333 m");
    f.setActive(false, 0);
    f.page->flush();
    QCOMPARE(f.text("length"), QString("3.333 m"));
}

void TestEnabledIf::takesNoPickFromAListThatIsOpen()
{
    Page f;
    auto* box = qobject_cast<QComboBox*>(f.page->editor("group"));
    f.setActive(false, 0);
    f.page->flush();
    box->setCurrentIndex(2);
    Q_EMIT box->activated(2);
    QCOMPARE(f.model.writes, QStringList());
    QCOMPARE(box->currentIndex(), 0);
}

void TestEnabledIf::letsTheProgramEdit()
{
    Page f;
    const QJsonObject saved = f.page->save();
    f.setActive(false, 0);
    f.page->flush();
    f.page->setValue("length", 5.0);
    QCOMPARE(f.text("length"), QString("5.000 m"));
    f.page->load(saved);
    QCOMPARE(f.text("length"), QString("3.000 m"));
}

void TestEnabledIf::isPassedByTheKeyboard()
{
    Page f;
    f.setActive(false, 0);
    f.page->flush();
    auto* filter = f.part<QLineEdit>("filter");
    filter->setFocus();
    f.press(Qt::Key_Down);
    QCOMPARE(f.focus(), f.line("name"));
    filter->setFocus();
    f.press(Qt::Key_Tab);
    QCOMPARE(f.focus(), f.line("name"));
}

void TestEnabledIf::survivesWhatGetsTheFocus_data()
{
    columns<bool>("deletes");
    row("another selection", false);
    row("the end of the page", true);
}

void TestEnabledIf::survivesWhatGetsTheFocus()
{
    QFETCH(const bool, deletes);
    Page f;
    f.line("length")->setFocus();
    const QPointer<PropertyPage> page = f.page;
    const auto connection = connect(qApp, &QApplication::focusChanged, qApp, [&] {
        if (deletes)
            delete page;
        else if (page)
            page->setSelection({f.model.id(2)});
    });
    f.setActive(false, 0);
    f.model.flush();
    disconnect(connection);
    QCOMPARE(page.isNull(), deletes);
    if (page)
        QVERIFY(f.isEnabled("length"));
}

VRN_TEST(TestEnabledIf)
#include "tst_enabled_if.moc"
