#include <vrn/qt/simple_line_edit.h>

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include "pages/quantities_page.h"
#include "support/test_main.h"
#include "support/test_object.h"

using vrn::qt::SimpleLineEdit;

// Runs in a locale with a decimal comma.
class TestGalleryDecimalComma : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void fieldsAndOverviewTakeTheCommaWhenItIsSwitchedOn()
    {
        gallery::QuantitiesPage page;
        SimpleLineEdit* span = page.findChild<SimpleLineEdit*>();
        QCOMPARE(span->edit()->text(), QString("7.620 m"));

        auto* comma = page.findChild<QCheckBox*>();
        QVERIFY(comma->isEnabled());
        comma->setChecked(true);
        QCOMPARE(span->edit()->text(), QString("7,620 m"));
        QCOMPARE(
            page.findChild<QGroupBox*>()->findChild<QLabel*>()->text(), QString("0:  7,620 m"));

        span->edit()->setText("1,5 m");
        span->onEditingFinished();
        QVERIFY(span->isValueValid());
        QCOMPARE(span->edit()->text(), QString("1,500 m"));

        comma->setChecked(false);
        QCOMPARE(span->edit()->text(), QString("1.500 m"));
    }
};

VRN_TEST(TestGalleryDecimalComma)
#include "tst_gallery_decimal_comma.moc"
