#pragma once

// Properties of objects: their descriptions, models and selections, a table and a page.

#include <vrn/qt/edit_state.h>
#include <vrn/qt/field.h>
#include <vrn/qt/object_id.h>
#include <vrn/qt/object_model.h>
#include <vrn/qt/property_error.h>
#include <vrn/qt/property_model.h>
#include <vrn/qt/property_page.h>
#include <vrn/qt/property_selection.h>
#include <vrn/qt/property_set.h>
#include <vrn/qt/property_sink.h>
#include <vrn/qt/property_table_model.h>
#include <vrn/qt/property_values.h>
#include <vrn/qt/relative_edit.h>
#include <vrn/qt/value_traits.h>
