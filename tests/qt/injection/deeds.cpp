#include "injection/deeds.h"

#include "injection/actions.h"
#include "injection/scene.h"
#include "injection/user.h"

#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QStyle>
#include <QTimer>

#include <stdexcept>

namespace vrn::test::injection {
namespace {

// Does `inIt` in the event loop that is about to run, and then `end`, when the loop has
// come round: what `inIt` has left to it is done by then.
template <typename Loop>
void onceInside(Loop& loop, const std::function<void()>& inIt, void (Loop::*end)())
{
    const auto later = [&loop](auto step) {
        QMetaObject::invokeMethod(&loop, step, Qt::QueuedConnection);
    };
    QTimer::singleShot(0, &loop, [=, &loop] {
        inIt();
        later([=, &loop] { later([=, &loop] { (loop.*end)(); }); });
    });
}

// A nested event loop, and what happens in it.
void runLoop(const std::function<void()>& inIt = [] {})
{
    QEventLoop loop;
    onceInside(loop, inIt, &QEventLoop::quit);
    loop.exec();
}

// A modal dialog of nobody, which takes the focus.
void runDialog(const std::function<void()>& inIt = [] {})
{
    QDialog dialog;
    onceInside(dialog, inIt, &QDialog::reject);
    dialog.exec();
}

struct Victim
{
    QByteArray name;
    QObject* (*of)(Scene&);
};

const Victim victims[] = {
    {"the control", [](Scene& s) { return s.control.data(); }},
    {"the parent", [](Scene& s) -> QObject* { return s.page; }},
    {"the window", [](Scene& s) -> QObject* { return s.window; }},
};

struct End
{
    QByteArray before;
    QByteArray after;
    void (*of)(const QPointer<QObject>& victim);
};

const End ends[] = {
    {"delete ", "", [](const auto& victim) { delete victim; }},
    {"deleteLater of ", ", then a dialog",
        [](const auto& victim) {
            victim->deleteLater();
            runLoop();
        }},
    {"delete ", ", then a dialog",
        [](const auto& victim) {
            delete victim;
            runLoop();
        }},
    {"a dialog with delete of ", "", [](const auto& victim) { runLoop([&] { delete victim; }); }},
    {"a dialog with deleteLater of ", "",
        [](const auto& victim) {
            runLoop([&] {
                if (victim)
                    victim->deleteLater();
            });
        }},
};

bool putInto(QWidget* child, QWidget* parent)
{
    if (!child)
        return false;
    child->setParent(parent);
    return true;
}

std::vector<Deed> rows()
{
    std::vector<Deed> rows;
    for (const Victim& victim : victims) {
        for (const End& end : ends) {
            rows.push_back({end.before + victim.name + end.after, [&](Scene& s) {
                                const QPointer<QObject> object(victim.of(s));
                                const bool exists = object != nullptr;
                                if (exists)
                                    end.of(object);
                                return exists;
                            }});
        }
    }
    const std::vector<Deed> others = {
        // clang-format off
        {"delete all children of the parent", [](Scene& s) { if (s.page) qDeleteAll(s.page->children()); return true; }},
        {"a dialog", [](Scene&) { runDialog(); return true; }},
        {"a dialog with delete of the parent, modal", [](Scene& s) { runDialog([&] { delete s.page; }); return true; }},

        {"reparent the control to none", [](Scene& s) { return putInto(s.widget(), nullptr); }},
        {"reparent the control to another window", [](Scene& s) { return putInto(s.widget(), s.elsewhere); }},
        {"reparent the parent to another window", [](Scene& s) { return putInto(s.page, s.elsewhere); }},

        {"a style sheet for the application", [](Scene&) { qApp->setStyleSheet("QWidget { color: #123; }"); return true; }},
        {"another style for the application", [](Scene&) { QApplication::setStyle("windows"); return true; }},
        {"a style sheet for the parent", [](Scene& s) { if (s.page) s.page->setStyleSheet("* { color: #123; }"); return true; }},
        {"another language", [](Scene& s) {
            QEvent event(QEvent::LanguageChange);
            if (s.window)
                QCoreApplication::sendEvent(s.window, &event);
            return true; }},

        {"throw an exception", [](Scene&) -> bool { throw std::runtime_error("from foreign code"); }},
        {"throw a number", [](Scene&) -> bool { throw 42; }},

        {"hide the window", [](Scene& s) { if (s.window) s.window->hide(); return true; }},
        {"go to another field", [](Scene& s) { if (s.other) s.other->setFocus(); return true; }},
        // clang-format on
    };
    rows.insert(rows.end(), others.begin(), others.end());
    for (int i = 0; i < int(actions().size()); ++i) {
        const Action& action = actions()[std::size_t(i)];
        if (action.who == Action::Program && !action.beforeLoop) {
            const auto call = [&action](Scene& s) {
                const bool applies = action.applies(s);
                if (applies)
                    action.act(s);
                return applies;
            };
            rows.push_back({"call " + action.name, call, true, i});
        }
    }
    return rows;
}

} // namespace

const std::vector<Deed>& deeds()
{
    static const std::vector<Deed> all = rows();
    return all;
}

} // namespace vrn::test::injection
