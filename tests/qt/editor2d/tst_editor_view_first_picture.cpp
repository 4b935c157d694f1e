#include "editor_view_fixture.h"
#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::test;

// Pictures of a view that has never been shown, so that its window has none to compare with.
class TestEditorViewFirstPicture : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPictureCanBeTakenBeforeTheWindowIsShown()
    {
        QWidget form;
        auto* view = new OpenView;
        view->setParent(&form);
        form.resize(300, 200);
        const QPixmap grabbed = form.grab();
        QVERIFY(view->paints > 0);
        QImage image(grabbed.size(), QImage::Format_RGB32);
        image.setDevicePixelRatio(grabbed.devicePixelRatio());
        form.render(&image);
        QCOMPARE(grabbed.toImage().convertToFormat(image.format()), image);
        // With a window, but without a paint of it.
        (void)form.winId();
        form.render(&image);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        view->paints = 0;
        form.repaint();
        QTRY_VERIFY(view->paints > 0);
    }
};

VRN_TEST(TestEditorViewFirstPicture)
#include "tst_editor_view_first_picture.moc"
