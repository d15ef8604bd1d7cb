#include "error_recorder.h"
#include "gen_bp_parser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::Each;
using testing::SizeIs;

namespace {

struct Row {
    char const* expression;
    char const* output;
    std::string errors = "";
    /// How many times "paren_count >= 0" is reported.
    std::size_t reports = 0;
};

void check(std::vector<Row> const& rows) {
    for (Row const& row : rows) {
        SCOPED_TRACE(row.expression);
        ErrorRecorder recorder;
        GEN_BP_PARSER parser;
        STR expression = row.expression;
        bool const failed = parser.parse_string(&expression);
        EXPECT_EQ(expression, row.output);
        EXPECT_EQ(parser.working_string(), row.output);
        EXPECT_EQ(parser.error_text(), STR(row.errors));
        EXPECT_EQ(failed, !row.errors.empty());
        EXPECT_THAT(recorder.conditions(), SizeIs(row.reports));
        EXPECT_THAT(recorder.conditions(), Each("paren_count >= 0"));
    }
}

constexpr char const* bad_symbols = "Parse Error: Bad symbol(s) after terminal in equation\n";
constexpr char const* missing_left = "Missing left hand side of equation\n";
constexpr char const* missing_right = "Missing right hand side of equation\n";
constexpr char const* no_subexpression = "Parse Error: No subexpression within parentheses\n";
constexpr char const* unmatched_and_empty = "Parse Error: Unmatched parenthesis in equation\n"
                                            "Parse Error: No subexpression within parentheses\n";
constexpr char const* unbalanced = "Unbalanced parenthesis\n"
                                   "Parse Error: Bad term in equation\n";

} // namespace

TEST(ConditionRewrite, Terminals) {
    check({
        {"", ""},
        {"  ", ""},
        {"a", "HPATH(a)"},
        {"|top|a", "HPATH(|top|a)"},
        {"1", "BUS(1)"},
        {"'b01", "BUS('b01)"},
        {"10ns", "10ns"},
        {"time", ""},
        {"a_name_longer_than_sixteen_characters", "HPATH(a_name_longer_than_sixteen_characters)"},
        {"123456789012345", "BUS(123456789012345)"},
        {"1234567890123456", "BUS(1234567890123456)"},
        {"12345678901234567", "BUS(12345678901234567)"},
    });
}

TEST(ConditionRewrite, WordsLikeTimeAreNames) {
    check({
        {"xime > 5", "GREATER_THAN(HPATH(xime),BUS(5))"},
        {"txme > 5", "GREATER_THAN(HPATH(txme),BUS(5))"},
        {"tixe > 5", "GREATER_THAN(HPATH(tixe),BUS(5))"},
        {"timx > 5", "GREATER_THAN(HPATH(timx),BUS(5))"},
        {"tim > 5", "GREATER_THAN(HPATH(tim),BUS(5))"},
        {"times > 5", "GREATER_THAN(HPATH(times),BUS(5))"},
    });
}

TEST(ConditionRewrite, EveryOperatorHasItsFunction) {
    check({
        {"a = 1", "EQUAL_TO(HPATH(a),BUS(1))"},
        {"a > 1", "GREATER_THAN(HPATH(a),BUS(1))"},
        {"a < 1", "LESS_THAN(HPATH(a),BUS(1))"},
        {"(a) && (b)", "LOGICAL_AND(HPATH(a),HPATH(b))"},
        {"(a) || (b)", "LOGICAL_OR(HPATH(a),HPATH(b))"},
        {"~a", "NOT(HPATH(a))"},
        {"~~a", "NOT(NOT(HPATH(a)))"},
        {"time = 5", "TIME_EQ(BUS(5))"},
        {"time > 10ns", "TIME_GT(10ns)"},
        {"time < 2us", "TIME_LT(2us)"},
    });
}

TEST(ConditionRewrite, WholeConditions) {
    check({
        {"(|top|a = 1) && (time > 10ns)",
         "LOGICAL_AND(EQUAL_TO(HPATH(|top|a),BUS(1)),TIME_GT(10ns))"},
        {"~(a = 1) || b < 2",
         "LOGICAL_OR(NOT(EQUAL_TO(HPATH(a),BUS(1))),LESS_THAN(HPATH(b),BUS(2)))"},
        {"a && b", "HPATH(a&&b)"},
    });
}

TEST(ConditionRewrite, LooserOperatorsPartFirst) {
    check({
        {"(a) && (b) || (c)", "LOGICAL_OR(LOGICAL_AND(HPATH(a),HPATH(b)),HPATH(c))"},
        {"(a) || (b) && (c)", "LOGICAL_OR(HPATH(a),LOGICAL_AND(HPATH(b),HPATH(c)))"},
        {"a > b = c", "EQUAL_TO(GREATER_THAN(HPATH(a),HPATH(b)),HPATH(c))"},
        {"a = b > c", "EQUAL_TO(HPATH(a),GREATER_THAN(HPATH(b),HPATH(c)))"},
        {"a < b > c", "GREATER_THAN(LESS_THAN(HPATH(a),HPATH(b)),HPATH(c))"},
        {"a > b < c", "GREATER_THAN(HPATH(a),LESS_THAN(HPATH(b),HPATH(c)))"},
        {"a < b = c", "EQUAL_TO(LESS_THAN(HPATH(a),HPATH(b)),HPATH(c))"},
        {"a = (b) && (c) = d",
         "LOGICAL_AND(EQUAL_TO(HPATH(a),HPATH(b)),EQUAL_TO(HPATH(c),HPATH(d)))"},
        {"~a = b", "EQUAL_TO(NOT(HPATH(a)),HPATH(b))"},
        {"time > 1 = b", "EQUAL_TO(TIME_GT(BUS(1)),HPATH(b))"},
    });
}

TEST(ConditionRewrite, EqualOperatorsGroupToTheRight) {
    check({
        {"a = b = c", "EQUAL_TO(HPATH(a),EQUAL_TO(HPATH(b),HPATH(c)))"},
        {"a > b > c", "GREATER_THAN(HPATH(a),GREATER_THAN(HPATH(b),HPATH(c)))"},
        {"a < b < c", "LESS_THAN(HPATH(a),LESS_THAN(HPATH(b),HPATH(c)))"},
        {"(a) && (b) && (c)", "LOGICAL_AND(HPATH(a),LOGICAL_AND(HPATH(b),HPATH(c)))"},
        {"(a) || (b) || (c)", "LOGICAL_OR(HPATH(a),LOGICAL_OR(HPATH(b),HPATH(c)))"},
        {"time > 1 > 2", "TIME_GT(GREATER_THAN(BUS(1),BUS(2)))"},
    });
}

TEST(ConditionRewrite, ParenthesesGroupAndLeaveNothing) {
    check({
        {"((a))", "HPATH(a)"},
        {"((a = b)) = c", "EQUAL_TO(EQUAL_TO(HPATH(a),HPATH(b)),HPATH(c))"},
        {"~(~(a))", "NOT(NOT(HPATH(a)))"},
        {"(time) = 5", "EQUAL_TO(,BUS(5))"},
        {"(time = 5)", "TIME_EQ(BUS(5))"},
    });
}

TEST(ConditionRewrite, TimeMeansSomethingOnlyAtTheFrontOfAComparison) {
    check({
        {"a = time", "EQUAL_TO(HPATH(a),)"},
        {"time = time", "TIME_EQ()"},
        {"~time > 5", "GREATER_THAN(NOT(),BUS(5))"},
        {"(a) && time > 5", "LOGICAL_AND(HPATH(a),TIME_GT(BUS(5)))"},
        {"time a > 5", "GREATER_THAN(HPATH(timea),BUS(5))"},
        {"time =", "TIME_EQ()"}, // no right side is asked for
        {"time(a) = 5", "EQUAL_TO(,BUS(5))", bad_symbols},
    });
}

TEST(ConditionDiagnostics, MissingSides) {
    check({
        {"a =", "EQUAL_TO(HPATH(a),)", missing_right},
        {"= a", "", missing_left},
        {"=", "", missing_left},
        {"&&", "", missing_left},
        {"|| a", "", missing_left},
        {"a == 1", "EQUAL_TO(HPATH(a),)", missing_left},
        {"a >= 1", "EQUAL_TO(GREATER_THAN(HPATH(a),),BUS(1))", missing_right},
        {"= = =", "", missing_left},
        {"> a = b", "EQUAL_TO(,HPATH(b))", missing_left},
        {"= a > b", "", missing_left},
        {"(a) && && (b)", "LOGICAL_AND(HPATH(a),)", missing_left},
        {"~ = a", "EQUAL_TO(NOT(),HPATH(a))"},
        {"a = ~", "EQUAL_TO(HPATH(a),NOT())"},
        {"~", "NOT()"},
    });
}

TEST(ConditionDiagnostics, Parentheses) {
    check({
        {"()", "", no_subexpression},
        {"(())", "", no_subexpression},
        {"()()", "", bad_symbols, 1},
        {"(", "", unmatched_and_empty},
        {"(a", "", unmatched_and_empty},
        {"((", "", unmatched_and_empty},
        {"(((", "",
         "Parse Error: Unmatched parenthesis in equation\n"
         "Parse Error: Unmatched parenthesis in equation\n"
         "Parse Error: No subexpression within parentheses\n"},
        {"(=", "", unmatched_and_empty},
        {"(a = 1", "EQUAL_TO(HPATH(a),)",
         "Parse Error: Unmatched parenthesis in equation\n"
         "Missing right hand side of equation\n"},
        {"a = (1", "", unbalanced},
        {"a = (1 || b", "", unbalanced},
        {"a || (1", "HPATH(a||)", bad_symbols}, // "a||" is one word
        {"(a) || (b", "LOGICAL_OR(HPATH(a),)", unmatched_and_empty},
        {"(b || (a)", "HPATH(b||)", bad_symbols},
        {"(a = b", "EQUAL_TO(HPATH(a),)",
         "Parse Error: Unmatched parenthesis in equation\n"
         "Missing right hand side of equation\n"},
        {"~(", "NOT()", unmatched_and_empty},
    });
}

TEST(ConditionDiagnostics, BadSymbolsAreNamedAndIgnored) {
    check({
        {"a(", "HPATH(a)", bad_symbols},
        {"a(b)", "HPATH(a)", bad_symbols},
        {"a ~b", "HPATH(a)", bad_symbols},
        {"a ~b = c", "EQUAL_TO(HPATH(a),HPATH(c))", bad_symbols},
        {"1(2)", "BUS(1)", bad_symbols},
        {"10ns(2)", "10ns", bad_symbols},
    });
}

TEST(ConditionDiagnostics, EveryParenthesisClosedTooEarlyIsReportedByEveryWalk) {
    std::string const once = "Unbalanced number of right parenthesis\n";
    check({
        {")", "", "", 1},
        {"))", "", bad_symbols, 2},
        {"a) = (b", "HPATH(a)", bad_symbols, 1},
        {"~)", "NOT()", "", 2},
        {"~~)", "NOT(NOT())", "", 3},
        {"(a)b", "HPATH(a)",
         "Parse Error: Unmatched parenthesis in equation\n"
         "Parse Error: Bad symbol(s) after terminal in equation\n",
         1},
        {"(a)(b)", "HPATH(a)", bad_symbols, 1},
        // Met by the walk for an operator, by the choice of one, and by the walk over the left
        // side.
        {")(=", "EQUAL_TO(,)", once + bad_symbols + missing_right, 3},
        {"a = b)", "", once + unbalanced, 1},
        {"a = b))", "", once + once + unbalanced, 2},
        {"(a = b) (c = d)", "EQUAL_TO(HPATH(a),EQUAL_TO(HPATH(b),HPATH(d)))",
         once + once + bad_symbols, 4},
    });
}
