#pragma once

/// Strings of the library as tests write, compare and print them.

#include "fio_path.h"

#include <string>
#include <vector>

inline STR library_string(std::string const& text) {
    return STR(text.data(), text.size());
}

inline std::vector<std::string> texts(MEM_LIST<FIO_PATH> const& paths) {
    std::vector<std::string> all;
    for (FIO_PATH const& path : paths)
        all.emplace_back(path.fullpath());
    return all;
}
