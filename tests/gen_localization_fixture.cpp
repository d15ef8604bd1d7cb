#include "korvane_export.h"

// The C library's newlocale loses a copy of LOCPATH, which nobody but these tests sets, at a call.
// The leak checker of the sanitizers asks the program for what it shall not report.
extern "C" KORVANE_API char const* __lsan_default_suppressions();

extern "C" char const* __lsan_default_suppressions() {
    return "leak:__argz_add_sep\n";
}
