#include <vrn/qt/cppdb_table_view_base.h>

#include <QHeaderView>
#include <QSignalSpy>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "table_fixture.h"

using namespace vrn::test;
using vrn::qt::IValidator;
using vrn::qt::detail::CppDbTableViewBase;

namespace {

constexpr auto qtTest = QAbstractItemModelTester::FailureReportingMode::QtTest;

/// The keys of all commands, and some others.
void addKeys()
{
    columns<int, int, int, QString>("type", "key", "modifiers", "command");
    const auto key = [](const char* name, int code, int modifiers, const QString& command) {
        row(name, int(QEvent::KeyPress), code, modifiers, command);
    };
    const int none = Qt::NoModifier;
    const int ctrl = Qt::ControlModifier;
    const int shift = Qt::ShiftModifier;
    key("Delete clears", Qt::Key_Delete, none, "clear");
    key("Delete of the keypad clears", Qt::Key_Delete, Qt::KeypadModifier, "clear");
    key("Backspace clears", Qt::Key_Backspace, none, "clear");
    key("Backspace with Ctrl clears", Qt::Key_Backspace, ctrl, "clear");
    key("Backspace with Shift clears", Qt::Key_Backspace, shift, "clear");
    key("Backspace with Alt clears", Qt::Key_Backspace, Qt::AltModifier, "clear");
    row("a released Backspace is not a command", int(QEvent::KeyRelease), int(Qt::Key_Backspace),
        none, "nothing");
    row("a Delete that is released is one", int(QEvent::KeyRelease), int(Qt::Key_Delete), none,
        "clear");
    key("Ctrl+X cuts", Qt::Key_X, ctrl, "cut");
    key("Shift+Delete cuts", Qt::Key_Delete, shift, "cut");
    key("Ctrl+C copies", Qt::Key_C, ctrl, "copy");
    key("Ctrl+Insert copies", Qt::Key_Insert, ctrl, "copy");
    key("Ctrl+V pastes", Qt::Key_V, ctrl, "paste");
    key("Shift+Insert pastes", Qt::Key_Insert, shift, "paste");
    key("Ctrl+Delete is not a command", Qt::Key_Delete, ctrl, "nothing");
    key("X alone is not a command", Qt::Key_X, none, "nothing");
    key("Insert alone is not a command", Qt::Key_Insert, none, "nothing");
    key("Escape is not a command", Qt::Key_Escape, none, "nothing");
}

void sendKey(CppDbTableViewBase& view)
{
    QFETCH(int, type);
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QKeyEvent event(QEvent::Type(type), key, Qt::KeyboardModifiers(modifiers));
    view.keyPressEvent(&event);
}

} // namespace

class TestCppDbTableViewBase : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void itHasNoMetaObjectOfItsOwn()
    {
        const Table table("n", "1.0");
        QCOMPARE(table.view.metaObject()->className(), "QTableView");
    }

    void theConstructorReportsWhatIsMissing_data()
    {
        columns<bool, bool>("hasModel", "hasFunction");
        row("nothing", true, true);
        row("the model", false, true);
        row("the function", true, false);
        row("both", false, false);
    }
    void theConstructorReportsWhatIsMissing()
    {
        QFETCH(bool, hasModel);
        QFETCH(bool, hasFunction);
        TypedModel model("1.0");
        const QAbstractItemModelTester tester(&model, qtTest);
        boost::function<IValidator::pointer(int)> getColumnValidator;
        if (hasFunction)
            getColumnValidator = Columns("n");
        if (!hasModel)
            expectAssert("m_model");
        if (!hasFunction)
            expectAssert("m_getColumnValidator");
        QWidget parent;
        auto* view = new CppDbTableViewBase(
            hasModel ? &model : nullptr, getColumnValidator, &parent);
        QCOMPARE(view->parentWidget(), &parent);
        // It is a view all the same.
        view->setModel(&model);
        select(*view, "0,0");
        pressDelete(*view);
        QCOMPARE(model.content(), QString("-"));
    }

    void theConstructorDoesNotSetTheModel()
    {
        TypedModel model("1.0");
        const QAbstractItemModelTester tester(&model, qtTest);
        const CppDbTableViewBase view(&model, Columns("n"), nullptr);
        QCOMPARE(view.model(), nullptr);
    }

    void aKeyRunsItsCommand_data() { addKeys(); }
    void aKeyRunsItsCommand()
    {
        QFETCH(QString, command);
        Table table("n", "1.0 | 2.0");
        setClipboard("7");
        select(table.view, "0,0");
        sendKey(table.view);
        const bool copied = command == "copy" || command == "cut";
        QCOMPARE(clipboard(), QString(copied ? "1.000" : "7"));
        const bool cleared = command == "clear" || command == "cut";
        const QString first = cleared ? "-" : command == "paste" ? "7.0" : "1.0";
        QCOMPARE(table.model.content(), first + " | 2.0");
    }

    void anEmptySelectionDoesNothing_data() { addKeys(); }
    void anEmptySelectionDoesNothing()
    {
        for (const QString text : {"7", "7\t8\n", "", "\n"}) {
            Table table("n", "1.0 | 2.0");
            setClipboard(text);
            sendKey(table.view);
            QCOMPARE(clipboard(), text);
            QCOMPARE(table.model.content(), QString("1.0 | 2.0"));
            QCOMPARE(table.model.writes, QStringList());
        }
    }

    void withoutAModelNothingIsSelected_data() { addKeys(); }
    void withoutAModelNothingIsSelected()
    {
        for (const QString text : {"7", "7\t8\n"}) {
            TypedModel model("1.0");
            const QAbstractItemModelTester tester(&model, qtTest);
            CppDbTableViewBase view(&model, Columns("n"), nullptr);
            setClipboard(text);
            sendKey(view);
            QCOMPARE(clipboard(), text);
            QCOMPARE(model.writes, QStringList());
        }
    }

    void keysComeFromTheEventLoop()
    {
        Table table("n", "1.0 | 2.0");
        table.view.show();
        select(table.view, "0,0");
        QTest::keyClick(&table.view, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(clipboard(), QString("1.000"));
        QTest::keyClick(&table.view, Qt::Key_Backspace);
        QCOMPARE(table.model.content(), QString("- | 2.0"));
    }

    void otherKeysAreThoseOfTheView()
    {
        Table table("n", "1.0 | 2.0 | 3.0");
        table.view.setCurrentIndex(table.model.index(0, 0));
        press(table.view, Qt::Key_Down);
        QCOMPARE(table.view.currentIndex().row(), 1);
        press(table.view, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(table.view.selectionModel()->selectedIndexes().size(), 3);
        QSignalSpy activated(&table.view, &QAbstractItemView::activated);
        press(table.view, Qt::Key_Return);
        QCOMPARE(activated.count(), 1);
        QCOMPARE(table.model.writes, QStringList());
    }

    void clearStoresEmptyValues_data()
    {
        columns<QString, QString>("selected", "content");
        row("one cell", "0,1", "1.0,-,3 | none,'b',other");
        row("a row", "0,0:0,2", "-,-,- | none,'b',other");
        row("a column", "0,1:1,1", "1.0,-,3 | none,-,other");
        row("cells with holes between them", "0,0 1,1", "-,'a',3 | none,-,other");
        row("a cell without a value", "1,0", "1.0,'a',3 | -,'b',other");
        row("a cell of another type in a column without a validator", "1,2",
            "1.0,'a',3 | none,'b',-");
        row("all", "0,0:1,2", "-,-,- | -,-,-");
    }
    void clearStoresEmptyValues()
    {
        QFETCH(QString, selected);
        QFETCH(QString, content);
        Table table("nt-", "1.0,'a',3 | none,'b',other");
        select(table.view, selected);
        pressDelete(table.view);
        QCOMPARE(table.model.content(), content);
        QCOMPARE(clipboard(), QString("before"));
    }

    void clearWritesTheOneRoleOnceInEachCell()
    {
        Table table("nt", "1.0,'a' | 2.0,'b'");
        select(table.view, "0,0:1,0");
        pressDelete(table.view);
        QCOMPARE(table.model.writes, (QStringList{"0,0 = -", "1,0 = -"}));
    }

    // QTableView::selectedIndexes() leaves them out, but what is selected is selected.
    void hiddenCellsBelongToTheSelection()
    {
        Table table("nt", "1.0,'a' | 2.0,'b'");
        select(table.view, "0,0:1,1");
        table.view.setRowHidden(1, true);
        table.view.setColumnHidden(0, true);
        pressCopy(table.view);
        QCOMPARE(clipboard(), QString("1.000\ta\n2.000\tb\n"));
        pressDelete(table.view);
        QCOMPARE(table.model.content(), QString("-,- | -,-"));
    }

    void cutCopiesAndClears_data()
    {
        columns<QString, QString, QString>("selected", "clipboard", "content");
        row("one cell", "1,1", "b", "1.0,'a',3 | 2.0,-,4");
        row("a block", "0,0:1,1", "1.000\ta\n2.000\tb\n", "-,-,3 | -,-,4");
        row("a cell whose column has no validator: cleared, but not copied", "0,2", "before",
            "1.0,'a',- | 2.0,'b',4");
        row("a block with a column that has no validator", "0,1:0,2", "a\n", "1.0,-,- | 2.0,'b',4");
    }
    void cutCopiesAndClears()
    {
        QFETCH(QString, selected);
        QFETCH(QString, clipboard);
        QFETCH(QString, content);
        Table table("nt-", "1.0,'a',3 | 2.0,'b',4");
        select(table.view, selected);
        pressCut(table.view);
        QCOMPARE(vrn::test::clipboard(), clipboard);
        QCOMPARE(table.model.content(), content);
    }

    void aModelThatRefusesIsAskedForEachCell_data()
    {
        columns<QString, QString, int>("command", "selected", "asked");
        row("clear", "clear", "0,0:1,1", 4);
        row("cut", "cut", "0,0:1,1", 4);
        row("one text on several cells", "paste 7", "0,0:1,1", 4);
        row("a block on several cells", "paste 7\t8\n9\t9\n", "0,0:1,1", 4);
        row("a block at its corner", "paste 7\t8\n9\t9\n", "0,0", 4);
    }
    void aModelThatRefusesIsAskedForEachCell()
    {
        QFETCH(QString, command);
        QFETCH(QString, selected);
        QFETCH(int, asked);
        Table table("nt", "1.0,'a' | 2.0,'b'");
        table.model.refuses = true;
        select(table.view, selected);
        if (command == "clear") {
            pressDelete(table.view);
        } else if (command == "cut") {
            pressCut(table.view);
        } else {
            setClipboard(command.mid(6));
            pressPaste(table.view);
        }
        QCOMPARE(table.model.writes.size(), asked);
        QCOMPARE(table.model.content(), QString("1.0,'a' | 2.0,'b'"));
    }
};

VRN_TEST(TestCppDbTableViewBase)
#include "tst_cppdb_table_view_base.moc"
