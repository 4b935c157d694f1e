#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <vector>

class QLineEdit;

namespace vrn::qt::detail {

/// Stacks popups below a line edit, in the order in which they were added, with
/// a gap of 5 pixels between them. A popup of height 0 keeps its gap. They follow
/// the edit wherever its window goes.
class VRN_QT2_EXPORT PopupGroup : public QObject
{
    Q_OBJECT

public:
    /// The edit owns the group.
    explicit PopupGroup(QLineEdit* edit);
    ~PopupGroup() override;

    void add(QWidget* popup);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool holds(const QObject* object) const;
    bool isAnyVisible() const;
    void reposition();

    QLineEdit* m_edit;
    std::vector<QPointer<QWidget>> m_popups;
};

} // namespace vrn::qt::detail
