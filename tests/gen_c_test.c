/* Uses every function of the C interface, as a C program does.
 *
 *     gen_c_test ROOT
 *
 * ROOT is a copy of the example suite; its project is the current directory. The exit status is the
 * number of checks that failed. */

#include "gen_c.h"

#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static int failures = 0;
static gen_c_text text = GEN_C_TEXT_INIT;
static gen_c_text more = GEN_C_TEXT_INIT;

static void check(int is_right, char const* what, int line) {
    if (is_right)
        return;
    ++failures;
    printf("gen_c_test.c:%d: %s (reason: %s)\n", line, what, gen_c_reason());
}

static void check_text(char const* value, char const* expected, int line) {
    check(value != NULL && strcmp(value, expected) == 0, value != NULL ? value : "(null)", line);
}

#define CHECK(condition) check((condition) != 0, #condition, __LINE__)
#define CHECK_TEXT(value, expected) check_text((value), (expected), __LINE__)

static int ends_in(char const* whole, char const* end) {
    size_t const size = strlen(whole);
    return size >= strlen(end) && strcmp(whole + size - strlen(end), end) == 0;
}

/* The column of that name; past the last one where there is none. */
static size_t column_of(gen_c_table const* table, char const* name) {
    size_t column = 0;
    while (column < gen_c_table_columns(table) &&
           strcmp(gen_c_table_name(table, column), name) != 0)
        ++column;
    return column;
}

static char const* text_at(gen_c_table const* table, size_t row, char const* name) {
    char const* const found = gen_c_table_text(table, row, column_of(table, name));
    return found != NULL ? found : "(none)";
}

static int64_t integer_at(gen_c_table const* table, size_t row, char const* name) {
    return gen_c_table_integer(table, row, column_of(table, name));
}

/* Wants the status and frees what came with it. */
static size_t rows_of(gen_c_status status, gen_c_table** table, gen_c_status expected, int line) {
    check(status == expected, "status of a table", line);
    size_t const rows = gen_c_table_rows(*table);
    gen_c_table_free(*table);
    *table = NULL;
    return rows;
}

#define ROWS(call, expected) rows_of((call), &table, (expected), __LINE__)

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

static void conditions(void) {
    gen_c_table* table = NULL;
    CHECK(gen_c_condition("(|top|a = 1) && (time > 10ns)", &text, &more) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "LOGICAL_AND(EQUAL_TO(HPATH(|top|a),BUS(1)),TIME_GT(10ns))");
    CHECK(more.size == 0);
    CHECK(gen_c_condition("a == 1", &text, &more) == GEN_C_DIAGNOSED);
    CHECK_TEXT(more.bytes, "Missing left hand side of equation\n");
    CHECK(gen_c_report_count() == 0);
    CHECK(gen_c_condition("a) = (b", &text, &more) == GEN_C_DIAGNOSED && gen_c_report_count() != 0);
    CHECK(gen_c_condition_tokens("a = time", &table) == GEN_C_OK && gen_c_table_rows(table) == 3);
    CHECK(integer_at(table, 2, "type") == 9);
    CHECK_TEXT(text_at(table, 0, "text"), "a");
    gen_c_table_free(table);
    CHECK(gen_c_condition_tree("1,2ns = b", &table) == GEN_C_OK && gen_c_table_rows(table) == 3);
    CHECK_TEXT(text_at(table, 0, "text"), "EQUAL_TO");
    CHECK_TEXT(text_at(table, 1, "text"), "1,2ns");
    CHECK(integer_at(table, 2, "depth") == 1);
    gen_c_table_free(table);
}

static void strings(void) {
    int order = 0;
    CHECK(gen_c_compare_natural("file10", "file9", 0, &order) == GEN_C_OK && order > 0);
    CHECK(gen_c_compare_natural("FILE9", "file10", 1, &order) == GEN_C_OK && order < 0);
    CHECK(gen_c_compare_bytes("file10", "file9", 0, &order) == GEN_C_OK && order < 0);
    CHECK(gen_c_compare_bytes("A", "a", 1, &order) == GEN_C_OK && order == 0);
    CHECK(gen_c_compare_bytes("A", NULL, 1, &order) == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_fold("aBc", 0, &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "abc");
    CHECK(gen_c_fold("aBc", 1, &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "ABC");
    CHECK(gen_c_trim(" a\t", 0, &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "a\t");
    CHECK(gen_c_trim(" a\t", 1, &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "a");

    int32_t integer = 0;
    double real = 0;
    size_t used = 0;
    CHECK(gen_c_read_integer("-255 ns", &integer, &used) == GEN_C_OK && integer == -255 &&
          used == 4);
    CHECK(gen_c_read_integer("ns", &integer, NULL) == GEN_C_NOT_FOUND && integer == -255);
    CHECK(gen_c_write_integer(-255, 16, &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "ffffff01");
    CHECK(gen_c_write_integer(1, 37, &text) == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_read_real("1.5x", &real, &used) == GEN_C_OK && fabs(real - 1.5) < 1e-12 &&
          used == 3);
    CHECK(gen_c_read_real("x", &real, NULL) == GEN_C_NOT_FOUND);

    int matches = 0;
    CHECK(gen_c_wildcard("a*.v", 0, &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "^[aA].*\\.[vV]$");
    CHECK(gen_c_wildcard_matches("a*.v", 0, "ADD.V", &matches) == GEN_C_OK && matches == 1);
    CHECK(gen_c_wildcard_matches("a*.v", 0, "top.v", &matches) == GEN_C_OK && matches == 0);
    CHECK(gen_c_wildcard_matches("a{", 0, "a", &matches) == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_wildcard_matches("a{9999}", 0, "a", &matches) == GEN_C_BAD_ARGUMENT);

    uint32_t sum = 1;
    uint32_t other = 2;
    CHECK(gen_c_checksum("", &sum) == GEN_C_OK && sum == 0);
    CHECK(gen_c_checksum("a_bLv", &sum) == GEN_C_OK && sum != 0);
    CHECK(gen_c_checksum_sanitised("a b.v  ", &other) == GEN_C_OK && other == sum);
    CHECK(gen_c_sanitise("a b.v  ", &text) == GEN_C_OK && text.size == 5);
    CHECK_TEXT(text.bytes, "a_bLv");
    CHECK(gen_c_hash_size(14, &sum) == GEN_C_OK && sum == 31);
    CHECK(gen_c_hash_size(4294967292U, &sum) == GEN_C_INTERNAL_ERROR && sum == 0);
}

static void messages(void) {
    gen_c_table* table = NULL;
    char const* const arguments[] = {"top.v", "3", "97.25"};
    CHECK(gen_c_message("%2!d! errors in %1, %3!.1f!%% done", arguments, 3, &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "3 errors in top.v, 97.2% done");
    CHECK(gen_c_message("%2", arguments, 1, &text) == GEN_C_BAD_ARGUMENT);
    CHECK_TEXT(gen_c_reason(), "argument 2 is missing");
    CHECK(gen_c_message("%1!d!", arguments, 1, &text) == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_message("no inserts", NULL, 0, &text) == GEN_C_OK);
    CHECK(gen_c_message("<%1!!><%2!I64d!>%3", arguments, 3, &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "<><>97.25");
    char const* const wide[] = {"x", "y"};
    CHECK(gen_c_message("%1!lc!%2!c l!", wide, 2, &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "xy");
    CHECK(gen_c_message_inserts("%2!d! errors in %1", &table) == GEN_C_OK);
    CHECK(gen_c_table_rows(table) == 2 && integer_at(table, 1, "insert") == 2);
    CHECK_TEXT(text_at(table, 1, "conversion"), "%d");
    gen_c_table_free(table);
}

static void time_and_machine(void) {
    gen_c_table* table = NULL;
    CHECK(gen_c_time_units(&table) == GEN_C_OK && gen_c_table_rows(table) == 5);
    CHECK(integer_at(table, 4, "magnitude") == -12);
    gen_c_table_free(table);
    table = NULL;
    CHECK(ROWS(gen_c_frequency_units(&table), GEN_C_OK) == 4);
    CHECK(gen_c_now(&table) == GEN_C_OK);
    CHECK(gen_c_table_real(table, 0, column_of(table, "own_cpu_seconds")) >= 0);
    CHECK(integer_at(table, 0, "seconds") != 0);
    gen_c_table_free(table);
    table = NULL;
    CHECK(gen_c_date(1794746854, &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "Sun Nov 15 12:47:34 2026");
    CHECK(gen_c_format_now("100%%", &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "100%");
    CHECK(gen_c_format_now("", &text) == GEN_C_NOT_FOUND);
    CHECK(gen_c_elapsed(90061, &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "1:01:01:01");

    gen_c_stopwatch* watch = NULL;
    double seconds = -1;
    CHECK(gen_c_stopwatch_create(&watch) == GEN_C_OK);
    CHECK(gen_c_stopwatch_start(watch) == GEN_C_OK && gen_c_stopwatch_stop(watch) == GEN_C_OK);
    CHECK(gen_c_stopwatch_seconds(watch, &seconds) == GEN_C_OK && seconds >= 0);
    CHECK(gen_c_stopwatch_reset(watch) == GEN_C_OK);
    CHECK(gen_c_stopwatch_lap(watch, &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "0.000000 seconds");
    CHECK(gen_c_stopwatch_start(NULL) == GEN_C_BAD_ARGUMENT);
    gen_c_stopwatch_free(watch);
    gen_c_stopwatch_free(NULL);

    CHECK(gen_c_machine("127.0.0.1", &table) == GEN_C_OK);
    CHECK_TEXT(text_at(table, 0, "operating_system"), "Linux");
    CHECK_TEXT(text_at(table, 0, "ip_address"), "127.0.0.1");
    CHECK(integer_at(table, 0, "physical_ram_bytes") > 0);
    gen_c_table_free(table);
    table = NULL;
    CHECK(ROWS(gen_c_usage_report("test", NULL, 0, 0, 0, &table), GEN_C_NOT_FOUND) == 0);
    CHECK(ROWS(gen_c_usage_report("test", NULL, 1, 1, 1, &table), GEN_C_OK) == 2);
    CHECK(ROWS(gen_c_usage_report("test", "end", 0, 0, 0, &table), GEN_C_NOT_FOUND) == 0);
}

static void notices(void) {
    gen_c_table* table = NULL;
    CHECK(gen_c_notice(GEN_C_NOTICE_WARNING, &text) == GEN_C_OK && text.size > 20);
    CHECK(gen_c_notice(4, &text) == GEN_C_BAD_ARGUMENT);
    CHECK(ROWS(gen_c_notice_lines(GEN_C_NOTICE_BANNER, "-- ", &table), GEN_C_OK) == 13);
    CHECK(ROWS(gen_c_notice_lines(GEN_C_NOTICE_TRADEMARK, "", &table), GEN_C_OK) == 7);
    CHECK(ROWS(gen_c_do_not_edit("# ", &table), GEN_C_OK) == 3);
}

static void undo_file(void) {
    gen_c_undo* undo = NULL;
    CHECK(gen_c_undo_create("/no/such", &undo) == GEN_C_OK);
    CHECK(gen_c_undo_commit(undo, &text) == GEN_C_FAILED);
    gen_c_undo_free(undo);
    CHECK(gen_c_undo_create(".", &undo) == GEN_C_OK);
    CHECK(gen_c_undo_add(undo, 0, "lost", "") == GEN_C_BAD_ARGUMENT);
    CHECK_TEXT(gen_c_reason(), "section has not begun or is over");
    CHECK(gen_c_undo_begin(undo, "Nothing in it") == GEN_C_OK);
    CHECK(gen_c_undo_end(undo) == GEN_C_NOT_FOUND);
    CHECK(gen_c_undo_add(undo, 0, "lost", "") == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_undo_begin(undo, "Move node") == GEN_C_OK);
    CHECK(gen_c_undo_describe(undo, "one node") == GEN_C_OK);
    CHECK(gen_c_undo_add(undo, 0, "undo_move a", "restores a") == GEN_C_OK);
    CHECK(gen_c_undo_add(undo, 1, "redo_move a", "") == GEN_C_OK);
    CHECK(gen_c_undo_add(undo, 1, "", "") == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_undo_end(undo) == GEN_C_OK);
    CHECK(gen_c_undo_describe(undo, "lost") == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_undo_add(undo, 1, "lost", "") == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_undo_end(undo) == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_undo_commit(undo, &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "./undo_redo.txt");
    CHECK(remove(text.bytes) == 0);
    gen_c_undo_free(undo);
}

static void flags(void) {
    gen_c_flags* manager = NULL;
    gen_c_table* table = NULL;
    uint32_t mask = 0;
    CHECK(gen_c_flags_create(&manager) == GEN_C_OK);
    CHECK(gen_c_flags_add(manager, "alpha", &mask) == GEN_C_OK && mask == 1);
    CHECK(gen_c_flags_add(manager, "beta", &mask) == GEN_C_OK && mask == 2);
    CHECK(gen_c_flags_add(manager, "beta", &mask) == GEN_C_INTERNAL_ERROR && mask == 2);
    CHECK(gen_c_flags_find(manager, "alpha", &mask) == GEN_C_OK && mask == 1);
    CHECK(gen_c_flags_find(manager, "gamma", &mask) == GEN_C_INTERNAL_ERROR && mask == 0);
    CHECK(gen_c_flags_remove(manager, 1) == GEN_C_OK);
    CHECK(gen_c_flags_remove(manager, 1) == GEN_C_INTERNAL_ERROR);
    CHECK(gen_c_flags_describe(manager, 3, &text) == GEN_C_OK);
    CHECK_TEXT(text.bytes, "(0x3) DIRTY | beta");
    CHECK(gen_c_flags_statistics(manager, &table) == GEN_C_OK);
    CHECK(integer_at(table, 0, "used") == 1 && integer_at(table, 0, "clean") == 31);
    gen_c_table_free(table);
    CHECK(gen_c_flags_slots(manager, &table) == GEN_C_OK && gen_c_table_rows(table) == 32);
    CHECK_TEXT(text_at(table, 0, "state"), "dirty");
    CHECK_TEXT(text_at(table, 1, "name"), "beta");
    gen_c_table_free(table);
    for (int i = 0; i < 31; ++i) {
        char name[16];
        snprintf(name, sizeof name, "flag%d", i);
        CHECK(gen_c_flags_add(manager, name, &mask) == GEN_C_OK);
    }
    CHECK(gen_c_flags_swept(manager, &table) == GEN_C_OK && gen_c_table_rows(table) == 1);
    CHECK(integer_at(table, 0, "mask") == 1);
    gen_c_table_free(table);
    table = NULL;
    CHECK(ROWS(gen_c_flags_swept(manager, &table), GEN_C_OK) == 0);
    gen_c_flags_free(manager);
}

static void histogram(void) {
    gen_c_histogram* bins = NULL;
    gen_c_table* table = NULL;
    size_t items = 0;
    unsigned bin = 0;
    CHECK(gen_c_histogram_create(1, 0, 5, &bins) == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_histogram_create(0, HUGE_VAL, 5, &bins) == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_histogram_create(-1.7e308, 1.7e308, 5, &bins) == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_histogram_create(0, 10, 0, &bins) == GEN_C_BAD_ARGUMENT && bins == NULL);
    CHECK(gen_c_histogram_create(0, 10, 5, &bins) == GEN_C_OK);
    double const numbers[] = {0, 1.999, 2, 10, -1, 13, NAN};
    for (size_t i = 0; i < sizeof numbers / sizeof *numbers; ++i)
        CHECK(gen_c_histogram_add(bins, numbers[i]) == GEN_C_OK);
    CHECK(gen_c_histogram_size(bins, &items) == GEN_C_OK && items == 4);
    CHECK(gen_c_histogram_bin(bins, 10, &bin) == GEN_C_OK && bin == 4);
    CHECK(gen_c_histogram_bin(bins, 13, &bin) == GEN_C_NOT_FOUND);
    CHECK(gen_c_histogram_bins(bins, &table) == GEN_C_OK && gen_c_table_rows(table) == 5);
    CHECK(integer_at(table, 0, "count") == 2);
    gen_c_table_free(table);
    CHECK(gen_c_histogram_outside(bins, &table) == GEN_C_OK);
    CHECK(integer_at(table, 0, "below") == 1 && integer_at(table, 0, "above") == 1);
    CHECK(integer_at(table, 0, "not_a_number") == 1);
    gen_c_table_free(table);
    gen_c_histogram_free(bins);
}

/* Others in the process may still be asking. */
static void after_the_end(char const* root) {
    CHECK(gen_c_finish() == GEN_C_OK && gen_c_is_started() == 0);
    CHECK(gen_c_find("counter.v", &text) == GEN_C_OK && ends_in(text.bytes, "counter.v"));
    CHECK(gen_c_start(root, NULL) == GEN_C_OK && gen_c_is_started() == 1);
    CHECK(gen_c_finish() == GEN_C_OK && gen_c_finish() == GEN_C_OK);
}

int main(int argc, char** argv) {
    if (argc != 2)
        return 100;
    before_the_start();
    start(argv[1]);
    project();
    lookup();
    names();
    conditions();
    strings();
    messages();
    time_and_machine();
    notices();
    undo_file();
    flags();
    histogram();
    after_the_end(argv[1]);
    gen_c_table_free(NULL);
    CHECK(gen_c_table_rows(NULL) == 0 && gen_c_table_columns(NULL) == 0);
    gen_c_text_free(&text);
    gen_c_text_free(&more);
    gen_c_text_free(NULL);
    return failures;
}
