#include "fio_wildcard.h"

#include "fio_existence.h"

#include <algorithm>
#include <dirent.h>

bool fio_matches_wildcard(std::string_view name, std::string_view pattern) {
    std::size_t n = 0;
    std::size_t p = 0;
    // Only the last "*" can ever need to take one byte more: what precedes it has matched already.
    std::size_t last_star = std::string_view::npos;
    std::size_t taken_until = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            last_star = p++;
            taken_until = n;
        } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
            ++p;
            ++n;
        } else if (last_star != std::string_view::npos) {
            p = last_star + 1;
            n = ++taken_until;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

MEM_VECTOR<STR> fio_matching_names(STR const& pattern) {
    MEM_VECTOR<STR> names;
    std::size_t const name_start = pattern.rfind('/') + 1; // npos + 1 is 0
    std::string_view const name_pattern = std::string_view(pattern).substr(name_start);
    STR const directory = name_start > 0 ? pattern.substr(0, name_start) : STR(".");
    if (name_pattern.empty() || !fio_is_system_name(pattern))
        return names;
    DIR* const stream = opendir(directory.c_str());
    if (stream == nullptr) {
        // opendir allocates: a want of memory is not to pass for a directory that cannot be read.
        MEM_MANAGER::check_heap("FIO");
        return names;
    }
    while (dirent const* const entry = readdir(stream)) {
        std::string_view const name = entry->d_name;
        if (name != "." && name != ".." && fio_matches_wildcard(name, name_pattern))
            names.emplace_back(name);
    }
    closedir(stream);
    std::sort(names.begin(), names.end());
    return names;
}
