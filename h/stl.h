#pragma once

/// The printf layer of the suite's string support: whole formats, one conversion, and arguments.

#include "stl_arg_cursor.h"
#include "stl_conversion.h"
#include "stl_format.h"
#include "stl_printf.h"
#include "stl_text.h"
