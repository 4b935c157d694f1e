#include <vrn/environment/environment.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace fs = std::filesystem;
using vrn::app::Environment;
using vrn::app::PathGroup;
using vrn::test::columns;
using vrn::test::row;

namespace {

void touch(const QString& path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

fs::path toPath(const QString& path)
{
    return fs::path(path.toStdString());
}

} // namespace

class TestEnvironment : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_folder.emplace();
        QVERIFY(QDir(m_folder->path()).mkdir("first"));
        QVERIFY(QDir(m_folder->path()).mkdir("second"));
        m_group.addPath(toPath(m_folder->filePath("first")));
        m_group.addPath(toPath(m_folder->filePath("second")));
    }

    void cleanup()
    {
        m_group = PathGroup();
        m_folder.reset();
        TestObject::cleanup();
    }

    void theFirstAddedFolderWins()
    {
        touch(m_folder->filePath("second/icon.png"));
        QCOMPARE(m_group.find(L"icon.png"), toPath(m_folder->filePath("second/icon.png")));
        touch(m_folder->filePath("first/icon.png"));
        QCOMPARE(m_group.find(L"icon.png"), toPath(m_folder->filePath("first/icon.png")));
    }

    void theFolderOfTheExecutableIsSearchedLater()
    {
        const QString own = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
        QCOMPARE(m_group.find(own.toStdWString()), toPath(QCoreApplication::applicationFilePath()));
        touch(m_folder->filePath("second/" + own));
        QCOMPARE(m_group.find(own.toStdWString()), toPath(m_folder->filePath("second/" + own)));
    }

    void namesWithLettersOutsideAsciiAreFound()
    {
        const QString name = QString::fromUtf8("Träger-梁.png");
        touch(m_folder->filePath("first/" + name));
        QCOMPARE(m_group.find(name.toStdWString()), toPath(m_folder->filePath("first/" + name)));
    }

    void whatIsNotAFileIsNotFound_data()
    {
        columns<QString>("name");
        row("a name that no file has", "no-such-file.png");
        row("an empty name", "");
        row("a folder", "../first");
        row("a name with a zero character", QString(QChar(0)));
        row("a name longer than a file system takes", QString(100000, 'x'));
    }
    void whatIsNotAFileIsNotFound()
    {
        QFETCH(QString, name);
        QVERIFY(m_group.find(name.toStdWString()).empty());
    }

    void aGroupIsMadeOnceAndKeptByItsName()
    {
        PathGroup& icons = Environment::instance().getPaths("icons");
        QCOMPARE(&Environment::instance().getPaths("icons"), &icons);
        QVERIFY(&Environment::instance().getPaths("") != &icons);
    }

private:
    std::optional<QTemporaryDir> m_folder;
    PathGroup m_group;
};

VRN_TEST(TestEnvironment)
#include "tst_environment.moc"
