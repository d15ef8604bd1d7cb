#include "ver.h"

#include "mem_alloc_sys.h"

#include <optional>

namespace {

std::optional<STR> module_directory;

} // namespace

void ver_set_module_path(char const* directory) {
    module_directory = STR(directory != nullptr ? directory : "");
}

void ver_cleanup() {
    module_directory.reset();
}

char const* ver_module_path() {
    return module_directory ? module_directory->c_str() : nullptr;
}

char const* ver_get_dravik_product_filename() {
    return "korvane";
}

char const* ver_get_dravik_copyright_ascii() {
    return "Copyright (C) 2026 Dravik Corporation. All rights reserved.";
}
