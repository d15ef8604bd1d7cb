/// What those who look for lost blocks forgive, and what they do not.

#include "run_program.h"
#include "sanitizer.h"
#include "test_directories.h"

#include <cstdlib>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class LostBlocks : public testing::Test {
  protected:
    void SetUp() override {
        if (!address_sanitizer)
            GTEST_SKIP() << "nobody looks for lost blocks in this build";
        char const* const options = std::getenv("ASAN_OPTIONS");
        if (options != nullptr && std::strstr(options, "detect_leaks=0") != nullptr)
            GTEST_SKIP() << "ASAN_OPTIONS keep the leak checker from looking";
        if (lose("block").errors.find("ptrace") != std::string::npos)
            GTEST_SKIP() << "the leak checker may not trace here";
    }

    static ProgramResult lose(std::string const& what) {
        return run_program({.arguments = {TEST_BINARY_DIR "/leak_probe", what}});
    }
};

} // namespace

TEST_F(LostBlocks, ListOfTheCLibraryIsForgiven) {
    ProgramResult const result = lose("nothing");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.errors, IsEmpty());
}

TEST_F(LostBlocks, LocaleIsNotForgiven) {
    ProgramResult const result = lose("locale");
    EXPECT_NE(result.status, 0);
    EXPECT_THAT(result.errors, HasSubstr("newlocale"));
}

TEST_F(LostBlocks, BlockIsNotForgiven) {
    ProgramResult const result = lose("block");
    EXPECT_NE(result.status, 0);
    EXPECT_THAT(result.errors, HasSubstr("10 byte(s) leaked"));
}
