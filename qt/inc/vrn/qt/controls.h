#pragma once

// Every control of the library.
//
// Each header tells in which slots and functions the control may be destroyed. In all of them,
// as in the widgets of Qt, this is not safe in
//
// - event filters and slots of QApplication::focusChanged(): these must not destroy a control
//   or a part of it, and must neither call it, send it events nor throw while one of its parts
//   is being destroyed or a dialog of it is open;
// - slots of the widgets inside a control while the user works with them, such as
//   QCheckBox::toggled(), and of those that the application has put there. The exception
//   is the edit of a line edit.
//
// The end of what a function holds must not throw, as no destructor may.

#include <vrn/qt/align_fields.h>
#include <vrn/qt/assign_style.h>
#include <vrn/qt/layouters.h>
#include <vrn/qt/multi_edit_check_box.h>
#include <vrn/qt/multi_edit_check_box_group.h>
#include <vrn/qt/multi_edit_enum_box.h>
#include <vrn/qt/multi_edit_file_picker.h>
#include <vrn/qt/multi_edit_group_box.h>
#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/multi_edit_line_edit_with_button.h>
#include <vrn/qt/multi_edit_line_edit_with_reset_button.h>
#include <vrn/qt/multi_edit_radio_button_group.h>
#include <vrn/qt/multi_edit_value.h>
#include <vrn/qt/on_value_changed_hook.h>
#include <vrn/qt/optional_multi_edit_widget_base.h>
#include <vrn/qt/pixmap.h>
#include <vrn/qt/push_buttons.h>
#include <vrn/qt/settings_history.h>
#include <vrn/qt/simple_check_box.h>
#include <vrn/qt/simple_enum_box.h>
#include <vrn/qt/simple_line_edit.h>
#include <vrn/qt/simple_radio_button_group.h>
#include <vrn/qt/toolbar.h>
#include <vrn/qt/value_history.h>
