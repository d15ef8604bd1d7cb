#pragma once

/// The machine: system names, processors, memory.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// What is known of the machine. Each writes its answer through @p out and returns whether it has
/// one; without one @p out stays as it is. Where a null @p out is not a failure, the answer is
/// dropped.
class GEN_MACHINE_INFO {
  public:
    // As uname(2) has them; false for a null pointer too. The two versions are crossed against the
    // usual reading, and hosts count on it.

    /// "Linux".
    KORVANE_API static bool get_os_name(STR* out);
    /// The release number, "6.1.0".
    KORVANE_API static bool get_os_version(STR* out);
    /// The build string, "#1 SMP ...".
    KORVANE_API static bool get_kernel_version(STR* out);
    /// The processor architecture, "x86_64".
    KORVANE_API static bool get_hw_name(STR* out);

    /// Processors configured, whether they are online or not. Always true.
    KORVANE_API static bool get_cpu_count(int* out);
    /// Clock ticks per second, typically 100; not the processor's clock. Always true.
    KORVANE_API static bool get_cpu_frequency(int* out);

    // Memory, in bytes. "/proc/meminfo" is where swap space and free memory are read from; where it
    // cannot be read to its end, get_virtual_ram and get_available_ram give false. Its figures are
    // kilobytes in 32 bits with a sign: 2 TiB and more count as a kilobyte less than 2 TiB, and
    // free memory and free swap space of that much together wrap.

    /// Physical memory. Always true.
    KORVANE_API static bool get_physical_ram(unsigned long long* out);
    /// Swap space. True with @p out as it was where the system reports none.
    KORVANE_API static bool get_virtual_ram(unsigned long long* out);
    /// Physical memory and swap space. Always true; swap space not known counts as 0.
    KORVANE_API static bool get_total_ram(unsigned long long* out);
    /// Physical memory and swap space that are free. A figure that is missing counts as 0.
    KORVANE_API static bool get_available_ram(unsigned long long* out);
    /// Total less available. Always true; available memory not known counts as 0.
    KORVANE_API static bool get_total_usage_ram(unsigned long long* out);
};
