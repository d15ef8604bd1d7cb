#pragma once

/// What "/proc/meminfo" says, read piece by piece as it is defined: what the library's reader is
/// compared with.

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

/// The pieces that a line buffer of 50 characters gives, each up to its first NUL.
inline std::vector<std::string> plain_meminfo_pieces(std::string const& text) {
    std::vector<std::string> pieces(1);
    for (char const c : text) {
        pieces.back() += c;
        if (c == '\n' || pieces.back().size() == 49)
            pieces.emplace_back();
    }
    if (pieces.back().empty())
        pieces.pop_back();
    for (std::string& piece : pieces)
        piece = piece.c_str();
    return pieces;
}

/// The second of the words that colons and blanks part; "" if there is none.
inline std::string plain_meminfo_second_word(std::string const& piece) {
    std::vector<std::string> words(1);
    for (char const c : piece) {
        if (c != ':' && c != ' ')
            words.back() += c;
        else if (!words.back().empty())
            words.emplace_back();
    }
    return words.size() > 1 ? words[1] : "";
}

/// The decimal number that the word begins with, sticking at the limits of 32 bits.
inline std::int32_t plain_meminfo_number(std::string const& word) {
    using Limits = std::numeric_limits<std::int32_t>;
    std::size_t i = std::min(word.find_first_not_of("\t\n\v\f\r "), word.size());
    bool const negative = i < word.size() && word[i] == '-';
    if (i < word.size() && (word[i] == '-' || word[i] == '+'))
        ++i;
    std::int64_t number = 0;
    for (; i < word.size() && word[i] >= '0' && word[i] <= '9'; ++i)
        number = std::min<std::int64_t>(number * 10 + (word[i] - '0'), std::int64_t{1} << 40);
    number = negative ? -number : number;
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(std::max<std::int64_t>(number, Limits::min()), Limits::max()));
}

/// Whether the piece begins with that key; then its number is in @p kilobytes.
inline bool plain_meminfo_match(std::string const& piece, char const* key,
                                std::int32_t& kilobytes) {
    if (!piece.starts_with(key))
        return false;
    kilobytes = plain_meminfo_number(plain_meminfo_second_word(piece));
    return true;
}
