#include <vrn/qt/delegates.h>

#include "qt/delegates/table_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QDialog>
#include <QTimer>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Make = std::function<QAbstractItemDelegate*(QObject*)>;
// The second delegate is for the other cells, one of which opens after Tab.
using Install = std::function<void(QTableView&, QAbstractItemDelegate*, QAbstractItemDelegate*)>;

struct Editing;
using Action = std::function<void(Editing&)>;

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

void forAll(QTableView& view, QAbstractItemDelegate* delegate, QAbstractItemDelegate* /*others*/)
{
    view.setItemDelegate(delegate);
}

void forTheColumn(QTableView& view, QAbstractItemDelegate* delegate, QAbstractItemDelegate* others)
{
    view.setItemDelegate(others);
    view.setItemDelegateForColumn(1, delegate);
}

void forTheCell(QTableView& view, QAbstractItemDelegate* delegate, QAbstractItemDelegate* others)
{
    auto* forward = new ForwardDelegate(view);
    forward->setItemDelegateForCell(1, 1, delegate);
    forward->setItemDelegate(others);
    view.setItemDelegate(forward);
}

void forTheCellOfTheColumn(
    QTableView& view, QAbstractItemDelegate* delegate, QAbstractItemDelegate* others)
{
    auto* forward = new ForwardDelegate(view);
    forward->setItemDelegateForCell(1, 1, delegate);
    view.setItemDelegate(others);
    view.setItemDelegateForColumn(1, forward);
}

// The cell (1, 1) of 235 is being edited, and the editor already shows 275.
struct Editing
{
    Editing(const Make& make, const Install& install)
        : delegate(make(nullptr))
    {
        install(*table.view, delegate, make(table.view));
        table.show();
        editor = table.open(1, 1);
        QVERIFY(editor);
        QVERIFY(editor->isVisible());
        QVERIFY(editor->hasFocus());
        if (qobject_cast<QLineEdit*>(editor))
            QTest::keyClicks(focus(), "275");
        else
            QTest::keyClick(focus(), Qt::Key_Down);
    }
    ~Editing() { delete delegate; }

    static QWidget* focus() { return QApplication::focusWidget(); }

    TableWindow table;
    QPointer<QAbstractItemDelegate> delegate;
    QPointer<QWidget> editor;
};

Action press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    return [=](Editing& editing) { QTest::keyClick(editing.focus(), key, modifiers); };
}

Action after(const Action& first, const Action& second)
{
    return [=](Editing& editing) {
        first(editing);
        second(editing);
    };
}

void runEventLoop(Editing& /*editing*/)
{
    settle();
}

void moveFocus(Editing& editing)
{
    editing.table.elsewhere->setFocus();
}

void clickElsewhere(Editing& editing)
{
    const QRect cell = editing.table.view->visualRect(editing.table.index(2, 2));
    QTest::mouseClick(editing.table.view->viewport(), Qt::LeftButton, {}, cell.center());
}

void scrollAway(Editing& editing)
{
    QTableView& view = *editing.table.view;
    editing.table.model->insertRows(4, 100);
    QCoreApplication::processEvents();
    view.scrollToBottom();
    QVERIFY(!view.viewport()->rect().intersects(view.visualRect(editing.table.index(1, 1))));
}

void removeItsRow(Editing& editing)
{
    editing.table.model->removeRow(1);
}

void removeItsColumn(Editing& editing)
{
    editing.table.model->removeColumn(1);
}

void insertARowAbove(Editing& editing)
{
    editing.table.model->insertRow(0);
}

void removeTheRowAbove(Editing& editing)
{
    editing.table.model->removeRow(0);
}

void resetTheModel(Editing& editing)
{
    editing.table.model->clear();
}

void deleteTheModel(Editing& editing)
{
    editing.table.owned.reset();
}

void deleteTheView(Editing& editing)
{
    delete editing.table.view;
}

void openADialog(Editing& /*editing*/)
{
    QDialog dialog;
    QTimer::singleShot(0, &dialog, [&dialog] {
        // What is to be deleted goes in the event loop of the dialog.
        QTimer::singleShot(0, &dialog, &QDialog::reject);
    });
    dialog.exec();
}

// Without a delegate, a view of Qt does not get far.
void putAnotherInItsPlace(Editing& editing)
{
    QTableView& view = *editing.table.view;
    if (view.itemDelegate() == editing.delegate)
        view.setItemDelegate(new QStyledItemDelegate(&view));
    if (view.itemDelegateForColumn(1) == editing.delegate)
        view.setItemDelegateForColumn(1, nullptr);
}

void deleteTheDelegate(Editing& editing)
{
    putAnotherInItsPlace(editing);
    delete editing.delegate;
}

void deleteTheDelegateLater(Editing& editing)
{
    putAnotherInItsPlace(editing);
    editing.delegate->deleteLater();
}

void deleteTheEditor(Editing& editing)
{
    delete editing.editor;
}

void replaceTheModel(Editing& editing)
{
    editing.table.view->setModel(nullptr);
}

void hideTheRow(Editing& editing)
{
    editing.table.view->hideRow(1);
}

void hideTheView(Editing& editing)
{
    editing.table.view->hide();
}

void disableTheView(Editing& editing)
{
    editing.table.view->setEnabled(false);
}

void hideTheWindow(Editing& editing)
{
    editing.table.window.hide();
}

} // namespace

Q_DECLARE_METATYPE(Make)
Q_DECLARE_METATYPE(Install)
Q_DECLARE_METATYPE(Action)

class TestCellEditing : public TestObject
{
    Q_OBJECT

    static std::vector<std::pair<QByteArray, Make>> makers()
    {
        return {{"line edit", lineEdits}, {"list", lists}, {"editable list", editableLists}};
    }

    static std::vector<std::pair<QByteArray, Install>> places()
    {
        return {{"of the view", forAll}, {"of the column", forTheColumn},
            {"of the cell", forTheCell}, {"of a cell of the column", forTheCellOfTheColumn}};
    }

    // Each action with each delegate in each place.
    static void rows(const std::vector<std::tuple<QByteArray, Action, QString>>& actions)
    {
        columns<Make, Install, Action, QString>("make", "install", "action", "written");
        for (const auto& [name, action, written] : actions) {
            for (const auto& [maker, make] : makers()) {
                for (const auto& [place, install] : places())
                    row(name + ": " + maker + ' ' + place, make, install, action, written);
            }
        }
    }

private Q_SLOTS:
    // Here and below, a warning of Qt that is not expected fails the test.
    void theUserEndsIt_data()
    {
        const QString written = "int 275";
        const QString kept = "int 235";
        rows({
            {"Enter writes", press(Qt::Key_Enter), written},
            {"Return writes", press(Qt::Key_Return), written},
            {"Tab writes", press(Qt::Key_Tab), written},
            {"Shift+Tab writes", press(Qt::Key_Backtab, Qt::ShiftModifier), written},
            {"Escape does not write", press(Qt::Key_Escape), kept},
            {"a lost focus writes", moveFocus, written},
            {"a click into another cell writes", clickElsewhere, written},
            {"Enter and then a lost focus", after(press(Qt::Key_Return), moveFocus), written},
            {"a lost focus and then Enter", after(moveFocus, press(Qt::Key_Return)), written},
            {"Enter twice", after(press(Qt::Key_Return), press(Qt::Key_Return)), written},
            {"Escape twice", after(press(Qt::Key_Escape), press(Qt::Key_Escape)), kept},
            {"Escape and then Enter", after(press(Qt::Key_Escape), press(Qt::Key_Return)), kept},
            {"Tab and then Escape", after(press(Qt::Key_Tab), press(Qt::Key_Escape)), written},
            {"Tab and then Tab", after(press(Qt::Key_Tab), press(Qt::Key_Tab)), written},
            {"Enter and then the row above is removed",
                after(press(Qt::Key_Return), removeTheRowAbove), "elsewhere"},
        });
    }

    void theUserEndsIt()
    {
        QFETCH(Make, make);
        QFETCH(Install, install);
        QFETCH(Action, action);
        QFETCH(QString, written);
        Editing editing(make, install);
        action(editing);
        settle();
        const int row = written == "elsewhere" ? 0 : 1;
        const QString value = describe(editing.table.value(row, 1));
        QCOMPARE(value, written == "elsewhere" ? QString("int 275") : written);
        QVERIFY(!editing.editor);
    }

    void theProgramEndsIt_data()
    {
        const QString written = "int 275";
        const QString none = "empty";
        const QString staysOpen;
        const QString kept = "int 235";
        rows({
            {"its row is removed", removeItsRow, kept},
            {"its column is removed", removeItsColumn, kept},
            {"a row is removed above", removeTheRowAbove, staysOpen},
            {"a row is removed above, and then Enter",
                after(removeTheRowAbove, press(Qt::Key_Return)), kept},
            {"the model is reset", resetTheModel, none},
            {"the view has no model any more", replaceTheModel, written},
            {"the view is destroyed", deleteTheView, kept},
            {"the editor is destroyed", deleteTheEditor, kept},
            {"the row is hidden", hideTheRow, written},
            {"the view is hidden", hideTheView, written},
            {"the view is disabled", disableTheView, written},
            {"the window is hidden", hideTheWindow, written},
            {"its row is removed after Enter was pressed",
                after(press(Qt::Key_Return), removeItsRow), kept},
            {"the view is destroyed after Enter was pressed",
                after(press(Qt::Key_Return), deleteTheView), written},
            {"the model is reset after a lost focus", after(moveFocus, resetTheModel), none},
        });
    }

    void theProgramEndsIt()
    {
        QFETCH(Make, make);
        QFETCH(Install, install);
        QFETCH(Action, action);
        QFETCH(QString, written);
        Editing editing(make, install);
        action(editing);
        settle();
        const bool staysOpen = written.isEmpty();
        QCOMPARE(editing.editor.isNull(), !staysOpen);
        QCOMPARE(describe(editing.table.value(1, 1)), staysOpen ? QString("int 235") : written);
    }

    void theModelIsDestroyed_data()
    {
        const QString any;
        rows({
            {"at once", deleteTheModel, any},
            {"and then Enter", after(deleteTheModel, press(Qt::Key_Return)), any},
            {"and then Tab", after(deleteTheModel, press(Qt::Key_Tab)), any},
            {"and then Escape", after(deleteTheModel, press(Qt::Key_Escape)), any},
            {"and then a lost focus", after(deleteTheModel, moveFocus), any},
            {"and then the view is", after(deleteTheModel, deleteTheView), "no view"},
        });
    }

    void theModelIsDestroyed()
    {
        QFETCH(Make, make);
        QFETCH(Install, install);
        QFETCH(Action, action);
        QFETCH(QString, written);
        Editing editing(make, install);
        // A table of Qt says so once for itself and for each header, also without an editor.
        for (int view = 0; written.isEmpty() && view < 3; ++view)
            expectWarning("QItemSelectionModel: Selecting when no model has been set will result "
                          "in a no-op.");
        action(editing);
        settle();
        QVERIFY(!editing.editor);
    }

    void theRowIsFilteredOutByItsNewValue_data()
    {
        const QString written = "int 275";
        rows({
            {"with Enter", press(Qt::Key_Return), written},
            {"with Tab", press(Qt::Key_Tab), written},
            {"with Shift+Tab", press(Qt::Key_Backtab, Qt::ShiftModifier), written},
            {"with a lost focus", moveFocus, written},
        });
    }

    void theRowIsFilteredOutByItsNewValue()
    {
        QFETCH(Make, make);
        QFETCH(Install, install);
        QFETCH(Action, action);
        QFETCH(QString, written);
        Editing editing(make, install);
        CellModel& model = *editing.table.model;
        connect(&model, &QAbstractItemModel::dataChanged, &model, [&] {
            if (describe(editing.table.value(1, 1)) == written)
                editing.table.view->model()->removeRow(1);
        });
        action(editing);
        settle();
        QCOMPARE(model.rowCount(), 3);
        QVERIFY(!editing.editor);
    }

    // In a slot of the model, while the view commits.
    void whatTheApplicationMayDoInACommit_data()
    {
        using Keys = std::vector<std::pair<QByteArray, Action>>;
        const Keys ends = {{"Enter", press(Qt::Key_Return)}, {"Tab", press(Qt::Key_Tab)},
            {"a lost focus", moveFocus}};
        columns<Make, Install, Action, Action>("make", "install", "action", "deed");
        const std::vector<std::pair<QByteArray, Action>> deeds = {
            {"deleteLater of the view", [](Editing& e) { e.table.view->deleteLater(); }},
            {"deleteLater of the delegate", deleteTheDelegateLater},
            {"deleteLater of the editor", [](Editing& e) { e.editor->deleteLater(); }},
            {"move the focus", moveFocus},
            {"change the current cell",
                [](Editing& e) { e.table.view->setCurrentIndex(e.table.index(3, 2)); }},
            {"write another cell", [](Editing& e) { e.table.model->put(0, 0, 1, "1"); }},
            {"insert a row", insertARowAbove},
            {"run the event loop", [](Editing&) { QCoreApplication::processEvents(); }},
            {"open a dialog, which takes the focus", openADialog},
        };
        for (const auto& [end, action] : ends) {
            for (const auto& [name, deed] : deeds) {
                for (const auto& [maker, make] : makers()) {
                    for (const auto& [place, install] : places())
                        row(end + ", " + name + ": " + maker + ' ' + place, make, install, action,
                            deed);
                }
            }
        }
    }

    void whatTheApplicationMayDoInACommit()
    {
        QFETCH(Make, make);
        QFETCH(Install, install);
        QFETCH(Action, action);
        QFETCH(Action, deed);
        Editing editing(make, install);
        bool isDone = false;
        connect(editing.table.model, &QAbstractItemModel::dataChanged, editing.table.model, [&] {
            if (!std::exchange(isDone, true))
                deed(editing);
        });
        action(editing);
        settle();
        QVERIFY(isDone);
        // A view does not listen to a delegate that it has given up.
        QVERIFY(!editing.editor || !editing.delegate);
    }

    void itGoesOn_data()
    {
        rows({
            {"a row is inserted above", after(insertARowAbove, press(Qt::Key_Return)), "2"},
            {"the table is scrolled", after(scrollAway, press(Qt::Key_Return)), "1"},
            {"the event loop runs", after(runEventLoop, press(Qt::Key_Return)), "1"},
        });
    }

    void itGoesOn()
    {
        QFETCH(Make, make);
        QFETCH(Install, install);
        QFETCH(Action, action);
        QFETCH(QString, written);
        Editing editing(make, install);
        action(editing);
        settle();
        QCOMPARE(describe(editing.table.value(written.toInt(), 1)), QString("int 275"));
        QVERIFY(!editing.editor);
    }

    void aRefusedTextIsDroppedAndTheEditorCloses_data()
    {
        columns<Install, Action>("install", "action");
        const std::vector<std::pair<QByteArray, Action>> ends = {
            {"Enter", press(Qt::Key_Enter)},
            {"Tab", press(Qt::Key_Tab)},
            {"a lost focus", moveFocus},
            {"a click into another cell", clickElsewhere},
        };
        for (const auto& [end, action] : ends) {
            for (const auto& [place, install] : places())
                row(end + ": " + place, install, action);
        }
    }

    void aRefusedTextIsDroppedAndTheEditorCloses()
    {
        QFETCH(Install, install);
        QFETCH(Action, action);
        Editing editing(&lineEdits, install);
        QTest::keyClicks(editing.focus(), " m");
        action(editing);
        settle();
        QVERIFY(!editing.editor);
        QCOMPARE(describe(editing.table.value(1, 1)), QString("int 235"));
        QCOMPARE(editing.table.index(1, 1).data().toString(), QString("S235"));
    }

    // Another one may write for it.
    void theDelegateIsDestroyed_data()
    {
        const QString any;
        const QString kept = "int 235";
        rows({
            {"and then Enter", after(deleteTheDelegate, press(Qt::Key_Return)), any},
            {"and then Tab", after(deleteTheDelegate, press(Qt::Key_Tab)), any},
            {"and then Escape", after(deleteTheDelegate, press(Qt::Key_Escape)), kept},
            {"and then a lost focus", after(deleteTheDelegate, moveFocus), any},
            {"and then its row is removed", after(deleteTheDelegate, removeItsRow), kept},
            {"and then the model is reset", after(deleteTheDelegate, resetTheModel), "empty"},
            {"and then the view is destroyed", after(deleteTheDelegate, deleteTheView), kept},
        });
    }

    void theDelegateIsDestroyed()
    {
        QFETCH(Make, make);
        QFETCH(Install, install);
        QFETCH(Action, action);
        QFETCH(QString, written);
        Editing editing(make, install);
        action(editing);
        settle();
        if (!written.isEmpty())
            QCOMPARE(describe(editing.table.value(1, 1)), written);
    }
};

VRN_TEST(TestCellEditing)

#include "tst_cell_editing.moc"
