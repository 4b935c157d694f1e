#include "common/steady_index_p.h"

#include <QAbstractItemModelTester>
#include <QIdentityProxyModel>
#include <QSortFilterProxyModel>

#include "qt/cppdb_table/typed_model.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <functional>
#include <memory>

using namespace vrn::test;
using vrn::qt::detail::SteadyIndex;

namespace {

/// Shows each row of its source twice, one below the other.
class Doubled : public QAbstractProxyModel
{
    Q_OBJECT

public:
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override
    {
        return hasIndex(row, column, parent) ? createIndex(row, column) : QModelIndex();
    }
    QModelIndex parent(const QModelIndex&) const override { return {}; }
    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : 2 * sourceModel()->rowCount();
    }
    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : sourceModel()->columnCount();
    }
    QModelIndex mapToSource(const QModelIndex& index) const override
    {
        return index.isValid() ? sourceModel()->index(index.row() / 2, index.column())
                               : QModelIndex();
    }
    QModelIndex mapFromSource(const QModelIndex& index) const override
    {
        return index.isValid() ? createIndex(2 * index.row(), index.column()) : QModelIndex();
    }
};

/// Has a column of its own after those of its source.
class Extended : public QIdentityProxyModel
{
    Q_OBJECT

public:
    int columnCount(const QModelIndex& parent = {}) const override
    {
        return QIdentityProxyModel::columnCount(parent) + 1;
    }
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override
    {
        return hasIndex(row, column, parent) ? createIndex(row, column) : QModelIndex();
    }
    QModelIndex mapToSource(const QModelIndex& index) const override
    {
        const bool isOwn = index.isValid() && index.column() == columnCount() - 1;
        return isOwn ? QModelIndex() : QIdentityProxyModel::mapToSource(index);
    }
};

/// Two sorting proxies above a model.
struct Proxies
{
    Proxies()
    {
        below->setSourceModel(model.get());
        below->sort(0);
        above.setSourceModel(below.get());
        above.sort(0, Qt::DescendingOrder);
    }

    QString at(const SteadyIndex& index) const { return index.get().data().toString(); }

    std::unique_ptr<TypedModel> model = std::make_unique<TypedModel>("'b' | 'c' | 'a'");
    std::unique_ptr<QSortFilterProxyModel> below = std::make_unique<QSortFilterProxyModel>();
    QSortFilterProxyModel above;
};

using Deed = std::function<void(Proxies&)>;

} // namespace

Q_DECLARE_METATYPE(Deed)

class TestSteadyIndex : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void itFollowsItsCell_data()
    {
        columns<Deed, int>("deed", "row");
        row("where it is at first", Deed([](Proxies&) {}), 1);
        row("sorted the other way", Deed([](Proxies& p) {
            p.above.sort(0);
            p.model->insert(0, "'0'");
        }),
            2);
        row("rows are inserted before it", Deed([](Proxies& p) { p.model->insert(0, "'d'"); }), 2);
        row("rows are removed before it", Deed([](Proxies& p) { p.model->remove(1); }), 0);
        row("it is removed", Deed([](Proxies& p) { p.model->remove(0); }), -1);
        row("it is filtered out", Deed([](Proxies& p) { p.below->setFilterFixedString("a"); }), -1);
        row("it is filtered out and in again", Deed([](Proxies& p) {
            p.above.setFilterFixedString("a");
            p.above.setFilterFixedString(QString());
        }),
            1);
        row("the model is reset", Deed([](Proxies& p) { p.model->reset(); }), -1);
        row("a proxy gets another source",
            Deed([](Proxies& p) { p.above.setSourceModel(p.model.get()); }), 1);
        row("a proxy loses its source", Deed([](Proxies& p) { p.above.setSourceModel(nullptr); }),
            -1);
        row("the model is destroyed", Deed([](Proxies& p) { p.model.reset(); }), -1);
        row("the proxy between is destroyed", Deed([](Proxies& p) { p.below.reset(); }), -1);
    }
    void itFollowsItsCell()
    {
        QFETCH(Deed, deed);
        QFETCH(int, row);
        Proxies proxies;
        const QAbstractItemModelTester tester(
            &proxies.above, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const SteadyIndex index(&proxies.above, proxies.above.index(1, 0));
        QCOMPARE(index.model(), &proxies.above);
        deed(proxies);
        QCOMPARE(index.get().row(), row);
        if (row >= 0)
            QCOMPARE(index.get().model(), &proxies.above);
    }

    void itIsWrittenWhereItIsShown_data()
    {
        columns<Deed, QString, bool>("deed", "content", "isWritten");
        const Deed nothing = [](Proxies&) {};
        row("in the model above all", nothing, "'b' | 'c' | 'a'", true);
        row("below a proxy that filters it out",
            Deed([](Proxies& p) { p.above.setFilterFixedString("a"); }), "'b' | 'c' | 'a'", true);
        row("below both", Deed([](Proxies& p) { p.below->setFilterFixedString("a"); }),
            "'b' | 'c' | 'a'", true);
        row("nowhere after it was removed", Deed([](Proxies& p) { p.model->remove(0); }),
            "'c' | 'a'", false);
        row("nowhere after a proxy has lost its source",
            Deed([](Proxies& p) { p.above.setSourceModel(nullptr); }), "'b' | 'c' | 'a'", false);
    }

    void itIsWrittenWhereItIsShown()
    {
        QFETCH(Deed, deed);
        QFETCH(QString, content);
        QFETCH(bool, isWritten);
        Proxies proxies;
        const SteadyIndex index(&proxies.above, proxies.above.index(1, 0));
        deed(proxies);
        const QVariant value = TypedModel::cellOf("'d'");
        QCOMPARE(index.setData(value, vrn::qt::EditRole), isWritten);
        QCOMPARE(proxies.model->content(), isWritten ? content.replace("'b'", "'d'") : content);
    }

    void itEndsWithItsModel()
    {
        TypedModel model("'a'");
        auto proxy = std::make_unique<QSortFilterProxyModel>();
        proxy->setSourceModel(&model);
        const SteadyIndex index(proxy.get(), proxy->index(0, 0));
        proxy.reset();
        QVERIFY(!index.get().isValid());
        QCOMPARE(index.model(), nullptr);
    }

    void aCellOfTheProxyItselfIsFollowedThere()
    {
        TypedModel model("'a' | 'b'");
        Extended extended;
        extended.setSourceModel(&model);
        const SteadyIndex index(&extended, extended.index(1, 1));
        QCOMPARE(index.get(), extended.index(1, 1));
        model.insert(0, "'c'");
        QCOMPARE(index.get(), extended.index(2, 1));
    }

    void aCellThatIsShownTwiceStaysTheSameOfBoth()
    {
        TypedModel model("'a' | 'b'");
        Doubled doubled;
        doubled.setSourceModel(&model);
        for (int row = 0; row < 4; ++row)
            QCOMPARE(SteadyIndex(&doubled, doubled.index(row, 0)).get(), doubled.index(row, 0));
    }

    void noCellIsNoCell()
    {
        TypedModel model("'a'");
        QVERIFY(!SteadyIndex(&model, QModelIndex()).get().isValid());
    }
};

VRN_TEST(TestSteadyIndex)
#include "tst_steady_index.moc"
