#pragma once

#include <vrn/qt/layouters.h>
#include <vrn/qt/multi_edit_control_base.h>
#include <vrn/qt/on_value_changed_hook.h>

#include <QWidget>

#include <memory>
#include <vector>

class QLabel;
class QPlainTextEdit;

namespace gallery {

/// All controls for a selection of objects, each with the same selection. Beside each is
/// the value that an application reads from it. A list shows the signals as they arrive.
class MultiEditPage : public QWidget
{
    Q_OBJECT

public:
    explicit MultiEditPage(QWidget* parent = nullptr);

private:
    // A control, and the values that two objects have for it.
    struct Row
    {
        QString caption;
        vrn::qt::MultiEditControlBase* control;
        boost::any one;
        boost::any two;
        QLabel* varies;
        QLabel* value;
    };

    /// `control` is also a widget.
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
    void addValueColumns();

    void reset();
    /// Reads a selection. For each of its objects, `objects` says which value it has.
    void read(const std::vector<boost::any Row::*>& objects);
    void readDifferent();
    void forceVaries();
    static void show(const Row& row);
    static void show(const Row& row, const QString& value);

    vrn::qt::PropertyGridLayouter m_form;
    QPlainTextEdit* m_log;
    std::vector<Row> m_rows;
    // Declared after the rows, because the hooks use them: a field that loses the focus
    // while the page is destroyed still emits its signal.
    std::vector<std::unique_ptr<vrn::qt::OnValueChangedHook>> m_hooks;
};

} // namespace gallery
