#include "cell_line_edit_p.h"

#include <QSignalBlocker>

#include "editor_tenure_p.h"

namespace vrn::qt::detail {

CellLineEdit::CellLineEdit(const QModelIndex& index, QWidget* parent)
    : LineEditImpl(optionBorderless, parent)
    , m_tenure(new EditorTenure(*this, index))
{}

CellLineEdit::~CellLineEdit()
{
    m_isBeingDestroyed = true;
    if (!hasFocus())
        return;
    // A delegate would take this for the end of editing.
    installEventFilter(this);
    clearFocus();
}

bool CellLineEdit::isLeft() const
{
    return m_isBeingDestroyed || m_tenure->isOver();
}

bool CellLineEdit::event(QEvent* event)
{
    if (event->type() != QEvent::FocusOut || !isLeft())
        return LineEditImpl::event(event);
    const QSignalBlocker blocker(this);
    return LineEditImpl::event(event);
}

bool CellLineEdit::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != this)
        return LineEditImpl::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::ShortcutOverride: // Comes before each key.
        // A view installs its delegate after an editor is made, and again after each commit.
        installEventFilter(this);
        return false;
    case QEvent::Hide: // Comes before the focus is lost.
        if (isLeft())
            installEventFilter(this);
        return false;
    case QEvent::FocusOut:
        if (!isLeft())
            return false;
        this->event(event);
        return true;
    case QEvent::KeyPress:
        if (isLeft())
            return true;
        if (!isEnter(*event))
            return false;
        this->event(event);
        event->accept();
        return true;
    default:
        return false;
    }
}

} // namespace vrn::qt::detail
