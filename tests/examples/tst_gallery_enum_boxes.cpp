#include <vrn/qt/multi_edit_enum_box.h>
#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/varies_string.h>

#include <QAbstractItemView>
#include <QLineEdit>
#include <QSignalSpy>

#include "gallery_application.h"
#include "gallery_window.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "support/x11_input.h"

#include <memory>

using namespace vrn::test;
using namespace vrn::qt;

// Drives the page of enum boxes by keys and clicks of the X server.
class TestGalleryEnumBoxes : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_window = std::make_unique<gallery::GalleryWindow>();
        QVERIFY(m_window->showPage(QStringLiteral("enum-boxes")));
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        // The window is where it stays once it is in its frame.
        QTRY_VERIFY(m_window->frameGeometry().top() < m_window->geometry().top());
    }

    void cleanup()
    {
        // A list that closes with its window keeps the mouse for itself a while.
        QTRY_VERIFY(!QApplication::activePopupWidget());
        QTest::qWait(300);
        m_window.reset();
        TestObject::cleanup();
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
        x11::press({"ctrl+a"});
        x11::type("22");
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
        x11::press({"ctrl+a"});
        x11::type("2");
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

        x11::press({"ctrl+a"});
        x11::type("9");
        QTRY_COMPARE(comboOf(box)->currentText(), QString("9"));
        x11::press({"Tab"});
        QTRY_VERIFY(!comboOf(box)->hasFocus());
        QTRY_VERIFY(!hint());
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
        const auto shells = m_window->findChildren<MultiEditLineEdit*>();
        QVERIFY(!shells.isEmpty());
        for (const MultiEditLineEdit* shell : shells) {
            if (shell->parentWidget()->inherits("gallery::EnumBoxesPage"))
                QVERIFY(!shell->isVisible());
        }
    }

private:
    MultiEditEnumBox* boxOf(const QString& caption) const
    {
        for (auto* box : m_window->findChildren<MultiEditEnumBox*>()) {
            if (comboOf(box)->accessibleName() == caption)
                return box;
        }
        qFatal("no box %s", qPrintable(caption));
    }

    static QComboBox* comboOf(SimpleEnumBox* box) { return box->findChild<QComboBox*>(); }

    void focusEdit(SimpleEnumBox* box)
    {
        QLineEdit* edit = comboOf(box)->lineEdit();
        clickUntil([&] { return edit->mapToGlobal(edit->rect().center()); },
            [&] { return comboOf(box)->hasFocus(); });
    }

    // Where the widget is, is asked for each click: a window that has just been
    // shown may still lay itself out.
    template <typename Position, typename Done>
    static void clickUntil(Position position, Done done)
    {
        for (int attempt = 0; attempt < 5 && !done(); ++attempt) {
            x11::click(position());
            (void)QTest::qWaitFor(done, 1000);
        }
        QVERIFY(done());
    }

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

    static const QWidget* hint()
    {
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (window->inherits("vrn::qt::detail::EditHintPopup") && window->isVisible()
                && !window->testAttribute(Qt::WA_DontShowOnScreen))
                return window;
        }
        return nullptr;
    }

    std::unique_ptr<gallery::GalleryWindow> m_window;
};

VRN_TEST_IN(TestGalleryEnumBoxes, gallery::GalleryApplication)
#include "tst_gallery_enum_boxes.moc"
