#include "gen_os_info_machine.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <string_view>
#include <sys/utsname.h>
#include <unistd.h>

namespace {

template <std::size_t size>
bool get_system_name(char const (utsname::*field)[size], STR* out) {
    utsname names;
    if (out == nullptr || uname(&names) != 0)
        return false;
    *out = names.*field;
    return true;
}

template <typename NUMBER>
void answer(NUMBER* out, NUMBER value) {
    if (out != nullptr)
        *out = value;
}

unsigned long long physical_ram() {
    auto const pages = static_cast<unsigned long long>(std::max(sysconf(_SC_PHYS_PAGES), 0L));
    return pages * static_cast<unsigned long long>(sysconf(_SC_PAGESIZE));
}

/// "/proc/meminfo", piece by piece: a line of more than 49 bytes comes as several.
class MEMINFO {
  public:
    bool is_open() const { return m_file != nullptr; }
    bool next() { return std::fgets(m_line, sizeof m_line, m_file.get()) != nullptr; }

    /// Whether the piece begins with @p key; then its second word as a number is in @p kilobytes.
    bool match(std::string_view key, std::int32_t& kilobytes) {
        if (!std::string_view(m_line).starts_with(key))
            return false;
        char* rest = m_line;
        strtok_r(rest, ": ", &rest);
        char const* const number = strtok_r(nullptr, ": ", &rest);
        kilobytes = number != nullptr ? number_of(number) : 0;
        return true;
    }

  private:
    struct CLOSE {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    /// Sticks at the limits of 32 bits, as strtol does where a long has no more.
    static std::int32_t number_of(char const* text) {
        using LIMITS = std::numeric_limits<std::int32_t>;
        return static_cast<std::int32_t>(
            std::clamp<long>(std::strtol(text, nullptr, 10), LIMITS::min(), LIMITS::max()));
    }

    std::unique_ptr<std::FILE, CLOSE> m_file{std::fopen("/proc/meminfo", "re")};
    char m_line[50];
};

unsigned long long bytes_of(std::int32_t kilobytes) {
    std::int64_t const bytes = std::int64_t{kilobytes} * 1024;
    return static_cast<unsigned long long>(bytes);
}

} // namespace

bool GEN_MACHINE_INFO::get_os_name(STR* out) {
    return get_system_name(&utsname::sysname, out);
}

bool GEN_MACHINE_INFO::get_os_version(STR* out) {
    return get_system_name(&utsname::release, out);
}

bool GEN_MACHINE_INFO::get_kernel_version(STR* out) {
    return get_system_name(&utsname::version, out);
}

bool GEN_MACHINE_INFO::get_hw_name(STR* out) {
    return get_system_name(&utsname::machine, out);
}

bool GEN_MACHINE_INFO::get_cpu_count(int* out) {
    answer(out, static_cast<int>(sysconf(_SC_NPROCESSORS_CONF)));
    return true;
}

bool GEN_MACHINE_INFO::get_cpu_frequency(int* out) {
    answer(out, static_cast<int>(sysconf(_SC_CLK_TCK)));
    return true;
}

bool GEN_MACHINE_INFO::get_physical_ram(unsigned long long* out) {
    answer(out, physical_ram());
    return true;
}

bool GEN_MACHINE_INFO::get_virtual_ram(unsigned long long* out) {
    MEMINFO meminfo;
    if (!meminfo.is_open())
        return false;
    std::int32_t swap = 0;
    while (meminfo.next())
        if (meminfo.match("SwapTotal", swap)) {
            answer(out, bytes_of(swap));
            break;
        }
    return true;
}

bool GEN_MACHINE_INFO::get_total_ram(unsigned long long* out) {
    unsigned long long swap = 0;
    get_virtual_ram(&swap);
    answer(out, physical_ram() + swap);
    return true;
}

bool GEN_MACHINE_INFO::get_available_ram(unsigned long long* out) {
    MEMINFO meminfo;
    if (!meminfo.is_open())
        return false;
    std::int32_t memory = 0;
    std::int32_t swap = 0;
    while (meminfo.next()) {
        if (!meminfo.match("MemFree", memory))
            meminfo.match("SwapFree", swap);
        // The sum of the kilobytes wraps in 32 bits.
        auto const sum = static_cast<std::uint32_t>(memory) + static_cast<std::uint32_t>(swap);
        answer(out, bytes_of(static_cast<std::int32_t>(sum)));
    }
    return true;
}

bool GEN_MACHINE_INFO::get_total_usage_ram(unsigned long long* out) {
    unsigned long long total = 0;
    unsigned long long available = 0;
    get_total_ram(&total);
    get_available_ram(&available);
    answer(out, total - available);
    return true;
}
