#include <vrn/companion_qt/label.h>
#include <vrn/companion_qt/push_button.h>
#include <vrn/qt/simple_line_edit.h>

#include "controls/line_edits/line_edit_impl_p.h"
#include "line_edit_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QProxyStyle>
#include <QSignalSpy>
#include <QStyleOptionButton>

#include <limits>

using namespace vrn::qt;
using vrn::test::DigitsValidator;
using vrn::test::Form;
using vrn::test::row;

namespace {

using Parts = QStringList;

// The parts in the order in which they stand in the layout.
Parts partsOf(const SimpleLineEdit& field)
{
    Parts parts;
    for (int i = 0; i < field.layout()->count(); ++i) {
        const QWidget* part = field.layout()->itemAt(i)->widget();
        if (qobject_cast<const detail::LineEditImpl*>(part))
            parts << "edit";
        else if (const auto* label = qobject_cast<const VRN_QT_Label*>(part))
            parts << "label '" + label->text() + (label->isHidden() ? "' hidden" : "'");
        else if (const auto* button = qobject_cast<const VRN_QT_PushButton*>(part))
            parts << "button '" + button->text() + "'";
        else
            parts << "something else";
    }
    return parts;
}

const QLabel* unitLabel(SimpleLineEdit& field)
{
    return qobject_cast<const QLabel*>(
        field.layout()->itemAt(field.layout()->indexOf(field.edit()) + 1)->widget());
}

SimpleLineEdit* createField(const QString& caption = {}, boost::function<void()> buttonFn = {},
    unsigned int options = 0, ExpandDirection direction = ExpandHorizontal)
{
    return SimpleLineEdit::create(nullptr, caption, boost::make_shared<DigitsValidator>(),
        std::move(buttonFn), options, direction);
}

// Writes down what is drawn as a push button.
class ButtonRecorder : public QProxyStyle
{
public:
    struct Drawing
    {
        ControlElement element;
        QRect rect;
        QString text;
        QPalette palette;
    };

    // What a field draws when it is painted again after it is shown.
    static std::vector<Drawing> drawingsOf(SimpleLineEdit& field)
    {
        ButtonRecorder recorder;
        field.setStyle(&recorder);
        field.show();
        static_cast<void>(QTest::qWaitForWindowExposed(&field));
        recorder.m_drawings.clear();
        field.repaint();
        field.setStyle(nullptr);
        return recorder.m_drawings;
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
        const QWidget* widget) const override
    {
        // The style draws the other elements as parts of these two.
        if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
            if (element == CE_PushButton || element == CE_PushButtonLabel) {
                m_drawings.push_back({element, button->rect, button->text, button->palette});
                return;
            }
        }
        QProxyStyle::drawControl(element, option, painter, widget);
    }

private:
    mutable std::vector<Drawing> m_drawings;
};

} // namespace

class TestSimpleLineEditLayout : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void partsStandInOrder_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<bool>("withButton");
        QTest::addColumn<Parts>("parts");
        row("the edit and a hidden unit", "", false, Parts{"edit", "label '' hidden"});
        row("a caption comes first", "Span", false,
            Parts{"label 'Span'", "edit", "label '' hidden"});
        row("a button comes last", "", true, Parts{"edit", "label '' hidden", "button '...'"});
        row("all of them", "Span", true,
            Parts{"label 'Span'", "edit", "label '' hidden", "button '...'"});
    }

    void partsStandInOrder()
    {
        QFETCH(QString, caption);
        QFETCH(bool, withButton);
        const boost::function<void()> buttonFn = withButton ? [] {} : boost::function<void()>();
        const QScopedPointer<SimpleLineEdit> field(createField(caption, buttonFn));
        QTEST(partsOf(*field), "parts");
        QCOMPARE(field->findChildren<QPushButton*>().size(), withButton ? 1 : 0);
    }

    void theOverloadsWithoutAButtonHaveNone()
    {
        QWidget parent;
        for (const SimpleLineEdit* field :
            {SimpleLineEdit::create(&parent, "Span", new DigitsValidator, 0, ExpandHorizontal),
                SimpleLineEdit::create(
                    &parent, "Span", boost::make_shared<DigitsValidator>(), 0, ExpandHorizontal)}) {
            QCOMPARE(field->parentWidget(), &parent);
            QCOMPARE(partsOf(*field), Parts({"label 'Span'", "edit", "label '' hidden"}));
        }
    }

    void theDirectionOfTheLayout_data()
    {
        QTest::addColumn<int>("direction");
        QTest::addColumn<bool>("horizontal");
        row("horizontal", int(ExpandHorizontal), true);
        row("vertical", int(ExpandVertical), false);
        row("another value counts as vertical", 2, false);
    }

    void theDirectionOfTheLayout()
    {
        QFETCH(int, direction);
        QFETCH(bool, horizontal);
        // The enumeration has two values; the range of its type has more.
        const auto value = static_cast<ExpandDirection>(direction & 3);
        const QScopedPointer<SimpleLineEdit> field(createField(
            "Span", [] {}, 0, value));
        QCOMPARE(qobject_cast<QHBoxLayout*>(field->layout()) != nullptr, horizontal);
        QCOMPARE(qobject_cast<QVBoxLayout*>(field->layout()) != nullptr, !horizontal);
        QCOMPARE(field->layout()->contentsMargins(), QMargins(2, 2, 2, 2));
    }

    void theEditIsTheFocusProxy()
    {
        const QScopedPointer<SimpleLineEdit> field(createField());
        QCOMPARE(field->focusProxy(), static_cast<QWidget*>(field->edit()));
        QCOMPARE(std::as_const(*field).edit(), const_cast<const QLineEdit*>(field->edit()));
    }

    void theBorderlessLook_data()
    {
        const QString plain;
        const QString edit("QLineEdit { border:0; background-color:white; }");
        const QString control("* { background-color:white; }");
        QTest::addColumn<unsigned int>("options");
        QTest::addColumn<QString>("editSheet");
        QTest::addColumn<QString>("controlSheet");
        row("no option", 0u, plain, plain);
        row("bit 0", unsigned(SimpleLineEdit::OptionBorderless), edit, control);
        row("bit 0 among others", 0xffffffffu, edit, control);
        row("all others", 0xfffffffeu, plain, plain);
    }

    void theBorderlessLook()
    {
        QFETCH(unsigned int, options);
        const QScopedPointer<SimpleLineEdit> field(createField({}, {}, options));
        QTEST(field->edit()->styleSheet(), "editSheet");
        QTEST(field->styleSheet(), "controlSheet");
    }

    void theCaptionNamesTheEdit_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("name");
        row("plain", "Span", "Span");
        row("with a shortcut", "&Span", "Span");
        row("with an ampersand", "Nuts && bolts", "Nuts & bolts");
    }

    void theCaptionNamesTheEdit()
    {
        QFETCH(QString, caption);
        QFETCH(QString, name);
        const QScopedPointer<SimpleLineEdit> field(createField(caption));
        const auto* label = qobject_cast<QLabel*>(field->layout()->itemAt(0)->widget());
        QVERIFY(label);
        QCOMPARE(label->text(), caption);
        QCOMPARE(label->buddy(), static_cast<QWidget*>(field->edit()));
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(field->edit());
        QVERIFY(interface);
        QCOMPARE(interface->text(QAccessible::Name), name);
    }

    void theShortcutOfACaptionGoesToTheEdit()
    {
        Form form;
        SimpleLineEdit* field = form.open(createField("&Span"));
        form.leave();
        QVERIFY(!field->edit()->hasFocus());
        QTest::keyClick(&form, Qt::Key_S, Qt::AltModifier);
        QVERIFY(field->edit()->hasFocus());
    }

    void theUnitStandsInBrackets()
    {
        const QScopedPointer<SimpleLineEdit> field(createField());
        const QLabel* unit = unitLabel(*field);
        QVERIFY(unit->isHidden());
        field->setUnitString({});
        QVERIFY(unit->isHidden());
        field->setUnitString("m");
        QCOMPARE(unit->text(), QString("[m]"));
        QVERIFY(!unit->isHidden());
        field->setUnitString("kN/m2");
        QCOMPARE(unit->text(), QString("[kN/m2]"));
        QVERIFY(!unit->isHidden());
        field->setUnitString("");
        QVERIFY(unit->isHidden());
        field->setUnitString("m");
        QCOMPARE(unit->text(), QString("[m]"));
        QVERIFY(!unit->isHidden());
    }

    void aUnitTakenBackKeepsItsWidth()
    {
        const QScopedPointer<SimpleLineEdit> field(createField("Span"));
        const QSize hintWithout = field->sizeHint();
        const QSize minimumWithout = field->minimumSizeHint();
        field->setUnitString("kN/m2");
        const QSize hint = field->sizeHint();
        const QSize minimum = field->minimumSizeHint();
        QVERIFY(hint.width() > hintWithout.width());
        QVERIFY(minimum.width() > minimumWithout.width());

        field->setUnitString("");
        QVERIFY(unitLabel(*field)->isHidden());
        QCOMPARE(unitLabel(*field)->text(), QString("[kN/m2]"));
        QCOMPARE(field->sizeHint(), hint);
        QCOMPARE(field->minimumSizeHint(), minimum);
    }

    void sizeHints_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("unit");
        QTest::addColumn<bool>("withButton");
        row("the edit alone", "", "", false);
        row("with a unit", "", "kN/m2", false);
        row("with a caption", "Distance of supports", "", false);
        row("with caption and unit", "Span", "m", false);
        row("the button has no part in it", "Span", "m", true);
    }

    void sizeHints()
    {
        QFETCH(QString, caption);
        QFETCH(QString, unit);
        QFETCH(bool, withButton);
        const boost::function<void()> buttonFn = withButton ? [] {} : boost::function<void()>();
        const QScopedPointer<SimpleLineEdit> field(createField(caption, buttonFn));
        field->setUnitString(unit);

        QSize hint = field->edit()->sizeHint();
        QSize minimum = field->edit()->minimumSizeHint();
        hint.setWidth(int(hint.width() * 0.6) + 12);
        minimum.setWidth(int(minimum.width() * 0.6) + 12);
        for (const QLabel* label : field->findChildren<VRN_QT_Label*>()) {
            if (label->text().isEmpty())
                continue;
            hint.rwidth() += label->sizeHint().width();
            minimum.rwidth() += label->minimumSizeHint().width();
        }
        QCOMPARE(field->sizeHint(), hint);
        QCOMPARE(field->minimumSizeHint(), minimum);
    }

    void theWidthFactorHasNoEffect()
    {
        const QScopedPointer<SimpleLineEdit> field(createField("Span"));
        field->setUnitString("m");
        const QSize hint = field->sizeHint();
        const QSize minimum = field->minimumSizeHint();
        constexpr double infinity = std::numeric_limits<double>::infinity();
        for (const double factor : {0.0, 0.001, 0.5, 1.0, 50.0, 1000.0, -1.0, infinity, -infinity,
                 std::numeric_limits<double>::quiet_NaN()}) {
            field->setMinimumWidthFactor(factor);
            QCOMPARE(field->sizeHint(), hint);
            QCOMPARE(field->minimumSizeHint(), minimum);
        }
    }

    void settersReachTheEdit()
    {
        const QScopedPointer<SimpleLineEdit> field(createField());
        QLineEdit* edit = field->edit();
        field->setEditMaximumWidth(77);
        QCOMPARE(edit->maximumWidth(), 77);
        field->setMaxLength(3);
        QCOMPARE(edit->maxLength(), 3);
        field->setReadOnly(true);
        QVERIFY(edit->isReadOnly());
        field->setReadOnly(false);
        QVERIFY(!edit->isReadOnly());
        field->setAlignment(Qt::AlignRight);
        QCOMPARE(edit->alignment(), Qt::Alignment(Qt::AlignRight));
        edit->setText("12");
        field->selectAll();
        QCOMPARE(edit->selectedText(), QString("12"));
    }

    void aReadOnlyFieldTakesNoKeystroke()
    {
        Form form;
        SimpleLineEdit* field = form.open(createField());
        field->setReadOnly(true);
        QTest::keyClicks(field->edit(), "12");
        QCOMPARE(field->edit()->text(), QString());
        QVERIFY(!field->isValueValid());
    }

    void aFocusEventOfTheControlGoesToTheEdit()
    {
        Form form;
        SimpleLineEdit* field = form.open(createField());
        form.leave();
        Qt::FocusReason reason = Qt::NoFocusReason;
        const vrn::test::EventWatch watch(field->edit(), [&](const QEvent& event) {
            if (event.type() == QEvent::FocusIn)
                reason = static_cast<const QFocusEvent&>(event).reason();
        });
        QFocusEvent in(QEvent::FocusIn, Qt::TabFocusReason);
        QApplication::sendEvent(field, &in);
        QVERIFY(field->edit()->hasFocus());
        QCOMPARE(reason, Qt::OtherFocusReason);

        QSignalSpy valueChanged(field, &SimpleLineEdit::valueChanged);
        QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(field, &out);
        QVERIFY(field->edit()->hasFocus());
        QCOMPARE(valueChanged.count(), 0);
    }

    void theButtonCallsItsFunction()
    {
        int calls = 0;
        const QScopedPointer<SimpleLineEdit> field(createField({}, [&] { ++calls; }));
        auto* button = field->findChild<VRN_QT_PushButton*>();
        QVERIFY(button);
        QCOMPARE(button->minimumSize(), QSize(20, 20));
        QCOMPARE(button->maximumSize(), QSize(20, 20));
        QSignalSpy valueChanged(field.data(), &SimpleLineEdit::valueChanged);
        field->show();
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(calls, 1);
        QCOMPARE(valueChanged.count(), 0);
    }

    void aButtonIsPaintedInsideTheEdit()
    {
        const QScopedPointer<SimpleLineEdit> field(createField("Span", [] {}));
        QPalette palette = field->edit()->palette();
        palette.setColor(QPalette::Button, Qt::green);
        field->edit()->setPalette(palette);
        field->resize(300, 40);
        const auto drawings = ButtonRecorder::drawingsOf(*field);
        QVERIFY(drawings.size() >= 2);
        QCOMPARE(drawings[0].element, QStyle::CE_PushButton);
        QCOMPARE(drawings[1].element, QStyle::CE_PushButtonLabel);
        QRect expected = field->edit()->geometry();
        expected.setLeft(expected.right() - 20);
        for (const auto& drawing : {drawings[0], drawings[1]}) {
            QCOMPARE(drawing.rect, expected);
            QCOMPARE(drawing.text, QString("..."));
            QCOMPARE(drawing.palette.color(QPalette::Button), QColor(Qt::green));
        }
    }

    void withoutAButtonFunctionNoButtonIsPainted()
    {
        const QScopedPointer<SimpleLineEdit> field(createField("Span"));
        QCOMPARE(ButtonRecorder::drawingsOf(*field).size(), std::size_t(0));
    }
};

VRN_TEST(TestSimpleLineEditLayout)
#include "tst_simple_line_edit_layout.moc"
