#include "huge_text.h"
#include "stl.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <gtest/gtest.h>

namespace {

// Runs `body` with a cursor over the arguments behind it.
template <typename Body>
void with_cursor(Body body, ...) {
    va_list args;
    va_start(args, body);
    STL_ARG_CURSOR cursor(STL_ARGS(args));
    body(cursor);
    va_end(args);
}

STL_CONVERSION parsed(char const* conversion) {
    STL_CONVERSION parsed;
    stl_parse_conversion(*conversion == '%' ? conversion + 1 : "", parsed);
    return parsed;
}

std::string output(STL_ARG_CURSOR& cursor, char const* conversion) {
    STL_TEXT text;
    cursor.output(text, parsed(conversion));
    return std::string(text.begin(), text.size());
}

void skip(STL_ARG_CURSOR& cursor, char const* conversion) {
    STL_VALUE passed_over;
    cursor.take(parsed(conversion).argument, passed_over);
}

struct ConversionCase {
    char const* conversion;
    char const* text;
};

// With the arguments 42, "next".
constexpr ConversionCase one_int_cases[] = {
    {"%d", "42"},       {"%i", "42"},    {"%u", "42"},     {"%x", "2a"},       {"%X", "2A"},
    {"%o", "52"},       {"%c", "*"},     {"%5d", "   42"}, {"%-5d|", "42   "}, {"%05d", "00042"},
    {"%+d", "+42"},     {"%hhd", "42"},  {"%hd", "42"},    {"%d items", "42"}, {"%d%d", "42"},
    {"%5.3d", "  042"}, {"%#x", "0x2a"}, {"%lc", "*"},     {"%C", "*"},        {"%b", "101010"},
};

// Conversions that print what stands here and leave the argument where it is.
constexpr ConversionCase no_argument_cases[] = {{"%%", "%"}, {"%5%", "%"}, {"%m", "Success"}};

// What prints nothing and steps over a word.
constexpr char const* no_conversions[] = {
    "",      "%",    "text",  "d",     "%y",  "%*d",  "%.*d",  "%1$d",           "%*n",   "%-",
    "%5.",   "%l",   "%5.2",  " %d",   "%!",  "%1$n", "%*2$s", "%.*2$s",         "%5Id",  "%Id",
    "%I32d", "%I64", "%I64s", "%hhhd", "%Ls", "%qc",  "%5!d",  "%99999999999$d", "%..2d", "%*.*f",
};

} // namespace

TEST(StlArgCursor, OneConversionTakesOneArgument) {
    for (ConversionCase const& row : one_int_cases)
        with_cursor(
            [&](STL_ARG_CURSOR& cursor) {
                EXPECT_EQ(output(cursor, row.conversion), row.text) << row.conversion;
                EXPECT_EQ(output(cursor, "%s"), "next") << row.conversion;
                cursor.reset();
                skip(cursor, row.conversion);
                EXPECT_EQ(output(cursor, "%s"), "next") << row.conversion;
            },
            42, "next");
}

TEST(StlArgCursor, ConversionsWithoutArgumentReadNone) {
    for (ConversionCase const& row : no_argument_cases) {
        with_cursor(
            [&](STL_ARG_CURSOR& cursor) {
                errno = 0;
                EXPECT_EQ(output(cursor, row.conversion), row.text) << row.conversion;
                skip(cursor, row.conversion);
                EXPECT_EQ(output(cursor, "%d"), "42") << row.conversion;
            },
            42);
    }
}

TEST(StlArgCursor, WhatIsNoConversionStepsOverOneWord) {
    for (char const* const conversion : no_conversions) {
        with_cursor(
            [&](STL_ARG_CURSOR& cursor) {
                EXPECT_EQ(output(cursor, conversion), "") << conversion;
                EXPECT_EQ(output(cursor, "%s"), "two") << conversion;
                skip(cursor, conversion);
                EXPECT_EQ(output(cursor, "%s"), "four") << conversion;
            },
            1, "two", 3, "four");
    }
}

TEST(StlArgCursor, IntegerOf64BitsThatPrintsNothingIsSteppedOverWhole) {
    for (char const* const conversion : {"%I64d", "%I64u", "%I64x"}) {
        with_cursor(
            [&](STL_ARG_CURSOR& cursor) {
                EXPECT_EQ(output(cursor, conversion), "") << conversion;
                EXPECT_EQ(output(cursor, "%s"), "next") << conversion;
            },
            1LL << 40, "next");
    }
}

TEST(StlArgCursor, EveryArgumentTypeHasItsSize) {
    static constexpr ConversionCase conversions[] = {
        {"%s", "text"},
        {"%d", "-1"},
        {"%lld", "-9223372036854775808"},
        {"%5.2f", " 2.50"},
        {"%ld", "-2147483648"},
        {"%Lg", "0.25"},
        {"%hhu", "200"},
        {"%zu", "77"},
        {"%jd", "-5"},
        {"%td", "-6"},
        {"%ls", "wide"},
        {"%c", "c"},
        {"%llu", "18446744073709551615"},
        {"%e", "1.000000e+100"},
        {"%p", "(nil)"},
        {"%n", ""},
        {"%g", "0.5"},
        {"%La", "0x8p-3"},
        {"%S", "more"},
        {"%s", "end"},
    };
    int written = 1;
    with_cursor(
        [&](STL_ARG_CURSOR& cursor) {
            for (ConversionCase const& row : conversions)
                EXPECT_EQ(output(cursor, row.conversion), row.text) << row.conversion;
            // Each of them alone, with the ones before it stepped over.
            for (std::size_t i = 0; i < std::size(conversions); ++i) {
                cursor.reset();
                for (std::size_t before = 0; before < i; ++before)
                    skip(cursor, conversions[before].conversion);
                EXPECT_EQ(output(cursor, conversions[i].conversion), conversions[i].text)
                    << conversions[i].conversion;
            }
        },
        "text", -1, LLONG_MIN, 2.5, static_cast<long>(INT_MIN), 0.25L, 200, std::size_t{77},
        std::intmax_t{-5}, std::ptrdiff_t{-6}, L"wide", 'c', ULLONG_MAX, 1e100, nullptr, &written,
        0.5, 1.0L, L"more", "end");
    EXPECT_EQ(written, 1);
}

// No locale has a character of that number: printf has an error there.
TEST(StlArgCursor, OutputLeavesErrnoAlone) {
    with_cursor(
        [](STL_ARG_CURSOR& cursor) {
            std::string const text = std::strerror(ENOENT);
            errno = ENOENT;
            EXPECT_EQ(output(cursor, "%lc"), "");
            EXPECT_EQ(output(cursor, "%m"), text);
            EXPECT_EQ(errno, ENOENT);
            EXPECT_EQ(output(cursor, "%s"), "next");
        },
        0x7FFFFFFF, "next");
}

TEST(StlArgCursor, ArgumentOfAConversion) {
    struct Case {
        char const* conversion;
        STL_ARGUMENT argument;
    };
    constexpr bool wide_long = sizeof(long) == sizeof(long long);
    static constexpr Case cases[] = {
        {"%d", STL_ARGUMENT::integer},
        {"%c", STL_ARGUMENT::integer},
        {"%hhX", STL_ARGUMENT::integer},
        {"%lc", STL_ARGUMENT::wide_character},
        {"%C", STL_ARGUMENT::wide_character},
        {"%ld", STL_ARGUMENT::long_integer},
        {"%lld", STL_ARGUMENT::long_long_integer},
        {"%jd", wide_long ? STL_ARGUMENT::long_integer : STL_ARGUMENT::long_long_integer},
        {"%zu", wide_long ? STL_ARGUMENT::long_integer : STL_ARGUMENT::integer},
        {"%5.2f", STL_ARGUMENT::floating},
        {"%La", STL_ARGUMENT::long_floating},
        {"%-8.3s", STL_ARGUMENT::text},
        {"%hs", STL_ARGUMENT::text},
        {"%ls", STL_ARGUMENT::wide_text},
        {"%S", STL_ARGUMENT::wide_text},
        {"%p", STL_ARGUMENT::pointer},
        {"%hhn", STL_ARGUMENT::pointer},
        {"%%", STL_ARGUMENT::none},
        {"%m", STL_ARGUMENT::none},
        {"%", STL_ARGUMENT::word},
        {"%*d", STL_ARGUMENT::word},
        {"%1$f", STL_ARGUMENT::word},
        {"%y", STL_ARGUMENT::word},
        {"%.3!f", STL_ARGUMENT::word},
        {"%If", STL_ARGUMENT::word},
        {"%I64f", STL_ARGUMENT::word},
        {"%I64d", STL_ARGUMENT::long_long_integer},
    };
    for (Case const& row : cases)
        EXPECT_EQ(parsed(row.conversion).argument, row.argument) << row.conversion;
}

TEST(StlConversion, EndsBehindItsLetter) {
    struct Case {
        char const* text;
        char letter;
        std::ptrdiff_t length;
    };
    static constexpr Case cases[] = {
        {"d", 'd', 1},    {"d items", 'd', 1}, {"-5.3lld!", 'd', 7}, {"", '\0', 0},
        {"5.2", '\0', 3}, {"2$*3$s", 's', 6},  {"%%", '%', 1},       {"5!d", '!', 2},
    };
    for (Case const& row : cases) {
        STL_CONVERSION conversion;
        stl_parse_conversion(row.text, conversion);
        EXPECT_EQ(conversion.letter, row.letter) << row.text;
        EXPECT_EQ(conversion.begin, row.text);
        EXPECT_EQ(conversion.end - conversion.begin, row.length) << row.text;
    }
}

TEST(StlArgCursor, WordsAreIntsAndPointers) {
    with_cursor(
        [](STL_ARG_CURSOR& cursor) {
            STL_VALUE value;
            for (int i = 1; i <= 9; ++i) {
                cursor.take(STL_ARGUMENT::word, value);
                if (i == 5) {
                    EXPECT_STREQ(reinterpret_cast<char const*>(value.word), "five");
                }
            }
            EXPECT_EQ(output(cursor, "%d"), "10");
            cursor.reset();
            EXPECT_EQ(output(cursor, "%d"), "1");
        },
        1, 2, "three", 4U, "five", 6, 7, "eight", 9, 10);
}

TEST(StlArgCursor, OutputAppends) {
    with_cursor(
        [](STL_ARG_CURSOR& cursor) {
            STL_TEXT text;
            text.append("before ", 7);
            cursor.output(text, parsed("%s"));
            cursor.output(text, parsed("%5d"));
            STR result;
            text.append_to(result);
            EXPECT_EQ(result, "before one    2");
        },
        "one", 2);
}

TEST(StlArgCursor, NullTextIsWhatPrintfMakesOfIt) {
    char const* const nothing = nullptr;
    with_cursor([](STL_ARG_CURSOR& cursor) { EXPECT_EQ(output(cursor, "%s"), "(null)"); }, nothing);
    with_cursor([](STL_ARG_CURSOR& cursor) { EXPECT_EQ(output(cursor, "%8s"), "  (null)"); },
                nothing);
}

TEST(StlArgCursor, TextPastTheRangeOfIntPrintsNothing) {
    HugeText const huge;
    if (huge.text() == nullptr)
        GTEST_SKIP() << "no room for a text of 2 GiB";
    with_cursor([](STL_ARG_CURSOR& cursor) { EXPECT_EQ(output(cursor, "%s"), ""); }, huge.text());
}

TEST(StlArgCursor, LongTextsArriveWhole) {
    std::string const text(10'000, 'x');
    with_cursor([&](STL_ARG_CURSOR& cursor) { EXPECT_EQ(output(cursor, "%s"), text); },
                text.c_str());
}

TEST(StlArgCursor, WithoutArgumentsNothingIsPrinted) {
    STL_ARG_CURSOR cursor(nullptr);
    EXPECT_FALSE(cursor.has_arguments());
    for (char const* const conversion : {"%s", "%d", "%5.2f", "%n", "%"})
        EXPECT_EQ(output(cursor, conversion), "");
    EXPECT_EQ(output(cursor, "%%"), "%");
    STL_VALUE value;
    cursor.take(STL_ARGUMENT::floating, value);
    EXPECT_EQ(value.floating, 0.0);
    cursor.reset();
    char* nothing = nullptr;
    cursor.hand_back(nothing);
    EXPECT_EQ(nothing, nullptr);
}

namespace {

// Outputs the first argument through the function form, and the second by whatever reads on.
std::string first_then_rest(char const* conversion, ...) {
    va_list args;
    va_start(args, conversion);
    STR text("<");
#if defined(__i386__)
    char* cursor = args;
    stl_output(&text, conversion, &cursor);
    args = cursor;
#else
    char* cursor = STL_ARGS(args);
    stl_output(&text, conversion, &cursor);
#endif
    text += ">";
    text += va_arg(args, char const*);
    va_end(args);
    return std::string(text.begin(), text.end());
}

} // namespace

TEST(StlOutput, AppendsOneArgumentAndAdvancesTheCallersList) {
    EXPECT_EQ(first_then_rest("%s", "one", "two"), "<one>two");
    EXPECT_EQ(first_then_rest("%5.2f", 2.5, "two"), "< 2.50>two");
    EXPECT_EQ(first_then_rest("%lld", 1LL << 40, "two"), "<1099511627776>two");
    EXPECT_EQ(first_then_rest("%Lg", 0.125L, "two"), "<0.125>two");
    EXPECT_EQ(first_then_rest("%*d", 1, "two"), "<>two");
    EXPECT_EQ(first_then_rest("%", 1, "two"), "<>two");
    EXPECT_EQ(first_then_rest("text", 1, "two"), "<>two");
    EXPECT_EQ(first_then_rest(nullptr, 1, "two"), "<>two");
    EXPECT_EQ(first_then_rest("%d items", 1, "two"), "<1>two");
    EXPECT_EQ(first_then_rest("%I64d", 1LL << 40, "two"), "<>two");
    int written = 7;
    EXPECT_EQ(first_then_rest("%n", &written, "two"), "<>two");
    EXPECT_EQ(written, 7);
}

TEST(StlOutput, NullCursorPrintsNothing) {
    STR text("before");
    char* cursor = nullptr;
    stl_output(&text, "%s", &cursor);
    EXPECT_EQ(text, "before");
    EXPECT_EQ(cursor, nullptr);
}

TEST(StlOutput, ArgumentMayLieInTheResult) {
    STR text("a text that no string keeps within itself");
    STR const expected = text + text;
    STL_ARG_LIST list;
    list.add(static_cast<char const*>(text.c_str()));
    char* args = list.args();
    stl_output(&text, "%s", &args);
    EXPECT_EQ(text, expected);
}

TEST(StlOutput, NothingToWriteToOrToReadFrom) {
    STL_ARG_LIST list;
    list.add(1);
    list.add(2);
    char* args = list.args();
    stl_output(nullptr, "%d", &args);
    STR text;
    stl_output(&text, "%d", &args);
    EXPECT_EQ(text, "2");
    stl_output(&text, "%d", nullptr);
    EXPECT_EQ(text, "2");
}

TEST(StlArgList, ArrivesLikeArgumentsOfACall) {
    STL_ARG_LIST list;
    list.add("text");
    list.add(-1);
    list.add(2.5);
    list.add(LLONG_MIN);
    list.add(7U);
    list.add(0.25L);
    list.add('c' + 0);
    list.add(0.125L);
    list.add(77UL);
    STR text;
    stl_vsprintf(&text, "%s %d %.1f %lld %u %Lg %c %Lg %lu", list.args());
    EXPECT_EQ(text, "text -1 2.5 -9223372036854775808 7 0.25 c 0.125 77");
}

TEST(StlArgList, WithoutArgumentsIsNull) {
    STL_ARG_LIST list;
    EXPECT_EQ(list.args(), nullptr);
    STR text;
    EXPECT_EQ(stl_vsprintf(&text, "%m, %d", list.args()), stl_vsprintf(&text, "%m, %d", nullptr));
}

TEST(StlArgList, TakesAnyNumberOfArguments) {
    STL_ARG_LIST list;
    for (int i = 0; i < 500; ++i)
        list.add(i);
    STL_ARG_CURSOR cursor(list.args());
    for (int i = 0; i < 499; ++i)
        skip(cursor, "%d");
    EXPECT_EQ(output(cursor, "%d"), "499");
}
