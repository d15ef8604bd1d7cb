/* Conditions, strings, messages. */

#include "check.h"

#include <math.h>

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
    CHECK(gen_c_condition_tokens("~~))", &table) == GEN_C_OK && gen_c_table_rows(table) == 4);
    CHECK(gen_c_report_count() == 0);
    gen_c_table_free(table);
    CHECK(gen_c_condition_tree("1,2ns = b", &table) == GEN_C_OK && gen_c_table_rows(table) == 3);
    CHECK_TEXT(text_at(table, 0, "text"), "EQUAL_TO");
    CHECK_TEXT(text_at(table, 1, "text"), "1,2ns");
    CHECK(integer_at(table, 2, "depth") == 1);
    gen_c_table_free(table);
    CHECK(gen_c_condition_tree("a == 1", &table) == GEN_C_DIAGNOSED);
    CHECK(gen_c_table_rows(table) == 0 && gen_c_report_count() == 0);
    gen_c_table_free(table);
    CHECK(gen_c_condition_tree("a) = (b", &table) == GEN_C_DIAGNOSED);
    CHECK(gen_c_table_rows(table) == 0 && gen_c_report_count() == 1);
    gen_c_table_free(table);
    CHECK(gen_c_condition_tree(")", &table) == GEN_C_INTERNAL_ERROR);
    CHECK(gen_c_table_rows(table) == 0 && gen_c_report_count() != 0);
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
    CHECK(gen_c_fold(text.bytes + 1, 0, &text) == GEN_C_OK); /* overlaps what it is written to */
    CHECK_TEXT(text.bytes, "bc");
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

void use_text(void) {
    conditions();
    strings();
    messages();
}
