// What "gen_query text" makes of numbers, names and texts. Sorting and comparing have their tests
// where all of gen_query's do.

#include "gen_query.h"
#include "temp_directory.h"
#include "test_locale.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

ProgramResult text(std::vector<std::string> arguments, std::string const& input = "") {
    arguments.insert(arguments.begin(), "text");
    ProgramStart start;
    start.input = input;
    return run_gen_query(arguments, start);
}

} // namespace

TEST(GenQueryText, AnswersAsJson) {
    struct Row {
        std::vector<std::string> arguments;
        char const* json;
        int status = 0;
    };
    Row const rows[] = {
        {{"number", "--radix", "16", "--", "-255ns"},
         R"({"value": -255, "digits": "ffffff01", "radix": 16, "unread": "ns"})"},
        {{"number", "x"},
         R"({"value": null, "digits": null, "radix": 10, "unread": "x",
             "error": "'x' begins with no integer"})",
         1},
        {{"real", "1", "x"},
         R"({"numbers": [{"text": "1", "value": 1.0, "unread": ""},
                         {"text": "x", "value": null, "unread": "x"}],
             "error": "'x' begins with no number"})",
         1},
        {{"fold", "Ab", "c"}, R"({"texts": ["ab", "c"]})"},
        {{"trim", " a "}, R"({"texts": ["a"]})"},
        {{"wildcard", "a*", "ab", "b"}, R"({"expression": "^[aA].*$", "matches": ["ab"]})"},
        {{"wildcard", "a*", "b"}, R"({"expression": "^[aA].*$", "matches": []})", 1},
        {{"sanitise", "a b"}, R"({"names": ["a_b"]})"},
        {{"checksum", "abc"}, R"({"hexadecimal": "0x2f8db6b8", "decimal": 797816504})"},
        {{"hash-size", "100"}, R"({"sizes": [127]})"},
        {{"hash-size", "4294967292"},
         R"({"sizes": [null], "error": "there is no size above 4294967291"})",
         1},
    };
    for (Row row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        row.arguments.insert(row.arguments.begin() + 1, "--json");
        ProgramResult const result = text(row.arguments);
        EXPECT_EQ(nlohmann::json::parse(result.output, nullptr, false),
                  nlohmann::json::parse(row.json));
        EXPECT_EQ(result.status, row.status);
    }
}

TEST(GenQueryText, AnswersOnStandardOutput) {
    struct Row {
        std::vector<std::string> arguments;
        std::string output;
        int status = 0;
    };
    Row const rows[] = {
        {{"number", "42"}, "value   42\ndigits  42\nunread  -\n"},
        {{"number", "--radix", "16", "--", "-255 ns"},
         "value   -255\ndigits  ffffff01\nunread   ns\n"},
        {{"number", "4294967297"}, "value   1\ndigits  1\nunread  -\n"},
        {{"fold", "Top.V", "\xC3\x84"}, "top.v\n\xC3\x84\n"},
        {{"fold", "--upper", "Top.v"}, "TOP.V\n"},
        {{"trim", "  a  b ", "\tc"}, "a  b\n\tc\n"},
        {{"trim", "-w", "\r\n\tc "}, "c\n"},
        {{"sanitise", "a b.v  ", "u1/q[3]"}, "a_bLv\nu1IqO3N\n"},
        {{"wildcard", "a*.v"}, "expression  ^[aA].*\\.[vV]$\n"},
        {{"wildcard", "--part", "file?(1)"}, "expression  [fF][iI][lL][eE].?\\(1\\)\n"},
        {{"wildcard", "a*.v", "alu.v", "top.v", "ADD.V"},
         "expression  ^[aA].*\\.[vV]$\nmatches     alu.v\n            ADD.V\n"},
        {{"wildcard", "a{2,3}", "Aa", "a"}, "expression  ^[aA]{2,3}$\nmatches     Aa\n"},
        {{"checksum", "abc"}, "hexadecimal  0x2f8db6b8\ndecimal      797816504\n"},
        {{"checksum", ""}, "hexadecimal  0x00000000\ndecimal      0\n"},
        {{"hash-size", "0", "14"}, "13\n31\n"},
    };
    for (Row const& row : rows) {
        ProgramResult const result = text(row.arguments);
        EXPECT_EQ(result.output, row.output) << row.arguments[0];
        EXPECT_EQ(result.status, row.status) << row.arguments[0];
        EXPECT_THAT(result.errors, IsEmpty()) << row.arguments[0];
    }
}

TEST(GenQueryText, NoMatchIsStatusOne) {
    EXPECT_EQ(text({"wildcard", "a*.v", "top.v"}).status, 1);
    EXPECT_EQ(text({"wildcard", "a*.v", "ab.v.old"}).status, 1);
    EXPECT_EQ(text({"wildcard", "--part", "a*.v", "ab.v.old"}).status, 0);
}

TEST(GenQueryText, WhatCannotBeUsedIsSaid) {
    struct Row {
        std::vector<std::string> arguments;
        char const* complaint;
        int status = 2;
    };
    Row const rows[] = {
        {{"wildcard", "a{", "a"}, "no valid expression"},
        {{"wildcard", std::string(3000, '*'), "a"}, "too large to be matched"},
        {{"wildcard", "a{1,32000}{32000}", "a"}, "too large to be matched"},
        {{"wildcard", "a{99999999999999999999}", "a"}, "too large to be matched"},
        {{"checksum", "--file", "/no/such/file"}, "'/no/such/file': No such file"},
        {{"checksum", "--file", "/"}, "cannot read '/': Is a directory"},
        {{"checksum", "--file", "/dev/null", "abc"}, "--help"},
        {{"fold", "--locale", "no_such_locale", "a"}, "no locale \"no_such_locale\""},
        {{"number", "--radix", "37", "1"}, "--help"},
        {{"number", "--radix", "1", "1"}, "--help"},
        {{"hash-size", "4294967296"}, "--help"},
        {{"hash-size", "-1"}, "--help"},
        {{"hash-size", "4294967292"}, "no size above 4294967291", 1},
        {{"number", "--", "-"}, "'-' begins with no integer", 1},
    };
    for (Row const& row : rows) {
        ProgramResult const result = text(row.arguments);
        EXPECT_EQ(result.status, row.status) << row.complaint;
        EXPECT_THAT(result.errors, HasSubstr(row.complaint));
    }
}

TEST(GenQueryTextChecksum, ReadsAFileAndStandardInput) {
    TempDirectory const directory;
    std::string const abc = text({"checksum", "abc"}).output;
    EXPECT_EQ(text({"checksum"}, "abc").output, abc);
    EXPECT_EQ(text({"checksum", "--file", directory.write("file", "abc")}).output, abc);
    EXPECT_NE(text({"checksum"}, "abc\n").output, abc);
    EXPECT_EQ(text({"checksum"}, "").output, text({"checksum", ""}).output);

    std::string const large(3'000'000, 'x');
    EXPECT_EQ(text({"checksum"}, large).output,
              text({"checksum", "--file", directory.write("large", large)}).output);
}

TEST(GenQueryTextChecksum, SanitisesFirstWhenAsked) {
    EXPECT_EQ(text({"checksum", "--sanitise", "a b.v  "}).output,
              text({"checksum", "a_bLv"}).output);
}

TEST(GenQueryTextChecksum, ANulByteIsSaid) {
    ProgramResult const result = text({"checksum"}, std::string("a\0b", 3));
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.errors, HasSubstr("NUL byte"));
    EXPECT_THAT(result.output, IsEmpty());
}

TEST(GenQueryTextFold, FollowsTheLocaleThatIsNamed) {
    TestLocale const locale;
    if (!locale.trouble().empty())
        GTEST_SKIP() << locale.trouble();
    EXPECT_EQ(text({"fold", "A\xC4"}).output, "a\xC4\n");
    EXPECT_EQ(text({"fold", "--locale", TestLocale::name, "A\xC4"}).output, "a\xE4\n");
    EXPECT_EQ(text({"fold", "-u", "-l", TestLocale::name, "a\xE4"}).output, "A\xC4\n");
}

TEST(GenQueryText, RealNumbersAreReadAlikeInEveryLocale) {
    TestLocale const locale;
    if (!locale.trouble().empty())
        GTEST_SKIP() << locale.trouble();
    EXPECT_EQ(text({"real", "--locale", TestLocale::name, "1.5", "1,5"}).output,
              "text  value  unread  value in locale  unread in locale\n"
              "1.5   1.5    -       1                .5\n"
              "1,5   1      ,5      1.5              -\n");
}

TEST(GenQueryText, ClassesAreThoseOfAsciiBesideThoseOfTheLocale) {
    TestLocale const locale;
    if (!locale.trouble().empty())
        GTEST_SKIP() << locale.trouble();
    ProgramResult const result = text({"class", "--json", "--locale", TestLocale::name, "a\xC4"});
    auto const bytes = nlohmann::json::parse(result.output)["bytes"];
    ASSERT_EQ(bytes.size(), 2U);
    nlohmann::json const small_letter = {"alnum", "alpha", "graph", "lower", "print", "xdigit"};
    EXPECT_EQ(bytes[0]["classes"], small_letter);
    EXPECT_EQ(bytes[0]["classes_in_locale"], small_letter);
    EXPECT_EQ(bytes[1]["classes"], nlohmann::json::array());
    EXPECT_EQ(bytes[1]["classes_in_locale"],
              (nlohmann::json{"alnum", "alpha", "graph", "print", "upper"}));
}

TEST(GenQueryText, NumbersOfOptionsAreDecimalToo) {
    EXPECT_EQ(text({"number", "--radix", "020", "10"}).output,
              text({"number", "--radix", "20", "10"}).output);
    EXPECT_EQ(text({"hash-size", "015"}).output, text({"hash-size", "15"}).output);
    EXPECT_EQ(text({"number", "--radix", "0x10", "1f"}).output,
              text({"number", "--radix", "16", "1f"}).output);
}

TEST(GenQueryText, BracketsMakeNoList) {
    EXPECT_EQ(text({"fold", "[A]", "[]"}).output, "[a]\n[]\n");
    EXPECT_EQ(text({"trim", " [x] ", "[a,b]"}).output, "[x]\n[a,b]\n");
    EXPECT_EQ(text({"sanitise", "[x]"}).output, "OxN\n");
    EXPECT_EQ(text({"wildcard", "*", "[x]", "[a,b]"}).output, "expression  ^.*$\n"
                                                              "matches     [x]\n"
                                                              "            [a,b]\n");
}
