#include "json_text.h"

#include <algorithm>
#include <cstdint>

namespace {

std::uint8_t byte_at(std::string_view text, std::size_t at) {
    return at < text.size() ? static_cast<std::uint8_t>(text[at]) : std::uint8_t{0};
}

bool is_between(std::uint8_t byte, std::uint8_t least, std::uint8_t most) {
    return byte >= least && byte <= most;
}

/// Bytes of the character that @p text begins with; 0 where it begins with none.
std::size_t character_size(std::string_view text) {
    std::uint8_t const first = byte_at(text, 0);
    if (first < 0x80)
        return 1;
    // Over-long forms, surrogates and what lies above U+10FFFF show in the second byte.
    std::uint8_t const least = first == 0xe0 ? 0xa0 : first == 0xf0 ? 0x90 : 0x80;
    std::uint8_t const most = first == 0xed ? 0x9f : first == 0xf4 ? 0x8f : 0xbf;
    std::size_t const size = is_between(first, 0xc2, 0xdf)   ? 2
                             : is_between(first, 0xe0, 0xef) ? 3
                             : is_between(first, 0xf0, 0xf4) ? 4
                                                             : 0;
    if (size == 0 || !is_between(byte_at(text, 1), least, most))
        return 0;
    for (std::size_t i = 2; i < size; ++i)
        if (!is_between(byte_at(text, i), 0x80, 0xbf))
            return 0;
    return size;
}

/// Whether a character is one that stands for a byte: in UTF-8 U+EF80 to U+EFBF are ee be 80 to
/// ee be bf, and U+EFC0 to U+EFFF are ee bf 80 to ee bf bf.
bool stands_for_byte(std::string_view character) {
    return byte_at(character, 0) == 0xee && byte_at(character, 1) >= 0xbe;
}

void append_byte(std::string& text, std::uint8_t byte) {
    text += '\xee';
    text += byte < 0xc0 ? '\xbe' : '\xbf';
    text += static_cast<char>(0x80 | (byte & 0x3f));
}

} // namespace

std::string to_json_text(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        std::size_t const size = character_size(bytes);
        std::string_view const character = bytes.substr(0, size);
        if (size == 0 || stands_for_byte(character)) {
            // Of a character the further bytes begin none themselves, and follow one by one.
            append_byte(text, byte_at(bytes, 0));
            bytes.remove_prefix(1);
        } else {
            text += character;
            bytes.remove_prefix(size);
        }
    }
    return text;
}

std::string from_json_text(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        std::size_t const size = std::max<std::size_t>(character_size(text), 1);
        std::string_view const character = text.substr(0, size);
        if (size == 3 && stands_for_byte(character))
            bytes += static_cast<char>((byte_at(text, 1) == 0xbe ? 0x80 : 0xc0) |
                                       (byte_at(text, 2) & 0x3f));
        else
            bytes += character;
        text.remove_prefix(size);
    }
    return bytes;
}
