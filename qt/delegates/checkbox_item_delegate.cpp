#include <vrn/qt/checkbox_item_delegate.h>

namespace vrn::qt {

CheckboxItemDelegate::CheckboxItemDelegate(QObject* parent)
    : QItemDelegate(parent)
{}

CheckboxItemDelegate::~CheckboxItemDelegate() = default;

void CheckboxItemDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QItemDelegate::paint(painter, option, index);
}

QSize CheckboxItemDelegate::sizeHint(
    const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    return QItemDelegate::sizeHint(option, index);
}

QWidget* CheckboxItemDelegate::createEditor(
    QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    return QItemDelegate::createEditor(parent, option, index);
}

void CheckboxItemDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    QItemDelegate::setEditorData(editor, index);
}

void CheckboxItemDelegate::setModelData(
    QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    QItemDelegate::setModelData(editor, model, index);
}

void CheckboxItemDelegate::updateEditorGeometry(
    QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QItemDelegate::updateEditorGeometry(editor, option, index);
}

bool CheckboxItemDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
    const QStyleOptionViewItem& option, const QModelIndex& index)
{
    return QItemDelegate::editorEvent(event, model, option, index);
}

void CheckboxItemDelegate::drawFocus(
    QPainter* /*painter*/, const QStyleOptionViewItem& /*option*/, const QRect& /*rect*/) const
{}

void CheckboxItemDelegate::onClicked() {}

} // namespace vrn::qt
