#include <vrn/qt/multi_edit_file_picker.h>
#include <vrn/qt/multi_edit_line_edit.h>

#include <QDir>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolButton>

#include "support/catching_application.h"
#include "support/modal_dialog.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <filesystem>
#include <functional>
#include <memory>

using namespace vrn::qt;
using vrn::test::CatchingApplication;
using vrn::test::row;
using vrn::test::ThroughQt;

namespace {

using User = vrn::test::WhenOpen<QFileDialog>;
using Act = std::function<void(QFileDialog&)>;

boost::any text(const QString& value)
{
    return value.toStdString();
}

void accept(QFileDialog& dialog)
{
    static_cast<QDialog&>(dialog).accept();
}

void cancel(QFileDialog& dialog)
{
    dialog.reject();
}

// Puts names into the focused edit, as a user does, and presses Enter.
Act choose(const QString& names)
{
    return [names](QFileDialog& dialog) {
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto* edit = dialog.findChild<QLineEdit*>("fileNameEdit");
        edit->setFocus();
        edit->setText(names);
        accept(dialog);
    };
}

// Clicks an entry of the list: some names cannot be typed.
Act clickOn(const QString& name)
{
    return [name](QFileDialog& dialog) {
        auto* list = dialog.findChild<QListView*>("listView");
        const auto entry = [&] {
            const auto* model = list->model();
            for (int row = 0; row < model->rowCount(list->rootIndex()); ++row) {
                const QModelIndex index = model->index(row, 0, list->rootIndex());
                if (index.data(QFileSystemModel::FileNameRole).toString() == name)
                    return index;
            }
            return QModelIndex();
        };
        [&] { QTRY_VERIFY2(entry().isValid(), qPrintable(name)); }();
        list->setCurrentIndex(entry());
        accept(dialog);
    };
}

} // namespace

Q_DECLARE_METATYPE(Act)

// Each type of picker with Qt's own dialog.
class TestMultiEditFilePickerDialog : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        CatchingApplication::instance().caught.clear();
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        // Without links, as the dialog names it.
        m_root = QDir(m_folder->path()).canonicalPath();
        m_before = QDir::currentPath();
        make("here/");
        QVERIFY(QDir::setCurrent(at("here")));
        for (const char* name : {"data/a.txt", "data/b.txt", "data/c.png", "data/sub/"})
            make(name);
    }

    void cleanup()
    {
        QDir::setCurrent(m_before);
        m_folder.reset();
        TestObject::cleanup();
    }

    void theTypeChoosesTheDialog_data()
    {
        QTest::addColumn<int>("pathType");
        QTest::addColumn<QString>("title");
        QTest::addColumn<int>("fileMode");
        QTest::addColumn<bool>("onlyFolders");
        row("file", 0, "Open File", int(QFileDialog::ExistingFile), false);
        row("files", 1, "Open Files", int(QFileDialog::ExistingFiles), false);
        row("folder", 2, "Open Folder", int(QFileDialog::Directory), true);
        row("file in folder", 3, "Open Folder", int(QFileDialog::Directory), true);
    }

    void theTypeChoosesTheDialog()
    {
        QFETCH(int, pathType);
        QFETCH(QString, title);
        QFETCH(int, fileMode);
        QFETCH(bool, onlyFolders);
        MultiEditFilePicker picker(nullptr, TypeofPath(pathType));
        User user([&](QFileDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), title);
            QCOMPARE(int(dialog.fileMode()), fileMode);
            QCOMPARE(dialog.testOption(QFileDialog::ShowDirsOnly), onlyFolders);
            QCOMPARE(dialog.acceptMode(), QFileDialog::AcceptOpen);
            QCOMPARE(dialog.parentWidget(), picker.m_edit);
            cancel(dialog);
        });
        picker.m_btn->click();
        QCOMPARE(user.count, 1);
        QVERIFY(picker.findChildren<QFileDialog*>().isEmpty());
    }

    void anyOtherTypeHasNoDialog()
    {
        for (const int pathType : {4, -1}) {
            MultiEditFilePicker picker(nullptr, TypeofPath(pathType));
            picker.setValue(text("/a"));
            QSignalSpy changed(&picker, &MultiEditFilePicker::valueChanged);
            User user(cancel);
            picker.m_btn->click();
            QCOMPARE(user.count, 0);
            QCOMPARE(changed.count(), 1);
            QCOMPARE(picker.getCurrentValue(), text("/a"));
        }
    }

    // "%1" in a text is the folder of the test; "here" in it is the current one.
    void theDialogStartsAtTheValue_data()
    {
        QTest::addColumn<int>("pathType");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("selected");
        for (const int type : {0, 1}) {
            const auto fileRow = [type](const char* name, const char* value, const char* start,
                                     const char* selected = "") {
                QTest::addRow("%s, %s", type ? "files" : "file", name)
                    << type << value << start << selected;
            };
            fileRow("a new picker", "", "%1/here");
            fileRow("a file", "%1/data/a.txt", "%1/data", "a.txt");
            fileRow("a folder", "%1/data", "%1/data");
            fileRow("no such file", "%1/data/missing", "%1/here");
            fileRow("no such folder", "%1/missing/a.txt", "%1/here");
            fileRow("a relative path", "../data/b.txt", "%1/data", "b.txt");
            fileRow("no path at all", "3 files in %1/data", "%1/here");
        }
        row("folder, a new picker", 2, "", "%1/here", "");
        row("folder, its parent", 2, "%1/data/sub", "%1/data", "");
        row("folder, with a separator at the end", 2, "%1/data/sub/", "%1/data/sub", "");
        row("folder, with several separators", 2, "%1/data///sub", "%1/data", "");
        row("folder, the last of it missing", 2, "%1/data/missing", "%1/data", "");
        row("folder, after a backslash", 2, "%1/data\\missing", "%1/data", "");
        row("folder, a name alone", 2, "name", "%1/here", "");
        row("folder, below the root", 2, "/name", "/", "");
        row("file in folder, a new picker", 3, "", "%1/here", "");
        row("file in folder, a file", 3, "%1/data/a.txt", "%1/data", "");
        row("file in folder, a file that is missing", 3, "%1/data/missing", "%1/data", "");
        row("file in folder, a folder that is missing", 3, "%1/missing/a.txt", "%1/here", "");
        row("file in folder, a name alone", 3, "name", "%1/here", "");
    }

    void theDialogStartsAtTheValue()
    {
        QFETCH(int, pathType);
        QFETCH(QString, value);
        QFETCH(QString, start);
        QFETCH(QString, selected);
        // Qt would go on where the last dialog was.
        visit(at("data/sub"));
        MultiEditFilePicker picker(nullptr, TypeofPath(pathType));
        if (!value.isEmpty())
            picker.setValue(text(expand(value)));
        User user([&](QFileDialog& dialog) {
            QCOMPARE(dialog.directory().canonicalPath(), expand(start));
            if (pathType < 2)
                QCOMPARE(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), selected);
            cancel(dialog);
        });
        picker.m_btn->click();
        QCOMPARE(user.count, 1);
    }

    void aFolderIsAskedForAsByQt_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("folder");
        row("its folder is there", "%1/data/a.txt", "%1/data");
        row("its folder is gone", "%1/data/gone/a.txt", "%1/data/gone");
        row("its folder is gone with the one around it", "%1/data/gone/gone/a.txt",
            "%1/data/gone/gone");
        row("its folder is a file", "%1/data/a.txt/b.txt", "%1/data/a.txt");
        row("its folder is relative, and gone", "gone/a.txt", "gone");
    }

    // The folder picker hands the folder of its value to the dialog, whether it exists or not;
    // Qt's own function shows what to expect.
    void aFolderIsAskedForAsByQt()
    {
        QFETCH(QString, value);
        QFETCH(QString, folder);
        // The folder that the dialog opens at, and the name in its edit.
        const auto shownWhile = [&](const std::function<void()>& ask) {
            visit(at("data/sub"));
            QStringList shown;
            User user([&](QFileDialog& dialog) {
                shown = QStringList{dialog.directory().canonicalPath(),
                    dialog.findChild<QLineEdit*>("fileNameEdit")->text()};
                cancel(dialog);
            });
            ask();
            return shown;
        };
        MultiEditFilePicker picker(nullptr, TypeofPathFolder);
        picker.setValue(text(expand(value)));
        QCOMPARE(shownWhile([&] { picker.m_btn->click(); }), shownWhile([&] {
            QFileDialog::getExistingDirectory(nullptr, QString(), expand(folder));
        }));
    }

    void aChoiceBecomesTheValue_data()
    {
        QTest::addColumn<int>("pathType");
        QTest::addColumn<Act>("act");
        QTest::addColumn<QString>("expected");
        row("file", 0, choose("a.txt"), "%1/data/a.txt");
        row("file, elsewhere", 0, choose("../here/x"), "%1/here/x");
        row("files", 1, choose("\"a.txt\" \"b.txt\" \"c.png\""), "3 files in %1/data");
        row("one of files", 1, choose("a.txt"), "1 files in %1/data");
        row("folder", 2, choose("sub"), "%1/data/sub");
        row("the folder shown", 2, Act(accept), "%1/data");
        row("file in folder", 3, choose("sub"), "%1/data/sub/name.txt");
    }

    void aChoiceBecomesTheValue()
    {
        QFETCH(int, pathType);
        QFETCH(Act, act);
        QFETCH(QString, expected);
        make("here/x");
        MultiEditFilePicker picker(nullptr, TypeofPath(pathType));
        picker.setFileName("name.txt");
        // A folder, as Qt selects a file late, perhaps after the user has typed another.
        picker.setValue(text(at("data/")));
        QSignalSpy changed(&picker, &MultiEditFilePicker::valueChanged);
        QSignalSpy edited(picker.m_edit, &MultiEditLineEdit::valueChanged);
        User user(act);
        picker.m_btn->click();
        QCOMPARE(user.count, 1);
        QCOMPARE(picker.getCurrentValue(), text(expand(expected)));
        QCOMPARE(picker.m_edit->edit()->text(), expand(expected));
        QCOMPARE(changed.count(), 1);
        QCOMPARE(edited.count(), 0);
    }

    void aCancelledDialogSignalsToo_data()
    {
        QTest::addColumn<int>("pathType");
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("expected");
        row("file", 0, "name.txt", "%1/data/a.txt");
        row("files", 1, "name.txt", "%1/data/a.txt");
        row("folder", 2, "name.txt", "%1/data/a.txt");
        row("file in folder", 3, "name.txt", "/name.txt");
        row("file in folder, without its name", 3, "", "/");
    }

    void aCancelledDialogSignalsToo()
    {
        QFETCH(int, pathType);
        QFETCH(QString, fileName);
        QFETCH(QString, expected);
        MultiEditFilePicker picker(nullptr, TypeofPath(pathType));
        picker.setFileName(fileName.toStdString());
        picker.setValue(text(at("data/a.txt")));
        QSignalSpy changed(&picker, &MultiEditFilePicker::valueChanged);
        User user(cancel);
        picker.m_btn->click();
        QCOMPARE(user.count, 1);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(picker.getCurrentValue(), text(expand(expected)));
    }

    void aChoiceLeavesTheFreshStateAlone()
    {
        MultiEditFilePicker picker(nullptr, TypeofPathFile);
        User user(choose(at("data/b.txt")));
        picker.m_btn->click();
        picker.readValue(text("/read"));
        QCOMPARE(picker.getCurrentValue(), text("/read"));
        picker.m_btn->click();
        QCOMPARE(picker.getCurrentValue(), text(at("data/b.txt")));
        picker.readValue(text("/read"));
        QVERIFY(picker.dataVaries());
    }

    void filtersReachTheFileDialogs()
    {
        for (const auto type : {TypeofPathFile, TypeofPathFiles}) {
            MultiEditFilePicker picker(nullptr, type);
            picker.setFilter("Träger (*.txt);;All files (*)");
            User user([](QFileDialog& dialog) {
                QCOMPARE(dialog.nameFilters(),
                    QStringList({QString::fromUtf8("Träger (*.txt)"), "All files (*)"}));
                cancel(dialog);
            });
            picker.m_btn->click();
            QCOMPARE(user.count, 1);
        }
    }

    void aVaryingPickerThrows_data() { theTypeChoosesTheDialog_data(); }

    void aVaryingPickerThrows()
    {
        QFETCH(int, pathType);
        const ThroughQt throughQt;
        MultiEditFilePicker picker(nullptr, TypeofPath(pathType));
        picker.show();
        picker.forceVaries();
        QSignalSpy changed(&picker, &MultiEditFilePicker::valueChanged);
        User user(cancel);
        QVERIFY_EXCEPTION_THROWN(QMetaObject::invokeMethod(&picker, "onPick"), boost::bad_any_cast);
        // The exception of a click reaches the application's notify().
        QTest::mouseClick(picker.m_btn, Qt::LeftButton);
        QCOMPARE(CatchingApplication::instance().caught.size(), std::size_t(1));
        QCOMPARE(user.count, 0);
        QCOMPARE(changed.count(), 0);
        QVERIFY(picker.dataVaries());
    }

    void aFolderThatCannotBeLookedAtThrows()
    {
        const ThroughQt throughQt;
        QVERIFY(QFile::link("loop", at("loop")));
        MultiEditFilePicker picker(nullptr, TypeofPathFileInFolder);
        picker.setValue(text(at("loop/a/b.txt")));
        QSignalSpy changed(&picker, &MultiEditFilePicker::valueChanged);
        User user(cancel);
        try {
            QMetaObject::invokeMethod(&picker, "onPick");
            QFAIL("no exception");
        } catch (const std::filesystem::filesystem_error& error) {
            QVERIFY2(QByteArray(error.what()).contains("exists"), error.what());
            QCOMPARE(error.path1().string(), at("loop/a").toStdString());
            QCOMPARE(error.code(), std::make_error_code(std::errc::too_many_symbolic_link_levels));
        }
        QCOMPARE(user.count, 0);
        QCOMPARE(changed.count(), 0);
    }

    void anyNameCanBePicked_data()
    {
        QTest::addColumn<QString>("name");
        row("letters outside ASCII", QString::fromUtf8("größe Ω 鋼 𝛼.txt"));
        row("quotes", "it's \"quoted\".txt");
        row("a line break", "two\nlines.txt");
        row("spaces", " a  b .txt");
        row("percent signs", "%1 %20.txt");
        row("markup", "<b>a&amp;.txt");
    }

    void anyNameCanBePicked()
    {
        QFETCH(QString, name);
        make("names/" + name);
        MultiEditFilePicker picker(nullptr, TypeofPathFile);
        picker.setValue(text(at("names")));
        {
            User user(clickOn(name));
            picker.m_btn->click();
        }
        QCOMPARE(picker.getCurrentValue(), text(at("names/" + name)));
        // The next dialog starts there.
        User user([&](QFileDialog& dialog) {
            QCOMPARE(dialog.directory().canonicalPath(), at("names"));
            cancel(dialog);
        });
        picker.m_btn->click();
        QCOMPARE(user.count, 1);
    }

    void anyFolderCanBePicked_data() { anyNameCanBePicked_data(); }

    void anyFolderCanBePicked()
    {
        QFETCH(QString, name);
        make("names/" + name + "/");
        for (const auto type : {TypeofPathFolder, TypeofPathFileInFolder}) {
            MultiEditFilePicker picker(nullptr, type);
            picker.setFileName("größe.txt");
            picker.setValue(text(at("names/")));
            {
                User user(clickOn(name));
                picker.m_btn->click();
            }
            QString expected = at("names/" + name);
            if (type == TypeofPathFileInFolder)
                expected += QString::fromUtf8("/größe.txt");
            QCOMPARE(picker.getCurrentValue(), text(expected));
        }
    }

    void filesInAnyFolderAreSummedUp_data() { anyNameCanBePicked_data(); }

    void filesInAnyFolderAreSummedUp()
    {
        QFETCH(QString, name);
        make("names/" + name + "/a.txt");
        MultiEditFilePicker picker(nullptr, TypeofPathFiles);
        picker.setValue(text(at("names/" + name)));
        User user(clickOn("a.txt"));
        picker.m_btn->click();
        QCOMPARE(picker.getCurrentValue(), text("1 files in " + at("names/" + name)));
    }

    void bytesThatAreNotUtf8NameNoFile_data() { theTypeChoosesTheDialog_data(); }

    void bytesThatAreNotUtf8NameNoFile()
    {
        QFETCH(int, pathType);
        const std::string bad = at("bad").toStdString() + "\xff";
        std::filesystem::create_directory(bad);
        MultiEditFilePicker picker(nullptr, TypeofPath(pathType));
        picker.setValue(bad + "/a.txt");
        QString start;
        User user([&](QFileDialog& dialog) {
            start = dialog.directory().canonicalPath();
            cancel(dialog);
        });
        picker.m_btn->click();
        std::filesystem::remove(bad); // Qt cannot.
        QCOMPARE(user.count, 1);
        if (pathType != TypeofPathFolder) // Qt chooses where it starts.
            QCOMPARE(start, at("here"));
    }

    void aLongPathIsCut()
    {
        const QString deep = "deep/" + QString(200, 'a') + "/" + QString(200, 'b');
        make(deep + "/x.txt");
        MultiEditFilePicker picker(nullptr, TypeofPathFile);
        User user(choose(at(deep + "/x.txt")));
        picker.m_btn->click();
        QCOMPARE(picker.m_edit->edit()->text(), at(deep + "/x.txt"));
        QCOMPARE(picker.getCurrentValue(), text(at(deep + "/x.txt").left(260)));
    }

    // The edit alone, without its picker.
    void theEditMayGoWhileTheDialogIsOpen()
    {
        MultiEditFilePicker picker(nullptr, TypeofPathFile);
        QSignalSpy changed(&picker, &MultiEditFilePicker::valueChanged);
        User user([&](QFileDialog&) { delete picker.m_edit; });
        picker.m_btn->click();
        QCOMPARE(user.count, 1);
        QCOMPARE(changed.count(), 1);
        QVERIFY(picker.getCurrentValue().empty());
    }

    void theChoiceGoesThroughTheVirtualSetValue()
    {
        struct Recorder : public MultiEditFilePicker
        {
            using MultiEditFilePicker::MultiEditFilePicker;
            void setValue(const boost::any& value) override { values.push_back(value); }
            std::vector<boost::any> values;
        };
        Recorder picker(nullptr, TypeofPathFile);
        User user(choose(at("data/a.txt")));
        picker.m_btn->click();
        QCOMPARE(picker.values.size(), std::size_t(1));
        QCOMPARE(picker.values.front(), text(at("data/a.txt")));
    }

private:
    QString at(const QString& name) const { return m_root + '/' + name; }
    QString expand(const QString& pattern) const
    {
        return pattern.contains("%1") ? pattern.arg(m_root) : pattern;
    }

    // A file with its folders; a folder if the name ends in a slash.
    void make(const QString& name) const
    {
        const QString path = at(name);
        bool made = QDir().mkpath(path.left(path.lastIndexOf('/')));
        if (!name.endsWith('/'))
            made = made && QFile(path).open(QIODevice::WriteOnly);
        if (!made)
            QTest::qFail(qPrintable("cannot make " + path), __FILE__, __LINE__);
    }

    static void visit(const QString& folder)
    {
        User user(accept);
        QFileDialog::getExistingDirectory(nullptr, QString(), folder);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_root;
    QString m_before;
};

VRN_TEST_IN(TestMultiEditFilePickerDialog, CatchingApplication)
#include "tst_multi_edit_file_picker_dialog.moc"
