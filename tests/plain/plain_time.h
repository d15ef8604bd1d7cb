#pragma once

#include <cstdio>
#include <string>

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
