#include "gen_path_temp.h"

#include "fio_file_system.h"
#include "gen_exe.h"
#include "gen_load.h"
#include "gen_open.h"
#include "gen_owned.h"
#include "gen_path_slash.h"
#include "gen_report.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <ext/stdio_filebuf.h>
#include <fstream>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

char const* const GUI_PROFILE_NAME = "korvane_gui.profile";

std::ofstream* gui_profile_stream = nullptr;

namespace {

constexpr std::size_t prefix_length = 3;
constexpr std::size_t digit_count = 8;
constexpr char temp_extension[] = ".tmp";
constexpr std::uint32_t numbers_in_a_round = 65536;

/// A stream on the file, emptied; null where it cannot be opened. A stream that opened the file by
/// itself would wait for the reader of a FIFO and pass the file on to programs that the host
/// starts.
std::ofstream* open_stream(STR const& path) {
    int const file = gen_open_for_writing(path);
    if (file < 0)
        return nullptr;
    auto* stream = gen_make_owned<std::ofstream>();
    try {
        // A stream opens no descriptor. This buffer does, and its file is moved to the stream's
        // own.
        *stream->rdbuf() = __gnu_cxx::stdio_filebuf<char>(file, std::ios::out);
    } catch (std::bad_alloc const&) { // GCOVR_EXCL_BR_LINE: its buffer's, and no other
        // MUTANT_EXCL_LINE(without): a heap that is used up is found out below as well
        MEM_MANAGER::fail(BUFSIZ, nullptr, "GEN");
    }
    if (!stream->is_open()) { // only for want of memory
        MEM_MANAGER::check_heap("GEN");
        close(file);
        gen_release_owned(stream);
    }
    return stream;
}

bool is_directory(STR const& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

STR gen_get_temp_path() {
    // GCOVR_EXCL_START: the test without them may hide the build, and what it counts, with them
    for (char const* const directory : {"/var/tmp", "/tmp"})
        if (FIO_FILE_SYSTEM::exists(directory))
            return STR(directory) + "/";
    report(reports::no_temp_directory);
    return STR();
    // GCOVR_EXCL_STOP
}

STR gen_get_temp_filename(STR const& directory, STR const& prefix, unsigned short number) {
    auto next = static_cast<std::uint16_t>(number != 0 ? number : std::time(nullptr));

    // Set as the base name, so that a dot in the prefix does not cut digits off as an extension.
    // Behind a null character no file could ever be created.
    FIO_PATH path;
    path.directory(directory.c_str());
    // MUTANT_EXCL_LINE('0' to '~'): the number is written over them
    path.base(STR(prefix.c_str()).substr(0, prefix_length) + STR(digit_count, '0'));
    path.extension(temp_extension, "");
    STR text = path.fullpath();
    std::size_t const digits_begin = text.size() - (sizeof temp_extension - 1) - digit_count;

    // Creating shows by itself whether a name is taken; asking first would only leave time for
    // somebody else to take it.
    for (std::uint32_t tried = 1;; ++tried) {
        char digits[digit_count + 1];
        std::snprintf(digits, sizeof digits, "%08x", unsigned{next++});
        text.replace(digits_begin, digit_count, digits);
        if (FIO_FILE_SYSTEM::touch(text))
            return text;
        if (tried == numbers_in_a_round) {
            gen_mem_msg_debug("No temporary file can be created in \"%s\": tried all %u numbers",
                              directory.c_str(), static_cast<unsigned>(numbers_in_a_round));
            tried = 0;
        }
    }
}

STR gen_get_user_profile_directory() {
    char const* const home = std::getenv("HOME");
    if (home == nullptr)
        return STR();
    STR directory = home;
    gen_end_with_slash(directory);
    directory += ".dravik.korvane";
    // Looked for first: where nothing may be created, one that exists serves all the same. What is
    // in it is the user's alone, and its parents are not ours to make.
    // GCOVR_EXCL_BR_START: another process may make it just between
    // MUTANT_EXCL_LINE(|| to && (place 2); 0 to 1): what was created is one
    bool const is_there = is_directory(directory) || mkdir(directory.c_str(), S_IRWXU) == 0 ||
                          is_directory(directory);
    // GCOVR_EXCL_BR_STOP
    return is_there ? directory : STR();
}

std::ofstream* gen_get_gui_profile_stream() {
    return gui_profile_stream;
}

void gen_set_gui_profile_stream() {
    gen_release_owned(gui_profile_stream);
    if (db_dir_path == nullptr)
        return;
    FIO_PATH path = *db_dir_path;
    path.filename(GUI_PROFILE_NAME);
    gui_profile_stream = open_stream(path.fullpath());
}
