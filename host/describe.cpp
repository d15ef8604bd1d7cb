#include "command.h"

#include <CLI/CLI.hpp>

namespace {

/// One option or positional argument, as --help tells of it.
Value describe(CLI::Option const& option) {
    Value::List names;
    for (std::string const& name : option.get_snames())
        names.emplace_back("-" + name);
    for (std::string const& name : option.get_lnames())
        names.emplace_back("--" + name);
    bool const takes_value = option.get_items_expected_max() > 0;
    std::string const type = option.get_type_name();
    return Value::Record{
        {"names", std::move(names)},
        {"positional", option.get_positional() ? Value(option.get_name(true)) : Value()},
        {"value", takes_value ? Value(type.substr(0, type.find(':'))) : Value()},
        {"domain", type.find(':') != type.npos ? Value(type.substr(type.find(':') + 1)) : Value()},
        {"default", option.get_default_str().empty() ? Value() : Value(option.get_default_str())},
        {"required", option.get_required()},
        {"repeated", option.get_items_expected_max() > 1},
        {"summary", option.get_description()},
    };
}

/// A command with all that is below it. The nesting is that of the code: two levels.
Value describe(CLI::App const& app) {
    Value::List options;
    for (CLI::Option const* const option : app.get_options())
        options.push_back(describe(*option));
    Value::List commands;
    for (CLI::App const* const command : app.get_subcommands({}))
        if (!command->get_group().empty())
            commands.push_back(describe(*command));
    return Value::Record{{"name", app.get_name()},
                         {"summary", app.get_description()},
                         {"options", std::move(options)},
                         {"footer", app.get_footer()},
                         {"commands", std::move(commands)}};
}

/// What the manual page and the completion of the shells are made from, so that they say what
/// --help says.
class Describe : public Command {
  public:
    void declare(CLI::App& app) override {
        m_root = app.get_parent();
        app.group(""); // of no use to people: --help does not list it
    }

    Status run(Answer& answer) override {
        answer.detail("gen_query", describe(*m_root));
        return STATUS_YES;
    }

  private:
    CLI::App const* m_root = nullptr;
};

} // namespace

void add_describe(Commands& commands) {
    commands.add<Describe>({
        .name = "describe",
        .summary = "Describes the subcommands to other programs, with --json",
        .example = "  $ gen_query describe --json",
    });
}
