/* Undo files, flags, histograms. */

#include "check.h"

#include <math.h>
#include <stdio.h>

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
    CHECK(gen_c_undo_begin(undo, "Lost by the commit") == GEN_C_OK);
    CHECK(gen_c_undo_commit(undo, &text) == GEN_C_OK);
    CHECK(gen_c_undo_add(undo, 0, "lost", "") == GEN_C_BAD_ARGUMENT);
    CHECK(gen_c_undo_end(undo) == GEN_C_BAD_ARGUMENT);
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
    CHECK(gen_c_histogram_create(0, 4e-308, 1, &bins) == GEN_C_OK);
    gen_c_histogram_free(bins);
    bins = NULL;
    CHECK(gen_c_histogram_create(0, 4e-308, 2, &bins) == GEN_C_BAD_ARGUMENT && bins == NULL);
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

void use_editing(void) {
    undo_file();
    flags();
    histogram();
}
