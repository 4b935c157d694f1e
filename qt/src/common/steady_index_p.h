#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QAbstractItemModel>
#include <QPersistentModelIndex>
#include <QPointer>

namespace vrn::qt::detail {

/// A cell of a model, which stays the same cell while rows move.
///
/// That is a QPersistentModelIndex of the model below all proxies. If a sorting proxy had those
/// of many cells itself, it would update all of them for each row that it moves.
class VRN_QT2_EXPORT SteadyIndex
{
public:
    SteadyIndex(QAbstractItemModel* model, const QModelIndex& index);

    /// Where the cell is now. Invalid if it has been removed or filtered out, or if a model has
    /// been reset or destroyed.
    QModelIndex get() const;

    /// Writes to the cell, in the highest model that still shows it: a proxy may have filtered
    /// it out. False if no model shows it any more, or if that model refuses.
    bool setData(const QVariant& value, int role) const;

    /// Null once it has been destroyed.
    QAbstractItemModel* model() const { return m_model.data(); }

private:
    QPointer<QAbstractItemModel> m_model;
    QPersistentModelIndex m_source;
};

} // namespace vrn::qt::detail
