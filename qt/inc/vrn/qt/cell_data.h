#pragma once

#include <boost/any.hpp>

#include <QMetaType>

namespace vrn::qt {

/// Where a model keeps the value of a cell, and what is shown for it.
///
/// The value is a `boost::any` in a QVariant, under a role of the library's own. So a model
/// can also answer Qt's edit role as it likes:
///
///     auto* model = new QStandardItemModel(3, 2, form);
///     const QModelIndex index = model->index(0, 1);
///     model->setData(index, QVariant::fromValue<boost::any>(12.5), EditRole);
///     const auto value = index.data(EditRole).value<boost::any>();
///
/// A cell whose variant cannot be converted to a `boost::any` has no value. A `boost::any`
/// that is empty is a value: the delegates edit it.
///
/// `boost::any` is the Qt meta type of the name "boost::any" as soon as the library is loaded.
enum CellRole : int
{
    /// What the cell shows, a QString.
    DisplayRole = 0,
    /// The same text again.
    ToolTipRole = 3,
    /// The value. This is not Qt::EditRole.
    EditRole = 257,
};

} // namespace vrn::qt

Q_DECLARE_METATYPE(boost::any)
