#include "gen_query.h"
#include "system_trouble.h"
#include "terminal.h"
#include "test_directories.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

using testing::EndsWith;
using testing::HasSubstr;

namespace {

ProgramResult run_flags(std::string const& script, std::vector<std::string> const& options = {}) {
    std::vector<std::string> arguments = {"flags"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    ProgramStart start;
    start.input = script;
    return run_gen_query(arguments, start);
}

} // namespace

TEST(GenQueryFlags, PrintsStepsSlotsAndReports) {
    ProgramResult const result = run_flags("create alpha\ncreate beta\ndestroy alpha\n"
                                           "create beta\ndestroy 0x6\nfind beta\nname 3\n");
    EXPECT_EQ(result.output,
              "step           answer                 swept  reported\n"
              "create alpha   (0x1) alpha            -      -\n"
              "create beta    (0x2) beta             -      -\n"
              "destroy alpha  (0x1) DIRTY            -      -\n"
              "create beta    (0x2) beta             -      flag 'beta' (0x2) already exists\n"
              "destroy 0x6    (0x6) beta | BAD_FLAG  -      flag 0x6: not a single bit\n"
              "find beta      (0x2) beta             -      -\n"
              "name 3         (0x3) DIRTY | beta     -      -\n"
              "[x#...... ........ ........ ........]  # named  x dirty  . clean\n"
              "used 1, dirty 0, clean 31\n");
    EXPECT_EQ(result.status, 1);
}

TEST(GenQueryFlags, ShowsTheSweepAndASlotNamedLikeAState) {
    std::string script;
    for (int i = 0; i < 32; ++i)
        script += "create n" + std::to_string(i) + "\n";
    script += "destroy n3\ndestroy n7\ncreate DIRTY\n";
    ProgramResult const result = run_flags(script);
    EXPECT_THAT(result.output, HasSubstr("create DIRTY  (0x80) DIRTY      0x88   -\n"));
    EXPECT_THAT(result.output, HasSubstr("[###.#### ######## ######## ########]"));
    EXPECT_EQ(result.status, 0);
}

TEST(GenQueryFlags, NameThatIsANumberIsDestroyedByName) {
    struct Row {
        char const* script;
        char const* last_step;
    };
    Row const rows[] = {
        {"create 2\ncreate 1\ndestroy 2\n", "destroy 2  (0x1) DIRTY  -      -\n"},
        {"create 2\ncreate 1\ndestroy 1\n", "destroy 1  (0x2) DIRTY  -      -\n"},
        {"create 7\ndestroy 7\n", "destroy 7  (0x1) DIRTY  -      -\n"},
        {"create a\ncreate 0x1\ndestroy 0x1\n", "destroy 0x1  (0x2) DIRTY  -      -\n"},
        {"create a\ndestroy 1\n", "destroy 1  (0x1) DIRTY  -      -\n"},
        // A name that was given back is a mask again.
        {"create a\ncreate 1\ndestroy 1\ndestroy 1\n", "destroy 1  (0x1) DIRTY  -      -\n"},
    };
    for (Row const& row : rows) {
        ProgramResult const result = run_flags(row.script);
        EXPECT_THAT(result.output, HasSubstr(row.last_step)) << row.script;
        EXPECT_EQ(result.status, 0) << row.script;
    }
}

TEST(GenQueryFlags, JsonHasStepsSlotsAndCounts) {
    std::string script;
    for (int i = 0; i < 32; ++i)
        script += "create n" + std::to_string(i) + "\n";
    script += "destroy n3\ndestroy n7\ncreate again\ndestroy again\ndestroy 0x6\n";
    ProgramResult const result = run_flags(script, {"--json"});
    EXPECT_EQ(result.status, 1);
    auto const json = nlohmann::json::parse(result.output, nullptr, /*allow_exceptions=*/false);
    ASSERT_TRUE(json.is_object());
    ASSERT_EQ(json["steps"].size(), 37U);
    EXPECT_EQ(json["steps"][34], nlohmann::json({{"step", "create again"},
                                                 {"answer", "(0x80) again"},
                                                 {"swept", {"0x88"}},
                                                 {"reported", nlohmann::json::array()}}));
    EXPECT_EQ(json["steps"][36], nlohmann::json({{"step", "destroy 0x6"},
                                                 {"answer", "(0x6) n1 | n2"},
                                                 {"swept", nlohmann::json::array()},
                                                 {"reported", {"flag 0x6: not a single bit"}}}));
    EXPECT_EQ(json["statistics"], nlohmann::json({{"used", 30}, {"dirty", 0}, {"clean", 2}}));
    ASSERT_EQ(json["slots"].size(), 32U);
    using Slot = nlohmann::json;
    EXPECT_EQ(json["slots"][2],
              Slot({{"slot", 2}, {"mask", "0x4"}, {"state", "named"}, {"name", "n2"}}));
    EXPECT_EQ(json["slots"][3],
              Slot({{"slot", 3}, {"mask", "0x8"}, {"state", "clean"}, {"name", nullptr}}));
    EXPECT_EQ(json["slots"][7],
              Slot({{"slot", 7}, {"mask", "0x80"}, {"state", "dirty"}, {"name", nullptr}}));
}

TEST(GenQueryFlags, UnknownStepIsAUsageErrorThatNamesItsLine) {
    ProgramResult const result = run_flags("create a\nbake b\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors, "gen_query: line 2: not a step: bake b\n");
}

TEST(GenQueryFlags, AnswersEveryStepAtOnceAtATerminal) {
    if (!terminal_trouble().empty())
        GTEST_SKIP() << terminal_trouble();
    auto const [status, seen] =
        run_at_terminal({TEST_BINARY_DIR "/gen_query", "flags"}, "create alpha\nbake\nslots\n");
    EXPECT_EQ(status, 0);
    EXPECT_THAT(seen, HasSubstr("(0x1) alpha\r\nflags> "));
    EXPECT_THAT(seen, HasSubstr("not a step"));
    EXPECT_THAT(seen, HasSubstr("#....... ........ ........ ........\r\nflags> "));
    EXPECT_THAT(seen, EndsWith("used 1, dirty 0, clean 31\r\n"));
}
