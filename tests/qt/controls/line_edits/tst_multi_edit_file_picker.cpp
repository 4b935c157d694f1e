#include <vrn/qt/multi_edit_file_picker.h>
#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/varies_string.h>

#include <QAccessible>
#include <QBoxLayout>
#include <QImage>
#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>
#include <QToolButton>

#include "support/other_language.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <functional>
#include <map>

using namespace vrn::qt;
using vrn::test::sameValue;

namespace {

using Act = std::function<void(MultiEditFilePicker&)>;

// Value of a picker that offers no dialog.
constexpr auto noDialog = TypeofPath(4);

boost::any text(const std::string& value)
{
    return value;
}

void type(MultiEditFilePicker& picker, const QString& keys)
{
    QTest::keyClicks(picker.m_edit->edit(), keys);
}

void replace(MultiEditFilePicker& picker, const QString& keys)
{
    QTest::keyClick(picker.m_edit->edit(), Qt::Key_A, Qt::ControlModifier);
    type(picker, keys);
}

void pressEnter(MultiEditFilePicker& picker)
{
    QTest::keyClick(picker.m_edit->edit(), Qt::Key_Return);
}

// Whether the next value read is taken and not compared; it is read by that.
bool isFresh(MultiEditFilePicker& picker)
{
    picker.readValue(text("a value that no test has"));
    return sameValue(picker.getCurrentValue(), text("a value that no test has"));
}

} // namespace

Q_DECLARE_METATYPE(Act)

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

    void aNewPickerHoldsTheEmptyString_data() { everyType(); }

    void aNewPickerHoldsTheEmptyString()
    {
        QFETCH(int, pathType);
        MultiEditFilePicker picker(nullptr, TypeofPath(pathType));
        QVERIFY(!picker.dataVaries());
        QCOMPARE(picker.getValue(), text(""));
        QCOMPARE(picker.getCurrentValue(), text(""));
        QVERIFY(isFresh(picker));
    }

    // Action by action: the signals, and the state that it leaves.
    void signalsAndStates_data()
    {
        QTest::addColumn<Act>("arrange");
        QTest::addColumn<Act>("act");
        QTest::addColumn<int>("signalCount");
        QTest::addColumn<boost::any>("current"); // Empty: it varies.
        QTest::addColumn<bool>("fresh");

        const Act nothing = [](auto&) {};
        const Act common = [](auto& p) { p.readValue(text("/a")); };
        const Act varying = [](auto& p) {
            p.readValue(text("/a"));
            p.readValue(text("/b"));
        };
        const Act forced = [](auto& p) { p.forceVaries(); };
        const Act reset = [](auto& p) { p.reset(); };
        const Act set = [](auto& p) { p.setValue(text("/s")); };
        const Act readSame = [](auto& p) { p.readValue(text("/a")); };
        const Act readOther = [](auto& p) { p.readValue(text("/b")); };
        const Act enter = [](auto& p) { pressEnter(p); };
        const Act typed = [](auto& p) { replace(p, "/t"); };
        const Act typedAndEnter = [](auto& p) {
            replace(p, "/t");
            pressEnter(p);
        };
        const Act typedAndUndone = [](auto& p) {
            replace(p, "/t");
            QTest::keyClick(p.m_edit->edit(), Qt::Key_Z, Qt::ControlModifier);
        };
        const Act variesTypedAndEnter = [](auto& p) {
            replace(p, getVariesString());
            pressEnter(p);
        };
        const Act languageAndEnter = [](auto& p) {
            vrn::test::OtherLanguage german;
            german.change();
            vrn::test::deliverLanguage();
            QCOMPARE(p.m_edit->edit()->text(), getVariesString());
            pressEnter(p);
            german.change();
            vrn::test::deliverLanguage();
        };
        const Act pick = [](auto& p) { QMetaObject::invokeMethod(&p, "onPick"); };
        const boost::any varies;

        QTest::newRow("fresh, reset") << nothing << reset << 0 << text("") << true;
        QTest::newRow("fresh, read") << nothing << readSame << 0 << text("/a") << false;
        QTest::newRow("fresh, set") << nothing << set << 0 << text("/s") << true;
        QTest::newRow("fresh, force varies") << nothing << forced << 0 << varies << true;
        QTest::newRow("fresh, keys") << nothing << typed << 0 << text("/t") << true;
        QTest::newRow("fresh, Enter") << nothing << enter << 1 << text("") << true;
        QTest::newRow("fresh, keys and Enter")
            << nothing << typedAndEnter << 1 << text("/t") << true;
        QTest::newRow("fresh, pick without a choice") << nothing << pick << 1 << text("") << true;

        QTest::newRow("common, reset") << common << reset << 0 << text("/a") << true;
        QTest::newRow("common, read the same") << common << readSame << 0 << text("/a") << false;
        QTest::newRow("common, read another") << common << readOther << 0 << varies << false;
        QTest::newRow("common, set") << common << set << 0 << text("/s") << false;
        QTest::newRow("common, force varies") << common << forced << 0 << varies << false;
        QTest::newRow("common, keys") << common << typed << 0 << text("/t") << false;
        QTest::newRow("common, Enter") << common << enter << 1 << text("/a") << false;
        QTest::newRow("common, keys and Enter")
            << common << typedAndEnter << 1 << text("/t") << false;
        QTest::newRow("common, pick without a choice")
            << common << pick << 1 << text("/a") << false;

        QTest::newRow("varying, reset") << varying << reset << 0 << text("*VARIES*") << true;
        QTest::newRow("varying, read the first") << varying << readSame << 0 << varies << false;
        QTest::newRow("varying, read the second") << varying << readOther << 0 << varies << false;
        QTest::newRow("varying, set") << varying << set << 0 << text("/s") << false;
        QTest::newRow("varying, force varies") << varying << forced << 0 << varies << false;
        QTest::newRow("varying, keys") << varying << typed << 0 << text("/t") << false;
        QTest::newRow("varying, Enter") << varying << enter << 0 << varies << false;
        QTest::newRow("varying, keys that are undone")
            << varying << typedAndUndone << 0 << varies << false;
        QTest::newRow("common, the varies text and Enter")
            << common << variesTypedAndEnter << 0 << varies << false;
        QTest::newRow("varying, another language and Enter")
            << varying << languageAndEnter << 0 << varies << false;
        QTest::newRow("varying, keys and Enter")
            << varying << typedAndEnter << 1 << text("/t") << false;

        QTest::newRow("forced when fresh, reset")
            << forced << reset << 0 << text("*VARIES*") << true;
        QTest::newRow("forced when fresh, read") << forced << readSame << 0 << text("/a") << false;
        QTest::newRow("forced when fresh, set") << forced << set << 0 << text("/s") << true;
        QTest::newRow("forced when fresh, force varies") << forced << forced << 0 << varies << true;
        QTest::newRow("forced when fresh, keys") << forced << typed << 0 << text("/t") << true;
        QTest::newRow("forced when fresh, Enter") << forced << enter << 0 << varies << true;
        QTest::newRow("forced when fresh, keys and Enter")
            << forced << typedAndEnter << 1 << text("/t") << true;
    }

    void signalsAndStates()
    {
        QFETCH(Act, arrange);
        QFETCH(Act, act);
        QFETCH(int, signalCount);
        QFETCH(boost::any, current);
        QFETCH(bool, fresh);
        MultiEditFilePicker picker(nullptr, noDialog);
        arrange(picker);
        QSignalSpy changed(&picker, &MultiEditFilePicker::valueChanged);
        act(picker);

        QCOMPARE(changed.count(), signalCount);
        QCOMPARE(picker.getCurrentValue(), current);
        QCOMPARE(picker.getValue(), current);
        QCOMPARE(picker.dataVaries(), current.empty());
        QCOMPARE(picker.m_edit->dataVaries(), current.empty());
        if (current.empty())
            QCOMPARE(picker.m_edit->edit()->text(), getVariesString());
        QCOMPARE(isFresh(picker), fresh);
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

    void theValueIsTheFirst260Characters_data()
    {
        QTest::addColumn<QString>("letter");
        QTest::newRow("in ASCII") << "a";
        QTest::newRow("of two bytes") << QString::fromUtf8("ü");
        QTest::newRow("outside the basic plane") << QString::fromUtf8("𝛼");
    }

    void theValueIsTheFirst260Characters()
    {
        QFETCH(QString, letter);
        const boost::any longest = text(letter.repeated(260).toStdString());
        MultiEditFilePicker picker(nullptr, TypeofPathFile);
        picker.setValue(longest);
        QCOMPARE(picker.getCurrentValue(), longest);
        picker.setValue(letter.repeated(261).toStdString());
        QCOMPARE(picker.getCurrentValue(), longest);
        QCOMPARE(picker.getValue(), longest);
    }

    void anyTextIsAPath_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("letters outside ASCII") << QByteArray("/größe/Ω/鋼/𝛼.txt");
        QTest::newRow("quotes") << QByteArray("/it's \"quoted\"/a.txt");
        QTest::newRow("a line break") << QByteArray("/a\nb/c\r\nd.txt");
        QTest::newRow("backslashes") << QByteArray("C:\\projects\\a.txt");
        QTest::newRow("spaces around") << QByteArray("  /a b/c  ");
    }

    void anyTextIsAPath()
    {
        QFETCH(QByteArray, path);
        MultiEditFilePicker picker(nullptr, TypeofPathFile);
        picker.readValue(text(path.toStdString()));
        picker.readValue(text(path.toStdString()));
        QVERIFY(!picker.dataVaries());
        QCOMPARE(picker.getCurrentValue(), text(path.toStdString()));
    }

    void bytesThatAreNotUtf8AreReplaced()
    {
        MultiEditFilePicker picker(nullptr, TypeofPathFile);
        picker.setValue(text("/a\xff/b"));
        QCOMPARE(picker.getCurrentValue(), text("/a\xef\xbf\xbd/b"));
    }

    void otherTypesOfValuesAreReported_data()
    {
        QTest::addColumn<boost::any>("value");
        QTest::newRow("no value") << boost::any();
        QTest::newRow("a number") << boost::any(1.5);
        QTest::newRow("a QString") << boost::any(QString("/a"));
    }

    void otherTypesOfValuesAreReported()
    {
        QFETCH(boost::any, value);
        MultiEditFilePicker picker(nullptr, TypeofPathFile);
        picker.setValue(text("/a"));
        QSignalSpy changed(&picker, &MultiEditFilePicker::valueChanged);
        for (const auto& give :
            {Act([&](auto& p) { p.setValue(value); }), Act([&](auto& p) { p.readValue(value); })}) {
            expectAssert(
                "value.type() == typeid(std::wstring) || value.type() == typeid(std::string)",
                {"value.type().name()"});
            give(picker);
            QCOMPARE(picker.getCurrentValue(), text(""));
        }
        QCOMPARE(changed.count(), 0);
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

    void itWorksThroughItsBase()
    {
        MultiEditFilePicker picker(nullptr, TypeofPathFile);
        MultiEditControlBase& control = picker;
        control.reset();
        control.readValue(text("/a"));
        control.readValue(text("/b"));
        QVERIFY(control.dataVaries());
        control.setValue(text("/c"));
        QCOMPARE(control.getCurrentValue(), text("/c"));
        control.forceVaries();
        QVERIFY(control.getCurrentValue().empty());
    }

    void assistiveTechnologyReadsTextAndTitle_data()
    {
        QTest::addColumn<int>("pathType");
        QTest::addColumn<QString>("title");
        QTest::newRow("file") << int(TypeofPathFile) << "Open File";
        QTest::newRow("files") << int(TypeofPathFiles) << "Open Files";
        QTest::newRow("folder") << int(TypeofPathFolder) << "Open Folder";
        QTest::newRow("file in folder") << int(TypeofPathFileInFolder) << "Open Folder";
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

    void theParentMayGoAtAnyStep()
    {
        const std::vector<Act> steps = {[](auto& p) { p.readValue(text("/a")); },
            [](auto& p) { replace(p, "/t"); }, pressEnter, [](auto& p) { p.m_btn->click(); },
            [](auto& p) { p.readValue(text("/b")); }, [](auto& p) { type(p, "x"); }, pressEnter,
            [](auto& p) { p.forceVaries(); }, [](auto& p) { p.setValue(text("/s")); },
            [](auto& p) { p.reset(); }};
        for (std::size_t done = 0; done <= steps.size(); ++done) {
            auto* parent = new QWidget;
            const QPointer<MultiEditFilePicker> picker(new MultiEditFilePicker(parent, noDialog));
            parent->show();
            QVERIFY(QTest::qWaitForWindowActive(parent));
            picker->setFocus();
            for (std::size_t i = 0; i < done; ++i)
                steps[i](*picker);
            delete parent;
            QVERIFY(!picker);
        }
    }

    void aSlotMayDestroyIt_data()
    {
        QTest::addColumn<Act>("act");
        QTest::newRow("after Enter") << Act([](auto& p) { pressEnter(p); });
        QTest::newRow("after a pick") << Act([](auto& p) { p.m_btn->click(); });
    }

    void aSlotMayDestroyIt()
    {
        QFETCH(Act, act);
        QWidget parent;
        const QPointer<MultiEditFilePicker> picker(new MultiEditFilePicker(&parent, noDialog));
        connect(picker, &MultiEditFilePicker::valueChanged, picker, &QObject::deleteLater);
        act(*picker);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!picker);
    }

    void aSlotMayDestroyTheParentAfterAPick()
    {
        auto* parent = new QWidget;
        const QPointer<MultiEditFilePicker> picker(new MultiEditFilePicker(parent, noDialog));
        connect(picker, &MultiEditFilePicker::valueChanged, picker, [parent] { delete parent; });
        picker->m_btn->click();
        QVERIFY(!picker);
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

private:
    static void everyType()
    {
        QTest::addColumn<int>("pathType");
        QTest::newRow("file") << int(TypeofPathFile);
        QTest::newRow("files") << int(TypeofPathFiles);
        QTest::newRow("folder") << int(TypeofPathFolder);
        QTest::newRow("file in folder") << int(TypeofPathFileInFolder);
        QTest::newRow("any other") << int(noDialog);
    }
};

VRN_TEST(TestMultiEditFilePicker)
#include "tst_multi_edit_file_picker.moc"
