#pragma once

#include <vrn/qt/multi_edit_line_edit.h>

#include <functional>

class QToolButton;

namespace vrn::qt {

/// A MultiEditLineEdit with a tool button that restores a default. After a click the
/// field shows one value, such as the text "Auto", and reports another, such as the
/// null value that the model stores for it, until the user types.
///
///     auto* row = new QHBoxLayout(form);
///     const int depthId = 8;
///     row->addWidget(new MultiEditLineEditWithResetButton(new StringEditValidator(20), depthId,
///         [](int id, boost::any& shown, boost::any& reported) {
///             shown = std::string("Auto");
///             reported = std::wstring();
///         }));
class VRN_QT2_EXPORT MultiEditLineEditWithResetButton : public MultiEditLineEdit
{
    Q_OBJECT

public:
    /// A click calls `fn` with `id` and two empty values, the first to show and the
    /// second to report, and then emits valueChanged(). The control takes over the
    /// validator.
    MultiEditLineEditWithResetButton(
        IValidator* validator, int id, std::function<void(int, boost::any&, boost::any&)> fn);
    ~MultiEditLineEditWithResetButton() override;

    /// If the validator throws, no value is reported either.
    void setValue(const boost::any& value) override;
    /// From a click on the button to the next edit of the user, the reported value.
    /// A key, a pick in the history and the button of addButton() are such edits;
    /// reset(), readValue() and setValue() are not.
    boost::any getCurrentValue() const override;

private:
    int m_id;
    QToolButton* m_button;
    bool m_resetPending = false;
    boost::any m_resetValue = 0.0;
};

} // namespace vrn::qt
