#pragma once

#include <vrn/qt/multi_edit_line_edit.h>

#include <functional>

class QToolButton;

namespace vrn::qt {

/// A MultiEditLineEdit followed by a tool button that acts on the value, or
/// computes one. It has no caption, and no parent until a layout gives it one.
///
///     auto* row = new QHBoxLayout(form);
///     const int spanId = 7;
///     row->addWidget(new MultiEditLineEditWithButton(new DoubleEditValidator, spanId,
///         [](QWidget* control, int id, boost::any& value) { value = 12.5; }));
class VRN_QT2_EXPORT MultiEditLineEditWithButton : public MultiEditLineEdit
{
    Q_OBJECT

public:
    /// A click calls `fn` with `id`, and does nothing else. The control takes over
    /// the validator.
    MultiEditLineEditWithButton(IValidator* validator, int id, std::function<void(int)> fn);
    /// A click calls `fn` with this control, `id` and an empty value, and then shows
    /// the value that `fn` has left there. It does not emit valueChanged().
    MultiEditLineEditWithButton(
        IValidator* validator, int id, std::function<void(QWidget*, int, boost::any&)> fn);
    ~MultiEditLineEditWithButton() override;

    QToolButton* getButton() const { return m_btn; }

private:
    MultiEditLineEditWithButton(IValidator* validator, int id);

    QToolButton* m_btn;
    int m_id;
};

} // namespace vrn::qt
