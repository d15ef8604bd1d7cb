/// The package korvane_gen for Tcl. Here are the functions of the C interface, as the commands
/// ::korvane_gen::c::name, and the command "gen", which runs what has to be quick itself and leaves
/// everything else to the script beside it.

#include "call.h"

#include <vector>

namespace {

using namespace korvane;

/// Runs the function that frees what the handle stands for.
template <typename T, auto Free>
int release(Tcl_Interp* interp, Words const& words) {
    Given<T> given;
    if (words.arguments() != 1) {
        Tcl_WrongNumArgs(interp, words.skipped, words.all, "handle");
        return TCL_ERROR;
    }
    if (!given.take(interp, words[0], "handle"))
        return TCL_ERROR;
    handles<T>.erase(Tcl_GetString(words[0]));
    Free(given.pass());
    return TCL_OK;
}

/// Takes any number of arguments, which no other command does.
int message(Tcl_Interp* interp, Words const& words) {
    std::size_t const count = words.arguments();
    std::vector<Text> texts(count);
    std::vector<char const*> bytes;
    for (std::size_t i = 0; i < count; ++i) {
        if (!texts[i].take(interp, words[i], i == 0 ? "format" : "argument"))
            return TCL_ERROR;
        bytes.push_back(texts[i].pass());
    }
    if (count == 0) {
        complain(interp, "format", "is missing");
        return TCL_ERROR;
    }
    TextResult text;
    gen_c_status const status = gen_c_message(bytes[0], bytes.data() + 1, count - 1, text.pass());
    if (status != GEN_C_OK)
        return raise_status(interp, status);
    Tcl_SetObjResult(interp, text.object());
    return TCL_OK;
}

int last_reports(Tcl_Interp* interp, Words const& words) {
    if (words.arguments() != 0) {
        Tcl_WrongNumArgs(interp, words.skipped, words.all, nullptr);
        return TCL_ERROR;
    }
    Tcl_SetObjResult(interp, reports());
    return TCL_OK;
}

// Functions with what may be left out at their ends.

gen_c_status start_as(char const* executable) {
    return gen_c_start(nullptr, executable);
}

gen_c_status trace_include(char const* name, int all, gen_c_table** checks, char const* from,
                           char const* alias) {
    return gen_c_trace_include(name, from, alias, all, checks);
}

gen_c_status usual_temporary_file(char const* prefix, int number, gen_c_text* path) {
    return gen_c_temporary_file(nullptr, prefix, number, path);
}

gen_c_status usage_report(char const* tag, int modules, int details, int memory,
                          gen_c_table** lines, char const* phase) {
    return gen_c_usage_report(tag, phase, modules, details, memory, lines);
}

/// Made once: Tcl keeps the addresses of the entries.
std::vector<Command> const& functions() {
    static std::vector<Command> const table = {
        {"reports", last_reports},
        command<gen_c_start>("start", "root"),
        command<start_as>("start_as", "executable"),
        command<gen_c_finish>("finish", ""),
        command<gen_c_where>("where", ""),
        command<gen_c_installation>("installation", ""),
        command<gen_c_libraries>("libraries", ""),
        command<gen_c_library>("library", "library"),
        command<gen_c_device_files>("device_files", ""),
        command<gen_c_set_project>("set_project", "directory"),
        command<gen_c_set_database>("set_database", "directory"),
        command<gen_c_set_output>("set_output", "directory"),
        command<gen_c_set_project_libraries>("set_project_libraries", "directories"),
        command<gen_c_set_user_libraries>("set_user_libraries", "directories"),
        command<gen_c_project>("project", ""),
        command<gen_c_directories>("directories", "group"),
        command<gen_c_relative_to_project>("relative_to_project", "path"),
        command<gen_c_file_types>("file_types", ""),
        command<gen_c_clear_paths>("clear_paths", ""),
        command<gen_c_find>("find", "name"),
        command<gen_c_find_eda>("find_eda", "name"),
        command<gen_c_find_cached>("find_cached", "name"),
        command<gen_c_clear_cache>("clear_cache", ""),
        command<gen_c_cache_size>("cache_size", ""),
        command<gen_c_include>("include", "name from? alias?"),
        command<gen_c_sources>("sources", "unit shipped_only"),
        command<gen_c_trace_find>("trace_find", "name eda all"),
        command<trace_include>("trace_include", "name all from? alias?"),
        command<gen_c_trace_sources>("trace_sources", "unit shipped_only all"),
        command<gen_c_tool_files>("tool_files", ""),
        command<gen_c_database_file>("database_file", "name extension"),
        command<gen_c_temporary_file>("temporary_file", "directory prefix number"),
        command<usual_temporary_file>("usual_temporary_file", "prefix number"),
        command<gen_c_profile_directory>("profile_directory", ""),
        command<gen_c_is_64bit_wanted>("is_64bit_wanted", ""),
        command<gen_c_enter_64bit>("enter_64bit", "tool"),
        command<gen_c_leave_64bit>("leave_64bit", "path library_path"),
        command<gen_c_condition>("condition", "condition"),
        command<gen_c_condition_tokens>("condition_tokens", "condition"),
        command<gen_c_condition_tree>("condition_tree", "condition"),
        command<gen_c_compare_natural>("compare_natural", "first second ignore_case?"),
        command<gen_c_compare_bytes>("compare_bytes", "first second ignore_case?"),
        command<gen_c_fold>("fold", "text upper"),
        command<gen_c_trim>("trim", "text white_space"),
        command<gen_c_read_integer>("read_integer", "text"),
        command<gen_c_write_integer>("write_integer", "number radix"),
        command<gen_c_read_real>("read_real", "text"),
        command<gen_c_wildcard>("wildcard", "pattern part"),
        command<gen_c_wildcard_matches>("wildcard_matches", "pattern part name"),
        command<gen_c_checksum>("checksum", "text"),
        command<gen_c_checksum_sanitised>("checksum_sanitised", "text"),
        command<gen_c_sanitise>("sanitise", "name"),
        command<gen_c_hash_size>("hash_size", "number"),
        {"message", message},
        command<gen_c_message_inserts>("message_inserts", "format"),
        command<gen_c_time_units>("time_units", ""),
        command<gen_c_frequency_units>("frequency_units", ""),
        command<gen_c_now>("now", ""),
        command<gen_c_date>("date", "seconds"),
        command<gen_c_format_now>("format_now", "format"),
        command<gen_c_elapsed>("elapsed", "seconds"),
        command<gen_c_stopwatch_create>("stopwatch_create", ""),
        {"stopwatch_free", release<gen_c_stopwatch, gen_c_stopwatch_free>},
        command<gen_c_stopwatch_start>("stopwatch_start", "watch"),
        command<gen_c_stopwatch_stop>("stopwatch_stop", "watch"),
        command<gen_c_stopwatch_reset>("stopwatch_reset", "watch"),
        command<gen_c_stopwatch_seconds>("stopwatch_seconds", "watch"),
        command<gen_c_stopwatch_lap>("stopwatch_lap", "watch"),
        command<gen_c_machine>("machine", "host?"),
        command<usage_report>("usage_report", "tag modules details memory phase?"),
        command<gen_c_notice>("notice", "notice"),
        command<gen_c_notice_lines>("notice_lines", "notice prefix"),
        command<gen_c_do_not_edit>("do_not_edit", "prefix"),
        command<gen_c_undo_create>("undo_create", "directory"),
        {"undo_free", release<gen_c_undo, gen_c_undo_free>},
        command<gen_c_undo_begin>("undo_begin", "undo title"),
        command<gen_c_undo_describe>("undo_describe", "undo description"),
        command<gen_c_undo_add>("undo_add", "undo redo command comment"),
        command<gen_c_undo_end>("undo_end", "undo"),
        command<gen_c_undo_commit>("undo_commit", "undo"),
        command<gen_c_flags_create>("flags_create", ""),
        {"flags_free", release<gen_c_flags, gen_c_flags_free>},
        command<gen_c_flags_add>("flags_add", "flags name"),
        command<gen_c_flags_find>("flags_find", "flags name"),
        command<gen_c_flags_remove>("flags_remove", "flags mask"),
        command<gen_c_flags_describe>("flags_describe", "flags mask"),
        command<gen_c_flags_statistics>("flags_statistics", "flags"),
        command<gen_c_flags_slots>("flags_slots", "flags"),
        command<gen_c_flags_swept>("flags_swept", "flags"),
        command<gen_c_histogram_create>("histogram_create", "low high bins"),
        {"histogram_free", release<gen_c_histogram, gen_c_histogram_free>},
        command<gen_c_histogram_add>("histogram_add", "histogram item"),
        command<gen_c_histogram_size>("histogram_size", "histogram"),
        command<gen_c_histogram_bin>("histogram_bin", "histogram item"),
        command<gen_c_histogram_bins>("histogram_bins", "histogram"),
        command<gen_c_histogram_outside>("histogram_outside", "histogram"),
    };
    return table;
}

int run_function(ClientData data, Tcl_Interp* interp, int count, Tcl_Obj* const* words) {
    return static_cast<Command const*>(data)->call(interp, {1, count, words});
}

/// "gen lexcompare ?-nocase? first second", as lsort -command calls it.
int lexcompare(Tcl_Interp* interp, Words const& words) {
    Text first;
    Text second;
    std::size_t const count = words.arguments();
    bool const ignore_case = count == 3 && std::string_view(Tcl_GetString(words[0])) == "-nocase";
    if (count != 2 && !ignore_case) {
        Tcl_WrongNumArgs(interp, words.skipped, words.all, "?-nocase? first second");
        return TCL_ERROR;
    }
    if (!first.take(interp, words[count - 2], "first") ||
        !second.take(interp, words[count - 1], "second"))
        return TCL_ERROR;
    int order = 0;
    gen_c_compare_natural(first.pass(), second.pass(), ignore_case ? 1 : 0, &order);
    Tcl_SetObjResult(interp, Tcl_NewIntObj(order));
    return TCL_OK;
}

/// The quick subcommands; Tcl keeps their numbers with the words it has looked up once.
Command const* quick_commands() {
    static Command const table[] = {
        {"lexcompare", lexcompare},
        command<gen_c_find_cached>("cached", "name"),
        command<gen_c_checksum>("checksum", "text"),
        {nullptr, nullptr},
    };
    return table;
}

/// gen SUBCOMMAND ?ARGUMENT ...?
/// No ensemble of Tcl's own: there a call of "gen checksum" takes 2.5 times as long.
int gen(ClientData, Tcl_Interp* interp, int count, Tcl_Obj* const* words) {
    int index = 0;
    Command const* const quick = quick_commands();
    if (count >= 2 && Tcl_GetIndexFromObjStruct(nullptr, words[1], quick, sizeof *quick,
                                                "subcommand", TCL_EXACT, &index) == TCL_OK)
        [[likely]]
        return quick[index].call(interp, {2, count, words});
    std::vector<Tcl_Obj*> call = {Tcl_NewStringObj("::korvane_gen::run", -1)};
    call.insert(call.end(), words + 1, words + count);
    Tcl_IncrRefCount(call[0]);
    int const status = Tcl_EvalObjv(interp, static_cast<int>(call.size()), call.data(), 0);
    Tcl_DecrRefCount(call[0]);
    return status;
}

} // namespace

extern "C" __attribute__((visibility("default"))) int Korvane_gen_Init(Tcl_Interp* interp) {
    if (Tcl_InitStubs(interp, "8.6", 0) == nullptr)
        return TCL_ERROR;
    for (Command const& function : functions()) {
        std::string const name = std::string("::korvane_gen::c::") + function.name;
        Tcl_CreateObjCommand(interp, name.c_str(), run_function, const_cast<Command*>(&function),
                             nullptr);
    }
    Tcl_CreateObjCommand(interp, "::gen", gen, nullptr, nullptr);
    return Tcl_PkgProvide(interp, "korvane_gen", gen_c_version());
}
