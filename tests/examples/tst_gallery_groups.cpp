#include <vrn/qt/multi_edit_check_box.h>
#include <vrn/qt/multi_edit_check_box_group.h>
#include <vrn/qt/multi_edit_group_box.h>
#include <vrn/qt/multi_edit_radio_button_group.h>

#include <QCheckBox>
#include <QGroupBox>
#include <QRadioButton>
#include <QSignalSpy>
#include <QToolTip>

#include "gallery_page_test.h"

using namespace vrn::test;
using namespace vrn::qt;

// Drives the page of groups by keys and clicks of the X server.
class TestGalleryGroups : public GalleryPageTest
{
    Q_OBJECT

public:
    TestGalleryGroups()
        : GalleryPageTest("groups")
    {}

private Q_SLOTS:
    void aClickOnAPartiallyCheckedBoxChecksIt()
    {
        auto* box = find<QCheckBox>("Visible");
        auto* control = find<MultiEditCheckBox>("Visible");
        QCOMPARE(box->checkState(), Qt::PartiallyChecked);
        QSignalSpy valueChanged(control, &MultiEditCheckBox::valueChanged);
        click(box);
        QTRY_COMPARE(box->checkState(), Qt::Checked);
        QVERIFY(!control->dataVaries());
        QCOMPARE(valueChanged.count(), 1);
        click(box);
        QTRY_COMPARE(box->checkState(), Qt::Unchecked);
        // There are two states again.
        click(box);
        QTRY_COMPARE(box->checkState(), Qt::Checked);
        QCOMPARE(valueChanged.count(), 3);
    }

    void theKeyOfACaptionChecksItsBoxAndTabGoesToTheNext()
    {
        auto* visible = find<QCheckBox>("Visible");
        auto* locked = find<QCheckBox>("Locked");
        QVERIFY(locked->isChecked());
        x11::press({"alt+v"});
        QTRY_COMPARE(visible->checkState(), Qt::Checked);
        QVERIFY(visible->hasFocus());
        x11::press({"Tab"});
        QTRY_VERIFY(locked->hasFocus());
        x11::press({"space"});
        QTRY_VERIFY(!locked->isChecked());
    }

    void arrowKeysMoveInARadioGroup()
    {
        auto* group = find<MultiEditRadioButtonGroup>("Alignment, in a row");
        QCOMPARE(checkedIn(group), QStringList{"Middle"});
        QSignalSpy valueChanged(group, &MultiEditRadioButtonGroup::valueChanged);
        click(find<QRadioButton>("Left", *group));
        QTRY_COMPARE(checkedIn(group), QStringList{"Left"});
        x11::press({"Right"});
        QTRY_COMPARE(checkedIn(group), QStringList{"Middle"});
        x11::press({"Right"});
        QTRY_COMPARE(checkedIn(group), QStringList{"Right"});
        QCOMPARE(group->getCurrentValue(), boost::any(1));
        x11::press({"Left"});
        QTRY_COMPARE(checkedIn(group), QStringList{"Middle"});
        QCOMPARE(valueChanged.count(), 4);
    }

    void tabEntersARadioGroupAtItsCheckedButton()
    {
        auto* group = find<MultiEditRadioButtonGroup>("Alignment, in a row");
        QCOMPARE(checkedIn(group), QStringList{"Middle"});
        click(find<QRadioButton>("S355"));
        QTRY_VERIFY(find<QRadioButton>("S355")->hasFocus());
        x11::press({"Tab"});
        QTRY_VERIFY(find<QRadioButton>("Middle", *group)->hasFocus());
        x11::press({"Tab"});
        QTRY_VERIFY(!group->isAncestorOf(QApplication::focusWidget()));
        x11::press({"shift+Tab"});
        QTRY_VERIFY(find<QRadioButton>("Middle", *group)->hasFocus());
        QCOMPARE(checkedIn(group), QStringList{"Middle"});
    }

    void aClickOnAVaryingRadioGroupLeavesOneButtonChecked_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("name");
        QTest::newRow("the first in a column") << "Steel grade, in a column"
                                               << "S235";
        QTest::newRow("the last in a column") << "Steel grade, in a column"
                                              << "S355";
        QTest::newRow("one in a grid") << "Rotation, in a grid"
                                       << "90 deg";
    }

    void aClickOnAVaryingRadioGroupLeavesOneButtonChecked()
    {
        QFETCH(QString, title);
        QFETCH(QString, name);
        auto* group = find<MultiEditRadioButtonGroup>(title);
        QVERIFY(group->dataVaries());
        QCOMPARE(checkedIn(group), QStringList());
        QSignalSpy valueChanged(group, &MultiEditRadioButtonGroup::valueChanged);
        click(find<QRadioButton>(name, *group));
        QTRY_COMPARE(checkedIn(group), QStringList{name});
        QVERIFY(!group->dataVaries());
        QCOMPARE(valueChanged.count(), 1);
    }

    void aClickOnAllSetsTheWholeGroup()
    {
        const auto* supports = find<QGroupBox>("Supports, in a row");
        const auto boxes = supports->findChildren<QCheckBox*>();
        QCOMPARE(boxes.size(), 4);
        QCheckBox* all = boxes.last();
        QCOMPARE(all->text(), QString("All"));
        QCOMPARE(all->checkState(), Qt::PartiallyChecked);
        click(all);
        for (const QCheckBox* box : boxes)
            QTRY_COMPARE(box->checkState(), Qt::Checked);
        click(boxes.first());
        QTRY_COMPARE(all->checkState(), Qt::PartiallyChecked);
        click(boxes.first());
        QTRY_COMPARE(all->checkState(), Qt::Checked);
        click(all);
        for (const QCheckBox* box : boxes)
            QTRY_COMPARE(box->checkState(), Qt::Unchecked);
    }

    // It is disabled, and so is what it contains.
    void aVaryingGroupBoxSaysWhyItIsDisabled()
    {
        auto* box = find<MultiEditGroupBox>("Fire protection");
        QVERIFY(!box->isEnabled());
        x11::moveMouse(box->mapToGlobal(QPoint(box->width() - 5, box->height() - 8)));
        x11::moveMouse(box->mapToGlobal(QPoint(30, box->height() - 20)));
        QTRY_COMPARE(QToolTip::text(), QString("The selected objects differ."));
        QVERIFY(QToolTip::isVisible());
        box->reset();
        QTRY_VERIFY(!QToolTip::isVisible());
    }

private:
    static QStringList checkedIn(const QWidget* group)
    {
        QStringList names;
        for (const auto* button : group->findChildren<QRadioButton*>()) {
            if (button->isChecked())
                names << button->text();
        }
        return names;
    }
};

VRN_GALLERY_TEST(TestGalleryGroups)
#include "tst_gallery_groups.moc"
