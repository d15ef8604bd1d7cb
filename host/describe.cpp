#include "help.h"

namespace {

Value text_or_none(std::string const& text) {
    return text.empty() ? Value() : Value(text);
}

Value::List list_of(std::vector<std::string> const& texts) {
    return Value::List(texts.begin(), texts.end());
}

Value describe(Option const& option) {
    bool const is_argument = option.kind == Option::Kind::argument;
    return Value::Record{
        {"names", is_argument ? Value::List() : list_of(option.names)},
        {"positional", is_argument ? Value(option.name()) : Value()},
        {"value", text_or_none(option.value_type)},
        {"choices", list_of(option.choices)},
        {"default", text_or_none(option.initial)},
        {"required", option.is_required},
        {"repeated", option.is_list()},
        {"takes_rest", option.takes_rest},
        {"excludes", list_of(option.excluded)},
        {"summary", option.summary},
    };
}

/// A command with all that is below it. The nesting is that of the code: two levels.
Value describe(Commands const& commands) {
    std::unique_ptr<Command> const command = commands.is_family() ? nullptr : commands.make();
    CommonOptions common;
    Options const declared = options_of(command.get(), common, commands.is_root());
    Value::List options;
    for (Option const& option : declared.all())
        if (!option.is_hidden)
            options.push_back(describe(option));
    Value::List below;
    for (Commands const& one : commands.below())
        if (!one.is_hidden())
            below.push_back(describe(one));
    return Value::Record{{"name", commands.help().name},
                         {"summary", commands.help().summary},
                         {"options", std::move(options)},
                         {"footer", commands.help().example},
                         {"commands", std::move(below)}};
}

/// What the manual page and the completion of the shells are made from, so that they say what
/// --help says.
class Describe : public Command {
  public:
    explicit Describe(Commands const& root) : m_root(root) {}

    Status run(Answer& answer) override {
        answer.detail("gen_query", describe(m_root));
        return STATUS_YES;
    }

  private:
    Commands const& m_root;
};

} // namespace

void add_describe(Commands& commands) {
    commands.add({.name = "describe",
                  .summary = "Describes the subcommands to other programs, with --json",
                  .example = "  $ gen_query describe --json"},
                 [&commands] { return std::make_unique<Describe>(commands); });
}
