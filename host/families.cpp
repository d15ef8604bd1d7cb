#include "command.h"

#include <algorithm>

Commands& Commands::family(Help const& help) {
    add(help, {});
    return m_below.back();
}

void Commands::add(Help const& help, Maker make) {
    Commands& added = m_below.emplace_back(help, std::move(make));
    added.m_heading = m_next_heading;
    added.m_is_root = false;
}

Commands const* Commands::find(std::string_view name) const {
    auto const found =
        std::find_if(m_below.begin(), m_below.end(),
                     [name](Commands const& command) { return command.m_help.name == name; });
    return found != m_below.end() ? &*found : nullptr;
}

// --help and describe list them in this order.
std::unique_ptr<Commands> all_commands() {
    auto all = std::make_unique<Commands>(Help{
        .name = "gen_query",
        .summary = "gen_query: what every tool of the suite would answer",
        .example =
            "Every subcommand takes --json, --root and --color; `gen_query help SUBCOMMAND`\n"
            "says more of it, as its --help does.\n"
            "Exit status: 0 found or true, 1 not found or false, 2 wrong usage or no answer.",
    });
    Commands& commands = *all;
    commands.group("Files and directories");
    add_find(commands);
    add_include(commands);
    add_sources(commands);
    add_filelist(commands);
    add_project(commands);
    add_where(commands);
    add_installation(commands);
    add_names(commands);
    commands.group("Texts");
    add_text(commands);
    add_message(commands);
    add_legal(commands);
    commands.group("Simulation and editing");
    add_condition(commands);
    add_flags(commands);
    add_histogram(commands);
    add_undo(commands);
    commands.group("Time and machine");
    add_time(commands);
    add_units(commands);
    add_machine(commands);
    add_modules(commands);
    add_env(commands);
    commands.group("Scripts");
    add_serve(commands);
    commands.group("");
    add_describe(commands);
    return all;
}
