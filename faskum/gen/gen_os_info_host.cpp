#include "gen_os_info_host.h"

#include "gen_report.h"

#include <charconv>
#include <cstring>
#include <netdb.h>
#include <unistd.h>

namespace {

/// The strings one after the other instead of pointers to them, which the loader would have to
/// relocate in every process of the suite.
// MUTANT_EXCL_LINE(14 to 15): room alone
constexpr char system_names[][14] = {
    "Unknown",    "Windows 95",   "Windows 98",  "Windows 98 SE", "Windows Me",
    "Windows NT", "Windows 2000", "Windows XP",  "Solaris 2.6",   "Solaris 7",
    "Solaris 8",  "Solaris 9",    "HP-UX 10.20", "HP-UX 11.0",    "Linux",
};

void append_address(STR& text, char const* bytes, int length) {
    for (int i = 0; i < length; ++i) {
        char digits[4]; // MUTANT_EXCL_LINE(4 to 5): three are written
        unsigned const byte = static_cast<unsigned char>(bytes[i]);
        if (i > 0)
            text += '.';
        text.append(digits, std::to_chars(digits, std::end(digits), byte).ptr);
    }
}

} // namespace

GEN_OPERATING_SYSTEM gen_get_operating_system() {
    return GEN_OS_LINUX;
}

STR gen_get_operating_system_string() {
    return gen_get_operating_system_string(gen_get_operating_system());
}

STR gen_get_operating_system_string(GEN_OPERATING_SYSTEM system) {
    bool const known = static_cast<std::size_t>(system) < std::size(system_names);
    return system_names[known ? system : GEN_OS_UNKNOWN];
}

STR gen_get_host_name() {
    char name[512] = {}; // MUTANT_EXCL_LINE(512 to 513): no name is as long
    if (gethostname(name, sizeof name) != 0)
        report(reports::no_host_name);
    return STR(name, strnlen(name, sizeof name));
}

STR gen_get_ip_addr(char const* host) {
    hostent const* const entry = host != nullptr ? gethostbyname(host) : nullptr;
    STR text;
    if (entry != nullptr)
        for (char* const* address = entry->h_addr_list; *address != nullptr; ++address)
            append_address(text, *address, entry->h_length);
    return text;
}
