#include "gen_localization_time.h"

#include "gen_localization_base.h"
#include "gen_memory_watch.h"

#include <cstdlib>
#include <cwchar>

namespace {

/// The user's character set: the time category has no say in conversions.
bool fits_character_set(wchar_t const* wide) {
    STR narrow(std::wcslen(wide) + 1, '\0');
    load_conversions();
    return std::wcstombs(narrow.data(), wide, narrow.size()) != static_cast<std::size_t>(-1);
}

} // namespace

unsigned gen_local_strftime(char* string, unsigned size, char const* format, std::tm const* time) {
    if (format == nullptr || time == nullptr) {
        report_neutrally(LC_TIME,
                         format == nullptr ? reports::no_time_format : reports::no_time_to_format);
        return 0;
    }
    locale_t const base = base_time_locale();
    return static_cast<unsigned>(base != nullptr ? strftime_l(string, size, format, time, base)
                                                 : std::strftime(string, size, format, time));
}

unsigned gen_local_wcsftime(wchar_t* /*string*/, unsigned /*size*/, wchar_t const* format,
                            std::tm const* /*time*/) {
    wchar_t const* const wide = format != nullptr ? format : L"";
    if (!fits_character_set(wide))
        report_neutrally(LC_TIME, reports::not_a_character);
    report_neutrally(LC_TIME, reports::no_wcsftime);
    return 0;
}

void gen_local_tm_struct(std::tm* timeptr) {
    if (timeptr == nullptr) {
        report_neutrally(LC_TIME, reports::no_tm_struct);
        return;
    }
    std::time_t const now = std::time(nullptr);
    MemoryWatch const watch;
    // The reentrant form does not look at TZ anew by itself, as localtime does.
    tzset();
    localtime_r(&now, timeptr);
}
