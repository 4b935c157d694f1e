#include "members_model.h"

#include <vrn/base/any_predicates.h>
#include <vrn/qt/cell_data.h>
#include <vrn/qt/forward_validator.h>
#include <vrn/qt/named_value_list_validator.h>
#include <vrn/qt/string_edit_validator.h>
#include <vrn/qt/unit_validator.h>

#include <boost/make_shared.hpp>

#include <algorithm>
#include <string_view>

namespace gallery {
namespace {

using namespace vrn::qt;
using Quantity = vrn::units::IConverter::quantity;
namespace UnitId = vrn::units::UnitId;
using Member = MembersModel::Member;

constexpr int longestName = 40;

struct QuantityColumn
{
    MembersModel::Column column;
    UnitId::UnitId kind;
    boost::optional<double> Member::*field;
};

constexpr QuantityColumn quantityColumns[] = {
    {MembersModel::Area, UnitId::SECT_AREA, &Member::area},
    {MembersModel::Length, UnitId::GEO_LENGTH, &Member::length},
    {MembersModel::Load, UnitId::LOAD_LINE, &Member::load},
};

const QuantityColumn* quantityColumn(int column)
{
    for (const QuantityColumn& each : quantityColumns) {
        if (each.column == column)
            return &each;
    }
    return nullptr;
}

template <typename T>
boost::any anyOf(const boost::optional<T>& field)
{
    return field ? boost::any(*field) : boost::any();
}

boost::any valueOf(const Member& member, int column)
{
    if (const QuantityColumn* quantity = quantityColumn(column)) {
        const boost::optional<double>& field = member.*quantity->field;
        return field ? boost::any(Quantity{quantity->kind, *field}) : boost::any();
    }
    switch (column) {
    case MembersModel::Name:
        return member.name;
    case MembersModel::Material:
        return member.material;
    default:
        return anyOf(member.isActive);
    }
}

// An empty value clears the field. False if the value has another type.
template <typename T>
bool assign(boost::optional<T>& field, const boost::any& value)
{
    const T* typed = boost::any_cast<T>(&value);
    if (!typed && !value.empty())
        return false;
    field = typed ? boost::make_optional(*typed) : boost::none;
    return true;
}

bool assignName(std::wstring& name, const boost::any& value)
{
    boost::optional<std::wstring> text;
    if (!assign(text, value))
        return false;
    name = text.value_or(std::wstring());
    return true;
}

bool assign(boost::optional<double>& field, UnitId::UnitId kind, const boost::any& value)
{
    boost::optional<Quantity> quantity;
    if (!assign(quantity, value) || (quantity && quantity->unit_id != kind))
        return false;
    field = quantity ? boost::make_optional(quantity->value) : boost::none;
    return true;
}

bool assign(Member& member, int column, const boost::any& value)
{
    if (const QuantityColumn* quantity = quantityColumn(column))
        return assign(member.*quantity->field, quantity->kind, value);
    switch (column) {
    case MembersModel::Name:
        return assignName(member.name, value);
    case MembersModel::Material:
        if (value.type() != typeid(int))
            return false;
        member.material = boost::any_cast<int>(value);
        return true;
    case MembersModel::Active:
        return assign(member.isActive, value);
    default:
        return false;
    }
}

IValidator::pointer namesOf(const NamedValueList& values, NamedValueListValidator::EqualTo equalTo)
{
    auto validator = boost::make_shared<NamedValueListValidator>(values);
    validator->set_equal_to(equalTo);
    return validator;
}

} // namespace

MembersModel::MembersModel(std::vector<Member> members, QObject* parent)
    : QAbstractTableModel(parent)
    , m_members(std::move(members))
{
    m_validators[Name] = boost::make_shared<StringEditValidator>(longestName);
    m_validators[Material] = namesOf(materials(), &vrn::any_equal<int>);
    m_validators[Active] = namesOf({{tr("yes"), true}, {tr("no"), false}}, &vrn::any_equal<bool>);
    m_validators[Duplicate] = boost::make_shared<ForwardValidator>(nullptr);
    for (const QuantityColumn& each : quantityColumns)
        m_validators[each.column] = boost::make_shared<ForwardValidator>(nullptr);
    setUnitSystem(0);
}

std::vector<Member> MembersModel::building(int count)
{
    static const std::array<Member, 3> kinds = {{
        {std::wstring(), 355, 0.0149, 3.2, 0.0, true},
        {std::wstring(), 235, 0.00538, 7.2, 12.5, true},
        {std::wstring(), 235, 0.00212, 4.75, 0.0, false},
    }};
    constexpr std::array<std::wstring_view, kinds.size()> names = {L"Column ", L"Beam ", L"Brace "};

    std::vector<Member> members;
    members.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const std::size_t kind = static_cast<std::size_t>(i) % kinds.size();
        Member member = kinds[kind];
        // In one piece: the gallery makes 100,000 of them whenever it opens.
        const std::string number = std::to_string(i + 1);
        member.name.resize(names[kind].size() + number.size());
        std::copy(number.begin(), number.end(),
            std::copy(names[kind].begin(), names[kind].end(), member.name.begin()));
        *member.length += 0.05 * (i % 7);
        members.push_back(std::move(member));
    }
    return members;
}

const NamedValueList& MembersModel::materials()
{
    static const NamedValueList all = {{QStringLiteral("S235"), 235}, {QStringLiteral("S275"), 275},
        {QStringLiteral("S355"), 355}, {QStringLiteral("S460"), 460}};
    return all;
}

const IValidator::pointer& MembersModel::validator(int column) const
{
    const bool hasValues = column >= 0 && column < Duplicate;
    return m_validators[static_cast<std::size_t>(hasValues ? column : Duplicate)];
}

void MembersModel::setUnitSystem(int system)
{
    const vrn::units::Context context(system);
    for (const QuantityColumn& each : quantityColumns) {
        auto validator = boost::make_shared<UnitValidator>(context, each.kind);
        validator->setEmptyValueAllowed(true);
        boost::static_pointer_cast<ForwardValidator>(m_validators[each.column])
            ->setValidator(validator);
    }
    if (!m_members.empty())
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

void MembersModel::append(int firstColumn, const std::deque<boost::optional<boost::any>>& values)
{
    Member member;
    int column = firstColumn;
    for (const boost::optional<boost::any>& value : values) {
        if (value)
            assign(member, column, *value);
        ++column;
    }
    beginInsertRows(QModelIndex(), rowCount(), rowCount());
    m_members.push_back(std::move(member));
    endInsertRows();
}

void MembersModel::duplicate(int row)
{
    beginInsertRows(QModelIndex(), row + 1, row + 1);
    const Member member = m_members[static_cast<std::size_t>(row)];
    m_members.insert(m_members.begin() + row + 1, member);
    endInsertRows();
}

int MembersModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_members.size());
}

int MembersModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString MembersModel::text(const QModelIndex& index) const
{
    const boost::any value = valueOf(
        m_members[static_cast<std::size_t>(index.row())], index.column());
    return value.empty() ? QString() : validator(index.column())->reformatForDisplay(value, 0);
}

QVariant MembersModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Member& member = m_members[static_cast<std::size_t>(index.row())];
    if (index.column() == Duplicate)
        return role == vrn::qt::DisplayRole ? tr("Duplicate") : QVariant();
    switch (role) {
    case vrn::qt::EditRole:
        return QVariant::fromValue(valueOf(member, index.column()));
    case Qt::CheckStateRole:
        if (index.column() != Active)
            return {};
        return member.isActive.value_or(false) ? Qt::Checked : Qt::Unchecked;
    case vrn::qt::DisplayRole:
        return index.column() == Active ? QVariant() : text(index);
    case vrn::qt::ToolTipRole:
        return text(index);
    case Qt::TextAlignmentRole:
        if (quantityColumn(index.column()))
            return QVariant(Qt::AlignRight | Qt::AlignVCenter);
        return {};
    default:
        return {};
    }
}

QVariant MembersModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case Name:
        return tr("Name");
    case Material:
        return tr("Material");
    case Area:
        return tr("Section area");
    case Length:
        return tr("Length");
    case Load:
        return tr("Load");
    case Active:
        return tr("Active");
    default:
        return QVariant();
    }
}

Qt::ItemFlags MembersModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags plain = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return plain | (index.column() == Active ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

bool MembersModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || index.column() == Duplicate)
        return false;
    Member& member = m_members[static_cast<std::size_t>(index.row())];
    switch (role) {
    case vrn::qt::DisplayRole:
    case vrn::qt::ToolTipRole:
        // These follow from the value, which comes next.
        return true;
    case vrn::qt::EditRole:
        if (!assign(member, index.column(), value.value<boost::any>()))
            return false;
        break;
    case Qt::CheckStateRole:
        if (index.column() != Active)
            return false;
        member.isActive = value.toInt() == Qt::Checked;
        break;
    default:
        return false;
    }
    Q_EMIT dataChanged(index, index);
    return true;
}

bool MembersModel::removeRows(int row, int count, const QModelIndex& parent)
{
    if (parent.isValid() || row < 0 || count < 1 || count > rowCount() - row)
        return false;
    beginRemoveRows(QModelIndex(), row, row + count - 1);
    const auto first = m_members.begin() + row;
    m_members.erase(first, first + count);
    endRemoveRows();
    return true;
}

} // namespace gallery
