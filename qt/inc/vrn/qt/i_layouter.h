#pragma once

#include <vrn/qt/vrn_qt2_export.h>

class QWidget;

namespace vrn::qt {

/// Puts the parts of a composite control into a layout, so that the control
/// does not have to know whether they stand in a row, a column or a grid.
///
/// A control, or the application around it, calls onCreate once, onAdd for each
/// part and onFinish at the end. The layout belongs to the container; layouter
/// and layout may outlive each other.
///
/// To lay parts out in another way, derive from it:
///
///     struct FormLayouter : ILayouter
///     {
///         void onCreate(QWidget* parent) override { m_rows = new QFormLayout(parent); }
///         void onAdd(QWidget* widget) override { m_rows->addRow(widget); }
///         QFormLayout* m_rows = nullptr;
///     };
struct VRN_QT2_EXPORT ILayouter
{
    ILayouter();
    ILayouter(const ILayouter&) = delete;
    ILayouter& operator=(const ILayouter&) = delete;
    virtual ~ILayouter();

    /// Makes the layout of `parent`.
    virtual void onCreate(QWidget* parent) = 0;
    /// Takes in the next part.
    virtual void onAdd(QWidget* widget) = 0;
    /// All parts are in. Does nothing unless overridden.
    virtual void onFinish();
};

} // namespace vrn::qt
