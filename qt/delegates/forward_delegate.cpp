#include <vrn/qt/forward_delegate.h>

#include <vrn/assert/smart_assert.h>

#include <QAbstractItemModel>
#include <QAbstractItemView>

#include <algorithm>
#include <limits>

namespace vrn::qt {

/// Keeps the delegates of rows and cells on their rows while the model inserts some.
class ForwardDelegateModelMediator
{
public:
    ForwardDelegateModelMediator(ForwardDelegate& delegate, QAbstractItemModel* model)
    {
        if (!model)
            return;
        m_connection = QObject::connect(
            model, &QAbstractItemModel::rowsInserted, model,
            [&delegate](const QModelIndex& /*parent*/, int first, int last) {
                shift(delegate.m_rows, first, last - first + 1);
                shift(delegate.m_cells, first, last - first + 1);
            },
            Qt::DirectConnection);
    }
    ~ForwardDelegateModelMediator() { QObject::disconnect(m_connection); }
    ForwardDelegateModelMediator(const ForwardDelegateModelMediator&) = delete;
    ForwardDelegateModelMediator& operator=(const ForwardDelegateModelMediator&) = delete;

private:
    static int& rowOf(int& row) { return row; }
    static int& rowOf(std::pair<int, int>& cell) { return cell.first; }

    template <typename Delegates>
    static void shift(Delegates& delegates, int first, int count)
    {
        Delegates shifted;
        for (const auto& [key, delegate] : delegates) {
            auto moved = key;
            if (int& row = rowOf(moved); row >= first) {
                if (row > std::numeric_limits<int>::max() - count)
                    continue; // No model has that row.
                row += count;
            }
            shifted.emplace(moved, delegate);
        }
        delegates = std::move(shifted);
    }

    QMetaObject::Connection m_connection;
};

std::size_t ForwardDelegate::CellHash::operator()(const Cell& cell) const
{
    const auto row = static_cast<quint64>(static_cast<quint32>(cell.first));
    return std::hash<quint64>()(row << 32U | static_cast<quint32>(cell.second));
}

ForwardDelegate::ForwardDelegate(QAbstractItemView& view)
    : QStyledItemDelegate(&view)
    , m_mediator(std::make_shared<ForwardDelegateModelMediator>(*this, view.model()))
{}

ForwardDelegate::~ForwardDelegate() = default;

void ForwardDelegate::setItemDelegate(QAbstractItemDelegate* delegate)
{
    replace(m_default, delegate);
}

void ForwardDelegate::setItemDelegateForCell(int row, int column, QAbstractItemDelegate* delegate)
{
    replace(m_cells[{row, column}], delegate);
}

void ForwardDelegate::setItemDelegateForColumn(int column, QAbstractItemDelegate* delegate)
{
    replace(m_columns[column], delegate);
}

void ForwardDelegate::setItemDelegateForRow(int row, QAbstractItemDelegate* delegate)
{
    replace(m_rows[row], delegate);
}

void ForwardDelegate::replace(Delegate& slot, QAbstractItemDelegate* delegate)
{
    const auto* forward = dynamic_cast<const ForwardDelegate*>(delegate);
    const bool isCircle = forward && forward->leadsTo(*this);
    VRN_ASSERT_MESSAGE(!isCircle, "a ForwardDelegate must not hand a call back to itself");
    disconnect_delegate(slot);
    slot = isCircle ? nullptr : delegate;
    connect_delegate(slot);
}

bool ForwardDelegate::leadsTo(const ForwardDelegate& other) const
{
    const auto isOnTheWay = [&](const QAbstractItemDelegate* delegate) {
        const auto* forward = dynamic_cast<const ForwardDelegate*>(delegate);
        return forward && forward->leadsTo(other);
    };
    const auto anyOf = [&](const auto& delegates) {
        return std::any_of(delegates.begin(), delegates.end(),
            [&](const auto& entry) { return isOnTheWay(entry.second); });
    };
    return this == &other || anyOf(m_cells) || anyOf(m_rows) || anyOf(m_columns)
        || isOnTheWay(m_default);
}

// One relay for each call, so that a delegate of two cells is connected twice.
void ForwardDelegate::connect_delegate(QAbstractItemDelegate* delegate)
{
    if (!delegate)
        return;
    connect(
        delegate, &QAbstractItemDelegate::closeEditor, this, &QAbstractItemDelegate::closeEditor);
    connect(delegate, &QAbstractItemDelegate::commitData, this, &QAbstractItemDelegate::commitData);
    connect(delegate, &QAbstractItemDelegate::sizeHintChanged, this,
        &QAbstractItemDelegate::sizeHintChanged);
}

// All of its relays, also those of other cells.
void ForwardDelegate::disconnect_delegate(QAbstractItemDelegate* delegate)
{
    if (delegate)
        QObject::disconnect(delegate, nullptr, this, nullptr);
}

QAbstractItemDelegate* ForwardDelegate::get_cell_delegate(int row, int column) const
{
    const auto find = [](const auto& delegates, const auto& key) -> QAbstractItemDelegate* {
        const auto entry = delegates.find(key);
        return entry == delegates.end() ? nullptr : entry->second.data();
    };
    if (auto* delegate = find(m_cells, Cell(row, column)))
        return delegate;
    if (auto* delegate = find(m_rows, row))
        return delegate;
    if (auto* delegate = find(m_columns, column))
        return delegate;
    return m_default;
}

QAbstractItemDelegate* ForwardDelegate::delegateOf(const QModelIndex& index) const
{
    return get_cell_delegate(index.row(), index.column());
}

void ForwardDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (const auto* delegate = delegateOf(index))
        delegate->paint(painter, option, index);
    else
        QStyledItemDelegate::paint(painter, option, index);
}

QSize ForwardDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const auto* delegate = delegateOf(index);
    return delegate ? delegate->sizeHint(option, index)
                    : QStyledItemDelegate::sizeHint(option, index);
}

QWidget* ForwardDelegate::createEditor(
    QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const auto* delegate = delegateOf(index);
    return delegate ? delegate->createEditor(parent, option, index)
                    : QStyledItemDelegate::createEditor(parent, option, index);
}

void ForwardDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (const auto* delegate = delegateOf(index))
        delegate->setEditorData(editor, index);
    else
        QStyledItemDelegate::setEditorData(editor, index);
}

void ForwardDelegate::setModelData(
    QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    if (const auto* delegate = delegateOf(index))
        delegate->setModelData(editor, model, index);
    else
        QStyledItemDelegate::setModelData(editor, model, index);
}

void ForwardDelegate::updateEditorGeometry(
    QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (const auto* delegate = delegateOf(index))
        delegate->updateEditorGeometry(editor, option, index);
    else
        QStyledItemDelegate::updateEditorGeometry(editor, option, index);
}

bool ForwardDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
    const QStyleOptionViewItem& option, const QModelIndex& index)
{
    auto* delegate = delegateOf(index);
    return delegate ? delegate->editorEvent(event, model, option, index)
                    : QStyledItemDelegate::editorEvent(event, model, option, index);
}

} // namespace vrn::qt
