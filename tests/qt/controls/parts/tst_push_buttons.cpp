#include <vrn/companion_qt/push_button.h>
#include <vrn/qt/push_buttons.h>

#include <QDialog>
#include <QIcon>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <functional>
#include <memory>

using namespace vrn::qt;
using vrn::test::columns;
using vrn::test::row;

namespace {

QPixmap redSquare()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    return pixmap;
}

using Create = std::function<QPushButton*(QWidget*)>;

} // namespace

Q_DECLARE_METATYPE(Create)

class TestPushButtons : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutTextAButtonIsSquare_data()
    {
        columns<Create>("create");
        row("icon", Create([](QWidget* p) {
            return createPushButtonWithIcon(p, QIcon(redSquare()), "red");
        }));
        row("pixmap",
            Create([](QWidget* p) { return createPushButtonWithIcon(p, redSquare(), "red"); }));
        row("icon and empty text", Create([](QWidget* p) {
            return createPushButtonWithIconAndText(p, QIcon(redSquare()), QString(), "red");
        }));
        row("pixmap and empty text", Create([](QWidget* p) {
            return createPushButtonWithIconAndText(p, redSquare(), QString(""), "red");
        }));
    }
    void withoutTextAButtonIsSquare()
    {
        QFETCH(Create, create);
        // In a dialog a new button is a default button, which is higher.
        QDialog dialog;
        const int height = VRN_QT_PushButton(&dialog, nullptr).sizeHint().height();

        const QPushButton* button = create(&dialog);
        QCOMPARE(button->minimumSize(), QSize(height, height));
        QCOMPARE(button->maximumSize(), QSize(height, height));
        QVERIFY(qobject_cast<const VRN_QT_PushButton*>(button));
        QCOMPARE(button->parentWidget(), &dialog);
        QCOMPARE(button->objectName(), QString("red"));
        QCOMPARE(button->icon().pixmap(16, 16).toImage().pixelColor(8, 8), QColor(Qt::red));
        QVERIFY(!button->autoDefault());
    }

    void theIconDoesNotChangeTheSize()
    {
        QWidget parent;
        QPixmap huge(200, 200);
        huge.fill(Qt::red);
        QCOMPARE(createPushButtonWithIcon(&parent, huge, nullptr)->maximumSize(),
            createPushButtonWithIcon(&parent, QIcon(), nullptr)->maximumSize());
    }

    void withTextAButtonIsAPlainOne_data()
    {
        columns<Create>("create");
        row("icon", Create([](QWidget* p) {
            return createPushButtonWithIconAndText(p, QIcon(redSquare()), "Open", "open");
        }));
        row("pixmap", Create([](QWidget* p) {
            return createPushButtonWithIconAndText(p, redSquare(), "Open", "open");
        }));
    }
    void withTextAButtonIsAPlainOne()
    {
        QFETCH(Create, create);
        QDialog dialog;
        const QPushButton* button = create(&dialog);
        QVERIFY(qobject_cast<const VRN_QT_PushButton*>(button));
        QCOMPARE(button->parentWidget(), &dialog);
        QCOMPARE(button->objectName(), QString("open"));
        QCOMPARE(button->text(), QString("Open"));
        QVERIFY(!button->icon().isNull());
        QCOMPARE(button->minimumSize(), QSize(0, 0));
        QCOMPARE(button->maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
        QVERIFY(button->autoDefault());
    }

    void nothingIsNeeded()
    {
        const std::unique_ptr<QPushButton> square(
            createPushButtonWithIcon(nullptr, QPixmap(), nullptr));
        QCOMPARE(square->objectName(), QString());
        QVERIFY(square->icon().isNull());
        const std::unique_ptr<QPushButton> plain(
            createPushButtonWithIconAndText(nullptr, QIcon(), "x", nullptr));
        QCOMPARE(plain->objectName(), QString());
    }
};

VRN_TEST(TestPushButtons)
#include "tst_push_buttons.moc"
