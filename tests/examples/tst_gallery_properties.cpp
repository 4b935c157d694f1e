#include <vrn/qt/property_page.h>
#include <vrn/qt/varies_string.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QUndoView>

#include "gallery_page_test.h"

using namespace vrn::test;
using vrn::qt::EditState;
using vrn::qt::PropertyPage;

// Drives the page of properties by keys of the X server. Two beams and two columns are selected.
class TestGalleryProperties : public GalleryPageTest
{
    Q_OBJECT

public:
    TestGalleryProperties()
        : GalleryPageTest("properties")
    {}

private Q_SLOTS:
    void aLengthIsWrittenToAllAndUndone()
    {
        QCOMPARE(row("length").text, vrn::qt::getVariesString());
        focus(find<QLineEdit>("Length"));
        replaceText("7 ft 6 in");
        x11::press({"Return"});
        QTRY_COMPARE(row("length").text, QString("2.286 m"));
        QCOMPARE(steps(), QStringList({"as it was", "Length of 2 beam(s) and 2 column(s)"}));
        x11::press({"ctrl+z"});
        QTRY_COMPARE(row("length").text, vrn::qt::getVariesString());
    }

    void whatIsRefusedStaysUntilEscape()
    {
        selectTheFirst();
        QTRY_COMPARE(row("bolts").text, QString("2"));
        focus(find<QLineEdit>("Bolts"));
        replaceText("3");
        x11::press({"Return"});
        QTRY_COMPARE(row("bolts").edit, EditState::Refused);
        QCOMPARE(row("bolts").reason, QString("Bolts come in pairs."));
        x11::press({"Escape"});
        QTRY_COMPARE(row("bolts").text, QString("2"));
        QCOMPARE(steps(), QStringList("as it was"));
    }

    void aFlagEnablesWhatDependsOnIt()
    {
        const auto* minutes = find<QLineEdit>("Resistance, min");
        QVERIFY(!minutes->isEnabled());
        click(find<QCheckBox>("Protected"));
        QTRY_VERIFY(minutes->isEnabled());
        x11::press({"ctrl+z"});
        QTRY_VERIFY(!minutes->isEnabled());
    }

    void theListFollowsAName()
    {
        selectTheFirst();
        QTRY_COMPARE(row("name").text, QString("Ridge"));
        focus(find<QLineEdit>("Name"));
        replaceText("Hip");
        x11::press({"Tab"});
        QTRY_COMPARE(find<QListWidget>("Members")->item(0)->text(), QString("Hip"));
    }

    void theUnitsAreThoseOfTheSystem()
    {
        selectTheFirst();
        QTRY_COMPARE(row("length").text, QString("7.400 m"));
        focus(find<QComboBox>("Unit system"));
        x11::press({"End"});
        QTRY_COMPARE(row("length").text, QString("291.34 in"));
    }

private:
    vrn::qt::PropertyRow row(const std::string& key) const
    {
        return page().findChild<PropertyPage*>()->row(key);
    }

    QStringList steps() const
    {
        const QAbstractItemModel* model = find<QUndoView>("Steps")->model();
        QStringList texts;
        for (int row = 0; row < model->rowCount(); ++row)
            texts << model->index(row, 0).data().toString();
        return texts;
    }

    void selectTheFirst()
    {
        focus(find<QListWidget>("Members"));
        x11::press({"Home"});
    }
};

VRN_GALLERY_TEST(TestGalleryProperties)
#include "tst_gallery_properties.moc"
