#include "gen_string_crc.h"

#include "gen_string_crc_folded.h"

#include <array>
#include <cstring>

namespace {

/// From here on folding takes less time than slicing.
constexpr std::size_t least_folded = 32; // MUTANT_EXCL_LINE(32 to 33): both ways answer alike
bool const can_fold = crc_can_fold();

/// Slicing: table[k][b] is what the byte b becomes in the register with k more bytes behind it.
/// Byte by byte, strings of 8 bytes take six times as long on 32-bit, and longer ones more.
constexpr std::array<std::array<std::uint32_t, 256>, 16> crc_table = [] {
    std::array<std::array<std::uint32_t, 256>, 16> table{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t crc = byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = crc_shifted(crc);
        table[0][byte] = crc;
    }
    for (std::size_t slice = 1; slice < table.size(); ++slice)
        for (std::size_t byte = 0; byte < 256; ++byte) {
            std::uint32_t const crc = table[slice - 1][byte];
            table[slice][byte] = (crc >> 8) ^ table[0][crc & 0xFF];
        }
    return table;
}();

std::uint32_t word_at(char const* data) {
    std::uint32_t word;
    std::memcpy(&word, data, sizeof word);
    return word;
}

/// What the four bytes of a word become with @p slice bytes behind the word.
std::uint32_t sliced(std::uint32_t word, std::size_t slice) {
    return crc_table[slice + 3][word & 0xFF] ^ crc_table[slice + 2][word >> 8 & 0xFF] ^
           crc_table[slice + 1][word >> 16 & 0xFF] ^ crc_table[slice][word >> 24];
}

/// By tables, whatever the machine.
std::uint32_t update_sliced(std::uint32_t crc, char const* data, std::size_t size) {
    while (size >= 16) { // MUTANT_EXCL_LINE(>= to >; 16 to 17): the rest goes the shorter ways
        crc = sliced(crc ^ word_at(data), 12) ^ sliced(word_at(data + 4), 8) ^
              sliced(word_at(data + 8), 4) ^ sliced(word_at(data + 12), 0);
        data += 16;
        size -= 16;
    }
    if (size >= 8) { // MUTANT_EXCL_LINE(>= to >; 8 to 9): likewise
        crc = sliced(crc ^ word_at(data), 4) ^ sliced(word_at(data + 4), 0);
        data += 8;
        size -= 8;
    }
    if (size >= 4) { // MUTANT_EXCL_LINE(>= to >; 4 to 5): likewise
        crc = sliced(crc ^ word_at(data), 0);
        data += 4;
        size -= 4;
    }
    for (; size != 0; ++data, --size)
        crc = (crc >> 8) ^ crc_table[0][(crc ^ static_cast<unsigned char>(*data)) & 0xFF];
    return crc;
}

} // namespace

std::uint32_t crc_update(std::uint32_t crc, char const* data, std::size_t size) {
    // MUTANT_EXCL_LINE(>= to >): both ways answer alike
    if (can_fold && size >= least_folded) { // GCOVR_EXCL_BR_LINE: the machine can or cannot
        std::size_t const rest = size % crc_block_size;
        crc = crc_update_folded(crc, data, size - rest);
        data += size - rest;
        size = rest;
    }
    return update_sliced(crc, data, size);
}
