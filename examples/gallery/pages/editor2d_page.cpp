#include "pages/editor2d_page.h"

#include <vrn/qt/editor2d.h>

#include <QCheckBox>
#include <QFileDialog>
#include <QGraphicsPolygonItem>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPdfWriter>
#include <QPushButton>
#include <QVBoxLayout>

#include "value_label.h"

namespace gallery {
namespace {

using namespace vrn::qt;

// A pixel of the view is one of the device. Items of constant size beyond the edge are left out
// unless the picture has a margin.
void paint(graphics::EditorView& view, QPaintDevice& device)
{
    constexpr int margin = 16;
    const QRect pixels = view.viewport()->rect().adjusted(-margin, -margin, margin, margin);
    QPainter painter(&device);
    view.render(&painter, pixels, pixels);
}

} // namespace

Editor2dPage::Editor2dPage(QWidget* parent)
    : QWidget(parent)
{
    m_view = new View;
    m_view->setMinimumSize(420, 280);
    m_view->setAccessibleName(tr("Plan"));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(createSwitches());
    layout->addWidget(m_view, 2);
    auto* linked = new QHBoxLayout;
    linked->addWidget(createLinkedView(tr("The same part of x"), m_sameX));
    linked->addWidget(createLinkedView(tr("The same scale"), m_sameScale));
    linked->addWidget(createLinkedView(tr("Linked both ways"), m_partner));
    layout->addLayout(linked, 1);
    m_status = new ValueLabel(this);
    layout->addWidget(m_status);

    fillScene();
    for (View* view : {m_sameX, m_sameScale, m_partner})
        view->setScene(m_view->scene());
    for (View* view : {m_view, m_sameX, m_sameScale, m_partner}) {
        // Not as large as the whole scene.
        view->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
        view->setCenter(QPointF(100.0, 60.0), false);
    }
    m_sameX->linkViewSettingsTo(m_view, View::CenterX | View::ScaleX);
    m_sameScale->linkViewSettingsTo(m_view, View::ScaleX | View::ScaleY);
    View::linkViewSettingsBidirectionally(
        m_view, m_partner, View::CenterX | View::CenterY | View::ScaleX | View::ScaleY);
    listen();
    showRulers(true);
    showTitle(true);
    showStatus();
}

Editor2dPage::~Editor2dPage() = default;

QWidget* Editor2dPage::createSwitches()
{
    auto* switches = new QWidget(this);
    auto* layout = new QHBoxLayout(switches);
    layout->setContentsMargins(0, 0, 0, 0);
    addSwitch(layout, tr("&Rulers"), tr("Along the upper and the left edge"), true,
        &Editor2dPage::showRulers);
    addSwitch(layout, tr("&Cross hairs"), tr("Lines through the mouse"), true,
        &Editor2dPage::showCrossHairs);
    addSwitch(layout, tr("C&ursor"), tr("A cross in place of the mouse cursor"), false,
        &Editor2dPage::showCursor);
    addSwitch(layout, tr("&Title"), tr("A text in the corner"), true, &Editor2dPage::showTitle);
    addSwitch(layout, tr("&Zooming"), tr("By the wheel"), true, &Editor2dPage::allowZooming);
    addSwitch(layout, tr("&Panning"), tr("By the right button"), true, &Editor2dPage::allowPanning);
    auto* button = new QPushButton(tr("Pr&int..."), switches);
    button->setToolTip(tr("Writes what the view shows into a PDF file"));
    connect(button, &QPushButton::clicked, this, &Editor2dPage::print);
    layout->addWidget(button);
    layout->addStretch(1);
    return switches;
}

void Editor2dPage::addSwitch(QHBoxLayout* layout, const QString& title, const QString& explanation,
    bool isOn, void (Editor2dPage::*action)(bool))
{
    auto* box = new QCheckBox(title, this);
    box->setToolTip(explanation);
    box->setChecked(isOn);
    connect(box, &QCheckBox::toggled, this, action);
    layout->addWidget(box);
}

QWidget* Editor2dPage::createLinkedView(const QString& title, View*& view)
{
    auto* whole = new QWidget(this);
    auto* layout = new QVBoxLayout(whole);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(title, whole));
    view = new View;
    view->setMinimumSize(130, 110);
    view->setAccessibleName(title);
    layout->addWidget(view, 1);
    return whole;
}

void Editor2dPage::fillScene()
{
    QGraphicsScene& scene = *m_view->scene();
    scene.setSceneRect(-1000.0, -1000.0, 2000.0, 2000.0);
    // Columns on a grid, with a gap for the polygon.
    const QRectF gap(-10.0, -10.0, 220.0, 140.0);
    for (int x = -400; x <= 600; x += 40) {
        for (int y = -300; y <= 400; y += 40) {
            if (!gap.contains(x, y)) {
                scene.addRect(QRectF(x - 3.0, y - 3.0, 6.0, 6.0), QPen(Qt::darkGray, 0.0),
                    QColor(210, 225, 240));
            }
        }
    }
    m_polygon = scene.addPolygon(
        QPolygonF(), QPen(QColor(20, 60, 120), 0.0), QColor(110, 160, 220, 120));
    for (const QPointF& corner : {QPointF(0.0, 0.0), QPointF(140.0, 0.0), QPointF(200.0, 60.0),
             QPointF(140.0, 120.0), QPointF(0.0, 120.0)}) {
        auto* grip = new ed2d::GripItem(m_polygon);
        grip->setPos(corner);
        m_grips.push_back(grip);
        m_connections.emplace_back(grip->positionChanged.connect([this] { followGrips(); }));
    }
    followGrips();
}

void Editor2dPage::listen()
{
    m_connections.emplace_back(m_view->mouseMoved.connect([this](QMouseEvent* event) {
        m_mouse = m_view->mapToScene(event->pos());
        count("mouseMoved");
    }));
    m_connections.emplace_back(
        m_view->mouseReleased.connect([this](QMouseEvent*) { count("mouseReleased"); }));
    m_connections.emplace_back(
        m_view->centerChanged.connect([this](const QPointF&) { count("centerChanged"); }));
    m_connections.emplace_back(m_view->zoomChanged.connect([this] { count("zoomChanged"); }));
    // What comes through a link fires nothing. This slot runs after the link.
    m_connections.emplace_back(
        m_partner->centerChanged.connect([this](const QPointF&) { showStatus(); }));
    m_connections.emplace_back(m_view->resized.connect([this] { count("resized"); }));
}

// The setters of a view leave the repaint to us.

void Editor2dPage::showRulers(bool on)
{
    m_view->setRulers(on, on);
    m_view->viewport()->update();
}

void Editor2dPage::showCrossHairs(bool on)
{
    m_crossHairs = on;
    m_view->setDrawCrossHairs(on);
    m_view->viewport()->update();
}

void Editor2dPage::showCursor(bool on)
{
    m_cursor = on;
    m_view->setDrawCustomCursor(on);
    m_view->viewport()->update();
}

void Editor2dPage::showTitle(bool on)
{
    m_view->setTitle(on ? tr("Ground floor") : QString());
    m_view->viewport()->update();
}

void Editor2dPage::allowZooming(bool on)
{
    m_view->setZoomingEnabled(on);
}

void Editor2dPage::allowPanning(bool on)
{
    m_view->setPanningEnabled(on);
}

void Editor2dPage::print()
{
    const QString file = QFileDialog::getSaveFileName(
        this, tr("Print"), QStringLiteral("plan.pdf"), tr("PDF files (*.pdf)"));
    if (file.isEmpty())
        return;
    QPdfWriter pdf(file);
    pdf.setResolution(96);
    pdf.setPageSize(QPageSize(QSizeF(m_view->viewport()->size()) / 96.0, QPageSize::Inch));
    pdf.setPageMargins(QMarginsF());
    m_view->setDrawCrossHairs(false);
    m_view->setDrawCustomCursor(false);
    paint(*m_view, pdf);
    m_view->setDrawCrossHairs(m_crossHairs);
    m_view->setDrawCustomCursor(m_cursor);
}

void Editor2dPage::count(const char* signal)
{
    ++m_counts[signal];
    showStatus();
}

void Editor2dPage::followGrips()
{
    QPolygonF corners;
    for (const ed2d::GripItem* grip : m_grips)
        corners << grip->pos();
    m_polygon->setPolygon(corners);
}

void Editor2dPage::showStatus()
{
    QStringList texts;
    texts << tr("x %1, y %2").arg(m_mouse.x(), 0, 'f', 1).arg(m_mouse.y(), 0, 'f', 1);
    const QPointF pixel = m_view->pixelSize();
    texts << tr("pixel %1 x %2").arg(pixel.x(), 0, 'g', 4).arg(pixel.y(), 0, 'g', 4);
    for (const char* signal :
        {"mouseMoved", "mouseReleased", "centerChanged", "zoomChanged", "resized"})
        texts << QStringLiteral("%1 %2").arg(QLatin1String(signal)).arg(m_counts[signal]);
    m_status->setText(texts.join(QStringLiteral("   ")));
}

} // namespace gallery
