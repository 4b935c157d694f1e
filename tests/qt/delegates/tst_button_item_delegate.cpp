#include <vrn/qt/button_item_delegate.h>

#include <QImage>
#include <QPainter>
#include <QProxyStyle>
#include <QSignalSpy>
#include <QStyleOptionButton>

#include "qt/delegates/table_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using EditFn = boost::function<void(QAbstractItemModel*, const QModelIndex&)>;

// Writes what it is asked to draw into `drawn` while it is the application's style.
class RecordingStyle : public QProxyStyle
{
public:
    struct Drawn
    {
        ControlElement element;
        QStyleOptionButton option;
        const QWidget* widget;
    };

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override
    {
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
            button && (element == CE_PushButton || element == CE_PushButtonLabel))
            drawn.push_back({element, *button, widget});
        else
            QProxyStyle::drawControl(element, option, painter, widget);
    }

    mutable std::vector<Drawn> drawn;
};

// The application owns its style, and gets the one before back in cleanup().
RecordingStyle* installStyle()
{
    auto* style = new RecordingStyle;
    QApplication::setStyle(style);
    return style;
}

void paint(const QAbstractItemDelegate& delegate, const QModelIndex& index, QStyle::State state)
{
    QImage image(40, 30, QImage::Format_RGB32);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = QRect(5, 6, 30, 20);
    option.state = state;
    delegate.paint(&painter, option, index);
}

// A delegate whose function is told in `act`.
struct Buttons
{
    explicit Buttons(QObject* owner = nullptr)
    {
        model.setData(model.index(0, 0), "Delete", Qt::DisplayRole);
        delegate = std::make_unique<ButtonItemDelegate>(
            [this](QAbstractItemModel* its, const QModelIndex& index) { act(its, index); }, owner);
    }

    QModelIndex index(int column = 0) const { return model.index(0, column); }

    QWidget* press() { return delegate->createEditor(&parent, {}, index()); }

    QWidget parent;
    CellModel model{1, 2};
    std::function<void(QAbstractItemModel*, const QModelIndex&)> act = [](QAbstractItemModel*,
                                                                           const QModelIndex&) {};
    std::unique_ptr<ButtonItemDelegate> delegate;
};

bool isSunken(const Buttons& buttons, const RecordingStyle& style, int column = 0)
{
    style.drawn.clear();
    paint(*buttons.delegate, buttons.index(column), QStyle::State_Enabled);
    return style.drawn.at(0).option.state.testFlag(QStyle::State_Sunken);
}

class PaintCounter : public QWidget
{
public:
    int count = 0;

protected:
    void paintEvent(QPaintEvent* /*event*/) override { ++count; }
};

using Deed = std::function<void(Buttons&)>;

} // namespace

Q_DECLARE_METATYPE(Deed)

class TestButtonItemDelegate : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QApplication::setStyle("fusion");
        TestObject::cleanup();
    }

    void aPressRunsTheFunctionAndOpensNoEditor()
    {
        Buttons buttons;
        int count = 0;
        buttons.act = [&](QAbstractItemModel* model, const QModelIndex& index) {
            ++count;
            QCOMPARE(model, &buttons.model);
            QCOMPARE(index, buttons.index());
        };
        QVERIFY(!buttons.press());
        QCOMPARE(count, 1);
    }

    void aMissingFunctionIsReported()
    {
        expectAssert("m_editFn", {}, "ButtonItemDelegate: no editing function specified!");
        const ButtonItemDelegate delegate(EditFn(), nullptr);
        QWidget parent;
        const CellModel model(1, 1);
        QVERIFY(!delegate.createEditor(&parent, {}, model.index(0, 0)));
    }

    void theButtonIsSunkenWhileTheFunctionRuns()
    {
        const RecordingStyle& style = *installStyle();
        Buttons buttons;
        bool isSunkenInside = false;
        bool isOtherSunken = true;
        buttons.act = [&](QAbstractItemModel*, const QModelIndex&) {
            isSunkenInside = isSunken(buttons, style);
            isOtherSunken = isSunken(buttons, style, 1);
        };
        QVERIFY(!isSunken(buttons, style));
        buttons.press();
        QVERIFY(isSunkenInside);
        QVERIFY(!isOtherSunken);
        QVERIFY(!isSunken(buttons, style));
    }

    void theTableIsPaintedBeforeTheFunctionRunsAndNotAfterwards()
    {
        Buttons buttons;
        PaintCounter parent;
        parent.show();
        QVERIFY(QTest::qWaitForWindowExposed(&parent));
        settle();
        parent.count = 0;
        int countInside = 0;
        buttons.act = [&](QAbstractItemModel*, const QModelIndex&) { countInside = parent.count; };
        buttons.delegate->createEditor(&parent, {}, buttons.index());
        QCOMPARE(countInside, 1);
        QCOMPARE(parent.count, 1);
    }

    void theButtonRisesWhenTheFunctionThrows()
    {
        const RecordingStyle& style = *installStyle();
        Buttons buttons;
        buttons.act = [](QAbstractItemModel*, const QModelIndex&) {
            throw std::runtime_error("no");
        };
        QVERIFY_EXCEPTION_THROWN(buttons.press(), std::runtime_error);
        QVERIFY(!isSunken(buttons, style));
    }

    void theFunctionMayDo_data()
    {
        columns<Deed>("deed");
        row("remove the row", Deed([](Buttons& buttons) { buttons.model.removeRow(0); }));
        row("reset the model", Deed([](Buttons& buttons) { buttons.model.clear(); }));
        row("press the button again", Deed([](Buttons& buttons) {
            buttons.act = [](QAbstractItemModel*, const QModelIndex&) {};
            buttons.press();
        }));
        row("delete the delegate", Deed([](Buttons& buttons) { buttons.delegate.reset(); }));
    }

    void theFunctionMayDo()
    {
        QFETCH(Deed, deed);
        Buttons buttons;
        buttons.act = [&](QAbstractItemModel*, const QModelIndex&) { deed(buttons); };
        QVERIFY(!buttons.press());
    }

    void theTextIsThatOfTheCell()
    {
        const RecordingStyle& style = *installStyle();
        Buttons buttons;
        paint(*buttons.delegate, buttons.index(), QStyle::State_Enabled);
        QCOMPARE(style.drawn.size(), std::size_t(2));
        QCOMPARE(style.drawn[0].element, QStyle::CE_PushButton);
        QCOMPARE(style.drawn[1].element, QStyle::CE_PushButtonLabel);
        for (const auto& drawn : style.drawn) {
            QCOMPARE(drawn.option.text, QString("Delete"));
            QCOMPARE(drawn.option.rect, QRect(5, 6, 30, 20));
        }
    }

    void theLookFollowsTheState_data()
    {
        columns<int, bool, bool>("state", "isEnabled", "isFlat");
        row("nothing", int(QStyle::State_None), false, true);
        row("enabled", int(QStyle::State_Enabled), true, true);
        row("selected", int(QStyle::State_Selected), false, true);
        row("selected and enabled", int(QStyle::State_Selected | QStyle::State_Enabled), true,
            false);
    }

    void theLookFollowsTheState()
    {
        QFETCH(int, state);
        QFETCH(bool, isEnabled);
        QFETCH(bool, isFlat);
        const RecordingStyle& style = *installStyle();
        Buttons buttons;
        paint(*buttons.delegate, buttons.index(), QStyle::State(state));
        for (const auto& drawn : style.drawn) {
            QCOMPARE(drawn.option.state,
                QStyle::State_Raised | (isEnabled ? QStyle::State_Enabled : QStyle::State_None));
            QCOMPARE(int(drawn.option.features),
                int(isFlat ? QStyleOptionButton::Flat : QStyleOptionButton::None));
        }
    }

    void theParentIsTheWidgetOfTheStyle_data()
    {
        columns<QObject*, bool>("parent", "isWidget");
        row("a widget", static_cast<QObject*>(new QWidget), true);
        row("none", static_cast<QObject*>(nullptr), false);
        row("an object", new QObject, false);
    }

    void theParentIsTheWidgetOfTheStyle()
    {
        QFETCH(QObject*, parent);
        QFETCH(bool, isWidget);
        const std::unique_ptr<QObject> owner(parent);
        const RecordingStyle& style = *installStyle();
        {
            const Buttons buttons(parent);
            paint(*buttons.delegate, buttons.index(), QStyle::State_Enabled);
        }
        for (const auto& drawn : style.drawn)
            QCOMPARE(drawn.widget, isWidget ? qobject_cast<QWidget*>(parent) : nullptr);
    }

    void nothingIsReadOrWritten()
    {
        Buttons buttons;
        QLineEdit editor("text");
        QSignalSpy changes(&buttons.model, &QAbstractItemModel::dataChanged);
        buttons.delegate->setEditorData(&editor, buttons.index());
        buttons.delegate->setModelData(&editor, &buttons.model, buttons.index());
        QCOMPARE(editor.text(), QString("text"));
        QCOMPARE(changes.count(), 0);
    }

    void theSizesAreThoseOfTheCell()
    {
        Buttons buttons;
        QCOMPARE(buttons.delegate->sizeHint({}, buttons.index()),
            QItemDelegate().sizeHint({}, buttons.index()));
        QWidget editor;
        QStyleOptionViewItem option;
        option.rect = QRect(5, 6, 300, 200);
        buttons.delegate->updateEditorGeometry(&editor, option, buttons.index());
        QCOMPARE(editor.geometry(), option.rect);
    }

    void aDoubleClickInATableIsAPress()
    {
        TableWindow table;
        int row = -1;
        ButtonItemDelegate delegate(
            [&](QAbstractItemModel*, const QModelIndex& index) { row = index.row(); }, nullptr);
        table.view->setItemDelegateForColumn(1, &delegate);
        table.show();
        const QPoint place = table.view->visualRect(table.index(2, 1)).center();
        QTest::mouseClick(table.view->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(table.view->viewport(), Qt::LeftButton, {}, place);
        QCOMPARE(row, 2);
    }

    // The function may remove the row of its own button.
    void aPressInATableMayRemoveItsRow()
    {
        TableWindow table;
        ButtonItemDelegate delegate(
            [](QAbstractItemModel* model, const QModelIndex& index) {
                model->removeRow(index.row());
            },
            nullptr);
        table.view->setItemDelegateForColumn(1, &delegate);
        table.show();
        QVERIFY(!table.open(2, 1));
        QCOMPARE(table.model->rowCount(), 3);
        settle();
    }
};

VRN_TEST(TestButtonItemDelegate)

#include "tst_button_item_delegate.moc"
