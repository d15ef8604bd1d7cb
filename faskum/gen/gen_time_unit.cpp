#include "gen_time_unit.h"

#include "gen_report.h"

#include <cstddef>

namespace {

constexpr GEN_TIME_UNIT_DATA unit_rows[] = {
    {GEN_TIME_UNIT::UNIT_S, "s", "second", 0},
    {GEN_TIME_UNIT::UNIT_MS, "ms", "millisecond", -3},
    {GEN_TIME_UNIT::UNIT_US, "us", "microsecond", -6},
    {GEN_TIME_UNIT::UNIT_NS, "ns", "nanosecond", -9},
    {GEN_TIME_UNIT::UNIT_PS, "ps", "picosecond", -12},
};

constexpr GEN_TIME_FREQ_DATA freq_rows[] = {
    {GEN_TIME_FREQ::FREQ_HZ, "Hz", "hertz", 0},
    {GEN_TIME_FREQ::FREQ_KHZ, "kHz", "kilohertz", 3},
    {GEN_TIME_FREQ::FREQ_MHZ, "MHz", "megahertz", 6},
    {GEN_TIME_FREQ::FREQ_GHZ, "GHz", "gigahertz", 9},
};

template <typename Row, std::size_t count>
int append_rows(Row const (&rows)[count], MEM_LIST<Row>* out) {
    if (out != nullptr)
        out->insert(out->end(), rows, rows + count);
    return int{count};
}

template <typename Row, std::size_t count>
int append_names(Row const (&rows)[count], char const* Row::*name, MEM_LIST<STR>* out) {
    if (out != nullptr)
        for (Row const& row : rows)
            out->emplace_back(row.*name);
    return int{count};
}

template <typename Row, std::size_t count, typename Key>
int index_of(Row const (&rows)[count], Key Row::*key, Key wanted) {
    for (std::size_t i = 0; i < count; ++i)
        if (rows[i].*key == wanted)
            return static_cast<int>(i);
    return -1;
}

/// What one column says in row @p index, or its neutral value for -1.
template <typename Row, std::size_t count, typename Value>
Value value_at(Row const (&rows)[count], Value Row::*column, int index, Value neutral) {
    return index >= 0 ? rows[index].*column : neutral;
}

} // namespace

int GEN_TIME_UNIT::get_entire_list(MEM_LIST<GEN_TIME_UNIT_DATA>* out) {
    return append_rows(unit_rows, out);
}

int GEN_TIME_UNIT::get_short_name_list(MEM_LIST<STR>* out) {
    return append_names(unit_rows, &GEN_TIME_UNIT_DATA::short_name, out);
}

int GEN_TIME_UNIT::get_long_name_list(MEM_LIST<STR>* out) {
    return append_names(unit_rows, &GEN_TIME_UNIT_DATA::long_name, out);
}

STR GEN_TIME_UNIT::get_short_name(UNIT_ENUM unit) {
    return value_at(unit_rows, &GEN_TIME_UNIT_DATA::short_name, get_list_index(unit), "");
}

STR GEN_TIME_UNIT::get_long_name(UNIT_ENUM unit) {
    return value_at(unit_rows, &GEN_TIME_UNIT_DATA::long_name, get_list_index(unit), "");
}

int GEN_TIME_UNIT::get_magnitude(UNIT_ENUM unit) {
    return value_at(unit_rows, &GEN_TIME_UNIT_DATA::magnitude, get_list_index(unit), 0);
}

int GEN_TIME_UNIT::get_list_index(UNIT_ENUM unit) {
    int const index = index_of(unit_rows, &GEN_TIME_UNIT_DATA::unit, unit);
    if (index < 0)
        report(reports::no_such_time_unit);
    return index;
}

int GEN_TIME_FREQ::get_entire_list(MEM_LIST<GEN_TIME_FREQ_DATA>* out) {
    return append_rows(freq_rows, out);
}

int GEN_TIME_FREQ::get_short_name_list(MEM_LIST<STR>* out) {
    return append_names(freq_rows, &GEN_TIME_FREQ_DATA::short_name, out);
}

int GEN_TIME_FREQ::get_long_name_list(MEM_LIST<STR>* out) {
    return append_names(freq_rows, &GEN_TIME_FREQ_DATA::long_name, out);
}

STR GEN_TIME_FREQ::get_short_name(FREQ_ENUM freq) {
    return value_at(freq_rows, &GEN_TIME_FREQ_DATA::short_name, get_list_index(freq), "");
}

STR GEN_TIME_FREQ::get_long_name(FREQ_ENUM freq) {
    return value_at(freq_rows, &GEN_TIME_FREQ_DATA::long_name, get_list_index(freq), "");
}

int GEN_TIME_FREQ::get_magnitude(FREQ_ENUM freq) {
    return value_at(freq_rows, &GEN_TIME_FREQ_DATA::magnitude, get_list_index(freq), 0);
}

int GEN_TIME_FREQ::get_list_index(FREQ_ENUM freq) {
    int const index = index_of(freq_rows, &GEN_TIME_FREQ_DATA::freq, freq);
    if (index < 0)
        report(reports::no_such_time_freq);
    return index;
}
