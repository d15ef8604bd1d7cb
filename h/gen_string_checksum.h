#pragma once

/// Names made safe, checksums, table sizes and random numbers. No locale takes part.

#include "korvane_export.h"

#include <cstddef>
#include <cstdint>

/// Makes @p name one of characters that are safe in identifiers and file names: cuts the spaces at
/// its end and replaces each of these, in place. Every other byte is kept; an empty name and a null
/// are left alone.
///     space ! # $ % & ' ( ) + - . / < = > ? [ \ ] |
///       _   E F R C K T Q P M J L I A D B G O H N S
KORVANE_API void gen_replace_invalid_chars(char* name);

/// A 32-bit checksum of @p string, 0 for an empty string and for null: the reflected cyclic
/// redundancy check of the polynomial 0x48728408 (which is not that of the common CRC-32), begun at
/// 0xFFFFFFFF and not inverted at the end.
KORVANE_API int gen_crc_generator(char const* string);

/// The same checksum of a string that comes in pieces.
class KORVANE_API GEN_CHECKSUM {
  public:
    /// Goes on with @p size characters, NULs among them like all others. Null with 0 adds nothing.
    void add(char const* characters, std::size_t size);
    /// Of all that has been added; 0 while there is nothing.
    int checksum() const { return m_is_empty ? 0 : static_cast<int>(m_register); }

  private:
    std::uint32_t m_register = 0xFFFFFFFF;
    bool m_is_empty = true;
};

/// Does gen_replace_invalid_chars(string) and gives the checksum of what is left in it.
KORVANE_API int gen_crc_string_to_dword(char* string);

/// Entry k is the largest prime that does not exceed 2 to the power k + 1.
KORVANE_API extern std::uint32_t const gen_hash_size_primes[32];

/// The least entry of gen_hash_size_primes that is neither below @p n nor below 13. Above
/// 4294967291 there is none: the internal error "rval != 0" is reported and 0 returned.
KORVANE_API unsigned gen_hash_next_size(unsigned n);

/// Random numbers that repeat: equal seeds give equal sequences on every platform. One generator a
/// thread.
class GEN_RAND {
  public:
    /// Begins the sequence of that seed.
    explicit GEN_RAND(unsigned seed = 1) : m_state(seed) {}

    /// The next number, 0 to 32767.
    int get_rand() {
        m_state = m_state * 214013 + 2531011;
        return static_cast<int>(m_state >> 16 & 0x7FFF);
    }

  private:
    std::uint32_t m_state;
};
