#include <vrn/base/any_predicates.h>
#include <vrn/qt/controls.h>
#include <vrn/qt/validators.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>

#include <functional>
#include <limits>
#include <memory>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

// The cells of a grid that have a widget, row by row, as in "0,1 b".
QStringList cellsOf(const QGridLayout* grid)
{
    QStringList cells;
    for (int row = 0; row < grid->rowCount(); ++row) {
        for (int column = 0; column < grid->columnCount(); ++column) {
            QLayoutItem* item = grid->itemAtPosition(row, column);
            if (!item)
                continue;
            const auto* label = qobject_cast<const QLabel*>(item->widget());
            cells << QString("%1,%2 %3")
                         .arg(row)
                         .arg(column)
                         .arg(label ? "label " + label->text() : item->widget()->objectName());
        }
    }
    return cells;
}

QWidget* named(const QString& name, QWidget* parent)
{
    auto* widget = new QWidget(parent);
    widget->setObjectName(name);
    return widget;
}

using Layouter = std::shared_ptr<ILayouter>;
using Make = std::function<QWidget*(QWidget*)>;

void addEachLayouter()
{
    QTest::addColumn<Layouter>("layouter");
    QTest::newRow("a column") << Layouter(std::make_shared<VBoxLayouter>());
    QTest::newRow("a row") << Layouter(std::make_shared<HBoxLayouter>());
    QTest::newRow("a grid downwards") << Layouter(std::make_shared<GridLayouter>(ExpandVertical));
    QTest::newRow("a property grid") << Layouter(std::make_shared<PropertyGridLayouter>());
}

bool finishesWithStretch(const ILayouter* layouter)
{
    return !dynamic_cast<const GridLayouter*>(layouter);
}

} // namespace

Q_DECLARE_METATYPE(Layouter)
Q_DECLARE_METATYPE(Make)

class TestLayouters : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aColumnStandsAtTheTop()
    {
        QWidget box;
        VBoxLayouter layouter;
        QVERIFY(!layouter.layout());
        layouter.onCreate(&box);
        layouter.onAdd(named("a", &box));
        layouter.onAdd(named("b", &box));
        verifyBox(layouter.layout(), box, 2);
        layouter.onFinish();
        verifyStretchBehind(layouter.layout(), 2);
    }

    void aRowStandsAtTheLeft()
    {
        QWidget box;
        HBoxLayouter layouter;
        QVERIFY(!layouter.layout());
        layouter.onCreate(&box);
        layouter.onAdd(named("a", &box));
        layouter.onAdd(named("b", &box));
        verifyBox(layouter.layout(), box, 2);
        layouter.onFinish();
        verifyStretchBehind(layouter.layout(), 2);
    }

    void aGridFillsOneLine_data()
    {
        QTest::addColumn<int>("direction");
        QTest::addColumn<int>("skip");
        QTest::addColumn<QStringList>("cells");
        QTest::newRow("downwards") << 0 << 0 << QStringList{"0,0 a", "1,0 b", "2,0 c"};
        QTest::newRow("to the right") << 1 << 0 << QStringList{"0,0 a", "0,1 b", "0,2 c"};
        QTest::newRow("another direction is to the right")
            << -7 << 0 << QStringList{"0,0 a", "0,1 b", "0,2 c"};
        QTest::newRow("to the right, every second cell")
            << 1 << 1 << QStringList{"0,0 a", "0,2 b", "0,4 c"};
        QTest::newRow("downwards, every third cell")
            << 0 << 2 << QStringList{"0,0 a", "3,0 b", "6,0 c"};
    }

    void aGridFillsOneLine()
    {
        QFETCH(int, direction);
        QFETCH(int, skip);
        QWidget box;
        GridLayouter layouter(static_cast<ExpandDirection>(direction));
        QVERIFY(!layouter.layout());
        layouter.onCreate(&box);
        layouter.setCellSkip(skip);
        for (const char* name : {"a", "b", "c"})
            layouter.onAdd(named(name, &box));
        layouter.onFinish();
        QTEST(cellsOf(layouter.layout()), "cells");
        QCOMPARE(box.layout(), layouter.layout());
        QCOMPARE(layouter.layout()->contentsMargins(), QMargins(4, 4, 4, 4));
        QCOMPARE(layouter.layout()->spacing(), 4);
        QCOMPARE(layouter.layout()->rowStretch(0), 0);
        QCOMPARE(layouter.layout()->columnStretch(0), 0);
    }

    void aPositionStartsAnotherLine_data()
    {
        QTest::addColumn<int>("direction");
        QTest::addColumn<QStringList>("cells");
        QTest::newRow("downwards") << 0 << QStringList{"0,0 a", "2,3 b", "3,3 c"};
        QTest::newRow("to the right") << 1 << QStringList{"0,0 a", "2,3 b", "2,4 c"};
    }

    void aPositionStartsAnotherLine()
    {
        QFETCH(int, direction);
        QWidget box;
        GridLayouter layouter(direction == 0 ? ExpandVertical : ExpandHorizontal);
        layouter.onCreate(&box);
        layouter.onAdd(named("a", &box));
        layouter.setPosition(2, 3);
        layouter.onAdd(named("b", &box));
        layouter.onAdd(named("c", &box));
        QTEST(cellsOf(layouter.layout()), "cells");
    }

    void aPositionOutsideTheGridIsReported_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("column");
        QTest::newRow("negative row") << -1 << 0;
        QTest::newRow("negative column") << 0 << -1;
        QTest::newRow("largest row") << std::numeric_limits<int>::max() << 0;
        QTest::newRow("largest column") << 0 << std::numeric_limits<int>::max();
        QTest::newRow("a row past the last") << 10000 << 0;
    }

    void aPositionOutsideTheGridIsReported()
    {
        QFETCH(int, row);
        QFETCH(int, column);
        QWidget box;
        GridLayouter layouter(ExpandVertical);
        layouter.onCreate(&box);
        layouter.setPosition(row, column);
        expectAssert("isCell(m_row, m_column)", {"m_row", "m_column"});
        layouter.onAdd(named("a", &box));
        QCOMPARE(layouter.layout()->count(), 0);
        layouter.setPosition(1, 1);
        layouter.onAdd(named("b", &box));
        QCOMPARE(cellsOf(layouter.layout()), QStringList{"1,1 b"});
    }

    void aSkipOutOfTheGridIsReportedAtTheNextWidget_data()
    {
        QTest::addColumn<int>("skip");
        QTest::newRow("the largest number") << std::numeric_limits<int>::max();
        QTest::newRow("the smallest number") << std::numeric_limits<int>::min();
        QTest::newRow("backwards out of the grid") << -2;
    }

    void aSkipOutOfTheGridIsReportedAtTheNextWidget()
    {
        QFETCH(int, skip);
        QWidget box;
        GridLayouter layouter(ExpandHorizontal);
        layouter.onCreate(&box);
        layouter.setCellSkip(skip);
        layouter.onAdd(named("a", &box));
        for (int i = 0; i < 3; ++i) {
            expectAssert("isCell(m_row, m_column)", {"m_row", "m_column"});
            layouter.onAdd(named("b", &box));
        }
        QCOMPARE(cellsOf(layouter.layout()), QStringList{"0,0 a"});
    }

    void aPropertyGridHasLabelsAndEditors_data()
    {
        QTest::addColumn<QStringList>("order");
        QTest::addColumn<QStringList>("cells");
        QTest::newRow("with labels") << QStringList{"a x", "b y"}
                                     << QStringList{"0,0 label x", "0,1 a", "1,0 label y", "1,1 b"};
        QTest::newRow("without a label the left cell stays empty")
            << QStringList{"a", "b"} << QStringList{"0,1 a", "1,1 b"};
        QTest::newRow("mixed") << QStringList{"a x", "b",
            "c y"} << QStringList{"0,0 label x", "0,1 a", "1,1 b", "2,0 label y", "2,1 c"};
    }

    void aPropertyGridHasLabelsAndEditors()
    {
        QFETCH(QStringList, order);
        QWidget box;
        PropertyGridLayouter layouter;
        QVERIFY(!layouter.layout());
        layouter.onCreate(&box);
        for (const QString& entry : order) {
            const QStringList parts = entry.split(' ');
            if (parts.size() == 2)
                layouter.onAdd(named(parts[0], &box), parts[1]);
            else
                layouter.onAdd(named(parts[0], &box));
        }
        QTEST(cellsOf(layouter.layout()), "cells");
        QCOMPARE(box.layout(), layouter.layout());
        for (QLabel* label : box.findChildren<QLabel*>()) {
            QCOMPARE(label->parentWidget(), &box);
            QVERIFY(label->buddy());
        }
    }

    void aPropertyGridKeepsTheMarginsOfQt()
    {
        QWidget box;
        PropertyGridLayouter layouter;
        layouter.onCreate(&box);
        QWidget other;
        const QGridLayout grid(&other);
        QCOMPARE(layouter.layout()->contentsMargins(), grid.contentsMargins());
        QCOMPARE(layouter.layout()->spacing(), grid.spacing());
    }

    void theLastRowAndColumnOfAPropertyGridStretch()
    {
        QWidget box;
        PropertyGridLayouter layouter;
        layouter.onCreate(&box);
        layouter.onAdd(named("a", &box), "x");
        layouter.onAdd(named("b", &box), "y");
        QCOMPARE(layouter.layout()->rowStretch(1), 0);
        layouter.onFinish();
        QCOMPARE(layouter.layout()->rowCount(), 2);
        QCOMPARE(layouter.layout()->rowStretch(0), 0);
        QCOMPARE(layouter.layout()->rowStretch(1), 1);
        QCOMPARE(layouter.layout()->columnStretch(0), 0);
        QCOMPARE(layouter.layout()->columnStretch(1), 1);
    }

    // The row takes the spare room, the field in it does not.
    void theLastFieldOfAPropertyGridIsAtTheTop()
    {
        QWidget box;
        PropertyGridLayouter layouter;
        layouter.onCreate(&box);
        auto* first = new QLineEdit(&box);
        auto* last = new QLineEdit(&box);
        layouter.onAdd(first, "x");
        layouter.onAdd(last, "y");
        layouter.onFinish();
        box.resize(200, 400);
        box.show();
        QCOMPARE(last->height(), first->height());
        QVERIFY(last->y() < first->geometry().bottom() + 20);
        const auto labels = box.findChildren<QLabel*>();
        QCOMPARE(labels.last()->geometry().center().y(), last->geometry().center().y());
        QCOMPARE(last->width(), first->width());
    }

    void aLabelStaysBesideAnEditorThatGrows_data()
    {
        columns<bool>("isShown");
        row("in a window", true);
        row("before it is shown", false);
    }

    void aLabelStaysBesideAnEditorThatGrows()
    {
        QFETCH(bool, isShown);
        QWidget box;
        PropertyGridLayouter layouter;
        layouter.onCreate(&box);
        auto* edit = new QLineEdit(&box);
        layouter.onAdd(edit, "Steel");
        layouter.onFinish();
        box.resize(300, 300);
        if (isShown)
            box.show();
        edit->setFont(QFont("DejaVu Sans", 40));
        QCoreApplication::sendPostedEvents();
        box.show();
        QCoreApplication::sendPostedEvents();
        QCOMPARE(box.findChild<QLabel*>()->geometry().center().y(), edit->geometry().center().y());
    }

    void aListInTheLastRowTakesTheSpareRoom()
    {
        QWidget box;
        PropertyGridLayouter layouter;
        layouter.onCreate(&box);
        auto* list = new QListWidget(&box);
        layouter.onAdd(new QLineEdit(&box), "x");
        layouter.onAdd(list, "y");
        layouter.onFinish();
        box.resize(200, 700);
        box.show();
        QVERIFY(list->height() > 600);
        const QLabel* caption = box.findChildren<QLabel*>().last();
        QCOMPARE(caption->y(), list->y());
        QVERIFY(caption->height() < 60);
    }

    void theFieldsOfAPropertyGridAreAligned()
    {
        QWidget box;
        PropertyGridLayouter layouter;
        layouter.onCreate(&box);
        auto* plain = SimpleLineEdit::create(
            &box, {}, new DoubleEditValidator, 0, ExpandHorizontal);
        auto* picker = new MultiEditFilePicker(&box, TypeofPathFile);
        layouter.onAdd(plain, "x");
        layouter.onAdd(picker, "y");
        layouter.onFinish();
        box.show();
        const QWidget* edit = picker->m_edit->edit();
        QCOMPARE(edit->mapTo(&box, QPoint()).x(), plain->edit()->mapTo(&box, QPoint()).x());
        QCOMPARE(edit->height(), plain->edit()->height());
    }

    void anEditorHasTheNameOfItsLabel_data()
    {
        columns<Make, QString>("make", "name");
        const auto add = [](const char* name, const Make& make, const char* expected = "Steel") {
            row(name, make, QString(expected));
        };
        add("a line edit", [](QWidget* box) {
            return SimpleLineEdit::create(box, {}, new DoubleEditValidator, 0, ExpandHorizontal);
        });
        add("an enum box",
            [](QWidget* box) { return SimpleEnumBox::create(box, {}, &vrn::any_equal<int>); });
        add("a file picker",
            [](QWidget* box) { return new MultiEditFilePicker(box, TypeofPathFile); });
        add("a widget of the application", [](QWidget* box) { return new QLineEdit(box); });
        add("a check box without a text",
            [](QWidget* box) { return SimpleCheckBox::create({}, box); });
        add(
            "a caption of its own",
            [](QWidget* box) {
                return SimpleLineEdit::create(
                    box, "&Grade", new DoubleEditValidator, 0, ExpandHorizontal);
            },
            "Grade");
        add(
            "a text of its own",
            [](QWidget* box) { return SimpleCheckBox::create("painted", box); }, "");
        add(
            "a label with a text", [](QWidget* box) { return new QLabel("S355", box); }, "");
    }

    void anEditorHasTheNameOfItsLabel()
    {
        QFETCH(Make, make);
        QWidget box;
        PropertyGridLayouter layouter;
        layouter.onCreate(&box);
        QWidget* editor = make(&box);
        layouter.onAdd(editor, "&Steel");
        layouter.onFinish();
        while (editor->focusProxy())
            editor = editor->focusProxy();
        QTEST(editor->accessibleName(), "name");
    }

    void anEditorMayGoBeforeTheGridIsFinished()
    {
        QWidget box;
        PropertyGridLayouter layouter;
        layouter.onCreate(&box);
        auto* editor = new QLineEdit(&box);
        layouter.onAdd(editor, "x");
        delete editor;
        layouter.onFinish();
        box.show();
    }

    void anEmptyPropertyGridStretchesItsOneCell()
    {
        QWidget box;
        PropertyGridLayouter layouter;
        layouter.onCreate(&box);
        layouter.onFinish();
        QCOMPARE(layouter.layout()->rowStretch(0), 1);
        QCOMPARE(layouter.layout()->columnStretch(0), 1);
    }

    void finishingDoesNothingByDefault()
    {
        struct Silent : public ILayouter
        {
            void onCreate(QWidget* /*parent*/) override {}
            void onAdd(QWidget* /*widget*/) override {}
        };
        Silent layouter;
        layouter.onFinish();
        QWidget box;
        GridLayouter grid(ExpandVertical);
        grid.onCreate(&box);
        grid.onAdd(named("a", &box));
        grid.onFinish();
        QCOMPARE(grid.layout()->count(), 1);
    }

    void withoutALayoutNothingIsAdded_data() { addEachLayouter(); }
    void withoutALayoutNothingIsAdded()
    {
        QFETCH(Layouter, layouter);
        QWidget widget;
        expectAssert("layout");
        layouter->onAdd(&widget);
        QVERIFY(!widget.parentWidget());
        if (finishesWithStretch(layouter.get()))
            expectAssert(
                dynamic_cast<PropertyGridLayouter*>(layouter.get()) ? "m_layout" : "layout");
        layouter->onFinish();
    }

    void aLabelNeedsALayoutToo()
    {
        QWidget widget;
        PropertyGridLayouter layouter;
        expectAssert("layout");
        layouter.onAdd(&widget, "x");
    }

    void aMissingContainerIsReported_data() { addEachLayouter(); }
    void aMissingContainerIsReported()
    {
        QFETCH(Layouter, layouter);
        expectAssert("parent");
        layouter->onCreate(nullptr);
        QWidget widget;
        expectAssert("layout");
        layouter->onAdd(&widget);
    }

    void aMissingWidgetIsReported_data() { addEachLayouter(); }
    void aMissingWidgetIsReported()
    {
        QFETCH(Layouter, layouter);
        QWidget box;
        layouter->onCreate(&box);
        expectAssert("widget");
        layouter->onAdd(nullptr);
        QCOMPARE(box.layout()->count(), 0);
    }

    void aLayouterOutlivesItsContainer_data() { addEachLayouter(); }
    void aLayouterOutlivesItsContainer()
    {
        QFETCH(Layouter, layouter);
        {
            QWidget box;
            layouter->onCreate(&box);
            layouter->onAdd(new QWidget(&box));
        }
        QWidget widget;
        expectAssert("layout");
        layouter->onAdd(&widget);
        QWidget another;
        layouter->onCreate(&another);
        layouter->onAdd(new QWidget);
        QCOMPARE(another.layout()->count(), 1);
    }

    void aContainerOutlivesItsLayouter()
    {
        QWidget box;
        auto layouter = std::make_unique<VBoxLayouter>();
        layouter->onCreate(&box);
        layouter->onAdd(new QWidget(&box));
        layouter.reset();
        QVERIFY(box.layout());
        QCOMPARE(box.layout()->count(), 1);
    }

    void aSecondLayoutIsRefusedByQt_data() { addEachLayouter(); }
    void aSecondLayoutIsRefusedByQt()
    {
        QFETCH(Layouter, layouter);
        QWidget box;
        layouter->onCreate(&box);
        layouter->onAdd(new QWidget(&box));
        const QLayout* first = box.layout();
        expectWarning("QLayout: Attempting to add QLayout \"\" to QWidget \"\", which already has "
                      "a layout");
        layouter->onCreate(&box);
        expectAssert("layout");
        layouter->onAdd(new QWidget(&box));
        QCOMPARE(box.layout(), first);
        QCOMPARE(first->count(), 1);
    }

private:
    static void verifyBox(QBoxLayout* layout, const QWidget& box, int count)
    {
        QCOMPARE(box.layout(), layout);
        QCOMPARE(layout->contentsMargins(), QMargins(4, 4, 4, 4));
        QCOMPARE(layout->spacing(), 0);
        QCOMPARE(layout->count(), count);
        QCOMPARE(layout->itemAt(0)->widget()->objectName(), QString("a"));
        QCOMPARE(layout->itemAt(1)->widget()->objectName(), QString("b"));
        for (int i = 0; i < count; ++i) {
            QCOMPARE(layout->stretch(i), 0);
            QCOMPARE(layout->itemAt(i)->alignment(), Qt::Alignment());
        }
    }

    static void verifyStretchBehind(QBoxLayout* layout, int count)
    {
        QCOMPARE(layout->count(), count + 1);
        QVERIFY(layout->itemAt(count)->spacerItem());
        QCOMPARE(layout->stretch(count), 1);
    }
};

VRN_TEST(TestLayouters)
#include "tst_layouters.moc"
