#pragma once

#include "controls/line_edits/line_edit_impl_p.h"

class QAbstractItemDelegate;
class QModelIndex;

namespace vrn::qt::detail {

class EditorTenure;

/// The editor of a LineEditItemDelegate.
///
/// It is the first of its own event filters, before those of delegates: these would commit a
/// second time after Enter, when the edit has finished by itself, and would go on with an edit
/// that the view has let go of. From then on it emits nothing, and keys go nowhere.
///
/// While the function of its button runs, which may open a dialog, a lost focus does not end the
/// edit. The focus comes back afterwards. The same holds while the text is being written.
class CellLineEdit : public LineEditImpl
{
public:
    CellLineEdit(const QModelIndex& index, QAbstractItemDelegate& delegate, QWidget* parent);
    ~CellLineEdit() override;

    void addCallback(const boost::function<QString(const QString&)>& callback);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isLeft() const;
    bool isSilent() const;

    EditorTenure* m_tenure;
    bool m_isAsking = false; ///< The function of the button runs.
    bool m_isBeingDestroyed = false;
};

} // namespace vrn::qt::detail
