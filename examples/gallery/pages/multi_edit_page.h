#pragma once

#include <vrn/qt/multi_edit_control_base.h>
#include <vrn/qt/on_value_changed_hook.h>

#include <QWidget>

#include <memory>
#include <vector>

class QGridLayout;
class QLabel;
class QPlainTextEdit;

namespace gallery {

/// Every control for a selection of objects, all on one selection; beside each
/// what an application reads out of it, and at the side the signals as they come.
class MultiEditPage : public QWidget
{
    Q_OBJECT

public:
    explicit MultiEditPage(QWidget* parent = nullptr);

private:
    // A control, and the values of it that two objects have.
    struct Row
    {
        QString caption;
        vrn::qt::MultiEditControlBase* control;
        boost::any one;
        boost::any two;
        QLabel* varies;
        QLabel* value;
    };

    /// `control` is a widget, too.
    template <typename Control>
    void addControl(
        const QString& caption, Control* control, const boost::any& one, const boost::any& two)
    {
        addRow(caption, control, control, one, two);
    }
    void addRow(const QString& caption, QWidget* widget, vrn::qt::MultiEditControlBase* control,
        const boost::any& one, const boost::any& two);

    QWidget* createButtons();
    QWidget* createLog();
    void addHeader();

    void reset();
    /// Reads a selection: for each of its objects, which of the two values it has.
    void read(const std::vector<boost::any Row::*>& objects);
    void readDifferent();
    void forceVaries();
    static void show(const Row& row);
    static void show(const Row& row, const QString& value);

    QGridLayout* m_grid;
    QPlainTextEdit* m_log;
    std::vector<Row> m_rows;
    // Behind the rows, which they use: a field that loses the focus when the page
    // is destroyed still sends its signal.
    std::vector<std::unique_ptr<vrn::qt::OnValueChangedHook>> m_hooks;
};

} // namespace gallery
