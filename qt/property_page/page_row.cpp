#include "page_row_p.h"

#include <vrn/qt/varies_string.h>

#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QSizePolicy>

#include "controls/parts/alive_p.h"
#include "row_caption_p.h"

#include <exception>
#include <utility>

namespace vrn::qt::detail {

namespace {

struct RowTexts
{
    Q_DECLARE_TR_FUNCTIONS(vrn::qt::PropertyPage)
};

RowEditor* makeOwnEditor(
    QWidget* parent, const PropertySelection::Row& property, const RowQuestions& questions)
{
    switch (property.field.shape()) {
    case Field::Shape::Flag:
        return makeFlagEditor(parent, property);
    case Field::Shape::Choice:
    case Field::Shape::Custom: // Without its editor it is shown and cannot be changed.
        return makeChoiceEditor(parent, property);
    case Field::Shape::Quantity:
    case Field::Shape::Number:
    case Field::Shape::Integer:
    case Field::Shape::Text:
        break;
    }
    return makeLineEditor(parent, property, questions);
}

/// Of a bare number. Empty for a kind that these units do not know, and for feet with inches,
/// which have two.
QString unitOf(const Field& field, const SharedUnits& units)
{
    namespace UnitId = vrn::units::UnitId;
    if (!units || field.shape() != Field::Shape::Quantity)
        return QString();
    try {
        const auto unit = units->format_provider().get_unit(field.kind());
        if (unit == UnitId::FEET_AND_FRACTIONAL_INCHES)
            return QString();
        return QString::fromStdString(units->get_display_label(field.kind()));
    } catch (const std::exception&) {
        return QString();
    }
}

} // namespace

PageRow::PageRow(PropertySelection::Row property, RowQuestions questions, int gridRow)
    : m_property(std::move(property))
    , m_questions(std::move(questions))
    , m_gridRow(gridRow)
{}

PageRow::~PageRow()
{
    dispose();
}

void PageRow::make(QWidget* parent, QGridLayout& grid)
{
    if (m_isMade)
        return;
    m_isMade = true;
    const QString key = QString::fromStdString(m_property.key);
    m_editor = makeRegisteredEditor(parent, m_property);
    m_isPolled = m_editor;
    if (!m_editor)
        m_editor = makeOwnEditor(parent, m_property, m_questions);
    QWidget* const widget = m_editor->widget();
    widget->setObjectName(key);
    widget->hide();
    m_caption = new RowCaption(m_property.caption, parent);
    m_caption->setObjectName(key + QStringLiteral(".caption"));
    m_caption->setBuddy(widget);
    m_caption->hide();
    grid.addWidget(m_caption, m_gridRow, 0);
    // The text beside a flag needs room, and its edge is not seen.
    grid.addWidget(widget, m_gridRow, 1, 1, m_property.field.shape() == Field::Shape::Flag ? 2 : 1);
    if (m_property.field.shape() == Field::Shape::Quantity) {
        m_unit = new QLabel(parent);
        m_unit->setObjectName(key + QStringLiteral(".unit"));
        m_unit->setTextFormat(Qt::PlainText);
        m_unit->hide();
        grid.addWidget(m_unit, m_gridRow, 2);
    }
    updateTexts();
}

void PageRow::dispose()
{
    m_isVisible = false;
    m_isPending = false;
    delete m_caption;
    delete m_unit;
    if (!m_editor)
        return;
    QWidget* const widget = m_editor->widget();
    m_editor->disconnect();
    m_editor.clear();
    disposeOf(widget);
}

void PageRow::setVisible(bool visible)
{
    m_isVisible = visible;
    if (m_caption)
        m_caption->setVisible(visible);
    if (m_editor)
        m_editor->widget()->setVisible(visible);
    updateUnit();
}

bool PageRow::isReadOnly() const
{
    return m_isPageReadOnly || !m_editor || m_property.isReadOnly()
        || m_state.kind == PropertyState::NoObject || m_state.kind == PropertyState::Unreadable;
}

void PageRow::setReadOnly(bool readOnly)
{
    m_isPageReadOnly = readOnly;
    updateReadOnly();
}

void PageRow::setEnabled(bool enabled)
{
    if (m_isEnabled == enabled)
        return;
    m_isEnabled = enabled;
    if (m_caption)
        m_caption->setEnabled(enabled);
    if (m_unit)
        m_unit->setEnabled(enabled);
    if (!m_editor)
        return;
    // The focus goes elsewhere now, and code that runs then may destroy anything.
    const Alive alive(m_editor, m_editor->widget());
    m_editor->widget()->setEnabled(enabled);
    if (alive)
        updateReadOnly();
}

void PageRow::updateReadOnly()
{
    // Some editors are enabled by this.
    if (m_editor && m_isEnabled)
        m_editor->setReadOnly(isReadOnly());
}

bool PageRow::isShown(const PropertyState& state, const SharedUnits& units) const
{
    return m_isShown && m_state.kind == state.kind && m_state.reason == state.reason
        && m_property.field.valueType().isSame(m_state.value, state.value) && m_units == units
        && state.kind != PropertyState::Varies;
}

void PageRow::take(const PropertyState& state, const SharedUnits& units)
{
    isDue = false;
    const bool isSame = isShown(state, units);
    m_state = state;
    m_units = units;
    m_isShown = isSame;
    if (!isSame && !isPending())
        show();
}

void PageRow::showIn(const SharedUnits& units)
{
    m_units = units;
    show();
}

void PageRow::setStale()
{
    m_isShown = false;
    isDue = true;
}

void PageRow::drop()
{
    m_isPending = false;
    m_isShown = false;
    m_isWanted = true;
    isDue = true;
}

void PageRow::remember()
{
    if (m_editor)
        m_editor->remember();
}

void PageRow::show()
{
    m_isPending = false;
    m_isWanted = false;
    m_isShown = true;
    m_reason.clear();
    if (!m_editor)
        return;
    // The editor may be the application's, and destroy anything.
    const QPointer<RowEditor> editor = m_editor;
    const PropertyState state = m_state;
    const SharedUnits units = m_units;
    editor->show(state, units ? *units : vrn::units::Context());
    if (!editor || editor != m_editor)
        return;
    updateReadOnly();
    updateTexts();
    updateUnit();
}

void PageRow::refuse(const QString& reason)
{
    m_isPending = true;
    if (m_editor)
        m_editor->refuse(reason);
    explain(reason);
}

void PageRow::explain(const QString& reason)
{
    m_reason = reason;
    updateTexts();
}

RowEntry PageRow::entry() const
{
    return m_editor ? m_editor->entry() : RowEntry();
}

bool PageRow::isPending() const
{
    return m_isPending
        || (m_isPolled && !m_isWanted && m_isVisible && m_isEnabled
            && entry().state != EditState::Untouched);
}

void PageRow::updatePending()
{
    const RowEntry now = entry();
    m_isPending = now.state != EditState::Untouched;
    if (now.reason != m_reason)
        m_reason.clear();
    updateTexts();
    updateUnit();
    // What was read while a text was pending.
    if (!m_isPending && !m_isShown && m_isMade)
        show();
}

QString PageRow::text() const
{
    return m_editor ? m_editor->text() : QString();
}

QString PageRow::status() const
{
    if (!m_reason.isEmpty())
        return m_reason;
    const QString ofEditor = m_editor->status();
    if (!ofEditor.isEmpty() || m_isPending)
        return ofEditor;
    if (m_state.kind == PropertyState::Varies)
        return RowTexts::tr("The selected objects differ.");
    return m_state.reason;
}

void PageRow::describeTo(QWidget* widget) const
{
    QStringList parts;
    if (!m_property.field.toolTip().isEmpty())
        parts << m_property.field.toolTip();
    const QString unit = unitOf(m_property.field, m_units);
    if (!unit.isEmpty())
        parts << unit;
    if (const QString status = this->status(); !status.isEmpty())
        parts << status;
    widget->setAccessibleName(m_property.title);
    widget->setAccessibleDescription(parts.join(QLatin1Char('\n')));
}

void PageRow::updateTexts()
{
    if (!m_editor)
        return;
    QWidget* const widget = m_editor->widget();
    describeTo(widget);
    if (QWidget* proxy = widget->focusProxy())
        describeTo(proxy);
    const QString toolTip = !m_reason.isEmpty()     ? m_reason
        : m_state.kind == PropertyState::Unreadable ? m_state.reason
                                                    : m_property.field.toolTip();
    widget->setToolTip(toolTip);
    if (m_caption)
        m_caption->setToolTip(m_property.field.toolTip());
}

void PageRow::updateUnit()
{
    if (!m_unit || !m_editor)
        return;
    const QString unit = unitOf(m_property.field, m_units);
    m_unit->setText(unit);
    // Its column keeps its width, but not the row of a hidden property its height.
    QSizePolicy policy = m_unit->sizePolicy();
    policy.setRetainSizeWhenHidden(m_isVisible);
    m_unit->setSizePolicy(policy);
    const bool isAlone = m_isVisible && !unit.isEmpty() && !m_editor->text().endsWith(unit);
    if (m_unit)
        m_unit->setVisible(isAlone);
}

} // namespace vrn::qt::detail
