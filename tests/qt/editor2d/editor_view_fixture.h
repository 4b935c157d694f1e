#pragma once

#include <vrn/qt/editor_view.h>

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>

#include <functional>

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#include <QEnterEvent>
#endif

namespace vrn::test {

/// An EditorView that lets a test call what is protected.
struct OpenView : public vrn::qt::graphics::EditorView
{
    using EditorView::dragMoveEvent;
    using EditorView::focusInEvent;
    using EditorView::focusOutEvent;
    using EditorView::scaleBy;

    void drawBackground(QPainter* painter, const QRectF& rect) override
    {
        ++wholePaints;
        EditorView::drawBackground(painter, rect);
    }
    void drawForeground(QPainter* painter, const QRectF& rect) override
    {
        ++paints;
        EditorView::drawForeground(painter, rect);
    }

    int paints = 0;
    int wholePaints = 0; ///< Those that paint the scene, too.
};

inline void sendMouse(QGraphicsView& view, QEvent::Type type, const QPoint& position,
    Qt::MouseButton button = Qt::NoButton, Qt::MouseButtons buttons = Qt::NoButton)
{
    QMouseEvent event(
        type, position, view.viewport()->mapToGlobal(position), button, buttons, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &event);
}

inline void press(QGraphicsView& view, const QPoint& position, Qt::MouseButton button)
{
    sendMouse(view, QEvent::MouseButtonPress, position, button, button);
}

inline void release(QGraphicsView& view, const QPoint& position, Qt::MouseButton button)
{
    sendMouse(view, QEvent::MouseButtonRelease, position, button);
}

inline void move(
    QGraphicsView& view, const QPoint& position, Qt::MouseButtons buttons = Qt::NoButton)
{
    sendMouse(view, QEvent::MouseMove, position, Qt::NoButton, buttons);
}

inline void turnWheel(
    QGraphicsView& view, const QPoint& position, const QPoint& angle, ulong time = 0)
{
    QWheelEvent event(position, view.viewport()->mapToGlobal(position), QPoint(), angle,
        Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    event.setTimestamp(time);
    QApplication::sendEvent(view.viewport(), &event);
}

inline void enter(QWidget& view)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QEnterEvent event{QPointF(), QPointF(), QPointF()};
#else
    QEvent event(QEvent::Enter);
#endif
    QApplication::sendEvent(&view, &event);
}

inline void leave(QWidget& view)
{
    QEvent event(QEvent::Leave);
    QApplication::sendEvent(&view, &event);
}

/// Writes down which signals a view fires, in their order.
struct SignalLog
{
    explicit SignalLog(vrn::qt::graphics::EditorView& view)
    {
        view.mouseReleased.connect([this](QMouseEvent*) { text += "mouseReleased "; });
        view.mouseMoved.connect([this](QMouseEvent*) { text += "mouseMoved "; });
        view.centerChanged.connect([this](const QPointF&) { text += "centerChanged "; });
        view.zoomChanged.connect([this] { text += "zoomChanged "; });
        view.resized.connect([this] { text += "resized "; });
    }

    /// What has been fired since the last call.
    QString take() { return std::exchange(text, QString()).trimmed(); }

    QString text;
};

} // namespace vrn::test
