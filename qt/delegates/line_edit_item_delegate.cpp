#include <vrn/qt/line_edit_item_delegate.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/connect.h>
#include <vrn/qt/cell_data.h>

#include <QBrush>
#include <QCoreApplication>
#include <QPainter>
#include <QPointer>

#include "cell_line_edit_p.h"
#include "controls/parts/no_flags_p.h"
#include "editor_tenure_p.h"

#include <utility>

namespace vrn::qt {
namespace {

using detail::LineEditImpl;
using detail::noFlags;

bool hasValue(const QModelIndex& index)
{
    return index.data(EditRole).canConvert<boost::any>();
}

} // namespace

LineEditItemDelegate::LineEditItemDelegate(QObject* parent)
    : QItemDelegate(parent)
{}

LineEditItemDelegate::LineEditItemDelegate(boost::shared_ptr<IValidator> validator, QObject* parent)
    : QItemDelegate(parent)
    , m_validator(std::move(validator))
{}

LineEditItemDelegate::LineEditItemDelegate(boost::shared_ptr<IValidator> validator,
    boost::function<QString(const QString&)> callback, QObject* parent)
    : QItemDelegate(parent)
    , m_validator(std::move(validator))
    , m_callback(std::move(callback))
{}

LineEditItemDelegate::~LineEditItemDelegate() = default;

void LineEditItemDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (hasValue(index))
        QItemDelegate::paint(painter, option, index);
    else
        painter->fillRect(option.rect.adjusted(1, 1, -2, -2), QBrush(QColor(255, 255, 255)));
}

QWidget* LineEditItemDelegate::createEditor(
    QWidget* parent, const QStyleOptionViewItem& /*option*/, const QModelIndex& index) const
{
    if (!hasValue(index))
        return nullptr;
    auto* self = const_cast<LineEditItemDelegate*>(this);
    auto* edit = new detail::CellLineEdit(index, *self, parent);
    edit->installEventFilter(self);
    edit->installEventFilter(edit); // The last one comes first.
    if (m_callback)
        edit->addCallback(m_callback);
    vrn_connect(
        edit, &QLineEdit::editingFinished, self, &LineEditItemDelegate::commitAndCloseEditor);
    return edit;
}

void LineEditItemDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    const auto value = index.data(EditRole).value<boost::any>();
    VRN_ASSERT(m_validator);
    if (!m_validator)
        return;
    const auto validator = m_validator; // It may destroy the delegate.
    const QPointer<QWidget> target(editor);
    detail::readInto(editor, [&] {
        const QString text = validator->reformat(value, noFlags);
        auto* edit = qobject_cast<LineEditImpl*>(target.data());
        VRN_ASSERT(edit);
        if (!edit)
            return;
        edit->setText(text);
        edit->selectAll();
    });
}

void LineEditItemDelegate::setModelData(
    QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    auto* edit = qobject_cast<LineEditImpl*>(editor);
    VRN_ASSERT(edit);
    if (!edit)
        return;
    VRN_ASSERT(m_validator);
    if (!m_validator)
        return;
    const auto validator = m_validator; // As in setEditorData().
    const QPersistentModelIndex cell(index);
    const QPointer<QAbstractItemModel> target(model);
    detail::writeFrom(edit, [&] {
        boost::any value;
        if (!validator->validate(edit->text(), value, noFlags) || value.empty())
            return;
        const QString display = validator->reformatForDisplay(value, noFlags);
        if (target) {
            target->setItemData(cell,
                {{DisplayRole, display}, {ToolTipRole, display},
                    {EditRole, QVariant::fromValue(value)}});
        }
    });
}

void LineEditItemDelegate::updateEditorGeometry(
    QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const
{
    editor->setGeometry(option.rect);
}

// The editors that this class makes have seen to their events before.
bool LineEditItemDelegate::eventFilter(QObject* object, QEvent* event)
{
    return !detail::EditorTenure::of(object) && QItemDelegate::eventFilter(object, event);
}

void LineEditItemDelegate::commitAndCloseEditor()
{
    const QPointer<QObject> source(sender());
    const QPointer<LineEditItemDelegate> self(this);
    auto* editor = qobject_cast<QWidget*>(source.data());
    Q_EMIT commitData(editor);
    // A row that is filtered out by its new value has taken the editor along.
    if (self && (source || !editor) && !detail::EditorTenure::isOver(source))
        Q_EMIT closeEditor(editor, NoHint);
}

void LineEditItemDelegate::commitOnly()
{
    const QPointer<QObject> source(sender());
    auto* editor = qobject_cast<QWidget*>(source.data());
    Q_EMIT commitData(editor);
    if (source || !editor)
        QCoreApplication::sendPostedEvents(editor, 0);
}

} // namespace vrn::qt
