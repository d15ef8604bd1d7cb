#include "gen_string_checksum.h"

#include "effort.h"
#include "error_recorder.h"
#include "guarded_text.h"
#include "plain_string_checksum.h"

#include <climits>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace {

std::string sanitised(std::string name) {
    gen_replace_invalid_chars(name.data());
    return name.c_str();
}

/// Any bytes but NULs.
std::string random_text(std::mt19937& random, std::size_t size) {
    std::string text(size, '\0');
    for (char& character : text)
        character = static_cast<char>(1 + random() % 255);
    return text;
}

bool is_prime(std::uint32_t number) {
    for (std::uint64_t divisor = 2; divisor * divisor <= number; ++divisor)
        if (number % divisor == 0)
            return false;
    return true;
}

} // namespace

TEST(ReplaceInvalidChars, Table) {
    EXPECT_EQ(sanitised(""), "");
    EXPECT_EQ(sanitised("   "), "");
    EXPECT_EQ(sanitised("a b.v  "), "a_bLv");
    EXPECT_EQ(sanitised("  lead"), "__lead");
    EXPECT_EQ(sanitised("tab\t "), "tab\t");
    EXPECT_EQ(sanitised("clean_Name09"), "clean_Name09");
}

TEST(ReplaceInvalidChars, EveryByte) {
    std::string const kept = "\"*,:;@^`{}~_azAZ09\x01\t\n\x7F\x80\xFF";
    EXPECT_EQ(sanitised(kept), kept);
    EXPECT_EQ(sanitised(" !#$%&'()+-./<=>?[\\]|"), "_EFRCKTQPMJLIADBGOHNS");
    for (int byte = 1; byte < 256; ++byte) {
        std::string const name = {'x', static_cast<char>(byte), 'x'};
        EXPECT_EQ(sanitised(name), plain_sanitised(name)) << byte;
    }
}

TEST(ReplaceInvalidChars, NullIsLeftAlone) {
    gen_replace_invalid_chars(nullptr);
}

TEST(ReplaceInvalidChars, EmptyNameIsNotWrittenTo) {
    char* const constant = const_cast<char*>("");
    gen_replace_invalid_chars(constant);
    EXPECT_EQ(gen_crc_string_to_dword(constant), 0);
}

TEST(ReplaceInvalidChars, NothingBehindTheTerminatorChanges) {
    char name[] = "a  \0 b";
    gen_replace_invalid_chars(name);
    EXPECT_EQ(std::string(name, 6), std::string("a\0 \0 b", 6));
}

TEST(ReplaceInvalidChars, SameNamesAsOneByOne) {
    std::mt19937 random(2);
    for (std::size_t round = effort(50'000); round != 0; --round) {
        std::string name = random_text(random, random() % 60);
        name.append(random() % 4, ' ');
        ASSERT_EQ(sanitised(name), plain_sanitised(name));
    }
}

TEST(Crc, Table) {
    EXPECT_EQ(gen_crc_generator(""), 0);
    EXPECT_EQ(gen_crc_generator(nullptr), 0);
    EXPECT_EQ(gen_crc_generator("a"), 0x38313A08);
    EXPECT_EQ(gen_crc_generator("a"), 942750216);
    EXPECT_EQ(gen_crc_generator("abc"), 0x2F8DB6B8);
    EXPECT_EQ(gen_crc_generator("abc"), 797816504);
}

TEST(Crc, EveryLengthAtEveryAlignmentAgainstBitByBit) {
    std::mt19937 random(1);
    GuardedText pages(2);
    std::string const text = random_text(random, 1300);
    for (std::size_t size = 0; size < text.size(); size += size < 300 ? 1 : 37) {
        std::string const part = text.substr(0, size);
        int const expected = plain_crc(part);
        for (std::size_t gap = 0; gap < 40; gap += size < 300 ? 1 : 7)
            ASSERT_EQ(gen_crc_generator(pages.before_end(part, gap)), expected) << size;
        ASSERT_EQ(gen_crc_generator(pages.at_start(part)), expected) << size;
    }
}

TEST(Crc, TextsLongerThanThePiecesTheyAreReadIn) {
    std::mt19937 random(3);
    for (std::size_t const size : {16'383U, 16'384U, 16'385U, 16'400U, 32'768U, 32'800U, 50'001U}) {
        std::string const text = random_text(random, size);
        EXPECT_EQ(gen_crc_generator(text.c_str()), plain_crc(text)) << size;
    }
}

TEST(Crc, StringInPieces) {
    std::mt19937 random(6);
    GEN_CHECKSUM nothing;
    nothing.add(nullptr, 0);
    EXPECT_EQ(nothing.checksum(), 0);
    for (std::size_t round = effort(2000); round != 0; --round) {
        std::string const text = random_text(random, random() % 300);
        GEN_CHECKSUM sum;
        for (std::size_t at = 0; at < text.size();) {
            std::size_t const size = random() % (text.size() - at + 1);
            sum.add(text.data() + at, size);
            at += size;
        }
        ASSERT_EQ(sum.checksum(), gen_crc_generator(text.c_str()));
    }
    GEN_CHECKSUM with_nul;
    with_nul.add("a\0b", 3);
    EXPECT_EQ(with_nul.checksum(), plain_crc(std::string("a\0b", 3)));
}

TEST(Crc, TextOfAMegabyte) {
    std::mt19937 random(5);
    std::string const text = random_text(random, 1'000'001);
    EXPECT_EQ(gen_crc_generator(text.c_str()), plain_crc(text));
}

TEST(Crc, SameChecksumsAsBitByBit) {
    std::mt19937 random(4);
    for (std::size_t round = effort(100'000); round != 0; --round) {
        std::string const text = random_text(random, random() % 100);
        ASSERT_EQ(gen_crc_generator(text.c_str()), plain_crc(text));
    }
}

TEST(CrcStringToDword, SanitisesInPlaceAndSumsThat) {
    char name[] = "a b.v  ";
    EXPECT_EQ(gen_crc_string_to_dword(name), gen_crc_generator("a_bLv"));
    EXPECT_STREQ(name, "a_bLv");
    char clean[] = "clean_Name09";
    EXPECT_EQ(gen_crc_string_to_dword(clean), gen_crc_generator("clean_Name09"));
    char spaces[] = "   ";
    EXPECT_EQ(gen_crc_string_to_dword(spaces), 0);
    EXPECT_EQ(gen_crc_string_to_dword(nullptr), 0);
}

TEST(HashSizePrimes, EntriesAreTheLargestPrimesBelowPowersOfTwo) {
    ASSERT_EQ(std::size(gen_hash_size_primes), 32U);
    for (unsigned k = 0; k < 32; ++k) {
        std::uint64_t candidate = std::uint64_t{1} << (k + 1);
        while (candidate > UINT32_MAX || !is_prime(static_cast<std::uint32_t>(candidate)))
            --candidate;
        EXPECT_EQ(gen_hash_size_primes[k], candidate) << k;
    }
}

TEST(HashNextSize, Table) {
    ErrorRecorder const recorder;
    EXPECT_EQ(gen_hash_next_size(0), 13U);
    EXPECT_EQ(gen_hash_next_size(13), 13U);
    EXPECT_EQ(gen_hash_next_size(14), 31U);
    EXPECT_EQ(gen_hash_next_size(4294967291), 4294967291);
    EXPECT_TRUE(recorder.errors().empty());
}

TEST(HashNextSize, LeastEntryNotBelowAroundEveryPowerAndPrime) {
    auto const scanned = [](std::uint64_t n) {
        unsigned k = 3;
        while (gen_hash_size_primes[k] < n)
            ++k;
        return gen_hash_size_primes[k];
    };
    for (std::uint32_t const prime : gen_hash_size_primes)
        for (std::uint64_t n = prime - 2; n <= std::uint64_t{prime} + 8 && n <= 4294967291; ++n)
            EXPECT_EQ(gen_hash_next_size(static_cast<unsigned>(n)), scanned(n)) << n;
    for (unsigned n = 0; n < 10'000; ++n)
        EXPECT_EQ(gen_hash_next_size(n), scanned(n)) << n;
}

TEST(HashNextSize, NothingFitsAboveTheLastPrime) {
    for (unsigned const n : {4294967292U, 4294967295U}) {
        ErrorRecorder const recorder;
        EXPECT_EQ(gen_hash_next_size(n), 0U);
        EXPECT_EQ(recorder.errors(),
                  (std::vector<ReportedError>{{"rval != 0", "GEN", "gen_string", 2837}}));
    }
}

TEST(Rand, SequenceOfStateZero) {
    GEN_RAND random(0);
    EXPECT_EQ(random.get_rand(), 38);
    EXPECT_EQ(random.get_rand(), 7719);
    EXPECT_EQ(random.get_rand(), 21238);
}

TEST(Rand, EqualSeedsGiveEqualSequencesWithinRange) {
    GEN_RAND first(12345);
    GEN_RAND second(12345);
    std::uint32_t state = 12345;
    for (int i = 0; i < 10'000; ++i) {
        state = state * 214013 + 2531011;
        int const number = first.get_rand();
        ASSERT_EQ(number, static_cast<int>(state >> 16 & 0x7FFF));
        ASSERT_EQ(number, second.get_rand());
        ASSERT_TRUE(number >= 0 && number <= 32767);
    }
}

TEST(Rand, SeedIsOneUnlessGiven) {
    GEN_RAND unseeded;
    GEN_RAND seeded(1);
    EXPECT_EQ(unseeded.get_rand(), seeded.get_rand());
}
