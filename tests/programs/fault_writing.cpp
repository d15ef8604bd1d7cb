// The things that leave something in a file.

#include "err_report.h"
#include "fault_ground.h"
#include "fault_thing.h"
#include "gen.h"
#include "mem.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <utility>

namespace fs = std::filesystem;

namespace {

struct NoObjects : GEN_DYN_FLAG_CLEARER {
    void clear_flags(GEN_DYN_FLAG const&) override {}
};

} // namespace

Thing try_commit() {
    static GEN_UNDO_REDO_MGR manager;
    manager.start_new_file(text_at("db"));
    fs::create_directories(at("db"));
    return answer_of([] { return shown(manager.try_commit_file()); });
}

Thing commit() {
    static constexpr int entries = 2000;
    static GEN_UNDO_REDO_MGR manager;
    static std::string whole;
    manager.start_new_file(text_at("db"));
    manager.begin_section("section");
    whole = "section\n\n\tUndo Commands\n";
    for (int i = 1; i <= entries; ++i) {
        std::string const command = "command " + std::to_string(i);
        manager.add_undo_command(command.c_str(), "");
        char number[16];
        std::snprintf(number, sizeof number, "\t%6d.\t", i);
        whole += number + command + "\n";
    }
    manager.end_section();
    whole += "\n\n";
    fs::create_directories(at("db"));
    return {[] { manager.commit_file(); }, [] { return compared(at("db/undo_redo.txt"), whole); }};
}

Thing flags() {
    static std::string const file = at("here/d:\\fenno\\comp\\mls\\flag_test.tst");
    auto const ask = [] {
        NoObjects objects;
        GEN_DYN_FLAG_MANAGER manager(&objects);
        GEN_DYN_FLAG::test_myself_out(&manager);
    };
    ask();
    static std::string const whole = content(file);
    fs::remove(file);
    return {ask, [] { return compared(file, whole); }};
}

Thing profile() {
    static std::string const date_line = "Sun Nov 15 12:47:34 2026\n";
    fs::create_directories(at("db"));
    gen_set_db_dir_path(text_at("db/"));
    return {[] {
                gen_set_gui_profile_stream();
                if (std::ofstream* const stream = gen_get_gui_profile_stream()) {
                    gen_print_local_time(stream);
                    stream->flush();
                }
            },
            [] {
                std::string const open = gen_get_gui_profile_stream() != nullptr ? "open" : "none";
                std::string const text = content(at("db/korvane_gui.profile"));
                return open + (text.size() == date_line.size() ? ", a line" : "");
            }};
}

Thing standard_error() {
    static std::string const file = at("errors");
    static std::size_t seen = 0;
    write(file);
    static_cast<void>(std::freopen(file.c_str(), "ae", stderr));
    std::setvbuf(stderr, nullptr, _IONBF, 0);
    err_set_internal_error_handler(nullptr);
    mem_msg_set_sink(nullptr);
    return {[] {
                err_report_internal_error("broken", "GEN", "gen_probe", 1);
                gen_mem_msg_debug("message %d", 2);
            },
            [] {
                std::string const all = content(file);
                std::string lines = all.substr(std::exchange(seen, all.size()));
                std::replace(lines.begin(), lines.end(), '\n', ';');
                return lines;
            }};
}

Thing output() {
    static STR directory;
    static std::string answer;
    return {[] {
                directory = fresh("out");
                gen_set_project_output_directory(directory.c_str());
                answer = gen_get_project_output_directory();
            },
            [] { return answer == std::string(directory) + "/" ? "the output's" : answer; }};
}

Thing temp_file() {
    static STR path;
    return {[] { path = gen_get_temp_filename(text_at("here"), "t", 42); },
            [] { return shown(!path.empty() && fs::exists(std::string(path))); }};
}
