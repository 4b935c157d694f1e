#include <vrn/qt/property_table_model.h>

#include <vrn/qt/cell_data.h>
#include <vrn/qt/property_error.h>
#include <vrn/qt/property_selection.h>

#include "support/random_seed.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "beam_model.h"

#include <QAbstractItemModelTester>
#include <QItemSelectionModel>
#include <QPointer>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTableView>
#include <QTextLayout>

#include <algorithm>
#include <memory>
#include <random>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

struct Table
{
    explicit Table(int count)
        : model(count)
        , rows(&model)
        , tester(&rows, QAbstractItemModelTester::FailureReportingMode::QtTest)
    {}

    QModelIndex cell(int row, const char* key) const
    {
        for (int column = 0; column < rows.columnCount(); ++column) {
            if (beamProperties().properties()[std::size_t(column)].key == key)
                return rows.index(row, column);
        }
        return {};
    }
    QString shown() const
    {
        QString text;
        for (const ObjectId& id : rows.ids())
            text += QString::number(id.key) + ' ';
        return text.trimmed();
    }
    void remove(std::uint64_t key) { gone.push_back(model.beams.extract(key)); }
    void update()
    {
        model.announce();
        model.flush();
    }

    BeamModel model;
    PropertyTableModel rows;
    QAbstractItemModelTester tester;
    std::vector<Beams::node_type> gone;
};

ObjectIds idsOf(const QString& text)
{
    ObjectIds ids;
    for (const QString& key : text.split(' ')) {
        if (!key.isEmpty())
            ids.emplace_back(key.toULongLong());
    }
    return ids;
}

} // namespace

class TestPropertyTableModel : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsAllObjects();
    void showsTextsInTheirOwnDirection_data();
    void showsTextsInTheirOwnDirection();
    void hasTypedValues();
    void writesNothing();
    void setsRows_data();
    void setsRows();
    void keepsSelectionsToTheirObjects();
    void emitsFewSignals_data();
    void emitsFewSignals();
    void followsWhatComesAndGoes();
    void keepsRowsThatWereSet();
    void followsAnEdit();
    void followsTheUnits();
    void greysCellsByTheirCondition();
    void readsInBlocks();
    void showsTheReasonOfAColumn();
    void keepsItsRowsIfTheObjectsCannotBeListed();
    void withoutAModelHasNoRows();
    void givesEachSelectedObjectOnce();
    void reportsARowThatIsNotThere();
    void survivesWhatItsSlotsDo_data();
    void survivesWhatItsSlotsDo();
};

void TestPropertyTableModel::showsAllObjects()
{
    Table table(3);
    QCOMPARE(table.rows.rowCount(), 3);
    QCOMPARE(table.rows.columnCount(), 13);
    QCOMPARE(table.cell(1, "name").data().toString(), QString("B2"));
    QCOMPARE(table.cell(1, "length").data().toString(), QString("3.000 m"));
    QCOMPARE(table.cell(1, "length").data(Qt::ToolTipRole).toString(), QString("3.000 m"));
    QCOMPARE(table.cell(1, "load").data().toString(), QString());
    QCOMPARE(table.rows.headerData(4, Qt::Horizontal).toString(), QString("Length"));
    QCOMPARE(table.rows.headerData(1, Qt::Vertical).toInt(), 2);
    QVERIFY(!table.rows.headerData(13, Qt::Horizontal).isValid()
        || table.rows.headerData(13, Qt::Horizontal).toInt() == 14);
    QCOMPARE(table.cell(0, "length").data(Qt::TextAlignmentRole).toInt(),
        int(Qt::AlignVCenter | Qt::AlignRight));
    QCOMPARE(table.cell(0, "name").data(Qt::TextAlignmentRole).toInt(),
        int(Qt::AlignVCenter | Qt::AlignLeft));
}

void TestPropertyTableModel::showsTextsInTheirOwnDirection_data()
{
    columns<QByteArray, QString, bool>("key", "text", "runsToTheRight");
    row("a length", QByteArray("length"), QString("-3.000 m"), true);
    row("a name", QByteArray("name"), QString("B 1"), true);
    row("a name from the right", QByteArray("name"), QString::fromUtf8("\327\220 1"), false);
}

// In the cell of a view whose layout runs from right to left.
void TestPropertyTableModel::showsTextsInTheirOwnDirection()
{
    QFETCH(QByteArray, key);
    QFETCH(QString, text);
    QFETCH(bool, runsToTheRight);
    Table table(1);
    table.model.beams[0].length = -3.0;
    table.model.beams[0].name = text;
    table.update();
    QCOMPARE(table.cell(0, key).data().toString(), text);
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    const auto restored = qScopeGuard([] { QGuiApplication::setLayoutDirection(Qt::LeftToRight); });
    const QString shown = table.cell(0, key).data().toString();
    QVERIFY(shown.contains(text));
    QTextLayout layout(shown);
    QTextOption option;
    option.setTextDirection(Qt::RightToLeft);
    layout.setTextOption(option);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    // Inside the text, because versions of Qt place the cursor differently at its edges.
    const int first = int(shown.indexOf(text));
    const qreal end = line.cursorToX(first + int(text.size()) - 1);
    QCOMPARE(line.cursorToX(first + 1) < end, runsToTheRight);
}

void TestPropertyTableModel::hasTypedValues()
{
    Table table(2);
    table.model.beams[1].length = 10.0 / 3.0;
    table.update();
    const auto value = table.cell(1, "length").data(EditRole).value<boost::any>();
    QVERIFY(haveSameBits(boost::any_cast<double>(value), 10.0 / 3.0));
    // A cell without a value has an empty one, and one without an object has none.
    const QVariant load = table.cell(1, "load").data(EditRole);
    QVERIFY(load.isValid() && load.value<boost::any>().empty());
    table.rows.setIds({0, 1});
    table.remove(1);
    table.update();
    QVERIFY(!table.cell(1, "load").data(EditRole).isValid());
    QVERIFY(!table.cell(1, "load").data(Qt::EditRole).isValid());
}

void TestPropertyTableModel::writesNothing()
{
    Table table(1);
    const QModelIndex cell = table.cell(0, "length");
    QVERIFY(!table.rows.setData(cell, QVariant::fromValue<boost::any>(5.0), EditRole));
    QVERIFY(!table.rows.setData(cell, 5.0));
    QVERIFY(!(table.rows.flags(cell) & Qt::ItemIsEditable));
    QVERIFY(table.model.writes.isEmpty());
}

void TestPropertyTableModel::setsRows_data()
{
    columns<QString, QString>("before", "after");
    row("the same", "0 1 2", "0 1 2");
    row("one less", "0 1 2", "0 2");
    row("several less", "0 1 2 3 4", "1 3");
    row("one more", "0 2", "0 1 2");
    row("several more", "1 3", "0 1 2 3 4");
    row("in another order", "0 1 2 3", "3 1 0 2");
    row("all others", "0 1 2", "3 4");
    row("none", "0 1 2", "");
    row("all at once", "", "4 2 0");
    row("everything at once", "0 1 2 3 4", "7 3 9 1 8");
}

void TestPropertyTableModel::setsRows()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    Table table(10);
    table.rows.setIds(idsOf(before));
    QItemSelectionModel selection(&table.rows);
    selection.select(QItemSelection(table.rows.index(0, 0), table.rows.index(4, 12)),
        QItemSelectionModel::Select);
    std::vector<std::pair<QPersistentModelIndex, ObjectId>> places;
    for (int row = 0; row < table.rows.rowCount(); ++row)
        places.emplace_back(table.rows.index(row, row), table.rows.id(row));
    table.rows.setIds(idsOf(after));
    QCOMPARE(table.shown(), after);
    for (std::size_t place = 0; place < places.size(); ++place) {
        const auto& each = places[place];
        QCOMPARE(each.first.isValid() ? each.first.row() : -1, table.rows.rowOf(each.second));
        QVERIFY(!each.first.isValid() || each.first.column() == int(place));
    }
    // And back.
    table.rows.setIds(idsOf(before));
    QCOMPARE(table.shown(), before);
}

void TestPropertyTableModel::keepsSelectionsToTheirObjects()
{
    Table table(40);
    QItemSelectionModel selection(&table.rows);
    std::mt19937 random(randomSeed());
    for (int i = 0; i < 300; ++i) {
        ObjectIds all = table.rows.ids();
        selection.clear();
        ObjectIds selected;
        for (const ObjectId& id : all) {
            if (random() % 3 == 0) {
                selection.select(table.rows.index(table.rows.rowOf(id), 2),
                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
                selected.push_back(id);
            }
        }
        ObjectIds next;
        for (std::uint64_t key = 0; key < 40; ++key) {
            if (random() % 4 != 0)
                next.emplace_back(key);
        }
        if (random() % 2 == 0)
            std::shuffle(next.begin(), next.end(), random);
        table.rows.setIds(next);
        QCOMPARE(table.rows.ids(), next);
        std::sort(selected.begin(), selected.end());
        std::sort(next.begin(), next.end());
        ObjectIds due;
        std::set_intersection(
            selected.begin(), selected.end(), next.begin(), next.end(), std::back_inserter(due));
        QCOMPARE(table.rows.ids(selection.selection()), due);
    }
}

void TestPropertyTableModel::emitsFewSignals_data()
{
    columns<QString, int>("after", "count");
    row("nothing changes", "0 1 2 3 4 5", 0);
    row("a range less", "0 1 5", 1);
    row("every other", "0 2 4", 2);
    row("other rows in other places", "6 4 7 2 8", 4);
}

void TestPropertyTableModel::emitsFewSignals()
{
    QFETCH(QString, after);
    Table table(6);
    int count = 0;
    const auto add = [&] { ++count; };
    connect(&table.rows, &QAbstractItemModel::rowsInserted, this, add);
    connect(&table.rows, &QAbstractItemModel::rowsRemoved, this, add);
    connect(&table.rows, &QAbstractItemModel::layoutChanged, this, add);
    QSignalSpy reset(&table.rows, &QAbstractItemModel::modelReset);
    table.rows.setIds(idsOf(after));
    QTEST(count, "count");
    QCOMPARE(reset.count(), 0);
}

void TestPropertyTableModel::followsWhatComesAndGoes()
{
    Table table(4);
    table.remove(1);
    table.remove(3);
    QCOMPARE(table.shown(), QString("0 1 2 3"));
    table.update();
    QCOMPARE(table.shown(), QString("0 2"));
    table.model.beams.insert(std::move(table.gone.back()));
    table.model.beams[9].name = "new";
    table.update();
    QCOMPARE(table.shown(), QString("0 2 3 9"));
    QCOMPARE(table.cell(3, "name").data().toString(), QString("new"));
}

void TestPropertyTableModel::keepsRowsThatWereSet()
{
    Table table(4);
    table.rows.setIds({3, 1, 3, {1, 7}});
    QCOMPARE(table.shown(), QString("3 1"));
    table.remove(1);
    table.update();
    QCOMPARE(table.shown(), QString("3 1"));
    QCOMPARE(table.cell(1, "name").data().toString(), QString());
    table.model.beams.insert(std::move(table.gone.back()));
    table.update();
    QCOMPARE(table.cell(1, "name").data().toString(), QString("B2"));
}

void TestPropertyTableModel::followsAnEdit()
{
    Table table(4);
    QCOMPARE(table.cell(2, "length").data().toString(), QString("3.000 m"));
    QSignalSpy changed(&table.rows, &QAbstractItemModel::dataChanged);
    PropertySelection(&table.model, {1, 2}).edit("length", 5.0);
    table.model.flush();
    QCOMPARE(changed.count(), 1);
    const auto topLeft = changed[0].at(0).toModelIndex();
    const auto bottomRight = changed[0].at(1).toModelIndex();
    QCOMPARE(topLeft, table.cell(1, "length"));
    QCOMPARE(bottomRight, table.cell(2, "camber"));
    QCOMPARE(table.cell(2, "length").data().toString(), QString("5.000 m"));
    QCOMPARE(table.cell(2, "area").data().toString(), QString("1000.000"));
    // What is not shown is no change. But the camber may depend on it, by its functions.
    table.model.announce({"height"}, {17});
    table.model.flush();
    QCOMPARE(changed.count(), 1);
    table.model.announce({"height"});
    table.model.flush();
    QCOMPARE(changed.count(), 2);
    QCOMPARE(changed[1].at(0).toModelIndex(), table.cell(0, "camber"));
}

void TestPropertyTableModel::followsTheUnits()
{
    Table table(2);
    QSignalSpy changed(&table.rows, &QAbstractItemModel::dataChanged);
    table.model.setUnits(vrn::units::Context(8));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(table.cell(1, "length").data().toString(), QString("9.84 ft"));
}

void TestPropertyTableModel::greysCellsByTheirCondition()
{
    BeamModel model(3);
    PropertySet<Beam> beams("beam", &countedBeams);
    beams.add("length", "Length", &Beam::length, field::number().enabledIf("active"))
        .add("name", "Name", &Beam::name, field::text())
        .add("active", "Active", &Beam::isActive, field::flag());
    const std::uint32_t kind = model.addKind(beams, &model.beams);
    model.beams[1].isActive = false;
    PropertyTableModel rows(&model, kind);
    const QAbstractItemModelTester tester(
        &rows, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const auto isEnabled = [&](int row, int column) {
        return !rows.index(row, column).data(Qt::ForegroundRole).isValid()
            && rows.flags(rows.index(row, column)).testFlag(Qt::ItemIsEnabled);
    };
    QVERIFY(isEnabled(0, 0));
    QVERIFY(!isEnabled(1, 0));
    // A cell that is not enabled could not be selected and copied.
    QVERIFY(rows.flags(rows.index(1, 0)).testFlag(Qt::ItemIsEnabled));
    QCOMPARE(rows.index(1, 0).data().toString(), QString("3.000"));
    QVERIFY(isEnabled(1, 1) && isEnabled(1, 2));

    // The cells of the condition and of what it enables are drawn again.
    const QSignalSpy changed(&rows, &QAbstractItemModel::dataChanged);
    model.beams[1].isActive = true;
    model.beams[2].isActive = false;
    model.announce({"active"}, {{1, kind}, {2, kind}});
    model.flush();
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed[0][0].toModelIndex(), rows.index(1, 0));
    QCOMPARE(changed[0][1].toModelIndex(), rows.index(2, 2));
    QVERIFY(isEnabled(1, 0));
    QVERIFY(!isEnabled(2, 0));

    // As long as it is not there, nothing speaks against it.
    model.beams.erase(2);
    rows.setIds(rows.ids());
    model.announce();
    model.flush();
    QVERIFY(isEnabled(2, 0));
    model.inRead = [](const PropertyKeys&) { throw PropertyError("The file is gone."); };
    model.announce();
    model.flush();
    QVERIFY(!isEnabled(0, 0));
    QVERIFY(isEnabled(0, 1));
}

void TestPropertyTableModel::readsInBlocks()
{
    BeamModel model(1000);
    const PropertyTableModel rows(&model);
    QCOMPARE(model.reads, 0);
    for (int row = 0; row < 128; ++row) {
        for (int column = 0; column < rows.columnCount(); ++column)
            rows.index(row, column).data();
    }
    QCOMPARE(model.reads, 2);
    for (int row = 999; row >= 0; --row)
        rows.index(row, 0).data();
    QCOMPARE(model.reads, 16);
    model.announce();
    model.flush();
    rows.index(500, 0).data();
    QCOMPARE(model.reads, 17);
}

void TestPropertyTableModel::showsTheReasonOfAColumn()
{
    Table table(2);
    table.model.inRead = [](const PropertyKeys& keys) {
        if (std::find(keys.begin(), keys.end(), "length") != keys.end())
            throw std::runtime_error("no such column");
    };
    table.update();
    QCOMPARE(table.cell(1, "length").data().toString(), QString());
    QCOMPARE(table.cell(1, "length").data(Qt::ToolTipRole).toString(), QString("no such column"));
    QVERIFY(!table.cell(1, "length").data(EditRole).isValid());
    QCOMPARE(table.cell(1, "name").data().toString(), QString("B2"));
}

void TestPropertyTableModel::keepsItsRowsIfTheObjectsCannotBeListed()
{
    struct Broken : public BeamModel
    {
        Broken()
            : BeamModel(2)
        {}
        ObjectIds objects(std::uint32_t kind) const override
        {
            if (isBroken)
                throw std::runtime_error("no connection");
            return BeamModel::objects(kind);
        }
        bool isBroken = false;
    };
    Broken model;
    const PropertyTableModel rows(&model);
    model.isBroken = true;
    model.announce();
    model.flush();
    QCOMPARE(rows.rowCount(), 2);
}

void TestPropertyTableModel::withoutAModelHasNoRows()
{
    auto model = std::make_unique<BeamModel>(2);
    PropertyTableModel rows(model.get());
    QAbstractItemModelTester tester(&rows, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QTableView view;
    view.setModel(&rows);
    view.selectAll();
    model.reset();
    QCOMPARE(rows.rowCount(), 0);
    rows.setIds({1, 2});
    QVERIFY(!rows.index(0, 0).data().isValid());
    const PropertyTableModel none(nullptr);
    QCOMPARE(none.rowCount(), 0);
    QCOMPARE(none.columnCount(), 0);
}

void TestPropertyTableModel::givesEachSelectedObjectOnce()
{
    Table table(5);
    table.rows.setIds({4, 2, 0});
    QItemSelectionModel selection(&table.rows);
    selection.select(QItemSelection(table.rows.index(0, 0), table.rows.index(0, 12)),
        QItemSelectionModel::Select);
    selection.select(QItemSelection(table.rows.index(2, 3), table.rows.index(2, 3)),
        QItemSelectionModel::Select);
    selection.select(QItemSelection(table.rows.index(2, 5), table.rows.index(2, 5)),
        QItemSelectionModel::Select);
    QCOMPARE(table.rows.ids(selection.selection()), (ObjectIds{0, 4}));
    const PropertyTableModel other(&table.model);
    QVERIFY(other.ids(selection.selection()).empty());
}

void TestPropertyTableModel::reportsARowThatIsNotThere()
{
    Table table(2);
    QCOMPARE(table.rows.id(1), ObjectId(1));
    expectAssert("isRow", {"row"});
    QCOMPARE(table.rows.id(2), ObjectId());
    QCOMPARE(table.rows.rowOf(7), -1);
}

void TestPropertyTableModel::survivesWhatItsSlotsDo_data()
{
    columns<QString, QString>("deed", "signal");
    for (const char* deed : {"delete the table", "delete the model", "set other rows"}) {
        for (const char* signal : {"removed", "inserted", "moved", "changed"})
            QTest::addRow("%s when rows are %s", deed, signal) << QString(deed) << QString(signal);
    }
}

void TestPropertyTableModel::survivesWhatItsSlotsDo()
{
    QFETCH(QString, deed);
    QFETCH(QString, signal);
    QPointer<BeamModel> model = new BeamModel(10);
    QPointer<PropertyTableModel> rows = new PropertyTableModel(model);
    rows->setIds({0, 1, 2, 3, 4});
    bool isDone = false;
    const auto act = [&] {
        if (std::exchange(isDone, true))
            return;
        if (deed == "delete the table")
            delete rows;
        else if (deed == "delete the model")
            delete model;
        else
            rows->setIds({9, 0, 8});
    };
    if (signal == "removed")
        connect(rows, &QAbstractItemModel::rowsRemoved, this, act);
    else if (signal == "inserted")
        connect(rows, &QAbstractItemModel::rowsInserted, this, act);
    else if (signal == "moved")
        connect(rows, &QAbstractItemModel::layoutChanged, this, act);
    else
        connect(rows, &QAbstractItemModel::dataChanged, this, act);
    rows->setIds({7, 3, 6, 1, 5});
    if (model) {
        model->announce();
        model->flush();
    }
    QVERIFY(isDone);
    if (rows && deed == "set other rows")
        QCOMPARE(rows->ids(), (ObjectIds{9, 0, 8}));
    delete rows;
    delete model;
}

VRN_TEST(TestPropertyTableModel)
#include "tst_property_table_model.moc"
