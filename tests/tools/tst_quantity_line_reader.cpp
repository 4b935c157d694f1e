#include "line_reader.h"

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <array>
#include <chrono>
#include <ctime>
#include <fcntl.h>
#include <QTemporaryFile>
#include <system_error>
#include <thread>
#include <unistd.h>

using vrn::quantity_tool::LineReader;
using vrn::test::columns;
using vrn::test::row;

class TestQuantityLineReader : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void lines_data()
    {
        columns<QByteArray, QByteArrayList>("content", "lines");
        row("no line", QByteArray(), QByteArrayList());
        row("an empty line", QByteArray("\n"), QByteArrayList{""});
        row("one line", QByteArray("a\n"), QByteArrayList{"a"});
        row("a last line without line feed", QByteArray("a\nb"), QByteArrayList{"a", "b"});
        row("empty lines between others", QByteArray("\na\n\n\nb\n"),
            QByteArrayList{"", "a", "", "", "b"});
        row("null characters and carriage returns as they are", QByteArray("a\0b\r\n", 5),
            QByteArrayList{QByteArray("a\0b\r", 4)});
        const QByteArray huge(300000, 'x');
        row("lines longer than one read", huge + "\n" + huge + "y\nz",
            QByteArrayList{huge, huge + "y", "z"});
        QByteArray many;
        QByteArrayList numbers;
        for (int i = 0; i < 50000; ++i) {
            numbers.append(QByteArray::number(i));
            many += numbers.last() + "\n";
        }
        row("lines across the ends of reads", many, numbers);
    }
    void lines()
    {
        QFETCH(QByteArray, content);
        QFETCH(QByteArrayList, lines);
        QTemporaryFile file;
        QVERIFY(file.open());
        QCOMPARE(file.write(content), qint64(content.size()));
        QVERIFY(file.seek(0));

        LineReader reader(file.handle(), [] {});
        for (const QByteArray& line : lines) {
            const auto read = reader.next();
            QVERIFY(read);
            QVERIFY(*read == std::string_view(line.constData(), std::size_t(line.size())));
        }
        QVERIFY(!reader.next());
        QVERIFY(!reader.next());
    }

    void announcesEachWait()
    {
        std::array<int, 2> pipe{};
        QCOMPARE(::pipe(pipe.data()), 0);
        int waits = 0;
        LineReader reader(pipe[0], [&waits] { ++waits; });

        QCOMPARE(::write(pipe[1], "a\nb\nhalf", 8), ::ssize_t(8));
        QVERIFY(reader.next() == "a");
        QVERIFY(reader.next() == "b");
        QCOMPARE(waits, 1);
        QCOMPARE(::write(pipe[1], " done\n", 6), ::ssize_t(6));
        QVERIFY(reader.next() == "half done");
        QCOMPARE(waits, 2);

        ::close(pipe[1]);
        QVERIFY(!reader.next());
        ::close(pipe[0]);
    }

    void waitsForAFileThatDoesNotBlock()
    {
        std::array<int, 2> pipe{};
        QCOMPARE(::pipe2(pipe.data(), O_NONBLOCK), 0);
        int waits = 0;
        LineReader reader(pipe[0], [&waits] { ++waits; });
        std::thread writer([end = pipe[1]] {
            for (const std::string part : {"a\nha", "lf"}) {
                std::this_thread::sleep_for(std::chrono::milliseconds(200));
                if (::write(end, part.data(), part.size()) < 0)
                    qWarning("the pipe cannot be written");
            }
            ::close(end);
        });

        const std::clock_t start = std::clock();
        const bool readsFirst = reader.next() == "a";
        const int waitsForFirst = waits;
        const bool readsLast = reader.next() == "half";
        const bool ends = !reader.next();
        const auto busy = std::clock() - start;
        writer.join();
        ::close(pipe[0]);
        QVERIFY(readsFirst);
        QCOMPARE(waitsForFirst, 1);
        QVERIFY(readsLast);
        QVERIFY(ends);
        // It sleeps while it waits.
        QVERIFY2(busy < CLOCKS_PER_SEC / 10, qPrintable(QString::number(busy)));
    }

    void whatCannotBeReadThrows()
    {
        LineReader reader(-1, [] {});
        QVERIFY_EXCEPTION_THROWN(reader.next(), std::system_error);
    }
};

VRN_TEST(TestQuantityLineReader)
#include "tst_quantity_line_reader.moc"
