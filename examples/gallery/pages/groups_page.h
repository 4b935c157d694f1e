#pragma once

#include <QWidget>

#include <boost/any.hpp>

#include <functional>
#include <memory>
#include <vector>

class QGridLayout;
class QLabel;

namespace vrn::qt {
class MultiEditCheckBoxGroup;
class MultiEditControlBase;
} // namespace vrn::qt

namespace gallery {

/// Check boxes, radio groups and groups of check boxes, laid out by each of the
/// layouters; beside each what an application reads out of it.
class GroupsPage : public QWidget
{
    Q_OBJECT

public:
    explicit GroupsPage(QWidget* parent = nullptr);
    ~GroupsPage() override;

private:
    // What there is to a row, whatever control it has.
    struct Row
    {
        QLabel* value;
        QLabel* signalCount;
        std::function<QString()> valueText;
        std::function<void()> reset;
        // Reads object 0, which differs from 1.
        std::function<void(int object)> read;
        std::function<void()> endRead;
    };

    QWidget* createButtons();
    /// A column of controls, each with its value and how often it emitted valueChanged().
    QGridLayout* createColumn(const QString& title, const QString& longestValue);
    void fillCheckBoxes(QGridLayout* column);
    void fillRadioGroups(QGridLayout* column);

    /// `widget` is the control or has it in it; a null one has been added before.
    template <typename Control>
    void addControl(QGridLayout* column, QWidget* widget, Control* control, const boost::any& one,
        const boost::any& two);
    void addCheckBoxGroup(QGridLayout* column, QWidget* widget,
        std::unique_ptr<vrn::qt::MultiEditCheckBoxGroup> group);
    template <typename Control>
    void addRow(QGridLayout* column, QWidget* widget, Control* control, Row row);

    void reset();
    void read(const std::vector<int>& objects);
    static void refresh(const Row& row);

    std::vector<Row> m_rows;
    std::vector<std::unique_ptr<vrn::qt::MultiEditCheckBoxGroup>> m_groups;
};

} // namespace gallery
