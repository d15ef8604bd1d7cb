#include "gen_time_clock.h"

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <limits>
#include <sys/times.h>
#include <unistd.h>

#include "gen_memory_watch.h"

namespace {

static_assert(sizeof(std::time_t) == 8, "dates after January 2038 need 64-bit time");

/// The last conversion and the zone it was made in: that of the site while "TZ" is unset, else the
/// one that "TZ" names. Asked the same again, as by every line of a log within a second, we have
/// the answer here.
///
/// For another instant the zone has to be looked at: "TZ" may stand as it did while others had the
/// C library go by another zone in between, and nothing that it shows would tell that. While "TZ"
/// is unset the look is a question to the file system, twenty times as dear as the rest; this is
/// what makes it worth to remember the answer for the second in which it was given.
class CONVERSION {
  public:
    /// The local time of @p instant; null when there is none. Good until the next call.
    std::tm const* convert(std::time_t instant, std::time_t now) {
        char const* const variable = std::getenv("TZ");
        if (instant == m_instant && is_in_zone(variable, now))
            return &m_local;
        GEN_MEMORY_WATCH const watch;
        tzset();
        m_zone = UNKNOWN;
        m_instant = instant;
        if (localtime_r(&instant, &m_local) == nullptr)
            return nullptr;
        remember_zone(variable, now);
        return &m_local;
    }

  private:
    enum ZONE { UNKNOWN, SITE, VARIABLE };

    bool is_in_zone(char const* variable, std::time_t now) const {
        if (variable == nullptr)
            return m_zone == SITE && m_site_read_at == now;
        return m_zone == VARIABLE && std::strcmp(variable, m_variable) == 0;
    }

    void remember_zone(char const* variable, std::time_t now) {
        if (variable == nullptr) {
            m_zone = SITE;
            m_site_read_at = now;
        } else if (std::size_t const size = std::strlen(variable) + 1; size <= sizeof m_variable) {
            m_zone = VARIABLE;
            std::memcpy(m_variable, variable, size);
        }
    }

    std::time_t m_instant = 0;
    std::tm m_local = {};
    ZONE m_zone = UNKNOWN;
    char m_variable[64] = {};
    std::time_t m_site_read_at = 0;
};

CONVERSION last;

std::tm const* local_time_now() {
    std::time_t const now = std::time(nullptr);
    return last.convert(now, now);
}

void write_pair(char* out, int value) {
    out[0] = static_cast<char>('0' + value / 10);
    out[1] = static_cast<char>('0' + value % 10);
}

constexpr std::size_t time_of_day_length = 8;

void write_time_of_day(char* out, int hours, int minutes, int seconds) {
    write_pair(out, hours);
    out[2] = ':';
    write_pair(out + 3, minutes);
    out[5] = ':';
    write_pair(out + 6, seconds);
}

constexpr char weekdays[] = "SunMonTueWedThuFriSat";
constexpr char months[] = "JanFebMarAprMayJunJulAugSepOctNovDec";

/// asctime()'s text with its line end; nothing where asctime() refuses or there is no time.
struct DATE_LINE {
    static constexpr std::size_t time_of_day = 11; // its place in the text

    char text[40];
    std::size_t length = 0;

    explicit DATE_LINE(std::tm const* local) {
        if (local == nullptr || local->tm_year > std::numeric_limits<int>::max() - 1900)
            return;
        std::memcpy(text, &weekdays[3 * local->tm_wday], 3);
        text[3] = ' ';
        std::memcpy(text + 4, &months[3 * local->tm_mon], 3);
        text[7] = ' ';
        write_pair(text + 8, local->tm_mday);
        if (local->tm_mday < 10)
            text[8] = ' ';
        text[10] = ' ';
        write_time_of_day(text + time_of_day, local->tm_hour, local->tm_min, local->tm_sec);
        text[19] = ' ';
        char* const end = std::to_chars(text + 20, std::end(text), local->tm_year + 1900).ptr;
        *end = '\n';
        length = static_cast<std::size_t>(end + 1 - text);
    }
};

/// One part of a duration: a "0" before whatever number is below 10.
char* write_part(char* out, char* end, long value) {
    if (value < 10)
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
    DATE_LINE const date(local_time_now());
    return date.length != 0 ? STR(date.text + DATE_LINE::time_of_day, time_of_day_length) : STR();
}

STR gen_get_current_date_and_time(long t) {
    std::time_t const now = std::time(nullptr);
    DATE_LINE const date(last.convert(t != 0 ? t : now, now));
    return date.length != 0 ? STR(date.text, date.length - 1) : STR();
}

bool gen_format_current_date_and_time(STR* out, char const* format) {
    std::tm const* const local = local_time_now();
    if (format == nullptr || local == nullptr)
        return false;
    GEN_MEMORY_WATCH const watch; // "%Z" looks at the zone once more
    char text[250];
    std::size_t const length = std::strftime(text, sizeof text, format, local);
    if (length != 0 && out != nullptr)
        out->assign(text, length);
    return length != 0;
}

STR gen_format_elapsed_time(long const& seconds) {
    char text[40];
    char* next = text;
    long const days = seconds / 86400;
    if (seconds >= 0 && days == 0) { // the usual duration, all two-digit parts
        auto const rest = static_cast<int>(seconds);
        write_time_of_day(text, rest / 3600, rest / 60 % 60, rest % 60);
        return STR(text, time_of_day_length);
    }
    char* const end = std::end(text);
    if (days > 0) {
        next = std::to_chars(next, end, days).ptr;
        *next++ = ':';
    }
    long const hours = seconds / 3600 - days * 24;
    long const minutes = seconds / 60 - (days * 1440 + hours * 60);
    next = write_part(next, end, hours);
    *next++ = ':';
    next = write_part(next, end, minutes);
    *next++ = ':';
    next = write_part(next, end, seconds - (hours * 3600 + minutes * 60 + days * 86400));
    return STR(text, next);
}

void gen_print_local_time(std::ofstream* stream) {
    if (stream == nullptr)
        return;
    DATE_LINE const date(local_time_now());
    try {
        stream->write(date.text, static_cast<std::streamsize>(date.length));
    } catch (...) {
        // Only a stream that was told to raises one, and its state tells the failure as well.
    }
}
