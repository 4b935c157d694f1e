#pragma once

// What makes validators and editors from hints.

#include <vrn/qt/default_editor_factory.h>
#include <vrn/qt/default_validator_factory.h>
#include <vrn/qt/editor_meta_data.h>
#include <vrn/qt/hints.h>
#include <vrn/qt/validator_factory.h>
