#include <vrn/companion_qt/combo_box.h>

#include "support/other_language.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QLineEdit>
#include <QSignalSpy>

using vrn::test::columns;
using vrn::test::row;

namespace {

const QString various = QStringLiteral("*VARIES*");

int variousId()
{
    return VRN_QT4_ComboBox::getVariousId();
}

// A box with three rows, the middle one current.
struct Box : public VRN_QT4_ComboBox
{
    explicit Box(bool editable = false)
    {
        setEditable(editable);
        addItems({"a", "b", "c"});
        setCurrentIndex(1);
    }

    QStringList rows() const
    {
        QStringList texts;
        for (int row = 0; row < count(); ++row)
            texts << itemText(row);
        return texts;
    }
};

} // namespace

class TestComboBox : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theNameIsTheObjectName()
    {
        QWidget parent;
        QCOMPARE(VRN_QT4_ComboBox(&parent, "grade").objectName(), QString("grade"));
        QCOMPARE(VRN_QT4_ComboBox(&parent).objectName(), QString());
        QCOMPARE(VRN_QT4_ComboBox(&parent).parentWidget(), &parent);
    }

    void rowsStayInTheOrderOfInsertion()
    {
        VRN_QT4_ComboBox box;
        box.setSorting(false);
        for (const char* text : {"pear", "apple", "fig"})
            box.insertItem(box.count(), text);
        QCOMPARE(box.itemText(0), QString("pear"));
        QCOMPARE(box.itemText(1), QString("apple"));
        QCOMPARE(box.itemText(2), QString("fig"));
    }

    void sortingIsNotOffered()
    {
        Box box;
        expectAssert("!sorting", {}, "entries stay in the order in which they come");
        box.setSorting(true);
        QCOMPARE(box.rows(), QStringList({"a", "b", "c"}));
    }

    void theWidthFollowsTheLongestText()
    {
        Box box;
        box.setWidthTextEnabled(true);
        const int before = box.sizeHint().width();
        box.addItem(QString(60, 'w'));
        QVERIFY(box.sizeHint().width() > before + 60 * box.fontMetrics().averageCharWidth());
        box.setWidthTextEnabled(false);
        QCOMPARE(box.sizeAdjustPolicy(), QComboBox::AdjustToContentsOnFirstShow);
    }

    void theVariousEntryIsTheLast()
    {
        Box box;
        box.addVarious(true);
        QCOMPARE(box.rows(), QStringList({"a", "b", "c", various}));
        QCOMPARE(box.currentIndex(), 3);
        QCOMPARE(box.getCurrentId(), variousId());
    }

    void theCurrentRowStaysWhenTheEntryIsAddedOnly_data()
    {
        columns<bool>("editable");
        row("in a list", false);
        row("in an editable box", true);
    }
    void theCurrentRowStaysWhenTheEntryIsAddedOnly()
    {
        QFETCH(bool, editable);
        Box box(editable);
        box.addVarious(false);
        QCOMPARE(box.currentIndex(), 1);
        QCOMPARE(box.getCurrentId(), 1);
        QCOMPARE(box.rows().last(), various);

        VRN_QT4_ComboBox empty;
        empty.setEditable(editable);
        if (editable)
            empty.setEditText("typed");
        empty.addVarious(false);
        QCOMPARE(empty.currentIndex(), -1);
        QCOMPARE(empty.getCurrentId(), -1);
        QCOMPARE(empty.currentText(), QString(editable ? "typed" : ""));
    }

    void theEntryIsAddedOnce()
    {
        Box box;
        box.addVarious(true);
        box.addVarious(true);
        box.addVarious(false);
        QCOMPARE(box.rows(), QStringList({"a", "b", "c", various}));
        box.removeVarious();
        QCOMPARE(box.rows(), QStringList({"a", "b", "c"}));
        QCOMPARE(box.currentIndex(), 1);
    }

    void removingTheEntryShowsWhatWasShownBefore_data()
    {
        columns<bool, int, QString>("editable", "row", "typed");
        row("the first row", false, 0, QString());
        row("the last row", false, 2, QString());
        row("no row", false, -1, QString());
        row("a row of an editable box", true, 1, QString());
        row("a text over a row of an editable box", true, 1, QString("7.5"));
        row("a text over no row", true, -1, QString("7.5"));
    }
    void removingTheEntryShowsWhatWasShownBefore()
    {
        QFETCH(bool, editable);
        QFETCH(int, row);
        QFETCH(QString, typed);
        Box box(editable);
        box.setCurrentIndex(row);
        if (!typed.isNull())
            box.setEditText(typed);
        const QString text = box.currentText();
        box.addVarious(true);
        QCOMPARE(box.currentText(), various);
        box.removeVarious();
        QCOMPARE(box.currentIndex(), row);
        QCOMPARE(box.currentText(), text);
        QCOMPARE(box.rows(), QStringList({"a", "b", "c"}));
    }

    void removingTheEntryLeavesAnotherCurrentRow()
    {
        Box box;
        box.addVarious(true);
        box.setCurrentIndex(2);
        box.removeVarious();
        QCOMPARE(box.currentIndex(), 2);
    }

    void removingNoEntryChangesNothing()
    {
        Box box(true);
        box.setEditText("7.5");
        box.removeVarious();
        QCOMPARE(box.currentIndex(), 1);
        QCOMPARE(box.currentText(), QString("7.5"));
        VRN_QT4_ComboBox().removeVarious();
    }

    void aTextTypedOverTheEntryStaysWhenItIsRemoved_data()
    {
        columns<bool, bool>("hasRows", "selectedAgain");
        row("in a box with rows", true, false);
        row("in a box without rows", false, false);
        row("when the entry has been selected again", true, true);
    }
    void aTextTypedOverTheEntryStaysWhenItIsRemoved()
    {
        QFETCH(bool, hasRows);
        QFETCH(bool, selectedAgain);
        Box box(true);
        if (!hasRows)
            box.clear();
        const int before = box.currentIndex();
        box.addVarious(true);
        box.setEditText("7.5");
        if (selectedAgain) {
            box.addVarious(true);
            QCOMPARE(box.getCurrentId(), variousId());
            QCOMPARE(box.currentText(), various);
        }
        box.removeVarious();
        QCOMPARE(box.currentText(), QString("7.5"));
        QCOMPARE(box.currentIndex(), before);
        QCOMPARE(box.count(), hasRows ? 3 : 0);
    }

    void aClearedBoxHasNoEntry()
    {
        Box box;
        box.addVarious(true);
        box.clear();
        QCOMPARE(box.getCurrentId(), -1);
        box.removeVarious();
        box.addItem("d");
        box.addVarious(true);
        QCOMPARE(box.rows(), QStringList({"d", various}));
        QCOMPARE(box.getCurrentId(), variousId());
    }

    void theEntryIsKnownByItsPlaceAndNotByItsText()
    {
        Box box;
        box.addItem(various);
        box.setCurrentIndex(3);
        QCOMPARE(box.getCurrentId(), 3);
        box.addVarious(true);
        QCOMPARE(box.count(), 5);
        QCOMPARE(box.getCurrentId(), variousId());
        box.removeVarious();
        QCOMPARE(box.rows(), QStringList({"a", "b", "c", various}));
        QCOMPARE(box.getCurrentId(), 3);
    }

    void theIdIsNotARow()
    {
        QVERIFY(variousId() < -1);
        Box box;
        for (int row = -1; row < 3; ++row) {
            box.setCurrentIndex(row);
            QCOMPARE(box.getCurrentId(), row);
        }
    }

    void inAnEditableBoxTheIdGoesByWhatIsShown()
    {
        Box box(true);
        box.addVarious(true);
        QCOMPARE(box.getCurrentId(), variousId());
        box.setEditText("*VARIES");
        QCOMPARE(box.getCurrentId(), -1);
        box.setEditText(various);
        QCOMPARE(box.getCurrentId(), variousId());
        box.setCurrentIndex(0);
        QCOMPARE(box.getCurrentId(), 0);
        box.setEditText(various);
        QCOMPARE(box.getCurrentId(), 0);
    }

    void anEntryOverItsOwnTextLeavesTheRowBefore()
    {
        Box box(true);
        box.setEditText(various);
        box.addVarious(true);
        QCOMPARE(box.getCurrentId(), variousId());
        box.removeVarious();
        QCOMPARE(box.currentIndex(), 1);
        QCOMPARE(box.currentText(), QString("b"));

        box.setCurrentIndex(-1);
        box.setEditText(various);
        box.addVarious(true);
        box.removeVarious();
        QCOMPARE(box.currentIndex(), -1);
        QCOMPARE(box.currentText(), QString());
    }

    void theEntryFollowsTheLanguage_data()
    {
        columns<bool, int, QString, QString>("editable", "row", "typed", "text");
        row("shown in a list", false, 3, QString(), "*VERSCHIEDEN*");
        row("shown in an editable box", true, 3, QString(), "*VERSCHIEDEN*");
        row("in a list at another row", false, 1, QString(), "b");
        row("in an editable box at another row", true, 1, QString(), "b");
        row("with a text typed over it", true, 3, QString("7.5"), "7.5");
        row("with an empty text typed over it", true, 3, QString(""), "");
    }
    void theEntryFollowsTheLanguage()
    {
        QFETCH(bool, editable);
        QFETCH(int, row);
        QFETCH(QString, typed);
        QFETCH(QString, text);
        Box box(editable);
        box.addVarious(true);
        box.setCurrentIndex(row);
        if (!typed.isNull())
            box.setEditText(typed);
        const int id = box.getCurrentId();
        vrn::test::OtherLanguage german;
        german.change();
        vrn::test::deliverLanguage();
        QCOMPARE(box.rows(), QStringList({"a", "b", "c", "*VERSCHIEDEN*"}));
        QCOMPARE(box.currentIndex(), row);
        QCOMPARE(box.currentText(), text);
        QCOMPARE(box.getCurrentId(), id);
        german.change();
        vrn::test::deliverLanguage();
        QCOMPARE(box.rows(), QStringList({"a", "b", "c", various}));
        QCOMPARE(box.getCurrentId(), id);
    }

    void aSelectedTextStaysSelectedInAnotherLanguage()
    {
        Box box(true);
        box.addVarious(true);
        box.lineEdit()->selectAll();
        vrn::test::OtherLanguage german;
        german.change();
        vrn::test::deliverLanguage();
        QCOMPARE(box.lineEdit()->selectedText(), QString("*VERSCHIEDEN*"));
    }

    void enterOnTheEntryDoesNotPickIt()
    {
        Box box(true);
        box.show();
        QSignalSpy picks(&box, &QComboBox::textActivated);
        box.addVarious(true);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
            QTest::keyClick(&box, key);
        QCOMPARE(picks.count(), 0);
        box.setEditText("c");
        QTest::keyClick(&box, Qt::Key_Return);
        QCOMPARE(picks.count(), 1);
        QCOMPARE(box.currentIndex(), 2);
    }

    void enterOnAnythingElseIsLeftToQt()
    {
        Box box(true);
        box.show();
        box.setInsertPolicy(QComboBox::InsertAtBottom);
        box.addVarious(true);
        box.setEditText("7.5");
        QTest::keyClick(&box, Qt::Key_Return);
        QCOMPARE(box.rows(), QStringList({"a", "b", "c", various, "7.5"}));
        QCOMPARE(box.currentIndex(), 4);
        box.removeVarious();
        QCOMPARE(box.rows(), QStringList({"a", "b", "c", "7.5"}));
        QCOMPARE(box.currentIndex(), 3);
        QCOMPARE(box.currentText(), QString("7.5"));
    }
};

VRN_TEST(TestComboBox)
#include "tst_combo_box.moc"
