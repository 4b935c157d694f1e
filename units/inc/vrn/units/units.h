#pragma once

/// Everything of the unit library that a program uses. Start at Context.

#include <vrn/units/catalogue.h>
#include <vrn/units/context.h>
#include <vrn/units/unknown_unit.h>
