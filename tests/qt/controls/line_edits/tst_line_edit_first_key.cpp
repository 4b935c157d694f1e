#include <QImage>
#include <QLineEdit>
#include <QPixmap>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>

#include "controls/line_edits/line_edit_impl_p.h"
#include "qt/controls/line_edits/line_edit_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "support/x11_input.h"

using namespace vrn::test;
using vrn::qt::ExpandHorizontal;
using vrn::qt::SimpleLineEdit;

namespace {

// A field between two others that would move with it.
class FieldForm
{
public:
    FieldForm(unsigned int options, bool hasButton, Qt::LayoutDirection direction)
        : field(SimpleLineEdit::create(
            &m_window, "Span", new DigitsValidator, options, ExpandHorizontal))
    {
        m_window.setLayoutDirection(direction);
        auto* rows = new QVBoxLayout(&m_window);
        rows->addWidget(new QLineEdit("above"));
        rows->addWidget(field);
        rows->addWidget(new QLineEdit("below"));
        rows->addStretch();
        field->setValue(12);
        if (hasButton)
            button = field->addButton([](const QString& text) { return text; }, QPixmap());
    }

    bool open()
    {
        m_window.resize(200, 150);
        m_window.show();
        if (!QTest::qWaitForWindowActive(&m_window))
            return false;
        field->edit()->setFocus();
        x11::press({"End"});
        return QTest::qWaitFor([this] { return field->edit()->cursorPosition() == 3; });
    }

    // With keys, as a user does.
    bool type(const QStringList& keys, const QString& result) const
    {
        x11::press(keys);
        return QTest::qWaitFor([&] { return field->edit()->text() == result; });
    }

    QImage picture() const
    {
        QTest::qWait(50); // Until the server has it.
        return m_window.screen()->grabWindow(m_window.winId()).toImage();
    }

    QImage pictureOfButton() const
    {
        return picture().copy(QRect(button->mapTo(&m_window, QPoint(0, 0)), button->size()));
    }

private:
    QWidget m_window;

public:
    SimpleLineEdit* field;
    QToolButton* button = nullptr;
};

void fields()
{
    columns<unsigned int, bool, Qt::LayoutDirection>("options", "hasButton", "direction");
    const unsigned int borderless = SimpleLineEdit::OptionBorderless;
    row("a plain field", 0u, false, Qt::LeftToRight);
    row("with a button", 0u, true, Qt::LeftToRight);
    row("with a button, from right to left", 0u, true, Qt::RightToLeft);
    row("borderless", borderless, false, Qt::LeftToRight);
    row("borderless with a button", borderless, true, Qt::LeftToRight);
    row("borderless with a button, from right to left", borderless, true, Qt::RightToLeft);
}

} // namespace

Q_DECLARE_METATYPE(Qt::LayoutDirection)

class TestLineEditFirstKey : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setCursorFlashTime(0); }

    void aKeyAndItsRemovalLeaveTheWindowAsItWas_data() { fields(); }

    void aKeyAndItsRemovalLeaveTheWindowAsItWas()
    {
        QFETCH(unsigned int, options);
        QFETCH(bool, hasButton);
        QFETCH(Qt::LayoutDirection, direction);
        FieldForm form(options, hasButton, direction);
        QVERIFY(form.open());
        const QString sheet = form.field->edit()->styleSheet();
        const QImage before = form.picture();
        QVERIFY(form.type({"3"}, "0123"));
        QVERIFY(form.type({"BackSpace"}, "012"));
        QVERIFY(form.field->edit()->styleSheet() != sheet);
        QCOMPARE(form.picture(), before);
    }

    void noTextRunsBelowTheButton_data() { fields(); }

    void noTextRunsBelowTheButton()
    {
        QFETCH(unsigned int, options);
        QFETCH(bool, hasButton);
        QFETCH(Qt::LayoutDirection, direction);
        if (!hasButton)
            return;
        FieldForm form(options, hasButton, direction);
        QVERIFY(form.open());
        const QImage before = form.pictureOfButton();
        form.field->edit()->setText(QString(100, '8')); // The style sheet is still the first.
        QCOMPARE(form.pictureOfButton(), before);
        QVERIFY(form.type({"9"}, QString(100, '8') + '9'));
        x11::press({"Home"});
        QCOMPARE(form.pictureOfButton(), before);
    }

    void aFieldWithAButtonIsAsHighAsOneWithout_data()
    {
        columns<unsigned int>("options");
        row("framed", 0u);
        row("borderless", unsigned(SimpleLineEdit::OptionBorderless));
    }

    void aFieldWithAButtonIsAsHighAsOneWithout()
    {
        QFETCH(unsigned int, options);
        FieldForm plain(options, false, Qt::LeftToRight);
        FieldForm withButton(options, true, Qt::LeftToRight);
        QVERIFY(plain.open());
        QVERIFY(withButton.open());
        QCOMPARE(withButton.field->height(), plain.field->height());
        if (options == 0) // Borderless, the edit is 16 pixels high at least.
            QCOMPARE(withButton.field->edit()->height(), plain.field->edit()->height());
        QVERIFY(withButton.type({"3"}, "0123"));
        QCOMPARE(withButton.field->height(), plain.field->height());
    }
};

VRN_TEST(TestLineEditFirstKey)
#include "tst_line_edit_first_key.moc"
