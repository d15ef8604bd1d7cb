// gen_local_strtod against strtod: the number to the bit, the end and errno. The fuzzer's own
// locale is the neutral one.

#include "fuzz_input.h"
#include "gen_localization.h"

#include <bit>
#include <cerrno>
#include <cstdlib>

namespace {

struct Reading {
    std::uint64_t bits;
    char const* end;
    int error;

    bool operator==(Reading const&) const = default;
};

Reading read(double (*convert)(char const*, char**), char const* text) {
    char* end = nullptr;
    errno = 0;
    double const value = convert(text, &end);
    return {std::bit_cast<std::uint64_t>(value), end, errno};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    FuzzInput input(data, size);
    FuzzText const text(input.take_rest());

    require(read(gen_local_strtod, text.get()) == read(std::strtod, text.get()),
            "gen_local_strtod reads as strtod reads");
    return 0;
}
