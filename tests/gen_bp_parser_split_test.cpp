#include "error_recorder.h"
#include "gen_bp_parser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::Each;
using testing::SizeIs;

namespace {

/// The tokens of a string in the list of a parser that frees them.
class Tokens {
  public:
    explicit Tokens(char const* text) {
        owner.working_string() = text;
        owner.tokenize_string();
    }
    ~Tokens() {
        ErrorRecorder ignored;
        STR nothing;
        owner.parse_string(&nothing);
    }
    Tokens(Tokens const&) = delete;
    Tokens& operator=(Tokens const&) = delete;

    GEN_BP_PARSER::iterator begin() { return owner.token_list().begin(); }
    GEN_BP_PARSER::iterator end() { return owner.token_list().end(); }
    GEN_BP_PARSER::iterator at(std::ptrdiff_t index) { return std::next(begin(), index); }
    std::ptrdiff_t index(GEN_BP_PARSER::iterator position) {
        return std::distance(begin(), position);
    }

    GEN_BP_PARSER owner;
};

constexpr char const* right_line = "Unbalanced number of right parenthesis\n";

} // namespace

TEST(ConditionTerms, AnOperatorOutsideParenthesesMakesSeveral) {
    struct Row {
        char const* text;
        bool several;
        std::size_t reports = 0;
    };
    Row const rows[] = {
        {"", false},
        {"a", false},
        {"a = b", true},
        {"=", true},
        {"(a) && (b)", true},
        {"(a) || (b)", true},
        {"a > b", true},
        {"a < b", true},
        {"~a", false},
        {"(a = b)", false},
        {"(a = b", false},
        {"((a) = b) = c", true},
        {"time", false},
        {"a)", false, 1},
        {"a))", false, 2},
        {"a)b)(c)", false, 3},
        // The walk ends at the first operator, so what comes behind it is not met.
        {"a = b))", true},
        {"a) = b", false, 1},
        {"a)( = b)", true, 1},
        {")(=))", true, 1},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.text);
        Tokens tokens(row.text);
        GEN_BP_PARSER parser;
        ErrorRecorder recorder;
        EXPECT_EQ(parser.expression_has_multiple_terms(tokens.begin(), tokens.end()), row.several);
        EXPECT_THAT(recorder.conditions(), SizeIs(row.reports));
        EXPECT_THAT(recorder.conditions(), Each("paren_count >= 0"));
        EXPECT_EQ(parser.error_text(), "");
        EXPECT_EQ(parser.working_string(), "");
    }
}

TEST(ConditionSplit, IsAtTheFirstOfTheLoosestOperators) {
    struct Row {
        char const* text;
        std::ptrdiff_t op; // the number of tokens for `last`
    };
    Row const rows[] = {
        {"a = b", 1},
        {"a = b = c", 1},
        {"a < b > c", 3},
        {"a > b < c", 1},
        {"a > b = c", 3},
        {"a = b > c", 1},
        {"a < b = c", 3},
        {"a < b < c", 1},
        {"a > b > c", 1},
        {"a = (b) && (c)", 5},
        {"(a) && (b) = c", 3},
        {"(a) && (b) && (c)", 3},
        {"(a) && (b) || (c)", 7},
        {"(a) || (b) && (c)", 3},
        {"(a) || (b) || (c)", 3},
        {"a < b > c = (d) && (e) || (f)", 13},
        {"(a || (b) = c) > d", 8},
        {"time > 5", 1},
        // None, and none but the first token.
        {"", 0},
        {"a", 1},
        {"(a = b)", 5},
        {"= a", 2},
        {"= a > b", 4},
        {"= = =", 3},
        {"|| a", 2},
        {"> a = b", 2},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.text);
        Tokens tokens(row.text);
        GEN_BP_PARSER parser;
        GEN_BP_PARSER::iterator start;
        GEN_BP_PARSER::iterator op;
        EXPECT_TRUE(parser.get_first_subexpression(tokens.begin(), tokens.end(), &start, &op));
        EXPECT_EQ(tokens.index(start), 0);
        EXPECT_EQ(tokens.index(op), row.op);
        EXPECT_EQ(parser.error_text(), "");
    }
}

TEST(ConditionSplit, SaysWhenTheParenthesesDoNotBalance) {
    struct Row {
        char const* text;
        bool balanced;
        std::ptrdiff_t op;
        std::size_t reports;
        char const* rest = "";
    };
    Row const rows[] = {
        {"a = (b", false, 1, 0, "Unbalanced parenthesis\n"},
        {"(a = b", false, 0, 0, "Unbalanced parenthesis\n"},
        {"a)", false, 0, 1, "Unbalanced parenthesis\n"},
        {"= a)", false, 0, 1, "Unbalanced parenthesis\n"},
        {"a = b))", false, 1, 2, "Unbalanced parenthesis\n"},
        {"a)(b", true, 4, 1},
        {"a = b)(c", true, 1, 1},
        {"a)(= b", true, 3, 1},
        {"a)) = ((b", true, 7, 2},
        {"a))b) = (((c", true, 10, 3},
        // The walk ends at "||".
        {"(a) || b)", true, 3, 0},
        {")( || (((", true, 2, 1},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.text);
        Tokens tokens(row.text);
        GEN_BP_PARSER parser;
        ErrorRecorder recorder;
        GEN_BP_PARSER::iterator start;
        GEN_BP_PARSER::iterator op;
        EXPECT_EQ(parser.get_first_subexpression(tokens.begin(), tokens.end(), &start, &op),
                  row.balanced);
        EXPECT_EQ(tokens.index(start), 0);
        EXPECT_EQ(tokens.index(op), row.op);
        EXPECT_THAT(recorder.conditions(), SizeIs(row.reports));
        STR expected;
        for (std::size_t i = 0; i < row.reports; ++i)
            expected += right_line;
        EXPECT_EQ(parser.error_text(), expected + row.rest);
    }
}

TEST(ConditionSplit, ResultsThatNobodyWantsAreNotGiven) {
    Tokens tokens("a = b");
    GEN_BP_PARSER parser;
    EXPECT_TRUE(parser.get_first_subexpression(tokens.begin(), tokens.end(), nullptr, nullptr));
}

TEST(ConditionRange, IsAllThatIsLookedAt) {
    Tokens tokens("(((a = b) || c");
    GEN_BP_PARSER parser;
    EXPECT_TRUE(parser.expression_has_multiple_terms(tokens.at(3), tokens.at(6)));
    EXPECT_FALSE(parser.expression_has_multiple_terms(tokens.at(2), tokens.at(7)));
    GEN_BP_PARSER::iterator start;
    GEN_BP_PARSER::iterator op;
    EXPECT_TRUE(parser.get_first_subexpression(tokens.at(2), tokens.end(), &start, &op));
    EXPECT_EQ(tokens.index(start), 2);
    EXPECT_EQ(tokens.index(op), 7);
    EXPECT_TRUE(parser.parse_token_list(tokens.at(3), tokens.at(6)));
    EXPECT_EQ(parser.working_string(), "EQUAL_TO(HPATH(a),HPATH(b))");
    EXPECT_EQ(parser.error_text(), "");
}

TEST(ConditionRange, AppendsToWhatTheStringsContain) {
    Tokens tokens("a =");
    GEN_BP_PARSER parser;
    parser.working_string() = "before;";
    EXPECT_TRUE(parser.parse_token_list(tokens.begin(), tokens.end()));
    EXPECT_TRUE(parser.parse_token_list(tokens.begin(), tokens.begin()));
    EXPECT_TRUE(parser.parse_token_list(tokens.begin(), tokens.at(1)));
    EXPECT_EQ(parser.working_string(), "before;EQUAL_TO(HPATH(a),)HPATH(a)");
    EXPECT_EQ(parser.error_text(), "Missing right hand side of equation\n");
    EXPECT_EQ(tokens.owner.token_list().size(), 2U);
    EXPECT_NE(tokens.owner.token_list().front(), nullptr) << "the records stay";
}

TEST(ConditionRange, NullEntriesArePassedOver) {
    Tokens tokens("= a (");
    MEM_LIST<BP_TOKEN*>& list = tokens.owner.token_list();
    for (auto at = list.begin(); at != list.end(); ++at)
        list.insert(at, nullptr);
    list.push_back(nullptr);
    auto const leave_out = [&](std::ptrdiff_t first, std::ptrdiff_t last) {
        GEN_BP_PARSER parser;
        parser.parse_token_list(tokens.at(first), tokens.at(last));
        return parser.working_string() + parser.error_text();
    };
    // null = null a null ( null
    EXPECT_EQ(leave_out(0, 5), "Missing left hand side of equation\n");
    EXPECT_EQ(leave_out(2, 5), "HPATH(a)");
    EXPECT_EQ(leave_out(0, 1), "");
    GEN_BP_PARSER parser;
    GEN_BP_PARSER::iterator start;
    GEN_BP_PARSER::iterator op;
    EXPECT_TRUE(parser.get_first_subexpression(tokens.at(0), tokens.at(5), &start, &op));
    EXPECT_EQ(tokens.index(start), 0);
    EXPECT_EQ(tokens.index(op), 5);
    EXPECT_FALSE(parser.expression_has_multiple_terms(tokens.at(2), tokens.end()));
    EXPECT_TRUE(parser.expression_has_multiple_terms(tokens.at(0), tokens.end()));
}

TEST(ConditionRange, TimeCanBeMisusedOnlyByHand) {
    struct Row {
        BP_TOKEN_TYPE op;
        char const* output;
        char const* errors;
    };
    Row const rows[] = {
        {BP_TOKEN_AND, "BUS(5))", "Illegal use of time\n"},
        {BP_TOKEN_OR, "BUS(5))", "Illegal use of time\n"},
        {BP_TOKEN_LESS, "TIME_LT(BUS(5))", ""},
    };
    for (Row const& row : rows) {
        GEN_BP_PARSER parser;
        STR const five = "5";
        parser.add_token_to_list(BP_TOKEN_TIME, nullptr);
        parser.add_token_to_list(row.op, nullptr);
        parser.add_token_to_list(BP_TOKEN_BUS, &five);
        STR nothing;
        EXPECT_EQ(parser.parse_string(&nothing), *row.errors != '\0');
        EXPECT_EQ(nothing, row.output);
        EXPECT_EQ(parser.error_text(), row.errors);
    }
}

TEST(ConditionRange, TypesOutsideTheEnumerationWriteNothing) {
    for (int const type : {12, 99, -1, INT32_MIN, INT32_MAX}) {
        GEN_BP_PARSER parser;
        STR const text = "text";
        parser.add_token_to_list(static_cast<BP_TOKEN_TYPE>(type), &text);
        parser.add_token_to_list(BP_TOKEN_EQUAL, &text);
        parser.add_token_to_list(BP_TOKEN_HPATH, &text);
        STR nothing;
        EXPECT_FALSE(parser.parse_string(&nothing));
        EXPECT_EQ(nothing, "EQUAL_TO(,HPATH(text))");
    }
}

TEST(ConditionRange, TextsNeedNotBeWhatTheTokenizerMakes) {
    GEN_BP_PARSER parser;
    STR const texts[] = {"", "a,b)", "two words", STR(100, 'x'), STR("\0z", 2)};
    for (STR const& text : texts) {
        parser.add_token_to_list(BP_TOKEN_LITERAL, &text);
        if (&text != &texts[4])
            parser.add_token_to_list(BP_TOKEN_OR, nullptr);
    }
    STR output;
    EXPECT_FALSE(parser.parse_string(&output));
    EXPECT_EQ(output, "LOGICAL_OR(,LOGICAL_OR(a,b),LOGICAL_OR(two words,LOGICAL_OR(" +
                          STR(100, 'x') + "," + STR("\0z", 2) + "))))");
}
