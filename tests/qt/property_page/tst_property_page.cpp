#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "page_fixture.h"

#include <vrn/qt/property_error.h>
#include <vrn/qt/varies_string.h>

#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QHelpEvent>
#include <QJsonDocument>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>
#include <QToolTip>
#include <QTranslator>

#include <functional>
#include <stdexcept>

using Steps = std::function<void(const vrn::test::PageFixture&)>;

Q_DECLARE_METATYPE(Steps)
Q_DECLARE_METATYPE(vrn::qt::PropertyState::Kind)

using namespace vrn::qt;
using namespace vrn::test;

namespace {

/// A wall has a length like that of a beam, and a name that is not like it.
struct Wall
{
    double length = 4.0;
    int name = 1;
};

/// Puts what it translates into angle brackets.
class Brackets : public QTranslator
{
public:
    Brackets() { QCoreApplication::installTranslator(this); }
    ~Brackets() override { QCoreApplication::removeTranslator(this); }

    QString translate(const char* /*context*/, const char* source, const char* /*disambiguation*/,
        int /*n*/) const override
    {
        return "<" + QString::fromUtf8(source) + ">";
    }
    bool isEmpty() const override { return false; }
};

/// Whatever a user can read or hear of the page.
QStringList allTexts(const PropertyPage& page)
{
    QStringList texts;
    for (const QWidget* each : page.findChildren<QWidget*>()) {
        texts << each->toolTip() << each->accessibleName() << each->accessibleDescription();
        if (const auto* label = qobject_cast<const QLabel*>(each))
            texts << label->text();
        if (const auto* edit = qobject_cast<const QLineEdit*>(each))
            texts << edit->text() << edit->placeholderText();
        if (const auto* button = qobject_cast<const QAbstractButton*>(each))
            texts << button->text();
        if (const auto* box = qobject_cast<const QComboBox*>(each)) {
            for (int i = 0; i < box->count(); ++i)
                texts << box->itemText(i);
        }
        for (const QAction* action : each->actions())
            texts << action->text() << action->toolTip();
    }
    texts.removeAll(QString());
    return texts;
}

PropertySet<Beam> optionalBeams()
{
    PropertySet<Beam> beams("beam", &countedBeams);
    beams.section("geometry", "Geometry")
        .add("length", "Length", &Beam::length, field::quantity(vrn::units::UnitId::GEO_LENGTH));
    beams.section("statics", "Statics")
        .add("load", "Load", &Beam::load, field::quantity(vrn::units::UnitId::LOAD_LINE))
        .add("group", "Group", &Beam::group, field::choice<int>({{"one", 1}, {"two", 2}}))
        .add("active", "Active", &Beam::isActive, field::flag());
    return beams;
}

} // namespace

class TestPropertyPage : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void paintsWithoutAModel();
    void showsWhatTheSelectionHas_data();
    void showsWhatTheSelectionHas();
    void writesWhatIsTyped_data();
    void writesWhatIsTyped();
    void writesOnceAndUndoesInOneStep();
    void writesOnceIfASlotOfTheStackThrows();
    void isReadOnlyIfASlotThrows();
    void tellsWhatTheWriteRefuses();
    void tellsWhatCannotBeRead();
    void tellsWhatCannotBeUndone();
    void readsOncePerTurn();
    void readsOnlyWhatIsConcerned();
    void showsWhatWasReadWhileATextWasPending();
    void keepsWhatIsSelectedWhenAFieldIsReadAgain();
    void tellsOnceWhatWasRefused();
    void remembersWhatFinishEditingHasWritten();
    void clearsTheReceiptAtAnUndo();
    void showsWhatANewPageShows_data();
    void showsWhatANewPageShows();
    void speaksTheLanguageOfNow_data();
    void speaksTheLanguageOfNow();
    void showsSharedPropertiesOfSeveralKinds();
    void keepsTheEditorsOfAKind();
    void makesEditorsWhenTheirSectionOpens();
    void foldsByKeyboard();
    void stepsAmongHeads();
    void filters();
    void filtersByKeyboard();
    void leavesEscapeInAnEmptyFilterToTheDialog();
    void hidesItsFilter();
    void hidesItsReceipt();
    void tabsInReadingOrder();
    void hidesTheUnitThatTheTextHas();
    void changesUnits();
    void isReadOnly();
    void setsAValue();
    void savesAndLoads();
    void savesItsSections();
    void refusesADamagedState_data();
    void refusesADamagedState();
    void isDescribedToAScreenReader();
    void describesTheStateOfAField_data();
    void describesTheStateOfAField();
    void saysWhichSectionsAreExpanded();
    void drawsTheArrowAtTheLeadingEdge();
    void showsTheFocusOfAHead();
    void alignsTheEdgesOfEditors();
    void fitsANarrowPage_data();
    void fitsANarrowPage();
    void mergesTheKeysOfAGesture();
    void endsAGestureWithTheFocus();
};

void TestPropertyPage::paintsWithoutAModel()
{
    PropertyPage page(nullptr);
    QVERIFY(!page.grab().isNull());
    QCOMPARE(page.findChild<QLabel*>("hint")->text(), QString("Nothing is selected."));
    QVERIFY(!page.editor("length"));
    QVERIFY(page.finishEditing());
    QVERIFY(page.findChild<QLabel*>("receipt")->isHidden());
}

void TestPropertyPage::showsWhatTheSelectionHas_data()
{
    columns<QByteArray, PropertyState::Kind, QString>("key", "kind", "text");
    row("a common length is rounded", QByteArray("length"), PropertyState::Common,
        QString("3.333 m"));
    row("names that differ vary", QByteArray("name"), PropertyState::Varies, getVariesString());
    row("an empty load is empty", QByteArray("load"), PropertyState::NoValue, QString());
    row("a choice is its entry", QByteArray("support"), PropertyState::Common, QString("fixed"));
    row("a flag is a word", QByteArray("active"), PropertyState::Common, QString("Yes"));
    row("an integer is its digits", QByteArray("bolts"), PropertyState::Common, QString("1"));
}

void TestPropertyPage::showsWhatTheSelectionHas()
{
    QFETCH(const QByteArray, key);
    QFETCH(const PropertyState::Kind, kind);
    QFETCH(const QString, text);
    const PageFixture f;
    const PropertyRow row = f.page->row(key.toStdString());
    QCOMPARE(row.state, kind);
    QCOMPARE(row.text, text);
    QCOMPARE(row.edit, EditState::Untouched);
}

void TestPropertyPage::writesWhatIsTyped_data()
{
    columns<QByteArray, QString, QString>("key", "typed", "shown");
    row("a length", QByteArray("length"), QString("2.5"), QString("2.500 m"));
    row("a length in feet", QByteArray("length"), QString("10 ft"), QString("3.048 m"));
    row("a number", QByteArray("factor"), QString("1.25"), QString("1.25"));
    row("an integer", QByteArray("bolts"), QString("7"), QString("7"));
    row("a text", QByteArray("grade"), QString("S355"), QString("S355"));
    row("an optional load", QByteArray("load"), QString("3"), QString("3.00 kN/m"));
    row("a varying name", QByteArray("name"), QString("Main"), QString("Main"));
}

void TestPropertyPage::writesWhatIsTyped()
{
    QFETCH(const QByteArray, key);
    QFETCH(const QString, typed);
    QFETCH(const QString, shown);
    const PageFixture f;
    QSignalSpy edited(f.page, &PropertyPage::edited);
    f.type(key.toStdString(), typed);
    QVERIFY(f.page->isPending());
    QCOMPARE(f.model->writes, QStringList());
    f.press(Qt::Key_Return);
    QCOMPARE(f.model->writes, QStringList(key + " of 0 1 2"));
    QCOMPARE(f.text(key.toStdString()), shown);
    QCOMPARE(edited.count(), 1);
    QVERIFY(!f.page->isPending());
    QVERIFY(f.part<QLabel>("receipt")->isVisible());
}

void TestPropertyPage::writesOnceAndUndoesInOneStep()
{
    const PageFixture f;
    f.model->beams[1].length = 2.5;
    f.model->announce();
    f.page->flush();
    f.type("length", "2.5");
    f.press(Qt::Key_Tab);
    QCOMPARE(f.model->writes, QStringList("length of 0 2"));
    QCOMPARE(f.stack->count(), 1);
    QCOMPARE(f.stack->text(0), QString("Length of 2 beams"));
    QCOMPARE(f.part<QLabel>("receipt")->text(), QString("Length: 2 of 3 changed"));
    f.stack->undo();
    f.page->flush();
    QVERIFY(haveSameBits(f.lengthOf(0), 10.0 / 3.0));
    QCOMPARE(f.page->row("length").state, PropertyState::Varies);
}

void TestPropertyPage::writesOnceIfASlotOfTheStackThrows()
{
    PageFixture fixture;
    fixture.type("length", "+= 1 m");
    const auto throwing = connect(fixture.stack.get(), &QUndoStack::indexChanged, this,
        [] { throw std::runtime_error("the list of steps is broken"); });
    QVERIFY_EXCEPTION_THROWN(fixture.page->finishEditing(), std::runtime_error);
    disconnect(throwing);
    QCOMPARE(fixture.lengthOf(0), 10.0 / 3.0 + 1.0);
    QVERIFY(fixture.page->finishEditing());
    QCOMPARE(fixture.lengthOf(0), 10.0 / 3.0 + 1.0);
}

void TestPropertyPage::isReadOnlyIfASlotThrows()
{
    PageFixture fixture;
    fixture.type("length", "5");
    connect(fixture.page, &PropertyPage::edited, this,
        [] { throw std::runtime_error("the window is broken"); });
    QVERIFY_EXCEPTION_THROWN(fixture.page->setReadOnly(true), std::runtime_error);
    QCOMPARE(fixture.lengthOf(0), 5.0);
    QVERIFY(fixture.page->row("length").isReadOnly);
    QVERIFY(fixture.line("factor")->isReadOnly());
}

void TestPropertyPage::tellsWhatTheWriteRefuses()
{
    const PageFixture f;
    f.model->beforeWrite = [] { throw PropertyError("The project is locked."); };
    QSignalSpy refused(f.page, &PropertyPage::refused);
    f.type("length", "2.5");
    f.press(Qt::Key_Return);
    QCOMPARE(refused.count(), 1);
    QCOMPARE(refused[0][0].toString(), QString("Length"));
    QCOMPARE(refused[0][1].toString(), QString("The project is locked."));
    QCOMPARE(f.edit("length"), EditState::Refused);
    QCOMPARE(f.page->row("length").reason, QString("The project is locked."));
    QCOMPARE(f.page->editor("length")->toolTip(), QString("The project is locked."));
    QCOMPARE(f.stack->count(), 0);
    f.press(Qt::Key_Escape);
    QCOMPARE(f.text("length"), QString("3.333 m"));
    QVERIFY(!f.page->isPending());
}

void TestPropertyPage::tellsWhatCannotBeRead()
{
    const PageFixture f;
    f.model->inRead = [](const PropertyKeys& keys) {
        if (std::find(keys.begin(), keys.end(), "length") != keys.end())
            throw PropertyError("The file is gone.");
    };
    f.model->announce();
    f.page->flush();
    const PropertyRow row = f.page->row("length");
    QCOMPARE(row.state, PropertyState::Unreadable);
    QCOMPARE(row.reason, QString("The file is gone."));
    QCOMPARE(row.text, QString());
    QVERIFY(row.isReadOnly);
    QVERIFY(f.line("length")->isReadOnly());
    f.type("length", "5");
    QCOMPARE(f.line("length")->text(), QString());
    f.type("length", QString());
    f.press(Qt::Key_Return);
    QVERIFY(!f.page->isPending());
    QCOMPARE(f.model->writes, QStringList());
    QCOMPARE(f.text("bolts"), QString("1"));
    f.model->inRead = nullptr;
    f.model->announce();
    f.page->flush();
    QCOMPARE(f.text("length"), QString("3.333 m"));
    QVERIFY(!f.line("length")->isReadOnly());
}

void TestPropertyPage::tellsWhatCannotBeUndone()
{
    const PageFixture f;
    f.page->setValue("length", 2.5);
    f.model->beforeWrite = [] { throw PropertyError("The project is locked."); };
    f.stack->undo();
    f.page->flush();
    QCOMPARE(f.part<QLabel>("receipt")->text(), QString("The project is locked."));
}

void TestPropertyPage::readsOncePerTurn()
{
    const PageFixture f;
    f.model->reads = 0;
    for (int i = 0; i < 5; ++i)
        f.model->announce();
    QCOMPARE(f.model->reads, 0);
    QCoreApplication::processEvents();
    QCOMPARE(f.model->reads, 1);
}

void TestPropertyPage::readsOnlyWhatIsConcerned()
{
    const PageFixture f;
    f.page->setSelection({0, 1});
    f.model->reads = 0;
    f.model->announce({}, {2});
    f.page->flush();
    QCOMPARE(f.model->reads, 0);
    PropertyKeys read;
    f.model->inRead = [&](const PropertyKeys& keys) { read = keys; };
    f.model->announce({"length", "bolts"}, {1});
    f.page->flush();
    QCOMPARE(read, PropertyKeys({"length", "bolts", "area", "camber"}));
}

void TestPropertyPage::showsWhatWasReadWhileATextWasPending()
{
    const PageFixture f;
    f.type("bolts", "5");
    for (auto& beam : f.model->beams)
        beam.second.bolts = 7;
    f.model->announce({"bolts"});
    f.page->flush();
    QCOMPARE(f.line("bolts")->text(), QString("5"));
    f.type("bolts", "1"); // as it was
    QCOMPARE(f.line("bolts")->text(), QString("7"));
    QVERIFY(!f.page->isPending());
}

void TestPropertyPage::keepsWhatIsSelectedWhenAFieldIsReadAgain()
{
    const PageFixture f;
    for (const char* key : {"bolts", "name", "length"}) {
        f.line(key)->setFocus(Qt::TabFocusReason);
        for (auto& beam : f.model->beams)
            beam.second.bolts += 2;
        f.model->announce();
        f.page->flush();
        QCOMPARE(f.line(key)->selectedText(), f.line(key)->text());
    }
    f.press(Qt::Key_Escape);
    QCOMPARE(f.line("length")->selectedText(), f.line("length")->text());
}

void TestPropertyPage::tellsOnceWhatWasRefused()
{
    const PageFixture f;
    QSignalSpy refused(f.page, &PropertyPage::refused);
    f.model->beforeWrite = [] { throw PropertyError("not now"); };
    f.type("length", "5 m");
    QVERIFY(!f.page->finishEditing());
    QCOMPARE(refused.count(), 1);
    QVERIFY(!f.page->finishEditing());
    QCOMPARE(refused.count(), 2);
    f.model->beforeWrite = nullptr;
    f.press(Qt::Key_Return);
    QCOMPARE(f.lengthOf(2), 5.0);
    QCOMPARE(refused.count(), 2);
}

void TestPropertyPage::remembersWhatFinishEditingHasWritten()
{
    const PageFixture f;
    const auto history = boost::make_shared<vrn::ValueHistoryMemoryStorage>();
    PropertySet<Beam> remembered("beam", &countedBeams);
    remembered.add("length", "Length", &Beam::length,
        field::quantity(vrn::units::UnitId::GEO_LENGTH).history("lengths"));
    ObjectModel model;
    model.addKind(remembered, &f.model->beams);
    f.page->setModel(&model);
    f.page->setHistory(history);
    f.type("length", "5 m");
    QVERIFY(f.page->finishEditing());
    // What a program sets takes the place of a text that is never written.
    f.type("length", "6 m");
    f.page->setValue("length", 7.0);
    std::deque<std::wstring> entries;
    history->get(vrn::ValueHistory(L"lengths", history), entries);
    QCOMPARE(entries, std::deque<std::wstring>({L"5.000 m"}));
    f.page->setModel(nullptr);
}

void TestPropertyPage::clearsTheReceiptAtAnUndo()
{
    const PageFixture f;
    f.type("length", "5 m");
    f.press(Qt::Key_Return);
    QVERIFY(!f.part<QLabel>("receipt")->text().isEmpty());
    f.stack->undo();
    QCOMPARE(f.part<QLabel>("receipt")->text(), QString());
}

void TestPropertyPage::showsWhatANewPageShows_data()
{
    columns<int>("act");
    row("after an edit", 0);
    row("after an undo", 1);
    row("after a change from elsewhere", 2);
    row("after a deletion", 3);
    row("after the deletion of all", 4);
    row("after a change of units", 5);
    row("after another selection", 6);
    row("after an error", 7);
}

void TestPropertyPage::showsWhatANewPageShows()
{
    QFETCH(const int, act);
    const PageFixture f;
    switch (act) {
    case 0:
        f.page->setValue("length", 2.5);
        break;
    case 1:
        f.page->setValue("bolts", 7);
        f.stack->undo();
        break;
    case 2:
        f.model->beams[1].support = Support::Pinned;
        f.model->beams[1].isActive = false;
        f.model->announce({"support", "active"}, {1});
        break;
    case 3:
        f.model->beams.erase(0);
        f.model->beams.erase(1);
        f.model->announce();
        break;
    case 4:
        f.model->beams.clear();
        f.model->announce();
        break;
    case 5:
        f.model->setUnits(vrn::units::Context(8));
        break;
    case 6:
        f.page->setSelection({1});
        break;
    default:
        f.model->inRead = [](const PropertyKeys& keys) {
            if (std::find(keys.begin(), keys.end(), "bolts") != keys.end())
                throw PropertyError("The file is gone.");
        };
        f.model->announce({"bolts"}, {});
    }
    f.page->flush();
    PropertyPage fresh;
    fresh.setModel(f.model.get());
    fresh.setSelection(f.page->selection());
    for (const PropertyDescription& property : f.model->kind(0).properties()) {
        const PropertyRow shown = f.page->row(property.key);
        const PropertyRow expected = fresh.row(property.key);
        QCOMPARE(shown.text, expected.text);
        QCOMPARE(shown.state, expected.state);
        QCOMPARE(shown.reason, expected.reason);
        QCOMPARE(shown.isReadOnly, expected.isReadOnly);
        QCOMPARE(shown.edit, expected.edit);
    }
}

void TestPropertyPage::speaksTheLanguageOfNow_data()
{
    columns<bool, bool, QString>("isSelected", "isFolded", "text");
    row("nothing is selected", false, false, QString("<Nothing is selected.>"));
    row("the filter", true, false, QString("<Filter>"));
    row("the mark of small differences", true, false,
        QString("<The selected objects differ beyond the shown digits.>"));
    row("the button that clears", true, false, QString("<Clear>"));
    row("no choice", true, false, QString("<(none)>"));
    row("no choice in a section that was folded", true, true, QString("<(none)>"));
}

void TestPropertyPage::speaksTheLanguageOfNow()
{
    QFETCH(const bool, isSelected);
    QFETCH(const bool, isFolded);
    QFETCH(const QString, text);
    Beams beams{{0, Beam()}, {1, Beam()}};
    beams[1].length += 1e-9;
    beams[0].load = beams[1].load = 2.0;
    ObjectModel model;
    model.addKind(optionalBeams(), &beams);
    const auto set = [&](PropertyPage& page) {
        page.setModel(&model);
        page.setSelection(isSelected ? ObjectIds{0, 1} : ObjectIds{});
        page.show();
    };
    PropertyPage page(nullptr);
    set(page);
    auto* head = page.findChild<QToolButton*>("section.statics");
    if (isFolded)
        head->click();
    const Brackets language;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LanguageChange);
    QCoreApplication::processEvents();
    if (isFolded)
        head->click();
    const QStringList texts = allTexts(page);
    QVERIFY(texts.contains(text));
    PropertyPage fresh(nullptr);
    set(fresh);
    QCOMPARE(texts, allTexts(fresh));
}

void TestPropertyPage::showsSharedPropertiesOfSeveralKinds()
{
    PropertySet<Wall> walls("wall", [](int) { return QString("walls"); });
    walls
        .add("length", "&Length", &Wall::length,
            field::quantity(vrn::units::UnitId::GEO_LENGTH).between(0.1, 40.0))
        .add("name", "&Name", &Wall::name, field::integer());
    std::map<std::uint64_t, Wall> all{{0, Wall()}};
    BeamModel model(2);
    const std::uint32_t kind = model.addKind(walls, &all);
    PropertyPage page;
    page.setModel(&model);
    page.setSelection({{0, kind}, {0, 0}});
    QVERIFY(page.editor("length"));
    QVERIFY(!page.editor("name"));
    QVERIFY(!page.editor("bolts"));
    page.setSelection({{0, kind}});
    QVERIFY(page.editor("name"));
}

void TestPropertyPage::keepsTheEditorsOfAKind()
{
    const PageFixture f;
    QWidget* editor = f.page->editor("length");
    f.line("length")->setFocus();
    f.page->setSelection({2});
    QCOMPARE(f.page->editor("length"), editor);
    QCOMPARE(f.focus(), f.line("length"));
    QCOMPARE(f.text("name"), QString("B3"));
}

void TestPropertyPage::makesEditorsWhenTheirSectionOpens()
{
    BeamModel model(2);
    PropertyPage page;
    page.setModel(&model);
    page.setSelection(model.ids());
    QVERIFY(page.findChild<QWidget*>("length"));
    QVERIFY(!page.findChild<QWidget*>("support"));
    PropertyKeys read;
    model.inRead = [&](const PropertyKeys& keys) { read = keys; };
    page.findChild<QToolButton*>("section.statics")->click();
    QVERIFY(page.findChild<QWidget*>("support"));
    QCOMPARE(read, PropertyKeys({"support", "load", "group", "camber"}));
}

void TestPropertyPage::foldsByKeyboard()
{
    const PageFixture f;
    auto* head = f.part<QToolButton>("section.geometry");
    QWidget* editor = f.page->editor("length");
    head->setFocus();
    f.press(Qt::Key_Left);
    QVERIFY(!head->isChecked());
    QVERIFY(!editor->isVisible());
    QVERIFY(!f.part<QLabel>("length.caption")->isVisible());
    f.press(Qt::Key_Left);
    QVERIFY(!head->isChecked());
    f.press(Qt::Key_Right);
    QVERIFY(editor->isVisible());
    f.press(Qt::Key_Space);
    QVERIFY(!editor->isVisible());
    f.press(Qt::Key_Return);
    QVERIFY(editor->isVisible());
    f.window->setLayoutDirection(Qt::RightToLeft);
    f.press(Qt::Key_Right);
    QVERIFY(!editor->isVisible());
}

void TestPropertyPage::stepsAmongHeads()
{
    const PageFixture f;
    f.part<QToolButton>("section.general")->setFocus();
    f.press(Qt::Key_Down);
    QCOMPARE(f.focus(), f.part<QToolButton>("section.geometry"));
    f.press(Qt::Key_Down);
    f.press(Qt::Key_Down);
    QCOMPARE(f.focus(), f.part<QToolButton>("section.statics"));
    f.press(Qt::Key_Up);
    QCOMPARE(f.focus(), f.part<QToolButton>("section.geometry"));
}

void TestPropertyPage::filters()
{
    const PageFixture f;
    auto* filter = f.part<QLineEdit>("filter");
    auto* statics = f.part<QToolButton>("section.statics");
    statics->click();
    QVERIFY(!f.part<QWidget>("support")->isVisible());
    filter->setText(" SUPP ");
    QVERIFY(f.part<QWidget>("support")->isVisible());
    QVERIFY(!f.part<QWidget>("load")->isVisible());
    QVERIFY(!f.part<QWidget>("length")->isVisible());
    QVERIFY(!f.part<QWidget>("section.geometry")->isVisible());
    filter->setText("nothing has this");
    QVERIFY(f.part<QLabel>("hint")->isVisible());
    filter->clear();
    QVERIFY(!f.part<QLabel>("hint")->isVisible());
    QVERIFY(!f.part<QWidget>("support")->isVisible());
    QVERIFY(!statics->isChecked());
    QVERIFY(f.part<QWidget>("length")->isVisible());
}

void TestPropertyPage::filtersByKeyboard()
{
    const PageFixture f;
    f.line("length")->setFocus();
    f.press(Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(f.focus(), f.part<QLineEdit>("filter"));
    QTest::keyClicks(f.part<QLineEdit>("filter"), "bolt");
    f.press(Qt::Key_Down);
    QCOMPARE(f.focus(), f.line("bolts"));
    f.press(Qt::Key_F, Qt::ControlModifier);
    f.press(Qt::Key_Escape);
    QCOMPARE(f.part<QLineEdit>("filter")->text(), QString());
    QVERIFY(f.part<QWidget>("length")->isVisible());
}

void TestPropertyPage::leavesEscapeInAnEmptyFilterToTheDialog()
{
    BeamModel model(1);
    QDialog dialog;
    auto* page = new PropertyPage(&dialog);
    page->setModel(&model);
    page->setSelection(model.ids());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto* filter = page->findChild<QLineEdit*>("filter");
    filter->setFocus();
    QTest::keyClicks(filter, "a");
    QTest::keyClick(filter, Qt::Key_Escape);
    QVERIFY(dialog.isVisible());
    QTest::keyClick(filter, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
}

void TestPropertyPage::hidesItsFilter()
{
    const PageFixture f;
    auto* filter = f.part<QLineEdit>("filter");
    filter->setText("bolt");
    QVERIFY(!f.part<QWidget>("length")->isVisible());
    f.type("bolts", "3");
    f.page->setFilterVisible(false);
    QVERIFY(!f.page->isFilterVisible());
    QVERIFY(!filter->isVisible());
    QVERIFY(f.part<QWidget>("length")->isVisible());
    QCOMPARE(f.edit("bolts"), EditState::Complete);
    QCOMPARE(f.model->writes, QStringList());
    f.page->setFilterVisible(true);
    QVERIFY(filter->isVisible());
    QCOMPARE(filter->text(), QString());
}

void TestPropertyPage::hidesItsReceipt()
{
    const PageFixture f;
    auto* receipt = f.part<QLabel>("receipt");
    const QSignalSpy edited(f.page, &PropertyPage::edited);
    f.page->setReceiptVisible(false);
    QVERIFY(!f.page->isReceiptVisible());
    const PropertyReceipt written = f.page->setValue("bolts", 3);
    QVERIFY(!receipt->isVisible());
    QCOMPARE(edited.count(), 1);
    f.page->setReceiptVisible(true);
    QVERIFY(receipt->isVisible());
    QCOMPARE(receipt->text(), written.text);
    f.page->setReceiptVisible(false);
    QVERIFY(!receipt->isVisible());
}

void TestPropertyPage::tabsInReadingOrder()
{
    const PageFixture f;
    f.part<QToolButton>("section.general")->setFocus();
    const QStringList wanted{"name", "grade", "comment", "active", "section.geometry", "length",
        "width", "factor", "bolts", "area", "section.statics", "support", "load"};
    for (const QString& name : wanted) {
        f.press(Qt::Key_Tab);
        QWidget* focus = f.focus();
        while (focus->objectName() != name && focus != f.page && focus->parentWidget())
            focus = focus->parentWidget();
        QCOMPARE(focus->objectName(), name);
    }
}

void TestPropertyPage::hidesTheUnitThatTheTextHas()
{
    const PageFixture f;
    auto* unit = f.part<QLabel>("length.unit");
    QCOMPARE(unit->text(), QString("m"));
    QVERIFY(!unit->isVisible());
    f.type("length", "2");
    QVERIFY(unit->isVisible());
    QTest::keyClicks(f.line("length"), " m");
    QVERIFY(!unit->isVisible());
    QVERIFY(f.part<QLabel>("load.unit")->isVisible());
    f.part<QToolButton>("section.statics")->click();
    QVERIFY(!f.part<QLabel>("load.unit")->isVisible());
}

void TestPropertyPage::changesUnits()
{
    const PageFixture f;
    const vrn::units::Context units(8);
    const QString expected = f.model->kind(0).find("length")->field.text(10.0 / 3.0, units);
    f.model->setUnits(units);
    QCOMPARE(f.text("length"), expected);
    QVERIFY(expected != "3.333 m");
    QCOMPARE(f.model->writes, QStringList());
}

void TestPropertyPage::isReadOnly()
{
    const PageFixture f;
    f.page->setReadOnly(true);
    QVERIFY(f.line("length")->isReadOnly());
    QVERIFY(!f.page->editor("active")->isEnabled());
    QVERIFY(!f.page->editor("support")->isEnabled());
    QVERIFY(f.page->row("bolts").isReadOnly);
    f.page->setReadOnly(false);
    QVERIFY(!f.line("length")->isReadOnly());
    QVERIFY(f.page->editor("active")->isEnabled());
    QVERIFY(f.line("area")->isReadOnly());
}

void TestPropertyPage::setsAValue()
{
    const PageFixture f;
    QSignalSpy edited(f.page, &PropertyPage::edited);
    const PropertyReceipt receipt = f.page->setValue("length", 2.5);
    QCOMPARE(receipt.changed, std::size_t(3));
    QCOMPARE(f.text("length"), QString("2.500 m"));
    QCOMPARE(edited.count(), 1);
    QCOMPARE(f.stack->count(), 1);
    QVERIFY_EXCEPTION_THROWN(f.page->setValue("length", 50.0), PropertyError);
    QCOMPARE(edited.count(), 1);
    QCOMPARE(f.text("length"), QString("2.500 m"));
}

void TestPropertyPage::savesAndLoads()
{
    const PageFixture f;
    f.type("bolts", "7");
    const QJsonObject saved = f.page->save();
    QCOMPARE(f.model->beams[0].bolts, 7);
    f.page->setValue("bolts", 9);
    f.page->setValue("length", 2.5);
    QCOMPARE(f.page->load(saved).changed, std::size_t(3));
    QCOMPARE(f.text("bolts"), QString("7"));
    QVERIFY(haveSameBits(f.lengthOf(2), 10.0 / 3.0));
    QVERIFY_EXCEPTION_THROWN(f.page->load(QJsonObject()), PropertyError);
}

void TestPropertyPage::savesItsSections()
{
    const PageFixture f;
    f.part<QToolButton>("section.geometry")->click();
    const QByteArray state = f.page->saveState();
    f.part<QToolButton>("section.geometry")->click();
    f.part<QToolButton>("section.general")->click();
    QVERIFY(f.page->restoreState(state));
    QVERIFY(f.part<QToolButton>("section.general")->isChecked());
    QVERIFY(!f.part<QToolButton>("section.geometry")->isChecked());
    QVERIFY(f.part<QToolButton>("section.statics")->isChecked());
    QCOMPARE(f.page->saveState(), state);
}

void TestPropertyPage::refusesADamagedState_data()
{
    columns<QByteArray>("state");
    PropertyPage page;
    BeamModel model(1);
    page.setModel(&model);
    page.setSelection(model.ids());
    const QByteArray state = page.saveState();
    row("nothing", QByteArray());
    row("another format", QByteArray("{\"open\":{}}"));
    row("cut", state.left(state.size() - 3));
    row("a section that was folded by hand", QByteArray(state).replace("true", "false"));
    row("a section of another name", QByteArray(state).replace("geometry", "gemeotry"));
    row("another version", QByteArray(state).replace("\"version\":1", "\"version\":2"));
}

void TestPropertyPage::refusesADamagedState()
{
    QFETCH(const QByteArray, state);
    const PageFixture f;
    const QByteArray before = f.page->saveState();
    QVERIFY(!f.page->restoreState(state));
    QCOMPARE(f.page->saveState(), before);
}

void TestPropertyPage::isDescribedToAScreenReader()
{
    const PageFixture f;
    QCOMPARE(f.line("length")->accessibleName(), QString("Length"));
    QCOMPARE(f.page->editor("support")->accessibleName(), QString("Support"));
    QCOMPARE(f.part<QToolButton>("section.geometry")->accessibleName(), QString("Geometry"));
    QCOMPARE(f.part<QLabel>("length.caption")->buddy(), f.page->editor("length"));
}

// After its unit.
void TestPropertyPage::describesTheStateOfAField_data()
{
    columns<Steps, QString>("steps", "status");
    const QString refused = "\nIt must be between 0.100 m and 40.000 m.";
    const auto typing = [](const QString& text) {
        return Steps([text](const PageFixture& f) { f.type("length", text); });
    };
    const auto vary = [](const PageFixture& f, double difference) {
        f.model->beams[0].length += difference;
        f.model->announce();
        QCoreApplication::processEvents();
    };
    row("at rest", Steps([](const PageFixture&) {}), QString());
    row("objects that differ", Steps([=](const PageFixture& f) { vary(f, 1.0); }),
        QString("\nThe selected objects differ."));
    row("objects that differ beyond the shown digits",
        Steps([=](const PageFixture& f) { vary(f, 1e-9); }),
        QString("\nThe selected objects differ beyond the shown digits."));
    row("a text where objects differ", Steps([=](const PageFixture& f) {
        vary(f, 1.0);
        f.type("length", "5 m");
    }),
        QString());
    row("a text that will do", typing("5 m"), QString());
    row("a text that is refused", typing("50 m"), refused);
    row("a text that was refused by Enter", Steps([](const PageFixture& f) {
        f.type("length", "50 m");
        f.press(Qt::Key_Return);
    }),
        refused);
    row("a text that was refused and will do now", Steps([](const PageFixture& f) {
        f.type("length", "50 m");
        f.press(Qt::Key_Return);
        f.type("length", "5 m");
    }),
        QString());
    row("a text that was taken back", Steps([](const PageFixture& f) {
        f.type("length", "50 m");
        f.press(Qt::Key_Escape);
    }),
        QString());
}

void TestPropertyPage::describesTheStateOfAField()
{
    QFETCH(const Steps, steps);
    QFETCH(const QString, status);
    const PageFixture f;
    steps(f);
    QCOMPARE(f.line("length")->accessibleDescription(), "m" + status);
    QCOMPARE(f.page->editor("length")->accessibleDescription(), "m" + status);
}

void TestPropertyPage::saysWhichSectionsAreExpanded()
{
    const PageFixture f;
    auto* head = f.part<QToolButton>("section.geometry");
    QAccessibleInterface* said = QAccessible::queryAccessibleInterface(head);
    QCOMPARE(said->role(), QAccessible::Button);
    QCOMPARE(said->text(QAccessible::Name), QString("Geometry"));
    QVERIFY(said->state().expandable && said->state().expanded && !said->state().collapsed);
    QVERIFY(!said->state().checkable && !said->state().checked);
    said->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QVERIFY(!head->isChecked());
    QVERIFY(said->state().expandable && !said->state().expanded && said->state().collapsed);
}

void TestPropertyPage::drawsTheArrowAtTheLeadingEdge()
{
    const PageFixture f;
    auto* head = f.part<QToolButton>("section.geometry");
    head->setText(QString());
    // The darkest column.
    const auto placeOfArrow = [&] {
        const QImage picture = head->grab().toImage();
        int place = 0;
        int darkest = 256;
        for (int x = 5; x < picture.width() - 5; ++x) {
            const int shade = qGray(picture.pixel(x, picture.height() / 2));
            if (shade < darkest) {
                darkest = shade;
                place = x;
            }
        }
        return place;
    };
    QVERIFY(placeOfArrow() < head->width() / 2);
    f.window->setLayoutDirection(Qt::RightToLeft);
    QVERIFY(placeOfArrow() > head->width() / 2);
}

void TestPropertyPage::showsTheFocusOfAHead()
{
    const PageFixture f;
    auto* head = f.part<QToolButton>("section.geometry");
    const QImage without = head->grab().toImage();
    head->setFocus();
    QVERIFY(head->grab().toImage() != without);
}

void TestPropertyPage::alignsTheEdgesOfEditors()
{
    const PageFixture f;
    const auto edges = [](const QWidget* widget) {
        const int left = widget->mapTo(widget->window(), QPoint()).x();
        return std::make_pair(left, left + widget->width());
    };
    QCOMPARE(edges(f.line("load")), edges(f.page->editor("support")));
    QCOMPARE(edges(f.part<QToolButton>("section.statics")), edges(f.part<QLineEdit>("filter")));
}

void TestPropertyPage::fitsANarrowPage_data()
{
    columns<Qt::LayoutDirection, QString>("direction", "caption");
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        const QByteArray where = direction == Qt::LeftToRight ? "" : "from the right: ";
        row(where + "short captions", direction, QString("&Length"));
        row(where + "a long caption", direction, QString("&Length between the supports"));
    }
}

// It does not scroll sideways, and each editor has room for a number.
void TestPropertyPage::fitsANarrowPage()
{
    QFETCH(const Qt::LayoutDirection, direction);
    QFETCH(const QString, caption);
    constexpr int narrow = 220;
    Beams beams{{0, Beam()}, {1, Beam()}};
    beams[0].isActive = false;
    beams[0].load = beams[1].load = 2.0;
    PropertySet<Beam> set("beam", &countedBeams);
    set.section("geometry", "Geometry, supports and all that goes with them")
        .add("length", caption, &Beam::length, field::quantity(vrn::units::UnitId::GEO_LENGTH))
        .add("load", "Load", &Beam::load, field::quantity(vrn::units::UnitId::LOAD_LINE))
        .add("support", "Support", &Beam::support,
            field::choice<Support>({{"fixed in all directions", Support::Fixed}}))
        .add("active", "Active", &Beam::isActive, field::flag());
    ObjectModel model;
    model.addKind(set, &beams);
    PropertyPage page(nullptr);
    page.setLayoutDirection(direction);
    page.setModel(&model);
    page.setSelection({0, 1});
    // At the 96 dpi of the tests. It is so low that it scrolls upright.
    page.resize(narrow, narrow / 2);
    page.show();
    QCoreApplication::processEvents();
    QCOMPARE(page.width(), narrow);
    const auto* scroll = page.findChild<QScrollArea*>();
    QVERIFY(scroll->verticalScrollBar()->isVisible());
    QCOMPARE(scroll->horizontalScrollBar()->maximum(), 0);
    const int number = page.fontMetrics().horizontalAdvance("1.000");
    for (const char* key : {"length", "load", "support", "active"})
        QVERIFY2(page.editor(key)->width() > number, key);

    const auto* label = page.findChild<QLabel*>("length.caption");
    const QString whole = QString(caption).remove('&');
    QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), label->mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(const_cast<QLabel*>(label), &event);
    QCOMPARE(QToolTip::text(), caption.size() > narrow / 10 ? whole : QString());
}

void TestPropertyPage::mergesTheKeysOfAGesture()
{
    const PageFixture f;
    f.page->editor("support")->setFocus();
    f.press(Qt::Key_Down);
    f.press(Qt::Key_Up);
    f.press(Qt::Key_Down);
    QCOMPARE(f.model->writes.size(), 3);
    QCOMPARE(f.stack->count(), 1);
    f.stack->undo();
    QCOMPARE(f.model->beams[0].support, Support::Fixed);
}

void TestPropertyPage::endsAGestureWithTheFocus()
{
    const PageFixture f;
    f.page->editor("support")->setFocus();
    f.press(Qt::Key_Down);
    f.button->setFocus();
    f.page->editor("support")->setFocus();
    f.press(Qt::Key_Up);
    QCOMPARE(f.stack->count(), 2);
}

VRN_TEST(TestPropertyPage)
#include "tst_property_page.moc"
