#pragma once

/// The operating system as one of the suite's codes, and the host by name and address.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

/// The operating systems that the suite ever ran on.
enum GEN_OPERATING_SYSTEM : int {
    GEN_OS_UNKNOWN,   ///< "Unknown"
    GEN_OS_WIN95,     ///< "Windows 95"
    GEN_OS_WIN98,     ///< "Windows 98"
    GEN_OS_WIN98SE,   ///< "Windows 98 SE"
    GEN_OS_WINME,     ///< "Windows Me"
    GEN_OS_WINNT,     ///< "Windows NT"
    GEN_OS_WIN2000,   ///< "Windows 2000"
    GEN_OS_WINXP,     ///< "Windows XP"
    GEN_OS_SOLARIS26, ///< "Solaris 2.6"
    GEN_OS_SOLARIS7,  ///< "Solaris 7"
    GEN_OS_SOLARIS8,  ///< "Solaris 8"
    GEN_OS_SOLARIS9,  ///< "Solaris 9"
    GEN_OS_HPUX1020,  ///< "HP-UX 10.20"
    GEN_OS_HPUX110,   ///< "HP-UX 11.0"
    GEN_OS_LINUX,     ///< "Linux"
};

/// What the library was built for: GEN_OS_LINUX. Nothing is detected.
KORVANE_API GEN_OPERATING_SYSTEM gen_get_operating_system();
/// Its name, "Linux".
KORVANE_API STR gen_get_operating_system_string();
/// The name of any code; "Unknown" for a value outside the enumeration.
KORVANE_API STR gen_get_operating_system_string(GEN_OPERATING_SYSTEM system);

/// The host's name as the system has it. Where the system gives none, the internal error
/// "gethostname(host_name_buf, buf_size) == 0", and "".
KORVANE_API STR gen_get_host_name();

/// The addresses of @p host in dotted decimal, "10.0.0.1". A host with several has them one after
/// the other with nothing in between, 10.0.0.1 and 10.0.0.2 as "10.0.0.110.0.0.2": ask only for
/// hosts with one. "" for null and for a name that does not resolve. Not to be called from two
/// threads at once.
KORVANE_API STR gen_get_ip_addr(char const* host);
