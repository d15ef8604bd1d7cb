#include "gen_version.h"

#include <gtest/gtest.h>
#include <string>

TEST(Version, LibraryIsTheOneOfTheHeaders) {
    EXPECT_STREQ(gen_get_version(), GEN_VERSION);
}

TEST(Version, StringHasTheThreeNumbers) {
    EXPECT_EQ(GEN_VERSION, std::to_string(GEN_VERSION_MAJOR) + "." +
                               std::to_string(GEN_VERSION_MINOR) + "." +
                               std::to_string(GEN_VERSION_PATCH));
}
