#include "gen_string_message.h"

#include "error_recorder.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

using testing::ElementsAre;

namespace {

std::string plain(STR const& text) {
    return std::string(text.begin(), text.end());
}

std::string message(char const* format, ...) {
    va_list args;
    va_start(args, format);
    STR text;
    gen_formatmessage(text, format, STL_ARGS(args));
    va_end(args);
    return plain(text);
}

unsigned long formatmessage(unsigned long flags, char const* source, char* buffer,
                            unsigned long size, ...) {
    va_list args;
    va_start(args, size);
    unsigned long const result =
        gen_formatmessage(flags, source, 17, 4711, buffer, size, STL_ARGS(args));
    va_end(args);
    return result;
}

int vsprintf_of(STR* out, char const* format, ...) {
    va_list args;
    va_start(args, format);
    int const length = gen_vsprintf(out, format, STL_ARGS(args));
    va_end(args);
    return length;
}

struct MessageCase {
    char const* format;
    char const* text;
};

void expect_messages(std::initializer_list<MessageCase> cases) {
    for (MessageCase const& row : cases)
        EXPECT_EQ(message(row.format, "x", "y", "z"), row.text) << '"' << row.format << '"';
}

} // namespace

TEST(Sprintf, GivesTheTextAndItsLength) {
    STR text("before");
    EXPECT_EQ(gen_sprintf(&text, "%s: %d of %d (%5.2f%%)", "file", 3, 7, 42.857), 21);
    EXPECT_EQ(text, "file: 3 of 7 (42.86%)");
    EXPECT_EQ(vsprintf_of(&text, "%lld|%c|%x", -1LL << 40, 'c', 255), 19);
    EXPECT_EQ(text, "-1099511627776|c|ff");
}

TEST(Sprintf, WithoutArgumentsConversionsPrintNothing) {
    STR text;
    EXPECT_EQ(gen_vsprintf(&text, "%s and %d%%", nullptr), 6);
    EXPECT_EQ(text, " and %");
}

TEST(FormatMessage, InsertsComeInAnyOrder) {
    expect_messages({
        {"%2 and %1", "y and x"},
        {"%1%2%3", "xyz"},
        {"%3%2%1", "zyx"},
        {"%1 %1", "x x"},
        {"%2%1%2%3%1%1", "yxyzxx"},
        {"", ""},
        {"no insert", "no insert"},
        {"%1", "x"},
    });
}

TEST(FormatMessage, NumbersHaveTwoDigitsAtMost) {
    expect_messages({
        {"%1a", "xa"},
        {"%1 1", "x 1"},
        {"%1%01", "x"},
    });
    EXPECT_EQ(message("%10-%9", 1, 2, 3, 4, 5, 6, 7, 8, "nine", "ten"), "ten-nine");
    EXPECT_EQ(message("%101", 1, 2, 3, 4, 5, 6, 7, 8, "nine", "ten"), "ten1");
}

TEST(FormatMessage, HighestNumberIsNinetyNine) {
    STL_ARG_LIST list;
    for (int i = 1; i <= 99; ++i)
        list.add(1000 + i);
    STR text;
    gen_formatmessage(text, "%99!d! %98!d! %1!d! %99!d!9", list.args());
    EXPECT_EQ(text, "1099 1098 1001 10999") << "a third digit is text";
}

TEST(FormatMessage, InsertsCarryTheirConversion) {
    EXPECT_EQ(message("%1!d! of %2!d!", 3, 7), "3 of 7");
    EXPECT_EQ(message("%1!5.2f!", 3.14159), " 3.14");
    EXPECT_EQ(message("%1!s!|%2!-6d!|%3!x!|%4!c!|%5!lld!|%6!Lg!|%7!lu!", "text", 42, 255, 'c',
                      LLONG_MIN, 0.25L, 77UL),
              "text|42    |ff|c|-9223372036854775808|0.25|77");
    EXPECT_EQ(message("%3!d! %2!.1f! %1!lld! %2!.2f! %1!llx!", 255LL, 2.5, 7), "7 2.5 255 2.50 ff");
    EXPECT_EQ(message("%1!hs! %2!ls!", "narrow", L"wide"), "narrow wide");
}

TEST(FormatMessage, UnclosedConversionReachesToTheEnd) {
    EXPECT_EQ(message("<%1!d", 42), "<42");
    EXPECT_EQ(message("<%1!", 42), "<");
}

TEST(FormatMessage, NoConversionPrintsNothingAndTakesNoArgument) {
    EXPECT_EQ(message("<%1!!>%2", "x", "y"), "<>x");
    EXPECT_EQ(message("<%1!*d!>%2", "x", "y"), "<>x");
    EXPECT_EQ(message("<%1!.*s!>%2", "x", "y"), "<>x");
    EXPECT_EQ(message("<%1!y!>%2", "x", "y"), "<>x");
    EXPECT_EQ(message("<%1!1$s!>%2", "x", "y"), "<>x");
    EXPECT_EQ(message("<%1!I64!>%2", "x", "y"), "<>x");
    EXPECT_EQ(message("<%1!5.!>%2", "x", "y"), "<>x");
    EXPECT_EQ(message("<%1!%!>%2", "x", "y"), "<%>x");
}

TEST(FormatMessage, WriteConversionOnlyStepsOverItsPointer) {
    int untouched = 7;
    EXPECT_EQ(message("some text %1!n!%2", &untouched, "y"), "some text y");
    EXPECT_EQ(message("%2 %1!hhn!", &untouched, "y"), "y ");
    EXPECT_EQ(untouched, 7);
}

TEST(FormatMessage, OnlyTheConversionOfATextCounts) {
    EXPECT_EQ(message("<%1!d items!> %2", 3, "y"), "<3> y");
    EXPECT_EQ(message("<%1!d%s!> %2", 3, "y"), "<3> y");
}

TEST(FormatMessage, UnnamedArgumentsAreOneWordWide) {
    EXPECT_EQ(message("%3", 1, "two", "three"), "three");
    EXPECT_EQ(message("%4 %2", 1, "two", 3U, "four"), "four two");
    EXPECT_EQ(message("%2!.1f! %4", "one", 2.5, 3, "four"), "2.5 four");
}

TEST(FormatMessage, WideArgumentsAreSteppedOverByTheirConversion) {
    EXPECT_EQ(message("%4 %1!.1f! %3!lld! %2!Lg!", 1.5, 2.5L, 3LL, "four"), "four 1.5 3 2.5");
}

// The conversion that steps over a number is the one read last, before this place or else behind
// it.
TEST(FormatMessage, ConversionsOfOneNumberMayDiffer) {
    EXPECT_EQ(message("%1!d! %1!x! %1!5d! %2", 255, "y"), "255 ff   255 y");
    EXPECT_EQ(message("%2 %1!d! %1!x! %2", 255, "y"), "y 255 ff y");
#if defined(__i386__)
    // A double is two words wide: behind it the text is the third word, without it the second.
    char const* const text = "text";
    EXPECT_EQ(message("%2 %1!x! %1!.1f!", 2.5, text), "text 0 2.5");
    EXPECT_EQ(message("%1!.1f! %2 %1!x! %2!d!", 2.5, text), "2.5 text 0 1074003968");
#endif
}

TEST(FormatMessage, PercentZeroEndsTheText) {
    expect_messages({
        {"Line%0 rest", "Line"},
        {"%0", ""},
        {"%1%0%2", "x"},
        {"%01", ""},
        {"a%%0b", "a%0b"},
        {"%1%%%0%2", "x%"},
    });
}

TEST(FormatMessage, OtherCharactersBehindAPercentStandForThemselves) {
    expect_messages({
        {"100%%", "100%"},
        {"%n%t%r%!%.%b% ", "ntr!.b "},
        {"%%%1", "%x"},
        {"%%%%", "%%"},
        {"%\n", "\n"},
        {"%\r\n", "\r\r\n"},
        {"%%1", "%1"},
        {"%\xC3\xA9", "\xC3\xA9"},
    });
}

TEST(FormatMessage, LonePercentAtTheEndPrintsNothing) {
    expect_messages({{"%", ""}, {"text%", "text"}, {"%1%", "x"}, {"%%%", "%"}});
}

TEST(FormatMessage, LineEndsAreTranslated) {
    expect_messages({
        {"one\ntwo", "one\r\ntwo"},
        {"one\r\ntwo", "one two"},
        {"one\rtwo", "onetwo"},
        {"one\r", "one"},
        {"\n\n", "\r\n\r\n"},
        {"\r\n\r\n", "  "},
        {"\r\r\n", " "},
        {"\n\r", "\r\n"},
        {"\r%1", "x"},
        {"%1\n%2\r\n%3", "x\r\ny z"},
    });
    // Arguments are taken as they are.
    EXPECT_EQ(message("%1", "a\nb\r\nc%2"), "a\nb\r\nc%2");
}

// The first reading takes "%%1" for an insert, the second prints it. What follows from that is
// kept.
TEST(FormatMessage, DigitBehindAnEvenRunOfPercentsIsReadTwoWays) {
    EXPECT_EQ(message("%%1 %2", 1, "y"), "%1 y");
    EXPECT_EQ(message("%%0 %2", 1, "y"), "%0 y");
    EXPECT_EQ(message("%%0 %2 %1", "x", "y"), "%0 y x");
#if defined(__i386__)
    // Only the first reading names %1, and steps over two words for it...
    EXPECT_EQ(message("%2 %%1!lld!", 1LL, "y"), "y %1!lld!");
    // ...until the second reading has written "%s" over its conversion.
    EXPECT_EQ(message("%2 %%1!lld! %2", 1LL, "y"), "y %1!lld! (null)");
    EXPECT_EQ(message("%%1!lld!%2", 1LL, "y"), "%1!lld!(null)");
    // The first reading ends at "%0": when the second meets %2, nothing is known of %1 but that it
    // is a word, although it is two.
    EXPECT_EQ(message("%%0 %2 %1!lld!", "x", "y", "z").substr(0, 5), "%0 y ");
#endif
}

TEST(FormatMessage, ConversionsShareFourThousandCharacters) {
    // "%", the text and the terminator must fit into 4095 characters.
    auto const message_with = [](std::size_t flags) {
        std::string const format = "%1!" + std::string(flags, '-') + "d!|%2|%1!d!";
        return message(format.c_str(), 5, "y");
    };
    EXPECT_EQ(message_with(4095 - 3 - 3 - 3), "5|y|5");
    EXPECT_EQ(message_with(4095 - 3 - 3 - 2), "5|y|") << "no room for the last";
    EXPECT_EQ(message_with(4095 - 3), "5||") << "the first one fills all of it";
    EXPECT_EQ(message_with(4095 - 2), "||") << "the first one has no room";
    EXPECT_EQ(message_with(100'000), "||");
    std::string many;
    for (int i = 0; i < 1400; ++i)
        many += "%1";
    EXPECT_EQ(message(many.c_str(), "x"), std::string(4095 / 3, 'x')) << "three characters each";
}

TEST(FormatMessage, AppendsAndGivesTheWholeLength) {
    STR text("before ");
    STL_ARG_LIST list;
    list.add("x");
    EXPECT_EQ(gen_formatmessage(text, "%1 %1", list.args()), 10U);
    EXPECT_EQ(text, "before x x");
    EXPECT_EQ(gen_formatmessage(text, "", list.args()), 10U);
    EXPECT_EQ(gen_formatmessage(text, nullptr, list.args()), 10U);
    EXPECT_EQ(text, "before x x");
}

TEST(FormatMessage, WithoutArgumentsInsertsPrintNothing) {
    STR text;
    gen_formatmessage(text, "<%1> <%3!d!> <%2!5.2f!> %%", nullptr);
    EXPECT_EQ(text, "<> <> <> %");
}

TEST(FormatMessage, TextsOfMegabytesComeThrough) {
    std::string const words(2000, 'w');
    std::string format;
    std::string expected;
    for (int i = 0; i < 1365; ++i) { // as many as there is room for
        format += words + "\n%1";
        expected += words + "\r\nx";
    }
    EXPECT_TRUE(message(format.c_str(), "x") == expected);
    std::string const argument(1'000'000, 'a');
    EXPECT_TRUE(message("<%2%1%2>", argument.c_str(), "|") == "<|" + argument + "|>");
}

namespace {

constexpr unsigned long from_string = FORMAT_MESSAGE_FROM_STRING;

char const refused[] = "gen_formatmessage: FORMAT_MESSAGE_FROM_SYSTEM and "
                       "FORMAT_MESSAGE_FROM_HMODULE are not supported";

} // namespace

TEST(FormatMessageFlags, ValuesAreThoseOfTheInterface) {
    EXPECT_EQ(FORMAT_MESSAGE_MAX_WIDTH_MASK, 0xFFU);
    EXPECT_EQ(FORMAT_MESSAGE_ALLOCATE_BUFFER, 0x100U);
    EXPECT_EQ(FORMAT_MESSAGE_IGNORE_INSERTS, 0x200U);
    EXPECT_EQ(FORMAT_MESSAGE_FROM_STRING, 0x400U);
    EXPECT_EQ(FORMAT_MESSAGE_FROM_HMODULE, 0x800U);
    EXPECT_EQ(FORMAT_MESSAGE_FROM_SYSTEM, 0x1000U);
}

TEST(FormatMessageFlags, RefusedSourcesAreReportedAndGiveNothing) {
    struct Case {
        unsigned long flags;
        int line;
    };
    static constexpr Case cases[] = {
        {FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_FROM_HMODULE, 2503},
        {FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_FROM_HMODULE | from_string, 2503},
        {FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_FROM_HMODULE | 0xFF, 2503},
        {FORMAT_MESSAGE_FROM_SYSTEM | from_string, 2511},
        {FORMAT_MESSAGE_FROM_HMODULE | from_string | 1, 2511},
    };
    for (Case const& row : cases) {
        ErrorRecorder recorder;
        char buffer[] = "untouched";
        EXPECT_EQ(formatmessage(row.flags, "%1", buffer, sizeof buffer, "x"), 0U);
        EXPECT_STREQ(buffer, "untouched");
        EXPECT_THAT(recorder.errors(),
                    ElementsAre(ReportedError{refused, "GEN", "gen_string", row.line}));
    }
}

TEST(FormatMessageFlags, MissingFromStringIsReportedAndGoesOn) {
    for (unsigned long const flags :
         {0UL, FORMAT_MESSAGE_FROM_SYSTEM, FORMAT_MESSAGE_FROM_HMODULE}) {
        ErrorRecorder recorder;
        char buffer[20] = "";
        EXPECT_EQ(formatmessage(flags, "<%1>", buffer, sizeof buffer, "x"), 3U);
        EXPECT_STREQ(buffer, "<x>");
        EXPECT_THAT(recorder.errors(),
                    ElementsAre(ReportedError{
                        "gen_formatmessage: The FORMAT_MESSAGE_FROM_STRING flag must be used",
                        "GEN", "gen_string", 2517}));
    }
}

TEST(FormatMessageFlags, MaximumWidthIsReportedAndIgnored) {
    ReportedError const width{
        "gen_formatmessage: FORMAT_MESSAGE_MAX_WIDTH_MASK is not supported.\n", "GEN", "gen_string",
        2522};
    for (unsigned long const bits : {1UL, 0x80UL, 0xFFUL}) {
        ErrorRecorder recorder;
        char buffer[20] = "";
        EXPECT_EQ(formatmessage(from_string | bits, "<%1>", buffer, sizeof buffer, "x"), 3U);
        EXPECT_STREQ(buffer, "<x>");
        EXPECT_THAT(recorder.errors(), ElementsAre(width));
    }
    ErrorRecorder recorder;
    char buffer[20] = "";
    formatmessage(0xFF, "<%1>", buffer, sizeof buffer, "x");
    ASSERT_EQ(recorder.errors().size(), 2U) << "both are told, the missing source first";
    EXPECT_EQ(recorder.errors()[0].line, 2517);
    EXPECT_EQ(recorder.errors()[1], width);
}

TEST(FormatMessageFlags, OtherBitsAreIgnored) {
    ErrorRecorder recorder;
    char buffer[20] = "";
    EXPECT_EQ(formatmessage(from_string | 0xFFFFE000UL, "<%1>", buffer, sizeof buffer, "x"), 3U);
    EXPECT_STREQ(buffer, "<x>");
    EXPECT_TRUE(recorder.errors().empty());
}

TEST(FormatMessageFlags, IgnoredInsertsAreCopied) {
    char buffer[40] = "";
    EXPECT_EQ(formatmessage(from_string | FORMAT_MESSAGE_IGNORE_INSERTS, "%1\n%%%0 %", buffer,
                            sizeof buffer, "x"),
              9U);
    EXPECT_STREQ(buffer, "%1\n%%%0 %");
}

TEST(FormatMessageBuffer, IsCutToItsSize) {
    struct Case {
        unsigned long size;
        char const* text;
    };
    static constexpr Case cases[] = {
        {4, "012"},         {1, ""},           {2, "0"},
        {9, "01234567"},    {10, "012345678"}, {11, "0123456789"},
        {30, "0123456789"},
    };
    for (Case const& row : cases) {
        char buffer[40];
        std::memset(buffer, '?', sizeof buffer);
        EXPECT_EQ(formatmessage(from_string, "%1", buffer, row.size, "0123456789"),
                  std::strlen(row.text));
        EXPECT_STREQ(buffer, row.text);
        EXPECT_EQ(buffer[std::strlen(row.text) + 1], '?') << "nothing behind the terminator";
    }
}

TEST(FormatMessageBuffer, EmptyTextTouchesNothing) {
    char buffer[] = "untouched";
    EXPECT_EQ(formatmessage(from_string, "%1", buffer, sizeof buffer, ""), 0U);
    EXPECT_EQ(formatmessage(from_string, "", buffer, sizeof buffer), 0U);
    EXPECT_EQ(formatmessage(from_string, nullptr, buffer, sizeof buffer), 0U);
    EXPECT_EQ(
        formatmessage(from_string | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, buffer, sizeof buffer),
        0U);
    EXPECT_STREQ(buffer, "untouched");
}

TEST(FormatMessageBuffer, NoRoomStoresNothing) {
    char buffer[] = "untouched";
    EXPECT_EQ(formatmessage(from_string, "%1", buffer, 0, "text"), 0U);
    EXPECT_STREQ(buffer, "untouched");
    EXPECT_EQ(formatmessage(from_string, "%1", nullptr, 10, "text"), 0U);
}

namespace {

struct Allocated {
    unsigned long length;
    std::unique_ptr<char, decltype(&std::free)> block;
};

Allocated allocate(char const* format, unsigned long size, char const* argument) {
    char* block = const_cast<char*>("neither null nor allocated");
    unsigned long const length =
        formatmessage(from_string | FORMAT_MESSAGE_ALLOCATE_BUFFER, format,
                      reinterpret_cast<char*>(static_cast<void*>(&block)), size, argument);
    return {length, {block, &std::free}};
}

} // namespace

TEST(FormatMessageBuffer, AllocatedHoldsTheWholeText) {
    Allocated const exact = allocate("<%1>", 0, "01234567");
    EXPECT_EQ(exact.length, 10U);
    EXPECT_STREQ(exact.block.get(), "<01234567>");
    Allocated const same = allocate("<%1>", 10, "01234567");
    EXPECT_EQ(same.length, 10U);
    EXPECT_STREQ(same.block.get(), "<01234567>");
}

TEST(FormatMessageBuffer, AllocatedIsAtLeastOfTheSizeAskedFor) {
    Allocated const larger = allocate("%1", 32, "0123456789");
    EXPECT_EQ(larger.length, 32U);
    EXPECT_EQ(std::string(larger.block.get(), 33), "0123456789" + std::string(23, '\0'));
}

TEST(FormatMessageBuffer, AllocatedIsNullForAnEmptyText) {
    Allocated const empty = allocate("%1", 32, "");
    EXPECT_EQ(empty.length, 0U);
    EXPECT_EQ(empty.block, nullptr);
    EXPECT_EQ(formatmessage(from_string | FORMAT_MESSAGE_ALLOCATE_BUFFER, "%1", nullptr, 5, "x"),
              0U);
}

TEST(FormatMessageBuffer, BlockThatCannotBeHadIsNull) {
    Allocated const wrapped = allocate("%1", ULONG_MAX, "text");
    EXPECT_EQ(wrapped.length, 0U);
    EXPECT_EQ(wrapped.block, nullptr);
}
