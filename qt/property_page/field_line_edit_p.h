#pragma once

#include <vrn/qt/multi_edit_line_edit.h>

#include <QString>

#include "controls/line_edits/line_edit_impl_p.h"

#include <functional>
#include <vector>

class QFocusEvent;
class QKeyEvent;

namespace vrn::qt::detail {

/// What a FieldLineEdit asks about its text.
struct FieldQuestions
{
    struct Verdict
    {
        bool isAccepted = true; ///< The text is black.
        QString hint; ///< In the window below the field.
    };
    std::function<Verdict()> judge;
    /// The list under the hint.
    std::function<std::vector<EntryOffer>()> offers;
    /// What is offered for the text at rest when editing begins.
    std::function<QString()> fullText;
};

/// A line edit that knows when a text is pending, and ends the editing in one way only.
///
/// A text is pending if it is neither the one at rest nor the one that was offered when editing
/// began nor "*VARIES*", or if it was taken from a list. Editing begins with the focus, and
/// after an Enter or a text from outside with the next key or press of the mouse.
///
/// Of the base only the window below, the colours and "*VARIES*" are used: the text is never
/// rewritten here, and valueChanged() is not emitted.
class FieldLineEdit : public MultiEditLineEdit
{
    Q_OBJECT

public:
    FieldLineEdit(QWidget* parent, FieldQuestions questions);
    ~FieldLineEdit() override;

    /// The text at rest. What is pending is dropped, with its colour. Emits nothing.
    /// @{
    void showText(const QString& text);
    void showVaries();
    /// @}

    bool isPending() const;
    bool isOpen() const { return m_isOpen; } ///< Editing has begun.
    /// Another one after each change of the text.
    int revision() const { return m_revision; }
    /// Whether the end of a pasted text may be missing.
    bool isFull() const;
    /// Asks again about the colour and the hint. Leaving does not end the text once more.
    void refuse();
    /// Asks again for the hint and the list at rest.
    void announce();
    /// Makes the text pending whatever it is, and ends the editing.
    void take();

Q_SIGNALS:
    /// The text has changed, but not from outside.
    void edited();
    /// A pending text is to be written: after Enter, and when the user leaves the field. Leaving
    /// is told once as long as the text stays the same.
    void ended();
    /// Escape while a text is pending.
    void cancelled();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool vetoValidation(const QString& text) override;
    void onValidated(const QString& text, const boost::any& value) override;

private:
    LineEditImpl& impl();
    FieldQuestions::Verdict verdict() const;
    void show(const QString* text);
    void onTextChanged();
    void judge();
    void open();
    void resume();
    bool hasLostFocus();
    void leave();
    void end();
    bool isBaseline(const QString& text) const;
    bool handle(QEvent& event);
    bool onKeyPress(QKeyEvent& event);
    bool onShortcutOverride(QKeyEvent& event) const;

    FieldQuestions m_questions;
    QString m_shown; ///< At rest.
    QString m_offered; ///< When editing began.
    int m_revision = 0;
    bool m_showsVaries = false;
    bool m_isOpen = false;
    bool m_isTaken = false;
    bool m_isEndTold = false; ///< Of the text that stands there.
    bool m_isFromOutside = false; ///< The text is being set.
};

} // namespace vrn::qt::detail
