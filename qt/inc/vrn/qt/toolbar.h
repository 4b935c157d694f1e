#pragma once

#include <vrn/qt/expand_direction.h>
#include <vrn/qt/vrn_qt2_export.h>

#include <boost/function.hpp>

#include <QWidget>

#include <cstdint>
#include <map>
#include <string>

class QBoxLayout;
class QIcon;
class QPixmap;
class QPushButton;

namespace vrn::qt {

/// What a Toolbar knows about one of its buttons.
struct ToolbarButton
{
    std::uint32_t mask;
    QPushButton* button;
    boost::function<void()> fn;
};

/// A row or column of buttons that call functions of the application.
///
///     auto* list = new QListWidget(form);
///     auto* toolbar = new Toolbar(form, ExpandHorizontal);
///     toolbar->addButtonWithText(
///         "add", tr("Add"), tr("Adds a beam."), [=] { list->addItem(tr("Beam")); }, 1);
///     toolbar->addButtonWithText(
///         "remove", "-", tr("Removes it."), [=] { delete list->currentItem(); }, 1 | 2);
///     connect(list, &QListWidget::itemSelectionChanged, toolbar,
///         [=] { toolbar->setButtonsEnabled(!list->selectedItems().isEmpty(), 2); });
///
/// If a function throws a std::exception, the user sees a warning box with its
/// what(), read as UTF-8, and the toolbar goes on working. Anything else that is
/// thrown passes through. A function may also change the toolbar, or clear() it.
///
/// `delete` and `deleteLater` of the control, its parent or its window are safe in any
/// slot of its signals and in any function that it calls, also from a dialog there.
/// Excluded is the end of what a function holds if the application has deleted its button:
/// that must not destroy the toolbar, because Qt is at work on the button then.
///
/// Everything added belongs to the toolbar. The application may also delete a
/// button that it was given.
class VRN_QT2_EXPORT Toolbar : public QWidget
{
    Q_OBJECT

public:
    Toolbar(QWidget* parent, ExpandDirection direction);
    ~Toolbar() override;

    /// Each of these adds a button at the end, with the object name `id` (UTF-8), and
    /// returns it. An empty `fn` makes a button that does nothing. The bits of
    /// `mask` are the groups to which it belongs for setButtonsEnabled().
    ///
    /// A button with only an icon is square, and the tool tip is its accessible name.
    QPushButton* addButton(const std::string& id, const QIcon& icon, const QString& toolTip,
        boost::function<void()> fn, unsigned int mask);
    QPushButton* addButton(const std::string& id, const QPixmap& icon, const QString& toolTip,
        boost::function<void()> fn, unsigned int mask);
    QPushButton* addButtonWithIcon(const std::string& id, const QIcon& icon, const QString& toolTip,
        boost::function<void()> fn, unsigned int mask);
    QPushButton* addButtonWithIconAndText(const std::string& id, const QIcon& icon,
        const QString& text, const QString& toolTip, boost::function<void()> fn, unsigned int mask);
    /// A text of one character makes a square button.
    QPushButton* addButtonWithText(const std::string& id, const QString& text,
        const QString& toolTip, boost::function<void()> fn, unsigned int mask);

    void addLabel(const QString& text, const QString& toolTip);
    void addSpacing(int size);
    void addStretch(int stretch);
    void addWidget(QWidget* widget);

    /// Deletes all buttons. Labels, other widgets and gaps stay.
    void clear();

    /// Enables or disables every button whose mask shares a bit with `mask`. A button
    /// with the mask 0 is never one of them.
    void setButtonsEnabled(bool enabled, unsigned int mask);

private Q_SLOTS:
    void onClicked();

private:
    template <typename Predicate>
    void disposeOfButtons(Predicate isOurs);
    QPushButton* registerButton(
        QPushButton* button, const QString& toolTip, boost::function<void()> fn, unsigned int mask);

    QBoxLayout* m_layout;
    std::map<QObject*, ToolbarButton> m_buttons;
};

} // namespace vrn::qt
