#include <vrn/qt/delegates.h>

#include "qt/delegates/table_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "support/x11_input.h"

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Make = std::function<QAbstractItemDelegate*(QObject*)>;

QAbstractItemDelegate* lineEdits(QObject* parent)
{
    return new LineEditItemDelegate(wholeNumbers(), parent);
}

QAbstractItemDelegate* lists(QObject* parent)
{
    return new ComboItemDelegate(parent, &fillWithSteels, &vrn::any_equal<int>, nullptr);
}

QAbstractItemDelegate* editableLists(QObject* parent)
{
    return new ComboItemDelegate(parent, &fillWithSteels, &vrn::any_equal<int>, wholeNumbers());
}

// The cell (1, 1) of 235 is being edited, by keys and clicks as a user's.
struct Editing
{
    Editing(const Make& make, bool isForwarded)
    {
        QAbstractItemDelegate* delegate = make(table.view);
        if (isForwarded) {
            auto* forward = new ForwardDelegate(*table.view);
            forward->setItemDelegate(delegate);
            delegate = forward;
        }
        table.view->setItemDelegate(delegate);
        table.show();
        table.view->setCurrentIndex(table.index(1, 1));
        table.view->setFocus();
        x11::press({"F2"});
        QTRY_VERIFY(table.view->indexWidget(table.index(1, 1)));
        editor = table.view->indexWidget(table.index(1, 1));
        QTRY_VERIFY(editor->hasFocus());
    }

    // Enters 275.
    void change() const
    {
        auto* list = editor->findChild<QComboBox*>();
        if (list) {
            x11::press({"Down"});
            QTRY_COMPARE(list->currentText(), QString("S275"));
        } else {
            x11::type("275");
            QTRY_COMPARE(qobject_cast<QLineEdit*>(editor)->text(), QString("275"));
        }
    }

    // As the server has it: the application may not know yet where its window is.
    static QPoint onScreen(const QWidget& widget, const QPoint& place)
    {
        return x11::place(widget.window()->winId()) + widget.mapTo(widget.window(), place);
    }

    QComboBox& openList() const
    {
        auto& list = *editor->findChild<QComboBox*>();
        // The event loop lays the editor out, and not at once.
        QTest::qWait(200);
        static_cast<void>(QTest::qWaitFor([&] { return list.width() == editor->width(); }));
        // The arrow is on the right.
        x11::click(onScreen(list, QPoint(list.width() - 8, list.height() / 2)));
        const auto isOpen = [&] { return list.view()->isVisible(); };
        static_cast<void>(QTest::qWaitFor(isOpen));
        // A list takes no click in the moment after it has opened.
        QTest::qWait(QApplication::doubleClickInterval() + 100);
        return list;
    }

    static void clickItem(const QComboBox& list, int row)
    {
        const QWidget& items = *list.view()->viewport();
        const int y = list.view()->visualRect(list.model()->index(row, 0)).center().y();
        const QPoint place = onScreen(items, QPoint(items.width() / 2, y));
        x11::moveMouse(place - QPoint(2, 0));
        const auto isReached = [&] { return list.view()->currentIndex().row() == row; };
        static_cast<void>(QTest::qWaitFor(isReached));
        x11::click(place);
    }

    QString value() const { return describe(table.value(1, 1)); }

    TableWindow table;
    QPointer<QWidget> editor;
};

} // namespace

Q_DECLARE_METATYPE(Make)

class TestCellEditingWindows : public TestObject
{
    Q_OBJECT

    static void rows(bool withLineEdits)
    {
        columns<Make, bool>("make", "isForwarded");
        if (withLineEdits) {
            row("a line edit", Make(lineEdits), false);
            row("a line edit of a cell", Make(lineEdits), true);
        }
        row("a list", Make(lists), false);
        row("a list of a cell", Make(lists), true);
        row("an editable list", Make(editableLists), false);
        row("an editable list of a cell", Make(editableLists), true);
    }

private Q_SLOTS:
    void aChoiceOfTheMouseEndsTheEditAtOnce_data() { rows(false); }

    void aChoiceOfTheMouseEndsTheEditAtOnce()
    {
        QFETCH(Make, make);
        QFETCH(bool, isForwarded);
        const Editing editing(make, isForwarded);
        const QComboBox& list = editing.openList();
        QVERIFY(list.view()->isVisible());
        QVERIFY(editing.editor);
        Editing::clickItem(list, 2);
        QTRY_VERIFY(!editing.editor);
        QCOMPARE(editing.value(), QString("int 355"));
        QTRY_VERIFY(editing.table.view->hasFocus());
    }

    void arrowsChooseAndDoNotEndTheEdit_data() { rows(false); }

    void arrowsChooseAndDoNotEndTheEdit()
    {
        QFETCH(Make, make);
        QFETCH(bool, isForwarded);
        const Editing editing(make, isForwarded);
        editing.change();
        QTest::qWait(100);
        QVERIFY(editing.editor);
        QCOMPARE(editing.value(), QString("int 235"));
    }

    void keysInTheOpenListDoNotEndTheEdit_data() { rows(false); }

    void keysInTheOpenListDoNotEndTheEdit()
    {
        QFETCH(Make, make);
        QFETCH(bool, isForwarded);
        const Editing editing(make, isForwarded);
        const QComboBox& list = editing.openList();
        QVERIFY(list.view()->isVisible());
        x11::press({"Down", "Return"});
        QTRY_VERIFY(!list.view()->isVisible());
        QCOMPARE(list.currentText(), QString("S275"));
        QTest::qWait(100);
        QVERIFY(editing.editor);
        QCOMPARE(editing.value(), QString("int 235"));
        x11::press({"Tab"});
        QTRY_VERIFY(!editing.editor);
        QCOMPARE(editing.value(), QString("int 275"));
    }

    void escapeClosesTheOpenListFirst_data() { rows(false); }

    void escapeClosesTheOpenListFirst()
    {
        QFETCH(Make, make);
        QFETCH(bool, isForwarded);
        const Editing editing(make, isForwarded);
        const QComboBox& list = editing.openList();
        QVERIFY(list.view()->isVisible());
        x11::press({"Down", "Escape"});
        QTRY_VERIFY(!list.view()->isVisible());
        QTest::qWait(100);
        QVERIFY(editing.editor);
        x11::press({"Escape"});
        QTRY_VERIFY(!editing.editor);
        QCOMPARE(editing.value(), QString("int 235"));
    }

    void aKeyEndsTheEdit_data()
    {
        columns<Make, bool, QString, QString>("make", "isForwarded", "key", "value");
        const std::vector<std::pair<QByteArray, Make>> makers = {
            {"a line edit", lineEdits}, {"a list", lists}, {"an editable list", editableLists}};
        for (const auto& [name, make] : makers) {
            for (const bool isForwarded : {false, true}) {
                const QByteArray where = name + (isForwarded ? " of a cell" : "");
                row("Return writes: " + where, make, isForwarded, "Return", "int 275");
                row("Tab writes: " + where, make, isForwarded, "Tab", "int 275");
                row("Escape does not write: " + where, make, isForwarded, "Escape", "int 235");
            }
        }
    }

    void aKeyEndsTheEdit()
    {
        QFETCH(Make, make);
        QFETCH(bool, isForwarded);
        QFETCH(QString, key);
        QFETCH(QString, value);
        const Editing editing(make, isForwarded);
        editing.change();
        x11::press({key});
        QTRY_VERIFY(!editing.editor);
        QCOMPARE(editing.value(), value);
        // Tab goes on to the next cell.
        QCOMPARE(editing.table.view->currentIndex().column(), key == "Tab" ? 2 : 1);
    }

    void aClickElsewhereWrites_data() { rows(true); }

    void aClickElsewhereWrites()
    {
        QFETCH(Make, make);
        QFETCH(bool, isForwarded);
        const Editing editing(make, isForwarded);
        editing.change();
        const QWidget& elsewhere = *editing.table.elsewhere;
        x11::click(Editing::onScreen(elsewhere, elsewhere.rect().center()));
        QTRY_VERIFY(!editing.editor);
        QCOMPARE(editing.value(), QString("int 275"));
        QTRY_VERIFY(elsewhere.hasFocus());
    }
};

VRN_TEST(TestCellEditingWindows)

#include "tst_cell_editing_windows.moc"
