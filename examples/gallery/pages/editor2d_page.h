#pragma once

#include <boost/signals2/connection.hpp>

#include <QPointF>
#include <QWidget>

#include <map>
#include <string>
#include <vector>

class QGraphicsPolygonItem;
class QHBoxLayout;
class QLabel;

namespace vrn::qt::ed2d {
struct GripItem;
}
namespace vrn::qt::graphics {
class EditorView;
}

namespace gallery {

/// A polygon whose corners are grips among a few hundred items, in one large view and three
/// small ones that are linked to it. A line below tells what the large view fires. All views show
/// one scene, so all of them are repainted when the mouse moves over one. A view that has its
/// scene for itself keeps a picture of it, and paints only the cross hairs.
class Editor2dPage : public QWidget
{
    Q_OBJECT

public:
    explicit Editor2dPage(QWidget* parent = nullptr);
    ~Editor2dPage() override;

private:
    using View = vrn::qt::graphics::EditorView;

    QWidget* createSwitches();
    void addSwitch(QHBoxLayout* layout, const QString& title, const QString& explanation, bool isOn,
        void (Editor2dPage::*action)(bool));
    QWidget* createLinkedView(const QString& title, View*& view);
    void fillScene();
    void listen();

    void showRulers(bool on);
    void showCrossHairs(bool on);
    void showCursor(bool on);
    void showTitle(bool on);
    void allowZooming(bool on);
    void allowPanning(bool on);
    void print();

    void count(const char* signal);
    void followGrips();
    void showStatus();

    View* m_view = nullptr;
    View* m_sameX = nullptr;
    View* m_sameScale = nullptr;
    View* m_partner = nullptr;
    QLabel* m_status = nullptr;
    bool m_crossHairs = true;
    bool m_cursor = false;

    QGraphicsPolygonItem* m_polygon = nullptr;
    std::vector<vrn::qt::ed2d::GripItem*> m_grips;
    std::map<std::string, int> m_counts;
    QPointF m_mouse;
    std::vector<boost::signals2::scoped_connection> m_connections;
};

} // namespace gallery
