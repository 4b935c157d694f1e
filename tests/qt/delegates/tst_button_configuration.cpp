#include <vrn/qt/button_configuration.h>

#include <QPixmap>

#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::qt;
using namespace vrn::test;

class TestButtonConfiguration : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void atFirstThereIsNeitherHandlerNorIcon()
    {
        const ButtonConfiguration button;
        QVERIFY(!button.getBtnHandler());
        QVERIFY(button.getIcon().isNull());
    }

    void aHandlerGetsTheWidgetAndTheValue()
    {
        ButtonConfiguration button;
        QWidget widget;
        const QWidget* given = nullptr;
        button.setBtnHandler([&](QWidget* its, boost::any& value) {
            given = its;
            value = boost::any_cast<int>(value) + 1;
            return true;
        });
        boost::any value = 1;
        QVERIFY(button.getBtnHandler()(&widget, value));
        QCOMPARE(given, &widget);
        QCOMPARE(value, boost::any(2));
    }

    void aHandlerOfTheValueAloneIgnoresTheWidget()
    {
        ButtonConfiguration button;
        button.setBtnHandler([](boost::any& value) {
            value = 7;
            return false;
        });
        QWidget widget;
        for (QWidget* its : {&widget, static_cast<QWidget*>(nullptr)}) {
            boost::any value;
            QVERIFY(!button.getBtnHandler()(its, value));
            QCOMPARE(value, boost::any(7));
        }
    }

    void anotherHandlerReplacesTheFirst()
    {
        ButtonConfiguration button;
        button.setBtnHandler([](QWidget*, boost::any&) { return false; });
        button.setBtnHandler([](boost::any&) { return true; });
        boost::any value;
        QVERIFY(button.getBtnHandler()(nullptr, value));
    }

    void anEmptyHandlerIsNone()
    {
        ButtonConfiguration button;
        button.setBtnHandler([](boost::any&) { return true; });
        button.setBtnHandler(std::function<bool(boost::any&)>());
        QVERIFY(!button.getBtnHandler());
        button.setBtnHandler([](boost::any&) { return true; });
        button.setBtnHandler(ButtonConfiguration::Handler());
        QVERIFY(!button.getBtnHandler());
    }

    void aCopyAndAMovedOneAreTheSame()
    {
        QPixmap pixmap(4, 4);
        pixmap.fill(Qt::red);
        ButtonConfiguration button;
        button.setIcon(QIcon(pixmap));
        button.setBtnHandler([](boost::any&) { return true; });
        const ButtonConfiguration copy = button;
        ButtonConfiguration moved;
        moved = std::move(button);
        for (const ButtonConfiguration& its : {copy, moved}) {
            boost::any value;
            QVERIFY(its.getBtnHandler()(nullptr, value));
            QVERIFY(!its.getIcon().isNull());
        }
    }
};

VRN_TEST(TestButtonConfiguration)

#include "tst_button_configuration.moc"
