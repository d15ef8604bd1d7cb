#pragma once

/// Path lists taken apart entry by entry, looking at the rest of the string anew for each: what
/// FIO_FIND is compared with.

#include <filesystem>
#include <string>
#include <vector>

inline std::string plainly_trimmed(std::string text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.erase(0, 1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.pop_back();
    return text;
}

/// Takes the first entry off @p list, which has no blanks in front.
inline std::string plainly_taken_entry(std::string& list) {
    if (list.starts_with('"'))
        for (std::size_t i = 1; i < list.size(); ++i) {
            std::string const behind = plainly_trimmed(list.substr(i + 1));
            if (list[i] == '"' && (behind.empty() || behind.starts_with(';'))) {
                std::string const entry = list.substr(1, i - 1);
                list = behind.empty() ? "" : behind.substr(1);
                return entry;
            }
        }
    std::size_t const end = list.find(';');
    std::string const entry = plainly_trimmed(list.substr(0, end));
    list = end == std::string::npos ? "" : list.substr(end + 1);
    return entry;
}

inline std::vector<std::string> plainly_split_path_list(std::string list) {
    std::error_code fault;
    if (list.find('\0') == std::string::npos && std::filesystem::is_directory(list, fault))
        return {list};
    std::vector<std::string> entries;
    while (!(list = plainly_trimmed(list)).empty())
        if (std::string const entry = plainly_taken_entry(list); !entry.empty())
            entries.push_back(entry);
    return entries;
}
