#pragma once

#include <vrn/qt/multi_edit_control_base.h>
#include <vrn/qt/simple_line_edit.h>

namespace vrn::qt {

/// A line edit for one property of a selection: it shows the common value, or
/// getVariesString() if the objects differ.
///
/// Values are compared as text: two that the validator writes alike do not vary. While
/// the edit shows the text of a varying selection, Enter and leaving the field do
/// nothing, and a click selects the whole text, so that the next key replaces it. As
/// soon as the user has typed an accepted text instead, this is the value of all
/// objects.
///
/// If the user types, pastes or undoes to that text, the field varies, whatever it
/// showed before, and emits nothing. To show a value that is written in the same way,
/// an application sets it. When the language changes, a varying field translates its
/// text; nothing has to be read or set again.
///
/// The validator must not change how it writes values between the first readValue()
/// after a reset() and the last: a value that equals the one before is not written
/// again for the comparison.
class VRN_QT2_EXPORT MultiEditLineEdit
    : public SimpleLineEdit
    , public MultiEditControlBase
{
    Q_OBJECT

public:
    /// As SimpleLineEdit::create.
    static MultiEditLineEdit* create(QWidget* parent, const QString& caption, IValidator* validator,
        unsigned int options, ExpandDirection direction);
    static MultiEditLineEdit* create(QWidget* parent, const QString& caption,
        boost::shared_ptr<IValidator> validator, unsigned int options, ExpandDirection direction);
    static MultiEditLineEdit* create(QWidget* parent, const QString& caption,
        boost::shared_ptr<IValidator> validator, boost::function<void()> buttonFn,
        unsigned int options, ExpandDirection direction);

    ~MultiEditLineEdit() override;

    /// Leaves the text as it is.
    void reset() override;
    /// If the validator throws, the exception passes through. The field has no value
    /// after the first read, and varies after a later one. To read the other values
    /// nevertheless, catch the exception at each value.
    void readValue(const boost::any& value) override;
    bool dataVaries() const override { return m_varies; }
    /// Also empty for a refused text.
    boost::any getCurrentValue() const override;
    /// Emits nothing.
    void setValue(const boost::any& value) override;
    /// Emits nothing and leaves the colour of the text alone.
    void forceVaries() override;

    /// Takes over the text of `other` and whether it is fresh or varies, but not its
    /// colour and validity.
    void copyStateFrom(const MultiEditLineEdit& other);

protected:
    MultiEditLineEdit(QWidget* parent, const QString& caption,
        boost::shared_ptr<IValidator> validator, boost::function<void()> buttonFn,
        unsigned int options, ExpandDirection direction);

    bool vetoValidation(const QString& text) override;
    void onValidated(const QString& text, const boost::any& value) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isVariesText(const QString& text) const;
    void translateVariesText();
    /// What setMaxLength() leaves of `text` in the edit.
    QString asShown(const QString& text) const;

    bool m_varies = false;
    bool m_fresh = true;
    // As it was last shown. Undoing may bring it back, cut or in another language.
    QString m_variesText;
    // The last value found to be written as the text in the edit, and how to tell
    // that another one is: null when the text has changed since.
    boost::any m_shownValue;
    bool (*m_isLikeShown)(const boost::any&, const boost::any&) = nullptr;
};

} // namespace vrn::qt
