#include <vrn/qt/delegates.h>

#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTreeView>

#include "qt/delegates/delegate_signals.h"
#include "qt/delegates/table_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <limits>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

QString address(const void* object)
{
    return QString::number(quintptr(object), 16);
}

QString cellOf(const QModelIndex& index)
{
    return QString("%1,%2").arg(index.row()).arg(index.column());
}

QString rectOf(const QStyleOptionViewItem& option)
{
    return QString("at %1,%2").arg(option.rect.x()).arg(option.rect.y());
}

// Writes its name and what it is asked into `calls`.
class Recording : public QAbstractItemDelegate
{
public:
    Recording(QString name, QStringList& calls)
        : m_name(std::move(name))
        , m_calls(calls)
    {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override
    {
        note("paint", {address(painter), rectOf(option), cellOf(index)});
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        note("sizeHint", {rectOf(option), cellOf(index)});
        return {12, 34};
    }
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override
    {
        note("createEditor", {address(parent), rectOf(option), cellOf(index)});
        return parent;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override
    {
        note("setEditorData", {address(editor), cellOf(index)});
    }
    void setModelData(
        QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override
    {
        note("setModelData", {address(editor), address(model), cellOf(index)});
    }
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override
    {
        note("updateEditorGeometry", {address(editor), rectOf(option), cellOf(index)});
    }
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
        const QModelIndex& index) override
    {
        note("editorEvent", {address(event), address(model), rectOf(option), cellOf(index)});
        return true;
    }

private:
    void note(const QString& call, const QStringList& arguments) const
    {
        m_calls << m_name + ": " + call + ' ' + arguments.join(' ');
    }

    QString m_name;
    QStringList& m_calls;
};

// It can do what the models of Qt cannot.
class ChangingModel : public QAbstractTableModel
{
public:
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 6; }
    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : 4;
    }
    QVariant data(const QModelIndex&, int) const override { return {}; }
    void moveARow()
    {
        beginMoveRows({}, 0, 0, {}, 6);
        endMoveRows();
    }
    void reset()
    {
        beginResetModel();
        endResetModel();
    }

private:
    QAbstractItemModelTester m_tester{this, QAbstractItemModelTester::FailureReportingMode::QtTest};
};

// A table with the delegate under test, and four to choose from.
struct Table
{
    explicit Table(QAbstractItemModel* its = nullptr)
    {
        view.setModel(its ? its : &model);
        forward = new ForwardDelegate(view);
        view.setItemDelegate(forward);
    }

    // Which of the delegates governs a cell; empty if none does.
    QString governs(int row, int column)
    {
        calls.clear();
        const auto* its = view.model();
        static_cast<void>(forward->sizeHint({}, its->index(row, column)));
        return calls.isEmpty() ? QString() : calls.first().section(':', 0, 0);
    }

    QStringList calls;
    CellModel model{6, 4};
    QTableView view;
    Recording ofCell{"cell", calls};
    Recording ofRow{"row", calls};
    Recording ofColumn{"column", calls};
    Recording ofAll{"all", calls};
    ForwardDelegate* forward;
};

using Act = std::function<void(Table&)>;
using Change = void (ChangingModel::*)();

} // namespace

Q_DECLARE_METATYPE(Act)
Q_DECLARE_METATYPE(Change)

class TestForwardDelegate : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void itBelongsToTheViewAndIsInstalledByTheCaller()
    {
        QTableView view;
        const auto* before = view.itemDelegate();
        const QPointer<ForwardDelegate> forward(new ForwardDelegate(view));
        QCOMPARE(forward->parent(), &view);
        QCOMPARE(view.itemDelegate(), before);
    }

    void whoGovernsACell_data()
    {
        columns<Act, QStringList>("set", "governs");
        const Act none = [](Table&) {};
        row("nobody at first", none, QStringList{"", "", "", ""});
        row("the one for all", Act([](Table& t) { t.forward->setItemDelegate(&t.ofAll); }),
            QStringList{"all", "all", "all", "all"});
        row("the column before all", Act([](Table& t) {
            t.forward->setItemDelegate(&t.ofAll);
            t.forward->setItemDelegateForColumn(1, &t.ofColumn);
        }),
            QStringList{"all", "column", "all", "all"});
        row("the row before the column", Act([](Table& t) {
            t.forward->setItemDelegateForColumn(1, &t.ofColumn);
            t.forward->setItemDelegateForRow(1, &t.ofRow);
        }),
            QStringList{"", "row", "", ""});
        row("the cell before the row", Act([](Table& t) {
            t.forward->setItemDelegateForRow(2, &t.ofRow);
            t.forward->setItemDelegateForCell(2, 2, &t.ofCell);
        }),
            QStringList{"", "", "cell", ""});
        row("the row if that of the cell is null", Act([](Table& t) {
            t.forward->setItemDelegateForRow(2, &t.ofRow);
            t.forward->setItemDelegateForCell(2, 2, &t.ofCell);
            t.forward->setItemDelegateForCell(2, 2, nullptr);
        }),
            QStringList{"", "", "row", ""});
        row("the column if that of the row is null", Act([](Table& t) {
            t.forward->setItemDelegateForColumn(2, &t.ofColumn);
            t.forward->setItemDelegateForRow(2, &t.ofRow);
            t.forward->setItemDelegateForRow(2, nullptr);
        }),
            QStringList{"", "", "column", ""});
        row("the one for all if that of the column is null", Act([](Table& t) {
            t.forward->setItemDelegate(&t.ofAll);
            t.forward->setItemDelegateForColumn(2, &t.ofColumn);
            t.forward->setItemDelegateForColumn(2, nullptr);
        }),
            QStringList{"all", "all", "all", "all"});
        row("nobody if all are null", Act([](Table& t) {
            t.forward->setItemDelegate(&t.ofAll);
            t.forward->setItemDelegate(nullptr);
        }),
            QStringList{"", "", "", ""});
        row("the row if that of the cell was destroyed", Act([](Table& t) {
            Recording gone("gone", t.calls);
            t.forward->setItemDelegateForCell(1, 1, &gone);
            t.forward->setItemDelegateForRow(1, &t.ofRow);
        }),
            QStringList{"", "row", "", ""});
        row("nobody if the one for all was destroyed", Act([](Table& t) {
            Recording gone("gone", t.calls);
            t.forward->setItemDelegate(&gone);
        }),
            QStringList{"", "", "", ""});
    }

    void whoGovernsACell()
    {
        QFETCH(Act, set);
        QFETCH(QStringList, governs);
        Table table;
        set(table);
        for (int i = 0; i < governs.size(); ++i)
            QCOMPARE(table.governs(i, i), governs[i]);
    }

    void everyCallIsHandedOn()
    {
        Table table;
        table.forward->setItemDelegate(&table.ofAll);
        const QModelIndex index = table.model.index(1, 2);
        QWidget parent;
        QWidget editor;
        QImage image(10, 10, QImage::Format_RGB32);
        QPainter painter(&image);
        QEvent event(QEvent::User);
        QStyleOptionViewItem option;
        option.rect = QRect(3, 4, 5, 6);
        table.forward->paint(&painter, option, index);
        QCOMPARE(table.forward->sizeHint(option, index), QSize(12, 34));
        QCOMPARE(table.forward->createEditor(&parent, option, index), &parent);
        table.forward->setEditorData(&editor, index);
        table.forward->setModelData(&editor, &table.model, index);
        table.forward->updateEditorGeometry(&editor, option, index);
        QVERIFY(static_cast<QAbstractItemDelegate*>(table.forward)
                    ->editorEvent(&event, &table.model, option, index));
        const QString its = address(&editor);
        const QString where = " at 3,4 1,2";
        QCOMPARE(table.calls,
            QStringList({"all: paint " + address(&painter) + where, "all: sizeHint" + where,
                "all: createEditor " + address(&parent) + where,
                "all: setEditorData " + its + " 1,2",
                "all: setModelData " + its + ' ' + address(&table.model) + " 1,2",
                "all: updateEditorGeometry " + its + where,
                "all: editorEvent " + address(&event) + ' ' + address(&table.model) + where}));
    }

    void withoutADelegateItIsOneOfQt()
    {
        Table table;
        table.model.itemFromIndex(table.model.index(1, 1))->setCheckable(true);
        table.model.setData(table.model.index(1, 1), Qt::Unchecked, Qt::CheckStateRole);
        const QModelIndex index = table.model.index(1, 1);
        QStyledItemDelegate ofQt;
        const auto paint = [&](const QAbstractItemDelegate& delegate) {
            QImage image(60, 30, QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            QStyleOptionViewItem option;
            option.rect = QRect(2, 2, 56, 26);
            option.state = QStyle::State_Enabled;
            delegate.paint(&painter, option, index);
            return image;
        };
        QCOMPARE(paint(*table.forward), paint(ofQt));
        QCOMPARE(table.forward->sizeHint({}, index), ofQt.sizeHint({}, index));

        QWidget parent;
        auto* edit = qobject_cast<QLineEdit*>(table.forward->createEditor(&parent, {}, index));
        QVERIFY(edit);
        table.forward->setEditorData(edit, index);
        QCOMPARE(edit->text(), QString("S235"));
        edit->setText("S275");
        table.forward->setModelData(edit, &table.model, index);
        QCOMPARE(index.data().toString(), QString("S275"));

        QStyleOptionViewItem option;
        option.rect = QRect(5, 6, 70, 30);
        option.state = QStyle::State_Enabled;
        table.forward->updateEditorGeometry(edit, option, index);
        QVERIFY(option.rect.intersects(edit->geometry()));

        QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, {});
        QVERIFY(static_cast<QAbstractItemDelegate*>(table.forward)
                    ->editorEvent(&space, &table.model, option, index));
        QCOMPARE(index.data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
    }

    void signalsArePassedOnOncePerCall_data()
    {
        columns<Act, int>("set", "times");
        row("of no slot", Act([](Table&) {}), 0);
        row("of all", Act([](Table& t) { t.forward->setItemDelegate(&t.ofCell); }), 1);
        row("of a column", Act([](Table& t) { t.forward->setItemDelegateForColumn(1, &t.ofCell); }),
            1);
        row("of a row", Act([](Table& t) { t.forward->setItemDelegateForRow(1, &t.ofCell); }), 1);
        row("of a cell", Act([](Table& t) { t.forward->setItemDelegateForCell(1, 1, &t.ofCell); }),
            1);
        row("of two cells", Act([](Table& t) {
            t.forward->setItemDelegateForCell(1, 1, &t.ofCell);
            t.forward->setItemDelegateForCell(2, 1, &t.ofCell);
        }),
            2);
        row("of a cell twice", Act([](Table& t) {
            t.forward->setItemDelegateForCell(1, 1, &t.ofCell);
            t.forward->setItemDelegateForCell(1, 1, &t.ofCell);
        }),
            1);
        row("of two cells, one of which got another", Act([](Table& t) {
            t.forward->setItemDelegateForCell(1, 1, &t.ofCell);
            t.forward->setItemDelegateForCell(2, 1, &t.ofCell);
            t.forward->setItemDelegateForCell(2, 1, &t.ofRow);
        }),
            0);
        row("of a cell and a row, which has none any more", Act([](Table& t) {
            t.forward->setItemDelegateForCell(1, 1, &t.ofCell);
            t.forward->setItemDelegateForRow(1, &t.ofCell);
            t.forward->setItemDelegateForRow(1, nullptr);
        }),
            0);
        row("of a cell with another one before", Act([](Table& t) {
            t.forward->setItemDelegateForCell(1, 1, &t.ofRow);
            t.forward->setItemDelegateForCell(1, 1, &t.ofCell);
        }),
            1);
    }

    void signalsArePassedOnOncePerCall()
    {
        QFETCH(Act, set);
        QFETCH(int, times);
        Table table;
        QWidget editor;
        editor.setObjectName("editor");
        set(table);
        table.view.setItemDelegate(nullptr); // It would not know the editor.
        const DelegateSignals emitted(*table.forward);
        QSignalSpy sizes(table.forward, &QAbstractItemDelegate::sizeHintChanged);
        Q_EMIT table.ofCell.commitData(&editor);
        Q_EMIT table.ofCell.closeEditor(&editor, QAbstractItemDelegate::EditNextItem);
        Q_EMIT table.ofCell.sizeHintChanged(table.model.index(1, 1));
        QStringList expected;
        for (int i = 0; i < times; ++i)
            expected << "commit editor";
        for (int i = 0; i < times; ++i)
            expected << "close editor 1";
        QCOMPARE(emitted.list, expected);
        QCOMPARE(sizes.count(), times);
    }

    // Counted per call: the view is told twice to close the editor.
    void aDelegateOfTwoCellsClosesTwice()
    {
        TableWindow table;
        LineEditItemDelegate delegate(wholeNumbers(), nullptr);
        auto* forward = new ForwardDelegate(*table.view);
        forward->setItemDelegateForCell(1, 1, &delegate);
        forward->setItemDelegateForCell(2, 1, &delegate);
        table.view->setItemDelegate(forward);
        table.show();
        QVERIFY(table.open(1, 1));
        QTest::keyClicks(QApplication::focusWidget(), "275");
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        expectWarning("QAbstractItemView::closeEditor called with an editor that does not belong "
                      "to this view");
#endif
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        settle();
        QCOMPARE(describe(table.value(1, 1)), QString("int 275"));
    }

    void insertedRowsMoveRowsAndCells_data()
    {
        columns<int, int, QStringList>("first", "count", "governs");
        // The row 2 has a delegate, and so has the cell (3, 0). The column 0 has one, too.
        row("above", 0, 1, QStringList{"column", "column", "column", "row", "cell"});
        row("two of them", 1, 2, QStringList{"column", "column", "column", "column", "row"});
        row("at the row", 2, 1, QStringList{"column", "column", "column", "row", "cell"});
        row("between the row and the cell", 3, 1,
            QStringList{"column", "column", "row", "column", "cell"});
        row("below", 4, 3, QStringList{"column", "column", "row", "cell", "column"});
    }

    void insertedRowsMoveRowsAndCells()
    {
        QFETCH(int, first);
        QFETCH(int, count);
        QFETCH(QStringList, governs);
        Table table;
        table.forward->setItemDelegateForRow(2, &table.ofRow);
        table.forward->setItemDelegateForCell(3, 0, &table.ofCell);
        table.forward->setItemDelegateForColumn(0, &table.ofColumn);
        table.model.insertRows(first, count);
        for (int row = 0; row < governs.size(); ++row)
            QCOMPARE(table.governs(row, 0), governs[row]);
    }

    void nothingElseMovesThem_data()
    {
        columns<Act>("change");
        row("a removed row", Act([](Table& t) { t.model.removeRow(0); }));
        row("an inserted column", Act([](Table& t) { t.model.insertColumn(0); }));
        row("a removed column", Act([](Table& t) { t.model.removeColumn(0); }));
        row("a sort", Act([](Table& t) { t.model.sort(0, Qt::DescendingOrder); }));
        row("another model", Act([](Table& t) {
            auto* other = new CellModel(6, 4);
            other->setParent(&t.view);
            t.view.setModel(other);
            other->insertRow(0);
        }));
    }

    void nothingElseMovesThem()
    {
        QFETCH(Act, change);
        Table table;
        table.forward->setItemDelegateForRow(1, &table.ofRow);
        table.forward->setItemDelegateForCell(2, 2, &table.ofCell);
        change(table);
        QCOMPARE(table.governs(1, 0), QString("row"));
        QCOMPARE(table.governs(2, 2), QString("cell"));
    }

    void neitherAMoveNorAResetMovesThem_data()
    {
        columns<Change>("change");
        row("a moved row", Change(&ChangingModel::moveARow));
        row("a reset", Change(&ChangingModel::reset));
    }

    void neitherAMoveNorAResetMovesThem()
    {
        QFETCH(Change, change);
        ChangingModel model;
        Table table(&model);
        table.forward->setItemDelegateForRow(1, &table.ofRow);
        table.forward->setItemDelegateForCell(2, 2, &table.ofCell);
        (model.*change)();
        QCOMPARE(table.governs(1, 0), QString("row"));
        QCOMPARE(table.governs(2, 2), QString("cell"));
    }

    void theSignalsOfMovedDelegatesArePassedOn()
    {
        Table table;
        table.forward->setItemDelegateForRow(1, &table.ofRow);
        table.model.insertRow(0);
        table.view.setItemDelegate(nullptr);
        const DelegateSignals emitted(*table.forward);
        Q_EMIT table.ofRow.commitData(nullptr);
        QCOMPARE(emitted.list, QStringList("commit null"));
    }

    void rowsBelowARowOfATreeCountAsRowsAtTheTop()
    {
        Table table;
        QTreeView tree;
        CellModel model(4, 2);
        tree.setModel(&model);
        ForwardDelegate forward(tree);
        forward.setItemDelegateForRow(1, &table.ofRow);
        model.item(3)->appendRow(new QStandardItem("below"));
        static_cast<void>(forward.sizeHint({}, model.index(1, 0)));
        QCOMPARE(table.calls, QStringList());
        static_cast<void>(forward.sizeHint({}, model.index(2, 0)));
        QCOMPARE(table.calls, QStringList("row: sizeHint at 0,0 2,0"));
    }

    void aModelThatComesLaterIsNotFollowed()
    {
        QStringList calls;
        Recording row("row", calls);
        QTableView view;
        ForwardDelegate forward(view);
        forward.setItemDelegateForRow(1, &row);
        CellModel model(4, 2);
        view.setModel(&model);
        model.insertRow(0);
        static_cast<void>(forward.sizeHint({}, model.index(1, 0)));
        QCOMPARE(calls, QStringList("row: sizeHint at 0,0 1,0"));
    }

    void theModelMayOutliveIt()
    {
        CellModel model(4, 2);
        {
            QTableView view;
            view.setModel(&model);
            auto* forward = new ForwardDelegate(view);
            view.setItemDelegate(forward);
            auto* delegate = new LineEditItemDelegate(wholeNumbers(), &view);
            forward->setItemDelegateForRow(1, delegate);
            forward->setItemDelegateForCell(1, 1, delegate);
        }
        model.insertRow(0);
    }

    void itMayOutliveTheModel()
    {
        QTableView view;
        auto model = std::make_unique<CellModel>(4, 2);
        view.setModel(model.get());
        const auto forward = std::make_unique<ForwardDelegate>(view);
        model.reset();
    }

    void aCircleIsReported_data()
    {
        columns<Act>("close");
        row("of one", Act([](Table& t) { t.forward->setItemDelegate(t.forward); }));
        row("of two", Act([](Table& t) {
            auto* second = new ForwardDelegate(t.view);
            t.forward->setItemDelegateForRow(1, second);
            second->setItemDelegateForColumn(1, t.forward);
        }));
        row("of three", Act([](Table& t) {
            auto* second = new ForwardDelegate(t.view);
            auto* third = new ForwardDelegate(t.view);
            t.forward->setItemDelegateForCell(1, 1, second);
            second->setItemDelegateForColumn(1, third);
            third->setItemDelegate(t.forward);
        }));
    }

    void aCircleIsReported()
    {
        QFETCH(Act, close);
        Table table;
        expectAssert("!isCircle", {}, "a ForwardDelegate must not hand a call back to itself");
        close(table);
        QCOMPARE(table.governs(1, 1), QString());
    }

    void oneMayHandOnToAnother()
    {
        Table table;
        auto* second = new ForwardDelegate(table.view);
        second->setItemDelegateForColumn(1, &table.ofColumn);
        table.forward->setItemDelegateForRow(1, second);
        QCOMPARE(table.governs(1, 1), QString("column"));
        QCOMPARE(table.governs(1, 2), QString());
    }

    // Row numbers have an end, which they must not go past.
    void rowsAreInsertedAboveTheLastNumber()
    {
        Table table;
        const int last = std::numeric_limits<int>::max();
        table.forward->setItemDelegateForRow(last, &table.ofRow);
        table.forward->setItemDelegateForCell(last, 0, &table.ofCell);
        table.forward->setItemDelegateForRow(last - 2, &table.ofRow);
        table.model.insertRows(0, 3);
        for (int row = 0; row < table.model.rowCount(); ++row)
            QCOMPARE(table.governs(row, 0), QString());
    }

    void negativeNumbersAreOfNoCell()
    {
        Table table;
        table.forward->setItemDelegateForRow(-1, &table.ofRow);
        table.forward->setItemDelegateForColumn(-1, &table.ofColumn);
        table.forward->setItemDelegateForCell(-1, -1, &table.ofCell);
        QCOMPARE(table.governs(0, 0), QString());
        table.model.insertRow(0);
        QCOMPARE(table.governs(0, 0), QString());
    }
};

VRN_TEST(TestForwardDelegate)

#include "tst_forward_delegate.moc"
