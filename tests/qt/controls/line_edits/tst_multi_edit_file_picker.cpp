#include <vrn/qt/multi_edit_file_picker.h>
#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/varies_string.h>

#include <QAccessible>
#include <QBoxLayout>
#include <QImage>
#include <QLineEdit>
#include <QSignalSpy>
#include <QToolButton>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <map>

using namespace vrn::qt;
using vrn::test::row;

namespace {

// The type of a picker without a dialog.
constexpr auto noDialog = TypeofPath(4);

boost::any text(const std::string& value)
{
    return value;
}

void type(MultiEditFilePicker& picker, const QString& keys)
{
    QTest::keyClicks(picker.m_edit->edit(), keys);
}

} // namespace

class TestMultiEditFilePicker : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void typesHaveTheirNumbers()
    {
        QCOMPARE(int(TypeofPathFile), 0);
        QCOMPARE(int(TypeofPathFiles), 1);
        QCOMPARE(int(TypeofPathFolder), 2);
        QCOMPARE(int(TypeofPathFileInFolder), 3);
    }

    void editAndButtonStandInARow()
    {
        QWidget parent;
        auto* picker = new MultiEditFilePicker(&parent, TypeofPathFile);
        QCOMPARE(picker->parentWidget(), &parent);
        QCOMPARE(picker->m_type, TypeofPathFile);
        QCOMPARE(picker->m_filter, std::string());
        QCOMPARE(picker->m_fileName, std::string());
        QCOMPARE(picker->m_edit->parentWidget(), picker);
        QCOMPARE(picker->m_btn->parentWidget(), picker);
        QCOMPARE(picker->focusProxy(), picker->m_edit);

        const auto* layout = qobject_cast<QBoxLayout*>(picker->layout());
        QVERIFY(layout);
        QCOMPARE(layout->direction(), QBoxLayout::LeftToRight);
        QCOMPARE(layout->contentsMargins(), QMargins());
        QCOMPARE(layout->spacing(), 0);
        QCOMPARE(layout->count(), 2);
        QCOMPARE(layout->itemAt(0)->widget(), picker->m_edit);
        QCOMPARE(layout->itemAt(1)->widget(), picker->m_btn);
    }

    void theEditHasNeitherCaptionNorFrameOptions()
    {
        MultiEditFilePicker picker(nullptr, TypeofPathFile);
        const auto* layout = qobject_cast<QBoxLayout*>(picker.m_edit->layout());
        QCOMPARE(layout->direction(), QBoxLayout::LeftToRight);
        QCOMPARE(layout->itemAt(0)->widget(), picker.m_edit->edit());
        QCOMPARE(picker.m_edit->styleSheet(), QString());
    }

    void theButtonShowsAnOpenFolder()
    {
        const MultiEditFilePicker picker(nullptr, TypeofPathFile);
        QCOMPARE(picker.m_btn->focusPolicy(), Qt::StrongFocus);
        QCOMPARE(picker.m_btn->icon().availableSizes(), QList<QSize>({QSize(16, 16)}));
        const QImage image = picker.m_btn->icon().pixmap(16, 16).toImage().convertToFormat(
            QImage::Format_ARGB32);
        const QStringList rows = {"................", "..........###...", ".........#...#.#",
            "..............##", "..###........###", ".#aba#######....", ".#babababab#....",
            ".#ababababa#....", ".#baba##########", ".#aba#ccccccccc#", ".#ba#ccccccccc#.",
            ".#a#ccccccccc#..", ".##ccccccccc#...", ".###########....", "................",
            "................"};
        const std::map<QChar, QRgb> colours = {
            {'.', 0}, {'#', 0xff000000}, {'a', 0xffffffff}, {'b', 0xffffff00}, {'c', 0xff808000}};
        for (int y = 0; y < 16; ++y) {
            for (int x = 0; x < 16; ++x) {
                QVERIFY2(image.pixel(x, y) == colours.at(rows[y][x]),
                    qPrintable(QString("column %1, row %2").arg(x).arg(y)));
            }
        }
    }

    void aNewPickerHoldsTheEmptyString()
    {
        for (const auto type :
            {TypeofPathFile, TypeofPathFiles, TypeofPathFolder, TypeofPathFileInFolder, noDialog}) {
            MultiEditFilePicker picker(nullptr, type);
            QVERIFY(!picker.dataVaries());
            QCOMPARE(picker.getValue(), text(""));
            QCOMPARE(picker.getCurrentValue(), text(""));
            picker.readValue(text("/a"));
            QCOMPARE(picker.getCurrentValue(), text("/a"));
        }
    }

    void leavingTheFieldCountsOnceAndThePickAgain()
    {
        MultiEditFilePicker picker(nullptr, noDialog);
        picker.show();
        QVERIFY(QTest::qWaitForWindowActive(&picker));
        picker.setFocus();
        QVERIFY(picker.m_edit->edit()->hasFocus());
        type(picker, "/t");
        QSignalSpy changed(&picker, &MultiEditFilePicker::valueChanged);
        QTest::mouseClick(picker.m_btn, Qt::LeftButton);
        QVERIFY(picker.m_btn->hasFocus());
        QCOMPARE(changed.count(), 2);
        QTest::mouseClick(picker.m_btn, Qt::LeftButton);
        QCOMPARE(changed.count(), 3);
    }

    void tabGoesFromTheEditToTheButton()
    {
        MultiEditFilePicker picker(nullptr, noDialog);
        picker.show();
        QVERIFY(QTest::qWaitForWindowActive(&picker));
        picker.setFocus();
        QTest::keyClick(picker.m_edit->edit(), Qt::Key_Tab);
        QVERIFY(picker.m_btn->hasFocus());
        QSignalSpy changed(&picker, &MultiEditFilePicker::valueChanged);
        QTest::keyClick(picker.m_btn, Qt::Key_Space);
        QCOMPARE(changed.count(), 1);
    }

    void theValueIsTheFirst260Characters()
    {
        // The last one is outside the basic plane.
        for (const char* letter : {"a", "ü", "𝛼"}) {
            const QString longest = QString(letter).repeated(260);
            MultiEditFilePicker picker(nullptr, TypeofPathFile);
            picker.setValue(text(longest.toStdString()));
            QCOMPARE(picker.getCurrentValue(), text(longest.toStdString()));
            picker.setValue(text((longest + letter).toStdString()));
            QCOMPARE(picker.getCurrentValue(), text(longest.toStdString()));
            QCOMPARE(picker.getValue(), text(longest.toStdString()));
        }
    }

    void anyTextIsAPath()
    {
        for (const char* path : {"", "/größe/Ω/鋼/𝛼.txt", "/it's \"quoted\"/a.txt",
                 "/a\nb/c\r\nd.txt", "C:\\projects\\a.txt", "  /a b/c  "}) {
            MultiEditFilePicker picker(nullptr, TypeofPathFile);
            picker.readValue(text(path));
            picker.readValue(text(path));
            QVERIFY(!picker.dataVaries());
            QCOMPARE(picker.getCurrentValue(), text(path));
        }
    }

    void bytesThatAreNotUtf8AreReplaced()
    {
        MultiEditFilePicker picker(nullptr, TypeofPathFile);
        picker.setValue(text("/a\xff/b"));
        QCOMPARE(picker.getCurrentValue(), text("/a\xef\xbf\xbd/b"));
    }

    void otherTypesOfValuesAreReported()
    {
        for (const boost::any& value : {boost::any(), boost::any(1.5), boost::any(QString("/a"))}) {
            MultiEditFilePicker picker(nullptr, TypeofPathFile);
            picker.setValue(text("/a"));
            QSignalSpy changed(&picker, &MultiEditFilePicker::valueChanged);
            const auto give = [&](void (MultiEditFilePicker::*function)(const boost::any&)) {
                expectAssert(
                    "value.type() == typeid(std::wstring) || value.type() == typeid(std::string)",
                    {"value.type().name()"});
                (picker.*function)(value);
                QCOMPARE(picker.getCurrentValue(), text(""));
            };
            give(&MultiEditFilePicker::setValue);
            give(&MultiEditFilePicker::readValue);
            QCOMPARE(changed.count(), 0);
        }
    }

    void aWideStringIsAPathToo()
    {
        MultiEditFilePicker picker(nullptr, TypeofPathFile);
        picker.setValue(std::wstring(L"/größe"));
        QCOMPARE(picker.getCurrentValue(), text("/größe"));
    }

    void theFieldsAndTheirSettersAreOne()
    {
        MultiEditFilePicker picker(nullptr, TypeofPathFile);
        picker.setFilter("Text (*.txt)");
        picker.setFileName("a.txt");
        QCOMPARE(picker.m_filter, std::string("Text (*.txt)"));
        QCOMPARE(picker.m_fileName, std::string("a.txt"));
    }

    void ofItselfItSavesNothing()
    {
        MultiEditFilePicker picker(nullptr, TypeofPathFile);
        picker.setCanBeSaved("id");
        QVERIFY(!picker.canBeSaved());
        QCOMPARE(picker.getStorageId(), std::string());
        vrn::KeyValueStorage storage;
        QVERIFY(!picker.save(storage));
        picker.load(storage);
        QCOMPARE(picker.getCurrentValue(), text(""));
    }

    void theApplicationMayHaveItSaved()
    {
        MultiEditFilePicker picker(nullptr, TypeofPathFile);
        picker.setCanBeSaved(
            "id", [](vrn::KeyValueStorage&) { return true; },
            [&](const vrn::KeyValueStorage&) { picker.setValue(text("/loaded")); });
        QVERIFY(picker.canBeSaved());
        vrn::KeyValueStorage storage;
        QVERIFY(picker.save(storage));
        picker.load(storage);
        QCOMPARE(picker.getCurrentValue(), text("/loaded"));
    }

    void assistiveTechnologyReadsTextAndTitle_data()
    {
        QTest::addColumn<int>("pathType");
        QTest::addColumn<QString>("title");
        row("file", int(TypeofPathFile), "Open File");
        row("files", int(TypeofPathFiles), "Open Files");
        row("folder", int(TypeofPathFolder), "Open Folder");
        row("file in folder", int(TypeofPathFileInFolder), "Open Folder");
    }

    void assistiveTechnologyReadsTextAndTitle()
    {
        QFETCH(int, pathType);
        QFETCH(QString, title);
        MultiEditFilePicker picker(nullptr, TypeofPath(pathType));
        picker.forceVaries();
        const auto* edit = QAccessible::queryAccessibleInterface(picker.m_edit->edit());
        QCOMPARE(edit->text(QAccessible::Value), getVariesString());
        const auto* button = QAccessible::queryAccessibleInterface(picker.m_btn);
        QCOMPARE(button->text(QAccessible::Name), title);
    }

    void withoutItsEditItDoesNothing()
    {
        MultiEditFilePicker picker(nullptr, TypeofPathFile);
        picker.forceVaries();
        delete picker.m_edit;
        QCOMPARE(static_cast<void*>(picker.m_edit), nullptr);

        QSignalSpy changed(&picker, &MultiEditFilePicker::valueChanged);
        picker.reset();
        picker.readValue(text("/a"));
        picker.setValue(text("/a"));
        picker.forceVaries();
        QVERIFY(!picker.dataVaries());
        QVERIFY(picker.getValue().empty());
        QVERIFY(picker.getCurrentValue().empty());
        expectAssert("m_edit");
        picker.m_btn->click();
        QCOMPARE(changed.count(), 0);
    }

    void itIsDestroyedWithTheFocusInIt()
    {
        QWidget parent;
        auto* picker = new MultiEditFilePicker(&parent, noDialog);
        int changes = 0;
        connect(picker, &MultiEditFilePicker::valueChanged, this, [&] { ++changes; });
        parent.show();
        QVERIFY(QTest::qWaitForWindowActive(&parent));
        picker->setFocus();
        type(*picker, "a");
        delete picker;
        QCOMPARE(changes, 0);
    }
};

VRN_TEST(TestMultiEditFilePicker)
#include "tst_multi_edit_file_picker.moc"
