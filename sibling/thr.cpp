#include "thr.h"

#include "mem_alloc_sys.h"
#include "proc_status.h"

#include <csignal>
#include <cstring>
#include <link.h>
#include <optional>
#include <signal.h>

namespace {

std::optional<STR> module_path;

int matches(dl_phdr_info* module, std::size_t, void* wanted) {
    auto const* const name = static_cast<char const*>(wanted);
    char const* const path = module->dlpi_name;
    char const* const slash = std::strrchr(path, '/');
    bool const by_path = std::strchr(name, '/') != nullptr;
    return std::strcmp(by_path || slash == nullptr ? path : slash + 1, name) == 0;
}

} // namespace

void thr_drl_init(char const* module_fullpath) {
    module_path = STR(module_fullpath != nullptr ? module_fullpath : "");
}

void thr_drl_fini() {
    module_path.reset();
}

char const* thr_drl_module_fullpath() {
    return module_path ? module_path->c_str() : nullptr;
}

int thr_drl_is_loaded(char const* module_file_name) {
    // The executable itself goes by the empty name, and is no shared module.
    if (module_file_name == nullptr || *module_file_name == '\0')
        return 0;
    return dl_iterate_phdr(matches, const_cast<char*>(module_file_name));
}

void thr_debug_break() {
    if (proc_status_value("TracerPid") == 0)
        return;
    // A tracer sees the signal although it is ignored. One that is no debugger passes it on, as
    // does a debugger that leaves meanwhile; ignoring it keeps that from ending the process.
    struct sigaction ignore = {};
    ignore.sa_handler = SIG_IGN;
    struct sigaction previous;
    sigset_t trap;
    sigset_t blocked;
    sigemptyset(&trap);
    sigaddset(&trap, SIGTRAP);
    // GCOVR_EXCL_START: only in tests/faults
    if (sigaction(SIGTRAP, &ignore, &previous) != 0)
        return; // a sandbox forbids it, and the signal would end the process
    // GCOVR_EXCL_STOP
    pthread_sigmask(SIG_UNBLOCK, &trap, &blocked);
    std::raise(SIGTRAP);
    pthread_sigmask(SIG_SETMASK, &blocked, nullptr);
    sigaction(SIGTRAP, &previous, nullptr);
}
