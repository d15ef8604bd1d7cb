// Command lines of gen_query: they end with one of its three exit statuses, and with --json the
// answer is JSON.
//
// An input is the arguments, a line each, an empty line, and what standard input has. Everything
// runs in this process and in a directory of its own. Passed over is what would reach out of it:
// - arguments that name a path elsewhere, but for subcommands that only ask whether files exist;
// - `time stopwatch`, which starts a program, and `machine`, which asks for hosts;
// - `env` and `text fold --locale`, which keep what they are given for as long as the process
// lives.

#include "query.h"

#include "fuzz_input.h"
#include "gen_exe.h"
#include "input.h"
#include "lookup.h"
#include "mem.h"
#include "scratch_directory.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

namespace {

using Arguments = std::vector<std::string>;

struct Line {
    Arguments arguments;
    std::string input;
};

Line line_of(std::string const& text) {
    Line line;
    std::size_t at = 0;
    while (at < text.size() && text[at] != '\n') {
        std::size_t const end = std::min(text.find('\n', at), text.size());
        // What the system hands over ends at a NUL.
        line.arguments.emplace_back(text.substr(at, end - at).c_str());
        at = end + 1;
    }
    line.input = text.substr(std::min(at + 1, text.size()));
    return line;
}

bool has(Arguments const& arguments, std::string const& word) {
    return std::find(arguments.begin(), arguments.end(), word) != arguments.end();
}

/// One value, or a line of its own for each name of a batch.
bool is_json(std::string_view output) {
    if (nlohmann::json::accept(output))
        return true;
    while (!output.empty()) {
        std::size_t const end = output.find('\n');
        if (end == output.npos || !nlohmann::json::accept(output.substr(0, end)))
            return false;
        output.remove_prefix(end + 1);
    }
    return true;
}

/// A number of more digits than that would cost time or memory, and show nothing else.
bool has_long_number(std::string const& text) {
    constexpr unsigned most_digits = 4;
    unsigned digits = 0;
    for (char const c : text) {
        digits = c >= '0' && c <= '9' ? digits + 1 : 0;
        if (digits > most_digits)
            return true;
    }
    return false;
}

/// `serve` takes command lines from its input: none that a backslash could hide something in.
bool is_harmless_to_serve(std::string const& input) {
    for (char const* part : {"/", "..", "\\", "stopwatch", "machine", "env", "fold", "temp"})
        if (input.find(part) != input.npos)
            return false;
    return !has_long_number(input);
}

bool is_harmless(Line const& line) {
    Arguments const& arguments = line.arguments;
    if (arguments.empty())
        return true;
    if (has(arguments, "serve") && !is_harmless_to_serve(line.input))
        return false;
    for (char const* word : {"stopwatch", "machine", "env"})
        if (has(arguments, word))
            return false;
    std::string const& family = arguments.front();
    bool const only_asks =
        family == "find" || family == "include" || family == "sources" || family == "names";
    bool const is_costly = family == "message" || family == "histogram";
    bool const may_keep = has(arguments, "fold");
    for (std::string const& argument : arguments) {
        bool const is_path =
            argument.find('/') != argument.npos || argument.find("..") != argument.npos;
        if ((is_path && !only_asks) || (is_costly && has_long_number(argument)))
            return false;
        if (may_keep && argument.starts_with('-') && argument.find('l') != argument.npos)
            return false;
    }
    return true;
}

/// The process as gen_query finds it, in a directory of its own.
class Ground {
  public:
    Ground() : m_module(m_scratch.path() / "korvane/linux/gen_query") {
        std::filesystem::create_directories(m_project);
        stderr = std::fopen("/dev/null", "w");
        gen_module_fullpath = m_module.data();
        char const* arguments[] = {m_module.c_str(), nullptr};
        gen_exe_init(1, arguments);
    }
    Ground(Ground const&) = delete;
    Ground& operator=(Ground const&) = delete;

    void enter() const { std::filesystem::current_path(m_project); }

    /// Goes back to where the fuzzer keeps its files, and forgets everything.
    void leave() {
        std::filesystem::current_path(m_outside);
        forget_project();
        for (char const* name : {"profile_dll_usage", "list_dll_details", "report_modules_flow"})
            mem_cfg_unset(name);
        for (auto const& entry : std::filesystem::directory_iterator(m_project))
            std::filesystem::remove_all(entry);
    }

  private:
    ScratchDirectory m_scratch;
    std::filesystem::path m_project = m_scratch.path() / "project";
    std::filesystem::path m_outside = std::filesystem::current_path();
    std::string m_module;
};

/// What the process reads and writes for the span of one command.
class Streams {
  public:
    explicit Streams(std::string const& input) : m_input(input), m_stdin(stdin), m_stdout(stdout) {
        stdin = m_input.empty() ? std::fopen("/dev/null", "r")
                                : fmemopen(m_input.data(), m_input.size(), "r");
        stdout = open_memstream(&m_text, &m_size);
    }
    ~Streams() {
        std::fclose(std::exchange(stdin, m_stdin));
        std::fclose(std::exchange(stdout, m_stdout));
        std::free(m_text);
    }
    Streams(Streams const&) = delete;
    Streams& operator=(Streams const&) = delete;

    std::string_view output() const {
        std::fflush(stdout);
        return {m_text, m_size};
    }

  private:
    std::string m_input;
    std::FILE* m_stdin;
    std::FILE* m_stdout;
    char* m_text = nullptr;
    std::size_t m_size = 0;
};

void run(Line const& line) {
    std::unique_ptr<Commands> const commands = all_commands();
    Streams const streams(line.input);
    Reply const reply = reply_to(*commands, line.arguments, stdout);
    int const status = print_reply(reply);
    require(status == STATUS_YES || status == STATUS_NO || status == STATUS_USAGE, "exit status");
    bool const is_help = reply.text.has_value();
    if (reply.json && !is_help)
        require(is_json(streams.output()), "the answer is JSON");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    constexpr std::size_t longest = 1000;
    static Ground ground;
    if (size > longest)
        return 0;
    Line line = line_of(std::string(reinterpret_cast<char const*>(data), size));
    if (!is_harmless(line))
        return 0;
    // By itself it would write into the system's directory; a second one is refused.
    if (!line.arguments.empty() && line.arguments.front() == "temp")
        line.arguments.insert(line.arguments.begin() + 1, {"--directory", "."});
    ground.enter();
    run(line);
    ground.leave();
    return 0;
}
