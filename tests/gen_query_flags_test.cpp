#include "gen_query.h"
#include "terminal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using testing::EndsWith;
using testing::HasSubstr;

static ProgramResult run_flags(std::string const& script) {
    ProgramStart start;
    start.input = script;
    return run_gen_query({"flags"}, start);
}

TEST(GenQueryFlags, TellsStepsSlotsAndReports) {
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

TEST(GenQueryFlags, UnknownStepIsAUsageErrorThatNamesItsLine) {
    ProgramResult const result = run_flags("create a\nbake b\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors, "gen_query: line 2: not a step: bake b\n");
}

TEST(GenQueryFlags, AnswersEveryStepAtOnceAtATerminal) {
    auto const [status, seen] =
        run_at_terminal({TEST_BINARY_DIR "/gen_query", "flags"}, "create alpha\nbake\nslots\n");
    EXPECT_EQ(status, 0);
    EXPECT_THAT(seen, HasSubstr("(0x1) alpha\r\nflags> "));
    EXPECT_THAT(seen, HasSubstr("not a step"));
    EXPECT_THAT(seen, HasSubstr("#....... ........ ........ ........\r\nflags> "));
    EXPECT_THAT(seen, EndsWith("used 1, dirty 0, clean 31\r\n"));
}
