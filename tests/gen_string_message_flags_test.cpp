#include "error_recorder.h"
#include "gen_string_message.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

using testing::ElementsAre;

namespace {

unsigned long formatmessage(unsigned long flags, char const* source, char* buffer,
                            unsigned long size, ...) {
    va_list args;
    va_start(args, size);
    unsigned long const result =
        gen_formatmessage(flags, source, 17, 4711, buffer, size, STL_ARGS(args));
    va_end(args);
    return result;
}

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
    ASSERT_EQ(recorder.errors().size(), 2U) << "both are reported, the missing source first";
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

Allocated allocate(char const* format, unsigned long size, char const* argument,
                   unsigned long more_flags = 0) {
    char* block = const_cast<char*>("neither null nor allocated");
    unsigned long const length =
        formatmessage(from_string | FORMAT_MESSAGE_ALLOCATE_BUFFER | more_flags, format,
                      reinterpret_cast<char*>(static_cast<void*>(&block)), size, argument);
    return {length, {block, &std::free}};
}

} // namespace

TEST(FormatMessageBuffer, AllocatedContainsTheWholeString) {
    Allocated const exact = allocate("<%1>", 0, "01234567");
    EXPECT_EQ(exact.length, 10U);
    EXPECT_STREQ(exact.block.get(), "<01234567>");
    Allocated const same = allocate("<%1>", 10, "01234567");
    EXPECT_EQ(same.length, 10U);
    EXPECT_STREQ(same.block.get(), "<01234567>");
}

TEST(FormatMessageBuffer, AllocatedContainsWhatIsCopied) {
    Allocated const copied = allocate("%1\n", 5, "text", FORMAT_MESSAGE_IGNORE_INSERTS);
    EXPECT_EQ(copied.length, 5U);
    EXPECT_EQ(std::string(copied.block.get(), 6), std::string("%1\n\0\0\0", 6));
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

TEST(FormatMessageFlags, BufferMayContainTheSourceAndTheArguments) {
    for (unsigned long const flags : {from_string, from_string | FORMAT_MESSAGE_IGNORE_INSERTS}) {
        char buffer[64] = "<%1 %1!.2s!>";
        STL_ARG_LIST list;
        list.add(static_cast<char const*>(buffer));
        unsigned long const length =
            gen_formatmessage(flags, buffer, 0, 0, buffer, sizeof buffer, list.args());
        char const* const expected = flags == from_string ? "<<%1 %1!.2s!> <%>" : "<%1 %1!.2s!>";
        EXPECT_STREQ(buffer, expected);
        EXPECT_EQ(length, std::strlen(expected));
    }
}
