#include "controls/line_edits/line_edit_impl_p.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QApplication>
#include <QInputMethodEvent>

#include <algorithm>
#include <ctime>
#include <limits>
#include <memory>

using vrn::qt::detail::LineEditImpl;

namespace {

// What an input method brings, in place of the last `replaced` characters before the cursor.
void commit(QLineEdit& edit, const QString& text, int replaced = 0)
{
    QInputMethodEvent event;
    event.setCommitString(text, -replaced, replaced);
    QApplication::sendEvent(&edit, &event);
}

} // namespace

class TestLineEditImplInputMethod : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTextIsCutAsByAPlainEdit_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<int>("selected"); // from the end
        QTest::addColumn<QString>("mask");
        QTest::addColumn<bool>("readOnly");
        QTest::addColumn<int>("replaced"); // before the cursor
        QTest::addColumn<int>("maximum");
        QTest::addColumn<QString>("text");
        const auto row = [](const char* name, const char* before, int selected, const char* mask,
                             bool readOnly, int replaced, const char* text, int maximum = 5) {
            QTest::newRow(name) << QString(before) << selected << QString(mask) << readOnly
                                << replaced << maximum << QString(text);
        };
        row("it fits", "12", 0, "", false, 0, "abc");
        row("one too many", "12", 0, "", false, 0, "abcd");
        row("too long by itself", "", 0, "", false, 0, "abcdefg");
        row("a part is selected", "1234", 2, "", false, 0, "abcdefg");
        row("all is selected", "1234", 4, "", false, 0, "abcdefg");
        row("the edit is full", "12345", 0, "", false, 0, "abc");
        row("the edit is full and selected", "12345", 5, "", false, 0, "abcdefg");
        row("the edit is read-only", "12", 0, "", true, 0, "abcdefg");
        row("the edit has a mask", "", 0, "99.99", false, 0, "a1b2c3d4e5");
        row("a part is replaced", "1234", 0, "", false, 2, "abcdefg");
        row("all is replaced", "1234", 0, "", false, 4, "abcdefg");
        row("there is no room at all", "", 0, "", false, 0, "abcdefg", 0);
        row("the maximum is below zero", "12", 0, "", false, 0, "abcdefg", -1);
        row("the maximum is the least number", "12", 0, "", false, 0, "abcdefg",
            std::numeric_limits<int>::min());
        row("the maximum is the greatest number", "12", 0, "", false, 0, "abcdefg",
            std::numeric_limits<int>::max());
    }
    void aTextIsCutAsByAPlainEdit()
    {
        QFETCH(QString, before);
        QFETCH(int, selected);
        QFETCH(QString, mask);
        QFETCH(bool, readOnly);
        QFETCH(int, replaced);
        QFETCH(int, maximum);
        QFETCH(QString, text);
        LineEditImpl ours(0);
        QLineEdit plain;
        const auto outcomeOf = [&](QLineEdit& edit) {
            edit.setMaxLength(maximum);
            edit.setInputMask(mask);
            edit.setText(before);
            edit.setCursorPosition(mask.isEmpty() ? int(before.size()) : 0);
            edit.setReadOnly(readOnly);
            if (selected > 0)
                edit.setSelection(int(before.size()) - selected, selected);
            QStringList steps;
            connect(&edit, &QLineEdit::inputRejected, [&] { steps << "rejected"; });
            connect(&edit, &QLineEdit::textEdited, [&](const QString& edited) { steps << edited; });
            commit(edit, text, replaced);
            steps << edit.text() << QString::number(edit.cursorPosition());
            edit.undo();
            return steps << edit.text();
        };
        QCOMPARE(outcomeOf(ours), outcomeOf(plain));
    }

    void theCursorStandsBehindWhatCameIn()
    {
        LineEditImpl ours(0);
        QLineEdit plain;
        for (QLineEdit* edit : {static_cast<QLineEdit*>(&ours), &plain}) {
            edit->setMaxLength(5);
            edit->setText("12");
            edit->setCursorPosition(1);
            commit(*edit, "abcdefg");
            QCOMPARE(edit->text(), QString("1abc2"));
            QCOMPARE(edit->cursorPosition(), 4);
        }
    }

    // This is why the edit cuts a text.
    void aLongTextTakesLessThanHalfTheTimeOfAPlainEdit()
    {
        const QString mebi(1024 * 1024, 'a');
        const auto timeOf = [&](auto makeEdit) {
            std::clock_t quickest = std::numeric_limits<std::clock_t>::max();
            for (int run = 0; run < 3; ++run) {
                const auto edit = makeEdit();
                edit->setText("12");
                const std::clock_t start = std::clock();
                commit(*edit, mebi);
                quickest = std::min(quickest, std::clock() - start);
            }
            return quickest;
        };
        const std::clock_t ours = timeOf([] { return std::make_unique<LineEditImpl>(0U); });
        const std::clock_t plain = timeOf([] { return std::make_unique<QLineEdit>(); });
        const QString times = QString("%1 and %2 us").arg(ours).arg(plain);
        QVERIFY2(2 * ours < plain, qPrintable(times));
    }
};

VRN_TEST(TestLineEditImplInputMethod)
#include "tst_line_edit_impl_input_method.moc"
