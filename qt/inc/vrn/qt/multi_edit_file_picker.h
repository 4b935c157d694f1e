#pragma once

#include <vrn/qt/multi_edit_control_base.h>

#include <QWidget>

#include <string>

class QToolButton;

namespace vrn::qt {

class MultiEditLineEdit;

/// What the button of a MultiEditFilePicker lets the user choose.
enum TypeofPath : int
{
    TypeofPathFile = 0, ///< One file that exists.
    TypeofPathFiles = 1, ///< Several files; the text becomes "<n> files in <folder>".
    TypeofPathFolder = 2, ///< A folder.
    TypeofPathFileInFolder = 3, ///< A folder, to which a fixed file name is appended.
};

/// A line edit for the path of a selection, and a button that opens a file
/// dialog. Values are `std::string` in UTF-8 of at most 260 characters; a longer
/// text is cut when it is read.
///
///     auto* picker = new MultiEditFilePicker(form, TypeofPathFile);
///     picker->setFilter("Sections (*.sec);;All files (*)");
///     picker->setValue(std::string("/srv/sections/heb.sec"));
///     connect(picker, &MultiEditFilePicker::valueChanged, this, [=] {
///         const boost::any path = picker->getCurrentValue();
///         if (!path.empty())
///             model.setSections(boost::any_cast<std::string>(path));
///     });
///
/// A new picker is fresh and holds the empty string. It accepts any text, whether
/// or not there is such a file.
///
/// The dialog starts at the path in the edit, or in the current folder if there is no
/// such path. With TypeofPathFolder it starts at the folder of the path, even if that
/// no longer exists: it then opens the parent folder and offers the missing name. Both
/// slash and backslash separate the names in a path.
///
/// The slot of the button may throw: boost::bad_any_cast while the control varies, and
/// with TypeofPathFileInFolder std::filesystem::filesystem_error if it cannot find out
/// whether the folder exists. An application in which this can happen catches it in its
/// QApplication::notify.
///
/// `delete` and `deleteLater` of the control, its parent or its window are safe in any
/// slot of its signals and in any function that it calls, also from a dialog there.
/// Excluded is what SimpleLineEdit excludes.
class VRN_QT2_EXPORT MultiEditFilePicker
    : public QWidget
    , public MultiEditControlBase
{
    Q_OBJECT

public:
    /// With any other type, the picker has no dialog.
    MultiEditFilePicker(QWidget* parent, TypeofPath type);
    ~MultiEditFilePicker() override;

    /// Name filters of the file dialogs, in UTF-8, as in
    /// "Images (*.png *.jpg);;All files (*)".
    void setFilter(const std::string& filter) { m_filter = filter; }
    /// What TypeofPathFileInFolder appends to the folder, in UTF-8.
    void setFileName(const std::string& fileName) { m_fileName = fileName; }

    /// The text as `std::string`; empty while the control varies.
    boost::any getValue() const;

    void reset() override;
    void readValue(const boost::any& value) override;
    bool dataVaries() const override;
    boost::any getCurrentValue() const override;
    /// Emits nothing.
    void setValue(const boost::any& value) override;
    void forceVaries() override;

    using MultiEditControlBase::setCanBeSaved;
    /// Does nothing: a picker saves no state by itself.
    void setCanBeSaved(const std::string& id);

    std::string m_filter; ///< See setFilter().
    std::string m_fileName; ///< See setFileName().
    MultiEditLineEdit* m_edit; ///< Null once it has been destroyed.
    QToolButton* m_btn;
    const TypeofPath m_type;

Q_SIGNALS:
    /// The user has ended editing the text, or has closed the dialog, with or without
    /// a choice.
    void valueChanged();

private Q_SLOTS:
    void onPick();
};

} // namespace vrn::qt
