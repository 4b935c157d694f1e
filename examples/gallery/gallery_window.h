#pragma once

#include <QMainWindow>

class QListWidget;
class QStackedWidget;

namespace gallery {

/// A list of all pages, and the page that is selected in it.
class GalleryWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit GalleryWindow(QWidget* parent = nullptr);

    /// Returns false if there is no page with this name.
    bool showPage(const QString& name);

    /// Shows what went wrong, until the next message.
    void showException(const QString& message);

private:
    QListWidget* m_titles;
    QStackedWidget* m_stack;
};

} // namespace gallery
