#pragma once

#include <vrn/qt/forward_validator.h>
#include <vrn/units/context.h>

#include <boost/any.hpp>
#include <boost/shared_ptr.hpp>

#include <QWidget>

#include <bitset>
#include <vector>

class QCheckBox;
class QGridLayout;
class QGroupBox;
class QLabel;

namespace vrn::qt {
class SimpleEnumBox;
class SimpleLineEdit;
} // namespace vrn::qt

namespace gallery {

/// Quantities of a dozen kinds in a unit system that the user chooses. Beside each is the
/// value that the application stores, in the base scale.
///
/// A validator has a copy of its context. So when the system changes, every field gets a new
/// validator with the context that is then active. The page stores the values itself, apart
/// from the texts, and only shows them again.
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

    vrn::qt::SimpleEnumBox* m_system;
    QCheckBox* m_decimalComma;
    QCheckBox* m_feetAndInches;
    QGridLayout* m_grid;
    std::vector<Row> m_rows;
    QGroupBox* m_overview; ///< The value of m_shownRow in all systems.
    std::vector<QLabel*> m_inSystem;
    std::size_t m_shownRow = 0;
};

} // namespace gallery
