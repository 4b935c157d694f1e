#include "beams/beam_editor.h"

#include "support/test_main.h"
#include "support/test_object.h"

#include <QLineEdit>
#include <QSettings>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace beams;
using namespace vrn::test;

namespace {

/// The editor in an active window, and the parts that a user works with.
class Window
{
public:
    explicit Window(int count = 12)
        : editor(count)
        , page(editor.findChild<PropertyPage*>())
        , table(editor.findChild<QTableView*>())
    {
        editor.resize(1100, 600);
        editor.show();
        editor.activateWindow();
        if (!QTest::qWaitForWindowActive(&editor))
            qFatal("the window is not active");
    }

    void select(int first, int last) const
    {
        const QAbstractItemModel& rows = *table->model();
        table->selectionModel()->select(QItemSelection(rows.index(first, 0), rows.index(last, 0)),
            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    void enter(const std::string& key, const QString& text) const
    {
        QWidget* field = page->editor(key);
        auto* edit = qobject_cast<QLineEdit*>(field);
        edit = edit ? edit : field->findChild<QLineEdit*>();
        edit->setFocus(Qt::TabFocusReason);
        edit->selectAll();
        QTest::keyClicks(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
        page->flush();
    }
    void act(const QString& text) const
    {
        for (QAction* action : editor.findChildren<QAction*>()) {
            if (action->text().startsWith(text)) {
                action->trigger();
                page->flush();
                return;
            }
        }
        QFAIL("there is no such action");
    }
    QString cell(int row, const char* caption) const
    {
        const QAbstractItemModel& rows = *table->model();
        for (int column = 0; column < rows.columnCount(); ++column) {
            if (rows.headerData(column, Qt::Horizontal).toString() == QLatin1String(caption))
                return rows.index(row, column).data().toString();
        }
        return QString();
    }
    QString text(const char* key) const { return page->row(key).text; }
    void settle() const
    {
        QCoreApplication::processEvents();
        page->flush();
    }

    BeamEditor editor;
    PropertyPage* page;
    QTableView* table;
};

} // namespace

class TestBeams : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void editsTheSelection();
    void undoesAndDoesAgain();
    void deletesAndBringsBack();
    void showsEverySystem();
    void showsFeetAndInches();
    void savesAndLoads();
    void doesNothingWhenAFileDialogIsCancelled();
    void keepsTheTextsOfItsButtons();
    void remembersAfterARestart();

private:
    std::unique_ptr<QTemporaryDir> m_settings;
};

void TestBeams::init()
{
    TestObject::init();
    m_settings = std::make_unique<QTemporaryDir>();
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings->path());
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QCoreApplication::setOrganizationName("vrn");
    QCoreApplication::setApplicationName("beams");
}

void TestBeams::editsTheSelection()
{
    Window window;
    window.select(0, 2);
    window.enter("length", "7.62");
    window.settle();
    QCOMPARE(window.cell(2, "Length"), QString("7.620 m"));
    QCOMPARE(window.cell(3, "Length"), QString("3.429 m"));
    window.select(0, 3);
    window.enter("length", "+= 1 m");
    window.settle();
    QCOMPARE(window.cell(0, "Length"), QString("8.620 m"));
    QCOMPARE(window.cell(3, "Length"), QString("4.429 m"));
    window.enter("bolts", "4");
    QCOMPARE(window.page->row("bolts").reason, QString("Bolts come in odd numbers."));
    window.page->cancelEditing();
}

void TestBeams::undoesAndDoesAgain()
{
    Window window;
    window.select(0, 1);
    window.enter("depth", "0.5");
    window.act("Undo");
    QCOMPARE(window.text("depth"), QString("0.300 m"));
    window.act("Redo");
    QCOMPARE(window.text("depth"), QString("0.500 m"));
}

void TestBeams::deletesAndBringsBack()
{
    Window window;
    window.select(1, 1);
    window.enter("length", "9");
    window.act("Delete");
    window.settle();
    QCOMPARE(window.table->model()->rowCount(), 11);
    QCOMPARE(window.cell(1, "Name"), QString("B3"));
    window.act("Undo");
    window.settle();
    QCOMPARE(window.cell(1, "Length"), QString("9.000 m"));
    window.act("Undo");
    window.settle();
    QCOMPARE(window.cell(1, "Length"), QString("3.143 m"));
    window.select(0, 11);
    window.act("Delete");
    window.settle();
    QCOMPARE(window.table->model()->rowCount(), 0);
    window.act("Delete");
}

void TestBeams::showsEverySystem()
{
    Window window;
    window.select(0, 0);
    auto* systems = window.editor.findChild<QToolBar*>()->findChild<QComboBox*>();
    QCOMPARE(systems->count(), 10);
    for (int system = 9; system >= 0; --system) {
        systems->setCurrentIndex(system);
        window.settle();
        QCOMPARE(window.text("length"), window.cell(0, "Length"));
        const auto length = field::quantity(UnitId::GEO_LENGTH);
        QCOMPARE(window.text("length"), length.text(3.0, vrn::units::Context(system)));
    }
    window.act("Undo");
    QCOMPARE(window.cell(0, "Length"), QString("3.000 m"));
}

void TestBeams::showsFeetAndInches()
{
    Window window;
    window.select(0, 0);
    for (QCheckBox* box : window.editor.findChildren<QCheckBox*>()) {
        if (box->text().contains("inches"))
            box->setChecked(true);
    }
    window.settle();
    window.enter("length", "1'-3 1/2\"");
    window.settle();
    QCOMPARE(window.cell(0, "Length"), QString("1' 3 1/2 ''"));
}

void TestBeams::savesAndLoads()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath("beams.json");
    Window window;
    window.select(0, 0);
    window.enter("length", "1/3");
    window.editor.save(path);
    window.select(4, 5);
    window.editor.load(path);
    window.settle();
    QCOMPARE(window.cell(5, "Length"), QString("0.333 m"));
    QCOMPARE(window.cell(5, "Name"), QString("B1"));
    window.act("Undo");
    window.settle();
    QCOMPARE(window.cell(5, "Name"), QString("B6"));

    QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
    window.editor.load(directory.filePath("none.json"));
    window.settle();
    QCOMPARE(window.cell(5, "Name"), QString("B6"));
}

void TestBeams::doesNothingWhenAFileDialogIsCancelled()
{
    const Window window;
    window.select(0, 0);
    QStringList dialogs;
    QTimer closer;
    connect(&closer, &QTimer::timeout, this, [&dialogs] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (!dialog)
            return;
        dialogs << dialog->metaObject()->className();
        dialog->close();
    });
    closer.start();
    for (const char* text : {"Save", "Load"}) {
        window.act(text);
        window.settle();
    }
    QCOMPARE(dialogs, QStringList({"QFileDialog", "QFileDialog"}));
    QCOMPARE(window.cell(0, "Name"), QString("B1"));
}

void TestBeams::keepsTheTextsOfItsButtons()
{
    Window window;
    window.select(0, 0);
    window.enter("depth", "0.5");
    const auto* bar = window.editor.findChild<QToolBar*>();
    const auto textOf = [bar](int place) {
        return qobject_cast<QToolButton*>(bar->widgetForAction(bar->actions().at(place)))->text();
    };
    QVERIFY(bar->actions().at(0)->text() != "Undo");
    QCOMPARE(textOf(0), QString("Undo"));
    QCOMPARE(textOf(1), QString("Redo"));
}

void TestBeams::remembersAfterARestart()
{
    {
        Window window;
        window.select(0, 0);
        window.enter("length", "4.5 m");
        QTest::mouseClick(window.page->findChild<QWidget*>("section.geometry"), Qt::LeftButton);
        QVERIFY(!window.page->findChild<QWidget*>("length.caption")->isVisible());
        window.editor.close();
    }
    QVERIFY(QSettings().allKeys().join(' ').contains("history/quantity."));
    const Window again;
    again.select(0, 0);
    again.settle();
    const auto* caption = again.page->findChild<QWidget*>("length.caption");
    QVERIFY(!caption || !caption->isVisible());
    QVERIFY(again.page->findChild<QWidget*>("name.caption")->isVisible());
}

VRN_TEST(TestBeams)
#include "tst_beams.moc"
