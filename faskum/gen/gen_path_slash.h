#pragma once

/// Private to gen. The file-I/O library has a function of its own, which leaves "" as it is.

#include "mem_alloc_sys.h"

/// Appends the "/" that a directory lacks; "" becomes the root.
inline void gen_end_with_slash(STR& directory) {
    if (!directory.ends_with('/'))
        directory += '/';
}
