#pragma once

// What edits the cells of Qt's item views.

#include <vrn/qt/button_configuration.h>
#include <vrn/qt/button_item_delegate.h>
#include <vrn/qt/cell_data.h>
#include <vrn/qt/checkbox_item_delegate.h>
#include <vrn/qt/combo_item_delegate.h>
#include <vrn/qt/forward_delegate.h>
#include <vrn/qt/line_edit_item_delegate.h>
