#pragma once

#include <vrn/qt/value_history.h>

#include "controls/popups/popup_base_p.h"

class QListWidget;

namespace vrn::qt::detail {

/// Offers the values of a history; a click chooses one. The list is read anew
/// each time the popup is shown.
class VRN_QT2_EXPORT HistoryPopup : public PopupBase
{
    Q_OBJECT

public:
    explicit HistoryPopup(QWidget* owner);
    ~HistoryPopup() override;

    void setValueHistory(boost::shared_ptr<vrn::ValueHistory> history);

    /// (0, 0) without entries.
    QSize sizeHint() const override;

Q_SIGNALS:
    void itemSelected(const QString& text);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void selectCurrentRow();

    QListWidget* m_list;
    boost::shared_ptr<vrn::ValueHistory> m_history;
};

} // namespace vrn::qt::detail
