#pragma once

/// The rows of an answer, as the calls of the C interface make them.

#include "gen_c.h"
#include "mem_alloc_sys.h"

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace gen_c {

/// One value of a table.
class Cell {
  public:
    Cell() = default;
    /// Of bool alone: pointers and other types that convert to it are no truths.
    Cell(std::same_as<bool> auto truth) : m_kind(GEN_C_TRUTH), m_integer(truth) {}
    template <std::integral Number>
    requires(!std::same_as<Number, bool>) Cell(Number number)
        : m_kind(GEN_C_INTEGER), m_integer(static_cast<std::int64_t>(number)) {}
    Cell(double number) : m_kind(GEN_C_REAL), m_real(number) {}
    Cell(std::string_view text) : m_kind(GEN_C_TEXT), m_text(text) {}
    Cell(char const* text) : Cell(std::string_view(text)) {}
    Cell(STR const& text) : Cell(std::string_view(text)) {}

    gen_c_kind kind() const { return m_kind; }
    char const* text() const { return m_kind == GEN_C_TEXT ? m_text.c_str() : nullptr; }
    std::int64_t integer() const { return m_integer; }
    double real() const { return m_real; }

  private:
    gen_c_kind m_kind = GEN_C_NOTHING;
    std::int64_t m_integer = 0;
    double m_real = 0;
    STR m_text;
};

/// Nothing for the empty text, which stands for "not known".
inline Cell known(STR const& text) {
    return text.empty() ? Cell() : Cell(text);
}

} // namespace gen_c

struct gen_c_table {
    /// @p names are constant texts.
    explicit gen_c_table(std::initializer_list<char const*> names) : m_names(names) {}

    void column(char const* name) { m_names.push_back(name); }
    void row(std::initializer_list<gen_c::Cell> cells) {
        m_cells.insert(m_cells.end(), cells.begin(), cells.end());
    }
    std::size_t rows() const { return m_names.empty() ? 0 : m_cells.size() / m_names.size(); }
    MEM_VECTOR<char const*> const& names() const { return m_names; }
    /// Null where there is none.
    gen_c::Cell const* cell(std::size_t row, std::size_t column) const {
        bool const there = row < rows() && column < m_names.size();
        return there ? &m_cells[row * m_names.size() + column] : nullptr;
    }

  private:
    MEM_VECTOR<char const*> m_names;
    MEM_VECTOR<gen_c::Cell> m_cells;
};

namespace gen_c {

/// Gives the table to the caller, and @p status.
gen_c_status give(gen_c_table&& table, gen_c_table** answer, gen_c_status status = GEN_C_OK);
/// A table of one row, of which the names stand before the values.
struct Field {
    char const* name;
    Cell value;
};
gen_c_status give_row(std::initializer_list<Field> fields, gen_c_table** answer,
                      gen_c_status status = GEN_C_OK);
/// A table of one column.
template <typename List>
gen_c_status give_list(char const* name, List const& list, gen_c_table** answer,
                       gen_c_status status = GEN_C_OK) {
    gen_c_table table{name};
    for (auto const& item : list)
        table.row({Cell(item)});
    return give(std::move(table), answer, status);
}
/// A table of the lines of a text, each of which ends in a line feed.
gen_c_status give_lines(std::string_view text, gen_c_table** answer);

} // namespace gen_c
