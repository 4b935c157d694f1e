#include <vrn/qt/graphics_scene.h>

#include "support/test_main.h"
#include "support/test_object.h"

using vrn::qt::graphics::GraphicsScene;

class TestGraphicsScene : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void itBelongsToItsParent()
    {
        QPointer<GraphicsScene> scene;
        {
            QObject parent;
            scene = new GraphicsScene(&parent);
            QCOMPARE(scene->parent(), &parent);
        }
        QVERIFY(!scene);
        QCOMPARE(GraphicsScene().parent(), nullptr);
    }

    // The settings of the scene of a view are the view's doing.
    void itHasTheSettingsOfQt()
    {
        const GraphicsScene scene;
        QCOMPARE(scene.itemIndexMethod(), QGraphicsScene::BspTreeIndex);
        QCOMPARE(scene.sceneRect(), QRectF());
    }
};

VRN_TEST(TestGraphicsScene)
#include "tst_graphics_scene.moc"
