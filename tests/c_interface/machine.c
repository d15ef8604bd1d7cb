/* Time, machine, notices. */

#include "check.h"

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
    CHECK(ROWS(gen_c_notice_lines(GEN_C_NOTICE_TRADEMARK, "#\n# ", &table), GEN_C_OK) == 14);
    CHECK(ROWS(gen_c_notice_lines(GEN_C_NOTICE_BANNER, "#\n# ", &table), GEN_C_OK) == 26);
    CHECK(ROWS(gen_c_do_not_edit("# ", &table), GEN_C_OK) == 3);
}

void use_machine(void) {
    time_and_machine();
    notices();
}
