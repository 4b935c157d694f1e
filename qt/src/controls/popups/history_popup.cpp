#include "controls/popups/history_popup_p.h"

#include <vrn/companion_qt/connect.h>

#include <QListWidget>
#include <QVBoxLayout>

#include "controls/parts/readable_colours_p.h"

#include <algorithm>
#include <utility>

namespace vrn::qt::detail {

HistoryPopup::HistoryPopup(QWidget* owner)
    : PopupBase(owner)
    , m_list(new QListWidget(this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    layout->addWidget(m_list);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // A click must leave the focus in the edit.
    m_list->setFocusPolicy(Qt::NoFocus);
    new ReadableColours(m_list, this);
    vrn_connect(m_list, &QListWidget::clicked, this, [this] { selectCurrentRow(); });
}

HistoryPopup::~HistoryPopup() = default;

void HistoryPopup::setValueHistory(boost::shared_ptr<vrn::ValueHistory> history)
{
    m_history = std::move(history);
}

void HistoryPopup::showEvent(QShowEvent* event)
{
    m_list->clear();
    if (const auto history = m_history) { // A storage may replace it.
        std::deque<std::wstring> values;
        history->get(values);
        for (const std::wstring& value : values)
            m_list->addItem(QString::fromStdWString(value));
    }
    const QSize size = sizeHint().boundedTo(largestSize());
    // The size hint of a list knows nothing of its values.
    m_list->setFixedSize(size);
    setFixedSize(size);
    PopupBase::showEvent(event);
}

QSize HistoryPopup::sizeHint() const
{
    if (m_list->count() == 0)
        return QSize(0, 0);
    const int frame = 2 * m_list->frameWidth();
    int height = frame;
    for (int row = 0; row < m_list->count(); ++row)
        height += m_list->sizeHintForRow(row);
    const int width = std::max(m_list->sizeHintForColumn(0), 0) + frame + 20;
    return QSize(width, height);
}

void HistoryPopup::selectCurrentRow()
{
    const QModelIndex index = m_list->model()->index(m_list->currentRow(), 0);
    Q_EMIT itemSelected(index.data().toString());
}

} // namespace vrn::qt::detail
