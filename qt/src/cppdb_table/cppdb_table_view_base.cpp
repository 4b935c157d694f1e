#include <vrn/qt/cppdb_table_view_base.h>

#include <vrn/assert/smart_assert.h>

#include <boost/algorithm/string/join.hpp>
#include <boost/locale/encoding_utf.hpp>

#include <QClipboard>
#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMimeData>

#include "common/steady_index_p.h"
#include "controls/parts/alive_p.h"
#include "controls/parts/no_flags_p.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vrn::qt::detail {
namespace {

using NewRow = CppDbTableViewBase::NewRow;

constexpr unsigned long userLocale = 1UL << ValidationFlagUserLocale;

/// The validators of the columns, during one command. They are code of the application, as is
/// the function that gives them. Once the view has been destroyed, none of it is called: what
/// it refers to may have gone as well.
class ColumnValidators
{
public:
    ColumnValidators(const Alive& view,
        boost::function<boost::shared_ptr<IValidator>(int)> getColumnValidator, int columnCount)
        : m_view(view)
        , m_getColumnValidator(std::move(getColumnValidator))
        , m_columnCount(columnCount)
    {}

    /// The text of `value`, empty for an empty one; unset if there is no value or the column has
    /// no validator.
    std::optional<QString> write(int column, const boost::optional<boost::any>& value) const
    {
        const IValidator::pointer validator = of(column);
        if (!validator || !m_view || !value)
            return {};
        const QString text = value->empty() ? QString() : validator->reformat(*value, userLocale);
        return m_view ? std::make_optional(text) : std::nullopt;
    }

    /// The value of `text`, which may be an empty one; unset if it is refused.
    boost::optional<boost::any> read(int column, const QString& text) const
    {
        const IValidator::pointer validator = forPaste(column);
        return validator ? readBy(*validator, text) : boost::none;
    }
    // A line may go on far past the table, where there are no validators.
    boost::optional<boost::any> read(int column, std::string_view text) const
    {
        const IValidator::pointer validator = forPaste(column);
        if (!validator)
            return {};
        return readBy(*validator, QString::fromUtf8(text.data(), static_cast<int>(text.size())));
    }

private:
    static boost::optional<boost::any> readBy(IValidator& validator, const QString& text)
    {
        boost::any value;
        if (!validator.validate(text, value, noFlags))
            return {};
        return value;
    }

    IValidator::pointer forPaste(int column) const
    {
        IValidator::pointer validator = of(column);
        // The user may paste more columns than there are.
        if (column < m_columnCount && m_view)
            VRN_ASSERT(validator)("column", column);
        return validator && m_view ? validator : nullptr;
    }

    IValidator::pointer of(int column) const
    {
        return m_view ? m_getColumnValidator(column) : nullptr;
    }

    const Alive& m_view;
    const boost::function<boost::shared_ptr<IValidator>(int)> m_getColumnValidator;
    const int m_columnCount;
};

/// The rows and columns from the first to the last one.
struct Bounds
{
    explicit Bounds(const QModelIndexList& cells)
    {
        for (const QModelIndex& cell : cells) {
            top = std::min(top, cell.row());
            left = std::min(left, cell.column());
            bottom = std::max(bottom, cell.row());
            right = std::max(right, cell.column());
        }
    }

    int top = std::numeric_limits<int>::max();
    int left = std::numeric_limits<int>::max();
    int bottom = 0;
    int right = 0;
};

/// A selected cell, with the row and column where it was at first.
template <typename Content>
struct Cell
{
    Content content;
    int row;
    int column;
};

boost::optional<boost::any> valueOf(const QModelIndex& index)
{
    const QVariant data = index.data(EditRole);
    if (!data.canConvert<boost::any>())
        return {};
    return data.value<boost::any>();
}

void write(const SteadyIndex& cell, const boost::any& value)
{
    const QModelIndex index = cell.get();
    if (index.isValid())
        cell.model()->setData(index, QVariant::fromValue(value), EditRole);
}

/// Writes what `valueFor` gives for each row and column, if it gives anything, for as long as
/// the view lives.
template <typename ValueFor>
void writeCells(const Alive& view, QAbstractItemModel* model, const QModelIndexList& indexes,
    const ValueFor& valueFor)
{
    std::vector<Cell<SteadyIndex>> cells;
    cells.reserve(static_cast<std::size_t>(indexes.size()));
    for (const QModelIndex& index : indexes)
        cells.push_back({SteadyIndex(model, index), index.row(), index.column()});
    for (const auto& cell : cells) {
        const boost::optional<boost::any> value = valueFor(cell.row, cell.column);
        if (value && view)
            write(cell.content, *value);
        if (!view)
            return;
    }
}

void copyCell(const QModelIndex& index, const ColumnValidators& validators)
{
    const boost::optional<boost::any> value = valueOf(index);
    if (!value)
        return;
    const auto text = value->empty() ? QString() : validators.write(index.column(), value);
    if (text)
        QGuiApplication::clipboard()->setText(*text);
}

void copyBlock(
    const Alive& view, const QModelIndexList& indexes, const ColumnValidators& validators)
{
    // All values are read first: a validator may do anything to the model.
    std::vector<Cell<boost::optional<boost::any>>> cells;
    cells.reserve(static_cast<std::size_t>(indexes.size()));
    for (const QModelIndex& index : indexes)
        cells.push_back({valueOf(index), index.row(), index.column()});
    const Bounds bounds(indexes);

    std::vector<std::vector<std::string>> grid;
    for (const auto& cell : cells) {
        const std::optional<QString> text = validators.write(cell.column, cell.content);
        if (!view)
            return;
        if (!text)
            continue;
        const auto row = static_cast<std::size_t>(cell.row - bounds.top);
        const auto column = static_cast<std::size_t>(cell.column - bounds.left);
        grid.resize(std::max(grid.size(), row + 1));
        grid[row].resize(std::max(grid[row].size(), column + 1));
        grid[row][column] = boost::locale::conv::utf_to_utf<char>(text->toStdU16String());
    }

    std::string block;
    for (const auto& row : grid)
        block += boost::algorithm::join(row, "\t") + '\n';
    QGuiApplication::clipboard()->setText(QString::fromStdString(block));
}

/// Drops the last character if there is a line break anywhere in `text`. That is the final line
/// break of a block which a view has copied. A text from elsewhere loses another character, but
/// never a part of one.
void dropLastCharacter(QByteArray& text)
{
    if (!text.contains('\n'))
        return;
    const auto continuesCharacter = [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
    };
    auto last = text.size() - 1;
    while (continuesCharacter(text.at(last)))
        --last;
    text.truncate(last);
}

std::string_view viewOf(const QByteArray& text)
{
    return {text.constData(), static_cast<std::size_t>(text.size())};
}

/// The pieces of a text one after the other: one more than it has separators.
class Pieces
{
public:
    Pieces(std::string_view text, char separator)
        : m_rest(text)
        , m_separator(separator)
    {}

    bool hasNext() const { return m_hasNext; }

    std::string_view next()
    {
        const std::size_t end = m_rest.find(m_separator);
        const std::string_view piece = m_rest.substr(0, end);
        m_hasNext = end != std::string_view::npos;
        if (m_hasNext)
            m_rest.remove_prefix(end + 1);
        return piece;
    }

private:
    std::string_view m_rest;
    char m_separator;
    bool m_hasNext = true;
};

/// Writes the line and the piece of it that belong to each cell, from the upper left corner on.
void pasteOver(const Alive& view, QAbstractItemModel* model, const QModelIndexList& indexes,
    std::string_view block, const ColumnValidators& validators)
{
    // No more of the block is split than the cells can take.
    const Bounds bounds(indexes);
    const auto lastLine = static_cast<std::size_t>(bounds.bottom - bounds.top);
    const auto lastPiece = static_cast<std::size_t>(bounds.right - bounds.left);
    std::vector<std::vector<std::string_view>> grid;
    Pieces lines(block, '\n');
    while (lines.hasNext() && grid.size() <= lastLine) {
        Pieces pieces(lines.next(), '\t');
        auto& row = grid.emplace_back();
        while (pieces.hasNext() && row.size() <= lastPiece)
            row.push_back(pieces.next());
    }

    writeCells(view, model, indexes, [&](int row, int column) -> boost::optional<boost::any> {
        const auto line = static_cast<std::size_t>(row - bounds.top);
        const auto piece = static_cast<std::size_t>(column - bounds.left);
        if (line >= grid.size())
            throw std::out_of_range("invalid vector<T> subscript");
        if (piece >= grid[line].size())
            return {};
        return validators.read(column, grid[line][piece]);
    });
}

/// What is in `line` for the columns from `left` to before `end`. The validators are asked for
/// the whole line all the same.
NewRow readLine(std::string_view line, int left, int end, const ColumnValidators& validators)
{
    NewRow values;
    Pieces pieces(line, '\t');
    for (int column = left; pieces.hasNext(); ++column) {
        boost::optional<boost::any> value = validators.read(column, pieces.next());
        if (column < end)
            values.push_back(std::move(value));
    }
    return values;
}

/// Writes `values` to the cells from `first` on, for as long as the view lives.
void writeRow(const Alive& view, const SteadyIndex& first, const NewRow& values)
{
    const QPersistentModelIndex start = first.get();
    int offset = 0;
    for (const boost::optional<boost::any>& value : values) {
        if (!view || !start.isValid())
            return;
        const QModelIndex index = start.sibling(start.row(), start.column() + offset++);
        if (value && index.isValid())
            first.model()->setData(index, QVariant::fromValue(*value), EditRole);
    }
}

} // namespace

CppDbTableViewBase::CppDbTableViewBase(QAbstractItemModel* model,
    boost::function<boost::shared_ptr<IValidator>(int)> getColumnValidator, QWidget* parent)
    : QTableView(parent)
    , m_model(model)
    , m_getColumnValidator(std::move(getColumnValidator))
{
    VRN_ASSERT(m_model);
    VRN_ASSERT(m_getColumnValidator);
}

CppDbTableViewBase::~CppDbTableViewBase() = default;

void CppDbTableViewBase::setCreateNewRowHandler(boost::function<void(int, const NewRow&)> handler)
{
    m_createNewRow = std::move(handler);
}

void CppDbTableViewBase::keyPressEvent(QKeyEvent* event)
{
    const bool isBackspace = event->type() == QEvent::KeyPress && event->key() == Qt::Key_Backspace;
    if (event->matches(QKeySequence::Delete) || isBackspace) {
        clearCells();
    } else if (event->matches(QKeySequence::Cut)) {
        const Alive alive(this);
        copy();
        if (alive)
            clearCells();
    } else if (event->matches(QKeySequence::Copy)) {
        copy();
    } else if (event->matches(QKeySequence::Paste)) {
        paste();
    } else {
        QAbstractItemView::keyPressEvent(event);
    }
}

void CppDbTableViewBase::clearCells()
{
    const Alive alive(this);
    writeCells(alive, model(), selectedCells(),
        [](int, int) -> boost::optional<boost::any> { return boost::any(); });
}

void CppDbTableViewBase::copy() const
{
    const QModelIndexList selected = selectedCells();
    if (selected.isEmpty())
        return;
    const Alive alive(this);
    const ColumnValidators validators(alive, m_getColumnValidator, model()->columnCount());
    if (selected.size() == 1)
        copyCell(selected.first(), validators);
    else
        copyBlock(alive, selected, validators);
}

void CppDbTableViewBase::paste()
{
    const QMimeData* const content = QGuiApplication::clipboard()->mimeData();
    const QModelIndexList selected = selectedCells();
    if (!content || !content->hasText() || selected.isEmpty())
        return;
    const QString text = content->text();
    QByteArray block = text.toUtf8();
    dropLastCharacter(block);
    const bool isBlock = block.contains('\t') || block.contains('\n');
    if (isBlock && selected.size() == 1)
        return pasteAt(selected.first(), block);

    const Alive alive(this);
    const ColumnValidators validators(alive, m_getColumnValidator, model()->columnCount());
    if (isBlock)
        return pasteOver(alive, model(), selected, viewOf(block), validators);
    // The text is pasted with its final line break.
    writeCells(
        alive, model(), selected, [&](int, int column) { return validators.read(column, text); });
}

void CppDbTableViewBase::pasteAt(const QModelIndex& corner, const QByteArray& block)
{
    VRN_ASSERT(m_model);
    if (!m_model)
        return;
    const Alive alive(this);
    const QPointer<QAbstractItemModel> model = m_model;
    const ColumnValidators validators(alive, m_getColumnValidator, model->columnCount());
    const int left = corner.column();

    // The first cells of the rows that are written. The write of one row may move the others.
    std::deque<SteadyIndex> firstCells;
    const auto lineCount = std::count(block.begin(), block.end(), '\n') + 1;
    const auto end = std::min<std::ptrdiff_t>(model->rowCount(), corner.row() + lineCount);
    for (int row = corner.row(); row < end; ++row)
        firstCells.emplace_back(model, model->index(row, left));

    Pieces lines(viewOf(block), '\n');
    for (int row = corner.row(); alive && model && lines.hasNext(); ++row) {
        const std::string_view line = lines.next();
        // The handler may have made several rows at once.
        if (firstCells.empty() && row < model->rowCount())
            firstCells.emplace_back(model, model->index(row, left));
        if (!firstCells.empty()) {
            // What is past the last column would be dropped.
            const NewRow values = readLine(line, left, model->columnCount(), validators);
            writeRow(alive, firstCells.front(), values);
            firstCells.pop_front();
            continue;
        }
        const NewRow values = readLine(line, left, std::numeric_limits<int>::max(), validators);
        if (!alive || !m_createNewRow)
            return;
        // A copy: it may replace itself.
        const auto createNewRow = m_createNewRow;
        createNewRow(left, values);
        if (model && model->rowCount() <= row)
            return;
    }
}

QModelIndexList CppDbTableViewBase::selectedCells() const
{
    return selectionModel() ? selectionModel()->selectedIndexes() : QModelIndexList();
}

} // namespace vrn::qt::detail
