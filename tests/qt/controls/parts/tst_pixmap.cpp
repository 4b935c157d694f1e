#include <vrn/environment/environment.h>
#include <vrn/qt/pixmap.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

using vrn::qt::Pixmap;
using vrn::test::columns;
using vrn::test::row;

namespace {

const std::wstring resetIcon = L"control_repeat_blue.png";

QImage picture(const QSize& size, const QColor& colour)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(colour);
    return image;
}

bool isFallback(const QPixmap& pixmap)
{
    return pixmap.toImage().convertToFormat(QImage::Format_ARGB32)
        == picture(QSize(16, 16), Qt::white);
}

} // namespace

class TestPixmap : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    // The process keeps a folder that was added, so one serves all tests.
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        vrn::app::Environment::instance().getPaths({}).addPath(m_folder.path().toStdString());
    }

    void cleanup()
    {
        for (const QString& file : std::exchange(m_files, {}))
            QVERIFY(QFile::remove(file));
        TestObject::cleanup();
    }

    void theIconOfTheResetButtonIsThere()
    {
        const auto icon = Pixmap::create(resetIcon);
        QVERIFY(icon);
        QCOMPARE(icon->size(), QSize(32, 32));
        const QImage image = icon->toImage();
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
        int blue = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                if (pixel.alpha() == 255 && pixel.blue() > pixel.red() + 40)
                    ++blue;
            }
        }
        QVERIFY2(blue > 150, "hardly any blue in the icon");
        QCOMPARE(Pixmap::createOrDefault(resetIcon).toImage(), image);
    }

    void aFolderThatTheApplicationAddsWins()
    {
        const QImage own = picture(QSize(3, 5), Qt::red);
        save(QString::fromStdWString(resetIcon), own);
        QCOMPARE(Pixmap::create(resetIcon)->size(), own.size());
        QCOMPARE(Pixmap::createOrDefault(resetIcon).toImage().pixelColor(1, 1), QColor(Qt::red));
    }

    void aNameWithLettersOutsideAsciiIsFound()
    {
        const QString name = QString::fromUtf8("Träger-梁-\xF0\x9F\x98\x80.png");
        save(name, picture(QSize(7, 7), Qt::green));
        const auto icon = Pixmap::create(name.toStdWString());
        QVERIFY(icon);
        QCOMPARE(icon->size(), QSize(7, 7));
    }

    void whatGivesNoImage_data()
    {
        columns<QString, QByteArray>("name", "content"); // Null if there is no such file.
        const QByteArray none;
        row("a file that is not there", "no-such-icon.png", none);
        row("an empty name", "", none);
        row("a name with a zero character", QString(QChar(0)), none);
        row("a folder", "..", none);
        row("a file that is not an image", "note.png", QByteArray("not an image"));
        row("an empty file", "empty.png", QByteArray(""));
        row("the first bytes of an image", "cut.png",
            QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
    }
    void whatGivesNoImage()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        if (!content.isNull())
            write(name, content);
        QVERIFY(!Pixmap::create(name.toStdWString()));
        QVERIFY(isFallback(Pixmap::createOrDefault(name.toStdWString())));
    }

    void theFallbackIsOneForAllAndStaysWhite()
    {
        QPixmap first = Pixmap::createOrDefault(L"no-such-icon.png");
        QCOMPARE(first.cacheKey(), Pixmap::createOrDefault(L"another.png").cacheKey());
        first.fill(Qt::black);
        QVERIFY(isFallback(Pixmap::createOrDefault(L"no-such-icon.png")));
    }

    void aFileThatComesLaterIsFound()
    {
        QVERIFY(!Pixmap::create(L"late.png"));
        save("late.png", picture(QSize(2, 2), Qt::blue));
        QVERIFY(Pixmap::create(L"late.png"));
    }

private:
    void write(const QString& name, const QByteArray& content)
    {
        QFile file(m_folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), qint64(content.size()));
        m_files << file.fileName();
    }

    void save(const QString& name, const QImage& image)
    {
        QVERIFY(image.save(m_folder.filePath(name)));
        m_files << m_folder.filePath(name);
    }

    QTemporaryDir m_folder;
    QStringList m_files;
};

VRN_TEST(TestPixmap)
#include "tst_pixmap.moc"
