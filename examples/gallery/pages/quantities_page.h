#pragma once

#include <vrn/qt/forward_validator.h>
#include <vrn/units/context.h>

#include <boost/any.hpp>
#include <boost/shared_ptr.hpp>

#include <QWidget>

#include <bitset>
#include <vector>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;

namespace vrn::qt {
class SimpleLineEdit;
}

namespace gallery {

/// Quantities of a dozen kinds in a unit system of the user's choice; beside
/// each, the value that the application keeps, in the base scale.
///
/// A validator has a copy of its context, so a change of the system puts new
/// validators behind the fields, each with the context that is active then. The
/// values are kept here, apart from the texts:
/// they are only shown anew.
class QuantitiesPage : public QWidget
{
    Q_OBJECT

public:
    explicit QuantitiesPage(QWidget* parent = nullptr);

private:
    struct Row
    {
        vrn::units::UnitId::UnitId kind;
        boost::any value;
        boost::shared_ptr<vrn::qt::ForwardValidator> validator;
        vrn::qt::SimpleLineEdit* edit;
        QLabel* baseValue;
    };

    QWidget* createChoices();
    QWidget* createOverview();
    void addRow(vrn::units::UnitId::UnitId kind, const QString& caption, double baseValue);
    void takeOver(Row& row);
    void rebuildValidators();
    static void showBaseValue(const Row& row);
    void showInAllSystems(std::size_t index);
    vrn::units::Context contextOf(int system) const;
    std::bitset<32> flags() const;

    QComboBox* m_system;
    QCheckBox* m_decimalComma;
    QCheckBox* m_feetAndInches;
    QGridLayout* m_grid;
    std::vector<Row> m_rows;
    QGroupBox* m_overview; ///< One value in all systems: that of m_shownRow.
    std::vector<QLabel*> m_inSystem;
    std::size_t m_shownRow = 0;
};

} // namespace gallery
