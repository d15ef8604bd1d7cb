// Path lists taken apart, and what is looked for, in which order, in their directories.

#include "fio.h"
#include "fuzz_input.h"
#include "plain_path.h"
#include "plain_path_list.h"

#include <filesystem>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

Texts asked;
std::uint32_t answers = 0; ///< a bit an existence check

bool answer_to(std::size_t check) {
    return (answers >> (check % 32) & 1) != 0;
}

bool note(FIO_FIND const*, char const* path, bool) {
    asked.emplace_back(path);
    return answer_to(asked.size() - 1);
}

STR gen_text(std::string const& text) {
    return STR(text.data(), text.size());
}

bool has_nul(std::string const& text) {
    return text.find('\0') != std::string::npos;
}

bool is_findable(std::string const& name) {
    return !name.empty() && name.front() != '/' && !has_nul(name);
}

/// The directory that @p text means, ready for a name, where relative ones start at @p base.
std::string prefix(std::string const& base, std::string const& text) {
    return PlainPath::with_slash(text.starts_with('/') ? text : base + text);
}

std::string current_directory() {
    static std::string const current =
        PlainPath::with_slash(std::filesystem::current_path().string());
    return current;
}

Texts entries_of(FIO_FIND const& find) {
    Texts entries;
    for (FIO_PATH const& directory : find.directories())
        entries.emplace_back(std::string_view(directory.fullpath()));
    return entries;
}

void compare_first(FIO_FIND& find, Texts const& prefixes, std::string const& name) {
    asked.clear();
    std::string const found(
        std::string_view(find.find_first_relative_path(gen_text(name)).fullpath()));
    Texts expected;
    std::string hit;
    if (is_findable(name))
        for (std::string const& directory : prefixes) {
            expected.push_back(directory + name);
            if (answer_to(expected.size() - 1)) {
                hit = expected.back();
                break;
            }
        }
    require(asked == expected, "what is asked for a name");
    require(found == hit, "what is found for a name");
}

void compare_all(FIO_FIND& find, Texts prefixes, std::string const& base, Texts const& extensions,
                 bool all_directories, bool absolute) {
    MEM_VECTOR<STR> endings;
    for (std::string const& extension : extensions)
        endings.push_back(gen_text(extension));
    MEM_LIST<FIO_PATH> found;
    asked.clear();
    find.find_all(gen_text(base), endings, &found, all_directories, absolute);

    Texts expected;
    Texts hits;
    for (std::string const& directory : is_findable(base) ? prefixes : Texts()) {
        bool any = false;
        for (std::string const& extension : extensions) {
            if (has_nul(extension))
                continue;
            bool const needs_dot = !extension.empty() && !extension.starts_with('.');
            expected.push_back((absolute ? prefix(current_directory(), directory) : directory) +
                               base + (needs_dot ? "." : "") + extension);
            if (answer_to(expected.size() - 1)) {
                hits.push_back(expected.back());
                any = true;
            }
        }
        if (any && !all_directories)
            break;
    }
    require(asked == expected, "what is asked for extensions");
    Texts results;
    for (FIO_PATH const& path : found)
        results.emplace_back(std::string_view(path.fullpath()));
    require(results == hits, "what is found for extensions");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzInput input(data, size);
    answers = input.take<std::uint32_t>();
    auto const flags = input.take<std::uint8_t>();
    std::string const base = std::string(input.take_text(20).c_str());
    std::string const name = input.take_text(20);
    Texts const extensions{input.take_text(4), input.take_text(4)};
    std::string const list = input.take_rest();

    FIO_OBSERVER const previous = fio_set_observer(note);
    FIO_FIND find{STR()};
    if ((flags & 4) != 0)
        find.set_directory_for_results_to_become_absolute_to(base.c_str());
    find.init(gen_text(list));
    if ((flags & 4) == 0)
        find.set_directory_for_results_to_become_absolute_to(base.c_str());

    Texts const entries = plainly_split_path_list(list);
    require(entries_of(find) == entries, "entries");
    std::string const start = base.empty() ? "" : prefix(current_directory(), base);
    Texts prefixes;
    for (std::string const& entry : entries)
        if (!has_nul(entry))
            prefixes.push_back(prefix(start, entry));
    compare_first(find, prefixes, name);
    compare_all(find, prefixes, name, extensions, (flags & 1) != 0, (flags & 2) != 0);
    fio_set_observer(previous);
    return 0;
}
