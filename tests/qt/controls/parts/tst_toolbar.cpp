#include <vrn/companion_qt/box_layout.h>
#include <vrn/companion_qt/push_button.h>
#include <vrn/qt/push_buttons.h>
#include <vrn/qt/toolbar.h>

#include <QAccessible>
#include <QDialog>
#include <QIcon>
#include <QLabel>
#include <QPointer>
#include <QSignalSpy>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <functional>
#include <memory>

using namespace vrn::qt;
using vrn::test::columns;
using vrn::test::row;

namespace {

QPixmap redSquare()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    return pixmap;
}

using Fn = boost::function<void()>;
using Add = std::function<QPushButton*(Toolbar&, const Fn&)>;
using End = std::function<void(Toolbar*)>;

struct Row : Toolbar
{
    Row()
        : Toolbar(nullptr, ExpandHorizontal)
    {}
};

QPushButton* add(Toolbar& toolbar, const std::string& id, const Fn& fn = {}, unsigned mask = 1)
{
    return toolbar.addButtonWithText(id, "text", "", fn, mask);
}

// Whether the one button of that name is enabled.
bool isEnabled(const Toolbar& toolbar, const char* id)
{
    const auto* button = toolbar.findChild<QPushButton*>(id);
    return button && button->isEnabled();
}

// Counts the functions that have ended in `ended`, and then does `deed`.
Fn thatEndsWith(int& ended, const std::function<void()>& deed)
{
    const std::shared_ptr<const int> resource(new int, [&ended, deed](const int* held) {
        delete held;
        ++ended;
        deed();
    });
    return [resource] {};
}

} // namespace

Q_DECLARE_METATYPE(Add)
Q_DECLARE_METATYPE(End)
Q_DECLARE_METATYPE(ExpandDirection)

class TestToolbar : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theDirectionChoosesTheLayout_data()
    {
        columns<ExpandDirection, bool>("direction", "isRow");
        row("horizontal is a row", ExpandHorizontal, true);
        row("vertical is a column", ExpandVertical, false);
        row("a value past the last is a column", ExpandDirection(2), false);
        row("a value before the first is a column", ExpandDirection(-1), false);
    }
    void theDirectionChoosesTheLayout()
    {
        QFETCH(ExpandDirection, direction);
        QFETCH(bool, isRow);
        QWidget parent;
        Toolbar* toolbar = new Toolbar(&parent, direction);
        QCOMPARE(toolbar->parentWidget(), &parent);
        QCOMPARE(qobject_cast<VRN_QT_HBoxLayout*>(toolbar->layout()) != nullptr, isRow);
        QCOMPARE(qobject_cast<VRN_QT_VBoxLayout*>(toolbar->layout()) != nullptr, !isRow);
        QCOMPARE(toolbar->layout()->contentsMargins(), QMargins());
        QCOMPARE(toolbar->layout()->spacing(), 0);
        QCOMPARE(int(toolbar->layout()->alignment()), 0x21);

        toolbar->addSpacing(7);
        toolbar->addStretch(3);
        QCOMPARE(toolbar->layout()->count(), 2);
        QCOMPARE(toolbar->layout()->itemAt(0)->sizeHint(), isRow ? QSize(7, 0) : QSize(0, 7));
        QVERIFY(toolbar->layout()->itemAt(1)->spacerItem());
        QCOMPARE(qobject_cast<QBoxLayout*>(toolbar->layout())->stretch(1), 3);
    }

    void everyKindOfButtonIsRegistered_data()
    {
        columns<Add, QString, bool>("add", "text", "hasIcon");
        const QIcon icon = redSquare();
        const auto kind = [](const char* name, const Add& add, const QString& text, bool hasIcon) {
            row(name, add, text, hasIcon);
        };
        // clang-format off
        kind("addButton with an icon", [=](auto& t, auto& fn) { return t.addButton("größe", icon, "tip", fn, 2); }, {}, true);
        kind("addButton with a pixmap", [](auto& t, auto& fn) { return t.addButton("größe", redSquare(), "tip", fn, 2); }, {}, true);
        kind("addButtonWithIcon", [=](auto& t, auto& fn) { return t.addButtonWithIcon("größe", icon, "tip", fn, 2); }, {}, true);
        kind("addButtonWithIconAndText", [=](auto& t, auto& fn) { return t.addButtonWithIconAndText("größe", icon, "Red", "tip", fn, 2); }, "Red", true);
        kind("addButtonWithIconAndText, the text empty", [=](auto& t, auto& fn) { return t.addButtonWithIconAndText("größe", icon, "", "tip", fn, 2); }, {}, true);
        kind("addButtonWithText", [](auto& t, auto& fn) { return t.addButtonWithText("größe", "Red", "tip", fn, 2); }, "Red", false);
        // clang-format on
    }
    void everyKindOfButtonIsRegistered()
    {
        QFETCH(Add, add);
        QFETCH(QString, text);
        QFETCH(bool, hasIcon);
        Row toolbar;
        toolbar.addLabel("before", "");
        int calls = 0;
        QPushButton* button = add(toolbar, [&] { ++calls; });

        QCOMPARE(button->parentWidget(), &toolbar);
        QCOMPARE(toolbar.layout()->itemAt(1)->widget(), button);
        QCOMPARE(button->objectName(), QString::fromUtf8("größe"));
        QCOMPARE(button->text(), text);
        QCOMPARE(!button->icon().isNull(), hasIcon);
        if (text.isEmpty()) {
            const auto* square = createPushButtonWithIcon(&toolbar, redSquare(), "like");
            QCOMPARE(button->minimumSize(), square->minimumSize());
            QCOMPARE(button->maximumSize(), square->maximumSize());
            QVERIFY(!button->autoDefault());
        }
        QCOMPARE(button->toolTip(), QString("tip"));

        button->click();
        QCOMPARE(calls, 1);
        button->click();
        QCOMPARE(calls, 2);
        toolbar.setButtonsEnabled(false, 1);
        QVERIFY(button->isEnabled());
        toolbar.setButtonsEnabled(false, 2);
        QVERIFY(!button->isEnabled());
        const QPointer<QPushButton> alive(button);
        toolbar.clear();
        QVERIFY(!alive);
    }

    void oneCharacterMakesASquareButton_data()
    {
        columns<QString, bool>("text", "isSquare");
        row("A", "A", true);
        row("a narrow one", "i", true);
        row("outside ASCII", QString::fromUtf8("Ω"), true);
        row("AB", "AB", false);
        row("no text", "", false);
    }
    void oneCharacterMakesASquareButton()
    {
        QFETCH(QString, text);
        QFETCH(bool, isSquare);
        // In a dialog a button is a default button, which is higher, unless it is told otherwise.
        QDialog dialog;
        auto* toolbar = new Toolbar(&dialog, ExpandHorizontal);
        QPushButton plain(text, &dialog);
        plain.setAutoDefault(false);
        const int height = plain.sizeHint().height();

        const QPushButton* button = toolbar->addButtonWithText("x", text, "tip", {}, 0);
        QCOMPARE(button->minimumHeight(), height);
        QCOMPARE(button->maximumHeight(), height);
        QCOMPARE(button->minimumWidth(), isSquare ? height : 0);
        QCOMPARE(button->maximumWidth(), isSquare ? height : QWIDGETSIZE_MAX);
        QVERIFY(!button->autoDefault());
        QVERIFY(!qobject_cast<const VRN_QT_PushButton*>(button));
    }

    void theToolTipIsTheAccessibleNameOfAnIconAlone()
    {
        Row toolbar;
        QCOMPARE(accessibleName(toolbar.addButton("a", redSquare(), "Add", {}, 0)), QString("Add"));
        QCOMPARE(accessibleName(toolbar.addButtonWithText("b", "Copy", "Copies it.", {}, 0)),
            QString("Copy"));
    }

    void tabFollowsTheOrderOfTheButtons()
    {
        Row toolbar;
        auto* first = toolbar.addButton("a", redSquare(), "Add", {}, 0);
        auto* second = toolbar.addButtonWithText("b", "Copy", "", {}, 0);
        toolbar.show();
        QVERIFY(QTest::qWaitForWindowActive(&toolbar));
        first->setFocus();
        QTest::keyClick(first, Qt::Key_Tab);
        QVERIFY(second->hasFocus());
    }

    void aLabelHasTextAndToolTip_data()
    {
        columns<QString, QString>("text", "toolTip");
        row("both", "Layer", "The one in use");
        row("neither", QString(), QString());
    }
    void aLabelHasTextAndToolTip()
    {
        QFETCH(QString, text);
        QFETCH(QString, toolTip);
        Row toolbar;
        toolbar.addLabel(text, toolTip);
        const auto* label = qobject_cast<QLabel*>(toolbar.layout()->itemAt(0)->widget());
        QVERIFY(label);
        QCOMPARE(label->parentWidget(), &toolbar);
        QCOMPARE(label->text(), text);
        QCOMPARE(label->toolTip(), toolTip);
    }

    void aWidgetBelongsToTheToolbar()
    {
        Row toolbar;
        auto* widget = new QWidget;
        toolbar.addWidget(widget);
        QCOMPARE(widget->parentWidget(), &toolbar);
        QCOMPARE(toolbar.layout()->itemAt(0)->widget(), widget);
    }

    void aNullWidgetIsReported()
    {
        Row toolbar;
        expectAssert("widget");
        toolbar.addWidget(nullptr);
        QCOMPARE(toolbar.layout()->count(), 0);
    }

    void masksChooseTheButtons_data()
    {
        columns<unsigned, QString>("mask", "disabled");
        // Buttons are named after their mask.
        row("no bit reaches none", 0U, "");
        row("bit 0", 1U, "1 3 -1");
        row("bit 1", 2U, "2 3 -1");
        row("both", 3U, "1 2 3 -1");
        row("a bit of none but the one with all", 4U, "-1");
        row("the highest bit", 0x80000000U, "-1");
        row("all bits, and never the button of mask 0", 0xffffffffU, "1 2 3 -1");
    }
    void masksChooseTheButtons()
    {
        QFETCH(unsigned, mask);
        QFETCH(QString, disabled);
        Row toolbar;
        for (const int id : {0, 1, 2, 3, -1})
            add(toolbar, std::to_string(id), {}, unsigned(id));
        auto* foreign = new QPushButton;
        toolbar.addWidget(foreign);

        toolbar.setButtonsEnabled(false, mask);
        QStringList actual;
        for (const char* id : {"0", "1", "2", "3", "-1"}) {
            if (!isEnabled(toolbar, id))
                actual << id;
        }
        QCOMPARE(actual.join(' '), disabled);
        QVERIFY(foreign->isEnabled());

        toolbar.setButtonsEnabled(true, mask);
        for (const char* id : {"0", "1", "2", "3", "-1"})
            QVERIFY2(isEnabled(toolbar, id), id);
    }

    void clearTakesTheButtonsAndNothingElse()
    {
        Row toolbar;
        const QPointer<QPushButton> one(add(toolbar, "one"));
        toolbar.addLabel("label", "");
        toolbar.addSpacing(4);
        const QPointer<QPushButton> two(toolbar.addButton("two", redSquare(), "", {}, 1));
        auto* widget = new QPushButton("foreign");
        toolbar.addWidget(widget);

        toolbar.clear();
        QVERIFY(!one && !two);
        QCOMPARE(toolbar.layout()->count(), 3);
        QCOMPARE(toolbar.findChild<QLabel*>()->text(), QString("label"));
        toolbar.setButtonsEnabled(false, 1);
        QVERIFY(widget->isEnabled());
        toolbar.clear();
        QCOMPARE(toolbar.layout()->count(), 3);
    }

    void afterClearButtonsCanBeAddedAgain()
    {
        Row toolbar;
        int calls = 0;
        for (int round = 0; round < 3; ++round) {
            toolbar.clear();
            add(toolbar, "one", [&] { ++calls; });
            toolbar.findChild<QPushButton*>("one")->click();
        }
        QCOMPARE(calls, 3);
        QCOMPARE(toolbar.findChildren<QPushButton*>().size(), 1);
    }

    void theApplicationMayDeleteAButton()
    {
        const auto resource = std::make_shared<int>();
        Row toolbar;
        int calls = 0;
        delete add(toolbar, "gone", [resource] {});
        QCOMPARE(resource.use_count(), 1L); // Its function has gone, too.
        add(toolbar, "left", [&] { ++calls; });

        toolbar.setButtonsEnabled(false, 1);
        QVERIFY(!isEnabled(toolbar, "left"));
        toolbar.setButtonsEnabled(true, 1);
        toolbar.findChild<QPushButton*>("left")->click();
        QCOMPARE(calls, 1);
        toolbar.clear();
        QCOMPARE(toolbar.layout()->count(), 0);
    }

    void aButtonThatTheApplicationHasMovedOutlivesTheToolbar()
    {
        QWidget other;
        int calls = 0;
        auto toolbar = std::make_unique<Row>();
        auto* button = add(*toolbar, "x", [&] { ++calls; });
        button->setParent(&other);
        button->click();
        QCOMPARE(calls, 1);
        toolbar.reset();
        button->click();
        QCOMPARE(calls, 1);
    }

    void theEndOfAButtonMayClearTheToolbar()
    {
        Row toolbar;
        for (const char* id : {"a", "b", "c"}) {
            connect(add(toolbar, id), &QObject::destroyed, &toolbar, [&] { toolbar.clear(); });
        }
        toolbar.clear();
        QCOMPARE(toolbar.layout()->count(), 0);
    }

    void theEndOfAFunctionMayClearTheToolbar_data()
    {
        columns<QStringList, End>("ids", "end");
        const End clear = [](Toolbar* toolbar) { toolbar->clear(); };
        const End deleteButton = [](Toolbar* t) { delete t->findChild<QPushButton*>("b"); };
        const End deleteToolbar = [](Toolbar* toolbar) { delete toolbar; };
        const QStringList one = {"b"};
        const QStringList three = {"a", "b", "c"};
        row("by clear()", three, clear);
        row("by that of its button", three, deleteButton);
        row("by that of the only button", one, deleteButton);
        row("by that of the toolbar", three, deleteToolbar);
        row("by that of a toolbar with one button", one, deleteToolbar);
    }
    void theEndOfAFunctionMayClearTheToolbar()
    {
        QFETCH(QStringList, ids);
        QFETCH(End, end);
        // Not a Row: the functions end in the destructor of its base.
        const QPointer<Toolbar> toolbar(new Toolbar(nullptr, ExpandHorizontal));
        int ended = 0;
        for (const QString& id : ids) {
            add(*toolbar, id.toStdString(), thatEndsWith(ended, [&] {
                toolbar->setButtonsEnabled(false, 1);
                toolbar->clear();
            }));
        }
        end(toolbar);
        QCOMPARE(ended, ids.size());
        if (toolbar)
            QCOMPARE(toolbar->layout()->count(), 0);
        delete toolbar;
    }

    // This does not hold if a single button is deleted: it is the toolbar's child until then.
    void theEndOfAFunctionMayDestroyAToolbarThatIsCleared()
    {
        const QPointer<Toolbar> toolbar(new Toolbar(nullptr, ExpandHorizontal));
        int ended = 0;
        for (const char* id : {"a", "b", "c"})
            add(*toolbar, id, thatEndsWith(ended, [&] { delete toolbar; }));
        toolbar->clear();
        QCOMPARE(ended, 3);
        QVERIFY(!toolbar);
    }

    void aLostFocusMayClearTheToolbar()
    {
        Row toolbar;
        for (const char* id : {"a", "b", "c"})
            add(toolbar, id);
        toolbar.show();
        QVERIFY(QTest::qWaitForWindowActive(&toolbar));
        toolbar.findChild<QPushButton*>("b")->setFocus();
        int cleared = 0;
        connect(qApp, &QApplication::focusChanged, &toolbar, [&] {
            ++cleared;
            toolbar.clear();
        });
        toolbar.setButtonsEnabled(false, 1);
        QVERIFY(cleared > 0);
        QCOMPARE(toolbar.layout()->count(), 0);
    }

private:
    static QString accessibleName(QWidget* widget)
    {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    }
};

VRN_TEST(TestToolbar)
#include "tst_toolbar.moc"
