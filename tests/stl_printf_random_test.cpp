// stl_sprintf against the printf of the C library, on random formats and arguments.

#include "effort.h"
#include "low_text.h"
#include "stl_printf_fixture.h"
#include "test_locale.h"

#include <algorithm>
#include <bit>
#include <cctype>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace {

class RandomFormats {
  public:
    unsigned below(unsigned bound) {
        return std::uniform_int_distribution<unsigned>(0, bound - 1)(m_engine);
    }
    bool one_in(unsigned count) { return below(count) == 0; }
    std::uint64_t bits() { return m_engine(); }

    std::string literal() {
        static char const* const some[] = {"", "", " ", "%%", "a", ": ", " and something longer, "};
        return some[below(std::size(some))];
    }

    // Up to the length modifier.
    std::string front(bool stars) {
        std::string text = "%";
        while (one_in(3))
            text += "-+ #0'I"[below(7)];
        text += extent(stars);
        if (one_in(3))
            text += "." + extent(stars);
        return text;
    }

    template <std::size_t Count>
    char const* pick(char const* const (&some)[Count]) {
        return some[below(Count)];
    }

    // Whole numbers of every size, the borders of the types among them.
    template <typename T>
    T integer() {
        static std::uint64_t const borders[] = {
            0,   1,    9,     10,    99,    100,       127,        128,       255,
            256, 9999, 32767, 32768, 65535, INT32_MAX, 0x80000000, UINT32_MAX};
        std::uint64_t value = one_in(3) ? borders[below(std::size(borders))] : bits() >> below(64);
        if (one_in(3))
            value = 0 - value;
        return static_cast<T>(value);
    }

    double floating() {
        switch (below(8)) {
        case 0:
            return std::bit_cast<double>(bits());
        case 1: { // near or at a tie
            double const value =
                static_cast<double>(below(100000)) / static_cast<double>(1U << below(12));
            return one_in(2) ? value : std::nextafter(value, one_in(2) ? 0 : 1e300);
        }
        case 2:
            return static_cast<double>(below(2000000)) / 1000 - 1000;
        case 3: {
            constexpr double infinity = std::numeric_limits<double>::infinity();
            static double const some[] = {
                0.0,  -0.0, infinity, -infinity, std::nan(""), 5e-324, 1e9,   999999999.9999999,
                -0.5, 0.5,  1.5,      2.5,       1e15,         1e22,   1e308, 0.0005};
            return some[below(std::size(some))];
        }
        case 4:
            return static_cast<double>(bits() >> below(64));
        default:
            return std::ldexp(static_cast<double>(bits() >> 11), -static_cast<int>(below(80)));
        }
    }

  private:
    std::string extent(bool stars) {
        if (stars && one_in(6))
            return "*";
        switch (below(12)) {
        case 0:
            return std::to_string(below(100));
        case 1:
            return std::to_string(below(1200));
        case 2:
        case 3:
        case 4:
        case 5:
            return std::to_string(below(20));
        default:
            return "";
        }
    }

    std::mt19937_64 m_engine{20240229};
};

// Compares one conversion in a little literal string, with up to two stars in it.
template <typename T>
void compare_one(RandomFormats& random, std::string const& front, std::string const& rest,
                 T value) {
    std::string const format = random.literal() + front + rest + random.literal();
    auto const extent = [&] { return static_cast<int>(random.below(30)) - 8; };
    switch (std::count(front.begin(), front.end(), '*')) {
    case 0:
        ASSERT_EQ(ours(format.c_str(), value), plain(format.c_str(), value)) << format;
        break;
    case 1: {
        int const first = extent();
        ASSERT_EQ(ours(format.c_str(), first, value), plain(format.c_str(), first, value))
            << format << ", " << first;
        break;
    }
    default: {
        int const first = extent();
        int const second = extent();
        ASSERT_EQ(ours(format.c_str(), first, second, value),
                  plain(format.c_str(), first, second, value))
            << format << ", " << first << ", " << second;
    }
    }
}

template <typename T>
void compare_integers(RandomFormats& random, std::initializer_list<char const*> modifiers) {
    static char const* const letters[] = {"d", "i", "u", "o", "x", "X", "b", "B"};
    std::string const modifier =
        modifiers.begin()[random.below(static_cast<unsigned>(modifiers.size()))];
    compare_one(random, random.front(true), modifier + random.pick(letters), random.integer<T>());
}

} // namespace
TEST(StlPrintf, IntegersAsPrintf) {
    RandomFormats random;
    for (std::size_t round = effort(30'000); round != 0; --round) {
        compare_integers<int>(random, {"", "", "", "h", "hh"});
        compare_integers<long>(random, {"l", "l"});
        compare_integers<long long>(random, {"ll", "q", "L"});
        compare_integers<std::intmax_t>(random, {"j"});
        compare_integers<std::size_t>(random, {"z", "Z"});
        compare_integers<std::ptrdiff_t>(random, {"t"});
        if (HasFatalFailure())
            return;
    }
}

TEST(StlPrintf, FloatingNumbersAsPrintf) {
    RandomFormats random;
    static char const* const letters[] = {"f", "f", "f", "F", "e", "E", "g", "G", "a", "A", "lf"};
    static char const* const long_letters[] = {"Lf", "Le", "Lg", "La", "LG", "llf"};
    for (std::size_t round = effort(60'000); round != 0; --round) {
        compare_one(random, random.front(true), random.pick(letters), random.floating());
        if (random.one_in(8))
            compare_one(random, random.front(true), random.pick(long_letters),
                        static_cast<long double>(random.floating()) / 3);
        if (HasFatalFailure())
            return;
    }
}

namespace {

// The conversions with few places are routines of their own, so they get values of their own.
constexpr char const* few_places[] = {"%f",   "%.0f", "%.1f", "%.2f",   "%.3f",   "%.4f",  "%.5f",
                                      "%.6f", "%.7f", "%.8f", "%09.3f", "%-9.1f", "%.10f", "%+.9f"};
constexpr char const* significant_places[] = {"%e",    "%g",    "%E",    "%G",    "%.0e",  "%.0g",
                                              "%.1g",  "%.2e",  "%.3g",  "%.15g", "%.16e", "%.17g",
                                              "%.17e", "%.18g", "%012g", "%-9e",  "%+.9g", "% .4G"};

template <std::size_t Count>
void compare_doubles(char const* const (&formats)[Count], std::size_t rounds) {
    RandomFormats random;
    STR text;
    char expected[400];
    for (std::size_t round = effort(rounds); round != 0; --round) {
        char const* const format = random.pick(formats);
        double const value = random.floating();
        int const length = stl_sprintf(&text, format, value);
        ASSERT_EQ(length, std::snprintf(expected, sizeof expected, format, value));
        ASSERT_STREQ(text.c_str(), expected) << format << ' ' << std::hexfloat << value;
    }
}

} // namespace

TEST(StlPrintf, FewPlacesRoundAsPrintf) {
    compare_doubles(few_places, 300'000);
}

TEST(StlPrintf, FewPlacesBehindTheCommaOfTheLocaleAsPrintf) {
    TestLocale const locale;
    if (!locale.trouble().empty())
        GTEST_SKIP() << locale.trouble();
    std::setlocale(LC_ALL, TestLocale::name);
    ASSERT_EQ(ours("%.2f", 1234.5), (Printed{7, "1234,50"}));
    compare_doubles(few_places, 100'000);
}

TEST(StlPrintf, SignificantPlacesAsPrintf) {
    compare_doubles(significant_places, 300'000);
}

TEST(StlPrintf, SignificantPlacesAroundTheCommaOfTheLocaleAsPrintf) {
    TestLocale const locale;
    if (!locale.trouble().empty())
        GTEST_SKIP() << locale.trouble();
    std::setlocale(LC_ALL, TestLocale::name);
    ASSERT_EQ(ours("%g", 1.5), (Printed{3, "1,5"}));
    compare_doubles(significant_places, 50'000);
}

TEST(StlPrintf, TextAndPointersAsPrintf) {
    RandomFormats random;
    std::string const long_text(3000, 'y');
    char const* const texts[] = {"", "x", "some words", nullptr, long_text.c_str()};
    wchar_t const* const wide_texts[] = {L"", L"wide words", nullptr};
    static char const* const characters[] = {"c", "hc", "lc", "C"};
    int const letters[] = {'a', '\0', 255, 'Z', 256 + '7'};
    for (std::size_t round = effort(20'000); round != 0; --round) {
        compare_one(random, random.front(true), "s", random.pick(texts));
        compare_one(random, random.front(true), random.one_in(2) ? "ls" : "S",
                    wide_texts[random.below(3)]);
        // The C library itself rejects what a wide character cannot be.
        compare_one(random, random.front(true), random.pick(characters),
                    letters[random.below(std::size(letters))]);
        compare_one(random, random.front(true), "p",
                    reinterpret_cast<void*>(random.integer<std::uintptr_t>()));
        if (HasFatalFailure())
            return;
    }
}

TEST(StlPrintf, ManyConversionsAsPrintf) {
    RandomFormats random;
    for (std::size_t round = effort(20'000); round != 0; --round) {
        std::string format;
        for (char const* const rest : {"d", "s", "lld", "f", "ld", "Lg", "c", "hhx", "s", "zu"})
            format += random.literal() + random.front(false) + rest;
        auto const both = [&](auto... values) {
            ASSERT_EQ(ours(format.c_str(), values...), plain(format.c_str(), values...)) << format;
        };
        both(random.integer<int>(), "one", random.integer<long long>(), random.floating(),
             random.integer<long>(), static_cast<long double>(random.floating()), 'c',
             random.integer<int>(), "two", random.integer<std::size_t>());
        if (HasFatalFailure())
            return;
    }
}

namespace {

// More arguments than any of the formats takes: in every register, and on the stack.
#define MANY(p) p, p, p, p, p, p, p, p, p, p
#if defined(__i386__)
#define ARGUMENTS(p) MANY(p), MANY(p), MANY(p), MANY(p)
#else
#define ARGUMENTS(p) 0.5, 1.5, 2.5, 3.5, 4.5, 5.5, 6.5, 7.5, MANY(p), MANY(p), MANY(p), MANY(p)
#endif

// Characters of conversions in any order. No number has more than one digit before a "$".
std::string random_characters(RandomFormats& random) {
    static char const characters[] = "%%%%%%ddsnnxcfgpm**..$$1290+- #'Ihhlljztyw!";
    std::string format;
    for (unsigned left = 1 + random.below(12); left != 0; --left) {
        char const next = characters[random.below(sizeof characters - 1)];
        bool const long_place = next == '$' && format.size() > 1 && std::isdigit(format.back()) &&
                                std::isdigit(format[format.size() - 2]);
        if (!long_place)
            format += next;
    }
    return format;
}

} // namespace

TEST(StlPrintf, RandomCharactersAsPrintfAndNothingIsWritten) {
    SKIP_UNDER_SANITIZER();
    LowText const low;
    if (low.text() == nullptr)
        GTEST_SKIP() << "no page at a low address";
    RandomFormats random;
    for (std::size_t round = effort(50'000); round != 0; --round) {
        std::string const format = random_characters(random);
        Printed const text = ours(format.c_str(), ARGUMENTS(low.text()));
        ASSERT_TRUE(low.is_untouched()) << format;
        if (format.find('n') == std::string::npos) {
            ASSERT_EQ(text, plain(format.c_str(), ARGUMENTS(low.text()))) << format;
        }
    }
}
