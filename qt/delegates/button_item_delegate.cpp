#include <vrn/qt/button_item_delegate.h>

#include <vrn/assert/smart_assert.h>

#include <QApplication>
#include <QPointer>
#include <QScopeGuard>
#include <QStyle>
#include <QStyleOptionButton>
#include <QWidget>

#include <utility>

namespace vrn::qt {

ButtonItemDelegate::ButtonItemDelegate(
    boost::function<void(QAbstractItemModel*, const QModelIndex&)> editFn, QObject* parent)
    : QItemDelegate(parent)
    , m_editFn(std::move(editFn))
{
    VRN_ASSERT_MESSAGE(m_editFn, "ButtonItemDelegate: no editing function specified!");
}

ButtonItemDelegate::~ButtonItemDelegate() = default;

void ButtonItemDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const bool isEnabled = option.state.testFlag(QStyle::State_Enabled);
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    QStyleOptionButton button;
    button.rect = option.rect;
    button.text = index.data(Qt::DisplayRole).toString();
    if (isEnabled)
        button.state |= QStyle::State_Enabled;
    button.state |= m_pressed.count(index) != 0 ? QStyle::State_Sunken : QStyle::State_Raised;
    button.features = isSelected && isEnabled ? QStyleOptionButton::None : QStyleOptionButton::Flat;

    const auto* widget = qobject_cast<QWidget*>(parent());
    QApplication::style()->drawControl(QStyle::CE_PushButton, &button, painter, widget);
    // Again on purpose: this is how such cells look.
    QApplication::style()->drawControl(QStyle::CE_PushButtonLabel, &button, painter, widget);
}

QSize ButtonItemDelegate::sizeHint(
    const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    return QItemDelegate::sizeHint(option, index);
}

QWidget* ButtonItemDelegate::createEditor(
    QWidget* parent, const QStyleOptionViewItem& /*option*/, const QModelIndex& index) const
{
    // The view's own index may change under the function.
    const QModelIndex pressed = index;
    const auto editFn = m_editFn;
    m_pressed.insert(pressed);
    const QPointer<const ButtonItemDelegate> self(this);
    const auto release = qScopeGuard([&] {
        if (self)
            self->m_pressed.erase(pressed);
    });
    if (parent)
        parent->repaint();
    if (editFn)
        editFn(const_cast<QAbstractItemModel*>(pressed.model()), pressed);
    return nullptr;
}

void ButtonItemDelegate::setEditorData(QWidget* /*editor*/, const QModelIndex& /*index*/) const {}

void ButtonItemDelegate::setModelData(
    QWidget* /*editor*/, QAbstractItemModel* /*model*/, const QModelIndex& /*index*/) const
{}

void ButtonItemDelegate::updateEditorGeometry(
    QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const
{
    editor->setGeometry(option.rect);
}

} // namespace vrn::qt
