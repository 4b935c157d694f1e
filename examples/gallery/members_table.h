#pragma once

#include <vrn/qt/table_view.h>

namespace vrn::qt {
class ForwardDelegate;
} // namespace vrn::qt

namespace gallery {

class MembersModel;

/// A table of members. Each cell is edited by the delegate that suits it, and blocks of cells
/// are copied and pasted as typed values. Lines that are pasted below the last row become new
/// members.
///
/// The first member stands for the building as it is: its row cannot be typed into. The load of
/// the second has a button, which computes it.
class MembersTable : public vrn::qt::detail::CppDbTableViewBase
{
    Q_OBJECT

public:
    /// The model is not owned.
    explicit MembersTable(MembersModel* model, QWidget* parent = nullptr);

    void keyPressEvent(QKeyEvent* event) override;

protected:
    /// A button is pressed by a click on it, and by F2, Enter and Space, but not by Tab from an
    /// editor beside it, nor by a letter.
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;

private:
    void addDelegates(MembersModel* model);

    vrn::qt::ForwardDelegate* m_delegate;
};

} // namespace gallery
