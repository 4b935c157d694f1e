#include "pages/quantities_page.h"

#include <vrn/base/any_predicates.h>
#include <vrn/q/input_context.h>
#include <vrn/qt/align_fields.h>
#include <vrn/qt/simple_enum_box.h>
#include <vrn/qt/simple_line_edit.h>
#include <vrn/qt/unit_validator.h>
#include <vrn/qt/value_history.h>

#include <boost/make_shared.hpp>

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "unit_systems.h"
#include "value_label.h"

#include <map>

namespace gallery {
namespace {

using namespace vrn::qt;
using vrn::units::Context;
using vrn::units::UnitFormat;
using Quantity = vrn::units::IConverter::quantity;
namespace UnitId = vrn::units::UnitId;

// Sixteenths of an inch, as on a folding rule.
constexpr int inchFraction = 16;

// Lets a control read and write numbers in the user's locale. Controls always ask for the
// C locale, and only a validator can change that.
struct UserLocaleValidator : public ForwardValidator
{
    using ForwardValidator::ForwardValidator;

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& flags) override
    {
        return ForwardValidator::validate(text, value, withUserLocale(flags));
    }
    bool validateWhenFinished(
        const QString& text, boost::any& value, const std::bitset<32>& flags) override
    {
        return ForwardValidator::validateWhenFinished(text, value, withUserLocale(flags));
    }
    QString reformat(const boost::any& value, const std::bitset<32>& flags) override
    {
        return ForwardValidator::reformat(value, withUserLocale(flags));
    }

private:
    static std::bitset<32> withUserLocale(std::bitset<32> flags)
    {
        return flags.set(ValidationFlagUserLocale);
    }
};

bool userHasDecimalComma()
{
    std::bitset<32> userLocale;
    userLocale.set(ValidationFlagUserLocale);
    UnitValidator metres(Context(), UnitId::METRE);
    return metres.reformat(Quantity{UnitId::METRE, 0.5}, userLocale).contains(QLatin1Char(','));
}

} // namespace

QuantitiesPage::QuantitiesPage(QWidget* parent)
    : QWidget(parent)
    , m_system(SimpleEnumBox::create(this, tr("&Unit system"), &vrn::any_equal<int>))
    , m_decimalComma(new QCheckBox(tr("Decimal &comma, as in the user's locale")))
    , m_feetAndInches(new QCheckBox(tr("Lengths in &feet and inches")))
    , m_grid(new QGridLayout)
    , m_overview(new QGroupBox)
{
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(createChoices());
    layout->addLayout(m_grid);
    layout->addSpacing(9);
    layout->addWidget(createOverview());
    layout->addStretch(1);

    m_grid->addWidget(new QLabel(tr("<b>Field</b>")), 0, 0);
    m_grid->addWidget(new QLabel(tr("<b>Value in the base scale</b>")), 0, 1);
    m_grid->setColumnMinimumWidth(0, fontMetrics().averageCharWidth() * 50);
    m_grid->setColumnMinimumWidth(1, fontMetrics().averageCharWidth() * 30);
    m_grid->setColumnStretch(0, 1);
    m_grid->setHorizontalSpacing(18);

    m_rows.reserve(12); // the slots of a row hold its address
    addRow(UnitId::GEO_LENGTH, tr("Span"), 7.62);
    addRow(UnitId::GEO_AREA, tr("Floor area"), 148.65);
    addRow(UnitId::SECT_LENGTH, tr("Section height"), 0.3);
    addRow(UnitId::SECT_AREA, tr("Section area"), 0.0149);
    addRow(UnitId::BEAM_NFORCE, tr("Normal force"), -412.5);
    addRow(UnitId::BEAM_BENDING, tr("Bending moment"), 186.25);
    addRow(UnitId::LOAD_LINE, tr("Line load"), 12.5);
    addRow(UnitId::LOAD_AREA, tr("Area load"), 3.5);
    addRow(UnitId::MAT_STRESS, tr("Yield strength"), 355000.0);
    addRow(UnitId::MAT_MODULE, tr("Modulus of elasticity"), 2.1e8);
    addRow(UnitId::ANGLE, tr("Roof pitch"), 0.6108652381980153);
    addRow(UnitId::VELOCITY, tr("Wind speed"), 25.0);

    std::vector<QWidget*> edits;
    for (const Row& row : m_rows)
        edits.push_back(row.edit);
    alignFields(this, edits);
    rebuildValidators();
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* focused) {
        for (std::size_t row = 0; row < m_rows.size(); ++row) {
            if (m_rows[row].edit->edit() == focused)
                showInAllSystems(row);
        }
    });
}

QWidget* QuantitiesPage::createChoices()
{
    m_system->setValues(unitSystems());
    connect(m_system, &SimpleEnumBox::valueChanged, this, &QuantitiesPage::rebuildValidators);
    m_decimalComma->setEnabled(userHasDecimalComma());
    connect(m_decimalComma, &QCheckBox::toggled, this, &QuantitiesPage::rebuildValidators);
    connect(m_feetAndInches, &QCheckBox::toggled, this, &QuantitiesPage::rebuildValidators);

    auto* choices = new QWidget;
    auto* layout = new QHBoxLayout(choices);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_system);
    layout->addSpacing(18);
    layout->addWidget(m_decimalComma);
    layout->addWidget(m_feetAndInches);
    layout->addStretch(1);
    return choices;
}

QWidget* QuantitiesPage::createOverview()
{
    auto* layout = new QGridLayout(m_overview);
    constexpr int columns = 5;
    for (int system = 0; system < unitSystemCount; ++system) {
        auto* label = new QLabel;
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        layout->addWidget(label, system / columns, system % columns);
        m_inSystem.push_back(label);
    }
    return m_overview;
}

void QuantitiesPage::addRow(UnitId::UnitId kind, const QString& caption, double baseValue)
{
    auto validator = boost::make_shared<ForwardValidator>(nullptr);
    auto* edit = SimpleLineEdit::create(
        this, caption, boost::shared_ptr<IValidator>(validator), 0, ExpandHorizontal);
    edit->setValueHistory(vrn::ValueHistory::create(L"gallery", caption.toStdWString()));
    auto* label = new ValueLabel;
    const int line = m_grid->rowCount();
    m_grid->addWidget(edit, line, 0);
    m_grid->addWidget(label, line, 1);

    m_rows.push_back({kind, Quantity{kind, baseValue}, validator, edit, label});
    Row& row = m_rows.back();
    connect(edit, &SimpleLineEdit::valueChanged, this, [this, &row] { takeOver(row); });
}

// Only this function changes a value, when the user has entered another one.
void QuantitiesPage::takeOver(Row& row)
{
    if (!row.edit->isValueValid()) {
        row.baseValue->setText(tr("refused"));
        return;
    }
    // A user who leaves a field unchanged must not round its value to the shown digits.
    if (row.edit->edit()->text() != row.validator->reformat(row.value, 0)) {
        row.value = row.edit->getValue();
        row.edit->addCurrentValueToValueHistory();
    }
    showBaseValue(row);
    showInAllSystems(m_shownRow);
}

void QuantitiesPage::rebuildValidators()
{
    vrn::units::set_active_input_context(
        contextOf(boost::any_cast<int>(m_system->getSelectedValue())));
    for (Row& row : m_rows) {
        IValidator::pointer validator = boost::make_shared<UnitValidator>(
            vrn::units::get_active_input_context(), row.kind);
        if (m_decimalComma->isChecked())
            validator = boost::make_shared<UserLocaleValidator>(validator);
        row.validator->setValidator(validator);
        row.edit->setValue(row.value);
        showBaseValue(row);
    }
    showInAllSystems(m_shownRow);
}

void QuantitiesPage::showBaseValue(const Row& row)
{
    const double value = boost::any_cast<const Quantity&>(row.value).value;
    row.baseValue->setText(QString::number(value, 'g', QLocale::FloatingPointShortest));
}

void QuantitiesPage::showInAllSystems(std::size_t index)
{
    m_shownRow = index;
    const Row& row = m_rows[index];
    m_overview->setTitle(tr("%1 in all systems").arg(row.edit->edit()->accessibleName()));
    for (int system = 0; system < unitSystemCount; ++system) {
        UnitValidator validator(contextOf(system), row.kind);
        m_inSystem[static_cast<std::size_t>(system)]->setText(
            QStringLiteral("%1:  %2").arg(system).arg(validator.reformat(row.value, flags())));
    }
}

std::bitset<32> QuantitiesPage::flags() const
{
    return std::bitset<32>().set(ValidationFlagUserLocale, m_decimalComma->isChecked());
}

Context QuantitiesPage::contextOf(int system) const
{
    std::map<std::int32_t, UnitFormat> overrides;
    if (m_feetAndInches->isChecked()) {
        UnitFormat feetAndInches;
        feetAndInches.unit_id = UnitId::FEET_AND_FRACTIONAL_INCHES;
        feetAndInches.precision = inchFraction;
        overrides[UnitId::GEO_LENGTH] = feetAndInches;
    }
    return Context(system, overrides);
}

} // namespace gallery
