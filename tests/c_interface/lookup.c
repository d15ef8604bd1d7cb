/* Start, project, lookup, names of files and the environment. */

#include "check.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static void before_the_start(void) {
    gen_c_table* table = NULL;
    CHECK(gen_c_is_started() == 0);
    CHECK(gen_c_find("counter.v", &text) == GEN_C_NOT_STARTED);
    CHECK_TEXT(gen_c_reason(), "gen_c_start has not been called");
    CHECK(text.bytes == NULL);
    CHECK(gen_c_where(&table) == GEN_C_NOT_STARTED && table == NULL);
    CHECK(gen_c_finish() == GEN_C_NOT_STARTED);
    CHECK(gen_c_start(NULL, NULL) == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_start("/no/such/root", NULL) == GEN_C_NOT_FOUND);
    CHECK(gen_c_start("", NULL) == GEN_C_NOT_FOUND);
    CHECK(gen_c_start("/etc/passwd", NULL) == GEN_C_NOT_FOUND); /* a later start has the choice */
    CHECK(gen_c_is_started() == 0);
    unsetenv("KORVANE_DIR");
    CHECK(gen_c_start(NULL, "no_such_executable") == GEN_C_NOT_FOUND);
    CHECK(strlen(gen_c_version()) != 0);
}

static void start(char const* root) {
    gen_c_table* table = NULL;
    CHECK(gen_c_start(root, NULL) == GEN_C_OK);
    CHECK(gen_c_start(root, NULL) == GEN_C_OK);
    CHECK(gen_c_start("/", NULL) == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_start(NULL, "/bin/sh") == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_is_started() == 1);

    CHECK(gen_c_where(&table) == GEN_C_OK && gen_c_table_rows(table) == 1);
    CHECK(gen_c_table_columns(table) == 5);
    CHECK_TEXT(text_at(table, 0, "file_name"), "korvane_gen");
    CHECK(gen_c_table_kind(table, 0, column_of(table, "graphical_shell")) == GEN_C_TRUTH);
    CHECK(gen_c_table_kind(table, 1, 0) == GEN_C_NOTHING);
    CHECK(gen_c_table_name(table, 5) == NULL);
    gen_c_table_free(table);

    CHECK(ROWS(gen_c_installation(&table), GEN_C_OK) == 1);
    CHECK(ROWS(gen_c_libraries(&table), GEN_C_OK) == 29);
    CHECK(ROWS(gen_c_device_files(&table), GEN_C_OK) == 2);
    CHECK(gen_c_library(2, &text) == GEN_C_OK && ends_in(text.bytes, "/libraries/vhdl/"));
    CHECK(gen_c_library(-1, &text) == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_library(29, &text) == GEN_C_INTERNAL_ERROR);
    char const* condition = NULL;
    char const* source = NULL;
    int line = 0;
    CHECK(gen_c_report_count() == 1);
    CHECK(gen_c_report(0, &condition, &source, &line) == GEN_C_OK && line > 0);
    CHECK_TEXT(condition, "type < GEN_LIB_SIZE");
    CHECK_TEXT(source, "gen_path");
    CHECK(gen_c_report(1, NULL, NULL, NULL) == GEN_C_NOT_FOUND);
}

static void project(void) {
    gen_c_table* table = NULL;
    char directory[4096];
    CHECK(getcwd(directory, sizeof directory) != NULL && gen_c_set_project(directory) == GEN_C_OK);
    CHECK(gen_c_set_database("db") == GEN_C_OK);
    CHECK(gen_c_set_output("/no/such") == GEN_C_OK && gen_c_set_output("") == GEN_C_OK);
    CHECK(gen_c_set_project_libraries("lib") == GEN_C_OK);
    CHECK(gen_c_set_user_libraries("../home/ada/lib; /nowhere") == GEN_C_OK);
    CHECK(gen_c_set_project(NULL) == GEN_C_BAD_ARGUMENT);
    CHECK_TEXT(gen_c_reason(), "directory is null");
    CHECK(gen_c_project(&table) == GEN_C_OK);
    CHECK_TEXT(text_at(table, 0, "project_library_paths"), "lib");
    CHECK_TEXT(text_at(table, 0, "database"), "db");
    gen_c_table_free(table);
    CHECK(ROWS(gen_c_directories(GEN_C_USER_LIBRARIES, &table), GEN_C_OK) == 2);
    CHECK(ROWS(gen_c_directories(GEN_C_EDA_LIBRARIES, &table), GEN_C_OK) > 1);
    CHECK(gen_c_directories(7, &table) == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_relative_to_project("/etc/passwd", &text) == GEN_C_NOT_FOUND);
    CHECK(gen_c_relative_to_project("nothing.v", &text) == GEN_C_NOT_FOUND);
    CHECK(gen_c_relative_to_project("", &text) == GEN_C_NOT_FOUND);
    CHECK(gen_c_relative_to_project("counter.v", &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "counter.v");
    CHECK(ROWS(gen_c_file_types(&table), GEN_C_OK) == 7);
}

static void lookup(void) {
    gen_c_table* table = NULL;
    size_t names = 99;
    CHECK(gen_c_find("counter.v", &text) == GEN_C_OK && ends_in(text.bytes, "counter.v"));
    CHECK(gen_c_relative_to_project(text.bytes, &more) == GEN_C_OK);
    CHECK_TEXT(more.bytes, "counter.v");
    CHECK(gen_c_find("nothing.v", &text) == GEN_C_NOT_FOUND);
    CHECK(gen_c_find(NULL, &text) == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_find("counter.v", NULL) == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_find_eda("cells.v", &text) == GEN_C_OK &&
          ends_in(text.bytes, "/eda/mentor/cells.v"));

    CHECK(gen_c_find_cached("counter.v", &text) == GEN_C_OK);
    CHECK(gen_c_find_cached("nothing.v", &text) == GEN_C_NOT_FOUND);
    CHECK(gen_c_cache_size(&names) == GEN_C_OK && names == 2);
    CHECK(gen_c_find_cached("counter.v", &text) == GEN_C_OK && ends_in(text.bytes, "counter.v"));
    CHECK(gen_c_clear_cache() == GEN_C_OK);
    CHECK(gen_c_cache_size(&names) == GEN_C_OK && names == 0);

    CHECK(gen_c_include("segments.vh", "inc/display.vh", "/copy/display.vh", &text, &more) ==
          GEN_C_OK);
    CHECK(ends_in(text.bytes, "inc/segments.vh"));
    CHECK_TEXT(more.bytes, "/copy/segments.vh");
    CHECK(gen_c_include("segments.vh", NULL, NULL, &text, &more) == GEN_C_NOT_FOUND);
    CHECK(gen_c_sources("counter", 0, &table) == GEN_C_OK && gen_c_table_rows(table) > 2);
    CHECK_TEXT(text_at(table, 0, "from"), "project");
    CHECK(integer_at(table, 0, "group") == 1);
    gen_c_table_free(table);
    table = NULL;
    CHECK(ROWS(gen_c_sources("nothing", 1, &table), GEN_C_NOT_FOUND) == 0);

    CHECK(gen_c_trace_find("adder.v", 0, 1, &table) == GEN_C_OK);
    CHECK_TEXT(text_at(table, 0, "standing"), "wins");
    CHECK_TEXT(text_at(table, 1, "standing"), "shadowed");
    gen_c_table_free(table);
    table = NULL;
    CHECK(ROWS(gen_c_trace_find("adder.v", 0, 0, &table), GEN_C_OK) == 1);
    CHECK(ROWS(gen_c_trace_find("nothing.v", 1, 0, &table), GEN_C_NOT_FOUND) > 5);
    CHECK(ROWS(gen_c_trace_include("segments.vh", "inc/display.vh", NULL, 0, &table), GEN_C_OK) >
          1);
    CHECK(ROWS(gen_c_trace_sources("counter", 0, 1, &table), GEN_C_OK) > 7);
    CHECK(gen_c_clear_paths() == GEN_C_OK);
    CHECK(gen_c_find("counter.v", &text) == GEN_C_OK);
}

static void names(void) {
    gen_c_table* table = NULL;
    CHECK(ROWS(gen_c_tool_files(&table), GEN_C_OK) == 30);
    CHECK(gen_c_set_database("/p/db/") == GEN_C_OK);
    CHECK(gen_c_database_file("chip", "pdb", &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "/p/db/chip.pdb");
    CHECK(gen_c_temporary_file(".", "report", 42, &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "./rep0000002a.tmp");
    CHECK(remove(text.bytes) == 0);
    CHECK(gen_c_temporary_file("/no/such", "a", 1, &text) == GEN_C_FAILED);
    CHECK(gen_c_temporary_file(NULL, "a/b", 1, &text) == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_temporary_file(NULL, "a", 65536, &text) == GEN_C_BAD_ARGUMENT);
    setenv("HOME", ".", 1);
    CHECK(gen_c_profile_directory(&text) == GEN_C_OK && ends_in(text.bytes, ".dravik.korvane"));
    unsetenv("HOME");
    CHECK(gen_c_profile_directory(&text) == GEN_C_FAILED);

    int wanted = 2;
    unsetenv("KORVANE_BIT_TYPE");
    CHECK(gen_c_is_64bit_wanted(&wanted) == GEN_C_OK && wanted == 0);
    setenv("KORVANE_PLATFORM", "linux", 1);
    CHECK(gen_c_enter_64bit("no_such_tool", &text, &more) == GEN_C_NOT_FOUND);
    setenv("PATH", "/bin", 1);
    CHECK(gen_c_enter_64bit("fitter", &text, &more) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "/bin");
    CHECK(gen_c_environment("PATH", &text) == GEN_C_OK && ends_in(text.bytes, "linux64/:/bin"));
    CHECK(gen_c_environment("NO_SUCH_VARIABLE", &text) == GEN_C_NOT_FOUND);
    CHECK(gen_c_leave_64bit("/bin", "") == GEN_C_OK);
    CHECK_TEXT(getenv("PATH"), "/bin");
}

void use_lookup(char const* root) {
    before_the_start();
    start(root);
    project();
    lookup();
    names();
}
