// Checksums and sanitising against bit by bit and byte by byte.

#include "err_report.h"
#include "fuzz_input.h"
#include "gen_string_checksum.h"
#include "plain_string_checksum.h"

static void ignore_error(char const*, char const*, char const*, int) {}

static void hash_size(unsigned number) {
    unsigned const size = gen_hash_next_size(number);
    if (number > gen_hash_size_primes[31]) {
        require(size == 0, "no hash size fits");
        return;
    }
    unsigned entry = 3;
    while (gen_hash_size_primes[entry] < number)
        ++entry;
    require(size == gen_hash_size_primes[entry], "gen_hash_next_size");
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    err_set_internal_error_handler(ignore_error);
    FuzzInput input(data, size);
    hash_size(input.take<std::uint32_t>());
    std::string const text = input.take_rest().c_str();

    FuzzText const name(text);
    require(gen_crc_generator(name.get()) == plain_crc(text), "gen_crc_generator");
    std::string const sanitised = plain_sanitised(text);
    require(gen_crc_string_to_dword(name.get()) == plain_crc(sanitised), "gen_crc_string_to_dword");
    require(name.get() == sanitised, "gen_replace_invalid_chars");
    return 0;
}
