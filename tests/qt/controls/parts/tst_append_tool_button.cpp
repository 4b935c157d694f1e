#include "controls/parts/append_tool_button_p.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

using vrn::qt::detail::appendToolButton;

class TestAppendToolButton : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theButtonIsTheLastOfATightLayout()
    {
        QWidget control;
        auto* layout = new QHBoxLayout(&control);
        layout->addWidget(new QLabel);
        const QToolButton* button = appendToolButton(&control, "m_btn");
        QCOMPARE(button->objectName(), QString("m_btn"));
        QCOMPARE(button->parentWidget(), &control);
        QCOMPARE(layout->count(), 2);
        QCOMPARE(layout->itemAt(1)->widget(), button);
        QCOMPARE(layout->contentsMargins(), QMargins());
        QCOMPARE(layout->spacing(), 0);
    }

    void aMissingLayoutIsReported()
    {
        QWidget control;
        expectAssert("lay");
        const QToolButton* button = appendToolButton(&control, "m_btn");
        QCOMPARE(button->parentWidget(), &control);
    }
};

VRN_TEST(TestAppendToolButton)
#include "tst_append_tool_button.moc"
