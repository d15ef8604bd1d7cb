#include "gen_query.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

using testing::HasSubstr;

namespace {

std::string message(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "message");
    ProgramResult const result = run_gen_query(arguments);
    EXPECT_EQ(result.status, 0) << result.errors;
    return result.output;
}

std::string remarks(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "message");
    ProgramResult const result = run_gen_query(arguments);
    EXPECT_EQ(result.status, 0);
    return result.errors;
}

std::string complaint(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "message");
    ProgramResult const result = run_gen_query(arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.output, "");
    return result.errors;
}

} // namespace

TEST(GenQueryMessage, FillsInsertsWithArgumentsOfTheirKind) {
    EXPECT_EQ(message({"%2 and %1", "x", "y"}), "y and x\n");
    EXPECT_EQ(message({"%1!d! of %2!5.1f!, %4!c!, %3!s!", "-3", "2.25", "text", "c"}),
              "-3 of   2.2, c, text\n");
    EXPECT_EQ(message({"%1!#x! %2!lld! %3!ls!", "255", "-5000000000", "wide"}),
              "0xff -5000000000 wide\n");
    EXPECT_EQ(message({"%3", "not", "asked for", "third"}), "third\n");
}

TEST(GenQueryMessage, WideArgumentsAreUtf8) {
    EXPECT_EQ(message({"<%1!ls!> <%2!lc!> <%3!C!>", "gr\u00F6\u00DFe", "\u20AC", "c"}),
              "<gr\u00F6\u00DFe> <\u20AC> <c>\n");
    EXPECT_THAT(complaint({"%1!ls!", "\xFF"}), HasSubstr("%ls"));
    EXPECT_THAT(complaint({"%1!lc!", "\xC3"}), HasSubstr("%lc"));
    EXPECT_THAT(complaint({"%1!lc!", "ab"}), HasSubstr("%lc"));
}

TEST(GenQueryMessage, NumbersPastTheRangeOfDoubleAreRefused) {
    EXPECT_EQ(message({"%1!g! %2!g! %3!Lg!", "1e308", "inf", "1e400"}), "1e+308 inf 1e+400\n");
    EXPECT_EQ(message({"%1!g!", "1e-400"}), "0\n");
    EXPECT_THAT(complaint({"%1!g!", "1e400"}), HasSubstr("\"1e400\""));
    EXPECT_THAT(complaint({"%1!Lg!", "-1e5000"}), HasSubstr("\"-1e5000\""));
}

TEST(GenQueryMessage, NumbersAreDecimalUnlessTheyBeginWith0x) {
    EXPECT_EQ(message({"%1!d! %2!d! %3!d! %4!u! %5!p!", "010", "0x10", "-0X1f", "+007", "0x10"}),
              "10 16 -31 7 0x10\n");
    EXPECT_THAT(complaint({"%1!d!", "0x"}), HasSubstr("\"0x\""));
    EXPECT_THAT(complaint({"%1!d!", "1a"}), HasSubstr("\"1a\""));
    EXPECT_THAT(complaint({"%1!d!", " 1"}), HasSubstr("\" 1\""));
    EXPECT_THAT(complaint({"%1!d!", "-"}), HasSubstr("\"-\""));
}

TEST(GenQueryMessage, ArgumentOfSeveralConversionsIsOneForAll) {
    EXPECT_EQ(message({"%1!lld! %1!I64d!", "5"}), "5 \n");
    EXPECT_EQ(message({"%1!I64d! %1!lld! %1!I64u!", "5"}), " 5 \n");
    EXPECT_THAT(complaint({"%1!p! %1!n!", "0x10"}), HasSubstr("as its other conversions do"));
}

TEST(GenQueryMessage, NumbersFitTheirTypes) {
    EXPECT_EQ(message({"%1!d! %2!d! %3!u! %4!u!", "2147483647", "-2147483648", "4294967295", "-1"}),
              "2147483647 -2147483648 4294967295 4294967295\n");
    EXPECT_EQ(message({"%1!lld! %2!lld! %3!llu!", "9223372036854775807", "-9223372036854775808",
                       "18446744073709551615"}),
              "9223372036854775807 -9223372036854775808 18446744073709551615\n");
    complaint({"%1!d!", "-2147483649"});
    complaint({"%1!u!", "4294967296"});
    complaint({"%1!u!", "-2147483649"});
    complaint({"%1!lld!", "9223372036854775808"});
    complaint({"%1!llu!", "18446744073709551616"});
}

TEST(GenQueryMessage, ConversionsThatCannotBeUsedStepOverOneArgument) {
    EXPECT_EQ(message({"<%1!!> <%2!*d!> %3", "a", "b", "c"}), "<> <> c\n");
    EXPECT_EQ(message({"%1!!%2", "a", "b"}), "b\n");
    EXPECT_EQ(message({"<%1!I64d!> %2", "a", "b"}), "<> b\n");
    EXPECT_EQ(message({"<%1!n!> %2", "a", "b"}), "<> b\n");
}

TEST(GenQueryMessage, RemarksWhatPrintsNothing) {
    EXPECT_EQ(
        remarks({"%1!d items! %1!d!", "3"}),
        "gen_query: message: insert 1: \" items\" behind the conversion \"%d\" prints nothing\n");
    EXPECT_EQ(remarks({"%1!y!", "3"}), "gen_query: message: insert 1: \"%y\" prints nothing\n");
    EXPECT_EQ(remarks({"%1!5d! %2!ls!", "3", "w"}), "");
}

TEST(GenQueryMessage, ArgumentFitsAllConversionsOfItsNumber) {
    EXPECT_EQ(message({"%1!d! %1!x! %1!5d!", "255"}), "255 ff   255\n");
    EXPECT_EQ(message({"%1!c!%1!c!", "x"}), "xx\n");
    EXPECT_THAT(complaint({"%1!u! %1!d!", "4294967295"}),
                HasSubstr("argument 1, \"4294967295\", is nothing that %d can print as its other "
                          "conversions do"));
    EXPECT_THAT(complaint({"%1!c! %1!d!", "x"}), HasSubstr("that %d can"));
    EXPECT_THAT(complaint({"%1!c! %1!d!", "5"}), HasSubstr("that %d can"))
        << "the character 5 is 53";
}

TEST(GenQueryMessage, WideArgumentsAreJudgedByTheConversion) {
    EXPECT_EQ(message({"%1!c l!", "x"}), "x\n");
    EXPECT_EQ(message({"%1!hd l!", "7"}), "7\n");
    EXPECT_THAT(complaint({"%1!c l!", "\u20AC"}), HasSubstr("%c"));
}

TEST(GenQueryMessage, AsIsLeavesInsertsAlone) {
    EXPECT_EQ(message({"--as-is", "%1 and %%"}), "%1 and %%\n");
}

TEST(GenQueryMessage, ShowsWhichArgumentMeetsWhichConversion) {
    EXPECT_EQ(message({"--inserts", "%2!d! errors in %1", "top.v", "3"}),
              "insert  conversion  argument\n"
              "1       %s          top.v\n"
              "2       %d          3\n"
              "3 errors in top.v\n");
}

TEST(GenQueryMessage, JsonHasInsertsAndText) {
    nlohmann::json const expected = {
        {"inserts",
         {{{"insert", 1}, {"conversion", "%s"}, {"argument", "top.v"}},
          {{"insert", 3}, {"conversion", "%5.1f"}, {"argument", "2"}}}},
        {"text", "  2.0\r\ntop.v"},
    };
    EXPECT_EQ(nlohmann::json::parse(message({"--json", "%3!5.1f!\n%1", "top.v", "unused", "2"})),
              expected);
    EXPECT_EQ(nlohmann::json::parse(message({"--json", ""})),
              (nlohmann::json{{"inserts", nlohmann::json::array()}, {"text", ""}}));
}

TEST(GenQueryMessage, SaysWhatItCannotFill) {
    EXPECT_THAT(complaint({"%1 %2", "x"}), HasSubstr("argument 2 is missing"));
    EXPECT_THAT(complaint({"%1!d!", "three"}), HasSubstr("\"three\""));
    EXPECT_THAT(complaint({"%1!d!", "3 "}), HasSubstr("\"3 \""));
    EXPECT_THAT(complaint({"%1!d!", "2147483648"}), HasSubstr("2147483648"));
    EXPECT_THAT(complaint({"%1!c!", ""}), HasSubstr("%c"));
    EXPECT_THAT(complaint({"%1!d! %1!s!", "1"}), HasSubstr("different kinds of argument"));
    EXPECT_THAT(complaint({"%%1", "x"}), HasSubstr("%%"));
    EXPECT_THAT(complaint({"%1!" + std::string(5000, '-') + "d!", "1"}), HasSubstr("room"));
}

TEST(GenQueryMessage, RoomForConversionsIsThatOfTheExpander) {
    auto const format = [](std::size_t size) { return "%1!" + std::string(size - 2, '-') + "d!"; };
    EXPECT_EQ(message({format(4094), "1"}), "1\n") << "and a terminator";
    EXPECT_THAT(complaint({format(4095), "1"}), HasSubstr("room"));
    EXPECT_EQ(message({format(4091) + "%2", "1", "b"}), "1b\n");
    EXPECT_THAT(complaint({format(4092) + "%2", "1", "b"}), HasSubstr("room"));
}

TEST(GenQueryMessage, BracketsMakeNoList) {
    EXPECT_EQ(message({"[%1] %2", "[a,b]", "[]"}), "[[a,b]] []\n");
}

TEST(GenQueryMessage, RemarksWhatIsNotUsed) {
    EXPECT_EQ(remarks({"%1 and %3", "a", "b", "c", "d"}),
              "gen_query: message: argument 2, \"b\", is not used\n"
              "gen_query: message: argument 4, \"d\", is not used\n");
    EXPECT_EQ(remarks({"--as-is", "%1", "a"}),
              "gen_query: message: argument 1, \"a\", is not used\n");
    EXPECT_EQ(remarks({"%1!n!", "a"}), "gen_query: message: insert 1: \"%n\" prints nothing\n");
    EXPECT_EQ(remarks({"%1", "a"}), "");
}
