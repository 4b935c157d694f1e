#include "pages/groups_page.h"

#include <vrn/base/any_predicates.h>
#include <vrn/qt/controls.h>
#include <vrn/qt/integer_validator.h>
#include <vrn/qt/varies_string.h>

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "value_label.h"
#include "value_text.h"

namespace gallery {
namespace {

using namespace vrn::qt;

constexpr int valueColumn = 1;
constexpr int signalColumn = 2;

QString boolText(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QString currentText(const MultiEditControlBase& control)
{
    const boost::any value = control.getCurrentValue();
    if (value.empty())
        return getVariesString();
    const bool* checked = boost::any_cast<bool>(&value);
    return checked ? boolText(*checked) : valueText(value);
}

// The values in the order of the boxes.
QString currentText(const MultiEditCheckBoxGroup& group)
{
    QStringList texts;
    for (std::size_t i = 0; i < group.size(); ++i)
        texts << (group.dataVaries(i) ? getVariesString() : boolText(group.getValue(i)));
    return texts.join(QLatin1String(", "));
}

MultiEditRadioButtonGroup* createRadioGroup(const QString& title, const NamedValueList& values,
    QWidget* parent, ILayouter& layouter, bool useGroupBox)
{
    return MultiEditRadioButtonGroup::create(title, values, &vrn::any_equal<int>,
        &vrn::any_less<int>, parent, &layouter, useGroupBox, true);
}

} // namespace

GroupsPage::GroupsPage(QWidget* parent)
    : QWidget(parent)
{
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(createButtons());
    auto* columns = new QHBoxLayout;
    layout->addLayout(columns, 1);
    auto* checkBoxes = createColumn(
        tr("Check boxes"), QStringLiteral("false, false, ") + getVariesString());
    auto* radioGroups = createColumn(tr("Radio groups"), getVariesString());
    columns->addLayout(checkBoxes, 1);
    columns->addSpacing(fontMetrics().averageCharWidth() * 2);
    columns->addLayout(radioGroups, 1);

    fillCheckBoxes(checkBoxes);
    fillRadioGroups(radioGroups);
    for (QGridLayout* column : {checkBoxes, radioGroups})
        column->setRowStretch(column->rowCount(), 1);
    read({0, 1});
}

GroupsPage::~GroupsPage() = default;

QWidget* GroupsPage::createButtons()
{
    auto* buttons = new QWidget(this);
    auto* layout = new QHBoxLayout(buttons);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](const QString& title, const QString& explanation, auto action) {
        auto* button = new QPushButton(title, buttons);
        button->setToolTip(explanation);
        layout->addWidget(button);
        connect(button, &QPushButton::clicked, this, action);
    };
    add(tr("Reset"), tr("The controls forget what they have read"), [this] { reset(); });
    add(tr("Read equal"), tr("Two objects with equal values"), [this] { read({0, 0}); });
    add(tr("Read different"), tr("Two objects that differ"), [this] { read({0, 1}); });
    layout->addStretch(1);
    return buttons;
}

QGridLayout* GroupsPage::createColumn(const QString& title, const QString& longestValue)
{
    auto* column = new QGridLayout;
    int index = 0;
    for (const QString& text : {title, tr("Value"), tr("Signals")})
        column->addWidget(new QLabel(QStringLiteral("<b>%1</b>").arg(text), this), 0, index++);
    column->setColumnStretch(0, 1);
    column->setColumnMinimumWidth(
        valueColumn, fontMetrics().horizontalAdvance(longestValue + QLatin1Char(' ')));
    column->setHorizontalSpacing(12);
    return column;
}

void GroupsPage::fillCheckBoxes(QGridLayout* column)
{
    auto* visible = MultiEditCheckBox::create(tr("&Visible"), this);
    addControl(column, visible, visible, true, false);
    auto* locked = MultiEditCheckBox::create(tr("&Locked"), this);
    addControl(column, locked, locked, true, true);

    auto* fire = MultiEditGroupBox::create(tr("&Fire protection"), this);
    auto* coating = SimpleLineEdit::create(
        fire, QString(), new IntegerValidator<int>(0, 50, true), 0, ExpandHorizontal);
    coating->setUnitString(QStringLiteral("mm"));
    coating->setValue(20);
    PropertyGridLayouter form;
    form.onCreate(fire);
    form.onAdd(coating, tr("Coating"));
    form.onFinish();
    addControl(column, fire, fire, true, false);

    auto* supports = new QGroupBox(tr("Supports, in a row"), this);
    HBoxLayouter row;
    row.onCreate(supports);
    auto group = std::make_unique<MultiEditCheckBoxGroup>(supports, row,
        std::deque<QString>{QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("z")},
        std::deque<QString>{tr("Along the axis"), tr("Sideways"), tr("Upwards")});
    row.onFinish();
    addCheckBoxGroup(column, supports, std::move(group));

    // Two rows of one grid. An empty label keeps their columns aligned.
    auto* hinges = new QGroupBox(tr("Hinges, in a grid"), this);
    GridLayouter grid(ExpandHorizontal);
    grid.onCreate(hinges);
    auto forces = std::make_unique<MultiEditCheckBoxGroup>(hinges, grid,
        std::deque<QString>{QStringLiteral("N"), QStringLiteral("Vy"), QStringLiteral("Vz")},
        std::deque<QString>());
    grid.setPosition(1, 0);
    auto moments = std::make_unique<MultiEditCheckBoxGroup>(hinges, grid,
        std::deque<QString>{QString(), QStringLiteral("My"), QStringLiteral("Mz")},
        std::deque<QString>());
    grid.onFinish();
    addCheckBoxGroup(column, hinges, std::move(forces));
    addCheckBoxGroup(column, nullptr, std::move(moments));
}

void GroupsPage::fillRadioGroups(QGridLayout* column)
{
    const NamedValueList grades = {{QStringLiteral("S235"), 235}, {QStringLiteral("S275"), 275},
        {QStringLiteral("S355"), 355}};
    VBoxLayouter vertical;
    auto* grade = createRadioGroup(tr("Steel grade, in a column"), grades, this, vertical, true);
    addControl(column, grade, grade, 275, 355);

    const NamedValueList sides = {{tr("Left"), -1}, {tr("Middle"), 0}, {tr("Right"), 1}};
    HBoxLayouter horizontal;
    auto* side = createRadioGroup(tr("Alignment, in a row"), sides, this, horizontal, true);
    addControl(column, side, side, 0, 0);

    const NamedValueList turns = {{tr("0 deg"), 0}, {tr("90 deg"), 90}, {tr("180 deg"), 180}};
    GridLayouter grid(ExpandHorizontal);
    grid.setCellSkip(1);
    auto* turn = createRadioGroup(tr("Rotation, in a grid"), turns, this, grid, true);
    grid.layout()->setColumnStretch(grid.layout()->columnCount(), 1);
    addControl(column, turn, turn, 90, 180);

    // Without its own group box, because the buttons are among other properties.
    const NamedValueList roles = {{tr("Beam"), 1}, {tr("Column"), 2}};
    auto* properties = new QGroupBox(tr("Role, in a property grid"), this);
    PropertyGridLayouter propertyGrid;
    propertyGrid.onCreate(properties);
    propertyGrid.onAdd(new QLineEdit(QStringLiteral("B 12"), properties), tr("Mark"));
    auto* role = createRadioGroup(tr("Role"), roles, properties, propertyGrid, false);
    propertyGrid.onAdd(new QLineEdit(QStringLiteral("north wing"), properties), tr("Part"));
    propertyGrid.onFinish();
    addControl(column, properties, role, 1, 1);
}

template <typename Control>
void GroupsPage::addControl(QGridLayout* column, QWidget* widget, Control* control,
    const boost::any& one, const boost::any& two)
{
    Row row = {};
    row.valueText = [control] { return currentText(*control); };
    row.reset = [control] { control->reset(); };
    row.read = [control, one, two](int object) { control->readValue(object == 0 ? one : two); };
    row.endRead = [] {};
    addRow(column, widget, control, row);
}

void GroupsPage::addCheckBoxGroup(
    QGridLayout* column, QWidget* widget, std::unique_ptr<MultiEditCheckBoxGroup> group)
{
    MultiEditCheckBoxGroup* control = group.get();
    m_groups.push_back(std::move(group));
    Row row = {};
    row.valueText = [control] { return currentText(*control); };
    row.reset = [control] { control->reset(); };
    // The objects differ in the last box.
    row.read = [control](int object) {
        for (std::size_t i = 0; i < control->size(); ++i)
            control->readValue(i, object == 0 || i + 1 < control->size());
    };
    row.endRead = [control] { control->onEndRead(); };
    addRow(column, widget, control, row);
}

template <typename Control>
void GroupsPage::addRow(QGridLayout* column, QWidget* widget, Control* control, Row row)
{
    const int line = column->rowCount();
    // A widget with two controls is beside the rows of both.
    if (widget)
        column->addWidget(widget, line, 0);
    else
        column->addWidget(column->itemAtPosition(line - 1, 0)->widget(), line - 1, 0, 2, 1);
    row.value = new ValueLabel(this);
    row.signalCount = new ValueLabel(this);
    row.signalCount->setNum(0);
    column->addWidget(row.value, line, valueColumn);
    column->addWidget(row.signalCount, line, signalColumn);
    connect(control, &Control::valueChanged, this, [row] {
        row.signalCount->setNum(row.signalCount->text().toInt() + 1);
        refresh(row);
    });
    m_rows.push_back(row);
}

void GroupsPage::reset()
{
    for (const Row& row : m_rows) {
        row.reset();
        row.endRead();
        refresh(row);
    }
}

void GroupsPage::read(const std::vector<int>& objects)
{
    reset();
    for (const Row& row : m_rows) {
        for (const int object : objects)
            row.read(object);
        row.endRead();
        refresh(row);
    }
}

void GroupsPage::refresh(const Row& row)
{
    row.value->setText(row.valueText());
}

} // namespace gallery
