#include "fio_path_list.h"

#include "blanks.h"
#include "fio_existence.h"

#include <algorithm>

namespace {

/// Where the quote stands that closes the entry whose opening quote is before @p from: the first
/// one that only blanks part from a ";" or the end. npos when there is none.
std::size_t find_closing_quote(std::string_view text, std::size_t from) {
    for (std::size_t i = text.find('"', from); i != std::string_view::npos;
         i = text.find('"', i + 1)) {
        std::size_t const next = text.find_first_not_of(blanks, i + 1);
        if (next == std::string_view::npos || text[next] == ';')
            return i;
    }
    return std::string_view::npos;
}

bool is_one_directory(STR const& text) {
    // Only a string that would be taken apart needs the check.
    if (text.find_first_of(";\"") == STR::npos && without_blanks(text).size() == text.size())
        return false;
    return fio_is_system_name(text) && fio_is_directory(text.c_str());
}

} // namespace

MEM_VECTOR<std::string_view> fio_split_path_list(STR const& text) {
    MEM_VECTOR<std::string_view> entries;
    if (is_one_directory(text)) {
        entries.emplace_back(text);
        return entries;
    }
    std::string_view const list = text;
    bool quotes_close = true; // false once no closing quote is left: do not look for it again
    for (std::size_t position = 0; position < list.size();) {
        std::size_t const start = std::min(list.find_first_not_of(blanks, position), list.size());
        std::size_t close = std::string_view::npos;
        if (quotes_close && start < list.size() && list[start] == '"') {
            close = find_closing_quote(list, start + 1);
            quotes_close = close != std::string_view::npos;
        }
        bool const quoted = close != std::string_view::npos;
        std::size_t const end = std::min(list.find(';', quoted ? close : start), list.size());
        std::string_view const entry = quoted ? list.substr(start + 1, close - start - 1)
                                              : without_blanks(list.substr(start, end - start));
        if (!entry.empty())
            entries.push_back(entry);
        position = end + 1;
    }
    return entries;
}
