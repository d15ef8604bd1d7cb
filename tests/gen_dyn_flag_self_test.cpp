#include "environment.h"
#include "err_report.h"
#include "flag_recorder.h"
#include "gen_dyn_flag.h"
#include "temp_directory.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

TEST(DynFlagSelfTest, WithoutManagerReportsAndWritesNothing) {
    ErrorRecorder const recorder;
    TempDirectory const directory;
    ScopedCurrentDirectory const here(directory.path());
    GEN_DYN_FLAG::test_myself_out(nullptr);
    EXPECT_THAT(recorder.errors(), ElementsAre(flag_error("mgr!=0", 600)));
    EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

TEST(DynFlagSelfTest, WritesItsTranscriptToAFileNamedWithBackslashes) {
    TempDirectory const directory;
    ScopedCurrentDirectory const here(directory.path());
    std::string const file = directory.write("d:\\fenno\\comp\\mls\\flag_test.tst",
                                             std::string(5000, 'x')); // to be truncated
    ErrorRecorder const recorder;
    RecordingClearer clearer;
    GEN_DYN_FLAG_MANAGER manager(&clearer);
    GEN_DYN_FLAG::test_myself_out(&manager);
    EXPECT_EQ(read_file(file), "used=0 dirty= 0 clean=32\n"
                               "(0x1) f1\n"
                               "(0x2) f2\n"
                               "(0x4) f3\n"
                               "(0x8) f4\n"
                               "used=4 dirty= 0 clean=28\n"
                               "(0x1) f1\n"
                               "(0x5) f1 | f3\n"
                               "(0xd) f1 | f3 | f4\n"
                               "(0xc) f3 | f4\n"
                               "(0x9) f1 | f4\n"
                               "(0x8) f4\n"
                               "used=3 dirty= 0 clean=29\n"
                               "(0x18) f4 | f5\n"
                               "0\n"
                               "1\n"
                               "0\n"
                               "1\n"
                               "1\n"
                               "1\n"
                               "(0x18) f4 | f5\n"
                               "(0x8) f4\n");
    EXPECT_THAT(recorder.errors(), IsEmpty());
    EXPECT_THAT(clearer.sweeps, ElementsAre(0xFFFFFFFFU));
    EXPECT_EQ(manager.get_named_flag("f5").mask(), 0x10U);
}

static std::string seen_by_handler;

TEST(DynFlagSelfTest, OpensItsFileBeforeItUsesTheManager) {
    TempDirectory const directory;
    ScopedCurrentDirectory const here(directory.path());
    directory.write("d:\\fenno\\comp\\mls\\flag_test.tst", "of an earlier test");
    RecordingClearer clearer;
    GEN_DYN_FLAG_MANAGER manager(&clearer);
    manager.create_flag("f1"); // which the self-test gets first
    seen_by_handler = "nothing";
    ERR_HANDLER const previous =
        err_set_internal_error_handler([](char const*, char const*, char const*, int) {
            seen_by_handler = read_file("d:\\fenno\\comp\\mls\\flag_test.tst");
        });
    GEN_DYN_FLAG::test_myself_out(&manager);
    err_set_internal_error_handler(previous);
    EXPECT_EQ(seen_by_handler, "");
}

TEST(DynFlagSelfTest, UsesTheManagerAlthoughTheFileCannotBeWritten) {
    TempDirectory const directory;
    directory.make_directory("d:\\fenno\\comp\\mls\\flag_test.tst");
    ScopedCurrentDirectory const here(directory.path());
    ErrorRecorder const recorder;
    RecordingClearer clearer;
    GEN_DYN_FLAG_MANAGER manager(&clearer);
    GEN_DYN_FLAG::test_myself_out(&manager);
    EXPECT_THAT(recorder.errors(), IsEmpty());
    EXPECT_STREQ(manager.get_flag_name(GEN_DYN_FLAG(0x1F)).c_str(),
                 "(0x1f) f1 | DIRTY | f3 | f4 | f5");
}

namespace {

/// Names every slot: "n0" and so on, but for the one that is @p special.
void fill(GEN_DYN_FLAG_MANAGER& manager, unsigned slot = 32, char const* special = "") {
    for (unsigned i = 0; i < 32; ++i)
        manager.create_flag(i == slot ? special : ("n" + std::to_string(i)).c_str());
}

/// What the self-test writes about @p manager.
std::string transcript_of(GEN_DYN_FLAG_MANAGER& manager) {
    TempDirectory const directory;
    ScopedCurrentDirectory const here(directory.path());
    GEN_DYN_FLAG::test_myself_out(&manager);
    return read_file(directory / "d:\\fenno\\comp\\mls\\flag_test.tst");
}

constexpr char const* four_lines_of_none = "(0x0) \n(0x0) \n(0x0) \n(0x0) \n";

} // namespace

TEST(DynFlagSelfTest, FullManagerGivesNoFlags) {
    ErrorRecorder const recorder;
    RecordingClearer clearer;
    GEN_DYN_FLAG_MANAGER manager(&clearer);
    fill(manager);
    std::string const full = "used=32 dirty= 0 clean=0\n";
    EXPECT_EQ(transcript_of(manager), full + four_lines_of_none + full + four_lines_of_none +
                                          "(0x0) \n(0x0) \n" + full +
                                          "(0x0) \n"
                                          "0\n0\n1\n0\n1\n0\n"
                                          "(0x0) \n"
                                          "(0x0) \n");
    EXPECT_THAT(recorder.errors(), ElementsAre(flag_error("too many flags, can't create 'f1'", 355),
                                               flag_error("too many flags, can't create 'f2'", 355),
                                               flag_error("too many flags, can't create 'f3'", 355),
                                               flag_error("too many flags, can't create 'f4'", 355),
                                               flag_error("too many flags, can't create 'f5'", 355),
                                               flag_error("couldn't find flag 'f4'", 425)));
}

TEST(DynFlagSelfTest, FullManagerThatHasF4GivesItAlone) {
    ErrorRecorder const recorder;
    RecordingClearer clearer;
    GEN_DYN_FLAG_MANAGER manager(&clearer);
    fill(manager, 9, "f4");
    std::string const full = "used=32 dirty= 0 clean=0\n";
    EXPECT_EQ(transcript_of(manager), full + "(0x0) \n(0x0) \n(0x0) \n(0x200) f4\n" + full +
                                          "(0x0) \n(0x0) \n(0x200) f4\n"
                                          "(0x200) f4\n(0x200) f4\n(0x200) f4\n" +
                                          full +
                                          "(0x200) f4\n"
                                          "0\n1\n1\n0\n1\n1\n"
                                          "(0x200) f4\n"
                                          "(0x200) f4\n");
}

TEST(DynFlagSelfTest, StatisticsShowANamedSlotThatNobodySwept) {
    ErrorRecorder const recorder;
    GEN_DYN_FLAG_MANAGER manager(nullptr);
    fill(manager);
    manager.destroy_flag(GEN_DYN_FLAG(0x10));
    manager.create_flag("again");
    EXPECT_THAT(transcript_of(manager), StartsWith("used=31 dirty= 1 clean=0\n(0x0) \n"));
}

TEST(DynFlagSelfTest, LastLineIsTheHigherOfTwoNamedF4) {
    ErrorRecorder const recorder;
    RecordingClearer clearer;
    GEN_DYN_FLAG_MANAGER manager(&clearer);
    fill(manager, 20, "f4");
    for (unsigned const slot : {1U, 2U, 3U, 4U, 7U})
        manager.destroy_flag(GEN_DYN_FLAG(1U << slot));
    EXPECT_EQ(manager.create_flag("sweeps").mask(), 1U << 7);       // the other four are clean now
    EXPECT_THAT(transcript_of(manager), EndsWith("(0x14) f5 | f4\n" // f4 in slot 4, f5 in f2's
                                                 "0\n1\n0\n1\n1\n1\n"
                                                 "(0x14) f5 | f4\n"
                                                 "(0x100000) f4\n"));
    EXPECT_THAT(recorder.errors(), IsEmpty());
}

TEST(DynFlagSelfTest, ReportsWhatAUsedManagerAnswers) {
    TempDirectory const directory;
    ScopedCurrentDirectory const here(directory.path());
    ErrorRecorder const recorder;
    RecordingClearer clearer;
    GEN_DYN_FLAG_MANAGER manager(&clearer);
    manager.create_flag("f3");
    GEN_DYN_FLAG::test_myself_out(&manager);
    EXPECT_THAT(recorder.errors(), ElementsAre(flag_error("flag 'f3' (0x1) already exists", 344)));
}
