#pragma once

/// The groups of directories by their names.

#include "gen_path.h"

namespace gen_c {

struct Group {
    char const* name;
    FIO_FIND* const& find; ///< null while there is none
};

/// In the order of gen_c_group.
extern Group const groups[7];

} // namespace gen_c
