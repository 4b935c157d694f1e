#include "gallery_page_test.h"

#include <QAccessible>
#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QStackedWidget>

#include <algorithm>

using namespace vrn::test;

namespace {

const QWidget* popupOnScreen(const QWidget* edit, const char* className)
{
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if ((!edit || window->parentWidget() == edit) && window->inherits(className)
            && window->isVisible() && !window->testAttribute(Qt::WA_DontShowOnScreen))
            return window;
    }
    return nullptr;
}

} // namespace

GalleryPageTest::GalleryPageTest(const char* page)
    : m_pageName(page)
{}

void GalleryPageTest::init()
{
    TestObject::init();
    m_lastException.clear();
    connect(qobject_cast<gallery::GalleryApplication*>(qApp),
        &gallery::GalleryApplication::exceptionCaught, this,
        [this](const QString& message) { m_lastException = message; });
    openWindow();
}

void GalleryPageTest::cleanup()
{
    closeWindow();
    qApp->disconnect(this);
    TestObject::cleanup();
}

void GalleryPageTest::openWindow()
{
    m_window = std::make_unique<gallery::GalleryWindow>();
    QVERIFY(m_window->showPage(m_pageName));
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    // It moves once more when the window manager adds the frame.
    QTRY_VERIFY(m_window->frameGeometry().top() < m_window->geometry().top());
}

QWidget& GalleryPageTest::page() const
{
    return *m_window->findChild<QStackedWidget*>()->currentWidget();
}

QString GalleryPageTest::nameOf(QWidget* widget)
{
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}

bool GalleryPageTest::isCalled(QWidget* control, const QString& name)
{
    // Qt gives a list the name of the entry that it shows.
    const auto has = [&name](QWidget* part) {
        return part->accessibleName() == name || nameOf(part) == name;
    };
    const auto parts = control->findChildren<QWidget*>();
    return has(control) || std::any_of(parts.begin(), parts.end(), has);
}

QPoint GalleryPageTest::clickableSpot(const QWidget* widget)
{
    // These take clicks only on their sign and their text.
    const bool hasSign = qobject_cast<const QCheckBox*>(widget)
        || qobject_cast<const QRadioButton*>(widget);
    const QPoint center = widget->rect().center();
    return widget->mapToGlobal(hasSign ? QPoint(8, center.y()) : center);
}

void GalleryPageTest::click(const QWidget* widget)
{
    x11::click(clickableSpot(widget));
}

void GalleryPageTest::clickUntil(
    const std::function<QPoint()>& position, const std::function<bool()>& done)
{
    for (int attempt = 0; attempt < 5 && !done(); ++attempt) {
        x11::click(position());
        (void)QTest::qWaitFor(done, 1000);
    }
    QVERIFY(done());
}

bool GalleryPageTest::hasKeyboard(const QWidget* widget) const
{
    return widget->hasFocus() && x11::activeWindow() == m_window->winId();
}

void GalleryPageTest::focus(const QWidget* widget)
{
    clickUntil(
        [widget] { return clickableSpot(widget); }, [this, widget] { return hasKeyboard(widget); });
}

void GalleryPageTest::replaceText(const QString& text)
{
    x11::press({"ctrl+a"});
    x11::type(text);
}

QString GalleryPageTest::valueBeside(const QWidget* control)
{
    const QLabel* last = nullptr;
    const auto labels = control->parentWidget()->findChildren<QLabel*>(
        QString(), Qt::FindDirectChildrenOnly);
    for (const QLabel* label : labels) {
        const bool onTheLine = qAbs(label->geometry().center().y()
                                   - control->geometry().center().y())
            < 5;
        if (onTheLine && (!last || label->x() > last->x()))
            last = label;
    }
    return last ? last->text() : QString();
}

const QWidget* GalleryPageTest::hint(const QWidget* edit)
{
    return popupOnScreen(edit, "vrn::qt::detail::EditHintPopup");
}

const QWidget* GalleryPageTest::history(const QWidget* edit)
{
    return popupOnScreen(edit, "vrn::qt::detail::HistoryPopup");
}
