#include "mem.h"

#include <gtest/gtest.h>

// Registers one of each and forgets them again, so that what is asked in between is this test's.

TEST(MemCallback, UnsetGivesNeutralAnswers) {
    EXPECT_EQ(mem_gen_get_korvane_path(), "");
    EXPECT_EQ(mem_gen_get_module_filename(), "");
    EXPECT_EQ(mem_gen_get_db_dir_path_string(), "");
    EXPECT_FALSE(mem_gen_is_in_ui_process());
    EXPECT_EQ(mem_gen_get_project_output_directory(), nullptr);
}

TEST(MemCallback, EachAnswersThroughItsOwnFunctionUntilForgotten) {
    mem_set_gen_get_korvane_path_callback([] { return STR("/opt/k/"); });
    mem_set_gen_get_module_filename_callback([] { return STR("tool"); });
    mem_set_gen_get_db_dir_path_string_callback([] { return STR("/work/db/"); });
    mem_set_gen_is_in_ui_process_callback([] { return true; });
    mem_set_gen_get_project_output_directory_callback([] { return "output/"; });
    EXPECT_EQ(mem_gen_get_korvane_path(), "/opt/k/");
    EXPECT_EQ(mem_gen_get_module_filename(), "tool");
    EXPECT_EQ(mem_gen_get_db_dir_path_string(), "/work/db/");
    EXPECT_TRUE(mem_gen_is_in_ui_process());
    EXPECT_STREQ(mem_gen_get_project_output_directory(), "output/");

    mem_set_gen_is_in_ui_process_callback([] { return false; });
    EXPECT_FALSE(mem_gen_is_in_ui_process());

    mem_set_gen_get_korvane_path_callback(nullptr);
    mem_set_gen_get_module_filename_callback(nullptr);
    mem_set_gen_get_db_dir_path_string_callback(nullptr);
    mem_set_gen_is_in_ui_process_callback(nullptr);
    mem_set_gen_get_project_output_directory_callback(nullptr);
    EXPECT_EQ(mem_gen_get_korvane_path(), "");
    EXPECT_EQ(mem_gen_get_module_filename(), "");
    EXPECT_EQ(mem_gen_get_db_dir_path_string(), "");
    EXPECT_FALSE(mem_gen_is_in_ui_process());
    EXPECT_EQ(mem_gen_get_project_output_directory(), nullptr);
}
