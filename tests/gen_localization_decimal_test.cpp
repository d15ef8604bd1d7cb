// The quick reading of short decimals must be strtod to the last bit.

#include "effort.h"
#include "gen_localization.h"
#include "gen_localization_reading.h"

#include <cfenv>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <string>

TEST(LocalStrtodQuick, EveryShortNumberWithEveryPowerReadsAsStrtodReads) {
    for (int power = -32; power <= 32; ++power)
        for (std::uint64_t const digits :
             {1ULL, 2ULL, 5ULL, 9ULL, 10ULL, 123456789ULL, 9007199254740991ULL, 9007199254740993ULL,
              999999999999999999ULL, 1234567890123456789ULL, 9999999999999999999ULL})
            expect_read_as_strtod_reads(std::to_string(digits) + "e" + std::to_string(power));
}

// An odd 54-bit number lies in the middle of two doubles; times a power of a half it still does.
TEST(LocalStrtodQuick, NumbersAtTheMiddleOfTwoDoublesReadAsStrtodReads) {
    std::mt19937_64 random(4711);
    for (std::size_t i = 0; i < effort(200'000); ++i) {
        std::uint64_t digits = (std::uint64_t{1} << 53) | (random() >> 11) | 1;
        std::uint64_t const halvings = random() % 4;
        for (std::uint64_t k = 0; k < halvings; ++k)
            digits *= 5;
        for (std::uint64_t const near : {digits - 1, digits, digits + 1})
            expect_read_as_strtod_reads(std::to_string(near) + "e-" + std::to_string(halvings));
    }
}

TEST(LocalStrtodQuick, MillionsOfRandomNumbersReadAsStrtodReads) {
    std::mt19937_64 random(20260313);
    auto const below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
    std::string text;
    for (std::size_t i = 0; i < effort(2'000'000); ++i) {
        text = std::to_string(random() >> below(64));
        if (below(4) != 0)
            text.insert(below(static_cast<unsigned>(text.size()) + 1), ".");
        if (below(2) != 0)
            text += "e" + std::to_string(static_cast<int>(below(64)) - 32);
        if (below(4) == 0)
            text.insert(0, "-");
        expect_read_as_strtod_reads(text);
    }
}

// In 64 bits they would be 15, or 155.
TEST(LocalStrtodQuick, DigitsThatWrapReadAsStrtodReads) {
    for (char const* const text : {"18446744073709551631", "1.8446744073709551631",
                                   ".18446744073709551631", "18446744073709551631.5"})
        expect_read_as_strtod_reads(text);
}

TEST(LocalStrtodQuick, EveryByteInFrontOfANumberReadsAsStrtodReads) {
    for (int byte = 1; byte < 256; ++byte)
        expect_read_as_strtod_reads(std::string(1, static_cast<char>(byte)) + "1.5");
}

TEST(LocalStrtodQuick, RandomTextsReadAsStrtodReads) {
    constexpr std::string_view alphabet =
        "0123456789012345678900000....eeEE+--  \tx,infaNp(\x80\xA0";
    std::mt19937_64 random(99);
    auto const below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
    std::string text;
    for (std::size_t i = 0; i < effort(1'000'000); ++i) {
        text.clear();
        for (unsigned left = below(24); left > 0; --left)
            text += alphabet[below(alphabet.size())];
        expect_read_as_strtod_reads(text);
    }
}

namespace {

/// False on a processor that is only played, and rounds to the nearest whatever it is set to.
bool divisions_follow_the_rounding_mode() {
    double volatile const three = 3;
    std::fesetround(FE_UPWARD);
    double volatile const above = 1 / three;
    std::fesetround(FE_DOWNWARD);
    double volatile const below = 1 / three;
    std::fesetround(FE_TONEAREST);
    return above != below;
}

} // namespace

TEST(LocalStrtodQuick, OtherRoundingModesReadAsStrtodReads) {
    if (!divisions_follow_the_rounding_mode())
        GTEST_SKIP() << "valgrind's processor only rounds to the nearest";
    std::mt19937_64 random(5);
    for (int const mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO, FE_TONEAREST}) {
        ASSERT_EQ(std::fesetround(mode), 0);
        for (std::size_t i = 0; i < effort(10'000); ++i)
            expect_read_as_strtod_reads(std::to_string(random() >> 4) + "e-" +
                                        std::to_string(random() % 28));
    }
    std::fesetround(FE_TONEAREST);
}
