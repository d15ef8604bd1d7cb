#include "fio_file_system.h"

#include "fio_existence.h"
#include "fio_wildcard.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool is_name(std::string_view text) {
    return !text.empty() && fio_is_system_name(text);
}

/// Creates one directory whose parent exists, or finds it there already.
bool create_one(char const* directory) {
    return mkdir(directory, 0777) == 0 || (errno == EEXIST && fio_is_directory(directory));
}

/// An enumeration between findfirst and findclose.
struct Search {
    long handle = 0;
    STR directory;
    MEM_VECTOR<STR> names;
    std::size_t next = 0;
};

MEM_LIST<Search> open_searches;
long last_handle = 0;

MEM_LIST<Search>::iterator find_search(long handle) {
    return std::find_if(open_searches.begin(), open_searches.end(),
                        [handle](Search const& search) { return search.handle == handle; });
}

/// Fills in the next name that is still there; false when there is none left.
bool deliver(Search& search, _finddata_t& data) {
    STR path;
    while (search.next < search.names.size()) {
        STR const& name = search.names[search.next++];
        path = search.directory;
        path += name;
        struct stat status;
        // A dangling link is a name in the directory all the same.
        bool const there = stat(path.c_str(), &status) == 0 || lstat(path.c_str(), &status) == 0;
        if (!there || name.size() >= sizeof data.name) // GCOVR_EXCL_BR_LINE: no such long names
            continue;
        std::memcpy(data.name, name.c_str(), name.size() + 1);
        data.size = status.st_size;
        return true;
    }
    return false;
}

} // namespace

bool FIO_FILE_SYSTEM::exists(char const* path) {
    return path != nullptr && *path != '\0' && fio_path_exists(nullptr, path);
}

bool FIO_FILE_SYSTEM::exists(FIO_PATH const& path) {
    return is_name(path.text()) && fio_path_exists(nullptr, path.m_text.c_str());
}

bool FIO_FILE_SYSTEM::create(STR const& directory) {
    if (!is_name(directory))
        return false;
    if (create_one(directory.c_str()))
        return true;
    if (errno != ENOENT)
        return false;
    STR parents = directory;
    for (std::size_t i = parents.find('/', 1); i != STR::npos; i = parents.find('/', i + 1)) {
        parents[i] = '\0';
        // One that cannot be made shows in the last call.
        create_one(parents.c_str());
        parents[i] = '/';
    }
    return create_one(directory.c_str());
}

bool FIO_FILE_SYSTEM::touch(STR const& path) {
    if (!is_name(path))
        return false;
    int const file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0)
        return false;
    close(file);
    return true;
}

STR FIO_FILE_SYSTEM::get_current_directory() {
    // Not the allocating form of getcwd, which does not set a want of memory apart from other
    // errors. A current directory may be deeper than PATH_MAX.
    STR result;
    result.resize(PATH_MAX);
    while (getcwd(result.data(), result.size()) == nullptr) {
        if (errno != ERANGE)
            return {};
        result.resize(2 * result.size());
    }
    result.resize(std::strlen(result.c_str()));
    return result;
}

long FIO_FILE_SYSTEM::findfirst(char const* pattern, _finddata_t* data) {
    if (pattern == nullptr || data == nullptr)
        return -1;
    Search search;
    STR const text(pattern);
    search.names = fio_matching_names(text);
    search.directory = text.substr(0, text.rfind('/') + 1); // npos + 1 is 0
    if (!deliver(search, *data))
        return -1;
    // Handles are not used again, so that one that was closed stays harmless.
    // GCOVR_EXCL_BR_START: no test makes so many searches
    last_handle = last_handle < std::numeric_limits<long>::max() ? last_handle + 1 : 1;
    // GCOVR_EXCL_BR_STOP
    search.handle = last_handle;
    open_searches.push_back(std::move(search));
    return last_handle;
}

int FIO_FILE_SYSTEM::findnext(long handle, _finddata_t* data) {
    auto const search = find_search(handle);
    return search != open_searches.end() && data != nullptr && deliver(*search, *data) ? 0 : -1;
}

void FIO_FILE_SYSTEM::findclose(long handle) {
    auto const search = find_search(handle);
    if (search != open_searches.end())
        open_searches.erase(search);
}
