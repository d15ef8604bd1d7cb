#include "gen_c_call.h"
#include "gen_c_table.h"
#include "gen_time.h"

#include <new>

using namespace gen_c;

struct gen_c_stopwatch {
    GEN_STOPWATCH watch;
};

template <typename Table, typename Data, typename Key>
static gen_c_status give_units(Key Data::*key, gen_c_table** units) {
    if (lacks("units", units))
        return GEN_C_BAD_ARGUMENT;
    MEM_LIST<Data> list;
    Table::get_entire_list(&list);
    gen_c_table table{"index", "short_name", "long_name", "magnitude"};
    for (Data const& data : list)
        table.row(
            {Table::get_list_index(data.*key), data.short_name, data.long_name, data.magnitude});
    return give(std::move(table), units);
}

gen_c_status gen_c_time_units(gen_c_table** units) {
    return give_units<GEN_TIME_UNIT>(&GEN_TIME_UNIT_DATA::unit, units);
}

gen_c_status gen_c_frequency_units(gen_c_table** units) {
    return give_units<GEN_TIME_FREQ>(&GEN_TIME_FREQ_DATA::freq, units);
}

gen_c_status gen_c_now(gen_c_table** answer) {
    if (lacks("answer", answer))
        return GEN_C_BAD_ARGUMENT;
    return give_row({{"date_and_time", gen_get_current_date_and_time(0)},
                     {"time", gen_get_current_time()},
                     {"seconds", gen_get_current_time_seconds()},
                     {"tick_count_ms", gen_get_tick_count()},
                     {"own_cpu_seconds", GEN_STOPWATCH::get_cpu_seconds_elapsed()}},
                    answer);
}

gen_c_status gen_c_date(int32_t seconds, gen_c_text* date) {
    return lacks("date", date) ? GEN_C_BAD_ARGUMENT
                               : put(date, gen_get_current_date_and_time(seconds));
}

gen_c_status gen_c_format_now(char const* format, gen_c_text* text) {
    if (lacks("format", format) || lacks("text", text))
        return GEN_C_BAD_ARGUMENT;
    STR now;
    return gen_format_current_date_and_time(&now, format) ? put(text, now) : GEN_C_NOT_FOUND;
}

gen_c_status gen_c_elapsed(int32_t seconds, gen_c_text* text) {
    return lacks("text", text) ? GEN_C_BAD_ARGUMENT
                               : put(text, gen_format_elapsed_time(long{seconds}));
}

gen_c_status gen_c_stopwatch_create(gen_c_stopwatch** watch) {
    if (lacks("watch", watch))
        return GEN_C_BAD_ARGUMENT;
    auto* const made = new (std::nothrow) gen_c_stopwatch;
    if (made == nullptr)
        return GEN_C_NO_MEMORY;
    *watch = made;
    return GEN_C_OK;
}

void gen_c_stopwatch_free(gen_c_stopwatch* watch) {
    delete watch;
}

static gen_c_status use(gen_c_stopwatch* watch, void (GEN_STOPWATCH::*action)()) {
    if (lacks("watch", watch))
        return GEN_C_BAD_ARGUMENT;
    (watch->watch.*action)();
    return GEN_C_OK;
}

gen_c_status gen_c_stopwatch_start(gen_c_stopwatch* watch) {
    return use(watch, &GEN_STOPWATCH::start);
}

gen_c_status gen_c_stopwatch_stop(gen_c_stopwatch* watch) {
    return use(watch, &GEN_STOPWATCH::stop);
}

gen_c_status gen_c_stopwatch_reset(gen_c_stopwatch* watch) {
    return use(watch, &GEN_STOPWATCH::reset);
}

gen_c_status gen_c_stopwatch_seconds(gen_c_stopwatch* watch, double* seconds) {
    if (lacks("watch", watch) || lacks("seconds", seconds))
        return GEN_C_BAD_ARGUMENT;
    *seconds = watch->watch.lap_time();
    return GEN_C_OK;
}

gen_c_status gen_c_stopwatch_lap(gen_c_stopwatch* watch, gen_c_text* text) {
    if (lacks("watch", watch) || lacks("text", text))
        return GEN_C_BAD_ARGUMENT;
    return put(text, watch->watch.lap());
}
