#pragma once

#include "controls/popups/popup_base_p.h"

class QLabel;

namespace vrn::qt::detail {

/// Shows a hint about the text in the edit. It is only there to be read: the mouse
/// presses what is below it in the window of the edit.
class VRN_QT2_EXPORT EditHintPopup : public PopupBase
{
    Q_OBJECT

public:
    explicit EditHintPopup(QWidget* owner);
    ~EditHintPopup() override;

    /// Sets the text, and resizes the popup for it. It does not show the popup.
    virtual void setHint(const QString& hint);

    /// (0, 0) without a text.
    QSize sizeHint() const override;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    QLabel* label() const { return m_label; }

    void showEvent(QShowEvent* event) override;

private:
    bool handDown(const QMouseEvent& event);

    QLabel* m_label;
    bool m_pressedBelow = false; ///< The widget below got the last press.
};

} // namespace vrn::qt::detail
