#include "gallery_window.h"

#include <QApplication>
#include <QListWidget>
#include <QScreen>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>

#include "page.h"

namespace gallery {
namespace {

QWidget* scrollable(QWidget* page)
{
    auto* area = new QScrollArea;
    area->setWidget(page);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    // The keyboard goes to the fields only.
    area->setFocusPolicy(Qt::NoFocus);
    return area;
}

} // namespace

GalleryWindow::GalleryWindow(QWidget* parent)
    : QMainWindow(parent)
    , m_titles(new QListWidget)
    , m_stack(new QStackedWidget)
    , m_listener(std::make_unique<QObject>())
{
    setWindowTitle(tr("vrn_qt2 gallery"));
    QSize pageSize;
    for (const Page& page : pages()) {
        m_titles->addItem(page.title);
        QWidget* widget = page.create(nullptr);
        pageSize = pageSize.expandedTo(widget->sizeHint());
        m_stack->addWidget(scrollable(widget));
    }
    const int titleWidth = fontMetrics().averageCharWidth() * 20;
    m_titles->setMinimumWidth(titleWidth);
    connect(m_titles, &QListWidget::currentRowChanged, m_stack, &QStackedWidget::setCurrentIndex);
    m_titles->setCurrentRow(0);

    auto* splitter = new QSplitter;
    splitter->addWidget(m_titles);
    splitter->addWidget(m_stack);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({titleWidth, pageSize.width()});
    setCentralWidget(splitter);
    showHelp();
    connect(qApp, &QApplication::focusChanged, m_listener.get(),
        [this](QWidget* /*before*/, QWidget* now) { scrollTo(now); });
    // A page has no focus proxy, as Tab would skip what stands before it.
    m_titles->setFocus();
    focusNextChild();

    // At first, no page is scrolled, unless the screen is too small.
    const QSize around(titleWidth + splitter->handleWidth(), statusBar()->sizeHint().height());
    resize((pageSize + around).boundedTo(screen()->availableSize()));
}

void GalleryWindow::scrollTo(QWidget* widget)
{
    auto* area = qobject_cast<QScrollArea*>(m_stack->currentWidget());
    if (!area || !area->isAncestorOf(widget))
        return;
    // All of it: QScrollArea::ensureWidgetVisible() is content with the text cursor, and takes
    // the corner of a graphics view for one.
    const QRect place(widget->mapTo(area->widget(), QPoint()), widget->size());
    const QSize half = place.size().boundedTo(area->viewport()->size()) / 2;
    area->ensureVisible(place.center().x(), place.center().y(), half.width(), half.height());
}

bool GalleryWindow::showPage(const QString& name)
{
    for (int row = 0; row < m_titles->count(); ++row) {
        if (pages()[static_cast<std::size_t>(row)].name == name) {
            m_titles->setCurrentRow(row);
            return true;
        }
    }
    return false;
}

void GalleryWindow::showException(const QString& message)
{
    statusBar()->showMessage(tr("Exception: %1").arg(message));
}

void GalleryWindow::showHelp()
{
    statusBar()->showMessage(
        tr("Type, press Enter, leave a field: the columns show what the application reads."));
}

} // namespace gallery
