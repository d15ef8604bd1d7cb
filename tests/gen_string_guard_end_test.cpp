// Buffers that are filled to their ends, and formats and names that end beside a page that may not
// be touched.

#include "gen_string.h"
#include "gen_string_guard.h"
#include "low_text.h"
#include "sanitizer.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

TEST(Guard, NumbersFillTheirBuffersAndNoMore) {
    for (int const radix : {2, 3, 8, 10, 16, 36})
        for (unsigned shift = 0; shift < 64; ++shift) {
            auto const number = static_cast<unsigned long>(UINT64_MAX >> shift);
            auto const value = static_cast<int>(number);
            STR const text = gen_itoa(value, radix);
            EXPECT_EQ(gen_itoa(value, room_for(text.size() + 1), radix), text);
            char enough[70];
            std::size_t const size = std::strlen(gen_ultoa(number, enough, radix)) + 1;
            EXPECT_STREQ(gen_ultoa(number, room_for(size), radix), enough);
        }
}

TEST(Guard, SpacesAreCutOffUpToTheFront) {
    for (std::size_t length = 0; length <= longest; length += length_step)
        place_everywhere(std::string(length, ' '), [](char* name) {
            std::string const spaces = name;
            ASSERT_EQ(gen_crc_string_to_dword(name), 0);
            ASSERT_STREQ(name, "");
            std::strcpy(name, spaces.c_str());
            gen_replace_invalid_chars(name);
            ASSERT_STREQ(name, "");
        });
}

// What is half written at the end of a format looks for more of it.
TEST(Guard, FormatsMayEndInTheMiddleOfAnInsert) {
    for (std::string const end :
         {"%",    "%%",    "%0",   "%1",   "%12",   "%1!",  "%1!-5", "%1!5.",  "%1!I6",
          "%1!h", "%1!ll", "%1!*", "%1!d", "%1!d!", "%1!!", "%%1",   "%%%1!d", "%1!d!%1!s!%%2!",
          "\r",   "\r\n",  "\n"})
        for (std::size_t length = 0; length <= longest; length += 13 * length_step) {
            std::string const format = some_text(length, false) + end;
            STR message;
            gen_formatmessage(message, format.c_str(), nullptr);
            place_everywhere(format, [&](char const* placed) {
                STR placed_message;
                gen_formatmessage(placed_message, placed, nullptr);
                ASSERT_EQ(placed_message, message);
            });
        }
}

TEST(Guard, PrintfFormatsMayEndInTheMiddleOfAConversion) {
    SKIP_UNDER_SANITIZER();
    LowText const argument;
    if (argument.text() == nullptr)
        GTEST_SKIP() << "the system keeps low addresses to itself";
    STL_ARG_LIST arguments;
    for (int i = 0; i < 8; ++i)
        arguments.add(argument.text());
    for (std::string const end : {"%", "%%", "%-", "%5", "%5.", "%*", "%*.", "%1", "%1$", "%h",
                                  "%ll", "%I6", "%I64", "%w3", "%s", "%n", "%1$n", "%wf32n"})
        for (std::size_t length = 0; length <= longest; length += 13 * length_step) {
            std::string const format = some_text(length, false) + end;
            STR text;
            int const count = gen_vsprintf(&text, format.c_str(), arguments.args());
            place_everywhere(format, [&](char const* placed) {
                STR placed_text;
                ASSERT_EQ(gen_vsprintf(&placed_text, placed, arguments.args()), count);
                ASSERT_EQ(placed_text, text);
            });
        }
}
