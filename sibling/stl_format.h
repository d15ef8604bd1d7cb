#pragma once

#include "stl.h"
#include "stl_conversion.h"
#include "stl_text.h"

/// Appends the text of one ordinary conversion of the argument at the cursor, of which there are
/// some. Widths and precisions that are arguments are put into the conversion. False when printf
/// has an error there.
bool stl_format(STL_TEXT& text, STL_CONVERSION& conversion, STL_ARG_CURSOR& cursor);

/// Steps over the argument of one ordinary conversion without a `*`.
void stl_skip(STL_CONVERSION const& conversion, STL_ARG_CURSOR& cursor);
