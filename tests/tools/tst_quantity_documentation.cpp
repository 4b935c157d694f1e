#include "quantity_process.h"

#include "support/test_main.h"
#include "support/test_object.h"

#include <QFile>

/// Runs what docs/vrn-quantity.md shows in its blocks of kind "console": each line
/// after "$ ", which prints the lines up to the next one.
class TestQuantityDocumentation : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void examples_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("output");
        QFile page(QStringLiteral(VRN_QUANTITY_PAGE));
        QVERIFY(page.open(QIODevice::ReadOnly));
        const auto blocks = QString::fromUtf8(page.readAll()).split("```console\n").mid(1);
        QVERIFY(blocks.size() > 4);
        for (const QString& block : blocks) {
            const auto examples = block.section("```", 0, 0).split("$ ").mid(1);
            QVERIFY(!examples.isEmpty());
            for (const QString& example : examples) {
                const QString command = example.section('\n', 0, 0);
                QTest::newRow(qPrintable(command)) << command << example.section('\n', 1);
            }
        }
    }
    void examples()
    {
        QFETCH(QString, command);
        QFETCH(QString, output);
        const auto outcome = vrn::test::runInShell("{ " + command + "; } 2>&1");
        QCOMPARE(outcome.output, output);
    }
};

VRN_TEST(TestQuantityDocumentation)
#include "tst_quantity_documentation.moc"
