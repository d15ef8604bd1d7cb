#include "error_recorder.h"
#include "gen_bp_parser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <utility>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Tokens = std::vector<std::pair<int, std::string>>;

/// What is in the list; its records are freed.
Tokens take_tokens(GEN_BP_PARSER& parser) {
    Tokens tokens;
    for (BP_TOKEN const* token : parser.token_list())
        tokens.emplace_back(token->type, token->text);
    ErrorRecorder ignored;
    STR nothing;
    parser.parse_string(&nothing);
    return tokens;
}

Tokens tokenize(std::string const& text) {
    GEN_BP_PARSER parser;
    parser.working_string() = text;
    parser.tokenize_string();
    EXPECT_EQ(parser.working_string(), STR(text)) << "the working string is only read";
    return take_tokens(parser);
}

std::pair<int, std::string> token(int type, std::string text = "") {
    return {type, std::move(text)};
}

std::pair<int, std::string> path(std::string text) {
    return {BP_TOKEN_HPATH, std::move(text)};
}

std::pair<int, std::string> bus(std::string text) {
    return {BP_TOKEN_BUS, std::move(text)};
}

std::pair<int, std::string> literal(std::string text) {
    return {BP_TOKEN_LITERAL, std::move(text)};
}

} // namespace

TEST(ConditionTokens, TypesHaveTheirFixedNumbers) {
    EXPECT_EQ(sizeof(BP_TOKEN_TYPE), 4U);
    EXPECT_EQ(BP_TOKEN_LITERAL, 0);
    EXPECT_EQ(BP_TOKEN_HPATH, 1);
    EXPECT_EQ(BP_TOKEN_BUS, 2);
    EXPECT_EQ(BP_TOKEN_AND, 3);
    EXPECT_EQ(BP_TOKEN_OR, 4);
    EXPECT_EQ(BP_TOKEN_EQUAL, 5);
    EXPECT_EQ(BP_TOKEN_GREATER, 6);
    EXPECT_EQ(BP_TOKEN_LESS, 7);
    EXPECT_EQ(BP_TOKEN_NOT, 8);
    EXPECT_EQ(BP_TOKEN_TIME, 9);
    EXPECT_EQ(BP_TOKEN_LEFT_PAREN, 10);
    EXPECT_EQ(BP_TOKEN_RIGHT_PAREN, 11);
}

TEST(ConditionTokens, AConditionBecomesItsTokensInOrder) {
    EXPECT_THAT(tokenize("(|top|a = 1) && (time > 10ns)"),
                ElementsAre(token(10), path("|top|a"), token(5), bus("1"), token(11), token(3),
                            token(10), token(9), token(6), literal("10ns"), token(11)));
}

TEST(ConditionTokens, NothingToReadGivesNoTokens) {
    EXPECT_THAT(tokenize(""), IsEmpty());
    EXPECT_THAT(tokenize(" \t\n\r\v\f"), IsEmpty());
    EXPECT_THAT(tokenize(std::string("\0\x01\x1f\x7f\x80\xff", 6)), IsEmpty());
}

TEST(ConditionTokens, OneWordHasTheTypeOfItsFirstAndLastCharacter) {
    struct Row {
        char const* text;
        std::pair<int, std::string> expected;
    };
    Row const rows[] = {
        // A letter or "|" in front makes a path, whatever follows.
        {"a", path("a")},
        {"Z9", path("Z9")},
        {"b01", path("b01")},
        {"|a", path("|a")},
        {"|", path("|")},
        {"|top|sub|sig", path("|top|sub|sig")},
        {"top|sub", path("top|sub")},
        {"a||b", path("a||b")},
        {"a||", path("a||")},
        {"a&&b", path("a&&b")},
        {"a&b", path("a&b")},
        {"x[3]", path("x[3]")},
        {"a_$.\"%'", path("a_$.\"%'")},
        // Otherwise a letter at the end makes a literal.
        {"1ns", literal("1ns")},
        {"10ns", literal("10ns")},
        {"_a", literal("_a")},
        {"&a", literal("&a")},
        {"1|a", literal("1|a")},
        {"@Z", literal("@Z")},
        {"[z", literal("[z")},
        {"`a", literal("`a")},
        {"{a", literal("{a")},
        // Everything else is a bus.
        {"1", bus("1")},
        {"0101", bus("0101")},
        {"'b01", bus("'b01")},
        {"&", bus("&")},
        {"1&&", bus("1&&")},
        {"1||", bus("1||")},
        {"!@#$%^*", bus("!@#$%^*")},
        {"1@", bus("1@")},
        {"1[", bus("1[")},
        {"1`", bus("1`")},
        {"1{", bus("1{")},
        {"}", bus("}")},
        // The words that are no words.
        {"&&", token(BP_TOKEN_AND)},
        {"||", token(BP_TOKEN_OR)},
        {"time", token(BP_TOKEN_TIME)},
        {"TIME", token(BP_TOKEN_TIME)},
        {"Time", token(BP_TOKEN_TIME)},
        {"tImE", token(BP_TOKEN_TIME)},
        {"time1", path("time1")},
        {"tim", path("tim")},
        {"timf", path("timf")},
        {"1time", literal("1time")},
        {"|time", path("|time")},
    };
    for (Row const& row : rows)
        EXPECT_THAT(tokenize(row.text), ElementsAre(row.expected)) << row.text;
}

TEST(ConditionTokens, SymbolsStandForThemselvesHoweverTheyAreRepeated) {
    EXPECT_THAT(tokenize("()=><~"),
                ElementsAre(token(10), token(11), token(5), token(6), token(7), token(8)));
    EXPECT_THAT(tokenize("=="), ElementsAre(token(5), token(5)));
    EXPECT_THAT(tokenize(">="), ElementsAre(token(6), token(5)));
    EXPECT_THAT(tokenize("~~a"), ElementsAre(token(8), token(8), path("a")));
}

TEST(ConditionTokens, BlanksVanishWithoutEndingAWord) {
    EXPECT_THAT(tokenize("a b"), ElementsAre(path("ab")));
    EXPECT_THAT(tokenize("x && y"), ElementsAre(path("x&&y")));
    EXPECT_THAT(tokenize("a || b"), ElementsAre(path("a||b")));
    EXPECT_THAT(tokenize("1 0 n s"), ElementsAre(literal("10ns")));
    EXPECT_THAT(tokenize("t i\tm\ne"), ElementsAre(token(BP_TOKEN_TIME)));
    EXPECT_THAT(tokenize("& &"), ElementsAre(token(BP_TOKEN_AND)));
    EXPECT_THAT(tokenize("| |a"), ElementsAre(token(BP_TOKEN_OR), path("a")));
    EXPECT_THAT(tokenize("  a  =  b  "), ElementsAre(path("a"), token(5), path("b")));
}

TEST(ConditionTokens, ControlCharactersAndBytesFrom127UpVanish) {
    EXPECT_THAT(tokenize("a\x7f"
                         "b"),
                ElementsAre(path("ab")));
    EXPECT_THAT(tokenize("s\xc3\xa4ge"), ElementsAre(path("sge")));
    EXPECT_THAT(tokenize("\xff(\x80"
                         "1\x01)"),
                ElementsAre(token(10), bus("1"), token(11)));
    EXPECT_THAT(tokenize(std::string("a\0b", 3)), ElementsAre(path("ab")));
    for (int code = 0; code < 256; ++code) {
        bool const skipped = code <= 32 || code >= 127;
        Tokens const tokens = tokenize(std::string(1, static_cast<char>(code)));
        EXPECT_EQ(tokens.empty(), skipped) << code;
    }
}

TEST(ConditionTokens, DoubledSignsAreOneTokenAtTheStartOfAWordOnly) {
    EXPECT_THAT(tokenize(")&&("), ElementsAre(token(11), token(3), token(10)));
    EXPECT_THAT(tokenize("=||a"), ElementsAre(token(5), token(4), path("a")));
    EXPECT_THAT(tokenize("&&a&&b"), ElementsAre(token(3), path("a&&b")));
    EXPECT_THAT(tokenize("&&&&"), ElementsAre(token(3), token(3)));
    EXPECT_THAT(tokenize("&&&"), ElementsAre(token(3), bus("&")));
    EXPECT_THAT(tokenize("|||"), ElementsAre(token(4), path("|")));
    EXPECT_THAT(tokenize("|||a"), ElementsAre(token(4), path("|a")));
    EXPECT_THAT(tokenize("||&&"), ElementsAre(token(4), token(3)));
    EXPECT_THAT(tokenize("&|"), ElementsAre(bus("&|")));
    EXPECT_THAT(tokenize("|&"), ElementsAre(path("|&")));
    EXPECT_THAT(tokenize("&|&&"), ElementsAre(bus("&|&&")));
}

TEST(ConditionTokens, WordsAreReadAlikeWhereverTheyStandAndWhereverTheyAreCut) {
    // Every place relative to the blocks in which the string is read, with and without a blank
    // inside.
    for (std::size_t before = 0; before < 70; ++before)
        for (std::size_t length = 1; length < 70; ++length) {
            std::string const word = "w" + std::string(length, '7');
            std::string broken = word;
            broken.insert(1 + length / 2, " ");
            for (std::string const& text : {word, broken}) {
                ASSERT_THAT(tokenize(std::string(before, ' ') + text), ElementsAre(path(word)));
                ASSERT_THAT(tokenize(std::string(before, ' ') + text + "=||"),
                            ElementsAre(path(word), token(5), token(4)));
            }
        }
}

TEST(ConditionTokens, AWordIsClassifiedAndEmptied) {
    struct Row {
        char const* word;
        std::pair<int, std::string> expected;
    };
    Row const rows[] = {
        {"&&", token(3)},
        {"||", token(4)},
        {"time", token(9)},
        {"|x", path("|x")},
        {"10ns", literal("10ns")},
        {"0", bus("0")},
        {"(", bus("(")},
        {"a b", path("a b")},
        {" ", bus(" ")},
        {"\xe4"
         "a",
         literal("\xe4"
                 "a")},
        {"a\xe4", path("a\xe4")},
        {"1\xe4", bus("1\xe4")},
        {"&& ", bus("&& ")},
        {"&&&", bus("&&&")},
        {"|||", path("|||")},
    };
    for (Row const& row : rows) {
        GEN_BP_PARSER parser;
        STR word = row.word;
        parser.process_token_contents(&word);
        EXPECT_TRUE(word.empty()) << row.word;
        EXPECT_THAT(take_tokens(parser), ElementsAre(row.expected)) << row.word;
    }
}

TEST(ConditionTokens, AnEmptyWordIsNoToken) {
    GEN_BP_PARSER parser;
    STR word;
    parser.process_token_contents(&word);
    parser.process_token_contents(nullptr);
    EXPECT_THAT(parser.token_list(), IsEmpty());
}

TEST(ConditionTokens, ARecordHasItsTypeAndACopyOfItsText) {
    GEN_BP_PARSER parser;
    STR text = "signal";
    parser.add_token_to_list(BP_TOKEN_HPATH, &text);
    parser.add_token_to_list(BP_TOKEN_LITERAL, nullptr);
    parser.add_token_to_list(BP_TOKEN_AND, &text);
    text = "changed";
    EXPECT_THAT(take_tokens(parser),
                ElementsAre(path("signal"), literal(""), token(BP_TOKEN_AND, "signal")));
}

TEST(ConditionTokens, TokensAreAppendedToThoseOfEarlierCalls) {
    GEN_BP_PARSER parser;
    parser.add_token_to_list(BP_TOKEN_NOT, nullptr);
    parser.working_string() = "a =";
    parser.tokenize_string();
    parser.tokenize_string();
    EXPECT_THAT(take_tokens(parser),
                ElementsAre(token(8), path("a"), token(5), path("a"), token(5)));
}

TEST(ConditionTokens, NothingIsReported) {
    GEN_BP_PARSER parser;
    {
        ErrorRecorder recorder;
        parser.working_string() = ")))((= && = time time ||";
        parser.tokenize_string();
        EXPECT_THAT(recorder.errors(), IsEmpty());
        EXPECT_EQ(parser.error_text(), "");
    }
    EXPECT_FALSE(take_tokens(parser).empty());
}
