#include "fault_ground.h"

#include "err_report.h"
#include "gen.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

fs::path ground;
int report_count = 0;

void count_report(char const*, char const*, char const*, int) {
    ++report_count;
}

} // namespace

void prepare_ground(char const* directory) {
    ground = directory;
    for (char const* file :
         {"project/top.v", "korvane/libraries/x.h", "korvane/eda/sim_lib/cell.v",
          "korvane/linux/a.ddb", "korvane/linux/b.dll", "korvane/linux64/tool", "korvane/bin/tool"})
        write(at(file), "content");
    fs::create_directory(at("here"));
    fs::current_path(at("here"));
    setenv("HOME", at("home").c_str(), 1);
    setenv("PATH", at("korvane/bin").c_str(), 1);
    setenv("KORVANE_PLATFORM", "linux", 1);
    setenv("KORVANE_ROOTDIR", at("korvane").c_str(), 1);
    static std::string module = at("korvane/linux/probe");
    gen_module_fullpath = module.data();
    gen_set_project_dir_path(text_at("project"));
    err_set_internal_error_handler(count_report);
}

int reports() {
    return report_count;
}

std::string at(char const* relative) {
    return ground / relative;
}

STR text_at(char const* relative) {
    return at(relative).c_str();
}

STR fresh(char const* name) {
    static int names = 0;
    return text_at(name) + std::to_string(++names).c_str();
}

std::string shown(STR const& text) {
    return std::string(text);
}

std::string shown(bool yes) {
    return yes ? "yes" : "no";
}

std::string shown(FIO_PATH const& path) {
    return shown(path.fullpath());
}

std::string known(STR const& text) {
    return text.empty() ? "none" : "known";
}

void write(std::string const& file, std::string const& content) {
    fs::create_directories(fs::path(file).parent_path());
    std::ofstream(file) << content;
}

std::string content(std::string const& file) {
    std::string text;
    if (std::FILE* const stream = std::fopen(file.c_str(), "re")) {
        char block[4096];
        while (std::size_t const size = std::fread(block, 1, sizeof block, stream))
            text.append(block, size);
        std::fclose(stream);
    }
    return text;
}

std::string compared(std::string const& file, std::string const& whole) {
    std::string const text = content(file);
    if (text == whole)
        return "whole";
    if (text.empty())
        return fs::exists(file) ? "empty" : "none";
    return whole.starts_with(text) ? "cut short" : "something else";
}
