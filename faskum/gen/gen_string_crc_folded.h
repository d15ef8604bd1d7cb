#pragma once

/// The register of gen_crc_generator by carry-less multiplication, where the machine has it.

#include <cstddef>
#include <cstdint>

constexpr std::uint32_t crc_polynomial = 0x48728408;

/// The register after one more bit: in polynomials, itself times x.
constexpr std::uint32_t crc_shifted(std::uint32_t crc) {
    return (crc >> 1) ^ ((crc & 1) != 0 ? crc_polynomial : 0);
}

/// What is folded is some blocks of this many bytes.
constexpr std::size_t crc_block_size = 16;

bool crc_can_fold();
/// The register after @p size more bytes, a multiple of crc_block_size and not 0.
std::uint32_t crc_update_folded(std::uint32_t crc, char const* data, std::size_t size);
