#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QStatusBar>

#include "gallery_application.h"
#include "gallery_window.h"
#include "page.h"
#include "support/catching_application.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <algorithm>
#include <memory>

using namespace gallery;

// What all pages have in common.
class TestGalleryWindow : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_window = std::make_unique<GalleryWindow>();
    }

    void cleanup()
    {
        m_window.reset();
        TestObject::cleanup();
    }

    void tabGoesFromTheListThroughThePage_data() { addPages(); }
    void tabGoesFromTheListThroughThePage()
    {
        showPage();
        const auto stops = tabStops();
        QVERIFY(!stops.isEmpty());
        const auto isAbove = [this](const QWidget* a, const QWidget* b) {
            const QPoint left = a->mapTo(m_window.get(), a->rect().center());
            const QPoint right = b->mapTo(m_window.get(), b->rect().center());
            return left.y() != right.y() ? left.y() < right.y() : left.x() < right.x();
        };
        QCOMPARE(stops.first(), *std::min_element(stops.begin(), stops.end(), isAbove));
        for (QWidget* widget : page()->findChildren<QWidget*>()) {
            const bool takesKeys = qobject_cast<QPushButton*>(widget)
                || qobject_cast<QLineEdit*>(widget);
            const bool isStop = takesKeys && widget->isVisible() && widget->isEnabled()
                && (widget->focusPolicy() & Qt::TabFocus) != 0 && !widget->focusProxy();
            QVERIFY2(!isStop || stops.contains(widget), qPrintable(widget->objectName()));
        }
    }

    void aSmallWindowScrollsItsPages_data() { addPages(); }
    void aSmallWindowScrollsItsPages()
    {
        showPage();
        m_window->resize(480, 320);
        QCOMPARE(m_window->size(), QSize(480, 320));
        auto* area = page();
        QTRY_VERIFY(
            area->verticalScrollBar()->maximum() > 0 || area->horizontalScrollBar()->maximum() > 0);
        // What has the focus is in sight.
        const auto stops = tabStops();
        stops.last()->setFocus();
        const QRect place(stops.last()->mapTo(area->viewport(), QPoint()), stops.last()->size());
        QVERIFY(area->viewport()->rect().contains(place.center()));
    }

    void aLargeWindowDoesNotScroll_data() { addPages(); }
    void aLargeWindowDoesNotScroll()
    {
        m_window->resize(1600, 1000);
        showPage();
        QCOMPARE(page()->verticalScrollBar()->maximum(), 0);
        QCOMPARE(page()->horizontalScrollBar()->maximum(), 0);
    }

    void anExceptionIsShownUntilTheUserActs()
    {
        const vrn::test::ThroughQt throughQt;
        m_window = std::make_unique<GalleryWindow>();
        auto* application = qobject_cast<GalleryApplication*>(qApp);
        connect(application, &GalleryApplication::exceptionCaught, m_window.get(),
            &GalleryWindow::showException);
        connect(
            application, &GalleryApplication::userActs, m_window.get(), &GalleryWindow::showHelp);
        QVERIFY(m_window->showPage("line-edits"));
        m_window->show();
        const QString help = m_window->statusBar()->currentMessage();
        QLineEdit* distance = nullptr;
        for (auto* edit : page()->findChildren<QLineEdit*>()) {
            if (edit->accessibleName() == "Distance in m")
                distance = edit;
        }
        QVERIFY(distance);
        distance->selectAll();
        QTest::keyClicks(distance, "3 yd");
        QVERIFY(m_window->statusBar()->currentMessage().contains("yd"));
        QTest::keyClick(distance, Qt::Key_Return);
        QVERIFY(m_window->statusBar()->currentMessage().contains("yd"));
        QTest::keyClick(distance, Qt::Key_Backspace);
        QTest::keyClick(distance, Qt::Key_Backspace);
        QCOMPARE(m_window->statusBar()->currentMessage(), help);
    }

    // The values beside the fields change as the user types.
    void fieldsKeepTheirWidth_data() { addPages(); }
    void fieldsKeepTheirWidth()
    {
        showPage();
        for (auto* edit : page()->findChildren<QLineEdit*>()) {
            if (!edit->isVisible() || !edit->isEnabled())
                continue;
            const int width = edit->width();
            edit->setFocus();
            edit->selectAll();
            QTest::keyClicks(edit, "123456789012345678901234567890123456789");
            QCoreApplication::processEvents();
            QCOMPARE(edit->width(), width);
        }
    }

private:
    static void addPages()
    {
        QTest::addColumn<QString>("name");
        for (const Page& page : pages())
            QTest::newRow(qPrintable(page.name)) << page.name;
    }

    void showPage()
    {
        QFETCH(QString, name);
        QVERIFY(m_window->showPage(name));
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        // Each layout is done after the one around it.
        QTest::qWait(100);
    }

    QScrollArea* page() const
    {
        return qobject_cast<QScrollArea*>(m_window->findChild<QStackedWidget*>()->currentWidget());
    }

    // In the order of the Tab key.
    QList<QWidget*> tabStops() const
    {
        auto* titles = m_window->findChild<QListWidget*>();
        titles->setFocus();
        QTest::keyClick(titles, Qt::Key_Tab);
        QList<QWidget*> stops;
        while (QApplication::focusWidget() != titles && stops.size() < 100) {
            stops << QApplication::focusWidget();
            QTest::keyClick(stops.last(), Qt::Key_Tab);
        }
        return stops;
    }

    std::unique_ptr<GalleryWindow> m_window;
};

VRN_TEST_IN(TestGalleryWindow, GalleryApplication)
#include "tst_gallery_window.moc"
