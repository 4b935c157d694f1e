#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "page_fixture.h"

#include <vrn/qt/property_error.h>

#include <QAction>
#include <QDialog>
#include <QDialogButtonBox>
#include <QMenu>
#include <QToolButton>
#include <QWheelEvent>

#include <functional>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Act = std::function<void(const PageFixture&, QWidget* editor)>;

QWidget* focusOf(QWidget* editor)
{
    return editor->focusProxy() ? editor->focusProxy() : editor;
}

/// Into a field; on a box and a list it would be an edit.
void click(QWidget* editor)
{
    if (auto* line = qobject_cast<QLineEdit*>(focusOf(editor)))
        QTest::mouseClick(line, Qt::LeftButton);
}

const std::vector<std::pair<const char*, Act>>& acts()
{
    static const std::vector<std::pair<const char*, Act>> all{
        {"Tab", [](const PageFixture& f, QWidget*) { f.press(Qt::Key_Tab); }},
        {"Shift and Tab",
            [](const PageFixture& f, QWidget*) { f.press(Qt::Key_Backtab, Qt::ShiftModifier); }},
        {"Enter", [](const PageFixture& f, QWidget*) { f.press(Qt::Key_Return); }},
        {"Enter and Tab",
            [](const PageFixture& f, QWidget*) {
                f.press(Qt::Key_Return);
                f.press(Qt::Key_Tab);
            }},
        {"Escape", [](const PageFixture& f, QWidget*) { f.press(Qt::Key_Escape); }},
        {"F2", [](const PageFixture& f, QWidget*) { f.press(Qt::Key_F2); }},
        {"Ctrl and Z",
            [](const PageFixture& f, QWidget*) { f.press(Qt::Key_Z, Qt::ControlModifier); }},
        {"a click", [](const PageFixture&, QWidget* editor) { click(editor); }},
        {"a click and focus elsewhere",
            [](const PageFixture& f, QWidget* editor) {
                click(editor);
                f.button->setFocus();
            }},
        {"a double click",
            [](const PageFixture&, QWidget* editor) {
                if (qobject_cast<QLineEdit*>(focusOf(editor)))
                    QTest::mouseDClick(focusOf(editor), Qt::LeftButton);
            }},
        {"another window", [](const PageFixture& f, QWidget*) { f.inAnotherWindow([] {}); }},
        {"focus elsewhere while another window is active",
            [](const PageFixture& f, QWidget*) {
                f.inAnotherWindow([&] { f.button->setFocus(); });
            }},
        {"a menu",
            [](const PageFixture& f, QWidget*) {
                QMenu menu(f.window.get());
                menu.addAction("Copy");
                menu.popup(f.window->mapToGlobal(QPoint(5, 5)));
                QCoreApplication::processEvents();
                menu.close();
            }},
        {"focus elsewhere", [](const PageFixture& f, QWidget*) { f.button->setFocus(); }},
        {"folding",
            [](const PageFixture& f, QWidget*) {
                for (const char* section : {"general", "geometry", "statics"})
                    f.part<QToolButton>((std::string("section.") + section).c_str())->click();
            }},
        {"filtering",
            [](const PageFixture& f, QWidget*) {
                f.part<QLineEdit>("filter")->setText("none");
                f.part<QLineEdit>("filter")->clear();
            }},
        {"hiding the page", [](const PageFixture& f, QWidget*) { f.page->hide(); }},
        {"hiding the window", [](const PageFixture& f, QWidget*) { f.window->hide(); }},
        {"disabling", [](const PageFixture& f, QWidget*) { f.page->setEnabled(false); }},
        {"read-only",
            [](const PageFixture& f, QWidget*) {
                f.page->setReadOnly(true);
                f.page->setReadOnly(false);
            }},
        {"closing", [](const PageFixture& f, QWidget*) { f.window->close(); }},
        {"units",
            [](const PageFixture& f, QWidget*) { f.model->setUnits(vrn::units::Context(8)); }},
        {"language",
            [](const PageFixture& f, QWidget*) {
                QEvent event(QEvent::LanguageChange);
                QApplication::sendEvent(f.page, &event);
            }},
        {"locale",
            [](const PageFixture& f, QWidget*) { f.page->setLocale(QLocale(QLocale::German)); }},
        {"palette",
            [](const PageFixture& f, QWidget*) { f.page->setPalette(QPalette(Qt::darkGray)); }},
        {"font",
            [](const PageFixture& f, QWidget*) {
                QFont large = f.page->font();
                large.setPointSize(24);
                f.page->setFont(large);
            }},
        {"direction",
            [](const PageFixture& f, QWidget*) { f.page->setLayoutDirection(Qt::RightToLeft); }},
        {"another selection", [](const PageFixture& f, QWidget*) { f.page->setSelection({1}); }},
        {"no selection", [](const PageFixture& f, QWidget*) { f.page->setSelection({}); }},
        {"no model", [](const PageFixture& f, QWidget*) { f.page->setModel(nullptr); }},
        {"finishing", [](const PageFixture& f, QWidget*) { QVERIFY(f.page->finishEditing()); }},
        {"reading again",
            [](const PageFixture& f, QWidget*) {
                f.model->announce();
                f.page->flush();
            }},
        {"saving",
            [](const PageFixture& f, QWidget*) {
                try {
                    f.page->save();
                } catch (const PropertyError&) {
                    // What cannot be read cannot be saved.
                }
            }},
        {"typing what stands there",
            [](const PageFixture&, QWidget* editor) {
                auto* line = qobject_cast<QLineEdit*>(focusOf(editor));
                if (!line || line->isReadOnly() || line->text() == "*VARIES*")
                    return;
                const QString text = line->text();
                line->selectAll();
                QTest::keyClicks(line, "1");
                line->selectAll();
                if (text.isEmpty())
                    QTest::keyClick(line, Qt::Key_Delete);
                else
                    QTest::keyClicks(line, text);
                QTest::keyClick(line, Qt::Key_Return);
            }},
        {"the wheel without focus",
            [](const PageFixture& f, QWidget* editor) {
                f.button->setFocus();
                const QPointF centre = editor->rect().center();
                QWheelEvent event(centre, editor->mapToGlobal(centre.toPoint()), QPoint(),
                    QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
                QApplication::sendEvent(editor, &event);
            }},
        {"destroying the page", [](const PageFixture& f, QWidget*) { delete f.page; }},
    };
    return all;
}

enum Fields
{
    Alike,
    Varying,
    DifferentBelowTheDigits,
    Unreadable,
    WithoutObjects
};
const char* const fieldNames[]{
    "are alike", "vary", "differ below the shown digits", "cannot be read", "have no objects"};

void prepare(const PageFixture& f, Fields fields)
{
    int serial = 1;
    for (auto& each : f.model->beams) {
        Beam& beam = each.second;
        if (fields == Varying)
            ++serial;
        double number = 10.0 / 3.0 * serial;
        if (fields == DifferentBelowTheDigits)
            number += 1e-9 * double(each.first);
        beam.length = beam.factor = number;
        beam.width = 1000.0 * number / 8.0;
        beam.bolts = 2 * serial; // even ones would be refused
        beam.support = fields == Varying && serial % 2 == 0 ? Support::Free : Support::Pinned;
        beam.isActive = serial % 2 == 0;
        if (serial % 2 == 1)
            beam.load = number;
    }
    if (fields == Unreadable)
        f.model->inRead = [](const PropertyKeys&) { throw PropertyError("Out of order."); };
    if (fields == WithoutObjects)
        f.model->beams.clear();
    f.model->announce();
    f.page->flush();
}

} // namespace

/// Untouched is unwritten: no field, whatever it shows and whatever is done to it.
class TestPropertyPageUntouched : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesNothing_data();
    void writesNothing();
    void leavesKeysToTheDialog_data();
    void leavesKeysToTheDialog();
    void leavesTheUndoKeyToTheApplication();
};

void TestPropertyPageUntouched::writesNothing_data()
{
    columns<int, int>("act", "fields");
    for (std::size_t act = 0; act < acts().size(); ++act) {
        for (const Fields fields :
            {Alike, Varying, DifferentBelowTheDigits, Unreadable, WithoutObjects}) {
            row(qPrintable(
                    QString("%1 in fields that %2").arg(acts()[act].first, fieldNames[fields])),
                int(act), int(fields));
        }
    }
}

void TestPropertyPageUntouched::writesNothing()
{
    QFETCH(const int, act);
    QFETCH(const int, fields);
    // One of each shape, and one that is optional.
    for (const char* key : {"name", "length", "factor", "bolts", "active", "support", "load"}) {
        const PageFixture f;
        prepare(f, Fields(fields));
        int edits = 0;
        connect(f.page, &PropertyPage::edited, this, [&] { ++edits; });
        QWidget* editor = f.page->editor(key);
        QVERIFY(editor);
        focusOf(editor)->setFocus(Qt::TabFocusReason);
        acts()[std::size_t(act)].second(f, editor);
        QCoreApplication::processEvents();
        QVERIFY2(f.model->writes.isEmpty(), key);
        QVERIFY2(f.stack->count() == 0, key);
        QCOMPARE(edits, 0);
    }
}

void TestPropertyPageUntouched::leavesKeysToTheDialog_data()
{
    columns<QByteArray, int, bool>("key", "pressed", "isAccepted");
    for (const char* key : {"name", "length", "bolts", "active", "support"}) {
        row(qPrintable(QString("Enter in %1").arg(key)), QByteArray(key), int(Qt::Key_Return),
            true);
        row(qPrintable(QString("Escape in %1").arg(key)), QByteArray(key), int(Qt::Key_Escape),
            false);
    }
}

void TestPropertyPageUntouched::leavesKeysToTheDialog()
{
    QFETCH(const QByteArray, key);
    QFETCH(const int, pressed);
    QFETCH(const bool, isAccepted);
    BeamModel model(2);
    QDialog dialog;
    auto* column = new QVBoxLayout(&dialog);
    auto* page = new PropertyPage(&dialog);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, &dialog);
    column->addWidget(page);
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    page->setModel(&model);
    page->setSelection(model.ids());
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QWidget* focus = focusOf(page->editor(key.toStdString()));
    focus->setFocus(Qt::TabFocusReason);
    QTest::keyClick(focus, Qt::Key(pressed));
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(isAccepted ? QDialog::Accepted : QDialog::Rejected));
    QCOMPARE(model.writes, QStringList());
}

void TestPropertyPageUntouched::leavesTheUndoKeyToTheApplication()
{
    const PageFixture f;
    QAction undo(f.window.get());
    undo.setShortcut(QKeySequence::Undo);
    f.window->addAction(&undo);
    int undone = 0;
    connect(&undo, &QAction::triggered, this, [&] { ++undone; });
    for (const char* key : {"name", "length", "bolts", "active", "support"}) {
        QWidget* focus = focusOf(f.page->editor(key));
        focus->setFocus(Qt::TabFocusReason);
        QTest::keyClick(f.window->windowHandle(), Qt::Key_Z, Qt::ControlModifier);
    }
    QCOMPARE(undone, 5);
}

VRN_TEST(TestPropertyPageUntouched)
#include "tst_property_page_untouched.moc"
