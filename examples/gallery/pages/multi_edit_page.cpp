#include "pages/multi_edit_page.h"

#include <vrn/base/any_predicates.h>
#include <vrn/q/input_context.h>
#include <vrn/qt/controls.h>
#include <vrn/qt/validators.h>

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "value_label.h"
#include "value_text.h"

namespace gallery {
namespace {

using namespace vrn::qt;
using Quantity = vrn::units::IConverter::quantity;
namespace UnitId = vrn::units::UnitId;

// The application stores this for a depth that the design will choose.
constexpr double noDepth = 0.0;

MultiEditLineEdit* createLineEdit(IValidator* validator)
{
    return MultiEditLineEdit::create(nullptr, QString(), validator, 0, ExpandHorizontal);
}

MultiEditLineEdit* createMeasuredSpan()
{
    auto* field = new MultiEditLineEditWithButton(new DoubleEditValidator(2, 0.0, 50.0, true), 0,
        [](QWidget*, int, boost::any& value) { value = 12.34; });
    field->getButton()->setText(QObject::tr("Measure"));
    return field;
}

MultiEditLineEdit* createOptionalDepth()
{
    return new MultiEditLineEditWithResetButton(
        new StringEditValidator(40), 0, [](int, boost::any& shown, boost::any& reported) {
            shown = std::wstring(L"Auto");
            reported = noDepth;
        });
}

MultiEditEnumBox* createGrades(QWidget* parent)
{
    auto* box = MultiEditEnumBox::create(parent, QString(), &vrn::any_equal<int>);
    box->setValues({{QStringLiteral("S235"), 235}, {QStringLiteral("S355"), 355}});
    return box;
}

MultiEditGroupBox* createCamber(QWidget* parent)
{
    auto* box = MultiEditGroupBox::create(MultiEditPage::tr("Cambered"), parent);
    auto* layout = new QHBoxLayout(box);
    layout->addWidget(new QLabel(MultiEditPage::tr("by a third of the sag")));
    return box;
}

MultiEditRadioButtonGroup* createSupports(QWidget* parent)
{
    HBoxLayouter row;
    return MultiEditRadioButtonGroup::create(MultiEditPage::tr("Support"),
        {{MultiEditPage::tr("Fixed"), 0}, {MultiEditPage::tr("Pinned"), 1},
            {MultiEditPage::tr("Free"), 2}},
        &vrn::any_equal<int>, &vrn::any_less<int>, parent, &row, true, false);
}

boost::any text(const wchar_t* value)
{
    return std::wstring(value);
}

boost::any stress(double kilonewtonPerSquareMetre)
{
    return Quantity{UnitId::MAT_STRESS, kilonewtonPerSquareMetre};
}

} // namespace

MultiEditPage::MultiEditPage(QWidget* parent)
    : QWidget(parent)
    , m_log(new QPlainTextEdit)
{
    auto* left = new QVBoxLayout;
    left->addWidget(createButtons());
    auto* form = new QWidget;
    left->addWidget(form);
    left->addStretch(1);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(left, 1);
    layout->addWidget(createLog());

    m_form.onCreate(form);
    m_form.onAdd(new QLabel(tr("<b>Field</b>")));
    addControl(tr("&Text"), createLineEdit(new StringEditValidator(40)), text(L"north wing"),
        text(L"south wing"));
    addControl(
        tr("&Number"), createLineEdit(new DoubleEditValidator(1, 0.0, 100.0, true)), 12.5, 80.0);
    addControl(tr("&Quantity"),
        createLineEdit(
            new UnitValidator(vrn::units::get_active_input_context(), UnitId::MAT_STRESS)),
        stress(235000.0), stress(355000.0));
    addControl(tr("With a &button"), createMeasuredSpan(), 7.62, 9.0);
    addControl(tr("With a &reset button"), createOptionalDepth(), text(L"300"), text(L"450"));
    addControl(tr("&List"), createGrades(this), 235, 355);
    addControl(tr("&Check box"), MultiEditCheckBox::create(tr("Painted"), this), true, false);
    addControl(tr("&Group box"), createCamber(this), true, false);
    addControl(tr("Radio buttons"), createSupports(this), 0, 1);
    addControl(tr("&File"), new MultiEditFilePicker(this, TypeofPathFile),
        std::string("/models/north.frame"), std::string("/models/south.frame"));
    m_form.onFinish();
    addValueColumns();
    readDifferent();
    m_log->clear();
}

QWidget* MultiEditPage::createButtons()
{
    auto* buttons = new QWidget;
    auto* layout = new QHBoxLayout(buttons);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const QString& title, const QString& explanation, auto action) {
        auto* button = new QPushButton(title);
        button->setToolTip(explanation);
        layout->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, title, action] {
            m_log->appendPlainText(title);
            action();
        });
    };
    add(tr("Reset"), tr("The controls forget what they have read"), [this] { reset(); });
    add(tr("Read 1"), tr("A selection of one object"), [this] { read({&Row::one}); });
    add(tr("Read equal"), tr("Three objects with equal values"), [this] {
        read({&Row::one, &Row::one, &Row::one});
    });
    add(tr("Read different"), tr("Three objects, one with other values"),
        [this] { readDifferent(); });
    add(tr("Force varies"), tr("As if the values differed"), [this] { forceVaries(); });
    layout->addStretch(1);
    return buttons;
}

QWidget* MultiEditPage::createLog()
{
    auto* log = new QWidget;
    auto* layout = new QVBoxLayout(log);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* caption = new QLabel(tr("<b>Signals</b>"));
    caption->setBuddy(m_log);
    layout->addWidget(caption);
    layout->addWidget(m_log);
    m_log->setReadOnly(true);
    m_log->setTabChangesFocus(true);
    m_log->setMinimumWidth(fontMetrics().averageCharWidth() * 34);
    return log;
}

void MultiEditPage::addValueColumns()
{
    QGridLayout* grid = m_form.layout();
    grid->setContentsMargins(0, 0, 0, 0);
    constexpr int variesColumn = 2;
    constexpr int lastColumn = 3;
    grid->addWidget(new QLabel(tr("<b>dataVaries()</b>")), 0, variesColumn);
    grid->addWidget(new QLabel(tr("<b>getCurrentValue()</b>")), 0, lastColumn);
    int line = 0;
    for (const Row& row : m_rows) {
        ++line;
        grid->addWidget(row.varies, line, variesColumn);
        grid->addWidget(row.value, line, lastColumn);
    }
    // Room for some twenty characters and a button.
    const int character = fontMetrics().averageCharWidth();
    grid->setColumnMinimumWidth(1, character * 30);
    grid->setColumnMinimumWidth(lastColumn, character * 22);
    grid->setHorizontalSpacing(14);
}

void MultiEditPage::addRow(const QString& caption, QWidget* widget, MultiEditControlBase* control,
    const boost::any& one, const boost::any& two)
{
    m_form.onAdd(widget, caption);
    const Row row = {QString(caption).remove(QLatin1Char('&')), control, one, two, new ValueLabel,
        new ValueLabel};
    m_rows.push_back(row);

    m_hooks.push_back(std::make_unique<OnValueChangedHook>(widget, [this, row] {
        show(row);
        m_log->appendPlainText(
            QStringLiteral("%1: valueChanged(), %2").arg(row.caption, row.value->text()));
    }));
    // After a keystroke, or a button that computes a value, a control no longer varies. No
    // signal says so.
    for (auto* edit : widget->findChildren<QLineEdit*>())
        connect(edit, &QLineEdit::textEdited, this, [row] { show(row); });
    for (auto* button : widget->findChildren<QToolButton*>())
        connect(button, &QToolButton::clicked, this, [row] { show(row); });
}

void MultiEditPage::reset()
{
    for (const Row& row : m_rows) {
        row.control->reset();
        // The control still shows what it had before, which may not be a value.
        show(row, tr("(nothing read)"));
    }
}

void MultiEditPage::read(const std::vector<boost::any Row::*>& objects)
{
    for (const Row& row : m_rows) {
        row.control->reset();
        for (const auto value : objects)
            row.control->readValue(row.*value);
        show(row);
    }
}

void MultiEditPage::readDifferent()
{
    read({&Row::one, &Row::two, &Row::one});
}

void MultiEditPage::forceVaries()
{
    for (const Row& row : m_rows) {
        row.control->forceVaries();
        show(row);
    }
}

void MultiEditPage::show(const Row& row)
{
    const boost::any value = row.control->getCurrentValue();
    show(row, value.empty() ? typeText(value) : valueText(value));
}

void MultiEditPage::show(const Row& row, const QString& value)
{
    const bool varies = row.control->dataVaries();
    row.varies->setText(varies ? QStringLiteral("true") : QStringLiteral("false"));
    row.value->setText(value);
}

} // namespace gallery
