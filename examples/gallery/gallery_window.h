#pragma once

#include <QMainWindow>

#include <memory>

class QListWidget;
class QStackedWidget;

namespace gallery {

/// A list of all pages, and the page that is selected in it.
///
/// A page that has not enough room can be scrolled.
class GalleryWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit GalleryWindow(QWidget* parent = nullptr);

    /// Returns false if there is no page with this name.
    bool showPage(const QString& name);

    /// Shows what went wrong, until showHelp() is called.
    void showException(const QString& message);
    void showHelp();

private:
    void scrollTo(QWidget* widget);

    QListWidget* m_titles;
    QStackedWidget* m_stack;
    // Receives the moves of the focus. It is the last member, so that it is destroyed first:
    // the window is hidden while it is destroyed, and that moves the focus.
    std::unique_ptr<QObject> m_listener;
};

} // namespace gallery
