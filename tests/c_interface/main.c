/* Uses every function of the C interface, as a C program does.
 *
 *     gen_c_test ROOT
 *
 * ROOT is a copy of the example suite; its project is the current directory. The exit status is the
 * number of checks that failed. */

#include "check.h"

#include <stdio.h>
#include <string.h>

int failures = 0;
gen_c_text text = GEN_C_TEXT_INIT;
gen_c_text more = GEN_C_TEXT_INIT;

void check(int is_right, char const* what, char const* file, int line) {
    if (is_right)
        return;
    ++failures;
    printf("%s:%d: %s (reason: %s)\n", file, line, what, gen_c_reason());
}

void check_text(char const* value, char const* expected, char const* file, int line) {
    check(value != NULL && strcmp(value, expected) == 0, value != NULL ? value : "(null)", file,
          line);
}

int ends_in(char const* whole, char const* end) {
    size_t const size = strlen(whole);
    return size >= strlen(end) && strcmp(whole + size - strlen(end), end) == 0;
}

size_t column_of(gen_c_table const* table, char const* name) {
    size_t column = 0;
    while (column < gen_c_table_columns(table) &&
           strcmp(gen_c_table_name(table, column), name) != 0)
        ++column;
    return column;
}

char const* text_at(gen_c_table const* table, size_t row, char const* name) {
    char const* const found = gen_c_table_text(table, row, column_of(table, name));
    return found != NULL ? found : "(none)";
}

int64_t integer_at(gen_c_table const* table, size_t row, char const* name) {
    return gen_c_table_integer(table, row, column_of(table, name));
}

size_t rows_of(gen_c_status status, gen_c_table** table, gen_c_status expected, char const* file,
               int line) {
    check(status == expected, "status of a table", file, line);
    size_t const rows = gen_c_table_rows(*table);
    gen_c_table_free(*table);
    *table = NULL;
    return rows;
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
    use_lookup(argv[1]);
    use_text();
    use_machine();
    use_editing();
    after_the_end(argv[1]);
    gen_c_table_free(NULL);
    CHECK(gen_c_table_rows(NULL) == 0 && gen_c_table_columns(NULL) == 0);
    gen_c_text_free(&text);
    gen_c_text_free(&more);
    gen_c_text_free(NULL);
    return failures;
}
