/// Strings, messages, the locale, time and the machine without memory.

#include "allocation_failure.h"
#include "allocation_ground.h"
#include "err_report.h"
#include "gen_exe.h"
#include "gen_legal.h"
#include "gen_localization.h"
#include "gen_os_info.h"
#include "gen_string.h"
#include "gen_time.h"
#include "gen_username.h"
#include "system_trouble.h"
#include "test_locale.h"

#include <clocale>
#include <cstdlib>
#include <ctime>
#include <fstream>

namespace {

STR expanded(char const* format, ...) {
    va_list args;
    va_start(args, format);
    STR text;
    gen_formatmessage(text, format, STL_ARGS(args));
    va_end(args);
    return text;
}

/// The string in a block that the caller has to release, and the length returned for it.
STR in_new_block(char const* format, ...) {
    va_list args;
    va_start(args, format);
    char* block = nullptr;
    unsigned long const length =
        gen_formatmessage(FORMAT_MESSAGE_FROM_STRING | FORMAT_MESSAGE_ALLOCATE_BUFFER, format, 0, 0,
                          static_cast<char*>(static_cast<void*>(&block)), 100, STL_ARGS(args));
    va_end(args);
    STR const text = shown(block) + " " + shown(static_cast<long>(length));
    std::free(block);
    return text;
}

wchar_t const* const wide_text = [] {
    static std::wstring const text(3000, L'w');
    return text.c_str();
}();
char const some_text[] = "a text that no string keeps within itself";

// Kept from the compiler, which knows of no numbered arguments.
char const* numbered_format = "%2$s %1$800d";

/// A zone that the C library finds in no file, and all others of the day.
void in_some_zone() {
    setenv("TZ", "ABC5DEF,M3.2.0,M11.1.0", 1);
}

std::ofstream* stream = nullptr;

std::string make_locale() {
    static TestLocale const made;
    return made.trouble();
}

/// The tests' locale as the base of the twins, which have not been asked for it before.
void on_own_base() {
    LOCALIZATION_BASE_STRING = TestLocale::name;
}

/// A date that is written in the words of the locale.
STR some_date() {
    std::tm time{};
    time.tm_mon = 4;
    time.tm_wday = 3;
    char text[100] = "";
    gen_local_strftime(text, sizeof text, "%A %B", &time);
    return text;
}

std::vector<Call> const calls = {
    {.name = "number_to_text",
     .ask =
         [] {
             STR text;
             gen_itoa(-2147483647, text, 2);
             return text + gen_itoa(2147483647, 2);
         }},
    {.name = "trim",
     .ask =
         [] {
             STR const text = STR("  ") + some_text + " \t";
             STR trimmed;
             gen_remove_leading_and_trailing_white_spaces(text, &trimmed);
             return trimmed + gen_remove_leading_and_trailing_spaces(text);
         }},
    {.name = "wildcard",
     .ask =
         [] {
             STR wildcard = STR("*?.[]") + some_text + STR(600, '*');
             return gen_wildcard_to_reg_expr(&wildcard, true);
         }},
    {.name = "sprintf",
     .ask =
         [] {
             STR text;
             gen_sprintf(&text, "%s %600d %-5.2f", some_text, 5, 2.5);
             return text;
         }},
    {.name = "sprintf_by_printf",
     .ask =
         [] {
             STR text;
             gen_sprintf(&text, "%.3000Lf|%.5000d|%.2000e", 1.0L / 3, 5, 1.0 / 3);
             return text;
         }},
    {.name = "sprintf_numbered",
     .ask =
         [] {
             STR text;
             gen_sprintf(&text, numbered_format, 5, some_text);
             return text;
         }},
    {.name = "sprintf_wide",
     .ask =
         [] {
             STR text;
             gen_sprintf(&text, "%ls", wide_text);
             return text;
         }},
    {.name = "message",
     .ask = [] { return expanded("%2!d! times %1, %1 and %3!600s!%n", some_text, 5, "x"); }},
    {.name = "simple_message",
     .ask = [] { return expanded("%1 and %2, %1", some_text, some_text); }},
    {.name = "message_in_new_block",
     .ask = [] { return in_new_block("%1 and %2", some_text, some_text); },
     .otherwise = {"null 0"}},

    {.name = "local_number",
     .ask = [] { return shown(static_cast<long>(gen_local_atof("2,5") * 10)); },
     .prepare = on_own_base,
     .lapse = "20",
     .lapse_stays = true,
     .once = make_locale},
    {.name = "local_wide_number",
     .ask = [] { return shown(static_cast<long>(gen_local_wcstod(L"2,5", nullptr) * 10)); },
     .prepare = on_own_base,
     .lapse = "20",
     .lapse_stays = true,
     .once = make_locale},
    {.name = "local_character",
     .ask = [] { return shown(static_cast<long>(gen_local_toupper(0xE4))); },
     .prepare = on_own_base,
     .lapse = "228",
     .lapse_stays = true,
     .once = make_locale},
    {.name = "local_text",
     .ask =
         [] {
             wchar_t wide[20];
             return shown(static_cast<long>(gen_local_mbstowcs(wide, "\xE4\xF6", 20)));
         },
     .prepare = on_own_base,
     .lapse = "4294967295",
     .lapse_stays = true,
     .once = make_locale},
    {.name = "local_date",
     .ask = some_date,
     .prepare = on_own_base,
     .lapse = "Wednesday May",
     .lapse_stays = true,
     .once = make_locale},

    {.name = "local_wide_date",
     .ask =
         [] {
             std::tm const time{};
             return shown(static_cast<long>(gen_local_wcsftime(nullptr, 0, wide_text, &time)));
         }},

    // The characters of a locale are loaded at the first conversion. The answer is the number of
    // reports: one more where the format is taken for one that the user's characters do not have.
    {.name = "local_wide_date_of_the_user",
     .ask =
         [] {
             static long reports;
             reports = 0;
             ERR_HANDLER const previous = err_set_internal_error_handler(
                 [](char const*, char const*, char const*, int) { ++reports; });
             std::tm const time{};
             gen_local_wcsftime(nullptr, 0, L"\u00E4", &time);
             err_set_internal_error_handler(previous);
             return shown(reports);
         },
     .prepare = [] { std::setlocale(LC_CTYPE, TestLocale::name); },
     .lapse = "2",
     .lapse_stays = true,
     .once = make_locale},
    {.name = "local_now",
     .ask =
         [] {
             std::tm now;
             gen_local_tm_struct(&now);
             return shown(now.tm_gmtoff) + " " + now.tm_zone;
         },
     .prepare = in_some_zone,
     .lapse = "0 ",
     .lapse_stays = true},

    {.name = "current_time",
     .ask = [] { return shown(gen_get_current_time().size() == 8); },
     .prepare = in_some_zone},
    {.name = "date",
     .ask = [] { return gen_get_current_date_and_time(1700000000); },
     .prepare = in_some_zone,
     .lapse = "Tue Nov 14 22:13:20 2023",
     .lapse_stays = true},
    {.name = "date_of_the_site",
     .ask = [] { return gen_get_current_date_and_time(1700000000); },
     .prepare = [] { unsetenv("TZ"); }},
    {.name = "formatted_time",
     .ask =
         [] {
             STR text;
             gen_format_current_date_and_time(&text, "%Z a format that no string keeps within");
             return text;
         },
     .prepare = in_some_zone,
     .lapse = " a format that no string keeps within",
     .lapse_stays = true},
    {.name = "printed_time",
     .ask = [] { return gen_print_local_time(stream), shown(stream->good()); },
     .prepare =
         [] {
             in_some_zone();
             stream = new std::ofstream("/dev/null");
         }},
    {.name = "time_units",
     .ask =
         [] {
             MEM_LIST<STR> names;
             GEN_TIME_UNIT::get_long_name_list(&names);
             return shown_all(names);
         }},
    {.name = "frequency_units",
     .ask =
         [] {
             MEM_LIST<STR> names;
             GEN_TIME_FREQ::get_short_name_list(&names);
             return shown_all(names);
         }},
    {.name = "elapsed_time",
     .ask =
         [] {
             long const seconds = 2000000000;
             return gen_format_elapsed_time(seconds) + some_text;
         }},
    {.name = "stopwatch",
     .ask =
         [] {
             GEN_STOPWATCH watch;
             return watch.lap() + some_text;
         }},

    {.name = "system_names",
     .ask =
         [] {
             STR name;
             STR version;
             GEN_MACHINE_INFO::get_os_name(&name);
             GEN_MACHINE_INFO::get_kernel_version(&version);
             return name + version + gen_get_operating_system_string(GEN_OS_WIN98SE) +
                    gen_get_host_name();
         }},
    // The C library's name services, once loaded. (Loading them without memory, it may crash or
    // wait for ever.)
    {.name = "user_name",
     .ask = gen_get_user_name,
     .prepare = [] { gen_get_user_name(); },
     .otherwise = {""},
     .reported = "korvane: internal error: Failed to get username from os \\(GEN, "
                 "gen_username:[0-9]+\\)\n"},
    {.name = "address",
     .ask = [] { return gen_get_ip_addr("localhost"); },
     .prepare = [] { gen_get_ip_addr("localhost"); },
     .otherwise = {""}},
    {.name = "swap",
     .ask =
         [] {
             unsigned long long bytes = 7;
             return GEN_MACHINE_INFO::get_virtual_ram(&bytes) ? shown(true) : shown(bytes == 7);
         },
     .once = proc_trouble},

    {.name = "legal_text",
     .ask = [] { return gen_get_legal_text("-- ") + gen_get_legal_banner(); }},
    {.name = "legal_trademark_text", .ask = gen_get_legal_trademark_text},
    {.name = "legal_warning_text", .ask = gen_get_legal_warning_text},
    {.name = "bitstream_encryption_legal_text", .ask = gen_get_bitstream_encryption_legal_text},
    {.name = "do_not_edit", .ask = [] { return gen_get_do_not_edit_text(nullptr); }},
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Text, AllocationFailure, testing::ValuesIn(calls), call_name);
