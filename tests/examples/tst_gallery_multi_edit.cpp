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

#include "gallery_application.h"
#include "gallery_window.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "support/x11_input.h"

#include <memory>

using namespace vrn::test;
using vrn::qt::getVariesString;
using vrn::qt::MultiEditLineEdit;

// Drives the page of controls for a selection by keys and clicks of the X server.
class TestGalleryMultiEdit : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_window = std::make_unique<gallery::GalleryWindow>();
        QVERIFY(m_window->showPage(QStringLiteral("multi-edit")));
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        m_window.reset();
        TestObject::cleanup();
    }

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
        QCOMPARE(valueBeside(field), QString("(no value)"));
        QSignalSpy valueChanged(edit, &MultiEditLineEdit::valueChanged);

        x11::press({"ctrl+a"});
        x11::type(typed);
        QTRY_COMPARE(edit->edit()->text(), typed);
        QVERIFY2(!edit->dataVaries(), "a good text ends the variation at once");
        QCOMPARE(valueChanged.count(), 0);
        x11::press({"Return"});
        QTRY_COMPARE(valueChanged.count(), 1);
        QCOMPARE(edit->edit()->text(), shown);
        QCOMPARE(valueBeside(field), value);
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
        QCOMPARE(valueBeside("Number"), QString("(no value)"));
        QCOMPARE(valueChanged.count(), 0);
        QCOMPARE(logOfSignals(), QStringList());
    }

    void aRefusedTextInAVaryingFieldIsNoValue()
    {
        MultiEditLineEdit* number = focusField("Number");
        x11::press({"ctrl+a"});
        x11::type("wide");
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
        QCOMPARE(valueBeside("Number"), QString("12.5"));
        QCOMPARE(valueBeside("Quantity"), QString("{1092, 235000}"));
        clickButton("Force varies");
        QTRY_COMPARE(number->edit()->text(), getVariesString());
        clickButton("Read equal");
        QTRY_COMPARE(number->edit()->text(), QString("12.5"));
        clickButton("Read different");
        QTRY_COMPARE(number->edit()->text(), getVariesString());
        QCOMPARE(valueBeside("Number"), QString("(no value)"));
        clickButton("Reset");
        QTRY_COMPARE(valueBeside("Number"), QString("(nothing read)"));
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
        x11::click(globalCentre(depth->findChild<QToolButton*>("btn")));
        QTRY_COMPARE(depth->edit()->text(), QString("Auto"));
        QCOMPARE(valueBeside("With a reset button"), QString("0"));
        QCOMPARE(logOfSignals(), QStringList("With a reset button: valueChanged(), 0"));
        focusField("With a reset button");
        x11::press({"End"});
        x11::type("x");
        QTRY_COMPARE(valueBeside("With a reset button"), QString("L\"Autox\""));
    }

    void theOtherButtonComputesAValueWithoutASignal()
    {
        MultiEditLineEdit* span = field("With a button");
        x11::click(globalCentre(span->findChild<QToolButton*>("m_btn")));
        QTRY_COMPARE(span->edit()->text(), QString("12.34"));
        QCOMPARE(valueBeside("With a button"), QString("12.34"));
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
    static QPoint globalCentre(const QWidget* widget)
    {
        return widget->mapToGlobal(widget->rect().center());
    }

    // As a screen reader names it.
    static QString nameOf(QWidget* widget)
    {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    }

    MultiEditLineEdit* field(const QString& name)
    {
        for (auto* each : m_window->findChildren<MultiEditLineEdit*>()) {
            if (nameOf(each->edit()) == name)
                return each;
        }
        qFatal("no field %s", qPrintable(name));
    }

    MultiEditLineEdit* focusField(const QString& name)
    {
        MultiEditLineEdit* found = field(name);
        x11::click(globalCentre(found->edit()));
        [&] { QTRY_VERIFY(found->edit()->hasFocus()); }();
        return found;
    }

    void clickButton(const QString& text)
    {
        for (auto* button : m_window->findChildren<QPushButton*>()) {
            if (button->isVisible() && button->text() == text)
                return x11::click(globalCentre(button));
        }
        qFatal("no button %s", qPrintable(text));
    }

    // What stands beside a field as the value that the application reads.
    QString valueBeside(const QString& name)
    {
        const MultiEditLineEdit* edit = field(name);
        const QLabel* last = nullptr;
        for (const QLabel* label : edit->parentWidget()->findChildren<QLabel*>()) {
            const bool onTheLine = qAbs(label->geometry().center().y()
                                       - edit->geometry().center().y())
                < 5;
            if (label->parentWidget() == edit->parentWidget() && onTheLine
                && (!last || label->x() > last->x()))
                last = label;
        }
        return last ? last->text() : QString();
    }

    // All pages have one window; this page alone has a text of many lines.
    QStringList logOfSignals() const
    {
        const QString text = m_window->findChild<QPlainTextEdit*>()->toPlainText();
        return text.isEmpty() ? QStringList() : text.split('\n');
    }

    std::unique_ptr<gallery::GalleryWindow> m_window;
};

VRN_TEST_IN(TestGalleryMultiEdit, gallery::GalleryApplication)
#include "tst_gallery_multi_edit.moc"
