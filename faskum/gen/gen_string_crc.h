#pragma once

/// The register of gen_crc_generator, taken over many bytes at a time.

#include <array>
#include <cstddef>
#include <cstdint>

constexpr std::uint32_t crc_polynomial = 0x48728408;

/// The register after one more bit: in polynomials, itself times x.
constexpr std::uint32_t crc_shifted(std::uint32_t crc) {
    return (crc >> 1) ^ ((crc & 1) != 0 ? crc_polynomial : 0);
}

/// Known to be of this library, and with their arguments in registers on 32-bit as well: short
/// texts are summed up in less time than a call otherwise takes there.
#if defined(__i386__)
#define CRC_INTERNAL __attribute__((visibility("hidden"), regparm(3)))
#else
#define CRC_INTERNAL __attribute__((visibility("hidden")))
#endif

/// Slicing: table[k][b] is what the byte b becomes in the register with k more bytes behind it.
extern __attribute__((visibility("hidden")))
std::array<std::array<std::uint32_t, 256>, 16> const crc_table;

/// The register after @p size more bytes, whatever the machine.
CRC_INTERNAL std::uint32_t crc_update_sliced(std::uint32_t crc, char const* data, std::size_t size);

/// The same with carry-less multiplication, which pays from 32 bytes on and needs at least 16.
constexpr std::size_t crc_least_folded = 32;
CRC_INTERNAL std::uint32_t crc_update_folded(std::uint32_t crc, char const* data, std::size_t size);
