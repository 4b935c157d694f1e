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

/// Check boxes, radio groups and groups of check boxes, arranged by each of the layouters.
/// Beside each is the value that an application reads from it.
class GroupsPage : public QWidget
{
    Q_OBJECT

public:
    explicit GroupsPage(QWidget* parent = nullptr);
    ~GroupsPage() override;

private:
    // What every row has, whichever control is in it.
    struct Row
    {
        QLabel* value;
        QLabel* signalCount;
        std::function<QString()> valueText;
        std::function<void()> reset;
        // Reads object 0 or 1, which differ.
        std::function<void(int object)> read;
        std::function<void()> endRead;
    };

    QWidget* createButtons();
    /// A column of controls, each with its value and how often it emitted valueChanged().
    QGridLayout* createColumn(const QString& title, const QString& longestValue);
    void fillCheckBoxes(QGridLayout* column);
    void fillRadioGroups(QGridLayout* column);

    /// `widget` is the control or contains it. Null if it was added before.
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
