#include "gen_c_table.h"

#include <algorithm>
#include <new>
#include <utility>

namespace gen_c {

gen_c_status give(gen_c_table&& table, gen_c_table** answer, gen_c_status status) {
    auto* const given = new (std::nothrow) gen_c_table(std::move(table));
    if (given == nullptr)
        return GEN_C_NO_MEMORY;
    *answer = given;
    return status;
}

gen_c_status give_row(std::initializer_list<Field> fields, gen_c_table** answer,
                      gen_c_status status) {
    gen_c_table table{};
    for (Field const& field : fields)
        table.column(field.name);
    for (Field const& field : fields)
        table.row({field.value});
    return give(std::move(table), answer, status);
}

gen_c_status give_lines(std::string_view text, gen_c_table** answer) {
    gen_c_table table{"line"};
    while (!text.empty()) {
        std::string_view const line = text.substr(0, text.find('\n'));
        table.row({line});
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return give(std::move(table), answer);
}

} // namespace gen_c

void gen_c_table_free(gen_c_table* table) {
    delete table;
}

size_t gen_c_table_rows(gen_c_table const* table) {
    return table != nullptr ? table->rows() : 0;
}

size_t gen_c_table_columns(gen_c_table const* table) {
    return table != nullptr ? table->names().size() : 0;
}

char const* gen_c_table_name(gen_c_table const* table, size_t column) {
    return column < gen_c_table_columns(table) ? table->names()[column] : nullptr;
}

static gen_c::Cell const& cell_of(gen_c_table const* table, size_t row, size_t column) {
    static gen_c::Cell const none;
    gen_c::Cell const* const cell = table != nullptr ? table->cell(row, column) : nullptr;
    return cell != nullptr ? *cell : none;
}

gen_c_kind gen_c_table_kind(gen_c_table const* table, size_t row, size_t column) {
    return cell_of(table, row, column).kind();
}

char const* gen_c_table_text(gen_c_table const* table, size_t row, size_t column) {
    return cell_of(table, row, column).text();
}

int64_t gen_c_table_integer(gen_c_table const* table, size_t row, size_t column) {
    return cell_of(table, row, column).integer();
}

double gen_c_table_real(gen_c_table const* table, size_t row, size_t column) {
    return cell_of(table, row, column).real();
}
