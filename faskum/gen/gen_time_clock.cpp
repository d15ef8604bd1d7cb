#include "gen_time_clock.h"

#include "gen_memory_watch.h"

#include <charconv>
#include <ctime>
#include <fstream>
#include <iterator>
#include <sys/times.h>
#include <unistd.h>

namespace {

static_assert(sizeof(std::time_t) == 8, "dates after January 2038 need 64-bit time");

/// asctime()'s string of the local time, its line end included; empty where there is none. The zone
/// is looked at anew each time: others may have moved it since, and nothing would show that.
STR date_line(std::time_t instant) {
    MemoryWatch const watch;
    std::tm const* const local = std::localtime(&instant);
    char const* const line = local != nullptr ? std::asctime(local) : nullptr;
    return line != nullptr ? line : "";
}

/// One part of a duration, which is at most 59: a "0" before whatever number is below 10.
char* write_part(char* out, char* end, long value) {
    // Without a way of its own for two digits a duration takes 1.7 times as long (32-bit).
    if (value >= 0) { // MUTANT_EXCL_LINE(>= to >; 0 to 1): a zero comes out alike either way
        *out++ = static_cast<char>('0' + value / 10);
        *out++ = static_cast<char>('0' + value % 10);
        return out;
    }
    *out++ = '0';
    return std::to_chars(out, end, value).ptr;
}

} // namespace

std::int32_t gen_get_tick_count() {
    tms ignored;
    auto const ticks = static_cast<std::uint32_t>(times(&ignored));
    // Formed in 32 bits on either width, so that the count restarts at the same reading on both.
    auto const product = static_cast<std::int32_t>(ticks * 1000U);
    return static_cast<std::int32_t>(product / sysconf(_SC_CLK_TCK));
}

std::int32_t gen_get_current_time_seconds() {
    return static_cast<std::int32_t>(std::time(nullptr));
}

STR gen_get_current_time() {
    STR const line = date_line(std::time(nullptr));
    // Behind "Sun Nov 15 ", whose parts are padded.
    return line.empty() ? STR() : line.substr(11, 8);
}

STR gen_get_current_date_and_time(long t) {
    STR line = date_line(t != 0 ? t : std::time(nullptr));
    if (!line.empty())
        line.pop_back();
    return line;
}

bool gen_format_current_date_and_time(STR* out, char const* format) {
    MemoryWatch const watch; // "%Z" looks at the zone as localtime() does
    std::time_t const now = std::time(nullptr);
    std::tm const* const local = std::localtime(&now);
    if (format == nullptr || local == nullptr)
        return false;
    char text[250];
    std::size_t const length = std::strftime(text, sizeof text, format, local);
    if (length != 0 && out != nullptr)
        out->assign(text, length);
    return length != 0;
}

STR gen_format_elapsed_time(long const& seconds) {
    long const days = seconds / 86400;
    long const hours = seconds / 3600 % 24;
    long const minutes = seconds / 60 % 60;
    long const rest = seconds % 60;
    char text[40]; // MUTANT_EXCL_LINE: room alone
    char* const end = std::end(text);
    char* next = text;
    if (days > 0) {
        next = std::to_chars(next, end, days).ptr;
        *next++ = ':';
    }
    next = write_part(next, end, hours);
    *next++ = ':';
    next = write_part(next, end, minutes);
    *next++ = ':';
    next = write_part(next, end, rest);
    return STR(text, next);
}

void gen_print_local_time(std::ofstream* stream) {
    if (stream == nullptr)
        return;
    STR const line = date_line(std::time(nullptr));
    try {
        stream->write(line.data(), static_cast<std::streamsize>(line.size()));
    } catch (...) {
        // Only a stream that was asked to raises one, and its state has the failure as well.
    }
}
