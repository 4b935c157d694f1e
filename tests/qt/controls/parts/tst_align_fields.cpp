#include <vrn/qt/align_fields.h>

#include <vrn/base/any_predicates.h>
#include <vrn/qt/controls.h>
#include <vrn/qt/validators.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

#include <functional>
#include <memory>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

using Make = std::function<QWidget*(QWidget* form, const QString& caption)>;

SimpleLineEdit* createEdit(QWidget* form, const QString& caption)
{
    return SimpleLineEdit::create(form, caption, new DoubleEditValidator, 0, ExpandHorizontal);
}

// The edit or the list in a field.
QWidget* lineOf(QWidget* field)
{
    while (field->focusProxy())
        field = field->focusProxy();
    return field;
}

// Where the line of a field is in the window.
QRect placeOf(QWidget* field)
{
    QWidget* line = lineOf(field);
    return QRect(line->mapTo(line->window(), QPoint()), line->size());
}

void addFields()
{
    columns<Make>("make");
    const auto add = [](const char* name, const Make& make) { row(name, make); };
    add("a field with a unit", [](QWidget* form, const QString& caption) {
        auto* field = createEdit(form, caption);
        field->setUnitString("m");
        return field;
    });
    add("a field with a button", [](QWidget* form, const QString& caption) {
        return SimpleLineEdit::create(form, caption, boost::make_shared<DoubleEditValidator>(),
            boost::function<void()>([] {}), 0, ExpandHorizontal);
    });
    add("a field with a button in the edit", [](QWidget* form, const QString& caption) {
        auto* field = createEdit(form, caption);
        field->addButton([](const QString& text) { return text; }, QPixmap());
        return field;
    });
    add("a borderless field", [](QWidget* form, const QString& caption) {
        return SimpleLineEdit::create(form, caption, new DoubleEditValidator,
            SimpleLineEdit::OptionBorderless, ExpandHorizontal);
    });
    add("an enum box", [](QWidget* form, const QString& caption) {
        return SimpleEnumBox::create(form, caption, &vrn::any_equal<int>);
    });
    add("an editable enum box", [](QWidget* form, const QString& caption) {
        auto* box = SimpleEnumBox::create(form, caption, &vrn::any_equal<int>);
        box->setEditable(true);
        return box;
    });
}

// These have no captions of their own.
void addFieldsWithoutCaption()
{
    addFields();
    const auto add = [](const char* name, const Make& make) { row(name, make); };
    add("a field with a button that computes", [](QWidget* form, const QString&) {
        auto* field = new MultiEditLineEditWithButton(new DoubleEditValidator, 0, [](int) {});
        field->setParent(form);
        return field;
    });
    add("a field with a reset button", [](QWidget* form, const QString&) {
        auto* field = new MultiEditLineEditWithResetButton(
            new DoubleEditValidator, 0, [](int, boost::any&, boost::any&) {});
        field->setParent(form);
        return field;
    });
    add("a file picker", [](QWidget* form, const QString&) {
        return new MultiEditFilePicker(form, TypeofPathFile);
    });
    add("an edit of the application",
        [](QWidget* form, const QString&) { return new QLineEdit(form); });
}

} // namespace

Q_DECLARE_METATYPE(Make)

class TestAlignFields : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        m_form = std::make_unique<QWidget>();
        m_form->resize(700, 200);
        m_rows = new QVBoxLayout(m_form.get());
    }

    void cleanup()
    {
        m_form.reset();
        TestObject::cleanup();
    }

    void fieldsHaveOneHeightAndOneLeftEdge_data() { addFieldsWithoutCaption(); }
    void fieldsHaveOneHeightAndOneLeftEdge()
    {
        QFETCH(Make, make);
        QWidget* plain = createEdit(m_form.get(), {});
        QWidget* other = make(m_form.get(), {});
        show({plain, other});
        verifyAligned(plain, other);
        QVERIFY(placeOf(plain).height() >= lineOf(plain)->sizeHint().height());

        QFont larger = m_form->font();
        larger.setPointSize(larger.pointSize() * 2);
        const int height = placeOf(plain).height();
        m_form->setFont(larger);
        QTRY_VERIFY(placeOf(plain).height() > height);
        QCoreApplication::sendPostedEvents();
        verifyAligned(plain, other);
    }

    void captionsHaveOneWidth_data() { addFields(); }
    void captionsHaveOneWidth()
    {
        QFETCH(Make, make);
        QWidget* plain = createEdit(m_form.get(), "&Span");
        QWidget* other = make(m_form.get(), "A longer &caption");
        show({plain, other});
        verifyAligned(plain, other);

        auto* caption = plain->findChild<QLabel*>();
        caption->setText("A caption that is longer still");
        QTRY_VERIFY(lineOf(plain)->x() > caption->sizeHint().width());
        QCoreApplication::sendPostedEvents();
        verifyAligned(plain, other);
    }

    // Its caption stands above the edit.
    void aFieldInAColumnKeepsItsCaption()
    {
        QWidget* plain = createEdit(m_form.get(), "&Span");
        QWidget* column = SimpleLineEdit::create(
            m_form.get(), "A much longer caption", new DoubleEditValidator, 0, ExpandVertical);
        show({plain, column});
        QVERIFY(placeOf(plain).left() < placeOf(column).left() + 100);
        QCOMPARE(placeOf(column).left(), column->mapTo(m_form.get(), QPoint()).x());
    }

    void aFieldThatIsHigherStaysSo()
    {
        QWidget* plain = createEdit(m_form.get(), {});
        auto* high = new QLineEdit(m_form.get());
        high->setMinimumHeight(70);
        show({plain, high});
        QCOMPARE(high->height(), 70);
        QVERIFY(placeOf(plain).height() < 70);
    }

    void aFixedHeightStays_data() { addFieldsWithoutCaption(); }
    void aFixedHeightStays()
    {
        QFETCH(Make, make);
        QWidget* plain = createEdit(m_form.get(), {});
        QWidget* low = make(m_form.get(), {});
        low->setFixedHeight(15);
        show({plain, low});
        QCOMPARE(low->height(), 15);
        QVERIFY(placeOf(plain).height() > 15);
    }

    void aFieldThatIsHiddenCountsWhenItIsShown()
    {
        QWidget* plain = createEdit(m_form.get(), "&Span");
        QWidget* other = createEdit(m_form.get(), "A much longer caption");
        other->setFont(QFont("DejaVu Sans", 30));
        other->hide();
        show({plain, other});
        const QRect place = placeOf(plain);
        QVERIFY(place.left() < other->findChild<QLabel*>()->sizeHint().width());

        other->show();
        QCoreApplication::sendPostedEvents();
        verifyAligned(plain, other);

        other->hide();
        QCoreApplication::sendPostedEvents();
        QCOMPARE(placeOf(plain).topLeft().x(), place.x());
        QCOMPARE(placeOf(plain).height(), place.height());
    }

    // As when a form is translated on a page that is not shown.
    void aCaptionMayChangeWhileTheFormIsHidden()
    {
        QWidget* plain = createEdit(m_form.get(), "&Span");
        QWidget* other = createEdit(m_form.get(), "&Width");
        show({plain, other});
        m_form->hide();
        auto* caption = plain->findChild<QLabel*>();
        for (const char* text : {"A longer caption", "A caption that is longer still"}) {
            caption->setText(text);
            QCoreApplication::sendPostedEvents();
        }
        m_form->show();
        QCoreApplication::sendPostedEvents();
        QVERIFY(lineOf(plain)->x() >= caption->sizeHint().width());
        verifyAligned(plain, other);
    }

    // In a form of hundreds of fields, the square of their number counts.
    void aFieldIsNotMeasuredForAnother()
    {
        struct Edit : public QLineEdit
        {
            using QLineEdit::QLineEdit;
            QSize sizeHint() const override
            {
                ++timesAsked;
                return QLineEdit::sizeHint();
            }
            mutable int timesAsked = 0;
        };
        auto* first = new Edit(m_form.get());
        auto* other = new Edit(m_form.get());
        show({first, other});
        QCoreApplication::sendPostedEvents();
        first->timesAsked = 0;
        other->timesAsked = 0;
        QFont font = other->font();
        font.setItalic(true);
        other->setFont(font);
        QCoreApplication::sendPostedEvents();
        QVERIFY(other->timesAsked > 0);
        QCOMPARE(first->timesAsked, 0);
    }

    void otherWidgetsStayAsTheyAre()
    {
        QWidget* plain = createEdit(m_form.get(), {});
        auto* box = new QGroupBox(m_form.get());
        auto* inner = new QVBoxLayout(box);
        QWidget* field = createEdit(box, {});
        inner->addWidget(field);
        inner->setContentsMargins(7, 7, 7, 7);
        box->setFocusProxy(field);
        show({plain, box});
        QCOMPARE(inner->contentsMargins(), QMargins(7, 7, 7, 7));
        QCOMPARE(field->layout()->contentsMargins(), QMargins(2, 2, 2, 2));
    }

    void fieldsMayGo()
    {
        QWidget* plain = createEdit(m_form.get(), {});
        QWidget* gone = createEdit(m_form.get(), {});
        QWidget* last = createEdit(m_form.get(), "Depth");
        show({plain, gone, last});
        delete gone;
        m_form->setFont(QFont("DejaVu Sans", 30));
        QTRY_VERIFY(placeOf(plain).height() > 40);
    }

    void missingArgumentsAreReported()
    {
        QWidget* plain = createEdit(m_form.get(), {});
        expectAssert("owner");
        alignFields(nullptr, {plain});
        expectAssert("isComplete", {}, "a field is missing");
        alignFields(m_form.get(), {plain, nullptr});
        QCOMPARE(plain->layout()->contentsMargins(), QMargins(2, 2, 2, 2));
    }

private:
    void show(const std::vector<QWidget*>& fields)
    {
        for (QWidget* field : fields)
            m_rows->addWidget(field);
        m_rows->addStretch(1);
        alignFields(m_form.get(), fields);
        m_form->show();
    }

    static void verifyAligned(QWidget* one, QWidget* other)
    {
        QCOMPARE(placeOf(one).height(), placeOf(other).height());
        QCOMPARE(placeOf(one).left(), placeOf(other).left());
    }

    std::unique_ptr<QWidget> m_form;
    QVBoxLayout* m_rows = nullptr;
};

VRN_TEST(TestAlignFields)
#include "tst_align_fields.moc"
