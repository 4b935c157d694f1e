#pragma once

#include <vrn/qt/multi_edit_line_edit.h>

#include <QString>

#include <functional>

class QKeyEvent;

namespace vrn::qt::detail {

/// What a FieldLineEdit asks about its text.
struct FieldQuestions
{
    /// Whether the text is black.
    std::function<bool(const QString& text)> isAccepted;
    /// What the window below the field says.
    std::function<QString(const QString& text)> hint;
    /// The text that is offered when editing begins.
    std::function<QString()> fullText;
};

/// A line edit that knows when a text is pending, and ends the editing in one way only.
///
/// A text is pending if it is neither the one that was shown when editing began, nor the one
/// with all digits that was offered then, nor "*VARIES*". Editing begins with the focus, and
/// with the first key or press of the mouse after an Enter or another text from outside.
/// What sets a text from outside emits nothing.
///
/// Of the base, only the hint, the colours and "*VARIES*" are used: the text is never
/// rewritten here, and valueChanged() is not emitted.
class FieldLineEdit : public MultiEditLineEdit
{
    Q_OBJECT

public:
    FieldLineEdit(QWidget* parent, FieldQuestions questions);
    ~FieldLineEdit() override;

    /// Both drop what is pending, and its colour.
    /// @{
    void showText(const QString& text);
    void showVaries();
    /// @}
    /// As the user would.
    void enterText(const QString& text);

    bool isPending() const;
    /// Editing has begun, and the text is still that which was offered for it.
    bool isOffered() const { return m_isOpen && !isPending(); }
    /// Asks again about the colour and the hint.
    void judge();

Q_SIGNALS:
    /// The text has changed in another way than from outside.
    void edited();
    /// A pending text is to be written: after Enter, and when the user leaves the field. Each
    /// leaving of a text that stays the same is told once.
    void ended();
    void cancelled();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool vetoValidation(const QString& text) override;
    void onValidated(const QString& text, const boost::any& value) override;

private:
    void onTextChanged();
    void open();
    void leave();
    bool end();
    void setTextFrom(const boost::any& value);
    bool isBaseline(const QString& text) const;
    bool onKeyPress(QKeyEvent& event);
    bool onShortcutOverride(QKeyEvent& event) const;

    FieldQuestions m_questions;
    QString m_shown; ///< At rest.
    QString m_offered; ///< When editing began.
    bool m_showsVaries = false;
    bool m_isOpen = false; ///< Editing has begun.
    bool m_isEndTold = false; ///< For the text that stands there.
    bool m_isFromOutside = false; ///< The text is being set.
};

} // namespace vrn::qt::detail
