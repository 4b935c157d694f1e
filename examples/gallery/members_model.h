#pragma once

#include <vrn/qt/i_validator.h>
#include <vrn/qt/named_value_list.h>
#include <vrn/units/context.h>

#include <QAbstractTableModel>

#include <boost/optional.hpp>

#include <array>
#include <deque>
#include <string>
#include <vector>

namespace gallery {

/// The members of a structure, one a row, as typed values. A field without a value has been
/// cleared. A name becomes an empty text then, and a material stays.
///
/// The texts of the cells follow from the values: the validator of a column writes them, in the
/// units of the system that is set.
class MembersModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        Name,
        Material,
        Area,
        Length,
        Load,
        Active,
        Duplicate, ///< A button.
        ColumnCount
    };

    struct Member
    {
        std::wstring name;
        int material = 235; ///< A value of materials().
        boost::optional<double> area; ///< m2
        boost::optional<double> length; ///< m
        boost::optional<double> load; ///< kN/m
        boost::optional<bool> isActive;
    };

    explicit MembersModel(std::vector<Member> members, QObject* parent = nullptr);

    /// Members of a building: columns, beams and braces in turn.
    static std::vector<Member> building(int count);
    static const vrn::qt::NamedValueList& materials();

    /// The validator of a column, which stays the same if the units change. That of the buttons,
    /// and of columns that do not exist, refuses every text.
    const vrn::qt::IValidator::pointer& validator(int column) const;
    void setUnitSystem(int system);

    /// Appends a member. The values go to `firstColumn` and those after it. A field without one is
    /// that of a new Member: the name is empty, the material is the first, and the others have
    /// no value.
    void append(int firstColumn, const std::deque<boost::optional<boost::any>>& values);
    void duplicate(int row);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    bool removeRows(int row, int count, const QModelIndex& parent) override;

private:
    QString text(const QModelIndex& index) const;

    std::vector<Member> m_members;
    std::array<vrn::qt::IValidator::pointer, ColumnCount> m_validators;
};

} // namespace gallery
