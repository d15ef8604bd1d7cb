#include "gen_query.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

TEST(GenQueryUnits, ListsBothTables) {
    ProgramResult const result = run_gen_query({"units"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "index  short name  long name    magnitude\n"
                             "0      s           second       0\n"
                             "1      ms          millisecond  -3\n"
                             "2      us          microsecond  -6\n"
                             "3      ns          nanosecond   -9\n"
                             "4      ps          picosecond   -12\n"
                             "index  short name  long name  magnitude\n"
                             "0      Hz          hertz      0\n"
                             "1      kHz         kilohertz  3\n"
                             "2      MHz         megahertz  6\n"
                             "3      GHz         gigahertz  9\n");
}

TEST(GenQueryUnits, TablesAreListsInJson) {
    nlohmann::json const answers = nlohmann::json::parse(run_gen_query({"units", "--json"}).output);
    ASSERT_EQ(answers["time_units"].size(), 5U);
    ASSERT_EQ(answers["frequency_units"].size(), 4U);
    EXPECT_EQ(answers["time_units"][4], nlohmann::json::parse(R"(
        {"index": 4, "short_name": "ps", "long_name": "picosecond", "magnitude": -12})"));
    EXPECT_EQ(answers["frequency_units"][1], nlohmann::json::parse(R"(
        {"index": 1, "short_name": "kHz", "long_name": "kilohertz", "magnitude": 3})"));
}
