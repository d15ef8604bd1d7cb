#include "mem_info.h"

#include "proc_status.h"

namespace {

constexpr unsigned long bytes_per_kilobyte = 1024; // the kernel's "kB"

} // namespace

unsigned long mem_info_get_working_set_size() {
    return proc_status_value("VmRSS") * bytes_per_kilobyte;
}

unsigned long mem_info_get_working_set_peak_size() {
    // Not getrusage, whose peak an executable inherits from the one that started it.
    return proc_status_value("VmHWM") * bytes_per_kilobyte;
}
