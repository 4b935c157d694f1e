#pragma once

#include <vrn/qt/object_model.h>
#include <vrn/qt/property_page.h>
#include <vrn/qt/simple_enum_box.h>

#include <QUndoStack>
#include <QWidget>

#include <cstdint>
#include <map>
#include <optional>

class QListWidget;

namespace gallery {

/// Beams and columns in a list, the properties of those that are selected, and the steps that
/// can be undone.
class PropertiesPage : public QWidget
{
    Q_OBJECT

public:
    explicit PropertiesPage(QWidget* parent = nullptr);

private:
    struct Member
    {
        QString name;
        double length = 3.0; // m
        int grade = 355;
        double factor = 1.0;
        std::optional<double> load; // kN/m
        bool isProtected = false;
        int minutes = 30;
        int number = 2; // Of the bolts of a beam, or of the storey of a column.
    };
    using Members = std::map<std::uint64_t, Member>;

    static vrn::qt::PropertySet<Member> beams();
    static vrn::qt::PropertySet<Member> columns();
    /// What beams and columns have in common.
    static void addCommon(vrn::qt::PropertySet<Member>& members);

    QWidget* createBar();
    void createList();
    void showNames();
    void select();
    void setUnitSystem();

    Members m_beams;
    Members m_columns;
    vrn::qt::ObjectModel m_model;
    QUndoStack m_undo;
    vrn::qt::ObjectIds m_ids; ///< In the order of the list.
    vrn::qt::SimpleEnumBox* m_system;
    QListWidget* m_list;
    vrn::qt::PropertyPage* m_page;
};

} // namespace gallery
