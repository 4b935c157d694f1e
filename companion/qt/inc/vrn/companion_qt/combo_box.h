#pragma once

#include <vrn/companion_qt/vrn_companion_qt_export.h>

#include <QComboBox>
#include <QPersistentModelIndex>

/// A QComboBox with one entry more for a selection of objects that differ, the
/// various entry. It comes behind all others, so that their rows stay.
class VRN_COMPANION_QT_EXPORT VRN_QT4_ComboBox : public QComboBox
{
    Q_OBJECT

public:
    /// `name` becomes the object name, if there is one.
    explicit VRN_QT4_ComboBox(QWidget* parent = nullptr, const char* name = nullptr);
    ~VRN_QT4_ComboBox() override;

    /// Entries stay in the order in which they come: sorting is not offered, and
    /// asking for it is reported.
    void setSorting(bool sorting);

    /// True: as wide as the longest text, always. False: as Qt does it.
    void setWidthTextEnabled(bool enabled);

    /// Adds the various entry if there is none, and makes it current if `select`.
    /// Its text is the translation that the library shows everywhere for a
    /// varying selection, and follows a change of the language.
    void addVarious(bool select);
    /// Removes the entry, if there is one. If it is shown, what was shown when
    /// addVarious() made it current is shown again: the text, or, if that was the
    /// entry's own, the row.
    void removeVarious();

    /// What getCurrentId() is while the various entry is current and, in an
    /// editable box, its text stands in the edit.
    static int getVariousId();
    /// Otherwise the current row; -1 if there is none, or if another text was
    /// typed over the various entry.
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
