#include "members_table.h"

#include <vrn/base/any_predicates.h>
#include <vrn/qt/delegates.h>
#include <vrn/qt/multi_edit_enum_box.h>

#include <QHeaderView>
#include <QKeyEvent>

#include "members_model.h"

namespace gallery {
namespace {

using namespace vrn::qt;

// For cells that are not edited by typing.
class ReadOnlyDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* /*parent*/, const QStyleOptionViewItem& /*option*/,
        const QModelIndex& /*index*/) const override
    {
        return nullptr;
    }
    bool editorEvent(QEvent* /*event*/, QAbstractItemModel* /*model*/,
        const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) override
    {
        return false;
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->font.setItalic(true);
    }
};

bool isButton(const QModelIndex& index)
{
    return index.column() == MembersModel::Duplicate;
}

bool pressesButtons(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Space || event.key() == Qt::Key_Return
        || event.key() == Qt::Key_Enter;
}

// A floor of 3 kN/m2 on a beam: as wide as the beams are apart.
QString loadOfFloor(const QString& /*text*/)
{
    return QStringLiteral("15 kN/m");
}

} // namespace

MembersTable::MembersTable(MembersModel* model, QWidget* parent)
    : CppDbTableViewBase(
        model, [model](int column) { return model->validator(column); }, parent)
    , m_delegate(nullptr)
{
    setModel(model);
    m_delegate = new ForwardDelegate(*this);
    addDelegates(model);
    setItemDelegate(m_delegate);
    setCreateNewRowHandler(
        [model](int column, const NewRow& values) { model->append(column, values); });

    // A button is pressed by one click. A click elsewhere only selects.
    connect(this, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
        if (isButton(index))
            edit(index, EditKeyPressed, nullptr);
    });

    const int character = fontMetrics().averageCharWidth();
    for (int column = 0; column < MembersModel::ColumnCount; ++column)
        setColumnWidth(column, character * (column == MembersModel::Name ? 24 : 15));
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 10);
}

void MembersTable::keyPressEvent(QKeyEvent* event)
{
    if (isButton(currentIndex()) && pressesButtons(*event))
        edit(currentIndex(), EditKeyPressed, event);
    else
        CppDbTableViewBase::keyPressEvent(event);
}

bool MembersTable::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event)
{
    // Tab comes with all triggers. Qt would warn if the result was false.
    if (isButton(index) && (trigger == AllEditTriggers || trigger == AnyKeyPressed))
        return true;
    return CppDbTableViewBase::edit(index, trigger, event);
}

void MembersTable::addDelegates(MembersModel* model)
{
    m_delegate->setItemDelegate(
        new LineEditItemDelegate(model->validator(MembersModel::Name), this));
    const auto fill = [](MultiEditEnumBox& box, const QModelIndex& /*index*/) {
        box.setValues(MembersModel::materials());
    };
    m_delegate->setItemDelegateForColumn(
        MembersModel::Material, new ComboItemDelegate(this, fill, &vrn::any_equal<int>, nullptr));
    for (const int column : {MembersModel::Area, MembersModel::Length, MembersModel::Load}) {
        m_delegate->setItemDelegateForColumn(
            column, new LineEditItemDelegate(model->validator(column), this));
    }
    m_delegate->setItemDelegateForColumn(MembersModel::Active, new CheckboxItemDelegate(this));
    const auto duplicate = [model](QAbstractItemModel* /*model*/, const QModelIndex& index) {
        model->duplicate(index.row());
    };
    m_delegate->setItemDelegateForColumn(
        MembersModel::Duplicate, new ButtonItemDelegate(duplicate, this));
    m_delegate->setItemDelegateForRow(0, new ReadOnlyDelegate(this));
    m_delegate->setItemDelegateForCell(
        0, MembersModel::Duplicate, new ButtonItemDelegate(duplicate, this));
    m_delegate->setItemDelegateForCell(1, MembersModel::Load,
        new LineEditItemDelegate(model->validator(MembersModel::Load), &loadOfFloor, this));
}

} // namespace gallery
