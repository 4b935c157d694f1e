#include "pages/properties_page.h"

#include <vrn/base/any_predicates.h>
#include <vrn/qt/value_history.h>

#include <boost/make_shared.hpp>

#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QListWidget>
#include <QToolButton>
#include <QUndoView>

#include "unit_systems.h"

namespace gallery {

using namespace vrn::qt;
namespace UnitId = vrn::units::UnitId;

PropertiesPage::PropertiesPage(QWidget* parent)
    : QWidget(parent)
    , m_beams{{1, {tr("Ridge"), 7.4, 355, 1.35, std::nullopt}},
          {2, {tr("Girder A"), 6.2, 355, 1.35, 12.5}},
          {3, {tr("Girder B"), 20.0 / 3.0, 355, 1.35, 12.5}},
          {4, {tr("Purlin"), 4.8, 235, 1.35, 3.5}}}
    , m_columns{{1, {tr("Column 1"), 3.2, 355, 1.35, 4.0, true, 90, 1}},
          {2, {tr("Column 2"), 3.2, 355, 1.35, 4.0, true, 60, 1}},
          {3, {tr("Column 3"), 2.9, 460, 1.35, std::nullopt, true, 60, 2}}}
    , m_system(SimpleEnumBox::create(this, tr("&Unit system"), &vrn::any_equal<int>))
    , m_list(new QListWidget)
    , m_page(new PropertyPage)
{
    m_model.addKind(beams(), &m_beams);
    m_model.addKind(columns(), &m_columns);
    m_page->setModel(&m_model);
    m_page->setUndoStack(&m_undo);
    m_page->setHistory(boost::make_shared<vrn::ValueHistoryMemoryStorage>());
    createList();

    auto* layout = new QGridLayout(this);
    layout->addWidget(createBar(), 0, 0, 1, 3);
    layout->addWidget(new QLabel(tr("<b>Members</b>")), 1, 0);
    layout->addWidget(new QLabel(tr("<b>Properties of those that are selected</b>")), 1, 1);
    layout->addWidget(new QLabel(tr("<b>Steps</b>")), 1, 2);
    auto* steps = new QUndoView(&m_undo);
    steps->setAccessibleName(tr("Steps"));
    steps->setEmptyLabel(tr("as it was"));
    layout->addWidget(m_list, 2, 0);
    layout->addWidget(m_page, 2, 1);
    layout->addWidget(steps, 2, 2);
    layout->setColumnStretch(0, 2);
    layout->setColumnStretch(1, 5);
    layout->setColumnStretch(2, 3);
    auto* help = new QLabel(
        tr("Select several members. Try \"+= 5%\" or \"7 ft 6 in\" as their length, and an odd "
           "number of bolts for beams. Only members that are protected have a fire resistance."));
    help->setWordWrap(true);
    layout->addWidget(help, 3, 0, 1, 3);
}

PropertySet<PropertiesPage::Member> PropertiesPage::beams()
{
    PropertySet<Member> beams("beam", [](int n) { return tr("%1 beam(s)").arg(n); });
    addCommon(beams);
    const auto odd = [](int n) { return n % 2 ? tr("Bolts come in pairs.") : QString(); };
    beams.section("joint", tr("Joint"))
        .add("bolts", tr("&Bolts"), &Member::number, field::integer().between(2, 40).accept(odd));
    return beams;
}

PropertySet<PropertiesPage::Member> PropertiesPage::columns()
{
    PropertySet<Member> columns("column", [](int n) { return tr("%1 column(s)").arg(n); });
    addCommon(columns);
    columns.section("place", tr("Place"))
        .add("storey", tr("&Storey"), &Member::number, field::integer().between(0, 60));
    return columns;
}

void PropertiesPage::addCommon(PropertySet<Member>& members)
{
    members.section("general", tr("General"))
        .add("name", tr("&Name"), &Member::name, field::text().maxLength(20))
        .add("length", tr("&Length"), &Member::length,
            field::quantity(UnitId::GEO_LENGTH).between(0.1, 40.0).history())
        .add("grade", tr("&Grade"), &Member::grade,
            field::choice<int>({{tr("S235"), 235}, {tr("S355"), 355}, {tr("S460"), 460}}));
    members.section("load", tr("Load"))
        .add("load", tr("Line l&oad"), &Member::load,
            field::quantity(UnitId::LOAD_LINE).between(-500.0, 500.0).history())
        .add("factor", tr("&Factor"), &Member::factor, field::number(2).between(0.5, 2.0));
    members.section("fire", tr("Fire"))
        .add("protected", tr("&Protected"), &Member::isProtected, field::flag())
        .add("minutes", tr("&Resistance, min"), &Member::minutes,
            field::integer().between(15, 240).enabledIf("protected"));
}

QWidget* PropertiesPage::createBar()
{
    m_system->setValues(unitSystems());
    connect(m_system, &SimpleEnumBox::valueChanged, this, &PropertiesPage::setUnitSystem);

    auto* bar = new QWidget;
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_system);
    layout->addStretch(1);
    const auto addButton = [&](QAction* action, const QString& text,
                               QKeySequence::StandardKey key) {
        action->setShortcut(key);
        action->setIconText(text); // of one width, whatever it does
        auto* button = new QToolButton;
        button->setDefaultAction(action);
        layout->addWidget(button);
    };
    addButton(m_undo.createUndoAction(this), tr("Undo"), QKeySequence::Undo);
    addButton(m_undo.createRedoAction(this), tr("Redo"), QKeySequence::Redo);
    return bar;
}

void PropertiesPage::createList()
{
    m_list->setAccessibleName(tr("Members"));
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    for (std::uint32_t kind = 0; kind < m_model.kindCount(); ++kind) {
        for (const ObjectId& id : m_model.objects(kind)) {
            m_ids.push_back(id);
            m_list->addItem(QString());
        }
    }
    showNames();
    connect(&m_model, &PropertyModel::changed, this, &PropertiesPage::showNames);
    connect(m_list, &QListWidget::itemSelectionChanged, this, &PropertiesPage::select);
    // Two beams and two columns.
    for (const int row : {1, 2, 4, 5})
        m_list->item(row)->setSelected(true);
}

void PropertiesPage::showNames()
{
    for (std::size_t row = 0; row < m_ids.size(); ++row)
        m_list->item(int(row))->setText(m_model.text(m_ids[row], "name"));
}

void PropertiesPage::select()
{
    ObjectIds selected;
    for (const QModelIndex& index : m_list->selectionModel()->selectedIndexes())
        selected.push_back(m_ids[std::size_t(index.row())]);
    m_page->setSelection(selected);
}

void PropertiesPage::setUnitSystem()
{
    m_model.setUnits(vrn::units::Context(boost::any_cast<int>(m_system->getSelectedValue())));
}

} // namespace gallery
