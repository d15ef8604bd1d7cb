#include "gen_string_message.h"

#include "guarded_text.h"
#include "huge_text.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cwchar>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

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

int vsprintf_of(STR* out, char const* format, ...) {
    va_list args;
    va_start(args, format);
    int const length = gen_vsprintf(out, format, STL_ARGS(args));
    va_end(args);
    return length;
}

/// Leaves the character behind on the stack.
void fill_stack(char character) {
    char volatile left_behind[1 << 15];
    std::fill(std::begin(left_behind), std::end(left_behind), character);
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

TEST(Sprintf, FormatAndArgumentsMayLieInTheResult) {
    for (char const* const start :
         {"<%s> %d%%", "<%1$s> %2$d%%", "<%s> %-3d and more than a string keeps"}) {
        STR expected;
        gen_sprintf(&expected, start, start, 5);
        STR text(start);
        gen_sprintf(&text, text.c_str(), text.c_str(), 5);
        EXPECT_EQ(text, expected);
    }
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

TEST(FormatMessage, NoConversionPrintsNothingAndStepsOverOneWord) {
    for (char const* const conversion :
         {"!!", "!*d!", "!.*s!", "!y!", "!1$s!", "!I64!", "!5.!", "!Id!", "!l!", "!I64c!"}) {
        std::string const insert = std::string("%1") + conversion;
        EXPECT_EQ(message(("<" + insert + ">%2").c_str(), "x", "y"), "<>y") << conversion;
        EXPECT_EQ(message(("%2 <" + insert + ">%2").c_str(), "x", "y"), "y <>y") << conversion;
        // In a format that is read twice as well.
        EXPECT_EQ(message(("<" + insert + ">%2 %%2").c_str(), "x", "y"), "<>y %2") << conversion;
    }
    EXPECT_EQ(message("<%1!%!>%2", "x", "y"), "<%>x") << "a conversion without argument";
}

TEST(FormatMessage, IntegerOf64BitsThatPrintsNothingIsSteppedOverWhole) {
    EXPECT_EQ(message("<%1!I64d!>%2", 1LL << 40, "y"), "<>y");
    EXPECT_EQ(message("%1!I64x!<%2> %%2", 1LL << 40, "y"), "<y> %2") << "read twice as well";
}

TEST(FormatMessage, NoConversionMayStandBesideOneOfTheSameNumber) {
    EXPECT_EQ(message("%1!! %2 %1!d!", 7, "y"), " y 7");
    EXPECT_EQ(message("%1!d! %2 %1!!", 7, "y"), "7 y ");
#if defined(__i386__)
    // A double is two words wide, of which the lower one is 0; no conversion takes it for one.
    EXPECT_EQ(message("%1!! %2!d! %1!f!", 2.5), " 1074003968 2.500000");
    EXPECT_EQ(message("%1!f! %2!d! %1!!", 2.5, 7), "2.500000 7 ");
#endif
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
    // A double is two words wide: behind it the string is the third word, without it the second.
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

TEST(FormatMessage, OtherControlCharactersStandForThemselves) {
    expect_messages({{"\ta\vb\fc\x01%1\x1F", "\ta\vb\fc\x01x\x1F"}});
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

TEST(FormatMessage, NullTextIsWhatPrintfMakesOfIt) {
    char const* const nothing = nullptr;
    EXPECT_EQ(message("%1, %2!8s!, %3", nothing, nothing, "z"), "(null),   (null), z");
    EXPECT_EQ(message("%1 and %3 without %1!c!", nothing, "y", "z").substr(0, 10), "(null) and");
}

TEST(FormatMessage, TextPastTheRangeOfIntPrintsNothing) {
    HugeText const huge;
    if (huge.text() == nullptr)
        GTEST_SKIP() << "no room for a text of 2 GiB";
    EXPECT_EQ(message("<%1> <%2>", huge.text(), "next"), "<> <next>");
}

// The first reading takes "%%1" for an insert, the second prints it. What follows from that is
// kept.
TEST(FormatMessage, DigitBehindAnEvenRunOfPercentsIsReadTwoWays) {
    EXPECT_EQ(message("%%1 %2", 1, "y"), "%1 y");
    EXPECT_EQ(message("%%0 %2", 1, "y"), "%0 y");
    EXPECT_EQ(message("%%0 %2 %1", "x", "y"), "%0 y x");
    EXPECT_EQ(message("%%1\none\r\ntwo\rthree%%%!%", "x"), "%1\r\none twothree%!");
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
    // "%", the conversion and the terminator must fit into 4095 characters.
    auto const message_with = [](std::size_t flags) {
        std::string const format = "%1!" + std::string(flags, '-') + "d!|%2|%1!d!";
        return message(format.c_str(), 5, "y");
    };
    EXPECT_EQ(message_with(4095 - 3 - 3 - 3), "5|y|5");
    EXPECT_EQ(message_with(4095 - 3 - 3 - 2), "5|y|") << "no room for the last";
    EXPECT_EQ(message_with(4095 - 3), "5||") << "the first one fills all of it";
    EXPECT_EQ(message_with(4095 - 2), "||") << "the first one has no room";
    EXPECT_EQ(message_with(100'000), "||");
    std::string const no_room = "%1!" + std::string(5000, '-') + "!%3!d!";
    EXPECT_EQ(message(no_room.c_str(), 1, 2, 3), "") << "nothing behind it has any";
}

TEST(FormatMessage, ConversionThatLacksRoomForOneCharacterPrintsNothing) {
    auto const message_with = [](std::size_t flags) {
        std::string const format = "%1!" + std::string(flags, '-') + "d!|%1!d, and more!";
        return message(format.c_str(), 5);
    };
    constexpr std::size_t room = 4095 - std::string_view("%d%d, and more").size() - 2;
    EXPECT_EQ(message_with(room), "5|5");
    EXPECT_EQ(message_with(room + 1), "5|") << "also when what is lost would not be printed";
}

// The second reading fills the room with what begins before the conversion of %4. (The sanitizer
// notices a read behind the room, where the stack is not zero by chance.)
TEST(FormatMessage, ConversionThatIsWrittenOverEndsWithTheRoom) {
    std::string const format = "%%1!dd!%%4!d!%5!999%" + std::string(5000, '9') + "d!";
    fill_stack('9');
    EXPECT_EQ(message(format.c_str(), 1, 2, 3, 4, 5), "%1!dd!%4!d!");
}

TEST(FormatMessage, RoomHasPlaceForBareInsertsUpToAThousandThreeHundredAndSixtyFive) {
    for (std::size_t const count : {1363U, 1364U, 1365U, 1366U, 1367U, 1400U}) {
        std::string same; // three characters of the room each
        for (std::size_t i = 0; i < count; ++i)
            same += "%1";
        std::string const expected(std::min<std::size_t>(count, 4095 / 3), 'x');
        EXPECT_EQ(message(same.c_str(), "x", "y"), expected) << count;
        EXPECT_EQ(message((same + "%2").c_str(), "x", "y"),
                  count < 1365 ? expected + "y" : expected)
            << count;
    }
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

TEST(FormatMessage, ErrorNumberStaysAsItIs) {
    constexpr auto in_no_locale = static_cast<wint_t>(0x7fffffff);
    for (char const* const format : {"%1!C!", "%1!d! %2!C!", "%2!m! %1!C!", "%1!C! %2!d! %1!C!"}) {
        errno = EIO;
        message(format, in_no_locale, in_no_locale);
        EXPECT_EQ(errno, EIO) << format;
    }
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

TEST(FormatMessage, PiecesOfEveryLengthComeThroughFromAnyPlace) {
    GuardedText formats(1);
    GuardedText texts(1);
    for (std::size_t length = 0; length < 70; ++length) {
        std::string const text(length, 'a');
        std::string const words(length, 'w');
        for (std::size_t gap = 0; gap < 36; ++gap) {
            char const* const format = formats.before_end("%1" + words + "%1%2" + words, gap);
            char const* const argument = texts.before_end(text, gap);
            ASSERT_EQ(message(format, argument, "b"), text + words + text + "b" + words)
                << length << " characters, " << gap << " before the end of the page";
        }
    }
}

TEST(FormatMessage, NumbersOfEveryLengthComeThrough) {
    std::vector<int> numbers = {0, -1, INT_MAX, INT_MIN};
    for (int power = 1; power < 1'000'000'000; power *= 10)
        for (int const number : {power, 10 * (power - 1) + 9, 7 * power})
            numbers.insert(numbers.end(), {number, -number});
    for (int const first : numbers)
        for (int const second : numbers) {
            auto const bits = static_cast<unsigned>(first);
            ASSERT_EQ(message("%2!d!,%1!d!,%3!u!,%2!d!", first, second, bits),
                      std::to_string(second) + "," + std::to_string(first) + "," +
                          std::to_string(bits) + "," + std::to_string(second));
        }
}

TEST(FormatMessage, ManyLinesAndInsertsComeThrough) {
    std::string format;
    std::string expected;
    for (int line = 0; line < 200; ++line) {
        format += "%2!d!: %1\n";
        expected += "-7: x\r\n";
        EXPECT_EQ(message(format.c_str(), "x", -7), expected);
    }
}

TEST(FormatMessage, FormatAndArgumentsMayPointIntoTheResult) {
    for (char const* const start : {"%1", "%1 %1%n and more than there is room for in a string",
                                    "%1, %1!s!, %1!.2s!", "%1!s! %%1"}) {
        STR text(start);
        STL_ARG_LIST list;
        list.add(static_cast<char const*>(text.c_str()));
        std::string const expected = start + message(start, start);
        gen_formatmessage(text, text.c_str(), list.args());
        EXPECT_EQ(plain(text), expected);
    }
    STR text(1000, 'x');
    text.clear(); // with room of its own
    STL_ARG_LIST list;
    list.add(static_cast<char const*>(text.c_str()));
    gen_formatmessage(text, ("<%1>" + std::string(2000, 'y')).c_str(), list.args());
    EXPECT_EQ(plain(text), "<>" + std::string(2000, 'y'));
}
