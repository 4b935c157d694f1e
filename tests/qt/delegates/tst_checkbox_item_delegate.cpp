#include <vrn/qt/checkbox_item_delegate.h>

#include <QImage>
#include <QPainter>

#include "qt/delegates/table_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::qt;
using namespace vrn::test;

namespace {

QImage painted(const QAbstractItemDelegate& delegate, const QModelIndex& index, QStyle::State state)
{
    QImage image(60, 30, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = QRect(2, 2, 56, 26);
    option.state = state;
    option.showDecorationSelected = true;
    delegate.paint(&painter, option, index);
    return image;
}

struct CheckModel : CellModel
{
    CheckModel()
        : CellModel(4, 3)
    {
        setData(index(1, 1), Qt::Unchecked, Qt::CheckStateRole);
        itemFromIndex(index(1, 1))->setCheckable(true);
    }
};

class Source : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void clicked();
};

} // namespace

class TestCheckboxItemDelegate : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCellHasNoFocusFrame()
    {
        const CheckModel model;
        const QModelIndex index = model.index(1, 1);
        const QStyle::State plain = QStyle::State_Enabled | QStyle::State_Active;
        const QStyle::State focused = plain | QStyle::State_HasFocus
            | QStyle::State_KeyboardFocusChange;
        const CheckboxItemDelegate delegate(nullptr);
        const QItemDelegate ofQt;
        QCOMPARE(painted(delegate, index, plain), painted(ofQt, index, plain));
        QCOMPARE(painted(delegate, index, focused), painted(delegate, index, plain));
        // So there is something to leave out.
        QVERIFY(painted(ofQt, index, focused) != painted(ofQt, index, plain));
    }

    void spaceAndAClickSwitchTheBox()
    {
        TableWindow table;
        CheckModel model;
        table.view->setModel(&model);
        CheckboxItemDelegate delegate(nullptr);
        table.view->setItemDelegate(&delegate);
        table.show();
        const QModelIndex cell = model.index(1, 1);
        table.view->setCurrentIndex(cell);
        QTest::keyClick(table.view, Qt::Key_Space);
        QCOMPARE(cell.data(Qt::CheckStateRole).toInt(), int(Qt::Checked));

        QStyleOptionViewItem option;
        option.rect = table.view->visualRect(cell);
        const QPoint place(option.rect.left() + 10, option.rect.center().y());
        QTest::mouseClick(table.view->viewport(), Qt::LeftButton, {}, place);
        QCOMPARE(cell.data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
        table.view->setModel(nullptr);
    }

    void theTextIsEditedAsByQt()
    {
        TableWindow table;
        CheckModel model;
        table.view->setModel(&model);
        CheckboxItemDelegate delegate(nullptr);
        QWidget parent;
        auto* edit = qobject_cast<QLineEdit*>(
            delegate.createEditor(&parent, {}, model.index(1, 1)));
        QVERIFY(edit);
        delegate.setEditorData(edit, model.index(1, 1));
        QCOMPARE(edit->text(), QString("S235"));
        edit->setText("S275");
        delegate.setModelData(edit, &model, model.index(1, 1));
        QCOMPARE(model.index(1, 1).data().toString(), QString("S275"));
        QStyleOptionViewItem option;
        option.rect = QRect(5, 6, 300, 200);
        QItemDelegate().updateEditorGeometry(edit, option, model.index(1, 1));
        const QRect geometry = edit->geometry();
        edit->setGeometry(0, 0, 1, 1);
        delegate.updateEditorGeometry(edit, option, model.index(1, 1));
        QCOMPARE(edit->geometry(), geometry);
        QCOMPARE(delegate.sizeHint({}, model.index(1, 1)),
            QItemDelegate().sizeHint({}, model.index(1, 1)));
        table.view->setModel(nullptr);
    }

    void aSlotDoesNothing()
    {
        const CheckboxItemDelegate delegate(nullptr);
        Source source;
        QVERIFY(connect(&source, SIGNAL(clicked()), &delegate, SLOT(onClicked())));
        Q_EMIT source.clicked();
    }
};

VRN_TEST(TestCheckboxItemDelegate)

#include "tst_checkbox_item_delegate.moc"
