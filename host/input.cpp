#include "input.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

bool is_standard_input(std::string const& path) {
    return path == "-";
}

} // namespace

std::string read_input(std::string const& path, std::string& text) {
    return read_blocks(path, [&text](std::string_view block) {
        text += block;
        return true;
    });
}

std::string read_blocks(std::string const& path,
                        std::function<bool(std::string_view block)> const& take) {
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(
        is_standard_input(path) ? nullptr : std::fopen(path.c_str(), "re"), std::fclose);
    std::FILE* const stream = is_standard_input(path) ? stdin : file.get();
    if (stream == nullptr)
        return reading_fault(path);
    std::array<char, 1 << 16> block;
    while (std::size_t const size = std::fread(block.data(), 1, block.size(), stream))
        if (!take({block.data(), size}))
            return "";
    return std::ferror(stream) == 0 ? "" : reading_fault(path);
}

std::string reading_fault(std::string const& path) {
    char const* const reason = std::strerror(errno);
    return "cannot read " + (is_standard_input(path) ? "standard input" : "'" + path + "'") + ": " +
           reason;
}

std::vector<std::string_view> pieces_of(std::string_view text, char end) {
    std::vector<std::string_view> pieces;
    pieces.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), end)) + 1);
    while (!text.empty()) {
        std::string_view const piece = text.substr(0, text.find(end));
        pieces.push_back(piece);
        text.remove_prefix(std::min(piece.size() + 1, text.size()));
    }
    return pieces;
}

std::vector<std::string_view> lines_of(std::string_view text) {
    return pieces_of(text, '\n');
}

std::string read_pieces(char end, std::function<bool(std::string& piece)> const& take) {
    struct Buffer {
        char* text = nullptr;
        std::size_t room = 0;
        ~Buffer() { std::free(text); }
    } buffer;
    // Kept: while serve answers a piece, stdin is another stream.
    std::FILE* const stream = stdin;
    for (;;) {
        ssize_t const size = getdelim(&buffer.text, &buffer.room, end, stream);
        // Memory may have failed, too, which ferror does not show.
        if (size < 0)
            return std::feof(stream) != 0 ? "" : reading_fault("-");
        std::string piece(buffer.text, static_cast<std::size_t>(size));
        if (piece.ends_with(end))
            piece.pop_back();
        if (!take(piece))
            return "";
    }
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
