#include "input.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>

namespace {

constexpr char const* blanks = " \t\r\n\v\f";

bool append_all(std::FILE* stream, std::string& text) {
    std::array<char, 1 << 16> block;
    while (std::size_t const size = std::fread(block.data(), 1, block.size(), stream))
        text.append(block.data(), size);
    return std::ferror(stream) == 0;
}

} // namespace

std::optional<std::string> read_input(std::string const& path) {
    std::string text;
    if (path.empty() || path == "-")
        return append_all(stdin, text) ? std::optional(std::move(text)) : std::nullopt;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(std::fopen(path.c_str(), "re"),
                                                               std::fclose);
    if (file == nullptr || !append_all(file.get(), text))
        return std::nullopt;
    return text;
}

std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines;
    lines.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1);
    while (!text.empty()) {
        std::string_view const line = text.substr(0, text.find('\n'));
        lines.push_back(line);
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return lines;
}

std::string_view trimmed(std::string_view text) {
    std::size_t const begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

FirstWord first_word(std::string_view text) {
    text = trimmed(text);
    std::size_t const end = std::min(text.find_first_of(blanks), text.size());
    return {text.substr(0, end), trimmed(text.substr(end))};
}
