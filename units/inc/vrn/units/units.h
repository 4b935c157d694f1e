#pragma once

/// Everything of the unit library that a program uses. Start at Context.
///
/// When memory runs out, every operation throws std::bad_alloc. A setter or an assignment
/// of Context or UnitsetFormatProvider that throws has changed nothing, and a table that
/// could not be made is made at the next use. Only the assignment of a plain record, such
/// as UnitFormat, may stop between two members.

#include <vrn/units/catalogue.h>
#include <vrn/units/context.h>
#include <vrn/units/entry.h>
#include <vrn/units/unknown_unit.h>
