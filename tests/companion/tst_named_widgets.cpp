#include <vrn/companion_qt/box_layout.h>
#include <vrn/companion_qt/push_button.h>

#include <QIcon>

#include "support/test_main.h"
#include "support/test_object.h"

class TestNamedWidgets : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aButtonHasParentAndName()
    {
        QWidget parent;
        const auto* button = new VRN_QT_PushButton(&parent, "größe");
        QCOMPARE(button->parentWidget(), &parent);
        QCOMPARE(button->objectName(), QString::fromUtf8("größe"));
        QCOMPARE(button->text(), QString());
    }

    void aButtonHasIconAndText()
    {
        QPixmap image(8, 8);
        image.fill(Qt::red);
        QWidget parent;
        const auto* button = new VRN_QT_PushButton(QIcon(image), "Open", &parent, "open");
        QCOMPARE(button->parentWidget(), &parent);
        QCOMPARE(button->objectName(), QString("open"));
        QCOMPARE(button->text(), QString("Open"));
        QVERIFY(!button->icon().isNull());
    }

    void aLayoutHasParentAndName()
    {
        QWidget row;
        const auto* horizontal = new VRN_QT_HBoxLayout(&row, "row");
        QCOMPARE(row.layout(), horizontal);
        QCOMPARE(horizontal->objectName(), QString("row"));
        QCOMPARE(horizontal->direction(), QBoxLayout::LeftToRight);

        QWidget column;
        const auto* vertical = new VRN_QT_VBoxLayout(&column, "column");
        QCOMPARE(column.layout(), vertical);
        QCOMPARE(vertical->objectName(), QString("column"));
        QCOMPARE(vertical->direction(), QBoxLayout::TopToBottom);
    }

    void aNullNameIsNoName()
    {
        const VRN_QT_PushButton button(static_cast<QWidget*>(nullptr), nullptr);
        QCOMPARE(button.objectName(), QString());
        const VRN_QT_HBoxLayout row(nullptr, nullptr);
        QCOMPARE(row.objectName(), QString());
        const VRN_QT_VBoxLayout column(nullptr, nullptr);
        QCOMPARE(column.objectName(), QString());
    }
};

VRN_TEST(TestNamedWidgets)
#include "tst_named_widgets.moc"
