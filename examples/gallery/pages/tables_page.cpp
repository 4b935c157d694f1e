#include "pages/tables_page.h"

#include <vrn/base/any_predicates.h>
#include <vrn/qt/cell_data.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

#include "members_model.h"
#include "members_table.h"
#include "unit_systems.h"
#include "value_label.h"
#include "value_text.h"

namespace gallery {
namespace {

using namespace vrn::qt;

constexpr int fewMembers = 300;
constexpr int manyMembers = 100000;

} // namespace

TablesPage::TablesPage(QWidget* parent)
    : QWidget(parent)
    , m_system(SimpleEnumBox::create(this, tr("&Unit system"), &vrn::any_equal<int>))
    , m_tabs(new QTabWidget)
    , m_value(new ValueLabel)
{
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(createSystems());
    layout->addWidget(m_tabs, 1);
    layout->addWidget(m_value);
    auto* keys = new QLabel(
        tr("Delete clears the selected cells. Ctrl+X, Ctrl+C and Ctrl+V work on their values; a "
           "block that is pasted on one cell may go on below the last row."));
    keys->setWordWrap(true);
    layout->addWidget(keys);

    addTable(tr("300 &members"), fewMembers);
    addTable(tr("&100,000 members"), manyMembers);
    connect(m_tabs, &QTabWidget::currentChanged, this, &TablesPage::showCurrent);
    showCurrent();
}

QWidget* TablesPage::createSystems()
{
    m_system->setValues(unitSystems());
    connect(m_system, &SimpleEnumBox::valueChanged, this, &TablesPage::setUnitSystem);

    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_system);
    layout->addStretch(1);
    return row;
}

void TablesPage::addTable(const QString& title, int members)
{
    auto* model = new MembersModel(MembersModel::building(members), this);
    m_models.push_back(model);
    auto* table = new MembersTable(model);
    connect(table->selectionModel(), &QItemSelectionModel::currentChanged, this,
        &TablesPage::showCurrent);
    connect(model, &QAbstractItemModel::dataChanged, this, &TablesPage::showCurrent);
    m_tabs->addTab(table, title);
}

void TablesPage::setUnitSystem()
{
    for (MembersModel* model : m_models)
        model->setUnitSystem(boost::any_cast<int>(m_system->getSelectedValue()));
}

void TablesPage::showCurrent()
{
    const auto* table = qobject_cast<QTableView*>(m_tabs->currentWidget());
    const QModelIndex current = table ? table->currentIndex() : QModelIndex();
    const auto value = current.data(vrn::qt::EditRole).value<boost::any>();
    m_value->setText(tr("Current value: %1 %2").arg(typeText(value), valueText(value)));
}

} // namespace gallery
