#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QWidget>

#include "qt_compat_p.h"

namespace vrn::qt::detail {

/// A small translucent window that belongs to an edit: shown while the edit has
/// the focus, hidden when it loses it. While the edit is scrolled out of sight, a popup
/// that is shown waits for it to come back. The edit owns it.
///
/// It is a window of its own that never takes the activation or the focus, so that
/// typing goes on in the edit while it is shown.
class VRN_QT2_EXPORT PopupBase : public QWidget
{
    Q_OBJECT

public:
    explicit PopupBase(QWidget* owner);
    ~PopupBase() override;

    bool eventFilter(QObject* watched, QEvent* event) override;
    void setVisible(bool visible) override;

    /// Checks whether the owner has come into sight or gone out of it.
    void followOwner();

protected:
    /// A popup may repeat anything that was ever pasted, and the X protocol knows
    /// no larger window than this.
    static QSize largestSize() { return QSize(32767, 32767); }

    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void enterEvent(compat::EnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QWidget* m_owner;
    bool m_shown = false; ///< Also while the owner is out of sight.
};

} // namespace vrn::qt::detail
