#pragma once

#include <vrn/qt/vrn_qt2_export.h>

class QWidget;

namespace vrn::qt {

/// Puts the parts of a composite control into a layout, so that the control does not
/// have to know whether they are in a row, a column or a grid.
///
/// A control, or the application around it, calls onCreate once, onAdd for each
/// part and onFinish at the end. The layout belongs to the container. The layouter
/// may outlive the layout, and the layout may outlive the layouter.
///
/// A layouter must not destroy the control that calls it, its parent or its window,
/// because the control is still being made.
///
/// To lay parts out in another way, derive from this class:
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
    /// Adds the next part to the layout.
    virtual void onAdd(QWidget* widget) = 0;
    /// Called after the last part. Does nothing unless overridden.
    virtual void onFinish();
};

} // namespace vrn::qt
