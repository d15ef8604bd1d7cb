#include "effort.h"
#include "gen_query.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <random>

namespace {

ProgramResult condition(std::vector<std::string> arguments, std::string const& input = "") {
    arguments.insert(arguments.begin(), "condition");
    ProgramStart start;
    start.input = input;
    return run_gen_query(arguments, start);
}

nlohmann::json json_of(ProgramResult const& result) {
    return nlohmann::json::parse(result.output, nullptr, /*allow_exceptions=*/false);
}

} // namespace

TEST(GenQueryCondition, NulIsRefused) {
    ProgramStart start;
    start.input = std::string("a\0b\n", 4);
    ProgramResult const result = run_gen_query({"condition", "--stdin"}, start);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, testing::HasSubstr("NUL byte"));
}

TEST(GenQueryCondition, PrintsThePrefixForm) {
    ProgramResult const result = condition({"~(a = 1) || b < 2"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output,
              "LOGICAL_OR(NOT(EQUAL_TO(HPATH(a),BUS(1))),LESS_THAN(HPATH(b),BUS(2)))\n");
    EXPECT_EQ(result.errors, "");
}

TEST(GenQueryCondition, PrintsDiagnosticsBesideIt) {
    ProgramResult const result = condition({"(a = 1"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "EQUAL_TO(HPATH(a),)\n");
    EXPECT_EQ(result.errors, "gen_query: Parse Error: Unmatched parenthesis in equation\n"
                             "gen_query: Missing right hand side of equation\n");
}

TEST(GenQueryCondition, CountsInternalErrors) {
    ProgramResult const result = condition({"~~)"});
    EXPECT_EQ(result.status, 0) << "an internal error is no diagnostic";
    EXPECT_EQ(result.errors, "gen_query: internal error: paren_count >= 0, reported 3 times\n");
}

TEST(GenQueryCondition, ShowsTheTokens) {
    EXPECT_EQ(condition({"--tokens", "a>=1ns"}).output, "type  name     text\n"
                                                        "1     path     a\n"
                                                        "6     >        -\n"
                                                        "5     =        -\n"
                                                        "0     literal  1ns\n");
}

TEST(GenQueryCondition, DrawsTheTree) {
    struct Row {
        char const* condition;
        char const* tree;
    };
    Row const rows[] = {
        {"", ""},
        {"|a", "HPATH |a\n"},
        {"()", ""},
        {"~(a = 1) && (time > 2ns)", "LOGICAL_AND\n"
                                     "  NOT\n"
                                     "    EQUAL_TO\n"
                                     "      HPATH a\n"
                                     "      BUS 1\n"
                                     "  TIME_GT\n"
                                     "    2ns\n"},
        {"a = time", "EQUAL_TO\n  HPATH a\n  (nothing)\n"},
        {"(time) = 5", "EQUAL_TO\n  (nothing)\n  BUS 5\n"},
        {"time = ", "TIME_EQ\n  (nothing)\n"},
        {"time", ""},
        {"((time))", ""},
        {"~(time)", "NOT\n  (nothing)\n"},
        {"time > 1 > 2", "TIME_GT\n  GREATER_THAN\n    BUS 1\n    BUS 2\n"},
        // What something is wrong with is not drawn.
        {"a = ", ""},
        {")", ""},
        {"~~)", ""},
        {"a = ((b", ""},
        {"~(a(1x)) && (1x,y = b)", ""},
        {"~", "NOT\n  (nothing)\n"},
        // Commas belong to words.
        {"1,2ns = 3,4ns", "EQUAL_TO\n  1,2ns\n  3,4ns\n"},
        {"a,b = 1,2", "EQUAL_TO\n  HPATH a,b\n  BUS 1,2\n"},
        {"1x,y = 1x", "EQUAL_TO\n  1x,y\n  1x\n"},
        {"(1x = 1y) && (1x,1y = 2z)",
         "LOGICAL_AND\n  EQUAL_TO\n    1x\n    1y\n  EQUAL_TO\n    1x,1y\n    2z\n"},
        {"(a = 1x) && (1x,y = b)",
         "LOGICAL_AND\n  EQUAL_TO\n    HPATH a\n    1x\n  EQUAL_TO\n    1x,y\n    HPATH b\n"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(condition({"--tree", row.condition}).output, row.tree) << row.condition;
}

namespace {

/// A condition without diagnostics.
std::string random_condition(std::mt19937& random, int length) {
    static char const* const words[] = {"a", "|top|b,c", "1", "10ns", "time", "1,5x"};
    static char const* const ends[] = {" = ", ">", " < ", ")&&(", ")||("};
    auto const below = [&](unsigned bound) { return random() % bound; };
    if (length < 2)
        return below(8) == 0 ? "~" : words[below(std::size(words))];
    int const left = 1 + static_cast<int>(below(static_cast<unsigned>(length - 1)));
    std::string const first = random_condition(random, left);
    switch (below(4)) {
    case 0:
        return "~(" + random_condition(random, length - 1) + ")";
    case 1:
        return "(" + first + ") = " + random_condition(random, length - left);
    default:
        return "(" + first + ends[below(std::size(ends))] +
               random_condition(random, length - left) + ")";
    }
}

/// The prefix form that the lines of a tree stand for.
std::string prefix_of(nlohmann::json const& lines) {
    std::string prefix;
    std::size_t depth = 0;
    for (auto const& json : lines) {
        auto const line = json.get<std::string>();
        std::size_t const here = line.find_first_not_of(' ') / 2;
        std::string const text = line.substr(2 * here);
        if (here <= depth && &json != &lines.front())
            prefix += std::string(depth - here, ')') + ",";
        depth = here;
        std::size_t const word = text.find(' ');
        if (word != std::string::npos)
            prefix += text.substr(0, word) + "(" + text.substr(word + 1) + ")";
        else if (text.find('_') != std::string::npos || text == "NOT")
            prefix += text + "(";
        else if (text != "(nothing)")
            prefix += text;
    }
    return prefix + std::string(depth, ')');
}

} // namespace

TEST(GenQueryCondition, DrawsWhatThePrefixFormSays) {
    std::mt19937 random(4714);
    for (std::size_t round = 0; round < effort(300); ++round) {
        std::string const text = random_condition(random, 1 + static_cast<int>(random() % 12));
        nlohmann::json const answer = json_of(condition({"--tree", "--json", text}));
        ASSERT_EQ(answer["prefix"], prefix_of(answer["tree"])) << text;
    }
}

TEST(GenQueryCondition, DeepTreesGrowNoWiderThanPeopleCanSee) {
    std::string const tree = condition({"--tree", std::string(50, '~') + "a"}).output;
    EXPECT_NE(tree.find("\n" + std::string(80, ' ') + "NOT\n"), std::string::npos);
    EXPECT_NE(tree.find("\n" + std::string(80, ' ') + "[41] NOT\n"), std::string::npos);
    EXPECT_NE(tree.find("\n" + std::string(80, ' ') + "[50] HPATH a\n"), std::string::npos);
}

TEST(GenQueryCondition, RewritesLinesOfStandardInput) {
    ProgramResult const result = condition({"--stdin"}, "a = 1\n\nb ==\ntime < 2us");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "EQUAL_TO(HPATH(a),BUS(1))\n"
                             "\n"
                             "EQUAL_TO(HPATH(b),)\n"
                             "TIME_LT(2us)\n");
    EXPECT_EQ(result.errors, "gen_query: line 3: Missing left hand side of equation\n");
    EXPECT_EQ(condition({"--stdin"}, "a\nb\n").status, 0);
    EXPECT_EQ(condition({"--stdin"}, "").output, "");
}

TEST(GenQueryCondition, AnswersInJson) {
    ProgramResult const one = condition({"a = b))", "--json", "--tokens", "--tree"});
    EXPECT_EQ(one.status, 1);
    EXPECT_THAT(one.errors,
                testing::StartsWith("gen_query: Unbalanced number of right parenthesis\n"));
    nlohmann::json const answer = json_of(one);
    EXPECT_EQ(answer["error"].get<std::string>().find("Unbalanced number"), 0U);
    EXPECT_EQ(answer["condition"], "a = b))");
    EXPECT_EQ(answer["prefix"], "");
    EXPECT_EQ(answer["tokens"].size(), 5U);
    EXPECT_EQ(answer["tokens"][0], (nlohmann::json{{"type", 1}, {"name", "path"}, {"text", "a"}}));
    EXPECT_EQ(answer["tree"], nlohmann::json::array());
    EXPECT_EQ(answer["diagnostics"].size(), 4U);
    EXPECT_EQ(answer["internal_errors"]["paren_count >= 0"], 2);

    nlohmann::json const many = json_of(condition({"--stdin", "--json"}, "a\n=\n"));
    EXPECT_EQ(many["prefixes"], (nlohmann::json{"HPATH(a)", ""}));
    EXPECT_EQ(many["conditions"][0]["diagnostics"], nlohmann::json::array());
    EXPECT_EQ(many["conditions"][1]["diagnostics"][0], "Missing left hand side of equation");
}

TEST(GenQueryCondition, WantsAConditionOrStandardInput) {
    EXPECT_EQ(condition({}).status, 2);
    EXPECT_EQ(condition({"--stdin", "a"}).status, 2);
    EXPECT_EQ(condition({"--stdin", "--tree"}).status, 2);
    EXPECT_EQ(condition({"a", "b"}).status, 2);
}
