#pragma once

#include <vrn/qt/simple_enum_box.h>

#include <QWidget>

#include <vector>

class QLabel;
class QTabWidget;

namespace gallery {

class MembersModel;

/// The members of a structure in tables: a short one and one of 100,000 rows.
class TablesPage : public QWidget
{
    Q_OBJECT

public:
    explicit TablesPage(QWidget* parent = nullptr);

private:
    QWidget* createSystems();
    void addTable(const QString& title, int members);
    void setUnitSystem();
    /// Shows the value of the current cell, as the application has it.
    void showCurrent();

    vrn::qt::SimpleEnumBox* m_system;
    QTabWidget* m_tabs;
    QLabel* m_value;
    std::vector<MembersModel*> m_models;
};

} // namespace gallery
