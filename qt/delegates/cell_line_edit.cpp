#include "cell_line_edit_p.h"

#include <QPixmap>
#include <QPointer>
#include <QScopeGuard>
#include <QSignalBlocker>

#include "editor_tenure_p.h"

namespace vrn::qt::detail {

CellLineEdit::CellLineEdit(
    const QModelIndex& index, QAbstractItemDelegate& delegate, QWidget* parent)
    : LineEditImpl(optionBorderless, parent)
    , m_tenure(new EditorTenure(*this, index, delegate))
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

bool CellLineEdit::isSilent() const
{
    return m_isAsking || isLeft() || m_tenure->isBeingWritten();
}

void CellLineEdit::addCallback(const boost::function<QString(const QString&)>& callback)
{
    addButton(
        [this, callback](const QString& text) {
            const QPointer<CellLineEdit> self(this); // The function may destroy it.
            m_isAsking = true;
            const auto done = qScopeGuard([&self] {
                if (!self)
                    return;
                self->m_isAsking = false;
                if (!self->isLeft())
                    self->setFocus();
            });
            return callback(text);
        },
        QPixmap());
}

bool CellLineEdit::event(QEvent* event)
{
    if (event->type() != QEvent::FocusOut || !isSilent())
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
        // A view installs its delegate after an editor is made, and again after each commit.
        installEventFilter(this);
        return false;
    case QEvent::ShortcutOverride: // Comes before each key.
        installEventFilter(this);
        return m_tenure->takeEvent(event);
    case QEvent::Hide: // Comes before the focus is lost.
        if (isLeft())
            installEventFilter(this);
        return false;
    case QEvent::FocusOut:
        if (!isSilent())
            m_tenure->takeEvent(event);
        if (!isSilent())
            return false;
        tellPopups(event);
        this->event(event);
        return true;
    case QEvent::KeyPress:
        if (isLeft())
            return true;
        if (!isEnter(*event))
            return m_tenure->takeEvent(event);
        this->event(event);
        event->accept();
        return true;
    default:
        return false;
    }
}

} // namespace vrn::qt::detail
