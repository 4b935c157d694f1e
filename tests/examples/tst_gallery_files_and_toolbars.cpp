#include <vrn/qt/multi_edit_file_picker.h>
#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/toolbar.h>
#include <vrn/qt/varies_string.h>

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolButton>

#include "gallery_page_test.h"
#include "support/catching_application.h"

#include <functional>
#include <memory>

using namespace vrn::test;
using vrn::qt::MultiEditFilePicker;
using vrn::qt::Toolbar;
using vrn::qt::TypeofPath;

// Drives the page of files and toolbars by keys and clicks of the X server.
//
// A click that opens a dialog returns at once: the X server has it, and Qt takes
// it when the test waits. What then happens to the dialog happens in a timer,
// below the wait for its end.
class TestGalleryFilesAndToolbars : public GalleryPageTest
{
    Q_OBJECT

public:
    TestGalleryFilesAndToolbars()
        : GalleryPageTest("files-and-toolbars")
    {}

private Q_SLOTS:
    void initTestCase()
    {
        // Qt may ask the X server for the place of a dialog that it has just destroyed.
        QLoggingCategory::setFilterRules("qt.qpa.xcb.warning=false");
    }

    void init()
    {
        GalleryPageTest::init();
        m_folder = std::make_unique<QTemporaryDir>();
        m_root = QDir(m_folder->path()).canonicalPath();
        QVERIFY(QDir(m_root).mkpath("data"));
        for (const char* name : {"data/a.qss", "data/b.qss"})
            QVERIFY(QFile(m_root + '/' + name).open(QIODevice::WriteOnly));
    }

    void cleanup()
    {
        GalleryPageTest::cleanup();
        m_folder.reset();
    }

    void aTypedPathIsPicked_data()
    {
        QTest::addColumn<int>("pathType");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("value");
        QTest::newRow("file") << 0 << "Open File"
                              << "%1/data/a.qss"
                              << "%1/data/a.qss";
        QTest::newRow("files") << 1 << "Open Files"
                               << "\"%1/data/a.qss\" \"%1/data/b.qss\""
                               << "2 files in %1/data";
        QTest::newRow("folder") << 2 << "Open Folder"
                                << "%1/data"
                                << "%1/data";
        QTest::newRow("file in folder") << 3 << "Open Folder"
                                        << "%1/data"
                                        << "%1/data/gallery.qss";
    }

    void aTypedPathIsPicked()
    {
        QFETCH(int, pathType);
        QFETCH(QString, title);
        QFETCH(QString, typed);
        QFETCH(QString, value);
        MultiEditFilePicker* picker = pickerOf(pathType);
        QSignalSpy changed(picker, &MultiEditFilePicker::valueChanged);
        const int dialogs = duringDialog<QFileDialog>(
            picker->m_btn, [&](const QPointer<QFileDialog>& dialog) {
                QCOMPARE(dialog->windowTitle(), title);
                const auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
                QTRY_VERIFY(name->hasFocus());
                const QString text = QString(typed).replace("%1", m_root);
                replaceText(text);
                QTRY_COMPARE(name->text(), text);
                x11::press({"Return"});
            });
        QCOMPARE(dialogs, 1);
        QCOMPARE(picker->m_edit->edit()->text(), value.arg(m_root));
        QVERIFY(changed.count() >= 1);
    }

    void escapeCancels_data()
    {
        QTest::addColumn<int>("pathType");
        QTest::addColumn<QString>("value");
        QTest::newRow("file") << 0 << "before";
        QTest::newRow("files") << 1 << "before";
        QTest::newRow("folder") << 2 << "before";
        QTest::newRow("file in folder") << 3 << "/gallery.qss";
    }

    void escapeCancels()
    {
        QFETCH(int, pathType);
        QFETCH(QString, value);
        MultiEditFilePicker* picker = pickerOf(pathType);
        picker->setValue(std::string("before"));
        // What comes when the user leaves the field is not counted here.
        picker->m_btn->setFocus();
        QSignalSpy changed(picker, &MultiEditFilePicker::valueChanged);
        const int dialogs = duringDialog<QFileDialog>(
            picker->m_btn, [&](const QPointer<QFileDialog>&) { x11::press({"Escape"}); });
        QCOMPARE(dialogs, 1);
        QCOMPARE(picker->m_edit->edit()->text(), value);
        QCOMPARE(changed.count(), 1);
    }

    void aVaryingPickerOpensNothing()
    {
        const ThroughQt throughQt;
        openWindow(); // What Qt loses of it has to be made from here on.
        MultiEditFilePicker* picker = pickerOf(0);
        picker->forceVaries();
        click(picker->m_btn);
        QTRY_VERIFY(!lastException().isEmpty());
        QVERIFY(!QApplication::activeModalWidget());
        QCOMPARE(picker->m_edit->edit()->text(), vrn::qt::getVariesString());

        // Out of that state the user types.
        focus(picker->m_edit->edit());
        replaceText("/x");
        QTRY_COMPARE(picker->m_edit->edit()->text(), QString("/x"));
        QVERIFY(!picker->dataVaries());
    }

    void aThrowingFunctionGivesAWarning_data()
    {
        QTest::addColumn<int>("direction");
        QTest::newRow("row") << int(vrn::qt::ExpandHorizontal);
        QTest::newRow("column") << int(vrn::qt::ExpandVertical);
    }

    void aThrowingFunctionGivesAWarning()
    {
        QFETCH(int, direction);
        Toolbar* toolbar = toolbarOf(direction);
        const int boxes = duringDialog<QMessageBox>(
            toolbar->findChild<QPushButton*>("throw"), [&](const QPointer<QMessageBox>& box) {
                QCOMPARE(box->windowTitle(), QString("Varnelik: Exception"));
                QCOMPARE(box->text(),
                    QString("An exception occurred:\nThe stiffness matrix is singular."));
                x11::press({"Return"});
            });
        QCOMPARE(boxes, 1);
        // The toolbar goes on.
        click(toolbar->findChild<QPushButton*>("add"));
        QTRY_VERIFY(label("Last click: +"));
    }

    void aDisabledGroupTakesNoClicks()
    {
        auto* box = page().findChild<QCheckBox*>("canEdit");
        click(box);
        QTRY_VERIFY(!box->isChecked());
        for (const int direction : {vrn::qt::ExpandHorizontal, vrn::qt::ExpandVertical}) {
            const Toolbar* toolbar = toolbarOf(direction);
            QStringList enabled;
            for (const auto* button : toolbar->findChildren<QPushButton*>()) {
                if (button->isEnabled())
                    enabled << button->objectName();
            }
            QCOMPARE(enabled, QStringList({"open", "throw"}));
            click(toolbar->findChild<QPushButton*>("add"));
            click(toolbar->findChild<QPushButton*>("open"));
            QTRY_VERIFY(label("Last click: Open"));
        }
    }

    void theStyleComesFromItsFileAndGoesAgain()
    {
        auto* sample = page().findChild<QFrame*>("sample");
        const auto background = [&] {
            const QPoint corner = sample->mapToGlobal(QPoint(8, 8));
            const QPixmap pixel = sample->screen()->grabWindow(0, corner.x(), corner.y(), 1, 1);
            return pixel.toImage().pixelColor(0, 0);
        };
        const QColor before = background();
        click(page().findChild<QPushButton*>("applyStyle"));
        QTRY_COMPARE(background(), QColor("#f4efe2"));
        click(page().findChild<QPushButton*>("removeStyle"));
        QTRY_COMPARE(background(), before);
    }

private:
    MultiEditFilePicker* pickerOf(int type) const
    {
        for (auto* picker : page().findChildren<MultiEditFilePicker*>()) {
            if (picker->m_type == type)
                return picker;
        }
        qFatal("no such picker");
    }

    Toolbar* toolbarOf(int direction) const
    {
        for (auto* toolbar : page().findChildren<Toolbar*>()) {
            const bool isRow = toolbar->width() > toolbar->height();
            if (toolbar->findChild<QPushButton*>("throw")
                && isRow == (direction == vrn::qt::ExpandHorizontal))
                return toolbar;
        }
        qFatal("no such toolbar");
    }

    bool label(const QString& text) const
    {
        for (const auto* found : page().findChildren<QLabel*>()) {
            if (found->text() == text)
                return true;
        }
        return false;
    }

    // Clicks `button`, which opens a dialog; `act` is to close it by keys that
    // go to it. Returns how many were opened, once the last is closed.
    template <typename Dialog>
    int duringDialog(QWidget* button, const std::function<void(const QPointer<Dialog>&)>& act)
    {
        int opened = 0;
        bool closed = false;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            const QPointer<Dialog> dialog(qobject_cast<Dialog*>(QApplication::activeModalWidget()));
            if (!dialog || !dialog->isActiveWindow() || x11::activeWindow() != dialog->winId())
                return;
            timer.stop();
            ++opened;
            act(dialog);
            [&] { QTRY_VERIFY(!dialog || !dialog->isVisible()); }();
            if (dialog && dialog->isVisible())
                dialog->QDialog::reject();
            closed = true;
        });
        timer.start(20);
        click(button);
        [&] { QTRY_VERIFY(closed && !QApplication::activeModalWidget()); }();
        return opened;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_root;
};

VRN_GALLERY_TEST(TestGalleryFilesAndToolbars)
#include "tst_gallery_files_and_toolbars.moc"
