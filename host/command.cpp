#include "command.h"

#include <CLI/CLI.hpp>

#include <vector>

struct Commands::State {
    CLI::App app{"gen_query: what every tool of the suite would answer"};
    std::vector<std::unique_ptr<Command>> all;
    Command* chosen = nullptr;
    bool json = false;
};

static void teach(CLI::App& app, char const* example) {
    app.footer(std::string("Example:\n") + example + "\n");
}

Commands::Commands() : m_state(std::make_unique<State>()) {
    CLI::App& app = m_state->app;
    app.name("gen_query");
    app.require_subcommand(1);
    app.set_help_all_flag("--help-all", "Print help for every subcommand");
    app.set_version_flag("--version", "gen_query " GEN_QUERY_VERSION);
    app.footer("Every subcommand takes --json, and tells more with --help.\n"
               "Exit status: 0 found or true, 1 not found or false, 2 usage.\n");
}

Commands::~Commands() = default;

CLI::App& Commands::top() {
    return m_state->app;
}

CLI::App& Commands::family(Help const& help) {
    CLI::App& app = *m_state->app.add_subcommand(help.name, help.summary);
    app.require_subcommand(1);
    teach(app, help.example);
    return app;
}

void Commands::add(CLI::App& parent, Help const& help, std::unique_ptr<Command> command) {
    CLI::App& app = *parent.add_subcommand(help.name, help.summary);
    teach(app, help.example);
    app.set_help_all_flag(); // it has nothing below it
    app.add_flag("--json", m_state->json, "Answer as one JSON object");
    command->declare(app);
    app.callback([this, chosen = command.get()] { m_state->chosen = chosen; });
    m_state->all.push_back(std::move(command));
}

int Commands::run(int argc, char const* const* argv) {
    try {
        m_state->app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        return m_state->app.exit(error) == 0 ? STATUS_YES : STATUS_USAGE;
    }
    Answer answer;
    Status const status = m_state->chosen->run(answer);
    if (m_state->json)
        print_json(answer, stdout);
    else
        print_text(answer, stdout);
    bool const written = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    if (!m_state->json)
        for (std::string const& remark : answer.remarks())
            std::fprintf(stderr, "gen_query: %s\n", remark.c_str());
    if (!written) {
        std::fputs("gen_query: cannot write to standard output\n", stderr);
        return STATUS_USAGE;
    }
    return status;
}
