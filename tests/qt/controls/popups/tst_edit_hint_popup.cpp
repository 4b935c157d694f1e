#include "controls/popups/edit_hint_popup_p.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QWindow>

#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::test;
using vrn::qt::detail::EditHintPopup;

namespace {

struct Fixture
{
    Fixture()
        : popup(new EditHintPopup(&owner))
        , label(popup->findChild<QLabel*>())
    {}

    QLineEdit owner;
    EditHintPopup* popup;
    QLabel* label;
};

bool isOnScreen(const QWidget* widget)
{
    return widget->windowHandle() && widget->windowHandle()->isVisible();
}

} // namespace

class TestEditHintPopup : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsALabelAndNothingElse()
    {
        const Fixture f;
        QVERIFY(f.label);
        auto* layout = qobject_cast<QVBoxLayout*>(f.popup->layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins(0, 0, 0, 0));
        QCOMPARE(layout->sizeConstraint(), QLayout::SetNoConstraint);
        QCOMPARE(layout->count(), 1);
        QCOMPARE(layout->itemAt(0)->widget(), f.label);
        QCOMPARE(f.label->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(f.label->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
        QCOMPARE(f.label->text(), QString());
    }

    void itsSizeIsThatOfItsText_data()
    {
        QTest::addColumn<QString>("hint");
        QTest::newRow("a word") << "metres";
        QTest::newRow("a long text") << QString("at least 1, at most 100; ").repeated(4);
        QTest::newRow("two lines") << "from 1\nto 100";
        QTest::newRow("a blank") << " ";
    }
    void itsSizeIsThatOfItsText()
    {
        QFETCH(QString, hint);
        const Fixture f;
        f.popup->setHint(hint);
        QCOMPARE(f.label->text(), hint);
        QCOMPARE(f.popup->sizeHint(), f.label->sizeHint());
        QVERIFY(!f.popup->sizeHint().isEmpty());
        QCOMPARE(f.popup->size(), f.popup->sizeHint());
        f.popup->show();
        QCOMPARE(f.popup->size(), f.popup->sizeHint());
        QVERIFY(isOnScreen(f.popup));
    }

    void withoutATextItsSizeIsZero()
    {
        const Fixture f;
        QCOMPARE(f.popup->sizeHint(), QSize(0, 0));
        f.popup->show();
        QCOMPARE(f.popup->size(), QSize(0, 0));
        QVERIFY(!isOnScreen(f.popup));
    }

    void anEmptyHintTakesTheSizeBack()
    {
        const Fixture f;
        f.popup->setHint("metres");
        f.popup->setHint("");
        QCOMPARE(f.label->text(), QString());
        QCOMPARE(f.popup->sizeHint(), QSize(0, 0));
        QCOMPARE(f.popup->size(), QSize(0, 0));
        f.popup->show();
        QVERIFY(!isOnScreen(f.popup));
    }

    void itGrowsAndShrinksWhileItStands()
    {
        const Fixture f;
        f.popup->setHint("short");
        f.popup->show();
        const int narrow = f.popup->width();
        f.popup->setHint("a much longer hint than before");
        QVERIFY(f.popup->width() > narrow);
        f.popup->setHint("short");
        QCOMPARE(f.popup->width(), narrow);
    }

    void aHintIsNotShownByItself()
    {
        const Fixture f;
        f.popup->setHint("metres");
        QVERIFY(f.popup->isHidden());
    }
};

VRN_TEST(TestEditHintPopup)
#include "tst_edit_hint_popup.moc"
