#pragma once

#include <vrn/companion_qt/vrn_companion_qt_export.h>

#include <QComboBox>
#include <QPersistentModelIndex>

/// A QComboBox with an additional entry for a selection of objects that differ, the
/// various entry. It comes after all others, so that their rows stay the same.
class VRN_COMPANION_QT_EXPORT VRN_QT4_ComboBox : public QComboBox
{
    Q_OBJECT

public:
    /// `name` becomes the object name, if there is one.
    explicit VRN_QT4_ComboBox(QWidget* parent = nullptr, const char* name = nullptr);
    ~VRN_QT4_ComboBox() override;

    /// Entries stay in the order in which they are added. Sorting is not supported:
    /// asking for it fails an assertion.
    void setSorting(bool sorting);

    /// True: always as wide as the longest text. False: Qt's usual width.
    void setWidthTextEnabled(bool enabled);

    /// Adds the various entry if there is none, and makes it current if `select`.
    /// Its text is the translation that the library shows everywhere for a
    /// varying selection, and follows a change of the language.
    void addVarious(bool select);
    /// Removes the entry, if there is one. If it is shown, what was shown when
    /// addVarious() made it current is shown again: the text, or, if that was the
    /// entry's own, the row.
    void removeVarious();

    /// The value of getCurrentId() while the various entry is current and, in an
    /// editable box, its text is in the edit.
    static int getVariousId();
    /// getVariousId() or else the current row. -1 if no row is current, or if another
    /// text was typed over the various entry.
    int getCurrentId() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void translateVarious();
    bool isVariousCurrent() const;

    QPersistentModelIndex m_various;
    // What was shown when addVarious() made its entry current.
    QPersistentModelIndex m_shownBefore;
    QString m_textBefore;
};
