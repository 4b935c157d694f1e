#pragma once

#include <vrn/qt/expand_direction.h>
#include <vrn/qt/i_layouter.h>
#include <vrn/qt/vrn_qt2_export.h>

#include <QBoxLayout>
#include <QGridLayout>
#include <QPointer>

#include <vector>

class QString;

namespace vrn::qt {

// The layouters of the library. Each reports an assertion and does nothing while
// it has no layout: before onCreate, after an onCreate for a container that already
// had a layout, and after the container has gone.

/// Puts the parts one below the other, at the top of the container.
///
///     VBoxLayouter column;
///     auto* group = MultiEditRadioButtonGroup::create(tr("Steel"),
///         {{"S235", 235}, {"S355", 355}}, &vrn::any_equal<int>, &vrn::any_less<int>,
///         form, &column, true, true);
struct VRN_QT2_EXPORT VBoxLayouter : public ILayouter
{
    VBoxLayouter();
    ~VBoxLayouter() override;

    void onCreate(QWidget* parent) override;
    void onAdd(QWidget* widget) override;
    void onFinish() override;

    QVBoxLayout* layout() const { return m_layout.data(); }

private:
    QPointer<QVBoxLayout> m_layout;
};

/// Puts the parts side by side, at the left of the container.
struct VRN_QT2_EXPORT HBoxLayouter : public ILayouter
{
    HBoxLayouter();
    ~HBoxLayouter() override;

    void onCreate(QWidget* parent) override;
    void onAdd(QWidget* widget) override;
    void onFinish() override;

    QHBoxLayout* layout() const { return m_layout.data(); }

private:
    QPointer<QHBoxLayout> m_layout;
};

/// Puts the parts into one line of a grid, downwards or to the right. The grid does
/// not wrap by itself: setPosition starts another line.
///
///     auto* box = new QGroupBox(tr("Fixed"), form);
///     GridLayouter grid(ExpandHorizontal);
///     grid.onCreate(box);
///     MultiEditCheckBoxGroup upper(box, grid, {tr("x"), tr("y"), tr("z")}, {});
///     grid.setPosition(1, 0);
///     MultiEditCheckBoxGroup lower(box, grid, {tr("rx"), tr("ry"), tr("rz")}, {});
struct VRN_QT2_EXPORT GridLayouter : public ILayouter
{
    /// Fills downwards with ExpandVertical, and to the right with any other value.
    explicit GridLayouter(ExpandDirection direction);
    ~GridLayouter() override;

    void onCreate(QWidget* parent) override;
    /// Reports an assertion and leaves the widget out if the position is negative,
    /// or too far out for a grid to have room for all cells before it.
    void onAdd(QWidget* widget) override;

    /// Leaves `skip` cells empty after each widget, from the next one on.
    void setCellSkip(int skip) { m_cellSkip = skip; }
    /// Sets the cell of the next widget.
    void setPosition(int row, int column)
    {
        m_row = row;
        m_column = column;
    }

    QGridLayout* layout() const { return m_layout.data(); }

private:
    QPointer<QGridLayout> m_layout;
    ExpandDirection m_direction;
    int m_row = 0;
    int m_column = 0;
    int m_cellSkip = 0;
};

/// A property grid: labels in the left column, editors in the right one. The
/// last row and the right column take the spare space. In the last row, only what can use
/// the room becomes higher, such as a list; a field stays at the top.
///
/// The editors are evened out, as by alignFields().
///
///     PropertyGridLayouter properties;
///     properties.onCreate(form);
///     properties.onAdd(SimpleLineEdit::create(form, QString(), new DoubleEditValidator, 0,
///         ExpandHorizontal), tr("&Span"));
///     properties.onAdd(new MultiEditFilePicker(form, TypeofPathFile), tr("&Report"));
///     properties.onFinish();
struct VRN_QT2_EXPORT PropertyGridLayouter : public ILayouter
{
    PropertyGridLayouter();
    ~PropertyGridLayouter() override;

    void onCreate(QWidget* parent) override;
    /// Adds an editor without a label, in a row of its own.
    void onAdd(QWidget* widget) override;
    /// Adds a label with the text `label`, and the editor to the right of it. The label is
    /// also the accessible name of an editor that has neither a name nor a text of its own.
    void onAdd(QWidget* widget, const QString& label);
    void onFinish() override;

    QGridLayout* layout() const { return m_layout.data(); }

private:
    void _add(QWidget* widget);
    void keepLastRowAtTop();

    QPointer<QWidget> m_parent;
    QPointer<QGridLayout> m_layout;
    int m_row = 0;
    int m_column = 0;
    std::vector<QPointer<QWidget>> m_editors;
};

} // namespace vrn::qt
