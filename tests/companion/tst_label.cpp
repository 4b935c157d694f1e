#include <vrn/companion_qt/label.h>

#include "support/test_main.h"
#include "support/test_object.h"

class TestLabel : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theArgumentsAreTheLabels()
    {
        QWidget parent;
        const VRN_QT_Label label(Qt::PlainText, "<b>5</b>", &parent, "five", Qt::Tool);
        QCOMPARE(label.textFormat(), Qt::PlainText);
        QCOMPARE(label.text(), QString("<b>5</b>"));
        QCOMPARE(label.parentWidget(), &parent);
        QCOMPARE(label.objectName(), QString("five"));
        QCOMPARE(label.windowType(), Qt::Tool);
        const VRN_QT_Label withoutName(Qt::RichText, "<b>5</b>", nullptr);
        QCOMPARE(withoutName.objectName(), QString());
        QCOMPARE(withoutName.textFormat(), Qt::RichText);
    }
};

VRN_TEST(TestLabel)
#include "tst_label.moc"
