#include "ver.h"

#include <gtest/gtest.h>

TEST(Ver, KeepsACopyOfTheDirectoryUntilCleanup) {
    EXPECT_EQ(ver_module_path(), nullptr);
    char directory[] = "/opt/k/linux/";
    ver_set_module_path(directory);
    directory[0] = '?';
    EXPECT_STREQ(ver_module_path(), "/opt/k/linux/");
    ver_set_module_path(ver_module_path());
    EXPECT_STREQ(ver_module_path(), "/opt/k/linux/");
    ver_set_module_path(nullptr);
    EXPECT_STREQ(ver_module_path(), "");
    ver_cleanup();
    EXPECT_EQ(ver_module_path(), nullptr);
    ver_cleanup();
}

TEST(Ver, GraphicalShellIsNamedWithoutExtension) {
    EXPECT_STREQ(ver_get_dravik_product_filename(), "korvane");
}

TEST(Ver, CopyrightIsOneAsciiLine) {
    EXPECT_STREQ(ver_get_dravik_copyright_ascii(),
                 "Copyright (C) 2026 Dravik Corporation. All rights reserved.");
}
