#pragma once

#include "controls/popups/popup_base_p.h"

class QLabel;

namespace vrn::qt::detail {

/// Shows a hint about the text in the edit.
class VRN_QT2_EXPORT EditHintPopup : public PopupBase
{
    Q_OBJECT

public:
    explicit EditHintPopup(QWidget* owner);
    ~EditHintPopup() override;

    /// Takes the text and the size for it; showing it is the caller's matter.
    void setHint(const QString& hint);

    /// (0, 0) without a text.
    QSize sizeHint() const override;

private:
    QLabel* m_label;
};

} // namespace vrn::qt::detail
