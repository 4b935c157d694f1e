#include "page_form_p.h"

#include <vrn/companion_qt/connect.h>

#include <QApplication>
#include <QCoreApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QVBoxLayout>

#include "controls/parts/alive_p.h"
#include "section_head_p.h"

#include <algorithm>
#include <utility>

namespace vrn::qt::detail {

namespace {

struct FormTexts
{
    Q_DECLARE_TR_FUNCTIONS(vrn::qt::PropertyPage)
};

bool canTakeTab(const QWidget& widget)
{
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && !widget.isWindow() && !widget.focusProxy();
}

/// In the order in which they were made.
void addFocusable(QWidget* widget, QWidgetList& chain)
{
    if (canTakeTab(*widget))
        chain << widget;
    const QObjectList children = widget->children();
    for (QObject* child : children) {
        if (child->isWidgetType() && !static_cast<QWidget*>(child)->isWindow())
            addFocusable(static_cast<QWidget*>(child), chain);
    }
}

} // namespace

PageForm::PageForm(QWidget* parent)
    : QWidget(parent)
    , m_filter(new QLineEdit(this))
    , m_scroll(new QScrollArea(this))
    , m_content(new QWidget)
    , m_column(new QVBoxLayout(m_content))
    , m_hint(new QLabel(m_content))
    , m_receipt(new QLabel(this))
{
    m_filter->setObjectName(QStringLiteral("filter"));
    m_filter->setClearButtonEnabled(true);
    m_filter->installEventFilter(this);

    m_hint->setObjectName(QStringLiteral("hint"));
    m_hint->setWordWrap(true);
    m_hint->setAlignment(Qt::AlignCenter);
    // In line with the filter and the receipt.
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->addWidget(m_hint);
    m_column->addStretch();
    // It would be in the tab order.
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    m_scroll->setWidget(m_content);

    m_receipt->setObjectName(QStringLiteral("receipt"));
    m_receipt->setTextFormat(Qt::PlainText);
    m_receipt->setWordWrap(true);
    m_receipt->hide();

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_filter);
    column->addWidget(m_scroll);
    column->addWidget(m_receipt);
    retranslate(QString());

    vrn_connect(m_filter, &QLineEdit::textChanged, this, [this] {
        m_foldedInFilter.clear();
        Q_EMIT arrangementDue();
    });
}

PageForm::~PageForm()
{
    clear();
    disposeOf(m_filter);
    disposeOf(m_scroll);
}

void PageForm::retranslate(const QString& hint)
{
    m_emptyHint = hint;
    m_filter->setPlaceholderText(FormTexts::tr("Filter"));
    m_filter->setAccessibleName(FormTexts::tr("Filter of properties"));
    updateHint();
}

void PageForm::clear()
{
    // What goes may have the focus. It loses it while it is whole, as code of the application
    // runs then.
    const Alive alive(this);
    const auto rows = std::exchange(m_rows, {});
    const auto sections = std::exchange(m_sections, {});
    QWidget* const focus = QApplication::focusWidget();
    if (focus && m_content->isAncestorOf(focus))
        focus->clearFocus();
    for (const SharedRow& row : rows)
        row->dispose();
    for (const Section& section : sections) {
        if (alive)
            disposeOf(section.head);
    }
}

void PageForm::setProperties(const std::vector<PropertySelection::Row>& properties,
    const std::function<RowQuestions(const std::string&)>& questions, const QString& hint)
{
    const Alive alive(this);
    const int change = ++m_change;
    clear();
    if (!alive || change != m_change)
        return;
    m_emptyHint = hint;
    delete m_grid;
    m_grid = new QGridLayout;
    m_grid->setColumnStretch(1, 1);
    m_column->insertLayout(0, m_grid);

    int gridRow = 0;
    const auto addRowsOf = [&](Section& section) {
        for (const PropertySelection::Row& property : properties) {
            if (property.section.key != section.key)
                continue;
            m_rows.push_back(
                std::make_shared<PageRow>(property, questions(property.key), gridRow++));
            section.rows.push_back(m_rows.back());
        }
    };
    // Those without a section come first, and have no head.
    for (const bool hasTitle : {false, true}) {
        for (const PropertySelection::Row& property : properties) {
            const PropertySection& section = property.section;
            const bool isThere = std::any_of(m_sections.begin(), m_sections.end(),
                [&](const Section& each) { return each.key == section.key; });
            if (isThere || section.title.isEmpty() == hasTitle)
                continue;
            addSection(section, hasTitle ? gridRow++ : -1);
            addRowsOf(m_sections.back());
        }
    }
    arrange();
}

void PageForm::addSection(const PropertySection& section, int gridRow)
{
    SectionHead* head = nullptr;
    if (gridRow >= 0) {
        m_isOpen.emplace(section.key, section.isOpen);
        const std::string key = section.key;
        head = new SectionHead(QString::fromStdString(key), section.title, m_content);
        m_grid->addWidget(head, gridRow, 0, 1, 3);
        vrn_connect(head, &SectionHead::openRequested, this,
            [this, key](bool open) { requestOpen(key, open); });
        vrn_connect(
            head, &SectionHead::stepRequested, this, [this, head](int by) { step(head, by); });
    }
    m_sections.push_back({section.key, head, {}});
}

SharedRow PageForm::row(const std::string& key) const
{
    const auto found = std::find_if(
        m_rows.begin(), m_rows.end(), [&](const SharedRow& row) { return row->key() == key; });
    return found == m_rows.end() ? nullptr : *found;
}

void PageForm::make(PageRow& row)
{
    if (row.isMade())
        return;
    row.make(m_content, *m_grid);
    m_isTabOrderDue = true;
    Q_EMIT made(&row);
}

bool PageForm::isOpen(const std::string& section) const
{
    if (!m_filter->text().trimmed().isEmpty())
        return m_foldedInFilter.count(section) == 0;
    const auto found = m_isOpen.find(section);
    return found == m_isOpen.end() || found->second;
}

bool PageForm::isFound(const PageRow& row) const
{
    const QString wanted = m_filter->text().trimmed();
    return row.property().title.contains(wanted, Qt::CaseInsensitive)
        || QString::fromStdString(row.key()).contains(wanted, Qt::CaseInsensitive);
}

bool PageForm::isInView(const Section& section, const PageRow& row) const
{
    return (!section.head || isOpen(section.key)) && isFound(row);
}

void PageForm::requestOpen(const std::string& section, bool open)
{
    if (m_filter->text().trimmed().isEmpty())
        m_isOpen[section] = open;
    else if (open)
        m_foldedInFilter.erase(section);
    else
        m_foldedInFilter.insert(section);
    Q_EMIT arrangementDue();
}

void PageForm::open(const std::string& key)
{
    const Alive alive(this);
    const SharedRow wanted = row(key);
    if (!wanted || wanted->isVisible())
        return;
    if (!isFound(*wanted))
        m_filter->clear();
    if (!alive)
        return;
    const std::string section = wanted->property().section.key;
    if (!isOpen(section))
        requestOpen(section, true);
}

void PageForm::scrollTo(PageRow& row)
{
    if (!row.widget())
        return;
    // The layout is only valid after this.
    m_content->layout()->activate();
    m_scroll->ensureWidgetVisible(row.widget());
}

void PageForm::setOpenSections(const OpenSections& sections)
{
    for (const auto& section : sections)
        m_isOpen[section.first] = section.second;
    Q_EMIT arrangementDue();
}

void PageForm::step(const SectionHead* from, int by)
{
    std::vector<SectionHead*> heads;
    for (const Section& section : m_sections) {
        if (section.head && !section.head->isHidden())
            heads.push_back(section.head);
    }
    const auto found = std::find(heads.begin(), heads.end(), from);
    const auto place = found - heads.begin() + by;
    if (found != heads.end() && place >= 0 && place < std::ptrdiff_t(heads.size()))
        heads[std::size_t(place)]->setFocus(by > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
}

void PageForm::arrange()
{
    const Alive alive(this);
    const int change = m_change;
    const std::vector<Section> sections = m_sections;
    for (const Section& section : sections) {
        for (const SharedRow& row : section.rows) {
            if (!row->isPending() || isInView(section, *row))
                continue;
            // What is written then may change everything.
            Q_EMIT hiding(row.get());
            if (!alive || change != m_change)
                return;
        }
    }
    for (const Section& section : sections) {
        bool hasAny = false;
        for (const SharedRow& row : section.rows) {
            const bool isInViewNow = isInView(section, *row);
            hasAny = hasAny || isFound(*row);
            if (isInViewNow && !row->isMade()) {
                make(*row);
                if (!alive || change != m_change)
                    return;
            }
            if (row->isVisible() != isInViewNow)
                row->setVisible(isInViewNow);
            // Slots of the focus may run.
            if (!alive || change != m_change)
                return;
        }
        if (section.head) {
            section.head->setOpen(isOpen(section.key));
            section.head->setVisible(hasAny);
        }
    }
    updateHint();
    if (m_isTabOrderDue)
        updateTabOrder();
    Q_EMIT arranged();
}

void PageForm::updateHint()
{
    const bool hasFound = std::any_of(
        m_rows.begin(), m_rows.end(), [this](const SharedRow& row) { return isFound(*row); });
    m_hint->setText(m_rows.empty() ? m_emptyHint : FormTexts::tr("No property has this name."));
    m_hint->setVisible(!hasFound);
}

void PageForm::updateTabOrder()
{
    m_isTabOrderDue = false;
    QWidgetList chain;
    addFocusable(m_filter, chain);
    for (const Section& section : m_sections) {
        if (section.head)
            chain << section.head;
        for (const SharedRow& row : section.rows) {
            if (row->widget())
                addFocusable(row->widget(), chain);
        }
    }
    for (int i = 1; i < chain.size(); ++i)
        setTabOrder(chain[i - 1], chain[i]);
}

bool PageForm::isFilterVisible() const
{
    return !m_filter->isHidden();
}

void PageForm::setFilterVisible(bool visible)
{
    const Alive alive(this);
    if (!visible)
        m_filter->clear();
    if (alive)
        m_filter->setVisible(visible);
}

void PageForm::focusFilter()
{
    m_filter->setFocus(Qt::ShortcutFocusReason);
    m_filter->selectAll();
}

void PageForm::setReceiptVisible(bool visible)
{
    m_isReceiptVisible = visible;
    m_receipt->setVisible(visible && !m_receipt->text().isEmpty());
}

void PageForm::setReceipt(const QString& text)
{
    m_receipt->setText(text);
    m_receipt->setVisible(m_isReceiptVisible && !text.isEmpty());
}

bool PageForm::eventFilter(QObject* watched, QEvent* event)
{
    const bool isOverride = event->type() == QEvent::ShortcutOverride;
    if (watched != m_filter || (!isOverride && event->type() != QEvent::KeyPress))
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool clears = key == Qt::Key_Escape && !m_filter->text().isEmpty();
    if (isOverride) {
        if (clears)
            event->accept();
        return clears;
    }
    if (clears) {
        m_filter->clear();
        return true;
    }
    if (key == Qt::Key_Down) {
        for (const Section& section : m_sections) {
            for (const SharedRow& row : section.rows) {
                if (row->isVisible() && row->widget() && row->isEnabled()) {
                    row->widget()->setFocus(Qt::TabFocusReason);
                    return true;
                }
            }
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace vrn::qt::detail
