#include <vrn/qt/multi_edit_enum_box.h>
#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/varies_string.h>

#include <QAbstractItemView>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>

#include "gallery_page_test.h"

using namespace vrn::test;
using namespace vrn::qt;

// Drives the page of enum boxes by keys and clicks of the X server.
class TestGalleryEnumBoxes : public GalleryPageTest
{
    Q_OBJECT

public:
    TestGalleryEnumBoxes()
        : GalleryPageTest("enum-boxes")
    {}

private Q_SLOTS:
    void cleanup()
    {
        // A list that closes with its window keeps the mouse for itself a while.
        QTRY_VERIFY(!QApplication::activePopupWidget());
        QTest::qWait(300);
        GalleryPageTest::cleanup();
    }

    void aClickOnAnEntryEndsTheVarying_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("row");
        QTest::addColumn<boost::any>("value");
        QTest::newRow("in a list") << "Grade of three beams" << 1 << boost::any(275);
        QTest::newRow("in an editable box") << "Bolts of a joint" << 3 << boost::any(24);
    }

    void aClickOnAnEntryEndsTheVarying()
    {
        QFETCH(QString, caption);
        QFETCH(int, row);
        QFETCH(boost::any, value);
        auto* box = boxOf(caption);
        QVERIFY(box->dataVaries());
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        QSignalSpy activated(box, &SimpleEnumBox::activated);

        QAbstractItemView* list = openList(box);
        const QRect entry = list->visualRect(list->model()->index(row, 0));
        x11::click(list->viewport()->mapToGlobal(entry.center()));
        QTRY_COMPARE(activated.count(), 1);
        QTRY_VERIFY(!list->isVisible());
        QCOMPARE(activated.first().first().toInt(), row);
        QCOMPARE(changed.count(), 2);
        QVERIFY(!box->dataVaries());
        QCOMPARE(box->getCurrentValue(), value);
    }

    void keysPickAnEntryOfAVaryingBox()
    {
        auto* box = boxOf("Grade of three beams");
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        QSignalSpy activated(box, &SimpleEnumBox::activated);
        const QAbstractItemView* list = openList(box);
        x11::press({"Up", "Up"});
        QTRY_COMPARE(list->currentIndex().row(), 2);
        QCOMPARE(changed.count(), 0);
        x11::press({"Return"});
        QTRY_COMPARE(activated.count(), 1);
        QCOMPARE(changed.count(), 2);
        QVERIFY(!box->dataVaries());
        QCOMPARE(box->getCurrentValue(), boost::any(355));
    }

    void aListThatIsLeftWithEscapeLeavesTheBoxVarying()
    {
        auto* box = boxOf("Grade of three beams");
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        const QAbstractItemView* list = openList(box);
        x11::press({"Up", "Escape"});
        QTRY_VERIFY(!list->isVisible());
        QVERIFY(box->dataVaries());
        QCOMPARE(comboOf(box)->currentText(), getVariesString());
        QCOMPARE(changed.count(), 0);
    }

    void aValueIsTypedOverTheVariousTextAndEntered()
    {
        auto* box = boxOf("Bolts of a joint");
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        QSignalSpy activated(box, &SimpleEnumBox::activated);
        focusEdit(box);
        x11::press({"Return"});
        replaceText("22");
        QTRY_COMPARE(comboOf(box)->currentText(), QString("22"));
        QVERIFY(!box->dataVaries());
        QCOMPARE(changed.count(), 0);
        x11::press({"Return"});
        // Two for the row that Enter adds and picks, one for the value.
        QTRY_COMPARE(changed.count(), 3);
        QCOMPARE(activated.count(), 1);
        QCOMPARE(box->getCurrentValue(), boost::any(22));
        QVERIFY(box->isValueValid());
    }

    void theHintStandsBelowTheEditAndMakesWayForTheList()
    {
        auto* box = boxOf("Bolt");
        QVERIFY(!hint());
        focusEdit(box);
        replaceText("2");
        QTRY_VERIFY(hint());
        const QWidget* edit = comboOf(box)->lineEdit();
        QTRY_COMPARE(hint()->pos(), edit->mapToGlobal(QPoint(0, edit->height())));
        x11::type("2");
        QTRY_COMPARE(comboOf(box)->currentText(), QString("22"));

        QAbstractItemView* list = openList(box);
        QTRY_VERIFY(!hint());
        const QRect entry = list->visualRect(list->model()->index(1, 0));
        x11::click(list->viewport()->mapToGlobal(entry.center()));
        QTRY_COMPARE(box->getCurrentValue(), boost::any(16));
        QTRY_VERIFY(!list->isVisible());

        replaceText("9");
        QTRY_COMPARE(comboOf(box)->currentText(), QString("9"));
        x11::press({"Tab"});
        QTRY_VERIFY(!comboOf(box)->hasFocus());
        QTRY_VERIFY(!hint());
    }

    void theWheelScrollsThePageAndLeavesTheBoxes_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::newRow("over a list") << "Section";
        QTest::newRow("over an editable box") << "Bolt";
        QTest::newRow("over a list that varies") << "Grade of three beams";
    }

    void theWheelScrollsThePageAndLeavesTheBoxes()
    {
        QFETCH(QString, caption);
        auto* box = find<SimpleEnumBox>(caption);
        QComboBox* combo = comboOf(box);
        auto* area = qobject_cast<QScrollArea*>(&page());
        x11::press({"alt+g"});
        const QComboBox* focused = comboOf(find<SimpleEnumBox>("Steel grade"));
        QTRY_VERIFY(focused->hasFocus());
        window().resize(window().width(), 220);
        QTRY_VERIFY(area->verticalScrollBar()->maximum() > 0);
        area->ensureWidgetVisible(box);
        area->verticalScrollBar()->setValue(area->verticalScrollBar()->value() / 2);
        QTest::qWait(100);

        const int start = area->verticalScrollBar()->value();
        const QString text = combo->currentText();
        QSignalSpy changed(box, &SimpleEnumBox::valueChanged);
        x11::turnWheel(combo->mapToGlobal(QPoint(20, combo->height() / 2)));
        QTRY_VERIFY(area->verticalScrollBar()->value() > start);
        QCOMPARE(combo->currentText(), text);
        QCOMPARE(changed.count(), 0);
        QVERIFY(focused->hasFocus());
    }

    void theWheelPicksInTheBoxWithTheFocus()
    {
        auto* box = find<SimpleEnumBox>("Steel grade");
        QComboBox* combo = comboOf(box);
        x11::press({"alt+g"});
        QTRY_VERIFY(combo->hasFocus());
        x11::turnWheel(combo->mapToGlobal(combo->rect().center()));
        QTRY_COMPARE(box->getSelectedValue(), boost::any(275));
    }

    // Each name has a value, so it is not red.
    void theNamesOfTheBoltsAreAccepted()
    {
        auto* box = boxOf("Bolt");
        focusEdit(box);
        replaceText("M20");
        QTRY_COMPARE(comboOf(box)->currentText(), QString("M20"));
        QVERIFY(box->isValueValid());
        QCOMPARE(box->getCurrentValue(), boost::any(20));
        replaceText("M21");
        QTRY_VERIFY(!box->isValueValid());
    }

    void aShortcutOfTheCaptionGoesToItsList()
    {
        x11::press({"alt+j"});
        QTRY_VERIFY(comboOf(boxOf("Bolts of a joint"))->hasFocus());
        x11::press({"alt+t"});
        QTRY_VERIFY(comboOf(boxOf("Grade of three beams"))->hasFocus());
    }

    void theTabKeyGoesFromBoxToBox()
    {
        x11::press({"alt+g"});
        for (const char* caption : {"Steel grade", "Section", "Load case", "Bolt",
                 "Grade of three beams", "Bolts of a joint"}) {
            QTRY_COMPARE(QApplication::focusWidget()->accessibleName(), QString(caption));
            x11::press({"Tab"});
        }
    }

    void theControlsAroundTheEditsAreNotSeen()
    {
        const auto shells = page().findChildren<MultiEditLineEdit*>();
        QVERIFY(!shells.isEmpty());
        for (const MultiEditLineEdit* shell : shells) {
            if (shell->parentWidget()->inherits("gallery::EnumBoxesPage"))
                QVERIFY(!shell->isVisible());
        }
    }

private:
    MultiEditEnumBox* boxOf(const QString& caption) const
    {
        return find<MultiEditEnumBox>(caption);
    }

    static QComboBox* comboOf(SimpleEnumBox* box) { return box->findChild<QComboBox*>(); }

    void focusEdit(SimpleEnumBox* box) { focus(comboOf(box)->lineEdit()); }

    // Clicks on the arrow and waits for the list to take clicks.
    QAbstractItemView* openList(SimpleEnumBox* box)
    {
        QComboBox* combo = comboOf(box);
        const auto arrow = [combo] {
            return combo->mapToGlobal(QPoint(combo->width() - 10, combo->height() / 2));
        };
        clickUntil(arrow, [combo] { return combo->view()->isVisible(); });
        // A release so soon after the press is not taken for a second click.
        QTest::qWait(QApplication::doubleClickInterval() + 50);
        return combo->view();
    }
};

VRN_GALLERY_TEST(TestGalleryEnumBoxes)
#include "tst_gallery_enum_boxes.moc"
