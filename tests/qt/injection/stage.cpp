#include "injection/stage.h"

#include "injection/actions.h"
#include "injection/controls.h"
#include "injection/deeds.h"
#include "injection/outcome.h"
#include "injection/places.h"
#include "injection/scene.h"
#include "injection/user.h"

#include <vrn/assert/smart_assert.h>
#include <vrn/qt/multi_edit_check_box.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <cstring>
#include <tuple>

namespace vrn::test::injection {
namespace {

QByteArrayList& complaints()
{
    static QByteArrayList complaints;
    return complaints;
}

void takeMessage(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    // The platform without a screen has no windows to raise and to size.
    const bool isOfPlatform = text.startsWith("This plugin does not support");
    if (type != QtDebugMsg && type != QtInfoMsg && !isOfPlatform)
        complaints().append("Qt warns: " + text.toUtf8());
}

// The user, who closes what a control opens, and an application that does something
// meanwhile.
class DialogUser : public QTimer
{
public:
    DialogUser()
    {
        connect(this, &QTimer::timeout, this, &DialogUser::look);
        start(2);
    }

private:
    void look()
    {
        const QPointer<QWidget> dialog(QApplication::activeModalWidget());
        const bool isOfControl = qobject_cast<QFileDialog*>(dialog)
            || qobject_cast<QMessageBox*>(dialog);
        if (!isOfControl || m_isAtIt)
            return;
        m_isAtIt = true;
        // Whatever else happens, a user closes it.
        const auto close = qScopeGuard([&] {
            m_isAtIt = false;
            if (dialog)
                static_cast<QDialog*>(dialog.data())->reject();
        });
        scene().visit("while its dialog is open");
    }

    bool m_isAtIt = false;
};

void build(Scene& s)
{
    s.window = new QWidget;
    s.page = new QWidget;
    s.other = new QLineEdit;
    auto* rows = new QVBoxLayout(s.window);
    rows->addWidget(s.page);
    rows->addWidget(s.other);
    s.elsewhere = new QWidget;
    auto* column = new QVBoxLayout(s.elsewhere);
    column->addWidget(new QLineEdit);
}

void show(Scene& s)
{
    s.other->setFocus();
    activate(s.window);
    s.enter();
    settle();
    press(Qt::Key_4); // The user is at it, if it is a field.
}

// Runs a step; what it throws is the application's matter.
template <typename Step>
void caught(Step step)
{
    try {
        step();
    } catch (...) {}
}

void destroyDeferred()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// A multi-edit control that has been through anything reads a selection as ever.
void checkReading(Scene& s, vrn::qt::MultiEditControlBase& control)
{
    const auto expect = [&](bool ok, const char* what) {
        if (!ok)
            complaints().append(what);
    };
    control.getCurrentValue();
    control.reset();
    control.readValue(s.values[0]);
    expect(!control.dataVaries(), "varies after one value");
    control.readValue(s.values[1]);
    expect(control.dataVaries(), "does not vary after two values");
    expect(control.getCurrentValue().empty(), "has a value while it varies");
    control.setValue(s.values[0]);
    expect(!control.dataVaries(), "varies after setValue");
    expect(!control.getCurrentValue().empty(), "has no value after setValue");
}

void checkSurvivor(Scene& s)
{
    QList<QObject*> parts;
    if (s.page)
        parts = s.page->findChildren<QObject*>();
    parts += s.control->findChildren<QObject*>();
    parts += s.control;
    for (const QObject* part : parts) {
        if (part->signalsBlocked())
            complaints().append(
                QByteArray("signals are blocked: ") + part->metaObject()->className());
    }
    const bool hasSignal = s.control->metaObject()->indexOfSignal("valueChanged()") >= 0;
    if (s.speak && hasSignal) {
        const QSignalSpy spy(s.control, SIGNAL(valueChanged()));
        if (s.speak() && spy.isEmpty())
            complaints().append("emits no valueChanged any more");
    }
    if (s.page) {
        for (auto* box : s.page->findChildren<vrn::qt::MultiEditCheckBox*>()) {
            const QSignalSpy spy(box, SIGNAL(valueChanged()));
            box->setValue(true);
            if (spy.isEmpty())
                complaints().append("a box emits no valueChanged any more");
        }
    }
    if (auto* control = dynamic_cast<vrn::qt::MultiEditControlBase*>(s.control.data()))
        checkReading(s, *control);
}

// A control that could not be made leaves nothing of itself.
void checkLeftovers(const QWidget& page)
{
    for (const QAbstractButton* part : page.findChildren<QAbstractButton*>())
        complaints().append(QByteArray("stays on the page: ") + part->metaObject()->className());
}

void tearDown(Scene& s)
{
    delete s.window;
    delete s.elsewhere;
    delete s.control;
    settle();
    destroyDeferred();
    s.belongings.clear();
}

} // namespace

Stage::Stage(const Cell& cell)
{
    m_messageHandler = qInstallMessageHandler(&takeMessage);
    m_assertHandler = vrn::smartassert::set_assert_handler([](const auto&) {});
    m_widgetsBefore = QApplication::allWidgets();
    const Action& action = actionOf(cell);
    Scene& s = scene();
    build(s);
    if (action.who == Action::Maker)
        return;
    controlOf(cell).make(s);
    show(s);
    listen(s);
    if (action.whileVaries)
        dynamic_cast<vrn::qt::MultiEditControlBase&>(*s.control).forceVaries();
}

Stage::~Stage()
{
    tearDown(scene());
    scene() = Scene();
    complaints().clear();
    vrn::smartassert::set_assert_handler(m_assertHandler);
    qInstallMessageHandler(m_messageHandler);
}

bool Stage::isCommon(const Cell& a, const Cell& b)
{
    const auto key = [](const Cell& cell) {
        const Action& action = actionOf(cell);
        return std::tuple(
            cell.control, action.who == Action::Maker, action.whileVaries, action.beforeLoop);
    };
    return key(a) == key(b);
}

void Stage::run(const Cell& cell, Outcome& outcome) const
{
    const DialogUser dialogUser;
    const Action& action = actionOf(cell);
    Scene& s = scene();
    std::function<bool()> deed;
    const Deed* row = cell.isRehearsal() ? nullptr : &deedOf(cell);
    if (row)
        deed = [row, &s] { return row->act(s); };
    s.arm(&outcome, cell.place, cell.occurrence, deed, row && row->repeats);
    caught([&] {
        if (action.who == Action::Maker)
            controlOf(cell).make(s);
        else
            action.act(s);
    });
    settle();
    destroyDeferred();
    s.disarm();

    if (action.who == Action::Maker && !s.control && s.page)
        checkLeftovers(*s.page);
    if (s.control) {
        try {
            checkSurvivor(s);
        } catch (const std::exception& error) {
            complaints().append(QByteArray("throws afterwards: ") + error.what());
        }
    }
    tearDown(s);
    for (QWidget* widget : QApplication::allWidgets()) {
        // Qt makes one for the desktop when it needs it.
        const bool isOurs = !m_widgetsBefore.contains(widget)
            && widget->windowType() != Qt::Desktop;
        if (isOurs)
            complaints().append(QByteArray("stays behind: ") + widget->metaObject()->className());
    }
    const QByteArray failure = complaints().join("; ").left(int(sizeof outcome.failure) - 1);
    std::memcpy(outcome.failure, failure.constData(), std::size_t(failure.size()) + 1);
    outcome.ended = true;
}

std::vector<Cell> warmUp()
{
    const auto previous = qInstallMessageHandler(&takeMessage);
    const auto handler = vrn::smartassert::set_assert_handler([](const auto&) {});
    std::vector<Cell> rehearsals;
    Scene& s = scene();
    for (Cell cell; cell.control < int(controls().size()); ++cell.control) {
        build(s);
        controlOf(cell).make(s);
        show(s);
        s.window->grab();
        for (cell.action = 0; cell.action < int(actions().size()); ++cell.action) {
            if (actionOf(cell).applies(s))
                rehearsals.push_back(cell);
        }
        tearDown(s);
        s = Scene();
    }
    vrn::smartassert::set_assert_handler(handler);
    qInstallMessageHandler(previous);
    complaints().clear();
    return rehearsals;
}

} // namespace vrn::test::injection
