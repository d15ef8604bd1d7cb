/// The C interface without memory: no result is half written, and what there was is kept.

#include "allocation_failure.h"
#include "allocation_ground.h"
#include "gen_c.h"
#include "gen_exe.h"

#include <cstdlib>

namespace {

/// What calls write to; both have something before, and have no room for more.
gen_c_text text = GEN_C_TEXT_INIT;
gen_c_text more = GEN_C_TEXT_INIT;

void put_kept() {
    for (gen_c_text* const each : {&text, &more}) {
        gen_c_text_free(each);
        gen_c_sanitise("kept", each);
        each->room = each->size + 1;
    }
}

void open_with_texts() {
    open_project();
    put_kept();
}

/// The status and both strings, for which memory is there again.
STR shown_texts(gen_c_status status) {
    stop_failing_heap();
    return shown(long{status}) + " " + text.bytes + " " + more.bytes;
}

STR message() {
    char const* const arguments[] = {"an argument of some length"};
    return shown_texts(gen_c_message("<%1>", arguments, 1, &text));
}

STR include() {
    STR const including = at("project/include/another.v");
    return shown_texts(
        gen_c_include("a_file_to_include.v", including.c_str(), "/a/copy.v", &text, &more));
}

void on_platform() {
    open_with_texts();
    setenv("KORVANE_PLATFORM", "linux", 1);
    setenv("PATH", "/bin:/usr/bin", 1);
    setenv("LD_LIBRARY_PATH", "", 1);
}

/// The search paths are put back as a caller does, who has them.
STR search_paths() {
    gen_c_status const status = gen_c_enter_64bit("fitter", &text, &more);
    STR const answer = shown_texts(status);
    if (status == GEN_C_OK)
        gen_c_leave_64bit(text.bytes, more.bytes);
    return answer + " " + std::getenv("PATH");
}

STR temporary_file() {
    STR const answer = shown_texts(gen_c_temporary_file(at("written").c_str(), "report", 1, &text));
    return answer + " " + library_string(written());
}

/// The status, and the rows of the table that came with it.
STR shown_rows(gen_c_status status, gen_c_table* table) {
    stop_failing_heap();
    STR const rows = shown(static_cast<long>(gen_c_table_rows(table)));
    gen_c_table_free(table);
    return shown(long{status}) + " " + rows;
}

STR file_types() {
    gen_c_table* table = nullptr;
    gen_c_status const status = gen_c_file_types(&table);
    return shown_rows(status, table);
}

STR condition_tree() {
    gen_c_table* table = nullptr;
    std::size_t const before = MEM_MANAGER::s_system_memory_counter.current();
    gen_c_status const status = gen_c_condition_tree("a_signal_of_the_design = 1", &table);
    bool const is_left = table == nullptr && status == GEN_C_NO_MEMORY &&
                         MEM_MANAGER::s_system_memory_counter.current() != before;
    return shown_rows(status, table) + (is_left ? " and tokens left over" : "");
}

STR condition_tokens() {
    gen_c_table* table = nullptr;
    gen_c_status const status = gen_c_condition_tokens("a_signal_of_the_design = 1", &table);
    return shown_rows(status, table);
}

STR message_inserts() {
    gen_c_table* table = nullptr;
    gen_c_status const status = gen_c_message_inserts("%1!d! of %2", &table);
    return shown_rows(status, table);
}

gen_c_flags* flags = nullptr;

/// A manager that had to sweep one flag.
void sweep_flag() {
    gen_c_flags_free(flags);
    gen_c_flags_create(&flags);
    uint32_t mask = 0;
    for (char name[] = "A"; *name < 'A' + 32; ++*name)
        gen_c_flags_add(flags, name, &mask);
    gen_c_flags_remove(flags, mask);
    gen_c_flags_add(flags, "another", &mask);
}

/// What was swept is not lost where there was no memory to say it.
STR swept() {
    gen_c_table* table = nullptr;
    gen_c_status const status = gen_c_flags_swept(flags, &table);
    stop_failing_heap();
    if (status == GEN_C_NO_MEMORY)
        gen_c_flags_swept(flags, &table);
    return shown_rows(status, table);
}

/// The status, and whether something came with it; without, what was there stays.
template <typename Handle>
STR shown_handle(gen_c_status (*create)(Handle**), void (*free)(Handle*)) {
    auto* const before = reinterpret_cast<Handle*>(&text);
    Handle* handle = before;
    gen_c_status const status = create(&handle);
    stop_failing_heap();
    if (handle == before)
        return shown(long{status}) + " none";
    free(handle);
    return shown(long{status}) + " given";
}

std::vector<Call> calls() {
    static_assert(GEN_C_NO_MEMORY == 7);
    return {
        {.name = "fold",
         .ask = [] { return shown_texts(gen_c_fold("some text", 1, &text)); },
         .prepare = put_kept,
         .otherwise = {"7 kept kept"}},
        {.name = "condition",
         .ask = [] { return shown_texts(gen_c_condition("a == 1", &text, &more)); },
         .prepare = put_kept,
         .otherwise = {"7 kept kept"}},
        {.name = "message", .ask = message, .prepare = put_kept, .otherwise = {"7 kept kept"}},
        {.name = "library",
         .ask = [] { return shown_texts(gen_c_library(29, &text)); },
         .prepare = open_with_texts,
         .otherwise = {"7 kept kept"}},
        {.name = "include",
         .ask = include,
         .prepare = open_with_texts,
         .otherwise = {"7 kept kept"}},
        {.name = "search_paths",
         .ask = search_paths,
         .prepare = on_platform,
         .otherwise = {"7 kept kept /bin:/usr/bin"}},
        {.name = "temporary_file",
         .ask = temporary_file,
         .prepare =
             [] {
                 open_with_texts();
                 clear_written();
             },
         .left = written,
         .otherwise = {"7 kept kept "}},
        {.name = "start",
         .ask =
             [] {
                 static STR const root = at("korvane");
                 gen_c_status const status = gen_c_start(root.c_str(), nullptr);
                 stop_failing_heap();
                 return shown(long{status});
             },
         .prepare =
             [] {
                 start();
                 gen_module_fullpath = nullptr;
             },
         .otherwise = {"7"}},
        {.name = "file_types", .ask = file_types, .prepare = start, .otherwise = {"7 0"}},
        // The parser reports that it had no memory for a record, as an internal error.
        {.name = "condition_tree", .ask = condition_tree, .otherwise = {"7 0", "2 0"}},
        // Likewise, and the token is not among the others.
        {.name = "condition_tokens", .ask = condition_tokens, .otherwise = {"7 0", "3 2"}},
        {.name = "wildcard_matches",
         .ask =
             [] {
                 int matches = 2;
                 gen_c_status const status =
                     gen_c_wildcard_matches("a*_name*length", 0, "a_name_of_some_length", &matches);
                 stop_failing_heap();
                 return shown(long{status}) + " " + shown(long{matches});
             },
         .otherwise = {"7 2"}},
        {.name = "message_inserts", .ask = message_inserts, .otherwise = {"7 0"}},
        {.name = "flags_swept", .ask = swept, .prepare = sweep_flag, .otherwise = {"7 1"}},
        {.name = "flags",
         .ask = [] { return shown_handle(gen_c_flags_create, gen_c_flags_free); },
         .otherwise = {"7 none"}},
        {.name = "undo",
         .ask =
             [] {
                 return shown_handle<gen_c_undo>(
                     [](gen_c_undo** undo) { return gen_c_undo_create("a/directory", undo); },
                     gen_c_undo_free);
             },
         .otherwise = {"7 none"}},
        {.name = "stopwatch",
         .ask = [] { return shown_handle(gen_c_stopwatch_create, gen_c_stopwatch_free); },
         .otherwise = {"7 none"}},
        {.name = "histogram",
         .ask =
             [] {
                 return shown_handle<gen_c_histogram>(
                     [](gen_c_histogram** bins) { return gen_c_histogram_create(0, 9, 3, bins); },
                     gen_c_histogram_free);
             },
         .otherwise = {"7 none"}},
    };
}

} // namespace

INSTANTIATE_TEST_SUITE_P(CInterface, AllocationFailure, testing::ValuesIn(calls()), call_name);
