#pragma once

#include <vrn/qt/expand_direction.h>
#include <vrn/qt/i_validator.h>
#include <vrn/qt/value_history.h>
#include <vrn/qt/vrn_qt2_export.h>

#include <boost/any.hpp>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <QPointer>
#include <QWidget>

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
/// While the user types, the text is black where the validator accepts it and
/// red where it does not, and the validator's edit hint stands in a small
/// window below. When editing ends (Enter, or leaving the field), an accepted
/// text is brought into its range and written anew, a refused one stays as it
/// was typed, and valueChanged() fires in either case. With a value history the
/// last entries stand below the focused field; a click takes one over. Either
/// window stands above the field where the screen has no room below.
///
/// The value is computed from the text whenever it is asked for; numbers are in
/// the C locale. What a validator throws passes through the control, which then
/// counts its text as refused; an application that uses throwing validators
/// catches in its QApplication::notify.
///
/// A slot of any of its signals may call deleteLater() on the control.
///
/// Derive from it and override vetoValidation or onValidated to follow the
/// validation of a keystroke.
class VRN_QT2_EXPORT SimpleLineEdit : public QWidget
{
    Q_OBJECT

public:
    /// Bit 0 of the options: no frame, on white.
    enum Option : unsigned int
    {
        OptionBorderless = 1
    };

    /// The control belongs to `parent`. An empty caption makes no label; any
    /// other is the accessible name of the edit and its buddy, so that "&Span"
    /// gives it a shortcut. A raw validator pointer is taken over.
    static SimpleLineEdit* create(QWidget* parent, const QString& caption, IValidator* validator,
        unsigned int options, ExpandDirection direction);
    static SimpleLineEdit* create(QWidget* parent, const QString& caption,
        boost::shared_ptr<IValidator> validator, unsigned int options, ExpandDirection direction);
    /// With a "..." button behind the edit that calls `buttonFn`.
    static SimpleLineEdit* create(QWidget* parent, const QString& caption,
        boost::shared_ptr<IValidator> validator, boost::function<void()> buttonFn,
        unsigned int options, ExpandDirection direction);

    ~SimpleLineEdit() override;

    /// The value of the text, as at the end of editing. Reports an assertion if
    /// the text is refused, and returns what the validator has left.
    boost::any getValue() const;

    /// Shows `value`. Emits nothing, shows no hint and leaves the colour alone.
    void setValue(const boost::any& value);

    /// Whether the text was accepted when it was last validated: by a
    /// keystroke, the end of editing or setValue. False before the first.
    bool isValueValid() const { return m_valueValid; }

    /// The edit. If someone has destroyed it, this is reported, and one that is
    /// not shown takes its place.
    QLineEdit* edit();
    const QLineEdit* edit() const;

    /// Adds a tool button inside the edit. A click hands the text to `fn`, and a
    /// result that differs becomes the text, selected; the value is taken over
    /// when the user leaves the field. A null pixmap gives a built-in icon.
    /// There is one such button at most: a second call reports an assertion and
    /// returns the first.
    QToolButton* addButton(
        const boost::function<QString(const QString&)>& fn, const QPixmap& pixmap);

    /// Offers the values of `history` below the focused edit.
    void setValueHistory(boost::shared_ptr<vrn::ValueHistory> history);
    boost::shared_ptr<vrn::ValueHistory> valueHistory() const { return m_valueHistory; }
    /// Adds the text to the history, if there is one and the text is neither
    /// empty nor the text of a varying selection.
    void addCurrentValueToValueHistory();

    /// Shows "[unit]" behind the edit; an empty string hides it.
    void setUnitString(const QString& unit);

    /// Without effect, whatever the factor: the size hints count on a factor
    /// of 1.
    void setMinimumWidthFactor(double factor);

    void setEditMaximumWidth(int width);
    void setMaxLength(int length);
    /// Neither keys nor a choice in the history change a read-only text.
    void setReadOnly(bool readOnly);
    void setAlignment(Qt::Alignment alignment);
    void selectAll();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// Editing has ended, with an accepted text or a refused one. It carries no
    /// value and may come twice for one action of the user.
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
    template <typename Function>
    void refuseIfThrown(Function step);
    void showValidity();

    // A control that takes the edit over, such as a combo box, may destroy it.
    mutable QPointer<detail::LineEditImpl> m_lineEdit;
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
