#include "gen_dyn_flag.h"

#include "environment.h"
#include "flag_recorder.h"
#include "temp_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using testing::ElementsAre;
using testing::IsEmpty;

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
