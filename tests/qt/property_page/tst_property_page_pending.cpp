#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "page_fixture.h"

#include <vrn/qt/property_error.h>

#include <QEventLoop>
#include <QMenu>
#include <QTimer>
#include <QToolButton>

#include <functional>
#include <utility>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Act = std::function<void(const PageFixture&)>;

enum End
{
    Written, ///< And a text that is not complete stays.
    WrittenOrDropped,
    Dropped,
    None
};

struct Row
{
    const char* name;
    Act act;
    End end;
};

const std::vector<Row>& acts()
{
    static const std::vector<Row> all{
        {"Enter", [](const PageFixture& f) { f.press(Qt::Key_Return); }, Written},
        {"Tab", [](const PageFixture& f) { f.press(Qt::Key_Tab); }, Written},
        {"leaving", [](const PageFixture& f) { f.button->setFocus(); }, Written},
        {"leaving while another window is active",
            [](const PageFixture& f) { f.inAnotherWindow([&] { f.button->setFocus(); }); },
            Written},
        {"finishing", [](const PageFixture& f) { f.page->finishEditing(); }, Written},
        {"saving", [](const PageFixture& f) { f.page->save(); }, Written},
        {"folding",
            [](const PageFixture& f) {
                // Without the focus, as a program does.
                f.part<QToolButton>("section.geometry")->click();
            },
            WrittenOrDropped},
        {"filtering it away",
            [](const PageFixture& f) { f.part<QLineEdit>("filter")->setText("name"); },
            WrittenOrDropped},
        {"another selection", [](const PageFixture& f) { f.page->setSelection({1}); },
            WrittenOrDropped},
        {"two selections",
            [](const PageFixture& f) {
                f.page->setSelection({1});
                f.page->setSelection({2});
            },
            WrittenOrDropped},
        {"another selection and back",
            [](const PageFixture& f) {
                f.page->setSelection({1});
                f.page->setSelection({0, 1, 2});
            },
            WrittenOrDropped},
        {"no selection", [](const PageFixture& f) { f.page->setSelection({}); }, WrittenOrDropped},
        {"another model", [](const PageFixture& f) { f.page->setModel(nullptr); },
            WrittenOrDropped},
        {"units", [](const PageFixture& f) { f.model->setUnits(vrn::units::Context(8)); },
            WrittenOrDropped},
        {"the locale", [](const PageFixture& f) { f.page->setLocale(QLocale(QLocale::German)); },
            WrittenOrDropped},
        {"the language",
            [](const PageFixture& f) {
                QEvent event(QEvent::LanguageChange);
                QApplication::sendEvent(f.page, &event);
            },
            WrittenOrDropped},
        {"read-only", [](const PageFixture& f) { f.page->setReadOnly(true); }, WrittenOrDropped},
        {"hiding the page", [](const PageFixture& f) { f.page->hide(); }, WrittenOrDropped},
        {"hiding the window", [](const PageFixture& f) { f.window->hide(); }, WrittenOrDropped},
        {"closing the window", [](const PageFixture& f) { f.window->close(); }, WrittenOrDropped},
        {"loading",
            [](const PageFixture& f) {
                f.page->load(PropertySelection(f.model.get(), {0}).save());
            },
            WrittenOrDropped},
        {"Escape", [](const PageFixture& f) { f.press(Qt::Key_Escape); }, Dropped},
        {"cancelling", [](const PageFixture& f) { f.page->cancelEditing(); }, Dropped},
        {"a value that is set",
            [](const PageFixture& f) { f.page->setValue("length", f.lengthOf(0)); }, Dropped},
        {"destroying the page", [](const PageFixture& f) { delete f.page; }, Dropped},
        {"destroying the model",
            [](const PageFixture& f) { const_cast<PageFixture&>(f).model.reset(); }, Dropped},
        {"another window", [](const PageFixture& f) { f.inAnotherWindow([] {}); }, None},
        {"an open menu",
            [](const PageFixture&) {
                QMenu menu;
                menu.addAction("Copy");
                QTimer::singleShot(50, &menu, &QMenu::close);
                menu.exec();
            },
            None},
        {"a change of the model",
            [](const PageFixture& f) {
                f.model->announce();
                f.page->flush();
            },
            None},
        {"the same selection",
            [](const PageFixture& f) {
                f.page->setSelection({2, 1, 0});
            },
            None},
        {"another edit", [](const PageFixture& f) { f.page->setValue("factor", 2.0); }, None},
    };
    return all;
}

/// A write that the page has not begun.
enum Write
{
    Edit,
    RefusedEdit,
    Undo
};

enum When
{
    InTheWrite,
    AfterTheWrite
};

void write(const PageFixture& f, Write by)
{
    if (by == Undo) {
        f.stack->undo();
        return;
    }
    try {
        PropertySelection(f.model.get(), {1}).edit("factor", 3.0);
        QCOMPARE(by, Edit);
    } catch (const PropertyError&) {
        QCOMPARE(by, RefusedEdit);
    }
}

/// What the page shows and has written once `act` has ended a pending text.
QStringList shownAfterAWrite(Write by, const Act& act, When when)
{
    const PageFixture f;
    f.page->setValue("factor", 2.0);
    f.type("length", "2.5 m");
    f.model->beforeWrite = [&] {
        f.model->beforeWrite = nullptr;
        if (when == InTheWrite) {
            act(f);
            QCoreApplication::processEvents();
        }
        if (by == RefusedEdit)
            throw PropertyError("The project is locked.");
    };
    write(f, by);
    if (when == AfterTheWrite)
        act(f);
    else
        [&] { QVERIFY(f.model->writes.filter("length").isEmpty()); }();
    QCoreApplication::processEvents();

    const auto* editor = f.part<QWidget>("length");
    QStringList shown{f.model->writes.join("; "), QString::number(f.lengthOf(2)),
        f.stack->text(f.stack->count() - 1), QString::number(f.page->isPending()),
        QString::number(editor && editor->isVisible()), QString::number(f.page->model() != nullptr),
        QString::number(f.page->selection().size())};
    for (const char* key : {"name", "length", "factor"})
        shown << f.text(key) << QString::number(f.page->row(key).isReadOnly);
    return shown;
}

} // namespace

class TestPropertyPagePending : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasOneEnd_data();
    void hasOneEnd();
    void waitsForTheWriteOfAnother_data();
    void waitsForTheWriteOfAnother();
    void writesToThoseItWasTypedFor();
    void readsInTheUnitsThatWereShown();
    void namesTheFirstRefused();
    void opensTheSectionOfTheRefused();
    void showsTheModelOnEscape();
    void tellsWhetherAnythingIsPending();
    void showsTheLastSelection();
    void showsTheLastSelectionOfAnUndo();
    void tellsWhyAnUndoFailed();
    void selectsInAnotherModel();
    void selectsAlthoughASlotAsksForIt();
    void closesTheWindowAfterTheWrite();
};

void TestPropertyPagePending::hasOneEnd_data()
{
    columns<int, bool>("act", "isComplete");
    for (std::size_t act = 0; act < acts().size(); ++act) {
        row(qPrintable(QString("%1 with a complete text").arg(acts()[act].name)), int(act), true);
        row(qPrintable(QString("%1 with an incomplete one").arg(acts()[act].name)), int(act),
            false);
    }
}

void TestPropertyPagePending::hasOneEnd()
{
    QFETCH(const int, act);
    QFETCH(const bool, isComplete);
    const Row& row = acts()[std::size_t(act)];
    const PageFixture f;
    const QPointer<PropertyPage> page(f.page);
    const QPointer<BeamModel> model(f.model.get());
    const QString typed = isComplete ? "2.5 m" : "2.5 m +";
    f.type("length", typed);
    QVERIFY(f.page->isPending());
    row.act(f);
    QCoreApplication::processEvents();
    const bool stays = row.end == None || (row.end == Written && !isComplete);
    const bool isWritten = isComplete && (row.end == Written || row.end == WrittenOrDropped);
    if (model) {
        QStringList writes = model->writes;
        writes.removeAll("factor of 0 1 2");
        const int others = row.name == QByteArray("loading") ? 1 : 0;
        QCOMPARE(writes.filter("length of 0 1 2").size(), isWritten ? 1 + others : 0);
    }
    if (!page)
        return;
    QCOMPARE(page->isPending(), stays);
    if (page->model() && !page->selection().empty() && stays)
        QCOMPARE(f.text("length"), typed);
    if (isWritten && row.end == Written)
        QCOMPARE(f.text("length"), QString("2.500 m"));
    page->cancelEditing();
    if (model && page->model() && !page->selection().empty()) {
        PropertyPage fresh;
        fresh.setModel(model);
        fresh.setSelection(page->selection());
        page->flush();
        QCOMPARE(page->row("length").text, fresh.row("length").text);
        QCOMPARE(page->row("length").edit, EditState::Untouched);
    }
}

// A nested event loop in a write that the page has not begun.
void TestPropertyPagePending::waitsForTheWriteOfAnother_data()
{
    columns<int, int>("act", "by");
    const QStringList waiting{"Enter", "leaving", "folding", "filtering it away",
        "another selection", "two selections", "another selection and back", "no selection",
        "another model", "units", "the locale", "read-only", "hiding the page",
        "closing the window"};
    for (std::size_t act = 0; act < acts().size(); ++act) {
        if (!waiting.contains(acts()[act].name))
            continue;
        row(qPrintable(QString("%1 in an edit").arg(acts()[act].name)), int(act), int(Edit));
        row(qPrintable(QString("%1 in a refused edit").arg(acts()[act].name)), int(act),
            int(RefusedEdit));
        row(qPrintable(QString("%1 in an undo").arg(acts()[act].name)), int(act), int(Undo));
    }
}

void TestPropertyPagePending::waitsForTheWriteOfAnother()
{
    QFETCH(const int, act);
    QFETCH(const int, by);
    const Row& row = acts()[std::size_t(act)];
    QCOMPARE(shownAfterAWrite(Write(by), row.act, InTheWrite),
        shownAfterAWrite(Write(by), row.act, AfterTheWrite));
}

void TestPropertyPagePending::writesToThoseItWasTypedFor()
{
    const PageFixture f;
    f.page->setSelection({0});
    f.type("length", "2.5");
    f.page->setSelection({1, 2});
    QCOMPARE(f.model->writes, QStringList("length of 0"));
    QVERIFY(haveSameBits(f.lengthOf(1), 10.0 / 3.0));
    QCOMPARE(f.text("length"), QString("3.333 m"));
}

void TestPropertyPagePending::readsInTheUnitsThatWereShown()
{
    const PageFixture f;
    f.type("length", "2.5");
    f.model->setUnits(vrn::units::Context(8));
    QVERIFY(haveSameBits(f.lengthOf(0), 2.5));
}

void TestPropertyPagePending::namesTheFirstRefused()
{
    const PageFixture f;
    QSignalSpy refused(f.page, &PropertyPage::refused);
    f.type("factor", "1.5");
    f.page->blockSignals(true);
    f.type("bolts", "2");
    f.type("length", "100");
    f.press(Qt::Key_Return);
    f.button->setFocus();
    f.page->blockSignals(false);
    QVERIFY(!f.page->finishEditing());
    QCOMPARE(refused.count(), 1);
    QCOMPARE(refused[0][0].toString(), QString("Length"));
    QVERIFY(!refused[0][1].toString().isEmpty());
    QCOMPARE(f.window->focusWidget(), f.line("length"));
    QVERIFY(haveSameBits(f.model->beams[0].factor, 1.5));
    f.page->cancelEditing();
    QVERIFY(f.page->finishEditing());
}

void TestPropertyPagePending::opensTheSectionOfTheRefused()
{
    const PageFixture f;
    f.type("camber", "-1");
    f.press(Qt::Key_Return);
    QCOMPARE(f.edit("camber"), EditState::Refused);
    f.button->setFocus();
    f.window->resize(500, 200);
    QVERIFY(!f.page->finishEditing());
    QCOMPARE(f.window->focusWidget(), f.line("camber"));
    QVERIFY(!f.line("camber")->visibleRegion().isEmpty());
}

void TestPropertyPagePending::showsTheModelOnEscape()
{
    const PageFixture f;
    f.type("length", "2.5");
    for (auto& beam : f.model->beams)
        beam.second.length = 7.0;
    f.model->announce();
    f.page->flush();
    QCOMPARE(f.text("length"), QString("2.5"));
    f.press(Qt::Key_Escape);
    QCOMPARE(f.text("length"), QString("7.000 m"));
}

void TestPropertyPagePending::tellsWhetherAnythingIsPending()
{
    const PageFixture f;
    QSignalSpy pending(f.page, &PropertyPage::pendingChanged);
    f.type("length", "2.5");
    QCOMPARE(pending.count(), 1);
    QCOMPARE(pending[0][0].toBool(), true);
    f.press(Qt::Key_Return);
    QCOMPARE(pending.count(), 2);
    QCOMPARE(pending[1][0].toBool(), false);
}

// The first one ends the text, and a function of the model asks for the second one then.
void TestPropertyPagePending::showsTheLastSelection()
{
    const PageFixture f;
    f.model->afterWrite = [&] { f.page->setSelection({2}); };
    f.type("length", "2.5 m");
    f.page->setSelection({1});
    QCOMPARE(f.text("name"), QString("B3"));
    QCOMPARE(f.page->selection(), ObjectIds(1, ObjectId(2)));
}

void TestPropertyPagePending::showsTheLastSelectionOfAnUndo()
{
    const PageFixture f;
    f.page->setValue("factor", 2.0);
    f.type("length", "2.5 m");
    f.model->beforeWrite = [&] {
        f.model->beforeWrite = nullptr;
        f.page->setSelection({1});
    };
    bool isDone = false;
    connect(f.stack.get(), &QUndoStack::indexChanged, f.page, [&] {
        if (!std::exchange(isDone, true))
            f.page->setSelection({2});
    });
    f.stack->undo();
    QCOMPARE(f.text("name"), QString("B3"));
    QCOMPARE(f.page->selection(), ObjectIds(1, ObjectId(2)));
    QCOMPARE(f.model->writes.last(), QString("length of 0 1 2"));
    QCoreApplication::processEvents();
    QCOMPARE(f.text("name"), QString("B3"));
}

// The receipt of the text that has waited does not take its place.
void TestPropertyPagePending::tellsWhyAnUndoFailed()
{
    const PageFixture f;
    f.page->setValue("factor", 2.0);
    f.type("length", "2.5 m");
    f.model->beforeWrite = [&] {
        f.model->beforeWrite = nullptr;
        f.leave();
        throw PropertyError("The project is locked.");
    };
    f.stack->undo();
    QCoreApplication::processEvents();
    QCOMPARE(f.lengthOf(0), 2.5);
    QCOMPARE(f.part<QLabel>("receipt")->text(), QString("The project is locked."));
}

void TestPropertyPagePending::selectsInAnotherModel()
{
    const PageFixture f;
    BeamModel other(3);
    other.beams[2].name = "Other";
    connect(f.page, &PropertyPage::edited, this, [&] { f.page->setSelection({2}); });
    f.type("length", "2.5 m");
    f.page->setModel(&other);
    QCOMPARE(f.page->model(), &other);
    QCOMPARE(f.text("name"), QString("Other"));
    f.page->setModel(nullptr);
}

void TestPropertyPagePending::selectsAlthoughASlotAsksForIt()
{
    const PageFixture f;
    connect(
        f.page, &PropertyPage::edited, this, [&] { f.page->setSelection(f.page->selection()); });
    f.type("length", "2.5 m");
    f.page->setSelection({1});
    QCOMPARE(f.text("name"), QString("B2"));
}

// The text would be lost with the window otherwise.
void TestPropertyPagePending::closesTheWindowAfterTheWrite()
{
    PageFixture f;
    const QPointer<QWidget> window(f.window.release());
    window->setAttribute(Qt::WA_DeleteOnClose);
    f.page->setValue("factor", 2.0);
    f.type("length", "2.5 m");
    f.model->beforeWrite = [&] {
        f.model->beforeWrite = nullptr;
        // Only a loop of its own destroys what is closed in it.
        QEventLoop dialog;
        QTimer::singleShot(0, window, &QWidget::close);
        QTimer::singleShot(50, &dialog, &QEventLoop::quit);
        dialog.exec();
        QVERIFY(window);
    };
    f.stack->undo();
    QTRY_VERIFY(!window);
    QCOMPARE(f.lengthOf(0), 2.5);
}

VRN_TEST(TestPropertyPagePending)
#include "tst_property_page_pending.moc"
