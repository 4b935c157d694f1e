#include "pages/line_edits_page.h"

#include <vrn/qt/align_fields.h>
#include <vrn/qt/simple_line_edit.h>
#include <vrn/qt/validators.h>
#include <vrn/qt/value_history.h>

#include <boost/make_shared.hpp>

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

#include "gallery_application.h"
#include "value_label.h"
#include "value_text.h"

#include <algorithm>
#include <limits>

namespace gallery {
namespace {

using namespace vrn::qt;

constexpr double pi = 3.14159265358979323846;

// Indices of <vrn/q/unit_index.h>.
constexpr int metre = 13;
constexpr int millimetre = 16;

bool equalDoubles(const boost::any& left, const boost::any& right)
{
    const auto* a = boost::any_cast<double>(&left);
    const auto* b = boost::any_cast<double>(&right);
    return a && b && *a == *b;
}

IValidator::pointer number()
{
    return boost::make_shared<DoubleEditValidator>(3, 0.0, 100.0, true);
}

IValidator::pointer optionalNumber()
{
    auto validator = boost::make_shared<DoubleEditValidator>(-1000.0, 1000.0);
    validator->setEmptyValueAllowed(true);
    return validator;
}

template <typename T>
IValidator::pointer integer(T min, T max)
{
    return boost::make_shared<IntegerValidator<T>>(min, max, true);
}

IValidator::pointer distance(int unit)
{
    return boost::make_shared<DistanceEditValidator>(unit, 0.0, 50.0, true);
}

IValidator::pointer freeText()
{
    return boost::make_shared<StringEditValidator>(40);
}

IValidator::pointer upperCaseName()
{
    auto validator = boost::make_shared<StringEditValidator>(12);
    validator->setUpperCase(true);
    validator->setAllowedRegex(L"[A-Z]+[0-9]*");
    validator->setStorageType(StringEditValidator::StorageTypeUtf8String);
    return validator;
}

// Structural steels and their yield strength in N/mm2, after EN 1993-1-1.
IValidator::pointer steelGrade()
{
    const NamedValueList grades = {{QStringLiteral("S235"), 235.0}, {QStringLiteral("S275"), 275.0},
        {QStringLiteral("S355"), 355.0}};
    auto validator = boost::make_shared<NamedValueListValidator>(grades);
    validator->set_equal_to(&equalDoubles);
    validator->enable_empty_value(QStringLiteral("(none)"));
    return validator;
}

IValidator::pointer numberOrAuto()
{
    auto names = std::make_unique<NamedValueListValidator>(
        NamedValueList{{QStringLiteral("auto"), std::string("auto")}});
    names->set_equal_to([](const boost::any& left, const boost::any& right) {
        return left.type() == right.type();
    });
    std::deque<std::unique_ptr<IValidator>> members;
    members.push_back(std::move(names));
    members.push_back(std::make_unique<DoubleEditValidator>(0.0, 1.0));
    return boost::make_shared<ChainedValidator>(std::move(members));
}

IValidator::pointer degreesOfRadian()
{
    auto validator = boost::make_shared<ConversionValidator>(
        boost::make_shared<DoubleEditValidator>(2, -360.0, 360.0, true));
    const auto scaleBy = [](double factor) {
        return [factor](boost::any& value) {
            if (auto* angle = boost::any_cast<double>(&value))
                *angle *= factor;
        };
    };
    validator->setConversionFn(scaleBy(180.0 / pi), scaleBy(pi / 180.0));
    return validator;
}

} // namespace

LineEditsPage::LineEditsPage(QWidget* parent)
    : QWidget(parent)
    , m_grid(new QGridLayout(this))
{
    addHeader();
    addRow(tr("&Number"), number(), 12.5, tr("0 to 100, clamped when editing ends"));
    addRow(tr("&Optional number"), optionalNumber(), boost::any(), tr("may be left empty"));
    addRow(tr("&Integer"), integer<int>(-1000, 1000), 42, tr("-1000 to 1000"));
    addRow(
        tr("&Unsigned integer"), integer<unsigned int>(0, 4000000000U), 7U, tr("0 to 4000000000"));
    addRow(tr("Unsigned &short"), integer<unsigned short>(0, 65535), static_cast<unsigned short>(8),
        tr("0 to 65535"));
    addRow(tr("Distance in &mm"), distance(millimetre), 0.25, tr("also 25 cm, 0.25 m; up to 50 m"))
        ->setUnitString(QStringLiteral("mm"));
    addRow(tr("&Distance in m"), distance(metre), 1.5, tr("also 150 cm; up to 50 m"))
        ->setUnitString(QStringLiteral("m"));
    addRow(tr("Free &text"), freeText(), std::wstring(L"north wing"), tr("up to 40 characters"));
    addRow(tr("U&pper case"), upperCaseName(), std::string("HEB300"), tr("letters, then digits"));
    addRow(tr("Steel &grade"), steelGrade(), 235.0, tr("S235, S275, S355 or (none)"));
    addRow(tr("Number or &auto"), numberOrAuto(), std::string("auto"), tr("a number, or auto"));
    addRow(tr("Ang&le in degree"), degreesOfRadian(), pi / 4, tr("kept in radian"));
    std::vector<QWidget*> edits;
    for (const Row& row : m_rows)
        edits.push_back(row.edit);
    alignFields(this, edits);
    m_grid->setRowStretch(m_grid->rowCount(), 1);

    // If one slot throws, the signal does not reach the row.
    if (const auto* application = qobject_cast<GalleryApplication*>(qApp)) {
        connect(application, &GalleryApplication::exceptionCaught, this,
            [this] { std::for_each(m_rows.begin(), m_rows.end(), &refresh); });
    }
}

SimpleLineEdit* LineEditsPage::addRow(const QString& caption, IValidator::pointer validator,
    const boost::any& value, const QString& explanation)
{
    validator->setEditHintFunction([explanation](const QString&) { return explanation; });
    auto* edit = SimpleLineEdit::create(this, caption, validator, 0, ExpandHorizontal);
    edit->setValueHistory(vrn::ValueHistory::create(L"gallery", caption.toStdWString()));
    edit->setValue(value);

    const Row row = {edit, new ValueLabel(this), new ValueLabel(this), new ValueLabel(this),
        new ValueLabel(this)};
    m_rows.push_back(row);
    const int line = m_grid->rowCount();
    int column = 0;
    for (QWidget* widget : {static_cast<QWidget*>(edit), static_cast<QWidget*>(row.value),
             static_cast<QWidget*>(row.type), static_cast<QWidget*>(row.valid),
             static_cast<QWidget*>(row.signalCount)})
        m_grid->addWidget(widget, line, column++);

    row.signalCount->setNum(0);
    connect(edit, &SimpleLineEdit::valueChanged, this, [row] {
        row.signalCount->setNum(row.signalCount->text().toInt() + 1);
        if (row.edit->isValueValid())
            row.edit->addCurrentValueToValueHistory();
        refresh(row);
    });
    connect(edit->edit(), &QLineEdit::textEdited, this, [row] { refresh(row); });
    refresh(row);
    return edit;
}

void LineEditsPage::addHeader()
{
    int column = 0;
    for (const QString& title :
        {tr("Field"), tr("getValue()"), tr("Type"), tr("isValueValid()"), tr("valueChanged()")}) {
        auto* label = new QLabel(QStringLiteral("<b>%1</b>").arg(title), this);
        m_grid->addWidget(label, 0, column++);
    }
    // Room for the caption, some twenty characters and a unit.
    m_grid->setColumnMinimumWidth(0, fontMetrics().averageCharWidth() * 55);
    m_grid->setColumnMinimumWidth(1, fontMetrics().averageCharWidth() * 26);
    m_grid->setColumnMinimumWidth(2, fontMetrics().averageCharWidth() * 16);
    m_grid->setColumnStretch(0, 3);
    m_grid->setColumnStretch(1, 2);
    m_grid->setHorizontalSpacing(18);
}

void LineEditsPage::refresh(const Row& row)
{
    const bool valid = row.edit->isValueValid();
    // If the text was refused, getValue() reports a broken contract.
    const boost::any value = valid ? row.edit->getValue() : boost::any();
    row.value->setText(valid ? valueText(value) : QString());
    row.type->setText(valid ? typeText(value) : QStringLiteral("-"));
    row.valid->setText(valid ? QStringLiteral("true") : QStringLiteral("false"));
}

} // namespace gallery
