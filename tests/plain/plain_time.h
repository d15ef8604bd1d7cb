#pragma once

#include <cstdio>
#include <ctime>
#include <string>

/// gen_get_current_date_and_time by way of the C library alone.
inline std::string plain_date_and_time(std::time_t instant) {
    std::tm const* const local = std::localtime(&instant);
    char const* const line = local != nullptr ? std::asctime(local) : nullptr;
    std::string text = line != nullptr ? line : "";
    if (!text.empty())
        text.pop_back();
    return text;
}

inline std::string plain_part(long value) {
    char text[32];
    std::snprintf(text, sizeof text, value > 9 ? "%ld" : "0%ld", value);
    return text;
}

/// gen_format_elapsed_time, step by step.
inline std::string plain_elapsed_time(long seconds) {
    long const days = seconds / 86400;
    long const hours = seconds / 3600 - days * 24;
    long const minutes = seconds / 60 - (days * 1440 + hours * 60);
    long const rest = seconds - (hours * 3600 + minutes * 60 + days * 86400);
    std::string const shown_days = days > 0 ? std::to_string(days) + ":" : "";
    return shown_days + plain_part(hours) + ":" + plain_part(minutes) + ":" + plain_part(rest);
}
