#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/varies_string.h>

#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QToolButton>

#include "gallery_page_test.h"

using namespace vrn::test;
using vrn::qt::getVariesString;
using vrn::qt::MultiEditLineEdit;

// Drives the page of controls for a selection by keys and clicks of the X server.
class TestGalleryMultiEdit : public GalleryPageTest
{
    Q_OBJECT

public:
    TestGalleryMultiEdit()
        : GalleryPageTest("multi-edit")
    {}

private Q_SLOTS:
    void aTextTypedIntoAVaryingFieldIsTheValueOfAll_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("value");
        QTest::newRow("a text") << "Text"
                                << "east wing"
                                << "east wing"
                                << "L\"east wing\"";
        QTest::newRow("a number") << "Number"
                                  << "33"
                                  << "33.0"
                                  << "33";
        QTest::newRow("a quantity in a unit of its own") << "Quantity"
                                                         << "275000 kN/m2"
                                                         << "275.00 MPa"
                                                         << "{1092, 275000}";
        QTest::newRow("a number beside a button") << "With a button"
                                                  << "8"
                                                  << "8.00"
                                                  << "8";
    }

    void aTextTypedIntoAVaryingFieldIsTheValueOfAll()
    {
        QFETCH(QString, field);
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QFETCH(QString, value);
        MultiEditLineEdit* edit = focusField(field);
        QCOMPARE(edit->edit()->text(), getVariesString());
        QCOMPARE(valueBeside(edit), QString("(no value)"));
        QSignalSpy valueChanged(edit, &MultiEditLineEdit::valueChanged);

        replaceText(typed);
        QTRY_COMPARE(edit->edit()->text(), typed);
        QVERIFY2(!edit->dataVaries(), "a good text ends the variation at once");
        QCOMPARE(valueChanged.count(), 0);
        x11::press({"Return"});
        QTRY_COMPARE(valueChanged.count(), 1);
        QCOMPARE(edit->edit()->text(), shown);
        QCOMPARE(valueBeside(edit), value);
        QCOMPARE(logOfSignals(), QStringList(field + ": valueChanged(), " + value));
    }

    void enterAndTabInAVaryingFieldChangeNothing()
    {
        MultiEditLineEdit* number = focusField("Number");
        QSignalSpy valueChanged(number, &MultiEditLineEdit::valueChanged);
        QSignalSpy editingFinished(number->edit(), &QLineEdit::editingFinished);
        x11::press({"Return"});
        QTRY_COMPARE(editingFinished.count(), 1);
        x11::press({"Tab"});
        QTRY_VERIFY(!number->edit()->hasFocus());
        QVERIFY(number->dataVaries());
        QCOMPARE(number->edit()->text(), getVariesString());
        QCOMPARE(valueBeside(number), QString("(no value)"));
        QCOMPARE(valueChanged.count(), 0);
        QCOMPARE(logOfSignals(), QStringList());
    }

    void aRefusedTextInAVaryingFieldIsNoValue()
    {
        MultiEditLineEdit* number = focusField("Number");
        replaceText("wide");
        x11::press({"Return"});
        QTRY_COMPARE(logOfSignals(), QStringList("Number: valueChanged(), (no value)"));
        QCOMPARE(number->edit()->text(), QString("wide"));
        QVERIFY(number->dataVaries());
    }

    void theButtonsReadTheSelection()
    {
        const MultiEditLineEdit* number = field("Number");
        clickButton("Read 1");
        QTRY_COMPARE(number->edit()->text(), QString("12.5"));
        QCOMPARE(valueBeside(number), QString("12.5"));
        QCOMPARE(valueBeside(field("Quantity")), QString("{1092, 235000}"));
        clickButton("Force varies");
        QTRY_COMPARE(number->edit()->text(), getVariesString());
        clickButton("Read equal");
        QTRY_COMPARE(number->edit()->text(), QString("12.5"));
        clickButton("Read different");
        QTRY_COMPARE(number->edit()->text(), getVariesString());
        QCOMPARE(valueBeside(number), QString("(no value)"));
        clickButton("Reset");
        QTRY_COMPARE(valueBeside(number), QString("(nothing read)"));
        QVERIFY(!number->dataVaries());
        QCOMPARE(logOfSignals().filter(QRegularExpression("^(?!.*valueChanged)")),
            QStringList({"Read 1", "Force varies", "Read equal", "Read different", "Reset"}));
    }

    void theButtonsMakeEachControlTellAsOftenAsItDoes_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QStringList>("signalsOfAll");
        const QString list = "List: valueChanged(), ";
        const QString check = "Check box: valueChanged(), ";
        const QString radio = "Radio buttons: valueChanged(), ";
        // Reading begins with a reset, of which radio buttons tell; the partially
        // checked box becomes unchecked by it.
        QTest::newRow("one object") << "Read 1"
                                    << QStringList({list + "235", check + "false", check + "true",
                                           radio + "0", radio + "0"});
        QTest::newRow("objects that differ")
            << "Read different"
            << QStringList({list + "235", check + "false", check + "true", radio + "0", radio + "0",
                   radio + "(no value)"});
        QTest::newRow("to vary is told by none") << "Force varies" << QStringList();
    }

    void theButtonsMakeEachControlTellAsOftenAsItDoes()
    {
        QFETCH(QString, button);
        QFETCH(QStringList, signalsOfAll);
        clickButton(button);
        QTRY_COMPARE(logOfSignals(), QStringList(button) + signalsOfAll);
    }

    void theResetButtonShowsOneValueAndReportsAnother()
    {
        MultiEditLineEdit* depth = field("With a reset button");
        click(depth->findChild<QToolButton*>("btn"));
        QTRY_COMPARE(depth->edit()->text(), QString("Auto"));
        QCOMPARE(valueBeside(depth), QString("0"));
        QCOMPARE(logOfSignals(), QStringList("With a reset button: valueChanged(), 0"));
        focusField("With a reset button");
        x11::press({"End"});
        x11::type("x");
        QTRY_COMPARE(valueBeside(depth), QString("L\"Autox\""));
    }

    void theOtherButtonComputesAValueWithoutASignal()
    {
        MultiEditLineEdit* span = field("With a button");
        click(span->findChild<QToolButton*>("m_btn"));
        QTRY_COMPARE(span->edit()->text(), QString("12.34"));
        QCOMPARE(valueBeside(span), QString("12.34"));
        QCOMPARE(logOfSignals(), QStringList());
    }

    void theShortcutOfACaptionGoesToItsControl_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("control");
        QTest::newRow("a line edit") << "alt+n"
                                     << "Number";
        QTest::newRow("a line edit with a button") << "alt+b"
                                                   << "With a button";
        // By Qt, a list is named by the entry that it shows.
        QTest::newRow("a list") << "alt+l" << getVariesString();
        QTest::newRow("a check box") << "alt+c"
                                     << "Painted";
        QTest::newRow("a file picker") << "alt+f"
                                       << "File";
    }

    void theShortcutOfACaptionGoesToItsControl()
    {
        QFETCH(QString, key);
        QFETCH(QString, control);
        x11::press({key});
        QTRY_COMPARE(nameOf(QApplication::focusWidget()), control);
    }

    void tabGoesInReadingOrder()
    {
        focusField("Text");
        QStringList order;
        for (int i = 0; i < 11; ++i) {
            const QWidget* before = QApplication::focusWidget();
            x11::press({"Tab"});
            QTRY_VERIFY(QApplication::focusWidget() != before);
            order << nameOf(QApplication::focusWidget());
        }
        // By Qt, a list is named by the entry that it shows.
        QCOMPARE(order,
            QStringList({"Number", "Quantity", "With a button", "Measure", "With a reset button",
                "Reset to default.", getVariesString(), "Painted", "Fixed", "File", "Open File"}));
    }

private:
    MultiEditLineEdit* field(const QString& name) { return find<MultiEditLineEdit>(name); }

    MultiEditLineEdit* focusField(const QString& name)
    {
        MultiEditLineEdit* found = field(name);
        focus(found->edit());
        return found;
    }

    void clickButton(const QString& text) { click(find<QPushButton>(text)); }

    QStringList logOfSignals() const
    {
        const QString text = page().findChild<QPlainTextEdit*>()->toPlainText();
        return text.isEmpty() ? QStringList() : text.split('\n');
    }
};

VRN_GALLERY_TEST(TestGalleryMultiEdit)
#include "tst_gallery_multi_edit.moc"
