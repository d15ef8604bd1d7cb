#pragma once

/* What the C program that uses the C interface checks with. */

#include "gen_c.h"

/* What calls write to. */
extern gen_c_text text;
extern gen_c_text more;

/* How many checks have failed. */
extern int failures;

/* Say where a check failed, and the reason that the interface gives. */
void check(int is_right, char const* what, char const* file, int line);
void check_text(char const* value, char const* expected, char const* file, int line);

#define CHECK(condition) check((condition) != 0, #condition, __FILE__, __LINE__)
#define CHECK_TEXT(value, expected) check_text((value), (expected), __FILE__, __LINE__)

int ends_in(char const* whole, char const* end);

/* The column of that name; past the last one where there is none. */
size_t column_of(gen_c_table const* table, char const* name);
char const* text_at(gen_c_table const* table, size_t row, char const* name);
int64_t integer_at(gen_c_table const* table, size_t row, char const* name);

/* Wants the status and frees what came with it; the rows that it had. */
size_t rows_of(gen_c_status status, gen_c_table** table, gen_c_status expected, char const* file,
               int line);

#define ROWS(call, expected) rows_of((call), &table, (expected), __FILE__, __LINE__)

/* The topics, each in the file of its name. */
void use_lookup(char const* root);
void use_text(void);
void use_machine(void);
void use_editing(void);
