// Asks the library the requests named on the command line, one after the other, and prints the
// answers, a line each: what the tests start where the system is to answer otherwise than it does.

#include "gen_os_info.h"
#include "gen_time.h"
#include "temp_directory.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <map>
#include <string>

namespace {

GEN_STOPWATCH watch;

std::string seconds_text(double seconds) {
    char text[64];
    std::snprintf(text, sizeof text, "%a", seconds);
    return text;
}

std::string printed_time() {
    TempDirectory const directory;
    std::ofstream stream(directory / "now");
    gen_print_local_time(&stream);
    stream.close();
    std::string const text = read_file(directory / "now");
    return text.empty() || text.back() != '\n' ? text + "|"
                                               : text.substr(0, text.size() - 1) + "\\n";
}

std::string formatted_time() {
    STR text = "untouched";
    bool const done = gen_format_current_date_and_time(&text, "%m-%d %H:%M:%S");
    return (done ? "true " : "false ") + std::string(text);
}

std::string system_names() {
    using Request = bool (*)(STR*);
    STR text = "untouched";
    int answered = 0;
    for (Request const request :
         {GEN_MACHINE_INFO::get_os_name, GEN_MACHINE_INFO::get_os_version,
          GEN_MACHINE_INFO::get_kernel_version, GEN_MACHINE_INFO::get_hw_name})
        answered += request(&text) ? 1 : 0;
    return std::to_string(answered) + " answered, " + std::string(text);
}

template <typename Number>
std::string number(bool (*request)(Number*)) {
    Number answer = 0;
    return request(&answer) ? std::to_string(answer) : "failed";
}

using Answer = std::function<std::string()>;

std::map<std::string, Answer> const answers{
    {"host_name", [] { return std::string(gen_get_host_name()); }},
    {"address", [] { return std::string(gen_get_ip_addr("somewhere")); }},
    {"system_names", system_names},
    {"processors", [] { return number(GEN_MACHINE_INFO::get_cpu_count); }},
    {"frequency", [] { return number(GEN_MACHINE_INFO::get_cpu_frequency); }},
    {"memory", [] { return number(GEN_MACHINE_INFO::get_physical_ram); }},
    {"ticks", [] { return std::to_string(gen_get_tick_count()); }},
    {"seconds", [] { return std::to_string(gen_get_current_time_seconds()); }},
    {"time", [] { return std::string(gen_get_current_time()); }},
    {"date", [] { return std::string(gen_get_current_date_and_time(0)); }},
    {"format", formatted_time},
    {"print", printed_time},
    {"cpu", [] { return seconds_text(GEN_STOPWATCH::get_cpu_seconds_elapsed()); }},
    {"start", [] { return watch.start(), "started"; }},
    {"stop", [] { return watch.stop(), "stopped"; }},
    {"reset", [] { return watch.reset(), "reset"; }},
    {"lap", [] { return std::string(watch.lap()); }},
    {"lap_time", [] { return seconds_text(watch.lap_time()); }},
    {"lap_seconds", [] { return std::to_string(watch.lap_seconds()); }},
};

} // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        auto const found = answers.find(argv[i]);
        if (found == answers.end()) {
            std::fprintf(stderr, "system_probe: no request '%s'\n", argv[i]);
            return 2;
        }
        std::printf("%s\n", found->second().c_str());
    }
    return 0;
}
