#include <vrn/qt/cell_data.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QStandardItemModel>

#include <memory>

using namespace vrn::qt;
using namespace vrn::test;

class TestCellData : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRolesAreThoseThatModelsStore()
    {
        QCOMPARE(int(DisplayRole), 0);
        QCOMPARE(int(ToolTipRole), 3);
        QCOMPARE(int(EditRole), 257);
        QCOMPARE(int(EditRole), Qt::UserRole + 1);
        QVERIFY(int(EditRole) != int(Qt::EditRole));
    }

    // Nothing in this program asks for the type by its C++ name before.
    void theTypeIsKnownByItsName()
    {
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        const int id = QMetaType::fromName("boost::any").id();
#else
        const int id = QMetaType::type("boost::any");
#endif
        QVERIFY(id >= QMetaType::User);
        QCOMPARE(id, qMetaTypeId<boost::any>());
    }

    void aVariantGivesTheValueBack_data()
    {
        columns<boost::any>("value");
        row("a number", boost::any(12.5));
        row("a text", boost::any(QStringLiteral("IPE 300")));
        row("a whole number", boost::any(7));
        row("no value", boost::any());
    }

    void aVariantGivesTheValueBack()
    {
        QFETCH(boost::any, value);
        const QVariant variant = QVariant::fromValue(value);
        QVERIFY(variant.canConvert<boost::any>());
        QCOMPARE(variant.value<boost::any>(), value);
        QCOMPARE(QVariant(variant).value<boost::any>(), value);

        QStandardItemModel model(1, 1);
        QVERIFY(model.setData(model.index(0, 0), variant, EditRole));
        QCOMPARE(model.index(0, 0).data(EditRole).value<boost::any>(), value);
    }

    void aCellWithoutAValueHasAnEmptyOne_data()
    {
        columns<QVariant>("variant");
        row("an invalid variant", QVariant());
        row("a number of Qt's", QVariant(12.5));
        row("a text of Qt's", QVariant(QStringLiteral("12.5")));
        row("a pointer", QVariant::fromValue<QObject*>(nullptr));
    }

    void aCellWithoutAValueHasAnEmptyOne()
    {
        QFETCH(QVariant, variant);
        QVERIFY(!variant.canConvert<boost::any>());
        QCOMPARE(variant.value<boost::any>(), boost::any());
    }

    void aVariantHoldsItsOwnCopyOfTheValue()
    {
        const auto held = std::make_shared<int>(1);
        {
            const QVariant first = QVariant::fromValue<boost::any>(held);
            const QVariant second = first;
            QCOMPARE(held.use_count() > 1, true);
        }
        QCOMPARE(held.use_count(), 1L);
    }
};

VRN_TEST(TestCellData)

#include "tst_cell_data.moc"
