#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/varies_string.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QGridLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

#include "gallery_page_test.h"
#include "pages/hints_page.h"
#include "support/modal_dialog.h"
#include "support/table.h"

#include <map>

using namespace vrn::test;
using vrn::qt::getVariesString;
using vrn::qt::MultiEditLineEdit;

namespace {

/// What a user does in the editor of a property, and the value that the page then has.
struct Entry
{
    const char* property;
    QStringList keys; ///< By their X names; after them comes the text.
    const char* text;
    const char* value;
};

const std::vector<Entry>& entries()
{
    static const QStringList all = {"ctrl+a"};
    static const std::vector<Entry> inReadingOrder = {
        {"Name", all, "C 3", "\"C 3\""},
        {"Span", all, "25 ft", "{1001, 7.62}"},
        {"Stress limit", all, "355 MPa", "{1092, 355000}"},
        {"Axial force", all, "-80", "{1101, -80}"},
        {"Offset", all, "1.5", "1.5"},
        {"Load factor", all, "1.2", "1.2"},
        {"Grade", {"Home"}, "", "235"},
        {"Support", {"Right"}, "", "2"},
        {"Mark", all, "a text that is too long", "\"a text that \""},
        {"Count", all, "99", "10"},
        {"Layer", all, "0", "1"},
        {"Port", all, "443", "443"},
        {"Ratio", all, "2", "1"},
        {"Cover", {"ctrl+a", "Delete"}, "", "(no value)"},
        {"Free length", all, "9 m", "{1001, 2.5}"},
        {"Colour", all, "#112233", "L\"#112233\""},
        {"Visible", {"Down"}, "", "false"},
        {"Material", {"Home"}, "", "\"steel\""},
        {"Bolts", all, "24", "24"},
        {"Camber", all, "0.02", "0.02"},
        {"Depth", all, "450", "\"450\""},
        {"Remark", {"space"}, "", "\"roof\""},
    };
    return inReadingOrder;
}

} // namespace

// Drives the page of the editors that hints describe by keys of the X server.
class TestGalleryHints : public GalleryPageTest
{
    Q_OBJECT

public:
    TestGalleryHints()
        : GalleryPageTest("hints")
    {}

private Q_SLOTS:
    void theFormIsFilledByKeysAlone()
    {
        focus(find<QCheckBox>("The objects differ"));
        x11::press({"space"});
        x11::press({"space"});
        const WhenOpen<QInputDialog> remark([](QInputDialog& dialog) {
            QTRY_VERIFY(dialog.isActiveWindow());
            x11::press({"ctrl+a"});
            x11::type("roof");
            x11::press({"Return"});
            QTRY_VERIFY(!dialog.isVisible());
        });
        for (const Entry& entry : entries()) {
            tabTo(entry.property);
            if (QTest::currentTestFailed())
                return;
            x11::press(entry.keys);
            if (entry.text[0] != '\0')
                x11::type(entry.text);
        }
        QTRY_COMPARE(valueOf("Remark"), QString("\"roof\""));
        for (const Entry& entry : entries())
            QCOMPARE(entry.property + (": " + valueOf(entry.property)),
                entry.property + QString(": ") + entry.value);
    }

    void aRefusedTextIsNoValue_data()
    {
        columns<QString, QString>("property", "text");
        row("a colour with a letter", "Colour", "#11223F");
        row("a colour with a digit too many", "Colour", "#1122334");
        row("a camber that is not a number", "Camber", "perhaps");
        row("a span in a unit of another kind", "Span", "3 kN");
    }

    void aRefusedTextIsNoValue()
    {
        QFETCH(QString, property);
        QFETCH(QString, text);
        auto* edit = qobject_cast<MultiEditLineEdit*>(editorOf(property));
        focus(edit->edit());
        replaceText(text);
        x11::press({"Return"});
        QTRY_COMPARE(valueOf(property), QString("(no value)"));
        QVERIFY(!edit->isValueValid());
        QCOMPARE(edit->edit()->text(), text);
    }

    void theResetButtonsShowADefault_data()
    {
        columns<QString, QString, QString>("property", "text", "value");
        row("a text and a value of its own", "Depth", "Auto", "\"\"");
        row("no value", "Cover", "", "(no value)");
        row("a text of its own", "Load factor", "1.35", "1.35");
    }

    void theResetButtonsShowADefault()
    {
        QFETCH(QString, property);
        QFETCH(QString, text);
        QFETCH(QString, value);
        auto* edit = qobject_cast<MultiEditLineEdit*>(editorOf(property));
        click(edit->findChild<QToolButton*>());
        QTRY_COMPARE(valueOf(property), value);
        QCOMPARE(edit->edit()->text(), text);
    }

    void theEditorsVary()
    {
        QCheckBox* differ = find<QCheckBox>("The objects differ");
        std::map<QString, QString> values;
        for (const Entry& entry : entries())
            values[entry.property] = valueOf(entry.property);
        click(differ);
        for (const Entry& entry : entries())
            QTRY_COMPARE(valueOf(entry.property), QString("(varies)"));
        QCOMPARE(
            qobject_cast<MultiEditLineEdit*>(editorOf("Span"))->edit()->text(), getVariesString());
        click(differ);
        for (const Entry& entry : entries())
            QTRY_COMPARE(valueOf(entry.property), values[entry.property]);
    }

    // The dialog opens without a text, and what it leaves alone goes on to vary.
    void theDialogEndsTheVarying_data()
    {
        columns<QString, QString>("key", "value");
        row("it is accepted", "Return", "\"roof\"");
        row("it is cancelled", "Escape", "(varies)");
    }

    void theDialogEndsTheVarying()
    {
        QFETCH(QString, key);
        click(find<QCheckBox>("The objects differ"));
        QTRY_COMPARE(valueOf("Remark"), QString("(varies)"));
        QString offered = "none";
        const WhenOpen<QInputDialog> remark([&](QInputDialog& dialog) {
            QTRY_VERIFY(dialog.isActiveWindow());
            offered = dialog.textValue();
            x11::type("roof");
            x11::press({key});
            QTRY_VERIFY(!dialog.isVisible());
        });
        click(editorOf("Remark"));
        QTRY_COMPARE(offered, QString());
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QTRY_COMPARE(editorOf("Remark")->findChildren<QWidget*>().size(), 1);
        QTEST(valueOf("Remark"), "value");
    }

    void theHintsReadWhole()
    {
        for (const Entry& entry : entries()) {
            const QWidget* hints = inRowOf(entry.property, 1);
            QVERIFY2(
                hints->size().boundedTo(hints->sizeHint()) == hints->sizeHint(), entry.property);
        }
    }

private:
    QGridLayout* grid() const
    {
        return qobject_cast<QGridLayout*>(page().findChild<gallery::HintsPage*>()->layout());
    }

    QWidget* inRowOf(const QString& property, int column) const
    {
        for (int line = 2; line < grid()->rowCount(); ++line) {
            const auto* caption = qobject_cast<QLabel*>(grid()->itemAtPosition(line, 0)->widget());
            if (QString(caption->text()).remove('&') == property)
                return grid()->itemAtPosition(line, column)->widget();
        }
        qFatal("no property %s", qPrintable(property));
    }

    QWidget* editorOf(const QString& property) const { return inRowOf(property, 2); }

    QString valueOf(const QString& property) const
    {
        return qobject_cast<QLabel*>(inRowOf(property, 3))->text();
    }

    /// An editor takes the keyboard once, and its button may take it after that.
    void tabTo(const QString& property)
    {
        const QWidget* editor = editorOf(property);
        const auto isThere = [editor] {
            const QWidget* focused = QApplication::focusWidget();
            return focused && (focused == editor || editor->isAncestorOf(focused));
        };
        for (int presses = 0; presses < 3 && !isThere(); ++presses) {
            const QWidget* before = QApplication::focusWidget();
            x11::press({"Tab"});
            QTRY_VERIFY(QApplication::focusWidget() && QApplication::focusWidget() != before);
        }
        QVERIFY2(isThere(), qPrintable(property));
    }
};

VRN_GALLERY_TEST(TestGalleryHints)
#include "tst_gallery_hints.moc"
