#include "property_page_p.h"

#include <vrn/companion_qt/connect.h>
#include <vrn/qt/property_error.h>

#include <QApplication>
#include <QTimer>
#include <QVBoxLayout>

#include "controls/parts/alive_p.h"

#include <algorithm>
#include <utility>

namespace vrn::qt {

using detail::Alive;
using detail::PageRow;
using detail::RowEntry;
using detail::SharedRow;

namespace {

bool isAmong(const std::string& key, const PropertyKeys& keys)
{
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

/// What a row shows, and whether the user may edit it.
struct RowReading
{
    PropertyState state;
    bool isEnabled = true;
};

/// The condition of a row is read with it, wherever its own row is.
std::vector<RowReading> readRows(
    const PropertySelection& selection, const std::vector<SharedRow>& rows)
{
    PropertyKeys keys;
    for (const SharedRow& row : rows)
        keys.push_back(row->key());
    for (const SharedRow& row : rows) {
        const std::string& condition = row->property().field.conditionKey();
        if (!condition.empty() && !isAmong(condition, keys))
            keys.push_back(condition);
    }
    const std::vector<PropertyState> states = selection.read(keys);
    std::vector<RowReading> readings(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        readings[i].state = states[i];
        const Field& field = rows[i]->property().field;
        const auto place = std::find(keys.begin(), keys.end(), field.conditionKey());
        if (place == keys.end())
            continue;
        const PropertyState& condition = states[std::size_t(place - keys.begin())];
        readings[i].isEnabled = condition.kind == PropertyState::NoObject
            || field.isEnabledBy(condition.value);
    }
    return readings;
}

std::vector<std::uint32_t> kindsOf(const ObjectIds& ids)
{
    std::vector<std::uint32_t> kinds;
    for (const ObjectId& id : ids) {
        if (kinds.empty() || kinds.back() != id.kind)
            kinds.push_back(id.kind);
    }
    return kinds;
}

/// Both are sorted.
bool haveCommon(const ObjectIds& a, const ObjectIds& b)
{
    auto i = a.begin();
    auto j = b.begin();
    while (i != a.end() && j != b.end()) {
        if (*i == *j)
            return true;
        if (*i < *j)
            ++i;
        else
            ++j;
    }
    return false;
}

} // namespace

PropertyPage::Private::Private(PropertyPage& page)
    : m_page(page)
    , m_form(new detail::PageForm(&page))
    , m_selection(std::make_shared<PropertySelection>())
    , m_links(std::make_unique<QObject>())
{
    auto* layout = new QVBoxLayout(&page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_form);
    QObject* const links = m_links.get();
    vrn_connect(m_form, &detail::PageForm::made, links, [this](PageRow* row) { onMade(*row); });
    vrn_connect(m_form, &detail::PageForm::hiding, links,
        [this](PageRow* row) { onEnded(row->key(), Rest::IsDropped, false); });
    vrn_connect(m_form, &detail::PageForm::arrangementDue, links, [this] { arrange(); });
    vrn_connect(m_form, &detail::PageForm::arranged, links, [this] { readDue(); });
    vrn_connect(qApp, &QApplication::focusChanged, links, [this] { m_gestureKey.reset(); });
    build();
}

PropertyPage::Private::~Private()
{
    // From here on, nothing is written.
    m_modelLinks.reset();
    m_stackLinks.reset();
    m_links.reset();
    detail::disposeOf(m_form);
}

// What is selected ----------------------------------------------------------------------

void PropertyPage::Private::select(PropertyModel* model, ObjectIds ids)
{
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    if (!m_isSelecting && model == m_model && ids == m_ids)
        return;
    m_nextModel = model;
    m_nextIds = std::move(ids);
    // Code that runs when a text ends may select, too. What is asked for last is shown.
    if (std::exchange(m_isSelecting, true))
        applyPostponed();
    else if (!postpone([this] { showNextSelection(); }))
        showNextSelection();
}

void PropertyPage::Private::showNextSelection()
{
    const Alive alive(&m_page);
    try {
        if (!endAll(Rest::IsDropped))
            return;
    } catch (...) {
        if (alive)
            m_isSelecting = false;
        throw;
    }
    m_isSelecting = false;
    const QPointer<PropertyModel> nextModel = m_nextModel;
    ObjectIds ids = std::exchange(m_nextIds, {});
    if (nextModel == m_model && ids == m_ids)
        return;

    const bool isOtherModel = m_model != nextModel;
    if (isOtherModel)
        setModel(nextModel);
    ++m_change;
    m_gestureKey.reset();
    m_ids = std::move(ids);
    m_selection = std::make_shared<PropertySelection>(m_model, m_ids, m_stack);
    m_form->setReceipt(QString());
    if (std::vector<std::uint32_t> kinds = kindsOf(m_ids); isOtherModel || kinds != m_kinds) {
        m_kinds = std::move(kinds);
        build();
        return;
    }
    for (const Row& row : m_form->rows())
        row->isDue = true;
    readDue();
}

void PropertyPage::Private::setModel(PropertyModel* model)
{
    m_modelLinks = std::make_unique<QObject>();
    m_model = model;
    m_units.reset();
    if (!model)
        return;
    m_units = std::make_shared<vrn::units::Context>(model->units());
    QObject* const links = m_modelLinks.get();
    vrn_connect(model, &PropertyModel::changed, links,
        [this](const PropertyKeys& keys, const ObjectIds& ids) { onChanged(keys, ids); });
    vrn_connect(model, &PropertyModel::unitsChanged, links, [this] { onUnitsChanged(); });
    vrn_connect(model, &PropertyModel::failed, links,
        [this](const QString& reason) { m_form->setReceipt(reason); });
    vrn_connect(
        model, &PropertyModel::writingEnded, links, [this] { applyPostponed() && readDue(); });
    vrn_connect(model, &QObject::destroyed, links, [this] {
        m_kinds.clear();
        ++m_change;
        m_selection = std::make_shared<PropertySelection>();
        applyPostponedLater();
        build();
    });
}

void PropertyPage::Private::build()
{
    const Alive alive(&m_page);
    const std::string focused = focusedKey();
    const auto selection = m_selection; // The focus goes, and a slot may select others.
    m_form->setProperties(
        selection->rows(), [this](const std::string& key) { return questions(key); }, hint());
    if (!alive || !updatePending() || focused.empty())
        return;
    const Row row = m_form->row(focused);
    if (row && row->isVisible() && row->widget())
        row->widget()->setFocus(Qt::OtherFocusReason);
}

std::string PropertyPage::Private::focusedKey() const
{
    const QWidget* focus = QApplication::focusWidget();
    for (const Row& row : m_form->rows()) {
        const QWidget* widget = row->widget();
        if (focus && widget && (widget == focus || widget->isAncestorOf(focus)))
            return row->key();
    }
    return std::string();
}

QString PropertyPage::Private::hint() const
{
    return m_model && !m_ids.empty() ? tr("The selected objects have no property in common.")
                                     : tr("Nothing is selected.");
}

detail::RowQuestions PropertyPage::Private::questions(const std::string& key)
{
    const QPointer<PropertyPage> page(&m_page);
    // Copies, because the questions run functions of the model.
    const auto selection = [page] {
        return page ? page->m_private->m_selection : std::make_shared<PropertySelection>();
    };
    detail::RowQuestions questions;
    questions.spread = [selection, key] {
        const auto asked = selection();
        return asked->row(key) ? asked->spread(key) : PropertySpread();
    };
    questions.preview = [selection, key](const boost::any& value) {
        const auto asked = selection();
        return asked->row(key) ? asked->preview(key, value).text : QString();
    };
    questions.history = m_history;
    return questions;
}

void PropertyPage::Private::setStack(QUndoStack* stack)
{
    m_stack = stack;
    m_stackLinks = std::make_unique<QObject>();
    if (stack) {
        // What was told of an edit does not hold after an undo.
        vrn_connect(stack, &QUndoStack::indexChanged, m_stackLinks.get(), [this] {
            if (!m_isWriting)
                m_form->setReceipt(QString());
        });
    }
    m_gestureKey.reset();
    m_selection = std::make_shared<PropertySelection>(m_model, m_ids, stack);
}

void PropertyPage::Private::setHistory(const boost::shared_ptr<vrn::IValueHistoryStorage>& history)
{
    if (history == m_history)
        return;
    m_history = history;
    if (!postpone([this] { showHistory(); }))
        showHistory();
}

void PropertyPage::Private::showHistory()
{
    if (!endAll(Rest::IsDropped))
        return;
    ++m_change;
    build();
}

void PropertyPage::Private::setReadOnly(bool readOnly)
{
    if (readOnly == m_isReadOnly)
        return;
    m_isReadOnly = readOnly;
    if (!postpone([this] { showReadOnly(); }))
        showReadOnly();
}

void PropertyPage::Private::showReadOnly()
{
    const Alive alive(&m_page);
    const auto showRows = [&] {
        const std::vector<Row> rows = alive ? m_form->rows() : std::vector<Row>();
        for (const Row& row : rows)
            row->setReadOnly(m_isReadOnly);
    };
    try {
        endAll(Rest::IsDropped);
    } catch (...) {
        showRows();
        throw;
    }
    showRows();
}

bool PropertyPage::Private::closeLater()
{
    const Alive alive(&m_page);
    const auto closeWindow = [this] {
        if (m_window)
            m_window->close();
    };
    return isBusy() && m_window->testAttribute(Qt::WA_DeleteOnClose) && isPending() && alive
        && postpone(closeWindow);
}

void PropertyPage::Private::watchWindow()
{
    QWidget* const window = m_page.window();
    if (window == m_window)
        return;
    if (m_window)
        m_window->removeEventFilter(&m_page);
    m_window = window;
    window->installEventFilter(&m_page);
}

// Reading -------------------------------------------------------------------------------

void PropertyPage::Private::onMade(PageRow& row)
{
    row.setReadOnly(m_isReadOnly);
    detail::RowEditor* const editor = row.editor();
    const std::string key = row.key();
    QObject* const links = m_links.get();
    vrn_connect(editor, &detail::RowEditor::changed, links, [this, key] {
        if (const Row changed = m_form->row(key)) {
            const Alive alive(&m_page, changed->widget());
            changed->updatePending();
            if (alive)
                updatePending();
        }
    });
    vrn_connect(editor, &detail::RowEditor::ended, links,
        [this, key](bool isInGesture) { onEnded(key, Rest::Stays, isInGesture); });
    vrn_connect(editor, &detail::RowEditor::cancelled, links, [this, key] {
        const Row cancelled = m_form->row(key);
        if (!cancelled || m_isWriting)
            return;
        const Alive alive(&m_page, cancelled->widget());
        cancelled->show();
        if (alive)
            updatePending();
    });
}

void PropertyPage::Private::onChanged(const PropertyKeys& keys, const ObjectIds& ids)
{
    if (!ids.empty() && !haveCommon(ids, m_ids))
        return;
    for (const Row& row : m_form->rows()) {
        if (keys.empty() || isAmong(row->key(), keys)
            || isAmong(row->property().field.conditionKey(), keys)) {
            row->isDue = true;
        }
    }
    readDue();
}

void PropertyPage::Private::onUnitsChanged()
{
    if (postpone([this] { onUnitsChanged(); }))
        return;
    // The entries are still in the units in which they were shown.
    if (!endAll(Rest::IsDropped) || !m_model)
        return;
    m_units = std::make_shared<vrn::units::Context>(m_model->units());
    showAgain();
}

void PropertyPage::Private::showAgain()
{
    if (postpone([this] { showAgain(); }))
        return;
    const Alive alive(&m_page);
    if (!endAll(Rest::IsDropped))
        return;
    const int change = m_change;
    const std::vector<Row> rows = m_form->rows();
    for (const Row& row : rows) {
        if (row->isVisible() && !row->isPending())
            row->showIn(m_units);
        else
            row->setStale();
        if (!alive || change != m_change)
            return;
    }
}

void PropertyPage::Private::arrange()
{
    if (!postpone([this] { arrange(); }))
        m_form->arrange();
}

bool PropertyPage::Private::read(const std::vector<Row>& rows)
{
    const Alive alive(&m_page);
    // What is half written is not read; the end of the write reads.
    if (rows.empty() || mustWait() || !alive)
        return bool(alive);
    const int change = m_change;
    const auto isCurrent = [&] { return alive && change == m_change; };
    for (const Row& row : rows)
        row->isDue = false;
    const auto selection = m_selection;
    std::vector<RowReading> readings = readRows(*selection, rows);
    bool hasEnded = false;
    for (std::size_t i = 0; isCurrent() && i < rows.size(); ++i) {
        // What was typed is written before its editor is disabled.
        if (!readings[i].isEnabled && rows[i]->isEnabled() && rows[i]->isPending()) {
            hasEnded = true;
            try {
                end(rows[i], Rest::IsDropped, false);
            } catch (...) {
                for (const Row& row : rows)
                    row->isDue = true;
                throw;
            }
        }
    }
    if (hasEnded && isCurrent())
        readings = readRows(*selection, rows);
    for (std::size_t i = 0; isCurrent() && i < rows.size(); ++i) {
        rows[i]->take(readings[i].state, m_units);
        if (isCurrent())
            rows[i]->setEnabled(readings[i].isEnabled);
    }
    return bool(alive);
}

bool PropertyPage::Private::readDue()
{
    std::vector<Row> due;
    for (const Row& row : m_form->rows()) {
        if (row->isDue && row->isVisible())
            due.push_back(row);
    }
    return read(due);
}

void PropertyPage::Private::flush()
{
    const Alive alive(&m_page);
    if (m_model)
        m_model->flush();
    if (alive)
        readDue();
}

detail::SharedRow PropertyPage::Private::upToDate(const std::string& key)
{
    const Alive alive(&m_page);
    const Row row = m_form->row(key);
    if (!row)
        return row;
    m_form->make(*row);
    return alive && (!row->isDue || read({row})) ? row : nullptr;
}

// Editing -------------------------------------------------------------------------------

bool PropertyPage::Private::isPending() const
{
    const std::vector<Row> rows = m_form->rows();
    return std::any_of(rows.begin(), rows.end(), [](const Row& row) { return row->isPending(); });
}

bool PropertyPage::Private::updatePending()
{
    const Alive alive(&m_page);
    const bool pending = isPending();
    if (!alive)
        return false;
    if (std::exchange(m_wasPending, pending) == pending)
        return true;
    Q_EMIT m_page.pendingChanged(pending);
    return bool(alive);
}

bool PropertyPage::Private::refuse(const QString& caption, const QString& reason)
{
    const Alive alive(&m_page);
    Q_EMIT m_page.refused(caption, reason);
    return bool(alive);
}

void PropertyPage::Private::onEnded(const std::string& key, Rest rest, bool isInGesture)
{
    // A dialog in the write takes the focus from the field that is being written.
    if (m_isWriting && key == m_written)
        return;
    if (postpone([=] { onEnded(key, rest, isInGesture); }))
        return;
    if (const Row row = m_form->row(key))
        end(row, rest, isInGesture);
}

bool PropertyPage::Private::end(const Row& row, Rest rest, bool isInGesture)
{
    const Alive alive(&m_page, row->widget());
    // What judges a text may be the application's, and select other objects.
    const int change = m_change;
    // A list that is still open does not edit a row that was disabled meanwhile.
    const RowEntry entry = row->isEnabled() ? row->entry() : RowEntry();
    if (!alive || change != m_change)
        return bool(alive);
    if (entry.state == EditState::Complete)
        return write(row, entry.value, rest, isInGesture);
    const bool stays = entry.state != EditState::Untouched && rest == Rest::Stays;
    if (stays)
        row->explain(entry.reason);
    else
        row->show();
    return alive && updatePending() && (!stays || refuse(row->property().title, entry.reason));
}

bool PropertyPage::Private::endAll(Rest rest)
{
    const Alive alive(&m_page);
    if (postpone([this, rest] { endAll(rest); }))
        return bool(alive);
    const std::vector<Row> rows = m_form->rows();
    for (const Row& row : rows) {
        if (row->isPending() && !end(row, rest, false))
            return false;
    }
    return bool(alive);
}

bool PropertyPage::Private::write(
    const Row& row, const boost::any& value, Rest rest, bool isInGesture)
{
    const Alive alive(&m_page, row->widget());
    const std::uint64_t gesture = gestureOf(*row, isInGesture);
    m_written = row->key();
    PropertyReceipt receipt;
    try {
        receipt = carryOut([&](PropertySelection& selection) {
            return selection.edit(row->key(), value, gesture);
        });
    } catch (const PropertyError& error) {
        if (!alive)
            return false;
        if (rest == Rest::IsDropped)
            row->show();
        else
            row->refuse(error.reason());
        return alive && applyPostponed() && readDue() && updatePending()
            && refuse(row->property().title, error.reason());
    } catch (...) {
        // A slot of the undo stack has thrown, and the edit is written.
        if (alive) {
            row->drop();
            row->remember();
        }
        throw;
    }
    if (!alive)
        return false;
    row->drop();
    row->remember(); // The history is the application's.
    return alive && afterWrite(receipt);
}

PropertyReceipt PropertyPage::Private::carryOut(const Act& act)
{
    if (m_isWriting)
        throw PropertyError(tr("Another edit is being written."));
    struct Writing
    {
        explicit Writing(Private& all)
            : alive(&all.m_page)
            , page(all)
        {
            page.m_isWriting = true;
        }
        ~Writing()
        {
            if (!alive)
                return;
            page.m_isWriting = false;
            page.m_written.clear();
            // A slot that throws may keep the page from doing it at once.
            page.applyPostponedLater();
        }
        const Alive alive;
        Private& page;
    };
    const auto selection = m_selection;
    const Writing writing(*this);
    return act(*selection);
}

bool PropertyPage::Private::afterWrite(const PropertyReceipt& receipt)
{
    const Alive alive(&m_page);
    flush();
    if (!alive || !applyPostponed() || !readDue() || !updatePending())
        return false;
    m_form->setReceipt(receipt.text);
    Q_EMIT m_page.edited(receipt);
    return bool(alive);
}

bool PropertyPage::Private::mustWait() const
{
    return m_isWriting || (isBusy() && (!m_postponed.empty() || isPending()));
}

bool PropertyPage::Private::postpone(std::function<void()> act)
{
    const Alive alive(&m_page);
    const bool waits = mustWait();
    if (waits && alive)
        m_postponed.push_back(std::move(act));
    return waits || !alive;
}

bool PropertyPage::Private::applyPostponed()
{
    const Alive alive(&m_page);
    while (alive && !isBusy() && !m_postponed.empty()) {
        const std::function<void()> act = std::move(m_postponed.front());
        m_postponed.pop_front();
        try {
            act();
        } catch (...) {
            if (alive)
                applyPostponedLater();
            throw;
        }
    }
    return bool(alive);
}

void PropertyPage::Private::applyPostponedLater()
{
    if (!m_postponed.empty())
        QTimer::singleShot(0, m_links.get(), [this] { applyPostponed(); });
}

std::uint64_t PropertyPage::Private::gestureOf(const PageRow& row, bool isInGesture)
{
    static std::uint64_t last = 0; // Pages may share an undo stack.
    if (!isInGesture) {
        m_gestureKey.reset();
        return 0;
    }
    if (m_gestureKey != row.key()) {
        m_gestureKey = row.key();
        m_gesture = ++last;
    }
    return m_gesture;
}

bool PropertyPage::Private::finish()
{
    if (isBusy())
        return !isPending();
    const Alive alive(&m_page);
    if (!applyPostponed())
        return true;
    const std::vector<Row> rows = m_form->rows();
    std::vector<Row> tried;
    for (const Row& row : rows) {
        if (!row->isPending() || row->entry().state != EditState::Complete)
            continue;
        tried.push_back(row);
        if (!end(row, Rest::Stays, false))
            return true;
    }
    const auto first = std::find_if(
        rows.begin(), rows.end(), [](const Row& row) { return row->isPending(); });
    if (first == rows.end())
        return true;
    const Row& row = *first;
    const QString reason = row->entry().reason;
    row->refuse(reason);
    const Alive focusing(&m_page, row->widget());
    if (row->widget()) {
        row->widget()->setFocus(Qt::OtherFocusReason);
        if (alive)
            m_form->scrollTo(*row);
    }
    if (alive && std::find(tried.begin(), tried.end(), row) == tried.end())
        refuse(row->property().title, reason);
    return false;
}

void PropertyPage::Private::cancelAll()
{
    if (m_isWriting)
        return;
    const Alive alive(&m_page);
    const std::vector<Row> rows = m_form->rows();
    for (const Row& row : rows) {
        if (alive && row->isPending())
            row->show();
    }
    if (alive)
        updatePending();
}

PropertyReceipt PropertyPage::Private::setValue(const std::string& key, const boost::any& value)
{
    const Alive alive(&m_page);
    if (!applyPostponed())
        return {};
    m_gestureKey.reset();
    PropertyReceipt receipt;
    try {
        receipt = carryOut(
            [&](PropertySelection& selection) { return selection.edit(key, value); });
    } catch (const PropertyError&) {
        if (alive && applyPostponed())
            readDue();
        throw;
    }
    if (!alive)
        return receipt;
    if (const Row row = m_form->row(key))
        row->drop();
    if (alive)
        afterWrite(receipt);
    return receipt;
}

PropertyReceipt PropertyPage::Private::load(const QJsonObject& saved)
{
    const Alive alive(&m_page);
    if (!isBusy() && !(applyPostponed() && endAll(Rest::IsDropped)))
        return {};
    m_gestureKey.reset();
    PropertyReceipt receipt;
    try {
        receipt = carryOut([&](PropertySelection& selection) { return selection.load(saved); });
    } catch (const PropertyError&) {
        if (alive && applyPostponed())
            readDue();
        throw;
    }
    if (alive)
        afterWrite(receipt);
    return receipt;
}

} // namespace vrn::qt
