#include "support/modal_dialog.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "page_fixture.h"

#include <vrn/qt/property_error.h>
#include <vrn/qt/value_history.h>
#include <vrn/qt/varies_string.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QToolButton>

#include <boost/make_shared.hpp>

#include <functional>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Deed = std::function<void(PageFixture&)>;

/// What code of the application does when it is called.
const std::vector<std::pair<const char*, Deed>>& deeds()
{
    static const std::vector<std::pair<const char*, Deed>> all{
        {"deletes the page", [](PageFixture& f) { delete f.page; }},
        {"deletes the page later", [](PageFixture& f) { f.page->deleteLater(); }},
        {"deletes the window", [](PageFixture& f) { f.window.reset(); }},
        {"deletes the stack", [](PageFixture& f) { f.stack.reset(); }},
        {"deletes all objects",
            [](PageFixture& f) {
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

/// Where it is called.
const std::vector<std::pair<const char*, std::function<void(PageFixture&, std::function<void()>)>>>&
places()
{
    static const std::vector<
        std::pair<const char*, std::function<void(PageFixture&, std::function<void()>)>>>
        all{
            {"edited",
                [](PageFixture& f, std::function<void()> deed) {
                    QObject::connect(f.page, &PropertyPage::edited, deed);
                }},
            {"refused",
                [](PageFixture& f, std::function<void()> deed) {
                    f.model->beforeWrite = [] { throw PropertyError("It is locked."); };
                    QObject::connect(f.page, &PropertyPage::refused, deed);
                }},
            {"pendingChanged",
                [](PageFixture& f, std::function<void()> deed) {
                    QObject::connect(f.page, &PropertyPage::pendingChanged, deed);
                }},
            {"write",
                [](PageFixture& f, std::function<void()> deed) {
                    f.model->afterWrite = std::move(deed);
                }},
            {"write that is refused",
                [](PageFixture& f, std::function<void()> deed) {
                    f.model->beforeWrite = [deed] {
                        deed();
                        throw PropertyError("It is locked.");
                    };
                }},
            {"read",
                [](PageFixture& f, std::function<void()> deed) {
                    f.model->inRead = [deed](const PropertyKeys&) { deed(); };
                }},
        };
    return all;
}

/// How the user edits.
const std::vector<std::pair<const char*, std::function<void(PageFixture&)>>>& edits()
{
    static const std::vector<std::pair<const char*, std::function<void(PageFixture&)>>> all{
        {"Enter in a number",
            [](PageFixture& f) {
                f.type("length", "2.5");
                if (f.page)
                    f.press(Qt::Key_Return);
            }},
        {"a click on another field",
            [](PageFixture& f) {
                f.type("length", "2.5");
                const QPointer<QLineEdit> other = f.line("name");
                if (other)
                    QTest::mouseClick(other, Qt::LeftButton);
            }},
        {"a click on a flag",
            [](PageFixture& f) {
                QTest::mouseClick(f.page->editor("active"), Qt::LeftButton, Qt::NoModifier,
                    QPoint(5, f.page->editor("active")->height() / 2));
            }},
        {"a key in a choice",
            [](PageFixture& f) {
                f.page->editor("support")->setFocus();
                f.press(Qt::Key_Down);
            }},
        {"another selection",
            [](PageFixture& f) {
                f.type("length", "2.5");
                if (f.page)
                    f.page->setSelection({2});
            }},
        {"another filter",
            [](PageFixture& f) {
                f.type("length", "2.5");
                if (f.page)
                    f.part<QLineEdit>("filter")->setText("name");
            }},
        {"closing the window",
            [](PageFixture& f) {
                f.type("length", "2.5");
                if (f.window)
                    f.window->close();
            }},
        {"hiding the page",
            [](PageFixture& f) {
                f.type("length", "2.5");
                if (f.page)
                    f.page->hide();
            }},
        {"finishing",
            [](PageFixture& f) {
                f.type("length", "2.5");
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
    void survives_data();
    void survives();
    void endsOtherTextsAfterTheWrite_data();
    void endsOtherTextsAfterTheWrite();
    void leavesAnotherFieldAfterTheWrite_data();
    void leavesAnotherFieldAfterTheWrite();
    void selectsAfterTheWrite();
    void takesNoOtherEditWhileItWrites();
    void outlivesModelAndStack();
};

void TestPropertyPageLifetime::survives_data()
{
    columns<int, int>("deed", "place");
    for (std::size_t deed = 0; deed < deeds().size(); ++deed) {
        for (std::size_t place = 0; place < places().size(); ++place) {
            row(qPrintable(QString("%1 in %2").arg(deeds()[deed].first, places()[place].first)),
                int(deed), int(place));
        }
    }
}

void TestPropertyPageLifetime::survives()
{
    QFETCH(const int, deed);
    QFETCH(const int, place);
    for (const auto& edit : edits()) {
        PageFixture f;
        const QPointer<PropertyPage> page(f.page);
        // The user does no more when there is nothing left.
        const auto isLeft = [&] { return page && page->isVisible(); };
        bool isDone = false;
        const auto act = [&] {
            if (!std::exchange(isDone, true) && page)
                deeds()[std::size_t(deed)].second(f);
        };
        places()[std::size_t(place)].second(f, act);
        const QByteArray name = places()[std::size_t(place)].first;
        // These come while the user is typing, or before.
        const bool isOnce = name == "pendingChanged" || name == "read";
        if (name == "read") {
            f.model->announce();
            f.page->flush();
        }
        if (name == "pendingChanged")
            f.type("length", "2");
        if (!isOnce)
            edit.second(f);
        else if (isLeft())
            f.press(Qt::Key_Return);
        QVERIFY2(isDone, edit.first);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        f.model->afterWrite = nullptr;
        f.model->beforeWrite = nullptr;
        f.model->inRead = nullptr;
        if (!page && isOnce)
            return;
        if (!page)
            continue;
        page->cancelEditing();
        page->flush();
        PropertyPage fresh;
        fresh.setModel(page->model());
        fresh.setSelection(page->selection());
        fresh.setReadOnly(page->isReadOnly());
        for (const char* key : {"length", "active", "support"}) {
            const PropertyRow shown = page->row(key);
            const PropertyRow expected = fresh.row(key);
            QVERIFY2(shown.text == expected.text && shown.edit == expected.edit
                    && shown.isReadOnly == expected.isReadOnly,
                edit.first);
        }
        if (isOnce)
            return;
    }
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
