/// The cheapest way there is to call a C function from Tcl, for bench/scripts/tcl.tcl: arguments
/// taken as strings, the result made, and in between either nothing or the library itself.

#include "gen.h"

#include <tcl.h>

namespace {

using Words = Tcl_Obj* const*;

template <bool Calls>
int compared(ClientData, Tcl_Interp* interp, int, Words words) {
    char const* const first = Tcl_GetString(words[1]);
    char const* const second = Tcl_GetString(words[2]);
    Tcl_SetObjResult(interp, Tcl_NewIntObj(Calls ? gen_lexcmp(first, second) : *first - *second));
    return TCL_OK;
}

template <bool Calls>
int summed(ClientData, Tcl_Interp* interp, int, Words words) {
    char const* const text = Tcl_GetString(words[1]);
    auto const sum = static_cast<unsigned>(Calls ? gen_crc_generator(text) : *text);
    Tcl_SetObjResult(interp, Tcl_NewWideIntObj(sum));
    return TCL_OK;
}

template <bool Calls>
int found(ClientData, Tcl_Interp* interp, int, Words words) {
    char const* const name = Tcl_GetString(words[1]);
    if (Calls) {
        FIO_PATH const path = gen_find_file_cache_assisted(name);
        Tcl_SetObjResult(interp, Tcl_NewStringObj(path, -1));
    } else {
        Tcl_SetObjResult(interp, Tcl_NewStringObj("/opt/korvane/project/counter.v", -1));
    }
    return TCL_OK;
}

} // namespace

extern "C" __attribute__((visibility("default"))) int Cheapest_Init(Tcl_Interp* interp) {
    if (Tcl_InitStubs(interp, "8.6", 0) == nullptr)
        return TCL_ERROR;
    Tcl_CreateObjCommand(interp, "compared", compared<true>, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "nothing_compared", compared<false>, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "summed", summed<true>, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "nothing_summed", summed<false>, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "found", found<true>, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "nothing_found", found<false>, nullptr, nullptr);
    return TCL_OK;
}
