#include "common/steady_index_p.h"

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

// In the highest of the models from `model` down that shows it.
QModelIndex fromSource(const QAbstractItemModel* model, const QModelIndex& source)
{
    if (source.model() == model)
        return source;
    const auto* const proxy = qobject_cast<const QAbstractProxyModel*>(model);
    if (!proxy)
        return {};
    const QModelIndex below = fromSource(proxy->sourceModel(), source);
    if (!below.isValid() || below.model() != proxy->sourceModel())
        return below;
    const QModelIndex index = proxy->mapFromSource(below);
    return index.isValid() ? index : below;
}

} // namespace

SteadyIndex::SteadyIndex(QAbstractItemModel* model, const QModelIndex& index)
    : m_model(model)
    , m_source(toSource(index))
{}

QModelIndex SteadyIndex::get() const
{
    const QModelIndex index = fromSource(m_model, m_source);
    return index.model() == m_model ? index : QModelIndex();
}

bool SteadyIndex::setData(const QVariant& value, int role) const
{
    const QModelIndex index = fromSource(m_model, m_source);
    // An index is of a const model, but the application has given us a model to write to.
    auto* const model = const_cast<QAbstractItemModel*>(index.model());
    return model && model->setData(index, value, role);
}

} // namespace vrn::qt::detail
