#include "cppdb_table/steady_index_p.h"

#include <QAbstractProxyModel>

namespace vrn::qt::detail {
namespace {

QModelIndex toSource(const QModelIndex& index)
{
    const auto* const proxy = qobject_cast<const QAbstractProxyModel*>(index.model());
    if (!proxy)
        return index;
    const QModelIndex source = proxy->mapToSource(index);
    // A proxy may have cells of its own, or show one cell of its source several times.
    if (!source.isValid() || proxy->mapFromSource(source) != index)
        return index;
    return toSource(source);
}

QModelIndex fromSource(const QAbstractItemModel* model, const QModelIndex& source)
{
    if (source.model() == model)
        return source;
    const auto* const proxy = qobject_cast<const QAbstractProxyModel*>(model);
    return proxy ? proxy->mapFromSource(fromSource(proxy->sourceModel(), source)) : QModelIndex();
}

} // namespace

SteadyIndex::SteadyIndex(QAbstractItemModel* model, const QModelIndex& index)
    : m_model(model)
    , m_source(toSource(index))
{}

QModelIndex SteadyIndex::get() const
{
    return m_source.isValid() ? fromSource(m_model, m_source) : QModelIndex();
}

} // namespace vrn::qt::detail
