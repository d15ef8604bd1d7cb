#include "gen_bp_parser.h"

#include "error_recorder.h"
#include "probe.h"
#include "test_directories.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <type_traits>

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::SizeIs;

static_assert(!std::is_polymorphic_v<GEN_BP_PARSER>);
static_assert(!std::is_copy_constructible_v<GEN_BP_PARSER>, "two lists would own one record");

namespace {

std::string parse(GEN_BP_PARSER& parser, char const* text) {
    STR expression = text;
    parser.parse_string(&expression);
    EXPECT_EQ(parser.working_string(), expression);
    return std::string(expression);
}

} // namespace

TEST(ConditionParser, BeginsWithoutTokensAndTexts) {
    GEN_BP_PARSER parser;
    EXPECT_THAT(parser.token_list(), IsEmpty());
    EXPECT_EQ(parser.working_string(), "");
    EXPECT_EQ(parser.error_text(), "");
}

TEST(ConditionParser, ReplacesTheExpressionAlsoAfterErrors) {
    GEN_BP_PARSER parser;
    STR expression = "a = ";
    EXPECT_TRUE(parser.parse_string(&expression));
    EXPECT_EQ(expression, "EQUAL_TO(HPATH(a),)");
    EXPECT_EQ(parser.working_string(), "EQUAL_TO(HPATH(a),)");

    GEN_BP_PARSER another;
    expression = "a = (";
    EXPECT_TRUE(another.parse_string(&expression));
    EXPECT_EQ(expression, "");
}

TEST(ConditionParser, LeavesANullEntryForEveryToken) {
    GEN_BP_PARSER parser;
    parse(parser, "(|top|a = 1) && (time > 10ns)");
    EXPECT_THAT(parser.token_list(), AllOf(SizeIs(11), Each(IsNull())));
}

TEST(ConditionParser, SpendsNothingOnEntriesThatNobodySees) {
    std::string const text = std::string(5000, '(') + "a" + std::string(5000, ')');
    GEN_BP_PARSER parser;
    std::size_t const before = MEM_MANAGER::s_system_memory_counter.current();
    EXPECT_EQ(parse(parser, text.c_str()), "HPATH(a)");
    EXPECT_LT(MEM_MANAGER::s_system_memory_counter.current() - before, text.size() + 1000);
    EXPECT_THAT(parser.token_list(), AllOf(SizeIs(10001), Each(IsNull())));
}

TEST(ConditionParser, LeavesTheRecordsOfItsListWhenItGoes) {
    BP_TOKEN* token = nullptr;
    {
        GEN_BP_PARSER parser;
        STR const text = "a_path_longer_than_any_short_string";
        parser.add_token_to_list(BP_TOKEN_HPATH, &text);
        token = parser.token_list().front();
    }
    EXPECT_EQ(token->type, BP_TOKEN_HPATH);
    EXPECT_EQ(token->text, "a_path_longer_than_any_short_string");
    delete token;
}

TEST(ConditionParser, TakesRoomForWhatIsThereAndNotForWhatTheBeginningPromises) {
    // Each has a parenthesis to report, so that memory can be looked at half-way.
    static std::size_t half_way = 0;
    struct Row {
        std::string text;
        std::size_t most; // bytes a character half-way
    };
    constexpr std::size_t length = 1'000'000;
    Row const rows[] = {{std::string(4096, ')') + std::string(length, 'a'), 4},
                        {")" + std::string(length, '='), 40}};
    for (Row const& row : rows) {
        half_way = 0;
        ERR_HANDLER const previous =
            err_set_internal_error_handler([](char const*, char const*, char const*, int) {
                half_way = MEM_MANAGER::s_system_memory_counter.current();
            });
        std::size_t const before = MEM_MANAGER::s_system_memory_counter.current();
        GEN_BP_PARSER parser;
        parse(parser, row.text.c_str());
        err_set_internal_error_handler(previous);
        EXPECT_GT(half_way, before + length);
        EXPECT_LT(half_way, before + row.most * length);
    }
}

TEST(ConditionParser, CompletesAListTakenBeforehand) {
    GEN_BP_PARSER parser;
    MEM_LIST<BP_TOKEN*> const& list = parser.token_list();
    parse(parser, "a = b");
    EXPECT_THAT(list, AllOf(SizeIs(3), Each(IsNull())));
    parse(parser, "~c");
    EXPECT_THAT(list, AllOf(SizeIs(5), Each(IsNull())));
}

TEST(ConditionParser, EntersNewTokensBehindTheEmptiedOnes) {
    GEN_BP_PARSER parser;
    parse(parser, "a = b");
    parser.add_token_to_list(BP_TOKEN_TIME, nullptr);
    ASSERT_THAT(parser.token_list(), SizeIs(4));
    EXPECT_THAT(parser.token_list().front(), IsNull());
    ASSERT_NE(parser.token_list().back(), nullptr);
    EXPECT_EQ(parser.token_list().back()->type, BP_TOKEN_TIME);
    parse(parser, "");
    EXPECT_THAT(parser.token_list(), AllOf(SizeIs(4), Each(IsNull())));
}

TEST(ConditionParser, RewritesAndFreesTheTokensThatItFindsInFrontOfTheExpression) {
    GEN_BP_PARSER parser;
    STR const text = "clk";
    parser.add_token_to_list(BP_TOKEN_HPATH, &text);
    parser.add_token_to_list(BP_TOKEN_EQUAL, nullptr);
    EXPECT_EQ(parse(parser, "1"), "EQUAL_TO(HPATH(clk),BUS(1))");
    EXPECT_EQ(parser.error_text(), "");
    EXPECT_THAT(parser.token_list(), AllOf(SizeIs(3), Each(IsNull())));
}

TEST(ConditionParser, TokensTakenBeforehandFromTheWorkingStringCountToo) {
    GEN_BP_PARSER parser;
    parser.working_string() = "(|top|a = 1) &&";
    parser.tokenize_string();
    EXPECT_EQ(parse(parser, "(b)"), "LOGICAL_AND(EQUAL_TO(HPATH(|top|a),BUS(1)),HPATH(b))");
    EXPECT_THAT(parser.token_list(), AllOf(SizeIs(9), Each(IsNull())));
}

TEST(ConditionParser, ARecordOfTheCallersOwnIsFreedToo) {
    GEN_BP_PARSER parser;
    parser.token_list().push_back(
        new BP_TOKEN{BP_TOKEN_BUS, "a text too long to lie in the string"});
    EXPECT_EQ(parse(parser, ""), "BUS(a text too long to lie in the string)");
}

TEST(ConditionParser, ASecondCallSeesOnlyItsOwnTokensButTheErrorsOfBoth) {
    GEN_BP_PARSER parser;
    EXPECT_EQ(parse(parser, "a ="), "EQUAL_TO(HPATH(a),)");
    STR expression = "= b";
    EXPECT_TRUE(parser.parse_string(&expression));
    EXPECT_EQ(expression, "");
    EXPECT_EQ(parser.error_text(), "Missing right hand side of equation\n"
                                   "Missing left hand side of equation\n");
    expression = "c";
    EXPECT_TRUE(parser.parse_string(&expression)) << "errors are never forgotten";
    EXPECT_EQ(expression, "HPATH(c)");
    EXPECT_THAT(parser.token_list(), AllOf(SizeIs(5), Each(IsNull())));
}

TEST(ConditionParser, NoExpressionIsReportedAndChangesNothing) {
    ErrorRecorder recorder;
    GEN_BP_PARSER parser;
    parser.working_string() = "untouched";
    EXPECT_FALSE(parser.parse_string(nullptr));
    EXPECT_THAT(recorder.conditions(), ElementsAre("expression != NULL"));
    EXPECT_EQ(parser.working_string(), "untouched");
    EXPECT_EQ(parser.error_text(), "");
}

TEST(ConditionParser, NoExpressionAnswersForEarlierErrorsToo) {
    ErrorRecorder recorder;
    GEN_BP_PARSER parser;
    parse(parser, "a =");
    EXPECT_TRUE(parser.parse_string(nullptr));
    EXPECT_THAT(recorder.conditions(), ElementsAre("expression != NULL"));
}

TEST(ConditionParser, ReportsCarryOwnerAndSource) {
    ErrorRecorder recorder;
    GEN_BP_PARSER parser;
    parse(parser, ")");
    ASSERT_THAT(recorder.errors(), SizeIs(1));
    EXPECT_EQ(recorder.errors()[0].condition, "paren_count >= 0");
    EXPECT_EQ(recorder.errors()[0].owner, "GEN");
    EXPECT_EQ(recorder.errors()[0].source_file, "gen_bp_parser");
}

TEST(ConditionParser, ARecordThatCannotBeHadIsReported) {
    ProgramStart start;
    start.arguments = {TEST_BINARY_DIR "/condition_memory_probe"};
    ProgramResult const result = run_program(start);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "new_token != 0 (GEN, gen_bp_parser)\n"
                             "1 of 2 tokens\n");
}
