#include "gallery_window.h"

#include <QListWidget>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>

#include "page.h"

namespace gallery {

GalleryWindow::GalleryWindow(QWidget* parent)
    : QMainWindow(parent)
    , m_titles(new QListWidget)
    , m_stack(new QStackedWidget)
{
    setWindowTitle(tr("vrn_qt2 gallery"));
    for (const Page& page : pages()) {
        m_titles->addItem(page.title);
        m_stack->addWidget(page.create(nullptr));
    }
    m_titles->setMinimumWidth(fontMetrics().averageCharWidth() * 18);
    connect(m_titles, &QListWidget::currentRowChanged, m_stack, &QStackedWidget::setCurrentIndex);
    m_titles->setCurrentRow(0);

    auto* splitter = new QSplitter;
    splitter->addWidget(m_titles);
    splitter->addWidget(m_stack);
    splitter->setStretchFactor(1, 1);
    setCentralWidget(splitter);
    statusBar()->showMessage(
        tr("Type, press Enter, leave a field: the columns show what the application reads."));
    m_stack->currentWidget()->setFocus();
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

} // namespace gallery
