#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QGraphicsScene>

namespace vrn::qt::graphics {

/// The scene of the 2D editor. It behaves as a QGraphicsScene does; an EditorView makes one
/// for itself.
struct VRN_QT2_EXPORT GraphicsScene : public QGraphicsScene
{
    /// The scene belongs to `parent`.
    explicit GraphicsScene(QObject* parent = nullptr);
    ~GraphicsScene() override;
};

} // namespace vrn::qt::graphics
