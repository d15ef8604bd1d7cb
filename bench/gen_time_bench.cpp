#include "gen_time.h"

#include "contest.h"

#include <cstdlib>
#include <ctime>
#include <fmt/chrono.h>

namespace {

void write_pair(char* out, int value) {
    out[0] = static_cast<char>('0' + value / 10);
    out[1] = static_cast<char>('0' + value % 10);
}

std::string date_of_asctime(std::time_t instant) {
    std::string text = std::asctime(std::localtime(&instant));
    text.pop_back();
    return text;
}

void enter_dates(std::string const& work, char const* zone) {
    auto const prepare = [zone](std::size_t turn) {
        if (turn == 0 && zone != nullptr)
            setenv("TZ", zone, 1);
        else if (turn == 0)
            unsetenv("TZ");
    };
    enter(work, "gen", [prepare](std::size_t turn) {
        prepare(turn);
        return gen_get_current_date_and_time(0);
    });
    enter(work, "localtime, asctime", [prepare](std::size_t turn) {
        prepare(turn);
        return date_of_asctime(std::time(nullptr));
    });
}

Family const dates{[] {
    enter_dates("gen_get_current_date_and_time(0)", nullptr);
    enter_dates("gen_get_current_date_and_time(0), TZ set", "CET-1CEST,M3.5.0,M10.5.0/3");
}};

/// Durations below 100 hours.
std::string limit_elapsed(long seconds) {
    auto const rest = static_cast<int>(seconds);
    char text[8];
    write_pair(text, rest / 3600);
    text[2] = ':';
    write_pair(text + 3, rest / 60 % 60);
    text[5] = ':';
    write_pair(text + 6, rest % 60);
    return std::string(text, sizeof text);
}

Family const durations{[] {
    std::vector<long> seconds;
    for (std::size_t i = 0; i < input_count; ++i)
        seconds.push_back(static_cast<long>(random_below(86400)));
    std::string const work = "gen_format_elapsed_time";
    enter(work, "gen", [seconds](std::size_t turn) {
        return gen_format_elapsed_time(seconds[turn % input_count]);
    });
    enter(work, "fmt chrono %T", [seconds](std::size_t turn) {
        return fmt::format("{:%T}", std::chrono::seconds(seconds[turn % input_count]));
    });
    enter(work, "limit",
          [seconds](std::size_t turn) { return limit_elapsed(seconds[turn % input_count]); });
}};

} // namespace
