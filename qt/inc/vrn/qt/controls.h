#pragma once

// Every control of the library.

#include <vrn/qt/simple_line_edit.h>
#include <vrn/qt/value_history.h>
