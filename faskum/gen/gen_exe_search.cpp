#include "gen_exe_search.h"

#include "gen_path_slash.h"

#include <cstdlib>
#include <string_view>
#include <sys/stat.h>

namespace {

/// What one "PATH" entry may grow to together with the name, its terminator included.
constexpr std::size_t longest_candidate = 1024;

STR search_path(char const* entries, STR const& name, STR const& otherwise) {
    STR candidate;
    std::string_view rest(entries);
    while (true) {
        std::string_view const entry = rest.substr(0, rest.find(':'));
        if (entry.size() + 1 + name.size() < longest_candidate) {
            candidate.assign(entry).append(1, '/').append(name);
            if (gen_file_exists(candidate))
                return candidate;
        }
        if (entry.size() == rest.size())
            return otherwise;
        rest.remove_prefix(entry.size() + 1);
    }
}

} // namespace

bool gen_file_exists(STR const& path) {
    struct stat status {};
    // The bit rather than S_ISREG: hosts rely on sockets, whose mode carries it too, being found.
    return path.find('\0') == STR::npos && stat(path.c_str(), &status) == 0 &&
           (status.st_mode & S_IFREG) != 0;
}

STR find_executable_in_path(STR const& name) {
    char const* const entries = std::getenv("PATH");
    char const* const root = std::getenv("KORVANE_ROOTDIR");
    char const* const directory = std::getenv("KORVANE_DIR");
    char const* const platform = std::getenv("KORVANE_PLATFORM");

    STR result;
    if (root != nullptr && platform != nullptr) {
        result = root;
        gen_end_with_slash(result);
        result.append(platform).append(1, '/').append(name);
        if (gen_file_exists(result))
            return result;
    }
    if (directory != nullptr) {
        result.assign(directory).append("/bin/").append(name);
        if (gen_file_exists(result))
            return result;
    }
    return entries != nullptr ? search_path(entries, name, result) : result;
}
