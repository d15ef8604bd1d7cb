#include "gen_exe.h"
#include "mem.h"
#include "run_program.h"
#include "test_directories.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::IsEmpty;

namespace {

std::string process_probe(std::vector<std::string> arguments, std::string const& switches = "") {
    arguments.insert(arguments.begin(), TEST_BINARY_DIR "/process_probe");
    ProgramResult const result =
        run_program({.arguments = arguments, .set = {{"KORVANE_CFG", switches}}});
    EXPECT_EQ(result.status, 0) << result.errors;
    return result.output;
}

} // namespace

TEST(GenLowerProcessPriority, AsksForTenMoreAndIgnoresARefusal) {
    EXPECT_EQ(process_probe({"nice"}), "nice 10\n");
}

TEST(GenDebugBreak, NeedsItsSwitch) {
    for (char const* const guard : {"guarded", "bare"}) {
        EXPECT_EQ(process_probe({"break", guard}), "breaks 0, returned\n");
        EXPECT_EQ(process_probe({"break", guard}, "dont_catch_all_exceptions=off"),
                  "breaks 0, returned\n");
    }
}

TEST(GenDebugBreak, ReturnsWhereNobodyDebugs) {
    mem_cfg_set("dont_catch_all_exceptions", true);
    for (bool const guarded : {false, true})
        gen_debug_break(guarded); // would end a process that is not debugged
    mem_cfg_unset("dont_catch_all_exceptions");
}

TEST(GenDebugBreak, DropsWhatIsRaisedOnlyWhenGuarded) {
    EXPECT_EQ(process_probe({"break", "guarded"}, "dont_catch_all_exceptions"),
              "breaks 1, returned\n");
    EXPECT_EQ(process_probe({"break", "bare"}, "dont_catch_all_exceptions"), "breaks 1, raised\n");
}

TEST(MeminfoSwitches, AreReadThreeTimesByEveryCall) {
    std::string const reads = "profile_dll_usage 0\nlist_dll_details 0\nreport_modules_flow 0\n";
    EXPECT_EQ(process_probe({"report"}), reads + reads);
}

TEST(MeminfoMessages, ComeWithArgumentsAsAllMessagesDo) {
    std::string const reads = "profile_dll_usage 0\nlist_dll_details 0\nreport_modules_flow 0\n";
    std::string const report = reads + "GEN message fitter    , arguments\n";
    EXPECT_EQ(process_probe({"report"}, "report_modules_flow"), report + report);
}

TEST(GenDebugOutputString, DoesNothing) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    gen_debug_output_string("text");
    gen_debug_output_string(nullptr);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), IsEmpty());
    EXPECT_THAT(testing::internal::GetCapturedStdout(), IsEmpty());
}

namespace {

std::string last_message;

int keep_message(char const* owner, char const* text) {
    last_message = std::string(owner) + ": " + text;
    return 77;
}

} // namespace

TEST(GenMemMsgDebug, GoesOutUnderTheOwnerAndGivesTheChannelsAnswer) {
    MEM_MSG_SINK const previous = mem_msg_set_sink(keep_message);
    EXPECT_EQ(gen_mem_msg_debug("%s has %d of %ld, %.2f", "top", 3, 5L, 0.5), 77);
    EXPECT_EQ(last_message, "GEN: top has 3 of 5, 0.50");
    EXPECT_EQ(gen_mem_msg_debug("plain"), 77);
    EXPECT_EQ(last_message, "GEN: plain");
    EXPECT_EQ(gen_mem_msg_debug(nullptr), 77);
    EXPECT_EQ(last_message, "GEN: ");
    mem_msg_set_sink(previous);
}
