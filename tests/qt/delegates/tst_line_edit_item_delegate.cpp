#include <vrn/qt/delegates.h>

#include <QDialog>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>

#include "controls/line_edits/line_edit_impl_p.h"
#include "my_line_edit_p.h"
#include "qt/delegates/delegate_signals.h"
#include "qt/delegates/table_fixture.h"
#include "support/catching_application.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <bitset>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

using namespace vrn::qt;
using namespace vrn::test;
using vrn::qt::detail::LineEditImpl;
using vrn::qt::detail::MyLineEdit;

namespace {

// Writes what it is asked into `calls`. A text is its value, "none" is accepted without a
// value, "no" is refused, and "throw" throws.
struct RecordingValidator : public IValidator
{
    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override
    {
        note("validate " + text, flags);
        if (destroy)
            std::exchange(destroy, nullptr)();
        if (text == "throw")
            throw std::runtime_error("unknown");
        if (text == "no") {
            value = text; // What is left after a refusal counts for nothing.
            return false;
        }
        if (text != "none")
            value = text;
        return true;
    }

    bool validateWhenFinished(
        const QString& text, boost::any& value, const std::bitset<32>& flags) override
    {
        note("validateWhenFinished " + text, flags);
        return validate(text, value, flags);
    }

    QString reformat(const boost::any& value, const std::bitset<32>& flags) override
    {
        note("reformat " + describe(value), flags);
        if (cannotWrite)
            throw std::runtime_error("not to be written");
        return value.empty() ? QStringLiteral("nothing") : boost::any_cast<QString>(value);
    }

    QString reformatForDisplay(const boost::any& value, const std::bitset<32>& flags) override
    {
        note("reformatForDisplay " + describe(value), flags);
        return boost::any_cast<QString>(value) + " m";
    }

    void note(const QString& call, const std::bitset<32>& flags)
    {
        calls << (flags.none() ? call : call + " with flags");
    }

    QStringList calls;
    bool cannotWrite = false;
    std::function<void()> destroy;
};

// Writes what is written to it into `calls`.
class RecordingModel : public QStandardItemModel
{
public:
    RecordingModel()
        : QStandardItemModel(1, 1)
    {}

    bool setData(const QModelIndex& index, const QVariant& value, int role) override
    {
        calls << QString("setData %1").arg(role);
        return !refuses && QStandardItemModel::setData(index, value, role);
    }

    bool setItemData(const QModelIndex& index, const QMap<int, QVariant>& roles) override
    {
        QStringList entries;
        for (auto entry = roles.begin(); entry != roles.end(); ++entry) {
            const bool isValue = entry->canConvert<boost::any>();
            entries << QString("%1: %2")
                           .arg(entry.key())
                           .arg(isValue ? describe(entry->value<boost::any>()) : entry->toString());
        }
        calls << entries.join(", ");
        return !refuses && QStandardItemModel::setItemData(index, roles);
    }

    QStringList calls;
    bool refuses = false;

private:
    QAbstractItemModelTester m_tester{this, QAbstractItemModelTester::FailureReportingMode::QtTest};
};

// A delegate, and an editor of it without a view.
struct Cell
{
    explicit Cell(const boost::any& value = QString("2"))
    {
        model.QStandardItemModel::setData(index(), cellValue(value), EditRole);
        delegate = std::make_unique<LineEditItemDelegate>(validator, nullptr);
    }

    QModelIndex index() const { return model.index(0, 0); }

    LineEditImpl* open()
    {
        auto* edit = qobject_cast<LineEditImpl*>(delegate->createEditor(&parent, {}, index()));
        edit->setObjectName("the editor");
        return edit;
    }

    QWidget parent;
    RecordingModel model;
    boost::shared_ptr<RecordingValidator> validator = boost::make_shared<RecordingValidator>();
    std::unique_ptr<LineEditItemDelegate> delegate;
};

// Of an object that is not a widget.
class Source : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    void finished();
};

class SourceWidget : public QWidget
{
    Q_OBJECT

public:
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::User)
            hasPosted = true;
        return QWidget::event(event);
    }
    bool hasPosted = false;

Q_SIGNALS:
    void finished();
};

QImage painted(const QAbstractItemDelegate& delegate, const QModelIndex& index)
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::red);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = QRect(5, 5, 30, 20);
    option.state = QStyle::State_Enabled;
    delegate.paint(&painter, option, index);
    return image;
}

} // namespace

class TestLineEditItemDelegate : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void onlyACellWithAValueHasAnEditor_data()
    {
        columns<QVariant, bool>("variant", "has");
        row("nothing", QVariant(), false);
        row("a text of Qt's", QVariant("2"), false);
        row("a number of Qt's", QVariant(2.0), false);
        row("a value", cellValue(QString("2")), true);
        row("an empty value", cellValue(boost::any()), true);
    }

    void onlyACellWithAValueHasAnEditor()
    {
        QFETCH(QVariant, variant);
        QFETCH(bool, has);
        Cell cell;
        cell.model.QStandardItemModel::setData(cell.index(), variant, EditRole);
        // No report, although there is no validator.
        const LineEditItemDelegate delegate(nullptr);
        const auto* editor = delegate.createEditor(&cell.parent, {}, cell.index());
        QCOMPARE(editor != nullptr, has);
        if (!has)
            return;
        QVERIFY(qobject_cast<const LineEditImpl*>(editor));
        QCOMPARE(editor->parentWidget(), &cell.parent);
    }

    void aCellWithoutAValueIsAWhiteBlock()
    {
        CellModel model(1, 1);
        model.setData(model.index(0, 0), QVariant(), EditRole);
        const LineEditItemDelegate delegate(nullptr);
        const QImage image = painted(delegate, model.index(0, 0));
        const QRect block(6, 6, 27, 17);
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 0; y < image.height(); ++y) {
                const QColor expected = block.contains(x, y) ? Qt::white : Qt::red;
                if (image.pixelColor(x, y) != expected)
                    QFAIL(qPrintable(QString("at %1, %2").arg(x).arg(y)));
            }
        }
    }

    void aCellWithAValueIsPaintedAsByQt_data()
    {
        columns<boost::any>("value");
        row("a value", boost::any(QString("2")));
        row("an empty value", boost::any());
    }

    void aCellWithAValueIsPaintedAsByQt()
    {
        QFETCH(boost::any, value);
        CellModel model(1, 1);
        model.setData(model.index(0, 0), "2 m", Qt::DisplayRole);
        model.setData(model.index(0, 0), cellValue(value), EditRole);
        const LineEditItemDelegate delegate(nullptr);
        const QItemDelegate plain;
        QCOMPARE(painted(delegate, model.index(0, 0)), painted(plain, model.index(0, 0)));
    }

    void theSizeOfACellIsThatOfQt()
    {
        CellModel model(1, 1);
        model.setData(model.index(0, 0), "2 m", Qt::DisplayRole);
        const LineEditItemDelegate delegate(nullptr);
        QCOMPARE(delegate.sizeHint({}, model.index(0, 0)),
            QItemDelegate().sizeHint({}, model.index(0, 0)));
    }

    // The style sheet of a borderless field is that of its SimpleLineEdit.
    void theEditorHasNoFrameAndNoStyleSheet()
    {
        Cell cell;
        const auto* edit = cell.open();
        QVERIFY(!edit->hasFrame());
        QCOMPARE(edit->styleSheet(), QString());
        QVERIFY(!edit->findChild<QToolButton*>());
    }

    void theEditorFillsItsCell()
    {
        Cell cell;
        auto* edit = cell.open();
        QStyleOptionViewItem option;
        option.rect = QRect(3, 4, 50, 6);
        cell.delegate->updateEditorGeometry(edit, option, cell.index());
        QCOMPARE(edit->geometry(), option.rect);
    }

    void theEditorShowsTheValueAsItIsEdited_data()
    {
        columns<boost::any, QString, QString>("value", "text", "call");
        row("a value", boost::any(QString("2")), "2", "reformat QString \"2\"");
        row("an empty value", boost::any(), "nothing", "reformat empty");
    }

    void theEditorShowsTheValueAsItIsEdited()
    {
        QFETCH(boost::any, value);
        QFETCH(QString, text);
        QFETCH(QString, call);
        Cell cell(value);
        auto* edit = cell.open();
        cell.delegate->setEditorData(edit, cell.index());
        QCOMPARE(edit->text(), text);
        QCOMPARE(edit->selectedText(), text);
        QCOMPARE(cell.validator->calls, QStringList(call));
    }

    void nothingIsValidatedWhileTheUserTypes()
    {
        Cell cell;
        auto* edit = cell.open();
        const QPalette palette = edit->palette();
        QTest::keyClicks(edit, "no");
        QCOMPARE(cell.validator->calls, QStringList());
        QCOMPARE(edit->palette(), palette);
        QCOMPARE(edit->styleSheet(), QString());
    }

    void whatIsWritten_data()
    {
        columns<QString, QStringList, QStringList>("text", "asked", "written");
        row("an accepted text in one call", "3",
            QStringList{"validate 3", "reformatForDisplay QString \"3\""},
            QStringList{"0: 3 m, 3: 3 m, 257: QString \"3\""});
        row("nothing of a refused text", "no", QStringList{"validate no"}, QStringList());
        row("nothing of a text without a value", "none", QStringList{"validate none"},
            QStringList());
        row("the text that was there", "2",
            QStringList{"validate 2", "reformatForDisplay QString \"2\""},
            QStringList{"0: 2 m, 3: 2 m, 257: QString \"2\""});
        row("an empty text that is accepted", "",
            QStringList{"validate ", "reformatForDisplay QString \"\""},
            QStringList{"0:  m, 3:  m, 257: QString \"\""});
    }

    void whatIsWritten()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, asked);
        QFETCH(QStringList, written);
        Cell cell;
        auto* edit = cell.open();
        edit->setText(text);
        cell.delegate->setModelData(edit, &cell.model, cell.index());
        QCOMPARE(cell.validator->calls, asked);
        QCOMPARE(cell.model.calls, written);
    }

    // validate() accepts 50, since the user could still delete the 5 or the 0.
    void aValueIsNotBroughtIntoItsRange()
    {
        Cell cell(40);
        const auto validator = boost::make_shared<DoubleEditValidator>(0, 0.0, 40.0, false);
        const LineEditItemDelegate delegate(validator, nullptr);
        auto* edit = cell.open();
        edit->setText("50");
        delegate.setModelData(edit, &cell.model, cell.index());
        QCOMPARE(valueAt(cell.index()), boost::any(50.0));
        QCOMPARE(cell.index().data(DisplayRole).toString(), QString("40"));
        QCOMPARE(cell.index().data(ToolTipRole).toString(), QString("40"));
    }

    void aModelMayRefuse()
    {
        Cell cell;
        cell.model.refuses = true;
        auto* edit = cell.open();
        edit->setText("3");
        cell.delegate->setModelData(edit, &cell.model, cell.index());
        QCOMPARE(cell.model.calls.size(), 1);
        QCOMPARE(valueAt(cell.index()), boost::any(QString("2")));
    }

    void anotherEditorIsReported_data()
    {
        columns<QWidget*>("editor");
        row("a line edit of Qt's", static_cast<QWidget*>(new QLineEdit));
        row("none", static_cast<QWidget*>(nullptr));
    }

    void anotherEditorIsReported()
    {
        QFETCH(QWidget*, editor);
        const std::unique_ptr<QWidget> owner(editor);
        Cell cell;
        expectAssert("edit");
        cell.delegate->setEditorData(editor, cell.index());
        expectAssert("edit");
        cell.delegate->setModelData(editor, &cell.model, cell.index());
        QCOMPARE(cell.model.calls, QStringList());
        if (auto* edit = qobject_cast<QLineEdit*>(editor))
            QCOMPARE(edit->text(), QString());
    }

    void aMissingValidatorIsReported()
    {
        Cell cell;
        const LineEditItemDelegate delegate(nullptr);
        auto* edit = cell.open();
        expectAssert("m_validator");
        delegate.setEditorData(edit, cell.index());
        expectAssert("m_validator");
        delegate.setModelData(edit, &cell.model, cell.index());
        QCOMPARE(edit->text(), QString());
        QCOMPARE(cell.model.calls, QStringList());
    }

    void theEndOfEditingCommitsAndCloses_data()
    {
        columns<Qt::Key, QStringList>("key", "signals");
        const QStringList both{"commit the editor", "close the editor 0"};
        row("Enter", Qt::Key_Enter, both);
        row("Return", Qt::Key_Return, both);
        row("a digit", Qt::Key_7, QStringList());
    }

    void theEndOfEditingCommitsAndCloses()
    {
        QFETCH(Qt::Key, key);
        QFETCH(QStringList, signals);
        Cell cell;
        const DelegateSignals emitted(*cell.delegate);
        auto* edit = cell.open();
        cell.parent.show();
        QTest::keyClick(edit, key);
        QCOMPARE(emitted.list, signals);
        settle();
        QCOMPARE(emitted.list, signals);
    }

    void anySignalCanEndAnEdit()
    {
        Cell cell;
        const DelegateSignals emitted(*cell.delegate);
        SourceWidget widget;
        widget.setObjectName("a widget");
        connect(&widget, SIGNAL(finished()), cell.delegate.get(), SLOT(commitAndCloseEditor()));
        Q_EMIT widget.finished();
        QCOMPARE(emitted.list, QStringList({"commit a widget", "close a widget 0"}));
    }

    void aSignalOfNoWidgetNamesNoEditor()
    {
        Cell cell;
        const DelegateSignals emitted(*cell.delegate);
        Source source;
        connect(&source, SIGNAL(finished()), cell.delegate.get(), SLOT(commitAndCloseEditor()));
        Q_EMIT source.finished();
        QCOMPARE(emitted.list, QStringList({"commit null", "close null 0"}));
    }

    void anEditCanBeCommittedAndStayOpen()
    {
        Cell cell;
        const DelegateSignals emitted(*cell.delegate);
        SourceWidget widget;
        widget.setObjectName("a widget");
        connect(&widget, SIGNAL(finished()), cell.delegate.get(), SLOT(commitOnly()));
        QCoreApplication::postEvent(&widget, new QEvent(QEvent::User));
        Q_EMIT widget.finished();
        QCOMPARE(emitted.list, QStringList("commit a widget"));
        QVERIFY(widget.hasPosted);
    }

    void theEditorMayGoInASignal_data()
    {
        columns<QString>("slot");
        row("of a commit that closes", SLOT(commitAndCloseEditor()));
        row("of a commit that does not", SLOT(commitOnly()));
    }

    void theEditorMayGoInASignal()
    {
        QFETCH(QString, slot);
        Cell cell;
        const DelegateSignals emitted(*cell.delegate);
        QPointer<SourceWidget> widget(new SourceWidget);
        connect(
            cell.delegate.get(), &QAbstractItemDelegate::commitData, this, [&] { delete widget; });
        connect(widget, SIGNAL(finished()), cell.delegate.get(), slot.toLatin1());
        Q_EMIT widget->finished();
        QVERIFY(!widget);
        QCOMPARE(emitted.list, QStringList("commit "));
    }

    void theDelegateMayGoInASignal_data()
    {
        columns<Qt::Key>("key");
        row("Return", Qt::Key_Return);
        row("Tab", Qt::Key_Tab);
    }

    void theDelegateMayGoInASignal()
    {
        QFETCH(Qt::Key, key);
        Cell cell;
        const DelegateSignals emitted(*cell.delegate);
        connect(cell.delegate.get(), &QAbstractItemDelegate::commitData, this,
            [&] { cell.delegate.reset(); });
        auto* edit = cell.open();
        QTest::keyClick(edit, key);
        QVERIFY(!cell.delegate);
        QCOMPARE(emitted.list, QStringList("commit the editor"));
    }

    void aCallbackMakesAButtonInEveryEditor()
    {
        Cell cell;
        const DelegateSignals emitted(*cell.delegate);
        QStringList given;
        LineEditItemDelegate delegate(
            cell.validator,
            [&](const QString& text) {
                given << text;
                return text + "5";
            },
            nullptr);
        for (const QString text : {"1", "2"}) {
            auto* edit = qobject_cast<LineEditImpl*>(
                delegate.createEditor(&cell.parent, {}, cell.index()));
            edit->setText(text);
            auto* button = edit->findChild<QToolButton*>();
            QVERIFY(button);
            QVERIFY(!button->icon().isNull());
            button->click();
            QCOMPARE(edit->text(), text + "5");
            QCOMPARE(edit->selectedText(), text + "5");
        }
        QCOMPARE(given, QStringList({"1", "2"}));
        QCOMPARE(emitted.list, QStringList());
        QCOMPARE(cell.model.calls, QStringList());
    }

    void anEmptyCallbackMakesNoButton()
    {
        Cell cell;
        const LineEditItemDelegate delegate(cell.validator, {}, nullptr);
        const auto* editor = delegate.createEditor(&cell.parent, {}, cell.index());
        QVERIFY(!editor->findChild<QToolButton*>());
    }

    void whatAValidatorThrowsPassesThroughACall()
    {
        Cell cell;
        auto* edit = cell.open();
        edit->setText("throw");
        QVERIFY_EXCEPTION_THROWN(
            cell.delegate->setModelData(edit, &cell.model, cell.index()), std::runtime_error);
    }

    // A view from which an exception escapes commits nothing more.
    void whatAValidatorThrowsComesAfterTheView_data()
    {
        columns<Qt::Key>("key");
        row("Return", Qt::Key_Return);
        row("Tab", Qt::Key_Tab);
    }

    void whatAValidatorThrowsComesAfterTheView()
    {
        QFETCH(Qt::Key, key);
        auto& application = CatchingApplication::instance();
        application.caught.clear();
        TableWindow table;
        table.model->put(1, 1, QString("2"), "2");
        table.model->put(2, 2, QString("2"), "2");
        LineEditItemDelegate delegate(boost::make_shared<RecordingValidator>(), nullptr);
        table.view->setItemDelegate(&delegate);
        table.show();
        table.model->setData(table.index(1, 2), QVariant(), EditRole);

        QVERIFY(table.open(1, 1));
        QTest::keyClicks(QApplication::focusWidget(), "throw");
        QTest::keyClick(QApplication::focusWidget(), key);
        settle();
        QCOMPARE(application.caught, std::vector<std::string>{"unknown"});
        QCOMPARE(table.value(1, 1), boost::any(QString("2")));
        QVERIFY(!table.view->indexWidget(table.index(1, 1)));

        QVERIFY(table.open(2, 2));
        QTest::keyClicks(QApplication::focusWidget(), "3");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        settle();
        QCOMPARE(table.value(2, 2), boost::any(QString("3")));
    }

    void aValueThatCannotBeWrittenHasNoEditor_data()
    {
        columns<Qt::Key>("key");
        row("by itself", Qt::Key_unknown);
        row("with Return", Qt::Key_Return);
        row("with Tab", Qt::Key_Tab);
        row("with Escape", Qt::Key_Escape);
        row("with a lost focus", Qt::Key_F6);
    }

    // However its editor is closed.
    void aValueThatCannotBeWrittenHasNoEditor()
    {
        QFETCH(Qt::Key, key);
        auto& application = CatchingApplication::instance();
        application.caught.clear();
        TableWindow table;
        table.model->put(1, 1, QString("2"), "2");
        table.model->put(1, 0, QString("2"), "2");
        table.model->setData(table.index(1, 2), QVariant(), EditRole);
        const auto validator = boost::make_shared<RecordingValidator>();
        LineEditItemDelegate delegate(validator, nullptr);
        table.view->setItemDelegate(&delegate);
        table.show();
        validator->cannotWrite = true;
        table.view->setCurrentIndex(table.index(1, 1));
        table.view->edit(table.index(1, 1));
        const QPointer<QWidget> editor(table.view->indexWidget(table.index(1, 1)));
        QVERIFY(editor);
        if (key == Qt::Key_F6)
            table.elsewhere->setFocus();
        else if (key != Qt::Key_unknown)
            QTest::keyClick(editor, key);
        settle();
        QVERIFY(!editor);
        QVERIFY(!table.view->viewport()->findChild<LineEditImpl*>());
        QCOMPARE(application.caught, std::vector<std::string>{"not to be written"});
        QCOMPARE(table.value(1, 1), boost::any(QString("2")));

        validator->cannotWrite = false;
        QVERIFY(table.open(1, 1));
        QTest::keyClicks(QApplication::focusWidget(), "3");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        settle();
        QCOMPARE(table.value(1, 1), boost::any(QString("3")));
    }

    void whatAValidatorThrowsWhenItWritesPassesThroughACall()
    {
        Cell cell;
        auto* edit = cell.open();
        cell.validator->cannotWrite = true;
        QVERIFY_EXCEPTION_THROWN(
            cell.delegate->setEditorData(edit, cell.index()), std::runtime_error);
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
        Cell cell;
        auto model = std::make_unique<CellModel>(1, 1);
        auto* edit = cell.open();
        edit->setText("3");
        cell.validator->destroy = [&] {
            if (what == "model")
                model.reset();
            else
                cell.delegate.reset();
        };
        cell.delegate->setModelData(edit, model.get(), model->index(0, 0));
        QCOMPARE(!model, what == "model");
        QCOMPARE(!cell.delegate, what == "delegate");
        if (model)
            QCOMPARE(valueAt(model->index(0, 0)), boost::any(QString("3")));
    }

    void aDialogOfTheButtonDoesNotEndTheEdit_data()
    {
        columns<bool, bool>("isForwarded", "throws");
        row("of a delegate of the view", false, false);
        row("of a delegate of the cell", true, false);
        row("when the function throws", false, true);
    }

    void aDialogOfTheButtonDoesNotEndTheEdit()
    {
        QFETCH(bool, isForwarded);
        QFETCH(bool, throws);
        std::optional<ThroughQt> throughQt;
        if (throws)
            throughQt.emplace();
        auto& application = CatchingApplication::instance();
        application.caught.clear();
        TableWindow table;
        const auto ask = [&](const QString& text) {
            QDialog dialog(&table.window);
            QLineEdit field(&dialog);
            QTimer::singleShot(0, &dialog, [&] {
                dialog.activateWindow();
                field.setFocus();
                static_cast<void>(QTest::qWaitFor([&] { return field.hasFocus(); }));
                dialog.accept();
            });
            dialog.exec();
            if (throws)
                throw std::runtime_error("no answer");
            return text + "5";
        };
        LineEditItemDelegate delegate(wholeNumbers(), ask, nullptr);
        auto* forward = new ForwardDelegate(*table.view);
        forward->setItemDelegateForCell(1, 1, &delegate);
        table.view->setItemDelegate(
            isForwarded ? static_cast<QAbstractItemDelegate*>(forward) : &delegate);
        table.show();
        const QPointer<QLineEdit> edit(qobject_cast<QLineEdit*>(table.open(1, 1)));
        QTest::keyClicks(edit, "27");
        QTest::mouseClick(edit->findChild<QToolButton*>(), Qt::LeftButton);
        settle();
        QVERIFY(edit);
        QCOMPARE(application.caught.size(), std::size_t(throws ? 1 : 0));
        QCOMPARE(edit->text(), QString(throws ? "27" : "275"));
        if (!throws)
            QCOMPARE(edit->selectedText(), QString("275"));
        QCOMPARE(describe(table.value(1, 1)), QString("int 235"));
        table.window.activateWindow(); // What a window manager does.
        QTRY_VERIFY(edit->hasFocus());
        table.elsewhere->setFocus();
        settle();
        QVERIFY(!edit);
        QCOMPARE(describe(table.value(1, 1)), QString(throws ? "int 27" : "int 275"));
    }

    // Of an editor that stays, the delegate hears again and again.
    void aPersistentEditorWritesEachTime()
    {
        TableWindow table;
        LineEditItemDelegate delegate(wholeNumbers(), nullptr);
        table.view->setItemDelegate(&delegate);
        table.view->openPersistentEditor(table.index(1, 1));
        table.show();
        auto* edit = qobject_cast<QLineEdit*>(table.view->indexWidget(table.index(1, 1)));
        QVERIFY(edit);
        for (const int value : {1, 2, 3}) {
            edit->setFocus();
            edit->selectAll();
            QTest::keyClicks(edit, QString::number(value));
            QTest::keyClick(edit, Qt::Key_Return);
            settle();
            QCOMPARE(table.value(1, 1), boost::any(value));
            QCOMPARE(table.view->indexWidget(table.index(1, 1)), edit);
        }
    }

    void aSlotOfMyLineEditEndsItsEditing()
    {
        MyLineEdit edit;
        QSignalSpy finished(&edit, SIGNAL(editingFinished()));
        Source source;
        connect(&source, SIGNAL(finished()), &edit, SLOT(emitEditingFinished()));
        Q_EMIT source.finished();
        QCOMPARE(finished.count(), 1);
    }
};

VRN_TEST_IN(TestLineEditItemDelegate, CatchingApplication)

#include "tst_line_edit_item_delegate.moc"
