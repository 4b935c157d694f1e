#pragma once

// Every validator of the library.

#include <vrn/qt/chained_validator.h>
#include <vrn/qt/conversion_validator.h>
#include <vrn/qt/distance_edit_validator.h>
#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/entry_validator.h>
#include <vrn/qt/forward_validator.h>
#include <vrn/qt/i_validator.h>
#include <vrn/qt/integer_validator.h>
#include <vrn/qt/named_value_list_validator.h>
#include <vrn/qt/string_edit_validator.h>
#include <vrn/qt/unit_validator.h>
