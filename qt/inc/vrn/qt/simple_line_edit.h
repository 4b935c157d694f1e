#pragma once

#include <vrn/qt/expand_direction.h>
#include <vrn/qt/i_validator.h>
#include <vrn/qt/value_history.h>
#include <vrn/qt/vrn_qt2_export.h>

#include <boost/any.hpp>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <QPointer>
#include <QStringList>
#include <QWidget>

#include <functional>

class QBoxLayout;
class QLineEdit;
class QPixmap;
class QToolButton;
class VRN_QT_Label;
class VRN_QT_PushButton;

namespace vrn::qt {

namespace detail {
class LineEditImpl;
}

/// A text field for one typed value: caption, edit, unit label and an optional
/// button, driven by one validator.
///
///     auto* span = SimpleLineEdit::create(form, tr("Span"),
///         new DoubleEditValidator(2, 0.0, 100.0, false), 0, ExpandHorizontal);
///     span->setUnitString("m");
///     connect(span, &SimpleLineEdit::valueChanged, this, [=] {
///         if (span->isValueValid())
///             model.setSpan(boost::any_cast<double>(span->getValue()));
///     });
///
/// While the user types, the text is black if the validator accepts it and red if it
/// does not, and the validator's edit hint is shown in a small window below. When
/// editing ends (Enter, or leaving the field), an accepted text is brought into its
/// range and rewritten, a refused one stays as it was typed, and valueChanged() is
/// emitted in either case. With a value history, the last entries are shown below the
/// focused field, and a click on one enters it. Both windows are above the field if the
/// screen has no room below.
///
/// On a dark palette, where black and red cannot be read, the field has a white ground for as
/// long as it has its style sheet with the colour. The ground goes through the palette of the
/// edit; a palette that the application sets there, or around it, stays in force. A disabled
/// field in which nothing was typed has the colours of the palette, as all other widgets.
///
/// The value is computed from the text whenever it is asked for; numbers are in the C
/// locale. What a validator throws passes through the control, which then counts its
/// text as refused: what was typed stays, and a value that could not be written leaves
/// an empty text. What a hint function throws is passed on after the end of editing,
/// that is after valueChanged(). An application that uses throwing validators catches
/// their exceptions in its QApplication::notify.
///
/// `delete` and `deleteLater` of the control, its parent or its window are safe in any
/// slot of its signals and in any function that it calls, also from a dialog there.
/// The same holds for its validator and the overrides of a derived class. Excluded is
/// what the program causes by hide(), setEnabled() or setFocus() of QWidget: Qt goes on
/// with the control after it has moved the focus. When the user leaves the field, Qt goes
/// on with the widget that gets the focus. So that one must not be destroyed then, nor the
/// window that both are in.
///
/// Derive from it and override vetoValidation or onValidated to follow the
/// validation of a keystroke.
class VRN_QT2_EXPORT SimpleLineEdit : public QWidget
{
    Q_OBJECT

public:
    /// Bit 0 of the options: no frame, and a white background.
    enum Option : unsigned int
    {
        OptionBorderless = 1
    };

    /// The control belongs to `parent`. An empty caption makes no label. Any other
    /// becomes the label and the accessible name of the edit; "&Span" also gives it
    /// a shortcut. A raw validator pointer is taken over.
    static SimpleLineEdit* create(QWidget* parent, const QString& caption, IValidator* validator,
        unsigned int options, ExpandDirection direction);
    static SimpleLineEdit* create(QWidget* parent, const QString& caption,
        boost::shared_ptr<IValidator> validator, unsigned int options, ExpandDirection direction);
    /// With a "..." button after the edit that calls `buttonFn`.
    static SimpleLineEdit* create(QWidget* parent, const QString& caption,
        boost::shared_ptr<IValidator> validator, boost::function<void()> buttonFn,
        unsigned int options, ExpandDirection direction);

    ~SimpleLineEdit() override;

    /// The value of the text, as at the end of editing. If the text is refused, this
    /// is reported, and the result is what the validator has left.
    boost::any getValue() const;

    /// Shows `value`. Emits nothing, shows no hint and leaves the colour alone. If
    /// the validator throws, the control has no value; show another one to go on.
    void setValue(const boost::any& value);

    /// Whether the text was accepted when it was last validated: by a
    /// keystroke, the end of editing or setValue. False before the first validation.
    bool isValueValid() const { return m_valueValid; }

    /// The edit. If someone has destroyed it, this is reported, and one that is
    /// not shown takes its place.
    QLineEdit* edit();
    const QLineEdit* edit() const;

    /// Adds a tool button inside the edit. A click hands the text to `fn`, and a result
    /// that differs becomes the text, selected, as if the user had typed it; it becomes
    /// the value when the user leaves the field. A null pixmap gives a built-in icon.
    /// There is one such button at most: a second call reports an assertion and returns
    /// the first.
    QToolButton* addButton(
        const boost::function<QString(const QString&)>& fn, const QPixmap& pixmap);

    /// Offers what `completions` gives for the typed text, in a list under the hint. Down
    /// enters the list; then Enter and Tab take an entry, and Escape drops the list. As long as
    /// no Down has entered it, Enter and Tab keep their meaning. An entry is taken as if it were
    /// typed, and editing goes on. An empty function turns the list off.
    void setCompletions(std::function<QStringList(const QString& text)> completions);

    /// Offers the values of `history` below the focused edit. A click on one is as
    /// good as typing it and pressing Enter.
    void setValueHistory(boost::shared_ptr<vrn::ValueHistory> history);
    boost::shared_ptr<vrn::ValueHistory> valueHistory() const { return m_valueHistory; }
    /// Adds the text to the history, if there is a history and the text is neither
    /// empty nor the text of a varying selection.
    void addCurrentValueToValueHistory();

    /// Shows "[unit]" after the edit; an empty string hides it.
    void setUnitString(const QString& unit);

    /// Has no effect, whatever the factor: the size hints take it as 1.
    void setMinimumWidthFactor(double factor);

    void setEditMaximumWidth(int width);
    void setMaxLength(int length);
    /// Neither keys nor a choice in the history change a read-only text. Its ground is that
    /// of the window, where the text can be read on it.
    void setReadOnly(bool readOnly);
    void setAlignment(Qt::Alignment alignment);
    void selectAll();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// Editing has ended, with an accepted text or a refused one. The signal carries
    /// no value and may come twice for one action of the user.
    void valueChanged();

public Q_SLOTS:
    void onEditingFinished();
    void onTextEdited(const QString& text);

protected:
    SimpleLineEdit(QWidget* parent, const QString& caption, boost::shared_ptr<IValidator> validator,
        boost::function<void()> buttonFn, unsigned int options, ExpandDirection direction);

    /// The validator. A missing one is reported through the assertion facility,
    /// and one that refuses everything answers in its place.
    IValidator& validator() const;
    /// The same, for a call in which it may destroy the control.
    boost::shared_ptr<IValidator> heldValidator() const;

    /// Whether `object` is the edit. Nothing is reported if that was destroyed.
    bool isEdit(const QObject* object) const;

    /// True keeps `text` from being validated at all.
    virtual bool vetoValidation(const QString& text);
    /// Called with every accepted text and its value.
    virtual void onValidated(const QString& text, const boost::any& value);

    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private Q_SLOTS:
    void onClickedButton();

private:
    detail::LineEditImpl& lineEdit() const;
    using SizeFunction = QSize (QWidget::*)() const;
    QSize sizeFromParts(SizeFunction sizeOf) const;
    bool validateTyped(const QString& text);
    void showHint(const QString& text);
    void finishEditing(const QString& text);
    template <typename Function>
    void refuseIfThrown(Function step);
    void showValidity();

    // A control that takes the edit over, such as a combo box, may destroy it.
    QPointer<detail::LineEditImpl> m_lineEdit;
    bool m_valueValid = false;
    boost::shared_ptr<IValidator> m_validator;
    QBoxLayout* m_layout = nullptr;
    VRN_QT_Label* m_unitString = nullptr;
    VRN_QT_Label* m_caption = nullptr;
    VRN_QT_PushButton* m_button = nullptr;
    boost::function<void()> m_buttonFunction;
    boost::shared_ptr<vrn::ValueHistory> m_valueHistory;
    bool m_widthFactor = true;
};

} // namespace vrn::qt
