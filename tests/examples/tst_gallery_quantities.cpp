#include <vrn/qt/simple_line_edit.h>

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include "gallery_page_test.h"

using namespace vrn::test;
using vrn::qt::SimpleLineEdit;

// Drives the page of quantities by keys and clicks of the X server.
class TestGalleryQuantities : public GalleryPageTest
{
    Q_OBJECT

public:
    TestGalleryQuantities()
        : GalleryPageTest("quantities")
    {}

private Q_SLOTS:
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
        auto* systems = page().findChild<QComboBox*>();
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
        click(field("Line load")->edit());
        auto* overview = page().findChild<QGroupBox*>();
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
        click(find<QCheckBox>("Lengths in feet and inches"));
        QTRY_COMPARE(field("Span")->edit()->text(), QString("25' 0 ''"));
        QCOMPARE(baseValueShown("Span"), QString("7.62"));
    }

    void leavingAFieldUntouchedDoesNotRoundItsValue()
    {
        focus(field("Roof pitch")->edit());
        x11::press({"Return"});
        x11::press({"Tab"});
        QTRY_VERIFY(!field("Roof pitch")->edit()->hasFocus());
        QCOMPARE(baseValueShown("Roof pitch"), QString("0.6108652381980153"));
    }

private:
    SimpleLineEdit* field(const QString& caption) { return find<SimpleLineEdit>(caption); }

    SimpleLineEdit* enter(const QString& caption, const QString& text)
    {
        SimpleLineEdit* edit = field(caption);
        focus(edit->edit());
        replaceText(text);
        x11::press({"Return"});
        return edit;
    }

    QString baseValueShown(const QString& caption) { return valueBeside(field(caption)); }
};

VRN_GALLERY_TEST(TestGalleryQuantities)
#include "tst_gallery_quantities.moc"
