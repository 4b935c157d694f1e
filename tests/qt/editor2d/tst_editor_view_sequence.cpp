#include <QScrollBar>

#include "editor_view_fixture.h"
#include "support/random_sequence.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <cmath>

using namespace vrn::test;

namespace {

// What the rules say of a view, in plain numbers. What is seen decides a QGraphicsView that
// gets the same calls: at the edge of the scene it is not where the center is.
struct Model
{
    Model()
    {
        seen.setFrameShape(QFrame::NoFrame);
        seen.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        seen.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        seen.setScene(&scene);
        seen.resize(400, 300);
        seen.show();
    }

    void moveTo(const QPointF& to)
    {
        center = to;
        seen.centerOn(to);
    }
    void scale(double factor)
    {
        scaleX *= factor;
        scaleY *= factor;
        seen.scale(factor, factor);
    }
    void zoom(const QPoint& mouse, double factor)
    {
        const QPointF before = seen.mapToScene(mouse);
        scale(factor);
        moveTo(center + before - seen.mapToScene(mouse));
    }
    void pan(const QPoint& way)
    {
        seen.horizontalScrollBar()->setValue(seen.horizontalScrollBar()->value() - way.x());
        seen.verticalScrollBar()->setValue(seen.verticalScrollBar()->value() - way.y());
        center = seen.mapToScene(seen.rect()).boundingRect().center();
    }

    QGraphicsScene scene{-1e5, -1e5, 2e5, 2e5};
    QGraphicsView seen;
    QPoint lastPan;
    QPointF center{50.0, 0.0};
    double scaleX = 1.0;
    double scaleY = 1.0;
    bool zooming = true;
    bool panning = true;
    bool isInside = false;
    bool isPanning = false;
    bool ownCursor = false;
    Qt::CursorShape cursor = Qt::ArrowCursor;
    Qt::CursorShape saved = Qt::ArrowCursor;
    QString fired;
};

class ViewsAndModel : public Subject
{
public:
    static QStringList actions()
    {
        return {"move", "move", "press right", "press left", "release right", "release left",
            "wheel", "wheel sideways", "wheel diagonally", "wheel by zero", "enter", "leave",
            "resize", "set the center", "tell the center", "scale", "switch zooming",
            "switch panning", "switch the cursor", "switch the scene", "follower's wheel"};
    }

    ViewsAndModel()
    {
        m_view.setDragMode(QGraphicsView::NoDrag);
        for (OpenView* view : {&m_view, &m_follower}) {
            view->setFrameShape(QFrame::NoFrame);
            view->resize(400, 300);
            view->scene()->setSceneRect(-1e5, -1e5, 2e5, 2e5);
            view->show();
        }
        QCoreApplication::processEvents();
        // The mouse may be there.
        leave(m_view);
        m_scene = m_view.scene();
        // Only what the mask says is taken.
        m_follower.linkViewSettingsTo(&m_view, 1 | 8);
        m_log.take();
        m_followerLog.take();
        m_view.setCenter(m_model.center, false);
        m_model.moveTo(m_model.center);
        m_follower.setCenter(m_followerCenter, false);
    }

    QString perform(int action, unsigned argument) override
    {
        const QString name = actions().at(action);
        const QPoint place(int(argument % 400), int(argument / 400 % 300));
        m_model.fired.clear();
        act(name, place, argument);
        const QString text = difference();
        return text.isEmpty() ? text : name + text;
    }

private:
    void act(const QString& name, const QPoint& place, unsigned argument)
    {
        const bool isUp = argument & 4096;
        if (name == "move") {
            const QPointF before = m_view.mapToScene(place);
            move(m_view, place, m_model.isPanning ? Qt::RightButton : Qt::NoButton);
            if (m_model.isInside && m_model.isPanning) {
                m_model.pan(place - m_model.lastPan);
                m_model.lastPan = place;
                m_model.fired = "centerChanged ";
                follow();
            } else if (m_view.mapToScene(place) != before) {
                m_model.fired = "moved without a pan ";
            }
            m_model.fired += "mouseMoved";
        } else if (name == "press right") {
            press(m_view, place, Qt::RightButton);
            if (m_model.panning) {
                m_model.isPanning = true;
                m_model.lastPan = place;
                m_model.cursor = Qt::ClosedHandCursor;
            }
        } else if (name == "press left") {
            press(m_view, place, Qt::LeftButton);
        } else if (name == "release right") {
            release(m_view, place, Qt::RightButton);
            if (m_model.isPanning)
                m_model.cursor = m_model.ownCursor ? Qt::BlankCursor : m_model.saved;
            else
                m_model.fired = "mouseReleased";
            m_model.isPanning = false;
        } else if (name == "release left") {
            release(m_view, place, Qt::LeftButton);
            m_model.fired = "mouseReleased";
        } else if (name == "wheel") {
            wheel(place, QPoint(0, isUp ? 120 : -120), isUp);
        } else if (name == "wheel sideways") {
            wheel(place, QPoint(isUp ? 7 : -7, 0), isUp);
        } else if (name == "wheel diagonally") {
            wheel(place, QPoint(isUp ? -120 : 120, isUp ? 1 : -1), isUp);
            // Its companion.
            turnWheel(m_view, place, QPoint());
        } else if (name == "wheel by zero") {
            wheel(place, QPoint(), false);
        } else if (name == "enter") {
            enter(m_view);
            m_model.isInside = true;
            m_model.saved = m_model.cursor;
            if (m_model.ownCursor)
                m_model.cursor = Qt::BlankCursor;
        } else if (name == "leave") {
            leave(m_view);
            m_model.isInside = false;
            m_model.cursor = m_model.saved;
        } else if (name == "resize") {
            const QSize before = m_view.size();
            m_view.resize(300 + place.x() / 2, 200 + place.y() / 2);
            if (m_view.size() == before)
                return;
            m_model.seen.resize(m_view.size());
            if (m_model.zooming) {
                m_model.moveTo(m_model.center);
                m_model.fired = "centerChanged ";
                follow();
            }
            m_model.fired += "resized";
        } else if (name == "set the center" || name == "tell the center") {
            const bool notify = name == "tell the center";
            m_model.moveTo(QPointF(place) * (isUp ? 1000.0 : 0.1) - QPointF(20.0, 15.0));
            m_view.setCenter(m_model.center, notify);
            if (notify) {
                m_model.fired = "centerChanged";
                follow();
            }
        } else if (name == "scale") {
            const double factor = isUp ? 1.5 : 1.0 / 1.5;
            m_view.scaleBy(factor);
            m_model.scale(factor);
        } else if (name == "switch zooming") {
            m_model.zooming = !m_model.zooming;
            m_view.setZoomingEnabled(m_model.zooming);
        } else if (name == "switch panning") {
            m_model.panning = !m_model.panning;
            m_view.setPanningEnabled(m_model.panning);
        } else if (name == "switch the cursor") {
            m_model.ownCursor = !m_model.ownCursor;
            m_view.setDrawCustomCursor(m_model.ownCursor);
        } else if (name == "switch the scene") {
            // Its rectangle stays, so that a pan goes as far.
            m_view.setSceneRect(m_scene->sceneRect());
            m_view.setScene(m_view.scene() ? nullptr : m_scene);
            m_model.seen.setSceneRect(m_model.scene.sceneRect());
            m_model.seen.setScene(m_model.seen.scene() ? nullptr : &m_model.scene);
            // Qt now takes the middle of the scene for that of the view, until this is set.
            m_view.setCenter(m_model.center, false);
            m_model.moveTo(m_model.center);
        } else {
            // It is not told to the view that it follows.
            turnWheel(m_follower, place, QPoint(0, isUp ? 120 : -120));
            const double factor = isUp ? 1.15 : 0.8695652173913044;
            m_followerScaleX *= factor;
            m_followerScaleY *= factor;
            m_followerCenter = m_follower.getCenter();
            m_followerLog.take();
        }
    }

    void wheel(const QPoint& place, const QPoint& angle, bool isUp)
    {
        const QPointF before = m_view.mapToScene(place);
        // At the edge of the scene the center is elsewhere than the view.
        const QPointF middle = m_view.mapToScene(m_view.viewport()->rect().center());
        const QPointF aside = (middle - m_model.center) * m_model.scaleX;
        const bool isKept = m_view.scene() && isFarFromTheEdge() && pixels(aside) < 3.0;
        turnWheel(m_view, place, angle);
        if (!m_model.zooming)
            return;
        m_model.zoom(place, isUp ? 1.15 : 0.8695652173913044);
        // The point under the mouse stays there, unless the scene ends, but for three roundings
        // to whole pixels: the middle of the view, the zoom and the move back. Where the view
        // was aside before, it comes to the middle.
        const QPointF off = (m_view.mapToScene(place) - before) * m_model.scaleX;
        if (isKept && isFarFromTheEdge() && pixels(off) > 1.15 * pixels(aside) + 3.0)
            m_model.fired = "jumped ";
        m_model.fired += "centerChanged zoomChanged";
        follow();
    }

    // Scroll bars round each axis for itself.
    static double pixels(const QPointF& way)
    {
        return std::max(std::abs(way.x()), std::abs(way.y()));
    }

    bool isFarFromTheEdge() const
    {
        for (const QScrollBar* bar : {m_view.horizontalScrollBar(), m_view.verticalScrollBar()}) {
            if (bar->value() - bar->minimum() < 1000 || bar->maximum() - bar->value() < 1000)
                return false;
        }
        return true;
    }

    // The mask of the link.
    void follow()
    {
        m_followerCenter.setX(m_model.center.x());
        m_followerScaleY = m_model.scaleY;
    }

    static bool isNear(double a, double b) { return std::abs(a - b) <= 1e-6 * std::abs(b); }

    QString difference()
    {
        const QString fired = m_log.take();
        if (fired != m_model.fired)
            return QStringLiteral(": fires \"%1\" instead of \"%2\"").arg(fired, m_model.fired);
        if (!m_followerLog.take().isEmpty())
            return ": the follower fires";
        if (m_view.getCenter() != m_model.center)
            return QStringLiteral(": the center is %1, %2 instead of %3, %4")
                .arg(m_view.getCenter().x())
                .arg(m_view.getCenter().y())
                .arg(m_model.center.x())
                .arg(m_model.center.y());
        if (m_follower.getCenter() != m_followerCenter)
            return ": another center of the follower";
        if (!isNear(m_view.pixelSize().x() * m_model.scaleX, 1.0)
            || !isNear(m_view.pixelSize().y() * m_model.scaleY, 1.0))
            return ": another scale";
        if (!isNear(m_follower.pixelSize().x() * m_followerScaleX, 1.0)
            || !isNear(m_follower.pixelSize().y() * m_followerScaleY, 1.0))
            return ": another scale of the follower";
        if (m_view.cursor().shape() != m_model.cursor)
            return ": another cursor";
        return QString();
    }

    OpenView m_view;
    OpenView m_follower;
    SignalLog m_log{m_view};
    SignalLog m_followerLog{m_follower};
    QGraphicsScene* m_scene = nullptr;
    Model m_model;
    QPointF m_followerCenter{7.0, 9.0};
    double m_followerScaleX = 1.0;
    double m_followerScaleY = 1.0;
};

} // namespace

class TestEditorViewSequence : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRandomWalkFollowsTheModel()
    {
        runRandomSequences(
            ViewsAndModel::actions(), [] { return std::make_unique<ViewsAndModel>(); });
    }
};

VRN_TEST(TestEditorViewSequence)
#include "tst_editor_view_sequence.moc"
