#include <vrn/qt/simple_line_edit.h>

#include "controls/line_edits/line_edit_impl_p.h"
#include "controls/popups/edit_hint_popup_p.h"
#include "controls/popups/history_popup_p.h"
#include "line_edit_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QSignalSpy>
#include <QStyle>
#include <QToolButton>

using namespace vrn::qt;
using detail::EditHintPopup;
using detail::HistoryPopup;
using detail::LineEditImpl;
using vrn::test::DigitsValidator;
using vrn::test::Form;
using vrn::test::historyOf;
using vrn::test::row;

namespace {

QString unchanged(const QString& text)
{
    return text;
}

QPixmap square(int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::red);
    return pixmap;
}

int frameWidthOf(const QLineEdit& edit, unsigned int options)
{
    return options & 1 ? 0
                       : edit.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &edit);
}

QStringList rowsOf(const HistoryPopup& popup)
{
    const auto* list = popup.findChild<QListWidget*>();
    QStringList rows;
    for (int row = 0; row < list->count(); ++row)
        rows << list->item(row)->text();
    return rows;
}

// What a user sees of a popup.
bool standsOnScreen(const QWidget* popup)
{
    return popup && popup->isVisible() && !popup->size().isEmpty();
}

void clickRow(HistoryPopup& popup, int row)
{
    auto* list = popup.findChild<QListWidget*>();
    const QRect place = list->visualItemRect(list->item(row));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place.center());
}

// From where to where a text goes that is too long for the edit.
QLine placeOfText(QLineEdit& edit)
{
    edit.setText(QString(100, '1'));
    const auto cursor = [&] {
        edit.grab(); // It scrolls there.
        return edit.inputMethodQuery(Qt::ImCursorRectangle).toRect().center().x();
    };
    edit.home(false);
    const int left = cursor();
    edit.end(false);
    return {left, 0, cursor(), 0};
}

} // namespace

class TestLineEditImpl : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aButtonTakesItsPlace_data()
    {
        QTest::addColumn<unsigned int>("options");
        QTest::addColumn<int>("pixmapSize");
        row("with a frame and the built-in icon", 0u, 0);
        row("with a frame and an icon of its own", 0u, 32);
        row("borderless and the built-in icon", 1u, 0);
        row("borderless and an icon of its own", 1u, 32);
        row("options other than bit 0 keep the frame", 0xfffffffeu, 0);
    }

    void aButtonTakesItsPlace()
    {
        QFETCH(unsigned int, options);
        QFETCH(int, pixmapSize);
        LineEditImpl edit(options);
        const int frame = frameWidthOf(edit, options);
        QToolButton* button = edit.addButton(
            unchanged, pixmapSize > 0 ? square(pixmapSize) : QPixmap());
        QVERIFY(button);
        QCOMPARE(button->parentWidget(), &edit);
        QVERIFY(!button->icon().isNull());
        if (pixmapSize > 0)
            QCOMPARE(button->iconSize(), QSize(12, 12));
        else
            QCOMPARE(button->iconSize(), button->icon().availableSizes().value(0));
        QCOMPARE(button->cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(
            button->styleSheet(), QString("QToolButton { border: none; padding: 0; margin: 0; }"));
        QVERIFY(!button->isHidden());

        const QSize size = button->sizeHint();
        QCOMPARE(edit.styleSheet(),
            QString("QLineEdit { padding-right: %1px; padding-top:-1; margin-top:-1; "
                    "padding-bottom:0;  }")
                .arg(size.width() + 1 + frame));
        QVERIFY(edit.minimumWidth() >= size.height() + 2 + 2 * frame);
        if (options & 1)
            QCOMPARE(edit.minimumHeight(), 16);
        else
            QVERIFY(edit.minimumHeight() >= size.height() + 2 * frame);
    }

    void aSecondButtonIsRefused()
    {
        LineEditImpl edit(0);
        QToolButton* first = edit.addButton(unchanged, square(8));
        const QString sheet = edit.styleSheet();
        expectAssert("!m_btn1", {}, "only 1 button allowed, at the moment.");
        QCOMPARE(edit.addButton([](const QString&) { return QString("second"); }, {}), first);
        expectAssert("fn");
        expectAssert("!m_btn1", {}, "only 1 button allowed, at the moment.");
        QCOMPARE(edit.addButton({}, {}), first);
        QCOMPARE(edit.findChildren<QToolButton*>().size(), 1);
        QCOMPARE(edit.styleSheet(), sheet);
        QCOMPARE(first->iconSize(), QSize(12, 12));
        first->click();
        QCOMPARE(edit.text(), QString());
    }

    void aButtonWithoutAFunctionAssertsAndDoesNothing()
    {
        LineEditImpl edit(0);
        edit.setText("12");
        expectAssert("fn");
        QToolButton* button = edit.addButton({}, {});
        QVERIFY(button);
        QVERIFY(!button->isHidden());
        button->click();
        QCOMPARE(edit.text(), QString("12"));
        QVERIFY(!edit.hasSelectedText());
    }

    void theControlHandsTheButtonOn()
    {
        const QScopedPointer<SimpleLineEdit> field(createField());
        QString asked;
        QToolButton* button = field->addButton(
            [&](const QString& text) {
                asked = text;
                return text;
            },
            square(32));
        QVERIFY(button);
        QCOMPARE(button->parentWidget(), static_cast<QWidget*>(field->edit()));
        QCOMPARE(button->iconSize(), QSize(12, 12));
        field->edit()->setText("12");
        button->click();
        QCOMPARE(asked, QString("12"));
    }

    void aClickReplacesTheText_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("result");
        QTest::addColumn<QString>("selected");
        row("another text is taken and selected", "12", "34", "34");
        row("the same text changes nothing", "12", "12", "");
        row("an empty text is taken too", "12", "", "");
        row("an empty field can be filled", "", "34", "34");
    }

    void aClickReplacesTheText()
    {
        QFETCH(QString, before);
        QFETCH(QString, result);
        LineEditImpl edit(0);
        edit.setText(before);
        QString asked("nobody");
        QToolButton* button = edit.addButton(
            [&](const QString& text) {
                asked = text;
                return result;
            },
            {});
        QSignalSpy finished(&edit, &QLineEdit::editingFinished);
        QSignalSpy edited(&edit, &QLineEdit::textEdited);
        edit.show();
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(asked, before);
        QCOMPARE(edit.text(), result);
        QTEST(edit.selectedText(), "selected");
        QCOMPARE(finished.count(), 0);
        QCOMPARE(edited.count(), result == before ? 0 : 1);
    }

    void aSlotOfTheClickedButtonsTextSeesItSelected()
    {
        LineEditImpl edit(0);
        QToolButton* button = edit.addButton([](const QString&) { return "34"; }, {});
        QStringList seen;
        connect(&edit, &QLineEdit::textEdited, &edit,
            [&](const QString& text) { seen << text << edit.text() << edit.selectedText(); });
        button->click();
        QCOMPARE(seen, QStringList({"34", "34", "34"}));
    }

    void aButtonKeepsToTheRightEdge_data()
    {
        QTest::addColumn<unsigned int>("options");
        QTest::addColumn<QSize>("size");
        for (const unsigned int options : {0u, 1u}) {
            const char* look = options ? "borderless" : "framed";
            QTest::addRow("%s, wide", look) << options << QSize(300, 24);
            QTest::addRow("%s, high", look) << options << QSize(100, 61);
            QTest::addRow("%s, as small as it gets", look) << options << QSize(1, 1);
        }
    }

    void aButtonKeepsToTheRightEdge()
    {
        QFETCH(unsigned int, options);
        QFETCH(QSize, size);
        QWidget window;
        window.resize(400, 100);
        auto* edit = new LineEditImpl(options, &window);
        const int frame = frameWidthOf(*edit, options);
        QToolButton* button = edit->addButton(unchanged, {});
        window.show();
        edit->resize(200, 30);
        edit->resize(size);
        const QRect rect = edit->rect();
        QCOMPARE(button->size(), button->sizeHint());
        QCOMPARE(button->x(), rect.right() - frame - button->width());
        QCOMPARE(button->y(), (rect.bottom() + 1 - button->height()) / 2);
    }

    void marginsOfTheApplicationStay_data()
    {
        QTest::addColumn<bool>("isSetBefore");
        QTest::addColumn<bool>("isTyped");
        QTest::addColumn<int>("left");
        QTest::addColumn<int>("right");
        for (const bool isTyped : {false, true}) {
            const char* key = isTyped ? ", in a field with a typed text" : "";
            for (const bool isSetBefore : {false, true}) {
                const char* when = isSetBefore ? "before" : "after";
                QTest::addRow("on both sides, set %s the button%s", when, key)
                    << isSetBefore << isTyped << 7 << 5;
                QTest::addRow("on the left, set %s the button%s", when, key)
                    << isSetBefore << isTyped << 7 << 0;
                QTest::addRow("on the right, set %s the button%s", when, key)
                    << isSetBefore << isTyped << 0 << 5;
            }
        }
    }

    void marginsOfTheApplicationStay()
    {
        QFETCH(bool, isSetBefore);
        QFETCH(bool, isTyped);
        QFETCH(int, left);
        QFETCH(int, right);
        const auto make = [&](QWidget& window, const QMargins& margins) {
            auto* field = SimpleLineEdit::create(
                &window, {}, new DigitsValidator, 0, ExpandHorizontal);
            (new QVBoxLayout(&window))->addWidget(field);
            if (isSetBefore)
                field->edit()->setTextMargins(margins);
            field->addButton([](const QString& text) { return text; }, QPixmap());
            window.resize(200, 50);
            window.show();
            if (isTyped)
                QTest::keyClicks(field->edit(), "12");
            if (!isSetBefore)
                field->edit()->setTextMargins(margins);
            return field->edit();
        };
        QWidget plain;
        QWidget window;
        const QLine usual = placeOfText(*make(plain, {}));
        QLineEdit* edit = make(window, {left, 0, right, 0});
        QCOMPARE(placeOfText(*edit), QLine(usual.x1() + left, 0, usual.x2() - right, 0));

        // As an application does that changes one side only.
        QMargins changed = edit->textMargins();
        changed.setLeft(11);
        edit->setTextMargins(changed);
        edit->grab();
        QTest::keyClicks(edit, "x");
        QCOMPARE(placeOfText(*edit), QLine(usual.x1() + 11, 0, usual.x2() - right, 0));
    }

    void aButtonThatComesLateIsInPlace()
    {
        LineEditImpl edit(0);
        edit.resize(200, 30);
        edit.show();
        QToolButton* button = edit.addButton(unchanged, {});
        QCoreApplication::processEvents();
        const int right = edit.rect().right() - frameWidthOf(edit, 0);
        QCOMPARE(button->x(), right - button->width());
        QVERIFY(button->isVisible());
    }

    void withoutAButtonAnEditIsResizedAsEver()
    {
        LineEditImpl edit(0);
        edit.show();
        edit.resize(300, 50);
        QCOMPARE(edit.size(), QSize(300, 50));
        delete edit.addButton(unchanged, {});
        edit.resize(200, 40);
        QCOMPARE(edit.size(), QSize(200, 40));
    }

    void aDeletedButtonIsReplacedWithoutAReport()
    {
        LineEditImpl edit(0);
        delete edit.addButton(unchanged, {});
        QToolButton* second = edit.addButton([](const QString&) { return "second"; }, square(8));
        QCOMPARE(edit.findChildren<QToolButton*>(), QList<QToolButton*>{second});
        QCOMPARE(second->iconSize(), QSize(12, 12));
        second->click();
        QCOMPARE(edit.text(), QString("second"));
    }

    void bothPopupsComeWithTheFocusAndGoWithIt()
    {
        Form form;
        SimpleLineEdit* field = createField("h");
        field->setValueHistory(historyOf({L"1", L"2"}));
        form.open(field);
        auto* history = field->findChild<HistoryPopup*>();
        auto* hint = field->findChild<EditHintPopup*>();
        QVERIFY(history && hint);
        QCOMPARE(history->parentWidget(), static_cast<QWidget*>(field->edit()));
        QCOMPARE(hint->parentWidget(), static_cast<QWidget*>(field->edit()));
        QVERIFY(standsOnScreen(history));
        QVERIFY2(hint->isVisible(), "shown with the focus, though it has no text yet");
        QVERIFY2(!standsOnScreen(hint), "nothing to be seen of a window without a text");
        QTest::keyClicks(field->edit(), "1");
        QVERIFY(standsOnScreen(hint));

        form.leave();
        QVERIFY(history->isHidden());
        QVERIFY(hint->isHidden());
        form.enter();
        QVERIFY(standsOnScreen(history));
        QVERIFY(standsOnScreen(hint));
    }

    void popupsStandInTheirPlaceFromTheFirstFocusOn()
    {
        Form form;
        SimpleLineEdit* field = createField("h");
        field->setValueHistory(historyOf({L"1"}));
        form.open(field);
        const QPoint below = field->edit()->mapToGlobal(QPoint(0, field->edit()->height()));
        QCOMPARE(field->findChild<EditHintPopup*>()->pos(), below);
    }

    void aHistoryDoesNotChangeAReadOnlyText()
    {
        Form form;
        SimpleLineEdit* field = createField("h");
        field->setValueHistory(historyOf({L"1", L"2"}));
        field->setReadOnly(true);
        form.open(field);
        QSignalSpy editingFinished(field->edit(), &QLineEdit::editingFinished);
        clickRow(*field->findChild<HistoryPopup*>(), 0);
        QCOMPARE(field->edit()->text(), QString());
        QCOMPARE(editingFinished.count(), 0);
    }

    void typingGoesOnWhilePopupsStand()
    {
        Form form;
        SimpleLineEdit* field = createField("h");
        field->setValueHistory(historyOf({L"1"}));
        form.open(field);
        QTest::keyClicks(field->edit(), "123");
        QVERIFY(standsOnScreen(field->findChild<EditHintPopup*>()));
        QVERIFY(field->edit()->hasFocus());
        QVERIFY(form.isActiveWindow());
        QCOMPARE(field->edit()->text(), QString("123"));
    }

    void popupsStackBelowTheEdit_data()
    {
        QTest::addColumn<QString>("text");
        row("an empty hint keeps its gap", "");
        row("a hint with a text", "12");
    }

    void popupsStackBelowTheEdit()
    {
        QFETCH(QString, text);
        Form form;
        SimpleLineEdit* field = createField("h");
        field->setValueHistory(historyOf({L"1"}));
        field->onTextEdited(text);
        form.open(field);
        const auto* hint = field->findChild<EditHintPopup*>();
        const auto* history = field->findChild<HistoryPopup*>();
        const auto below = [&] {
            return field->edit()->mapToGlobal(QPoint(0, field->edit()->height()));
        };
        QCOMPARE(hint->height() > 0, !text.isEmpty());
        QTRY_COMPARE(hint->pos(), below());
        QTRY_COMPARE(history->pos(), below() + QPoint(0, hint->height() + 5));

        form.layout()->setContentsMargins(40, 60, 0, 0);
        form.layout()->activate();
        QCOMPARE(hint->pos(), below());
        QCOMPARE(history->pos(), below() + QPoint(0, hint->height() + 5));
    }

    void aHintFromBeforeTheFocusIsKept_data()
    {
        QTest::addColumn<bool>("isOpen");
        row("of a field that has been left", true);
        row("of a field that was never shown", false);
    }

    void aHintFromBeforeTheFocusIsKept()
    {
        QFETCH(bool, isOpen);
        Form form;
        SimpleLineEdit* field = createField("h");
        if (isOpen)
            form.open(field);
        form.leave();
        field->onTextEdited("1");
        field->onTextEdited("12");
        const auto* hint = field->findChild<EditHintPopup*>();
        QVERIFY(hint->isHidden());
        if (isOpen)
            form.enter();
        else
            form.open(field);
        QCOMPARE(hint->findChild<QLabel*>()->text(), QString("h of 12"));
        QVERIFY(standsOnScreen(hint));
        QCOMPARE(hint->size(), hint->sizeHint());
    }

    void aHistoryIsReadEachTimeThePopupIsShown_data()
    {
        QTest::addColumn<bool>("focusFirst");
        row("set before the field ever has the focus", false);
        row("set after it had", true);
    }

    void aHistoryIsReadEachTimeThePopupIsShown()
    {
        QFETCH(bool, focusFirst);
        Form form;
        SimpleLineEdit* field = createField();
        const auto history = historyOf({L"1", L"2"});
        if (focusFirst) {
            form.open(field);
            form.leave();
            field->setValueHistory(history);
            form.enter();
        } else {
            field->setValueHistory(history);
            form.open(field);
        }
        auto* popup = field->findChild<HistoryPopup*>();
        QCOMPARE(rowsOf(*popup), QStringList({"2", "1"}));
        history->add(L"3");
        QCOMPARE(rowsOf(*popup), QStringList({"2", "1"}));
        form.leave();
        form.enter();
        QCOMPARE(rowsOf(*popup), QStringList({"3", "2", "1"}));
        QCOMPARE(popup->size(), popup->sizeHint());

        field->setValueHistory(nullptr);
        form.leave();
        form.enter();
        QCOMPARE(rowsOf(*popup), QStringList());
        QVERIFY(!standsOnScreen(popup));
    }

    void aClickOnTheHistoryGoesTheWholeWay()
    {
        QStringList heard;
        Form form;
        SimpleLineEdit* field = createField();
        field->setValueHistory(historyOf({L"x", L"700"}));
        form.open(field);
        auto* popup = field->findChild<HistoryPopup*>();
        QSignalSpy valueChanged(field, &SimpleLineEdit::valueChanged);
        connect(field->edit(), &QLineEdit::textEdited, field,
            [&](const QString& text) { heard << "edited " + text; });
        connect(field->edit(), &QLineEdit::editingFinished, field, [&] { heard << "finished"; });

        clickRow(*popup, 0);
        QCOMPARE(heard, QStringList({"edited 700", "finished"}));
        QCOMPARE(valueChanged.count(), 1);
        QCOMPARE(field->edit()->text(), QString("500"));
        QVERIFY(field->isValueValid());
        QCOMPARE(field->edit()->styleSheet(), vrn::test::blackText());
        QVERIFY(field->edit()->hasFocus());

        clickRow(*popup, 1);
        QCOMPARE(valueChanged.count(), 2);
        QCOMPARE(field->edit()->text(), QString("x"));
        QVERIFY(!field->isValueValid());
        QCOMPARE(field->edit()->styleSheet(), vrn::test::redText());
    }

    // An edit by itself: a control keeps its edit until the slot has returned.
    void anEditMayGoInASlotOfAPickOrAClick()
    {
        for (const bool byHistory : {true, false}) {
            QPointer<LineEditImpl> edit(new LineEditImpl(0));
            QToolButton* button = edit->addButton([](const QString&) { return "34"; }, {});
            connect(edit.data(), &QLineEdit::textEdited, this, [&] { delete edit; });
            QSignalSpy finished(edit.data(), &QLineEdit::editingFinished);
            if (byHistory)
                QMetaObject::invokeMethod(
                    edit.data(), "onHistoryItemSelected", Q_ARG(QString, QStringLiteral("12")));
            else
                Q_EMIT button->clicked();
            QVERIFY(!edit);
            QCOMPARE(finished.count(), 0);
        }
    }

    void anEmptySelectionIsIgnored()
    {
        Form form;
        SimpleLineEdit* field = form.open(createField());
        QTest::keyClicks(field->edit(), "12");
        QSignalSpy finished(field->edit(), &QLineEdit::editingFinished);
        QSignalSpy edited(field->edit(), &QLineEdit::textEdited);
        Q_EMIT field->findChild<HistoryPopup*>()->itemSelected(QString());
        QCOMPARE(field->edit()->text(), QString("12"));
        QCOMPARE(finished.count(), 0);
        QCOMPARE(edited.count(), 0);
    }

    void aPopupThatWentFirstIsDoneWithout_data()
    {
        QTest::addColumn<bool>("inComboBox");
        QTest::addColumn<bool>("hintStays");
        QTest::addColumn<bool>("historyStays");
        for (const bool inComboBox : {false, true}) {
            const char* place = inComboBox ? "in a combo box" : "on its own";
            QTest::addRow("%s, both went", place) << inComboBox << false << false;
            QTest::addRow("%s, the history is left", place) << inComboBox << false << true;
            QTest::addRow("%s, the hint is left", place) << inComboBox << true << false;
        }
    }

    void aPopupThatWentFirstIsDoneWithout()
    {
        QFETCH(bool, inComboBox);
        QFETCH(bool, hintStays);
        QFETCH(bool, historyStays);
        Form form;
        auto* edit = new LineEditImpl(0);
        QWidget* field = edit;
        if (inComboBox) {
            auto* box = new QComboBox;
            box->setEditable(true);
            box->setLineEdit(edit);
            field = box;
        }
        edit->setValueHistory(historyOf({L"1"}));
        form.open(field);
        const QPointer<EditHintPopup> hint = edit->findChild<EditHintPopup*>();
        const QPointer<HistoryPopup> history = edit->findChild<HistoryPopup*>();
        QVERIFY(hint && history);
        if (!hintStays)
            delete hint;
        if (!historyStays)
            delete history;

        edit->showEditHint("h");
        edit->setValueHistory(historyOf({L"2"}));
        form.leave();
        QVERIFY(!hint || hint->isHidden());
        QVERIFY(!history || history->isHidden());
        form.enter();
        QVERIFY(!hint || standsOnScreen(hint));
        QVERIFY(!history || standsOnScreen(history));
        QCOMPARE(!hint.isNull(), hintStays);
        QCOMPARE(!history.isNull(), historyStays);
    }

private:
    static SimpleLineEdit* createField(const QString& hint = {})
    {
        auto validator = boost::make_shared<DigitsValidator>();
        if (!hint.isEmpty()) {
            validator->setEditHintFunction([hint](const QString& text) {
                return text.isEmpty() ? QString() : hint + " of " + text;
            });
        }
        return SimpleLineEdit::create(nullptr, {}, validator, 0, ExpandHorizontal);
    }
};

VRN_TEST(TestLineEditImpl)
#include "tst_line_edit_impl.moc"
