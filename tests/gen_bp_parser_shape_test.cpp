#include "effort.h"
#include "err_report.h"
#include "gen_bp_parser.h"

#include <gtest/gtest.h>
#include <pthread.h>

namespace {

std::size_t reports = 0;

/// A million terms in one shape, or tokens in the odder ones, and what has to become of them.
struct Shape {
    char const* name;
    std::string text;
    std::string output;
    std::string errors;
    std::size_t reports = 0;
};

std::string repeat(std::size_t count, std::string_view text) {
    std::string result;
    result.reserve(count * text.size());
    while (count-- != 0)
        result += text;
    return result;
}

struct Result {
    STR expression;
    STR errors;
    bool failed = false;
};

void* parse(void* result) {
    auto& [expression, errors, failed] = *static_cast<Result*>(result);
    GEN_BP_PARSER parser;
    failed = parser.parse_string(&expression);
    errors = parser.error_text();
    return nullptr;
}

/// Parses with a stack of 64 KiB, so that recursion that follows the input cannot stay unseen.
Result parse_on_a_small_stack(std::string const& text) {
    Result result;
    result.expression = text;
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    EXPECT_EQ(pthread_attr_setstacksize(&attributes, 65536), 0);
    pthread_t thread;
    EXPECT_EQ(pthread_create(&thread, &attributes, parse, &result), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    return result;
}

void check(Shape const& shape) {
    reports = 0;
    ERR_HANDLER const previous = err_set_internal_error_handler(
        [](char const*, char const*, char const*, int) { ++reports; });
    Result const result = parse_on_a_small_stack(shape.text);
    err_set_internal_error_handler(previous);

    // The strings are too long to be shown.
    EXPECT_TRUE(std::string_view(result.expression) == shape.output) << shape.name;
    EXPECT_TRUE(std::string_view(result.errors) == shape.errors) << shape.name;
    EXPECT_EQ(result.failed, !shape.errors.empty()) << shape.name;
    EXPECT_EQ(reports, shape.reports) << shape.name;
}

std::size_t const million = effort(1'000'000);

/// A tree of so many levels with "&&" and "||" in turn, every operand in parentheses.
void tree(int levels, std::string& text, std::string& output) {
    if (levels == 0) {
        text += "a = 1";
        output += "EQUAL_TO(HPATH(a),BUS(1))";
        return;
    }
    text += "(";
    output += levels % 2 == 0 ? "LOGICAL_AND(" : "LOGICAL_OR(";
    tree(levels - 1, text, output);
    text += levels % 2 == 0 ? ") && (" : ") || (";
    output += ",";
    tree(levels - 1, text, output);
    text += ")";
    output += ")";
}

} // namespace

TEST(ConditionShapes, ChainOfOneOperator) {
    std::size_t const count = million;
    for (auto const& [op, name] :
         {std::pair{"=", "EQUAL_TO("}, {">", "GREATER_THAN("}, {"<", "LESS_THAN("}})
        check({op, repeat(count, "a" + std::string(op)) + "a",
               repeat(count, name + std::string("HPATH(a),")) + "HPATH(a)" + repeat(count, ")"),
               ""});
    for (auto const& [op, name] : {std::pair{"&&", "LOGICAL_AND("}, {"||", "LOGICAL_OR("}})
        check({op, repeat(count, "(a)" + std::string(op)) + "(a)",
               repeat(count, name + std::string("HPATH(a),")) + "HPATH(a)" + repeat(count, ")"),
               ""});
}

TEST(ConditionShapes, ChainOfComparisons) {
    std::size_t const count = million / 6;
    check(
        {"chain", repeat(count, "(a = 1) && ") + "(b)",
         repeat(count, "LOGICAL_AND(EQUAL_TO(HPATH(a),BUS(1)),") + "HPATH(b)" + repeat(count, ")"),
         ""});
}

TEST(ConditionShapes, ChainThatLoosensFromTheRight) {
    // Each "||" is looser than all before it, and each but the first stands in the right side.
    std::size_t const count = million / 8;
    check({"loosens", repeat(count, "a < b > c = (d) || ") + "e",
           repeat(count, "LOGICAL_OR(EQUAL_TO(GREATER_THAN(LESS_THAN(HPATH(a),HPATH(b)),HPATH(c)),"
                         "HPATH(d)),") +
               "HPATH(e)" + repeat(count, ")"),
           ""});
}

TEST(ConditionShapes, NestedParentheses) {
    std::size_t const count = million;
    check({"nested", repeat(count, "(") + "a" + repeat(count, ")"), "HPATH(a)", ""});
    check({"nested left", repeat(count, "(") + "a" + repeat(count, "=1)"),
           repeat(count, "EQUAL_TO(") + "HPATH(a)" + repeat(count, ",BUS(1))"), ""});
    check({"nested right", repeat(count, "(1=") + "a" + repeat(count, ")"),
           repeat(count, "EQUAL_TO(BUS(1),") + "HPATH(a)" + repeat(count, ")"), ""});
}

TEST(ConditionShapes, NestedNegations) {
    std::size_t const count = million;
    check({"~(", repeat(count, "~(") + "a" + repeat(count, ")"),
           repeat(count, "NOT(") + "HPATH(a)" + repeat(count, ")"), ""});
    check({"~", repeat(million, "~") + "a",
           repeat(million, "NOT(") + "HPATH(a)" + repeat(million, ")"), ""});
}

TEST(ConditionShapes, TimeComparisons) {
    std::size_t const count = million / 3;
    check({"time", repeat(count, "time > ") + "5",
           repeat(count, "TIME_GT(") + "BUS(5)" + repeat(count, ")"), ""});
}

TEST(ConditionShapes, BalancedTree) {
    int levels = 1;
    while ((std::size_t{8} << levels) < million)
        ++levels;
    Shape shape{"tree", "", "", ""};
    tree(levels, shape.text, shape.output);
    check(shape);
}

TEST(ConditionShapes, LongWords) {
    std::string const word = repeat(million, "a b");
    check({"one", word, "HPATH(" + repeat(million, "ab") + ")", ""});
    check({"two", word + "=" + repeat(million, "7"),
           "EQUAL_TO(HPATH(" + repeat(million, "ab") + "),BUS(" + repeat(million, "7") + "))", ""});
}

TEST(ConditionShapes, OnlyOpened) {
    // A level takes the first and the last token away, whatever the last is.
    check({"(", repeat(million, "("), "",
           repeat(million / 2, "Parse Error: Unmatched parenthesis in equation\n") +
               "Parse Error: No subexpression within parentheses\n"});
    check({"((a", repeat(million, "(") + "a", "",
           repeat(million / 2 + 1, "Parse Error: Unmatched parenthesis in equation\n") +
               "Parse Error: No subexpression within parentheses\n"});
}

TEST(ConditionShapes, OnlyClosed) {
    check({")", repeat(million, ")"), "", "Parse Error: Bad symbol(s) after terminal in equation\n",
           million});
    check({"a=)", "a=" + repeat(million, ")"), "",
           repeat(million, "Unbalanced number of right parenthesis\n") +
               "Unbalanced parenthesis\nParse Error: Bad term in equation\n",
           million});
}

TEST(ConditionShapes, OperatorsWithoutOperands) {
    check({"=", repeat(million, "="), "", "Missing left hand side of equation\n"});
    std::size_t const count = million / 3;
    check({"a==", repeat(count, "(a==)&&") + "b",
           repeat(count, "LOGICAL_AND(EQUAL_TO(HPATH(a),),") + "HPATH(b)" + repeat(count, ")"),
           repeat(count, "Missing left hand side of equation\n")});
    check({"a=()", repeat(count, "a=()&&") + "b",
           repeat(count, "LOGICAL_AND(EQUAL_TO(HPATH(a),),") + "HPATH(b)" + repeat(count, ")"),
           repeat(count, "Parse Error: No subexpression within parentheses\n")});
}

TEST(ConditionShapes, FewReportsOverManyTokens) {
    // Each operator of the first half has a range that reaches over the second half, where a single
    // ")" is to be reported; nothing else there may be looked at again.
    std::size_t const count = million / 4;
    std::string const right = "Unbalanced number of right parenthesis\n";
    check({"x = ... ) ... (", repeat(count, "x = ") + "x)" + repeat(count, "= y") + "(",
           repeat(count, "EQUAL_TO(HPATH(x),") + "HPATH(x)" + repeat(count, ")"),
           repeat(count, right) + "Parse Error: Bad symbol(s) after terminal in equation\n",
           count + 1});
}
