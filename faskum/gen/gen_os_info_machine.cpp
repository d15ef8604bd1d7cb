#include "gen_os_info_machine.h"

#include "gen_os_info_meminfo.h"
#include "gen_retry.h"

#include <algorithm>
#include <cstdint>
#include <fcntl.h>
#include <optional>
#include <sys/utsname.h>
#include <unistd.h>
#include <utility>

namespace {

template <std::size_t size>
bool get_system_name(char const (utsname::*field)[size], STR* out) {
    utsname names;
    if (out == nullptr || uname(&names) != 0)
        return false;
    *out = names.*field;
    return true;
}

template <typename Number>
void answer(Number* out, Number value) {
    if (out != nullptr)
        *out = value;
}

unsigned long long physical_ram() {
    auto const pages = static_cast<unsigned long long>(std::max(sysconf(_SC_PHYS_PAGES), 0L));
    return pages * static_cast<unsigned long long>(sysconf(_SC_PAGESIZE));
}

/// The text of "/proc/meminfo"; nothing where it cannot be read to its end.
std::optional<STR> read_meminfo() {
    int const file = gen_retry([] { return open("/proc/meminfo", O_RDONLY | O_CLOEXEC); });
    if (file < 0)
        return std::nullopt;
    STR text;
    char block[4096]; // more than it usually has; MUTANT_EXCL_LINE(4096 to 4097): or in several
    auto const read_block = [&] { return read(file, block, sizeof block); };
    ssize_t size = 0; // MUTANT_EXCL_LINE: is set before it is read
    while ((size = gen_retry(read_block)) > 0)
        text.append(block, static_cast<std::size_t>(size));
    close(file);
    // GCOVR_EXCL_START: tests/faults has it, and counts nothing
    if (size < 0)
        return std::nullopt;
    // GCOVR_EXCL_STOP
    return text;
}

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
    std::optional<STR> const meminfo = read_meminfo();
    if (!meminfo)
        return false;
    if (auto const swap = gen_meminfo_swap_total(*meminfo))
        answer(out, bytes_of(*swap));
    return true;
}

bool GEN_MACHINE_INFO::get_total_ram(unsigned long long* out) {
    unsigned long long swap = 0;
    get_virtual_ram(&swap);
    answer(out, physical_ram() + swap);
    return true;
}

bool GEN_MACHINE_INFO::get_available_ram(unsigned long long* out) {
    std::optional<STR> const meminfo = read_meminfo();
    if (!meminfo)
        return false;
    if (auto const free = gen_meminfo_free(*meminfo))
        answer(out, bytes_of(*free));
    return true;
}

bool GEN_MACHINE_INFO::get_total_usage_ram(unsigned long long* out) {
    unsigned long long total = 0; // MUTANT_EXCL_LINE: is set before it is read
    unsigned long long available = 0;
    get_total_ram(&total);
    get_available_ram(&available);
    answer(out, total - available);
    return true;
}
