#pragma once

#include <QMainWindow>

class QListWidget;
class QStackedWidget;

namespace gallery {

/// The list of pages, and the page that is chosen in it.
class GalleryWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit GalleryWindow(QWidget* parent = nullptr);

    /// False if there is no page of that name.
    bool showPage(const QString& name);

    /// Shows what went wrong, until the next message.
    void showException(const QString& message);

private:
    QListWidget* m_titles;
    QStackedWidget* m_stack;
};

} // namespace gallery
