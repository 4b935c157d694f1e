#include <vrn/qt/multi_edit_check_box.h>
#include <vrn/qt/multi_edit_check_box_group.h>
#include <vrn/qt/multi_edit_radio_button_group.h>

#include <QCheckBox>
#include <QGroupBox>
#include <QRadioButton>
#include <QSignalSpy>

#include "gallery_application.h"
#include "gallery_window.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "support/x11_input.h"

#include <memory>

using namespace vrn::test;
using namespace vrn::qt;

// Drives the page of groups by keys and clicks of the X server.
class TestGalleryGroups : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_window = std::make_unique<gallery::GalleryWindow>();
        QVERIFY(m_window->showPage(QStringLiteral("groups")));
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        m_window.reset();
        TestObject::cleanup();
    }

    void aClickOnAPartiallyCheckedBoxChecksIt()
    {
        QCheckBox* box = checkBox("&Visible");
        auto* control = qobject_cast<MultiEditCheckBox*>(box->parentWidget());
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
        QCheckBox* visible = checkBox("&Visible");
        QCheckBox* locked = checkBox("&Locked");
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
        MultiEditRadioButtonGroup* group = radioGroup("Alignment, in a row");
        QCOMPARE(checkedIn(group), QStringList{"Middle"});
        QSignalSpy valueChanged(group, &MultiEditRadioButtonGroup::valueChanged);
        click(button(group, "Left"));
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
        MultiEditRadioButtonGroup* group = radioGroup(title);
        QVERIFY(group->dataVaries());
        QCOMPARE(checkedIn(group), QStringList());
        QSignalSpy valueChanged(group, &MultiEditRadioButtonGroup::valueChanged);
        click(button(group, name));
        QTRY_COMPARE(checkedIn(group), QStringList{name});
        QVERIFY(!group->dataVaries());
        QCOMPARE(valueChanged.count(), 1);
    }

    void aClickOnAllSetsTheWholeGroup()
    {
        const QGroupBox* supports = groupBox("Supports, in a row");
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

private:
    static void click(const QAbstractButton* button)
    {
        x11::click(button->mapToGlobal(QPoint(8, button->height() / 2)));
    }

    QCheckBox* checkBox(const QString& text) const
    {
        for (auto* box : m_window->findChildren<QCheckBox*>()) {
            if (box->text() == text)
                return box;
        }
        qFatal("no box %s", qPrintable(text));
    }

    QGroupBox* groupBox(const QString& title) const
    {
        for (auto* box : m_window->findChildren<QGroupBox*>()) {
            if (box->title() == title)
                return box;
        }
        qFatal("no group box %s", qPrintable(title));
    }

    MultiEditRadioButtonGroup* radioGroup(const QString& title) const
    {
        return qobject_cast<MultiEditRadioButtonGroup*>(groupBox(title)->parentWidget());
    }

    static QRadioButton* button(const QWidget* group, const QString& text)
    {
        for (auto* button : group->findChildren<QRadioButton*>()) {
            if (button->text() == text)
                return button;
        }
        qFatal("no button %s", qPrintable(text));
    }

    static QStringList checkedIn(const QWidget* group)
    {
        QStringList names;
        for (const auto* button : group->findChildren<QRadioButton*>()) {
            if (button->isChecked())
                names << button->text();
        }
        return names;
    }

    std::unique_ptr<gallery::GalleryWindow> m_window;
};

VRN_TEST_IN(TestGalleryGroups, gallery::GalleryApplication)
#include "tst_gallery_groups.moc"
