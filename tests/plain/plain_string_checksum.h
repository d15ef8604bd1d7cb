#pragma once

/// The checksum and the sanitising written down as they are defined: what the fast forms are
/// compared with.

#include <cstdint>
#include <string>
#include <string_view>

/// Bit by bit, the lowest of a byte first.
inline int plain_crc(std::string_view text) {
    if (text.empty())
        return 0;
    std::uint32_t crc = 0xFFFFFFFF;
    for (char const character : text)
        for (unsigned bit = 0; bit < 8; ++bit) {
            bool const differs = ((static_cast<unsigned char>(character) >> bit ^ crc) & 1) != 0;
            crc = differs ? (crc >> 1) ^ 0x48728408 : crc >> 1;
        }
    return static_cast<int>(crc);
}

inline std::string plain_sanitised(std::string name) {
    static constexpr char replacements[][3] = {" _", "!E", "#F", "$R", "%C",  "&K", "'T",
                                               "(Q", ")P", "+M", "-J", ".L",  "/I", "<A",
                                               "=D", ">B", "?G", "[O", "\\H", "]N", "|S"};
    while (!name.empty() && name.back() == ' ')
        name.pop_back();
    for (char& character : name)
        for (auto const& replacement : replacements)
            if (character == replacement[0]) {
                character = replacement[1];
                break;
            }
    return name;
}
