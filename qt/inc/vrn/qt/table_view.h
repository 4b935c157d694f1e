#pragma once

// The table view with a clipboard of typed values.

#include <vrn/qt/cell_data.h>
#include <vrn/qt/cppdb_table_view_base.h>
