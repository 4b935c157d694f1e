#include <QScreen>
#include <QShortcut>
#include <QSignalSpy>

#include "controls/popups/history_popup_p.h"
#include "qt/controls/popups/entry_form.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::test;
using vrn::qt::SimpleLineEdit;
using vrn::qt::detail::EditHintPopup;
using vrn::qt::detail::EntryPopup;

namespace {

// The offscreen platform makes any window active that is shown, when events are processed.
// So nothing here processes events after a popup has shown.
struct Form : EntryForm
{
    void type(const QString& text) const { QTest::keyClicks(edit, text); }

    void press(const QList<Qt::Key>& keys) const
    {
        for (const Qt::Key key : keys)
            QTest::keyClick(edit, key);
    }
};

} // namespace

class TestEntryPopup : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theListOffersTheUnitsAfterTheNumber_data()
    {
        columns<QString, QStringList>("typed", "offered");
        row("the beginning of a unit", "12 f", QStringList({"12 ft"}));
        row("a word that begins no unit", "12 x", QStringList());
        row("no number", "x", QStringList());
        row("a unit that nothing can follow", "12 ft", QStringList());
    }
    void theListOffersTheUnitsAfterTheNumber()
    {
        QFETCH(QString, typed);
        QFETCH(QStringList, offered);
        Form form;
        QVERIFY(form.showActive());
        form.type(typed);
        QCOMPARE(form.offered(), offered);
    }

    void afterANumberAllUnitsAreOffered()
    {
        Form form;
        QVERIFY(form.showActive());
        form.type("12");
        QVERIFY(form.offered().contains("12 mm"));
        QVERIFY(form.offered().contains("12 ft"));
    }

    void theHintStandsAboveTheList()
    {
        Form form;
        QVERIFY(form.showActive());
        form.type("12 f");
        QCOMPARE(form.hint(), QString::fromUtf8("\u2026 ft"));
        const auto* label = form.popup()->findChild<QLabel*>();
        const auto* list = form.popup()->findChild<QListWidget*>();
        QCOMPARE(form.popup()->size(), form.popup()->sizeHint());
        QVERIFY(label->sizeHint().height() <= form.popup()->height() - list->height());
    }

    void aFieldWithItShowsNoSecondHint()
    {
        Form form;
        QVERIFY(form.showActive());
        form.type("12 f");
        QCOMPARE(form.edit->findChildren<EditHintPopup*>().size(), 1);
        QVERIFY(form.popup()->isVisible());
    }

    void aFieldThatGetsItLaterShowsNoSecondHint()
    {
        Form form;
        form.field->setCompletions(nullptr);
        QVERIFY(form.showActive());
        form.type("12 f");
        QVERIFY(!form.popup());
        QCOMPARE(form.edit->findChildren<EditHintPopup*>().size(), 1);
        form.field->setCompletions([](const QString&) { return QStringList("12 ft"); });
        form.type("e");
        QCOMPARE(form.edit->findChildren<EditHintPopup*>().size(), 1);
        QCOMPARE(form.edit->findChildren<vrn::qt::detail::HistoryPopup*>().size(), 1);
        QCOMPARE(form.offered(), QStringList("12 ft"));
    }

    void theKeysOfTheList_data()
    {
        columns<QString, QList<Qt::Key>, QString, bool>("typed", "keys", "text", "isOffered");
        using Keys = QList<Qt::Key>;
        row("Down and Enter take an entry", "12 f", Keys({Qt::Key_Down, Qt::Key_Return}), "12 ft",
            false);
        row("and that of the keypad", "12 f", Keys({Qt::Key_Down, Qt::Key_Enter}), "12 ft", false);
        row("Down and Tab take an entry", "12 f", Keys({Qt::Key_Down, Qt::Key_Tab}), "12 ft",
            false);
        row("Down goes on to the next", "12 m", Keys({Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}),
            "12 mi", false);
        row("Up goes back", "12 m", Keys({Qt::Key_Down, Qt::Key_Down, Qt::Key_Up, Qt::Key_Return}),
            "12 mm", false);
        row("Down stays at the last", "12 f",
            Keys({Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}), "12 ft", false);
        row("Escape drops the list", "12 f", Keys({Qt::Key_Down, Qt::Key_Escape}), "12 f", false);
        row("Up from the first leaves the list, and Enter ends the editing", "12 m",
            Keys({Qt::Key_Down, Qt::Key_Up, Qt::Key_Return}), "12.000 m", false);
        row("a letter in the list goes to the field", "12 f", Keys({Qt::Key_Down, Qt::Key_T}),
            "12 ft", false);
        row("Enter without Down ends the editing", "12 m", Keys({Qt::Key_Return}), "12.000 m",
            false);
        row("Tab without Down leaves the field", "12 m", Keys({Qt::Key_Tab}), "12.000 m", false);
        row("Escape without Down leaves the list", "12 f", Keys({Qt::Key_Escape}), "12 f", true);
        row("so does Up", "12 f", Keys({Qt::Key_Up}), "12 f", true);
    }
    void theKeysOfTheList()
    {
        QFETCH(QString, typed);
        QFETCH(QList<Qt::Key>, keys);
        QFETCH(QString, text);
        QFETCH(bool, isOffered);
        Form form;
        QVERIFY(form.showActive());
        form.type(typed);
        form.press(keys);
        QCOMPARE(form.edit->text(), text);
        QCOMPARE(!form.offered().isEmpty(), isOffered);
    }

    void inTheListTabStaysInTheField()
    {
        Form form;
        QVERIFY(form.showActive());
        form.type("12 f");
        form.press({Qt::Key_Down, Qt::Key_Tab});
        QVERIFY(form.edit->hasFocus());
        form.press({Qt::Key_Tab});
        QVERIFY(!form.edit->hasFocus());
    }

    // Shift and Tab together, as an example.
    void keysWithAModifierKeepTheirMeaning()
    {
        Form form;
        QVERIFY(form.showActive());
        form.type("12 f");
        form.press({Qt::Key_Down});
        QTest::keyClick(form.edit, Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(form.edit->text(), QString("12 f"));
    }

    void anEntryIsTakenAsIfItWereTyped()
    {
        Form form;
        QVERIFY(form.showActive());
        form.type("12 f");
        QVERIFY(!form.field->isValueValid());
        QSignalSpy edited(form.edit, &QLineEdit::textEdited);
        QSignalSpy finished(form.edit, &QLineEdit::editingFinished);
        QSignalSpy changed(form.field, &SimpleLineEdit::valueChanged);
        form.press({Qt::Key_Down, Qt::Key_Return});
        QVERIFY(form.field->isValueValid());
        QCOMPARE(edited.count(), 1);
        QCOMPARE(finished.count(), 0);
        QCOMPARE(changed.count(), 0);
        form.press({Qt::Key_Return});
        QCOMPARE(changed.count(), 1);
        QCOMPARE(form.edit->text(), QString("3.658 m"));
    }

    void aClickTakesAnEntry()
    {
        Form form;
        QVERIFY(form.showActive());
        form.type("12 f");
        auto* list = form.popup()->findChild<QListWidget*>();
        const QPoint center = list->visualItemRect(list->item(0)).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, center);
        QCOMPARE(form.edit->text(), QString("12 ft"));
    }

    // Escape in the list must not close a dialog, and Enter must not press its button.
    void aShortcutOfTheWindowWaitsWhileTheListIsEntered_data()
    {
        columns<Qt::Key>("key");
        row("Escape", Qt::Key_Escape);
        row("Enter", Qt::Key_Return);
    }
    void aShortcutOfTheWindowWaitsWhileTheListIsEntered()
    {
        QFETCH(Qt::Key, key);
        Form form;
        QShortcut shortcut(QKeySequence(key), &form.window);
        QSignalSpy activated(&shortcut, &QShortcut::activated);
        QVERIFY(form.showActive());
        form.type("12 f");
        form.press({Qt::Key_Down, key});
        QCOMPARE(activated.count(), 0);
        QVERIFY(form.offered().isEmpty());
    }

    void itNeverTakesTheFocus()
    {
        Form form;
        QVERIFY(form.showActive());
        form.type("12 f");
        form.press({Qt::Key_Down});
        QCOMPARE(QApplication::focusWidget(), form.edit);
        QVERIFY(form.popup()->windowHandle()->flags() & Qt::WindowDoesNotAcceptFocus);
        QCOMPARE(form.popup()->findChild<QListWidget*>()->focusPolicy(), Qt::NoFocus);
    }

    void itStandsBelowItsField()
    {
        Form form;
        QVERIFY(form.showActive());
        form.type("12 f");
        QCOMPARE(form.popup()->pos(), form.edit->mapToGlobal(QPoint(0, form.edit->height())));
    }

    void itStaysOnTheScreen_data()
    {
        columns<QPoint>("corner");
        row("at the right", QPoint(1, 0));
        row("at the bottom", QPoint(0, 1));
        row("in the corner", QPoint(1, 1));
    }
    void itStaysOnTheScreen()
    {
        QFETCH(QPoint, corner);
        Form form;
        form.field->setMaximumWidth(60);
        form.window.setFixedWidth(80);
        QVERIFY(form.showActive());
        const QRect screen = QApplication::primaryScreen()->availableGeometry();
        const QPoint room(screen.width() - 60, screen.height() - 60);
        form.window.move(corner.x() * room.x(), corner.y() * room.y());
        form.type("12");
        QVERIFY(!form.offered().isEmpty());
        QVERIFY(screen.contains(form.popup()->geometry()));
    }

    void aLongListShowsTenRows()
    {
        Form form;
        form.field->setCompletions([](const QString& text) {
            QStringList texts;
            for (int i = 0; i < 100; ++i)
                texts.append(text + QString::number(i));
            return texts;
        });
        QVERIFY(form.showActive());
        form.type("1");
        const auto* list = form.popup()->findChild<QListWidget*>();
        QCOMPARE(list->height(), 10 * list->sizeHintForRow(0) + 2 * list->frameWidth());
        for (int i = 0; i < 50; ++i)
            form.press({Qt::Key_Down});
        QVERIFY(list->viewport()->rect().contains(list->visualItemRect(list->currentItem())));
        form.press({Qt::Key_Return});
        QCOMPARE(form.edit->text(), QString("149"));
    }

    void aReadOnlyFieldTakesNothing()
    {
        Form form;
        QVERIFY(form.showActive());
        form.type("12 f");
        form.field->setReadOnly(true);
        form.press({Qt::Key_Down, Qt::Key_Return});
        QCOMPARE(form.edit->text(), QString("12 f"));
    }

    void theFunctionMayDestroyTheField()
    {
        auto form = std::make_unique<Form>();
        QVERIFY(form->showActive());
        form->field->setCompletions([field = form->field](const QString&) {
            delete field;
            return QStringList("12 ft");
        });
        QTest::keyClick(form->edit, Qt::Key_1);
        QVERIFY(form->window.findChildren<SimpleLineEdit*>().isEmpty());
    }

    void theFunctionMayReplaceItself()
    {
        Form form;
        QVERIFY(form.showActive());
        form.field->setCompletions(
            [field = form.field, texts = QStringList("12 ft")](const QString&) {
                field->setCompletions([](const QString&) { return QStringList("12 in"); });
                return texts;
            });
        form.type("1");
        form.type("2");
        QCOMPARE(form.offered(), QStringList("12 in"));
    }

    void theValidatorMayDestroyTheFieldWhenAnEntryIsTaken()
    {
        Form form;
        QVERIFY(form.showActive());
        form.type("12 f");
        connect(form.edit, &QLineEdit::textEdited, form.field, [&] { delete form.field; });
        QTest::keyClick(form.edit, Qt::Key_Down);
        QTest::keyClick(form.edit, Qt::Key_Return);
        QVERIFY(form.window.findChildren<SimpleLineEdit*>().isEmpty());
    }
};

VRN_TEST(TestEntryPopup)
#include "tst_entry_popup.moc"
