#include "gen_string_checksum.h"

#include "gen_report.h"
#include "gen_string_ascii.h"
#include "gen_string_crc.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstring>

namespace {

constexpr unsigned least_hash_entry = 3;

constexpr std::array<char, 256> safe_characters = [] {
    std::array<char, 256> table{};
    // MUTANT_EXCL_LINE(0 to 1): the entry of 0 is 0 already
    for (unsigned byte = 0; byte < table.size(); ++byte)
        table[byte] = static_cast<char>(byte);
    constexpr char invalid[] = " !#$%&'()+-./<=>?[\\]|";
    constexpr char safe[] = "_EFRCKTQPMJLIADBGOHNS";
    static_assert(sizeof invalid == sizeof safe);
    // MUTANT_EXCL_LINE(< to <=): the terminators stand for each other
    for (std::size_t i = 0; i + 1 < sizeof invalid; ++i)
        table[static_cast<unsigned char>(invalid[i])] = safe[i];
    return table;
}();

} // namespace

void gen_replace_invalid_chars(char* name) {
    if (name == nullptr || *name == '\0') // an empty name may be a constant
        return;
    char* end = name + std::strlen(name);
    while (end != name && end[-1] == ' ')
        --end;
    *end = '\0';
    for (char* at = name; at != end; ++at)
        *at = safe_characters[static_cast<unsigned char>(*at)];
}

int gen_crc_generator(char const* string) {
    GEN_CHECKSUM sum;
    sum.add(string, length_of(string));
    return sum.checksum();
}

void GEN_CHECKSUM::add(char const* characters, std::size_t size) {
    m_register = crc_update(m_register, characters, size);
    m_is_empty = m_is_empty && size == 0;
}

int gen_crc_string_to_dword(char* string) {
    gen_replace_invalid_chars(string);
    return gen_crc_generator(string);
}

constexpr std::uint32_t gen_hash_size_primes[32] = {
    2,        3,        7,         13,        31,        61,         127,        251,
    509,      1021,     2039,      4093,      8191,      16381,      32749,      65521,
    131071,   262139,   524287,    1048573,   2097143,   4194301,    8388593,    16777213,
    33554393, 67108859, 134217689, 268435399, 536870909, 1073741789, 2147483647, 4294967291,
};

unsigned gen_hash_next_size(unsigned n) {
    // Entry k does not exceed 2 to the power k + 1 and is more than half of it. std::lower_bound
    // takes seven times as long on 32-bit (scripts/bench gen_hash_next_size).
    unsigned entry = least_hash_entry;
    // MUTANT_EXCL_LINE(> to >=): the entry itself gives itself
    if (n > gen_hash_size_primes[least_hash_entry]) {
        entry = static_cast<unsigned>(std::bit_width(n)) - 1;
        entry += static_cast<unsigned>(gen_hash_size_primes[entry] < n);
    }
    if (entry == std::size(gen_hash_size_primes)) {
        report(reports::no_such_hash_size);
        return 0;
    }
    return gen_hash_size_primes[entry];
}
