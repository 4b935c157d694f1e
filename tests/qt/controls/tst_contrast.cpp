#include <vrn/qt/controls.h>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include "choices/enum_box_fixture.h"
#include "controls/popups/edit_hint_popup_p.h"
#include "controls/popups/history_popup_p.h"
#include "line_edits/line_edit_fixture.h"
#include "support/contrast.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <deque>
#include <functional>
#include <type_traits>
#include <vector>

using namespace vrn::qt;
using namespace vrn::test;
using vrn::qt::detail::EditHintPopup;
using vrn::qt::detail::HistoryPopup;

namespace {

constexpr unsigned int borderless = SimpleLineEdit::OptionBorderless;

// As Qt has it by itself, except for what stands out too little there. The palette alone
// decides on that, so it is for the application, see aControlLooksLikeItsNeighbours().
QPalette lightPalette()
{
    QPalette palette = QApplication::style()->standardPalette();
    palette.setColor(QPalette::Highlight, QColor(20, 90, 160));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(130, 130, 130));
    return palette;
}

QPalette darkPalette()
{
    const QColor window(53, 53, 53);
    QPalette palette(window, window);
    palette.setColor(QPalette::Base, QColor(35, 35, 35));
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    palette.setColor(QPalette::HighlightedText, Qt::black);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, QColor(240, 240, 240));
        palette.setColor(QPalette::Disabled, role, QColor(140, 140, 140));
    }
    palette.setColor(QPalette::Disabled, QPalette::Base, window);
    return palette;
}

// A window with one control, which does not have the focus, so that it shows no cursor.
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

Legibility legibilityOfRow(QAbstractItemView& list, int row)
{
    const QRect place = list.visualRect(list.model()->index(row, 0)) & list.viewport()->rect();
    return legibility(*list.viewport(), place.adjusted(3, 3, -3, -3));
}

Scene lastRowOf(const std::deque<QColor>& colours)
{
    return [=](Screen& screen) {
        QComboBox& combo = comboOf(*screen.addEnumBox(colours));
        combo.showPopup();
        return legibilityOfRow(*combo.view(), 2);
    };
}

// The list of an editable box is painted in another way.
Scene highlightedRowOf(const std::deque<QColor>& colours, bool isEditable = false)
{
    return [=](Screen& screen) {
        MultiEditEnumBox* box = screen.addEnumBox(colours);
        if (isEditable)
            box->setEditable(true, strength());
        QComboBox& combo = comboOf(*box);
        combo.showPopup();
        combo.view()->setCurrentIndex(combo.model()->index(2, 0));
        return legibilityOfRow(*combo.view(), 2);
    };
}

using Make = std::function<QWidget*(QWidget*)>;
using Change = std::function<void(QWidget&)>;

// The text `place` in the part of a control that is a `Part`, such as a QCheckBox.
template <typename Part>
Scene partOf(const Make& make, const QMargins& place, const Change& change)
{
    return [=](Screen& screen) {
        QWidget* control = make(&screen);
        screen.layout()->addWidget(control);
        auto* part = qobject_cast<Part*>(control);
        if (!part)
            part = control->findChild<Part*>();
        change(*control);
        screen.show();
        return legibility(*part, part->rect().marginsRemoved(place));
    };
}

void onBothPalettes(const char* name, double least, const Scene& scene)
{
    for (const bool isDark : {false, true}) {
        QTest::addRow("%s, on a %s palette", name, isDark ? "dark" : "light")
            << isDark << least << scene;
    }
}

template <typename Part>
void addPart(const char* name, const Make& make, const QMargins& place)
{
    const auto rows = [&](const char* state, double least, const Change& change) {
        onBothPalettes(qPrintable(QString(name) + state), least, partOf<Part>(make, place, change));
    };
    const auto vary = [](QWidget& control) {
        dynamic_cast<MultiEditControlBase&>(control).forceVaries();
    };
    rows("", 4.5, [](QWidget&) {});
    rows(", disabled", 2.5, [](QWidget& control) { control.setEnabled(false); });
    // A group box that varies is disabled by it.
    rows(", varying", std::is_same_v<Part, QGroupBox> ? 2.5 : 4.5, vary);
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

} // namespace

Q_DECLARE_METATYPE(Scene)
Q_DECLARE_METATYPE(Make)

class TestContrast : public vrn::test::TestObject
{
    Q_OBJECT

    static void addControls()
    {
        addPart<QComboBox>(
            "an enum box",
            [](QWidget* form) {
                auto* box = MultiEditEnumBox::create(form, {}, vrn::any_equal<int>);
                box->setValues(steels());
                return box;
            },
            QMargins(5, 3, 25, 3));
        addPart<QCheckBox>(
            "a check box", [](QWidget* form) { return MultiEditCheckBox::create("Painted", form); },
            QMargins(24, 2, 2, 2));
        const auto makeGroup = [](QWidget* form) {
            return MultiEditRadioButtonGroup::create("Steel grade", steels(), vrn::any_equal<int>,
                vrn::any_less<int>, form, nullptr, true, true);
        };
        addPart<QRadioButton>("a radio button", makeGroup, QMargins(24, 2, 2, 2));
        addPart<QGroupBox>("the title of a radio group", makeGroup, QMargins(4, 0, 4, 70));
        addPart<QGroupBox>(
            "the title of a group box",
            [](QWidget* form) {
                auto* box = MultiEditGroupBox::create("Fire protection", form);
                box->setFixedHeight(90);
                return box;
            },
            QMargins(24, 0, 4, 70));
        addPart<QLineEdit>(
            "a file picker",
            [](QWidget* form) {
                auto* picker = new MultiEditFilePicker(form, TypeofPathFile);
                picker->setValue(std::string("/home"));
                return picker;
            },
            QMargins(4, 3, 4, 3));
    }

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

        onBothPalettes("a value", 4.5, fieldAfter(nothing));
        onBothPalettes("a typed value", 4.5, fieldAfter(typed));
        onBothPalettes("a refused text", 4.5, fieldAfter(refused));
        onBothPalettes("varying", 4.5, fieldAfter(varies));
        onBothPalettes("varying after a typed value", 4.5, fieldAfter(both(typed, varies)));
        onBothPalettes("varying after a refused text", 4.5, fieldAfter(both(refused, varies)));
        onBothPalettes("read-only", 4.5, fieldAfter(readOnly));
        onBothPalettes("a typed value, read-only", 4.5, fieldAfter(both(typed, readOnly)));
        onBothPalettes("a refused text, read-only", 4.5, fieldAfter(both(refused, readOnly)));
        onBothPalettes("disabled", 2.5, fieldAfter(disabled));
        onBothPalettes("a typed value, disabled", 2.5, fieldAfter(both(typed, disabled)));
        onBothPalettes("a refused text, disabled", 2.5, fieldAfter(both(refused, disabled)));
        onBothPalettes("with a button", 4.5, fieldAfter(button));
        onBothPalettes("a typed value, with a button", 4.5, fieldAfter(both(button, typed)));
        onBothPalettes("a refused text, with a button", 4.5, fieldAfter(both(button, refused)));

        onBothPalettes("borderless", 4.5, fieldAfter(nothing, borderless));
        onBothPalettes("borderless, a typed value", 4.5, fieldAfter(typed, borderless));
        onBothPalettes("borderless, a refused text", 4.5, fieldAfter(refused, borderless));
        onBothPalettes("borderless, varying", 4.5, fieldAfter(varies, borderless));
        onBothPalettes("borderless, disabled", 2.5, fieldAfter(disabled, borderless));
        onBothPalettes("borderless, with a button", 4.5, fieldAfter(button, borderless));
        onBothPalettes("caption", 4.5, labelOf(0, 0));
        onBothPalettes("unit", 4.5, labelOf(0, 1));
        onBothPalettes("caption of a borderless field", 4.5, labelOf(borderless, 0));
        onBothPalettes("unit of a borderless field", 4.5, labelOf(borderless, 1));

        onBothPalettes("hint", 4.5, hint);
        onBothPalettes("history", 4.5, history);

        addControls();

        onBothPalettes("an editable box, a typed value", 4.5, editableBoxAfter("456"));
        onBothPalettes("an editable box, a refused text", 4.5, editableBoxAfter("xyz"));
        onBothPalettes("a row of a list", 4.5, lastRowOf({}));
        onBothPalettes(
            "a row in a pale colour", 4.5, lastRowOf(std::deque<QColor>(3, QColor(255, 230, 190))));
        onBothPalettes(
            "a row in a full colour", 4.5, lastRowOf(std::deque<QColor>(3, QColor(200, 0, 0))));
        onBothPalettes(
            "a row in a dark colour", 4.5, lastRowOf(std::deque<QColor>(3, QColor(0, 0, 80))));
        onBothPalettes(
            "a row in an invalid colour", 4.5, lastRowOf(std::deque<QColor>(3, QColor())));
        onBothPalettes("a row with a touch of a colour", 4.5,
            lastRowOf(std::deque<QColor>(3, QColor(255, 255, 0, 30))));
        onBothPalettes("a row in a half-transparent dark colour", 4.5,
            lastRowOf(std::deque<QColor>(3, QColor(0, 0, 80, 128))));
        onBothPalettes("a row in a half-transparent pale colour", 4.5,
            lastRowOf(std::deque<QColor>(3, QColor(255, 230, 190, 128))));
        onBothPalettes("a row in a half-transparent black", 4.5,
            lastRowOf(std::deque<QColor>(3, QColor(0, 0, 0, 140))));
        onBothPalettes("a row in a half-transparent white", 4.5,
            lastRowOf(std::deque<QColor>(3, QColor(255, 255, 255, 120))));
        onBothPalettes("a highlighted row", 4.5, highlightedRowOf({}));
        onBothPalettes("a highlighted row in a pale colour", 4.5,
            highlightedRowOf(std::deque<QColor>(3, QColor(255, 230, 190))));
        onBothPalettes("a highlighted row in a dark colour", 4.5,
            highlightedRowOf(std::deque<QColor>(3, QColor(0, 0, 80))));
        onBothPalettes("a highlighted row of an editable box", 4.5, highlightedRowOf({}, true));
        onBothPalettes("a highlighted row of an editable box, in a dark colour", 4.5,
            highlightedRowOf(std::deque<QColor>(3, QColor(0, 0, 80)), true));
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

    // A half-transparent colour needs another text when the palette changes.
    void aRowIsReadableAfterAChangeOfThePalette_data()
    {
        columns<QColor>("colour");
        row("a half-transparent dark colour", QColor(0, 0, 80, 128));
        row("a half-transparent white", QColor(255, 255, 255, 120));
        row("a touch of a colour", QColor(255, 255, 0, 30));
    }

    void aRowIsReadableAfterAChangeOfThePalette()
    {
        QFETCH(QColor, colour);
        QApplication::setPalette(lightPalette());
        Screen screen;
        QComboBox& combo = comboOf(*screen.addEnumBox(std::deque<QColor>(3, colour)));
        for (const QPalette& palette : {darkPalette(), lightPalette(), darkPalette()}) {
            QApplication::setPalette(palette);
            combo.showPopup();
            const Legibility found = legibilityOfRow(*combo.view(), 2);
            combo.hidePopup();
            QVERIFY2(found.contrast >= 4.5, qPrintable(found.ground.name()));
        }
    }

    // Where the palette alone decides, our controls look like all others in the window. On the
    // palette that Qt has by itself, disabled text has a contrast of 1.6 only, and a
    // highlighted row 3.7. An application that wants more sets it for all of its widgets.
    void aControlLooksLikeItsNeighbours_data()
    {
        columns<Make, Make>("ours", "plain");
        row("a line edit", Make([](QWidget* form) {
            auto* field = MultiEditLineEdit::create(
                form, {}, new DigitsValidator, 0, ExpandHorizontal);
            field->setValue(123);
            return field;
        }),
            Make([](QWidget* form) { return new QLineEdit("123", form); }));
        row("an enum box", Make([](QWidget* form) {
            auto* box = MultiEditEnumBox::create(form, {}, vrn::any_equal<int>);
            box->setValues(steels());
            return box;
        }),
            Make([](QWidget* form) {
                auto* box = new QComboBox(form);
                box->addItem("S235");
                return box;
            }));
        row("a check box",
            Make([](QWidget* form) { return MultiEditCheckBox::create("Painted", form); }),
            Make([](QWidget* form) { return new QCheckBox("Painted", form); }));
    }

    void aControlLooksLikeItsNeighbours()
    {
        QFETCH(Make, ours);
        QFETCH(Make, plain);
        QApplication::setPalette(QApplication::style()->standardPalette());
        std::vector<QImage> pictures;
        for (const Make& make : {ours, plain}) {
            Screen screen;
            QWidget* control = make(&screen);
            screen.layout()->addWidget(control);
            screen.show();
            control->setEnabled(false);
            QWidget* part = control;
            while (part->focusProxy())
                part = part->focusProxy();
            part->resize(120, 24);
            pictures.push_back(part->grab().toImage());
        }
        QCOMPARE(pictures[0], pictures[1]);
    }

    void aReadOnlyFieldLooksIt_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::addColumn<bool>("isTyped");
        QTest::addColumn<bool>("isFlat");
        for (const bool isFlat : {false, true}) {
            const char* flat = isFlat ? ", where a window has the ground of edits" : "";
            QTest::addRow("on a light palette%s", flat) << false << false << isFlat;
            QTest::addRow("on a light palette, with a typed value%s", flat)
                << false << true << isFlat;
            QTest::addRow("on a dark palette%s", flat) << true << false << isFlat;
            QTest::addRow("on a dark palette, with a typed value%s", flat)
                << true << true << isFlat;
        }
    }

    void aReadOnlyFieldLooksIt()
    {
        QFETCH(bool, isDark);
        QFETCH(bool, isTyped);
        QFETCH(bool, isFlat);
        QPalette palette = isDark ? darkPalette() : lightPalette();
        if (isFlat)
            palette.setBrush(QPalette::Window, palette.base());
        QApplication::setPalette(palette);
        Screen screen;
        MultiEditLineEdit* field = screen.addField();
        if (isTyped)
            typeInto(*field->edit(), "456");
        const QColor ground = legibilityOf(*field->edit()).ground;
        field->setReadOnly(true);
        const Legibility readOnly = legibilityOf(*field->edit());
        QVERIFY2(contrast(readOnly.ground, ground) > 1.1, qPrintable(readOnly.ground.name()));
        QVERIFY(readOnly.contrast >= 4.5);
        field->setReadOnly(false);
        QCOMPARE(legibilityOf(*field->edit()).ground, ground);
    }
};

VRN_TEST(TestContrast)
#include "tst_contrast.moc"
