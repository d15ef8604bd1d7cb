// Numbers from and to strings against the forms that go digit by digit.

#include "err_report.h"
#include "fuzz_input.h"
#include "gen_string_number.h"
#include "plain_string_number.h"

static void ignore_error(char const*, char const*, char const*, int) {}

/// What a number that is written reads as, behind whatever comes before it.
static void read_number(std::string const& text, std::size_t position, int value) {
    STR const string(text.data(), text.size());
    STR::const_iterator at = string.begin() + static_cast<std::ptrdiff_t>(position);
    STR::const_iterator const begin = at;
    gen_atoi(string, &at);
    require(begin <= at && at <= string.end(), "where gen_atoi stops");

    STR const written = string + " " + gen_itoa(value, 10);
    at = written.begin() + static_cast<std::ptrdiff_t>(string.size());
    require(gen_atoi(written, &at) == value && at == written.end(), "gen_atoi of gen_itoa");
}

/// Every form writes the digits and its NUL, and the buffers are not a byte longer.
static void write_number(unsigned long number, int radix) {
    auto const value = static_cast<int>(number);
    std::string const digits = radix < 2 ? "" : plain_itoa(value, static_cast<unsigned>(radix));
    FuzzText const room(digits);
    require(gen_itoa(value, room.get(), radix) == digits, "gen_itoa into a buffer");
    require(gen_itoa(value, radix) == STR(digits.c_str()), "gen_itoa as a string");
    STR out;
    gen_itoa(value, out, radix);
    require(out == STR(digits.c_str()), "gen_itoa into a string");

    std::string const unsigned_digits =
        radix < 2 ? "" : plain_digits(number, static_cast<unsigned>(radix));
    FuzzText const unsigned_room(unsigned_digits);
    require(gen_ultoa(number, unsigned_room.get(), radix) == unsigned_digits, "gen_ultoa");
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    err_set_internal_error_handler(ignore_error);
    FuzzInput input(data, size);
    auto const radix = static_cast<int>(input.take<std::int8_t>() % 37);
    auto const number = static_cast<unsigned long>(input.take<std::uint64_t>());
    auto const position = input.take<std::uint8_t>();
    std::string const text = input.take_rest();
    write_number(number, radix);
    read_number(text, position % (text.size() + 1), static_cast<int>(number));
    return 0;
}
