#include <vrn/qt/simple_line_edit.h>

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include "gallery_application.h"
#include "gallery_window.h"
#include "pages/quantities_page.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "support/x11_input.h"

#include <memory>

using namespace vrn::test;
using vrn::qt::SimpleLineEdit;

// Drives the page of quantities by keys and clicks of the X server.
class TestGalleryQuantities : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_window = std::make_unique<gallery::GalleryWindow>();
        QVERIFY(m_window->showPage(QStringLiteral("quantities")));
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        m_window.reset();
        TestObject::cleanup();
    }

    void textsComeBackInTheDisplayUnit_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("kept");

        QTest::newRow("a line load in kip/ft") << "Line load"
                                               << "12 kip/ft"
                                               << "175.13 kN/m"
                                               << "175.13";
        QTest::newRow("feet, inches and a fraction") << "Span"
                                                     << "1' 3 1/2''"
                                                     << "0.394 m"
                                                     << "0.394";
        QTest::newRow("a bare number is in the display unit") << "Yield strength"
                                                              << "235"
                                                              << "235.00 MPa"
                                                              << "235000";
        QTest::newRow("another metric unit") << "Section height"
                                             << "300 mm"
                                             << "0.300 m"
                                             << "0.3";
    }

    // A field computes its value from its text. That is rounded once the editing ends,
    // so the application keeps the value of what is shown and not of what was typed.
    void textsComeBackInTheDisplayUnit()
    {
        QFETCH(QString, field);
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QFETCH(QString, kept);

        SimpleLineEdit* edit = enter(field, typed);
        QTRY_COMPARE(edit->edit()->text(), shown);
        QVERIFY(edit->isValueValid());
        QTRY_COMPARE(baseValueShown(field), kept);
    }

    void anUnfittingUnitIsRefused()
    {
        SimpleLineEdit* load = enter("Line load", "12 m");
        QTRY_COMPARE(load->edit()->text(), QString("12 m"));
        QVERIFY(!load->isValueValid());
    }

    void everySystemShowsTheSameValueInItsUnits()
    {
        const QStringList spans = {"7.620 m", "7.620 m", "7.620 m", "7.620 m", "7.620 m", "7.620 m",
            "7620 mm", "7620.000 mm", "25.00 ft", "300.00 in"};
        SimpleLineEdit* span = field("Span");
        auto* systems = page()->findChild<QComboBox*>();
        x11::press({"alt+u"});
        QTRY_VERIFY(systems->hasFocus());
        x11::press({"Home"});
        for (int system = 0; system < spans.size(); ++system) {
            QTRY_COMPARE(systems->currentIndex(), system);
            QTRY_COMPARE(span->edit()->text(), spans[system]);
            QCOMPARE(baseValueShown("Span"), QString("7.62"));
            x11::press({"Down"});
        }
    }

    void oneValueStandsInAllSystems()
    {
        x11::click(globalCentre(field("Line load")->edit()));
        auto* overview = page()->findChild<QGroupBox*>();
        QTRY_COMPARE(overview->title(), QString("Line load in all systems"));
        QStringList texts;
        for (const QLabel* label : overview->findChildren<QLabel*>())
            texts << label->text();
        QCOMPARE(texts.size(), 10);
        QCOMPARE(texts.first(), QString("0:  12.50 kN/m"));
        QCOMPARE(texts.last(), QString("9:  0.86 kip/ft"));
    }

    void lengthsMayBeShownInFeetAndInches()
    {
        QCheckBox* feetAndInches = nullptr;
        for (auto* box : m_window->findChildren<QCheckBox*>()) {
            if (box->text().contains("inches"))
                feetAndInches = box;
        }
        QVERIFY(feetAndInches);
        x11::click(globalCentre(feetAndInches));
        QTRY_COMPARE(field("Span")->edit()->text(), QString("25' 0 ''"));
        QCOMPARE(baseValueShown("Span"), QString("7.62"));
    }

    void leavingAFieldUntouchedDoesNotRoundItsValue()
    {
        x11::click(globalCentre(field("Roof pitch")->edit()));
        QTRY_VERIFY(field("Roof pitch")->edit()->hasFocus());
        x11::press({"Return"});
        x11::press({"Tab"});
        QTRY_VERIFY(!field("Roof pitch")->edit()->hasFocus());
        QCOMPARE(baseValueShown("Roof pitch"), QString("0.6108652381980153"));
    }

private:
    QWidget* page() const { return m_window->findChild<gallery::QuantitiesPage*>(); }

    static QPoint globalCentre(const QWidget* widget)
    {
        return widget->mapToGlobal(widget->rect().center());
    }

    // The field on the shown page whose edit has that accessible name.
    SimpleLineEdit* field(const QString& caption)
    {
        for (auto* each : m_window->findChildren<SimpleLineEdit*>()) {
            if (each->isVisible() && each->edit()->accessibleName() == caption)
                return each;
        }
        qFatal("no field %s", qPrintable(caption));
    }

    // Types into a field and ends editing there.
    SimpleLineEdit* enter(const QString& caption, const QString& text)
    {
        SimpleLineEdit* edit = field(caption);
        x11::click(globalCentre(edit->edit()));
        [&] { QTRY_VERIFY(edit->edit()->hasFocus()); }();
        x11::press({"ctrl+a"});
        x11::type(text);
        x11::press({"Return"});
        return edit;
    }

    // What stands beside a field as the value that the application keeps.
    QString baseValueShown(const QString& caption)
    {
        const SimpleLineEdit* edit = field(caption);
        const QLabel* beside = nullptr;
        for (const QLabel* label : edit->parentWidget()->findChildren<QLabel*>()) {
            const bool onTheLine = qAbs(label->geometry().center().y()
                                       - edit->geometry().center().y())
                < 5;
            if (label->parentWidget() == edit->parentWidget() && onTheLine)
                beside = label;
        }
        return beside ? beside->text() : QString();
    }

    std::unique_ptr<gallery::GalleryWindow> m_window;
};

VRN_TEST_IN(TestGalleryQuantities, gallery::GalleryApplication)
#include "tst_gallery_quantities.moc"
