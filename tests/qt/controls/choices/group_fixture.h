#pragma once

#include <vrn/qt/multi_edit_control_base.h>

#include <QAbstractButton>
#include <QEvent>
#include <QGroupBox>
#include <QStyleOptionGroupBox>
#include <QTest>

namespace vrn::test {

/// Raises and lowers the loading flag of a control, as a derived class could.
class Loading : public vrn::qt::MultiEditControlBase
{
public:
    static void set(vrn::qt::MultiEditControlBase& control, bool loading)
    {
        (control.*(&Loading::setLoading))(loading);
    }

    using MultiEditControlBase::setLoading;
};

/// Clicks into the indicator of a button, where each style has it.
inline void clickOn(QAbstractButton* button)
{
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2));
}

/// Clicks into the check indicator of a group box.
inline void clickOn(QGroupBox* box)
{
    QStyleOptionGroupBox option;
    option.initFrom(box);
    option.text = box->title();
    option.subControls = QStyle::SC_GroupBoxCheckBox | QStyle::SC_GroupBoxLabel
        | QStyle::SC_GroupBoxFrame;
    option.textAlignment = box->alignment();
    const QRect indicator = box->style()->subControlRect(
        QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxCheckBox, box);
    QTest::mouseClick(box, Qt::LeftButton, {}, indicator.center());
}

/// Says what the slots of a signal found, call by call, and what was due.
inline QString foundInstead(const QStringList& found, const QStringList& due)
{
    return "slots find \"" + found.join(", ") + "\" instead of \"" + due.join(", ") + '"';
}

/// Destroys what has called deleteLater().
inline void deleteDeferred()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace vrn::test
