#include <vrn/qt/delegates.h>
#include <vrn/qt/varies_string.h>

#include <QAction>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSortFilterProxyModel>

#include "qt/delegates/delegate_signals.h"
#include "qt/delegates/table_fixture.h"
#include "support/catching_application.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::qt;
using namespace vrn::test;

namespace {

constexpr const char* editorWidget = "vrn_property_delegate_editor_widget";
constexpr const char* filterFocusOut = "vrn_property_delegate_filter_focus_out";
constexpr const char* commitOnActivate = "vrn_property_delegate_combobox_commit_on_activate";

using Fill = boost::function<void(MultiEditEnumBox&, const QModelIndex&)>;
using FindPart = std::function<QObject*(MultiEditEnumBox&)>;
using Act = std::function<void(MultiEditEnumBox&)>;

// Makes 0 of an empty text, and throws at "throw".
struct ForgivingValidator : public IntegerValidator<int>
{
    ForgivingValidator()
        : IntegerValidator<int>(0, 999, true)
    {}

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override
    {
        if (text == "throw")
            throw std::runtime_error("unknown");
        if (!text.isEmpty())
            return IntegerValidator<int>::validate(text, value, flags);
        value = 0;
        return true;
    }
};

// Runs `destroy` when it is asked.
struct DestroyingValidator : public IntegerValidator<int>
{
    DestroyingValidator()
        : IntegerValidator<int>(0, 999, true)
    {}

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override
    {
        if (destroy)
            std::exchange(destroy, nullptr)();
        return IntegerValidator<int>::validate(text, value, flags);
    }

    std::function<void()> destroy;
};

QComboBox& listOf(const QWidget& box)
{
    return *box.findChild<QComboBox*>();
}

QStringList rowsOf(const QWidget& box)
{
    QStringList rows;
    for (int row = 0; row < listOf(box).count(); ++row)
        rows << listOf(box).itemText(row);
    return rows;
}

QObject* theBox(MultiEditEnumBox& box)
{
    return &box;
}

QObject* theList(MultiEditEnumBox& box)
{
    return &listOf(box);
}

QObject* theEdit(MultiEditEnumBox& box)
{
    return listOf(box).lineEdit();
}

QObject* theView(MultiEditEnumBox& box)
{
    return listOf(box).view();
}

QObject* theViewport(MultiEditEnumBox& box)
{
    return listOf(box).view()->viewport();
}

QObject* theButton(MultiEditEnumBox& box)
{
    return box.findChild<QPushButton*>();
}

void fillWithAButton(MultiEditEnumBox& box, const QModelIndex& index)
{
    fillWithSteels(box, index);
    box.addWidget(new QPushButton("...", &box));
}

// Writes the roles that are written to it into `calls`.
class RecordingModel : public QStandardItemModel
{
public:
    RecordingModel()
        : QStandardItemModel(1, 2)
    {}

    bool setData(const QModelIndex& index, const QVariant& value, int role) override
    {
        calls << QString("%1: %2").arg(role).arg(
            role == EditRole ? describe(value.value<boost::any>()) : value.toString());
        return !refused.contains(role) && QStandardItemModel::setData(index, value, role);
    }

    QStringList calls;
    QList<int> refused;

private:
    QAbstractItemModelTester m_tester{this, QAbstractItemModelTester::FailureReportingMode::QtTest};
};

// A delegate, and boxes of it without a view.
struct Cell
{
    explicit Cell(const IValidator::pointer& validator = {}, const Fill& fill = &fillWithSteels)
        : delegate(
            std::make_unique<ComboItemDelegate>(nullptr, fill, &vrn::any_equal<int>, validator))
    {
        put(235);
    }

    void put(const boost::any& value)
    {
        model.QStandardItemModel::setData(index(), cellValue(value), EditRole);
    }

    QModelIndex index() const { return model.index(0, 0); }

    MultiEditEnumBox& open()
    {
        auto* box = qobject_cast<MultiEditEnumBox*>(delegate->createEditor(&parent, {}, index()));
        box->setObjectName("the box");
        return *box;
    }

    MultiEditEnumBox& openWithData()
    {
        MultiEditEnumBox& box = open();
        delegate->setEditorData(&box, index());
        return box;
    }

    QWidget parent;
    RecordingModel model;
    std::unique_ptr<ComboItemDelegate> delegate;
};

void release(QObject* object)
{
    QMouseEvent event(
        QEvent::MouseButtonRelease, QPointF(1, 1), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(object, &event);
}

// A click on an item of the open list. The event loop does not run: without a window system the
// list would become the active window.
void clickItem(MultiEditEnumBox& box, int row)
{
    QComboBox& list = listOf(box);
    list.showPopup();
    // A list takes no click in the moment after it has opened.
    QTest::qSleep(QApplication::doubleClickInterval() + 50);
    QWidget& items = *list.view()->viewport();
    const int y = list.view()->visualRect(list.model()->index(row, 0)).center().y();
    const QPoint place(items.width() / 2, y);
    QMouseEvent move(QEvent::MouseMove, place, items.mapToGlobal(place), Qt::NoButton, Qt::NoButton,
        Qt::NoModifier);
    QCoreApplication::sendEvent(&items, &move);
    QTest::mouseClick(&items, Qt::LeftButton, {}, place);
}

} // namespace

Q_DECLARE_METATYPE(Act)
Q_DECLARE_METATYPE(Fill)
Q_DECLARE_METATYPE(FindPart)

class TestComboItemDelegate : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theEditorIsABoxOfItsCell()
    {
        const auto fill = [](MultiEditEnumBox& box, const QModelIndex& index) {
            box.setValues({{QString("column %1").arg(index.column()), index.column()}});
        };
        Cell cell({}, fill);
        for (const int column : {0, 1}) {
            const std::unique_ptr<QWidget> editor(
                cell.delegate->createEditor(&cell.parent, {}, cell.model.index(0, column)));
            QVERIFY(qobject_cast<MultiEditEnumBox*>(editor.get()));
            QCOMPARE(editor->parentWidget(), &cell.parent);
            QVERIFY(!editor->findChild<QLabel*>());
            QCOMPARE(rowsOf(*editor), QStringList(QString("column %1").arg(column)));
        }
    }

    void withoutAFillCallbackThereAreNoItems()
    {
        Cell cell({}, {});
        QCOMPARE(rowsOf(cell.open()), QStringList());
    }

    void aFillCallbackThatThrowsLeavesNoBox()
    {
        Cell cell(
            {}, [](MultiEditEnumBox&, const QModelIndex&) { throw std::runtime_error("no list"); });
        QVERIFY_EXCEPTION_THROWN(
            cell.delegate->createEditor(&cell.parent, {}, cell.index()), std::runtime_error);
        QVERIFY(cell.parent.children().isEmpty());
    }

    void aValidatorMakesTheBoxEditable()
    {
        QVERIFY(!listOf(Cell().open()).isEditable());
        QVERIFY(listOf(Cell(wholeNumbers()).open()).isEditable());
    }

    void aMissingEqualityIsReported()
    {
        Cell cell;
        const ComboItemDelegate delegate(nullptr, {}, nullptr, {});
        expectAssert("eqFn");
        QVERIFY(!delegate.createEditor(&cell.parent, {}, cell.index()));
    }

    void aCellIsPaintedAsByQt()
    {
        Cell cell;
        cell.model.QStandardItemModel::setData(cell.index(), "S235", DisplayRole);
        const auto paint = [&](const QAbstractItemDelegate& delegate) {
            QImage image(40, 30, QImage::Format_RGB32);
            image.fill(Qt::red);
            QPainter painter(&image);
            QStyleOptionViewItem option;
            option.rect = QRect(5, 5, 30, 20);
            delegate.paint(&painter, option, cell.index());
            return image;
        };
        const QItemDelegate plain;
        QCOMPARE(paint(*cell.delegate), paint(plain));
        QCOMPARE(cell.delegate->sizeHint({}, cell.index()), plain.sizeHint({}, cell.index()));
    }

    void theBoxFillsItsCell()
    {
        Cell cell;
        MultiEditEnumBox& box = cell.open();
        QStyleOptionViewItem option;
        option.rect = QRect(3, 4, 500, 60);
        cell.delegate->updateEditorGeometry(&box, option, cell.index());
        QCOMPARE(box.geometry(), option.rect);
    }

    void noEventOfACellIsTaken()
    {
        Cell cell;
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Space, {});
        QVERIFY(!cell.delegate->editorEvent(&key, &cell.model, {}, cell.index()));
        QEvent click(QEvent::MouseButtonPress);
        QVERIFY(!cell.delegate->editorEvent(&click, &cell.model, {}, cell.index()));
    }

    void aPartKnowsItsBox_data()
    {
        columns<FindPart, bool, bool>("part", "knows", "hasItsKeys");
        row("the box itself", FindPart(theBox), false, false);
        row("the list, which has the focus", FindPart(theList), true, false);
        row("the edit", FindPart(theEdit), true, true);
        row("the popup", FindPart(theView), true, true);
        row("the items in the popup", FindPart(theViewport), true, true);
        row("a button of the fill callback", FindPart(theButton), true, true);
    }

    void aPartKnowsItsBox()
    {
        QFETCH(FindPart, part);
        QFETCH(bool, knows);
        QFETCH(bool, hasItsKeys);
        Cell cell(wholeNumbers(), &fillWithAButton);
        MultiEditEnumBox& box = cell.open();
        const QVariant editor = part(box)->property(editorWidget);
        QCOMPARE(!editor.isNull(), knows);
        if (knows) {
            QCOMPARE(editor.typeName(), "QWidget*");
            QCOMPARE(editor.value<QWidget*>(), &box);
        }
        QCOMPARE(part(box)->property(filterFocusOut), hasItsKeys ? QVariant(true) : QVariant());
    }

    void aMouseReleaseArmsTheBox_data() { aPartKnowsItsBox_data(); }

    void aMouseReleaseArmsTheBox()
    {
        QFETCH(FindPart, part);
        Cell cell(wholeNumbers(), &fillWithAButton);
        MultiEditEnumBox& box = cell.open();
        release(part(box));
        QCOMPARE(box.property(commitOnActivate), QVariant(true));
        QCoreApplication::processEvents();
        QCOMPARE(box.property(commitOnActivate), QVariant());
        QVERIFY(!box.dynamicPropertyNames().contains(commitOnActivate));
    }

    void anArmedBoxMayGo()
    {
        Cell cell;
        MultiEditEnumBox* box = &cell.open();
        release(&listOf(*box));
        delete box;
        QCoreApplication::processEvents();
    }

    void aMouseReleaseElsewhereArmsNothing()
    {
        Cell cell;
        QMouseEvent event(QEvent::MouseButtonRelease, QPointF(1, 1), QPointF(1, 1), QPointF(1, 1),
            Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QVERIFY(!cell.delegate->eventFilter(&cell.parent, &event));
        QVERIFY(!cell.delegate->eventFilter(nullptr, &event));
        QCOMPARE(cell.parent.dynamicPropertyNames(), QList<QByteArray>());
    }

    void anActivatedItemCommitsOnlyIfTheBoxIsArmed()
    {
        Cell cell;
        const DelegateSignals emitted(*cell.delegate);
        MultiEditEnumBox& box = cell.openWithData();
        Q_EMIT box.activated(1);
        QCOMPARE(emitted.list, QStringList());
        release(&listOf(box));
        Q_EMIT box.activated(1);
        const QStringList both{"commit the box", "close the box 3"};
        QCOMPARE(emitted.list, both);
        // The commit leaves it armed until the turn ends.
        Q_EMIT box.activated(1);
        QCOMPARE(emitted.list, both + both);
        QCoreApplication::processEvents();
        Q_EMIT box.activated(1);
        QCOMPARE(emitted.list, both + both);
    }

    void theDelegateMayGoBeforeTheBox()
    {
        Cell cell;
        MultiEditEnumBox& box = cell.openWithData();
        release(&listOf(box));
        cell.delegate.reset();
        Q_EMIT box.activated(1);
        QTest::keyClick(&listOf(box), Qt::Key_Return);
    }

    void theDelegateMayGoInASignal_data()
    {
        columns<Qt::Key>("key");
        row("Return", Qt::Key_Return);
        row("Tab", Qt::Key_Tab);
        row("a pick with the mouse", Qt::Key_unknown);
    }

    void theDelegateMayGoInASignal()
    {
        QFETCH(Qt::Key, key);
        Cell cell;
        const DelegateSignals emitted(*cell.delegate);
        connect(cell.delegate.get(), &QAbstractItemDelegate::commitData, this,
            [&] { cell.delegate.reset(); });
        MultiEditEnumBox& box = cell.openWithData();
        if (key != Qt::Key_unknown) {
            QTest::keyClick(&listOf(box), key);
        } else {
            release(&listOf(box));
            Q_EMIT box.activated(1);
        }
        QVERIFY(!cell.delegate);
        QCOMPARE(emitted.list, QStringList("commit the box"));
    }

    // Without a view, which would not know the part.
    void aKeyIsOneOfTheEditorOrOfThePart_data()
    {
        columns<FindPart, Qt::Key, QStringList>("part", "key", "signals");
        const FindPart list = theList;
        const FindPart button = theButton;
        row("Tab in the list", list, Qt::Key_Tab, QStringList{"commit the box", "close the box 1"});
        row("Escape in the list", list, Qt::Key_Escape, QStringList{"close the box 4"});
        row("Return in the list", list, Qt::Key_Return,
            QStringList{"commit the box", "close the box 3"});
        row("an arrow in the list", list, Qt::Key_Down, QStringList());
        row("Tab in another part", button, Qt::Key_Tab,
            QStringList{"commit the button", "close the button 1"});
        row("Escape in another part", button, Qt::Key_Escape, QStringList{"close the button 4"});
    }

    void aKeyIsOneOfTheEditorOrOfThePart()
    {
        QFETCH(FindPart, part);
        QFETCH(Qt::Key, key);
        QFETCH(QStringList, signals);
        Cell cell({}, &fillWithAButton);
        const DelegateSignals emitted(*cell.delegate);
        MultiEditEnumBox& box = cell.openWithData();
        theButton(box)->setObjectName("the button");
        QTest::keyClick(qobject_cast<QWidget*>(part(box)), key);
        QCoreApplication::processEvents();
        QCOMPARE(emitted.list, signals);
    }

    void aLostFocusOfAPartIsOneOfTheEditor_data()
    {
        columns<FindPart>("part");
        row("the list", FindPart(theList));
        row("the edit", FindPart(theEdit));
        row("a button of the fill callback", FindPart(theButton));
    }

    void aLostFocusOfAPartIsOneOfTheEditor()
    {
        QFETCH(FindPart, part);
        Cell cell(wholeNumbers(), &fillWithAButton);
        const DelegateSignals emitted(*cell.delegate);
        MultiEditEnumBox& box = cell.openWithData();
        QFocusEvent event(QEvent::FocusOut);
        QVERIFY(!cell.delegate->eventFilter(part(box), &event));
        QCOMPARE(emitted.list, QStringList({"commit the box", "close the box 0"}));
    }

    void anEditorThatIsNoWidgetIsNone()
    {
        Cell cell;
        const DelegateSignals emitted(*cell.delegate);
        QWidget part;
        part.setProperty(editorWidget, 5);
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Tab, {});
        QVERIFY(!cell.delegate->eventFilter(&part, &key));
        QCOMPARE(emitted.list, QStringList());
    }

    void aPartOfAnotherEditorMaySpeakForIt()
    {
        Cell cell;
        const DelegateSignals emitted(*cell.delegate);
        QWidget editor;
        editor.setObjectName("another");
        QWidget part;
        part.setObjectName("its part");
        part.setProperty(editorWidget, QVariant::fromValue<QWidget*>(&editor));
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Tab, {});
        QVERIFY(cell.delegate->eventFilter(&part, &key));
        part.setProperty(filterFocusOut, true);
        QVERIFY(cell.delegate->eventFilter(&part, &key));
        QCOMPARE(emitted.list,
            QStringList(
                {"commit another", "close another 1", "commit its part", "close its part 1"}));
    }

    void theBoxShowsTheValue()
    {
        Cell cell;
        cell.put(275);
        MultiEditEnumBox& box = cell.openWithData();
        QCOMPARE(listOf(box).currentText(), QString("S275"));
        QVERIFY(!box.dataVaries());
    }

    void anotherValueMakesTheBoxVary()
    {
        Cell cell;
        MultiEditEnumBox& box = cell.openWithData();
        cell.delegate->setEditorData(&box, cell.index());
        QVERIFY(!box.dataVaries());
        cell.put(275);
        cell.delegate->setEditorData(&box, cell.index());
        QVERIFY(box.dataVaries());
        QCOMPARE(listOf(box).currentText(), getVariesString());
    }

    void anEmptyValueIsReported_data()
    {
        columns<QVariant>("variant");
        row("an empty value", cellValue(boost::any()));
        row("no value", QVariant());
        row("a value of Qt's", QVariant(235));
    }

    void anEmptyValueIsReported()
    {
        QFETCH(QVariant, variant);
        for (const IValidator::pointer& validator :
            {IValidator::pointer(), IValidator::pointer(new ForgivingValidator)}) {
            Cell cell(validator);
            cell.model.QStandardItemModel::setData(cell.index(), variant, EditRole);
            MultiEditEnumBox& box = cell.open();
            expectAssert("!value.empty()");
            cell.delegate->setEditorData(&box, cell.index());
            QCOMPARE(listOf(box).currentIndex(), -1);
            QCOMPARE(listOf(box).currentText(), QString());

            cell.delegate->setModelData(&box, &cell.model, cell.index());
            QCOMPARE(cell.model.calls, QStringList());
            listOf(box).setCurrentIndex(1);
            cell.delegate->setModelData(&box, &cell.model, cell.index());
            QCOMPARE(cell.model.calls, QStringList({"0: S275", "3: S275", "257: int 275"}));
        }
    }

    // The user has emptied this one.
    void anEmptyTextCanBeAValue()
    {
        Cell cell(IValidator::pointer(new ForgivingValidator));
        MultiEditEnumBox& box = cell.openWithData();
        listOf(box).clearEditText();
        cell.delegate->setModelData(&box, &cell.model, cell.index());
        QCOMPARE(cell.model.calls, QStringList({"0: 0", "3: 0", "257: int 0"}));
    }

    void anotherEditorIsReported_data()
    {
        columns<QWidget*>("editor");
        row("a list of Qt's", static_cast<QWidget*>(new QComboBox));
        row("none", static_cast<QWidget*>(nullptr));
    }

    void anotherEditorIsReported()
    {
        QFETCH(QWidget*, editor);
        const std::unique_ptr<QWidget> owner(editor);
        Cell cell;
        expectAssert("box");
        cell.delegate->setEditorData(editor, cell.index());
        expectAssert("box");
        cell.delegate->setModelData(editor, &cell.model, cell.index());
        QCOMPARE(cell.model.calls, QStringList());
    }

    void whatIsWritten_data()
    {
        columns<Act, QStringList>("act", "written");

        row("the value that was there", Act([](MultiEditEnumBox&) {}),
            QStringList{"0: S235", "3: S235", "257: int 235"});
        row("another item", Act([](MultiEditEnumBox& box) { listOf(box).setCurrentIndex(2); }),
            QStringList{"0: S355", "3: S355", "257: int 355"});
        row("a text that the validator accepts",
            Act([](MultiEditEnumBox& box) { listOf(box).setEditText("17"); }),
            QStringList{"0: 17", "3: 17", "257: int 17"});
        row("nothing of a text that it refuses",
            Act([](MultiEditEnumBox& box) { listOf(box).setEditText("x"); }), QStringList());
        row("nothing if the box varies", Act([](MultiEditEnumBox& box) { box.forceVaries(); }),
            QStringList());
    }

    void whatIsWritten()
    {
        QFETCH(Act, act);
        QFETCH(QStringList, written);
        Cell cell(wholeNumbers());
        MultiEditEnumBox& box = cell.openWithData();
        act(box);
        cell.delegate->setModelData(&box, &cell.model, cell.index());
        QCOMPARE(cell.model.calls, written);
    }

    void aRefusedRoleIsReported_data()
    {
        columns<QList<int>>("refused");
        row("the text", QList<int>{0});
        row("the tool tip", QList<int>{3});
        row("the value", QList<int>{257});
        row("all", QList<int>{0, 3, 257});
    }

    void aRefusedRoleIsReported()
    {
        QFETCH(QList<int>, refused);
        Cell cell;
        MultiEditEnumBox& box = cell.openWithData();
        cell.model.refused = refused;
        const std::map<int, std::string> messages = {
            {0, "model->setData( index, display, qt::DisplayRole )"},
            {3, "model->setData( index, display, qt::ToolTipRole )"},
            {257, "model->setData( index, QVariant::fromValue<any>(editData), qt::EditRole )"}};
        for (const int role : refused)
            expectAssert("ok", {}, messages.at(role));
        cell.delegate->setModelData(&box, &cell.model, cell.index());
        QCOMPARE(cell.model.calls, QStringList({"0: S235", "3: S235", "257: int 235"}));
    }

    void aSignalOfABoxCommits_data()
    {
        columns<Fill, bool, QStringList>("fill", "isReported", "signals");
        row("with a value", Fill(&fillWithSteels), false,
            QStringList{"commit the box", "close the box 3"});
        row("without a value", Fill(), true, QStringList());
    }

    void aSignalOfABoxCommits()
    {
        QFETCH(Fill, fill);
        QFETCH(bool, isReported);
        QFETCH(QStringList, signals);
        Cell cell({}, fill);
        const DelegateSignals emitted(*cell.delegate);
        MultiEditEnumBox& box = cell.open();
        connect(&box, SIGNAL(valueChanged()), cell.delegate.get(), SLOT(emitCommitData()));
        if (isReported)
            expectAssert("!editor->getSelectedValue().empty()");
        Q_EMIT box.valueChanged();
        QCOMPARE(emitted.list, signals);
    }

    void aSignalOfAVaryingBoxCommitsNothing()
    {
        Cell cell(wholeNumbers());
        const DelegateSignals emitted(*cell.delegate);
        MultiEditEnumBox& box = cell.openWithData();
        box.forceVaries();
        connect(&box, SIGNAL(valueChanged()), cell.delegate.get(), SLOT(emitCommitData()));
        // An editable box has no value while it varies.
        expectAssert("!editor->getSelectedValue().empty()");
        Q_EMIT box.valueChanged();
        QCOMPARE(emitted.list, QStringList());
    }

    void aSignalOfNoBoxIsReported()
    {
        Cell cell;
        const DelegateSignals emitted(*cell.delegate);
        QAction action;
        connect(&action, SIGNAL(triggered()), cell.delegate.get(), SLOT(emitCommitData()));
        expectAssert("editor");
        action.trigger();
        QCOMPARE(emitted.list, QStringList());
    }

    void aClickOnAnItemEndsTheEdit_data()
    {
        columns<bool, bool, QString>("isEditable", "varies", "value");
        row("of a list", false, false, "int 355");
        row("of an editable list", true, false, "int 355");
        // The pick ends it only afterwards.
        row("of a list that varies, which writes nothing", false, true, "int 235");
    }

    void aClickOnAnItemEndsTheEdit()
    {
        QFETCH(bool, isEditable);
        QFETCH(bool, varies);
        QFETCH(QString, value);
        ComboItemDelegate delegate(nullptr, &fillWithSteels, &vrn::any_equal<int>,
            isEditable ? wholeNumbers() : IValidator::pointer());
        TableWindow table;
        table.view->setItemDelegate(&delegate);
        table.show();
        const QPointer<MultiEditEnumBox> box(qobject_cast<MultiEditEnumBox*>(table.open(1, 1)));
        if (varies)
            box->forceVaries();
        clickItem(*box, 2);
        QVERIFY(!table.view->indexWidget(table.index(1, 1)));
        QCOMPARE(describe(table.value(1, 1)), value);
        settle();
        QVERIFY(!box);
    }

    void anItemThatKeysChooseStaysInTheEditor()
    {
        ComboItemDelegate delegate(nullptr, &fillWithSteels, &vrn::any_equal<int>, {});
        TableWindow table;
        table.view->setItemDelegate(&delegate);
        table.show();
        QPointer<QWidget> box(table.open(1, 1));
        QComboBox& list = listOf(*box);
        list.showPopup();
        QTest::keyClick(list.view(), Qt::Key_Down);
        QTest::keyClick(list.view(), Qt::Key_Return);
        QVERIFY(box);
        QCOMPARE(list.currentText(), QString("S275"));
        QCOMPARE(describe(table.value(1, 1)), QString("int 235"));
        QTest::keyClick(&list, Qt::Key_Tab);
        QCOMPARE(describe(table.value(1, 1)), QString("int 275"));
    }

    void keysInTheOpenListAreThoseOfTheList_data()
    {
        columns<Qt::Key, bool>("key", "closesTheList");
        row("Escape", Qt::Key_Escape, true);
        row("Return", Qt::Key_Return, true);
        row("Tab", Qt::Key_Tab, false);
    }

    void keysInTheOpenListAreThoseOfTheList()
    {
        QFETCH(Qt::Key, key);
        QFETCH(bool, closesTheList);
        ComboItemDelegate delegate(nullptr, &fillWithSteels, &vrn::any_equal<int>, {});
        TableWindow table;
        table.view->setItemDelegate(&delegate);
        table.show();
        QPointer<QWidget> box(table.open(1, 1));
        QComboBox& list = listOf(*box);
        list.showPopup();
        QTest::keyClick(list.view(), key);
        QVERIFY(box);
        QCOMPARE(list.view()->isVisible(), !closesTheList);
        QCOMPARE(table.view->indexWidget(table.index(1, 1)), box.data());
    }

    void theFocusMovesAmongTheParts_data()
    {
        columns<Qt::Key, bool, QString>("key", "staysOpen", "value");
        row("a letter", Qt::Key_A, true, "int 235");
        row("Return ends the edit", Qt::Key_Return, false, "int 275");
        row("Escape ends the edit", Qt::Key_Escape, false, "int 235");
        row("Tab leaves the last part", Qt::Key_Tab, false, "int 275");
    }

    void theFocusMovesAmongTheParts()
    {
        QFETCH(Qt::Key, key);
        QFETCH(bool, staysOpen);
        QFETCH(QString, value);
        ComboItemDelegate delegate(nullptr, &fillWithAButton, &vrn::any_equal<int>, {});
        for (const bool isForwarded : {false, true}) {
            TableWindow table;
            auto* forward = new ForwardDelegate(*table.view);
            forward->setItemDelegate(&delegate);
            table.view->setItemDelegate(
                isForwarded ? static_cast<QAbstractItemDelegate*>(forward) : &delegate);
            table.show();
            QPointer<QWidget> box(table.open(1, 1));
            listOf(*box).setCurrentIndex(1);
            auto* button = box->findChild<QPushButton*>();
            button->setFocus();
            settle();
            QVERIFY(box);
            QVERIFY(button->hasFocus());
            QTest::keyClick(button, key);
            settle();
            QCOMPARE(!box.isNull(), staysOpen);
            QCOMPARE(describe(table.value(1, 1)), value);
        }
    }

    void theRowOfTheCellMayMoveWhileItIsWritten()
    {
        TableWindow table;
        for (int row = 0; row < 4; ++row)
            table.model->put(row, 1, 235, QString("S23%1").arg(row));
        QSortFilterProxyModel sorted;
        sorted.setSourceModel(table.model);
        sorted.sort(1);
        const QAbstractItemModelTester tester(
            &sorted, QAbstractItemModelTester::FailureReportingMode::QtTest);
        table.view->setModel(&sorted);
        ComboItemDelegate delegate(nullptr, &fillWithSteels, &vrn::any_equal<int>, {});
        table.view->setItemDelegate(&delegate);
        table.show();
        table.view->setCurrentIndex(sorted.index(0, 1));
        QTest::keyClick(table.view, Qt::Key_F2);
        auto* box = table.view->indexWidget(sorted.index(0, 1));
        QVERIFY(box);
        listOf(*box).setCurrentIndex(2);
        QTest::keyClick(&listOf(*box), Qt::Key_Return);
        settle();
        QCOMPARE(sorted.index(3, 1).data(DisplayRole).toString(), QString("S355"));
        for (int row = 0; row < 4; ++row) {
            const boost::any value(row == 0 ? 355 : 235);
            QCOMPARE(table.value(row, 1), value);
            QCOMPARE(table.index(row, 1).data(ToolTipRole).isNull(), row != 0);
        }
    }

    void theRowOfTheCellMayBeFilteredOutWhileItIsWritten_data()
    {
        columns<Qt::Key>("key");
        row("with Return", Qt::Key_Return);
        row("with Tab", Qt::Key_Tab);
        row("with Shift+Tab", Qt::Key_Backtab);
    }

    void theRowOfTheCellMayBeFilteredOutWhileItIsWritten()
    {
        QFETCH(Qt::Key, key);
        TableWindow table;
        QSortFilterProxyModel filtered;
        filtered.setSourceModel(table.model);
        filtered.setFilterKeyColumn(1);
        filtered.setFilterFixedString("S235");
        const QAbstractItemModelTester tester(
            &filtered, QAbstractItemModelTester::FailureReportingMode::QtTest);
        table.view->setModel(&filtered);
        ComboItemDelegate delegate(nullptr, &fillWithSteels, &vrn::any_equal<int>, {});
        table.view->setItemDelegate(&delegate);
        table.show();
        table.view->setCurrentIndex(filtered.index(1, 1));
        QTest::keyClick(table.view, Qt::Key_F2);
        const QPointer<QWidget> box(table.view->indexWidget(filtered.index(1, 1)));
        QVERIFY(box);
        listOf(*box).setCurrentIndex(2);
        QTest::keyClick(&listOf(*box), key);
        settle();
        QVERIFY(!box);
        QCOMPARE(filtered.rowCount(), 3);
        QCOMPARE(table.index(1, 1).data(DisplayRole).toString(), QString("S355"));
        QCOMPARE(table.index(1, 1).data(ToolTipRole).toString(), QString("S355"));
        QCOMPARE(describe(table.value(1, 1)), QString("int 355"));
    }

    // A view reads the cell again after each of the three roles.
    void aCellWithoutAValueIsReportedOnce()
    {
        TableWindow table;
        table.model->put(1, 1, boost::any(), "");
        ComboItemDelegate delegate(nullptr, &fillWithSteels, &vrn::any_equal<int>, {});
        table.view->setItemDelegate(&delegate);
        table.show();
        expectAssert("!value.empty()");
        auto* box = table.open(1, 1);
        listOf(*box).setCurrentIndex(1);
        QTest::keyClick(&listOf(*box), Qt::Key_Return);
        settle();
        QCOMPARE(describe(table.value(1, 1)), QString("int 275"));
    }

    void aPersistentEditorWritesEachTime()
    {
        TableWindow table;
        ComboItemDelegate delegate(nullptr, &fillWithSteels, &vrn::any_equal<int>, {});
        table.view->setItemDelegate(&delegate);
        table.view->openPersistentEditor(table.index(1, 1));
        table.show();
        auto* box = table.view->indexWidget(table.index(1, 1));
        QVERIFY(box);
        QComboBox& list = listOf(*box);
        for (const int value : {275, 355, 235}) {
            list.setFocus();
            list.setCurrentText(QString("S%1").arg(value));
            QTest::keyClick(&list, Qt::Key_Return);
            settle();
            QCOMPARE(table.value(1, 1), boost::any(value));
            QCOMPARE(table.view->indexWidget(table.index(1, 1)), box);
        }
    }

    void theFillCallbackMayDestroy_data()
    {
        columns<bool>("isBox");
        row("the delegate", false);
        row("the box", true);
    }

    void theFillCallbackMayDestroy()
    {
        QFETCH(bool, isBox);
        std::unique_ptr<ComboItemDelegate> delegate;
        const auto fill = [&](MultiEditEnumBox& box, const QModelIndex&) {
            if (isBox)
                delete &box;
            else
                delegate.reset();
        };
        Cell cell;
        delegate = std::make_unique<ComboItemDelegate>(
            nullptr, fill, &vrn::any_equal<int>, IValidator::pointer());
        QVERIFY(!delegate->createEditor(&cell.parent, {}, cell.index()));
        QVERIFY(cell.parent.children().isEmpty());
    }

    void theValidatorMayDestroyWhileItIsAsked_data()
    {
        columns<QString>("what");
        row("the model", "model");
        row("the delegate", "delegate");
    }

    void theValidatorMayDestroyWhileItIsAsked()
    {
        QFETCH(QString, what);
        const auto validator = boost::make_shared<DestroyingValidator>();
        std::unique_ptr<ComboItemDelegate> delegate = std::make_unique<ComboItemDelegate>(
            nullptr, &fillWithSteels, &vrn::any_equal<int>, validator);
        auto model = std::make_unique<CellModel>(1, 1);
        QWidget parent;
        auto* box = qobject_cast<MultiEditEnumBox*>(
            delegate->createEditor(&parent, {}, model->index(0, 0)));
        delegate->setEditorData(box, model->index(0, 0));
        listOf(*box).setEditText("17");
        validator->destroy = [&] {
            if (what == "model")
                model.reset();
            else
                delegate.reset();
        };
        delegate->setModelData(box, model.get(), model->index(0, 0));
        QCOMPARE(!model, what == "model");
        QCOMPARE(!delegate, what == "delegate");
        if (model)
            QCOMPARE(valueAt(model->index(0, 0)), boost::any(17));
    }

    void whatAValidatorThrowsComesAfterTheView()
    {
        auto& application = CatchingApplication::instance();
        application.caught.clear();
        TableWindow table;
        ComboItemDelegate delegate(nullptr, &fillWithSteels, &vrn::any_equal<int>,
            IValidator::pointer(new ForgivingValidator));
        table.view->setItemDelegate(&delegate);
        table.show();
        auto* box = table.open(1, 1);
        {
            const QSignalBlocker blocker(listOf(*box).lineEdit());
            listOf(*box).lineEdit()->setText("throw");
        }
        QTest::keyClick(&listOf(*box), Qt::Key_Tab);
        settle();
        // That of the commit, and that of the edit itself as it loses the focus.
        const std::vector<std::string> both(2, "unknown");
        QCOMPARE(application.caught, both);
        QCOMPARE(describe(table.value(1, 1)), QString("int 235"));

        box = table.open(2, 1);
        listOf(*box).setCurrentIndex(1);
        QTest::keyClick(&listOf(*box), Qt::Key_Return);
        settle();
        QCOMPARE(describe(table.value(2, 1)), QString("int 275"));
    }
};

VRN_TEST_IN(TestComboItemDelegate, CatchingApplication)

#include "tst_combo_item_delegate.moc"
