#include "property_page_p.h"

#include <QEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMetaType>

#include "controls/parts/alive_p.h"

#include <optional>
#include <utility>

namespace vrn::qt {

using detail::Alive;

namespace {

// Loading the library is enough to find the argument of edited() by its name.
[[maybe_unused]] const int propertyReceipt = qRegisterMetaType<PropertyReceipt>(
    "vrn::qt::PropertyReceipt");

} // namespace

PropertyPage::PropertyPage(QWidget* parent)
    : QWidget(parent)
    , m_private(std::make_unique<Private>(*this))
{}

PropertyPage::~PropertyPage() = default;

PropertyModel* PropertyPage::model() const
{
    return m_private->model();
}

void PropertyPage::setModel(PropertyModel* model)
{
    m_private->select(model, m_private->ids());
}

void PropertyPage::setUndoStack(QUndoStack* stack)
{
    m_private->setStack(stack);
}

void PropertyPage::setHistory(boost::shared_ptr<vrn::IValueHistoryStorage> storage)
{
    m_private->setHistory(storage);
}

void PropertyPage::setSelection(const ObjectIds& ids)
{
    m_private->select(m_private->model(), ids);
}

const ObjectIds& PropertyPage::selection() const
{
    return m_private->ids();
}

bool PropertyPage::isReadOnly() const
{
    return m_private->isReadOnly();
}

void PropertyPage::setReadOnly(bool readOnly)
{
    m_private->setReadOnly(readOnly);
}

bool PropertyPage::isFilterVisible() const
{
    return m_private->form().isFilterVisible();
}

void PropertyPage::setFilterVisible(bool visible)
{
    m_private->form().setFilterVisible(visible);
}

bool PropertyPage::isReceiptVisible() const
{
    return m_private->form().isReceiptVisible();
}

void PropertyPage::setReceiptVisible(bool visible)
{
    m_private->form().setReceiptVisible(visible);
}

bool PropertyPage::isPending() const
{
    return m_private->isPending();
}

bool PropertyPage::finishEditing()
{
    return m_private->finish();
}

void PropertyPage::cancelEditing()
{
    m_private->cancelAll();
}

void PropertyPage::flush()
{
    m_private->flush();
}

PropertyReceipt PropertyPage::setValue(const std::string& key, const boost::any& value)
{
    return m_private->setValue(key, value);
}

QJsonObject PropertyPage::save()
{
    if (!m_private->applyPostponed() || !m_private->endAll(Private::Rest::Stays))
        return QJsonObject();
    // A copy, because saving runs functions of the model.
    const PropertySelection selection = m_private->selection();
    return selection.save();
}

PropertyReceipt PropertyPage::load(const QJsonObject& saved)
{
    return m_private->load(saved);
}

QByteArray PropertyPage::saveState() const
{
    return detail::toState(m_private->form().openSections());
}

bool PropertyPage::restoreState(const QByteArray& state)
{
    const std::optional<detail::OpenSections> sections = detail::fromState(state);
    if (sections)
        m_private->form().setOpenSections(*sections);
    return sections.has_value();
}

QWidget* PropertyPage::editor(const std::string& key)
{
    const Alive alive(this);
    m_private->form().open(key);
    if (!alive)
        return nullptr;
    const detail::SharedRow row = m_private->upToDate(key);
    return row ? row->widget() : nullptr;
}

PropertyRow PropertyPage::row(const std::string& key) const
{
    PropertyRow description;
    const detail::SharedRow row = m_private->upToDate(key);
    if (!row)
        return description;
    const detail::RowEntry entry = row->entry();
    description.state = row->state().kind;
    description.text = row->text();
    description.reason = entry.reason.isEmpty() ? row->state().reason : entry.reason;
    description.edit = entry.state;
    description.isReadOnly = row->isReadOnly();
    description.isEnabled = row->isEnabled();
    return description;
}

void PropertyPage::setVisible(bool visible)
{
    const Alive alive(this);
    // Before it is hidden, because Qt goes on with what it hides.
    if (!visible && isVisible())
        m_private->endAll(Private::Rest::IsDropped);
    if (alive)
        QWidget::setVisible(visible);
}

bool PropertyPage::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress: {
        auto* const key = static_cast<QKeyEvent*>(event);
        if (!isFilterVisible() || !key->matches(QKeySequence::Find))
            break;
        key->accept();
        if (event->type() == QEvent::KeyPress)
            m_private->form().focusFilter();
        return true;
    }
    case QEvent::Show:
        m_private->watchWindow();
        break;
    case QEvent::Hide:
        // A window that is minimised comes back with what was pending.
        if (!event->spontaneous() && !m_private->endAll(Private::Rest::IsDropped))
            return true;
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

bool PropertyPage::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_private->window() && event->type() == QEvent::Close) {
        const Alive alive(this);
        const QPointer<QObject> window(watched);
        if (m_private->closeLater()) {
            event->ignore();
            return true;
        }
        if (alive)
            m_private->endAll(Private::Rest::IsDropped);
        // There may be nobody left to receive it.
        if (!window)
            return true;
        if (!alive)
            return false;
    }
    return QWidget::eventFilter(watched, event);
}

void PropertyPage::changeEvent(QEvent* event)
{
    const Alive alive(this);
    QWidget::changeEvent(event);
    if (!alive)
        return;
    if (event->type() == QEvent::LanguageChange)
        m_private->form().retranslate(m_private->hint());
    if (event->type() == QEvent::LanguageChange || event->type() == QEvent::LocaleChange)
        m_private->showAgain();
}

} // namespace vrn::qt
