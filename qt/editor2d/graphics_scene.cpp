#include <vrn/qt/graphics_scene.h>

namespace vrn::qt::graphics {

GraphicsScene::GraphicsScene(QObject* parent)
    : QGraphicsScene(parent)
{}

GraphicsScene::~GraphicsScene() = default;

} // namespace vrn::qt::graphics
