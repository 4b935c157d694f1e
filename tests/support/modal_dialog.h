#pragma once

#include <QApplication>
#include <QDialog>
#include <QObject>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <functional>
#include <utility>

namespace vrn::test {

/// While it lives, acts in place of the user on each modal dialog of the class
/// `Dialog` that opens. The test fails if the dialog is still there afterwards,
/// and the dialog is then rejected. An act that does not end, say because a
/// second dialog has opened meanwhile, ends the program.
template <typename Dialog>
class WhenOpen : public QObject
{
public:
    explicit WhenOpen(std::function<void(Dialog&)> act)
        : m_act(std::move(act))
    {
        connect(&m_timer, &QTimer::timeout, this, &WhenOpen::look);
        m_timer.start(5);
        m_patience.setSingleShot(true);
        m_patience.setInterval(20000);
        connect(&m_patience, &QTimer::timeout, this, &WhenOpen::giveUp);
    }

    /// How many there were.
    int count = 0;

private:
    void look()
    {
        const QPointer<Dialog> dialog(qobject_cast<Dialog*>(QApplication::activeModalWidget()));
        if (!dialog)
            return;
        m_timer.stop(); // The act may run an event loop.
        m_patience.start();
        ++count;
        m_act(*dialog);
        m_patience.stop();
        if (dialog && dialog->isVisible()) {
            QTest::qFail("the dialog stayed open", __FILE__, __LINE__);
            dialog->QDialog::reject();
        }
        m_timer.start();
    }

    static void giveUp()
    {
        const QWidget* inTheWay = QApplication::activeModalWidget();
        qFatal("waiting for %s", inTheWay ? inTheWay->metaObject()->className() : "nothing");
    }

    std::function<void(Dialog&)> m_act;
    QTimer m_timer;
    QTimer m_patience;
};

} // namespace vrn::test
