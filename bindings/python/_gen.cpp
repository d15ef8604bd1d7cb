/// The extension module korvane_gen._gen: the functions of the C interface, an entry of a table
/// each, called as the types of their parameters say. What Python makes of them is the package's
/// business.

#include "_gen_call.h"
#include "_gen_key.h"

#include <deque>

namespace {

using namespace korvane;

/// Takes any number of arguments, which no other function does.
PyObject* message(PyObject*, PyObject* const* arguments, Py_ssize_t count) {
    static Signature const signature = [] {
        Signature made;
        made.declare("message", "format arguments");
        return made;
    }();
    if (count < 1) {
        Site{signature, 0}.raise(PyExc_TypeError, "is missing");
        return nullptr;
    }
    std::deque<Text> texts(static_cast<std::size_t>(count));
    std::vector<char const*> bytes;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (!texts[i].take(arguments[i], {signature, i == 0 ? 0U : 1U}))
            return nullptr;
        bytes.push_back(texts[i].bytes());
    }
    TextResult<false> text;
    gen_c_status const status =
        gen_c_message(bytes[0], bytes.data() + 1, bytes.size() - 1, text.pass());
    return refused(signature.function(), status) ? nullptr : text.object();
}

PyObject* last_reports(PyObject*, PyObject*) {
    return reports();
}

std::vector<PyMethodDef> functions() {
    return {
        {"reports", last_reports, METH_NOARGS, nullptr},
        entry<gen_c_start>("start", "root? executable?"),
        entry<gen_c_finish>("finish", ""),
        entry<gen_c_where>("where", ""),
        entry<gen_c_installation>("installation", ""),
        entry<gen_c_libraries>("libraries", ""),
        entry<gen_c_library, As::path>("library", "number"),
        entry<gen_c_device_files>("device_files", ""),
        entry<gen_c_set_project>("set_project", "directory"),
        entry<gen_c_set_database>("set_database", "directory"),
        entry<gen_c_set_output>("set_output", "directory"),
        entry<gen_c_set_project_libraries>("set_project_libraries", "directories"),
        entry<gen_c_set_user_libraries>("set_user_libraries", "directories"),
        entry<gen_c_project>("project", ""),
        entry<gen_c_directories>("directories", "group"),
        entry<gen_c_relative_to_project, As::path>("relative_to_project", "path"),
        entry<gen_c_file_types>("file_types", ""),
        entry<gen_c_clear_paths>("clear_paths", ""),
        entry<gen_c_find, As::path>(
            "find", "name",
            "find(name)\n--\n\nThe file that a name means, as a Path; None where there is none.\n\n"
            "Asked are the project, its database, the project's libraries, the user's libraries,\n"
            "the project's parablocks and the shipped libraries, in this order."),
        entry<gen_c_find_eda, As::path>(
            "find_eda", "name",
            "find_eda(name)\n--\n\nAs find(), in the libraries for outside tools alone."),
        entry<gen_c_find_cached, As::path>(
            "find_cached", "name",
            "find_cached(name)\n--\n\nAs find(), and kept: asked once more, the name has the same "
            "answer\nuntil the cache is cleared."),
        entry<gen_c_clear_cache>("clear_cache", ""),
        entry<gen_c_cache_size>("cache_size", ""),
        entry<gen_c_include, As::path>("include", "name from_file? alias?"),
        entry<gen_c_sources>("sources", "unit shipped_only?"),
        entry<gen_c_trace_find>("trace_find", "name eda? all?"),
        entry<gen_c_trace_include>("trace_include", "name from_file? alias? all?"),
        entry<gen_c_trace_sources>("trace_sources", "unit shipped_only? all?"),
        entry<gen_c_tool_files>("tool_files", ""),
        entry<gen_c_database_file, As::path>("database_file", "name extension"),
        entry<gen_c_temporary_file, As::path>("temporary_file", "directory* prefix number"),
        entry<gen_c_profile_directory, As::path>("profile_directory", ""),
        entry<gen_c_is_64bit_wanted>("is_64bit_wanted", ""),
        entry<gen_c_enter_64bit>("enter_64bit", "tool"),
        entry<gen_c_leave_64bit>("leave_64bit", "path library_path"),
        entry<gen_c_environment>("environment", "name"),
        entry<gen_c_condition>("condition", "text"),
        entry<gen_c_condition_tokens>("condition_tokens", "text"),
        entry<gen_c_condition_tree>("condition_tree", "text"),
        entry<gen_c_compare_natural>("natural_compare", "first second ignore_case?",
                                     "natural_compare(first, second, "
                                     "ignore_case=False)\n--\n\nCompares by the natural order, in "
                                     "which digits count by their value: negative, 0 or\npositive. "
                                     "To sort, use natural_key."),
        entry<gen_c_compare_bytes>("byte_compare", "first second ignore_case?",
                                   "byte_compare(first, second, ignore_case=False)\n--\n\nCompares "
                                   "byte by byte: negative, 0 or "
                                   "positive."),
        entry<gen_c_fold>(
            "fold", "text upper?",
            "fold(text, upper=False)\n--\n\nThe text with A to Z as a to z, or the other "
            "way round. Other characters are kept."),
        entry<gen_c_trim>(
            "trim", "text white_space?",
            "trim(text, white_space=False)\n--\n\nThe text without the spaces at both ends; "
            "with white_space without tabs\nand line ends too."),
        entry<gen_c_read_integer>("read_integer", "text"),
        entry<gen_c_write_integer>("write_integer", "number radix?"),
        entry<gen_c_read_real>("read_real", "text"),
        entry<gen_c_wildcard>(
            "wildcard", "pattern part?",
            "wildcard(pattern, part=False)\n--\n\nA pattern of * and ? as a regular "
            "expression, anchored at both ends unless part is true."),
        entry<gen_c_wildcard_matches>("wildcard_matches", "pattern part name"),
        entry<gen_c_checksum>("checksum", "text",
                              "checksum(text)\n--\n\nThe 32-bit checksum of a text."),
        entry<gen_c_checksum_sanitised>(
            "checksum_sanitised", "text",
            "checksum_sanitised(text)\n--\n\nThe 32-bit checksum of sanitise(text)."),
        entry<gen_c_sanitise>(
            "sanitise", "name",
            "sanitise(name)\n--\n\nThe name made safe for identifiers and files."),
        entry<gen_c_hash_size>(
            "hash_size", "number",
            "hash_size(number)\n--\n\nA prime size for a hash table of so many entries.\n\nAbove "
            "4294967291 there is none, which is an InternalError."),
        {"message", reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(message)),
         METH_FASTCALL, nullptr},
        entry<gen_c_message_inserts>("message_inserts", "format"),
        entry<gen_c_time_units>("time_units", ""),
        entry<gen_c_frequency_units>("frequency_units", ""),
        entry<gen_c_now>("now", ""),
        entry<gen_c_date>(
            "date", "seconds?",
            "date(seconds=0)\n--\n\nAn instant, in seconds since 1970, as a local date; "
            "0 means now."),
        entry<gen_c_format_now>(
            "format_now", "format",
            "format_now(format)\n--\n\nNow, in a format of strftime; None where "
            "that gives nothing or more than 249 bytes."),
        entry<gen_c_elapsed>("elapsed", "seconds",
                             "elapsed(seconds)\n--\n\nA duration as [days:]hours:minutes:seconds."),
        entry<gen_c_stopwatch_create>("stopwatch_create", ""),
        entry<gen_c_stopwatch_start>("stopwatch_start", "watch"),
        entry<gen_c_stopwatch_stop>("stopwatch_stop", "watch"),
        entry<gen_c_stopwatch_reset>("stopwatch_reset", "watch"),
        entry<gen_c_stopwatch_seconds>("stopwatch_seconds", "watch"),
        entry<gen_c_stopwatch_lap>("stopwatch_lap", "watch"),
        entry<gen_c_machine>("machine", "host?"),
        entry<gen_c_usage_report>("usage_report", "tag phase* modules details memory"),
        entry<gen_c_notice>("notice", "notice"),
        entry<gen_c_notice_lines>("notice_lines", "notice prefix"),
        entry<gen_c_do_not_edit>("do_not_edit", "prefix"),
        entry<gen_c_undo_create>("undo_create", "directory"),
        entry<gen_c_undo_begin>("undo_begin", "undo title"),
        entry<gen_c_undo_describe>("undo_describe", "undo description"),
        entry<gen_c_undo_add>("undo_add", "undo redo command comment"),
        entry<gen_c_undo_end>("undo_end", "undo"),
        entry<gen_c_undo_commit, As::path>("undo_commit", "undo"),
        entry<gen_c_flags_create>("flags_create", ""),
        entry<gen_c_flags_add>("flags_add", "flags name"),
        entry<gen_c_flags_find>("flags_find", "flags name"),
        entry<gen_c_flags_remove>("flags_remove", "flags mask"),
        entry<gen_c_flags_describe>("flags_describe", "flags mask"),
        entry<gen_c_flags_statistics>("flags_statistics", "flags"),
        entry<gen_c_flags_slots>("flags_slots", "flags"),
        entry<gen_c_flags_swept>("flags_swept", "flags"),
        entry<gen_c_histogram_create>("histogram_create", "low high bins"),
        entry<gen_c_histogram_add>("histogram_add", "histogram item"),
        entry<gen_c_histogram_size>("histogram_size", "histogram"),
        entry<gen_c_histogram_bin>("histogram_bin", "histogram item"),
        entry<gen_c_histogram_bins>("histogram_bins", "histogram"),
        entry<gen_c_histogram_outside>("histogram_outside", "histogram"),
        {nullptr, nullptr, 0, nullptr},
    };
}

} // namespace

PyMODINIT_FUNC PyInit__gen() {
    static std::vector<PyMethodDef> methods = functions();
    // Of size -1: all state is the process's, and no interpreter has one of its own.
    static PyModuleDef definition = {PyModuleDef_HEAD_INIT,
                                     "korvane_gen._gen",
                                     nullptr,
                                     -1,
                                     methods.data(),
                                     nullptr,
                                     nullptr,
                                     nullptr,
                                     nullptr};
    if (!prepare())
        return nullptr;
    PyObject* const module = PyModule_Create(&definition);
    if (module == nullptr || !add_natural_key(module) ||
        PyModule_AddStringConstant(module, "version", gen_c_version()) != 0) {
        Py_XDECREF(module);
        return nullptr;
    }
    return module;
}
