#pragma once

#include <vrn/qt/value_history.h>

#include <boost/make_shared.hpp>

#include <QFocusEvent>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>

namespace vrn::test {

/// Whether the window system has been asked to show the window of `widget`.
inline bool isOnScreen(const QWidget* widget)
{
    return widget->windowHandle() && widget->windowHandle()->isVisible();
}

/// Sends a focus event without moving the focus.
inline void sendFocus(
    QObject* receiver, QEvent::Type type, Qt::FocusReason reason = Qt::TabFocusReason)
{
    QFocusEvent event(type, reason);
    QCoreApplication::sendEvent(receiver, &event);
}

inline boost::shared_ptr<ValueHistory> historyOf(const QStringList& values)
{
    const auto history = boost::make_shared<ValueHistory>(
        L"key", boost::make_shared<ValueHistoryMemoryStorage>());
    for (const QString& value : values)
        history->add(value.toStdWString());
    return history;
}

/// Checks that the layout of `popup` holds `inner` and nothing else.
inline void verifyHoldsAlone(const QWidget* popup, const QWidget* inner)
{
    QVERIFY(inner);
    auto* layout = qobject_cast<QVBoxLayout*>(popup->layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(layout->sizeConstraint(), QLayout::SetNoConstraint);
    QCOMPARE(layout->count(), 1);
    QCOMPARE(layout->itemAt(0)->widget(), inner);
    QCOMPARE(inner->sizePolicy(), QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed));
}

/// A window with a plain field and below it one of the type `Owner`, which owns popups. The
/// offscreen platform makes any window active that is shown, popups too, when events are
/// processed; tests look before that.
template <typename Owner>
struct OwnerForm
{
    explicit OwnerForm(Owner* field = new Owner)
        : owner(field)
        , other(new QLineEdit)
    {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(other);
        layout->addWidget(owner);
    }

    bool showActive()
    {
        other->setFocus();
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }

    QWidget window;
    Owner* owner;
    QLineEdit* other;
};

} // namespace vrn::test
