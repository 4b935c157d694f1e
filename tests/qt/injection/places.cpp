#include "injection/places.h"

#include "injection/scene.h"

#include <QApplication>
#include <QEvent>
#include <QMetaMethod>

#include <algorithm>
#include <cstring>
#include <map>

namespace vrn::test::injection {
namespace {

// Functions that an application hands to a control or overrides.
const char* const callbacks[] = {
    "validate",
    "validateWhenFinished",
    "reformat",
    "the edit hint",
    "the conversion to display",
    "the conversion from display",
    "vetoValidation",
    "onValidated",
    "onItemActivated",
    "onSelected",
    "the button's function",
    "the inner button's function",
    "the end of a button's function",
    "the history storage's get",
    "the history storage's add",
    "the saver",
    "the loader",
    "the equality function",
    "the order function",
    "the layouter's onCreate",
    "the layouter's onAdd",
    "the layouter's onFinish",
    "a hook on valueChanged",
    "the creator of a kind",
    "the callback",
    "while its dialog is open",
    "the getter",
    "the setter",
    "the check of a field",
};

struct Signal
{
    const char* place;
    /// As QMetaObject has it.
    const char* signature;
    /// Of the control, or of all that is on the page besides.
    bool isInner;
};

const Signal signalRows[] = {
    {"valueChanged", "valueChanged()", false},
    {"activated", "activated(int)", false},
    {"clicked", "clicked(bool)", false},
    {"toggled", "toggled(bool)", false},
    {"edited", "edited(vrn::qt::PropertyReceipt)", false},
    {"refused", "refused(QString,QString)", false},
    {"pendingChanged", "pendingChanged(bool)", false},
    {"inner valueChanged", "valueChanged()", true},
    {"inner textEdited", "textEdited(QString)", true},
    {"inner textChanged", "textChanged(QString)", true},
    {"inner editingFinished", "editingFinished()", true},
    {"inner returnPressed", "returnPressed()", true},
    {"inner selectionChanged", "selectionChanged()", true},
    {"inner cursorPositionChanged", "cursorPositionChanged(int,int)", true},
    {"inner stateChanged", "stateChanged(int)", true},
    {"inner toggled", "toggled(bool)", true},
    {"inner clicked", "clicked(bool)", true},
    {"inner pressed", "pressed()", true},
    {"inner released", "released()", true},
    {"inner activated", "activated(int)", true},
    {"inner textActivated", "textActivated(QString)", true},
    {"inner currentIndexChanged", "currentIndexChanged(int)", true},
    {"inner editTextChanged", "editTextChanged(QString)", true},
};

const char* const focusPlace = "the application's focusChanged";

struct Filter
{
    const char* place;
    enum Watched
    {
        Control,
        Inner,
        Window,
    } watched;
    QEvent::Type type;
};

const Filter filterRows[] = {
    {"an event filter of the control, focus in", Filter::Control, QEvent::FocusIn},
    {"an event filter of the control, style", Filter::Control, QEvent::StyleChange},
    {"an event filter of the control, enabled", Filter::Control, QEvent::EnabledChange},
    {"an event filter of the control, hide", Filter::Control, QEvent::Hide},
    {"an event filter of the control, parent", Filter::Control, QEvent::ParentChange},
    {"an event filter of an inner part, key", Filter::Inner, QEvent::KeyPress},
    {"an event filter of an inner part, press", Filter::Inner, QEvent::MouseButtonPress},
    {"an event filter of an inner part, release", Filter::Inner, QEvent::MouseButtonRelease},
    {"an event filter of an inner part, wheel", Filter::Inner, QEvent::Wheel},
    {"an event filter of an inner part, focus in", Filter::Inner, QEvent::FocusIn},
    {"an event filter of an inner part, focus out", Filter::Inner, QEvent::FocusOut},
    {"an event filter of an inner part, style", Filter::Inner, QEvent::StyleChange},
    {"an event filter of an inner part, enabled", Filter::Inner, QEvent::EnabledChange},
    {"an event filter of an inner part, hide", Filter::Inner, QEvent::Hide},
    {"an event filter of an inner part, show", Filter::Inner, QEvent::Show},
    {"an event filter of the window, key", Filter::Window, QEvent::KeyPress},
    {"an event filter of the window, deactivate", Filter::Window, QEvent::WindowDeactivate},
    {"an event filter of the window, hide", Filter::Window, QEvent::Hide},
};

// Slots and event filters of an application: whatever they hear of is a visit.
class Listener : public QObject
{
public:
    explicit Listener(const char* place)
        : m_place(place)
    {}

    void connectTo(QObject* sender, const QMetaMethod& signal)
    {
        scene().offer(m_place);
        // By the index of the method behind QObject's own: qt_metacall takes it.
        QMetaObject::connect(
            sender, signal.methodIndex(), this, QObject::staticMetaObject.methodCount());
    }

    void filter(QObject* watched, QEvent::Type type)
    {
        m_type = type;
        scene().offer(m_place);
        watched->installEventFilter(this);
    }

    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override
    {
        id = QObject::qt_metacall(call, id, arguments);
        if (id == 0 && call == QMetaObject::InvokeMetaMethod) {
            scene().visit(m_place);
            return -1;
        }
        return id;
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != m_type)
            return false;
        const QPointer<QObject> alive(watched);
        scene().visit(m_place);
        return !alive; // An event must not go on to what has been destroyed.
    }

private:
    const char* m_place;
    QEvent::Type m_type = QEvent::None;
};

// As many as there are places; they outlive every scene.
Listener& listenerAt(const char* place)
{
    static std::map<int, Listener*> listeners;
    Listener*& listener = listeners[placeOf(place)];
    if (!listener)
        listener = new Listener(place);
    return *listener;
}

std::vector<const char*> allNames()
{
    std::vector<const char*> names(std::begin(callbacks), std::end(callbacks));
    for (const Signal& row : signalRows)
        names.push_back(row.place);
    names.push_back(focusPlace);
    for (const Filter& row : filterRows)
        names.push_back(row.place);
    if (names.size() > placeLimit)
        qFatal("more than %d places", placeLimit);
    return names;
}

} // namespace

const std::vector<const char*>& placeNames()
{
    static const std::vector<const char*> names = allNames();
    return names;
}

int placeOf(const char* name)
{
    const auto& names = placeNames();
    const auto it = std::find_if(names.begin(), names.end(),
        [name](const char* candidate) { return std::strcmp(candidate, name) == 0; });
    if (it == names.end())
        qFatal("no place \"%s\"", name);
    return int(it - names.begin());
}

void listen(Scene& scene)
{
    QList<QObject*> inner;
    if (scene.page) {
        for (QObject* part : scene.page->findChildren<QWidget*>()) {
            if (part != scene.control)
                inner.append(part);
        }
    }
    const auto connectTo = [](const Signal& row, QObject* sender) {
        const int index = sender->metaObject()->indexOfSignal(row.signature);
        if (index >= 0)
            listenerAt(row.place).connectTo(sender, sender->metaObject()->method(index));
    };
    for (const Signal& row : signalRows) {
        if (!row.isInner && scene.control)
            connectTo(row, scene.control);
        for (QObject* part : row.isInner ? inner : QList<QObject*>())
            connectTo(row, part);
    }
    const int focusChanged = qApp->metaObject()->indexOfSignal("focusChanged(QWidget*,QWidget*)");
    listenerAt(focusPlace).connectTo(qApp, qApp->metaObject()->method(focusChanged));

    for (const Filter& row : filterRows) {
        Listener& listener = listenerAt(row.place);
        if (row.watched == Filter::Window && scene.window)
            listener.filter(scene.window, row.type);
        if (row.watched == Filter::Control && scene.control)
            listener.filter(scene.control, row.type);
        for (QObject* part : row.watched == Filter::Inner ? inner : QList<QObject*>())
            listener.filter(part, row.type);
    }
}

} // namespace vrn::test::injection
