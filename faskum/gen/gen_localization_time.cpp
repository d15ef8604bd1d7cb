#include <cstdlib>
#include <cwchar>

#include "gen_localization_base.h"

unsigned gen_local_strftime(char* string, unsigned size, char const* format, std::tm const* time) {
    if (format == nullptr || time == nullptr) {
        report(format == nullptr ? reports::no_time_format : reports::no_time_to_format);
        return 0;
    }
    locale_t const base = base_time_locale();
    return static_cast<unsigned>(base != nullptr ? strftime_l(string, size, format, time, base)
                                                 : std::strftime(string, size, format, time));
}

unsigned gen_local_wcsftime(wchar_t* /*string*/, unsigned /*size*/, wchar_t const* format,
                            std::tm const* /*time*/) {
    wchar_t const* const wide = format != nullptr ? format : L"";
    // The time category has no say in the conversion: it is the user's character set that counts.
    STR narrow(std::wcslen(wide) + 1, '\0');
    if (std::wcstombs(narrow.data(), wide, narrow.size()) == static_cast<std::size_t>(-1))
        report(reports::not_a_character);
    report(reports::no_wcsftime);
    return 0;
}

void gen_local_tm_struct(std::tm* timeptr) {
    if (timeptr == nullptr) {
        report(reports::no_tm_struct);
        return;
    }
    std::time_t const now = std::time(nullptr);
    // The reentrant form does not look at TZ anew by itself, as localtime does.
    tzset();
    localtime_r(&now, timeptr);
}
