#include <vrn/qt/combo_item_delegate.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/connect.h>
#include <vrn/qt/cell_data.h>
#include <vrn/qt/multi_edit_enum_box.h>

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPointer>
#include <QScopeGuard>
#include <QTimer>

#include "common/steady_index_p.h"
#include "editor_tenure_p.h"

#include <utility>

namespace vrn::qt {
namespace {

using detail::EditorTenure;

// Of a part of an editor: the editor.
constexpr const char* editorProperty = "vrn_property_delegate_editor_widget";
// Of a part that has keys of its own.
constexpr const char* onlyFocusOutProperty = "vrn_property_delegate_filter_focus_out";
// Of a box over which the mouse was released in this turn of the event loop.
constexpr const char* armedProperty = "vrn_property_delegate_combobox_commit_on_activate";

QWidget* endOfFocusProxies(QWidget* widget)
{
    while (widget->focusProxy())
        widget = widget->focusProxy();
    return widget;
}

QComboBox* listOf(MultiEditEnumBox& box)
{
    return qobject_cast<QComboBox*>(endOfFocusProxies(&box));
}

void makePart(QWidget& part, QWidget& editor, QObject* delegate)
{
    part.installEventFilter(delegate);
    part.setProperty(editorProperty, QVariant::fromValue<QWidget*>(&editor));
    // The part may have the focus then, and it may outlive the editor by a turn of the event
    // loop.
    vrn_connect(&editor, &QObject::destroyed, &part, [&part, filter = QPointer<QObject>(delegate)] {
        part.removeEventFilter(filter);
        part.setProperty(editorProperty, QVariant());
    });
}

void makePartsOfChildren(const QWidget& parent, QWidget& editor, QObject* delegate)
{
    const QWidget* proxy = endOfFocusProxies(&editor);
    for (QObject* child : parent.children()) {
        auto* part = qobject_cast<QWidget*>(child);
        if (!part)
            continue;
        if (part != proxy) {
            makePart(*part, editor, delegate);
            part->setProperty(onlyFocusOutProperty, true);
        }
        makePartsOfChildren(*part, editor, delegate);
    }
}

// For the rest of this turn of the event loop.
void arm(QObject* released)
{
    QObject* box = released;
    while (box && !qobject_cast<SimpleEnumBox*>(box))
        box = box->parent();
    if (!box)
        return;
    box->setProperty(armedProperty, true);
    QTimer::singleShot(0, box, [box] { box->setProperty(armedProperty, QVariant()); });
}

// Neither an item nor a text. A validator may make a value of the empty text, but the user has
// not entered it.
bool showsNothing(MultiEditEnumBox& box)
{
    const QComboBox* list = listOf(box);
    return list && list->currentIndex() < 0 && list->currentText().isEmpty();
}

boost::any valueOf(const QModelIndex& index)
{
    return index.data(EditRole).value<boost::any>();
}

} // namespace

ComboItemDelegate::ComboItemDelegate(QObject* parent,
    boost::function<void(MultiEditEnumBox&, const QModelIndex&)> fill,
    bool (*anyEq)(const boost::any&, const boost::any&), boost::shared_ptr<IValidator> validator)
    : QItemDelegate(parent)
    , m_fill(std::move(fill))
    , m_anyEq(anyEq)
    , m_validator(std::move(validator))
{}

ComboItemDelegate::~ComboItemDelegate() = default;

bool ComboItemDelegate::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonRelease)
        arm(object);
    const QVariant part = object ? object->property(editorProperty) : QVariant();
    auto* editor = part.isNull() ? object : part.value<QWidget*>();
    const bool isEditor = part.isNull() || event->type() == QEvent::FocusOut
        || !object->property(onlyFocusOutProperty).toBool();
    QObject* told = isEditor ? editor : object;

    if (EditorTenure* tenure = EditorTenure::of(editor)) {
        // A view reports what it is told in the name of a widget that is not its editor: of a
        // part, or of an editor that it has let go of or that is being destroyed.
        if (tenure->isOver() || !qobject_cast<MultiEditEnumBox*>(editor))
            return event->type() == QEvent::KeyPress;
        if (!isEditor && tenure->hasBegun())
            return false;
        // A view installs its own delegate after the editor is made, and again after each
        // commit. That would commit a second time after Enter.
        if (object == editor
            && (event->type() == QEvent::Show || event->type() == QEvent::ShortcutOverride))
            object->installEventFilter(this);
        if (isEditor && detail::isEnter(*event))
            return takeEnter(object, static_cast<QWidget*>(editor), event);
        if (isEditor)
            return tenure->takeEvent(event);
    }
    return QItemDelegate::eventFilter(told, event);
}

// The box enters its text first. QItemDelegate would queue the commit, and another event might
// close the editor before that.
bool ComboItemDelegate::takeEnter(QObject* object, QWidget* editor, QEvent* event)
{
    const QPointer<ComboItemDelegate> self(this);
    const QPointer<QWidget> box(editor);
    object->event(event);
    event->accept();
    if (self && box && !EditorTenure::isOver(box))
        commitAndClose(box);
    return true;
}

void ComboItemDelegate::commitAndClose(QWidget* editor)
{
    const QPointer<ComboItemDelegate> self(this);
    const QPointer<QWidget> box(editor);
    Q_EMIT commitData(box);
    // A row that is filtered out by its new value has taken the editor along.
    if (self && box && !EditorTenure::isOver(box))
        Q_EMIT closeEditor(box, SubmitModelCache);
}

void ComboItemDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QItemDelegate::paint(painter, option, index);
}

QSize ComboItemDelegate::sizeHint(
    const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    return QItemDelegate::sizeHint(option, index);
}

QWidget* ComboItemDelegate::createEditor(
    QWidget* parent, const QStyleOptionViewItem& /*option*/, const QModelIndex& index) const
{
    auto* self = const_cast<ComboItemDelegate*>(this);
    const QPointer<ComboItemDelegate> delegate(self);
    const QPersistentModelIndex cell(index);
    const QPointer<MultiEditEnumBox> box(MultiEditEnumBox::create(parent, QString(), m_anyEq));
    if (!box)
        return nullptr;
    // The callback may throw, and it may destroy the delegate or the box.
    auto unmade = qScopeGuard([&box] { delete box; });
    if (m_validator)
        box->setEditable(true, m_validator);
    if (const auto fill = m_fill)
        fill(*box, index);
    if (!delegate || !box)
        return nullptr;
    unmade.dismiss();
    // The list is made when it is first asked for. Its parts are parts of the editor, too.
    if (const QComboBox* list = listOf(*box))
        list->view();

    new EditorTenure(*box, cell, *self);
    box->installEventFilter(self);
    makePart(*endOfFocusProxies(box), *box, self);
    makePartsOfChildren(*box, *box, self);
    vrn_connect(box.data(), &SimpleEnumBox::activated, box.data(), [box = box.data(), delegate] {
        if (delegate && !box->property(armedProperty).isNull())
            delegate->commitAndClose(box);
    });
    return box;
}

void ComboItemDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    auto* box = qobject_cast<MultiEditEnumBox*>(editor);
    VRN_ASSERT(box);
    // A view reads the cell again after each role that is written.
    if (!box || box == m_written)
        return;
    const boost::any value = valueOf(index);
    VRN_ASSERT(!value.empty());
    if (!value.empty())
        detail::readInto(box, [&] { box->readValue(value); });
    else if (QComboBox* list = listOf(*box))
        list->setCurrentIndex(-1);
}

void ComboItemDelegate::setModelData(
    QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    const QPointer<MultiEditEnumBox> box(qobject_cast<MultiEditEnumBox*>(editor));
    VRN_ASSERT(box);
    if (!box || box->dataVaries())
        return;
    // With a proxy, the first role may move the row, if it sorts, or hide it, if it filters.
    const detail::SteadyIndex cell(model, index);
    const bool isEmpty = valueOf(index).empty();
    const QPointer<const ComboItemDelegate> self(this);
    m_written = box;
    const auto done = qScopeGuard([&] {
        if (self)
            self->m_written = nullptr;
    });
    // A validator may destroy the box and the model.
    detail::writeFrom(box, [&] {
        if (isEmpty && showsNothing(*box))
            return;
        const boost::any value = box->getSelectedValue();
        if (value.empty() || box.isNull())
            return;
        const QString display = box->getNameForValue(value);
        if (!cell.model())
            return;
        bool ok = cell.setData(display, DisplayRole);
        VRN_ASSERT_MESSAGE(ok, "model->setData( index, display, qt::DisplayRole )");
        ok = cell.setData(display, ToolTipRole);
        VRN_ASSERT_MESSAGE(ok, "model->setData( index, display, qt::ToolTipRole )");
        ok = cell.setData(QVariant::fromValue(value), EditRole);
        VRN_ASSERT_MESSAGE(
            ok, "model->setData( index, QVariant::fromValue<any>(editData), qt::EditRole )");
    });
}

void ComboItemDelegate::updateEditorGeometry(
    QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QItemDelegate::updateEditorGeometry(editor, option, index);
}

bool ComboItemDelegate::editorEvent(QEvent* /*event*/, QAbstractItemModel* /*model*/,
    const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/)
{
    return false;
}

void ComboItemDelegate::emitCommitData()
{
    auto* editor = qobject_cast<MultiEditEnumBox*>(sender());
    VRN_ASSERT(editor);
    if (!editor)
        return;
    VRN_ASSERT(!editor->getSelectedValue().empty());
    if (!editor->getSelectedValue().empty() && !editor->dataVaries())
        commitAndClose(editor);
}

} // namespace vrn::qt
