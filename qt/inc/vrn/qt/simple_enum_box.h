#pragma once

#include <vrn/qt/i_validator.h>
#include <vrn/qt/named_value_list.h>
#include <vrn/qt/vrn_qt2_export.h>

#include <boost/any.hpp>
#include <boost/shared_ptr.hpp>

#include <QColor>
#include <QComboBox>
#include <QLineEdit>
#include <QPixmap>
#include <QPointer>
#include <QWidget>

#include <deque>

class VRN_QT4_ComboBox;

namespace vrn::qt {

class MultiEditLineEdit;

/// The icons of a choice, in the order of its entries; null for none.
using PixmapPtrList = std::deque<boost::shared_ptr<QPixmap>>;

/// Lets the user pick one of several named values: a caption, followed by a
/// drop-down list of the names.
///
///     auto* grade = SimpleEnumBox::create(form, tr("Steel"), &vrn::any_equal<int>);
///     grade->setValues({{"S235", 235}, {"S355", 355}});
///     connect(grade, &SimpleEnumBox::valueChanged, this,
///         [=] { model.setGrade(grade->getSelectedValue()); });
///
/// Two values are the same if the function given to create() says so; it must not
/// change the box. Of equal values, and of equal names, the first in the list
/// counts.
///
/// An editable box also takes a text that its validator turns into a value.
/// There the text counts: its value is that of the entry with this name, or else
/// what the validator makes of it. As in any editable combo box, Enter adds a
/// new text to the drop-down list; the values stay those of setValues().
///
/// The wheel picks an entry only while the box has the focus, and does not give it the
/// focus. Otherwise it scrolls what is around the box.
///
/// `delete` and `deleteLater` of the control, its parent or its window are safe in any
/// slot of its signals and in any function that it calls, also from a dialog there.
/// Excluded are the function, which the box asks in the middle of an operation, and the
/// window when the user picks from the list by keys: Qt goes on with the window. While the
/// list is shown, the style of the application must not change, and setEditable(false)
/// must not be called, which destroys the edit. The edit of an editable box excludes what
/// a SimpleLineEdit does.
///
/// Derive from it and override onItemActivated or onSelected to follow the
/// user's picks or the selections of the program.
class VRN_QT2_EXPORT SimpleEnumBox : public QWidget
{
    Q_OBJECT

public:
    /// The box belongs to `parent`. A missing parent is reported, and null is
    /// returned. An empty name makes no caption. Any other becomes the caption and
    /// the accessible name of the list; "&Steel" also gives it a shortcut. Without
    /// `eqFn` no value is the same as another, and this is reported when values are
    /// compared.
    static SimpleEnumBox* create(QWidget* parent, const QString& name,
        bool (*const& eqFn)(const boost::any&, const boost::any&));

    ~SimpleEnumBox() override;

    using QWidget::resize;
    virtual void resize(int width, int height);

    void setSizeAdjustPolicy(QComboBox::SizeAdjustPolicy policy);

    /// Whether the text of an editable box was accepted when it was last
    /// validated, as in SimpleLineEdit::isValueValid. If the box is not editable,
    /// this is reported, and the answer is false.
    bool isValueValid() const;

Q_SIGNALS:
    /// The user has picked an entry or entered a text, or next() or previous()
    /// found a row to go to.
    void valueChanged();
    /// The user has picked the entry of that row. Only a MultiEditEnumBox emits
    /// this.
    void activated(int index);

public Q_SLOTS:
    /// Replaces all entries and shows the first one. Icons and colours are for the
    /// entries at the same positions; if a list is too short, the other entries have
    /// none. The text on a colour is black or white, whichever is easier to read on what is
    /// seen of the colour. The box is as wide as its contents need at least. Emits nothing.
    void setValues(const NamedValueList& values, const PixmapPtrList& pixmaps = PixmapPtrList(),
        const std::deque<QColor>& backgroundColors = std::deque<QColor>());

    /// Shows the entry of that name. If there is none, nothing happens.
    void selectByName(const QString& name);
    /// Shows the entry of that value. If there is none, an editable box shows the text
    /// that the validator writes for the value; any other box reports it and stays as
    /// it is. If the validator throws, the text is empty and there is no value until
    /// the next selection or text.
    void selectByValue(const boost::any& value);

    /// Empty if there are no values, if the text shown is not an entry's name and no
    /// validator accepts it, or if a list shows no entry.
    boost::any getSelectedValue() const;
    /// Empty if there is no such entry and no validator to write the value.
    QString getNameForValue(const boost::any& value) const;
    /// Empty if there is no such entry.
    boost::any getValueForName(const QString& name) const;

    /// Shows the next or the previous row, and emits valueChanged(). At the end of the
    /// list nothing happens.
    void next();
    void previous();

    /// Sets whether the user can type a text, which `validator` turns into a value.
    /// The colour of the text follows the validator with which the box became
    /// editable. For one text valueChanged() is emitted as many times as this was
    /// called with true.
    void setEditable(bool editable, IValidator::pointer validator = IValidator::pointer());

    /// Puts `w` to the right of the list.
    void addWidget(QWidget* w);

    int getComboWidth() const;

protected:
    SimpleEnumBox(
        QWidget* parent, const QString& name, bool (*eqFn)(const boost::any&, const boost::any&));

    /// The list. If someone has destroyed it, this is reported, and one that is
    /// not shown stands in for it.
    VRN_QT4_ComboBox& combo();

    bool anyEqAvailable() const { return m_eq != nullptr; }
    /// A value is never the same as an empty one; two empty ones are compared
    /// by the function.
    bool anyEq(const boost::any& a, const boost::any& b) const;
    /// Whether `value` is the same as getSelectedValue().
    bool isSelected(const boost::any& value) const;

protected Q_SLOTS:
    /// Called when the user picks an entry. In this class it emits valueChanged().
    virtual void onItemActivated(const QString& text);

protected:
    /// Called after a selection by name or by value. In this class it does nothing.
    virtual void onSelected();
    /// Called with each text that the user edits. Does nothing here.
    virtual void onTextEdited(const QString& text);

    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void onEditingFinished();

private:
    bool hasLineEdit() const;
    void makeLineEdit();
    void dropLineEdit();
    bool isEditable() const;
    QString written(const boost::any& value);
    const boost::any* valueOfRow() const;
    void chooseTextColours();

    NamedValueList m_values;
    QPointer<VRN_QT4_ComboBox> m_combo;
    // Hidden. It validates what is typed into its edit, which is in the combo box.
    QPointer<MultiEditLineEdit> m_lineEdit;
    QPointer<QLineEdit> m_edit;
    int m_timesMadeEditable = 0;
    // The empty text stands for a value that could not be written.
    bool m_hasNoValue = false;
    bool (*m_eq)(const boost::any&, const boost::any&);
    IValidator::pointer m_validator;
};

} // namespace vrn::qt
