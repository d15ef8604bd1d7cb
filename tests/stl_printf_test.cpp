#include "huge_text.h"
#include "stl_printf_fixture.h"
#include "test_locale.h"

#include <cerrno>
#include <cfenv>
#include <climits>
#include <clocale>
#include <cstring>

TEST(StlPrintf, PositionalFormatsAsPrintf) {
    EXPECT_AS_PRINTF("%2$s %1$s", "x", "y");
    EXPECT_AS_PRINTF("%2$*1$d|%3$.*1$f", 5, 42, 2.71828);
    EXPECT_AS_PRINTF("%1$d %1$x %1$d", 255);
    EXPECT_AS_PRINTF("%1$.3s<%2$-8ld>%3$Lg", "abcdef", 99L, 1.5L);
    std::string const long_text(2000, 'z');
    EXPECT_AS_PRINTF("%2$d %1$s", long_text.c_str(), 7);
}

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

TEST(StlPrintf, ExtentsPastTheRangeOfIntAreAnErrorAsInPrintf) {
    EXPECT_EQ(ours("%d%2147483648d", 1, 2), (Printed{-1, ""}));
    EXPECT_EQ(ours("%.2147483648d", 1), (Printed{-1, ""}));
    EXPECT_EQ(ours("%2147483648f", 1.5), (Printed{-1, ""}));
}

TEST(StlPrintf, TextPastTheRangeOfIntIsAnErrorAsInPrintf) {
    HugeText const huge;
    if (huge.text() == nullptr)
        GTEST_SKIP() << "no room for a text of 2 GiB";
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
    if (!locale.trouble().empty())
        GTEST_SKIP() << locale.trouble();
    std::setlocale(LC_ALL, TestLocale::name);
    EXPECT_EQ(ours("%.2f", 1234.5), (Printed{7, "1234,50"}));
    EXPECT_EQ(ours("%'d", 1234567), (Printed{9, "1.234.567"}));
    EXPECT_AS_PRINTF("%f %e %g %'12.1f %a", 0.5, 0.5, 0.5, 1e7, 0.75);
}

TEST(StlPrintf, DecimalPointOfTwoBytes) {
    TestLocale const locale(TestLocale::wide_point);
    if (!locale.trouble().empty())
        GTEST_SKIP() << locale.trouble();
    std::setlocale(LC_NUMERIC, TestLocale::wide_point);
    EXPECT_EQ(ours("%.2f", 1234.5), (Printed{8, "1234\u066B50"}));
    EXPECT_AS_PRINTF("%f %e %g %.0f %g", 0.5, 0.5, 0.5, 2.5, 7.0);
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
        {"%d%n,%d", "5,77"},
        {"%d%hhn,%d", "5,77"},
        {"%d%lln,%d", "5,77"},
        {"%d%-8.3ln,%d", "5,77"},
    };
    for (WriteCase const& row : cases)
        expect_nothing_written(row);
}

TEST(StlPrintf, WriteConversionOnlyStepsOverItsPointerWherePrintfJudges) {
    SKIP_UNDER_SANITIZER();
    static constexpr WriteCase cases[] = {
        {"%1$d%2$n,%3$d", "5,77"}, {"%3$d,%2$hhn%1$d", "77,5"}, {"%1$d%2$*1$n,%3$d", "5,77"},
        {"%d%n,%d%y", "5,77%y"},   {"%d%5.3n,%d%y", "5,77%y"},  {"%*n,%d%y", ",77%y"},
        {"%.*hn,%d%y", ",77%y"},   {"%*n,%d", ",77"},           {"%.*n,%d", ",77"},
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
    // Around the sizes at which the string moves to a larger block.
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
