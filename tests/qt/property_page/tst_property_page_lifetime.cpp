#include "support/modal_dialog.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "page_fixture.h"

#include <vrn/qt/property_error.h>
#include <vrn/qt/varies_string.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QToolButton>

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
