// What a handler of internal errors may do while a condition is rewritten, and strings of the
// parser's own as the expression.

#include "error_recorder.h"
#include "gen_bp_parser.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsNull;
using testing::SizeIs;

namespace {

std::function<void()> what_to_do;

/// Calls a function at each internal error.
class Handler {
  public:
    explicit Handler(std::function<void()> function)
        : m_previous(err_set_internal_error_handler(
              [](char const*, char const*, char const*, int) { what_to_do(); })) {
        what_to_do = std::move(function);
    }
    ~Handler() {
        err_set_internal_error_handler(m_previous);
        what_to_do = nullptr;
    }
    Handler(Handler const&) = delete;
    Handler& operator=(Handler const&) = delete;

  private:
    ERR_HANDLER m_previous;
};

/// The ")" too many is met when the left side has been written and words are still to come.
constexpr char const* early_report =
    "(a_path_longer_than_any_short_string = 1) || ~(another_path_longer_than_that) x_17)";
constexpr char const* early_report_output =
    "LOGICAL_OR(EQUAL_TO(HPATH(a_path_longer_than_any_short_string),BUS(1)),"
    "NOT(HPATH(another_path_longer_than_that)))";

} // namespace

TEST(ConditionHandler, MayAssignToTheCallersString) {
    for (char const* const replacement : {"", "short", "no_word_of_the_condition_that_is_parsed"}) {
        GEN_BP_PARSER parser;
        STR expression = early_report;
        std::size_t times = 0;
        {
            Handler const handler([&] {
                ++times;
                std::fill(expression.begin(), expression.end(), '#');
                STR(replacement).swap(expression);
            });
            parser.parse_string(&expression);
        }
        EXPECT_GT(times, 0U);
        EXPECT_EQ(expression, early_report_output);
    }
}

TEST(ConditionHandler, SeesAllThatWasWrittenBeforeItsReport) {
    GEN_BP_PARSER parser;
    std::vector<STR> seen;
    STR expression = "(a) || ~b)";
    {
        Handler const handler([&] { seen.push_back(parser.working_string()); });
        parser.parse_string(&expression);
    }
    EXPECT_THAT(seen, ElementsAre("LOGICAL_OR(HPATH(a),", "LOGICAL_OR(HPATH(a),NOT("));
}

TEST(ConditionHandler, FindsTheTokensEnteredBeforehandAndNoneOfTheExpression) {
    GEN_BP_PARSER parser;
    parser.add_token_to_list(BP_TOKEN_NOT, nullptr);
    std::vector<std::size_t> sizes;
    STR expression = "a)";
    {
        Handler const handler([&] {
            sizes.push_back(parser.token_list().size());
            EXPECT_EQ(parser.token_list().front()->type, BP_TOKEN_NOT);
        });
        parser.parse_string(&expression);
    }
    EXPECT_THAT(sizes, ElementsAre(1U, 1U));
    EXPECT_EQ(expression, "NOT(HPATH(a))");
    EXPECT_THAT(parser.token_list(), AllOf(SizeIs(3), Each(IsNull())));
}

TEST(ConditionHandler, MayChangeTheTokenList) {
    STR const text = "a_path_longer_than_any_short_string";
    GEN_BP_PARSER parser;
    parser.add_token_to_list(BP_TOKEN_HPATH, &text);
    STR expression = ") = 1";
    {
        Handler const handler([&] {
            delete parser.token_list().front();
            parser.token_list().pop_front();
            parser.add_token_to_list(BP_TOKEN_LITERAL, &text);
        });
        parser.parse_string(&expression);
    }
    EXPECT_EQ(expression, "HPATH(a_path_longer_than_any_short_string)");
    EXPECT_THAT(parser.token_list(), AllOf(SizeIs(4), Each(IsNull())));
}

TEST(ConditionHandler, MayChangeTheWorkingString) {
    GEN_BP_PARSER parser;
    STR expression = "(a) || b)";
    {
        Handler const handler(
            [&] { STR("<" + parser.working_string() + ">").swap(parser.working_string()); });
        parser.parse_string(&expression);
    }
    EXPECT_EQ(expression, "<LOGICAL_OR(HPATH(a),>HPATH(b))");
    EXPECT_EQ(parser.working_string(), expression);
}

TEST(ConditionHandler, MayParseWithTheSameParser) {
    GEN_BP_PARSER parser;
    STR const held = "a_path_longer_than_any_short_string";
    parser.add_token_to_list(BP_TOKEN_HPATH, &held);
    parser.add_token_to_list(BP_TOKEN_EQUAL, nullptr);
    STR expression = "b)";
    STR inner = "= c";
    bool is_first = true;
    {
        Handler const handler([&] {
            if (is_first) {
                is_first = false;
                parser.parse_string(&inner);
            }
        });
        parser.parse_string(&expression);
    }
    EXPECT_EQ(inner, "EQUAL_TO(HPATH(a_path_longer_than_any_short_string),)");
    EXPECT_THAT(parser.token_list(), AllOf(SizeIs(6), Each(IsNull())));
}

TEST(ConditionExpression, MayBeTheWorkingString) {
    GEN_BP_PARSER parser;
    parser.working_string() = "(a_path_longer_than_any_short_string = 1)";
    EXPECT_FALSE(parser.parse_string(&parser.working_string()));
    EXPECT_EQ(parser.working_string(),
              "EQUAL_TO(HPATH(a_path_longer_than_any_short_string),BUS(1))");
}

TEST(ConditionExpression, MayBeTheErrorText) {
    GEN_BP_PARSER parser;
    STR expression = "=";
    parser.parse_string(&expression);
    // "Missing left hand side of equation" is one word with the blanks gone. The error text is the
    // prefix form then, which is not empty.
    EXPECT_TRUE(parser.parse_string(const_cast<STR*>(&parser.error_text())));
    EXPECT_EQ(parser.working_string(), "HPATH(Missinglefthandsideofequation)");
    EXPECT_EQ(parser.error_text(), parser.working_string());
}

TEST(ConditionExpression, MayBeTheTextOfATokenOfTheList) {
    for (char const* const text : {"b", "another_path_longer_than_any_short_string"}) {
        GEN_BP_PARSER parser;
        STR const word = text;
        parser.add_token_to_list(BP_TOKEN_HPATH, &word);
        parser.add_token_to_list(BP_TOKEN_EQUAL, nullptr);
        EXPECT_FALSE(parser.parse_string(&parser.token_list().front()->text));
        EXPECT_EQ(parser.working_string(), "EQUAL_TO(HPATH(" + word + "),HPATH(" + word + "))");
    }
}

TEST(ConditionExpression, WordsAndTextsMayBeTheParsersOwn) {
    GEN_BP_PARSER parser;
    parser.working_string() = "a_path_longer_than_any_short_string";
    parser.process_token_contents(&parser.working_string());
    EXPECT_EQ(parser.working_string(), "");
    BP_TOKEN* const first = parser.token_list().front();
    for (int times = 0; times < 3; ++times)
        parser.add_token_to_list(BP_TOKEN_HPATH, &parser.token_list().back()->text);
    EXPECT_EQ(parser.token_list().back()->text, first->text);
    parser.process_token_contents(&first->text);
    EXPECT_EQ(first->text, "");
    EXPECT_EQ(parser.token_list().back()->text, "a_path_longer_than_any_short_string");
    STR nothing;
    parser.parse_string(&nothing);
}
