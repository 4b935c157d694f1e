#include "pages/entry_page.h"

#include <vrn/q/input_context.h>
#include <vrn/qt/align_fields.h>
#include <vrn/qt/distance_edit_validator.h>
#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/integer_validator.h>
#include <vrn/qt/simple_line_edit.h>
#include <vrn/qt/unit_validator.h>

#include <boost/make_shared.hpp>

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "value_label.h"
#include "value_text.h"

#include <utility>

namespace gallery {
namespace {

using namespace vrn::qt;
using vrn::units::EntryState;
namespace UnitId = vrn::units::UnitId;

IValidator::pointer entryIn(UnitId::UnitId kind)
{
    return boost::make_shared<UnitValidator>(vrn::units::get_active_input_context(), kind);
}

} // namespace

EntryPage::EntryPage(QWidget* parent)
    : QWidget(parent)
    , m_grid(new QGridLayout)
{
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(m_grid);
    layout->addStretch(1);

    m_grid->addWidget(new QLabel(tr("<b>Field</b>")), 0, 0);
    m_grid->addWidget(new QLabel(tr("<b>Value</b>")), 0, 1);
    m_grid->addWidget(new QLabel(tr("<b>Text that is read</b>")), 0, 2);
    m_grid->addWidget(new QLabel(tr("<b>Reason, or what happens</b>")), 0, 3);
    const int character = fontMetrics().averageCharWidth();
    for (const auto& [column, characters] : {std::pair(0, 44), {1, 26}, {2, 22}, {3, 48}})
        m_grid->setColumnMinimumWidth(column, character * characters);
    m_grid->setColumnStretch(3, 1);
    m_grid->setHorizontalSpacing(18);

    m_rows.reserve(13); // the slots of a row hold its address
    auto span = boost::make_shared<UnitValidator>(
        vrn::units::get_active_input_context(), UnitId::GEO_LENGTH);
    span->set_minimum(0.1);
    span->set_maximum(40.0);
    addRow(tr("&Span, 0.1 to 40 m"), span, QStringLiteral("5'-6\""));
    addRow(tr("Section h&eight"), entryIn(UnitId::SECT_LENGTH), QStringLiteral("30 cm + 1/2 in"));
    addRow(tr("Floor &area"), entryIn(UnitId::GEO_AREA), QStringLiteral("1600 sq ft"));
    addRow(tr("&Normal force"), entryIn(UnitId::LOAD_POINT), QStringLiteral("12 k"));
    addRow(tr("&Line load"), entryIn(UnitId::LOAD_LINE), QStringLiteral("0.8 kips/ft"));
    addRow(tr("Area loa&d"), entryIn(UnitId::LOAD_AREA), QStringLiteral("1.5 * 2 kN/m²"));
    addRow(tr("Bending &moment"), entryIn(UnitId::LOAD_MOMENT), QStringLiteral("150 kN·m"));
    addRow(tr("&Yield strength"), entryIn(UnitId::MAT_STRESS), QStringLiteral("355 N/mm²"));
    addRow(tr("Roof &pitch"), entryIn(UnitId::ANGLE), QStringLiteral("22 1/2°"));
    addRow(tr("Shrin&kage"), entryIn(UnitId::STRAIN), QStringLiteral("0,3 ‰"));
    addRow(tr("Fac&tor, 0 to 10"), boost::make_shared<DoubleEditValidator>(0.0, 10.0),
        QStringLiteral("12.5"));
    addRow(tr("&Bolts, 1 to 100, not beyond"),
        boost::make_shared<IntegerValidator<int>>(1, 100, false), QStringLiteral("5/2"),
        EntryRange::Refuse);
    auto cover = boost::make_shared<DistanceEditValidator>(UnitId::GEO_LENGTH, 0.0, 1.0, false);
    cover->showUnitPostfix(true);
    addRow(tr("&Cover, 0 to 1 m, not beyond"), cover, QStringLiteral("5 ft"), EntryRange::Refuse);

    std::vector<QWidget*> fields;
    for (const Row& row : m_rows)
        fields.push_back(row.field);
    alignFields(this, fields);
}

void EntryPage::addRow(
    const QString& caption, IValidator::pointer target, const QString& typed, EntryRange range)
{
    const auto entry = boost::make_shared<EntryValidator>(std::move(target), range);
    auto* field = SimpleLineEdit::create(this, caption, entry, 0, ExpandHorizontal);
    field->setCompletions([entry](const QString& text) { return entry->completions(text); });
    m_rows.push_back({entry, field, new ValueLabel, new ValueLabel, new ValueLabel});
    Row& row = m_rows.back();
    const int line = m_grid->rowCount();
    m_grid->addWidget(row.field, line, 0);
    m_grid->addWidget(row.value, line, 1);
    m_grid->addWidget(row.given, line, 2);
    m_grid->addWidget(row.reason, line, 3);
    connect(field->edit(), &QLineEdit::textEdited, this, [&row] { show(row); });
    connect(field, &SimpleLineEdit::valueChanged, this, [&row] { show(row); });
    field->edit()->insert(typed);
}

void EntryPage::show(const Row& row)
{
    const QString text = row.field->edit()->text();
    boost::any value;
    const bool isRead = row.entry->validateWhenFinished(text, value, {});
    const EntryReading reading = row.entry->read(text);
    row.value->setText(isRead ? valueText(value) : tr("refused"));
    row.given->setText(reading.text);
    QString reason = reading.state == EntryState::Complete ? reading.outcome : reading.reason;
    row.reason->setText(reason.replace(QLatin1Char('\n'), QStringLiteral("; ")));
}

} // namespace gallery
