#include <vrn/qt/multi_edit_enum_box.h>
#include <vrn/qt/multi_edit_line_edit.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "choices/enum_box_fixture.h"
#include "controls/popups/edit_hint_popup_p.h"
#include "controls/popups/history_popup_p.h"
#include "line_edits/line_edit_fixture.h"
#include "support/contrast.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <deque>
#include <functional>

using namespace vrn::qt;
using namespace vrn::test;
using vrn::qt::detail::EditHintPopup;
using vrn::qt::detail::HistoryPopup;

namespace {

constexpr unsigned int borderless = SimpleLineEdit::OptionBorderless;

QPalette themed(
    const QColor& window, const QColor& base, const QColor& text, const QColor& disabled)
{
    QPalette palette(window, window);
    palette.setColor(QPalette::Base, base);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    palette.setColor(QPalette::Disabled, QPalette::Base, window);
    return palette;
}

// As Qt has it by itself, but for the disabled text, whose contrast is only 1.6 there.
QPalette lightPalette()
{
    return themed(QColor(239, 239, 239), Qt::white, Qt::black, QColor(130, 130, 130));
}

QPalette darkPalette()
{
    return themed(
        QColor(53, 53, 53), QColor(35, 35, 35), QColor(240, 240, 240), QColor(140, 140, 140));
}

// A window with one control, which has not the focus, so that there is no cursor in it.
struct Screen : Form
{
    MultiEditLineEdit* addField(unsigned int options = 0)
    {
        auto* field = MultiEditLineEdit::create(
            this, "Span", new DigitsValidator, options, ExpandHorizontal);
        field->setUnitString("mm");
        field->setValue(123);
        layout()->addWidget(field);
        show();
        return field;
    }

    MultiEditEnumBox* addEnumBox(const std::deque<QColor>& colours)
    {
        MultiEditEnumBox* box = MultiEditEnumBox::create(this, "Steel", vrn::any_equal<int>);
        box->setValues(steels(), {}, colours);
        layout()->addWidget(box);
        show();
        return box;
    }
};

// The key events come to the edit without the focus.
void typeInto(QLineEdit& edit, const QString& text)
{
    edit.selectAll();
    QTest::keyClicks(&edit, text);
}

Legibility legibilityOf(QLineEdit& edit)
{
    return legibility(edit, QRect(4, 3, 30, edit.height() - 6));
}

Legibility legibilityOf(QWidget& widget)
{
    return legibility(widget, widget.rect().adjusted(2, 2, -2, -2));
}

using Scene = std::function<Legibility(Screen&)>;

Scene fieldAfter(const std::function<void(MultiEditLineEdit&)>& change, unsigned int options = 0)
{
    return [=](Screen& screen) {
        MultiEditLineEdit* field = screen.addField(options);
        change(*field);
        return legibilityOf(*field->edit());
    };
}

Scene labelOf(unsigned int options, int index)
{
    return [=](Screen& screen) {
        return legibilityOf(*screen.addField(options)->findChildren<QLabel*>().at(index));
    };
}

Scene lastRowOf(const std::deque<QColor>& colours)
{
    return [=](Screen& screen) {
        QComboBox& combo = comboOf(*screen.addEnumBox(colours));
        combo.showPopup();
        QAbstractItemView& list = *combo.view();
        const QRect row = list.visualRect(list.model()->index(2, 0)) & list.viewport()->rect();
        return legibility(*list.viewport(), row.adjusted(3, 3, -3, -3));
    };
}

Scene editableBoxAfter(const QString& text)
{
    return [=](Screen& screen) {
        MultiEditEnumBox* box = screen.addEnumBox({});
        box->setEditable(true, strength());
        typeInto(*comboOf(*box).lineEdit(), text);
        return legibilityOf(*comboOf(*box).lineEdit());
    };
}

Legibility hint(Screen& screen)
{
    MultiEditLineEdit* field = screen.addField();
    EditHintPopup popup(field->edit());
    popup.setHint("a number of millimetres");
    popup.show();
    return legibilityOf(popup);
}

Legibility history(Screen& screen)
{
    MultiEditLineEdit* field = screen.addField();
    HistoryPopup popup(field->edit());
    popup.setValueHistory(historyOf({L"123", L"456"}));
    popup.show();
    return legibilityOf(popup);
}

void row(const char* name, double least, const Scene& scene)
{
    for (const bool isDark : {false, true}) {
        QTest::addRow("%s, on a %s palette", name, isDark ? "dark" : "light")
            << isDark << least << scene;
    }
}

} // namespace

Q_DECLARE_METATYPE(Scene)

class TestContrast : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void textStandsOutFromItsGround_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::addColumn<double>("least");
        QTest::addColumn<Scene>("scene");

        const auto nothing = [](MultiEditLineEdit&) {};
        const auto typed = [](MultiEditLineEdit& f) { typeInto(*f.edit(), "456"); };
        const auto refused = [](MultiEditLineEdit& f) { typeInto(*f.edit(), "xyz"); };
        const auto varies = [](MultiEditLineEdit& f) { f.forceVaries(); };
        const auto readOnly = [](MultiEditLineEdit& f) { f.setReadOnly(true); };
        const auto disabled = [](MultiEditLineEdit& f) { f.setEnabled(false); };
        const auto button = [](MultiEditLineEdit& f) {
            f.addButton([](const QString& text) { return text; }, QPixmap());
        };
        const auto both = [](auto first, auto second) {
            return [=](MultiEditLineEdit& f) {
                first(f);
                second(f);
            };
        };

        row("a value", 4.5, fieldAfter(nothing));
        row("a typed value", 4.5, fieldAfter(typed));
        row("a refused text", 4.5, fieldAfter(refused));
        row("varying", 4.5, fieldAfter(varies));
        row("varying after a typed value", 4.5, fieldAfter(both(typed, varies)));
        row("varying after a refused text", 4.5, fieldAfter(both(refused, varies)));
        row("read-only", 4.5, fieldAfter(readOnly));
        row("a typed value, read-only", 4.5, fieldAfter(both(typed, readOnly)));
        row("a refused text, read-only", 4.5, fieldAfter(both(refused, readOnly)));
        row("disabled", 2.5, fieldAfter(disabled));
        row("a typed value, disabled", 2.5, fieldAfter(both(typed, disabled)));
        row("a refused text, disabled", 2.5, fieldAfter(both(refused, disabled)));
        row("with a button", 4.5, fieldAfter(button));
        row("a typed value, with a button", 4.5, fieldAfter(both(button, typed)));
        row("a refused text, with a button", 4.5, fieldAfter(both(button, refused)));

        row("borderless", 4.5, fieldAfter(nothing, borderless));
        row("borderless, a typed value", 4.5, fieldAfter(typed, borderless));
        row("borderless, a refused text", 4.5, fieldAfter(refused, borderless));
        row("borderless, varying", 4.5, fieldAfter(varies, borderless));
        row("borderless, disabled", 2.5, fieldAfter(disabled, borderless));
        row("borderless, with a button", 4.5, fieldAfter(button, borderless));
        row("caption", 4.5, labelOf(0, 0));
        row("unit", 4.5, labelOf(0, 1));
        row("caption of a borderless field", 4.5, labelOf(borderless, 0));
        row("unit of a borderless field", 4.5, labelOf(borderless, 1));

        row("hint", 4.5, hint);
        row("history", 4.5, history);

        row("an editable box, a typed value", 4.5, editableBoxAfter("456"));
        row("an editable box, a refused text", 4.5, editableBoxAfter("xyz"));
        row("a row of a list", 4.5, lastRowOf({}));
        row("a row in a pale colour", 4.5, lastRowOf(std::deque<QColor>(3, QColor(255, 230, 190))));
        row("a row in a full colour", 4.5, lastRowOf(std::deque<QColor>(3, QColor(200, 0, 0))));
        row("a row in a dark colour", 4.5, lastRowOf(std::deque<QColor>(3, QColor(0, 0, 80))));
        row("a row in an invalid colour", 4.5, lastRowOf(std::deque<QColor>(3, QColor())));
        row("a row with a touch of a colour", 4.5,
            lastRowOf(std::deque<QColor>(3, QColor(255, 255, 0, 30))));
    }

    void textStandsOutFromItsGround()
    {
        QFETCH(bool, isDark);
        QFETCH(double, least);
        QFETCH(Scene, scene);
        QApplication::setPalette(isDark ? darkPalette() : lightPalette());
        Screen screen;
        const Legibility found = scene(screen);
        const QString text = QStringLiteral("%1 on %2: %3")
                                 .arg(found.text.name(), found.ground.name())
                                 .arg(found.contrast, 0, 'f', 2);
        qInfo("%s", qPrintable(text));
        QVERIFY2(found.contrast >= least, qPrintable(text));
    }

    void aReadOnlyFieldLooksIt_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::addColumn<bool>("isTyped");
        QTest::newRow("on a light palette") << false << false;
        QTest::newRow("on a light palette, with a typed value") << false << true;
        QTest::newRow("on a dark palette") << true << false;
        QTest::newRow("on a dark palette, with a typed value") << true << true;
    }

    void aReadOnlyFieldLooksIt()
    {
        QFETCH(bool, isDark);
        QFETCH(bool, isTyped);
        QApplication::setPalette(isDark ? darkPalette() : lightPalette());
        Screen screen;
        MultiEditLineEdit* field = screen.addField();
        if (isTyped)
            typeInto(*field->edit(), "456");
        const QColor ground = legibilityOf(*field->edit()).ground;
        field->setReadOnly(true);
        const Legibility readOnly = legibilityOf(*field->edit());
        QVERIFY2(contrast(readOnly.ground, ground) > 1.1, qPrintable(readOnly.ground.name()));
        field->setReadOnly(false);
        QCOMPARE(legibilityOf(*field->edit()).ground, ground);
    }
};

VRN_TEST(TestContrast)
#include "tst_contrast.moc"
