#pragma once

/// The register of gen_crc_generator, taken over many bytes at a time.

#include <cstddef>
#include <cstdint>

constexpr std::uint32_t crc_polynomial = 0x48728408;

/// The register after one more bit: in polynomials, itself times x.
constexpr std::uint32_t crc_shifted(std::uint32_t crc) {
    return (crc >> 1) ^ ((crc & 1) != 0 ? crc_polynomial : 0);
}

/// The register after @p size more bytes, in the way that is the fastest here.
std::uint32_t crc_update(std::uint32_t crc, char const* data, std::size_t size);

/// The same by tables, whatever the machine.
std::uint32_t crc_update_sliced(std::uint32_t crc, char const* data, std::size_t size);

/// The same by carry-less multiplication, where the machine has it, for 16 bytes and more.
bool crc_can_fold();
std::uint32_t crc_update_folded(std::uint32_t crc, char const* data, std::size_t size);
