#pragma once

#include <vrn/qt/property_model.h>

#include <QAbstractTableModel>
#include <QPointer>

#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <vector>

class QItemSelection;

namespace vrn::qt {

/// The objects of one kind as the rows of a table, and their properties as its columns.
///
///     PropertySet<Beam> beams("beam", [](int n) { return tr("%n beam(s)", nullptr, n); });
///     beams.add("depth", tr("&Depth"), &Beam::depth, field::number());
///     std::map<std::uint64_t, Beam> project{{7, Beam()}, {8, Beam()}};
///     ObjectModel objects;
///     objects.addKind(beams, &project);
///
///     PropertyTableModel rows(&objects);
///     const QString depth = rows.index(1, 0).data().toString(); // "3.333"
///     const ObjectId second = rows.id(1); // 8
///
/// A cell shows the text of its value. In an application whose layout runs from right to left,
/// the text is in invisible marks (U+2068 and U+2069), so that it reads as in a field: "3 m" and
/// not "m 3". It is grey where the object does not meet the condition of FieldOf::enabledIf(). The
/// value itself, a `boost::any`, is in EditRole of
/// cell_data.h, so that the typed copy of a CppDbTableViewBase works. setData() is false:
/// edit with a PropertySelection of ids().
///
/// The model is read in blocks of rows, when a view asks for them. If it throws, cells are
/// empty, and their tool tip is the reason. The table follows changed() and unitsChanged().
/// Without the model it has no rows.
class VRN_QT2_EXPORT PropertyTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit PropertyTableModel(
        PropertyModel* model, std::uint32_t kind = 0, QObject* parent = nullptr);
    ~PropertyTableModel() override;

    /// The rows, in this order; each object once. Those of another kind are left out. Without
    /// this, all objects of the kind are the rows. Selections in views keep to their objects.
    /// The row of an object that is not there is empty, and shows it when it is back.
    void setIds(const ObjectIds& ids);
    const ObjectIds& ids() const { return m_ids; }
    /// Each object once, however many of its cells are selected, sorted. Indexes of other
    /// models are left out.
    ObjectIds ids(const QItemSelection& selection) const;
    /// Asserts "isRow".
    ObjectId id(int row) const;
    /// -1 if it has no row.
    int rowOf(ObjectId id) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(
        int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    struct Block;

    void onChanged(const PropertyKeys& keys, const ObjectIds& ids);
    void onUnitsChanged();
    void onModelDestroyed();
    ObjectIds allObjects() const;
    void setRows(ObjectIds ids);
    void removeOthers(const ObjectIds& ids);
    void insertNew(const ObjectIds& ids);
    void reorder(const ObjectIds& ids);
    void take(const ObjectIds& ids);
    int columnOf(const std::string& key) const;
    bool isEnabled(const Block& rows, std::size_t place, std::size_t column) const;
    const Block& block(std::size_t number) const;

    QPointer<PropertyModel> m_model;
    std::uint32_t m_kind;
    bool m_hasAll = true;
    ObjectIds m_ids;
    std::vector<PropertyDescription> m_columns;
    std::vector<int> m_conditions; ///< For each column, the one of its condition, or -1.
    int m_change = 0; ///< Counts the calls of setRows().
    mutable std::vector<std::pair<ObjectId, int>> m_rows; ///< Sorted; empty until asked for.
    mutable std::map<std::size_t, std::unique_ptr<Block>> m_blocks;
};

} // namespace vrn::qt
