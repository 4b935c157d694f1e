#include <vrn/qt/editor2d.h>

#include <QApplication>
#include <QCursor>
#include <QGraphicsRectItem>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QWindow>

#include <cmath>
#include <memory>
#include <vector>

#include "comparison.h"

namespace bench {
namespace {

using namespace vrn::qt;

// The settings of an EditorView that matter to a repaint.
class PlainView : public QGraphicsView
{
public:
    PlainView()
    {
        auto* scene = new QGraphicsScene(this);
        scene->setItemIndexMethod(QGraphicsScene::NoIndex);
        setScene(scene);
        setViewportUpdateMode(FullViewportUpdate);
        setRenderHint(QPainter::Antialiasing);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setMouseTracking(true);
    }

protected:
    void drawBackground(QPainter* painter, const QRectF& rect) override
    {
        QLinearGradient gradient(rect.topLeft(), rect.bottomRight());
        gradient.setColorAt(0.0, Qt::white);
        gradient.setColorAt(1.0, Qt::lightGray);
        painter->fillRect(rect, gradient);
    }
};

// Items with gaps between them, all of them in sight. Each takes part in the look-up of hovered
// items.
void fill(QGraphicsScene& scene, int count)
{
    const int columns = static_cast<int>(std::sqrt(count * 1.5));
    for (int i = 0; i < count; ++i) {
        auto* item = new QGraphicsRectItem(0.0, 0.0, 6.0, 6.0);
        item->setPos(i % columns * 10.0, i / columns * 10.0);
        item->setBrush(QColor::fromHsv(i % 360, 120, 220));
        item->setAcceptHoverEvents(true);
        scene.addItem(item);
    }
    scene.setSceneRect(scene.itemsBoundingRect());
}

void settle()
{
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}

// Without a screen, a move of the cursor is an event by itself. The rounds send their own.
class NoMouse : public QObject
{
public:
    using QObject::QObject;
    bool eventFilter(QObject* /*window*/, QEvent* event) override
    {
        return event->type() == QEvent::MouseMove || event->type() == QEvent::Enter
            || event->type() == QEvent::Leave;
    }
};

// A view of `count` items, with the mouse in it.
template <typename View>
class Shown
{
public:
    explicit Shown(int count, bool lookUpItems = true)
    {
        fill(*m_view.scene(), count);
        m_view.setInteractive(lookUpItems);
        m_view.resize(1200, 800);
        m_view.show();
        m_view.fitInView(m_view.sceneRect(), Qt::KeepAspectRatio);
        m_view.windowHandle()->installEventFilter(new NoMouse(&m_view));
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        QEnterEvent event{QPointF(), QPointF(), QPointF()};
#else
        QEvent event(QEvent::Enter);
#endif
        QApplication::sendEvent(&m_view, &event);
        settle();
    }

    View& view()
    {
        return m_view;
    }

    void move(const QPoint& place, Qt::MouseButtons buttons = Qt::NoButton)
    {
        QCursor::setPos(m_view.mapToGlobal(place));
        send(QEvent::MouseMove, place, Qt::NoButton, buttons);
        settle();
    }

    // To one of two places that are far apart. No item is there: it would ask for a repaint.
    void moveOnce()
    {
        m_isThere = !m_isThere;
        const QPointF middle = m_view.sceneRect().center();
        const QPointF gap(
            std::floor(middle.x() / 10.0) * 10.0 + 8.0, std::floor(middle.y() / 10.0) * 10.0 + 8.0);
        move(m_view.mapFromScene(m_isThere ? gap : gap + QPointF(100.0, -70.0)));
    }

    void repaint()
    {
        m_view.viewport()->repaint();
    }

    // A grip in the middle, which follows the mouse from now on.
    void grab()
    {
        auto* grip = new ed2d::GripItem;
        m_view.scene()->addItem(grip);
        grip->setPos(m_view.sceneRect().center());
        const QPoint place = m_view.mapFromScene(grip->pos());
        send(QEvent::MouseButtonPress, place, Qt::LeftButton, Qt::LeftButton);
        move(place + QPoint(20, 20), Qt::LeftButton);
        if (grip->pos() == m_view.sceneRect().center())
            qFatal("the grip does not follow the mouse");
    }

    void dragOnce()
    {
        m_isThere = !m_isThere;
        move(m_isThere ? QPoint(400, 400) : QPoint(600, 270), Qt::LeftButton);
    }

    // In and out again.
    void turnWheel()
    {
        for (const int angle : {120, -120}) {
            const QPoint place(400, 400);
            QWheelEvent event(place, m_view.viewport()->mapToGlobal(place), QPoint(),
                QPoint(0, angle), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(m_view.viewport(), &event);
            settle();
        }
    }

private:
    void send(
        QEvent::Type type, const QPoint& place, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        QMouseEvent event(
            type, place, m_view.viewport()->mapToGlobal(place), button, buttons, Qt::NoModifier);
        QApplication::sendEvent(m_view.viewport(), &event);
    }

    View m_view;
    bool m_isThere = false;
};

using Ours = Shown<graphics::EditorView>;
using Theirs = Shown<PlainView>;

void addMoves()
{
    const auto ours = std::make_shared<Ours>(10000);
    ours->view().setRulers(true, true);
    ours->moveOnce();
    add({"editor2d/mouse move, 10000 items", "a full repaint", 0.05, [=] { ours->moveOnce(); },
        [=] { ours->repaint(); }});
    const auto theirs = std::make_shared<Theirs>(10000);
    add({"editor2d/QGraphicsView's mouse move, 10000 items", "a full repaint", 0.05,
        [=] { theirs->moveOnce(); }, [=] { ours->repaint(); }});

    // What comes on top of the base class, which looks up the items below the mouse unless the
    // view is not interactive.
    const auto many = std::make_shared<Ours>(100000, false);
    const auto few = std::make_shared<Ours>(1000, false);
    for (const auto& each : {many, few}) {
        each->view().setRulers(true, true);
        each->moveOnce();
    }
    add({"editor2d/mouse move without a look-up, 100000 items", "1000 items", 1.3,
        [=] { many->moveOnce(); }, [=] { few->moveOnce(); }});
}

void addRepaint()
{
    const auto ours = std::make_shared<Ours>(10000);
    const auto theirs = std::make_shared<Theirs>(10000);
    ours->moveOnce();
    add({"editor2d/full repaint, 10000 items", "QGraphicsView with the same background", 1.15,
        [=] { ours->repaint(); }, [=] { theirs->repaint(); }});
}

void addDrag()
{
    const auto ours = std::make_shared<Ours>(10000);
    const auto theirs = std::make_shared<Theirs>(10000);
    ours->grab();
    theirs->grab();
    add({"editor2d/drag of a grip among 10000 items", "QGraphicsView with the same background",
        1.15, [=] { ours->dragOnce(); }, [=] { theirs->dragOnce(); }});
}

void addWheel()
{
    const auto one = std::make_shared<Ours>(10000);
    const auto first = std::make_shared<Ours>(10000);
    const auto second = std::make_shared<Ours>(10000);
    const auto third = std::make_shared<Ours>(10000);
    for (const auto& each : {second, third})
        each->view().linkViewSettingsTo(&first->view(), 15);
    add({"editor2d/wheel over three linked views", "over one view", 3.3,
        [=, keep = std::vector{second, third}] { first->turnWheel(); }, [=] { one->turnWheel(); }});
}

} // namespace

void addEditor2dComparisons()
{
    addMoves();
    addRepaint();
    addDrag();
    addWheel();
}

} // namespace bench
