#include "pages/enum_boxes_page.h"

#include <vrn/base/any_predicates.h>
#include <vrn/qt/align_fields.h>
#include <vrn/qt/chained_validator.h>
#include <vrn/qt/integer_validator.h>
#include <vrn/qt/multi_edit_enum_box.h>
#include <vrn/qt/named_value_list_validator.h>

#include <boost/make_shared.hpp>

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>

#include "value_label.h"
#include "value_text.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace gallery {
namespace {

using namespace vrn::qt;

// Structural steels and their yield strength in N/mm2, after EN 1993-1-1.
NamedValueList steelGrades()
{
    return {{QStringLiteral("S235"), 235}, {QStringLiteral("S275"), 275},
        {QStringLiteral("S355"), 355}, {QStringLiteral("S460"), 460}};
}

NamedValueList sections()
{
    return {{QStringLiteral("Round bar"), std::string("round")},
        {QStringLiteral("Square bar"), std::string("square")},
        {QStringLiteral("Tube"), std::string("tube")},
        {QStringLiteral("I section"), std::string("i")},
        {QStringLiteral("Other"), std::string("other")}};
}

boost::shared_ptr<QPixmap> drawn(const std::function<void(QPainter&)>& draw)
{
    auto pixmap = boost::make_shared<QPixmap>(20, 20);
    pixmap->fill(Qt::transparent);
    QPainter painter(pixmap.get());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(95, 125, 170));
    draw(painter);
    return pixmap;
}

// The last entry has no picture.
PixmapPtrList sectionPictures()
{
    return {drawn([](QPainter& p) { p.drawEllipse(2, 2, 16, 16); }),
        drawn([](QPainter& p) { p.drawRect(3, 3, 14, 14); }), drawn([](QPainter& p) {
            p.drawEllipse(2, 2, 16, 16);
            p.setCompositionMode(QPainter::CompositionMode_Clear);
            p.drawEllipse(6, 6, 8, 8);
        }),
        drawn([](QPainter& p) {
            p.drawRect(3, 2, 14, 3);
            p.drawRect(9, 5, 2, 10);
            p.drawRect(3, 15, 14, 3);
        })};
}

NamedValueList loadCases()
{
    return {{QStringLiteral("Dead load"), 1U}, {QStringLiteral("Imposed load"), 2U},
        {QStringLiteral("Wind"), 3U}, {QStringLiteral("Snow"), 4U}};
}

std::deque<QColor> loadColours()
{
    return {
        QColor(225, 225, 225), QColor(255, 230, 190), QColor(200, 230, 200), QColor(205, 225, 250)};
}

// Metric bolts. The user may also type any other diameter.
NamedValueList bolts()
{
    return {{QStringLiteral("M12"), 12}, {QStringLiteral("M16"), 16}, {QStringLiteral("M20"), 20},
        {QStringLiteral("M24"), 24}};
}

// Accepts the names of the entries, too: the colour of a text follows the validator alone.
IValidator::pointer diameter()
{
    auto names = std::make_unique<NamedValueListValidator>(bolts());
    names->set_equal_to(&vrn::any_equal<int>);
    std::deque<std::unique_ptr<IValidator>> members;
    members.push_back(std::move(names));
    members.push_back(std::make_unique<IntegerValidator<int>>(6, 64, false));
    auto validator = boost::make_shared<ChainedValidator>(std::move(members));
    validator->setEditHintFunction(
        [](const QString&) { return EnumBoxesPage::tr("a name, or 6 to 64 mm"); });
    return validator;
}

void select(MultiEditEnumBox* box, const std::vector<int>& values)
{
    box->reset();
    for (const int value : values)
        box->readValue(value);
}

} // namespace

EnumBoxesPage::EnumBoxesPage(QWidget* parent)
    : QWidget(parent)
    , m_grid(new QGridLayout(this))
{
    addHeader();

    auto* plain = SimpleEnumBox::create(this, tr("Steel &grade"), &vrn::any_equal<int>);
    plain->setValues(steelGrades());
    addRow(plain);

    auto* pictures = SimpleEnumBox::create(this, tr("&Section"), &vrn::any_equal<std::string>);
    pictures->setValues(sections(), sectionPictures());
    addRow(pictures);

    auto* colours = SimpleEnumBox::create(this, tr("&Load case"), &vrn::any_equal<unsigned int>);
    colours->setValues(loadCases(), {}, loadColours());
    addRow(colours);

    auto* editable = MultiEditEnumBox::create(this, tr("&Bolt"), &vrn::any_equal<int>);
    editable->setValues(bolts());
    editable->setEditable(true, diameter());
    editable->readValue(18);
    addRow(editable);

    auto* varying = MultiEditEnumBox::create(
        this, tr("Grade of &three beams"), &vrn::any_equal<int>);
    varying->setValues(steelGrades());
    select(varying, {355, 355, 235});
    addRow(varying);

    auto* varyingEditable = MultiEditEnumBox::create(
        this, tr("Bolts of a &joint"), &vrn::any_equal<int>);
    varyingEditable->setValues(bolts());
    varyingEditable->setEditable(true, diameter());
    select(varyingEditable, {20, 18});
    addRow(varyingEditable);

    const QList<SimpleEnumBox*> boxes = findChildren<SimpleEnumBox*>();
    alignFields(this, {boxes.begin(), boxes.end()});
    m_grid->setRowStretch(m_grid->rowCount(), 1);
}

void EnumBoxesPage::addHeader()
{
    int column = 0;
    for (const QString& title :
        {tr("Box"), tr("Value"), tr("Type"), tr("dataVaries()"), tr("valueChanged()")})
        m_grid->addWidget(new QLabel(QStringLiteral("<b>%1</b>").arg(title)), 0, column++);
    m_grid->setColumnMinimumWidth(0, fontMetrics().averageCharWidth() * 55);
    m_grid->setColumnMinimumWidth(1, fontMetrics().averageCharWidth() * 16);
    m_grid->setColumnMinimumWidth(2, fontMetrics().averageCharWidth() * 16);
    m_grid->setColumnStretch(0, 1);
    m_grid->setHorizontalSpacing(18);
}

void EnumBoxesPage::addRow(SimpleEnumBox* box)
{
    const Row row = {box, qobject_cast<MultiEditEnumBox*>(box), new ValueLabel, new ValueLabel,
        new ValueLabel, new ValueLabel};
    row.signalCount->setNum(0);
    const int line = m_grid->rowCount();
    int column = 0;
    for (QWidget* widget : {static_cast<QWidget*>(box), static_cast<QWidget*>(row.value),
             static_cast<QWidget*>(row.type), static_cast<QWidget*>(row.varies),
             static_cast<QWidget*>(row.signalCount)})
        m_grid->addWidget(widget, line, column++);
    refresh(row);

    connect(box, &SimpleEnumBox::valueChanged, this, [row] {
        row.signalCount->setNum(row.signalCount->text().toInt() + 1);
        refresh(row);
    });
    // Once the user types, a varying control does not vary any more.
    connect(
        box->findChild<QComboBox*>(), &QComboBox::editTextChanged, this, [row] { refresh(row); });
}

void EnumBoxesPage::refresh(const Row& row)
{
    const boost::any value = row.selection ? row.selection->getCurrentValue()
                                           : row.box->getSelectedValue();
    row.value->setText(valueText(value));
    row.type->setText(typeText(value));
    // A plain box knows nothing of a selection.
    row.varies->setText(!row.selection    ? QStringLiteral("-")
            : row.selection->dataVaries() ? QStringLiteral("true")
                                          : QStringLiteral("false"));
}

} // namespace gallery
