#pragma once

#include "row_editor_p.h"

#include <QPointer>
#include <QString>

#include <memory>
#include <string>

class QGridLayout;
class QLabel;
class QWidget;

namespace vrn::qt::detail {

/// The model's units; a new object after each change.
using SharedUnits = std::shared_ptr<const vrn::units::Context>;

/// One property of a page: its caption, its editor and its unit. The editor is made when it is
/// first needed. After that, the application may destroy it; then the row shows nothing.
class PageRow
{
public:
    /// `gridRow` is where it stands in its grid.
    PageRow(PropertySelection::Row property, RowQuestions questions, int gridRow);
    ~PageRow();
    PageRow(const PageRow&) = delete;
    PageRow& operator=(const PageRow&) = delete;

    const PropertySelection::Row& property() const { return m_property; }
    const std::string& key() const { return m_property.key; }

    bool isMade() const { return m_isMade; }
    /// Hidden at first.
    void make(QWidget* parent, QGridLayout& grid);
    /// Removes the widgets. The row remains for a caller that still uses it.
    void dispose();

    /// Null before it is made, and after it has gone.
    RowEditor* editor() const { return m_editor.data(); }
    QWidget* widget() const { return m_editor ? m_editor->widget() : nullptr; }

    bool isVisible() const { return m_isVisible; }
    void setVisible(bool visible);
    void setReadOnly(bool readOnly);
    /// Whether the user may edit it. What is pending has been ended before.
    bool isEnabled() const { return m_isEnabled; }
    void setEnabled(bool enabled);

    /// Takes what was read. It is shown at once, but for a pending text, which stays.
    void take(const PropertyState& state, const SharedUnits& units);
    /// Shows what was read last in other units, and in the current locale.
    void showIn(const SharedUnits& units);
    /// Shows what was read last, and drops what is pending.
    void show();
    /// What is read next is shown, even if it is the same: the language may be another one.
    void setStale();
    /// What is pending has been written; what is read next is shown in its place.
    void drop();
    /// Adds what is pending to the history.
    void remember();
    void refuse(const QString& reason);
    /// Why the entry stays, for tool tips and screen readers.
    void explain(const QString& reason);

    RowEntry entry() const;
    bool isPending() const;
    /// The editor has another entry.
    void updatePending();
    const PropertyState& state() const { return m_state; }
    QString text() const;
    bool isReadOnly() const;

    /// Whether the model has to be read for it.
    bool isDue = true;

private:
    bool isShown(const PropertyState& state, const SharedUnits& units) const;
    QString status() const;
    void describeTo(QWidget* widget) const;
    void updateTexts();
    void updateUnit();
    void updateReadOnly();

    const PropertySelection::Row m_property;
    const RowQuestions m_questions;
    const int m_gridRow;
    QPointer<QLabel> m_caption;
    QPointer<RowEditor> m_editor;
    QPointer<QLabel> m_unit;
    PropertyState m_state;
    SharedUnits m_units;
    bool m_isMade = false;
    bool m_isShown = false; ///< What was read last.
    bool m_isVisible = false;
    bool m_isPending = false;
    bool m_isWanted = true; ///< What is read next is shown in any case.
    bool m_isPolled = false; ///< Its editor need not tell that it was changed.
    bool m_isPageReadOnly = false;
    bool m_isEnabled = true;
    QString m_reason; ///< Why the entry was refused.
};

} // namespace vrn::qt::detail
