#include "pages/hints_page.h"

#include <vrn/base/any_predicates.h>
#include <vrn/q/input_context.h>
#include <vrn/qt/align_fields.h>
#include <vrn/qt/chained_validator.h>
#include <vrn/qt/layouters.h>
#include <vrn/qt/multi_edit_radio_button_group.h>
#include <vrn/qt/multi_edit_value.h>
#include <vrn/qt/named_value_list.h>
#include <vrn/qt/optional_multi_edit_widget_base.h>
#include <vrn/qt/unit_validator.h>

#include <boost/core/demangle.hpp>

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>

#include "value_label.h"
#include "value_text.h"

namespace gallery {
namespace {

using namespace vrn::qt;
using Quantity = vrn::units::IConverter::quantity;
namespace UnitId = vrn::units::UnitId;

// A button that opens the dialog of a description. It keeps the value meanwhile.
class DialogEditor
    : public OptionalMultiEditWidgetBase
    , public MultiEditValue
{
public:
    DialogEditor(const DefaultEditorFactory& factory, const Hints& hints, QWidget* parent)
        : OptionalMultiEditWidgetBase(parent)
        , MultiEditValue(requireHint<EqualHint>(hints, "is_equal"))
    {
        auto* button = new QPushButton(QObject::tr("Ed&it..."));
        setFocusProxy(button);
        auto* layout = new QHBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, &factory, hints] {
            const auto editor = factory.create("callback", hints);
            editor->widget->setParent(this);
            editor->control->readValue(getCurrentValue());
        });
    }

    void store(const boost::any& value)
    {
        setValue(value);
        Q_EMIT valueChanged();
    }
};

// --- descriptions: what an application writes ------------------------------------------

Hints lineEdit(const char* type)
{
    Hints hints;
    setTextHint(hints, "editor", "lineedit");
    setTextHint(hints, "validator.type", type);
    return hints;
}

Hints quantity(UnitId::UnitId kind)
{
    Hints hints = lineEdit("unit");
    setHint<UnitId::UnitId>(hints, "validator.unit_id", kind);
    return hints;
}

Hints loadFactor()
{
    Hints hints = lineEdit("double");
    setHint<bool>(hints, "optional", true);
    setDefaultTextHint(hints, "default_fn", [](const QString&) { return QStringLiteral("1.35"); });
    return hints;
}

Hints enumBox(const char* editor, const NamedValueList& values)
{
    Hints hints;
    setTextHint(hints, "editor", editor);
    setHint<NamedValueList>(hints, "values", values);
    setEqualHint(hints, "equal_value_fn", &vrn::any_equal<int>);
    return hints;
}

template <typename T>
Hints valueOf()
{
    Hints hints;
    setHint<ValidatorKind>(hints, "validator.kind", kindOf<T>());
    return hints;
}

template <typename T>
Hints valueBetween(T minimum, T maximum)
{
    Hints hints = valueOf<T>();
    setHint<T>(hints, "validator.minimum", minimum);
    setHint<T>(hints, "validator.maximum", maximum);
    return hints;
}

Hints optionalCover()
{
    Hints hints = valueBetween(0.0, 0.2);
    setHint<bool>(hints, "validator.optional", true);
    return hints;
}

Hints shortText()
{
    Hints hints = valueOf<std::string>();
    setHint<int>(hints, "validator.max_length", 12);
    return hints;
}

Hints paint()
{
    Hints hints;
    setHint<ValidatorKind>(hints, "validator.kind", kindOf<std::string>("color"));
    return hints;
}

// The page adds this kind to the validator factory.
Hints slenderness()
{
    Hints hints;
    setHint<ValidatorKind>(hints, "validator.kind", kindOf<Quantity>());
    setHint<UnitId::UnitId>(hints, "validator.unit_id", UnitId::GEO_LENGTH);
    setHint<double>(hints, "validator.maximum", 2.5);
    return hints;
}

Hints namedValues(const NamedValueList& entries, EqualHint equal)
{
    Hints hints;
    setHint<NamedValueList>(hints, "entries", entries);
    setEqualHint(hints, "is_equal", equal);
    return hints;
}

// A diameter from the list, or another one.
Hints boltSizes()
{
    const NamedValueList sizes = {{QStringLiteral("M16"), 16}, {QStringLiteral("M20"), 20}};
    Hints hints = namedValues(sizes, &vrn::any_equal<int>);
    setHint<bool>(hints, "editable", true);
    setHint<ValidatorKind>(hints, "validator.kind", kindOf<ChainedValidator>());
    setHint<std::vector<ValidatorKind>>(
        hints, "validator.chained_validators", {kindOf<NamedValueList>(), kindOf<int>()});
    setHint<NamedValueList>(hints, "validator.entries", sizes);
    setEqualHint(hints, "validator.is_equal", &vrn::any_equal<int>);
    setHint<int>(hints, "validator.minimum", 6);
    return hints;
}

// "yes", "no", or how much.
Hints cambering()
{
    Hints hints;
    setHint<ValidatorKind>(hints, "validator.kind", kindOf<ChainedValidator>());
    setHint<std::vector<ValidatorKind>>(
        hints, "validator.chained_validators", {kindOf<bool>(), kindOf<double>()});
    return hints;
}

Hints sectionDepth()
{
    Hints hints = valueOf<std::string>();
    setResetHint(hints, "reset_callback", [](int, boost::any& shown, boost::any& reported) {
        shown = std::string("Auto");
        reported = std::string();
    });
    return hints;
}

// Asks for a text, and stores it itself, because a control takes no second value.
bool askForRemark(QWidget* widget, boost::any& value)
{
    const QPointer<DialogEditor> editor = dynamic_cast<DialogEditor*>(widget->parentWidget());
    const auto* remark = boost::any_cast<std::string>(&value);
    bool accepted = false;
    const QString text = QInputDialog::getText(editor, QObject::tr("Remark"),
        QObject::tr("Remark:"), QLineEdit::Normal,
        remark ? QString::fromStdString(*remark) : QString(), &accepted);
    if (!accepted || !editor)
        return false;
    value = text.toStdString();
    editor->store(value);
    return true;
}

Hints remark()
{
    Hints hints;
    setEditHint(hints, "callback", &askForRemark);
    setEqualHint(hints, "is_equal", &vrn::any_differ<std::string>);
    return hints;
}

// --- what the application adds to the library ------------------------------------------

std::unique_ptr<IValidator> makeQuantity(const Hints& hints)
{
    auto validator = std::make_unique<UnitValidator>(
        vrn::units::get_active_input_context(), requireHint<UnitId::UnitId>(hints, "unit_id"));
    if (const double* maximum = findHint<double>(hints, "maximum"))
        validator->set_maximum(*maximum);
    return validator;
}

std::shared_ptr<DefaultValidatorFactory> validatorFactory()
{
    auto factory = std::make_shared<DefaultValidatorFactory>();
    factory->add<Quantity>("", &makeQuantity);
    return factory;
}

EditorMetaData metaDataOf(QWidget* widget, MultiEditControlBase* control)
{
    const QPointer<QWidget> alive = widget;
    return {widget,
        [=](const boost::any& value) {
            if (alive)
                control->setValue(value);
        },
        [=] {
            if (alive)
                control->forceVaries();
        },
        [=](boost::any& value) {
            if (!alive || control->dataVaries())
                return false;
            value = control->getCurrentValue();
            return true;
        }};
}

EditorMetaData makeRadioButtons(QWidget* parent, const Hints& hints)
{
    HBoxLayouter row;
    auto* group = MultiEditRadioButtonGroup::create(QString(),
        requireHint<NamedValueList>(hints, "values"),
        requireHint<EqualHint>(hints, "equal_value_fn"), &vrn::any_less<int>, parent, &row, true,
        false);
    return metaDataOf(group, group);
}

// --- descriptions as text --------------------------------------------------------------

QString kindText(const ValidatorKind& kind)
{
    if (kind.first == typeid(std::string))
        return QString::fromStdString("std::string " + kind.second).trimmed();
    if (kind.first == typeid(NamedValueList))
        return QStringLiteral("NamedValueList");
    return QString::fromStdString(boost::core::demangle(kind.first.name()))
        .remove(QRegularExpression(QStringLiteral("[^ ]*::|<.*>")));
}

QString hintText(const boost::any& hint)
{
    const QString separator = QStringLiteral("\u00a0|\u00a0");
    QStringList names;
    if (const auto* kind = boost::any_cast<ValidatorKind>(&hint))
        return kindText(*kind);
    if (const auto* kinds = boost::any_cast<std::vector<ValidatorKind>>(&hint)) {
        for (const ValidatorKind& kind : *kinds)
            names += kindText(kind);
        return names.join(separator);
    }
    if (const auto* entries = boost::any_cast<NamedValueList>(&hint)) {
        for (const auto& entry : *entries)
            names += entry.first;
        return names.join(separator);
    }
    if (const auto* kind = boost::any_cast<UnitId::UnitId>(&hint))
        return QString::number(*kind);
    if (typeText(hint) == QString::fromLatin1(hint.type().name()))
        return QStringLiteral("function");
    return valueText(hint);
}

// A line is not broken between a key and its value.
QStringList hintTexts(const Hints& hints)
{
    QStringList texts;
    for (const auto& [path, child] : hints) {
        const QString key = QString::fromStdString(path);
        if (!child.data().empty())
            texts += key + QStringLiteral("\u00a0=\u00a0") + hintText(child.data());
        if (!child.empty())
            texts += key + QStringLiteral(" (%1)").arg(hintTexts(child).join(QStringLiteral(", ")));
    }
    return texts;
}

// Broken into lines of about the same width. A label that does this by itself asks for too
// much height.
QString inLines(const QStringList& texts)
{
    constexpr int longest = 64;
    QString lines;
    int length = 0;
    for (const QString& word : texts.join(QStringLiteral(", ")).split(QLatin1Char(' '))) {
        const bool fits = length + 1 + static_cast<int>(word.size()) <= longest;
        if (length > 0)
            lines += fits ? QLatin1Char(' ') : QLatin1Char('\n');
        lines += word;
        length = (fits ? length + 1 : 0) + static_cast<int>(word.size());
    }
    return lines;
}

} // namespace

HintsPage::HintsPage(QWidget* parent)
    : QWidget(parent)
    , m_grid(new QGridLayout(this))
    , m_factory(validatorFactory())
{
    auto* vary = new QCheckBox(tr("The objects &differ"));
    connect(vary, &QCheckBox::toggled, this, &HintsPage::letVary);
    m_grid->addWidget(vary, 0, 0, 1, 4);
    int column = 0;
    for (const QString& title : {tr("Property"), tr("Hints"), tr("Editor"), tr("Value")})
        m_grid->addWidget(new QLabel(QStringLiteral("<b>%1</b>").arg(title)), 1, column++);

    registerEditor("radiobuttons", &makeRadioButtons);
    addByFirstDoor();
    addByFactory();
    addDialogRow();

    const int character = fontMetrics().averageCharWidth();
    m_grid->setColumnMinimumWidth(2, character * 30);
    m_grid->setColumnMinimumWidth(3, character * 22);
    m_grid->setColumnStretch(2, 1);
    m_grid->setRowStretch(m_grid->rowCount(), 1);
    std::vector<QWidget*> editors;
    for (const Row& row : m_rows)
        editors.push_back(row.editor.widget);
    alignFields(this, editors);
}

HintsPage::~HintsPage()
{
    unregisterEditor("radiobuttons");
}

void HintsPage::addByFirstDoor()
{
    add(tr("&Name"), lineEdit("string"), std::string("B 12"));
    add(tr("&Span"), quantity(UnitId::GEO_LENGTH), Quantity{UnitId::GEO_LENGTH, 7.2});
    add(tr("Stress &limit"), quantity(UnitId::MAT_STRESS), Quantity{UnitId::MAT_STRESS, 235000.0});
    add(tr("A&xial force"), quantity(UnitId::BEAM_NFORCE), Quantity{UnitId::BEAM_NFORCE, 120.0});
    add(tr("&Offset"), lineEdit("distance"), 0.25);
    add(tr("Load &factor"), loadFactor(), 1.5);
    add(tr("&Grade"),
        enumBox("enumbox", {{QStringLiteral("S235"), 235}, {QStringLiteral("S355"), 355}}), 355);
    add(tr("S&upport"),
        enumBox("radiobuttons", {{tr("Fixed"), 0}, {tr("Pinned"), 1}, {tr("Free"), 2}}), 1);
}

void HintsPage::addByFactory()
{
    add(tr("&Mark"), "lineedit", shortText(), std::string("HEB 300"));
    add(tr("&Count"), "lineedit", valueBetween<int>(-10, 10), 3);
    add(tr("La&yer"), "lineedit", valueBetween<unsigned int>(1, 256), 12U);
    add(tr("&Port"), "lineedit", valueOf<unsigned short>(), static_cast<unsigned short>(8080));
    add(tr("&Ratio"), "lineedit", valueBetween(0.0, 1.0), 0.8);
    add(tr("Co&ver"), "lineedit", optionalCover(), 0.035);
    add(tr("Free lengt&h"), "unit", slenderness(), Quantity{UnitId::GEO_LENGTH, 1.8});
    add(tr("Colour"), "lineedit", paint(), std::wstring(L"#204060"));
    add(tr("&Visible"), "yes_no", Hints(), true);
    add(tr("Material"), "named_value_list",
        namedValues({{tr("Steel"), std::string("steel")}, {tr("Timber"), std::string("timber")}},
            &vrn::any_equal<std::string>),
        std::string("timber"));
    add(tr("&Bolts"), "named_value_list", boltSizes(), 16);
    add(tr("Camber"), "lineedit", cambering(), true);
    add(tr("D&epth"), "multi_edit_line_edit_with_reset_button", sectionDepth(), std::string("300"));
}

void HintsPage::addDialogRow()
{
    const Hints hints = remark();
    auto* editor = new DialogEditor(m_factory, hints, this);
    addRow(tr("Remark"), QStringList(QStringLiteral("callback")) + hintTexts(hints),
        metaDataOf(editor, editor), std::string("north wing"));
}

void HintsPage::add(const QString& name, const Hints& hints, const boost::any& value)
{
    addRow(name, hintTexts(hints), createEditorFromHints(this, hints), value);
}

void HintsPage::add(
    const QString& name, const char* editor, const Hints& hints, const boost::any& value)
{
    const auto made = m_factory.create(editor, hints);
    addRow(name, QStringList(QString::fromLatin1(editor)) + hintTexts(hints),
        metaDataOf(made->widget, made->control), value);
}

void HintsPage::addRow(const QString& name, const QStringList& description,
    const EditorMetaData& editor, const boost::any& value)
{
    auto* caption = new QLabel(name);
    caption->setBuddy(editor.widget);
    auto* hints = new QLabel(inLines(description));
    hints->setTextFormat(Qt::PlainText);
    const Row row = {editor, value, new ValueLabel};
    const int line = m_grid->rowCount();
    int column = 0;
    for (QWidget* widget : {static_cast<QWidget*>(caption), static_cast<QWidget*>(hints),
             editor.widget, static_cast<QWidget*>(row.shown)})
        m_grid->addWidget(widget, line, column++);
    m_rows.push_back(row);
    editor.setValue(value);
    show(row);

    m_hooks.push_back(std::make_unique<OnValueChangedHook>(editor.widget, [row] { show(row); }));
    // After a keystroke, or a button that computes a value, a control no longer varies. No
    // signal says so.
    for (auto* edit : editor.widget->findChildren<QLineEdit*>())
        connect(edit, &QLineEdit::textEdited, this, [row] { show(row); });
}

void HintsPage::letVary(bool varies)
{
    for (const Row& row : m_rows) {
        if (varies)
            row.editor.forceVaries();
        else
            row.editor.setValue(row.value);
        show(row);
    }
}

void HintsPage::show(const Row& row)
{
    boost::any value;
    if (!row.editor.getValue(value))
        row.shown->setText(tr("(varies)"));
    else
        row.shown->setText(value.empty() ? typeText(value) : valueText(value));
}

} // namespace gallery
