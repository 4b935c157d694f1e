#include <vrn/qt/simple_line_edit.h>

#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QSignalSpy>

#include "gallery_page_test.h"

using namespace vrn::test;
using vrn::qt::SimpleLineEdit;

namespace {

// How many pixels of the edit on the screen are red and how many are black.
struct Ink
{
    int red = 0;
    int black = 0;
};

Ink inkOf(const QLineEdit* edit)
{
    const QRect area(edit->mapToGlobal(QPoint(3, 3)), edit->size() - QSize(6, 6));
    const QImage image =
        edit->screen()->grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage();
    Ink ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.red() > 200 && pixel.green() < 60 && pixel.blue() < 60)
                ++ink.red;
            if (pixel.red() < 60 && pixel.green() < 60 && pixel.blue() < 60)
                ++ink.black;
        }
    }
    return ink;
}

} // namespace

// Drives the page of line edits by keys and clicks of the X server.
class TestGalleryLineEdits : public GalleryPageTest
{
    Q_OBJECT

public:
    TestGalleryLineEdits()
        : GalleryPageTest("line-edits")
    {}

private Q_SLOTS:
    void init()
    {
        GalleryPageTest::init();
        // The cursor bar would count as black ink.
        QApplication::setCursorFlashTime(0);
    }

    void aRefusedTextIsRedAndAGoodOneIsBlack()
    {
        SimpleLineEdit* number = focusField("Number");
        replaceText("12x");
        QTRY_COMPARE(number->edit()->text(), QString("12x"));
        QVERIFY(!number->isValueValid());
        QTRY_VERIFY(inkOf(number->edit()).red > 20);

        x11::press({"BackSpace"});
        QTRY_COMPARE(number->edit()->text(), QString("12"));
        QVERIFY(number->isValueValid());
        QTRY_COMPARE(inkOf(number->edit()).red, 0);
        QVERIFY(inkOf(number->edit()).black > 20);
    }

    void enterClampsAndFormats()
    {
        SimpleLineEdit* number = focusField("Number");
        QSignalSpy changed(number, &SimpleLineEdit::valueChanged);
        replaceText("1e9");
        QTRY_COMPARE(number->edit()->text(), QString("1e9"));
        QVERIFY(number->isValueValid());
        QCOMPARE(changed.count(), 0);

        x11::press({"Return"});
        QTRY_COMPARE(number->edit()->text(), QString("100.000"));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(number->getValue(), boost::any(100.0));
    }

    void aRefusedTextStaysWhenTheFieldIsLeft()
    {
        SimpleLineEdit* number = focusField("Number");
        QSignalSpy changed(number, &SimpleLineEdit::valueChanged);
        replaceText("wide");
        x11::press({"Tab"});
        QTRY_VERIFY(!number->edit()->hasFocus());
        QCOMPARE(number->edit()->text(), QString("wide"));
        QVERIFY(!number->isValueValid());
        QCOMPARE(changed.count(), 1);
    }

    void aHintStandsBelowTheFieldWhileTheFocusStaysInIt()
    {
        SimpleLineEdit* number = focusField("Number");
        x11::type("1");
        QTRY_VERIFY(hint(number->edit()));
        const QWidget* shown = hint(number->edit());
        QTRY_COMPARE(
            shown->pos(), number->edit()->mapToGlobal(QPoint(0, number->edit()->height())));
        x11::type("7");
        QTRY_VERIFY(number->edit()->text().endsWith("17"));
        QVERIFY(shown->isVisible());
        QVERIFY(hasKeyboard(number->edit()));
    }

    void theHistoryOffersTheLastFiveAndAClickTakesOneOver()
    {
        SimpleLineEdit* number = focusField("Integer");
        for (const char* entry : {"1", "2", "3", "4", "5", "6"}) {
            replaceText(entry);
            x11::press({"Return"});
            QTRY_COMPARE(number->edit()->text(), QString(entry));
        }
        x11::press({"Tab"});
        QTRY_VERIFY(!number->edit()->hasFocus());
        QTRY_VERIFY(!history(number->edit()));
        x11::press({"shift+Tab"});
        QTRY_VERIFY(number->edit()->hasFocus());
        QTRY_VERIFY(history(number->edit()));

        const QWidget* shown = history(number->edit());
        auto* list = shown->findChild<QListWidget*>();
        QStringList offered;
        for (int row = 0; row < list->count(); ++row)
            offered << list->item(row)->text();
        QCOMPARE(offered, QStringList({"6", "5", "4", "3", "2"}));
        // It stands below the hint with a gap, all of it on the screen.
        QTRY_VERIFY(shown->y() > number->edit()->mapToGlobal(QPoint()).y());
        QVERIFY(number->edit()->screen()->geometry().contains(shown->geometry()));

        QSignalSpy changed(number, &SimpleLineEdit::valueChanged);
        const QRect third = list->visualItemRect(list->item(2));
        x11::click(list->viewport()->mapToGlobal(third.center()));
        QTRY_COMPARE(number->edit()->text(), QString("4"));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(number->getValue(), boost::any(4));
        QVERIFY(hasKeyboard(number->edit()));

        x11::type("9");
        QTRY_COMPARE(number->edit()->text(), QString("49"));
    }

    void anEmptyHistoryIsNoDotOnTheScreen()
    {
        SimpleLineEdit* angle = focusField("Angle in degree");
        int popups = 0;
        for (const QWidget* each : QApplication::topLevelWidgets()) {
            if (each->parentWidget() != angle->edit())
                continue;
            ++popups;
            QCOMPARE(each->size(), QSize(0, 0));
            const bool mapped = each->isVisible() && !each->testAttribute(Qt::WA_DontShowOnScreen);
            QVERIFY2(!mapped, each->metaObject()->className());
        }
        QCOMPARE(popups, 2);
    }

    void popupsFollowTheWindow()
    {
        SimpleLineEdit* number = focusField("Number");
        x11::type("1");
        QTRY_VERIFY(hint(number->edit()));
        const QWidget* shown = hint(number->edit());
        window().move(window().pos() + QPoint(40, 60));
        QTRY_COMPARE(
            shown->pos(), number->edit()->mapToGlobal(QPoint(0, number->edit()->height())));
    }

    void popupsGoWithTheirWindow()
    {
        SimpleLineEdit* number = focusField("Number");
        x11::type("1");
        QTRY_VERIFY(hint(number->edit()));
        window().hide();
        QTRY_VERIFY(!hint(number->edit()));
        QVERIFY(!history(number->edit()));
    }

    void popupsHideWhenAnotherWindowIsActivated()
    {
        SimpleLineEdit* number = focusField("Number");
        x11::type("1");
        QTRY_VERIFY(hint(number->edit()));
        QWidget other;
        other.resize(100, 100);
        other.show();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QTRY_VERIFY(!hint(number->edit()));
        QVERIFY(!history(number->edit()));
    }

    void anUnknownUnitIsShownAndTheFieldGoesOn()
    {
        SimpleLineEdit* distance = focusField("Distance in m");
        replaceText("2 yd");
        QTRY_COMPARE(distance->edit()->text(), QString("2 yd"));
        QVERIFY(lastException().contains("yd"));
        QVERIFY(!distance->isValueValid());
        QTRY_VERIFY(inkOf(distance->edit()).red > 20);

        replaceText("150 cm");
        x11::press({"Return"});
        QTRY_COMPARE(distance->edit()->text(), QString("1.500"));
        QVERIFY(distance->isValueValid());
    }

private:
    SimpleLineEdit* focusField(const QString& caption)
    {
        auto* field = find<SimpleLineEdit>(caption);
        focus(field->edit());
        return field;
    }
};

VRN_GALLERY_TEST(TestGalleryLineEdits)
#include "tst_gallery_line_edits.moc"
