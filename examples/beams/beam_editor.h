#pragma once

#include <vrn/qt/object_model.h>
#include <vrn/qt/property_page.h>
#include <vrn/qt/property_table_model.h>
#include <vrn/qt/settings_history.h>

#include <boost/make_shared.hpp>

#include <QtWidgets>

#include <map>

namespace beams {

using namespace vrn::qt;
namespace UnitId = vrn::units::UnitId;

struct Beam
{
    QString name;
    double length = 3.0; // m
    int support = 0;
    double depth = 0.3; // m
    double load = 12.5; // kN/m
    int bolts = 1;
    bool isActive = true;
};

using Beams = std::map<std::uint64_t, Beam>; // a key is not given out again

/// A list and a table of beams, and the properties of those that are selected.
class BeamEditor : public QMainWindow
{
    Q_DECLARE_TR_FUNCTIONS(BeamEditor)

public:
    explicit BeamEditor(int count)
    {
        for (int i = 0; i < count; ++i)
            m_beams[std::uint64_t(i)] = {tr("B%1").arg(i + 1), 3.0 + i % 5 / 7.0, i % 3};
        m_model.addKind(properties(), &m_beams);
        m_page->setModel(&m_model);
        m_page->setUndoStack(&m_undo);
        m_page->setHistory(boost::make_shared<SettingsHistory>());
        m_page->restoreState(QSettings().value("page").toByteArray());
        m_rows = new PropertyTableModel(&m_model, 0, this);
        m_table->setModel(m_rows);
        m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
        m_list->setModel(m_rows);
        m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
        m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
        m_list->setSelectionModel(m_table->selectionModel());
        connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { m_page->setSelection(m_rows->ids(m_table->selectionModel()->selection())); });

        auto* columns = new QSplitter;
        for (QWidget* each : std::initializer_list<QWidget*>{m_list, m_page, m_table})
            columns->addWidget(each);
        columns->setSizes({120, 380, 600});
        setCentralWidget(columns);
        addActions();
    }

    /// The common values of the selected beams.
    void save(const QString& path)
    {
        if (path.isEmpty() || !m_page->finishEditing())
            return;
        QSaveFile file(path);
        const QByteArray text = QJsonDocument(m_page->save()).toJson();
        if (!file.open(QIODevice::WriteOnly) || file.write(text) < 0 || !file.commit())
            QMessageBox::warning(this, tr("Save"), file.errorString());
    }
    void load(const QString& path)
    {
        if (path.isEmpty())
            return;
        QFile file(path);
        const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        try {
            m_page->load(QJsonDocument::fromJson(text).object());
        } catch (const PropertyError& error) {
            QMessageBox::warning(this, tr("Load"), error.reason());
        }
    }

private:
    static PropertySet<Beam> properties()
    {
        const auto counted = [](int n) { return n == 1 ? tr("1 beam") : tr("%1 beams").arg(n); };
        const auto odd = [](int n) { return n % 2 ? QString() : tr("Bolts come in odd numbers."); };
        PropertySet<Beam> beams("beam", counted);
        beams.section("general", tr("General"))
            .add("name", tr("&Name"), &Beam::name, field::text().maxLength(20))
            .add("active", tr("&Active"), &Beam::isActive, field::flag());
        beams.section("geometry", tr("Geometry"))
            .add("length", tr("&Length"), &Beam::length,
                field::quantity(UnitId::GEO_LENGTH).between(0.1, 40.0).history())
            .add("depth", tr("&Depth"), &Beam::depth,
                field::quantity(UnitId::SECT_LENGTH).between(0.05, 3.0).history())
            .add("bolts", tr("&Bolts"), &Beam::bolts, field::integer().between(1, 99).accept(odd));
        beams.section("statics", tr("Statics"))
            .add("support", tr("&Support"), &Beam::support,
                field::choice<int>({{tr("fixed"), 0}, {tr("pinned"), 1}, {tr("free"), 2}}))
            .add("load", tr("L&oad"), &Beam::load,
                field::quantity(UnitId::LOAD_LINE).between(-1000.0, 1000.0).history());
        return beams;
    }

    void addActions()
    {
        QAction* undo = m_undo.createUndoAction(this);
        undo->setShortcut(QKeySequence::Undo);
        undo->setIconText(tr("Undo")); // of one width, whatever it undoes
        QAction* redo = m_undo.createRedoAction(this);
        redo->setShortcut(QKeySequence::Redo);
        redo->setIconText(tr("Redo"));
        QToolBar* bar = addToolBar(tr("Edit"));
        bar->addActions({undo, redo});
        bar->addAction(tr("Delete"), this, [this] {
            if (m_page->finishEditing() && !m_page->selection().empty())
                m_undo.push(new Delete(*this));
        });
        bar->addAction(tr("Save"), this, [this] { save(QFileDialog::getSaveFileName(this)); });
        bar->addAction(tr("Load"), this, [this] { load(QFileDialog::getOpenFileName(this)); });
        for (int system = 0; system < 10; ++system) {
            const auto label = vrn::units::Context(system).get_display_label(UnitId::GEO_LENGTH);
            m_system->addItem(tr("System %1, %2").arg(system).arg(QString::fromStdString(label)));
        }
        bar->addWidget(m_system);
        bar->addWidget(m_feet);
        connect(m_system, &QComboBox::currentTextChanged, this, [this] { setUnits(); });
        connect(m_feet, &QCheckBox::toggled, this, [this] { setUnits(); });
    }

    void setUnits()
    {
        vrn::units::Context units(m_system->currentIndex());
        if (m_feet->isChecked()) {
            const auto unit = UnitId::FEET_AND_FRACTIONAL_INCHES;
            units.format_provider().set_unit(UnitId::GEO_LENGTH, unit);
            units.format_provider().set_precision(UnitId::GEO_LENGTH, 16);
        }
        m_model.setUnits(units);
    }

    void closeEvent(QCloseEvent* event) override
    {
        QSettings().setValue("page", m_page->saveState());
        QMainWindow::closeEvent(event);
    }

    /// A beam comes back under its id, so that earlier undo steps fit again.
    struct Delete : public QUndoCommand
    {
        explicit Delete(BeamEditor& beamEditor)
            : QUndoCommand(tr("Delete beams"))
            , editor(beamEditor)
        {}
        void redo() override
        {
            for (const ObjectId& id : ids)
                deleted.insert(editor.m_beams.extract(id.key));
            editor.m_model.announce();
        }
        void undo() override
        {
            editor.m_beams.merge(deleted);
            editor.m_model.announce();
        }
        BeamEditor& editor;
        const ObjectIds ids = editor.m_page->selection();
        Beams deleted;
    };

    Beams m_beams;
    ObjectModel m_model;
    QUndoStack m_undo;
    PropertyTableModel* m_rows = nullptr;
    PropertyPage* m_page = new PropertyPage;
    QListView* m_list = new QListView;
    QTableView* m_table = new QTableView;
    QComboBox* m_system = new QComboBox;
    QCheckBox* m_feet = new QCheckBox(tr("Lengths in &feet and inches"));
};

} // namespace beams
