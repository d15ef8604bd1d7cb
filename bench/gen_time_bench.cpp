#include "gen_time.h"

#include "contest.h"

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fmt/chrono.h>

namespace {

void write_pair(char* out, int value) {
    out[0] = static_cast<char>('0' + value / 10);
    out[1] = static_cast<char>('0' + value % 10);
}

constexpr char weekdays[] = "SunMonTueWedThuFriSat";
constexpr char months[] = "JanFebMarAprMayJunJulAugSepOctNovDec";

/// Dates of four-digit years, and no question to the environment about the zone.
std::string limit_date() {
    std::time_t const now = std::time(nullptr);
    std::tm local;
    localtime_r(&now, &local);
    char text[24];
    std::memcpy(text, &weekdays[3 * local.tm_wday], 3);
    std::memcpy(text + 4, &months[3 * local.tm_mon], 3);
    write_pair(text + 8, local.tm_mday);
    write_pair(text + 11, local.tm_hour);
    write_pair(text + 14, local.tm_min);
    write_pair(text + 17, local.tm_sec);
    write_pair(text + 20, (local.tm_year + 1900) / 100);
    write_pair(text + 22, (local.tm_year + 1900) % 100);
    text[3] = text[7] = text[10] = text[19] = ' ';
    text[13] = text[16] = ':';
    if (text[8] == '0')
        text[8] = ' ';
    return std::string(text, sizeof text);
}

std::string peer_date(std::time_t instant) {
    std::tm local;
    localtime_r(&instant, &local);
    char text[32];
    return std::string(text, std::strftime(text, sizeof text, "%a %b %e %H:%M:%S %Y", &local));
}

/// The oldest way, and the one that looks at the zone as we have to.
std::string date_of_asctime(std::time_t instant) {
    std::string text = std::asctime(std::localtime(&instant));
    text.pop_back();
    return text;
}

Family const dates{[] {
    std::string const work = "gen_get_current_date_and_time(0)";
    enter(work, "gen", [](std::size_t) { return gen_get_current_date_and_time(0); });
    enter(work, "localtime_r, strftime", [](std::size_t) { return peer_date(std::time(nullptr)); });
    enter(work, "limit", [](std::size_t) { return limit_date(); });
}};

/// Dates of many instants, of files for example: nothing is remembered from the one before.
void enter_given_dates(std::string const& work, char const* zone) {
    auto const prepare = [zone](std::size_t turn) {
        if (turn == 0 && zone != nullptr)
            setenv("TZ", zone, 1);
        else if (turn == 0)
            unsetenv("TZ");
        return static_cast<long>(1794746854 + turn);
    };
    enter(work, "gen",
          [prepare](std::size_t turn) { return gen_get_current_date_and_time(prepare(turn)); });
    enter(work, "localtime, asctime",
          [prepare](std::size_t turn) { return date_of_asctime(prepare(turn)); });
}

Family const given_dates{[] {
    enter_given_dates("gen_get_current_date_and_time, given instants, TZ set",
                      "CET-1CEST,M3.5.0,M10.5.0/3");
    enter_given_dates("gen_get_current_date_and_time, given instants, TZ unset", nullptr);
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
