#include "gen_string_compare.h"

#include <gtest/gtest.h>

TEST(StrCmp, NullSortsFirst) {
    EXPECT_EQ(gen_strcmp(nullptr, nullptr), 0);
    EXPECT_EQ(gen_strcmp(nullptr, ""), -1);
    EXPECT_EQ(gen_strcmp("", nullptr), 1);
}
