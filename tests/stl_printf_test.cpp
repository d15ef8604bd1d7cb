#include "stl.h"

#include "effort.h"
#include "low_text.h"
#include "sanitizer.h"
#include "test_locale.h"

#include <cerrno>
#include <cfenv>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <sys/mman.h>
#include <unistd.h>

namespace {

// A text with its length as the function told it.
struct Printed {
    int length;
    std::string text;

    bool operator==(Printed const&) const = default;
};

std::ostream& operator<<(std::ostream& stream, Printed const& printed) {
    return stream << printed.length << " \"" << printed.text << '"';
}

template <typename... ARGUMENTS>
Printed ours(char const* format, ARGUMENTS... arguments) {
    STR text("what was there before");
    int const length = stl_sprintf(&text, format, arguments...);
    return {length, std::string(text.begin(), text.end())};
}

// What the C library makes of it.
template <typename... ARGUMENTS>
Printed plain(char const* format, ARGUMENTS... arguments) {
    int const length = std::snprintf(nullptr, 0, format, arguments...);
    if (length < 0)
        return {-1, ""};
    std::string text(static_cast<std::size_t>(length) + 1, '?');
    std::snprintf(text.data(), text.size(), format, arguments...);
    text.pop_back();
    return {length, text};
}

#define EXPECT_AS_PRINTF(...) EXPECT_EQ(ours(__VA_ARGS__), plain(__VA_ARGS__))

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

    template <std::size_t COUNT>
    char const* pick(char const* const (&some)[COUNT]) {
        return some[below(COUNT)];
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

// Compares one conversion in a little literal text, with up to two stars in it.
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

// The conversion with a few places is a routine of its own, so it gets values of its own.
TEST(StlPrintf, FewPlacesRoundAsPrintf) {
    RandomFormats random;
    static char const* const formats[] = {"%f",   "%.0f", "%.1f", "%.2f", "%.3f", "%.4f",
                                          "%.5f", "%.6f", "%.7f", "%.8f", "%.9f", "%.10f"};
    STR text;
    char expected[400];
    for (std::size_t round = effort(300'000); round != 0; --round) {
        char const* const format = random.pick(formats);
        double const value = random.floating();
        int const length = stl_sprintf(&text, format, value);
        ASSERT_EQ(length, std::snprintf(expected, sizeof expected, format, value));
        ASSERT_STREQ(text.c_str(), expected) << format << ' ' << std::hexfloat << value;
    }
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

TEST(StlPrintf, PositionalFormatsAsPrintf) {
    EXPECT_AS_PRINTF("%2$s %1$s", "x", "y");
    EXPECT_AS_PRINTF("%2$*1$d|%3$.*1$f", 5, 42, 2.71828);
    EXPECT_AS_PRINTF("%1$d %1$x %1$d", 255);
    EXPECT_AS_PRINTF("%1$.3s<%2$-8ld>%3$Lg", "abcdef", 99L, 1.5L);
    std::string const long_text(2000, 'z');
    EXPECT_AS_PRINTF("%2$d %1$s", long_text.c_str(), 7);
}

// The sanitizer reads formats with a parser of its own, which stops the process at a malformed one
// and takes a precision of 0 for none.
#define SKIP_UNDER_SANITIZER()                                                                     \
    if (address_sanitizer)                                                                         \
    GTEST_SKIP() << "the sanitizer rejects malformed formats itself"

TEST(StlPrintf, IncompleteConversionIsAnErrorAsInPrintf) {
    SKIP_UNDER_SANITIZER();
    for (char const* const format : {"%", "text%", "%d%", "%5", "%l", "%-", "%.", "%5.2ll"}) {
        errno = 0;
        EXPECT_EQ(ours(format, 7), (Printed{-1, ""})) << format;
        EXPECT_EQ(errno, EINVAL);
        EXPECT_AS_PRINTF(format, 7);
    }
}

TEST(StlPrintf, MalformedFormatsAsPrintf) {
    SKIP_UNDER_SANITIZER();
    for (char const* const format :
         {"%",         "text%", "%5",        "%l",    "%-",    "%.",          "%y",
          "%k and %d", "%5.3y", "%0$d",      "%-$d",  "%hhhd", "%..2d",       "%5*d",
          "%*5d",      "%I64d", "%#-+ 0'Id", "%llld", "%lp",   "%5%|%-%|%l%", "%!"})
        EXPECT_AS_PRINTF(format, 7, 8, 9, 10);
    // Modifiers that mean nothing to their letter.
    EXPECT_AS_PRINTF("%hs|%Ls|%hhc|%d", "first", "second", 'c', 4);
    EXPECT_AS_PRINTF("%hf %zf %hhe", 1.5, 2.5, 3.5);
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

TEST(StlPrintf, ExtentsPastTheRangeOfIntAreAnErrorAsInPrintf) {
    EXPECT_EQ(ours("%d%2147483648d", 1, 2), (Printed{-1, ""}));
    EXPECT_EQ(ours("%.2147483648d", 1), (Printed{-1, ""}));
    EXPECT_EQ(ours("%*d", INT_MIN, 1), (Printed{-1, ""}));
}

namespace {

// A text of more than INT_MAX bytes that takes little memory: the same pages again and again.
class HugeText {
  public:
    HugeText() {
        std::string const piece(piece_size, 'x');
        int const file = memfd_create("text", MFD_CLOEXEC);
        if (write(file, piece.data(), piece.size()) == static_cast<ssize_t>(piece.size()))
            m_text = mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        for (std::size_t at = 0; m_text != MAP_FAILED && at < size - piece_size; at += piece_size)
            if (mmap(static_cast<char*>(m_text) + at, piece_size, PROT_READ, MAP_SHARED | MAP_FIXED,
                     file, 0) == MAP_FAILED)
                std::abort();
        close(file);
    }
    ~HugeText() {
        if (m_text != MAP_FAILED)
            munmap(m_text, size);
    }
    HugeText(HugeText const&) = delete;
    HugeText& operator=(HugeText const&) = delete;

    // Null where the address space has no room for it.
    char const* text() const {
        return m_text != MAP_FAILED ? static_cast<char const*>(m_text) : nullptr;
    }

  private:
    static constexpr std::size_t piece_size = 16 * 1024 * 1024;
    static constexpr std::size_t size = 130 * piece_size;
    void* m_text = MAP_FAILED;
};

} // namespace

TEST(StlPrintf, TextPastTheRangeOfIntIsAnErrorAsInPrintf) {
    HugeText const huge;
    if (huge.text() == nullptr)
        GTEST_SKIP() << "no address space for a text of 2 GiB";
    errno = 0;
    EXPECT_EQ(ours("<%s>", huge.text()), (Printed{-1, ""}));
    EXPECT_EQ(errno, EOVERFLOW);
}

TEST(StlPrintf, WideCharactersNeedTheLocale) {
    EXPECT_EQ(ours("<%ls>", L"\u00e9"), (Printed{-1, ""}));
    EXPECT_EQ(ours("<%lc>", 0xE9), (Printed{-1, ""}));
    std::string const previous = std::setlocale(LC_CTYPE, nullptr);
    ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
    EXPECT_AS_PRINTF("<%ls> <%5lc> <%.3S>", L"\u00e9t\u00e9", 0xE9, L"\u00e9\u00e9\u00e9");
    std::setlocale(LC_CTYPE, previous.c_str());
}

TEST(StlPrintf, DecimalCommaAndGroupingOfTheLocale) {
    TestLocale const locale;
    ASSERT_EQ(locale.trouble(), "");
    std::setlocale(LC_ALL, TestLocale::name);
    EXPECT_EQ(ours("%.2f", 1234.5), (Printed{7, "1234,50"}));
    EXPECT_EQ(ours("%'d", 1234567), (Printed{9, "1.234.567"}));
    EXPECT_AS_PRINTF("%f %e %g %'12.1f %a", 0.5, 0.5, 0.5, 1e7, 0.75);
}

TEST(StlPrintf, RoundingModeOfTheHostIsPrintfs) {
    int const previous = std::fegetround();
    for (int const mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO, FE_TONEAREST}) {
        std::fesetround(mode);
        Printed const text = ours("%.1f %.1f %.0f %.2f", 0.25, -0.25, 2.5, 0.125);
        Printed const expected = plain("%.1f %.1f %.0f %.2f", 0.25, -0.25, 2.5, 0.125);
        std::fesetround(previous);
        EXPECT_EQ(text, expected) << "mode " << mode;
    }
}

TEST(StlPrintf, ErrnoTextIsThatOfTheCall) {
    errno = ENOENT;
    EXPECT_EQ(ours("%s: %m (%8.4m|%-8.4m)", "file").text,
              "file: No such file or directory (    No s|No s    )");
}

namespace {

struct WriteCase {
    char const* format; // of an int, a pointer and 77
    char const* text;
};

void expect_nothing_written(WriteCase const& row) {
    long long untouched = -1;
    EXPECT_EQ(ours(row.format, 5, &untouched, 77).text, row.text) << row.format;
    EXPECT_EQ(untouched, -1) << row.format;
    EXPECT_EQ(ours(row.format, 5, nullptr, 77).text, row.text) << row.format;
}

} // namespace

TEST(StlPrintf, WriteConversionOnlyStepsOverItsPointer) {
    static constexpr WriteCase cases[] = {
        {"%d%n,%d", "5,77"},      {"%d%hhn,%d", "5,77"}, {"%d%lln,%d", "5,77"},
        {"%d%-8.3ln,%d", "5,77"}, {"%*n,%d", ",77"},     {"%.*n,%d", ",77"},
    };
    for (WriteCase const& row : cases)
        expect_nothing_written(row);
}

TEST(StlPrintf, WriteConversionOnlyStepsOverItsPointerWherePrintfJudges) {
    SKIP_UNDER_SANITIZER();
    static constexpr WriteCase cases[] = {
        {"%1$d%2$n,%3$d", "5,77"}, {"%3$d,%2$hhn%1$d", "77,5"}, {"%1$d%2$*1$n,%3$d", "5,77"},
        {"%d%n,%d%y", "5,77%y"},   {"%d%5.3n,%d%y", "5,77%y"},  {"%*n,%d%y", ",77%y"},
        {"%.*hn,%d%y", ",77%y"},
    };
    for (WriteCase const& row : cases)
        expect_nothing_written(row);
}

// A modifier that the C library may or may not know already must not open a way to write.
TEST(StlPrintf, SizedWriteConversionWritesNothing) {
    SKIP_UNDER_SANITIZER();
    for (char const* const format : {"%w8n", "%w64n", "%wf32n", "%1$w32n"}) {
        long long untouched = -1;
        EXPECT_EQ(ours(format, &untouched).text, "") << format;
        EXPECT_EQ(untouched, -1) << format;
    }
}

TEST(StlPrintf, NullArgumentsPrintNothing) {
    struct Case {
        char const* format;
        char const* text;
    };
    static constexpr Case cases[] = {
        {"", ""},
        {"plain", "plain"},
        {"100%% of %s", "100% of "},
        {"%5.2f|%*d|", "||"},
        {"%2$s %1$s.", " ."},
        {"%n%y<%c>", "<>"},
        {"%m", ""},
    };
    for (Case const& row : cases) {
        STR text("before");
        EXPECT_EQ(stl_vsprintf(&text, row.format, nullptr),
                  static_cast<int>(std::strlen(row.text)));
        EXPECT_EQ(text, row.text);
    }
}

TEST(StlPrintf, NullFormatIsEmptyAndNullResultAnError) {
    STR text("before");
    EXPECT_EQ(stl_vsprintf(&text, nullptr, nullptr), 0);
    EXPECT_EQ(text, "");
    EXPECT_EQ(stl_vsprintf(nullptr, "text", nullptr), -1);
}

TEST(StlPrintf, TextsOfEverySizeArriveWhole) {
    // Around the sizes at which the text moves to a larger block.
    std::string const long_text(5000, 'x');
    for (int size = 0; size < 2100; ++size) {
        STR text;
        ASSERT_EQ(stl_sprintf(&text, "%.*s%d%.*s", size, long_text.c_str(), 12, size / 3,
                              long_text.c_str()),
                  size + 2 + size / 3);
        std::string const expected = std::string(static_cast<std::size_t>(size), 'x') + "12" +
                                     std::string(static_cast<std::size_t>(size / 3), 'x');
        ASSERT_EQ(std::string(text.begin(), text.end()), expected);
        std::string const literal = long_text.substr(0, static_cast<std::size_t>(size)) + "%%";
        ASSERT_EQ(stl_sprintf(&text, literal.c_str(), 0), size + 1);
    }
    std::string const megabytes(3'000'000, 'm');
    EXPECT_AS_PRINTF("<%s|%1000s|%-2000d|%c>", megabytes.c_str(), "r", 5, 'c');
}

TEST(StlPrintf, ArgumentsMayPointIntoTheResult) {
    STR text("abcdef");
    stl_sprintf(&text, "<%s-%s>", text.c_str() + 1, text.c_str() + 3);
    EXPECT_EQ(text, "<bcdef-def>");
    text.assign(1000, 'x');
    stl_sprintf(&text, "%s%s", text.c_str(), text.c_str());
    EXPECT_EQ(text, STR(2000, 'x'));
}

namespace {

std::string twice(char const* format, ...) {
    va_list args;
    va_start(args, format);
    STR first;
    STR second;
    stl_vsprintf(&first, format, STL_ARGS(args));
    stl_vsprintf(&second, format, STL_ARGS(args));
    va_end(args);
    EXPECT_EQ(first, second);
    return std::string(second.begin(), second.end());
}

} // namespace

TEST(StlPrintf, CallersListIsNotConsumed) {
    EXPECT_EQ(twice("%d %s %.1f %d %d %d %d %d %d", 1, "two", 3.0, 4, 5, 6, 7, 8, 9),
              "1 two 3.0 4 5 6 7 8 9");
}
