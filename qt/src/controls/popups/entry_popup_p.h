#pragma once

#include "controls/popups/edit_hint_popup_p.h"

#include <QStringList>

#include <vector>

class QKeyEvent;
class QListWidget;

namespace vrn::qt::detail {

/// Shows a hint about the text in the edit, and below it a list of what the text may become.
///
/// The keys go to the edit. Down enters the list; then Up and Down move in it, Enter and Tab
/// choose, and Escape drops it. As long as no Down has entered it, and without a list, all
/// other keys keep their meaning. A click chooses, too. A heading between entries cannot be
/// chosen, and Up and Down pass over it.
class VRN_QT2_EXPORT EntryPopup : public EditHintPopup
{
    Q_OBJECT

public:
    explicit EntryPopup(QWidget* owner);
    ~EntryPopup() override;

    void setHint(const QString& hint) override;

    /// Sets the list, and resizes the popup for it. It does not show the popup. `headings` are
    /// the rows that cannot be chosen.
    void setCompletions(const QStringList& labels, const std::vector<int>& headings = {});

    /// (0, 0) without a hint and a list.
    QSize sizeHint() const override;

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// The list has been dropped.
    void dropped();
    /// The same, because the user has chosen the entry in this row.
    void chosen(int row);

private:
    void fit();
    bool isForList(const QKeyEvent& event) const;
    void handle(const QKeyEvent& event);
    bool isOverList(const QEvent& event) const;
    void step(int by);
    void choose();

    QListWidget* m_list;
};

} // namespace vrn::qt::detail
