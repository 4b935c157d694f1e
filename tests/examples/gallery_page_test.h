#pragma once

#include <QWidget>

#include "gallery_application.h"
#include "gallery_window.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "support/x11_input.h"

#include <functional>
#include <memory>

/// The base of a test that drives a page of the gallery by keys and clicks of the X
/// server. Each test function has a window of its own, which shows the page and is active.
/// The test class ends with VRN_GALLERY_TEST.
class GalleryPageTest : public vrn::test::TestObject
{
    Q_OBJECT

protected:
    /// For a page by its name of the command line.
    explicit GalleryPageTest(const char* page);

    /// Opens the window anew.
    void openWindow();
    void closeWindow() { m_window.reset(); }
    gallery::GalleryWindow& window() const { return *m_window; }
    QWidget& page() const;

    /// The control in `whole` that has a name, be it its own or that of a part of it.
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
    /// The same on the page.
    template <typename Control>
    Control* find(const QString& name) const
    {
        return find<Control>(name, page());
    }

    /// What a screen reader calls it.
    static QString nameOf(QWidget* widget);

    /// Where a click on it takes effect.
    static QPoint clickableSpot(const QWidget* widget);
    static void click(const QWidget* widget);
    /// Clicks until `done`, each time where `position` then is: a window that has just
    /// been shown may still lay itself out.
    static void clickUntil(
        const std::function<QPoint()>& position, const std::function<bool()>& done);

    /// Whether what is typed next goes into this widget.
    bool hasKeyboard(const QWidget* widget) const;
    /// Clicks into it, and waits for the keyboard.
    void focus(const QWidget* widget);
    /// Types over all of the text that the keyboard is in.
    static void replaceText(const QString& text);

    /// What stands last on the line of a control: the value that the application has.
    static QString valueBeside(const QWidget* control);

    /// The popup that is on the screen, of that edit or of any.
    static const QWidget* hint(const QWidget* edit = nullptr);
    static const QWidget* history(const QWidget* edit = nullptr);

    /// What the application caught last in the running test function.
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

/// VRN_TEST for the test of a page.
#define VRN_GALLERY_TEST(TestClass) VRN_TEST_IN(TestClass, gallery::GalleryApplication)
