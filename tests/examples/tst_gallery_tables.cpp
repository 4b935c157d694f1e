#include <vrn/qt/cell_data.h>
#include <vrn/qt/multi_edit_enum_box.h>
#include <vrn/qt/simple_enum_box.h>
#include <vrn/units/i_converter.h>

#include <QAbstractButton>
#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QTabWidget>

#include "gallery_page_test.h"
#include "members_model.h"
#include "members_table.h"

#include <memory>

using namespace vrn::test;
using gallery::MembersModel;
using gallery::MembersTable;
using vrn::qt::MultiEditEnumBox;

// Drives the page of tables by keys and clicks of the X server.
class TestGalleryTables : public GalleryPageTest
{
    Q_OBJECT

public:
    TestGalleryTables()
        : GalleryPageTest("tables")
    {}

private Q_SLOTS:
    void init()
    {
        GalleryPageTest::init();
        m_tester = std::make_unique<QAbstractItemModelTester>(
            &model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    }

    void cleanup()
    {
        m_tester.reset();
        // A list that closes with its window keeps the mouse for itself a while.
        QTRY_VERIFY(!QApplication::activePopupWidget());
        GalleryPageTest::cleanup();
    }

    void whatEndsTheEditingOfALength_data()
    {
        QTest::addColumn<QStringList>("keys");
        QTest::addColumn<double>("length");
        QTest::newRow("Enter writes it") << QStringList("Return") << 2.4384;
        QTest::newRow("Tab writes it") << QStringList("Tab") << 2.4384;
        QTest::newRow("a click elsewhere writes it") << QStringList() << 2.4384;
        QTest::newRow("Escape drops it") << QStringList("Escape") << 7.4;
    }

    void whatEndsTheEditingOfALength()
    {
        QFETCH(QStringList, keys);
        QFETCH(double, length);
        edit(cell(4, MembersModel::Length));
        const QPointer<QLineEdit> opened(editor<QLineEdit>());
        replaceText("8 ft");
        QTRY_COMPARE(opened->text(), QString("8 ft"));
        if (keys.isEmpty())
            x11::click(spot(cell(7, MembersModel::Name)));
        else
            x11::press(keys);
        QTRY_VERIFY(!opened);
        const auto value = boost::any_cast<vrn::units::IConverter::quantity>(
            valueOf(cell(4, MembersModel::Length)));
        QCOMPARE(value.unit_id, vrn::units::UnitId::GEO_LENGTH);
        QCOMPARE(value.value, length);
    }

    void aMaterialIsChosenWithTheMouse()
    {
        edit(cell(4, MembersModel::Material));
        auto* box = editor<QComboBox>();
        const QAbstractItemView* list = box->view();
        QTRY_VERIFY(box->width() > box->sizeHint().width());
        clickUntil([&] { return box->mapToGlobal(box->rect().center()); },
            [&] { return list->isVisible(); });
        // A list takes the mouse for that of the click that opened it, for a while.
        QTest::qWait(QApplication::doubleClickInterval() + 100);
        const QRect last = list->visualRect(list->model()->index(3, 0));
        // Items may be wider than their list.
        const QPoint place = list->viewport()->mapToGlobal(
            QPoint(list->viewport()->width() / 2, last.center().y()));
        x11::moveMouse(place - QPoint(2, 0));
        QTest::qWait(50);
        x11::click(place);
        QTRY_VERIFY(!editor<QComboBox>());
        QCOMPARE(valueOf(cell(4, MembersModel::Material)), boost::any(460));
    }

    void aMaterialIsChosenWithKeys()
    {
        edit(cell(4, MembersModel::Material));
        x11::press({"Down"});
        QTRY_COMPARE(editor<QComboBox>()->currentIndex(), 1);
        QCOMPARE(valueOf(cell(4, MembersModel::Material)), boost::any(235));
        x11::press({"Return"});
        QTRY_VERIFY(!editor<QComboBox>());
        QCOMPARE(valueOf(cell(4, MembersModel::Material)), boost::any(275));
    }

    void aBlockGoesOnBelowTheLastRow()
    {
        x11::click(spot(cell(1, MembersModel::Name)));
        x11::press({"shift+Down", "shift+Down", "shift+Right", "shift+Right", "ctrl+c"});
        QTRY_COMPARE(QApplication::clipboard()->text().count('\n'), 3);
        const int rows = model().rowCount();
        table().setCurrentIndex(cell(rows - 1, MembersModel::Name));
        x11::press({"ctrl+v"});
        QTRY_COMPARE(model().rowCount(), rows + 2);
        for (int column = MembersModel::Name; column <= MembersModel::Area; ++column) {
            for (int line = 0; line < 3; ++line) {
                QCOMPARE(model().index(rows - 1 + line, column).data(),
                    model().index(1 + line, column).data());
            }
        }
        QVERIFY(valueOf(cell(rows, MembersModel::Length)).empty());
    }

    void aBlockThatIsTooShortIsToldByTheApplication()
    {
        x11::click(spot(cell(1, MembersModel::Name)));
        x11::press({"shift+Down", "ctrl+c", "shift+Down", "ctrl+v"});
        QTRY_COMPARE(lastException(), QString("invalid vector<T> subscript"));
        x11::press({"Delete"});
        QTRY_COMPARE(valueOf(cell(3, MembersModel::Name)), boost::any(std::wstring()));
    }

    void theUnitsAreThoseOfTheSystem()
    {
        focus(find<QComboBox>("Unit system"));
        x11::press({"End"});
        QTRY_COMPARE(cell(1, MembersModel::Length).data().toString(), QString("285.43 in"));
        edit(cell(1, MembersModel::Length));
        replaceText("300");
        x11::press({"Return"});
        QTRY_COMPARE(cell(1, MembersModel::Length).data().toString(), QString("300.00 in"));
    }

    void aDoubleClickPressesAButtonTwice()
    {
        const int rows = model().rowCount();
        const QPoint button = spot(cell(2, MembersModel::Duplicate));
        x11::click(button);
        x11::click(button);
        QTRY_COMPARE(model().rowCount(), rows + 2);
        QCOMPARE(cell(4, MembersModel::Name).data(), cell(2, MembersModel::Name).data());
        QTest::qWait(300);
        QCOMPARE(model().rowCount(), rows + 2);
    }

    void whichKeysPressAButton_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("pressed");
        QTest::newRow("F2") << "F2" << 1;
        QTest::newRow("Enter") << "Return" << 1;
        QTest::newRow("Enter of the keypad") << "KP_Enter" << 1;
        QTest::newRow("Space") << "space" << 1;
        QTest::newRow("not a letter") << "x" << 0;
        QTest::newRow("not Tab") << "Tab" << 0;
    }
    void whichKeysPressAButton()
    {
        QFETCH(QString, key);
        QFETCH(int, pressed);
        const int rows = model().rowCount();
        focusOn(cell(2, MembersModel::Load));
        x11::press({"Right", "Right", key, "Home"});
        QTRY_COMPARE(table().currentIndex().column(), int(MembersModel::Name));
        QCOMPARE(model().rowCount(), rows + pressed);
    }

    void tabFromAnEditorDoesNotPressAButton()
    {
        const int rows = model().rowCount();
        edit(cell(4, MembersModel::Name));
        x11::press({"shift+Tab"});
        QTRY_COMPARE(table().currentIndex(), cell(3, MembersModel::Duplicate));
        QTRY_VERIFY(table().hasFocus());
        QCOMPARE(model().rowCount(), rows);
    }

    void aButtonInACellComputesTheLoad()
    {
        edit(cell(1, MembersModel::Load));
        auto* button = editor<QLineEdit>()->findChild<QAbstractButton*>();
        QVERIFY(button);
        click(button);
        QTRY_COMPARE(editor<QLineEdit>()->text(), QString("15 kN/m"));
        x11::press({"Return"});
        QTRY_COMPARE(cell(1, MembersModel::Load).data().toString(), QString("15.00 kN/m"));
    }

    void theFirstRowIsNotEdited()
    {
        const QString name = cell(0, MembersModel::Name).data().toString();
        x11::click(spot(cell(0, MembersModel::Name)));
        x11::press({"F2"});
        x11::type("X");
        QTest::qWait(200);
        QVERIFY(!editor<QLineEdit>());
        QCOMPARE(cell(0, MembersModel::Name).data().toString(), name);
    }

    void theLongTableIsAsQuick()
    {
        x11::press({"alt+1"});
        QTRY_COMPARE(model().rowCount(), 100000);
        table().setFocus();
        x11::press({"ctrl+End"});
        QTRY_COMPARE(table().currentIndex().row(), 99999);
        edit(cell(99999, MembersModel::Name));
        replaceText("the last");
        x11::press({"Return"});
        QTRY_COMPARE(cell(99999, MembersModel::Name).data().toString(), QString("the last"));
    }

private:
    MembersTable& table() const
    {
        return *qobject_cast<MembersTable*>(page().findChild<QTabWidget*>()->currentWidget());
    }
    MembersModel& model() const { return *qobject_cast<MembersModel*>(table().model()); }
    QModelIndex cell(int row, int column) const { return model().index(row, column); }
    static boost::any valueOf(const QModelIndex& index)
    {
        return index.data(vrn::qt::EditRole).value<boost::any>();
    }

    QPoint spot(const QModelIndex& index) const
    {
        table().scrollTo(index);
        return table().viewport()->mapToGlobal(table().visualRect(index).center());
    }

    // The editor that is open, or the part of it that is a Part.
    template <typename Part>
    Part* editor() const
    {
        return table().viewport()->findChild<Part*>();
    }

    void focusOn(const QModelIndex& index)
    {
        clickUntil([&] { return spot(index); },
            [&] { return table().hasFocus() && table().currentIndex() == index; });
    }

    void edit(const QModelIndex& index)
    {
        focusOn(index);
        x11::press({"F2"});
        QTRY_VERIFY(table().viewport()->isAncestorOf(QApplication::focusWidget()));
    }

    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

VRN_GALLERY_TEST(TestGalleryTables)
#include "tst_gallery_tables.moc"
