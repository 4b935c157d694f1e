#pragma once

#include <QWidget>

#include "gallery_application.h"
#include "gallery_window.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "support/x11_input.h"

#include <functional>
#include <memory>

/// The base of a test that drives a page of the gallery with keys and clicks of the X
/// server. Each test function gets a new window, which shows the page and is active.
/// The file ends with VRN_GALLERY_TEST.
class GalleryPageTest : public vrn::test::TestObject
{
    Q_OBJECT

protected:
    /// The name of the page is that of the command line.
    explicit GalleryPageTest(const char* page);

    /// Replaces the window with a new one.
    void openWindow();
    void closeWindow() { m_window.reset(); }
    gallery::GalleryWindow& window() const { return *m_window; }
    QWidget& page() const;

    /// The control in `whole` with this name. The name may also be that of a part of it.
    template <typename Control>
    static Control* find(const QString& name, const QWidget& whole)
    {
        const auto controls = whole.findChildren<Control*>();
        for (Control* control : controls) {
            if (isCalled(control, name))
                return control;
        }
        qFatal("no %s %s", Control::staticMetaObject.className(), qPrintable(name));
    }
    /// The control on the page with this name.
    template <typename Control>
    Control* find(const QString& name) const
    {
        return find<Control>(name, page());
    }

    /// The name that a screen reader gives it.
    static QString nameOf(QWidget* widget);

    /// A point on the screen where it takes a click.
    static QPoint clickableSpot(const QWidget* widget);
    static void click(const QWidget* widget);
    /// Clicks until `done`. The position is computed for each click, because a new window
    /// may still be changing its layout.
    static void clickUntil(
        const std::function<QPoint()>& position, const std::function<bool()>& done);

    /// Whether the next key goes into this widget.
    bool hasKeyboard(const QWidget* widget) const;
    /// Clicks into it and waits until it has the keyboard.
    void focus(const QWidget* widget);
    /// Replaces the whole text of the widget that has the keyboard.
    static void replaceText(const QString& text);

    /// The last label beside a control, which shows the value that the application has.
    static QString valueBeside(const QWidget* control);

    /// The popup of this edit, or of any, if it is on the screen.
    static const QWidget* hint(const QWidget* edit = nullptr);
    static const QWidget* history(const QWidget* edit = nullptr);

    /// The last exception that the application has caught in this test function.
    const QString& lastException() const { return m_lastException; }

protected Q_SLOTS:
    void init();
    void cleanup();

private:
    static bool isCalled(QWidget* control, const QString& name);

    QString m_pageName;
    std::unique_ptr<gallery::GalleryWindow> m_window;
    QString m_lastException;
};

/// VRN_TEST with the application of the gallery.
#define VRN_GALLERY_TEST(TestClass) VRN_TEST_IN(TestClass, gallery::GalleryApplication)
