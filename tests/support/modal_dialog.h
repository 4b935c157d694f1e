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
/// and the dialog is then rejected.
template <typename Dialog>
class WhenOpen : public QObject
{
public:
    explicit WhenOpen(std::function<void(Dialog&)> act)
        : m_act(std::move(act))
    {
        connect(&m_timer, &QTimer::timeout, this, &WhenOpen::look);
        m_timer.start(5);
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
        ++count;
        m_act(*dialog);
        if (dialog && dialog->isVisible()) {
            QTest::qFail("the dialog stayed open", __FILE__, __LINE__);
            dialog->QDialog::reject();
        }
        m_timer.start();
    }

    std::function<void(Dialog&)> m_act;
    QTimer m_timer;
};

} // namespace vrn::test
