#pragma once

#include "stl.h"
#include "stl_conversion.h"
#include "stl_text.h"

/// Appends the text of one ordinary conversion of the argument at the cursor, of which there are
/// some. Widths and precisions that are arguments are put into the conversion. False when printf
/// has an error there.
bool stl_format(STL_TEXT& text, STL_CONVERSION& conversion, STL_ARG_CURSOR& cursor);

/// The same for a conversion that is nothing but "%" and @p letter. False, and nothing done, when
/// it is none of those that are common enough to be known here.
bool stl_format_bare(STL_TEXT& text, char letter, STL_ARG_CURSOR& cursor);

/// Steps over the argument of one ordinary conversion without a `*`.
void stl_skip(STL_CONVERSION const& conversion, STL_ARG_CURSOR& cursor);
