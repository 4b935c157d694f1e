#include "beams/beam_editor.h"

#include "support/test_main.h"
#include "support/test_object.h"
#include "support/x11_input.h"

#include <QLineEdit>
#include <QListWidget>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <cstring>
#include <functional>

using namespace beams;
using namespace vrn::test;

namespace {

constexpr int beamCount = 1000;

/// A beam that has the value already is not in its step.
const QStringList steps = {"Length of 1000 beams", "Length of 800 beams", "Depth of 1000 beams",
    "Bolts of 1000 beams", "Support of 666 beams", "Load of 1000 beams"};

template <typename V>
std::function<V(int)> always(V value)
{
    return [=](int) { return value; };
}

} // namespace

/// A whole edit of 1,000 beams without the mouse.
class TestBeamsX11 : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void editsByKeyboardAlone();

private:
    void selectAll();
    void editRelatively();
    void takeAnEntry();
    void refuseAndTakeBack();
    void tabThrough();
    void filter();
    void undoAndRedo();

    void tabTo(const QWidget* widget, const QString& key = "Tab");
    void enter(const QString& text, const QString& end);
    QLineEdit* line(const std::string& key) const
    {
        return m_page->editor(key)->findChild<QLineEdit*>();
    }
    QListWidget* list(const std::string& key) const { return line(key)->findChild<QListWidget*>(); }
    bool isListed(const std::string& key) const
    {
        return list(key) && list(key)->isVisible() && x11::isViewable(list(key)->window()->winId());
    }
    QString hint(const std::string& key) const
    {
        const auto* label = line(key)->findChild<QLabel*>();
        return label && label->isVisible() ? label->text() : QString();
    }
    bool isRed(const std::string& key) const
    {
        return line(key)->palette().color(QPalette::Text) == QColor(230, 20, 20);
    }
    QAction* action(const QString& name) const
    {
        for (QAction* each : m_editor->findChildren<QAction*>()) {
            if (each->text().startsWith(name))
                return each;
        }
        qFatal("there is no such action");
        return nullptr;
    }
    QString toUndo() const { return action("Undo")->text(); }

    /// Bit for bit.
    template <typename V>
    void verify(const std::string& key, const std::function<V(int)>& expected) const
    {
        for (int i = 0; i < beamCount; ++i) {
            const PropertySelection beam(m_page->model(), {ObjectId(std::uint64_t(i))});
            const boost::any read = beam.read({key}).front().value;
            const auto value = boost::any_cast<V>(read);
            const V wanted = expected(i);
            QVERIFY2(std::memcmp(&value, &wanted, sizeof(V)) == 0,
                qPrintable(QString("%1 of beam %2").arg(QString::fromStdString(key)).arg(i)));
        }
    }

    void verifyOriginal() const
    {
        verify<double>("length", [](int i) { return 3.0 + i % 5 / 7.0; });
        verify<double>("depth", always(0.3));
        verify<int>("bolts", always(1));
        verify<int>("support", [](int i) { return i % 3; });
        verify<double>("load", always(12.5));
    }
    void verifyEdited() const
    {
        verify<double>("length", always(3.0 + 1 / 7.0 + 0.005));
        verify<double>("depth", always(0.45));
        verify<int>("bolts", always(5));
        verify<int>("support", always(0));
        verify<double>("load", always(-2.5));
    }

    std::unique_ptr<BeamEditor> m_editor;
    PropertyPage* m_page = nullptr;
};

/// Ends the test if the step fails.
#define THEN(step)                                                                                 \
    step;                                                                                          \
    if (QTest::currentTestFailed())                                                                \
    return

void TestBeamsX11::tabTo(const QWidget* widget, const QString& key)
{
    for (int i = 0; i < 30 && !widget->hasFocus(); ++i) {
        const QWidget* const before = QApplication::focusWidget();
        x11::press({key});
        QTRY_VERIFY(QApplication::focusWidget() != before);
    }
    QVERIFY(widget->hasFocus());
}

/// In place of what stands in the field that has the focus.
void TestBeamsX11::enter(const QString& text, const QString& end)
{
    auto* edit = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    QVERIFY(edit);
    x11::press({"ctrl+a"});
    QTRY_COMPARE(edit->selectedText(), edit->text());
    x11::type(text);
    QTRY_COMPARE(edit->text(), text);
    if (!end.isEmpty())
        x11::press({end});
}

void TestBeamsX11::selectAll()
{
    THEN(tabTo(m_editor->findChild<QListView*>()));
    x11::press({"ctrl+a"});
    QTRY_COMPARE(int(m_page->selection().size()), beamCount);
    QTRY_COMPARE(m_page->row("length").state, PropertyState::Varies);
}

void TestBeamsX11::editRelatively()
{
    THEN(tabTo(line("length")));
    QTRY_VERIFY(isListed("length"));
    QCOMPARE(hint("length"), QString("1000 beams: 3.000 m to 3.571 m"));
    QCOMPARE(list("length")->count(), 5);
    THEN(enter("+= 5 mm", QString()));
    QTRY_COMPARE(hint("length"), QString("1000 beams: 3.005 m to 3.576 m"));
    x11::press({"Return"});
    QTRY_COMPARE(toUndo(), "Undo " + steps[0]);
    QTRY_VERIFY(!m_page->isPending());
    verify<double>("length", [](int i) { return 3.0 + i % 5 / 7.0 + 0.005; });
}

void TestBeamsX11::takeAnEntry()
{
    THEN(tabTo(line("depth")));
    THEN(tabTo(line("length"), "shift+Tab"));
    QTRY_VERIFY(isListed("length"));
    x11::press({"Down", "Down", "Return"});
    QTRY_COMPARE(m_page->row("length").state, PropertyState::Common);
    QCOMPARE(m_page->row("length").text, line("length")->text());
    QVERIFY(!isListed("length"));
    QCOMPARE(toUndo(), "Undo " + steps[1]);
    verify<double>("length", always(3.0 + 1 / 7.0 + 0.005));
}

void TestBeamsX11::refuseAndTakeBack()
{
    THEN(enter("50 m", "Return"));
    QTRY_COMPARE(m_page->row("length").edit, EditState::Refused);
    QVERIFY(isRed("length"));
    QTRY_COMPARE(hint("length"), QString("It must be between 0.100 m and 40.000 m."));
    THEN(tabTo(line("depth")));
    QCOMPARE(line("length")->text(), QString("50 m"));
    QVERIFY(isRed("length"));
    THEN(tabTo(line("length"), "shift+Tab"));
    // The first drops the list of completions, if it is there.
    for (int i = 0; i < 2 && m_page->isPending(); ++i) {
        x11::press({"Escape"});
        QTRY_VERIFY(!isListed("length"));
    }
    QTRY_VERIFY(!m_page->isPending());
    QVERIFY(!isRed("length"));
    QCOMPARE(m_page->row("length").text, QString("3.148 m"));
}

void TestBeamsX11::tabThrough()
{
    auto* head = m_page->findChild<QToolButton*>("section.statics");
    auto* support = static_cast<QComboBox*>(m_page->editor("support"));
    x11::press({"Tab"});
    QTRY_VERIFY(line("depth")->hasFocus());
    THEN(enter("0.45", "Tab"));
    QTRY_VERIFY(line("bolts")->hasFocus());
    QTRY_COMPARE(toUndo(), "Undo " + steps[2]);
    THEN(enter("5", "Tab"));
    QTRY_VERIFY(head->hasFocus());
    QTRY_COMPARE(toUndo(), "Undo " + steps[3]);
    x11::press({"Left"});
    QTRY_VERIFY(!support->isVisible());
    x11::press({"Right"});
    QTRY_VERIFY(support->isVisible());
    x11::press({"Tab"});
    QTRY_VERIFY(support->hasFocus());
    x11::press({"Down"});
    QTRY_COMPARE(toUndo(), "Undo " + steps[4]);
    x11::press({"Tab"});
    QTRY_VERIFY(line("load")->hasFocus());
    THEN(enter("-2.5 kN/m", "Return"));
    QTRY_COMPARE(toUndo(), "Undo " + steps[5]);
}

void TestBeamsX11::filter()
{
    auto* filter = m_page->findChild<QLineEdit*>("filter");
    const auto* depth = m_page->findChild<QLabel*>("depth.caption");
    x11::press({"ctrl+f"});
    QTRY_VERIFY(filter->hasFocus());
    x11::type("len");
    QTRY_VERIFY(!depth->isVisible());
    QVERIFY(line("length")->isVisible());
    x11::press({"Down"});
    QTRY_VERIFY(line("length")->hasFocus());
    x11::press({"ctrl+f"});
    QTRY_VERIFY(filter->hasFocus());
    x11::press({"Escape"});
    QTRY_VERIFY(depth->isVisible());
}

// The field has nothing to undo itself.
void TestBeamsX11::undoAndRedo()
{
    THEN(verifyEdited());
    THEN(tabTo(line("length")));
    for (int done = int(steps.size()); done > 0; --done) {
        QTRY_COMPARE(toUndo(), "Undo " + steps[done - 1]);
        x11::press({"ctrl+z"});
        QTRY_COMPARE(action("Redo")->text(), "Redo " + steps[done - 1]);
    }
    QVERIFY(!action("Undo")->isEnabled());
    THEN(verifyOriginal());
    QTRY_COMPARE(m_page->row("length").state, PropertyState::Varies);
    for (const QString& step : steps) {
        QCOMPARE(action("Redo")->text(), "Redo " + step);
        x11::press({"ctrl+shift+z"});
        QTRY_COMPARE(toUndo(), "Undo " + step);
    }
    QVERIFY(!action("Redo")->isEnabled());
    verifyEdited();
}

void TestBeamsX11::editsByKeyboardAlone()
{
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    QSettings::setDefaultFormat(QSettings::IniFormat);
    m_editor = std::make_unique<BeamEditor>(beamCount);
    m_page = m_editor->findChild<PropertyPage*>();
    m_editor->resize(1100, 800);
    m_editor->show();
    QVERIFY(QTest::qWaitForWindowActive(m_editor.get()));

    THEN(selectAll());
    THEN(editRelatively());
    THEN(takeAnEntry());
    THEN(refuseAndTakeBack());
    THEN(tabThrough());
    THEN(filter());
    THEN(undoAndRedo());
    m_editor.reset();
}

VRN_TEST(TestBeamsX11)
#include "tst_beams_x11.moc"
