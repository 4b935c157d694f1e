#include "support/catching_application.h"
#include "support/modal_dialog.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "page_fixture.h"

#include <vrn/qt/editor_meta_data.h>
#include <vrn/qt/property_error.h>
#include <vrn/qt/value_history.h>
#include <vrn/qt/varies_string.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QToolButton>

#include <boost/make_shared.hpp>

#include <deque>
#include <functional>
#include <optional>
#include <stdexcept>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Act = std::function<void()>;
using Deed = std::function<void(PageFixture&)>;

/// Functions of the application that descriptions, editors and the history call.
struct Hooks
{
    Act inCheck;
    Act inGetValue;
    Act inSetValue;
    Act inHistory;
    bool isTyping = false;
};
Hooks hooks;

void call(const Act& hook)
{
    const auto copy = hook;
    if (copy)
        copy();
}

template <typename V>
QString check(const V& /*value*/)
{
    call(hooks.inCheck);
    return QString();
}

PropertySet<Beam> hookedBeams()
{
    PropertySet<Beam> beams("beam", &countedBeams);
    beams.section("general", "General")
        .add("name", "&Name", &Beam::name, field::text())
        .add("active", "&Active", &Beam::isActive, field::flag().accept(&check<bool>));
    beams.section("geometry", "Geometry")
        .add("length", "&Length", &Beam::length,
            field::quantity(vrn::units::UnitId::GEO_LENGTH)
                .between(0.1, 40.0)
                .history()
                .editor("hooked")
                .accept(&check<double>))
        .add("bolts", "&Bolts", &Beam::bolts, field::integer());
    beams.section("statics", "Statics", false)
        .add("support", "&Support", &Beam::support,
            field::choice<Support>({{"fixed", Support::Fixed}, {"pinned", Support::Pinned}})
                .accept(&check<Support>));
    return beams;
}

struct HookedHistory final : vrn::IValueHistoryStorage
{
    std::size_t get(const vrn::ValueHistory& /*history*/, std::deque<std::wstring>&) override
    {
        return 0;
    }
    void add(const vrn::ValueHistory& /*history*/, const std::wstring&) override
    {
        call(hooks.inHistory);
    }
};

/// An editor of the application's for a length in metres.
EditorMetaData hookedEditor(QWidget* parent, const Hints& /*hints*/)
{
    auto* edit = new QLineEdit(parent);
    const QPointer<QLineEdit> guarded(edit);
    EditorMetaData editor;
    editor.widget = edit;
    editor.setValue = [guarded](const boost::any& value) {
        call(hooks.inSetValue);
        if (guarded)
            guarded->setText(
                value.empty() ? QString() : QString::number(boost::any_cast<double>(value)));
    };
    editor.getValue = [guarded](boost::any& value) {
        call(hooks.inGetValue);
        if (!guarded || guarded->text().isEmpty())
            return false;
        value = guarded->text().toDouble();
        return true;
    };
    return editor;
}

/// What code of the application does when it is called.
const std::vector<std::pair<const char*, Deed>>& deeds()
{
    static const std::vector<std::pair<const char*, Deed>> all{
        {"deletes the page", [](PageFixture& f) { delete f.page; }},
        {"deletes the page later", [](PageFixture& f) { f.page->deleteLater(); }},
        {"deletes the window", [](PageFixture& f) { f.window.reset(); }},
        {"deletes the model", [](PageFixture& f) { f.model.reset(); }},
        {"deletes the stack", [](PageFixture& f) { f.stack.reset(); }},
        {"deletes all objects",
            [](PageFixture& f) {
                if (!f.model)
                    return;
                f.model->beams.clear();
                f.model->announce();
            }},
        {"selects nothing", [](PageFixture& f) { f.page->setSelection({}); }},
        {"selects another", [](PageFixture& f) { f.page->setSelection({1}); }},
        {"takes the model away", [](PageFixture& f) { f.page->setModel(nullptr); }},
        {"makes it read-only", [](PageFixture& f) { f.page->setReadOnly(true); }},
        {"finishes the editing", [](PageFixture& f) { f.page->finishEditing(); }},
        {"cancels the editing", [](PageFixture& f) { f.page->cancelEditing(); }},
        {"reads again", [](PageFixture& f) { f.page->flush(); }},
        {"changes the units", [](PageFixture& f) { f.model->setUnits(vrn::units::Context(8)); }},
        {"folds the section",
            [](PageFixture& f) { f.part<QToolButton>("section.geometry")->click(); }},
        {"hides the page", [](PageFixture& f) { f.page->hide(); }},
        {"closes the window", [](PageFixture& f) { f.window->close(); }},
        {"moves the focus", [](PageFixture& f) { f.button->setFocus(); }},
        {"moves the focus to another field", [](PageFixture& f) { f.line("name")->setFocus(); }},
        {"throws", [](PageFixture&) { throw std::runtime_error("Out of order."); }},
        {"opens a dialog",
            [](PageFixture&) {
                WhenOpen<QDialog> close([](QDialog& dialog) { dialog.reject(); });
                QDialog dialog;
                dialog.exec();
            }},
        {"deletes the page in a dialog",
            [](PageFixture& f) {
                WhenOpen<QDialog> close([&f](QDialog& dialog) {
                    delete f.page;
                    dialog.reject();
                });
                QDialog dialog;
                dialog.exec();
            }},
    };
    return all;
}

/// What ends a pending text, and drops one that is not complete.
const std::vector<std::pair<const char*, Deed>>& endings()
{
    static const std::vector<std::pair<const char*, Deed>> all{
        {"read-only", [](PageFixture& f) { f.page->setReadOnly(true); }},
        {"other units", [](PageFixture& f) { f.model->setUnits(vrn::units::Context(8)); }},
        {"another locale", [](PageFixture& f) { f.page->setLocale(QLocale(QLocale::German)); }},
        {"another history",
            [](PageFixture& f) {
                f.page->setHistory(boost::make_shared<vrn::ValueHistoryMemoryStorage>());
            }},
        {"folding", [](PageFixture& f) { f.part<QToolButton>("section.geometry")->click(); }},
        {"filtering", [](PageFixture& f) { f.part<QLineEdit>("filter")->setText("name"); }},
        {"restoring folded sections",
            [](PageFixture& f) {
                PropertyPage other;
                other.setModel(f.model.get());
                other.setSelection(f.model->ids());
                other.findChild<QToolButton*>("section.geometry")->click();
                f.page->restoreState(other.saveState());
            }},
        {"hiding the page", [](PageFixture& f) { f.page->hide(); }},
        {"closing the window", [](PageFixture& f) { f.window->close(); }},
        {"another selection",
            [](PageFixture& f) {
                f.page->setSelection({2});
                f.page->setSelection({1});
            }},
    };
    return all;
}

struct Place
{
    const char* name;
    std::function<void(PageFixture&, const Act&)> setUp;
    bool isOfNumbers = false; ///< It is called for an edit of a number only.
    bool isOfModel = false; ///< In a function that goes on with the model.
    bool hasOwnEditor = false; ///< The number has an editor of the application's.
};

/// Where it is called.
const std::vector<Place>& places()
{
    static const std::vector<Place> all{
        {"edited",
            [](PageFixture& f, const Act& deed) {
                QObject::connect(f.page, &PropertyPage::edited, deed);
            }},
        {"refused",
            [](PageFixture& f, const Act& deed) {
                f.model->beforeWrite = [] { throw PropertyError("It is locked."); };
                QObject::connect(f.page, &PropertyPage::refused, deed);
            }},
        {"pendingChanged",
            [](PageFixture& f, const Act& deed) {
                QObject::connect(f.page, &PropertyPage::pendingChanged, deed);
            },
            true},
        {"write", [](PageFixture& f, const Act& deed) { f.model->afterWrite = deed; }},
        {"write that is refused",
            [](PageFixture& f, const Act& deed) {
                f.model->beforeWrite = [deed] {
                    deed();
                    throw PropertyError("It is locked.");
                };
            }},
        {"read",
            [](PageFixture& f, const Act& deed) {
                f.model->inRead = [deed](const PropertyKeys&) { deed(); };
            },
            false, true},
        {"a check while the user types",
            [](PageFixture&, const Act& deed) {
                hooks.inCheck = [deed] {
                    if (hooks.isTyping)
                        deed();
                };
            },
            true, true},
        {"a check of what is written",
            [](PageFixture&, const Act& deed) {
                hooks.inCheck = [deed] {
                    if (!hooks.isTyping)
                        deed();
                };
            },
            false, true},
        {"the history", [](PageFixture&, const Act& deed) { hooks.inHistory = deed; }, true},
        {"getValue of an editor", [](PageFixture&, const Act& deed) { hooks.inGetValue = deed; },
            true, false, true},
        {"setValue of an editor", [](PageFixture&, const Act& deed) { hooks.inSetValue = deed; },
            true, false, true},
    };
    return all;
}

void typeLength(const PageFixture& f)
{
    hooks.isTyping = true;
    if (f.line("length"))
        f.type("length", "2.5");
    hooks.isTyping = false;
}

struct Edit
{
    const char* name;
    std::function<void(PageFixture&)> act;
    bool isOfNumber = true;
};

/// How the user edits.
const std::vector<Edit>& edits()
{
    static const std::vector<Edit> all{
        {"Enter in a number",
            [](PageFixture& f) {
                typeLength(f);
                if (f.page && f.page->isVisible())
                    f.press(Qt::Key_Return);
            }},
        {"a click on another field",
            [](PageFixture& f) {
                typeLength(f);
                if (QLineEdit* other = f.page ? f.line("name") : nullptr)
                    QTest::mouseClick(other, Qt::LeftButton);
            }},
        {"a click on a flag",
            [](PageFixture& f) {
                QTest::mouseClick(f.page->editor("active"), Qt::LeftButton, Qt::NoModifier,
                    QPoint(5, f.page->editor("active")->height() / 2));
            },
            false},
        {"a key in a choice",
            [](PageFixture& f) {
                f.page->editor("support")->setFocus();
                if (f.page && f.page->isVisible())
                    f.press(Qt::Key_Down);
            },
            false},
        {"another selection",
            [](PageFixture& f) {
                typeLength(f);
                if (f.page)
                    f.page->setSelection({2});
            }},
        {"another filter",
            [](PageFixture& f) {
                typeLength(f);
                if (f.page)
                    f.part<QLineEdit>("filter")->setText("name");
            }},
        {"closing the window",
            [](PageFixture& f) {
                typeLength(f);
                if (f.window)
                    f.window->close();
            }},
        {"hiding the page",
            [](PageFixture& f) {
                typeLength(f);
                if (f.page)
                    f.page->hide();
            }},
        {"finishing",
            [](PageFixture& f) {
                typeLength(f);
                if (f.page)
                    f.page->finishEditing();
            }},
    };
    return all;
}

} // namespace

/// Whatever code of the application does in whatever function that the page calls: nothing is
/// used after it has gone, and what is left shows the model.
class TestPropertyPageLifetime : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void survives_data();
    void survives();
    void survivesTheFocusOfTheRefused_data();
    void survivesTheFocusOfTheRefused();
    void endsOtherTextsAfterTheWrite_data();
    void endsOtherTextsAfterTheWrite();
    void leavesAnotherFieldAfterTheWrite_data();
    void leavesAnotherFieldAfterTheWrite();
    void selectsAfterTheWrite();
    void tellsAnEditOnceIfTheHistorySelects();
    void remembersAnEditAlthoughASlotThrows();
    void takesNoOtherEditWhileItWrites();
    void outlivesModelAndStack();

private:
    static void showsTheModel(PageFixture& f, const char* edit);
};

void TestPropertyPageLifetime::cleanup()
{
    hooks = Hooks();
    unregisterEditor("hooked");
}

void TestPropertyPageLifetime::survives_data()
{
    columns<int, int>("deed", "place");
    for (std::size_t deed = 0; deed < deeds().size(); ++deed) {
        for (std::size_t place = 0; place < places().size(); ++place) {
            const QByteArray name = deeds()[deed].first;
            // A model may go in signals and in write().
            if (name == "deletes the model" && places()[place].isOfModel)
                continue;
            // It has done nothing if it throws; see "write that is refused".
            if (name == "throws" && places()[place].name == QByteArray("write"))
                continue;
            row(qPrintable(QString("%1 in %2").arg(deeds()[deed].first, places()[place].name)),
                int(deed), int(place));
        }
    }
}

void TestPropertyPageLifetime::survives()
{
    QFETCH(const int, deed);
    QFETCH(const int, place);
    const Place& at = places()[std::size_t(place)];
    std::optional<ThroughQt> throughQt;
    if (deeds()[std::size_t(deed)].first == QByteArray("throws"))
        throughQt.emplace();
    if (at.hasOwnEditor)
        registerEditor("hooked", &hookedEditor);
    for (const Edit& edit : edits()) {
        if (at.isOfNumbers && !edit.isOfNumber)
            continue;
        hooks = Hooks();
        PageFixture f(3, hookedBeams());
        f.page->setHistory(boost::make_shared<HookedHistory>());
        bool isDone = false;
        at.setUp(f, [&] {
            if (!std::exchange(isDone, true) && f.page)
                deeds()[std::size_t(deed)].second(f);
        });
        try {
            // It comes before what the user does.
            if (f.model->inRead) {
                f.model->announce();
                f.page->flush();
            }
            if (f.page && f.page->isVisible() && f.page->editor("support"))
                edit.act(f);
        } catch (const std::runtime_error& error) {
            QCOMPARE(error.what(), "Out of order.");
        }
        QVERIFY2(isDone, edit.name);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        hooks = Hooks();
        if (!f.page || !f.model)
            continue;
        f.model->afterWrite = nullptr;
        f.model->beforeWrite = nullptr;
        f.model->inRead = nullptr;
        showsTheModel(f, edit.name);
    }
}

/// It is not stuck, and what was written can be undone.
void TestPropertyPageLifetime::showsTheModel(PageFixture& f, const char* edit)
{
    f.page->cancelEditing();
    QVERIFY2(!f.page->isPending() && f.page->finishEditing(), edit);
    f.leave();
    f.page->flush();
    if (!f.page->selection().empty() && f.page->model() && !f.model->beams.empty()) {
        f.page->setValue("bolts", 9);
        QCOMPARE(f.model->beams[f.page->selection().front().key].bolts, 9);
    }
    PropertyPage fresh;
    fresh.setModel(f.page->model());
    fresh.setSelection(f.page->selection());
    fresh.setReadOnly(f.page->isReadOnly());
    for (const char* key : {"length", "active", "bolts", "support"}) {
        const PropertyRow shown = f.page->row(key);
        const PropertyRow expected = fresh.row(key);
        QVERIFY2(shown.text == expected.text && shown.edit == expected.edit
                && shown.isReadOnly == expected.isReadOnly,
            qPrintable(QString("%1 of %2").arg(key, edit)));
    }
    while (f.stack && f.stack->canUndo())
        f.stack->undo();
    for (const auto& beam : f.model->beams) {
        QVERIFY2(!f.stack || haveSameBits(beam.second.length, 10.0 / 3.0), edit);
        QVERIFY2(!f.stack || (beam.second.isActive && beam.second.support == Support::Fixed), edit);
    }
}

void TestPropertyPageLifetime::survivesTheFocusOfTheRefused_data()
{
    columns<int>("deed");
    for (std::size_t deed = 0; deed < deeds().size(); ++deed)
        row(deeds()[deed].first, int(deed));
}

void TestPropertyPageLifetime::survivesTheFocusOfTheRefused()
{
    QFETCH(const int, deed);
    std::optional<ThroughQt> throughQt;
    if (deeds()[std::size_t(deed)].first == QByteArray("throws"))
        throughQt.emplace();
    bool isDone = false; // The focus also changes when the window is destroyed.
    PageFixture f(3, hookedBeams());
    f.type("length", "50 m");
    f.leave();
    connect(qApp, &QApplication::focusChanged, f.window.get(), [&] {
        if (!std::exchange(isDone, true))
            deeds()[std::size_t(deed)].second(f);
    });
    try {
        QVERIFY(!f.page->finishEditing());
    } catch (const std::runtime_error& error) {
        QCOMPARE(error.what(), "Out of order.");
    }
    QVERIFY(isDone);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    if (f.page && f.model)
        showsTheModel(f, "the focus");
}

void TestPropertyPageLifetime::endsOtherTextsAfterTheWrite_data()
{
    columns<int, QString, bool>("deed", "typed", "isRefused");
    for (std::size_t deed = 0; deed < endings().size(); ++deed) {
        const char* name = endings()[deed].first;
        row(qPrintable(QString("%1 beside a complete text").arg(name)), int(deed), "2.5 m", false);
        row(qPrintable(QString("%1 beside an incomplete text").arg(name)), int(deed), "2.5 m +",
            false);
        row(qPrintable(QString("%1 in a write that is refused").arg(name)), int(deed), "2.5 m",
            true);
    }
}

// The texts were typed for the objects, in the units and in the language of before.
void TestPropertyPageLifetime::endsOtherTextsAfterTheWrite()
{
    QFETCH(const int, deed);
    QFETCH(const QString, typed);
    QFETCH(const bool, isRefused);
    PageFixture f;
    f.type("length", typed);
    bool isDone = false;
    f.model->beforeWrite = [&] {
        if (std::exchange(isDone, true))
            return;
        endings()[std::size_t(deed)].second(f);
        QCOMPARE(f.model->writes.size(), 1);
        QCOMPARE(f.text("length"), typed);
        if (isRefused)
            throw PropertyError("It is locked.");
    };
    try {
        f.page->setValue("bolts", 7);
        QVERIFY(!isRefused);
    } catch (const PropertyError&) {
        QVERIFY(isRefused);
    }
    const bool isComplete = typed == "2.5 m";
    QStringList writes{"bolts of 0 1 2"};
    if (isComplete)
        writes << "length of 0 1 2";
    QCOMPARE(f.model->writes, writes);
    QVERIFY(haveSameBits(f.lengthOf(0), isComplete ? 2.5 : 10.0 / 3.0));
    QVERIFY(!f.page->isPending());
    f.leave();
    PropertyPage fresh;
    fresh.setModel(f.model.get());
    fresh.setSelection(f.page->selection());
    fresh.setReadOnly(f.page->isReadOnly());
    for (const char* key : {"length", "bolts"}) {
        QCOMPARE(f.text(key), fresh.row(key).text);
        QCOMPARE(f.page->row(key).isReadOnly, fresh.row(key).isReadOnly);
        QCOMPARE(f.edit(key), EditState::Untouched);
    }
    QVERIFY(f.page->finishEditing());
}

void TestPropertyPageLifetime::leavesAnotherFieldAfterTheWrite_data()
{
    columns<QString, QStringList, int>("typed", "reasons", "edit");
    row("a complete text", "2.5 m", QStringList(), int(EditState::Untouched));
    row("an incomplete text", "50 m", QStringList("It must be between 0.100 m and 40.000 m."),
        int(EditState::Refused));
}

void TestPropertyPageLifetime::leavesAnotherFieldAfterTheWrite()
{
    QFETCH(const QString, typed);
    QFETCH(const QStringList, reasons);
    QFETCH(const int, edit);
    const PageFixture f;
    QStringList told;
    connect(f.page, &PropertyPage::refused, this,
        [&](const QString&, const QString& reason) { told << reason; });
    f.type("length", typed);
    f.model->beforeWrite = [&] { f.button->setFocus(); };
    f.page->setValue("bolts", 7);
    QCOMPARE(told, reasons);
    QCOMPARE(int(f.edit("length")), edit);
    QVERIFY(haveSameBits(f.lengthOf(0), reasons.isEmpty() ? 2.5 : 10.0 / 3.0));
}

void TestPropertyPageLifetime::selectsAfterTheWrite()
{
    const PageFixture f;
    f.model->afterWrite = [&] {
        f.page->setSelection({2});
        QCOMPARE(f.page->selection(), ObjectIds(1, ObjectId(2)));
        QCOMPARE(f.text("name"), getVariesString());
    };
    f.page->setValue("length", 2.5);
    QCOMPARE(f.model->writes, QStringList("length of 0 1 2"));
    QCOMPARE(f.text("name"), QString("B3"));
}

void TestPropertyPageLifetime::tellsAnEditOnceIfTheHistorySelects()
{
    const PageFixture f(3, hookedBeams());
    f.page->setHistory(boost::make_shared<HookedHistory>());
    int selections = 0;
    hooks.inHistory = [&] {
        if (++selections == 1)
            f.page->setSelection({1});
    };
    const QSignalSpy edited(f.page, &PropertyPage::edited);
    f.type("length", "2.5 m");
    f.press(Qt::Key_Return);
    QCOMPARE(edited.count(), 1);
    QCOMPARE(selections, 1);
    QCOMPARE(f.lengthOf(0), 2.5);
    QCOMPARE(f.text("name"), QString("B2"));
}

void TestPropertyPageLifetime::remembersAnEditAlthoughASlotThrows()
{
    const PageFixture f(3, hookedBeams());
    f.page->setHistory(boost::make_shared<HookedHistory>());
    int remembered = 0;
    hooks.inHistory = [&] { ++remembered; };
    f.type("length", "2.5 m");
    const auto throwing = connect(f.stack.get(), &QUndoStack::indexChanged, this,
        [] { throw std::runtime_error("The list of steps is broken."); });
    QVERIFY_EXCEPTION_THROWN(f.page->finishEditing(), std::runtime_error);
    disconnect(throwing);
    QCOMPARE(remembered, 1);
}

void TestPropertyPageLifetime::takesNoOtherEditWhileItWrites()
{
    const PageFixture f;
    QString reason;
    f.model->afterWrite = [&] {
        try {
            f.page->setValue("bolts", 7);
        } catch (const PropertyError& error) {
            reason = error.reason();
        }
    };
    f.type("length", "2.5");
    f.press(Qt::Key_Return);
    QCOMPARE(reason, QString("Another edit is being written."));
    QCOMPARE(f.model->writes, QStringList("length of 0 1 2"));
    QCOMPARE(f.model->beams[0].bolts, 1);
}

void TestPropertyPageLifetime::outlivesModelAndStack()
{
    PageFixture f;
    f.type("length", "2.5");
    f.model.reset();
    f.stack.reset();
    QVERIFY(!f.page->model());
    QVERIFY(!f.page->isPending());
    QVERIFY(!f.page->editor("length"));
    QVERIFY(f.page->finishEditing());
    QVERIFY(f.part<QLabel>("hint")->isVisible());
}

VRN_TEST(TestPropertyPageLifetime)
#include "tst_property_page_lifetime.moc"
